#pragma once

#include "simulator/axis/Status.h"

#include <array>
#include <cstdint>
#include <optional>

namespace simulator {

/// What the module does with a value outside of a parameter's range.
enum class LimitPolicy : std::uint8_t {
    Refuse, ///< keeps the old value and answers Status::InvalidValue
    Clamp, ///< takes the nearest value of the range and answers Status::Done
};

/// The axis parameters of one motor: values, ranges and write protection. Starts with the values
/// of axisParameterTable(). Not thread-safe; Module locks around it.
class AxisParameters
{
public:
    AxisParameters();

    /// The value of parameter @p number; nothing, if the module has no such parameter.
    std::optional<std::int32_t> value(std::uint8_t number) const;

    /// A host's write, with regard to range and write protection. Changes nothing, unless it
    /// returns Status::Done.
    Status write(std::uint8_t number, std::int32_t value);

    /// The module's own write, without regard to either. False, if there is no such parameter.
    bool set(std::uint8_t number, std::int32_t value);

    /// Gives parameter @p number the range @p minimum to @p maximum for later writes by a host.
    /// False, if there is no such parameter or the range is empty.
    bool setRange(std::uint8_t number, std::int32_t minimum, std::int32_t maximum);

    /// Chooses what becomes of values outside of the range. Starts as LimitPolicy::Refuse.
    void setLimitPolicy(LimitPolicy policy) { m_policy = policy; }

private:
    struct Cell
    {
        bool exists = false;
        bool writable = false;
        std::int32_t minimum = 0;
        std::int32_t maximum = 0;
        std::int32_t value = 0;
    };

    std::array<Cell, 256> m_cells; // by parameter number
    LimitPolicy m_policy = LimitPolicy::Refuse;
};

} // namespace simulator
