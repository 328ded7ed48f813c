#pragma once

#include "simulator/serving/FileDescriptor.h"
#include "simulator/serving/Link.h"

#include <functional>
#include <vector>

namespace simulator {

/// Waits for events on links and other descriptors, and serves them. All operations but stop() are
/// for the thread that runs the loop, or for any while it doesn't run; all but run() may be called
/// from inside a callback.
class ServingLoop
{
public:
    using Callback = std::function<void()>;

    ServingLoop();

    /// Serves @p link, which stays the caller's, until remove().
    void add(Link &link);
    void remove(Link &link);

    /// Calls @p readable whenever @p fd can be read, or is at its end. One callback a descriptor.
    void watch(int fd, Callback readable);
    void unwatch(int fd);

    /// Runs until stop(), also one from before the call.
    void run();
    /// Lets run() return soon. From any thread, and from a signal handler.
    void stop();

private:
    struct Watch
    {
        int fd;
        Callback readable;
    };

    void runOnce();
    int millisecondsToWait() const;
    void callReadable(int fd);

    FileDescriptor m_wake; // an eventfd, readable after stop()
    bool m_running = false;
    std::vector<Link *> m_links;
    std::vector<Watch> m_watches;
};

} // namespace simulator
