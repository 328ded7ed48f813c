#include "app/InterruptibleSleep.h"

bool InterruptibleSleep::sleepFor(std::chrono::milliseconds time)
{
    std::unique_lock lock(m_mutex);
    return !m_interruption.wait_for(lock, time, [this] { return m_interrupted; });
}

void InterruptibleSleep::interrupt()
{
    {
        const std::lock_guard lock(m_mutex);
        m_interrupted = true;
    }
    m_interruption.notify_all();
}

void InterruptibleSleep::synchronize()
{
    const std::lock_guard lock(m_mutex);
}
