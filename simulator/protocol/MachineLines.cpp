#include "simulator/protocol/MachineLines.h"

#include "simulator/protocol/Text.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

namespace simulator {

namespace {

constexpr int highest = std::numeric_limits<int>::max();
// No detection that anybody waits for takes longer than ten minutes.
constexpr int longestDetection = 600000;

std::optional<int> takeNumber(std::string_view &words, int minimum, int maximum)
{
    return parseInt(takeWord(words), minimum, maximum);
}

// A position or a value of a parameter.
std::optional<int> takeValue(std::string_view &words)
{
    return takeNumber(words, -highest, highest);
}

std::string notAParameter(std::string_view words)
{
    return "not an axis parameter: " + std::string(takeWord(words));
}

// Each of these gets the words behind the first one. What is left behind its last argument is for
// nobody, and so an error.
bool isAtEnd(std::string_view words)
{
    return takeWord(words).empty();
}

std::string placeSwitch(std::string_view words, Module &module)
{
    static constexpr auto sides = std::to_array<std::pair<std::string_view, Axis::Switch>>({
        {"left", Axis::Switch::Left},
        {"right", Axis::Switch::Right},
        {"home", Axis::Switch::Home},
    });
    const std::string_view name = takeWord(words);
    const auto side = std::find_if(sides.begin(), sides.end(),
                                   [name](const auto &entry) { return entry.first == name; });
    if (side == sides.end()) {
        return "no switch, left, right or home: " + std::string(name);
    }
    const std::string_view place = takeWord(words);
    const auto position = parseInt(place, -highest, highest);
    if ((!position && place != "off") || !isAtEnd(words)) {
        return "a switch is at a position, or off";
    }
    module.placeSwitch(side->second, position);
    return {};
}

std::string chooseEncoder(std::string_view words, Module &module)
{
    static constexpr auto fates = std::to_array<std::pair<std::string_view, EncoderFate>>({
        {"success", EncoderFate::Found},
        {"failure", EncoderFate::NotFound},
        {"endless", EncoderFate::Endless},
    });
    const std::string_view name = takeWord(words);
    const auto fate = std::find_if(fates.begin(), fates.end(),
                                   [name](const auto &entry) { return entry.first == name; });
    if (fate == fates.end()) {
        return "no outcome, success, failure or endless: " + std::string(name);
    }
    std::optional<int> duration = static_cast<int>(EncoderDetection::usualDuration.count());
    if (fate->second != EncoderFate::Endless && !isAtEnd(words)) {
        duration = takeNumber(words, 0, longestDetection);
    }
    if (!duration || !isAtEnd(words)) {
        return "the time is a number from 0 to " + std::to_string(longestDetection);
    }
    module.chooseEncoder(fate->second, std::chrono::milliseconds(*duration));
    return {};
}

std::string setParameter(std::string_view words, Module &module)
{
    const std::string_view from = words;
    const auto number = takeNumber(words, 0, 255);
    const auto value = takeValue(words);
    if (!number) {
        return notAParameter(from);
    }
    if (!value || !isAtEnd(words)) {
        return "set needs an axis parameter and a value";
    }
    const bool known = module.setAxisParameter(static_cast<std::uint8_t>(*number), *value);
    return known ? std::string() : notAParameter(from);
}

std::string releaseParameter(std::string_view words, Module &module)
{
    const std::string_view from = words;
    const auto number = takeNumber(words, 0, 255);
    if (!number || !isAtEnd(words)) {
        return notAParameter(from);
    }
    const bool known = module.releaseAxisParameter(static_cast<std::uint8_t>(*number));
    return known ? std::string() : notAParameter(from);
}

std::string setRange(std::string_view words, Module &module)
{
    const std::string_view from = words;
    const auto number = takeNumber(words, 0, 255);
    const auto minimum = takeValue(words);
    const auto maximum = takeValue(words);
    if (!number) {
        return notAParameter(from);
    }
    if (!minimum || !maximum || *minimum > *maximum || !isAtEnd(words)) {
        return "a range is an axis parameter, its minimum and its maximum";
    }
    const bool known =
        module.setAxisParameterRange(static_cast<std::uint8_t>(*number), *minimum, *maximum);
    return known ? std::string() : notAParameter(from);
}

struct LineEntry
{
    std::string_view word;
    std::string (*carryOut)(std::string_view words, Module &module);
};

constexpr auto entries = std::to_array<LineEntry>({
    {"switch", placeSwitch},
    {"encoder", chooseEncoder},
    {"set", setParameter},
    {"release", releaseParameter},
    {"range", setRange},
});

const LineEntry *findEntry(std::string_view word)
{
    const auto found = std::find_if(entries.begin(), entries.end(),
                                    [word](const LineEntry &entry) { return entry.word == word; });
    return found == entries.end() ? nullptr : &*found;
}

} // namespace

bool MachineLines::understands(std::string_view word)
{
    return findEntry(word) != nullptr;
}

std::string MachineLines::execute(std::string_view line, Module &module)
{
    std::string_view words = line;
    const std::string_view word = takeWord(words);
    const LineEntry *entry = findEntry(word);
    return entry ? entry->carryOut(words, module) : "unknown line: " + std::string(word);
}

std::string MachineLines::help()
{
    return "switch SIDE POSITION       a left, right or home switch at this position\n"
           "switch SIDE off            no such switch, as at the start\n"
           "encoder success [MS]       encoder detections succeed after MS milliseconds\n"
           "encoder failure [MS]       they fail after MS milliseconds\n"
           "encoder endless            they never end\n"
           "set AP VALUE               an axis parameter from inside the module, measured ones "
           "held\n"
           "release AP                 a value that is held is measured again\n"
           "range AP MINIMUM MAXIMUM   the module's own range of an axis parameter\n";
}

} // namespace simulator
