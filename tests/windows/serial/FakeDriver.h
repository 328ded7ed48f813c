#pragma once

#include "support/ImportedFunction.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QSet>
#include <QStringList>
#include <qt_windows.h>

#include <functional>
#include <memory>
#include <vector>

/// A serial port that is there for this program alone, with all that a real driver may do: while
/// the object lives, the communications functions that the program calls lead here. They are noted
/// in their order with the arguments that matter; what they answer is up to the test. One at a
/// time.
class FakeDriver
{
public:
    /// How an operation ends that may take its time.
    enum class Ending {
        AtOnce,
        Later, ///< when somebody waits for it
        TooLate, ///< not while anybody waits for it
    };

    FakeDriver();
    ~FakeDriver();
    FakeDriver(const FakeDriver &) = delete;
    FakeDriver &operator=(const FakeDriver &) = delete;

    /// The calls since the last time.
    QStringList takeCalls();
    /// Has @p function fail once, at the call with the number @p call, counted from 1 and from now
    /// on.
    void failAt(const QByteArray &function, int call) { m_failingCalls.insert(function, call); }
    /// Ends the wait for the port's events that is under way, with @p events.
    void endWait(DWORD events);
    bool isWaitPending() const { return !m_waits.isEmpty() && isPending(m_waits.first().record); }

    DCB line{};
    COMMTIMEOUTS timeouts{};
    DWORD mask = 0;
    DWORD errors = 0; ///< of the line, until somebody asks
    DWORD inputLines = 0;
    DWORD outputLines = 0;
    QByteArray received; ///< and not read yet
    QByteArray sent;
    qsizetype room = 1 << 20; ///< for what is sent
    DWORD events = 0; ///< that a wait for events finds
    Ending ending = Ending::AtOnce;
    QSet<QByteArray> failing; ///< functions that fail

private:
    friend struct DriverFunctions;

    /// An operation that was started, and what it does at its end, where it answers a byte count.
    struct Operation
    {
        OVERLAPPED *record = nullptr;
        std::function<DWORD()> finish;
    };

    static bool isPending(const OVERLAPPED *record);
    bool enter(const char *function, const QString &arguments = {});
    bool fails(const QByteArray &function);
    BOOL start(QList<Operation> &operations, OVERLAPPED *record, std::function<DWORD()> finish);
    static void end(const Operation &ended, ULONG_PTR status);
    void endAll();

    QStringList m_calls;
    QHash<QByteArray, int> m_failingCalls;
    QList<Operation> m_transfers; ///< begun and not ended, given-up ones among them
    QList<Operation> m_waits; ///< one at the most
    std::vector<std::unique_ptr<ImportedFunction>> m_functions;
    BOOL(WINAPI *m_closeHandle)(HANDLE) = nullptr; ///< Windows' own
};
