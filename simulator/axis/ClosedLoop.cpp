#include "simulator/axis/ClosedLoop.h"

#include "simulator/axis/AxisParameterTable.h"

#include <algorithm>
#include <cmath>

namespace simulator {

ClosedLoop::ClosedLoop(const AxisParameters &parameters, double velocity)
    : m_parameters(parameters)
    , m_velocity(parameter(axis::closedLoopMode) != 0 ? velocity : 0)
{
}

std::int32_t ClosedLoop::positionError() const
{
    const double gain = std::max(1, parameter(axis::correctionP));
    return static_cast<std::int32_t>(std::lround(m_velocity / gain));
}

std::int32_t ClosedLoop::gamma() const
{
    const double angle = ramped(std::abs(m_velocity), axis::gammaVMin, axis::gammaVMax, 0,
                                parameter(axis::gammaMax));
    return static_cast<std::int32_t>(std::lround(std::copysign(angle, m_velocity)));
}

std::int32_t ClosedLoop::deltaMod() const
{
    if (m_velocity == 0) {
        return 0;
    }
    const double ahead = parameter(axis::beta) + std::abs(double(gamma()));
    return static_cast<std::int32_t>(std::lround(std::copysign(ahead, m_velocity)));
}

std::int32_t ClosedLoop::deltaLut() const
{
    return std::abs(deltaMod() % 256);
}

bool ClosedLoop::scales() const
{
    return parameter(axis::closedLoopMode) != 0 && parameter(axis::scalerEnable) != 0;
}

std::int32_t ClosedLoop::scalerTarget() const
{
    if (!scales()) {
        return 0;
    }
    double error = std::abs(positionError());
    if (parameter(axis::scalerInput) != 0) {
        error *= parameter(axis::standstillGain);
    }
    return static_cast<std::int32_t>(
        std::lround(ramped(error, axis::scalerLimit1, axis::scalerLimit2,
                           parameter(axis::scalerMinimum), parameter(axis::scalerMaximum))));
}

std::int32_t ClosedLoop::scalerActual() const
{
    return scales() ? scalerTarget() : parameter(axis::scalerMinimum);
}

std::int32_t ClosedLoop::parameter(std::uint8_t number) const
{
    return m_parameters.value(number).value_or(0);
}

// @p low up to the value of the parameter @p from, @p high from that of @p to on.
double ClosedLoop::ramped(double input, std::uint8_t from, std::uint8_t to, double low,
                          double high) const
{
    const double begin = parameter(from);
    const double end = parameter(to);
    if (input <= begin) {
        return low;
    }
    if (input >= end) {
        return high;
    }
    return low + (high - low) * (input - begin) / (end - begin);
}

} // namespace simulator
