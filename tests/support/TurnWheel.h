#pragma once

#include <QApplication>
#include <QTest>
#include <QWheelEvent>
#include <QtTest/qtestspontaneevent.h>

/// Turns the mouse wheel by one step over the middle of @p widget, upwards if @p up. The event
/// comes as from the window system, so that the toolkit hands out the focus by it where a widget
/// asks for that.
inline void turnWheel(QWidget *widget, bool up = true)
{
    const QPointF pos = widget->rect().center();
    QWheelEvent event(pos, widget->mapToGlobal(pos), QPoint(), QPoint(0, up ? 120 : -120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(widget, &event);
}
