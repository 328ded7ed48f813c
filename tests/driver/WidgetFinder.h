#pragma once

#include <QString>

class QWidget;

namespace driver {

/// What a search has brought.
struct Found
{
    /// The widget; null if there is none or more than one.
    QWidget *widget = nullptr;
    /// Why there is no widget, as a predicate; empty if there is one.
    QString problem;
    /// Whether more than one widget fits.
    bool ambiguous = false;
};

/// Finds widgets in the windows that a user sees.
class WidgetFinder
{
public:
    /// The one widget in a visible window that `path` (see WidgetPath) stands for. The widget may
    /// itself be hidden, say on a page that isn't in front. What fits in the modal dialog that is
    /// open goes before what fits in the windows behind it.
    static Found find(const QString &path);

    /// The names of `widget` and its named ancestors, from the window on, with slashes between.
    static QString pathOf(const QWidget *widget);

    /// The main window of the program; null as long as none is visible.
    static QWidget *mainWindow();

    /// The window that a user works in: the modal dialog that is open, or else the active window,
    /// or else the main window. Null as long as none is visible.
    static QWidget *frontWindow();
};

} // namespace driver
