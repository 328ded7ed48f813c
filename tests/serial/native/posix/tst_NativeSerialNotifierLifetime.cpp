#include "WatchedLine.h"
#include "support/TestCase.h"

#include <QTest>

#include <thread>

/// What a call of the notifier may do to its engine, and how long a notifier lives.
class tst_NativeSerialNotifierLifetime : public TestCase
{
    Q_OBJECT

private slots:
    void closeInTheReadCall();
    void closeInTheWriteCall();
    void closeInTheExceptionCall();
    void engineDeletedInTheReadCall();
    void engineDeletedInTheWriteCall();
    void turnedOffInTheReadCall();
    void onCloseDropsTheNotifier();
    void closeSilencesEveryKind();
    void notifierIsNewForEachOpening();
    void enabledWhileClosed();
    void withoutReceiver();
    void withoutEventLoop();
};

void tst_NativeSerialNotifierLifetime::closeInTheReadCall()
{
    WatchedLine line;
    line.receiver.onRead = [&] {
        line.engine->setReadNotificationEnabled(false, true);
        line.engine->close();
    };
    line.engine->setReadNotificationEnabled(true, false);
    line.engine->setExceptionNotificationEnabled(true, false);
    QVERIFY(line.pty.send("x"));
    QTRY_COMPARE(line.receiver.reads, 1);
    turnTheLoop();
    QCOMPARE(line.engine->descriptor(), qintptr(-1));
    QVERIFY(line.engine->open(QIODevice::ReadWrite));
    QVERIFY(!line.engine->isReadNotificationEnabled());
}

void tst_NativeSerialNotifierLifetime::closeInTheWriteCall()
{
    WatchedLine line;
    line.receiver.onWrite = [&] {
        line.engine->write("x", 1);
        line.engine->close();
    };
    line.engine->setWriteNotificationEnabled(true, false);
    QCOMPARE(line.engine->descriptor(), qintptr(-1));
    QVERIFY(!line.engine->isWriteNotificationEnabled());
    turnTheLoop();
    QCOMPARE(line.receiver.writes, 1);
}

void tst_NativeSerialNotifierLifetime::closeInTheExceptionCall()
{
    WatchedLine line;
    line.receiver.onException = [&] { line.engine->close(); };
    line.engine->setExceptionNotificationEnabled(true, false);
    line.pty.close();
    QTRY_COMPARE(line.receiver.exceptions, 1);
    turnTheLoop();
    QCOMPARE(line.engine->descriptor(), qintptr(-1));
}

void tst_NativeSerialNotifierLifetime::engineDeletedInTheReadCall()
{
    WatchedLine line;
    line.receiver.onRead = [&] { delete line.engine.data(); };
    line.engine->setReadNotificationEnabled(true, false);
    line.engine->setExceptionNotificationEnabled(true, false);
    QVERIFY(line.pty.send("x"));
    QTRY_COMPARE(line.receiver.reads, 1);
    turnTheLoop();
    QVERIFY(!line.engine);
}

void tst_NativeSerialNotifierLifetime::engineDeletedInTheWriteCall()
{
    {
        WatchedLine line;
        line.receiver.onWrite = [&] { delete line.engine.data(); };
        line.engine->setWriteNotificationEnabled(true, false);
        QVERIFY(!line.engine);
    }
    WatchedLine line;
    line.engine->setWriteNotificationEnabled(true, false);
    line.receiver.onWrite = [&] { delete line.engine.data(); };
    line.engine->write("x", 1);
    QTRY_VERIFY(!line.engine);
    turnTheLoop();
    QCOMPARE(line.receiver.writes, 2);
}

void tst_NativeSerialNotifierLifetime::turnedOffInTheReadCall()
{
    WatchedLine line;
    line.receiver.onRead = [&] { line.engine->setReadNotificationEnabled(false, false); };
    line.engine->setReadNotificationEnabled(true, false);
    QVERIFY(line.pty.send("x"));
    QTRY_COMPARE(line.receiver.reads, 1);
    QVERIFY(line.sendUnread("y"));
    turnTheLoop();
    QCOMPARE(line.receiver.reads, 1);
}

void tst_NativeSerialNotifierLifetime::onCloseDropsTheNotifier()
{
    WatchedLine line;
    line.engine->setReadNotificationEnabled(true, false);
    line.engine->setLineNotificationEnabled(true, false);
    // With onClose the wish to turn on doesn't count.
    line.engine->setReadNotificationEnabled(true, true);
    QVERIFY(!line.engine->isReadNotificationEnabled());
    QVERIFY(!line.engine->isLineNotificationEnabled());
    QVERIFY(line.pty.send("x"));
    turnTheLoop();
    QCOMPARE(line.receiver.reads, 0);
}

void tst_NativeSerialNotifierLifetime::closeSilencesEveryKind()
{
    WatchedLine line;
    line.engine->setReadNotificationEnabled(true, false);
    line.engine->setWriteNotificationEnabled(true, false);
    line.engine->write("x", 1);
    QVERIFY(line.sendUntold("y"));
    QVERIFY(line.engine->close());
    turnTheLoop();
    QCOMPARE(line.receiver.reads, 0);
    QCOMPARE(line.receiver.writes, 1);
    QVERIFY(!line.engine->isReadNotificationEnabled());
    QVERIFY(!line.engine->isWriteNotificationEnabled());
}

void tst_NativeSerialNotifierLifetime::notifierIsNewForEachOpening()
{
    WatchedLine line;
    for (int opening = 1; opening <= 3; ++opening) {
        line.engine->setReadNotificationEnabled(true, false);
        QVERIFY(line.pty.send("x"));
        QTRY_COMPARE(line.receiver.reads, opening);
        line.engine->setReadNotificationEnabled(false, true);
        QVERIFY(line.engine->close());
        QVERIFY(line.engine->open(QIODevice::ReadWrite));
    }
    // The old ones don't pile up.
    QTRY_VERIFY(line.engine->children().isEmpty());
}

void tst_NativeSerialNotifierLifetime::enabledWhileClosed()
{
    WatchedLine line;
    QVERIFY(line.engine->close());
    line.engine->setReadNotificationEnabled(true, false);
    line.engine->setWriteNotificationEnabled(true, false);
    line.engine->setLineNotificationEnabled(true, false);
    QCOMPARE(line.receiver.writes, 1);
    turnTheLoop();
    // It knows nothing of a port that is opened later; the kinds are turned on after that.
    QVERIFY(line.engine->open(QIODevice::ReadWrite));
    QVERIFY(!line.engine->isReadNotificationEnabled());
    line.engine->setReadNotificationEnabled(true, false);
    QVERIFY(line.pty.send("x"));
    QTRY_COMPARE(line.receiver.reads, 1);
}

void tst_NativeSerialNotifierLifetime::withoutReceiver()
{
    WatchedLine line;
    line.engine->setReceiver(nullptr);
    line.engine->setReadNotificationEnabled(true, false);
    line.engine->setWriteNotificationEnabled(true, false);
    QVERIFY(line.sendUnread("x"));
    turnTheLoop();
    QVERIFY(!line.engine->readNotification());
    QVERIFY(!line.engine->writeNotification());
    QVERIFY(!line.engine->exceptionNotification());
    QVERIFY(!line.engine->lineNotification());
    line.engine->setReceiver(&line.receiver);
    QVERIFY(line.engine->readNotification());
    QVERIFY(line.engine->writeNotification());
    QVERIFY(line.engine->exceptionNotification());
    QVERIFY(line.engine->lineNotification());
    QCOMPARE(line.receiver.reads, 1);
    QCOMPARE(line.receiver.writes, 1);
    QCOMPARE(line.receiver.exceptions, 1);
    QCOMPARE(line.receiver.lines, 1);
}

// A thread that can't run a loop has nothing to watch a port with, so no notifier is made.
void tst_NativeSerialNotifierLifetime::withoutEventLoop()
{
    bool isOpen = false;
    QList<bool> kinds;
    qsizetype children = -1;
    int writes = -1;
    std::thread([&] {
        WatchedLine line;
        isOpen = line.isOpen;
        line.engine->setReadNotificationEnabled(true, false);
        line.engine->setWriteNotificationEnabled(true, false);
        line.engine->setExceptionNotificationEnabled(true, false);
        line.engine->setLineNotificationEnabled(true, false);
        kinds = {line.engine->isReadNotificationEnabled(),
                 line.engine->isWriteNotificationEnabled(),
                 line.engine->isExceptionNotificationEnabled(),
                 line.engine->isLineNotificationEnabled()};
        children = line.engine->children().size();
        writes = line.receiver.writes;
    }).join();
    QVERIFY(isOpen);
    QCOMPARE(kinds, QList<bool>(4, false));
    QCOMPARE(children, 0);
    QCOMPARE(writes, 0);
}

QTEST_GUILESS_MAIN(tst_NativeSerialNotifierLifetime)
#include "tst_NativeSerialNotifierLifetime.moc"
