#pragma once

#include <chrono>
#include <cstddef>
#include <vector>

/// The sleeps of the thread that makes it, while it lives. The same class as on the other system,
/// for the same tests.
///
/// They are carried out nonetheless. What is counted is each call of Sleep() by the toolkit, whose
/// table of imported functions leads here meanwhile.
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

    /// Called by the function in place of Sleep().
    static void note(std::chrono::nanoseconds duration);

private:
    std::vector<std::chrono::nanoseconds> m_sleeps;
};
