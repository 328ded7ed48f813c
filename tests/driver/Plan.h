#pragma once

#include <QString>

#include <chrono>
#include <functional>
#include <utility>
#include <vector>

namespace driver {

class Progress;

/// How long an action may take that the program should answer at once (a list that opens, a window
/// that comes to the front). Generous, since a loaded machine is no failure of the program.
inline constexpr std::chrono::milliseconds reactionLimit{10000};

/// One thing to do or to wait for. It never blocks: what isn't there yet is tried again later.
struct Action
{
    std::function<Progress()> attempt;
    /// How long `attempt` may answer "not yet" before the step has failed.
    std::chrono::milliseconds limit{reactionLimit};
};

/// What a step consists of: actions that are carried out one by one, each from the event loop.
class Plan
{
public:
    /// The plan of a step that can't be carried out, `reason` being a predicate of its subject
    /// ("is disabled").
    static Plan failure(const QString &reason);

    /// Appends something that is simply done.
    Plan &act(std::function<void()> action);
    /// Appends something that is tried until it is done, has failed, or `limit` is over.
    Plan &attempt(std::function<Progress()> action,
                  std::chrono::milliseconds limit = reactionLimit);
    /// Appends a pause.
    Plan &pause(std::chrono::milliseconds time);
    /// Appends the actions of another plan.
    Plan &then(Plan other);

    /// The actions, in order.
    std::vector<Action> &actions() { return m_actions; }

private:
    std::vector<Action> m_actions;
};

/// What became of an attempt.
class Progress
{
public:
    enum class State { Done, NotYet, Failed };

    static Progress done() { return Progress(State::Done, {}, {}); }
    /// Done, and `plan` comes before what is still to be done in the step.
    static Progress doneThen(Plan plan) { return Progress(State::Done, {}, std::move(plan)); }
    /// To be tried again; `reason` is told if that goes on for too long.
    static Progress notYet(const QString &reason) { return Progress(State::NotYet, reason, {}); }
    static Progress failed(const QString &reason) { return Progress(State::Failed, reason, {}); }

    State state() const { return m_state; }
    QString reason() const { return m_reason; }
    Plan &plan() { return m_plan; }

private:
    Progress(State state, const QString &reason, Plan plan)
        : m_state(state)
        , m_reason(reason)
        , m_plan(std::move(plan))
    {
    }

    State m_state;
    QString m_reason;
    Plan m_plan;
};

} // namespace driver
