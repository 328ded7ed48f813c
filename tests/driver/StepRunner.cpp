#include "driver/StepRunner.h"

#include "driver/Language.h"
#include "driver/Report.h"
#include "driver/WidgetFinder.h"

#include <QApplication>
#include <QThread>
#include <QWidget>
#include <QWindow>

#include <iterator>
#include <utility>

using namespace Qt::StringLiterals;

namespace driver {

namespace {

constexpr std::chrono::milliseconds tickInterval{5};
constexpr std::chrono::seconds startLimit{30};

Progress awaitMainWindow()
{
    const QWidget *window = WidgetFinder::mainWindow();
    const bool shown = window && window->windowHandle() && window->windowHandle()->isExposed();
    return shown ? Progress::done() : Progress::notYet(u"the program shows no window"_s);
}

} // namespace

StepRunner::StepRunner(const Script &script, QObject *parent)
    : QObject(parent)
    , m_script(script)
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &StepRunner::tick);
    connect(qApp, &QCoreApplication::aboutToQuit, this, &StepRunner::handleAboutToQuit);
}

void StepRunner::start()
{
    m_plan.push_back({awaitMainWindow, startLimit});
    m_timer.start(tickInterval);
}

void StepRunner::tick()
{
    if (m_ended) {
        return;
    }
    m_timer.start(tickInterval);
    // The toolkit's test functions handle pending events themselves, this timer's among them. Only
    // a loop that is deeper than that of the action in progress is a dialog's.
    if (QThread::currentThread()->loopLevel() > m_actingLevel) {
        carryOut();
    }
}

void StepRunner::carryOut()
{
    if (m_plan.empty()) {
        // The action that has opened this loop was the last one of its step.
        finishStep();
        // A program that the step has ended needs one round of its event loop to notice.
        if (!std::exchange(m_rested, true) || !beginStep()) {
            return;
        }
    }
    const quint64 number = ++m_actionCount;
    const Action action = std::move(m_plan.front());
    m_plan.pop_front();
    if (std::exchange(m_firstAttempt, false)) {
        m_deadline.setRemainingTime(action.limit, Qt::PreciseTimer);
    }

    const int outerLevel = std::exchange(m_actingLevel, QThread::currentThread()->loopLevel());
    Progress progress = action.attempt();
    m_actingLevel = outerLevel;
    // While a dialog was open, the script has gone on, and this action has long been done.
    if (number == m_actionCount) {
        settle(action, progress);
    }
}

bool StepRunner::beginStep()
{
    if (++m_index >= m_script.size()) {
        m_ended = true;
        report::done(m_script.size());
        return false;
    }
    m_stepOpen = true;
    m_firstAttempt = true;
    const Step &step = m_script[m_index];
    Plan plan = step.verb->plan(step.arguments);
    std::vector<Action> &actions = plan.actions();
    m_plan.assign(std::make_move_iterator(actions.begin()), std::make_move_iterator(actions.end()));
    if (m_plan.empty()) {
        finishStep();
    }
    return !m_plan.empty();
}

void StepRunner::settle(const Action &action, Progress &progress)
{
    switch (progress.state()) {
    case Progress::State::Done: {
        std::vector<Action> &next = progress.plan().actions();
        m_plan.insert(m_plan.begin(), std::make_move_iterator(next.begin()),
                      std::make_move_iterator(next.end()));
        m_firstAttempt = true;
        if (m_plan.empty()) {
            finishStep();
        }
        break;
    }
    case Progress::State::NotYet:
        if (m_deadline.hasExpired()) {
            fail(u"%1, after %2 s"_s.arg(progress.reason())
                     .arg(static_cast<double>(action.limit.count()) / 1000));
        } else {
            m_plan.push_front(action);
        }
        break;
    case Progress::State::Failed:
        fail(progress.reason());
        break;
    }
}

void StepRunner::finishStep()
{
    if (!std::exchange(m_stepOpen, false)) {
        return;
    }
    m_rested = false;
    if (m_index >= 0) {
        report::ok(m_script[m_index]);
    }
}

void StepRunner::fail(const QString &reason)
{
    m_ended = true;
    const Step step = m_script.value(m_index);
    report::failed({step.line, m_index < 0 ? u"start"_s : step.text, reason});
    report::endProgram();
}

void StepRunner::handleAboutToQuit()
{
    if (std::exchange(m_ended, true)) {
        return;
    }
    // Cut off is the step that is still open, or else the next one.
    if (!m_stepOpen && ++m_index == m_script.size()) {
        report::done(m_script.size());
        return;
    }
    const Step step = m_script.value(m_index);
    report::failed(
        {step.line, m_index < 0 ? u"start"_s : step.text, u"the program ended before"_s});
    report::endProgramNow();
}

} // namespace driver
