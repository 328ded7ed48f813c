#pragma once

#include "simulator/axis/AxisParameters.h"

#include <cstdint>

namespace simulator {

/// The inner values of the closed loop, which the module only shows. They are made up to look as
/// those of a loop that works well: all follow from the velocity, and all are 0 at rest or in open
/// loop, save the scaler, which then stays at its minimum.
class ClosedLoop
{
public:
    /// A view of @p parameters with the shaft at @p velocity pps.
    ClosedLoop(const AxisParameters &parameters, double velocity);

    /// AP 237 in microsteps: the lag behind the ramp generator. Smaller with more AP 124.
    std::int32_t positionError() const;
    /// AP 230: the field weakening angle, 0 up to AP 108, AP 110 from AP 109 on, linear between.
    std::int32_t gamma() const;
    /// AP 231: the commutation angle ahead of the rotor, AP 111 and gamma, with the direction.
    std::int32_t deltaMod() const;
    /// AP 232: that angle as the index of a table with 256 entries.
    std::int32_t deltaLut() const;
    /// AP 236: from AP 113 to AP 114 as the error goes from AP 116 to AP 117; 0 if it is off.
    std::int32_t scalerTarget() const;
    /// AP 123: follows the target at once; AP 113 if the scaler is off.
    std::int32_t scalerActual() const;
    /// Whether the scaler sets the current of a turning motor.
    bool scales() const;

private:
    std::int32_t parameter(std::uint8_t number) const;
    double ramped(double input, std::uint8_t from, std::uint8_t to, double low, double high) const;

    const AxisParameters &m_parameters;
    const double m_velocity; // 0 in open loop
};

} // namespace simulator
