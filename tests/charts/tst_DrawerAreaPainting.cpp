#include "FixedChart.h"
#include "support/TestCase.h"

using namespace Qt::StringLiterals;
using namespace ChartTest;
using namespace FixedChart;

class tst_DrawerAreaPainting : public TestCase
{
    Q_OBJECT

private slots:
    void background();
    void axes();
    void ticks();
    void title();
    void labels_data();
    void labels();
    void zeroLine_data();
    void zeroLine();
    void legend();
    void legendWithoutACurve();
    void legendWidthIsThatOfTheLongestName();
    void everyNameFollowsItsCurve();
};

void tst_DrawerAreaPainting::background()
{
    Chart chart;
    chart.setScale(0, 0); // neither labels nor a zero line
    const QImage image = paint(chart);
    QCOMPARE(places(image, Qt::magenta), QList<QPoint>());
    // Half of the outline lies outside of the widget, on each side.
    for (const QPoint place : {QPoint(0, 60), QPoint(399, 60), QPoint(50, 0), QPoint(50, 249)}) {
        const int gray = qGray(image.pixel(place));
        QVERIFY2(gray > 100 && gray < 160, qPrintable(QString::number(gray)));
    }
    QCOMPARE(ink(image, QRect(2, 2, 95, 230)), 0.0);
    QCOMPARE(ink(image, QRect(103, 20, 290, 210)), 0.0);
    QCOMPARE(ink(image, QRect(2, 240, 390, 7)), 0.0);
}

void tst_DrawerAreaPainting::axes()
{
    Chart chart;
    chart.setScale(0, 0);
    const QImage image = paint(chart);
    // One line of one pixel each, which the painter's window moves by less than a pixel.
    for (const int x : {110, 200, RightEnd - 2}) {
        const double across = ink(image, QRect(x, BaseY - 1, 1, 4));
        QVERIFY2(across > 0.95 && across < 1.1, qPrintable(QString::number(across)));
    }
    for (const int y : {22, 100, BaseY - 4}) {
        const double across = ink(image, QRect(98, y, 5, 1));
        QVERIFY2(across > 0.95 && across < 1.1, qPrintable(QString::number(across)));
    }
    QCOMPARE(ink(image, QRect(RightEnd + 3, BaseY - 1, 10, 4)), 0.0);
    QCOMPARE(ink(image, QRect(98, 3, 5, 15)), 0.0); // the value axis ends at 20
    QCOMPARE(ink(image, QRect(90, BaseY - 1, 8, 4)), 0.0); // the time axis begins at 100
}

void tst_DrawerAreaPainting::ticks()
{
    Chart chart;
    chart.setScale(100, 200); // zero is out of sight
    const QImage image = paint(chart);
    for (int i = 1; i <= 10; ++i) {
        const int y = BaseY - 21 * i;
        const double left = ink(image, QRect(98, y - 1, 1, 4));
        const double right = ink(image, QRect(101, y - 1, 1, 4));
        QVERIFY2(left > 0.6 && left < 1.1, qPrintable(QString::number(left)));
        QVERIFY2(right > 0.9 && right < 1.7, qPrintable(QString::number(right))); // axis, too
        QCOMPARE(ink(image, QRect(103, y - 10, 100, 9)), 0.0);
        QCOMPARE(ink(image, QRect(104, y - 1, 100, 4)), 0.0);
    }
}

void tst_DrawerAreaPainting::title()
{
    Chart chart;
    chart.setScale(100, 200);
    chart.setTitle(u"Velocity"_s);
    const QImage expected =
        drawn(chart, [](QPainter &painter) { painter.drawText(QPointF(100, 15), u"Velocity"_s); });
    const QRect above(90, 2, 300, 16);
    QVERIFY(ink(expected, above) > 20);
    QCOMPARE(paint(chart).copy(above), expected.copy(above));
}

void tst_DrawerAreaPainting::labels_data()
{
    QTest::addColumn<int>("min");
    QTest::addColumn<int>("max");
    QTest::addColumn<QStringList>("labels");
    QTest::newRow("0 to 100") << 0 << 100 << u"0 10 20 30 40 50 60 70 80 90 100"_s.split(u' ');
    QTest::newRow("tenths") << 0 << 1 << u"0 0.1 0.2 0.3 0.4 0.5 0.6 0.7 0.8 0.9 1"_s.split(u' ');
    QTest::newRow("below zero") << -50 << 51
                                << u"-50 -39.9 -29.8 -19.7 -9.6 0.5 10.6 20.7 30.8 40.9 51"_s.split(
                                       u' ');
    QTest::newRow("six digits")
        << 0 << 10000000
        << u"0 1e+06 2e+06 3e+06 4e+06 5e+06 6e+06 7e+06 8e+06 9e+06 1e+07"_s.split(u' ');
    QTest::newRow("turned over") << 100 << 0 << u"100 90 80 70 60 50 40 30 20 10 0"_s.split(u' ');
    QTest::newRow("32 bits") << LeastInt << LargestInt
                             << u"-2.14748e+09 -1.71799e+09 -1.28849e+09 -8.58993e+08 "
                                "-4.29497e+08 0 4.29497e+08 8.58993e+08 1.28849e+09 "
                                "1.71799e+09 2.14748e+09"_s.split(u' ');
}

void tst_DrawerAreaPainting::labels()
{
    QFETCH(int, min);
    QFETCH(int, max);
    QFETCH(QStringList, labels);
    Chart chart;
    chart.setScale(min, max);
    const QImage image = paint(chart);
    for (int i = 0; i <= 10; ++i) {
        const int y = BaseY - 21 * i;
        const QRect place(2, y - 8, 95, 16);
        QList<QImage> expected;
        for (const int rounding : {0, -1}) { // truncated from a float just below or above
            const QPointF position(20, y + rounding + 5);
            const QString text = labels.at(i);
            expected.append(drawn(chart, [position, text](QPainter &painter) {
                                painter.drawText(position, text);
                            }).copy(place));
        }
        QVERIFY2(expected.contains(image.copy(place)), qPrintable(labels.at(i)));
    }
}

void tst_DrawerAreaPainting::zeroLine_data()
{
    QTest::addColumn<int>("min");
    QTest::addColumn<int>("max");
    QTest::addColumn<int>("y");
    QTest::newRow("in the middle") << -50 << 50 << BaseY - PlotHeight / 2;
    QTest::newRow("near the top") << -90 << 10 << BaseY - 189;
    QTest::newRow("at the top") << -100 << 0 << BaseY - PlotHeight;
    // Nothing clips it: it may lie between the plot and the edge of the widget.
    QTest::newRow("below the axis") << 4 << 104 << BaseY + 8; // 8.4
    QTest::newRow("above the plot") << -105 << -5 << BaseY - 221; // 14.5, truncated
    QTest::newRow("turned over") << 40 << -60 << BaseY - 84;
}

void tst_DrawerAreaPainting::zeroLine()
{
    QFETCH(int, min);
    QFETCH(int, max);
    QFETCH(int, y);
    Chart chart;
    chart.setScale(min, max);
    const QImage expected = drawn(chart, [y](QPainter &painter) {
        painter.setPen(Qt::gray);
        painter.drawLine(100, y, RightEnd, y);
    });
    const QImage image = paint(chart);
    const QRect onIt(110, y - 2, RightEnd - 100, 5); // a little over the line's end
    QVERIFY(ink(expected, onIt) > 50);
    QCOMPARE(image.copy(onIt), expected.copy(onIt));
    // There is no other grey line.
    const QRect plot(110, 2, 250, BaseY - 3);
    QCOMPARE(ink(image, plot), ink(expected, plot));
}

void tst_DrawerAreaPainting::legend()
{
    Chart chart;
    chart.setScale(0, 100);
    ChartLine first = newLine(1, Qt::blue, u"actual [pps]"_s);
    ChartLine second = newLine(2, Qt::red, u"target [pps]"_s);
    ChartLine third = newLine(3, Qt::darkGreen, u"delta"_s);
    for (ChartLine *line : {&first, &second, &third}) {
        chart.addChartLine(line);
        line->addValue(90); // above the legend
    }
    const int x = RightEnd - 5 * 12;
    const int y = BaseY - 2 * PlotHeight / 3;
    QCOMPARE(y, 95);
    const QImage expected = drawn(chart, [x, y](QPainter &painter) {
        painter.setPen(Qt::blue);
        painter.drawText(QPointF(x, y), u"actual [pps]"_s);
        painter.setPen(Qt::red);
        painter.drawText(QPointF(x, y + 20), u"target [pps]"_s);
        painter.setPen(Qt::darkGreen);
        painter.drawText(QPointF(x, y + 40), u"delta"_s);
    });
    const QRect place(x - 100, y - 20, 398 - x + 100, 80);
    QVERIFY(ink(expected, place) > 60);
    QCOMPARE(paint(chart).copy(place), expected.copy(place));
}

void tst_DrawerAreaPainting::legendWithoutACurve()
{
    Chart chart;
    ChartLine line = newLine(1, Qt::blue, u"delta"_s);
    chart.addChartLine(&line);
    const QImage expected = drawn(chart, [](QPainter &painter) {
        painter.setPen(Qt::blue);
        painter.drawText(QPointF(RightEnd - 25, 95), u"delta"_s);
    });
    const QRect place(250, 70, 140, 50);
    QCOMPARE(paint(chart).copy(place), expected.copy(place));
    // Scrolled behind its history, too.
    line.addValue(90);
    chart.setScrollRange(0, 99, 0);
    QCOMPARE(paint(chart).copy(place), expected.copy(place));
}

void tst_DrawerAreaPainting::legendWidthIsThatOfTheLongestName()
{
    Chart chart;
    ChartLine shortName = newLine(1, Qt::blue, u"d"_s);
    ChartLine longName = newLine(2, Qt::white, u"0123456789"_s);
    chart.addChartLine(&shortName);
    chart.addChartLine(&longName);
    const QImage expected = drawn(chart, [](QPainter &painter) {
        painter.setPen(Qt::blue);
        painter.drawText(QPointF(RightEnd - 50, 95), u"d"_s);
    });
    const QRect place(250, 70, 140, 50);
    QVERIFY(ink(expected, place) > 5);
    QCOMPARE(paint(chart).copy(place), expected.copy(place));
}

// The curve of each line runs through the other one's name: what is drawn later lies on top.
void tst_DrawerAreaPainting::everyNameFollowsItsCurve()
{
    constexpr int Points = 18;
    Chart chart;
    ChartLine first = newLine(1, Qt::blue, u"MMMM"_s);
    ChartLine second = newLine(2, Qt::red, u"MMMM"_s);
    chart.addChartLine(&first);
    chart.addChartLine(&second);
    for (int i = 0; i < Points; ++i) {
        first.addValue(59.5); // 5 pixels above the base line of the second name
        second.addValue(69); // and of the first
    }
    const QImage expected = drawn(chart, [](QPainter &painter) {
        const auto drawCurve = [&painter](int y, const QColor &color) {
            painter.setViewTransformEnabled(false);
            painter.fillRect(NewestX - Points + 1, y, Points + 1, 2, color);
            painter.setViewTransformEnabled(true);
        };
        drawCurve(110, Qt::blue);
        painter.setPen(Qt::blue);
        painter.drawText(QPointF(RightEnd - 20, 95), u"MMMM"_s);
        drawCurve(90, Qt::red);
        painter.setPen(Qt::red);
        painter.drawText(QPointF(RightEnd - 20, 115), u"MMMM"_s);
    });
    const QRect place(350, 80, 45, 40);
    QCOMPARE(paint(chart).copy(place), expected.copy(place));
}

QTEST_MAIN(tst_DrawerAreaPainting)
#include "tst_DrawerAreaPainting.moc"
