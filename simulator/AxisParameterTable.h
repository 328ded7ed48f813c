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
inline constexpr std::uint8_t maxCurrent = 6;
inline constexpr std::uint8_t standbyCurrent = 7;
inline constexpr std::uint8_t targetPhaseCurrent = 14;
inline constexpr std::uint8_t maxPhaseCurrent = 15;
inline constexpr std::uint8_t statusFlags = 18;
inline constexpr std::uint8_t closedLoopMode = 129;
inline constexpr std::uint8_t actualVelocity = 131;
inline constexpr std::uint8_t standbyPhaseCurrent = 156;
} // namespace axis

/// Phase current in mA at the scale value 255 of AP 6 and AP 7.
inline constexpr std::int32_t fullScaleCurrent = 7500;

/// All axis parameters of the module, in ascending order of number.
std::span<const AxisParameterEntry> axisParameterTable();

} // namespace simulator
