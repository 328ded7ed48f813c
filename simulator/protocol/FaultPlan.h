#pragma once

#include "simulator/protocol/Request.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

namespace simulator {

/// How long the tool waits for a reply: 51 attempts, 10 ms apart.
inline constexpr std::chrono::milliseconds toolTimeout{510};

/// What goes wrong in one exchange. The default is: nothing.
struct ExchangeFaults
{
    bool silence = false; ///< no reply at all
    std::chrono::milliseconds delay{0}; ///< the reply leaves so much later
    std::size_t length = datagramSize; ///< bytes that the reply is cut or filled up to
    int copies = 1; ///< how often the reply is sent
    bool wrongChecksum = false; ///< the last byte of the reply is wrong
    std::size_t garbage = 0; ///< meaningless bytes behind the reply
    std::optional<std::uint8_t> status = {}; ///< stands in the reply in place of the true status
};

/// The faults that are on. Several kinds can be on at once; each counts its own exchanges. Every
/// operation may be called from every thread.
class FaultPlan
{
public:
    /// Carries out one line of text, the same for a program's input and for a test:
    ///
    ///     fault silence [N]          no reply
    ///     fault delay MS [N]         reply MS milliseconds later
    ///     fault late MS [N]          reply MS milliseconds after the tool has given up
    ///     fault short [N]            reply of 8 bytes
    ///     fault long [N]             reply of 10 bytes
    ///     fault doubled [N]          reply sent twice
    ///     fault checksum [N]         reply with a wrong checksum
    ///     fault garbage BYTES [N]    so many meaningless bytes behind the reply
    ///     fault status CODE [N]      reply with this status
    ///     fault off [KIND]           that fault off, or all
    ///
    /// N is the number of exchanges that it holds for; without N it holds until turned off. A fault
    /// that is on already is replaced.
    /// @return an empty text, or in one line what is wrong with @p line, which then changed
    /// nothing.
    std::string execute(std::string_view line);

    /// The faults of the exchange that now begins. Counts it.
    ExchangeFaults next();

    /// The lines that execute() understands, one fault a line, for a help text.
    static std::string help();

private:
    enum class Kind : std::uint8_t {
        Silence,
        Delay,
        Late,
        Short,
        Long,
        Doubled,
        Checksum,
        Garbage,
        Status,
    };
    struct KindEntry;
    struct Active
    {
        int argument;
        std::optional<int> remaining; // nothing: until turned off
    };

    static const KindEntry *findKind(std::string_view word);
    static void apply(Kind kind, int argument, ExchangeFaults &faults);

    std::string turnOn(const KindEntry &entry, std::string_view words);
    std::string turnOff(std::string_view words);

    std::mutex m_mutex; // guards all below
    std::map<Kind, Active> m_active;
};

} // namespace simulator
