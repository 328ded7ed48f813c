#pragma once

#include <cstdint>
#include <span>

namespace simulator {

/// Who may change a parameter.
enum class Access : std::uint8_t {
    ReadWrite, ///< the host
    ReadOnly, ///< the module alone: an actual or a derived value
};

/// What the module knows of one axis parameter.
struct AxisParameterEntry
{
    std::uint8_t number; ///< parameter number, the type of SAP and GAP
    const char *name;
    Access access;
    std::int32_t minimum; ///< smallest value that a host may write
    std::int32_t maximum; ///< largest value that a host may write
    std::int32_t start; ///< value after power-up
};

/// Numbers of the parameters whose value follows from, or leads to, something else in the module.
namespace axis {
inline constexpr std::uint8_t targetPosition = 0;
inline constexpr std::uint8_t actualPosition = 1;
inline constexpr std::uint8_t targetVelocity = 2;
inline constexpr std::uint8_t maxVelocity = 4;
inline constexpr std::uint8_t acceleration = 5;
inline constexpr std::uint8_t maxCurrent = 6;
inline constexpr std::uint8_t standbyCurrent = 7;
inline constexpr std::uint8_t rightSwitchDisabled = 12;
inline constexpr std::uint8_t leftSwitchDisabled = 13;
inline constexpr std::uint8_t targetPhaseCurrent = 14;
inline constexpr std::uint8_t maxPhaseCurrent = 15;
inline constexpr std::uint8_t velocityWindow = 17;
inline constexpr std::uint8_t statusFlags = 18;
inline constexpr std::uint8_t gammaVMin = 108;
inline constexpr std::uint8_t gammaVMax = 109;
inline constexpr std::uint8_t gammaMax = 110;
inline constexpr std::uint8_t beta = 111;
inline constexpr std::uint8_t encoderOffset = 112;
inline constexpr std::uint8_t scalerMinimum = 113;
inline constexpr std::uint8_t scalerMaximum = 114;
inline constexpr std::uint8_t scalerInput = 115;
inline constexpr std::uint8_t scalerLimit1 = 116;
inline constexpr std::uint8_t scalerLimit2 = 117;
inline constexpr std::uint8_t scalerEnable = 122;
inline constexpr std::uint8_t scalerActual = 123;
inline constexpr std::uint8_t correctionP = 124;
inline constexpr std::uint8_t closedLoopMode = 129;
inline constexpr std::uint8_t startStopVelocity = 130;
inline constexpr std::uint8_t actualVelocity = 131;
inline constexpr std::uint8_t detectionState = 132;
inline constexpr std::uint8_t closedLoopReady = 133;
inline constexpr std::uint8_t positionWindow = 134;
inline constexpr std::uint8_t positionWindowTime = 135;
inline constexpr std::uint8_t standstillGain = 136;
inline constexpr std::uint8_t microstepResolution = 140;
inline constexpr std::uint8_t motorCurrent = 150;
inline constexpr std::uint8_t phaseA = 151;
inline constexpr std::uint8_t phaseB = 152;
inline constexpr std::uint8_t supplyVoltage = 153;
inline constexpr std::uint8_t dcCurrent = 154;
inline constexpr std::uint8_t temperature = 155;
inline constexpr std::uint8_t standbyPhaseCurrent = 156;
inline constexpr std::uint8_t clearOnNull = 198;
inline constexpr std::uint8_t fullSteps = 202;
inline constexpr std::uint8_t encoderValue = 209;
inline constexpr std::uint8_t encoderResolution = 210;
inline constexpr std::uint8_t gamma = 230;
inline constexpr std::uint8_t deltaMod = 231;
inline constexpr std::uint8_t deltaLut = 232;
inline constexpr std::uint8_t virtualPosition = 233;
inline constexpr std::uint8_t virtualTargetVelocity = 234;
inline constexpr std::uint8_t virtualVelocity = 235;
inline constexpr std::uint8_t scalerTarget = 236;
inline constexpr std::uint8_t positionError = 237;
} // namespace axis

/// Phase current in mA at the scale value 255 of AP 6 and AP 7.
inline constexpr std::int32_t fullScaleCurrent = 7500;

/// All axis parameters of the module, in ascending order of number.
std::span<const AxisParameterEntry> axisParameterTable();

} // namespace simulator
