#pragma once

#include <QByteArray>
#include <QString>

/// A serial port used in the plainest way, to look at the simulated module from outside.
class RawPort
{
public:
    RawPort() = default;
    /// Opens @p path, in raw mode; see isOpen().
    explicit RawPort(const QString &path);
    ~RawPort();
    RawPort(const RawPort &) = delete;
    RawPort &operator=(const RawPort &) = delete;

    bool isOpen() const { return m_fd >= 0; }
    /// Closes it and opens it again.
    bool reopen();

    /// Sets any @p baudRate, with 8 data bits, no parity and @p stopBits.
    bool setLine(int baudRate, int stopBits = 1);
    /// Sends all of @p bytes.
    bool send(const QByteArray &bytes);
    /// Reads until there are @p count bytes, at most for @p timeout ms. What came till then.
    QByteArray receive(int count, int timeout = 10000);
    /// Sends @p request and waits for nine bytes.
    QByteArray exchange(const QByteArray &request);
    /// Waits at most @p timeout ms for the other end to hang up.
    bool waitForHangUp(int timeout = 10000);
    /// Number of bytes that wait to be read; -1, if the port can't tell.
    int waiting() const;

private:
    void open();
    void close();

    QString m_path;
    int m_fd = -1;
};
