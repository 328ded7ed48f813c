#pragma once

#include "simulator/axis/Status.h"
#include "simulator/protocol/Request.h"

#include <array>
#include <cstdint>
#include <optional>

namespace simulator {

/// One answer of the module.
///
///     byte   0             1              2       3        4 to 7               8
///            replyAddress  moduleAddress  status  command  value, highest first checksum
///
/// The text form of the version query is the exception: byte 0 is still `replyAddress`, bytes 1 to
/// 8 are eight characters.
struct Reply
{
    std::uint8_t replyAddress = 0; ///< the host that the module answers to
    std::uint8_t moduleAddress = 0; ///< the module that answers
    std::uint8_t status = static_cast<std::uint8_t>(Status::Done); ///< result code
    std::uint8_t command = 0; ///< the command answered
    std::int32_t value = 0; ///< the value that the module now holds
    std::optional<std::array<char, 8>> text =
        {}; ///< set: takes the place of all fields behind byte 0

    /// Reads a reply with fields from @p datagram; its checksum isn't looked at.
    static Reply fromBytes(const Datagram &datagram);
    /// The datagram of this reply, with its checksum, or with its text.
    Datagram toBytes() const;
};

} // namespace simulator
