#include "driver/ControlGeometry.h"
#include "driver/OnWidget.h"
#include "driver/Steps.h"
#include "driver/UserInput.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QPointer>

#include <algorithm>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace driver::steps {

namespace {

constexpr int defaultDragTime = 500;
constexpr int timeBetweenMoves = 20;

Plan atClickPoint(const QString &path, Plan (*input)(QWidget *, QPoint))
{
    return onWidget(path,
                    [=](QWidget *widget) { return input(widget, geometry::clickPoint(widget)); });
}

Plan setChecked(const QString &path, bool on)
{
    return onWidget<QAbstractButton>(path, "button", [on](QAbstractButton *button) {
        if (!button->isCheckable()) {
            return Plan::failure(u"can't be checked"_s);
        }
        if (button->isChecked() == on) {
            return Plan();
        }
        Plan plan = input::click(button, geometry::clickPoint(button));
        plan.attempt([on, guarded = QPointer<QAbstractButton>(button)] {
            if (!guarded || guarded->isChecked() == on) {
                return Progress::done();
            }
            return Progress::failed(on ? u"stays off"_s : u"stays on"_s);
        });
        return plan;
    });
}

// The mouse goes over all values between, at an even pace.
Plan dragMoves(QAbstractSlider *control, int from, int to, int time)
{
    Plan plan;
    const int moves = std::max(1, time / timeBetweenMoves);
    for (int i = 1; i <= moves; ++i) {
        const int value = from + static_cast<int>((static_cast<qint64>(to) - from) * i / moves);
        plan.pause(std::chrono::milliseconds(time / moves));
        plan.then(input::drag(control, geometry::valuePoint(control, value)));
    }
    return plan;
}

Progress standsAt(const QAbstractSlider *control, int value)
{
    const qint64 distance = static_cast<qint64>(control->sliderPosition()) - value;
    if (std::abs(distance) <= geometry::valueTolerance(control)) {
        return Progress::done();
    }
    return Progress::failed(u"stands at %1, not at %2"_s.arg(control->sliderPosition()).arg(value));
}

Plan dragControl(QAbstractSlider *control, const QStringList &options)
{
    if (!geometry::hasValuePoints(control)) {
        return Plan::failure(u"is neither a dial nor a slider"_s);
    }
    const int from = options[0].section(u".."_s, 0, 0).toInt();
    const int to = options[0].section(u".."_s, 1, 1).toInt();
    for (const int value : {from, to}) {
        if (value < control->minimum() || value > control->maximum()) {
            return Plan::failure(
                u"goes from %1 to %2"_s.arg(control->minimum()).arg(control->maximum()));
        }
    }
    const bool hold = options.last() == u"hold"_s;
    const int time = options.value(1).isEmpty() || options[1] == u"hold"_s ? defaultDragTime
                                                                           : options[1].toInt();

    const QPointer<QAbstractSlider> guarded(control);
    const auto expectAt = [guarded](int value) {
        return [guarded, value] {
            return guarded ? standsAt(guarded, value) : Progress::failed(u"has gone"_s);
        };
    };
    // Where a slider stands beforehand, its handle must be for the mouse to take it; a dial follows
    // the mouse at once. Either way it must stand at the first value after the press.
    Plan plan = input::press(control, geometry::valuePoint(control, from));
    plan.attempt(expectAt(from));
    plan.then(dragMoves(control, from, to, time));
    plan.attempt(expectAt(to));
    return hold ? plan : plan.then(input::release(control, geometry::valuePoint(control, to)));
}

} // namespace

Plan click(const QStringList &arguments)
{
    return atClickPoint(arguments[0], input::click);
}

Plan doubleClick(const QStringList &arguments)
{
    return atClickPoint(arguments[0], input::doubleClick);
}

Plan press(const QStringList &arguments)
{
    return atClickPoint(arguments[0], input::press);
}

Plan release(const QStringList &arguments)
{
    return onWidget(arguments[0], [](QWidget *widget) {
        // The button may go up over a control that has meanwhile been disabled or hidden.
        const auto *control = qobject_cast<QAbstractSlider *>(widget);
        const bool held = control && geometry::hasValuePoints(control);
        return input::release(widget,
                              held ? geometry::valuePoint(control, control->sliderPosition())
                                   : geometry::clickPoint(widget));
    });
}

Plan wheel(const QStringList &arguments)
{
    return onWidget(arguments[0], [&](QWidget *widget) {
        return input::wheel(widget, geometry::clickPoint(widget), arguments[1].toInt());
    });
}

Plan check(const QStringList &arguments)
{
    return setChecked(arguments[0], true);
}

Plan uncheck(const QStringList &arguments)
{
    return setChecked(arguments[0], false);
}

Plan drag(const QStringList &arguments)
{
    return onWidget<QAbstractSlider>(arguments[0], "dial or slider", [&](QAbstractSlider *control) {
        return dragControl(control, arguments.mid(1));
    });
}

} // namespace driver::steps
