#pragma once

#include <QByteArray>
#include <QString>

#include <asm/termbits.h>

/// A pseudo-terminal: a real port for the code under test, and the far end of its line here.
class PtyPair
{
public:
    PtyPair();
    ~PtyPair();
    PtyPair(const PtyPair &) = delete;
    PtyPair &operator=(const PtyPair &) = delete;

    /// False if the kernel gave no pseudo-terminal.
    bool isOpen() const { return m_master != -1; }
    /// Path of the port, "/dev/pts/N".
    QString portName() const { return m_portName; }
    /// Pulls the line out: whoever has the port open sees a hang-up.
    void close();

    /// Sends @p bytes to the port. Answers whether the line took all of them.
    bool send(const QByteArray &bytes);
    /// Everything that the port sent so far.
    const QByteArray &received();
    /// The settings of the line, as the far end sees them.
    termios2 line() const;
    /// Puts @p settings on the line, as a program before would have left them.
    void setLine(const termios2 &settings);

private:
    int m_master = -1;
    QString m_portName;
    QByteArray m_received;
};
