#include "simulator/axis/PowerStage.h"

#include "simulator/axis/AxisParameterTable.h"

#include <algorithm>
#include <cmath>

namespace simulator {

namespace {

constexpr double noiseAmplitude = 0.02; // of the current
constexpr std::int32_t idleVoltage = 240; // 1/10 V
constexpr double currentPerSag = 1500; // mA for 1/10 V
constexpr std::int32_t idleCurrent = 120; // mA
constexpr double surroundings = 31; // degrees
constexpr double fullRise = 60; // degrees at the full scale current, in the end
constexpr double warmUp = 180; // s, time constant

std::int32_t rounded(double number)
{
    return static_cast<std::int32_t>(std::lround(number));
}

bool isTurning(const MotorLoad &load)
{
    return load.turnsPerSecond != 0;
}

} // namespace

std::int32_t PowerStage::scaledCurrent(std::int32_t scale)
{
    return static_cast<std::int32_t>(std::int64_t{scale} * fullScaleCurrent / fullScale);
}

void PowerStage::pass(Seconds time, double current)
{
    const double share = current / fullScaleCurrent;
    const double final = fullRise * share * share;
    m_rise = final + (m_rise - final) * std::exp(-time.count() / warmUp);
}

std::int32_t PowerStage::motorCurrent(const MotorLoad &load)
{
    return rounded(isTurning(load) ? noisy(load.current) : load.current);
}

std::int32_t PowerStage::phaseA(const MotorLoad &load)
{
    return rounded(isTurning(load) ? noisy(load.current)
                                   : load.current * std::abs(std::cos(load.angle)));
}

std::int32_t PowerStage::phaseB(const MotorLoad &load)
{
    return rounded(isTurning(load) ? noisy(load.current)
                                   : load.current * std::abs(std::sin(load.angle)));
}

std::int32_t PowerStage::supplyVoltage(const MotorLoad &load)
{
    return idleVoltage - (isTurning(load) ? rounded(load.current / currentPerSag) : 0);
}

// The phases' losses and what the shaft takes.
std::int32_t PowerStage::dcCurrent(const MotorLoad &load)
{
    if (!isTurning(load)) {
        return idleCurrent;
    }
    const double speed = std::min(std::abs(load.turnsPerSecond), 20.0);
    return idleCurrent + rounded(load.current * (0.25 + speed / 40));
}

std::int32_t PowerStage::temperature() const
{
    return rounded(surroundings + m_rise);
}

// Evenly spread: the generator's own numbers, brought to -1 to 1.
double PowerStage::noisy(double current)
{
    const double share = 2 * static_cast<double>(m_noise()) / std::mt19937::max() - 1;
    return current * (1 + noiseAmplitude * share);
}

} // namespace simulator
