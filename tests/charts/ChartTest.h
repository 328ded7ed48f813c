#pragma once

#include "charts/ChartLine.h"
#include "charts/DrawerArea.h"

#include <QEvent>
#include <QImage>
#include <QPainter>
#include <QTest>
#include <QWidget>

#include <algorithm>
#include <functional>
#include <limits>

/// What the tests of the charts share.
namespace ChartTest {

constexpr int LargestInt = std::numeric_limits<int>::max();
constexpr int LeastInt = std::numeric_limits<int>::min();

/// A line without a name, so without a text in the legend.
inline ChartLine newLine(quint8 type, const QColor &color = Qt::blue, const QString &name = {})
{
    return ChartLine(1, 0, 6, type, name, color);
}

/// What @p widget paints.
inline QImage paint(QWidget &widget)
{
    QImage image(widget.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::magenta); // whatever stays so was not painted
    widget.render(&image);
    return image;
}

/// What @p draw paints on white, in a chart's coordinates, as @p area would.
inline QImage drawn(const QWidget &area, const std::function<void(QPainter &)> &draw)
{
    QImage image(area.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setFont(area.font());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setWindow(0, 0, area.width() - 1, area.height() - 1);
    draw(painter);
    return image;
}

/// The places in @p image that have exactly @p color, column by column.
inline QList<QPoint> places(const QImage &image, const QColor &color)
{
    QList<QPoint> result;
    for (int x = 0; x < image.width(); ++x) {
        for (int y = 0; y < image.height(); ++y) {
            if (image.pixel(x, y) == color.rgba()) {
                result.append(QPoint(x, y));
            }
        }
    }
    return result;
}

/// The places that the points of a curve at @p points cover, in the same order.
inline QList<QPoint> covered(const QList<QPoint> &points)
{
    QList<QPoint> result;
    for (const QPoint &point : points) {
        for (const QPoint offset : {QPoint(0, 0), QPoint(0, 1), QPoint(1, 0), QPoint(1, 1)}) {
            if (!result.contains(point + offset)) {
                result.append(point + offset);
            }
        }
    }
    std::sort(result.begin(), result.end(), [](const QPoint &a, const QPoint &b) {
        return a.x() != b.x() ? a.x() < b.x() : a.y() < b.y();
    });
    return result;
}

/// How much darker than white the pixels of @p rect are, in fully black pixels.
inline double ink(const QImage &image, const QRect &rect)
{
    double sum = 0;
    for (int x = rect.left(); x <= rect.right(); ++x) {
        for (int y = rect.top(); y <= rect.bottom(); ++y) {
            sum += (255 - qGray(image.pixel(x, y))) / 255.0;
        }
    }
    return sum;
}

/// Counts the paints of a widget.
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QWidget *widget) { widget->installEventFilter(this); }

    int count() const { return m_count; }

    bool eventFilter(QObject *, QEvent *event) override
    {
        m_count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }

private:
    int m_count = 0;
};

} // namespace ChartTest
