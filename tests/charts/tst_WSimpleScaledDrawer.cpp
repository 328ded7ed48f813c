#include "PanelWindow.h"
#include "charts/WSimpleScaledGraphController.h"
#include "support/MetaMethods.h"
#include "support/TestCase.h"

#include <QLayout>
#include <QSignalSpy>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace ChartTest;

using Samples = QList<double>;

class tst_WSimpleScaledDrawer : public TestCase
{
    Q_OBJECT

private slots:
    void metaObject();
    void layout();
    void titles();
    void scrollBarAtTheStart();
    void setMaxSamples_data();
    void setMaxSamples();
    void limitOfNewLines();
    void requestedTraceValue_data();
    void requestedTraceValue();
    void otherCommandsAreNotFed();
    void valueWithoutALine();
    void linesAreThoseOfTheArea();
    void scalePassesThrough();
    void startAndStop();
    void minimumIsTheWidth();
    void minimumFollowsAtEveryPaint();
    void widenedAtTheMinimum();
    void widerThanTheHistory();
    void widthChangesFromWithinAPaint();
    void scrollPaintsAtOnce();
    void scrolledToTheOldest();
    void newestStaysAtTheRight();
    void boxesShowTheDynamicScale();
    void manualKeepsTheLastScale();
    void enteredBound_data();
    void enteredBound();
    void clearCharts();
    void bothButtonsUnchecked();
};

void tst_WSimpleScaledDrawer::metaObject()
{
    const QMetaObject &meta = WSimpleScaledDrawer::staticMetaObject;
    QCOMPARE(meta.superClass(), &QWidget::staticMetaObject);
    QCOMPARE(ownMethods(meta, QMetaMethod::Signal), QStringList{u"chartSelectionChanged()"_s});
    QCOMPARE(
        ownMethods(meta, QMetaMethod::Slot),
        (QStringList{u"scrollBarValueChanged(int value)"_s, u"startDrawing()"_s, u"stopDrawing()"_s,
                     u"requestedTraceValue(char address, char motorBank, char typeNumber, "
                     "int value)"_s,
                     u"handleChangedChartWidth(int width)"_s}));
    QWidget window;
    QCOMPARE((new WSimpleScaledDrawer(&window))->parentWidget(), &window);
}

void tst_WSimpleScaledDrawer::layout()
{
    PanelWindow panel;
    QVERIFY(panel.open({800, 300}));
    const auto *controller = panel.findChild<WSimpleScaledGraphController *>();
    QVERIFY(controller);
    QCOMPARE(panel.layout()->spacing(), 0);
    QWidget *inner = panel.area()->parentWidget();
    QCOMPARE(inner->parentWidget(), &panel);
    QCOMPARE(panel.scrollBar()->parentWidget(), inner);
    QCOMPARE(inner->layout()->spacing(), 0);
    QCOMPARE(panel.scrollBar()->orientation(), Qt::Horizontal);
    // The bar is right below the area, the controls are to the right of both.
    QCOMPARE(panel.scrollBar()->y(), panel.area()->geometry().bottom() + 1);
    QCOMPARE(controller->x(), inner->geometry().right() + 1);
    QVERIFY(panel.area()->width() > 500);
}

void tst_WSimpleScaledDrawer::titles()
{
    WSimpleScaledDrawer panel;
    panel.setTitle(u"Delta"_s);
    QCOMPARE(panel.title(), u"Delta"_s);
    QCOMPARE(panel.windowTitle(), u"Delta"_s);
    QCOMPARE(panel.findChild<DrawerArea *>()->title(), u"Delta"_s);
}

void tst_WSimpleScaledDrawer::scrollBarAtTheStart()
{
    const PanelWindow panel;
    QCOMPARE(panel.scrollBar()->minimum(), 0);
    QCOMPARE(panel.scrollBar()->maximum(), 999);
    QCOMPARE(panel.scrollBar()->value(), 999);
    QCOMPARE(panel.scrollBar()->singleStep(), 100);
    QCOMPARE(panel.chartLines().first()->maxSamples(), 1000);
}

void tst_WSimpleScaledDrawer::setMaxSamples_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<QList<int>>("range"); // minimum, maximum, value
    QTest::newRow("10000") << 10000 << QList<int>{0, 9999, 9999};
    QTest::newRow("fewer") << 10 << QList<int>{0, 9, 9};
    QTest::newRow("one") << 1 << QList<int>{0, 0, 0};
    QTest::newRow("none") << 0 << QList<int>{-1, -1, -1};
    QTest::newRow("least int") << LeastInt << QList<int>{-1, -1, -1};
    QTest::newRow("largest int") << LargestInt << QList<int>{0, LargestInt - 1, LargestInt - 1};
}

void tst_WSimpleScaledDrawer::setMaxSamples()
{
    QFETCH(int, count);
    PanelWindow panel;
    panel.scrollBar()->setValue(500);
    panel.setMaxSamples(count);
    const QScrollBar *bar = panel.scrollBar();
    QTEST((QList<int>{bar->minimum(), bar->maximum(), bar->value()}), "range");
}

void tst_WSimpleScaledDrawer::limitOfNewLines()
{
    PanelWindow panel;
    panel.setMaxSamples(2);
    panel.addChartLine(new ChartLine(newLine(1)));
    QCOMPARE(panel.chartLines().first()->maxSamples(), 1000);
    QCOMPARE(panel.chartLines().last()->maxSamples(), 2);
}

void tst_WSimpleScaledDrawer::requestedTraceValue_data()
{
    QTest::addColumn<QList<int>>("key"); // address, motor bank, type
    QTest::addColumn<Samples>("samples");
    QTest::newRow("the line's") << QList<int>{200, 3, 230} << Samples{-5};
    QTest::newRow("as signed bytes") << QList<int>{-56, 3, -26} << Samples{-5};
    QTest::newRow("another address") << QList<int>{1, 3, 230} << Samples();
    QTest::newRow("another bank") << QList<int>{200, 0, 230} << Samples();
    QTest::newRow("another type") << QList<int>{200, 3, 102} << Samples();
}

void tst_WSimpleScaledDrawer::requestedTraceValue()
{
    QFETCH(QList<int>, key);
    WSimpleScaledDrawer panel;
    panel.addChartLine(new ChartLine(200, 3, 6, 230, u"gamma"_s, Qt::blue));
    panel.requestedTraceValue(static_cast<char>(key.at(0)), static_cast<char>(key.at(1)),
                              static_cast<char>(key.at(2)), -5);
    QTEST(panel.chartLines().first()->samples(), "samples");
}

void tst_WSimpleScaledDrawer::otherCommandsAreNotFed()
{
    WSimpleScaledDrawer panel;
    panel.addChartLine(new ChartLine(1, 0, 10, 1, u"global"_s, Qt::blue));
    panel.addChartLine(new ChartLine(1, 0, 6, 1, u"axis"_s, Qt::blue));
    panel.requestedTraceValue(1, 0, 1, 5);
    QCOMPARE(panel.chartLines().first()->samples(), Samples());
    QCOMPARE(panel.chartLines().last()->samples(), Samples{5});
}

void tst_WSimpleScaledDrawer::valueWithoutALine()
{
    PanelWindow panel;
    panel.poll(7, 5);
    panel.poll(2, 6);
    QCOMPARE(panel.samples(0), Samples());
    QCOMPARE(panel.samples(1), Samples{6});
}

void tst_WSimpleScaledDrawer::linesAreThoseOfTheArea()
{
    PanelWindow panel;
    QCOMPARE(panel.chartLines(), panel.area()->chartLines());
    ChartLine *red = panel.chartLines().last();
    panel.removeChartLine(1, 0, 6, 1);
    QCOMPARE(panel.area()->chartLines(), QList<ChartLine *>{red});
    panel.poll(2, 6);
    panel.clearValues();
    QVERIFY(red->samples().isEmpty());
    panel.clearChartLines();
    QVERIFY(panel.area()->chartLines().isEmpty());
    panel.addChartLine(red); // it lives on, and may come back
    QCOMPARE(panel.area()->chartLines(), QList<ChartLine *>{red});
}

void tst_WSimpleScaledDrawer::scalePassesThrough()
{
    PanelWindow panel;
    QVERIFY(panel.open({500, 300}));
    panel.poll(1, 50);
    panel.doManualScaling();
    panel.setMinValue(0);
    panel.setMaxValue(50);
    QSignalSpy changed(panel.area(), &DrawerArea::scaleChanged);
    QVERIFY(places(paint(*panel.area()), Qt::blue)
                .contains(QPoint(panel.area()->width() - 22, 25))); // the top
    QCOMPARE(changed.count(), 0);
    panel.doDynamicScaling();
    paint(*panel.area());
    QCOMPARE(changed, (QList<QVariantList>{{0, 51}}));
}

void tst_WSimpleScaledDrawer::startAndStop()
{
    PanelWindow panel;
    QVERIFY(panel.open({600, 300}));
    QSignalSpy width(panel.area(), &DrawerArea::changedChartWidth);
    panel.startDrawing();
    QCOMPARE(panel.area()->findChild<QTimer *>()->interval(), 100);
    QTRY_VERIFY(width.count() >= 3);
    panel.stopDrawing();
    width.clear();
    QVERIFY(!width.wait(250));
    panel.poll(1, 5); // stored all the same
    QCOMPARE(panel.samples(0), Samples{5});
}

void tst_WSimpleScaledDrawer::minimumIsTheWidth()
{
    PanelWindow panel;
    panel.handleChangedChartWidth(300);
    QCOMPARE(panel.scrollBar()->minimum(), 300);
    QCOMPARE(panel.scrollBar()->maximum(), 999);
    QCOMPARE(panel.scrollBar()->value(), 999);
    panel.handleChangedChartWidth(-20);
    QCOMPARE(panel.scrollBar()->minimum(), -20);
}

void tst_WSimpleScaledDrawer::minimumFollowsAtEveryPaint()
{
    PanelWindow panel;
    QVERIFY(panel.open({800, 300}));
    QTRY_COMPARE(panel.scrollBar()->minimum(), panel.area()->width() - 120);
    panel.resize(700, 300);
    QTRY_COMPARE(panel.scrollBar()->minimum(), panel.area()->width() - 120);
    QCOMPARE(panel.scrollBar()->value(), 999);
}

// The paint of the wider panel raises the bar's minimum, that moves its value, and the value's slot
// asks for a repaint, all from within that paint.
void tst_WSimpleScaledDrawer::widenedAtTheMinimum()
{
    PanelWindow panel;
    for (int i = 0; i < 1000; ++i) {
        panel.poll(1, i < 700 ? 10 : 90);
    }
    QVERIFY(panel.open({500, 300}));
    QTRY_COMPARE(panel.scrollBar()->minimum(), panel.area()->width() - 120);
    panel.scrollBar()->setFocus();
    QTest::keyClick(panel.scrollBar(), Qt::Key_Home);
    QCOMPARE(panel.scrollBar()->value(), panel.scrollBar()->minimum());

    for (const int width : {900, 520, 1000, 501, 1050}) {
        panel.resize(width, 300);
        QTRY_COMPARE(panel.scrollBar()->minimum(), panel.area()->width() - 120);
        QVERIFY(panel.scrollBar()->value() >= panel.scrollBar()->minimum());
    }
    QCOMPARE(panel.scrollBar()->value(), panel.scrollBar()->minimum());
    // The chart follows the bar: with its minimum the oldest samples are in view, and none is
    // missing at the right edge.
    const QList<QPoint> points = places(paint(*panel.area()), Qt::blue);
    QVERIFY(!points.isEmpty());
    QCOMPARE(points.last().x(), panel.area()->width() - 22 + 1);
    QCOMPARE(points.first().x(), 99);
}

void tst_WSimpleScaledDrawer::widerThanTheHistory()
{
    PanelWindow panel;
    panel.setMaxSamples(50);
    QVERIFY(panel.open({700, 300}));
    // More columns than samples: the minimum takes the rest of the bar along.
    QTRY_COMPARE(panel.scrollBar()->minimum(), panel.area()->width() - 120);
    QCOMPARE(panel.scrollBar()->maximum(), panel.scrollBar()->minimum());
    QCOMPARE(panel.scrollBar()->value(), panel.scrollBar()->minimum());
    panel.poll(1, 5);
    paint(*panel.area());
    QVERIFY(!places(paint(*panel.area()), Qt::blue).isEmpty());
}

void tst_WSimpleScaledDrawer::widthChangesFromWithinAPaint()
{
    PanelWindow panel;
    QVERIFY(panel.open({500, 300}));
    QTRY_VERIFY(!panel.area()->testAttribute(Qt::WA_PendingUpdate));
    panel.scrollBar()->setValue(panel.scrollBar()->minimum());
    const PaintCounter paints(panel.area());
    panel.handleChangedChartWidth(panel.scrollBar()->value() + 10);
    QCOMPARE(paints.count(), 0); // never within the call
    QTRY_VERIFY(paints.count() >= 1); // but soon
}

void tst_WSimpleScaledDrawer::scrollPaintsAtOnce()
{
    PanelWindow panel;
    QVERIFY(panel.open({500, 300}));
    QTRY_VERIFY(!panel.area()->testAttribute(Qt::WA_PendingUpdate));
    const PaintCounter paints(panel.area());
    panel.scrollBar()->setFocus();
    QTest::keyClick(panel.scrollBar(), Qt::Key_Home);
    QCOMPARE(panel.scrollBar()->value(), panel.scrollBar()->minimum());
    QVERIFY(paints.count() >= 1);
}

void tst_WSimpleScaledDrawer::scrolledToTheOldest()
{
    PanelWindow panel;
    QVERIFY(panel.open({500, 300}));
    for (int i = 0; i < 1000; ++i) {
        panel.poll(1, i < 5 ? 100 : 1);
    }
    panel.area()->repaint();
    panel.scrollBar()->setFocus();
    QTest::keyClick(panel.scrollBar(), Qt::Key_Home);
    const int width = panel.area()->width() - 120;
    QCOMPARE(panel.scrollBar()->value(), width);
    panel.area()->repaint(); // the scale of what is now in view
    // The bar hides 999 - width samples: the second oldest one is in the last column at the left.
    const QImage image = paint(*panel.area());
    const int top = 20 + 5; // height less 39 above height less 15, less the part above 100
    QList<int> columns;
    for (const QPoint &place : places(image, Qt::blue)) {
        if (place.y() < top + 10 && !columns.contains(place.x())) {
            columns.append(place.x());
        }
    }
    QCOMPARE(columns, (QList<int>{99, 100, 101, 102, 103}));
}

void tst_WSimpleScaledDrawer::newestStaysAtTheRight()
{
    PanelWindow panel;
    QVERIFY(panel.open({500, 300}));
    panel.area()->repaint();
    panel.doManualScaling();
    panel.setMaxValue(100);
    const int x = panel.area()->width() - 22; // width less 1, less 119, and 98
    for (int i = 0; i < 1100; ++i) { // beyond the limit, too
        panel.poll(1, 50);
    }
    for (const int value : {10, 90, 20, 80}) {
        panel.poll(1, value);
        const int plotHeight = panel.area()->height() - 1 - 39;
        const int y = panel.area()->height() - 15 - value * plotHeight / 100;
        const QImage image = paint(*panel.area());
        bool isThere = false;
        for (int offset = 0; offset <= 1; ++offset) { // truncated
            isThere = isThere || image.pixel(x, y - offset) == QColor(Qt::blue).rgba();
        }
        QVERIFY(isThere);
    }
}

void tst_WSimpleScaledDrawer::boxesShowTheDynamicScale()
{
    PanelWindow panel;
    QVERIFY(panel.open({500, 300}));
    panel.poll(1, 150);
    panel.poll(2, -30);
    QSignalSpy changed(panel.area(), &DrawerArea::scaleChanged);
    panel.area()->repaint();
    QCOMPARE(panel.box("sbMax")->value(), 151);
    QCOMPARE(panel.box("sbMin")->value(), -31);
    panel.area()->repaint(); // what the boxes say back is the scale itself
    panel.area()->repaint();
    QCOMPARE(changed, (QList<QVariantList>{{-31, 151}}));
}

void tst_WSimpleScaledDrawer::manualKeepsTheLastScale()
{
    PanelWindow panel;
    QVERIFY(panel.open({500, 300}));
    panel.poll(1, 150);
    panel.area()->repaint();
    panel.click("btnScaleManually");
    panel.poll(1, 5000);
    QSignalSpy changed(panel.area(), &DrawerArea::scaleChanged);
    panel.area()->repaint();
    QCOMPARE(changed.count(), 0);
    QCOMPARE(panel.box("sbMax")->value(), 151);
    QCOMPARE(panel.box("sbMin")->value(), 0);
    panel.click("btnScaleDynamic");
    panel.area()->repaint();
    QCOMPARE(changed, (QList<QVariantList>{{0, 5001}}));
}

void tst_WSimpleScaledDrawer::enteredBound_data()
{
    QTest::addColumn<QByteArray>("box");
    QTest::addColumn<QString>("bound"); // puts 99 into the middle of the scale, which is 0 to 100
    QTest::newRow("maximum") << QByteArray("sbMax") << u"198"_s;
    QTest::newRow("minimum") << QByteArray("sbMin") << u"98"_s;
}

void tst_WSimpleScaledDrawer::enteredBound()
{
    QFETCH(QByteArray, box);
    QFETCH(QString, bound);
    PanelWindow panel;
    QVERIFY(panel.open({500, 300}));
    panel.poll(1, 99);
    panel.area()->repaint();
    panel.click("btnScaleManually");
    QSignalSpy changed(panel.area(), &DrawerArea::scaleChanged);
    const QImage before = paint(*panel.area());
    const PaintCounter paints(panel.area());
    panel.box(box)->setFocus();
    panel.box(box)->selectAll();
    QTest::keyClicks(panel.box(box), bound);
    QCOMPARE(paints.count(), 0);
    const QImage after = paint(*panel.area());
    QCOMPARE(changed.count(), 0);
    QVERIFY(before != after);
    const int height = panel.area()->height();
    const QPoint middle(panel.area()->width() - 22, height - 15 - (height - 40) / 2);
    const QList<QPoint> points = places(after, Qt::blue);
    QVERIFY(points.contains(middle) || points.contains(middle - QPoint(0, 1)));
}

void tst_WSimpleScaledDrawer::clearCharts()
{
    PanelWindow panel;
    QVERIFY(panel.open({500, 300}));
    panel.poll(1, 5);
    panel.poll(2, 5);
    panel.click("btnClearCharts");
    QCOMPARE(panel.samples(0), Samples());
    QCOMPARE(panel.samples(1), Samples());
}

void tst_WSimpleScaledDrawer::bothButtonsUnchecked()
{
    PanelWindow panel;
    QVERIFY(panel.open({500, 300}));
    panel.click("btnScaleManually");
    panel.click("btnScaleManually"); // unchecks it, and the mode stays
    panel.poll(1, 5000);
    QSignalSpy changed(panel.area(), &DrawerArea::scaleChanged);
    panel.area()->repaint();
    QCOMPARE(changed.count(), 0);
    QVERIFY(panel.box("sbMax")->isEnabled());
}

QTEST_MAIN(tst_WSimpleScaledDrawer)
#include "tst_WSimpleScaledDrawer.moc"
