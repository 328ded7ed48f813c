#pragma once

#include "serial/AbstractSerialEngine.h"
#include "serial/ComPort.h"
#include "serial/native/RecordingReceiver.h"

#include <QPointer>
#include <qt_windows.h>

/// An engine with an open COM port, whoever hears of it, and the far end of its line.
struct WatchedLine
{
    explicit WatchedLine(QIODevice::OpenMode mode = QIODevice::ReadWrite)
    {
        engine = AbstractSerialEngine::createEngine(&parent);
        engine->setDeviceName(pty.portName());
        engine->setReceiver(&receiver);
        isOpen = engine->open(mode);
    }

    HANDLE port() const { return reinterpret_cast<HANDLE>(engine->descriptor()); }
    /// The settings that Windows keeps for the port.
    DCB line() const
    {
        DCB dcb{};
        dcb.DCBlength = sizeof dcb;
        GetCommState(port(), &dcb);
        return dcb;
    }
    COMMTIMEOUTS timeouts() const
    {
        COMMTIMEOUTS timeouts{};
        GetCommTimeouts(port(), &timeouts);
        return timeouts;
    }
    /// The events that the port is watched for.
    DWORD mask() const
    {
        DWORD mask = 0;
        GetCommMask(port(), &mask);
        return mask;
    }

    qint64 read(qint64 size)
    {
        got.fill('\0', size);
        const qint64 count = engine->read(got.data(), size);
        got.truncate(qMax(count, qint64(0)));
        return count;
    }
    qint64 write(const QByteArray &bytes) { return engine->write(bytes.constData(), bytes.size()); }

    ComPort pty;
    RecordingReceiver receiver;
    QObject parent;
    QPointer<AbstractSerialEngine> engine;
    bool isOpen = false;
    QByteArray got; ///< by the last read
};
