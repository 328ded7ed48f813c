#include "simulator/axis/PositionWindow.h"

#include <algorithm>
#include <cmath>

namespace simulator {

namespace {

// Two moments that should be the same differ by less, in seconds.
constexpr double rounding = 1e-7;

} // namespace

void PositionWindow::setWidth(double width, double position, double now)
{
    m_width = width;
    review(position, now);
}

void PositionWindow::setTarget(double target, double position, double now)
{
    m_target = target;
    review(position, now);
}

void PositionWindow::restart(double position, double now)
{
    m_insideSince = contains(position) ? now : outside;
}

void PositionWindow::follow(const MotionSegment &segment, double elapsed, double now)
{
    const double end = segment.at(elapsed).position;
    if (!contains(end)) {
        m_insideSince = outside;
        return;
    }
    if (m_insideSince != outside) {
        return;
    }
    const double edge = m_target - segment.direction() * m_width; // where it comes in
    m_insideSince = now + segment.timeOfReaching(edge, elapsed).value_or(0);
}

bool PositionWindow::isReached(double now) const
{
    return now - m_insideSince >= m_dwell - rounding;
}

bool PositionWindow::contains(double position) const
{
    return std::abs(position - m_target) <= m_width;
}

void PositionWindow::review(double position, double now)
{
    if (!contains(position)) {
        m_insideSince = outside;
    } else if (m_insideSince == outside) {
        m_insideSince = now;
    }
}

} // namespace simulator
