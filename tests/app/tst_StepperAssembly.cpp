#include "app/StepperTest.h"

#include <QAbstractSlider>

using namespace Qt::StringLiterals;

/// What the window gives to each of its panels before any module is connected.
class tst_StepperAssembly : public StepperTest
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup() { }
    void cleanupTestCase();
    void numbersShowAsToolTips_data();
    void numbersShowAsToolTips();
    void everyOtherControlHasNoNumber();
    void titlesAndLabels_data();
    void titlesAndLabels();
    void limitsAndSteps_data();
    void limitsAndSteps();
    void choices_data();
    void choices();
};

// Nothing here changes the window: one does for all.

void tst_StepperAssembly::initTestCase()
{
    StepperTest::init();
}

void tst_StepperAssembly::init()
{
    TestCase::init();
}

void tst_StepperAssembly::cleanupTestCase()
{
    StepperTest::cleanup();
}

namespace {

struct NumberRow
{
    const char *panel;
    const char *control;
    int number;
};

constexpr NumberRow numberRows[] = {
    {"wJogVelocityControl", "sbAcceleration", 5},
    {"wJogVelocityControl", "sbActualVelocity", 131},
    {"wJogPositionControl", "sbActual", 1},
    {"wJogPositionControl", "btnClear", 1},
    {"wJogTorqueControl", "sbTargetCurrent", 14},
    {"wJogTorqueControl", "btnGo", 14},
    {"wJogTorqueControl", "sbMaxCurrent", 15},
    {"quickstartTab", "cmbLoopMode", 129},
    {"wModuleSettings", "slMaxCurrent", 6},
    {"wModuleSettings", "cbEnableRightLimitSwitch", 12},
    {"wModuleSettings", "cbEnableLeftLimitSwitch", 13},
    {"wModuleSettings", "cmbLoopMode", 129},
    {"wModuleSettings", "sbCurrent", 15},
    {"wModuleSettings", "sbSupplyVoltage", 153},
    {"wModuleSettings", "sbDCCurrent", 154},
    {"wModuleSettings", "sbTemperature", 155},
    {"wOpenLoopSettings", "slStandbyCurrent", 7},
    {"wOpenLoopSettings", "sbCurrent", 156},
    {"wOpenLoopSettings", "cmbMicrostepResolution", 140},
    {"wChopperSettings", "sbChopperBlankTime", 162},
    {"wChopperSettings", "sbChopperMode", 163},
    {"wChopperSettings", "sbHysteresisDecrement", 164},
    {"wChopperSettings", "sbHysteresisEnd", 165},
    {"wChopperSettings", "sbHysteresisStart", 166},
    {"wChopperSettings", "sbOffTime", 167},
    {"wChopperSettings", "sbSlopeHighSide", 175},
    {"wChopperSettings", "sbSlopeLowSide", 176},
    {"wPositionMaintenanceSettings", "sbPositionWindow", 134},
    {"wPositionMaintenanceSettings", "sbPositionWindowTime", 135},
    {"wPositionMaintenanceSettings", "sbStandStillP", 136},
    {"wPositionMaintenanceSettings", "sbStandDampening", 137},
    {"wPositionMaintenanceSettings", "sbStandStillErrorLimit", 138},
    {"wPositionMaintenanceSettings", "sbVelocityWindow", 17},
    {"wScalerSettings", "sbIScaleMin", 113},
    {"wScalerSettings", "sbIScaleMax", 114},
    {"wScalerSettings", "sbLagLeadLimit1", 116},
    {"wScalerSettings", "sbLagLeadLimit2", 117},
    {"wScalerSettings", "sbScaleInc", 118},
    {"wScalerSettings", "sbScaleDec", 119},
    {"wScalerSettings", "sbScaleIncTimeout", 120},
    {"wScalerSettings", "sbScaleDecTimeout", 121},
    {"wScalerSettings", "cbScalerEnabled", 122},
    {"wScalerSettings", "sbActualScaler", 123},
    {"wScalerSettings", "rbInputRawError", 115},
    {"wScalerSettings", "rbInputErrorGain", 115},
    {"wFieldWeakeningSettings", "sbGammaVMin", 108},
    {"wFieldWeakeningSettings", "sbGammaVMax", 109},
    {"wEncoderSettings", "sbCounter", 209},
    {"wEncoderSettings", "sbResolution", 210},
    {"wEncoderSettings", "sbFullstepResolution", 202},
    {"wEncoderSettings", "sbEncoderOffset", 112},
    {"wTorqueControl", "sbActualCurrent", 15},
    {"wTorqueControl", "sbTargetCurrent", 14},
    {"wActualStepperCurrents", "sbMotorCurrent", 150},
    {"wActualStepperCurrents", "sbCurrentPhaseA", 151},
    {"wActualStepperCurrents", "sbCurrentPhaseB", 152},
    {"wVelocityRampControl1", "sbMaxVelocity", 4},
    {"wVelocityRampControl1", "sbAcceleration", 5},
    {"wVelocityRampControl1", "sbStartStopVelocity", 130},
    {"wVelocityControl", "sbActualVelocity", 131},
    {"wCorrectionSettings1", "sbVelocityP", 124},
    {"wCorrectionSettings1", "sbMaxTolerance", 125},
    {"wCorrectionSettings1", "sbMaxVelocity", 126},
    {"wVelocityRampControl2", "sbMaxVelocity", 4},
    {"wVelocityRampControl2", "sbAcceleration", 5},
    {"wVelocityRampControl2", "sbStartStopVelocity", 130},
    {"wPositionControl", "sbActualPosition", 1},
    {"wPositionControl", "btnClear", 1},
    {"wPositionControl", "sbTargetPosition", 0},
    {"wPositionControl", "btnClearOnNull", 198},
    {"wCorrectionSettings2", "sbVelocityP", 124},
    {"wCorrectionSettings2", "sbMaxTolerance", 125},
    {"wCorrectionSettings2", "sbMaxVelocity", 126},
};

} // namespace

void tst_StepperAssembly::numbersShowAsToolTips_data()
{
    QTest::addColumn<QString>("panel");
    QTest::addColumn<QString>("control");
    QTest::addColumn<QString>("toolTip");
    for (const NumberRow &row : numberRows) {
        QTest::addRow("%s.%s", row.panel, row.control)
            << QString::fromLatin1(row.panel) << QString::fromLatin1(row.control)
            << u"AP: %1"_s.arg(row.number);
    }
}

void tst_StepperAssembly::numbersShowAsToolTips()
{
    QFETCH(QString, panel);
    QFETCH(QString, control);
    QTEST(child<QWidget>(qPrintable(control), qPrintable(panel))->toolTip(), "toolTip");
}

/// The table above is whole: no other control tells a number, above all not the 0 that the panels
/// start with.
void tst_StepperAssembly::everyOtherControlHasNoNumber()
{
    QList<const QWidget *> told;
    for (const NumberRow &row : numberRows) {
        told.append(child<QWidget>(row.control, row.panel));
    }
    int found = 0;
    for (const QWidget *widget : m_stepper->findChildren<QWidget *>()) {
        if (widget->toolTip().startsWith("AP: "_L1)) {
            QVERIFY2(told.contains(widget), qPrintable(widget->objectName()));
            ++found;
        }
    }
    QCOMPARE(found, told.size());
}

void tst_StepperAssembly::titlesAndLabels_data()
{
    QTest::addColumn<QString>("panel");
    QTest::addColumn<QString>("widget");
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *panel, const char *widget, const QString &text) {
        const QByteArray name(widget);
        QTest::addRow("%s.%s", panel, widget)
            << QString::fromLatin1(panel) << QString::fromLatin1(widget)
            << QByteArray(name.startsWith("gb") ? "title" : "text") << text;
    };
    row("wUsbConnection", "gbConnection", u"USB connection"_s);
    row("wCANKvaserConnection", "gbConnection", u"CAN connection"_s);
    row("wSerialConnection", "gbSerialConnection", u"Serial connection"_s);
    row("wJogVelocityControl", "gbSimpleVelocityMode", u"Velocity mode [pps, pps/s]"_s);
    row("wJogVelocityControl", "lblActualVelocity", u"V_ACTUAL"_s);
    row("wJogVelocityControl", "lblTargetVelocity", u"V_TARGET"_s);
    row("wJogPositionControl", "gbJogPositionControl", u"Position mode [\u00b5steps]"_s);
    row("wJogPositionControl", "lblActual", u"X_ACTUAL"_s);
    row("wJogPositionControl", "lblTarget", u"X_TARGET"_s);
    row("wJogTorqueControl", "gbTorqueControl", u"Torque mode [mA]"_s);
    row("wJogTorqueControl", "lblMaxCurrent", u"Phase \u00ce max"_s);
    row("wJogTorqueControl", "lblTargetCurrent", u"Phase \u00ce target"_s);
    row("wModuleSettings", "gbSettings", u"General settings"_s);
    row("wOpenLoopSettings", "gbOpenLoopSettings", u"Open loop settings"_s);
    row("wChopperSettings", "gbChopperSettings", u"Chopper settings ZDR626"_s);
    row("wPositionMaintenanceSettings", "gbPositionMaintenanceSettings",
        u"Position maintenance settings"_s);
    row("wScalerSettings", "gbScalerSettings", u"Current scaler settings"_s);
    row("wFieldWeakeningSettings", "gbFieldWeakeningSettings", u"Field weakening settings"_s);
    row("wEncoderSettings", "gbEncoderSettings", u"Encoder settings"_s);
    row("wTorqueControl", "gbCurrentControl", u"Current control [mA]"_s);
    row("wTorqueControl", "lblActualCurrent", u"Max. phase current"_s);
    row("wTorqueControl", "lblTargetCurrent", u"Target phase current"_s);
    row("wActualStepperCurrents", "gbActualCurrents", u"Actual currents [mA]"_s);
    for (const char *ramp : {"wVelocityRampControl1", "wVelocityRampControl2"}) {
        row(ramp, "gbVelocityRampControl", u"Velocity ramp control"_s);
        row(ramp, "lblMaxVelocity", u"Max. velocity [pps]"_s);
        row(ramp, "lblAcceleration", u"Accel.[pps/s]"_s);
    }
    row("wVelocityControl", "gbVelocityControl", u"Velocity control [pps]"_s);
    row("wVelocityControl", "lblActualVelocity", u"Actual vel."_s);
    row("wVelocityControl", "lblTargetVelocity", u"Target vel."_s);
    row("wCorrectionSettings1", "gbCorrectionSettings", u"Dynamic error correction"_s);
    row("wCorrectionSettings2", "gbCorrectionSettings", u"Dynamic error correction"_s);
    row("wPositionControl", "gbPositionControl", u"Position control [\u00b5steps]"_s);
    row("wPositionControl", "lblActualPosition", u"Actual pos."_s);
    row("wPositionControl", "lblTargetPosition", u"Target pos."_s);
    row("wStates", "gbStates", u"Status flags"_s);
    row("quickstartTab", "btnInitEncoder2", u"Init encoder"_s);
    row("encoderTab", "btnInitEncoder", u"Init encoder"_s);
}

void tst_StepperAssembly::titlesAndLabels()
{
    QFETCH(QString, panel);
    QFETCH(QString, widget);
    QFETCH(QByteArray, property);
    const auto *labelled = child<QWidget>(qPrintable(widget), qPrintable(panel));
    QTEST(labelled->property(property).toString(), "text");
}

void tst_StepperAssembly::limitsAndSteps_data()
{
    QTest::addColumn<QString>("panel");
    QTest::addColumn<QString>("control");
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<int>("value");
    const auto row = [](const char *panel, const char *control, const char *property, int value) {
        QTest::addRow("%s.%s %s", panel, control, property)
            << QString::fromLatin1(panel) << QString::fromLatin1(control) << QByteArray(property)
            << value;
    };
    row("wTraceController", "sbDelay", "minimum", 200);
    row("wTraceController", "sbDelay", "value", 300);
    row("wJogVelocityControl", "sbTargetVelocity", "maximum", 8000000);
    row("wJogVelocityControl", "sbAcceleration", "maximum", 8000000);
    // Ten steps a decade: the scale is logarithmic.
    row("wJogVelocityControl", "dialerVelocity", "maximum", 70);
    row("wJogVelocityControl", "dialerAcceleration", "maximum", 70);
    row("wJogPositionControl", "dialer", "maximum", 51200);
    row("wTorqueControl", "sbTargetCurrent", "maximum", 5000);
    for (const char *ramp : {"wVelocityRampControl1", "wVelocityRampControl2"}) {
        row(ramp, "sbMaxVelocity", "maximum", 268435454);
        row(ramp, "sbMaxVelocity", "singleStep", 10000);
        row(ramp, "sbAcceleration", "maximum", 33554431);
        row(ramp, "sbAcceleration", "singleStep", 1000);
    }
    row("wVelocityControl", "sbTargetVelocity", "maximum", 268435454);
    row("wVelocityControl", "sbTargetVelocity", "singleStep", 10000);
    row("wPositionControl", "sbTargetPosition", "singleStep", 10000);
    row("quickstartTab", "btnInitEncoder2", "maximumWidth", 200);
}

void tst_StepperAssembly::limitsAndSteps()
{
    QFETCH(QString, panel);
    QFETCH(QString, control);
    QFETCH(QByteArray, property);
    QTEST(child<QWidget>(qPrintable(control), qPrintable(panel))->property(property).toInt(),
          "value");
}

void tst_StepperAssembly::choices_data()
{
    QTest::addColumn<QString>("panel");
    QTest::addColumn<QString>("box");
    QTest::addColumn<QStringList>("items");
    const QStringList loopModes = {u"0 : Open loop"_s, u"1 : Closed loop"_s};
    QTest::newRow("loop mode, quickstart") << u"quickstartTab"_s << u"cmbLoopMode"_s << loopModes;
    QTest::newRow("loop mode, settings") << u"wModuleSettings"_s << u"cmbLoopMode"_s << loopModes;
    QTest::newRow("microsteps") << u"wOpenLoopSettings"_s << u"cmbMicrostepResolution"_s
                                << QStringList({u"0 : full step"_s, u"1 : half step"_s,
                                                u"2 : 4 microsteps"_s, u"3 : 8 microsteps"_s,
                                                u"4 : 16 microsteps"_s, u"5 : 32 microsteps"_s,
                                                u"6 : 64 microsteps"_s, u"7 : 128 microsteps"_s,
                                                u"8 : 256 microsteps"_s});
    QTest::newRow("bit rates") << u"wCANKvaserConnection"_s << u"cmbBitrate"_s
                               << QStringList({u"1000"_s, u"500"_s, u"250"_s, u"125"_s, u"100"_s,
                                               u"50"_s, u"10"_s});
}

void tst_StepperAssembly::choices()
{
    QFETCH(QString, panel);
    QFETCH(QString, box);
    const auto *choice = child<QComboBox>(qPrintable(box), qPrintable(panel));
    QStringList items;
    for (int index = 0; index < choice->count(); ++index) {
        items.append(choice->itemText(index));
    }
    QTEST(items, "items");
    QCOMPARE(choice->currentIndex(), 0);
}

QTEST_MAIN(tst_StepperAssembly)
#include "tst_StepperAssembly.moc"
