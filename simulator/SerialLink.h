#pragma once

#include "simulator/LineSettings.h"
#include "simulator/SerialEndpoint.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace simulator {

/// Carries bytes between the master of a pseudo-terminal and a SerialEndpoint. Never blocks: the
/// caller polls fd() for events() until wakeAt(), then calls service(). For one thread.
class SerialLink
{
public:
    using Clock = SerialEndpoint::Clock;

    /// While nobody has the slave open, the master is always "ready" with a hang-up. It is then
    /// looked at again only after this time.
    static constexpr std::chrono::milliseconds hangUpPause{20};

    /// Serves @p endpoint over @p masterFd, a non-blocking descriptor; both stay the caller's. The
    /// module understands a line with the settings @p own only, or any, if their baud rate is 0.
    SerialLink(int masterFd, SerialEndpoint &endpoint, LineSettings own = {});

    /// The descriptor to poll; -1 during the pause after a hang-up, and after a failure.
    int fd() const;
    /// The events to poll for.
    short events() const;
    /// The latest time for the next call of service(); nothing, if only events matter.
    std::optional<Clock::time_point> wakeAt() const;

    /// Does all that can be done at @p now. @p revents is what poll() found.
    void service(short revents, Clock::time_point now);

private:
    /// More output than a terminal ever holds back means that nobody reads it.
    static constexpr std::size_t maxUnwritten = 65536;

    void readAll(Clock::time_point now);
    void hangUp(Clock::time_point now);
    void writeDue(Clock::time_point now);
    bool understandsLine() const;

    const int m_masterFd;
    SerialEndpoint &m_endpoint;
    const LineSettings m_own;
    std::optional<Clock::time_point> m_hungUpUntil;
    std::vector<std::uint8_t> m_unwritten;
};

} // namespace simulator
