#include "driver/Plan.h"

#include <QDeadlineTimer>

#include <iterator>
#include <optional>

using namespace Qt::StringLiterals;

namespace driver {

Plan Plan::failure(const QString &reason)
{
    Plan plan;
    plan.attempt([reason] { return Progress::failed(reason); });
    return plan;
}

Plan &Plan::act(std::function<void()> action)
{
    return attempt([action = std::move(action)] {
        action();
        return Progress::done();
    });
}

Plan &Plan::attempt(std::function<Progress()> action, std::chrono::milliseconds limit)
{
    m_actions.push_back({std::move(action), limit});
    return *this;
}

Plan &Plan::pause(std::chrono::milliseconds time)
{
    // The time runs from the first attempt on, not from the making of the plan.
    const auto pauseOnce = [time, end = std::optional<QDeadlineTimer>()]() mutable {
        if (!end) {
            end.emplace(time, Qt::PreciseTimer);
        }
        return end->hasExpired() ? Progress::done() : Progress::notYet(u"pauses"_s);
    };
    return attempt(pauseOnce, time + reactionLimit);
}

Plan &Plan::then(Plan other)
{
    m_actions.insert(m_actions.end(), std::make_move_iterator(other.m_actions.begin()),
                     std::make_move_iterator(other.m_actions.end()));
    return *this;
}

} // namespace driver
