#pragma once

#include <cstdint>

namespace simulator {

/// The status word, AP 18, bit by bit.
class StatusWord
{
public:
    enum class Bit : std::uint8_t {
        PositionReached = 0,
        VelocityReached = 1,
        ClosedLoop = 2,
        PositionMode = 3,
        VelocityMode = 4,
        TorqueMode = 5,
        HomeSwitch = 6,
        LeftSwitch = 7,
        RightSwitch = 8,
        Undervoltage = 9,
        Overvoltage = 10,
        Overtemperature = 11,
    };

    /// Below this supply, in 1/10 V, the undervoltage bit is set.
    static constexpr std::int32_t lowestVoltage = 90;
    /// Above this one the overvoltage bit is set.
    static constexpr std::int32_t highestVoltage = 550;
    /// From this temperature on, in degrees Celsius, the overtemperature bit is set.
    static constexpr std::int32_t highestTemperature = 100;

    /// The same word with @p bit set, if @p on.
    StatusWord with(Bit bit, bool on) const
    {
        StatusWord word;
        word.m_value = m_value | (on ? 1 << static_cast<int>(bit) : 0);
        return word;
    }
    /// The bits of the supply at @p voltage 1/10 V and @p temperature degrees Celsius.
    StatusWord withSupply(std::int32_t voltage, std::int32_t temperature) const
    {
        return with(Bit::Undervoltage, voltage < lowestVoltage)
            .with(Bit::Overvoltage, voltage > highestVoltage)
            .with(Bit::Overtemperature, temperature >= highestTemperature);
    }

    std::int32_t value() const { return m_value; }

private:
    std::int32_t m_value = 0;
};

} // namespace simulator
