#include "FixedChart.h"
#include "support/TestCase.h"

using namespace Qt::StringLiterals;
using namespace ChartTest;
using namespace FixedChart;

namespace {

void addSamples(ChartLine &line, const QList<int> &samples)
{
    for (const int sample : samples) {
        line.addValue(sample);
    }
}

} // namespace

/// Which samples are drawn, and where.
class tst_DrawerAreaCurves : public TestCase
{
    Q_OBJECT

private slots:
    void newestAtTheRightEdge();
    void staircase();
    void leftEnd();
    void gaps();
    void limitsOfThePlot_data();
    void limitsOfThePlot();
    void valueAboveTheScaleIsSeenNextTime();
    void resolution_data();
    void resolution();
    void ignoredResolution();
    void scrolled_data();
    void scrolled();
    void scrolledByResolution();
    void severalLines();
    void twoLinesOfOneKey();
    void invalidColor();
};

void tst_DrawerAreaCurves::newestAtTheRightEdge()
{
    Chart chart;
    ChartLine line = newLine(1);
    chart.addChartLine(&line);
    chart.addValue(1, 0, 6, 1, 50);
    QCOMPARE(places(paint(chart), Qt::blue), covered({{NewestX, 130}}));
    chart.addValue(1, 0, 6, 1, 90);
    QCOMPARE(places(paint(chart), Qt::blue), covered({{NewestX - 1, 130}, {NewestX, 46}}));
}

void tst_DrawerAreaCurves::staircase()
{
    Chart chart;
    ChartLine line = newLine(1);
    chart.addChartLine(&line);
    QList<QPoint> points;
    for (int i = 0; i < 40; ++i) {
        const int step = i / 8 * 20; // 0, 20, ..., 80
        chart.addValue(1, 0, 6, 1, step);
        points.append(QPoint(NewestX - 39 + i, BaseY - i / 8 * 42));
    }
    QCOMPARE(places(paint(chart), Qt::blue), covered(points));
}

void tst_DrawerAreaCurves::leftEnd()
{
    Chart chart;
    ChartLine line = newLine(1);
    chart.addChartLine(&line);
    QList<QPoint> points;
    for (int i = 0; i < Columns + 50; ++i) {
        chart.addValue(1, 0, 6, 1, 50);
    }
    for (int k = 0; k < Columns; ++k) {
        points.append(QPoint(NewestX - k, 130));
    }
    QCOMPARE(points.last().x(), 99);
    QCOMPARE(places(paint(chart), Qt::blue), covered(points));
}

void tst_DrawerAreaCurves::gaps()
{
    Chart chart;
    ChartLine line = newLine(1);
    chart.addChartLine(&line);
    addSamples(line, {10, 5000, 20, -5000, -5000, 30});
    QCOMPARE(places(paint(chart), Qt::blue),
             covered({{NewestX - 5, 214}, {NewestX - 3, 193}, {NewestX, 172}}));
}

void tst_DrawerAreaCurves::limitsOfThePlot_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QList<QPoint>>("points");
    QTest::newRow("bottom") << 0.0 << QList<QPoint>{{NewestX, BaseY}};
    QTest::newRow("a fraction below") << -0.4 << QList<QPoint>{{NewestX, BaseY}}; // 235.84
    QTest::newRow("a pixel below") << -0.5 << QList<QPoint>(); // 236.05
    QTest::newRow("top of the scale") << 100.0 << QList<QPoint>{{NewestX, 25}};
    QTest::newRow("top of the axis") << 102.3 << QList<QPoint>{{NewestX, 20}}; // 20.17
    QTest::newRow("above the axis") << 102.5 << QList<QPoint>(); // 19.75
    QTest::newRow("truncated toward zero") << 10.4 << QList<QPoint>{{NewestX, 213}}; // 213.16
    QTest::newRow("infinite") << qInf() << QList<QPoint>();
    QTest::newRow("no number") << qQNaN() << QList<QPoint>();
}

void tst_DrawerAreaCurves::limitsOfThePlot()
{
    QFETCH(double, value);
    QFETCH(QList<QPoint>, points);
    Chart chart;
    ChartLine line = newLine(1);
    chart.addChartLine(&line);
    line.addValue(value);
    QCOMPARE(places(paint(chart), Qt::blue), covered(points));
}

void tst_DrawerAreaCurves::valueAboveTheScaleIsSeenNextTime()
{
    Chart chart;
    chart.doDynamicScaling();
    ChartLine line = newLine(1);
    chart.addChartLine(&line);
    chart.addValue(1, 0, 6, 1, 209);
    QCOMPARE(places(paint(chart), Qt::blue), QList<QPoint>());
    // The scale is now 0 to 210: a pixel each.
    QCOMPARE(places(paint(chart), Qt::blue), covered({{NewestX, BaseY - 209}}));
}

void tst_DrawerAreaCurves::resolution_data()
{
    QTest::addColumn<int>("resolution");
    QTest::addColumn<QList<int>>("values"); // those that get a point, the newest first
    QTest::newRow("1") << 1 << QList<int>{70, 60, 50, 40, 30, 20, 10};
    QTest::newRow("2") << 2 << QList<int>{60, 40, 20};
    QTest::newRow("3") << 3 << QList<int>{50, 20};
    QTest::newRow("7") << 7 << QList<int>{10};
    QTest::newRow("8") << 8 << QList<int>();
    QTest::newRow("largest int") << LargestInt << QList<int>();
}

void tst_DrawerAreaCurves::resolution()
{
    QFETCH(int, resolution);
    QFETCH(QList<int>, values);
    Chart chart;
    chart.setResolution(resolution);
    ChartLine line = newLine(1);
    chart.addChartLine(&line);
    addSamples(line, {10, 20, 30, 40, 50, 60, 70});
    QList<QPoint> points;
    for (int k = 0; k < values.size(); ++k) {
        points.append(QPoint(NewestX - k, BaseY - values.at(k) * 21 / 10));
    }
    QCOMPARE(places(paint(chart), Qt::blue), covered(points));
}

void tst_DrawerAreaCurves::ignoredResolution()
{
    Chart chart;
    ChartLine line = newLine(1);
    chart.addChartLine(&line);
    addSamples(line, {10, 20});
    chart.setResolution(2);
    chart.setResolution(0);
    chart.setResolution(-1);
    chart.setResolution(LeastInt);
    QCOMPARE(places(paint(chart), Qt::blue), covered({{NewestX, 214}}));
}

void tst_DrawerAreaCurves::scrolled_data()
{
    QTest::addColumn<int>("maximum");
    QTest::addColumn<int>("value");
    QTest::addColumn<QList<QPoint>>("points");
    const QPoint left(NewestX - 1, 0);
    QTest::newRow("at the newest end")
        << 999 << 999 << QList<QPoint>{{376, 214}, {377, 193}, {NewestX, 172}};
    QTest::newRow("one back") << 999 << 998 << QList<QPoint>{{377, 214}, {NewestX, 193}};
    QTest::newRow("at the oldest sample") << 999 << 997 << QList<QPoint>{{NewestX, 214}};
    QTest::newRow("behind the history") << 999 << 996 << QList<QPoint>();
    QTest::newRow("far behind") << 999 << 0 << QList<QPoint>();
    QTest::newRow("the farthest") << LargestInt << LeastInt << QList<QPoint>();
    QTest::newRow("value above the maximum")
        << LeastInt << LargestInt << QList<QPoint>{{376, 214}, {377, 193}, {NewestX, 172}};
}

void tst_DrawerAreaCurves::scrolled()
{
    QFETCH(int, maximum);
    QFETCH(int, value);
    QFETCH(QList<QPoint>, points);
    Chart chart;
    ChartLine line = newLine(1);
    chart.addChartLine(&line);
    addSamples(line, {10, 20, 30});
    chart.setScrollRange(LargestInt, maximum, value); // the minimum isn't looked at
    QCOMPARE(places(paint(chart), Qt::blue), covered(points));
}

void tst_DrawerAreaCurves::scrolledByResolution()
{
    Chart chart;
    ChartLine line = newLine(1);
    chart.addChartLine(&line);
    addSamples(line, {10, 20, 30, 40});
    chart.setResolution(2);
    chart.setScrollRange(0, 99, 96); // 3 / 2 hides one sample
    QCOMPARE(places(paint(chart), Qt::blue), covered({{NewestX, 193}}));
}

void tst_DrawerAreaCurves::severalLines()
{
    Chart chart;
    ChartLine blue = newLine(1);
    ChartLine red = newLine(2, Qt::red);
    chart.addChartLine(&blue);
    chart.addChartLine(&red);
    addSamples(blue, {10, 30});
    addSamples(red, {50, 30});
    const QImage image = paint(chart);
    QCOMPARE(places(image, Qt::blue), covered({{377, 214}}).mid(0, 4));
    QCOMPARE(places(image, Qt::red), covered({{377, 130}, {NewestX, 172}})); // on top
}

void tst_DrawerAreaCurves::twoLinesOfOneKey()
{
    Chart chart;
    ChartLine blue = newLine(1);
    ChartLine red = newLine(1, Qt::red);
    chart.addChartLine(&blue);
    chart.addChartLine(&red);
    chart.addValue(1, 0, 6, 1, 20);
    const QImage image = paint(chart);
    QCOMPARE(places(image, Qt::blue), QList<QPoint>());
    QCOMPARE(places(image, Qt::red), covered({{NewestX, 193}}));
}

void tst_DrawerAreaCurves::invalidColor()
{
    Chart chart;
    ChartLine line = newLine(1, QColor());
    chart.addChartLine(&line);
    line.addValue(50);
    const QImage image = paint(chart);
    QCOMPARE(image.pixel(NewestX, 130), QColor(Qt::black).rgba());
}

QTEST_MAIN(tst_DrawerAreaCurves)
#include "tst_DrawerAreaCurves.moc"
