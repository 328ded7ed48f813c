#include "driver/WidgetFinder.h"

#include "driver/NearMatches.h"
#include "driver/WidgetPath.h"

#include <QApplication>
#include <QMainWindow>

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace driver {

namespace {

QWidgetList visibleWidgets()
{
    QWidgetList widgets = QApplication::allWidgets();
    widgets.removeIf([](const QWidget *widget) { return !widget->window()->isVisible(); });
    return widgets;
}

bool isInner(const QString &name)
{
    return name.startsWith(u"qt_"_s);
}

// The toolkit's own inner widgets only make a path longer, unless nothing else tells two apart.
QString path(const QWidget *widget, bool withInner)
{
    QStringList names;
    for (const QWidget *each = widget; each; each = each->parentWidget()) {
        const QString name = each->objectName();
        if (!name.isEmpty() && (withInner || !isInner(name))) {
            names.prepend(name);
        } else if (each == widget) {
            names.prepend(u':' + QString::fromLatin1(each->metaObject()->className()));
        }
    }
    return names.join(u'/');
}

QStringList paths(const QWidgetList &widgets, bool withInner)
{
    QStringList all;
    for (const QWidget *widget : widgets) {
        all.append(path(widget, withInner));
    }
    all.sort();
    return all;
}

QStringList sortedPaths(const QWidgetList &widgets)
{
    const QStringList shortPaths = paths(widgets, false);
    const bool differ =
        std::adjacent_find(shortPaths.begin(), shortPaths.end()) == shortPaths.end();
    return differ ? shortPaths : paths(widgets, true);
}

QString missing(const WidgetPath &wanted, const QWidgetList &widgets)
{
    QWidgetList elsewhere;
    QStringList names;
    for (QWidget *widget : widgets) {
        if (wanted.matchesLast(widget)) {
            elsewhere.append(widget);
        }
        names.append(widget->objectName());
        names.append(shownText(widget));
    }
    // Most often it is the panel that is wrong, not the control.
    const QStringList near =
        elsewhere.isEmpty() ? nearMatches(wanted.lastWord(), names) : sortedPaths(elsewhere);
    if (near.isEmpty()) {
        return u"no visible window has such a widget"_s;
    }
    return u"no visible window has such a widget; near it: %1"_s.arg(near.join(u", "_s));
}

bool isOrdinaryWindow(const QWidget *widget)
{
    const Qt::WindowType type = widget->windowType();
    return widget->isVisible() && (type == Qt::Window || type == Qt::Dialog);
}

} // namespace

Found WidgetFinder::find(const QString &path)
{
    const WidgetPath wanted(path);
    const QWidgetList widgets = visibleWidgets();
    QWidgetList matches;
    std::copy_if(widgets.begin(), widgets.end(), std::back_inserter(matches),
                 [&](const QWidget *widget) { return wanted.matches(widget); });

    const QWidget *modal = QApplication::activeModalWidget();
    const auto isBehind = [&](const QWidget *widget) { return widget->window() != modal; };
    if (modal && !std::all_of(matches.begin(), matches.end(), isBehind)) {
        matches.removeIf(isBehind);
    }

    if (matches.isEmpty()) {
        return {nullptr, missing(wanted, widgets), false};
    }
    if (matches.size() > 1) {
        return {nullptr, u"is ambiguous: %1"_s.arg(sortedPaths(matches).join(u", "_s)), true};
    }
    return {matches.first(), {}, false};
}

QString WidgetFinder::pathOf(const QWidget *widget)
{
    return path(widget, false);
}

QWidget *WidgetFinder::mainWindow()
{
    QWidget *other = nullptr;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        if (!isOrdinaryWindow(window)) {
            continue;
        }
        if (qobject_cast<QMainWindow *>(window)) {
            return window;
        }
        if (!other || !window->parentWidget()) {
            other = window;
        }
    }
    return other;
}

QWidget *WidgetFinder::frontWindow()
{
    if (QWidget *modal = QApplication::activeModalWidget()) {
        return modal;
    }
    QWidget *active = QApplication::activeWindow();
    return active && isOrdinaryWindow(active) ? active : mainWindow();
}

} // namespace driver
