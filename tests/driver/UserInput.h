#pragma once

#include "driver/Plan.h"

#include <QPoint>

class QKeySequence;
class QWidget;

namespace driver {

/// What a user does with mouse and keyboard. The events go to the window, as those of the window
/// system do, so that pop-ups, modal dialogs, grabs, focus and shortcuts have their usual effect.
///
/// Plans begin by looking whether a user could do it; they fail with the obstacle as reason.
/// Points are in the coordinates of the widget.
namespace input {

/// What keeps a user from using the mouse on `widget` at `point`, as a predicate; empty if nothing.
QString obstacle(const QWidget *widget, QPoint point);

/// Brings the window to the front, if need be, and moves the mouse there.
Plan moveTo(QWidget *widget, QPoint point);
/// moveTo(), then the left button goes down.
Plan press(QWidget *widget, QPoint point);
/// Moves the mouse with the button down; no obstacle stops it.
Plan drag(QWidget *widget, QPoint point);
/// The left button goes up at `point`; no obstacle stops it.
Plan release(QWidget *widget, QPoint point);
/// press() and release().
Plan click(QWidget *widget, QPoint point);
/// moveTo(), then two clicks in quick succession.
Plan doubleClick(QWidget *widget, QPoint point);
/// moveTo(), then the wheel is turned, away from the user if `notches` is positive.
Plan wheel(QWidget *widget, QPoint point, int notches);

/// Clicks on `widget` unless it has the keyboard focus, and waits for the focus.
Plan focusByClick(QWidget *widget);
/// Gives `widget` the focus as the tabulator key would, and waits for it.
Plan focusByTab(QWidget *widget);
/// Key combinations one after the other, for the pop-up that is open or else for the window of
/// `widget`; what has the focus in it gets them.
Plan keys(QWidget *widget, const QKeySequence &sequence);
/// As keys(), for the characters of a text.
Plan text(QWidget *widget, const QString &text);

} // namespace input

} // namespace driver
