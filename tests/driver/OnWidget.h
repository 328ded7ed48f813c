#pragma once

#include "driver/Plan.h"
#include "driver/WidgetFinder.h"

#include <QString>
#include <QWidget>

namespace driver {

/// The plan that `plan(widget)` makes for the widget at `path`, or the failure to find it as a `T`.
template <typename T, typename MakePlan>
Plan onWidget(const QString &path, const char *kind, MakePlan plan)
{
    const Found found = WidgetFinder::find(path);
    if (!found.widget) {
        return Plan::failure(found.problem);
    }
    if (T *widget = qobject_cast<T *>(found.widget)) {
        return plan(widget);
    }
    return Plan::failure(QStringLiteral("is a %1, not a %2")
                             .arg(QString::fromLatin1(found.widget->metaObject()->className()),
                                  QString::fromLatin1(kind)));
}

/// As above, for a widget of any kind.
template <typename MakePlan>
Plan onWidget(const QString &path, MakePlan plan)
{
    return onWidget<QWidget>(path, "widget", plan);
}

} // namespace driver
