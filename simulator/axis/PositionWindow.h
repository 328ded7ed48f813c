#pragma once

#include "simulator/axis/MotionSegment.h"

namespace simulator {

/// Tells when a target counts as reached: the position has been closer to it than the window for
/// a while without a break. The moment at which the position came into the window is computed from
/// the motion, not noticed, so that it doesn't matter how often anybody looks. Times are seconds of
/// one clock that starts at 0.
class PositionWindow
{
public:
    /// Sets how far off the target still counts, in microsteps; below 0 nothing does. A position
    /// that still is inside keeps its time.
    void setWidth(double width, double position, double now);
    /// Sets how long it has to be inside, in seconds.
    void setDwell(double dwell) { m_dwell = dwell; }
    /// Sets the place that is waited for. A position that still is inside keeps its time.
    void setTarget(double target, double position, double now);
    /// Begins anew: time inside counts from @p now.
    void restart(double position, double now);
    /// Looks at the first @p elapsed seconds of @p segment, which began at @p now.
    void follow(const MotionSegment &segment, double elapsed, double now);

    /// Whether the target is reached at @p now.
    bool isReached(double now) const;

private:
    static constexpr double outside = MotionSegment::endless;

    bool contains(double position) const;
    void review(double position, double now);

    double m_target = 0;
    double m_width = 0;
    double m_dwell = 0;
    double m_insideSince = -MotionSegment::endless; // outside: it isn't. Starts long since inside
};

} // namespace simulator
