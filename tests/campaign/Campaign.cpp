#include "campaign/Campaign.h"

#include "app/MainWindow.h"

#include <QApplication>
#include <QScopedValueRollback>

#include <chrono>
#include <condition_variable>
#include <csignal>
#include <cstdio>
#include <ctime>
#include <mutex>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr int StepsPerWindow = 3000;
/// A step that spins shows by its CPU time, one that waits for ever by the clock: on a machine that
/// is busy with other things, any step can take long.
constexpr auto LongestSpin = 60s;
constexpr auto LongestWait = 30min;
/// The log starts over behind so many bytes: only its end is of use.
constexpr qint64 LogLimit = 4'000'000;

std::chrono::nanoseconds processCpuTime()
{
    timespec time{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

} // namespace

Campaign::Campaign(unsigned seed, int steps, const QString &log)
    : m_random(seed)
    , m_user(m_random)
    , m_log(log)
    , m_stepsLeft(steps)
    , m_mainThread(::pthread_self())
{
    if (!m_log.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered)) {
        qFatal("%s can't be written", qPrintable(log));
    }
    renewWindow();
    m_watchdog = std::jthread([this](const std::stop_token &stop) { watch(stop); });
}

Campaign::~Campaign() = default;

void Campaign::run()
{
    QMetaObject::invokeMethod(this, &Campaign::step, Qt::QueuedConnection);
    QApplication::exec();
}

void Campaign::step()
{
    ++m_stepsDone;
    const QScopedValueRollback<int> nesting(m_nested, m_nested + 1);
    const bool isOver = m_stepsLeft <= 0;
    const bool isNewWindowDue = m_stepsOfWindow >= StepsPerWindow || !m_window->isVisible();
    if (isOver || isNewWindowDue) {
        // The steps that wait for a dialog have to end first, one after the other.
        if (RandomUser::leave() || m_nested > 1) {
            QMetaObject::invokeMethod(this, &Campaign::step, Qt::QueuedConnection);
            return;
        }
        if (isOver) {
            m_window.reset();
            QApplication::quit();
            return;
        }
        renewWindow();
    }
    QMetaObject::invokeMethod(this, &Campaign::step, Qt::QueuedConnection);
    --m_stepsLeft;
    ++m_stepsOfWindow;
    if (m_random.oneIn(25)) {
        tell(m_world.happen(m_random));
    } else {
        m_user.act(m_window.get(), [this](const QString &what) { tell(what); });
    }
}

void Campaign::tell(const QString &what)
{
    if (m_log.pos() > LogLimit) {
        m_log.resize(0);
        m_log.seek(0);
    }
    m_log.write(u"%1 %2\n"_s.arg(m_stepsLeft).arg(what).toUtf8());
}

void Campaign::renewWindow()
{
    tell(u"a new window"_s);
    m_window = std::make_unique<MainWindow>();
    m_window->resize(1000, 500);
    m_window->show();
    m_stepsOfWindow = 0;
}

void Campaign::watch(const std::stop_token &stop)
{
    // Not by sleeping, which takes no time in this program.
    std::mutex mutex;
    std::unique_lock lock(mutex);
    std::condition_variable_any never;
    const auto pause = [&](auto time) { never.wait_for(lock, stop, time, [] { return false; }); };

    int lastDone = -1;
    auto lastProgress = std::chrono::steady_clock::now();
    auto cpuTimeAtProgress = processCpuTime();
    while (!stop.stop_requested()) {
        pause(100ms);
        const int done = m_stepsDone;
        const auto now = std::chrono::steady_clock::now();
        if (done != lastDone) {
            lastDone = done;
            lastProgress = now;
            cpuTimeAtProgress = processCpuTime();
        } else if (now - lastProgress > LongestWait
                   || processCpuTime() - cpuTimeAtProgress > LongestSpin) {
            std::fputs("campaign: a step hangs\n", stderr);
            ::pthread_kill(m_mainThread, SIGABRT); // so that the stack that is shown is its own
            pause(LongestWait);
        }
    }
}
