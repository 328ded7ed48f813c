#include "app/EncoderInitializationThread.h"
#include "support/MetaMethods.h"
#include "support/TestCase.h"

#include <QCoreApplication>
#include <QSemaphore>
#include <QTest>
#include <QTimer>

#include <atomic>
#include <functional>
#include <memory>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr int GenerousMsecs = 30'000;
/// How long nothing must happen where nothing is to happen; the thread is long asleep by its end.
constexpr int QuietMsecs = 300;
constexpr auto LongSleep = 100'000ms;

using EndOf = std::function<void(std::unique_ptr<EncoderInitializationThread> &)>;

} // namespace

Q_DECLARE_METATYPE(EndOf)

class tst_EncoderInitializationThread : public TestCase
{
    Q_OBJECT

private slots:
    void signalsAndSlots();
    void usualTimes();
    void runUsesUpItsCycles();
    void sleepsBetweenTheCalls();
    void stopInACallEndsAfterIt();
    void stopInASleepGivesOneMoreCall();
    void startClearsTheFlag();
    void endsAtOnce_data();
    void endsAtOnce();
    void startAfterTheEndTurnsNoMotor();
};

void tst_EncoderInitializationThread::signalsAndSlots()
{
    const QMetaObject &metaObject = EncoderInitializationThread::staticMetaObject;
    QCOMPARE(metaObject.superClass(), &QThread::staticMetaObject);
    QCOMPARE(
        ownMethods(metaObject, QMetaMethod::Signal),
        QStringList({u"ready()"_s, u"startInitialization()"_s, u"requestInitializationState()"_s}));
    QCOMPARE(ownMethods(metaObject, QMetaMethod::Slot), QStringList());
}

/// Together a limit of about 100 seconds.
void tst_EncoderInitializationThread::usualTimes()
{
    QCOMPARE(EncoderInitializationThread::MaxCycles, 1000);
    QCOMPARE(EncoderInitializationThread::UsualInterval, 100ms);
}

/// In the order of the calls, as the receiver on this thread gets them.
void tst_EncoderInitializationThread::runUsesUpItsCycles()
{
    QStringList calls;
    EncoderInitializationThread thread(0ms);
    connect(&thread, &EncoderInitializationThread::startInitialization, this,
            [&calls] { calls.append(u"start"_s); });
    connect(&thread, &EncoderInitializationThread::requestInitializationState, this,
            [&calls] { calls.append(u"state"_s); });
    connect(&thread, &EncoderInitializationThread::ready, this,
            [&calls] { calls.append(u"ready"_s); });
    thread.start();
    QTRY_VERIFY_WITH_TIMEOUT(calls.contains(u"ready"_s), GenerousMsecs);
    QCOMPARE(calls.size(), 1002);
    QCOMPARE(calls.constFirst(), u"start"_s);
    QCOMPARE(calls.count(u"state"_s), 1000);
    QCOMPARE(calls.constLast(), u"ready"_s);
    QVERIFY(thread.wait(GenerousMsecs));
}

/// Only a lower bound: a busy machine takes longer.
void tst_EncoderInitializationThread::sleepsBetweenTheCalls()
{
    QSemaphore calls;
    EncoderInitializationThread thread;
    connect(
        &thread, &EncoderInitializationThread::requestInitializationState, this,
        [&calls] { calls.release(); }, Qt::DirectConnection);
    QElapsedTimer sinceStart;
    sinceStart.start();
    thread.start();
    QVERIFY(calls.tryAcquire(4, GenerousMsecs));
    QVERIFY(sinceStart.elapsed() >= 300);
}

void tst_EncoderInitializationThread::stopInACallEndsAfterIt()
{
    std::atomic<int> calls = 0;
    std::atomic<int> ready = 0;
    EncoderInitializationThread thread(0ms);
    connect(
        &thread, &EncoderInitializationThread::requestInitializationState, &thread,
        [&] {
            if (++calls == 3) {
                thread.stop();
            }
        },
        Qt::DirectConnection);
    connect(
        &thread, &EncoderInitializationThread::ready, &thread, [&ready] { ++ready; },
        Qt::DirectConnection);
    thread.start();
    QVERIFY(thread.wait(GenerousMsecs));
    QCOMPARE(calls, 3);
    QCOMPARE(ready, 1);
}

/// The state is asked for before the flag is looked at.
void tst_EncoderInitializationThread::stopInASleepGivesOneMoreCall()
{
    QSemaphore reached;
    std::atomic<int> calls = 0;
    EncoderInitializationThread thread(2000ms);
    connect(
        &thread, &EncoderInitializationThread::requestInitializationState, &thread,
        [&] {
            ++calls;
            reached.release();
        },
        Qt::DirectConnection);
    thread.start();
    QVERIFY(reached.tryAcquire(1, GenerousMsecs));
    QVERIFY(!thread.wait(QuietMsecs));
    thread.stop();
    QVERIFY(thread.wait(GenerousMsecs));
    QCOMPARE(calls, 2);
}

void tst_EncoderInitializationThread::startClearsTheFlag()
{
    std::atomic<int> calls = 0;
    EncoderInitializationThread thread(0ms);
    connect(
        &thread, &EncoderInitializationThread::requestInitializationState, &thread,
        [&calls] { ++calls; }, Qt::DirectConnection);
    for (int run = 1; run <= 2; ++run) {
        thread.stop();
        thread.start();
        QVERIFY(thread.wait(GenerousMsecs));
        QCOMPARE(calls, run * 1000);
    }
}

void tst_EncoderInitializationThread::endsAtOnce_data()
{
    using Thread = std::unique_ptr<EncoderInitializationThread>;
    QTest::addColumn<EndOf>("end");
    QTest::addColumn<int>("mostReady");
    QTest::newRow("by its call") << EndOf([](Thread &thread) { thread->end(); }) << 0;
    QTest::newRow("with its object") << EndOf([](Thread &thread) { thread.reset(); }) << 0;
    QTest::newRow("with the program") << EndOf([](Thread &) {
        QTimer::singleShot(0, QCoreApplication::instance(), [] { QCoreApplication::exit(3); });
        QCOMPARE(QCoreApplication::exec(), 3);
    }) << 0;
    // A thread that hasn't come to its sleep yet sees the stop first, and says that it is ready.
    QTest::newRow("after a stop") << EndOf([](Thread &thread) {
        thread->stop();
        thread.reset();
    }) << 1;
}

/// In the middle of a long sleep, and without a last signal.
void tst_EncoderInitializationThread::endsAtOnce()
{
    QFETCH(const EndOf, end);
    QFETCH(const int, mostReady);
    QSemaphore reached;
    std::atomic<int> ready = 0;
    std::atomic<int> calls = 0;
    auto thread = std::make_unique<EncoderInitializationThread>(LongSleep);
    connect(
        thread.get(), &EncoderInitializationThread::requestInitializationState, this,
        [&] {
            ++calls;
            reached.release();
        },
        Qt::DirectConnection);
    connect(
        thread.get(), &EncoderInitializationThread::ready, this, [&ready] { ++ready; },
        Qt::DirectConnection);
    thread->start();
    QVERIFY(reached.tryAcquire(1, GenerousMsecs));
    QElapsedTimer sinceEnd;
    sinceEnd.start();
    end(thread);
    QVERIFY(sinceEnd.elapsed() < LongSleep.count() / 2);
    QVERIFY(!thread || thread->isFinished());
    QVERIFY(ready <= mostReady);
    QCOMPARE(calls, 1);
}

void tst_EncoderInitializationThread::startAfterTheEndTurnsNoMotor()
{
    std::atomic<int> signalsSeen = 0;
    EncoderInitializationThread thread(0ms);
    const auto count = [&signalsSeen] { ++signalsSeen; };
    connect(&thread, &EncoderInitializationThread::startInitialization, &thread, count,
            Qt::DirectConnection);
    connect(&thread, &EncoderInitializationThread::requestInitializationState, &thread, count,
            Qt::DirectConnection);
    connect(&thread, &EncoderInitializationThread::ready, &thread, count, Qt::DirectConnection);
    thread.end();
    thread.start();
    QVERIFY(thread.wait(GenerousMsecs));
    QCOMPARE(signalsSeen, 0);
}

QTEST_GUILESS_MAIN(tst_EncoderInitializationThread)
#include "tst_EncoderInitializationThread.moc"
