#pragma once

#include <QIODevice>
#include <QString>

#include <optional>

#include <asm/termbits.h>

/// One terminal of the kernel that is open for this program alone. The descriptor belongs to the
/// object. A call that a signal interrupts goes on; no call blocks longer than the limit given, in
/// milliseconds, of which -1 waits for ever.
///
/// Operations on a closed port, or on one that was pulled out, fail and have no other effect.
class TerminalPort
{
public:
    TerminalPort() = default;
    ~TerminalPort();
    TerminalPort(const TerminalPort &) = delete;
    TerminalPort &operator=(const TerminalPort &) = delete;

    /// Opens the node @p name, a path or the bare name of a node in /dev, for the directions in
    /// @p mode. False if it is missing, forbidden, no terminal, or in use by anyone.
    /// Only while closed: an open terminal would be forgotten.
    bool open(const QString &name, QIODevice::OpenMode mode);
    void close();
    bool isOpen() const { return m_descriptor != -1; }
    /// -1 while closed.
    int descriptor() const { return m_descriptor; }

    /// Whether the open port is a pseudo-terminal, with a program and no wire behind it.
    bool isPseudoTerminal() const;

    /// The terminal's settings, nothing on failure.
    std::optional<termios2> settings() const;
    /// Applies @p settings in one step. Answers whether the driver accepted the call, which is no
    /// promise that it uses them all.
    bool setSettings(const termios2 &settings);

    /// Bytes received and not read, -1 on failure.
    qint64 bytesAvailable() const;
    /// Reads until @p size bytes came, @p msecs have passed or the port is gone, and answers how
    /// many came.
    qint64 read(char *data, qint64 size, int msecs);
    /// Writes until @p size bytes were taken, @p msecs have passed or the port is gone, and
    /// answers how many were taken.
    qint64 write(const char *data, qint64 size, int msecs);
    /// Waits at most @p msecs for one of @p events (of poll) and answers those that are there
    /// with the ones that poll adds for a lost port; 0 if the time passed.
    short wait(short events, int msecs) const;

    /// Waits at most @p msecs until everything written has left. False if it didn't.
    bool waitUntilSent(int msecs) const;
    /// Drops a queue: TCIFLUSH, TCOFLUSH or TCIOFLUSH.
    bool drop(int queue);

    /// The modem lines as TIOCM bits; nothing if the terminal has none.
    std::optional<int> modemLines() const;
    /// Turns the output lines in @p bits on or off.
    bool setModemLines(int bits, bool on);
    /// Holds or releases the break condition.
    bool setBreak(bool hold);

private:
    bool claim();
    template <typename Step>
    qint64 transfer(short event, qint64 size, int msecs, Step step) const;
    template <typename Argument>
    bool control(unsigned long request, Argument argument) const;

    int m_descriptor = -1;
};
