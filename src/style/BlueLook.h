#pragma once

#include <QPalette>
#include <QString>

class QColor;

/// The dark blue look as values: nothing of the application changes by making one.
struct BlueLook
{
    QPalette palette;
    /// The rules for all kinds of widgets. It refers to roles of the palette, and to pictures under
    /// the resource paths.
    QString styleSheet;
};

/// Composes the look on the ground of the application's palette.
/// @param window background of windows
/// @param mid the palette's role Mid, a second background
/// @param folder where pictures outside the resources are looked for, with a slash at its end
BlueLook composeBlueLook(const QColor &window, const QColor &mid, const QString &folder);
