#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace simulator {

/// Length of every datagram on a serial line, in both directions.
inline constexpr std::size_t datagramSize = 9;

/// The bytes of one datagram in the order in which they cross the line.
using Datagram = std::array<std::uint8_t, datagramSize>;

/// Sum of the first eight bytes of @p datagram modulo 256, what its last byte has to be.
std::uint8_t checksumOf(const Datagram &datagram);

/// One order to the module, as the module reads it.
///
///     byte   0        1        2     3          4 to 7               8
///            address  command  type  motorBank  value, highest first checksum
struct Request
{
    std::uint8_t address = 0; ///< the module that is meant
    std::uint8_t command = 0; ///< command number
    std::uint8_t type = 0; ///< parameter or port number, or the variant of the command
    std::uint8_t motorBank = 0; ///< motor or bank
    std::int32_t value = 0; ///< argument
    bool intact = true; ///< the checksum was right

    /// Reads @p datagram. Never fails: a wrong checksum shows in `intact`.
    static Request fromBytes(const Datagram &datagram);
    /// The datagram of this request, with its checksum (a wrong one, unless `intact`).
    Datagram toBytes() const;
};

} // namespace simulator
