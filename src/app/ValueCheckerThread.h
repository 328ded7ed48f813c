#pragma once

#include "app/InterruptibleSleep.h"

#include <QThread>

#include <atomic>

/// Ticks at a set delay, at first at once. It does nothing but emit and sleep; the receiver on the
/// GUI thread gets each tick as an event, and none is merged or dropped.
///
/// The flag and the delay are looked at between two sleeps only: a sleep under way is not
/// shortened, and a start during the last sleep after a stop is lost. Only the end of the program
/// cuts a sleep short.
class ValueCheckerThread : public QThread
{
    Q_OBJECT

public:
    /// Milliseconds between two ticks unless the creator says otherwise.
    static constexpr int DefaultDelayMsecs = 1000;

    /// @p delay is the time between two ticks in milliseconds.
    explicit ValueCheckerThread(int delay);
    /// With the default delay.
    ValueCheckerThread();
    /// Ends the thread at once.
    ~ValueCheckerThread() override;

    /// Ends the thread at once, in the middle of a sleep, too, and waits for it. For good: a start
    /// after it gives one tick and no more.
    void end();

signals:
    /// A tick. Emitted on the thread that ticks.
    void checkRequested();

public slots:
    /// The thread ends after the sleep that is under way.
    void stop();
    /// In force from the next sleep on. Any number is taken; below 1 there is no sleep.
    void changeDelay(int delay);

protected:
    void run() override;

private:
    std::atomic<bool> m_stopped = false;
    std::atomic<int> m_delay;
    InterruptibleSleep m_sleep;
};
