#pragma once

#include <chrono>
#include <optional>

namespace simulator {

/// What carries requests to a module and its replies back, as a ServingLoop serves it: the loop
/// polls fd() for events() until wakeAt(), then calls service(). Never blocks. For one thread.
class Link
{
public:
    using Clock = std::chrono::steady_clock;

    /// How long a link that was cut off waits before it looks for its other end again.
    static constexpr std::chrono::milliseconds pauseWhenCutOff{20};

    Link() = default;
    virtual ~Link() = default;
    Link(const Link &) = delete;
    Link &operator=(const Link &) = delete;

    /// The descriptor to poll; -1, if only time matters.
    virtual int fd() const = 0;
    /// The events to poll for.
    virtual short events() const = 0;
    /// The latest time for the next call of service(); nothing, if only events matter.
    virtual std::optional<Clock::time_point> wakeAt() const = 0;
    /// Does all that can be done at @p now. @p revents is what poll() found.
    virtual void service(short revents, Clock::time_point now) = 0;
};

} // namespace simulator
