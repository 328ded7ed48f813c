#pragma once

#include "app/InterruptibleSleep.h"

#include <QThread>

#include <atomic>
#include <chrono>

/// The pacemaker of an encoder detection. It does nothing but emit and sleep: a call for the start,
/// then, at a set interval, one for the state, until it is told to stop or its cycles are used up.
/// The receiver on the GUI thread gets each call as an event, so the start always comes first.
class EncoderInitializationThread : public QThread
{
    Q_OBJECT

public:
    static constexpr int MaxCycles = 1000;
    static constexpr std::chrono::milliseconds UsualInterval{100};

    /// @p interval is the sleep after each call for the state; a run has a limit of MaxCycles of
    /// them.
    explicit EncoderInitializationThread(std::chrono::milliseconds interval = UsualInterval);
    /// Ends the thread at once.
    ~EncoderInitializationThread() override;

    /// The run ends in its next cycle, after one more call for the state: the flag is looked at
    /// only then, and no sleep is shortened. A new start clears the flag.
    void stop();
    /// Ends the thread at once, in the middle of a sleep, too, and waits for it. For good: a start
    /// after it emits nothing.
    void end();

signals:
    /// The run is over, by a stop or by its limit.
    void ready();
    /// The detection is to be started: once in each run, and first.
    void startInitialization();
    /// The state of the detection is to be asked for: once in each cycle.
    void requestInitializationState();

protected:
    void run() override;

private:
    std::atomic<bool> m_stopRequested = false;
    const std::chrono::milliseconds m_interval;
    InterruptibleSleep m_sleep;
};
