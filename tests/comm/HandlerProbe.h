#pragma once

#include "comm/QSerialCommandHandler.h"
#include "serial/AbstractSerial.h"

#include <QRegularExpression>
#include <QStringList>

/// The port's device, which a handler makes at its first open; null before that.
inline AbstractSerial *deviceOf(const QSerialCommandHandler &handler)
{
    return handler.findChild<AbstractSerial *>();
}

/// Debug lines with DEVICE for each device, whose address differs from run to run.
inline QStringList maskedDevices(QStringList lines)
{
    static const QRegularExpression device(
        QStringLiteral("AbstractSerial\\(0x[0-9a-f]+(, name = \"[^\"]*\")?\\)"));
    return lines.replaceInStrings(device, QStringLiteral("DEVICE"));
}
