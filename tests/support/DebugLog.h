#pragma once

#include <QStringList>

/// Collects the lines that go to the toolkit's debug stream while the object lives, in order and
/// instead of printing them. Warnings and critical lines are collected, too, and still fail the
/// test, unless it expects them by QTest::ignoreMessage().
/// Only one may live at a time, on the thread that makes it.
class DebugLog
{
public:
    DebugLog();
    ~DebugLog();
    DebugLog(const DebugLog &) = delete;
    DebugLog &operator=(const DebugLog &) = delete;

    /// The lines so far.
    QStringList lines() const;
    /// Forgets the lines so far.
    void clear();
};
