#include "app/StepperTest.h"
#include "support/MetaMethods.h"

using namespace Qt::StringLiterals;

/// The widget tree, and what the window gives to its panels.
class tst_StepperForm : public StepperTest
{
    Q_OBJECT

private slots:
    void slotsStandInOrder();
    void formHasItsTabs_data();
    void formHasItsTabs();
    void formHasItsConnectionPages_data();
    void formHasItsConnectionPages();
    void formHasItsTitlesAndSize();
    void canOffersSevenBitRates();
    void loopModeHasItsItems();
    void startsWithNothingButTheConnectionTab();
};

void tst_StepperForm::slotsStandInOrder()
{
    QCOMPARE(
        ownMethods(Stepper::staticMetaObject, QMetaMethod::Slot),
        QStringList({
            u"handleAttachedUsbDevice(QString port, QString description)"_s,
            u"handleDetachedUsbDevice(QString port)"_s,
            u"openUsbHandler(QString port)"_s,
            u"closeUsbHandler()"_s,
            u"openSerialHandler(QString port, int baudrate, int address)"_s,
            u"closeSerialHandler()"_s,
            u"handleAttachedSerialDevice(QString port, QString description)"_s,
            u"openCANKvaserHandler(int bitrate, int sendID, int receiveID)"_s,
            u"closeCANKvaserHandler()"_s,
            u"handleCanKvaserDeviceClosed(char id)"_s,
            u"handleTargetVelocityChange(char address, char motorBank, int value)"_s,
            u"handleTargetPositionChange(char address, char motorBank, char moveType, int value)"_s,
            u"handleActualPositionChange(char address, char motorBank, int value)"_s,
            u"handleTargetTorqueChange(char address, char motorBank, int value)"_s,
            u"handleSelectedTypeChanged(int type)"_s,
            u"exportSettings()"_s,
            u"importSettings()"_s,
            u"exportSettingsToZDRL()"_s,
            u"requestedValue(char address, char motorBank, char type, int value)"_s,
            u"actualLoopModeChanged(QString value)"_s,
            u"updateTraceValues()"_s,
        }));
}

void tst_StepperForm::formHasItsTabs_data()
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

void tst_StepperForm::formHasItsTabs()
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

void tst_StepperForm::formHasItsConnectionPages_data()
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

void tst_StepperForm::formHasItsConnectionPages()
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

void tst_StepperForm::formHasItsTitlesAndSize()
{
    const Stepper stepper(nullptr);
    QCOMPARE(stepper.windowTitle(), u"Form"_s);
    QCOMPARE(stepper.size(), QSize(959, 627));
    QVERIFY(!stepper.parent());
}

void tst_StepperForm::canOffersSevenBitRates()
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

void tst_StepperForm::loopModeHasItsItems()
{
    const auto *loopMode = child<QComboBox>("cmbLoopMode", "quickstartTab");
    QCOMPARE(loopMode->count(), 2);
    QCOMPARE(loopMode->itemText(0), u"0 : Open loop"_s);
    QCOMPARE(loopMode->itemText(1), u"1 : Closed loop"_s);
    QCOMPARE(loopMode->toolTip(), u"AP: 129"_s);
}

void tst_StepperForm::startsWithNothingButTheConnectionTab()
{
    QVERIFY(child<QTabWidget>("tabWidget")->isTabEnabled(0));
    QVERIFY(moduleTabsAreDisabled());
    QCOMPARE(child<QSpinBox>("sbRequestAddress")->value(), 1);
}

QTEST_MAIN(tst_StepperForm)
#include "tst_StepperForm.moc"
