#include "app/ValueCheckerThread.h"

#include <QCoreApplication>

#include <chrono>

ValueCheckerThread::ValueCheckerThread(int delay)
    : m_delay(delay)
{
    // A thread that still ran while the process ends would emit into a dying program.
    connect(qApp, &QCoreApplication::aboutToQuit, this, &ValueCheckerThread::end);
}

ValueCheckerThread::ValueCheckerThread()
    : ValueCheckerThread(DefaultDelayMsecs)
{
}

ValueCheckerThread::~ValueCheckerThread()
{
    end();
}

void ValueCheckerThread::end()
{
    {
        const std::lock_guard lock(m_mutex);
        m_ending = true;
    }
    m_endRequested.notify_all();
    wait();
    // The wait of an uninstrumented toolkit shows no ThreadSanitizer that the loop is over; the
    // lock that the loop has let go last does.
    const std::lock_guard lock(m_mutex);
}

void ValueCheckerThread::stop()
{
    m_stopped = true;
}

void ValueCheckerThread::changeDelay(int delay)
{
    m_delay = delay;
}

void ValueCheckerThread::run()
{
    // Overwrites a stop() that came between the start of the thread and this line.
    m_stopped = false;
    do {
        emit checkRequested();
    } while (sleepToNextTick());
}

bool ValueCheckerThread::sleepToNextTick()
{
    std::unique_lock lock(m_mutex);
    const bool ending = m_endRequested.wait_for(lock, std::chrono::milliseconds(m_delay),
                                                [this] { return m_ending; });
    return !ending && !m_stopped;
}
