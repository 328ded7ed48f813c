#pragma once

#include <QByteArray>
#include <QByteArrayList>

#include <memory>

/// One object of the tests' far end, kept for one program under test: a port that is one of the
/// program's COM ports, or a CAN bus.
class PortSession
{
public:
    virtual ~PortSession() = default;

    /// A new object of the kind that is @p words' first, with the others as its arguments; null if
    /// there is no such kind.
    ///
    /// | Words | Object |
    /// |---|---|
    /// | `plain` | PtyPair |
    /// | `scripted` | ScriptedPort |
    /// | `simulated` ADDRESS HOST VERSION MAJOR MINOR BAUD | SimulatedPort; VERSION in hexadecimal
    /// | | `can` ADDRESS HOST VERSION MAJOR MINOR KBIT | SimulatedCanBus |
    static std::unique_ptr<PortSession> create(const QByteArrayList &words);

    /// How the program reaches the object: the path of a pseudo-terminal, or the number of a TCP
    /// port.
    virtual QByteArray place() const = 0;
    /// Whether place() is a pseudo-terminal.
    virtual bool isPort() const { return true; }
    /// Carries out the command that is @p words' first. Answers its result, which is empty for
    /// those that have none; a null array stands for a command that is unknown or failed.
    virtual QByteArray execute(const QByteArrayList &words) = 0;
};
