#pragma once

#include "simulator/axis/Status.h"

#include <cstdint>
#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace simulator {

/// One bank of numbered values.
struct Bank
{
    std::uint8_t number; ///< the motorBank of a request
    int size; ///< values 0 to size - 1 exist
    std::int32_t minimum; ///< smallest value that a host may write
    std::int32_t maximum; ///< largest value that a host may write
    bool writable; ///< the host may write; otherwise only the module may
};

/// Values in banks: the global parameters, and the I/O ports. All start at 0.
/// Not thread-safe; Module locks around it.
class ValueBanks
{
public:
    explicit ValueBanks(std::vector<Bank> banks);

    /// The value @p number of @p bank; nothing, if there is none.
    std::optional<std::int32_t> value(std::uint8_t bank, std::uint8_t number) const;

    /// A host's write. Changes nothing, unless it returns Status::Done.
    Status write(std::uint8_t bank, std::uint8_t number, std::int32_t value);

    /// The module's own write, without regard to range. False, if there is no such value.
    bool set(std::uint8_t bank, std::uint8_t number, std::int32_t value);

private:
    const Bank *find(std::uint8_t bank, std::uint8_t number) const;

    std::vector<Bank> m_banks;
    std::map<std::pair<std::uint8_t, std::uint8_t>, std::int32_t> m_values; // those ever written
};

} // namespace simulator
