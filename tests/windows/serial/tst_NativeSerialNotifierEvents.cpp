#include "serial/FakedLine.h"
#include "support/TestCase.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTest>
#include <QTimer>
#include <QWinEventNotifier>

#include <memory>

using namespace Qt::StringLiterals;

/// What the notifier makes of the events of a port, with a real event loop. The driver is a fake,
/// which has every event.
class tst_NativeSerialNotifierEvents : public TestCase
{
    Q_OBJECT

private slots:
    void eachEventIsTold_data();
    void eachEventIsTold();
    void eventNobodyWants();
    void allAtOnceAreToldInOrder();
    void wishesAreLookedAtAfresh();
    void waitsAgainAfterEachEvent();
    void callsToTheDriver();
    void turningWriteOnPushesByHand();
    void failuresOfTheDriverAreNotLookedAt_data();
    void failuresOfTheDriverAreNotLookedAt();
    void withoutAnEventNothingIsEnabled();
    void withoutAPortNothingIsWaitedFor();
    void eventAnswersWhetherAnyoneWasCalled_data();
    void eventAnswersWhetherAnyoneWasCalled();
    void eventOfAnotherType_data();
    void eventOfAnotherType();
    void endOfTheNotifierClosesItsEvent();
    void waitOfTheEngineEndsTheWait();
    void waitOfTheEngineBesideTheNotifiersFails();
    void eventOfANewWaitIsNotLost();
    void eventIsToldThoughItsSignalWasTakenBack_data();
    void eventIsToldThoughItsSignalWasTakenBack();
};

namespace {

/// A line whose notifier watches for @p mask.
struct Watched : FakedLine
{
    explicit Watched(DWORD mask)
    {
        driver.ending = FakeDriver::Ending::Later;
        if (mask & EV_RXCHAR) {
            engine->setReadNotificationEnabled(true, false);
        }
        if (mask & EV_TXEMPTY) {
            engine->setWriteNotificationEnabled(true, false);
        }
        if (mask & EV_ERR) {
            engine->setExceptionNotificationEnabled(true, false);
        }
        if (mask & EV_CTS) {
            engine->setLineNotificationEnabled(true, false);
        }
        receiver.writes = 0; // without the one by hand
    }

    /// Reads, writes, exceptions, changes of lines.
    QList<int> told() const
    {
        return {receiver.reads, receiver.writes, receiver.exceptions, receiver.lines};
    }
};

constexpr DWORD AllKinds = 1 | 4 | 128 | 280;

} // namespace

void tst_NativeSerialNotifierEvents::eachEventIsTold_data()
{
    QTest::addColumn<DWORD>("event");
    QTest::addColumn<QList<int>>("told");
    QTest::newRow("character") << DWORD(EV_RXCHAR) << QList<int>{1, 0, 0, 0};
    QTest::newRow("all sent") << DWORD(EV_TXEMPTY) << QList<int>{0, 1, 0, 0};
    QTest::newRow("error") << DWORD(EV_ERR) << QList<int>{0, 0, 1, 0};
    QTest::newRow("CTS") << DWORD(EV_CTS) << QList<int>{0, 0, 0, 1};
    QTest::newRow("DSR") << DWORD(EV_DSR) << QList<int>{0, 0, 0, 1};
    QTest::newRow("RI") << DWORD(EV_RING) << QList<int>{0, 0, 0, 1};
    QTest::newRow("all lines") << DWORD(280) << QList<int>{0, 0, 0, 1};
    QTest::newRow("all") << AllKinds << QList<int>{1, 1, 1, 1};
}

void tst_NativeSerialNotifierEvents::eachEventIsTold()
{
    QFETCH(DWORD, event);
    QFETCH(QList<int>, told);
    Watched line(AllKinds);
    QCOMPARE(line.driver.mask, AllKinds);
    QTRY_VERIFY(line.driver.isWaitPending());
    line.driver.endWait(event);
    QTRY_COMPARE(line.told(), told);
    QTRY_VERIFY(line.driver.isWaitPending());
    QCOMPARE(line.told(), told);
}

// A driver may tell what it wasn't asked for, and a wish may be gone before its event is told.
void tst_NativeSerialNotifierEvents::eventNobodyWants()
{
    Watched line(EV_CTS);
    QTRY_VERIFY(line.driver.isWaitPending());
    line.driver.endWait(EV_RXCHAR | EV_TXEMPTY | EV_ERR);
    QTRY_VERIFY(line.driver.isWaitPending());
    QCOMPARE(line.told(), (QList<int>{0, 0, 0, 0}));
    line.driver.endWait(EV_RXCHAR | EV_CTS);
    QTRY_COMPARE(line.told(), (QList<int>{0, 0, 0, 1}));
}

void tst_NativeSerialNotifierEvents::allAtOnceAreToldInOrder()
{
    Watched line(AllKinds);
    QStringList order;
    line.receiver.onRead = [&order] { order << u"read"_s; };
    line.receiver.onWrite = [&order] { order << u"write"_s; };
    line.receiver.onException = [&order] { order << u"exception"_s; };
    line.receiver.onLine = [&order] { order << u"line"_s; };
    QTRY_VERIFY(line.driver.isWaitPending());
    line.driver.endWait(AllKinds);
    QTRY_COMPARE(order, (QStringList{u"read"_s, u"write"_s, u"exception"_s, u"line"_s}));
}

// Whoever is told of the first may change what is wanted of the others.
void tst_NativeSerialNotifierEvents::wishesAreLookedAtAfresh()
{
    Watched line(AllKinds);
    line.receiver.onRead = [&line] {
        line.engine->setWriteNotificationEnabled(false, false);
        line.engine->setLineNotificationEnabled(false, false);
    };
    QTRY_VERIFY(line.driver.isWaitPending());
    line.driver.endWait(AllKinds);
    QTRY_COMPARE(line.told(), (QList<int>{1, 0, 1, 0}));
    QTRY_VERIFY(line.driver.isWaitPending());
    QCOMPARE(line.told(), (QList<int>{1, 0, 1, 0}));
    QCOMPARE(line.driver.mask, DWORD(EV_RXCHAR | EV_ERR));
}

void tst_NativeSerialNotifierEvents::waitsAgainAfterEachEvent()
{
    Watched line(EV_RXCHAR);
    for (int count = 1; count <= 5; ++count) {
        QTRY_VERIFY(line.driver.isWaitPending());
        line.driver.endWait(EV_RXCHAR);
        QTRY_COMPARE(line.receiver.reads, count);
    }
}

void tst_NativeSerialNotifierEvents::callsToTheDriver()
{
    FakedLine line;
    line.driver.ending = FakeDriver::Ending::Later;
    line.engine->setReadNotificationEnabled(true, false);
    QCOMPARE(line.driver.takeCalls(),
             (QStringList{u"CreateEventW 0 0 0"_s, u"SetCommMask 1"_s, u"WaitCommEvent"_s}));
    line.engine->setLineNotificationEnabled(true, false);
    QCOMPARE(line.driver.takeCalls(), (QStringList{u"SetCommMask 281"_s, u"WaitCommEvent"_s}));
    line.engine->setReadNotificationEnabled(false, false);
    QCOMPARE(line.driver.takeCalls(), (QStringList{u"SetCommMask 280"_s, u"WaitCommEvent"_s}));
    line.engine->setLineNotificationEnabled(false, false);
    QCOMPARE(line.driver.takeCalls(), QStringList(u"SetCommMask 0"_s)); // nothing to wait for
    QVERIFY(!line.engine->findChild<QWinEventNotifier *>()->isEnabled());
}

void tst_NativeSerialNotifierEvents::turningWriteOnPushesByHand()
{
    FakedLine line;
    line.driver.ending = FakeDriver::Ending::Later;
    bool wasWaiting = false;
    line.receiver.onWrite = [&] { wasWaiting = line.driver.isWaitPending(); };
    line.engine->setWriteNotificationEnabled(true, false);
    QCOMPARE(line.receiver.writes, 1);
    QVERIFY2(wasWaiting, "what is sent by hand may be gone before somebody waits");
    line.engine->setReadNotificationEnabled(true, false);
    line.engine->setWriteNotificationEnabled(false, false);
    QCOMPARE(line.receiver.writes, 1);
}

void tst_NativeSerialNotifierEvents::failuresOfTheDriverAreNotLookedAt_data()
{
    QTest::addColumn<QByteArray>("function");
    QTest::newRow("mask") << "SetCommMask"_ba;
    QTest::newRow("wait") << "WaitCommEvent"_ba;
}

void tst_NativeSerialNotifierEvents::failuresOfTheDriverAreNotLookedAt()
{
    QFETCH(QByteArray, function);
    FakedLine line;
    line.driver.ending = FakeDriver::Ending::Later;
    line.driver.failing = {function};
    line.engine->setReadNotificationEnabled(true, false);
    QVERIFY(line.engine->isReadNotificationEnabled());
    line.driver.failing.clear();
    QTRY_VERIFY(line.driver.isWaitPending()); // a wait is tried again
    line.driver.endWait(EV_RXCHAR);
    QTRY_COMPARE(line.receiver.reads, 1);
}

void tst_NativeSerialNotifierEvents::withoutAnEventNothingIsEnabled()
{
    FakedLine line;
    line.driver.failing = {"CreateEventW"_ba};
    line.engine->setReadNotificationEnabled(true, false);
    QVERIFY(!line.engine->isReadNotificationEnabled());
    QVERIFY(!line.driver.takeCalls().contains(u"WaitCommEvent"_s));
}

// Not even tried again and again: opening makes another notifier.
void tst_NativeSerialNotifierEvents::withoutAPortNothingIsWaitedFor()
{
    FakedLine line;
    QVERIFY(line.engine->close());
    line.driver.takeCalls();
    line.engine->setReadNotificationEnabled(true, false);
    QVERIFY(line.engine->isReadNotificationEnabled());
    QVERIFY(!line.driver.takeCalls().contains(u"WaitCommEvent"_s));
    const auto timers = line.engine->findChildren<QTimer *>();
    QCOMPARE(timers.size(), 1);
    QVERIFY(!timers.constFirst()->isActive());
    line.driver.ending = FakeDriver::Ending::Later;
    QVERIFY(line.engine->open(QIODevice::ReadWrite));
    QVERIFY(!line.engine->isReadNotificationEnabled());
    line.engine->setReadNotificationEnabled(true, false);
    QVERIFY(line.driver.isWaitPending());
}

void tst_NativeSerialNotifierEvents::eventAnswersWhetherAnyoneWasCalled_data()
{
    QTest::addColumn<DWORD>("event");
    QTest::addColumn<bool>("answer");
    QTest::newRow("character") << DWORD(EV_RXCHAR) << true;
    QTest::newRow("line") << DWORD(EV_RING) << true;
    QTest::newRow("nobody wants it") << DWORD(EV_TXEMPTY) << false;
    QTest::newRow("none") << DWORD(0) << false;
}

void tst_NativeSerialNotifierEvents::eventAnswersWhetherAnyoneWasCalled()
{
    QFETCH(DWORD, event);
    Watched line(EV_RXCHAR | EV_CTS);
    line.driver.endWait(event);
    QEvent signal(QEvent::WinEventAct);
    const bool answer =
        QCoreApplication::sendEvent(line.engine->findChild<QWinEventNotifier *>(), &signal);
    QTEST(answer, "answer");
    QVERIFY(line.driver.isWaitPending());
}

void tst_NativeSerialNotifierEvents::eventOfAnotherType_data()
{
    QTest::addColumn<std::shared_ptr<QEvent>>("event");
    QTest::addColumn<bool>("answer"); // the toolkit's
    QTest::newRow("timer") << std::shared_ptr<QEvent>(std::make_shared<QTimerEvent>(7710)) << true;
    QTest::newRow("of other objects") << std::make_shared<QEvent>(QEvent::LanguageChange) << false;
}

void tst_NativeSerialNotifierEvents::eventOfAnotherType()
{
    QFETCH(std::shared_ptr<QEvent>, event);
    Watched line(EV_RXCHAR);
    line.driver.endWait(EV_RXCHAR);
    auto *const notifier = line.engine->findChild<QWinEventNotifier *>();
    QTEST(QCoreApplication::sendEvent(notifier, event.get()), "answer");
    QCOMPARE(line.receiver.reads, 0);
    QVERIFY(line.driver.isWaitPending()); // the last act is a new wait in any case
    QTRY_COMPARE(line.receiver.reads, 1);
}

void tst_NativeSerialNotifierEvents::endOfTheNotifierClosesItsEvent()
{
    Watched line(EV_RXCHAR);
    line.driver.takeCalls();
    line.engine->setReadNotificationEnabled(true, true); // the engine drops it
    QVERIFY(!line.driver.takeCalls().contains(u"CloseHandle event"_s));
    delete line.engine->findChild<QWinEventNotifier *>();
    QCOMPARE(line.driver.takeCalls(), QStringList(u"CloseHandle event"_s));
}

// The engine widens the mask, which ends the notifier's wait; the driver takes one at a time.
void tst_NativeSerialNotifierEvents::waitOfTheEngineEndsTheWait()
{
    Watched line(EV_RXCHAR);
    QTRY_VERIFY(line.driver.isWaitPending());
    line.driver.events = EV_TXEMPTY;
    bool readable = false;
    bool writable = false;
    QVERIFY(line.engine->waitForReadOrWrite(&readable, &writable, false, true, 20));
    QVERIFY(writable);
    QCOMPARE(line.driver.mask, DWORD(EV_RXCHAR));
    QTRY_VERIFY(line.driver.isWaitPending());
    line.driver.endWait(EV_RXCHAR);
    QTRY_COMPARE(line.told(), (QList<int>{1, 0, 0, 0}));
}

// Watched already is what the engine would wait for, so nothing ends the notifier's wait.
void tst_NativeSerialNotifierEvents::waitOfTheEngineBesideTheNotifiersFails()
{
    Watched line(EV_RXCHAR);
    QTRY_VERIFY(line.driver.isWaitPending());
    line.driver.takeCalls();
    bool readable = true;
    bool writable = true;
    QVERIFY(!line.engine->waitForReadOrWrite(&readable, &writable, true, false, 60000));
    QVERIFY(!readable && !writable);
    QVERIFY(!line.driver.takeCalls().contains(u"WaitForSingleObject 60000"_s));
    // Putting the mask back did end it, and the notifier has begun another.
    QTRY_VERIFY(line.driver.isWaitPending());
    line.driver.endWait(EV_RXCHAR);
    QTRY_COMPARE(line.receiver.reads, 1);
}

// A wait may end, and a new one begin, before the event loop comes to tell of the first.
void tst_NativeSerialNotifierEvents::eventOfANewWaitIsNotLost()
{
    Watched line(EV_RXCHAR);
    line.driver.endWait(EV_RXCHAR);
    line.engine->setExceptionNotificationEnabled(true, false);
    QVERIFY(line.driver.isWaitPending());
    line.driver.endWait(EV_ERR);
    QTRY_COMPARE(line.told(), (QList<int>{1, 0, 1, 0}));
}

void tst_NativeSerialNotifierEvents::eventIsToldThoughItsSignalWasTakenBack_data()
{
    QTest::addColumn<bool>("enable");
    QTest::newRow("another kind is turned on") << true;
    QTest::newRow("another kind is turned off") << false;
}

// The new wait begins with its event not signalled, whoever had seen the signal or not.
void tst_NativeSerialNotifierEvents::eventIsToldThoughItsSignalWasTakenBack()
{
    QFETCH(bool, enable);
    Watched line(enable ? DWORD{EV_RXCHAR} : DWORD{EV_RXCHAR | EV_ERR});
    line.driver.endWait(EV_RXCHAR);
    line.engine->setExceptionNotificationEnabled(enable, false);
    QVERIFY(line.driver.isWaitPending()); // and this one never ends
    QTRY_COMPARE(line.told(), (QList<int>{1, 0, 0, 0}));
}

QTEST_GUILESS_MAIN(tst_NativeSerialNotifierEvents)
#include "tst_NativeSerialNotifierEvents.moc"
