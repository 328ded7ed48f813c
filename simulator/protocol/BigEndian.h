#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace simulator {

/// The signed number that @p bytes hold, most significant byte first.
inline std::int32_t readBigEndian(std::span<const std::uint8_t, 4> bytes)
{
    std::uint32_t bits = 0;
    for (const std::uint8_t byte : bytes) {
        bits = bits << 8 | byte;
    }
    return static_cast<std::int32_t>(bits);
}

/// Puts @p value into @p bytes, most significant byte first.
inline void writeBigEndian(std::int32_t value, std::span<std::uint8_t, 4> bytes)
{
    auto bits = static_cast<std::uint32_t>(value);
    for (std::size_t i = bytes.size(); i-- > 0; bits >>= 8) {
        bytes[i] = static_cast<std::uint8_t>(bits & 0xffU);
    }
}

} // namespace simulator
