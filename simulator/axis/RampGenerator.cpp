#include "simulator/axis/RampGenerator.h"

#include <algorithm>
#include <cmath>

namespace simulator {

namespace {

// Less than this, in microsteps, is the rounding of a computed ramp.
constexpr double rounding = 1e-3;
// Closer than this to the final velocity, in pps, a driven motor has settled.
constexpr double settled = 0.5;

double brakingDistance(double velocity, double low, double acceleration)
{
    return (velocity * velocity - low * low) / (2 * acceleration);
}

} // namespace

MotionSegment RampGenerator::towardsVelocity(MotionState from, double target) const
{
    if (from.velocity == target) {
        return MotionSegment::steady(from);
    }
    const bool reverses = from.velocity * target < 0;
    const double goal = reverses ? 0 : target;
    const double now = std::abs(from.velocity);
    const double end = std::abs(goal);
    const double low = std::max(end, m_ramp.startStopVelocity); // from here down it may jump
    const double way = from.velocity + goal > 0 ? 1 : -1;
    if (now > end) {
        if (now <= low || m_ramp.acceleration == 0) {
            return towardsVelocity({from.position, goal}, target);
        }
        const double duration = (now - low) / m_ramp.acceleration;
        const auto braking = MotionSegment::accelerated(from, -way * m_ramp.acceleration, duration);
        return braking.endingAt({braking.at(duration).position, goal});
    }
    const double start = std::max(now, std::min(m_ramp.startStopVelocity, end));
    const MotionState jumped{from.position, way * start};
    if (start == end || m_ramp.acceleration == 0) {
        return MotionSegment::steady(jumped);
    }
    const double duration = (end - start) / m_ramp.acceleration;
    const auto starting = MotionSegment::accelerated(jumped, way * m_ramp.acceleration, duration);
    return starting.endingAt({starting.at(duration).position, goal});
}

MotionSegment RampGenerator::towardsPosition(MotionState from, double target) const
{
    const double distance = target - from.position;
    const double speed = std::abs(from.velocity);
    const bool jumps = speed <= m_ramp.startStopVelocity || m_ramp.acceleration == 0;
    if (std::abs(distance) < rounding && jumps) {
        return atRest({target, 0});
    }
    if (from.velocity * distance <= 0 && from.velocity != 0) {
        // Away from the target, or past it: first a standstill.
        if (!jumps) {
            return towardsVelocity(from, 0);
        }
        from.velocity = 0;
    }
    if (m_ramp.maxVelocity == 0) {
        return towardsVelocity(from, 0);
    }
    return approach(from, std::abs(distance), distance > 0 ? 1 : -1);
}

// @p from stands still, or turns towards the target, which is @p distance away on the side @p way.
MotionSegment RampGenerator::approach(MotionState from, double distance, int way) const
{
    const double top = m_ramp.maxVelocity;
    const double low = std::min(m_ramp.startStopVelocity, top);
    const double acceleration = m_ramp.acceleration;
    const double speed = std::max(std::abs(from.velocity), low);
    const MotionState target{from.position + way * distance, 0};
    const MotionState begin{from.position, way * speed};
    if (speed == 0 && acceleration == 0) {
        return atRest(from);
    }
    const bool brakes = speed > low && acceleration > 0;
    const double braking = brakes ? brakingDistance(speed, low, acceleration) : 0;
    if (brakes && braking >= distance - rounding) {
        const auto segment =
            MotionSegment::accelerated(begin, -way * acceleration, (speed - low) / acceleration);
        if (braking <= distance + rounding) {
            return segment.endingAt(target);
        }
        return segment.endingAt({segment.at(segment.duration()).position, way * low});
    }
    if (speed > top && acceleration > 0) {
        return MotionSegment::accelerated(begin, -way * acceleration, (speed - top) / acceleration);
    }
    if (speed < top && acceleration > 0) {
        // As fast as it may be so that the rest of the way is just enough to brake.
        const double peak =
            std::sqrt((2 * acceleration * distance + speed * speed + low * low) / 2);
        const double end = std::min(peak, top);
        const auto segment =
            MotionSegment::accelerated(begin, way * acceleration, (end - speed) / acceleration);
        return segment.endingAt({segment.at(segment.duration()).position, way * end});
    }
    const auto cruise = MotionSegment::steady(begin, (distance - braking) / speed);
    return brakes ? cruise.endingAt({target.position - way * braking, begin.velocity})
                  : cruise.endingAt(target);
}

MotionSegment RampGenerator::underTorque(MotionState from, double current)
{
    const double end = current * velocityPerCurrent;
    const double difference = from.velocity - end;
    if (std::abs(difference) < settled) {
        return MotionSegment::steady({from.position, end});
    }
    if (from.velocity * end < 0) {
        const double duration = torqueTimeConstant * std::log(difference / -end);
        const auto turning = MotionSegment::settling(from, end, torqueTimeConstant, duration);
        return turning.endingAt({turning.at(duration).position, 0});
    }
    const double duration = torqueTimeConstant * std::log(std::abs(difference) / settled);
    const auto segment = MotionSegment::settling(from, end, torqueTimeConstant, duration);
    return segment.endingAt({segment.at(duration).position, end});
}

MotionSegment RampGenerator::atRest(MotionState from)
{
    return MotionSegment::steady({from.position, 0});
}

} // namespace simulator
