#include "charts/DrawerArea.h"

#include "charts/ChartGeometry.h"
#include "charts/ChartLine.h"

#include <QPainter>

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

namespace {

constexpr QSize MinimumSize(100, 100);
/// A line that is added before the first setMaxSamples() keeps this many, its own limit.
constexpr int StartMaxSamples = 100;

constexpr QPointF TitlePos(100.0, 15.0);
constexpr qreal LabelX = 20.0;
constexpr int LabelBelowTick = 5;
constexpr int LabelDigits = 6;
constexpr int HalfTickLength = 2;
/// What a rectangle of one pixel covers with its outline of one pixel.
constexpr QSize PointSize(2, 2);
constexpr int LegendCharacterWidth = 5;
constexpr int LegendLineHeight = 20;

/// @p value without its fraction, or the int that comes next to it.
int truncated(float value)
{
    // The largest int has no float of its own: the nearest is one above it.
    constexpr auto Beyond = static_cast<float>(std::numeric_limits<int>::max());
    if (value >= Beyond) {
        return std::numeric_limits<int>::max();
    }
    return value <= -Beyond ? std::numeric_limits<int>::min() : static_cast<int>(value);
}

} // namespace

DrawerArea::DrawerArea(QWidget *parent)
    : QWidget(parent)
    , m_maxSamples(StartMaxSamples)
{
    setMinimumSize(MinimumSize);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    connect(&m_timer, &QTimer::timeout, this, qOverload<>(&DrawerArea::repaint));
}

void DrawerArea::setTitle(const QString &title)
{
    m_title = title;
}

void DrawerArea::setInterval(int msecs)
{
    m_interval = msecs;
    m_timer.setInterval(m_interval);
}

void DrawerArea::setMaxSamples(int maxSamples)
{
    m_maxSamples = maxSamples;
}

void DrawerArea::setScrollRange(int minimum, int maximum, int value)
{
    m_scrollMinimum = minimum;
    m_scrollMaximum = maximum;
    m_scrollValue = value;
}

void DrawerArea::setResolution(int resolution)
{
    if (resolution > 0) {
        m_resolution = resolution;
    }
}

void DrawerArea::addChartLine(ChartLine *line)
{
    line->setMaxSamples(m_maxSamples);
    m_lines.append(line);
}

void DrawerArea::clearChartLines()
{
    m_lines.clear();
}

void DrawerArea::removeChartLine(quint8 address, quint8 motorBank, quint8 command, quint8 type)
{
    // Kept on purpose: the walk goes on behind a removal, and so skips the line that moved up into
    // the gap. Of two adjacent lines with one key the second stays.
    for (qsizetype i = 0; i < m_lines.size(); ++i) {
        if (m_lines.at(i)->hasKey(address, motorBank, command, type)) {
            m_lines.removeAt(i);
        }
    }
}

void DrawerArea::addValue(quint8 address, quint8 motorBank, quint8 command, quint8 type, int value)
{
    for (ChartLine *line : std::as_const(m_lines)) {
        if (line->hasKey(address, motorBank, command, type)) {
            line->addValue(value);
        }
    }
}

void DrawerArea::startDrawer()
{
    m_timer.start(m_interval);
}

void DrawerArea::stopDrawer()
{
    m_timer.stop();
}

void DrawerArea::clearValues()
{
    for (ChartLine *line : std::as_const(m_lines)) {
        line->clearValues();
    }
}

void DrawerArea::doManualScaling()
{
    m_dynamicScaling = false;
}

void DrawerArea::doDynamicScaling()
{
    m_dynamicScaling = true;
}

void DrawerArea::setMaxValue(int max)
{
    m_maxValue = max;
}

void DrawerArea::setMinValue(int min)
{
    m_minValue = min;
}

void DrawerArea::paintEvent(QPaintEvent *)
{
    const ChartGeometry geometry(rect(), m_minValue, m_maxValue);
    emit changedChartWidth(geometry.plotWidth());

    QPainter painter(this);
    painter.fillRect(rect(), Qt::white);
    painter.setRenderHint(QPainter::Antialiasing);
    // One unit less than the widget has pixels, so that the outline's far edges lie on it.
    painter.setWindow(0, 0, std::max(geometry.right(), 1), std::max(geometry.bottom(), 1));
    drawFrame(painter, geometry);
    // Since the bounds of a dynamic scale start at 0, zero is always within it.
    Scale next = m_dynamicScaling ? Scale{0, 0} : Scale{m_minValue, m_maxValue};
    drawLines(painter, geometry, next);
    painter.end();

    if (next.max != m_maxValue || next.min != m_minValue) {
        m_maxValue = next.max;
        m_minValue = next.min;
        emit scaleChanged(next.min, next.max);
    }
}

void DrawerArea::drawFrame(QPainter &painter, const ChartGeometry &geometry) const
{
    constexpr int axisX = ChartGeometry::AxisX;
    const int baseY = geometry.baseY();
    painter.setPen(Qt::black);
    painter.drawRect(0, 0, geometry.right(), geometry.bottom());
    painter.drawLine(axisX, baseY, geometry.rightEnd(), baseY);
    painter.drawLine(axisX, baseY, axisX, ChartGeometry::TopY);
    painter.drawText(TitlePos, m_title);
    if (!geometry.hasScale()) {
        return; // no value has a height of its own
    }
    for (int i = 1; i <= ChartGeometry::Divisions; ++i) {
        const int y = geometry.divisionY(i);
        painter.drawLine(axisX - HalfTickLength, y, axisX + HalfTickLength, y);
    }
    for (int i = 0; i <= ChartGeometry::Divisions; ++i) {
        painter.drawText(QPointF(LabelX, geometry.divisionY(i) + LabelBelowTick),
                         QString::number(geometry.divisionValue(i), 'g', LabelDigits));
    }
    painter.setPen(Qt::gray);
    painter.drawLine(axisX, geometry.zeroY(), geometry.rightEnd(), geometry.zeroY());
}

void DrawerArea::drawLines(QPainter &painter, const ChartGeometry &geometry, Scale &scale) const
{
    qsizetype longestName = 0;
    for (const ChartLine *line : m_lines) {
        longestName = std::max(longestName, line->name().size());
    }
    const qreal legendX =
        geometry.rightEnd() - static_cast<qreal>(LegendCharacterWidth * longestName);
    int legendY = geometry.baseY() - 2 * geometry.plotHeight() / 3;
    for (const ChartLine *line : m_lines) {
        drawCurve(painter, geometry, *line, scale);
        painter.setPen(line->color());
        painter.drawText(QPointF(legendX, legendY), line->name());
        legendY += LegendLineHeight;
    }
}

void DrawerArea::drawCurve(QPainter &painter, const ChartGeometry &geometry, const ChartLine &line,
                           Scale &scale) const
{
    const QList<double> &samples = line.samples();
    const qint64 hidden = (static_cast<qint64>(m_scrollMaximum) - m_scrollValue) / m_resolution;
    std::vector<QRect> points;
    points.reserve(static_cast<size_t>(std::max(geometry.plotWidth(), 0)));
    int samplesSincePoint = 0;
    int column = 0; // counted from the newest point to the left
    for (qint64 i = samples.size() - 1 - std::max<qint64>(hidden, 0); i >= 0; --i) {
        const auto value = static_cast<float>(samples.at(i));
        if (m_dynamicScaling && value > static_cast<float>(scale.max)) {
            scale.max = truncated(value + 1);
        }
        if (m_dynamicScaling && value < static_cast<float>(scale.min)) {
            scale.min = truncated(value - 1);
        }
        if (++samplesSincePoint < m_resolution) {
            continue;
        }
        if (column >= geometry.plotWidth()) {
            break;
        }
        const int y = geometry.pointY(value);
        if (y >= 0) {
            points.emplace_back(QPoint(geometry.newestX() - column, y), PointSize);
        }
        ++column; // a point out of range leaves its column empty
        samplesSincePoint = 0;
    }
    // The painter's window moves a point by less than a pixel, and never off these ones. Filled
    // there, it lacks no more than a faint edge, while outlines that are smoothed over their
    // neighbours cost several times as much as everything else in the chart.
    painter.save();
    painter.setViewTransformEnabled(false);
    painter.setPen(Qt::NoPen);
    painter.setBrush(line.color());
    painter.drawRects(points.data(), static_cast<int>(points.size()));
    painter.restore();
}
