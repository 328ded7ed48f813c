#include "panels/AxisParameter.h"
#include "support/TestCase.h"

#include <QFile>
#include <QTest>

#include <algorithm>
#include <climits>

using namespace Qt::StringLiterals;

namespace {

struct Row
{
    const AxisParameter &parameter;
    int number;
    const char16_t *name;
    const char16_t *unit = u"";
    const char16_t *settingsKey = u"";
    const char16_t *scriptComment = u"";
    const char16_t *chartName = u"";
};

namespace P = AxisParameters;

const Row rows[] = {
    {P::TargetPosition, 0, u"target position", u"µsteps", u"", u"", u"target position [µsteps]"},
    {P::ActualPosition, 1, u"actual position", u"µsteps", u"", u"", u"actual position [µsteps]"},
    {P::TargetVelocity, 2, u"target velocity", u"pps", u"", u"", u"target velocity [pps]"},
    {P::MaxPositioningSpeed, 4, u"max positioning speed", u"pps", u"MaxPositioningSpeed",
     u"max positioning speed"},
    {P::Acceleration, 5, u"acceleration", u"pps/s", u"Acceleration", u"acceleration"},
    {P::MaxCurrent, 6, u"max current", u"", u"MaxCurrent", u"max current"},
    {P::StandbyCurrent, 7, u"standby current", u"", u"StandbyCurrent", u"standby current"},
    {P::RightLimitSwitchDisabled, 12, u"right limit switch disabled", u"",
     u"RightLimitSwitchDisabled", u"right limit switch disabled"},
    {P::LeftLimitSwitchDisabled, 13, u"left limit switch disabled", u"", u"LeftLimitSwitchDisabled",
     u"left limit switch disabled"},
    {P::TargetPhaseCurrent, 14, u"target phase current", u"mA", u"", u"", u"delta"},
    {P::MaxPhaseCurrent, 15, u"max phase current", u"mA"},
    {P::VelocityReachedWindow, 17, u"velocity reached window"},
    {P::StatusFlags, 18, u"status flags"},
    {P::GammaVMin, 108, u"gamma VMin", u"", u"GammaVMin", u"CL gamma VMin"},
    {P::GammaVMax, 109, u"gamma VMax", u"", u"GammaVMax", u"CL gamma VMax"},
    {P::GammaMax, 110, u"maximum gamma", u"", u"GammaMax", u"CL maximum gamma"},
    {P::BetaMax, 111, u"beta", u"", u"BetaMax", u"CL beta", u"cl_beta"},
    {P::EncoderOffset, 112, u"encoder offset", u"", u"EncoderOffset", u"CL encoder offset"},
    {P::ScalerMinimum, 113, u"scaler minimum", u"", u"IScaleMin", u"CL scaler minimum"},
    {P::ScalerMaximum, 114, u"scaler maximum", u"", u"IScaleMax", u"CL scaler maximum"},
    {P::ScalerInput, 115, u"scaler input select", u"", u"IScaleInput", u"CL scaler input select"},
    {P::ScalerLimit1, 116, u"scaler limit 1", u"", u"IScaleLimit1", u"Cl scaler limit 1"},
    {P::ScalerLimit2, 117, u"scaler limit 2", u"", u"IScaleLimit2", u"CL scaler limit 2"},
    {P::ScalerIncrement, 118, u"scaler increment", u"", u"ScaleInc", u"CL scaler increment"},
    {P::ScalerDecrement, 119, u"scaler decrement", u"", u"ScaleDec", u"CL scaler decrement"},
    {P::ScalerIncrementTimeout, 120, u"scaler increment timeout", u"", u"ScaleIncTimeout",
     u"CL scaler increment timeout"},
    {P::ScalerDecrementTimeout, 121, u"scaler decrement timeout", u"", u"ScaleDecTimeout",
     u"CL scaler decrement timeout"},
    {P::ScalerEnabled, 122, u"scaler enable", u"", u"ScalerEnabled", u"CL scaler enable"},
    {P::ScalerActualValue, 123, u"scaler actual value", u"", u"", u"", u"scaler actual value"},
    {P::CorrectionVelocityP, 124, u"correction velocity P", u"", u"CorrectionVelocityP",
     u"correction velocity P"},
    {P::MaxCorrectionTolerance, 125, u"max. correction tolerance", u"s", u"MaxCorrectionTolerance",
     u"max. correction tolerance"},
    {P::MaxCorrectionSpeed, 126, u"max. correction speed", u"pps", u"MaxCorrectionSpeed",
     u"max. correction speed"},
    {P::RelativePositionOption, 127, u"relative position option", u"", u"RelativePositionOption",
     u"relative position option"},
    {P::ClosedLoopMode, 129, u"closed loop mode", u"", u"ClosedLoopMode", u"closed loop mode"},
    {P::StartStopVelocity, 130, u"start-stop velocity", u"pps"},
    {P::ActualVelocity, 131, u"actual velocity", u"pps", u"", u"", u"actual velocity [pps]"},
    {P::EncoderDetectionState, 132, u"encoder detection state", u"", u"RampEnabled"},
    {P::ClosedLoopInitialisationFlag, 133, u"closed loop initialisation flag"},
    {P::PositionReachedWindow, 134, u"position reached window"},
    {P::PositionReachedTime, 135, u"position reached time", u"1/10 ms"},
    {P::StandstillErrorGain, 136, u"standstill error gain"},
    {P::StandstillDampening, 137, u"standstill dampening"},
    {P::StandstillErrorLimit, 138, u"standstill error limit"},
    {P::MicrostepResolution, 140, u"microstep resolution", u"", u"MicrostepResolution",
     u"microstep resolution"},
    {P::MotorCurrent, 150, u"motor current", u"mA"},
    {P::PeakCurrentPhaseA, 151, u"peak current phase A", u"mA"},
    {P::PeakCurrentPhaseB, 152, u"peak current phase B", u"mA"},
    {P::SupplyVoltage, 153, u"supply voltage", u"1/10 V"},
    {P::DCCurrent, 154, u"DC current", u"mA"},
    {P::Temperature, 155, u"temperature", u"C"},
    {P::StandbyPhaseCurrent, 156, u"standby current in mA", u"mA"},
    {P::ChopperBlankTime, 162, u"chopper blank time"},
    {P::ChopperMode, 163, u"chopper mode"},
    {P::HysteresisDecrement, 164, u"hysteresis decrement"},
    {P::HysteresisEnd, 165, u"hysteresis end"},
    {P::HysteresisStart, 166, u"hysteresis start"},
    {P::OffTime, 167, u"off time"},
    {P::SlopeHighSide, 175, u"slope high side"},
    {P::SlopeLowSide, 176, u"slope low side"},
    {P::ClearOnNull, 198, u"clear on null"},
    {P::EncoderMode, 201, u"encoder mode", u"", u"EncoderMode", u"encoder mode"},
    {P::MotorFullSteps, 202, u"motor full steps", u"steps", u"MotorFullSteps", u"motor full steps"},
    {P::ActualEncoderValue, 209, u"actual encoder value"},
    {P::EncoderResolution, 210, u"encoder resolution", u"positions", u"EncoderResolution",
     u"encoder resolution"},
    {P::Gamma, 230, u"gamma", u"", u"", u"", u"gamma"},
    {P::DeltaMod, 231, u"delta mod", u"", u"", u"", u"delta mod"},
    {P::DeltaLut, 232, u"delta lut", u"", u"", u"", u"delta lut"},
    {P::VirtualActualPosition, 233, u"virtual actual position", u"µsteps", u"", u"",
     u"virtual actual position"},
    {P::VirtualTargetVelocity, 234, u"virtual target velocity", u"pps", u"", u"",
     u"virtual target velocity"},
    {P::VirtualActualVelocity, 235, u"virtual actual velocity", u"pps", u"", u"",
     u"virutal actual velocity"},
    {P::ScalerTargetValue, 236, u"scaler target value", u"", u"", u"", u"scaler target value"},
    {P::PositionError, 237, u"position error", u"", u"", u"", u"position error"},
};

} // namespace

class tst_AxisParameter : public TestCase
{
    Q_OBJECT

private slots:
    void parameter_data();
    void parameter();
    void counts();
    void microIsOneCharacter();
    void documentHasThem();
};

void tst_AxisParameter::parameter_data()
{
    QTest::addColumn<int>("index");
    for (int index = 0; index < std::ssize(rows); ++index) {
        QTest::addRow("%d", rows[index].number) << index;
    }
}

void tst_AxisParameter::parameter()
{
    QFETCH(int, index);
    const Row &row = rows[index];
    const AxisParameter &parameter = row.parameter;
    QCOMPARE(parameter.number, row.number);
    const char byte = parameter;
    QCOMPARE(int(byte), row.number > CHAR_MAX ? row.number - 256 : row.number);
    QCOMPARE(parameter.name, QStringView(row.name));
    QCOMPARE(parameter.unit, QStringView(row.unit));
    QCOMPARE(parameter.settingsKey, QStringView(row.settingsKey));
    QCOMPARE(parameter.scriptComment, QStringView(row.scriptComment));
    QCOMPARE(parameter.chartName, QStringView(row.chartName));
}

void tst_AxisParameter::counts()
{
    const auto count = [](auto member) {
        return std::count_if(std::begin(rows), std::end(rows), [member](const Row &row) {
            return !(row.parameter.*member).isEmpty();
        });
    };
    QCOMPARE(count(&AxisParameter::settingsKey), 31);
    QCOMPARE(count(&AxisParameter::scriptComment), 30);
    QCOMPARE(count(&AxisParameter::chartName), 15);
}

void tst_AxisParameter::microIsOneCharacter()
{
    QCOMPARE(P::TargetPosition.unit.size(), 6);
    QCOMPARE(P::TargetPosition.unit.front().unicode(), char16_t(0xb5));
}

/// The description of the protocol lists the same parameters in the same order, and no others.
void tst_AxisParameter::documentHasThem()
{
    QStringList expected;
    for (const auto &row : rows) {
        const AxisParameter &parameter = row.parameter;
        const QString key =
            parameter.settingsKey.isEmpty() ? QString() : u"`%1`"_s.arg(parameter.settingsKey);
        expected << u"| %1 | %2 | %3 | %4 |"_s.arg(QString::number(parameter.number),
                                                   parameter.name, parameter.unit, key);
    }

    QFile file(QStringLiteral(ZDR_PROTOCOL_DOCUMENT));
    QVERIFY2(file.open(QIODevice::ReadOnly | QIODevice::Text), qPrintable(file.errorString()));
    const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
    const auto heading = lines.indexOf(u"## Axis parameters"_s);
    const auto firstRow = lines.indexOf(u"|---|---|---|---|"_s, heading) + 1;
    QVERIFY(heading >= 0 && firstRow > heading);
    const auto isRow = [](const QString &line) { return line.startsWith(u'|'); };
    const auto end = std::find_if_not(lines.begin() + firstRow, lines.end(), isRow);
    QCOMPARE(QStringList(lines.begin() + firstRow, end), expected);
}

QTEST_GUILESS_MAIN(tst_AxisParameter)
#include "tst_AxisParameter.moc"
