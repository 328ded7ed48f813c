#include "ChartTest.h"
#include "support/MetaMethods.h"
#include "support/TestCase.h"

#include <QSignalSpy>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace ChartTest;

using Samples = QList<double>;

class tst_DrawerArea : public TestCase
{
    Q_OBJECT

private slots:
    void metaObject();
    void start();
    void title();
    void addValue_data();
    void addValue();
    void addValueToLinesOfOneKey();
    void limitIsThatAtTheTimeOfAdding();
    void limitBeforeItIsSet();
    void clearValues();
    void clearChartLines();
    void removeChartLine_data();
    void removeChartLine();
    void chartWidthAtEveryPaint();
    void nothingRepaintsByItself();
    void timer();
    void interval();
    void setIntervalDoesNotStart();
    void clearedWhileRunning();
};

void tst_DrawerArea::metaObject()
{
    const QMetaObject &meta = DrawerArea::staticMetaObject;
    QCOMPARE(meta.superClass(), &QWidget::staticMetaObject);
    QCOMPARE(ownMethods(meta, QMetaMethod::Signal),
             (QStringList{u"scaleChanged(int minValue, int maxValue)"_s,
                          u"changedChartWidth(int width)"_s}));
    QCOMPARE(ownMethods(meta, QMetaMethod::Slot),
             (QStringList{u"startDrawer()"_s, u"stopDrawer()"_s, u"clearValues()"_s,
                          u"doManualScaling()"_s, u"doDynamicScaling()"_s,
                          u"setMaxValue(int max)"_s, u"setMinValue(int min)"_s}));
}

void tst_DrawerArea::start()
{
    QWidget window;
    const auto *area = new DrawerArea(&window);
    QCOMPARE(area->parentWidget(), &window);
    QCOMPARE(area->minimumSize(), QSize(100, 100));
    QCOMPARE(area->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    QCOMPARE(area->sizePolicy().verticalPolicy(), QSizePolicy::Expanding);
    QCOMPARE(area->title(), QString());
    QVERIFY(area->chartLines().isEmpty());
}

void tst_DrawerArea::title()
{
    DrawerArea area;
    area.setTitle(u"Velocity"_s);
    QCOMPARE(area.title(), u"Velocity"_s);
}

void tst_DrawerArea::addValue_data()
{
    QTest::addColumn<QList<int>>("key");
    QTest::addColumn<Samples>("samples");
    QTest::newRow("the line's") << QList<int>{1, 0, 6, 230} << Samples{-7};
    QTest::newRow("another address") << QList<int>{2, 0, 6, 230} << Samples();
    QTest::newRow("another bank") << QList<int>{1, 1, 6, 230} << Samples();
    QTest::newRow("another command") << QList<int>{1, 0, 5, 230} << Samples();
    QTest::newRow("another type") << QList<int>{1, 0, 6, 231} << Samples();
}

void tst_DrawerArea::addValue()
{
    QFETCH(QList<int>, key);
    DrawerArea area;
    ChartLine line = newLine(230);
    area.addChartLine(&line);
    area.addValue(static_cast<quint8>(key.at(0)), static_cast<quint8>(key.at(1)),
                  static_cast<quint8>(key.at(2)), static_cast<quint8>(key.at(3)), -7);
    QTEST(line.samples(), "samples");
}

void tst_DrawerArea::addValueToLinesOfOneKey()
{
    DrawerArea area;
    ChartLine first = newLine(1);
    ChartLine other = newLine(2);
    ChartLine second = newLine(1);
    for (ChartLine *line : {&first, &other, &second}) {
        area.addChartLine(line);
    }
    area.addValue(1, 0, 6, 1, LargestInt);
    QCOMPARE(first.samples(), Samples{2147483647.0});
    QCOMPARE(second.samples(), Samples{2147483647.0});
    QCOMPARE(other.samples(), Samples());
}

void tst_DrawerArea::limitIsThatAtTheTimeOfAdding()
{
    DrawerArea area;
    ChartLine early = newLine(1);
    ChartLine late = newLine(1);
    for (const double value : {1, 2, 3}) {
        early.addValue(value);
        late.addValue(value);
    }
    area.setMaxSamples(2);
    area.addChartLine(&early);
    QCOMPARE(early.samples(), (Samples{2, 3}));
    area.setMaxSamples(1);
    area.addChartLine(&late);
    QCOMPARE(late.samples(), Samples{3});
    QCOMPARE(early.maxSamples(), 2);
    QCOMPARE(early.samples(), (Samples{2, 3}));
}

void tst_DrawerArea::limitBeforeItIsSet()
{
    DrawerArea area;
    ChartLine line = newLine(1);
    area.addChartLine(&line);
    QCOMPARE(line.maxSamples(), 100);
}

void tst_DrawerArea::clearValues()
{
    DrawerArea area;
    ChartLine a = newLine(1);
    ChartLine b = newLine(2);
    area.addChartLine(&a);
    area.addChartLine(&b);
    area.addValue(1, 0, 6, 1, 10);
    area.addValue(1, 0, 6, 2, 20);
    area.clearValues();
    QVERIFY(a.samples().isEmpty());
    QVERIFY(b.samples().isEmpty());
    QCOMPARE(a.smoothed(), 2.0);
    QCOMPARE(b.smoothed(), 4.0);
}

void tst_DrawerArea::clearChartLines()
{
    DrawerArea area;
    ChartLine line = newLine(1);
    area.addChartLine(&line);
    area.addValue(1, 0, 6, 1, 10);
    area.clearChartLines();
    QVERIFY(area.chartLines().isEmpty());
    QCOMPARE(line.samples(), Samples{10}); // it lives on, as it was
}

void tst_DrawerArea::removeChartLine_data()
{
    QTest::addColumn<QList<int>>("types");
    QTest::addColumn<QList<int>>("left"); // their places, after the removal of type 1
    QTest::newRow("none") << QList<int>{2, 3} << QList<int>{0, 1};
    QTest::newRow("first") << QList<int>{1, 2} << QList<int>{1};
    QTest::newRow("last") << QList<int>{2, 1} << QList<int>{0};
    QTest::newRow("two adjacent") << QList<int>{1, 1} << QList<int>{1};
    QTest::newRow("three adjacent") << QList<int>{1, 1, 1} << QList<int>{1};
    QTest::newRow("two apart") << QList<int>{1, 2, 1} << QList<int>{1};
    QTest::newRow("apart, then adjacent") << QList<int>{1, 2, 1, 1} << QList<int>{1, 3};
}

void tst_DrawerArea::removeChartLine()
{
    QFETCH(QList<int>, types);
    std::vector<ChartLine> lines;
    for (const int type : types) {
        lines.push_back(newLine(static_cast<quint8>(type)));
    }
    DrawerArea area;
    for (ChartLine &line : lines) {
        area.addChartLine(&line);
    }
    area.removeChartLine(2, 0, 6, 1);
    area.removeChartLine(1, 2, 6, 1);
    area.removeChartLine(1, 0, 7, 1);
    QCOMPARE(area.chartLines().size(), types.size());

    area.removeChartLine(1, 0, 6, 1);
    QList<int> left;
    for (const ChartLine *line : area.chartLines()) {
        left.append(static_cast<int>(line - lines.data()));
    }
    QTEST(left, "left");
}

void tst_DrawerArea::chartWidthAtEveryPaint()
{
    DrawerArea area;
    area.resize(400, 250);
    QSignalSpy width(&area, &DrawerArea::changedChartWidth);
    paint(area);
    paint(area);
    area.resize(100, 250);
    paint(area);
    QCOMPARE(width, (QList<QVariantList>{{280}, {280}, {-20}}));
}

void tst_DrawerArea::nothingRepaintsByItself()
{
    DrawerArea area;
    ChartLine line = newLine(1);
    area.show();
    QVERIFY(QTest::qWaitForWindowExposed(&area));
    QTRY_VERIFY(!area.testAttribute(Qt::WA_PendingUpdate));
    const PaintCounter paints(&area);
    area.addChartLine(&line);
    area.addValue(1, 0, 6, 1, 5);
    area.setMinValue(-5);
    area.setMaxValue(5);
    area.doManualScaling();
    area.doDynamicScaling();
    area.setScrollRange(0, 10, 5);
    area.setResolution(2);
    area.setTitle(u"title"_s);
    area.clearValues();
    area.clearChartLines();
    QTest::qWait(0);
    QCOMPARE(paints.count(), 0);
    area.repaint();
    QCOMPARE(paints.count(), 1);
}

void tst_DrawerArea::timer()
{
    DrawerArea area;
    area.show();
    QVERIFY(QTest::qWaitForWindowExposed(&area));
    area.setInterval(1);
    QSignalSpy width(&area, &DrawerArea::changedChartWidth);
    area.startDrawer();
    QTRY_VERIFY(width.count() >= 3);
    area.stopDrawer();
    width.clear();
    QVERIFY(!width.wait(50)); // fifty times the interval
}

void tst_DrawerArea::interval()
{
    DrawerArea area;
    const auto *timer = area.findChild<QTimer *>();
    QVERIFY(timer);
    QVERIFY(!timer->isActive());
    area.startDrawer();
    QVERIFY(timer->isActive());
    QCOMPARE(timer->interval(), 1000);
    area.setInterval(250);
    QCOMPARE(timer->interval(), 250);
    area.stopDrawer();
    QVERIFY(!timer->isActive());
    area.startDrawer();
    QCOMPARE(timer->interval(), 250);
}

void tst_DrawerArea::setIntervalDoesNotStart()
{
    DrawerArea area;
    area.show();
    QVERIFY(QTest::qWaitForWindowExposed(&area));
    QTRY_VERIFY(!area.testAttribute(Qt::WA_PendingUpdate));
    QSignalSpy width(&area, &DrawerArea::changedChartWidth);
    area.setInterval(1);
    QVERIFY(!width.wait(50));
    area.startDrawer(); // with the interval that was set before
    QTRY_VERIFY(width.count() >= 3);
}

void tst_DrawerArea::clearedWhileRunning()
{
    DrawerArea area;
    ChartLine line = newLine(1);
    area.addChartLine(&line);
    area.addValue(1, 0, 6, 1, 150);
    area.show();
    QVERIFY(QTest::qWaitForWindowExposed(&area));
    area.setInterval(1);
    QSignalSpy changed(&area, &DrawerArea::scaleChanged);
    area.startDrawer();
    area.clearValues();
    QTRY_VERIFY(!changed.isEmpty() && changed.last() == (QVariantList{0, 0}));
    QVERIFY(places(paint(area), Qt::blue).isEmpty());
    area.addValue(1, 0, 6, 1, 20); // stored, and seen by the next tick
    QTRY_COMPARE(changed.last(), (QVariantList{0, 21}));
}

QTEST_MAIN(tst_DrawerArea)
#include "tst_DrawerArea.moc"
