#include "app/Stepper.h"
#include "support/DebugLog.h"
#include "support/SimulatedPort.h"
#include "support/TestCase.h"

#include <QComboBox>
#include <QPushButton>
#include <QSpinBox>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QStringList ModuleTabs = {u"Quickstart"_s, u"Settings"_s, u"Closed Loop"_s, u"Encoder"_s,
                                u"Torque"_s,     u"Velocity"_s, u"Positioning"_s, u"ZDRL"_s};

constexpr char asByte(int number)
{
    return static_cast<char>(number);
}

} // namespace

/// Drives the central widget as a user does, with a simulated module on a real port.
class tst_Stepper : public TestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void formHasItsTabs_data();
    void formHasItsTabs();
    void formHasItsConnectionPages_data();
    void formHasItsConnectionPages();
    void formHasItsTitlesAndSize();
    void canOffersSevenBitRates();
    void loopModeHasItsItems();
    void startsWithNothingButTheConnectionTab();

    void attachedDevicesReachTheirPanels();
    void usbConnectEnablesTheTabs();
    void usbCommandsGoToAddressOne();
    void directCommandIsAnsweredInTheReplyRow();
    void directCommandWithoutAModuleKeepsTheReplyRow();
    void serialConnectSetsAddressAndBaudRate();
    void serialModuleAtAnotherBaudRateIsSilent();
    void emptyPortNeverReachesTheHandler_data();
    void emptyPortNeverReachesTheHandler();
    void failedOpenPutsThePanelBackToReady_data();
    void failedOpenPutsThePanelBackToReady();
    void canConnectWithoutCanIsAFailedOpen();
    void disconnectDisablesTheTabsAtOnce();
    void silentModuleShowsBothPanelsReadyAndKeepsTheTabs();
    void connectAfterASilenceFailsOnceThenWorks();
    void pulledOutPortIsNoticedByTheNextCommand();
    void destructorClosesThePort();

    void motionSlotsSendTheirCommands_data();
    void motionSlotsSendTheirCommands();
    void motionSlotsAreSilentWithoutAModule();
    void loopModeChosenByTheUserIsWritten();
    void loopModeOfTheModuleIsShownAndEchoed();
    void loopModeWithoutAnItemLeavesTheBox_data();
    void loopModeWithoutAnItemLeavesTheBox();
    void loopModeTextWithoutANumberIsZero_data();
    void loopModeTextWithoutANumberIsZero();

private:
    template <typename Widget>
    Widget *child(const char *name, const char *parent = nullptr) const;
    void click(const char *panel, const char *button);
    void connectOverUsb(const QString &port);
    void connectOverSerial(const QString &port, int baudrate, int address);
    void sendDirectCommand(const QString &command, int type);
    bool isReady(const char *panel) const;
    bool moduleTabsAreEnabled() const;
    bool moduleTabsAreDisabled() const;

    std::unique_ptr<Stepper> m_stepper;
    std::unique_ptr<DebugLog> m_log;
};

template <typename Widget>
Widget *tst_Stepper::child(const char *name, const char *parent) const
{
    const QWidget *root =
        parent ? m_stepper->findChild<QWidget *>(QLatin1String(parent)) : m_stepper.get();
    auto *widget = root->findChild<Widget *>(QLatin1String(name));
    Q_ASSERT(widget);
    return widget;
}

void tst_Stepper::click(const char *panel, const char *button)
{
    QTest::mouseClick(child<QPushButton>(button, panel), Qt::LeftButton);
}

void tst_Stepper::connectOverUsb(const QString &port)
{
    child<QTabWidget>("tabWidget")->setCurrentIndex(0);
    child<QTabWidget>("twConnections")->setCurrentIndex(0);
    auto *devices = child<QComboBox>("cmbDevices", "wUsbConnection");
    if (devices->findText(port, Qt::MatchStartsWith) < 0) {
        m_stepper->handleAttachedUsbDevice(port, u"ZDRM-7710"_s);
    }
    devices->setCurrentIndex(devices->findText(port, Qt::MatchStartsWith));
    click("wUsbConnection", "btnConnect");
}

void tst_Stepper::connectOverSerial(const QString &port, int baudrate, int address)
{
    child<QTabWidget>("twConnections")->setCurrentIndex(1);
    m_stepper->handleAttachedSerialDevice(port, u"unknown"_s);
    auto *devices = child<QComboBox>("cmbDevices", "wSerialConnection");
    devices->setCurrentIndex(devices->findText(port, Qt::MatchStartsWith));
    child<QComboBox>("cmbBaudrates")->setCurrentText(QString::number(baudrate));
    child<QSpinBox>("sbAddress")->setValue(address);
    click("wSerialConnection", "btnConnect");
}

void tst_Stepper::sendDirectCommand(const QString &command, int type)
{
    child<QTabWidget>("tabWidget")->setCurrentIndex(8);
    child<QComboBox>("cbCommand")->setCurrentText(command);
    child<QSpinBox>("sbRequestType")->setValue(type);
    click("wDirectMode", "btnSend");
}

bool tst_Stepper::isReady(const char *panel) const
{
    return child<QPushButton>("btnConnect", panel)->isEnabled()
        && !child<QPushButton>("btnDisconnect", panel)->isEnabled();
}

bool tst_Stepper::moduleTabsAreEnabled() const
{
    const auto *tabs = child<QTabWidget>("tabWidget");
    return std::all_of(ModuleTabs.cbegin(), ModuleTabs.cend(),
                       [tabs, i = 0](const QString &) mutable { return tabs->isTabEnabled(++i); });
}

bool tst_Stepper::moduleTabsAreDisabled() const
{
    const auto *tabs = child<QTabWidget>("tabWidget");
    return std::none_of(ModuleTabs.cbegin(), ModuleTabs.cend(),
                        [tabs, i = 0](const QString &) mutable { return tabs->isTabEnabled(++i); });
}

void tst_Stepper::init()
{
    TestCase::init();
    m_log = std::make_unique<DebugLog>();
    m_stepper = std::make_unique<Stepper>(nullptr);
    m_stepper->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_stepper.get()));
}

void tst_Stepper::cleanup()
{
    m_stepper.reset();
    m_log.reset();
}

void tst_Stepper::formHasItsTabs_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("page");
    QTest::addColumn<QString>("text");
    QTest::newRow("0") << 0 << u"connectionTab"_s << u"Connection"_s;
    QTest::newRow("1") << 1 << u"quickstartTab"_s << u"Quickstart"_s;
    QTest::newRow("2") << 2 << u"settingsTab"_s << u"Settings"_s;
    QTest::newRow("3") << 3 << u"closedLoopTab"_s << u"Closed Loop"_s;
    QTest::newRow("4") << 4 << u"encoderTab"_s << u"Encoder"_s;
    QTest::newRow("5") << 5 << u"torqueTab"_s << u"Torque"_s;
    QTest::newRow("6") << 6 << u"velocityTab"_s << u"Velocity"_s;
    QTest::newRow("7") << 7 << u"positioningTab"_s << u"Positioning"_s;
    QTest::newRow("8") << 8 << u"zdrlTab"_s << u"ZDRL"_s;
}

void tst_Stepper::formHasItsTabs()
{
    QFETCH(int, index);
    QFETCH(QString, page);
    QFETCH(QString, text);
    const auto *tabs = child<QTabWidget>("tabWidget");
    QCOMPARE(tabs->count(), 9);
    QCOMPARE(tabs->currentIndex(), 0);
    QCOMPARE(tabs->widget(index)->objectName(), page);
    QCOMPARE(tabs->tabText(index), text);
}

void tst_Stepper::formHasItsConnectionPages_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("panel");
    QTest::addColumn<QString>("className");
    QTest::addColumn<QString>("groupBox");
    QTest::addColumn<QString>("title");
    QTest::newRow("usb") << 0 << u"USB"_s << u"wUsbConnection"_s << u"WConnection"_s
                         << u"gbConnection"_s << u"USB connection"_s;
    QTest::newRow("rs485") << 1 << u"RS485"_s << u"wSerialConnection"_s << u"WSerialConnection"_s
                           << u"gbSerialConnection"_s << u"Serial connection"_s;
    QTest::newRow("can") << 2 << u"CAN (Kvaser)"_s << u"wCANKvaserConnection"_s
                         << u"WCANConnection"_s << u"gbConnection"_s << u"CAN connection"_s;
}

void tst_Stepper::formHasItsConnectionPages()
{
    QFETCH(int, index);
    QFETCH(QString, text);
    QFETCH(QString, panel);
    QFETCH(QString, className);
    QFETCH(QString, groupBox);
    QFETCH(QString, title);
    const auto *connections = child<QTabWidget>("twConnections");
    QCOMPARE(connections->count(), 3);
    QCOMPARE(connections->currentIndex(), 0);
    QCOMPARE(connections->tabText(index), text);
    const auto *widget = connections->widget(index)->findChild<QWidget *>(panel);
    QVERIFY(widget);
    QCOMPARE(QString::fromLatin1(widget->metaObject()->className()), className);
    QCOMPARE(widget->findChild<QWidget *>(groupBox)->property("title").toString(), title);
}

void tst_Stepper::formHasItsTitlesAndSize()
{
    const Stepper stepper(nullptr);
    QCOMPARE(stepper.windowTitle(), u"Form"_s);
    QCOMPARE(stepper.size(), QSize(959, 627));
    QVERIFY(!stepper.parent());
}

void tst_Stepper::canOffersSevenBitRates()
{
    const auto *bitrates = child<QComboBox>("cmbBitrate");
    QStringList items;
    for (int i = 0; i < bitrates->count(); ++i) {
        items.append(bitrates->itemText(i));
    }
    QCOMPARE(items,
             QStringList({u"1000"_s, u"500"_s, u"250"_s, u"125"_s, u"100"_s, u"50"_s, u"10"_s}));
    QCOMPARE(bitrates->currentIndex(), 0);
}

void tst_Stepper::loopModeHasItsItems()
{
    const auto *loopMode = child<QComboBox>("cmbLoopMode", "quickstartTab");
    QCOMPARE(loopMode->count(), 2);
    QCOMPARE(loopMode->itemText(0), u"0 : Open loop"_s);
    QCOMPARE(loopMode->itemText(1), u"1 : Closed loop"_s);
    QCOMPARE(loopMode->toolTip(), u"AP: 129"_s);
}

void tst_Stepper::startsWithNothingButTheConnectionTab()
{
    QVERIFY(child<QTabWidget>("tabWidget")->isTabEnabled(0));
    QVERIFY(moduleTabsAreDisabled());
    QCOMPARE(child<QSpinBox>("sbRequestAddress")->value(), 1);
}

void tst_Stepper::attachedDevicesReachTheirPanels()
{
    m_stepper->handleAttachedUsbDevice(u"ttyACM77"_s, u"ZDRM-7710"_s);
    m_stepper->handleAttachedSerialDevice(u"ttyUSB77"_s, u"unknown"_s);
    QVERIFY(child<QComboBox>("cmbDevices", "wUsbConnection")->findText(u"ttyACM77 [ZDRM-7710]"_s)
            >= 0);
    QVERIFY(child<QComboBox>("cmbDevices", "wSerialConnection")->findText(u"ttyUSB77 [unknown]"_s)
            >= 0);
    QVERIFY(
        m_log->lines().contains(u"Stepper::handleAttachedDevice(\"ttyACM77\", \"ZDRM-7710\")"_s));
    QVERIFY(m_log->lines().contains(
        u"Stepper::handleAttachedSerialDevice(\"ttyUSB77\", \"unknown\")"_s));
}

void tst_Stepper::usbConnectEnablesTheTabs()
{
    const SimulatedPort module;
    connectOverUsb(module.portName());
    QVERIFY(moduleTabsAreEnabled());
    QCOMPARE(child<QTabWidget>("tabWidget")->currentIndex(), 1);
    QVERIFY(!child<QPushButton>("btnConnect", "wUsbConnection")->isEnabled());
    QVERIFY(child<QPushButton>("btnDisconnect", "wUsbConnection")->isEnabled());
}

void tst_Stepper::usbCommandsGoToAddressOne()
{
    const SimulatedPort module;
    m_stepper->openSerialHandler(QString(), 9600, 7); // leaves 7 behind
    QCOMPARE(child<QSpinBox>("sbRequestAddress")->value(), 7);
    connectOverUsb(module.portName());
    QCOMPARE(child<QSpinBox>("sbRequestAddress")->value(), 1);
}

void tst_Stepper::directCommandIsAnsweredInTheReplyRow()
{
    SimulatedPort module;
    connectOverUsb(module.portName());
    module.clearWireLog();
    sendDirectCommand(u"6 - GAP"_s, 4);

    QCOMPARE(module.requests(), QStringList({u"01 06 04 00 00 00 00 00 0B"_s}));
    QCOMPARE(child<QSpinBox>("sbReplyAddress")->value(), 1);
    QCOMPARE(child<QSpinBox>("sbReplyCommand")->value(), 6);
    QCOMPARE(child<QSpinBox>("sbReplyType")->value(), 100);
    QCOMPARE(child<QSpinBox>("sbReplyMotorBank")->value(), 0);
    QVERIFY(child<QSpinBox>("sbReplyValue")->value() != 0);
}

void tst_Stepper::directCommandWithoutAModuleKeepsTheReplyRow()
{
    SimulatedPort module;
    connectOverUsb(module.portName());
    sendDirectCommand(u"6 - GAP"_s, 4);
    const int value = child<QSpinBox>("sbReplyValue")->value();
    QVERIFY(module.fault(u"silence"_s));
    sendDirectCommand(u"6 - GAP"_s, 5);
    QCOMPARE(child<QSpinBox>("sbReplyValue")->value(), value);
}

void tst_Stepper::serialConnectSetsAddressAndBaudRate()
{
    SimulatedPort module({.address = 7}, 14400);
    connectOverSerial(module.portName(), 14400, 7);
    QVERIFY(moduleTabsAreEnabled());
    sendDirectCommand(u"6 - GAP"_s, 1);
    QCOMPARE(module.requests(), QStringList({u"07 06 01 00 00 00 00 00 0E"_s}));
    QCOMPARE(child<QSpinBox>("sbReplyAddress")->value(), 7);
    QCOMPARE(child<QSpinBox>("sbReplyType")->value(), 100);
}

void tst_Stepper::serialModuleAtAnotherBaudRateIsSilent()
{
    const SimulatedPort module({.address = 7}, 14400);
    connectOverSerial(module.portName(), 9600, 7);
    sendDirectCommand(u"6 - GAP"_s, 1);
    QCOMPARE(child<QSpinBox>("sbReplyType")->value(), 0);
    QVERIFY(isReady("wSerialConnection"));
}

void tst_Stepper::emptyPortNeverReachesTheHandler_data()
{
    QTest::addColumn<QString>("panel");
    QTest::newRow("usb") << u"wUsbConnection"_s;
    QTest::newRow("rs485") << u"wSerialConnection"_s;
}

void tst_Stepper::emptyPortNeverReachesTheHandler()
{
    QFETCH(QString, panel);
    m_log->clear();
    if (panel == "wUsbConnection"_L1) {
        m_stepper->openUsbHandler(QString());
    } else {
        m_stepper->openSerialHandler(QString(), 9600, 1);
    }
    QVERIFY(isReady(qPrintable(panel)));
    QVERIFY(moduleTabsAreDisabled());
    QVERIFY(m_log->lines().filter(u"openDevice"_s).isEmpty());
}

void tst_Stepper::failedOpenPutsThePanelBackToReady_data()
{
    QTest::addColumn<bool>("usb");
    QTest::newRow("usb") << true;
    QTest::newRow("rs485") << false;
}

void tst_Stepper::failedOpenPutsThePanelBackToReady()
{
    QFETCH(bool, usb);
    if (usb) {
        connectOverUsb(u"ttyMissing0"_s);
    } else {
        connectOverSerial(u"ttyMissing0"_s, 19200, 9);
    }
    QVERIFY(isReady(usb ? "wUsbConnection" : "wSerialConnection"));
    QVERIFY(moduleTabsAreDisabled());
    QCOMPARE(child<QTabWidget>("tabWidget")->currentIndex(), 0);
    // The panels keep the new address.
    QCOMPARE(child<QSpinBox>("sbRequestAddress")->value(), usb ? 1 : 9);
}

void tst_Stepper::canConnectWithoutCanIsAFailedOpen()
{
    child<QTabWidget>("twConnections")->setCurrentIndex(2);
    child<QSpinBox>("sbSendId")->setValue(5);
    click("wCANKvaserConnection", "btnConnect");
    QVERIFY(isReady("wCANKvaserConnection"));
    QVERIFY(moduleTabsAreDisabled());
    QCOMPARE(child<QSpinBox>("sbRequestAddress")->value(), 5);
}

void tst_Stepper::disconnectDisablesTheTabsAtOnce()
{
    SimulatedPort module;
    connectOverUsb(module.portName());
    child<QTabWidget>("tabWidget")->setCurrentIndex(0);
    module.clearWireLog();
    click("wUsbConnection", "btnDisconnect");
    QVERIFY(isReady("wUsbConnection"));
    QVERIFY(moduleTabsAreDisabled());
    QVERIFY(child<QTabWidget>("tabWidget")->isTabEnabled(0));
    QVERIFY2(module.requests().isEmpty(), "the module hears nothing of it");
}

void tst_Stepper::silentModuleShowsBothPanelsReadyAndKeepsTheTabs()
{
    SimulatedPort module;
    m_stepper->handleAttachedSerialDevice(u"ttyUSB77"_s, u"unknown"_s);
    connectOverUsb(module.portName());
    QVERIFY(module.fault(u"silence"_s));
    sendDirectCommand(u"6 - GAP"_s, 1);
    QVERIFY(isReady("wUsbConnection"));
    QVERIFY(isReady("wSerialConnection"));
    QVERIFY(moduleTabsAreEnabled());
    QVERIFY(m_log->lines().contains(
        u"Stepper::handleDetachedUsbDevice(\"%1\")"_s.arg(module.portName())));
}

void tst_Stepper::connectAfterASilenceFailsOnceThenWorks()
{
    SimulatedPort module;
    connectOverUsb(module.portName());
    QVERIFY(module.fault(u"silence 1"_s));
    sendDirectCommand(u"6 - GAP"_s, 1);

    // The port is still open, so it can't be opened and is closed; then it can.
    connectOverUsb(module.portName());
    QVERIFY(isReady("wUsbConnection"));
    connectOverUsb(module.portName());
    QVERIFY(!isReady("wUsbConnection"));
    sendDirectCommand(u"6 - GAP"_s, 1);
    QCOMPARE(child<QSpinBox>("sbReplyType")->value(), 100);
}

void tst_Stepper::pulledOutPortIsNoticedByTheNextCommand()
{
    SimulatedPort module;
    connectOverUsb(module.portName());
    module.pullOut();
    sendDirectCommand(u"6 - GAP"_s, 1);
    QVERIFY(isReady("wUsbConnection"));
    click("wUsbConnection", "btnConnect"); // closes
    child<QTabWidget>("tabWidget")->setCurrentIndex(0);
    click("wUsbConnection", "btnConnect"); // and the port isn't there any more
    QVERIFY(isReady("wUsbConnection"));
}

void tst_Stepper::destructorClosesThePort()
{
    const SimulatedPort module;
    connectOverUsb(module.portName());
    m_stepper.reset();
    Stepper another(nullptr);
    another.openUsbHandler(module.portName());
    QVERIFY(another.findChild<QTabWidget *>(u"tabWidget"_s)->isTabEnabled(8));
}

void tst_Stepper::motionSlotsSendTheirCommands_data()
{
    using Action = std::function<void(Stepper &)>;
    QTest::addColumn<Action>("action");
    QTest::addColumn<QStringList>("requests");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("velocity above 0")
        << Action([](Stepper &stepper) { stepper.handleTargetVelocityChange(1, 0, 1000); })
        << QStringList({u"01 01 00 00 00 00 03 E8 ED"_s})
        << QStringList({u"TargetVelocityChange: motor=0, value=1000"_s});
    QTest::newRow("velocity 0") << Action([](Stepper &stepper) {
        stepper.handleTargetVelocityChange(1, 0, 0);
    }) << QStringList({u"01 03 00 00 00 00 00 00 04"_s})
                                << QStringList({u"TargetVelocityChange: motor=0, value=0"_s});
    QTest::newRow("velocity below 0")
        << Action([](Stepper &stepper) { stepper.handleTargetVelocityChange(1, 0, -1000); })
        << QStringList({u"01 02 00 00 00 00 03 E8 EE"_s})
        << QStringList({u"TargetVelocityChange: motor=0, value=-1000"_s});
    QTest::newRow("relative position")
        << Action([](Stepper &stepper) { stepper.handleTargetPositionChange(1, 0, 1, -1); })
        << QStringList({u"01 04 01 00 FF FF FF FF 02"_s}) << QStringList();
    QTest::newRow("actual position is zeroed")
        << Action([](Stepper &stepper) { stepper.handleActualPositionChange(1, 0, 555); })
        << QStringList({u"01 05 01 00 00 00 00 00 07"_s})
        << QStringList({u"ActualPositionChange: motor=0, value=555"_s});
    QTest::newRow("torque") << Action([](Stepper &stepper) {
        stepper.handleTargetTorqueChange(1, 0, 300);
    }) << QStringList({u"01 05 0E 00 00 00 01 2C 41"_s})
                            << QStringList({u"TargetTorqueChange: motor=0, value=300"_s});
    QTest::newRow("open loop") << Action(
        [](Stepper &stepper) { stepper.handleSelectedTypeChanged(0); })
                               << QStringList({u"01 05 81 00 00 00 00 00 87"_s}) << QStringList();
    QTest::newRow("another loop mode")
        << Action([](Stepper &stepper) { stepper.handleSelectedTypeChanged(2); }) << QStringList()
        << QStringList();
}

void tst_Stepper::motionSlotsSendTheirCommands()
{
    QFETCH(std::function<void(Stepper &)>, action);
    QFETCH(QStringList, requests);
    QFETCH(QStringList, lines);
    SimulatedPort module;
    connectOverUsb(module.portName());
    module.clearWireLog();
    m_log->clear();
    action(*m_stepper);
    QCOMPARE(module.requests(), requests);
    QCOMPARE(m_log->lines(), lines);
}

void tst_Stepper::motionSlotsAreSilentWithoutAModule()
{
    m_log->clear();
    m_stepper->handleTargetPositionChange(1, 0, 0, 100);
    m_stepper->handleSelectedTypeChanged(1);
    m_stepper->actualLoopModeChanged(u"1 : Closed loop"_s);
    QCOMPARE(m_log->lines(), QStringList());
}

void tst_Stepper::loopModeChosenByTheUserIsWritten()
{
    SimulatedPort module;
    connectOverUsb(module.portName());
    module.clearWireLog();
    auto *loopMode = child<QComboBox>("cmbLoopMode", "quickstartTab");
    loopMode->setFocus();
    QTest::keyClick(loopMode, Qt::Key_Down);
    QCOMPARE(loopMode->currentText(), u"1 : Closed loop"_s);
    QCOMPARE(module.requests(), QStringList({u"01 05 81 00 00 00 00 01 88"_s}));
}

void tst_Stepper::loopModeOfTheModuleIsShownAndEchoed()
{
    SimulatedPort module;
    connectOverUsb(module.portName());
    module.clearWireLog();
    // Neither the address nor the bank counts.
    m_stepper->requestedValue(99, 3, asByte(129), 1);
    QCOMPARE(child<QComboBox>("cmbLoopMode", "quickstartTab")->currentIndex(), 1);
    QCOMPARE(module.requests(), QStringList({u"01 05 81 00 00 00 00 01 88"_s}));

    module.clearWireLog();
    m_stepper->requestedValue(1, 0, asByte(129), 1);
    QVERIFY2(module.requests().isEmpty(), "an equal value writes nothing");
}

void tst_Stepper::loopModeWithoutAnItemLeavesTheBox_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("value");
    QTest::newRow("no item starts with 2") << 129 << 2;
    QTest::newRow("negative") << 129 << -1;
    QTest::newRow("another parameter") << 130 << 1;
    QTest::newRow("no item starts with 10") << 129 << 10;
}

void tst_Stepper::loopModeWithoutAnItemLeavesTheBox()
{
    QFETCH(int, type);
    QFETCH(int, value);
    SimulatedPort module;
    connectOverUsb(module.portName());
    module.clearWireLog();
    m_stepper->requestedValue(1, 0, asByte(type), value);
    QCOMPARE(child<QComboBox>("cmbLoopMode", "quickstartTab")->currentIndex(), 0);
    QVERIFY(module.requests().isEmpty());
}

void tst_Stepper::loopModeTextWithoutANumberIsZero_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("requests");
    const QStringList zero = {u"01 05 81 00 00 00 00 00 87"_s};
    const QStringList one = {u"01 05 81 00 00 00 00 01 88"_s};
    // The reply chooses the item of that number, which writes it once more.
    QTest::newRow("number") << u"1 : x"_s << one + one;
    QTest::newRow("no separator") << u"1: x"_s << zero;
    QTest::newRow("not a number") << u"one : x"_s << zero;
    QTest::newRow("empty") << QString() << zero;
}

void tst_Stepper::loopModeTextWithoutANumberIsZero()
{
    QFETCH(QString, text);
    QFETCH(QStringList, requests);
    SimulatedPort module;
    connectOverUsb(module.portName());
    module.clearWireLog();
    m_stepper->actualLoopModeChanged(text);
    QCOMPARE(module.requests(), requests);
}

QTEST_MAIN(tst_Stepper)
#include "tst_Stepper.moc"
