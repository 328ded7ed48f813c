#include "driver/OnWidget.h"
#include "driver/Steps.h"

#include <QCoreApplication>
#include <QPointer>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace driver::steps {

Plan resize(const QStringList &arguments)
{
    QWidget *window = WidgetFinder::frontWindow();
    if (!window) {
        return Plan::failure(u"no window is shown"_s);
    }
    const QSize size(arguments[0].toInt(), arguments[1].toInt());
    Plan plan;
    plan.act([guarded = QPointer<QWidget>(window), size] {
        if (guarded) {
            guarded->resize(size);
        }
    });
    plan.attempt(
        [guarded = QPointer<QWidget>(window), size] {
            if (!guarded) {
                return Progress::failed(u"the window has gone"_s);
            }
            if (guarded->size() == size && guarded->windowHandle()->size() == size) {
                return Progress::done();
            }
            return Progress::notYet(
                u"the window is %1 by %2"_s.arg(guarded->width()).arg(guarded->height()));
        },
        std::chrono::seconds(2));
    return plan;
}

Plan close(const QStringList &)
{
    QWidget *window = WidgetFinder::frontWindow();
    if (!window || !window->windowHandle()) {
        return Plan::failure(u"no window is shown"_s);
    }
    Plan plan;
    // By way of the platform's window, where the close box reports, too.
    return plan.act([guarded = QPointer<QWindow>(window->windowHandle())] {
        if (guarded) {
            guarded->close();
        }
    });
}

Plan quit(const QStringList &)
{
    Plan plan;
    return plan.act([] { QCoreApplication::exit(0); });
}

} // namespace driver::steps
