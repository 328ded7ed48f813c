#include "simulator/protocol/FaultPlan.h"

#include "simulator/protocol/Text.h"

#include <array>

namespace simulator {

struct FaultPlan::KindEntry
{
    const char *word;
    Kind kind;
    const char *argument; ///< name of the argument, null if the fault has none
    int minimum; ///< of the argument
    int maximum;
    const char *meaning;

    static const std::array<KindEntry, 9> &all();
};

const std::array<FaultPlan::KindEntry, 9> &FaultPlan::KindEntry::all()
{
    static constexpr int minute = 60000;
    static constexpr std::array<KindEntry, 9> table{{
        {"silence", Kind::Silence, nullptr, 0, 0, "no reply"},
        {"delay", Kind::Delay, "MS", 0, minute, "reply MS milliseconds later"},
        {"late", Kind::Late, "MS", 0, minute, "reply MS milliseconds after the tool has given up"},
        {"short", Kind::Short, nullptr, 0, 0, "reply of 8 bytes"},
        {"long", Kind::Long, nullptr, 0, 0, "reply of 10 bytes"},
        {"doubled", Kind::Doubled, nullptr, 0, 0, "reply sent twice"},
        {"checksum", Kind::Checksum, nullptr, 0, 0, "reply with a wrong checksum"},
        {"garbage", Kind::Garbage, "BYTES", 1, 1000, "so many meaningless bytes behind the reply"},
        {"status", Kind::Status, "CODE", 0, 255, "reply with this status"},
    }};
    return table;
}

std::string FaultPlan::execute(std::string_view line)
{
    if (takeWord(line) != "fault") {
        return "a fault line starts with the word fault";
    }
    const std::string_view word = takeWord(line);
    if (word == "off") {
        return turnOff(line);
    }
    const KindEntry *entry = findKind(word);
    return entry ? turnOn(*entry, line) : "unknown fault: " + std::string(word);
}

ExchangeFaults FaultPlan::next()
{
    const std::lock_guard lock(m_mutex);
    ExchangeFaults faults;
    for (auto active = m_active.begin(); active != m_active.end();) {
        auto &[kind, fault] = *active;
        apply(kind, fault.argument, faults);
        const bool used = fault.remaining && --*fault.remaining == 0;
        active = used ? m_active.erase(active) : std::next(active);
    }
    return faults;
}

std::string FaultPlan::help()
{
    constexpr std::size_t column = 27;
    std::string text;
    for (const KindEntry &entry : KindEntry::all()) {
        std::string form = std::string("fault ") + entry.word;
        form += entry.argument ? std::string(" ") + entry.argument : std::string();
        form += " [N]";
        form.resize(column, ' ');
        text += form + entry.meaning + "\n";
    }
    std::string off = "fault off [KIND]";
    off.resize(column, ' ');
    return text + off + "that fault off, or all\n";
}

const FaultPlan::KindEntry *FaultPlan::findKind(std::string_view word)
{
    for (const KindEntry &entry : KindEntry::all()) {
        if (word == entry.word) {
            return &entry;
        }
    }
    return nullptr;
}

void FaultPlan::apply(Kind kind, int argument, ExchangeFaults &faults)
{
    switch (kind) {
    case Kind::Silence:
        faults.silence = true;
        break;
    case Kind::Delay:
        faults.delay += std::chrono::milliseconds(argument);
        break;
    case Kind::Late:
        faults.delay += toolTimeout + std::chrono::milliseconds(argument);
        break;
    case Kind::Short:
        faults.length = datagramSize - 1;
        break;
    case Kind::Long:
        faults.length = datagramSize + 1;
        break;
    case Kind::Doubled:
        faults.copies = 2;
        break;
    case Kind::Checksum:
        faults.wrongChecksum = true;
        break;
    case Kind::Garbage:
        faults.garbage = static_cast<std::size_t>(argument);
        break;
    case Kind::Status:
        faults.status = static_cast<std::uint8_t>(argument);
        break;
    }
}

std::string FaultPlan::turnOn(const KindEntry &entry, std::string_view words)
{
    Active active{0, std::nullopt};
    if (entry.argument) {
        const auto argument = parseInt(takeWord(words), entry.minimum, entry.maximum);
        if (!argument) {
            return "fault " + std::string(entry.word) + " needs " + entry.argument + ", "
                + std::to_string(entry.minimum) + " to " + std::to_string(entry.maximum);
        }
        active.argument = *argument;
    }
    if (std::string problem = parseUses(words, "exchanges", active.remaining); !problem.empty()) {
        return problem;
    }
    const std::lock_guard lock(m_mutex);
    m_active.insert_or_assign(entry.kind, active);
    return {};
}

std::string FaultPlan::turnOff(std::string_view words)
{
    const std::string_view word = takeWord(words);
    const KindEntry *entry = findKind(word);
    if (!word.empty() && !entry) {
        return "unknown fault: " + std::string(word);
    }
    if (std::string problem = noMoreWords(words); !problem.empty()) {
        return problem;
    }
    const std::lock_guard lock(m_mutex);
    if (entry) {
        m_active.erase(entry->kind);
    } else {
        m_active.clear();
    }
    return {};
}

} // namespace simulator
