#pragma once

#include <QColor>
#include <QPixmap>
#include <QSize>
#include <QString>

/// @file
/// Tools for pictures and for numbers as text. All of them take and return values; an empty picture
/// gives an empty picture or text.

/// @p picture in shades of grey: each pixel is (11 red + 16 green + 5 blue) / 32, cut off, in all
/// three channels, and opaque; what was transparent becomes black.
QPixmap greyCopy(const QPixmap &picture);

/// @p picture in one colour: red, green and blue of each pixel are those of @p color, its alpha is
/// kept. The alpha of @p color doesn't count.
/// @param onlyGrey leaves a picture as it is that isn't all grey
/// @param mode reserved; 0 is the only one in use, and every mode gives the same
QPixmap tinted(const QPixmap &picture, const QColor &color, bool onlyGrey = false, int mode = 0);

/// @p picture with the outline of @p text drawn over it: half transparent navy, centred, in the
/// application's font, bold and italic, as high as the picture.
QPixmap textOver(const QPixmap &picture, const QString &text);

/// The 8 bits of @p number, the highest first, in two groups of four: "1010 | 0101".
QString binaryText(quint8 number);

/// @p number with "0x" before it, in upper case digits with leading zeros, at least @p width of
/// them.
QString hexText(quint32 number, int width);

/// @p picture as an element of a rich text that needs no file: tinted to the application palette's
/// text colour, and shown as large as fits @p size with the sides' ratio kept.
QString pictureAsText(const QPixmap &picture, const QSize &size);
