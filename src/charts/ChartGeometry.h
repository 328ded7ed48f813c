#pragma once

#include <QRect>

/// Where the parts of a chart lie in its widget, and which height stands for which value.
///
/// Values and heights are single-precision, positions on the screen are truncated toward zero. No
/// value overflows: what would lie far outside of the widget is put just far enough outside.
class ChartGeometry
{
public:
    /// A value axis of this many parts.
    static constexpr int Divisions = 10;
    /// The value axis stands here; its labels are to the left of it.
    static constexpr int AxisX = 100;
    /// The value axis ends here, and no point lies above it.
    static constexpr int TopY = 20;

    /// @param widget rectangle of the widget
    /// @param minValue value at the bottom of the axis
    /// @param maxValue value at its top; may be below @p minValue, which turns the axis over
    ChartGeometry(const QRect &widget, int minValue, int maxValue);

    /// Width of the widget less 1, in pixels.
    int right() const { return m_right; }
    /// Height of the widget less 1, in pixels.
    int bottom() const { return m_bottom; }
    /// The number of points that a curve has room for; below 1 if there is no room.
    int plotWidth() const { return m_right - 119; }
    /// Height of the value axis in pixels; below 1 if there is no room.
    int plotHeight() const { return m_bottom - 39; }
    /// The time axis lies here.
    int baseY() const { return m_bottom - 14; }
    /// The time axis ends here.
    int rightEnd() const { return plotWidth() + 100; }
    /// The newest point lies here.
    int newestX() const { return plotWidth() + 98; }

    /// False if top and bottom of the axis are the same value: no height stands for a value then.
    bool hasScale() const { return m_perDivision != 0; }
    /// The value at the upper end of division @p i, 0 for the bottom of the axis.
    float divisionValue(int i) const;
    /// The height of that value.
    int divisionY(int i) const;
    /// The height of the value zero. It may lie outside of the plot, and of the widget.
    int zeroY() const;
    /// The height of @p value, or -1 if a point there would lie outside of the plot.
    int pointY(float value) const;

private:
    int m_right;
    int m_bottom;
    float m_minValue;
    float m_perDivision;
    float m_pixelsPerUnit;
};
