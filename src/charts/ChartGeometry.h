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
    /// From the time axis to the bottom edge, in pixels.
    static constexpr int BottomMargin = 14;
    /// From the end of the time axis to the right edge, in pixels.
    static constexpr int RightMargin = 19;
    /// The value axis goes on for this many pixels above its uppermost division.
    static constexpr int AxisOverhang = 5;
    /// From the newest point to the end of the time axis, in pixels. The oldest point of a curve
    /// that fills its room then lies 1 px to the left of the value axis.
    static constexpr int NewestPointMargin = 2;

    /// @param widget rectangle of the widget
    /// @param minValue value at the bottom of the axis
    /// @param maxValue value at its top; may be below @p minValue, which turns the axis over
    ChartGeometry(const QRect &widget, int minValue, int maxValue);

    /// Width of the widget less 1, in pixels.
    int right() const { return m_right; }
    /// Height of the widget less 1, in pixels.
    int bottom() const { return m_bottom; }
    /// The number of points that a curve has room for; below 1 if there is no room.
    int plotWidth() const { return rightEnd() - AxisX; }
    /// Height of all divisions in pixels; below 1 if there is no room.
    int plotHeight() const { return baseY() - TopY - AxisOverhang; }
    /// The time axis lies here.
    int baseY() const { return m_bottom - BottomMargin; }
    /// The time axis ends here.
    int rightEnd() const { return m_right - RightMargin; }
    /// The newest point lies here.
    int newestX() const { return rightEnd() - NewestPointMargin; }

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
