#pragma once

#include <QStringView>

/// What the program knows of one axis parameter of the module. Converts to the byte that stands for
/// it in the signals of panels and transports. Fields that don't apply are empty.
///
/// The range of a value is a matter of the control that shows it: one parameter can have several.
struct AxisParameter
{
    int number = 0; ///< 0 to 255
    QStringView name = {}; ///< what it is, as the description of the protocol says
    QStringView unit = {}; ///< of its values; empty also for flags and plain numbers
    QStringView settingsKey = {}; ///< key in the settings file
    QStringView scriptComment = {}; ///< text behind "// " in the script
    QStringView chartName = {}; ///< name under which charts offer it

    /// The number as the protocol's signed byte: 129 is -127.
    constexpr operator char() const { return static_cast<char>(number); }
};

/// The axis parameters of the module by number: the one list of them. Panels are given their
/// numbers from here, and both exports and the charts take their texts from here.
namespace AxisParameters {

inline constexpr AxisParameter TargetPosition{.number = 0,
                                              .name = u"target position",
                                              .unit = u"µsteps",
                                              .chartName = u"target position [µsteps]"};
inline constexpr AxisParameter ActualPosition{.number = 1,
                                              .name = u"actual position",
                                              .unit = u"µsteps",
                                              .chartName = u"actual position [µsteps]"};
inline constexpr AxisParameter TargetVelocity{
    .number = 2, .name = u"target velocity", .unit = u"pps", .chartName = u"target velocity [pps]"};
inline constexpr AxisParameter MaxPositioningSpeed{.number = 4,
                                                   .name = u"max positioning speed",
                                                   .unit = u"pps",
                                                   .settingsKey = u"MaxPositioningSpeed",
                                                   .scriptComment = u"max positioning speed"};
inline constexpr AxisParameter Acceleration{.number = 5,
                                            .name = u"acceleration",
                                            .unit = u"pps/s",
                                            .settingsKey = u"Acceleration",
                                            .scriptComment = u"acceleration"};
/// On the module's own scale of 0 to 255; MaxPhaseCurrent is the same in mA.
inline constexpr AxisParameter MaxCurrent{.number = 6,
                                          .name = u"max current",
                                          .settingsKey = u"MaxCurrent",
                                          .scriptComment = u"max current"};
/// On the module's own scale of 0 to 255; StandbyPhaseCurrent is the same in mA.
inline constexpr AxisParameter StandbyCurrent{.number = 7,
                                              .name = u"standby current",
                                              .settingsKey = u"StandbyCurrent",
                                              .scriptComment = u"standby current"};
inline constexpr AxisParameter RightLimitSwitchDisabled{.number = 12,
                                                        .name = u"right limit switch disabled",
                                                        .settingsKey = u"RightLimitSwitchDisabled",
                                                        .scriptComment =
                                                            u"right limit switch disabled"};
inline constexpr AxisParameter LeftLimitSwitchDisabled{.number = 13,
                                                       .name = u"left limit switch disabled",
                                                       .settingsKey = u"LeftLimitSwitchDisabled",
                                                       .scriptComment =
                                                           u"left limit switch disabled"};
/// Charts call it by the name of the current's angle, which is what it moves.
inline constexpr AxisParameter TargetPhaseCurrent{
    .number = 14, .name = u"target phase current", .unit = u"mA", .chartName = u"delta"};
inline constexpr AxisParameter MaxPhaseCurrent{
    .number = 15, .name = u"max phase current", .unit = u"mA"};
inline constexpr AxisParameter VelocityReachedWindow{.number = 17,
                                                     .name = u"velocity reached window"};
/// A bit mask.
inline constexpr AxisParameter StatusFlags{.number = 18, .name = u"status flags"};

inline constexpr AxisParameter GammaVMin{.number = 108,
                                         .name = u"gamma VMin",
                                         .settingsKey = u"GammaVMin",
                                         .scriptComment = u"CL gamma VMin"};
inline constexpr AxisParameter GammaVMax{.number = 109,
                                         .name = u"gamma VMax",
                                         .settingsKey = u"GammaVMax",
                                         .scriptComment = u"CL gamma VMax"};
inline constexpr AxisParameter GammaMax{.number = 110,
                                        .name = u"maximum gamma",
                                        .settingsKey = u"GammaMax",
                                        .scriptComment = u"CL maximum gamma"};
inline constexpr AxisParameter BetaMax{.number = 111,
                                       .name = u"beta",
                                       .settingsKey = u"BetaMax",
                                       .scriptComment = u"CL beta",
                                       .chartName = u"cl_beta"};
inline constexpr AxisParameter EncoderOffset{.number = 112,
                                             .name = u"encoder offset",
                                             .settingsKey = u"EncoderOffset",
                                             .scriptComment = u"CL encoder offset"};
inline constexpr AxisParameter ScalerMinimum{.number = 113,
                                             .name = u"scaler minimum",
                                             .settingsKey = u"IScaleMin",
                                             .scriptComment = u"CL scaler minimum"};
inline constexpr AxisParameter ScalerMaximum{.number = 114,
                                             .name = u"scaler maximum",
                                             .settingsKey = u"IScaleMax",
                                             .scriptComment = u"CL scaler maximum"};
/// 0: the raw error; 1: the error times its gain.
inline constexpr AxisParameter ScalerInput{.number = 115,
                                           .name = u"scaler input select",
                                           .settingsKey = u"IScaleInput",
                                           .scriptComment = u"CL scaler input select"};
/// The comment's "Cl" in mixed case is what existing scripts have.
inline constexpr AxisParameter ScalerLimit1{.number = 116,
                                            .name = u"scaler limit 1",
                                            .settingsKey = u"IScaleLimit1",
                                            .scriptComment = u"Cl scaler limit 1"};
inline constexpr AxisParameter ScalerLimit2{.number = 117,
                                            .name = u"scaler limit 2",
                                            .settingsKey = u"IScaleLimit2",
                                            .scriptComment = u"CL scaler limit 2"};
inline constexpr AxisParameter ScalerIncrement{.number = 118,
                                               .name = u"scaler increment",
                                               .settingsKey = u"ScaleInc",
                                               .scriptComment = u"CL scaler increment"};
inline constexpr AxisParameter ScalerDecrement{.number = 119,
                                               .name = u"scaler decrement",
                                               .settingsKey = u"ScaleDec",
                                               .scriptComment = u"CL scaler decrement"};
inline constexpr AxisParameter ScalerIncrementTimeout{.number = 120,
                                                      .name = u"scaler increment timeout",
                                                      .settingsKey = u"ScaleIncTimeout",
                                                      .scriptComment =
                                                          u"CL scaler increment timeout"};
inline constexpr AxisParameter ScalerDecrementTimeout{.number = 121,
                                                      .name = u"scaler decrement timeout",
                                                      .settingsKey = u"ScaleDecTimeout",
                                                      .scriptComment =
                                                          u"CL scaler decrement timeout"};
inline constexpr AxisParameter ScalerEnabled{.number = 122,
                                             .name = u"scaler enable",
                                             .settingsKey = u"ScalerEnabled",
                                             .scriptComment = u"CL scaler enable"};
inline constexpr AxisParameter ScalerActualValue{
    .number = 123, .name = u"scaler actual value", .chartName = u"scaler actual value"};
inline constexpr AxisParameter CorrectionVelocityP{.number = 124,
                                                   .name = u"correction velocity P",
                                                   .settingsKey = u"CorrectionVelocityP",
                                                   .scriptComment = u"correction velocity P"};
inline constexpr AxisParameter MaxCorrectionTolerance{.number = 125,
                                                      .name = u"max. correction tolerance",
                                                      .unit = u"s",
                                                      .settingsKey = u"MaxCorrectionTolerance",
                                                      .scriptComment =
                                                          u"max. correction tolerance"};
inline constexpr AxisParameter MaxCorrectionSpeed{.number = 126,
                                                  .name = u"max. correction speed",
                                                  .unit = u"pps",
                                                  .settingsKey = u"MaxCorrectionSpeed",
                                                  .scriptComment = u"max. correction speed"};
inline constexpr AxisParameter RelativePositionOption{.number = 127,
                                                      .name = u"relative position option",
                                                      .settingsKey = u"RelativePositionOption",
                                                      .scriptComment = u"relative position option"};
/// 0: open loop; 1: closed loop.
inline constexpr AxisParameter ClosedLoopMode{.number = 129,
                                              .name = u"closed loop mode",
                                              .settingsKey = u"ClosedLoopMode",
                                              .scriptComment = u"closed loop mode"};
inline constexpr AxisParameter StartStopVelocity{
    .number = 130, .name = u"start-stop velocity", .unit = u"pps"};
inline constexpr AxisParameter ActualVelocity{.number = 131,
                                              .name = u"actual velocity",
                                              .unit = u"pps",
                                              .chartName = u"actual velocity [pps]"};
/// 0 to 3. The settings file has carried it under the name of the ramp from the first day on;
/// that key is written and never read.
inline constexpr AxisParameter EncoderDetectionState{
    .number = 132, .name = u"encoder detection state", .settingsKey = u"RampEnabled"};
inline constexpr AxisParameter ClosedLoopInitialisationFlag{
    .number = 133, .name = u"closed loop initialisation flag"};
inline constexpr AxisParameter PositionReachedWindow{.number = 134,
                                                     .name = u"position reached window"};
inline constexpr AxisParameter PositionReachedTime{
    .number = 135, .name = u"position reached time", .unit = u"1/10 ms"};
inline constexpr AxisParameter StandstillErrorGain{.number = 136, .name = u"standstill error gain"};
inline constexpr AxisParameter StandstillDampening{.number = 137, .name = u"standstill dampening"};
inline constexpr AxisParameter StandstillErrorLimit{.number = 138,
                                                    .name = u"standstill error limit"};
/// Microsteps of a full step as a power of two, 0 to 8.
inline constexpr AxisParameter MicrostepResolution{.number = 140,
                                                   .name = u"microstep resolution",
                                                   .settingsKey = u"MicrostepResolution",
                                                   .scriptComment = u"microstep resolution"};

inline constexpr AxisParameter MotorCurrent{.number = 150, .name = u"motor current", .unit = u"mA"};
inline constexpr AxisParameter PeakCurrentPhaseA{
    .number = 151, .name = u"peak current phase A", .unit = u"mA"};
inline constexpr AxisParameter PeakCurrentPhaseB{
    .number = 152, .name = u"peak current phase B", .unit = u"mA"};
inline constexpr AxisParameter SupplyVoltage{
    .number = 153, .name = u"supply voltage", .unit = u"1/10 V"};
inline constexpr AxisParameter DCCurrent{.number = 154, .name = u"DC current", .unit = u"mA"};
inline constexpr AxisParameter Temperature{.number = 155, .name = u"temperature", .unit = u"C"};
inline constexpr AxisParameter StandbyPhaseCurrent{
    .number = 156, .name = u"standby current in mA", .unit = u"mA"};

inline constexpr AxisParameter ChopperBlankTime{.number = 162, .name = u"chopper blank time"};
inline constexpr AxisParameter ChopperMode{.number = 163, .name = u"chopper mode"};
inline constexpr AxisParameter HysteresisDecrement{.number = 164, .name = u"hysteresis decrement"};
inline constexpr AxisParameter HysteresisEnd{.number = 165, .name = u"hysteresis end"};
inline constexpr AxisParameter HysteresisStart{.number = 166, .name = u"hysteresis start"};
inline constexpr AxisParameter OffTime{.number = 167, .name = u"off time"};
inline constexpr AxisParameter SlopeHighSide{.number = 175, .name = u"slope high side"};
inline constexpr AxisParameter SlopeLowSide{.number = 176, .name = u"slope low side"};

inline constexpr AxisParameter ClearOnNull{.number = 198, .name = u"clear on null"};
inline constexpr AxisParameter EncoderMode{.number = 201,
                                           .name = u"encoder mode",
                                           .settingsKey = u"EncoderMode",
                                           .scriptComment = u"encoder mode"};
inline constexpr AxisParameter MotorFullSteps{.number = 202,
                                              .name = u"motor full steps",
                                              .unit = u"steps",
                                              .settingsKey = u"MotorFullSteps",
                                              .scriptComment = u"motor full steps"};
inline constexpr AxisParameter ActualEncoderValue{.number = 209, .name = u"actual encoder value"};
inline constexpr AxisParameter EncoderResolution{.number = 210,
                                                 .name = u"encoder resolution",
                                                 .unit = u"positions",
                                                 .settingsKey = u"EncoderResolution",
                                                 .scriptComment = u"encoder resolution"};

inline constexpr AxisParameter Gamma{.number = 230, .name = u"gamma", .chartName = u"gamma"};
inline constexpr AxisParameter DeltaMod{
    .number = 231, .name = u"delta mod", .chartName = u"delta mod"};
inline constexpr AxisParameter DeltaLut{
    .number = 232, .name = u"delta lut", .chartName = u"delta lut"};
inline constexpr AxisParameter VirtualActualPosition{.number = 233,
                                                     .name = u"virtual actual position",
                                                     .unit = u"µsteps",
                                                     .chartName = u"virtual actual position"};
inline constexpr AxisParameter VirtualTargetVelocity{.number = 234,
                                                     .name = u"virtual target velocity",
                                                     .unit = u"pps",
                                                     .chartName = u"virtual target velocity"};
/// The chart's spelling is the one that users know.
inline constexpr AxisParameter VirtualActualVelocity{.number = 235,
                                                     .name = u"virtual actual velocity",
                                                     .unit = u"pps",
                                                     .chartName = u"virutal actual velocity"};
inline constexpr AxisParameter ScalerTargetValue{
    .number = 236, .name = u"scaler target value", .chartName = u"scaler target value"};
inline constexpr AxisParameter PositionError{
    .number = 237, .name = u"position error", .chartName = u"position error"};

} // namespace AxisParameters
