#include "driver/OnWidget.h"
#include "driver/Steps.h"
#include "driver/UserInput.h"

#include <QAbstractSpinBox>
#include <QKeySequence>
#include <QLineEdit>
#include <QPointer>
#include <QVariant>

using namespace Qt::StringLiterals;

namespace driver::steps {

namespace {

// A spin box shows more than its number, say a unit.
QString shownValue(const QWidget *control)
{
    const char *property = control->inherits("QAbstractSpinBox") ? "value" : "text";
    return control->property(property).toString();
}

// Whether `control` shows what was typed: the same number, however it is written, or the same text.
bool shows(const QWidget *control, const QString &typed)
{
    const QString shown = shownValue(control);
    if (shown == typed) {
        return true;
    }
    bool shownIsNumber = false;
    bool typedIsNumber = false;
    const double shownNumber = shown.toDouble(&shownIsNumber);
    const double typedNumber = control->locale().toDouble(typed, &typedIsNumber);
    return shownIsNumber && typedIsNumber && qFuzzyCompare(1 + shownNumber, 1 + typedNumber);
}

} // namespace

Plan set(const QStringList &arguments)
{
    return onWidget(arguments[0], [&](QWidget *widget) {
        auto *edit = widget->inherits("QAbstractSpinBox") ? widget->findChild<QLineEdit *>()
                                                          : qobject_cast<QLineEdit *>(widget);
        if (!edit) {
            return Plan::failure(u"is a %1, not a spin box or line edit"_s.arg(
                QString::fromLatin1(widget->metaObject()->className())));
        }
        if (edit->isReadOnly()) {
            return Plan::failure(u"is read-only"_s);
        }
        Plan plan = input::focusByClick(edit);
        plan.then(input::keys(edit, QKeySequence(Qt::CTRL | Qt::Key_A)));
        plan.then(input::text(edit, arguments[1]));
        // Not the return key: in a dialog that would press the default button, too.
        plan.then(input::keys(edit, QKeySequence(Qt::Key_Tab)));
        plan.attempt([guarded = QPointer<QWidget>(widget), wanted = arguments[1]] {
            if (!guarded || shows(guarded, wanted)) {
                return Progress::done();
            }
            return Progress::failed(u"shows \"%1\""_s.arg(shownValue(guarded)));
        });
        return plan;
    });
}

Plan type(const QStringList &arguments)
{
    return onWidget(arguments[0], [&](QWidget *widget) {
        return input::focusByClick(widget).then(input::text(widget, arguments[1]));
    });
}

Plan key(const QStringList &arguments)
{
    const QKeySequence keys = QKeySequence::fromString(arguments[0]);
    if (arguments.size() == 1) {
        QWidget *front = WidgetFinder::frontWindow();
        return front ? input::keys(front, keys) : Plan::failure(u"no window is shown"_s);
    }
    return onWidget(arguments[2], [&](QWidget *widget) {
        return input::focusByTab(widget).then(input::keys(widget, keys));
    });
}

} // namespace driver::steps
