#include "support/TestCase.h"

#include <QFile>
#include <QFontDatabase>
#include <QImage>
#include <QRawFont>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_Resources : public TestCase
{
    Q_OBJECT

private slots:
    void picture_data();
    void picture();
    void picturesOfOneNameDiffer_data();
    void picturesOfOneNameDiffer();
    void pictureOfTheBlueLookIsLight_data();
    void pictureOfTheBlueLookIsLight();
    void font_data();
    void font();
    void fontHasTheLettersOfTheForms_data();
    void fontHasTheLettersOfTheForms();
};

namespace {

const QStringList TintedPictures = {
    u":/Player/Left"_s,     u":/Player/Right"_s,     u":/Player/Stop"_s,
    u":/Player/leftStep"_s, u":/Player/rightStep"_s, u":/Editor/Redo"_s,
};

/// Shown as they are, on dark blue.
const QStringList PicturesOfTheBlueLook = {
    u":/MainButtons1/Up"_s,
    u":/MainButtons1/Down"_s,
    u":/MainButtons1/Left"_s,
    u":/MainButtons1/Right"_s,
    u":/MainButtons1/Table Up"_s,
    u":/MainButtons1/Table Down"_s,
    u":/MainButtons1/Haekchen_normal"_s,
    u":/MainButtons1/Haekchen_disabled"_s,
    u":/Misc/Refresh"_s,
    u":/Misc/SizeGrip"_s,
    u":/Misc/BranchOpen"_s,
    u":/Misc/BranchClose"_s,
    u":/Misc/MoravintCur"_s,
};

const QStringList Fonts = {
    u":/fonts/MoravintFont"_s,
    u":/fonts/MoravintFontItalic"_s,
    u":/fonts/MoravintFontBold"_s,
};

void addRows(const QStringList &paths)
{
    QTest::addColumn<QString>("path");
    for (const QString &path : paths) {
        QTest::newRow(path.toLatin1().constData()) << path;
    }
}

} // namespace

void tst_Resources::picture_data()
{
    addRows(TintedPictures + PicturesOfTheBlueLook);
}

// A picture's shape is its alpha channel, all else is tinted away. It stands free of the corners
// and fills a fair part of the square.
void tst_Resources::picture()
{
    QFETCH(QString, path);
    const QImage image(path);
    QCOMPARE(image.size(), QSize(200, 200));
    QVERIFY(image.hasAlphaChannel());
    QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
    int opaque = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            opaque += qAlpha(image.pixel(x, y)) == 255 ? 1 : 0;
        }
    }
    QCOMPARE_GT(opaque, 200 * 200 / 20);
    QCOMPARE_LT(opaque, 200 * 200 * 3 / 4);
}

void tst_Resources::picturesOfOneNameDiffer_data()
{
    QTest::addColumn<QString>("one");
    QTest::addColumn<QString>("other");
    QTest::newRow("fast and step") << u":/Player/Left"_s << u":/Player/leftStep"_s;
    QTest::newRow("open and close") << u":/Misc/BranchOpen"_s << u":/Misc/BranchClose"_s;
    QTest::newRow("enabled and disabled")
        << u":/MainButtons1/Haekchen_normal"_s << u":/MainButtons1/Haekchen_disabled"_s;
}

void tst_Resources::picturesOfOneNameDiffer()
{
    QFETCH(QString, one);
    QFETCH(QString, other);
    QVERIFY(QImage(one) != QImage(other));
}

void tst_Resources::pictureOfTheBlueLookIsLight_data()
{
    addRows(PicturesOfTheBlueLook);
}

void tst_Resources::pictureOfTheBlueLookIsLight()
{
    QFETCH(QString, path);
    const QImage image = QImage(path).convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            QVERIFY2(qAlpha(pixel) < 255 || qGray(pixel) > 150, qPrintable(path));
        }
    }
}

void tst_Resources::font_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QFont::Weight>("weight");
    QTest::addColumn<QFont::Style>("style");
    QTest::newRow("regular") << Fonts.at(0) << QFont::Normal << QFont::StyleNormal;
    QTest::newRow("italic") << Fonts.at(1) << QFont::Normal << QFont::StyleItalic;
    QTest::newRow("bold") << Fonts.at(2) << QFont::Bold << QFont::StyleNormal;
}

void tst_Resources::font()
{
    QFETCH(QString, path);
    QFETCH(QFont::Weight, weight);
    QFETCH(QFont::Style, style);
    const int id = QFontDatabase::addApplicationFont(path);
    QVERIFY(id >= 0);
    QCOMPARE(QFontDatabase::applicationFontFamilies(id), QStringList(u"ManualOrifice"_s));
    const QRawFont raw(path, 12);
    QCOMPARE(raw.familyName(), u"ManualOrifice"_s);
    QCOMPARE(raw.weight(), int(weight));
    QCOMPARE(raw.style(), style);
}

void tst_Resources::fontHasTheLettersOfTheForms_data()
{
    addRows(Fonts);
}

void tst_Resources::fontHasTheLettersOfTheForms()
{
    QFETCH(QString, path);
    const QRawFont raw(path, 12);
    for (const QChar letter : u"ABCXYZabcxyz0123456789 .,:;-+/|()[]%&äöüßéµ°²Ω—…"_s) {
        QVERIFY2(raw.supportsCharacter(letter), qPrintable(QString(letter)));
    }
    // The embedded text of the licence stays with the font.
    QVERIFY(raw.fontTable("name").contains("B\0i\0t\0s\0t\0r\0e\0a\0m"_ba));
}

QTEST_MAIN(tst_Resources)
#include "tst_Resources.moc"
