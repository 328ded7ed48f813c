#pragma once

#include <QMetaMethod>
#include <QObject>
#include <QString>
#include <QStringList>

#include <utility>

/// Every signal of a handler as a line of text, in the order of their coming:
/// "requestedValue(1, 0, 4, 1000)". Bytes stand as signed numbers, as they travel.
class SignalLog
{
public:
    /// @param handler of either transport; it must outlive the log
    template <typename Handler>
    explicit SignalLog(Handler &handler);
    SignalLog(const SignalLog &) = delete;
    SignalLog &operator=(const SignalLog &) = delete;

    const QStringList &lines() const { return m_lines; }
    /// The lines so far, which are thereby forgotten.
    QStringList take() { return std::exchange(m_lines, {}); }

private:
    template <typename Handler, typename... Arguments>
    void watch(Handler &handler, void (Handler::*signal)(Arguments...));

    static QString toText(const QString &text) { return text; }
    static QString toText(int number) { return QString::number(number); } // a char, too

    QObject m_context; ///< ends the connections with the log
    QStringList m_lines;
};

template <typename Handler>
SignalLog::SignalLog(Handler &handler)
{
    watch(handler, &Handler::handleDetachedDevice);
    watch(handler, &Handler::requestedValue);
    watch(handler, &Handler::requestResult);
    watch(handler, &Handler::requestedTraceValue);
    watch(handler, &Handler::requestedGlobalParameter);
    watch(handler, &Handler::requestedIOValue);
    if constexpr (requires { &Handler::deviceClosed; }) { // over CAN
        watch(handler, &Handler::deviceClosed);
    } else {
        watch(handler, &Handler::handleAttachedUsbDevice);
        watch(handler, &Handler::handleAttachedSerialDevice);
        watch(handler, &Handler::handleHistoryMessage);
    }
}

template <typename Handler, typename... Arguments>
void SignalLog::watch(Handler &handler, void (Handler::*signal)(Arguments...))
{
    const QString name = QString::fromLatin1(QMetaMethod::fromSignal(signal).name());
    QObject::connect(&handler, signal, &m_context, [this, name](const Arguments &...arguments) {
        const QStringList texts{toText(arguments)...};
        m_lines.append(name + u'(' + texts.join(QStringLiteral(", ")) + u')');
    });
}
