#include "app/StepperTest.h"
#include "app/WTraceController.h"
#include "panels/WConnection.h"
#include "panels/WSerialConnection.h"
#include "support/SimulatedPort.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;

/// The life of a connection over USB and RS485, with a simulated module on a real port.
class tst_StepperConnection : public StepperTest
{
    Q_OBJECT

private slots:
    void attachedDevicesReachTheirPanels();
    void usbConnectEnablesTheTabs();
    void usbCommandsGoToAddressOne();
    void directCommandIsAnsweredInTheReplyRow();
    void unansweredDirectCommandKeepsTheReplyRow_data();
    void unansweredDirectCommandKeepsTheReplyRow();
    void serialConnectSetsAddressAndBaudRate();
    void silentModuleEndsTheFirstRead_data();
    void silentModuleEndsTheFirstRead();
    void emptyPortNeverReachesTheHandler_data();
    void emptyPortNeverReachesTheHandler();
    void failedOpenPutsThePanelBackToReady_data();
    void failedOpenPutsThePanelBackToReady();
    void disconnectDisablesTheTabsAtOnce_data();
    void disconnectDisablesTheTabsAtOnce();
    void silentModuleShowsBothPanelsReadyAndKeepsTheTabs();
    void connectAfterASilenceFailsOnceThenWorks();
    void pulledOutPortIsNoticedByTheNextCommand();
    void destructorClosesThePort();
    void addressesAbove127AreTheSameByte();
    void delayOfASerialConnectionStays();
    void pollingFollowsTheConnection();
    void silentModuleCostsOneTimeOutAnEntryThenCalm();

private:
    QStringList replyRow() const;
};

QStringList tst_StepperConnection::replyRow() const
{
    QStringList texts;
    for (const char *name :
         {"sbReplyAddress", "sbReplyCommand", "sbReplyType", "sbReplyMotorBank", "sbReplyValue"}) {
        texts.append(child<QSpinBox>(name)->text());
    }
    return texts;
}

void tst_StepperConnection::attachedDevicesReachTheirPanels()
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

void tst_StepperConnection::usbConnectEnablesTheTabs()
{
    const SimulatedPort module;
    connectOverUsb(module.portName());
    QVERIFY(moduleTabsAreEnabled());
    QCOMPARE(child<QTabWidget>("tabWidget")->currentIndex(), 1);
    QVERIFY(!child<QPushButton>("btnConnect", "wUsbConnection")->isEnabled());
    QVERIFY(child<QPushButton>("btnDisconnect", "wUsbConnection")->isEnabled());
}

void tst_StepperConnection::usbCommandsGoToAddressOne()
{
    const SimulatedPort module;
    m_stepper->openSerialHandler(QString(), 9600, 7); // leaves 7 behind
    QCOMPARE(child<QSpinBox>("sbRequestAddress")->value(), 7);
    connectOverUsb(module.portName());
    QCOMPARE(child<QSpinBox>("sbRequestAddress")->value(), 1);
}

void tst_StepperConnection::directCommandIsAnsweredInTheReplyRow()
{
    SimulatedPort module;
    connectOverUsb(module.portName());
    stopPolling(module);
    sendDirectCommand(u"6 - GAP"_s, 4);

    QCOMPARE(module.requests(), QStringList({u"01 06 04 00 00 00 00 00 0B"_s}));
    QCOMPARE(child<QSpinBox>("sbReplyAddress")->value(), 1);
    QCOMPARE(child<QSpinBox>("sbReplyCommand")->value(), 6);
    QCOMPARE(child<QSpinBox>("sbReplyType")->value(), 100);
    QCOMPARE(child<QSpinBox>("sbReplyMotorBank")->value(), 0);
    QVERIFY(child<QSpinBox>("sbReplyValue")->value() != 0);
}

void tst_StepperConnection::unansweredDirectCommandKeepsTheReplyRow_data()
{
    QTest::addColumn<bool>("connected");
    QTest::newRow("silent module") << true;
    QTest::newRow("no connection") << false;
}

void tst_StepperConnection::unansweredDirectCommandKeepsTheReplyRow()
{
    QFETCH(bool, connected);
    SimulatedPort module;
    connectOverUsb(module.portName());
    sendDirectCommand(u"6 - GAP"_s, 4);
    const QStringList row = replyRow();
    QVERIFY(module.fault(u"silence"_s));
    if (!connected) {
        click("wUsbConnection", "btnDisconnect");
        child<QTabWidget>("tabWidget")->setTabEnabled(8, true);
    }
    sendDirectCommand(u"1 - ROR"_s, 6);
    QCOMPARE(replyRow(), row);
}

void tst_StepperConnection::serialConnectSetsAddressAndBaudRate()
{
    SimulatedPort module({.address = 7}, 14400);
    connectOverSerial(module.portName(), 14400, 7);
    QVERIFY(moduleTabsAreEnabled());
    QCOMPARE(child<QSpinBox>("sbDelay")->value(), 500);
    stopPolling(module);
    sendDirectCommand(u"6 - GAP"_s, 1);
    QCOMPARE(module.requests(), QStringList({u"07 06 01 00 00 00 00 00 0E"_s}));
    QCOMPARE(child<QSpinBox>("sbReplyAddress")->value(), 7);
    QCOMPARE(child<QSpinBox>("sbReplyType")->value(), 100);
}

void tst_StepperConnection::silentModuleEndsTheFirstRead_data()
{
    QTest::addColumn<QString>("reason");
    for (const char *reason : {"silence", "baud rate", "address"}) {
        QTest::newRow(reason) << QString::fromLatin1(reason);
    }
}

/// A port with nothing behind it that answers: both values of the first panel are waited for in
/// vain, then the panel is ready again and the tabs stay disabled.
void tst_StepperConnection::silentModuleEndsTheFirstRead()
{
    QFETCH(QString, reason);
    SimulatedPort module({.address = 7}, 14400);
    const QSignalSpy starts(child<WTraceController>("wTraceController"), &WTraceController::start);
    if (reason == "silence"_L1) {
        QVERIFY(module.fault(u"silence"_s));
    }
    m_log->clear();
    connectOverSerial(module.portName(), reason == "baud rate"_L1 ? 9600 : 14400,
                      reason == "address"_L1 ? 8 : 7);
    QCOMPARE(m_log->lines().filter(u"communicationTimeouted!"_s).size(), 2);
    QVERIFY(isReady("wSerialConnection"));
    QVERIFY(isReady("wUsbConnection"));
    QVERIFY(moduleTabsAreDisabled());
    QCOMPARE(child<QTabWidget>("tabWidget")->currentIndex(), 0);
    QCOMPARE(starts.size(), 0);
}

void tst_StepperConnection::emptyPortNeverReachesTheHandler_data()
{
    QTest::addColumn<QString>("panel");
    QTest::newRow("usb") << u"wUsbConnection"_s;
    QTest::newRow("rs485") << u"wSerialConnection"_s;
}

void tst_StepperConnection::emptyPortNeverReachesTheHandler()
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

void tst_StepperConnection::failedOpenPutsThePanelBackToReady_data()
{
    QTest::addColumn<bool>("usb");
    QTest::newRow("usb") << true;
    QTest::newRow("rs485") << false;
}

void tst_StepperConnection::failedOpenPutsThePanelBackToReady()
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

void tst_StepperConnection::disconnectDisablesTheTabsAtOnce_data()
{
    QTest::addColumn<bool>("usb");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("usb") << true << QStringList();
    QTest::newRow("rs485") << false << QStringList(u"closing serial handler..."_s);
}

void tst_StepperConnection::disconnectDisablesTheTabsAtOnce()
{
    QFETCH(bool, usb);
    QFETCH(QStringList, lines);
    SimulatedPort module;
    if (usb) {
        connectOverUsb(module.portName());
    } else {
        connectOverSerial(module.portName(), 9600, 1);
    }
    stopPolling(module);
    child<QTabWidget>("tabWidget")->setCurrentIndex(0);
    m_log->clear();
    const char *panel = usb ? "wUsbConnection" : "wSerialConnection";
    click(panel, "btnDisconnect");
    QVERIFY(isReady(panel));
    QVERIFY(moduleTabsAreDisabled());
    QVERIFY(child<QTabWidget>("tabWidget")->isTabEnabled(0));
    QCOMPARE(child<QTabWidget>("tabWidget")->currentIndex(), 0);
    QCOMPARE(m_log->lines().filter(u"closing"_s), lines);
    QVERIFY2(module.requests().isEmpty(), "the module hears nothing of it");
}

void tst_StepperConnection::silentModuleShowsBothPanelsReadyAndKeepsTheTabs()
{
    SimulatedPort module;
    connectOverUsb(module.portName());
    child<WSerialConnection>("wSerialConnection")->showConnected();
    QVERIFY(module.fault(u"silence"_s));
    sendDirectCommand(u"6 - GAP"_s, 1);
    QVERIFY(isReady("wUsbConnection"));
    QVERIFY(isReady("wSerialConnection"));
    QVERIFY(moduleTabsAreEnabled());
    QVERIFY(child<QPushButton>("btnStart", "wTraceController")->isEnabled());
    QVERIFY(m_log->lines().contains(
        u"Stepper::handleDetachedUsbDevice(\"%1\")"_s.arg(module.portName())));
}

void tst_StepperConnection::connectAfterASilenceFailsOnceThenWorks()
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

void tst_StepperConnection::pulledOutPortIsNoticedByTheNextCommand()
{
    SimulatedPort module;
    connectOverUsb(module.portName());
    const QSignalSpy stops(child<WTraceController>("wTraceController"), &WTraceController::stop);
    module.pullOut();
    sendDirectCommand(u"6 - GAP"_s, 1);
    QVERIFY(isReady("wUsbConnection"));
    QVERIFY(isReady("wSerialConnection"));
    QVERIFY(moduleTabsAreEnabled());
    QCOMPARE(stops.size(), 1);
    child<QTabWidget>("tabWidget")->setCurrentIndex(0);
    click("wUsbConnection", "btnConnect"); // closes
    click("wUsbConnection", "btnConnect"); // and the port isn't there any more
    QVERIFY(isReady("wUsbConnection"));
}

void tst_StepperConnection::destructorClosesThePort()
{
    const SimulatedPort module;
    connectOverUsb(module.portName());
    m_stepper.reset();
    Stepper another(nullptr);
    another.openUsbHandler(module.portName());
    QVERIFY(another.findChild<QTabWidget *>(u"tabWidget"_s)->isTabEnabled(8));
}

void tst_StepperConnection::addressesAbove127AreTheSameByte()
{
    SimulatedPort module({.address = 200});
    connectOverSerial(module.portName(), 9600, 200);
    stopPolling(module);
    m_stepper->handleSelectedTypeChanged(1);
    // By the slot, and by both boxes that the reply has reached.
    QCOMPARE(module.requests(), QStringList(3, u"C8 05 81 00 00 00 00 01 4F"_s));
    // The panel of direct commands widens the signed byte, and its field ends at 0.
    QCOMPARE(child<QSpinBox>("sbRequestAddress")->value(), 0);
}

void tst_StepperConnection::delayOfASerialConnectionStays()
{
    SimulatedPort module;
    QCOMPARE(child<QSpinBox>("sbDelay")->value(), 300);
    QCOMPARE(child<QSpinBox>("sbDelay")->minimum(), 200);
    QCOMPARE(child<QSpinBox>("sbDelay")->maximum(), 100000);
    connectOverSerial(module.portName(), 9600, 1);
    click("wSerialConnection", "btnDisconnect");
    connectOverUsb(module.portName());
    QCOMPARE(child<QSpinBox>("sbDelay")->value(), 500);
}

void tst_StepperConnection::pollingFollowsTheConnection()
{
    SimulatedPort module({.address = 7});
    connectOverSerial(module.portName(), 9600, 7);
    module.clearWireLog(); // of what the connect has read
    const QStringList pass = {
        u"07 06 12 00 00 00 00 00 1F"_s, u"07 06 96 00 00 00 00 00 A3"_s,
        u"07 06 97 00 00 00 00 00 A4"_s, u"07 06 98 00 00 00 00 00 A5"_s,
        u"07 06 83 00 00 00 00 00 90"_s, u"07 06 01 00 00 00 00 00 0E"_s,
        u"07 06 0F 00 00 00 00 00 1C"_s,
    };
    QTRY_COMPARE_GE(module.requests().size(), 2 * pass.size());
    QCOMPARE(module.requests().first(2 * pass.size()), pass + pass);

    // A plain disconnect doesn't stop the ticks: their passes end at the closed gate.
    click("wSerialConnection", "btnDisconnect");
    QVERIFY(!child<QPushButton>("btnStart", "wTraceController")->isEnabled());
    module.clearWireLog();
    const QSignalSpy passes(child<WTraceController>("wTraceController"),
                            &WTraceController::requestPDOValues);
    QTRY_COMPARE_GE(passes.size(), 2);
    QVERIFY(module.requests().isEmpty());
}

void tst_StepperConnection::silentModuleCostsOneTimeOutAnEntryThenCalm()
{
    // So long that the first time-out, half a second after its tick, stops the ticking before there
    // is another one: a second silent pass would double the counts.
    constexpr int DelayMsecs = 5000;
    child<QSpinBox>("sbDelay")->setValue(DelayMsecs);
    QSignalSpy passes(child<WTraceController>("wTraceController"),
                      &WTraceController::requestPDOValues);
    SimulatedPort module;
    connectOverUsb(module.portName());
    QTRY_COMPARE(passes.size(), 1);
    QVERIFY(module.fault(u"silence"_s));
    m_log->clear();
    QTRY_COMPARE_WITH_TIMEOUT(passes.size(), 2, 30000);
    QVERIFY(isReady("wUsbConnection"));
    const auto linesWith = [this](const QString &text) {
        return m_log->lines().filter(text).size();
    };
    QCOMPARE(linesWith(u"communicationTimeouted!"_s), 7);
    QCOMPARE(linesWith(u"handleDetachedUsbDevice"_s), 7);
    // Then nothing is asked any more: the next tick would have come in a delay less the pass.
    module.clearWireLog();
    QVERIFY(!passes.wait(DelayMsecs));
    QVERIFY(module.requests().isEmpty());
    QVERIFY(moduleTabsAreEnabled());
}

QTEST_MAIN(tst_StepperConnection)
#include "tst_StepperConnection.moc"
