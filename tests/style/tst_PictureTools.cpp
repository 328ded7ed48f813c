#include "style/PictureTools.h"
#include "support/TestCase.h"

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_PictureTools : public TestCase
{
    Q_OBJECT

private slots:
    void greyIsTheWeightedSum_data();
    void greyIsTheWeightedSum();
    void tintKeepsTheShape_data();
    void tintKeepsTheShape();
    void tintOfGreyPicturesOnly_data();
    void tintOfGreyPicturesOnly();
    void tintKeepsTheResolution();
    void tintTakesAnyMode();
    void textStandsInTheMiddle();
    void textIsAnOutlineInHalfNavy();
    void textIsAsHighAsThePicture();
    void textIsBoldAndItalic();
    void binary_data();
    void binary();
    void hexadecimal_data();
    void hexadecimal();
    void pictureInAText_data();
    void pictureInAText();
    void emptyPicturesStayEmpty();
};

namespace {

QPixmap pictureOf(const QList<QRgb> &pixels)
{
    QImage image(int(pixels.size()), 1, QImage::Format_ARGB32);
    for (int x = 0; x < image.width(); ++x) {
        image.setPixel(x, 0, pixels.at(x));
    }
    return QPixmap::fromImage(image);
}

/// The pixels as they are stored: colours multiplied by alpha.
QList<QRgb> storedPixels(const QPixmap &picture)
{
    const QImage image = picture.toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(0));
    return QList<QRgb>(line, line + image.width());
}

/// The box of all that isn't fully transparent.
QRect inkOf(const QImage &image)
{
    QRect ink;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) > 0) {
                ink |= QRect(x, y, 1, 1);
            }
        }
    }
    return ink;
}

QPixmap clear(const QSize &size)
{
    QPixmap picture(size);
    picture.fill(Qt::transparent);
    return picture;
}

} // namespace

void tst_PictureTools::greyIsTheWeightedSum_data()
{
    QTest::addColumn<QRgb>("pixel");
    QTest::addColumn<int>("grey");
    QTest::newRow("black") << qRgb(0, 0, 0) << 0;
    QTest::newRow("white") << qRgb(255, 255, 255) << 255;
    QTest::newRow("red") << qRgb(255, 0, 0) << 87; // 87.7
    QTest::newRow("green") << qRgb(0, 255, 0) << 127; // 127.5
    QTest::newRow("blue") << qRgb(0, 0, 255) << 39; // 39.8
    QTest::newRow("mixed") << qRgb(10, 20, 30) << 18; // 18.1
    QTest::newRow("transparent") << qRgba(0, 0, 0, 0) << 0;
}

void tst_PictureTools::greyIsTheWeightedSum()
{
    QFETCH(QRgb, pixel);
    QFETCH(int, grey);
    const QPixmap picture = pictureOf({pixel, qRgb(1, 1, 1)});
    QCOMPARE(storedPixels(greyCopy(picture)).constFirst(), qRgba(grey, grey, grey, 255));
    QCOMPARE(storedPixels(picture).constFirst(), pixel); // a copy
}

void tst_PictureTools::tintKeepsTheShape_data()
{
    QTest::addColumn<QRgb>("pixel");
    QTest::addColumn<QRgb>("stored");
    // The colour is (200, 100, 50).
    QTest::newRow("opaque black") << qRgba(0, 0, 0, 255) << qRgba(200, 100, 50, 255);
    QTest::newRow("opaque grey") << qRgba(128, 128, 128, 255) << qRgba(200, 100, 50, 255);
    QTest::newRow("opaque colour") << qRgba(12, 250, 3, 255) << qRgba(200, 100, 50, 255);
    QTest::newRow("edge") << qRgba(0, 0, 0, 128) << qRgba(100, 50, 25, 128); // 100.4, 50.2, 25.1
    QTest::newRow("faint") << qRgba(0, 0, 0, 3) << qRgba(2, 1, 0, 3); // cut off
    QTest::newRow("transparent") << qRgba(0, 0, 0, 0) << qRgba(0, 0, 0, 0);
}

void tst_PictureTools::tintKeepsTheShape()
{
    QFETCH(QRgb, pixel);
    QFETCH(QRgb, stored);
    const QPixmap picture = pictureOf({pixel, qRgba(0, 0, 0, 0)});
    // The alpha of the colour itself doesn't count.
    QCOMPARE(storedPixels(tinted(picture, QColor(200, 100, 50, 10))).constFirst(), stored);
}

void tst_PictureTools::tintOfGreyPicturesOnly_data()
{
    QTest::addColumn<QList<QRgb>>("pixels");
    QTest::addColumn<bool>("onlyGrey");
    QTest::addColumn<bool>("changes");
    const QList<QRgb> grey = {qRgb(0, 0, 0), qRgb(77, 77, 77), qRgb(255, 255, 255)};
    const QList<QRgb> oneColoured = {qRgb(0, 0, 0), qRgb(77, 78, 77), qRgb(255, 255, 255)};
    QTest::newRow("grey, all wanted") << grey << false << true;
    QTest::newRow("grey, only grey wanted") << grey << true << true;
    QTest::newRow("coloured, all wanted") << oneColoured << false << true;
    QTest::newRow("coloured, only grey wanted") << oneColoured << true << false;
}

void tst_PictureTools::tintOfGreyPicturesOnly()
{
    QFETCH(QList<QRgb>, pixels);
    QFETCH(bool, onlyGrey);
    QFETCH(bool, changes);
    const QPixmap picture = pictureOf(pixels);
    const QPixmap result = tinted(picture, Qt::red, onlyGrey);
    if (changes) {
        QCOMPARE(storedPixels(result), QList<QRgb>(3, qRgb(255, 0, 0)));
    } else {
        QCOMPARE(storedPixels(result), pixels);
        QCOMPARE(result.cacheKey(), picture.cacheKey());
    }
}

void tst_PictureTools::tintKeepsTheResolution()
{
    QPixmap picture = clear(QSize(40, 20));
    picture.setDevicePixelRatio(2);
    const QPixmap result = tinted(picture, Qt::red);
    QCOMPARE(result.size(), QSize(40, 20));
    QCOMPARE(result.devicePixelRatio(), 2.0);
}

void tst_PictureTools::tintTakesAnyMode()
{
    const QPixmap picture = pictureOf({qRgba(0, 0, 0, 99)});
    QCOMPARE(storedPixels(tinted(picture, Qt::red, false, 7)),
             storedPixels(tinted(picture, Qt::red, false, 0)));
}

void tst_PictureTools::textStandsInTheMiddle()
{
    const QImage image = textOver(clear(QSize(300, 60)), u"x"_s).toImage();
    const QRect ink = inkOf(image);
    QVERIFY(!ink.isEmpty());
    QCOMPARE_LE(qAbs(ink.center().x() - 150), 2);
    QCOMPARE_LE(qAbs(ink.center().y() - 30), 2);
}

void tst_PictureTools::textIsAnOutlineInHalfNavy()
{
    const QImage image =
        textOver(clear(QSize(100, 100)), u"I"_s).toImage().convertToFormat(QImage::Format_ARGB32);
    // Navy is the blue at half strength, here over nothing at all.
    int full = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            QVERIFY(qAlpha(pixel) <= 128);
            if (qAlpha(pixel) == 128) {
                ++full;
                QCOMPARE(qRed(pixel) + qGreen(pixel), 0);
                QCOMPARE_LE(qAbs(qBlue(pixel) - 128), 1); // kept multiplied by alpha
            }
        }
    }
    QCOMPARE_GT(full, 0);
    // The stem of the letter, some 20 pixels wide, is hollow.
    QCOMPARE(qAlpha(image.pixel(50, 50)), 0);

    // It lies over the picture.
    QPixmap white(100, 100);
    white.fill(Qt::white);
    const QImage over = textOver(white, u"I"_s).toImage();
    QCOMPARE(over.pixel(0, 0), qRgb(255, 255, 255));
    QCOMPARE(over.pixel(50, 50), qRgb(255, 255, 255));
    QVERIFY(over != white.toImage());
}

// The letters grow with the picture, not with the font of the application.
void tst_PictureTools::textIsAsHighAsThePicture()
{
    const int small = inkOf(textOver(clear(QSize(400, 40)), u"H"_s).toImage()).height();
    const int large = inkOf(textOver(clear(QSize(400, 160)), u"H"_s).toImage()).height();
    // Capitals are some 7/10 of the font's height, and the pen adds 2.
    QCOMPARE_GT(small, 40 / 2);
    QCOMPARE_LE(small, 40);
    QCOMPARE_LE(qAbs((large - 2) - 4 * (small - 2)), 6);

    QPixmap sharp = clear(QSize(800, 80));
    sharp.setDevicePixelRatio(2);
    QCOMPARE_LE(qAbs(inkOf(textOver(sharp, u"H"_s).toImage()).height() - 2 * small), 4);
}

void tst_PictureTools::textIsBoldAndItalic()
{
    const auto outlineOf = [](QFont::Weight weight, bool italic) {
        QFont font = QApplication::font();
        font.setPixelSize(100);
        font.setWeight(weight);
        font.setItalic(italic);
        QPainterPath outline;
        outline.addText(0, 0, font, u"I"_s);
        return outline;
    };
    const qreal width = outlineOf(QFont::Bold, true).boundingRect().width();
    QVERIFY(width > outlineOf(QFont::Bold, false).boundingRect().width() + 5); // it leans
    QVERIFY(width > outlineOf(QFont::Normal, true).boundingRect().width() + 5); // and is broad

    const QRect ink = inkOf(textOver(clear(QSize(200, 100)), u"I"_s).toImage());
    QCOMPARE_LE(qAbs(ink.width() - (width + 2)), 2); // the pen is 2 wide
}

void tst_PictureTools::binary_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("text");
    QTest::newRow("zero") << 0 << u"0000 | 0000"_s;
    QTest::newRow("one") << 1 << u"0000 | 0001"_s;
    QTest::newRow("a5") << 0xa5 << u"1010 | 0101"_s;
    QTest::newRow("all") << 255 << u"1111 | 1111"_s;
}

void tst_PictureTools::binary()
{
    QFETCH(int, number);
    QTEST(binaryText(static_cast<quint8>(number)), "text");
}

void tst_PictureTools::hexadecimal_data()
{
    QTest::addColumn<quint32>("number");
    QTest::addColumn<int>("width");
    QTest::addColumn<QString>("text");
    QTest::newRow("zero") << 0U << 2 << u"0x00"_s;
    QTest::newRow("upper case") << 0xabcU << 4 << u"0x0ABC"_s;
    QTest::newRow("exact") << 0xffU << 2 << u"0xFF"_s;
    QTest::newRow("wider than asked for") << 0x12345U << 2 << u"0x12345"_s;
    QTest::newRow("largest") << 0xffffffffU << 8 << u"0xFFFFFFFF"_s;
    QTest::newRow("no width") << 7U << 0 << u"0x7"_s;
}

void tst_PictureTools::hexadecimal()
{
    QFETCH(quint32, number);
    QFETCH(int, width);
    QTEST(hexText(number, width), "text");
}

void tst_PictureTools::pictureInAText_data()
{
    QTest::addColumn<QSize>("wanted");
    QTest::addColumn<QString>("end");
    // The picture is 40 by 20.
    QTest::newRow("same") << QSize(40, 20) << u"\" width=\"40\" height=\"20\">"_s;
    QTest::newRow("bound by the width") << QSize(20, 100) << u"\" width=\"20\" height=\"10\">"_s;
    QTest::newRow("bound by the height") << QSize(500, 40) << u"\" width=\"80\" height=\"40\">"_s;
}

void tst_PictureTools::pictureInAText()
{
    QFETCH(QSize, wanted);
    QFETCH(QString, end);
    const QString start = u"<img src=\"data:image/png;base64,"_s;
    QPixmap picture(40, 20);
    picture.fill(Qt::green);
    QPalette palette;
    palette.setColor(QPalette::Text, QColor(1, 2, 3));
    QApplication::setPalette(palette);
    const QString text = pictureAsText(picture, wanted);
    QApplication::setPalette(QPalette());

    QVERIFY2(text.startsWith(start), qPrintable(text));
    QVERIFY2(text.endsWith(end), qPrintable(text));
    const QByteArray base64 =
        text.mid(start.size(), text.size() - start.size() - end.size()).toLatin1();
    const QImage image = QImage::fromData(QByteArray::fromBase64(base64), "PNG");
    QCOMPARE(image.size(), QSize(40, 20));
    QCOMPARE(image.pixel(7, 7), qRgb(1, 2, 3));
}

void tst_PictureTools::emptyPicturesStayEmpty()
{
    const QPixmap none;
    QVERIFY(greyCopy(none).isNull());
    QVERIFY(tinted(none, Qt::red).isNull());
    QVERIFY(tinted(none, Qt::red, true).isNull());
    QVERIFY(textOver(none, u"text"_s).isNull());
    QCOMPARE(pictureAsText(none, QSize(10, 10)), QString());
}

QTEST_MAIN(tst_PictureTools)
#include "tst_PictureTools.moc"
