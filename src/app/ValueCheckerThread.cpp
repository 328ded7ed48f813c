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
    m_sleep.interrupt();
    wait();
    m_sleep.synchronize();
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
    } while (m_sleep.sleepFor(std::chrono::milliseconds(m_delay)) && !m_stopped);
    m_sleep.synchronize();
}
