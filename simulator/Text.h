#pragma once

#include <optional>
#include <string_view>

namespace simulator {

/// Takes the first word off @p text, which keeps the rest. Words are separated by blanks, tabs and
/// carriage returns. Empty, if there is none.
std::string_view takeWord(std::string_view &text);

/// The decimal number that @p text consists of; nothing, if it is anything else, or outside of
/// @p minimum to @p maximum.
std::optional<int> parseInt(std::string_view text, int minimum, int maximum);

} // namespace simulator
