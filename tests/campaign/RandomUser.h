#pragma once

#include "campaign/Random.h"

#include <QString>
#include <QWidget>

#include <functional>

/// A user without a plan: clicks, keys, wheel and numbers on whatever the program shows, menus and
/// dialogs included.
class RandomUser
{
public:
    /// File dialogs get names of files in the current folder only.
    explicit RandomUser(Random &random)
        : m_random(random)
    {
    }

    /// Does something to the window in front. @p told gets it in one line before it is done, since
    /// it may open a dialog and so return much later.
    void act(QWidget *mainWindow, const std::function<void(const QString &)> &told);
    /// Leaves the pop-up or dialog in front. False if there is none.
    static bool leave();

private:
    using Told = std::function<void(const QString &)>;

    void actOnPopup(QWidget *popup, const Told &told);
    void actOnFileDialog(QWidget *dialog, const Told &told);
    void actOnWindow(QWidget *window, const Told &told);
    void actOn(QWidget *widget, const Told &told);
    void pressKey(QWidget *widget, const Told &told);
    void turnWheel(QWidget *widget, const Told &told);
    QPoint somewhereOn(const QWidget *widget);

    Random &m_random;
};
