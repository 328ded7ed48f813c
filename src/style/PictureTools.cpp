#include "style/PictureTools.h"

#include <QApplication>
#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPen>

#include <algorithm>
#include <array>
#include <cstddef>

using namespace Qt::StringLiterals;

namespace {

/// @p picture with each pixel, in @p format, replaced by what @p change makes of it.
template <typename PixelChange>
QPixmap changedPixels(const QPixmap &picture, QImage::Format format, PixelChange change)
{
    QImage image = picture.toImage().convertToFormat(format);
    for (int y = 0; y < image.height(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(image.scanLine(y));
        std::transform(line, line + image.width(), line, change);
    }
    return QPixmap::fromImage(image);
}

} // namespace

QPixmap greyCopy(const QPixmap &picture)
{
    return changedPixels(picture, QImage::Format_ARGB32, [](QRgb pixel) {
        const int grey = (11 * qRed(pixel) + 16 * qGreen(pixel) + 5 * qBlue(pixel)) / 32;
        return qRgba(grey, grey, grey, 255);
    });
}

QPixmap tinted(const QPixmap &picture, const QColor &color, bool onlyGrey, int)
{
    if (onlyGrey && !picture.toImage().allGray()) {
        return picture;
    }
    // Multiplied by alpha, since that is how the format keeps colours; else edges would be dark.
    const QRgb rgb = color.rgb();
    std::array<QRgb, 256> colorOfAlpha;
    for (int alpha = 0; alpha <= 255; ++alpha) {
        colorOfAlpha[static_cast<std::size_t>(alpha)] = qRgba(
            qRed(rgb) * alpha / 255, qGreen(rgb) * alpha / 255, qBlue(rgb) * alpha / 255, alpha);
    }
    return changedPixels(picture, QImage::Format_ARGB32_Premultiplied, [&colorOfAlpha](QRgb pixel) {
        return colorOfAlpha[static_cast<std::size_t>(qAlpha(pixel))];
    });
}

QPixmap textOver(const QPixmap &picture, const QString &text)
{
    if (picture.isNull()) {
        return picture; // no font has a height of 0
    }
    constexpr qreal PenWidth = 2;
    QColor color(u"navy"_s);
    color.setAlpha(128);

    QPixmap result = picture;
    const QSizeF size = result.deviceIndependentSize();
    QPainter painter(&result);
    painter.setRenderHint(QPainter::Antialiasing);
    QFont font = painter.font();
    font.setWeight(QFont::Bold);
    font.setItalic(true);
    font.setPixelSize(qMax(1, qRound(size.height())));

    QPainterPath outline;
    outline.addText(0, 0, font, text);
    const QPointF centre(size.width() / 2, size.height() / 2);
    outline.translate(centre - outline.boundingRect().center());
    painter.strokePath(outline, QPen(color, PenWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    return result;
}

QString binaryText(quint8 number)
{
    return u"%1"_s.arg(number, 8, 2, QLatin1Char('0')).insert(4, " | "_L1);
}

QString hexText(quint32 number, int width)
{
    return "0x"_L1 + QString::number(number, 16).toUpper().rightJustified(width, u'0');
}

QString pictureAsText(const QPixmap &picture, const QSize &size)
{
    if (picture.isNull()) {
        return {};
    }
    QBuffer png;
    png.open(QIODevice::WriteOnly);
    tinted(picture, QApplication::palette().color(QPalette::Text)).save(&png, "PNG");

    const QSize shown = picture.size().scaled(size, Qt::KeepAspectRatio);
    return "<img src=\"data:image/png;base64,"_L1 + QString::fromLatin1(png.data().toBase64())
        + u"\" width=\"%1\" height=\"%2\">"_s.arg(shown.width()).arg(shown.height());
}
