#pragma once

#include "simulator/axis/TimeSource.h"

#include <cstdint>
#include <random>

namespace simulator {

/// What the power stage has to do at a moment.
struct MotorLoad
{
    double current = 0; ///< mA, the amplitude in both phases
    double turnsPerSecond = 0; ///< of the shaft, either sign
    double angle = 0; ///< electrical, in radians
};

/// The measured values of the power stage. At rest each is a plain function of the load. While the
/// motor turns the currents carry noise, which is the same again for the same seed and the same
/// sequence of measurements.
class PowerStage
{
public:
    /// Full scale of AP 6 and AP 7.
    static constexpr std::int32_t fullScale = 255;

    /// Phase current in mA for @p scale, a value of AP 6 or AP 7.
    static std::int32_t scaledCurrent(std::int32_t scale);

    /// Starts the noise anew.
    void setSeed(std::uint32_t seed) { m_noise.seed(seed); }
    /// Lets @p time pass with a constant current of @p current mA, which warms the stage.
    void pass(Seconds time, double current);

    /// AP 150 in mA.
    std::int32_t motorCurrent(const MotorLoad &load);
    /// AP 151 in mA: the peak while turning, what flows at rest.
    std::int32_t phaseA(const MotorLoad &load);
    /// AP 152 in mA, see phaseA().
    std::int32_t phaseB(const MotorLoad &load);
    /// AP 153 in 1/10 V: it sags under load.
    static std::int32_t supplyVoltage(const MotorLoad &load);
    /// AP 154 in mA.
    static std::int32_t dcCurrent(const MotorLoad &load);
    /// AP 155 in degrees Celsius.
    std::int32_t temperature() const;

private:
    double noisy(double current);

    // This generator and no distribution: both sides of the standard library give the same numbers.
    std::mt19937 m_noise;
    double m_rise = 0; // degrees above the surroundings
};

} // namespace simulator
