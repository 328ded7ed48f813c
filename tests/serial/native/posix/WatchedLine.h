#pragma once

#include "serial/AbstractSerialEngine.h"
#include "serial/PtyPair.h"
#include "serial/native/RecordingReceiver.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QPointer>
#include <QTest>

/// An engine with an open port, whoever hears of it, and the far end of its line.
struct WatchedLine
{
    WatchedLine()
    {
        engine = AbstractSerialEngine::createEngine(&parent);
        engine->setDeviceName(pty.portName());
        engine->setReceiver(&receiver);
        isOpen = engine->open(QIODevice::ReadWrite);
    }

    /// Sends @p bytes to the port and waits until they are there.
    bool sendUnread(const QByteArray &bytes)
    {
        const qint64 before = engine->bytesAvailable();
        return pty.send(bytes) && QTest::qWaitFor([this, before, &bytes] {
                   return engine->bytesAvailable() == before + bytes.size();
               });
    }

    /// As sendUnread(), without a turn of the event loop, so that the arrival isn't told yet.
    bool sendUntold(const QByteArray &bytes)
    {
        const qint64 after = engine->bytesAvailable() + bytes.size();
        const QDeadlineTimer deadline(10000);
        const bool isSent = pty.send(bytes);
        while (isSent && engine->bytesAvailable() != after && !deadline.hasExpired()) { }
        return engine->bytesAvailable() == after;
    }

    PtyPair pty;
    RecordingReceiver receiver;
    QObject parent;
    QPointer<AbstractSerialEngine> engine;
    bool isOpen = false;
};

/// Runs the event loop as often as would show any call that comes round and round.
inline void turnTheLoop()
{
    for (int turn = 0; turn < 200; ++turn) {
        QCoreApplication::processEvents();
    }
}
