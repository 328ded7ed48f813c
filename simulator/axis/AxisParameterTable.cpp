#include "simulator/axis/AxisParameterTable.h"

#include <array>
#include <limits>

namespace simulator {

namespace {

constexpr std::int32_t most = std::numeric_limits<std::int32_t>::max();
// The lowest number is left out: its magnitude has no positive counterpart.
constexpr std::int32_t least = -most;
constexpr std::int32_t mostVelocity = 268435454;
constexpr std::int32_t mostAcceleration = 33554431;

constexpr Access rw = Access::ReadWrite;
constexpr Access ro = Access::ReadOnly;

constexpr auto table = std::to_array<AxisParameterEntry>({
    {0, "target position", rw, least, most, 0},
    {1, "actual position", rw, least, most, 0},
    {2, "target velocity", rw, -mostVelocity, mostVelocity, 0},
    {4, "max positioning speed", rw, 0, mostVelocity, 51200},
    {5, "acceleration", rw, 0, mostAcceleration, 51200},
    {6, "max current", rw, 0, 255, 128},
    {7, "standby current", rw, 0, 255, 8},
    {12, "right limit switch disabled", rw, 0, 1, 1},
    {13, "left limit switch disabled", rw, 0, 1, 1},
    {14, "target phase current", rw, -fullScaleCurrent, fullScaleCurrent, 0},
    {15, "max phase current", ro, 0, fullScaleCurrent, 0},
    {17, "velocity reached window", rw, 0, most, 100},
    {18, "status flags", ro, 0, 0xfff, 0},
    {108, "gamma VMin", rw, 0, mostVelocity, 50000},
    {109, "gamma VMax", rw, 0, mostVelocity, 300000},
    {110, "maximum gamma", rw, 0, 255, 255},
    {111, "beta", rw, 0, 511, 255},
    {112, "encoder offset", rw, 0, most, 0},
    {113, "scaler minimum", rw, 0, 255, 25},
    {114, "scaler maximum", rw, 0, 255, 200},
    {115, "scaler input select", rw, 0, 1, 0},
    {116, "scaler limit 1", rw, 0, 4095, 100},
    {117, "scaler limit 2", rw, 0, 4095, 200},
    {118, "scaler increment", rw, 0, 15, 4},
    {119, "scaler decrement", rw, 0, 15, 2},
    {120, "scaler increment timeout", rw, 0, 15, 1},
    {121, "scaler decrement timeout", rw, 0, 10000, 100},
    {122, "scaler enable", rw, 0, 1, 0},
    {123, "scaler actual value", ro, 0, 255, 25},
    {124, "correction velocity P", rw, 0, 65535, 1000},
    {125, "max. correction tolerance", rw, 0, 65535, 10},
    {126, "max. correction speed", rw, 0, most, 10000},
    {127, "relative position option", rw, 0, 2, 0},
    {129, "closed loop mode", rw, 0, 1, 0},
    {130, "start-stop velocity", rw, 0, most, 0},
    {131, "actual velocity", ro, least, most, 0},
    {132, "encoder detection state", rw, 0, 3, 0},
    {133, "closed loop initialisation flag", ro, 0, 1, 0},
    {134, "position reached window", rw, least, most, 50},
    {135, "position reached time", rw, 0, most, 100},
    {136, "standstill error gain", rw, 10, 50, 20},
    {137, "standstill dampening", rw, 0, 65535, 100},
    {138, "standstill error limit", rw, 0, most, 1000},
    {140, "microstep resolution", rw, 0, 8, 8},
    {150, "motor current", ro, -20000, 20000, 0},
    {151, "peak current phase A", ro, -20000, 20000, 0},
    {152, "peak current phase B", ro, -20000, 20000, 0},
    {153, "supply voltage", ro, 0, 1000, 240},
    {154, "DC current", ro, 0, 100000, 120},
    {155, "temperature", ro, 0, 300, 31},
    {156, "standby current in mA", ro, 0, fullScaleCurrent, 0},
    {162, "chopper blank time", rw, 0, 3, 2},
    {163, "chopper mode", rw, 0, 1, 0},
    {164, "hysteresis decrement", rw, 0, 3, 0},
    {165, "hysteresis end", rw, -3, 12, 2},
    {166, "hysteresis start", rw, 0, 8, 3},
    {167, "off time", rw, 0, 15, 5},
    {175, "slope high side", rw, 0, 3, 3},
    {176, "slope low side", rw, 0, 3, 3},
    {198, "clear on null", rw, 0, 1, 0},
    {201, "encoder mode", rw, 0, most, 0},
    {202, "motor full steps", rw, 0, 400, 200},
    {209, "actual encoder value", ro, least, most, 0},
    {210, "encoder resolution", rw, 0, most, 4000},
    {230, "gamma", ro, least, most, 0},
    {231, "delta mod", ro, least, most, 0},
    {232, "delta lut", ro, least, most, 0},
    {233, "virtual actual position", ro, least, most, 0},
    {234, "virtual target velocity", ro, least, most, 0},
    {235, "virtual actual velocity", ro, least, most, 0},
    {236, "scaler target value", ro, 0, 255, 0},
    {237, "position error", ro, least, most, 0},
});

} // namespace

std::span<const AxisParameterEntry> axisParameterTable()
{
    return table;
}

} // namespace simulator
