// The parameters that the axis computes or measures whenever they are read.

#include "simulator/axis/Axis.h"
#include "simulator/axis/AxisParameterTable.h"
#include "simulator/axis/StatusWord.h"
#include "simulator/axis/Wrapping.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace simulator {

namespace {

std::int32_t rounded(double number)
{
    return static_cast<std::int32_t>(std::lround(number));
}

} // namespace

struct Axis::Reading
{
    std::uint8_t number;
    std::int32_t (*take)(Axis &axis);
};

const Axis::Reading *Axis::findReading(std::uint8_t number)
{
    static constexpr auto readings = std::to_array<Reading>({
        {axis::actualPosition, [](Axis &a) { return a.m_motor.position(); }},
        {axis::maxPhaseCurrent,
         [](Axis &a) { return PowerStage::scaledCurrent(a.parameter(axis::maxCurrent)); }},
        {axis::statusFlags, [](Axis &a) { return a.statusFlags(); }},
        {axis::scalerActual, [](Axis &a) { return a.closedLoop().scalerActual(); }},
        {axis::actualVelocity, [](Axis &a) { return rounded(a.m_motor.state().velocity); }},
        {axis::detectionState, [](Axis &a) { return a.m_detection.state(); }},
        {axis::closedLoopReady, [](Axis &a) { return a.closedLoopReady(); }},
        {axis::motorCurrent, [](Axis &a) { return a.m_power.motorCurrent(a.load()); }},
        {axis::phaseA, [](Axis &a) { return a.m_power.phaseA(a.load()); }},
        {axis::phaseB, [](Axis &a) { return a.m_power.phaseB(a.load()); }},
        {axis::supplyVoltage, [](Axis &a) { return PowerStage::supplyVoltage(a.load()); }},
        {axis::dcCurrent, [](Axis &a) { return PowerStage::dcCurrent(a.load()); }},
        {axis::temperature, [](Axis &a) { return a.m_power.temperature(); }},
        {axis::standbyPhaseCurrent,
         [](Axis &a) { return PowerStage::scaledCurrent(a.parameter(axis::standbyCurrent)); }},
        {axis::encoderValue,
         [](Axis &a) {
             return wrapped(std::llround(a.m_encoder.valueAt(a.m_motor.state().position)));
         }},
        {axis::gamma, [](Axis &a) { return a.closedLoop().gamma(); }},
        {axis::deltaMod, [](Axis &a) { return a.closedLoop().deltaMod(); }},
        {axis::deltaLut, [](Axis &a) { return a.closedLoop().deltaLut(); }},
        {axis::virtualPosition,
         [](Axis &a) {
             return wrapped(std::int64_t{a.m_motor.position()} + a.closedLoop().positionError());
         }},
        {axis::virtualTargetVelocity, [](Axis &a) { return rounded(a.m_motor.rampGoal()); }},
        {axis::virtualVelocity, [](Axis &a) { return rounded(a.m_motor.state().velocity); }},
        {axis::scalerTarget, [](Axis &a) { return a.closedLoop().scalerTarget(); }},
        {axis::positionError, [](Axis &a) { return a.closedLoop().positionError(); }},
    });
    const auto found =
        std::find_if(readings.begin(), readings.end(),
                     [number](const Reading &candidate) { return candidate.number == number; });
    return found == readings.end() ? nullptr : &*found;
}

std::optional<std::int32_t> Axis::read(std::uint8_t number)
{
    if (const auto held = m_held.find(number); held != m_held.end()) {
        return held->second;
    }
    const Reading *computed = findReading(number);
    return computed ? computed->take(*this) : m_parameters.value(number);
}

std::int32_t Axis::reading(std::uint8_t number)
{
    return read(number).value_or(0);
}

std::int32_t Axis::statusFlags()
{
    using Bit = StatusWord::Bit;
    const MotionMode mode = m_motor.mode();
    const double place = m_motor.state().position;
    const double lag = parameter(axis::targetVelocity) - m_motor.state().velocity;
    return StatusWord()
        .with(Bit::PositionReached, m_motor.positionReached())
        .with(Bit::VelocityReached,
              mode == MotionMode::Velocity && std::abs(lag) <= parameter(axis::velocityWindow))
        .with(Bit::ClosedLoop, parameter(axis::closedLoopMode) != 0)
        .with(Bit::PositionMode, mode == MotionMode::Position)
        .with(Bit::VelocityMode, mode == MotionMode::Velocity)
        .with(Bit::TorqueMode, mode == MotionMode::Torque)
        .with(Bit::HomeSwitch, m_home && std::abs(place - *m_home) <= homeSwitchReach)
        .with(Bit::LeftSwitch, m_motor.atSwitch(Motor::Side::Left))
        .with(Bit::RightSwitch, m_motor.atSwitch(Motor::Side::Right))
        .withSupply(reading(axis::supplyVoltage), reading(axis::temperature))
        .value();
}

// Without an encoder that can be found the initialisation never ends.
std::int32_t Axis::closedLoopReady() const
{
    const bool ready = m_closedSince && m_detection.fate() == EncoderFate::Found
        && m_now - *m_closedSince >= initialisationTime;
    return ready ? 1 : 0;
}

ClosedLoop Axis::closedLoop() const
{
    return {m_parameters, m_motor.state().velocity};
}

double Axis::torqueCurrent()
{
    const double most = std::max(0, reading(axis::maxPhaseCurrent));
    return std::min(std::abs(double(parameter(axis::targetPhaseCurrent))), most);
}

double Axis::currentInMotion()
{
    if (m_motor.mode() == MotionMode::Torque) {
        return torqueCurrent();
    }
    const double most = reading(axis::maxPhaseCurrent);
    const ClosedLoop loop = closedLoop();
    return loop.scales() ? most * loop.scalerActual() / PowerStage::fullScale : most;
}

double Axis::currentAtRest()
{
    return m_motor.mode() == MotionMode::Torque ? torqueCurrent()
                                                : reading(axis::standbyPhaseCurrent);
}

MotorLoad Axis::load()
{
    const MotionState &state = m_motor.state();
    const double turn = microstepsPerTurn();
    // One turn of the field is four full steps.
    const double field = 4 * microstepsPerFullStep();
    return {state.velocity != 0 ? currentInMotion() : currentAtRest(),
            turn > 0 ? state.velocity / turn : state.velocity,
            2 * std::numbers::pi * std::fmod(state.position, field) / field};
}

} // namespace simulator
