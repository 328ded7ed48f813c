#include "ChartTest.h"
#include "support/TestCase.h"

#include <QSignalSpy>

#include <vector>

using namespace Qt::StringLiterals;
using namespace ChartTest;

namespace {

/// Ink of a piece of the value axis, free of labels and curves, which every paint has to draw.
bool hasAxis(const QImage &image)
{
    for (int y = 30; y < image.height() - 20; ++y) {
        if (ink(image, QRect(98, y, 5, 1)) < 0.9) {
            return false;
        }
    }
    return true;
}

} // namespace

/// Whatever scale, size or number of lines an area is given: it paints, and nothing overflows.
class tst_DrawerAreaBadInput : public TestCase
{
    Q_OBJECT

private slots:
    void zeroRange();
    void ends_data();
    void ends();
    void dynamicEnds();
    void turnedOver();
    void tooSmall_data();
    void tooSmall();
    void thousandsOfLines();
    void noRoomForSamples();
    void longNames();
};

void tst_DrawerAreaBadInput::zeroRange()
{
    DrawerArea area;
    area.resize(400, 250);
    area.doManualScaling();
    area.setMinValue(50);
    area.setMaxValue(50);
    ChartLine line = newLine(1);
    area.addChartLine(&line);
    area.addValue(1, 0, 6, 1, 50);
    const QImage image = paint(area);
    QVERIFY(hasAxis(image));
    QCOMPARE(places(image, Qt::blue), QList<QPoint>());
    // The next scale draws the curve again.
    area.setMaxValue(100);
    QCOMPARE(places(paint(area), Qt::blue), covered({{378, 235}}));
}

void tst_DrawerAreaBadInput::ends_data()
{
    QTest::addColumn<int>("min");
    QTest::addColumn<int>("max");
    const QList<int> numbers = {LeastInt, LeastInt + 1, -1, 0, 1, LargestInt - 1, LargestInt};
    for (const int min : numbers) {
        for (const int max : numbers) {
            QTest::addRow("%d to %d", min, max) << min << max;
        }
    }
}

void tst_DrawerAreaBadInput::ends()
{
    QFETCH(int, min);
    QFETCH(int, max);
    DrawerArea area;
    area.resize(400, 250);
    area.doManualScaling();
    area.setMinValue(min);
    area.setMaxValue(max);
    ChartLine line = newLine(1);
    area.addChartLine(&line);
    for (const int value : {LeastInt, -1, 0, 1, LargestInt, min, max}) {
        area.addValue(1, 0, 6, 1, value);
    }
    QSignalSpy width(&area, &DrawerArea::changedChartWidth);
    const QImage image = paint(area);
    QCOMPARE(width, QList<QVariantList>{{280}});
    QVERIFY(hasAxis(image));
    // The newest sample is the scale's top, as far as single precision tells it from the bottom;
    // without a range there is no curve at all.
    const bool isTop = static_cast<float>(min) != static_cast<float>(max);
    QCOMPARE(places(image, Qt::blue).contains(QPoint(379, isTop ? 25 : 235)), min != max);
    QCOMPARE(places(image, Qt::blue).isEmpty(), min == max);
}

void tst_DrawerAreaBadInput::dynamicEnds()
{
    DrawerArea area;
    ChartLine line = newLine(1);
    area.addChartLine(&line);
    area.addValue(1, 0, 6, 1, LeastInt);
    area.addValue(1, 0, 6, 1, LargestInt);
    QSignalSpy changed(&area, &DrawerArea::scaleChanged);
    for (int i = 0; i < 3; ++i) {
        paint(area);
    }
    QCOMPARE(changed, (QList<QVariantList>{{LeastInt, LargestInt}}));
}

void tst_DrawerAreaBadInput::turnedOver()
{
    DrawerArea area;
    area.resize(400, 250);
    area.doManualScaling();
    area.setMinValue(100);
    area.setMaxValue(0);
    ChartLine line = newLine(1);
    area.addChartLine(&line);
    for (const int value : {100, 0, 150, -50}) {
        area.addValue(1, 0, 6, 1, value);
    }
    const QImage image = paint(area);
    QVERIFY(hasAxis(image));
    QCOMPARE(places(image, Qt::blue), covered({{375, 235}, {376, 25}}));
}

void tst_DrawerAreaBadInput::tooSmall_data()
{
    QTest::addColumn<QSize>("size");
    for (const QSize size : {QSize(1, 1), QSize(1, 300), QSize(300, 1), QSize(2, 2), QSize(50, 30),
                             QSize(119, 39), QSize(120, 40), QSize(121, 41), QSize(100, 100)}) {
        QTest::addRow("%d x %d", size.width(), size.height()) << size;
    }
}

void tst_DrawerAreaBadInput::tooSmall()
{
    QFETCH(QSize, size);
    DrawerArea area;
    area.setMinimumSize(1, 1);
    area.resize(size);
    ChartLine line = newLine(1);
    area.addChartLine(&line);
    for (int i = 0; i < 10; ++i) {
        area.addValue(1, 0, 6, 1, 10);
    }
    QSignalSpy width(&area, &DrawerArea::changedChartWidth);
    for (int i = 0; i < 2; ++i) {
        QCOMPARE(places(paint(area), Qt::magenta), QList<QPoint>()); // all of it is painted
    }
    QCOMPARE(width, (QList<QVariantList>{{size.width() - 120}, {size.width() - 120}}));
}

void tst_DrawerAreaBadInput::thousandsOfLines()
{
    constexpr int count = 3000;
    DrawerArea area;
    area.resize(400, 250);
    area.setMaxSamples(3);
    std::vector<ChartLine> lines(count, newLine(1, Qt::red, u"line"_s));
    lines.back() = newLine(1);
    for (ChartLine &line : lines) {
        area.addChartLine(&line);
    }
    area.addValue(1, 0, 6, 1, 99);
    paint(area);
    const QImage image = paint(area);
    QVERIFY(hasAxis(image));
    QCOMPARE(places(image, Qt::blue).size(), 4); // the last one lies on top
    QCOMPARE(lines.front().samples(), QList<double>{99});
}

void tst_DrawerAreaBadInput::noRoomForSamples()
{
    for (const int limit : {0, -1, LeastInt}) {
        DrawerArea area;
        area.setMaxSamples(limit);
        ChartLine line = newLine(1);
        area.addChartLine(&line);
        area.addValue(1, 0, 6, 1, 50);
        QVERIFY(line.samples().isEmpty());
        QSignalSpy changed(&area, &DrawerArea::scaleChanged);
        paint(area);
        QCOMPARE(changed, (QList<QVariantList>{{0, 0}}));
    }
}

void tst_DrawerAreaBadInput::longNames()
{
    DrawerArea area;
    area.resize(400, 250);
    ChartLine line = newLine(1, Qt::blue, QString(100000, u'x'));
    area.addChartLine(&line);
    QVERIFY(hasAxis(paint(area)));
}

QTEST_MAIN(tst_DrawerAreaBadInput)
#include "tst_DrawerAreaBadInput.moc"
