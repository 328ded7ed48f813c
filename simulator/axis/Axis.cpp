#include "simulator/axis/Axis.h"

#include "simulator/axis/AxisParameterTable.h"
#include "simulator/axis/Wrapping.h"

#include <algorithm>
#include <cmath>

namespace simulator {

namespace {

// AP 135 counts tenths of a millisecond.
using WindowTicks = std::chrono::duration<double, std::ratio<1, 10000>>;

// In turns per second.
constexpr double detectionSpeed = 0.5;

// The largest value of AP 140, a power of two: 256 microsteps.
constexpr std::int32_t mostResolution = 8;

} // namespace

Axis::Axis(TimePoint now)
    : m_now(now)
{
    for (const std::uint8_t number : {axis::maxVelocity, axis::rightSwitchDisabled,
                                      axis::positionWindow, axis::encoderResolution}) {
        follow(number);
    }
}

void Axis::advanceTo(TimePoint now)
{
    if (now <= m_now) {
        return;
    }
    if (const auto end = m_detection.endsAt(); end && *end <= now) {
        passTimeUntil(std::max(*end, m_now));
        finishDetection();
    }
    passTimeUntil(now);
}

void Axis::passTimeUntil(TimePoint then)
{
    const Seconds time = then - m_now;
    const double inMotion = currentInMotion();
    const Seconds turning = m_motor.advance(time);
    m_power.pass(turning, inMotion);
    m_power.pass(time - turning, currentAtRest());
    m_now = then;
    if (const auto null = m_motor.takeNull()) {
        m_encoder.clearAt(*null);
        m_parameters.set(axis::clearOnNull, 0);
    }
}

void Axis::finishDetection()
{
    m_detection.finish();
    standStill();
    if (m_detection.state() == EncoderDetection::Succeeded) {
        m_parameters.set(axis::encoderOffset, foundOffset);
    }
}

Status Axis::write(std::uint8_t number, std::int32_t value)
{
    const Status status = m_parameters.write(number, value);
    if (status == Status::Done) {
        if (number == axis::actualPosition) {
            renumberTarget();
        }
        follow(number);
    }
    return status;
}

bool Axis::set(std::uint8_t number, std::int32_t value)
{
    if (!m_parameters.set(number, value)) {
        return false;
    }
    // Position and detection state are changed for good: the module goes on from there.
    if (findReading(number) && number != axis::actualPosition && number != axis::detectionState) {
        m_held[number] = value;
    }
    follow(number);
    return true;
}

bool Axis::release(std::uint8_t number)
{
    if (m_held.erase(number) > 0) {
        follow(number);
    }
    return m_parameters.value(number).has_value();
}

void Axis::placeSwitch(Switch which, std::optional<std::int32_t> position)
{
    const auto place = position ? std::optional(m_motor.placeOf(*position)) : std::nullopt;
    switch (which) {
    case Switch::Left:
        m_motor.setSwitch(Motor::Side::Left, place);
        break;
    case Switch::Right:
        m_motor.setSwitch(Motor::Side::Right, place);
        break;
    case Switch::Home:
        m_home = place;
        break;
    }
}

void Axis::chooseEncoder(EncoderFate fate, std::chrono::milliseconds duration)
{
    m_detection.choose(fate, duration);
}

// What a new value of one parameter sets going.
void Axis::follow(std::uint8_t number)
{
    switch (number) {
    case axis::targetPosition:
    case axis::targetVelocity:
    case axis::targetPhaseCurrent:
        followMotionCommand(number);
        break;
    case axis::actualPosition:
        m_motor.renumber(parameter(number));
        break;
    case axis::maxVelocity:
    case axis::acceleration:
    case axis::startStopVelocity:
        m_motor.setRamp({magnitude(axis::maxVelocity), magnitude(axis::acceleration),
                         magnitude(axis::startStopVelocity)});
        break;
    case axis::maxCurrent:
    case axis::maxPhaseCurrent:
        if (m_motor.mode() == MotionMode::Torque) {
            drive();
        }
        break;
    case axis::rightSwitchDisabled:
    case axis::leftSwitchDisabled:
        m_motor.setSwitchStops(Motor::Side::Right, parameter(axis::rightSwitchDisabled) == 0);
        m_motor.setSwitchStops(Motor::Side::Left, parameter(axis::leftSwitchDisabled) == 0);
        break;
    case axis::closedLoopMode:
        followLoopMode();
        break;
    case axis::detectionState:
        followDetectionState();
        break;
    case axis::positionWindow:
    case axis::positionWindowTime:
        m_motor.setWindow(parameter(axis::positionWindow),
                          WindowTicks(parameter(axis::positionWindowTime)));
        break;
    case axis::microstepResolution:
    case axis::fullSteps:
    case axis::encoderResolution:
    case axis::clearOnNull:
        followEncoder();
        break;
    default:
        break;
    }
}

// The last command wins, over a detection that runs, too.
void Axis::followMotionCommand(std::uint8_t number)
{
    if (m_detection.isRunning()) {
        m_detection.reset(EncoderDetection::Failed);
    }
    if (number == axis::targetPosition) {
        m_parameters.set(axis::targetVelocity, 0);
        m_motor.moveTo(parameter(axis::targetPosition));
    } else if (number == axis::targetVelocity) {
        m_motor.turnAt(parameter(axis::targetVelocity));
    } else {
        drive();
    }
}

// Only 1 starts something. Other values are taken over, and end what runs.
void Axis::followDetectionState()
{
    const bool wasRunning = m_detection.isRunning();
    const std::int32_t state = parameter(axis::detectionState);
    m_detection.reset(state);
    if (state == EncoderDetection::Running) {
        m_detection.start(m_now);
        standStill();
        m_motor.swing(detectionSpeed * microstepsPerTurn(), m_detection.duration());
    } else if (wasRunning) {
        standStill();
    }
}

void Axis::followEncoder()
{
    const double turn = microstepsPerTurn();
    m_encoder.setResolution(turn > 0 ? parameter(axis::encoderResolution) / turn : 0,
                            m_motor.state().position);
    m_motor.armNull(parameter(axis::clearOnNull) != 0 ? turn : 0);
}

// Closed loop that is already on isn't initialised a second time.
void Axis::followLoopMode()
{
    if (parameter(axis::closedLoopMode) == 0) {
        m_closedSince.reset();
    } else if (!m_closedSince) {
        m_closedSince = m_now;
    }
}

// A host gives the place where the motor stands another number. The place that it goes to gets
// another one, too, so that nothing moves for it.
void Axis::renumberTarget()
{
    const std::int64_t way = m_motor.mode() == MotionMode::Position
        ? std::int64_t{parameter(axis::targetPosition)} - m_motor.position()
        : 0;
    m_parameters.set(axis::targetPosition, wrapped(parameter(axis::actualPosition) + way));
}

void Axis::drive()
{
    m_motor.drive(std::copysign(torqueCurrent(), parameter(axis::targetPhaseCurrent)));
}

// At once and without a ramp, as at the begin and the end of a detection.
void Axis::standStill()
{
    m_motor.hold();
    m_parameters.set(axis::targetPosition, m_motor.position());
    m_parameters.set(axis::targetVelocity, 0);
}

std::int32_t Axis::parameter(std::uint8_t number) const
{
    return m_parameters.value(number).value_or(0);
}

double Axis::microstepsPerTurn() const
{
    return magnitude(axis::fullSteps) * microstepsPerFullStep();
}

double Axis::microstepsPerFullStep() const
{
    return 1 << std::clamp(parameter(axis::microstepResolution), 0, mostResolution);
}

// From inside the module a parameter can have any value.
double Axis::magnitude(std::uint8_t number) const
{
    return std::max(0, parameter(number));
}

} // namespace simulator
