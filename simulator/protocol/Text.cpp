#include "simulator/protocol/Text.h"

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

std::string noMoreWords(std::string_view words)
{
    const std::string_view extra = takeWord(words);
    return extra.empty() ? std::string() : "too many words: " + std::string(extra);
}

std::string parseUses(std::string_view words, std::string_view unit, std::optional<int> &uses)
{
    static constexpr int maximum = 1000000;
    const std::string_view count = takeWord(words);
    uses = parseInt(count, 1, maximum);
    if (!count.empty() && !uses) {
        return "not a number of " + std::string(unit) + ", 1 to " + std::to_string(maximum) + ": "
            + std::string(count);
    }
    return noMoreWords(words);
}

} // namespace simulator
