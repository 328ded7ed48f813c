#pragma once

#include "panels/AxisParameter.h"

#include <span>

/// Axis parameters that stand together in the settings file and in the script, in their order.
struct SettingsGroup
{
    QStringView section = {}; ///< name of the section in the settings file
    QStringView heading = {}; ///< title of the section in the script; empty if it has none
    std::span<const AxisParameter> parameters = {};
};

/// Which parameters are saved, and in which order each of the three operations goes through them.
namespace SettingsGroups {

namespace Lists {

using namespace AxisParameters;

inline constexpr AxisParameter MotorAndModule[] = {
    MaxCurrent,
    StandbyCurrent,
    MicrostepResolution,
    RightLimitSwitchDisabled,
    LeftLimitSwitchDisabled,
};

/// The same with another spelling of the first key, under which a reader that told keys apart by
/// case would find nothing, and would set the maximum current to 0.
inline constexpr AxisParameter MotorAndModuleOtherwiseSpelled[] = {
    {.number = MaxCurrent.number, .settingsKey = u"MAXCurrent"},
    StandbyCurrent,
    MicrostepResolution,
    RightLimitSwitchDisabled,
    LeftLimitSwitchDisabled,
};

inline constexpr AxisParameter Encoder[] = {EncoderMode, MotorFullSteps, EncoderResolution};

inline constexpr AxisParameter Motion[] = {
    MaxPositioningSpeed,
    Acceleration,
    RelativePositionOption,
    ClosedLoopMode,
};

/// The state of the encoder detection is written to the file, but never read from it: on the way
/// back it would start a detection, and turn the motor.
inline constexpr AxisParameter MotionAndDetectionState[] = {
    MaxPositioningSpeed, Acceleration,          RelativePositionOption,
    ClosedLoopMode,      EncoderDetectionState,
};

inline constexpr AxisParameter ClosedLoop[] = {
    GammaVMin,
    GammaVMax,
    GammaMax,
    BetaMax,
    EncoderOffset,
    ScalerMinimum,
    ScalerMaximum,
    ScalerInput,
    ScalerLimit1,
    ScalerLimit2,
    ScalerIncrement,
    ScalerDecrement,
    ScalerIncrementTimeout,
    ScalerDecrementTimeout,
    ScalerEnabled,
};

inline constexpr AxisParameter Correction[] = {
    CorrectionVelocityP,
    MaxCorrectionTolerance,
    MaxCorrectionSpeed,
};

} // namespace Lists

inline constexpr SettingsGroup MotorAndModule{.section = u"motor_and_module_settings",
                                              .heading = u"motor/module settings",
                                              .parameters = Lists::MotorAndModule};
inline constexpr SettingsGroup MotorAndModuleOtherwiseSpelled{
    .section = MotorAndModule.section, .parameters = Lists::MotorAndModuleOtherwiseSpelled};
inline constexpr SettingsGroup Encoder{
    .section = u"encoder_settings", .heading = u"encoder settings", .parameters = Lists::Encoder};
inline constexpr SettingsGroup Motion{
    .section = u"motion_settings", .heading = u"motion settings", .parameters = Lists::Motion};
inline constexpr SettingsGroup MotionAndDetectionState{
    .section = Motion.section, .parameters = Lists::MotionAndDetectionState};
inline constexpr SettingsGroup ClosedLoop{.section = u"closed_loop_settings",
                                          .heading = u"closed loop settings",
                                          .parameters = Lists::ClosedLoop};
inline constexpr SettingsGroup Correction{.section = u"correction_parameters",
                                          .heading = u"correction values",
                                          .parameters = Lists::Correction};

/// Order of the export to a settings file.
inline constexpr SettingsGroup ExportOrder[] = {
    MotorAndModule, Encoder, MotionAndDetectionState, ClosedLoop, Correction,
};

/// Order of the import. The first five go to the module twice, by design. The loop mode comes
/// before the values of encoder and closed loop.
inline constexpr SettingsGroup ImportOrder[] = {
    MotorAndModule, MotorAndModuleOtherwiseSpelled, Motion, Encoder, ClosedLoop, Correction,
};

/// Order of the script. The loop mode comes last, when all is set that the loop needs.
inline constexpr SettingsGroup ScriptOrder[] = {
    MotorAndModule, Encoder, ClosedLoop, Correction, Motion,
};

} // namespace SettingsGroups
