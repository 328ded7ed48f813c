#pragma once

#include "simulator/serial/LineSettings.h"
#include "simulator/serial/SerialEndpoint.h"
#include "simulator/serving/Link.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace simulator {

/// Carries bytes between a terminal, or the master of a pseudo-terminal, and a SerialEndpoint.
///
/// The master of a pseudo-terminal that nobody has open is always "ready" with a hang-up. So is a
/// terminal that was pulled out, for ever. Both are looked at again after pauseWhenCutOff.
class SerialLink : public Link
{
public:
    /// Opens the line anew after a hang-up. Returns a non-blocking descriptor, which stays the
    /// callee's; -1, if it can't be had yet.
    using Reopen = std::function<int()>;

    /// Serves @p endpoint over @p lineFd, a non-blocking descriptor; both stay the caller's. The
    /// module understands a line with the settings @p own only, or any, if their baud rate is 0.
    /// Without @p reopen the same descriptor is used after a hang-up.
    SerialLink(int lineFd, SerialEndpoint &endpoint, LineSettings own = {}, Reopen reopen = {});

    int fd() const override;
    short events() const override;
    std::optional<Clock::time_point> wakeAt() const override;
    void service(short revents, Clock::time_point now) override;

private:
    /// More output than a terminal ever holds back means that nobody reads it.
    static constexpr std::size_t maxUnwritten = 65536;

    short lookAgain();
    void readAll(Clock::time_point now);
    void hangUp(Clock::time_point now);
    void writeDue(Clock::time_point now);
    bool understandsLine() const;

    int m_lineFd;
    SerialEndpoint &m_endpoint;
    const LineSettings m_own;
    const Reopen m_reopen;
    std::optional<Clock::time_point> m_hungUpUntil;
    std::vector<std::uint8_t> m_unwritten;
};

} // namespace simulator
