#include "simulator/protocol/ValueBanks.h"

namespace simulator {

ValueBanks::ValueBanks(std::vector<Bank> banks)
    : m_banks(std::move(banks))
{
}

std::optional<std::int32_t> ValueBanks::value(std::uint8_t bank, std::uint8_t number) const
{
    if (!find(bank, number)) {
        return std::nullopt;
    }
    const auto place = m_values.find({bank, number});
    return place == m_values.end() ? 0 : place->second;
}

Status ValueBanks::write(std::uint8_t bank, std::uint8_t number, std::int32_t value)
{
    const Bank *found = find(bank, number);
    if (!found) {
        return Status::WrongType;
    }
    if (!found->writable) {
        return Status::NotAllowed;
    }
    if (value < found->minimum || value > found->maximum) {
        return Status::InvalidValue;
    }
    m_values[{bank, number}] = value;
    return Status::Done;
}

bool ValueBanks::set(std::uint8_t bank, std::uint8_t number, std::int32_t value)
{
    if (!find(bank, number)) {
        return false;
    }
    m_values[{bank, number}] = value;
    return true;
}

const Bank *ValueBanks::find(std::uint8_t bank, std::uint8_t number) const
{
    for (const Bank &candidate : m_banks) {
        if (candidate.number == bank && number < candidate.size) {
            return &candidate;
        }
    }
    return nullptr;
}

} // namespace simulator
