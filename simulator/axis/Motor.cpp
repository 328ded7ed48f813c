#include "simulator/axis/Motor.h"

#include "simulator/axis/Wrapping.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace simulator {

namespace {

// No motion has that many pieces; what is left of the time after them is rounding.
constexpr int mostPieces = 1000;

} // namespace

Seconds Motor::advance(Seconds time)
{
    double left = time.count();
    double skipped = 0;
    if (m_swing && !m_stopped) {
        // Whole periods change nothing. One is left, in case there is a switch on its way.
        const double period = 2 * m_swing->halfPeriod;
        skipped = std::max(0.0, std::floor(left / period) - 1) * period;
        left -= skipped;
        m_elapsed += skipped;
    }
    double turning = 0;
    for (int piece = 0; left > 0 && piece < mostPieces; ++piece) {
        const MotionSegment segment = nextSegment();
        if (runsIntoSwitch(segment)) {
            m_state.velocity = 0;
            m_stopped = true;
            continue;
        }
        const double elapsed = follow(segment, left);
        turning += segment.direction() != 0 ? elapsed : 0;
        left -= elapsed;
    }
    return Seconds(turning + (m_stopped ? 0 : skipped));
}

// One segment, up to its end, or to a null mark or a switch on the way, but no longer than
// @p longest. Returns the time that it took.
double Motor::follow(const MotionSegment &segment, double longest)
{
    double elapsed = std::min(longest, segment.duration());
    const LimitSwitch &ahead = switchAhead(segment.direction());
    std::optional<double> stop;
    if (ahead.stops && ahead.place) {
        stop = segment.timeOfReaching(*ahead.place, elapsed);
        elapsed = stop.value_or(elapsed);
    }
    const std::optional<double> mark = nextNull(segment);
    const auto null = mark ? segment.timeOfReaching(*mark, elapsed) : std::nullopt;
    elapsed = null.value_or(elapsed);

    m_window.follow(segment, elapsed, m_elapsed);
    m_state = segment.at(elapsed);
    m_elapsed += elapsed;
    if (null) {
        passNull(*mark);
    } else if (stop) {
        m_state = {*ahead.place, 0};
        m_stopped = true;
    }
    if (m_swing && (m_swing->left -= elapsed) <= 0) {
        m_swing->velocity = -m_swing->velocity;
        m_swing->left = m_swing->halfPeriod;
    }
    return elapsed;
}

MotionSegment Motor::nextSegment() const
{
    const RampGenerator generator(m_ramp);
    if (m_stopped) {
        return RampGenerator::atRest(m_state);
    }
    if (m_swing) {
        return MotionSegment::steady({m_state.position, m_swing->velocity}, m_swing->left);
    }
    switch (m_mode) {
    case MotionMode::Position:
        return generator.towardsPosition(m_state, m_goal);
    case MotionMode::Velocity:
        return generator.towardsVelocity(m_state, m_goal);
    case MotionMode::Torque:
        return RampGenerator::underTorque(m_state, m_goal);
    }
    return RampGenerator::atRest(m_state);
}

bool Motor::runsIntoSwitch(const MotionSegment &segment) const
{
    const int direction = segment.direction();
    const LimitSwitch &ahead = switchAhead(direction);
    return direction != 0 && ahead.stops && ahead.place
        && direction * (m_state.position - *ahead.place) >= 0;
}

std::optional<double> Motor::nextNull(const MotionSegment &segment) const
{
    if (m_nullTurn <= 0 || segment.direction() == 0) {
        return std::nullopt;
    }
    const double turns = m_state.position / m_nullTurn;
    return m_nullTurn * (segment.direction() > 0 ? std::floor(turns) + 1 : std::ceil(turns) - 1);
}

// The target keeps its number, and so it moves with the origin.
void Motor::passNull(double place)
{
    m_nullTurn = 0;
    m_null = place;
    m_state.position = place;
    const double shift = placeOf(0) - place;
    m_origin = std::llround(place);
    if (m_mode == MotionMode::Position) {
        m_goal -= shift;
        m_window.setTarget(m_goal, m_state.position, m_elapsed);
    }
}

void Motor::begin(MotionMode mode, double goal)
{
    m_mode = mode;
    m_goal = goal;
    m_stopped = false;
    m_swing.reset();
}

void Motor::moveTo(std::int32_t target)
{
    const bool fromOtherMode = m_mode != MotionMode::Position;
    begin(MotionMode::Position, placeOf(target));
    m_window.setTarget(m_goal, m_state.position, m_elapsed);
    if (fromOtherMode) {
        m_window.restart(m_state.position, m_elapsed);
    }
}

void Motor::turnAt(double velocity)
{
    begin(MotionMode::Velocity, velocity);
}

void Motor::drive(double current)
{
    begin(MotionMode::Torque, current);
}

void Motor::swing(double velocity, Seconds period)
{
    hold();
    const double half = period.count() / 2;
    if (half > 0) {
        m_swing = Swing{velocity, half, half};
    }
}

void Motor::hold()
{
    // What remains of a swing is the rounding of its turning points.
    begin(MotionMode::Position, std::round(m_state.position));
    m_state = {m_goal, 0};
    m_window.setTarget(m_goal, m_goal, m_elapsed);
}

void Motor::setSwitch(Side side, std::optional<double> place)
{
    m_switches[static_cast<int>(side)].place = place;
}

void Motor::setSwitchStops(Side side, bool stops)
{
    m_switches[static_cast<int>(side)].stops = stops;
}

void Motor::renumber(std::int32_t position)
{
    m_origin = std::llround(m_state.position) - position;
}

void Motor::armNull(double turn)
{
    m_nullTurn = turn;
}

std::optional<double> Motor::takeNull()
{
    return std::exchange(m_null, std::nullopt);
}

void Motor::setWindow(double width, Seconds dwell)
{
    m_window.setDwell(dwell.count());
    m_window.setWidth(width, m_state.position, m_elapsed);
}

bool Motor::positionReached() const
{
    return m_mode == MotionMode::Position && m_window.isReached(m_elapsed);
}

std::int32_t Motor::position() const
{
    return wrapped(std::llround(m_state.position) - m_origin);
}

double Motor::placeOf(std::int32_t position) const
{
    const std::int32_t way = wrapped(std::int64_t{position} - this->position());
    return static_cast<double>(std::llround(m_state.position) + way);
}

double Motor::rampGoal() const
{
    if (m_stopped || m_swing) {
        return m_swing && !m_stopped ? m_swing->velocity : 0;
    }
    switch (m_mode) {
    case MotionMode::Position:
        return m_state.velocity == 0 && m_state.position == m_goal
            ? 0
            : std::copysign(m_ramp.maxVelocity, m_goal - m_state.position);
    case MotionMode::Velocity:
        return m_goal;
    case MotionMode::Torque:
        return m_goal * RampGenerator::velocityPerCurrent;
    }
    return 0;
}

bool Motor::atSwitch(Side side) const
{
    const std::optional<double> &place = m_switches[static_cast<int>(side)].place;
    return place && (side == Side::Right ? m_state.position >= *place : m_state.position <= *place);
}

} // namespace simulator
