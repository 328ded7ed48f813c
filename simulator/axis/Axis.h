#pragma once

#include "simulator/axis/AxisParameters.h"
#include "simulator/axis/ClosedLoop.h"
#include "simulator/axis/EncoderCounter.h"
#include "simulator/axis/EncoderDetection.h"
#include "simulator/axis/Motor.h"
#include "simulator/axis/PowerStage.h"
#include "simulator/axis/TimeSource.h"

#include <cstdint>
#include <map>
#include <optional>

namespace simulator {

/// One axis of the module: its parameters and what they set in motion. Time passes for it in
/// advanceTo() only. Not thread-safe; Module locks around it.
class Axis
{
public:
    enum class Switch : std::uint8_t { Left, Right, Home };

    /// Half the width of the range in which the home switch is closed, in microsteps.
    static constexpr std::int32_t homeSwitchReach = 100;
    /// Time from the switch to closed loop until it is initialised (AP 133).
    static constexpr std::chrono::milliseconds initialisationTime{500};
    /// The encoder offset (AP 112) that a successful detection finds, in encoder positions.
    static constexpr std::int32_t foundOffset = 731;

    /// Life begins at @p now.
    explicit Axis(TimePoint now);

    /// Lets time pass up to @p now; an earlier moment changes nothing.
    void advanceTo(TimePoint now);

    /// Axis parameter @p number as a host would read it; nothing, if there is none.
    std::optional<std::int32_t> read(std::uint8_t number);
    /// A host's write with all that follows from it. Changes nothing, unless it returns
    /// Status::Done.
    Status write(std::uint8_t number, std::int32_t value);

    /// A change from inside the module, without regard to range and write protection. A value that
    /// the module computes or measures is held at @p value until release(). False, if there is no
    /// such parameter.
    bool set(std::uint8_t number, std::int32_t value);
    /// Lets a value that set() holds be computed again. False, if there is no such parameter.
    bool release(std::uint8_t number);
    /// Ranges and what becomes of values outside.
    AxisParameters &parameters() { return m_parameters; }

    /// Puts a switch at the present module's position @p position, or takes it away.
    void placeSwitch(Switch which, std::optional<std::int32_t> position);
    /// Chooses how encoder detections go.
    void chooseEncoder(EncoderFate fate, std::chrono::milliseconds duration);
    /// Starts the noise anew.
    void setSeed(std::uint32_t seed) { m_power.setSeed(seed); }

private:
    struct Reading;

    static const Reading *findReading(std::uint8_t number);
    std::int32_t parameter(std::uint8_t number) const;
    std::int32_t reading(std::uint8_t number);

    void passTimeUntil(TimePoint then);
    void finishDetection();
    void follow(std::uint8_t number);
    void followMotionCommand(std::uint8_t number);
    void followDetectionState();
    void followEncoder();
    void followLoopMode();
    void renumberTarget();
    void drive();
    void standStill();

    double magnitude(std::uint8_t number) const;
    double microstepsPerFullStep() const;
    double microstepsPerTurn() const;
    double torqueCurrent();
    double currentInMotion();
    double currentAtRest();
    MotorLoad load();
    ClosedLoop closedLoop() const;
    std::int32_t statusFlags();
    std::int32_t closedLoopReady() const;

    TimePoint m_now;
    AxisParameters m_parameters;
    std::map<std::uint8_t, std::int32_t> m_held; // by set(), in place of what is computed
    Motor m_motor;
    EncoderCounter m_encoder;
    EncoderDetection m_detection;
    PowerStage m_power;
    std::optional<double> m_home; // place of the shaft
    std::optional<TimePoint> m_closedSince; // nothing: open loop
};

} // namespace simulator
