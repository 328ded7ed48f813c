#include "charts/ChartGeometry.h"

#include <algorithm>

namespace {

/// In pixels. Nothing beyond this distance is ever seen, and paint engines cope with it.
constexpr float FarOutside = 1e6F;

int toPixel(float position)
{
    return static_cast<int>(std::clamp(position, -FarOutside, FarOutside));
}

} // namespace

ChartGeometry::ChartGeometry(const QRect &widget, int minValue, int maxValue)
    : m_right(widget.width() - 1)
    , m_bottom(widget.height() - 1)
    , m_minValue(static_cast<float>(minValue))
    // The range of two ints may be wider than an int.
    , m_perDivision(
          static_cast<float>((static_cast<double>(maxValue) - static_cast<double>(minValue))
                             / static_cast<double>(Divisions)))
    , m_pixelsPerUnit(hasScale() ? static_cast<float>(plotHeight())
                              / (static_cast<float>(Divisions) * m_perDivision)
                                 : 0)
{
}

float ChartGeometry::divisionValue(int i) const
{
    return m_minValue + m_perDivision * static_cast<float>(i);
}

int ChartGeometry::divisionY(int i) const
{
    return toPixel(static_cast<float>(baseY())
                   - m_perDivision * static_cast<float>(i) * m_pixelsPerUnit);
}

int ChartGeometry::zeroY() const
{
    return toPixel(static_cast<float>(baseY()) + m_minValue * m_pixelsPerUnit);
}

int ChartGeometry::pointY(float value) const
{
    const float y = static_cast<float>(baseY()) - (value - m_minValue) * m_pixelsPerUnit;
    // Compared before it is truncated, so that neither infinity nor "not a number" gets there.
    const bool isInside = y >= static_cast<float>(TopY) && y < static_cast<float>(baseY() + 1);
    return hasScale() && isInside ? static_cast<int>(y) : -1;
}
