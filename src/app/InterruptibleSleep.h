#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

/// The sleep of a thread that does nothing but emit and sleep, which another thread can cut short.
///
/// That other one ends the thread by interrupt(), QThread::wait() and synchronize().
class InterruptibleSleep
{
public:
    /// Blocks the caller for @p time, below 1 ms not at all. Whether it was not interrupted: false
    /// at once after an earlier interrupt().
    bool sleepFor(std::chrono::milliseconds time);
    /// Ends the sleep under way, and keeps any other from beginning: it is for good.
    void interrupt();
    /// What one thread did before its call is seen by the other after its own, later call. The
    /// sleeping thread calls it last, if it does more after its last sleepFor(); the other calls it
    /// when it has waited for the thread's end.
    ///
    /// The wait itself orders them, too, but an uninstrumented toolkit doesn't show that to
    /// ThreadSanitizer.
    void synchronize();

private:
    std::mutex m_mutex;
    std::condition_variable m_interruption;
    bool m_interrupted = false; ///< guarded by m_mutex
};
