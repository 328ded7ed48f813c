#pragma once

#include "driver/Plan.h"
#include "driver/Script.h"

#include <QDeadlineTimer>
#include <QObject>
#include <QTimer>

#include <deque>

namespace driver {

/// Carries out a script from the event loop, one action per tick of a timer, and reports each step.
///
/// An action may open a modal dialog, and then returns only when that is closed. Since the timer is
/// started again before each action, the script goes on inside the dialog's own event loop.
class StepRunner : public QObject
{
    Q_OBJECT

public:
    explicit StepRunner(const Script &script, QObject *parent = nullptr);

    /// Waits for the main window and then carries out the steps.
    void start();

private:
    void tick();
    void carryOut();
    bool beginStep();
    void settle(const Action &action, Progress &progress);
    void finishStep();
    void fail(const QString &reason);
    void handleAboutToQuit();

    Script m_script;
    QTimer m_timer;
    /// Step that the plan belongs to; -1 while waiting for the window.
    qsizetype m_index = -1;
    bool m_stepOpen = true;
    /// Whether a tick has passed since the last step ended.
    bool m_rested = false;
    bool m_ended = false;
    std::deque<Action> m_plan;
    /// How long the first action of the plan may still take; set at its first attempt.
    QDeadlineTimer m_deadline{QDeadlineTimer::Forever};
    bool m_firstAttempt = true;
    /// Depth of the event loop that the innermost action in progress was called from; 0 if none is.
    int m_actingLevel = 0;
    /// Number of actions so far, by which an action sees that others came while it was in progress.
    quint64 m_actionCount = 0;
};

} // namespace driver
