#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

namespace simulator {

/// What can go wrong with a CAN interface and on its bus, beyond what a FaultPlan does to the
/// module's replies.
enum class CanFault : std::uint8_t {
    NoChannel, ///< the channel can't be opened
    SpeedRefused, ///< the speed can't be set
    OnRefused, ///< the channel can't be taken on the bus
    OffRefused, ///< the channel can't be taken off the bus
    CloseRefused, ///< the channel can't be closed
    Foreign, ///< another node's frame comes just before the reply
    ModuleId, ///< the reply names another module
};

/// The CAN faults that are on. Several can be on at once; each counts its own uses. Every operation
/// may be called from every thread.
class CanFaultPlan
{
public:
    /// Carries out one line of text, the same for a program's input and for a test:
    ///
    ///     canfault no-channel [N]       the channel can't be opened
    ///     canfault speed-refused [N]    the speed can't be set
    ///     canfault on-refused [N]       the channel can't be taken on the bus
    ///     canfault off-refused [N]      the channel can't be taken off the bus
    ///     canfault close-refused [N]    the channel can't be closed
    ///     canfault foreign ID [N]       a frame of node ID comes just before the reply
    ///     canfault module-id ID [N]     the reply names module ID
    ///     canfault off [KIND]           that fault off, or all
    ///
    /// N is the number of uses that it holds for; without N it holds until turned off. A fault that
    /// is on already is replaced.
    /// @return an empty text, or in one line what is wrong with @p line, which then changed
    /// nothing.
    std::string execute(std::string_view line);

    /// The argument of @p fault, 0 if it has none, if it is on; nothing otherwise. Counts the use.
    std::optional<int> take(CanFault fault);

    /// The lines that execute() understands, one fault a line, for a help text.
    static std::string help();

private:
    struct KindEntry;
    struct Active
    {
        int argument;
        std::optional<int> remaining; // nothing: until turned off
    };

    static const KindEntry *findKind(std::string_view word);

    std::string turnOn(const KindEntry &kind, std::string_view words);
    std::string turnOff(std::string_view words);

    std::mutex m_mutex; // guards all below
    std::map<CanFault, Active> m_active;
};

} // namespace simulator
