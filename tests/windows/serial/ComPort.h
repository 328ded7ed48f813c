#pragma once

#include "support/RemoteObject.h"

/// A COM port, and the far end of its line, on the other system.
class ComPort
{
public:
    ComPort()
        : m_object("plain")
    {
    }

    /// "COM20"
    QString portName() const { return QString::fromLatin1(m_object.place()); }
    /// Sends @p bytes to the port. Answers whether the line took all of them.
    bool send(const QByteArray &bytes) const
    {
        return m_object.execute("send " + bytes.toHex()).has_value();
    }
    /// Everything that the port sent so far.
    QByteArray received() const
    {
        return QByteArray::fromHex(m_object.execute("received").value_or(QByteArray()));
    }
    /// Rate, stop bits and flow control of the line, "9600 1 none". The other system keeps such a
    /// line at eight bits without parity, whatever is set.
    QByteArray line() const { return m_object.execute("line").value_or(QByteArray()); }
    /// Leaves the line at @p rate, as a program before would have.
    void leaveLine(int rate) const { m_object.execute("leave-line " + QByteArray::number(rate)); }
    /// Pulls the port out.
    void pullOut() const { m_object.execute("pull-out"); }

private:
    RemoteObject m_object;
};
