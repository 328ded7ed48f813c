#pragma once

#include <limits>
#include <optional>

namespace simulator {

/// Where the shaft is and how fast it turns.
struct MotionState
{
    double position = 0; ///< microsteps, the same count for the whole run
    double velocity = 0; ///< microsteps per second, positive to the right
};

/// A stretch of motion that follows one law, so that each moment of it can be computed directly:
/// nothing has to tick while nobody looks. The velocity never changes its sign within a segment.
class MotionSegment
{
public:
    static constexpr double endless = std::numeric_limits<double>::infinity();

    /// Constant velocity for @p duration seconds.
    static MotionSegment steady(MotionState begin, double duration = endless);
    /// Constant acceleration, in microsteps per second squared, for @p duration seconds.
    static MotionSegment accelerated(MotionState begin, double acceleration, double duration);
    /// A velocity that approaches @p finalVelocity exponentially with @p timeConstant seconds.
    static MotionSegment settling(MotionState begin, double finalVelocity, double timeConstant,
                                  double duration);

    /// The same segment with @p end as its exact last state: it takes rounding away, and it lets
    /// the velocity jump at the end.
    MotionSegment endingAt(MotionState end) const;

    /// Seconds to the end; endless, if there is none.
    double duration() const { return m_duration; }
    /// The state @p time seconds after the begin, the last one from duration() on.
    MotionState at(double time) const;
    /// 1 to the right, -1 to the left, 0 at rest.
    int direction() const;
    /// When @p position is passed or reached, in seconds from the begin; nothing if that isn't
    /// within the first @p horizon seconds. A position that is left at the begin doesn't count.
    std::optional<double> timeOfReaching(double position, double horizon) const;

private:
    MotionSegment() = default;
    MotionState law(double time) const;

    MotionState m_begin;
    MotionState m_end;
    double m_acceleration = 0;
    double m_finalVelocity = 0;
    double m_timeConstant = 0; // 0: constant acceleration
    double m_duration = endless;
};

} // namespace simulator
