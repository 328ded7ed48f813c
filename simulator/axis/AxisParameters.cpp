#include "simulator/axis/AxisParameters.h"

#include "simulator/axis/AxisParameterTable.h"

#include <algorithm>

namespace simulator {

AxisParameters::AxisParameters()
{
    for (const AxisParameterEntry &entry : axisParameterTable()) {
        m_cells[entry.number] = {true, entry.access == Access::ReadWrite, entry.minimum,
                                 entry.maximum, entry.start};
    }
}

std::optional<std::int32_t> AxisParameters::value(std::uint8_t number) const
{
    const Cell &cell = m_cells[number];
    return cell.exists ? std::optional(cell.value) : std::nullopt;
}

Status AxisParameters::write(std::uint8_t number, std::int32_t value)
{
    Cell &cell = m_cells[number];
    if (!cell.exists) {
        return Status::WrongType;
    }
    if (!cell.writable) {
        return Status::NotAllowed;
    }
    const std::int32_t nearest = std::clamp(value, cell.minimum, cell.maximum);
    if (nearest != value && m_policy == LimitPolicy::Refuse) {
        return Status::InvalidValue;
    }
    cell.value = nearest;
    return Status::Done;
}

bool AxisParameters::set(std::uint8_t number, std::int32_t value)
{
    Cell &cell = m_cells[number];
    if (cell.exists) {
        cell.value = value;
    }
    return cell.exists;
}

bool AxisParameters::setRange(std::uint8_t number, std::int32_t minimum, std::int32_t maximum)
{
    Cell &cell = m_cells[number];
    if (!cell.exists || minimum > maximum) {
        return false;
    }
    cell.minimum = minimum;
    cell.maximum = maximum;
    return true;
}

} // namespace simulator
