#pragma once

#include <QObject>
#include <QStringList>

class QSerialCommandHandler;

/// Every signal of a handler as a line of text, in the order of their coming:
/// "requestedValue(1, 0, 4, 1000)". Bytes stand as signed numbers, as they travel.
class SignalLog
{
public:
    explicit SignalLog(QSerialCommandHandler &handler);

    const QStringList &lines() const { return m_lines; }
    /// The lines so far, which are thereby forgotten.
    QStringList take();

private:
    template <typename... Args>
    void watch(void (QSerialCommandHandler::*signal)(Args...), const char *name);

    QSerialCommandHandler &m_handler;
    QObject m_context; ///< ends the connections with the log
    QStringList m_lines;
};
