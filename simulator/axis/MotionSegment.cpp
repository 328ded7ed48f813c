#include "simulator/axis/MotionSegment.h"

#include <algorithm>
#include <cmath>

namespace simulator {

namespace {

// Halves a stretch down to the resolution of a double.
constexpr int halvings = 64;

int signOf(double number)
{
    return (number > 0) - (number < 0);
}

} // namespace

MotionSegment MotionSegment::steady(MotionState begin, double duration)
{
    return accelerated(begin, 0, duration);
}

MotionSegment MotionSegment::accelerated(MotionState begin, double acceleration, double duration)
{
    MotionSegment segment;
    segment.m_begin = begin;
    segment.m_acceleration = acceleration;
    segment.m_duration = duration;
    if (std::isfinite(duration)) {
        segment.m_end = segment.law(duration);
    }
    return segment;
}

MotionSegment MotionSegment::settling(MotionState begin, double finalVelocity, double timeConstant,
                                      double duration)
{
    MotionSegment segment;
    segment.m_begin = begin;
    segment.m_finalVelocity = finalVelocity;
    segment.m_timeConstant = timeConstant;
    segment.m_duration = duration;
    segment.m_end = segment.law(duration);
    return segment;
}

MotionSegment MotionSegment::endingAt(MotionState end) const
{
    MotionSegment segment = *this;
    segment.m_end = end;
    return segment;
}

MotionState MotionSegment::at(double time) const
{
    return time >= m_duration ? m_end : law(time);
}

int MotionSegment::direction() const
{
    if (m_begin.velocity != 0) {
        return signOf(m_begin.velocity);
    }
    return signOf(m_timeConstant > 0 ? m_finalVelocity : m_acceleration);
}

std::optional<double> MotionSegment::timeOfReaching(double position, double horizon) const
{
    const int way = direction();
    double late = std::min(horizon, m_duration);
    if (way == 0 || way * (position - m_begin.position) <= 0
        || way * (at(late).position - position) < 0) {
        return std::nullopt;
    }
    double early = 0;
    for (int i = 0; i < halvings; ++i) {
        const double middle = early + (late - early) / 2;
        if (way * (at(middle).position - position) >= 0) {
            late = middle;
        } else {
            early = middle;
        }
    }
    return late;
}

MotionState MotionSegment::law(double time) const
{
    if (m_timeConstant > 0) {
        const double difference = m_begin.velocity - m_finalVelocity;
        const double left = std::exp(-time / m_timeConstant);
        return {m_begin.position + m_finalVelocity * time
                    + difference * m_timeConstant * (1 - left),
                m_finalVelocity + difference * left};
    }
    return {m_begin.position + (m_begin.velocity + m_acceleration * time / 2) * time,
            m_begin.velocity + m_acceleration * time};
}

} // namespace simulator
