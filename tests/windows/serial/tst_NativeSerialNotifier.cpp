#include "WatchedLine.h"
#include "serial/AbstractSerialNotifier.h"
#include "support/TestCase.h"

#include <QTest>
#include <QWinEventNotifier>

/// The four kinds of notification on COM ports, with a real event loop.
///
/// Wine ends a wait for the events of such a port at once and without an event, unless a character
/// waits already and no modem line is watched. So the notifier is seen here by the mask that it
/// sets, by how often it waits, and by the characters that it finds; the modem lines never change.
class tst_NativeSerialNotifier : public TestCase
{
    Q_OBJECT

private slots:
    void kindsOfANewNotifier();
    void engineHasNoNotifierAtFirst();
    void eachKindSetsItsBits_data();
    void eachKindSetsItsBits();
    void kindsAreIndependent();
    void turningWriteOnPushesByHand();
    void writeTurnedOffInThePushStaysOff();
    void characterIsTold();
    void characterIsToldToWhoWantsItOnly();
    void isWatchedAgainAfterEachEvent();
    void waitsThatEndAtOnceDoNotSpin();
    void waitOfTheEngineLeavesTheNotifierAtWork();
    void closingDropsTheNotifier();
    void droppedNotifierLeavesTheNextOpeningAlone();
    void portClosedInTheCall();
    void engineDeletedInTheCall();
};

namespace {

using Setter = void (AbstractSerialEngine::*)(bool, bool);

/// Counts the ends of waits that come to the event loop.
class WaitCounter : public QObject
{
public:
    explicit WaitCounter(QObject *notifier) { notifier->installEventFilter(this); }

    int count = 0;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::WinEventAct ? 1 : 0;
        return false;
    }
};

QWinEventNotifier *notifierOf(const AbstractSerialEngine *engine)
{
    return engine->findChild<QWinEventNotifier *>();
}

} // namespace

Q_DECLARE_METATYPE(Setter)

void tst_NativeSerialNotifier::kindsOfANewNotifier()
{
    WatchedLine line;
    AbstractSerialNotifier *notifier = AbstractSerialNotifier::createSerialNotifier(line.engine);
    QVERIFY(!notifier->isReadNotificationEnabled());
    QVERIFY(!notifier->isWriteNotificationEnabled());
    QVERIFY(!notifier->isExceptionNotificationEnabled());
    QVERIFY(!notifier->isLineNotificationEnabled());
    auto *object = dynamic_cast<QWinEventNotifier *>(notifier);
    QVERIFY(object);
    QCOMPARE(object->parent(), line.engine.data());
    QVERIFY(object->handle());
    QVERIFY(!object->isEnabled());
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

void tst_NativeSerialNotifier::eachKindSetsItsBits_data()
{
    QTest::addColumn<Setter>("setter");
    QTest::addColumn<DWORD>("bits");
    using Engine = AbstractSerialEngine;
    QTest::newRow("read") << Setter(&Engine::setReadNotificationEnabled) << DWORD(1);
    QTest::newRow("write") << Setter(&Engine::setWriteNotificationEnabled) << DWORD(4);
    QTest::newRow("exception") << Setter(&Engine::setExceptionNotificationEnabled) << DWORD(128);
    QTest::newRow("line") << Setter(&Engine::setLineNotificationEnabled) << DWORD(280);
}

void tst_NativeSerialNotifier::eachKindSetsItsBits()
{
    QFETCH(Setter, setter);
    QFETCH(DWORD, bits);
    WatchedLine line;
    (line.engine->*setter)(true, false);
    QCOMPARE(line.mask(), bits);
    QVERIFY(notifierOf(line.engine)->isEnabled());
    (line.engine->*setter)(false, false);
    QCOMPARE(line.mask(), DWORD(0));
    QVERIFY(!notifierOf(line.engine)->isEnabled());
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
    QCOMPARE(kinds(), (QList<bool>{true, false, false, false}));
    engine->setLineNotificationEnabled(true, false);
    QCOMPARE(kinds(), (QList<bool>{true, false, false, true}));
    engine->setExceptionNotificationEnabled(true, false);
    engine->setWriteNotificationEnabled(true, false);
    QCOMPARE(kinds(), (QList<bool>{true, true, true, true}));
    QCOMPARE(line.mask(), DWORD(1 | 4 | 128 | 280));
    engine->setReadNotificationEnabled(false, false);
    QCOMPARE(kinds(), (QList<bool>{false, true, true, true}));
    engine->setExceptionNotificationEnabled(false, false);
    engine->setWriteNotificationEnabled(false, false);
    QCOMPARE(kinds(), (QList<bool>{false, false, false, true}));
    QCOMPARE(line.mask(), DWORD(280));
}

void tst_NativeSerialNotifier::turningWriteOnPushesByHand()
{
    WatchedLine line;
    line.engine->setWriteNotificationEnabled(true, false);
    QCOMPARE(line.receiver.writes, 1);
    QVERIFY(line.engine->isWriteNotificationEnabled());
    line.engine->setWriteNotificationEnabled(false, false);
    QCOMPARE(line.receiver.writes, 1);
    QCOMPARE(line.receiver.reads + line.receiver.lines + line.receiver.exceptions, 0);
}

void tst_NativeSerialNotifier::writeTurnedOffInThePushStaysOff()
{
    WatchedLine line;
    line.receiver.onWrite = [&line] { line.engine->setWriteNotificationEnabled(false, false); };
    line.engine->setWriteNotificationEnabled(true, false);
    QVERIFY(!line.engine->isWriteNotificationEnabled());
    QCOMPARE(line.mask(), DWORD(0));
}

void tst_NativeSerialNotifier::characterIsTold()
{
    WatchedLine line;
    line.receiver.onRead = [&line] { line.read(line.engine->bytesAvailable()); };
    line.engine->setReadNotificationEnabled(true, false);
    QVERIFY(line.pty.send("x"));
    QTRY_VERIFY(line.receiver.reads > 0);
    QCOMPARE(line.got, "x");
    QCOMPARE(line.receiver.writes + line.receiver.lines + line.receiver.exceptions, 0);
}

void tst_NativeSerialNotifier::characterIsToldToWhoWantsItOnly()
{
    WatchedLine line;
    line.engine->setLineNotificationEnabled(true, false);
    WaitCounter waits(notifierOf(line.engine));
    QVERIFY(line.pty.send("x"));
    QTRY_COMPARE(line.engine->bytesAvailable(), qint64(1));
    QTRY_VERIFY(waits.count > 2);
    QCOMPARE(line.receiver.reads, 0);
    QCOMPARE(line.receiver.lines, 0);
}

void tst_NativeSerialNotifier::isWatchedAgainAfterEachEvent()
{
    WatchedLine line;
    QByteArray all;
    line.receiver.onRead = [&line, &all] {
        line.read(line.engine->bytesAvailable());
        all += line.got;
    };
    line.engine->setReadNotificationEnabled(true, false);
    for (const char character : {'a', 'b', 'c', 'd'}) {
        QVERIFY(line.pty.send(QByteArray(1, character)));
        QTRY_VERIFY(all.endsWith(character));
    }
    QCOMPARE(all, "abcd");
}

void tst_NativeSerialNotifier::waitsThatEndAtOnceDoNotSpin()
{
    WatchedLine line;
    line.engine->setReadNotificationEnabled(true, false);
    line.engine->setLineNotificationEnabled(true, false);
    WaitCounter waits(notifierOf(line.engine));
    QTest::qWait(1000);
    // One each tenth of a second, and a few at the beginning.
    QVERIFY2(waits.count > 2, "the port isn't watched at all");
    QVERIFY2(waits.count < 30, qPrintable(QString::number(waits.count)));
    QCOMPARE(line.receiver.reads + line.receiver.lines, 0);
}

void tst_NativeSerialNotifier::waitOfTheEngineLeavesTheNotifierAtWork()
{
    WatchedLine line;
    line.receiver.onRead = [&line] { line.read(line.engine->bytesAvailable()); };
    line.engine->setReadNotificationEnabled(true, false);
    bool readable = false;
    bool writable = false;
    line.engine->waitForReadOrWrite(&readable, &writable, true, true, 0);
    QCOMPARE(line.mask(), DWORD(EV_RXCHAR));
    QVERIFY(line.pty.send("x"));
    QTRY_VERIFY(line.receiver.reads > 0);
    QCOMPARE(line.got, "x");
}

void tst_NativeSerialNotifier::closingDropsTheNotifier()
{
    WatchedLine line;
    AbstractSerialEngine *engine = line.engine;
    engine->setReadNotificationEnabled(true, false);
    engine->setLineNotificationEnabled(true, false);
    QWinEventNotifier *notifier = notifierOf(engine);
    engine->setReadNotificationEnabled(true, true); // with the flag of closing "on" counts as off
    QVERIFY(!engine->isReadNotificationEnabled());
    QVERIFY(!engine->isLineNotificationEnabled());
    QCOMPARE(line.mask(), DWORD(0));
    // It stays a child of the engine, and is still.
    QCOMPARE(notifier->parent(), engine);
    QVERIFY(!notifier->isEnabled());
    engine->setLineNotificationEnabled(true, false);
    QCOMPARE(engine->children().size(), 2);
}

void tst_NativeSerialNotifier::droppedNotifierLeavesTheNextOpeningAlone()
{
    WatchedLine line;
    AbstractSerialEngine *engine = line.engine;
    engine->setReadNotificationEnabled(true, false);
    engine->setLineNotificationEnabled(true, false);
    QWinEventNotifier *dropped = notifierOf(engine);
    WaitCounter waitsOfDropped(dropped);
    engine->setReadNotificationEnabled(false, true);
    QVERIFY(engine->close());
    QVERIFY(engine->open(QIODevice::ReadWrite));
    line.receiver.onRead = [&line] { line.read(line.engine->bytesAvailable()); };
    engine->setReadNotificationEnabled(true, false);
    QVERIFY(line.pty.send("x"));
    QTRY_VERIFY(line.receiver.reads > 0);
    QVERIFY(!dropped->isEnabled());
    QVERIFY2(waitsOfDropped.count < 2, "the dropped one still waits");
}

void tst_NativeSerialNotifier::portClosedInTheCall()
{
    WatchedLine line;
    line.receiver.onRead = [&line] { QVERIFY(line.engine->close()); };
    line.engine->setReadNotificationEnabled(true, false);
    QVERIFY(line.pty.send("x"));
    QTRY_COMPARE(line.engine->descriptor(), qintptr(-1));
    QCOMPARE(line.receiver.reads, 1);
    QVERIFY(!line.engine->isReadNotificationEnabled());
}

void tst_NativeSerialNotifier::engineDeletedInTheCall()
{
    WatchedLine line;
    line.receiver.onRead = [&line] { delete line.engine; };
    line.engine->setReadNotificationEnabled(true, false);
    QVERIFY(line.pty.send("x"));
    QTRY_VERIFY(line.engine.isNull());
    QCOMPARE(line.receiver.reads, 1);
}

QTEST_GUILESS_MAIN(tst_NativeSerialNotifier)
#include "tst_NativeSerialNotifier.moc"
