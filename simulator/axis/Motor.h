#pragma once

#include "simulator/axis/PositionWindow.h"
#include "simulator/axis/RampGenerator.h"
#include "simulator/axis/TimeSource.h"

#include <cstdint>
#include <optional>

namespace simulator {

/// What the motor was last told to reach.
enum class MotionMode : std::uint8_t { Position, Velocity, Torque };

/// A motor with its ramp generator, its limit switches and the null mark of its encoder. Time
/// passes for it only in advance(), by any amount at once. The shaft's place is counted in
/// microsteps for the whole run; the module's position is that count from an origin that can be
/// moved, in 32 bits that wrap around.
class Motor
{
public:
    enum class Side : std::uint8_t { Left, Right };

    /// Lets @p time pass. @return how much of it the shaft was turning
    Seconds advance(Seconds time);

    /// Goes to the module's position @p target, the shorter way around 32 bits.
    void moveTo(std::int32_t target);
    /// Turns at @p velocity pps, positive to the right.
    void turnAt(double velocity);
    /// Turns under the torque of @p current mA.
    void drive(double current);
    /// Turns @p velocity pps to the right for half of @p period, then back, and again until hold().
    void swing(double velocity, Seconds period);
    /// Ends swing(): stands still where it is.
    void hold();

    void setRamp(Ramp ramp) { m_ramp = ramp; }
    /// Puts a limit switch at @p place of the shaft; nothing: there is none.
    void setSwitch(Side side, std::optional<double> place);
    /// Whether the limit switch of @p side stops the motor.
    void setSwitchStops(Side side, bool stops);
    /// Gives the module's present position the number @p position. Nothing moves for it.
    void renumber(std::int32_t position);
    /// From now on the next null mark, one each @p turn microsteps, becomes the position 0; with a
    /// turn of 0 none does.
    void armNull(double turn);
    /// Where the null mark that became the position 0 was, once; nothing, if none did since.
    std::optional<double> takeNull();

    /// The rules of "position reached": within @p width microsteps for @p dwell.
    void setWindow(double width, Seconds dwell);
    bool positionReached() const;

    MotionMode mode() const { return m_mode; }
    /// Place and velocity of the shaft.
    const MotionState &state() const { return m_state; }
    /// The module's position.
    std::int32_t position() const;
    /// The place of the shaft that has the number @p position, seen from where it stands.
    double placeOf(std::int32_t position) const;
    /// The speed that the ramp generator works towards, in pps; 0 at the target or a switch.
    double rampGoal() const;
    bool atSwitch(Side side) const;

private:
    struct LimitSwitch
    {
        std::optional<double> place;
        bool stops = false;
    };
    struct Swing
    {
        double velocity;
        double halfPeriod;
        double left; ///< of the present half
    };

    void begin(MotionMode mode, double goal);
    MotionSegment nextSegment() const;
    bool runsIntoSwitch(const MotionSegment &segment) const;
    std::optional<double> nextNull(const MotionSegment &segment) const;
    double follow(const MotionSegment &segment, double longest);
    void passNull(double place);
    const LimitSwitch &switchAhead(int direction) const { return m_switches[direction > 0]; }

    MotionState m_state;
    std::int64_t m_origin = 0; // the place that is the position 0
    double m_elapsed = 0; // s since the start
    MotionMode m_mode = MotionMode::Position;
    double m_goal = 0; // of the mode: a place, pps or mA
    std::optional<Swing> m_swing; // has precedence over the mode
    bool m_stopped = false; // by a switch, until the next command
    Ramp m_ramp;
    LimitSwitch m_switches[2]; // by Side
    double m_nullTurn = 0; // 0: not armed
    std::optional<double> m_null;
    PositionWindow m_window;
};

} // namespace simulator
