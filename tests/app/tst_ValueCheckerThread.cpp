#include "app/ValueCheckerThread.h"
#include "support/MetaMethods.h"
#include "support/TestCase.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QSemaphore>
#include <QTest>
#include <QTimer>

#include <atomic>
#include <functional>
#include <limits>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr int LongSleepMsecs = 100'000;
/// Far more than anything takes that happens at once, far less than the long sleep.
constexpr int GenerousMsecs = 20'000;
/// How long nothing must happen where nothing is to happen.
constexpr int QuietMsecs = 300;

/// A thread that the test holds before its first line, and in each of its ticks.
class HeldThread : public ValueCheckerThread
{
public:
    explicit HeldThread(int delay)
        : ValueCheckerThread(delay)
    {
        const auto holdInTick = [this] {
            ++m_ticks;
            m_tickReached.release();
            m_tickGate.acquire();
        };
        connect(this, &ValueCheckerThread::checkRequested, this, holdInTick, Qt::DirectConnection);
    }

    /// A test that has failed half-way leaves the thread held.
    ~HeldThread() override
    {
        letRun();
        letTick();
        end();
    }

    bool waitForRun() { return m_runReached.tryAcquire(1, GenerousMsecs); }
    void letRun() { m_runGate.release(Many); }
    bool waitForTick() { return m_tickReached.tryAcquire(1, GenerousMsecs); }
    void letTick(int count = Many) { m_tickGate.release(count); }

    int runs() const { return m_runs; }
    int ticks() const { return m_ticks; }

protected:
    void run() override
    {
        ++m_runs;
        m_runReached.release();
        m_runGate.acquire();
        ValueCheckerThread::run();
    }

private:
    static constexpr int Many = 1'000'000;

    std::atomic<int> m_runs = 0;
    std::atomic<int> m_ticks = 0;
    QSemaphore m_runReached;
    QSemaphore m_runGate;
    QSemaphore m_tickReached;
    QSemaphore m_tickGate;
};

/// Counts on the thread that ticks, without a way through the event loop. @p count outlives @p
/// thread.
void countTicks(const ValueCheckerThread &thread, std::atomic<int> &count)
{
    QObject::connect(
        &thread, &ValueCheckerThread::checkRequested, &thread, [&count] { ++count; },
        Qt::DirectConnection);
}

using EndOf = std::function<void(std::unique_ptr<ValueCheckerThread> &)>;

} // namespace

Q_DECLARE_METATYPE(EndOf)

class tst_ValueCheckerThread : public TestCase
{
    Q_OBJECT

private slots:
    void signalsAndSlots();
    void idleAfterConstruction();
    void defaultDelayIsASecond();
    void firstTickComesAtOnce();
    void delayLiesBetweenTicks_data();
    void delayLiesBetweenTicks();
    void anyDelayRuns_data();
    void anyDelayRuns();
    void ticksReachTheReceiversThread();

    void stopEndsAfterTheSleep();
    void stopLeavesALongSleepAlone();
    void startWhileRunningDoesNothing();
    void startRightAfterStopIsLost();
    void stopBeforeTheFirstLineIsOverwritten();
    void stopBeforeTheStartIsOverwritten();

    void newDelayHoldsFromTheNextSleep();
    void sleepUnderWayIsNotShortened();
    void ticksPileUpAndAreWorkedOff();

    void endsAtOnce_data();
    void endsAtOnce();
    void endOfAnIdleThread();
};

void tst_ValueCheckerThread::signalsAndSlots()
{
    const QMetaObject &metaObject = ValueCheckerThread::staticMetaObject;
    QCOMPARE(metaObject.superClass(), &QThread::staticMetaObject);
    QCOMPARE(ownMethods(metaObject, QMetaMethod::Signal), {u"checkRequested()"_s});
    QCOMPARE(ownMethods(metaObject, QMetaMethod::Slot),
             QStringList({u"stop()"_s, u"changeDelay(int delay)"_s}));
}

void tst_ValueCheckerThread::idleAfterConstruction()
{
    std::atomic<int> ticks = 0;
    const ValueCheckerThread thread(1);
    countTicks(thread, ticks);
    QVERIFY(!QTest::qWaitFor([&] { return ticks > 0; }, QuietMsecs));
    QVERIFY(!thread.isRunning());
    // Its slots run where the object lives, whatever the thread does.
    QCOMPARE(thread.thread(), QThread::currentThread());
}

void tst_ValueCheckerThread::defaultDelayIsASecond()
{
    QCOMPARE(ValueCheckerThread::DefaultDelayMsecs, 1000);
    std::atomic<int> ticks = 0;
    ValueCheckerThread thread;
    countTicks(thread, ticks);
    QElapsedTimer sinceStart;
    sinceStart.start();
    thread.start();
    QTRY_VERIFY_WITH_TIMEOUT(ticks >= 2, GenerousMsecs);
    QVERIFY(sinceStart.elapsed() >= 1000);
}

void tst_ValueCheckerThread::firstTickComesAtOnce()
{
    std::atomic<int> ticks = 0;
    ValueCheckerThread thread(LongSleepMsecs);
    countTicks(thread, ticks);
    thread.start();
    QTRY_COMPARE_WITH_TIMEOUT(ticks.load(), 1, GenerousMsecs);
    QVERIFY(!QTest::qWaitFor([&] { return ticks > 1; }, QuietMsecs));
    QVERIFY(thread.isRunning());
}

void tst_ValueCheckerThread::delayLiesBetweenTicks_data()
{
    QTest::addColumn<int>("delay");
    QTest::newRow("5 ms") << 5;
    QTest::newRow("40 ms") << 40;
    QTest::newRow("200 ms") << 200;
}

/// Only a lower bound: a busy machine takes longer.
void tst_ValueCheckerThread::delayLiesBetweenTicks()
{
    QFETCH(const int, delay);
    std::atomic<int> ticks = 0;
    ValueCheckerThread thread(delay);
    countTicks(thread, ticks);
    QElapsedTimer sinceStart;
    sinceStart.start();
    thread.start();
    QTRY_VERIFY_WITH_TIMEOUT(ticks >= 4, GenerousMsecs);
    const int seen = ticks;
    QVERIFY(sinceStart.elapsed() >= qint64(seen - 1) * delay);
}

void tst_ValueCheckerThread::anyDelayRuns_data()
{
    QTest::addColumn<int>("delay");
    QTest::addColumn<int>("ticksAtOnce");
    QTest::newRow("a tenth of the least that the panel offers") << 20 << 10;
    QTest::newRow("1") << 1 << 10;
    QTest::newRow("0: without a sleep") << 0 << 10;
    QTest::newRow("-1: without a sleep") << -1 << 10;
    QTest::newRow("the least number") << std::numeric_limits<int>::min() << 10;
    QTest::newRow("the greatest number") << std::numeric_limits<int>::max() << 1;
}

void tst_ValueCheckerThread::anyDelayRuns()
{
    QFETCH(const int, delay);
    QFETCH(const int, ticksAtOnce);
    std::atomic<int> ticks = 0;
    ValueCheckerThread thread(LongSleepMsecs);
    thread.changeDelay(delay);
    countTicks(thread, ticks);
    thread.start();
    QTRY_VERIFY_WITH_TIMEOUT(ticks >= ticksAtOnce, GenerousMsecs);
    QVERIFY(thread.isRunning());
    thread.end();
    QVERIFY(thread.isFinished());
}

void tst_ValueCheckerThread::ticksReachTheReceiversThread()
{
    int received = 0;
    int receivedElsewhere = 0;
    QObject receiver; // what is still queued for it at the end goes with it
    ValueCheckerThread thread(1);
    connect(&thread, &ValueCheckerThread::checkRequested, &receiver, [&] {
        ++received;
        receivedElsewhere += QThread::currentThread() != receiver.thread();
    });
    thread.start();
    QTRY_VERIFY_WITH_TIMEOUT(received >= 10, GenerousMsecs);
    thread.end();
    QCOMPARE(receivedElsewhere, 0);
}

void tst_ValueCheckerThread::stopEndsAfterTheSleep()
{
    HeldThread thread(1);
    thread.letRun();
    thread.start();
    QVERIFY(thread.waitForTick());
    thread.stop();
    QVERIFY(thread.isRunning());
    thread.letTick();
    QVERIFY(thread.wait(GenerousMsecs));
    QCOMPARE(thread.ticks(), 1);

    // And it can be started again, with a tick at once.
    thread.changeDelay(LongSleepMsecs);
    thread.start();
    QVERIFY(thread.waitForTick());
    QCOMPARE(thread.runs(), 2);
}

void tst_ValueCheckerThread::stopLeavesALongSleepAlone()
{
    HeldThread thread(LongSleepMsecs);
    thread.letRun();
    thread.letTick();
    thread.start();
    QVERIFY(thread.waitForTick());
    thread.stop();
    QVERIFY(!thread.wait(QuietMsecs));
    QVERIFY(thread.isRunning());
    QCOMPARE(thread.ticks(), 1);
}

void tst_ValueCheckerThread::startWhileRunningDoesNothing()
{
    HeldThread thread(1);
    thread.letRun();
    thread.start();
    QVERIFY(thread.waitForTick());
    thread.start(); // in a tick
    thread.letTick(5);
    for (int i = 0; i < 5; ++i) {
        QVERIFY(thread.waitForTick());
        thread.start(); // in a sleep, or in the tick that is held
    }
    thread.stop();
    thread.letTick();
    QVERIFY(thread.wait(GenerousMsecs));
    // None of the starts is made up for later.
    QVERIFY(!QTest::qWaitFor([&] { return thread.isRunning(); }, QuietMsecs));
    QCOMPARE(thread.runs(), 1);
    QCOMPARE(thread.ticks(), 6);
}

/// The loop looks at its flag only after the sleep, and only a start of the whole thread clears it.
void tst_ValueCheckerThread::startRightAfterStopIsLost()
{
    HeldThread thread(1);
    thread.letRun();
    thread.start();
    QVERIFY(thread.waitForTick());
    thread.stop();
    thread.start();
    QVERIFY(thread.isRunning());
    thread.letTick(1);
    QVERIFY(thread.wait(GenerousMsecs));
    QVERIFY(!QTest::qWaitFor([&] { return thread.isRunning(); }, QuietMsecs));
    QCOMPARE(thread.ticks(), 1);
    QCOMPARE(thread.runs(), 1);

    thread.stop();
    thread.start();
    thread.letTick();
    QVERIFY(thread.waitForTick());
    QVERIFY(thread.waitForTick());
    QCOMPARE(thread.runs(), 2);
}

void tst_ValueCheckerThread::stopBeforeTheFirstLineIsOverwritten()
{
    HeldThread thread(1);
    thread.letTick();
    thread.start();
    QVERIFY(thread.waitForRun());
    thread.stop();
    QCOMPARE(thread.ticks(), 0);
    thread.letRun();
    for (int i = 0; i < 10; ++i) {
        QVERIFY(thread.waitForTick());
    }
    QVERIFY(thread.isRunning());
    QCOMPARE(thread.runs(), 1);
}

void tst_ValueCheckerThread::stopBeforeTheStartIsOverwritten()
{
    HeldThread thread(1);
    thread.letRun();
    thread.letTick();
    thread.stop();
    thread.stop();
    thread.start();
    for (int i = 0; i < 10; ++i) {
        QVERIFY(thread.waitForTick());
    }
    QVERIFY(thread.isRunning());
}

void tst_ValueCheckerThread::newDelayHoldsFromTheNextSleep()
{
    HeldThread thread(LongSleepMsecs);
    thread.letRun();
    thread.start();
    QVERIFY(thread.waitForTick());
    thread.changeDelay(1);
    thread.letTick(10);
    for (int i = 0; i < 10; ++i) {
        QVERIFY(thread.waitForTick());
    }
    // It is held in its eleventh tick, before the sleep that follows.
    thread.changeDelay(LongSleepMsecs);
    thread.letTick();
    QVERIFY(!QTest::qWaitFor([&] { return thread.ticks() > 11; }, QuietMsecs));
    QVERIFY(thread.isRunning());
}

void tst_ValueCheckerThread::sleepUnderWayIsNotShortened()
{
    constexpr int SleepMsecs = 1500;
    std::atomic<int> ticks = 0;
    ValueCheckerThread thread(SleepMsecs);
    countTicks(thread, ticks);
    QElapsedTimer sinceStart;
    sinceStart.start();
    thread.start();
    QTRY_COMPARE_WITH_TIMEOUT(ticks.load(), 1, GenerousMsecs);
    // By the end of this the thread has long been asleep.
    QVERIFY(!QTest::qWaitFor([&] { return ticks > 1; }, QuietMsecs));
    thread.changeDelay(1);
    QTRY_VERIFY_WITH_TIMEOUT(ticks > 1, GenerousMsecs);
    QVERIFY(sinceStart.elapsed() >= SleepMsecs);
    // With the old delay this would take more than two minutes.
    QTRY_VERIFY_WITH_TIMEOUT(ticks > 100, GenerousMsecs);
}

void tst_ValueCheckerThread::ticksPileUpAndAreWorkedOff()
{
    QSemaphore emitted;
    ValueCheckerThread thread(1);
    connect(
        &thread, &ValueCheckerThread::checkRequested, &thread, [&emitted] { emitted.release(); },
        Qt::DirectConnection);
    int received = 0;
    QObject receiver;
    connect(&thread, &ValueCheckerThread::checkRequested, &receiver, [&received] { ++received; });
    thread.start();
    // Meanwhile nothing is taken from the queue.
    constexpr int AtLeast = 50;
    QVERIFY(emitted.tryAcquire(AtLeast, GenerousMsecs));
    thread.stop();
    QVERIFY(thread.wait(GenerousMsecs));
    QCOMPARE(received, 0);

    // The thread is at its end, and each of its ticks still comes.
    const int total = AtLeast + emitted.available();
    QTRY_COMPARE_WITH_TIMEOUT(received, total, GenerousMsecs);
    QVERIFY(!QTest::qWaitFor([&] { return received > total; }, QuietMsecs));
}

void tst_ValueCheckerThread::endsAtOnce_data()
{
    using Thread = std::unique_ptr<ValueCheckerThread>;
    QTest::addColumn<EndOf>("end");
    QTest::newRow("by its call") << EndOf([](Thread &thread) {
        thread->end();
        QVERIFY(thread->isFinished());
        thread->end();
        QVERIFY(thread->isFinished());
    });
    QTest::newRow("with its object") << EndOf([](Thread &thread) { thread.reset(); });
    QTest::newRow("with the program") << EndOf([](Thread &thread) {
        QTimer::singleShot(0, QCoreApplication::instance(), [] { QCoreApplication::exit(3); });
        QCOMPARE(QCoreApplication::exec(), 3);
        QVERIFY(thread->isFinished());
    });
    QTest::newRow("after a stop") << EndOf([](Thread &thread) {
        thread->stop();
        QVERIFY(thread->isRunning());
        thread.reset();
    });
}

/// Also in the middle of a sleep of 100 s.
void tst_ValueCheckerThread::endsAtOnce()
{
    QFETCH(const EndOf, end);
    std::atomic<int> ticks = 0;
    auto thread = std::make_unique<ValueCheckerThread>(LongSleepMsecs);
    countTicks(*thread, ticks);
    thread->start();
    QTRY_COMPARE_WITH_TIMEOUT(ticks.load(), 1, GenerousMsecs);
    QElapsedTimer timer;
    timer.start();
    end(thread);
    QVERIFY(timer.elapsed() < GenerousMsecs);
    QCOMPARE(ticks.load(), 1);
}

void tst_ValueCheckerThread::endOfAnIdleThread()
{
    ValueCheckerThread thread(LongSleepMsecs);
    thread.end();
    QVERIFY(!thread.isRunning());
}

QTEST_GUILESS_MAIN(tst_ValueCheckerThread)
#include "tst_ValueCheckerThread.moc"
