#include "ChartTest.h"
#include "support/TestCase.h"

#include <QSignalSpy>

using namespace ChartTest;

using Samples = QList<double>;
using Scale = QVariantList; // least value, largest value

/// Which scale a paint finds out for the next one.
class tst_DrawerAreaScale : public TestCase
{
    Q_OBJECT

private slots:
    void dynamic_data();
    void dynamic();
    void start();
    void seesEverySample();
    void settles();
    void emptyChart();
    void shrinksAtOnce_data();
    void shrinksAtOnce();
    void behindScrollBar();
    void manual();
    void backToDynamic();
};

void tst_DrawerAreaScale::dynamic_data()
{
    QTest::addColumn<Samples>("samples");
    QTest::addColumn<Scale>("scale");
    QTest::newRow("above") << Samples{150} << Scale{0, 151};
    QTest::newRow("shrinks") << Samples{50} << Scale{0, 51};
    QTest::newRow("half below zero") << Samples{-0.5} << Scale{-1, 0};
    QTest::newRow("half above zero") << Samples{0.5} << Scale{0, 1};
    QTest::newRow("below zero") << Samples{-7} << Scale{-8, 0};
    QTest::newRow("zero is inside") << Samples{1000, 1001} << Scale{0, 1002};
    QTest::newRow("zeros") << Samples{0, 0} << Scale{0, 0};
    QTest::newRow("both ends") << Samples{-20.25, 30.75} << Scale{-21, 31};
    // From the newest: a value that isn't above the bound so far doesn't raise it.
    QTest::newRow("newest first") << Samples{10.5, 10} << Scale{0, 11};
    QTest::newRow("above the raised bound") << Samples{11.5, 10} << Scale{0, 12};
    QTest::newRow("largest int") << Samples{2147483647.0} << Scale{0, LargestInt};
    QTest::newRow("least int") << Samples{-2147483648.0} << Scale{LeastInt, 0};
    // 2^24 + 1 has no float of its own, nor has what is one above it.
    QTest::newRow("single precision") << Samples{16777217.0} << Scale{0, 16777216};
}

void tst_DrawerAreaScale::dynamic()
{
    QFETCH(Samples, samples);
    QFETCH(Scale, scale);
    DrawerArea area;
    ChartLine line = newLine(1);
    area.addChartLine(&line);
    for (const double sample : samples) {
        line.addValue(sample);
    }
    QSignalSpy changed(&area, &DrawerArea::scaleChanged);
    paint(area);
    QCOMPARE(changed, QList<QVariantList>{scale});
}

void tst_DrawerAreaScale::start()
{
    DrawerArea area;
    ChartLine line = newLine(1);
    area.addChartLine(&line);
    area.addValue(1, 0, 6, 1, 99);
    QSignalSpy changed(&area, &DrawerArea::scaleChanged);
    paint(area);
    QCOMPARE(changed.count(), 0); // it is 0 to 100 already
}

// Also of those that no point is drawn for.
void tst_DrawerAreaScale::seesEverySample()
{
    DrawerArea area;
    area.setResolution(4);
    ChartLine line = newLine(1);
    area.addChartLine(&line);
    for (const int value : {-20, 150, 10}) {
        area.addValue(1, 0, 6, 1, value);
    }
    QSignalSpy changed(&area, &DrawerArea::scaleChanged);
    paint(area);
    QCOMPARE(changed, (QList<QVariantList>{{-21, 151}}));
}

void tst_DrawerAreaScale::settles()
{
    DrawerArea area;
    ChartLine line = newLine(1);
    area.addChartLine(&line);
    area.addValue(1, 0, 6, 1, 150);
    QSignalSpy changed(&area, &DrawerArea::scaleChanged);
    paint(area);
    paint(area);
    QCOMPARE(changed.count(), 1);
    area.addValue(1, 0, 6, 1, -150);
    paint(area);
    paint(area);
    QCOMPARE(changed, (QList<QVariantList>{{0, 151}, {-151, 151}}));
}

void tst_DrawerAreaScale::emptyChart()
{
    DrawerArea area;
    QSignalSpy changed(&area, &DrawerArea::scaleChanged);
    paint(area);
    paint(area);
    paint(area);
    QCOMPARE(changed, (QList<QVariantList>{{0, 0}}));

    ChartLine line = newLine(1); // the next sample sets a scale
    area.addChartLine(&line);
    area.addValue(1, 0, 6, 1, 5);
    paint(area);
    QCOMPARE(changed.last(), (QVariantList{0, 6}));
}

void tst_DrawerAreaScale::shrinksAtOnce_data()
{
    QTest::addColumn<int>("resolution");
    QTest::newRow("1") << 1;
    QTest::newRow("2") << 2;
    QTest::newRow("3") << 3;
}

void tst_DrawerAreaScale::shrinksAtOnce()
{
    constexpr int columns = 30;
    QFETCH(int, resolution);
    DrawerArea area;
    area.resize(columns + 120, 100);
    area.setMaxSamples(1000);
    area.setResolution(resolution);
    ChartLine line = newLine(1);
    area.addChartLine(&line);
    area.addValue(1, 0, 6, 1, 150);
    for (int i = 1; i < (columns + 1) * resolution; ++i) {
        area.addValue(1, 0, 6, 1, 50);
    }
    QSignalSpy changed(&area, &DrawerArea::scaleChanged);
    paint(area); // the walk ends at the first point behind the last column, having seen it
    QCOMPARE(changed.last(), (QVariantList{0, 151}));
    area.addValue(1, 0, 6, 1, 50);
    paint(area);
    QCOMPARE(changed.last(), (QVariantList{0, 51}));
}

void tst_DrawerAreaScale::behindScrollBar()
{
    DrawerArea area;
    ChartLine line = newLine(1);
    area.addChartLine(&line);
    for (const int value : {40, 50, 60}) {
        area.addValue(1, 0, 6, 1, value);
    }
    area.setScrollRange(0, 99, 98);
    QSignalSpy changed(&area, &DrawerArea::scaleChanged);
    paint(area);
    QCOMPARE(changed.last(), (QVariantList{0, 51})); // the newest is hidden
}

void tst_DrawerAreaScale::manual()
{
    DrawerArea area;
    ChartLine line = newLine(1);
    area.addChartLine(&line);
    area.addValue(1, 0, 6, 1, 5000);
    area.addValue(1, 0, 6, 1, -5000);
    area.doManualScaling();
    QSignalSpy changed(&area, &DrawerArea::scaleChanged);
    paint(area);
    area.setMinValue(-10);
    area.setMaxValue(10);
    paint(area);
    QCOMPARE(changed.count(), 0);
}

void tst_DrawerAreaScale::backToDynamic()
{
    DrawerArea area;
    ChartLine line = newLine(1);
    area.addChartLine(&line);
    area.addValue(1, 0, 6, 1, 70);
    area.doManualScaling();
    QSignalSpy changed(&area, &DrawerArea::scaleChanged);
    paint(area);
    area.doDynamicScaling();
    QCOMPARE(changed.count(), 0); // only by a paint
    paint(area);
    QCOMPARE(changed, (QList<QVariantList>{{0, 71}}));
}

QTEST_MAIN(tst_DrawerAreaScale)
#include "tst_DrawerAreaScale.moc"
