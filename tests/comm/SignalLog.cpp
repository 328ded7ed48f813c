#include "comm/SignalLog.h"

#include "comm/QSerialCommandHandler.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace {

QString toText(const QString &text)
{
    return text;
}

QString toText(int number) // a char, too
{
    return QString::number(number);
}

} // namespace

SignalLog::SignalLog(QSerialCommandHandler &handler)
    : m_handler(handler)
{
    using Handler = QSerialCommandHandler;
    watch(&Handler::handleAttachedUsbDevice, "handleAttachedUsbDevice");
    watch(&Handler::handleAttachedSerialDevice, "handleAttachedSerialDevice");
    watch(&Handler::handleDetachedDevice, "handleDetachedDevice");
    watch(&Handler::requestedValue, "requestedValue");
    watch(&Handler::requestResult, "requestResult");
    watch(&Handler::requestedTraceValue, "requestedTraceValue");
    watch(&Handler::requestedGlobalParameter, "requestedGlobalParameter");
    watch(&Handler::requestedIOValue, "requestedIOValue");
    watch(&Handler::handleHistoryMessage, "handleHistoryMessage");
}

QStringList SignalLog::take()
{
    return std::exchange(m_lines, {});
}

template <typename... Args>
void SignalLog::watch(void (QSerialCommandHandler::*signal)(Args...), const char *name)
{
    QObject::connect(&m_handler, signal, &m_context, [this, name](const Args &...args) {
        const QStringList texts{toText(args)...};
        m_lines.append(QLatin1StringView(name) + u'(' + texts.join(", "_L1) + u')');
    });
}
