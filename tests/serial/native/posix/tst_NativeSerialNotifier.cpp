#include "WatchedLine.h"
#include "serial/AbstractSerialNotifier.h"
#include "support/TestCase.h"

#include <QElapsedTimer>
#include <QTest>
#include <QTimer>

#include <ctime>

/// The four kinds of notification over real pseudo-terminals, with a real event loop.
class tst_NativeSerialNotifier : public TestCase
{
    Q_OBJECT

private slots:
    void kindsOfANewNotifier();
    void engineHasNoNotifierAtFirst();
    void kindsAreIndependent();
    void eachArrivalIsToldOnce();
    void unreadByteDoesNotSpin();
    void burstIsToldAtLeastOnceAndReadWhole();
    void turningOnAgainTellsNewCharactersOnly();
    void turningOnTwiceLosesNothing();
    void otherKindsDoNotRepeatACharacter();
    void turningWriteOnPushesByHand();
    void writeIsToldAfterSomethingWasSent();
    void writeOfManyBlocksIsToldOnce();
    void writeThatFailedHalfWayIsTold();
    void writeWithNothingToSendDoesNotSpin();
    void writeTurnedOffInThePushStaysOff();
    void pulledOutPortDoesNotSpin_data();
    void pulledOutPortDoesNotSpin();
    void lostPortIsAnExceptionOnce();
    void lineKindOfAPtyPollsNothing();
};

namespace {

double processTime()
{
    timespec time{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return double(time.tv_sec) + double(time.tv_nsec) * 1e-9;
}

/// The share of a processor that the waiting event loop takes.
double loadOfTheLoop()
{
    constexpr int Period = 300; // ms
    const double before = processTime();
    QElapsedTimer wall;
    wall.start();
    QTest::qWait(Period);
    return (processTime() - before) * 1000 / double(wall.elapsed());
}

/// Far above what a sleeping loop takes under a sanitizer, far below what a spinning one does.
constexpr double IdleLoad = 0.5;

} // namespace

void tst_NativeSerialNotifier::kindsOfANewNotifier()
{
    WatchedLine line;
    AbstractSerialNotifier *notifier = AbstractSerialNotifier::createSerialNotifier(line.engine);
    QVERIFY(!notifier->isReadNotificationEnabled());
    QVERIFY(!notifier->isWriteNotificationEnabled());
    QVERIFY(!notifier->isExceptionNotificationEnabled());
    QVERIFY(!notifier->isLineNotificationEnabled());
    auto *object = dynamic_cast<QObject *>(notifier);
    QVERIFY(object);
    QCOMPARE(object->parent(), line.engine.data());
}

void tst_NativeSerialNotifier::engineHasNoNotifierAtFirst()
{
    WatchedLine line;
    QVERIFY(line.isOpen);
    QVERIFY(!line.engine->isReadNotificationEnabled());
    QVERIFY(!line.engine->isWriteNotificationEnabled());
    QVERIFY(!line.engine->isExceptionNotificationEnabled());
    QVERIFY(!line.engine->isLineNotificationEnabled());
    // Turning off makes none.
    line.engine->setReadNotificationEnabled(false, false);
    line.engine->setWriteNotificationEnabled(true, true);
    QVERIFY(line.engine->children().isEmpty());
    QCOMPARE(line.receiver.writes, 0);
    line.engine->setReadNotificationEnabled(true, false);
    QCOMPARE(line.engine->children().size(), 1);
    line.engine->setLineNotificationEnabled(true, false);
    QCOMPARE(line.engine->children().size(), 1);
}

void tst_NativeSerialNotifier::kindsAreIndependent()
{
    WatchedLine line;
    AbstractSerialEngine *engine = line.engine;
    const auto kinds = [engine] {
        return QList<bool>{
            engine->isReadNotificationEnabled(), engine->isWriteNotificationEnabled(),
            engine->isExceptionNotificationEnabled(), engine->isLineNotificationEnabled()};
    };
    engine->setReadNotificationEnabled(true, false);
    QCOMPARE(kinds(), QList<bool>({true, false, false, false}));
    engine->setWriteNotificationEnabled(true, false);
    engine->setReadNotificationEnabled(false, false);
    QCOMPARE(kinds(), QList<bool>({false, true, false, false}));
    engine->setExceptionNotificationEnabled(true, false);
    engine->setLineNotificationEnabled(true, false);
    QCOMPARE(kinds(), QList<bool>({false, true, true, true}));
    engine->setWriteNotificationEnabled(false, false);
    engine->setExceptionNotificationEnabled(false, false);
    QCOMPARE(kinds(), QList<bool>({false, false, false, true}));
    engine->setLineNotificationEnabled(false, false);
    QCOMPARE(kinds(), QList<bool>({false, false, false, false}));
}

void tst_NativeSerialNotifier::eachArrivalIsToldOnce()
{
    WatchedLine line;
    line.engine->setReadNotificationEnabled(true, false);
    turnTheLoop();
    QCOMPARE(line.receiver.reads, 0);
    for (int arrival = 1; arrival <= 3; ++arrival) {
        QVERIFY(line.pty.send("x"));
        QTRY_COMPARE(line.receiver.reads, arrival);
        turnTheLoop();
        QCOMPARE(line.receiver.reads, arrival);
    }
    QCOMPARE(line.engine->bytesAvailable(), qint64(3));
}

void tst_NativeSerialNotifier::unreadByteDoesNotSpin()
{
    WatchedLine line;
    line.engine->setReadNotificationEnabled(true, false);
    QVERIFY(line.pty.send("x"));
    QTRY_COMPARE(line.receiver.reads, 1);
    const double load = loadOfTheLoop();
    QVERIFY2(load < IdleLoad, qPrintable(QString::number(load)));
    QCOMPARE(line.receiver.reads, 1);
    QCOMPARE(line.engine->bytesAvailable(), qint64(1));
}

void tst_NativeSerialNotifier::burstIsToldAtLeastOnceAndReadWhole()
{
    WatchedLine line;
    QByteArray got;
    line.receiver.onRead = [&] {
        const qint64 waiting = line.engine->bytesAvailable();
        QByteArray part(waiting, '\0');
        part.truncate(line.engine->read(part.data(), waiting));
        got += part;
    };
    line.engine->setReadNotificationEnabled(true, false);
    const QByteArray burst(2000, 'b');
    QVERIFY(line.pty.send(burst));
    QTRY_COMPARE(got, burst);
    QVERIFY(line.pty.send("9 bytes.."));
    QTRY_COMPARE(got, burst + "9 bytes..");
}

void tst_NativeSerialNotifier::turningOnAgainTellsNewCharactersOnly()
{
    WatchedLine line;
    QVERIFY(line.sendUnread("before"));
    line.engine->setReadNotificationEnabled(true, false);
    turnTheLoop();
    QCOMPARE(line.receiver.reads, 0);
    line.engine->setReadNotificationEnabled(false, false);
    QVERIFY(line.sendUnread("while off"));
    turnTheLoop();
    line.engine->setReadNotificationEnabled(true, false);
    turnTheLoop();
    QCOMPARE(line.receiver.reads, 0);
    QVERIFY(line.pty.send("x"));
    QTRY_COMPARE(line.receiver.reads, 1);
    QCOMPARE(line.engine->bytesAvailable(), qint64(16));
}

void tst_NativeSerialNotifier::turningOnTwiceLosesNothing()
{
    WatchedLine line;
    line.engine->setReadNotificationEnabled(true, false);
    QVERIFY(line.sendUntold("x"));
    line.engine->setReadNotificationEnabled(true, false);
    QTRY_COMPARE(line.receiver.reads, 1);
}

void tst_NativeSerialNotifier::otherKindsDoNotRepeatACharacter()
{
    WatchedLine line;
    line.engine->setReadNotificationEnabled(true, false);
    QVERIFY(line.pty.send("x"));
    QTRY_COMPARE(line.receiver.reads, 1);
    line.engine->setExceptionNotificationEnabled(true, false);
    line.engine->setWriteNotificationEnabled(true, false);
    line.engine->setLineNotificationEnabled(true, false);
    QCOMPARE(line.engine->write("out", 3), qint64(3));
    turnTheLoop();
    line.engine->setExceptionNotificationEnabled(false, false);
    line.engine->setWriteNotificationEnabled(false, false);
    turnTheLoop();
    QCOMPARE(line.receiver.reads, 1);
}

void tst_NativeSerialNotifier::turningWriteOnPushesByHand()
{
    WatchedLine line;
    line.engine->setWriteNotificationEnabled(true, false);
    QCOMPARE(line.receiver.writes, 1);
    QVERIFY(line.engine->isWriteNotificationEnabled());
    turnTheLoop();
    QCOMPARE(line.receiver.writes, 1);
    line.engine->setWriteNotificationEnabled(true, false);
    QCOMPARE(line.receiver.writes, 2);
    line.engine->setWriteNotificationEnabled(false, false);
    QCOMPARE(line.receiver.writes, 2);
}

void tst_NativeSerialNotifier::writeIsToldAfterSomethingWasSent()
{
    WatchedLine line;
    int blocks = 3;
    line.receiver.onWrite = [&] {
        if (blocks-- > 0) {
            line.engine->write("block", 5);
        }
    };
    line.engine->setWriteNotificationEnabled(true, false);
    QCOMPARE(line.receiver.writes, 1);
    // One call for each block that was sent; the last call finds nothing to send, and ends it.
    QTRY_COMPARE(line.receiver.writes, 4);
    turnTheLoop();
    QCOMPARE(line.receiver.writes, 4);
    QTRY_COMPARE(line.pty.received(), "blockblockblock");
    // Something that is sent past the notification counts as well.
    QCOMPARE(line.engine->write("x", 1), qint64(1));
    QTRY_COMPARE(line.receiver.writes, 5);
}

// The event loop looks at the port when all blocks have gone.
void tst_NativeSerialNotifier::writeOfManyBlocksIsToldOnce()
{
    WatchedLine line;
    line.engine->setWriteNotificationEnabled(true, false);
    const QByteArray bytes(2000, 'x');
    QCOMPARE(line.engine->write(bytes.constData(), bytes.size()), qint64(2000));
    QTRY_COMPARE(line.receiver.writes, 2);
    turnTheLoop();
    QCOMPARE(line.receiver.writes, 2);
}

// Something was sent, though not all: it is told as soon as the port can take more.
void tst_NativeSerialNotifier::writeThatFailedHalfWayIsTold()
{
    WatchedLine line;
    line.engine->setWriteNotificationEnabled(true, false);
    const QByteArray bytes(1 << 20, 'x'); // more than the line holds
    QCOMPARE(line.engine->write(bytes.constData(), bytes.size()), qint64(-1));
    turnTheLoop();
    QCOMPARE(line.receiver.writes, 1); // it can't take more
    QTRY_VERIFY(!line.pty.received().isEmpty());
    QTRY_COMPARE(line.receiver.writes, 2);
    turnTheLoop();
    QCOMPARE(line.receiver.writes, 2);
}

void tst_NativeSerialNotifier::writeWithNothingToSendDoesNotSpin()
{
    WatchedLine line;
    line.engine->setWriteNotificationEnabled(true, false);
    QCOMPARE(line.engine->write("x", 1), qint64(1));
    QTRY_COMPARE(line.receiver.writes, 2);
    const double load = loadOfTheLoop();
    QVERIFY2(load < IdleLoad, qPrintable(QString::number(load)));
    QCOMPARE(line.receiver.writes, 2);
}

void tst_NativeSerialNotifier::writeTurnedOffInThePushStaysOff()
{
    WatchedLine line;
    line.receiver.onWrite = [&] {
        line.engine->setWriteNotificationEnabled(false, false);
        line.engine->write("x", 1);
    };
    line.engine->setWriteNotificationEnabled(true, false);
    turnTheLoop();
    QCOMPARE(line.receiver.writes, 1);
    QVERIFY(!line.engine->isWriteNotificationEnabled());
}

void tst_NativeSerialNotifier::pulledOutPortDoesNotSpin_data()
{
    QTest::addColumn<bool>("unread");
    QTest::newRow("empty") << false;
    QTest::newRow("with an unread byte") << true;
}

void tst_NativeSerialNotifier::pulledOutPortDoesNotSpin()
{
    QFETCH(bool, unread);
    WatchedLine line;
    line.engine->setReadNotificationEnabled(true, false);
    line.engine->setWriteNotificationEnabled(true, false);
    line.engine->setExceptionNotificationEnabled(true, false);
    line.engine->setLineNotificationEnabled(true, false);
    if (unread) {
        QVERIFY(line.pty.send("x"));
        QTRY_COMPARE(line.receiver.reads, 1);
    }
    line.pty.close();
    QTRY_COMPARE(line.receiver.exceptions, 1);
    const double load = loadOfTheLoop();
    QVERIFY2(load < IdleLoad, qPrintable(QString::number(load)));
    QCOMPARE(line.receiver.reads, unread ? 1 : 0);
    QCOMPARE(line.receiver.writes, 1);
    QCOMPARE(line.receiver.exceptions, 1);
    QCOMPARE(line.receiver.lines, 0);
    QVERIFY(line.engine->isReadNotificationEnabled());
    // Not even when the kinds are turned on anew.
    line.engine->setReadNotificationEnabled(false, false);
    line.engine->setExceptionNotificationEnabled(false, false);
    line.engine->setReadNotificationEnabled(true, false);
    turnTheLoop();
    QCOMPARE(line.receiver.reads, unread ? 1 : 0);
    QVERIFY(line.engine->close());
}

void tst_NativeSerialNotifier::lostPortIsAnExceptionOnce()
{
    WatchedLine line;
    line.engine->setExceptionNotificationEnabled(true, false);
    QVERIFY(line.sendUnread("x"));
    turnTheLoop();
    QCOMPARE(line.receiver.reads, 0);
    QCOMPARE(line.receiver.exceptions, 0);
    line.pty.close();
    // Turning on another kind before the loss was told doesn't hide it.
    line.engine->setReadNotificationEnabled(true, false);
    QTRY_COMPARE(line.receiver.exceptions, 1);
    turnTheLoop();
    QCOMPARE(line.receiver.exceptions, 1);
    QCOMPARE(line.receiver.reads, 0);
}

void tst_NativeSerialNotifier::lineKindOfAPtyPollsNothing()
{
    WatchedLine line;
    line.engine->setLineNotificationEnabled(true, false);
    QVERIFY(line.engine->isLineNotificationEnabled());
    const auto *notifier = line.engine->children().constFirst();
    for (const QTimer *timer : notifier->findChildren<QTimer *>()) {
        QVERIFY(!timer->isActive());
    }
    QCOMPARE(line.receiver.lines, 0);
}

QTEST_GUILESS_MAIN(tst_NativeSerialNotifier)
#include "tst_NativeSerialNotifier.moc"
