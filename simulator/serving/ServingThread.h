#pragma once

#include "simulator/serving/ServingLoop.h"

#include <functional>
#include <thread>

namespace simulator {

/// Serves from a thread of its own while the object lives.
class ServingThread
{
public:
    /// Starts to serve @p link, which must outlive the object and belongs to its thread meanwhile.
    explicit ServingThread(Link &link);
    /// Starts to serve what @p attach has put into the loop; the same holds for that.
    explicit ServingThread(const std::function<void(ServingLoop &)> &attach);
    ~ServingThread();
    ServingThread(const ServingThread &) = delete;
    ServingThread &operator=(const ServingThread &) = delete;

    /// Ends the serving; returns when it has ended. May be called again.
    void stop();

private:
    ServingLoop m_loop;
    std::thread m_thread;
};

} // namespace simulator
