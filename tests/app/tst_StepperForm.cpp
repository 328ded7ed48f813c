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
    void tabsHoldTheirPanels_data();
    void tabsHoldTheirPanels();
    void statesStandBesideTheTabsAndTheChartsBelow();
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
            u"handleMaxCurrentChanged(int value)"_s,
            u"handleMotorControlModeChanged(int mode)"_s,
            u"exportSettings()"_s,
            u"importSettings()"_s,
            u"exportSettingsToZDRL()"_s,
            u"requestedValue(char address, char motorBank, char type, int value)"_s,
            u"actualLoopModeChanged(QString value)"_s,
            u"updateTraceValues()"_s,
            u"handleBtnEncoderClicked()"_s,
            u"handleMotorHalted(bool halted)"_s,
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

void tst_StepperForm::tabsHoldTheirPanels_data()
{
    QTest::addColumn<QString>("page");
    QTest::addColumn<QString>("object");
    QTest::addColumn<QString>("className");
    const auto row = [](const char *page, const char *object, const char *className) {
        QTest::newRow(object) << QString::fromLatin1(page) << QString::fromLatin1(object)
                              << QString::fromLatin1(className);
    };
    row("connectionTab", "twConnections", "QTabWidget");
    row("connectionTab", "wTraceController", "WTraceController");
    row("quickstartTab", "wJogVelocityControl", "WJogVelocityControl");
    row("quickstartTab", "wJogPositionControl", "WJogPositionControl");
    row("quickstartTab", "wJogTorqueControl", "WJogTorqueControl");
    row("quickstartTab", "cmbLoopMode", "QComboBox");
    row("quickstartTab", "btnInitEncoder2", "QPushButton");
    row("settingsTab", "wModuleSettings", "WClosedLoopSettings");
    row("settingsTab", "wOpenLoopSettings", "WOpenLoopSettings");
    row("settingsTab", "wChopperSettings", "WChopperSettings");
    row("closedLoopTab", "wPositionMaintenanceSettings", "WPositionMaintenanceSettings");
    row("closedLoopTab", "wScalerSettings", "WCurrentScalerSettings");
    row("closedLoopTab", "wFieldWeakeningSettings", "WFieldWeakeningSettings");
    row("encoderTab", "wEncoderSettings", "WStepperEncoderSettings");
    row("encoderTab", "btnInitEncoder", "QPushButton");
    row("torqueTab", "wTorqueControl", "WCurrentControl");
    row("torqueTab", "wActualStepperCurrents", "WActualStepperCurrents");
    row("velocityTab", "wVelocityRampControl1", "WStepperVelocityRampControl");
    row("velocityTab", "wVelocityControl", "WVelocityControl");
    row("velocityTab", "wCorrectionSettings1", "CorrectionSettings");
    row("positioningTab", "wVelocityRampControl2", "WStepperVelocityRampControl");
    row("positioningTab", "wPositionControl", "WPositionControl");
    row("positioningTab", "wCorrectionSettings2", "CorrectionSettings");
    row("zdrlTab", "wDirectMode", "WDirectMode");
    row("Stepper", "tabWidget", "QTabWidget");
    row("Stepper", "wStates", "WStepperStatusFlags");
    row("Stepper", "velocityDrawer", "WSimpleScaledDrawer");
    row("Stepper", "positionDrawer", "WSimpleScaledDrawer");
    row("Stepper", "torqueDrawer", "WSimpleScaledDrawer");
}

void tst_StepperForm::tabsHoldTheirPanels()
{
    QFETCH(QString, page);
    QFETCH(QString, object);
    QFETCH(QString, className);
    const QWidget *holder =
        page == "Stepper"_L1 ? m_stepper.get() : child<QWidget>(qPrintable(page));
    const auto *widget = holder->findChild<QWidget *>(object, Qt::FindDirectChildrenOnly);
    QVERIFY(widget);
    QCOMPARE(QString::fromLatin1(widget->metaObject()->className()), className);
}

void tst_StepperForm::statesStandBesideTheTabsAndTheChartsBelow()
{
    const auto *tabs = child<QWidget>("tabWidget");
    const auto *states = child<QWidget>("wStates");
    for (int index = 0; index < child<QTabWidget>("tabWidget")->count(); ++index) {
        child<QTabWidget>("tabWidget")->setCurrentIndex(index);
        QVERIFY(states->isVisible());
    }
    QCOMPARE_GE(states->x(), tabs->geometry().right());
    m_stepper->showVelocityDrawer(true);
    m_stepper->showPositionDrawer(true);
    m_stepper->showTorqueDrawer(true);
    const QWidget *above = tabs;
    for (const char *name : {"velocityDrawer", "positionDrawer", "torqueDrawer"}) {
        const auto *drawer = child<QWidget>(name);
        QTRY_COMPARE_GE(drawer->y(), above->geometry().bottom());
        above = drawer;
    }
}

void tst_StepperForm::startsWithNothingButTheConnectionTab()
{
    QVERIFY(child<QTabWidget>("tabWidget")->isTabEnabled(0));
    QVERIFY(moduleTabsAreDisabled());
    for (const char *name : {"velocityDrawer", "positionDrawer", "torqueDrawer", "wStates"}) {
        QVERIFY2(!child<QWidget>(name)->isEnabled(), name);
    }
    // So an encoder can't be looked for without a module.
    QVERIFY(!child<QPushButton>("btnInitEncoder")->isEnabled());
    QVERIFY(!child<QPushButton>("btnInitEncoder2")->isEnabled());
    QCOMPARE(child<QSpinBox>("sbRequestAddress")->value(), 1);
}

QTEST_MAIN(tst_StepperForm)
#include "tst_StepperForm.moc"
