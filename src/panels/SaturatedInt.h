#pragma once

#include <QtGlobal>

#include <algorithm>
#include <limits>

/// Numbers that come from the module or add up without end, brought back into the range of the
/// spin boxes that show them. An overflow would turn the sign, and with it the direction.
namespace SaturatedInt {

/// Largest magnitude of a value: the spin boxes are symmetric and leave out the least int.
constexpr int Largest = std::numeric_limits<int>::max();

/// @p value, -Largest to Largest.
constexpr int saturated(qint64 value)
{
    return static_cast<int>(std::clamp<qint64>(value, -Largest, Largest));
}

/// @p value without its sign, 0 to Largest.
constexpr int magnitude(int value)
{
    return saturated(value < 0 ? -qint64{value} : qint64{value});
}

/// @p first and @p second added, -Largest to Largest.
constexpr int sum(int first, int second)
{
    return saturated(qint64{first} + second);
}

} // namespace SaturatedInt
