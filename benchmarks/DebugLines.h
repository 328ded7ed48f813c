#pragma once

#include <QMessageLogContext>
#include <QString>

/// Drops every line of the toolkit's debug stream from here on, so that no figure holds the time of
/// printing it.
inline void ignoreDebugLines()
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
}
