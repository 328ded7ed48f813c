#pragma once

#include <cstdint>

namespace simulator {

/// Result codes of a reply.
enum class Status : std::uint8_t {
    WrongChecksum = 1, ///< the sum of the first eight bytes isn't the ninth
    InvalidCommand = 2, ///< the module doesn't know the command number
    WrongType = 3, ///< the command knows no such type, parameter, bank or port
    InvalidValue = 4, ///< the value is outside of the range, or there is no such motor
    NotAllowed = 6, ///< the parameter can only be read
    Done = 100, ///< carried out
};

} // namespace simulator
