#pragma once

#include <chrono>
#include <vector>

/// The sleeps of the thread that makes it, while it lives: that there were so many and so long ones
/// is then known without a look at a clock, which a busy machine falsifies. One counter at a time.
///
/// They are carried out nonetheless. The program that links this counts each call of nanosleep(),
/// through which the toolkit sleeps.
class SleepCounter
{
public:
    SleepCounter();
    ~SleepCounter();
    SleepCounter(const SleepCounter &) = delete;
    SleepCounter &operator=(const SleepCounter &) = delete;

    /// The sleeps so far, in order.
    const std::vector<std::chrono::nanoseconds> &sleeps() const { return m_sleeps; }
    /// Whether there were @p count sleeps so far, each of the pause between two attempts, 10 ms.
    bool hasSeenPauses(std::size_t count) const;

    /// Called by the function in place of nanosleep().
    static void note(std::chrono::nanoseconds duration);

private:
    std::vector<std::chrono::nanoseconds> m_sleeps;
};
