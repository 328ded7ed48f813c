#include "simulator/Text.h"

#include <algorithm>
#include <charconv>

namespace simulator {

std::string_view takeWord(std::string_view &text)
{
    static constexpr std::string_view blanks = " \t\r";
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    const std::string_view word = text.substr(0, text.find_first_of(blanks));
    text.remove_prefix(word.size());
    return word;
}

std::optional<int> parseInt(std::string_view text, int minimum, int maximum)
{
    int number = 0;
    const char *end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (text.empty() || error != std::errc() || stop != end || number < minimum
        || number > maximum) {
        return std::nullopt;
    }
    return number;
}

} // namespace simulator
