#include "app/TickingThread.h"
#include "app/WTraceController.h"
#include "support/TestCase.h"

#include <QElapsedTimer>
#include <QPushButton>
#include <QSemaphore>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>
#include <QThread>

#include <functional>
#include <memory>

using namespace Qt::StringLiterals;

class TraceCommand;

namespace {

constexpr int LongSleepMsecs = 100'000;
/// Far more than anything takes that happens at once, far less than the long sleep.
constexpr int GenerousMsecs = 20'000;
/// How long nothing must happen where nothing is to happen.
constexpr int QuietMsecs = 300;
/// More than one, and soon there at a delay of 1 ms.
constexpr int ManyTicks = 10;

/// What the signals of a pass read as in the log.
const QString PassLine = u"requestTraceValues"_s;
const QString EndLine = u"requestPDOValues"_s;

using Press = std::function<void(WTraceController &)>;

void click(WTraceController &controller, const QString &button)
{
    QTest::mouseClick(controller.findChild<QPushButton *>(button), Qt::LeftButton);
}

} // namespace

Q_DECLARE_METATYPE(Press)

/// The panel with its thread ticking.
class tst_WTraceControllerTicks : public TestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void idleAfterConstruction();
    void startAndStop_data();
    void startAndStop();
    void stopWhenStoppedIsEmittedAgain();
    void firstTickComesAtOnce();
    void delayOf100AtFirst();
    void delayReachesTheThread();
    void sleepUnderWayIsNotShortened();
    void anyDelayThatReachesTheThreadRuns();
    void startWhileRunningDoesNothing();
    void startRightAfterStopIsLost();
    void queuedTicksRunAfterAStop();
    void endsAtOnceInALongSleep();
    void endDropsQueuedTicks();

private:
    QPushButton *button(const QString &name)
    {
        return m_controller->findChild<QPushButton *>(name);
    }
    QSpinBox *spinBox() { return m_controller->findChild<QSpinBox *>(u"sbDelay"_s); }
    qsizetype passes() const { return m_log.count(PassLine); }
    bool passesExceed(qsizetype count)
    {
        return QTest::qWaitFor([&] { return passes() > count; }, QuietMsecs);
    }
    void countTicks();

    std::unique_ptr<WTraceController> m_controller;
    /// The signals of the passes, as they came.
    QStringList m_log;
    int m_passesElsewhere = 0; ///< not on the thread of the widgets
    QSemaphore m_ticks; ///< those that were counted on the thread that ticks
};

/// From the next start on. By the time that a tick is counted, it is in the queue of the widgets.
/// The thread shows itself in a pass only, so there is one run before; the connection is made when
/// that is over, since nothing but the thread's start shows ThreadSanitizer that it came first.
void tst_WTraceControllerTicks::countTicks()
{
    const ValueCheckerThread *thread = nullptr;
    connect(
        m_controller.get(), &WTraceController::requestPDOValues, this,
        [&] { thread = tickingThread(*m_controller); }, Qt::SingleShotConnection);
    click(*m_controller, u"btnStart"_s);
    QTRY_VERIFY_WITH_TIMEOUT(thread, GenerousMsecs);
    click(*m_controller, u"btnStop"_s);
    QTRY_VERIFY_WITH_TIMEOUT(thread->isFinished(), GenerousMsecs);
    QCoreApplication::sendPostedEvents();
    m_log.clear();
    connect(
        thread, &ValueCheckerThread::checkRequested, thread, [this] { m_ticks.release(); },
        Qt::DirectConnection);
}

void tst_WTraceControllerTicks::init()
{
    TestCase::init();
    m_log.clear();
    m_passesElsewhere = 0;
    m_ticks.tryAcquire(m_ticks.available());
    m_controller = std::make_unique<WTraceController>();
    connect(
        m_controller.get(),
        qOverload<QList<TraceCommand *> *>(&WTraceController::requestTraceValues),
        m_controller.get(),
        [this] {
            m_log.append(PassLine);
            m_passesElsewhere += QThread::currentThread() != qApp->thread();
        },
        Qt::DirectConnection);
    connect(
        m_controller.get(), &WTraceController::requestPDOValues, m_controller.get(),
        [this] { m_log.append(EndLine); }, Qt::DirectConnection);
    m_controller->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_controller.get()));
}

void tst_WTraceControllerTicks::cleanup()
{
    m_controller.reset();
    // Each pass runs where the widgets are, and to its end before the next one begins.
    QCOMPARE(m_passesElsewhere, 0);
    for (qsizetype i = 0; i < m_log.size(); ++i) {
        QCOMPARE(m_log.at(i), i % 2 == 0 ? PassLine : EndLine);
    }
}

void tst_WTraceControllerTicks::idleAfterConstruction()
{
    QVERIFY(!passesExceed(0));
}

void tst_WTraceControllerTicks::startAndStop_data()
{
    QTest::addColumn<Press>("start");
    QTest::addColumn<Press>("stop");
    using W = WTraceController;
    QTest::newRow("mouse") << Press([](W &w) { click(w, u"btnStart"_s); })
                           << Press([](W &w) { click(w, u"btnStop"_s); });
    QTest::newRow("keys") << Press([](W &w) {
        QTest::keyClick(w.findChild<QPushButton *>(u"btnStart"_s), Qt::Key_Space);
    }) << Press([](W &w) {
        QTest::keyClick(w.findChild<QPushButton *>(u"btnStop"_s), Qt::Key_Space);
    });
    QTest::newRow("slots of the buttons")
        << Press(&W::on_btnStart_clicked) << Press(&W::on_btnStop_clicked);
    QTest::newRow("activateTracing") << Press(&W::activateTracing) << Press(&W::deactivateTracing);
    QTest::newRow("setTracingActive") << Press([](W &w) { w.setTracingActive(true); })
                                      << Press([](W &w) { w.setTracingActive(false); });
}

void tst_WTraceControllerTicks::startAndStop()
{
    QFETCH(const Press, start);
    QFETCH(const Press, stop);
    QSignalSpy started(m_controller.get(), &WTraceController::start);
    QSignalSpy stopped(m_controller.get(), &WTraceController::stop);
    m_controller->setDelay(10);

    start(*m_controller);
    QCOMPARE(started.size(), 1);
    QCOMPARE(stopped.size(), 0);
    QVERIFY(!button(u"btnStart"_s)->isEnabled());
    QVERIFY(button(u"btnStop"_s)->isEnabled());
    QTRY_VERIFY_WITH_TIMEOUT(passes() >= 5, GenerousMsecs);

    stop(*m_controller);
    QCOMPARE(started.size(), 1);
    QCOMPARE(stopped.size(), 1);
    QVERIFY(button(u"btnStart"_s)->isEnabled());
    QVERIFY(!button(u"btnStop"_s)->isEnabled());
    // What was still queued comes, and then there is silence.
    qsizetype seen = 0;
    QTRY_VERIFY_WITH_TIMEOUT((seen = passes(), !passesExceed(seen)), GenerousMsecs);
    QVERIFY(!passesExceed(seen));

    start(*m_controller);
    QTRY_VERIFY_WITH_TIMEOUT(passes() > seen, GenerousMsecs);
}

void tst_WTraceControllerTicks::stopWhenStoppedIsEmittedAgain()
{
    QSignalSpy stopped(m_controller.get(), &WTraceController::stop);
    m_controller->deactivateTracing();
    m_controller->deactivateTracing();
    QCOMPARE(stopped.size(), 2);
    QVERIFY(button(u"btnStart"_s)->isEnabled());
    QVERIFY(!button(u"btnStop"_s)->isEnabled());
    // A stop before a start leaves no trace.
    m_controller->setDelay(10);
    m_controller->activateTracing();
    QTRY_VERIFY_WITH_TIMEOUT(passes() >= 5, GenerousMsecs);
}

void tst_WTraceControllerTicks::firstTickComesAtOnce()
{
    m_controller->setDelay(LongSleepMsecs);
    click(*m_controller, u"btnStart"_s);
    // As an event, never within the start itself.
    QCOMPARE(passes(), 0);
    QTRY_COMPARE_WITH_TIMEOUT(passes(), 1, GenerousMsecs);
    QCOMPARE(m_log, QStringList({PassLine, EndLine}));
    QVERIFY(!passesExceed(1));
}

/// Only a lower bound: a busy machine takes longer.
void tst_WTraceControllerTicks::delayOf100AtFirst()
{
    QElapsedTimer sinceStart;
    sinceStart.start();
    click(*m_controller, u"btnStart"_s);
    QTRY_VERIFY_WITH_TIMEOUT(passes() >= 4, GenerousMsecs);
    const qsizetype seen = passes();
    QVERIFY(sinceStart.elapsed() >= (seen - 1) * 100);
}

void tst_WTraceControllerTicks::delayReachesTheThread()
{
    m_controller->setDelay(400);
    QElapsedTimer sinceStart;
    sinceStart.start();
    click(*m_controller, u"btnStart"_s);
    QTRY_VERIFY_WITH_TIMEOUT(passes() >= 3, GenerousMsecs);
    const qsizetype seen = passes();
    QVERIFY(sinceStart.elapsed() >= (seen - 1) * 400);
    // While it runs, too: at the old delay this would take 40 s.
    m_controller->setDelay(1);
    QTRY_VERIFY_WITH_TIMEOUT(passes() >= seen + 100, GenerousMsecs);
}

void tst_WTraceControllerTicks::sleepUnderWayIsNotShortened()
{
    m_controller->setDelay(LongSleepMsecs);
    click(*m_controller, u"btnStart"_s);
    QTRY_COMPARE_WITH_TIMEOUT(passes(), 1, GenerousMsecs);
    QVERIFY(!passesExceed(1)); // by now the thread has long been asleep
    m_controller->setDelay(200);
    QVERIFY(!QTest::qWaitFor([this] { return passes() > 1; }, 1000));
}

void tst_WTraceControllerTicks::anyDelayThatReachesTheThreadRuns()
{
    m_controller->setDelayMinimum(200);
    m_controller->setDelay(LongSleepMsecs);
    m_controller->on_sbDelay_valueChanged(1);
    click(*m_controller, u"btnStart"_s);
    QTRY_VERIFY_WITH_TIMEOUT(passes() >= 100, GenerousMsecs);
    QCOMPARE(spinBox()->value(), LongSleepMsecs);
}

void tst_WTraceControllerTicks::startWhileRunningDoesNothing()
{
    QSignalSpy started(m_controller.get(), &WTraceController::start);
    m_controller->setDelay(LongSleepMsecs);
    m_controller->activateTracing();
    QTRY_COMPARE_WITH_TIMEOUT(passes(), 1, GenerousMsecs);
    m_controller->activateTracing();
    QCOMPARE(started.size(), 2);
    QVERIFY(!button(u"btnStart"_s)->isEnabled());
    QVERIFY(button(u"btnStop"_s)->isEnabled());
    QVERIFY(!passesExceed(1)); // no second first tick
}

/// The buttons show what was asked for last; the loop ends at its wake-up all the same.
void tst_WTraceControllerTicks::startRightAfterStopIsLost()
{
    m_controller->setDelay(2000); // time enough for the two clicks on a busy machine
    click(*m_controller, u"btnStart"_s);
    QTRY_COMPARE_WITH_TIMEOUT(passes(), 1, GenerousMsecs);
    click(*m_controller, u"btnStop"_s);
    click(*m_controller, u"btnStart"_s);
    QVERIFY(!button(u"btnStart"_s)->isEnabled());
    QVERIFY(button(u"btnStop"_s)->isEnabled());
    QVERIFY(!QTest::qWaitFor([this] { return passes() > 1; }, 4000));
    QVERIFY(!button(u"btnStart"_s)->isEnabled());

    click(*m_controller, u"btnStop"_s);
    click(*m_controller, u"btnStart"_s);
    QTRY_VERIFY_WITH_TIMEOUT(passes() > 1, GenerousMsecs);
}

/// A pass that takes longer than the delay: its ticks pile up, and each is a full pass in the end.
void tst_WTraceControllerTicks::queuedTicksRunAfterAStop()
{
    m_controller->setDelay(1);
    countTicks();
    bool ticksPiledUp = false;
    qsizetype passesAtStop = 0;
    connect(
        m_controller.get(), &WTraceController::requestPDOValues, this,
        [&] {
            ticksPiledUp = m_ticks.tryAcquire(1 + ManyTicks, GenerousMsecs);
            click(*m_controller, u"btnStop"_s);
            passesAtStop = passes();
        },
        Qt::SingleShotConnection);
    click(*m_controller, u"btnStart"_s);
    QTRY_VERIFY_WITH_TIMEOUT(passesAtStop > 0, 2 * GenerousMsecs);
    QVERIFY(ticksPiledUp);
    QCOMPARE(passesAtStop, 1);
    QTRY_VERIFY_WITH_TIMEOUT(passes() > ManyTicks, GenerousMsecs);
    QCOMPARE(m_log.size(), passes() * 2);
}

void tst_WTraceControllerTicks::endsAtOnceInALongSleep()
{
    m_controller->setDelay(LongSleepMsecs);
    click(*m_controller, u"btnStart"_s);
    QTRY_COMPARE_WITH_TIMEOUT(passes(), 1, GenerousMsecs);
    QElapsedTimer timer;
    timer.start();
    m_controller.reset();
    QVERIFY(timer.elapsed() < GenerousMsecs);
}

void tst_WTraceControllerTicks::endDropsQueuedTicks()
{
    m_controller->setDelay(1);
    countTicks();
    click(*m_controller, u"btnStart"_s);
    QTRY_VERIFY_WITH_TIMEOUT(passes() > 0, GenerousMsecs);
    // From here on no event is worked off: what ticks now stays in the queue.
    const qsizetype seen = passes();
    m_ticks.tryAcquire(m_ticks.available());
    QVERIFY(m_ticks.tryAcquire(ManyTicks, GenerousMsecs));
    m_controller.reset();
    QVERIFY(!passesExceed(seen));
}

QTEST_MAIN(tst_WTraceControllerTicks)
#include "tst_WTraceControllerTicks.moc"
