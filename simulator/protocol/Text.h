#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace simulator {

/// Takes the first word off @p text, which keeps the rest. Words are separated by blanks, tabs and
/// carriage returns. Empty, if there is none.
std::string_view takeWord(std::string_view &text);

/// The decimal number that @p text consists of; nothing, if it is anything else, or outside of
/// @p minimum to @p maximum.
std::optional<int> parseInt(std::string_view text, int minimum, int maximum);

/// What is wrong with @p words at the place where a line has to end, in one line; empty, if they
/// are none.
std::string noMoreWords(std::string_view words);

/// Reads the last part of a line, "[N]": the number of uses, 1 to 1000000, that something holds
/// for, or nothing, if it holds until further notice.
/// @param unit what such a use is called in a message, in the plural
/// @param uses gets the number, or nothing
/// @return an empty text, or in one line what is wrong with @p words
std::string parseUses(std::string_view words, std::string_view unit, std::optional<int> &uses);

} // namespace simulator
