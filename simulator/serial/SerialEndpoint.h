#pragma once

#include "simulator/protocol/FaultPlan.h"
#include "simulator/protocol/Module.h"
#include "simulator/serial/WireLog.h"

#include <chrono>
#include <cstdint>
#include <deque>
#include <optional>
#include <span>
#include <vector>

namespace simulator {

/// The module's end of a serial line: cuts the stream of bytes into datagrams, answers those that
/// carry the module's address, and spoils the answers as the fault plan has it. It knows time but
/// no line: the caller brings bytes and takes away what is due. For one thread.
class SerialEndpoint
{
public:
    using Clock = std::chrono::steady_clock;

    /// A datagram that has come in part is given up after such a pause: with no marker on the line,
    /// a pause is the one thing that shows where a datagram starts.
    static constexpr std::chrono::milliseconds datagramPause{100};

    /// @p module, @p faults and @p log must outlive the endpoint.
    SerialEndpoint(Module &module, FaultPlan &faults, WireLog &log);

    /// Takes @p bytes that arrived at @p now.
    void receive(std::span<const std::uint8_t> bytes, Clock::time_point now);
    /// Notes @p bytes that the module can't read, since the line is set otherwise than its own.
    void receiveUnreadable(std::span<const std::uint8_t> bytes);

    /// When the next bytes are due; nothing, if there are none.
    std::optional<Clock::time_point> nextDue() const;
    /// The bytes that are due at @p now, which thereby count as sent.
    std::vector<std::uint8_t> takeDue(Clock::time_point now);
    /// Loses the bytes that are due at @p now: nobody is at the other end.
    void dropDue(Clock::time_point now);

private:
    struct Pending
    {
        Clock::time_point due;
        std::vector<std::uint8_t> bytes;
    };

    void answer(const Datagram &datagram, Clock::time_point now);
    void send(std::vector<std::uint8_t> bytes, Clock::time_point due);

    Module &m_module;
    FaultPlan &m_faults;
    WireLog &m_log;
    std::vector<std::uint8_t> m_partial; // less than one datagram
    Clock::time_point m_lastByte;
    std::deque<Pending> m_pending; // in the order of the requests, so with ascending due times
};

} // namespace simulator
