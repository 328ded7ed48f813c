#pragma once

#include <QPoint>
#include <QRect>

class QAbstractSlider;
class QWidget;

namespace driver {

/// Where the hand must go on a control, in its coordinates. Styles decide that, so it is asked of
/// the style wherever it tells.
namespace geometry {

/// The part of `widget` that its ancestors don't cut off; what covers it is left out of account.
QRect visibleRect(const QWidget *widget);

/// Where a click uses `widget`: the box of a check box, the arrow of a combo box, and the middle of
/// the visible part of everything else.
QPoint clickPoint(const QWidget *widget);

/// Whether `control` is of a kind that valuePoint() knows: a dial or a slider.
bool hasValuePoints(const QWidget *control);

/// Where the mouse must be on a dial, or the middle of the handle of a slider, for `value`.
QPoint valuePoint(const QAbstractSlider *control, int value);

/// How far the value at the nearest pixel may be from the one wanted.
int valueTolerance(const QAbstractSlider *control);

} // namespace geometry

} // namespace driver
