#include "simulator/can/CanFaultPlan.h"

#include "simulator/protocol/Text.h"

#include <array>

namespace simulator {

struct CanFaultPlan::KindEntry
{
    const char *word;
    CanFault fault;
    int maximum; ///< of the argument ID, which is 0 to this; negative if the fault has none
    const char *meaning;

    static const std::array<KindEntry, 7> &all();
};

const std::array<CanFaultPlan::KindEntry, 7> &CanFaultPlan::KindEntry::all()
{
    static constexpr int none = -1;
    static constexpr std::array<KindEntry, 7> table{{
        {"no-channel", CanFault::NoChannel, none, "the channel can't be opened"},
        {"speed-refused", CanFault::SpeedRefused, none, "the speed can't be set"},
        {"on-refused", CanFault::OnRefused, none, "the channel can't be taken on the bus"},
        {"off-refused", CanFault::OffRefused, none, "the channel can't be taken off the bus"},
        {"close-refused", CanFault::CloseRefused, none, "the channel can't be closed"},
        {"foreign", CanFault::Foreign, 2047, "a frame of node ID comes just before the reply"},
        {"module-id", CanFault::ModuleId, 255, "the reply names module ID"},
    }};
    return table;
}

std::string CanFaultPlan::execute(std::string_view line)
{
    if (takeWord(line) != "canfault") {
        return "a CAN fault line starts with the word canfault";
    }
    const std::string_view word = takeWord(line);
    if (word == "off") {
        return turnOff(line);
    }
    const KindEntry *kind = findKind(word);
    return kind ? turnOn(*kind, line) : "unknown CAN fault: " + std::string(word);
}

std::optional<int> CanFaultPlan::take(CanFault fault)
{
    const std::lock_guard lock(m_mutex);
    const auto active = m_active.find(fault);
    if (active == m_active.end()) {
        return std::nullopt;
    }
    auto &[argument, remaining] = active->second;
    const int taken = argument;
    if (remaining && --*remaining == 0) {
        m_active.erase(active);
    }
    return taken;
}

std::string CanFaultPlan::help()
{
    constexpr std::size_t column = 27;
    const auto line = [](std::string form, const char *meaning) {
        form.resize(column, ' ');
        return form + meaning + "\n";
    };
    std::string text;
    for (const KindEntry &entry : KindEntry::all()) {
        const char *arguments = entry.maximum < 0 ? " [N]" : " ID [N]";
        text += line(std::string("canfault ") + entry.word + arguments, entry.meaning);
    }
    return text + line("canfault off [KIND]", "that fault off, or all");
}

const CanFaultPlan::KindEntry *CanFaultPlan::findKind(std::string_view word)
{
    for (const KindEntry &entry : KindEntry::all()) {
        if (word == entry.word) {
            return &entry;
        }
    }
    return nullptr;
}

std::string CanFaultPlan::turnOn(const KindEntry &kind, std::string_view words)
{
    Active active{0, std::nullopt};
    if (kind.maximum >= 0) {
        const auto argument = parseInt(takeWord(words), 0, kind.maximum);
        if (!argument) {
            return "canfault " + std::string(kind.word) + " needs ID, 0 to "
                + std::to_string(kind.maximum);
        }
        active.argument = *argument;
    }
    if (std::string problem = parseUses(words, "uses", active.remaining); !problem.empty()) {
        return problem;
    }
    const std::lock_guard lock(m_mutex);
    m_active.insert_or_assign(kind.fault, active);
    return {};
}

std::string CanFaultPlan::turnOff(std::string_view words)
{
    const std::string_view word = takeWord(words);
    const KindEntry *kind = findKind(word);
    if (!word.empty() && !kind) {
        return "unknown CAN fault: " + std::string(word);
    }
    if (std::string problem = noMoreWords(words); !problem.empty()) {
        return problem;
    }
    const std::lock_guard lock(m_mutex);
    if (kind) {
        m_active.erase(kind->fault);
    } else {
        m_active.clear();
    }
    return {};
}

} // namespace simulator
