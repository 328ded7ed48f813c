#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

namespace simulator {

/// Data bytes of the longest frame.
inline constexpr std::size_t maxFrameLength = 8;

/// One data frame on the bus.
struct CanFrame
{
    std::uint16_t identifier = 0; ///< 11 bits
    std::uint8_t length = maxFrameLength; ///< how many bytes of `data` are in the frame
    std::array<std::uint8_t, maxFrameLength> data{};

    /// The usual short form: identifier, length and data, "001 [8] 06 01 00 00 00 00 00 03".
    std::string toText() const;
    bool operator==(const CanFrame &) const = default;
};

} // namespace simulator
