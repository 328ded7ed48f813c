#include "driver/Condition.h"
#include "driver/OnWidget.h"
#include "driver/Steps.h"

#include <QDir>
#include <QFileInfo>
#include <QPixmap>

using namespace Qt::StringLiterals;

namespace driver::steps {

namespace {

constexpr double defaultWaitSeconds = 10;

std::chrono::milliseconds waitTime(const QString &seconds)
{
    const double time = seconds.isEmpty() ? defaultWaitSeconds : seconds.toDouble();
    return std::chrono::milliseconds(static_cast<qint64>(time * 1000));
}

Condition conditionFrom(const QStringList &arguments)
{
    return Condition(arguments[1], arguments[2], arguments[3]);
}

Plan savePicture(QWidget *widget, const QString &file)
{
    if (!widget->isVisible()) {
        return Plan::failure(u"is hidden"_s);
    }
    // At the window's own resolution, as the screen would show it.
    const QPixmap picture = widget->grab();
    QDir().mkpath(QFileInfo(file).path());
    if (!picture.save(file)) {
        return Plan::failure(u"%1 can't be written"_s.arg(file));
    }
    return {};
}

} // namespace

Plan wait(const QStringList &arguments)
{
    Plan plan;
    const auto holds = [path = arguments[0], condition = conditionFrom(arguments)] {
        const Found found = WidgetFinder::find(path);
        if (found.ambiguous) {
            return Progress::failed(found.problem);
        }
        if (!found.widget) {
            return Progress::notYet(found.problem);
        }
        const QString mismatch = condition.mismatch(found.widget);
        if (mismatch.isEmpty()) {
            return Progress::done();
        }
        return condition.appliesTo(found.widget) ? Progress::notYet(mismatch)
                                                 : Progress::failed(mismatch);
    };
    return plan.attempt(holds, waitTime(arguments.value(4)));
}

Plan expect(const QStringList &arguments)
{
    return onWidget(arguments[0], [&](QWidget *widget) {
        const QString mismatch = conditionFrom(arguments).mismatch(widget);
        return mismatch.isEmpty() ? Plan() : Plan::failure(mismatch);
    });
}

Plan gone(const QStringList &arguments)
{
    Plan plan;
    const auto isGone = [path = arguments[0]] {
        const Found found = WidgetFinder::find(path);
        const bool visible = found.ambiguous || (found.widget && found.widget->isVisible());
        return visible ? Progress::notYet(u"is still there"_s) : Progress::done();
    };
    return plan.attempt(isGone, waitTime(arguments.value(1)));
}

Plan await(const QStringList &arguments)
{
    Plan plan;
    const auto isThere = [file = arguments[0]] {
        return QFileInfo::exists(file) ? Progress::done() : Progress::notYet(u"isn't there"_s);
    };
    return plan.attempt(isThere, waitTime(arguments.value(1)));
}

Plan screenshot(const QStringList &arguments)
{
    const QString file = arguments.last();
    if (arguments.size() == 2) {
        return onWidget(arguments[0], [&](QWidget *widget) { return savePicture(widget, file); });
    }
    QWidget *front = WidgetFinder::frontWindow();
    return front ? savePicture(front, file) : Plan::failure(u"no window is shown"_s);
}

Plan print(const QStringList &)
{
    return {};
}

Plan sleep(const QStringList &arguments)
{
    Plan plan;
    return plan.pause(std::chrono::milliseconds(arguments[0].toInt()));
}

} // namespace driver::steps
