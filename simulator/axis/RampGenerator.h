#pragma once

#include "simulator/axis/MotionSegment.h"

namespace simulator {

/// What shapes a motion. No value is negative.
struct Ramp
{
    double maxVelocity = 0; ///< pps; for positioning only
    double acceleration = 0; ///< pps/s, up and down. 0: never faster, slower at once
    double startStopVelocity = 0; ///< pps; below it the velocity may jump
};

/// Plans motion one segment at a time: given where the shaft is, what it does next. Knows no time
/// and keeps no state, so that a ramp or a goal can change at any moment.
class RampGenerator
{
public:
    /// Time constant of a motor that is driven by torque, in seconds: inertia against friction.
    static constexpr double torqueTimeConstant = 0.25;
    /// Velocity per mA at which friction takes up the whole torque.
    static constexpr double velocityPerCurrent = 50;

    explicit RampGenerator(Ramp ramp)
        : m_ramp(ramp)
    {
    }

    /// Towards @p target pps, through a standstill if the direction changes.
    MotionSegment towardsVelocity(MotionState from, double target) const;
    /// Towards a standstill at @p target, as fast as the ramp lets it.
    MotionSegment towardsPosition(MotionState from, double target) const;
    /// Under the torque of @p current mA, without a ramp.
    static MotionSegment underTorque(MotionState from, double current);
    /// Where it is.
    static MotionSegment atRest(MotionState from);

private:
    MotionSegment approach(MotionState from, double distance, int way) const;

    const Ramp m_ramp;
};

} // namespace simulator
