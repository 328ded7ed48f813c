#include "support/DebugLog.h"

#include <QMutex>
#include <QtGlobal>

namespace {

QMutex mutex;
QStringList collected;
QtMessageHandler previousHandler = nullptr;

void collect(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    {
        const QMutexLocker lock(&mutex);
        collected.append(message);
    }
    if (type != QtDebugMsg && type != QtInfoMsg && previousHandler) {
        previousHandler(type, context, message);
    }
}

} // namespace

DebugLog::DebugLog()
{
    clear();
    previousHandler = qInstallMessageHandler(collect);
}

DebugLog::~DebugLog()
{
    qInstallMessageHandler(previousHandler);
}

QStringList DebugLog::lines() const
{
    const QMutexLocker lock(&mutex);
    return collected;
}

void DebugLog::clear()
{
    const QMutexLocker lock(&mutex);
    collected.clear();
}
