#pragma once

#include <cstdint>

namespace simulator {

/// @p count as a counter of 32 bits shows it, which wraps around at its ends.
constexpr std::int32_t wrapped(std::int64_t count)
{
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(count));
}

} // namespace simulator
