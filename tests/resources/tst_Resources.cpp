#include "support/TestCase.h"

#include <QImage>
#include <QTest>

class tst_Resources : public TestCase
{
    Q_OBJECT

private slots:
    void picture_data();
    void picture();
};

void tst_Resources::picture_data()
{
    QTest::addColumn<QString>("path");
    for (const char *path : {":/Player/Left", ":/Player/Right", ":/Player/Stop",
                             ":/Player/leftStep", ":/Player/rightStep", ":/Editor/Redo"}) {
        QTest::newRow(path) << QString::fromLatin1(path);
    }
}

// A picture is its alpha channel: all else is tinted to the text colour.
void tst_Resources::picture()
{
    QFETCH(QString, path);
    const QImage image(path);
    QCOMPARE(image.size(), QSize(200, 200));
    QVERIFY(image.hasAlphaChannel());
    QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
    bool hasShape = false;
    for (int x = 0; x < image.width(); ++x) {
        hasShape = hasShape || qAlpha(image.pixel(x, 100)) == 255;
    }
    QVERIFY(hasShape);
}

QTEST_GUILESS_MAIN(tst_Resources)
#include "tst_Resources.moc"
