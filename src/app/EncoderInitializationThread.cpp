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
    m_sleep.interrupt();
    wait();
    m_sleep.synchronize();
}

void EncoderInitializationThread::stop()
{
    m_stopRequested = true;
}

void EncoderInitializationThread::run()
{
    if (!m_sleep.sleepFor(0ms)) {
        return; // the motor isn't to turn because of a program that ends
    }
    m_stopRequested = false;
    emit startInitialization();
    for (int cycle = 0; cycle < MaxCycles; ++cycle) {
        emit requestInitializationState();
        if (m_stopRequested) {
            break;
        }
        if (!m_sleep.sleepFor(m_interval)) {
            return;
        }
    }
    emit ready();
    m_sleep.synchronize();
}
