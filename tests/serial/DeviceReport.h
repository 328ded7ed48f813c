#pragma once

#include "serial/AbstractSerial.h"

#include <QSignalSpy>

/// What a device reported since the object was made: the messages of signalStatus().
class DeviceReport
{
public:
    /// Turns the reports of @p device on.
    explicit DeviceReport(AbstractSerial &device)
        : m_spy(&device, &AbstractSerial::signalStatus)
    {
        device.enableEmitStatus(true);
    }

    /// The messages since the last call.
    QStringList take()
    {
        QStringList messages;
        while (!m_spy.isEmpty()) {
            messages.append(m_spy.takeFirst().constFirst().toString());
        }
        return messages;
    }

private:
    QSignalSpy m_spy;
};
