#include "app/EncoderInitializationThread.h"

#include <QCoreApplication>

using namespace std::chrono_literals;

EncoderInitializationThread::EncoderInitializationThread(std::chrono::milliseconds interval)
    : m_interval(interval)
{
    // A thread that still ran while the process ends would emit into a dying program.
    connect(qApp, &QCoreApplication::aboutToQuit, this, &EncoderInitializationThread::end);
}

EncoderInitializationThread::~EncoderInitializationThread()
{
    end();
}

void EncoderInitializationThread::end()
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

void EncoderInitializationThread::stop()
{
    m_stopRequested = true;
}

void EncoderInitializationThread::run()
{
    if (!sleepFor(0ms)) {
        return; // the motor isn't to turn because of a program that ends
    }
    m_stopRequested = false;
    emit startInitialization();
    for (int cycle = 0; cycle < MaxCycles; ++cycle) {
        emit requestInitializationState();
        if (m_stopRequested) {
            break;
        }
        if (!sleepFor(m_interval)) {
            return;
        }
    }
    emit ready();
    const std::lock_guard lock(m_mutex); // the last one, for end()
}

bool EncoderInitializationThread::sleepFor(std::chrono::milliseconds time)
{
    std::unique_lock lock(m_mutex);
    return !m_endRequested.wait_for(lock, time, [this] { return m_ending; });
}
