#include "PanelWindow.h"
#include "SelectorTest.h"
#include "charts/DChartSelector.h"
#include "comm/TraceCommand.h"
#include "support/DebugLog.h"
#include "support/TestCase.h"

#include <QMouseEvent>
#include <QPointer>
#include <QSignalSpy>

#include <memory>

using namespace Qt::StringLiterals;
using namespace ChartTest;
using namespace SelectorTest;

using Answer = ModalAnswer<DChartSelector>;
using Samples = QList<double>;

namespace {

QStringList linesOf(const WSimpleScaledDrawer &panel)
{
    QStringList lines;
    for (const ChartLine *line : panel.chartLines()) {
        lines.append(u"%1 %2 %3 %4 %5 %6"_s.arg(line->address())
                         .arg(line->motorBank())
                         .arg(line->command())
                         .arg(line->type())
                         .arg(line->name(), line->color().name()));
    }
    return lines;
}

/// Without what the platform says of itself.
QStringList ownLines(const DebugLog &log)
{
    return log.lines().filter(u"SelectionTable"_s);
}

void rightClick(QWidget *widget)
{
    QTest::mouseClick(widget, Qt::RightButton, {}, QPoint(widget->width() / 2, 5));
}

} // namespace

/// The choice of curves, from the click on the panel to its new lines.
class tst_WSimpleScaledDrawerSelection : public TestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void opens_data();
    void opens();
    void notSelectable();
    void dialogShowsTheChart();
    void cancelKeepsEverything();
    void escapeKeepsEverything();
    void acceptedUnchanged();
    void acceptedOthers();
    void acceptedEmpty();
    void unreadableCells();
    void samplesGoToTheOldLinesMeanwhile();
    void sameValueTwiceDrawsTwoLines();
    void oldLinesLiveUntilTheSignalIsOver();
    void newLinesHaveTheLimitOfTheArea();
    void dialogStaysWithItsPanel();
    void panelGoesWithItsDialogOpen();
    void availableTraces();

private:
    std::unique_ptr<PanelWindow> m_panel;
    std::vector<TraceCommand> m_traces;
};

void tst_WSimpleScaledDrawerSelection::init()
{
    TestCase::init();
    m_traces = {TraceCommand(1, 0, 6, 14, u"delta"_s),
                TraceCommand(char(200), 3, 6, char(230), u"gamma"_s)};
    m_panel = std::make_unique<PanelWindow>();
    m_panel->setTitle(u"Velocity"_s);
    m_panel->setChartsSelectable(true);
    m_panel->setAvailableTraces({&m_traces.front(), &m_traces.back()});
    QVERIFY(m_panel->open({700, 300}));
    m_panel->poll(1, 10);
    m_panel->poll(2, 20);
}

void tst_WSimpleScaledDrawerSelection::cleanup()
{
    m_panel.reset();
}

void tst_WSimpleScaledDrawerSelection::opens_data()
{
    QTest::addColumn<QString>("widget");
    QTest::addColumn<int>("button");
    QTest::addColumn<bool>("opens");
    for (const char *widget : {"area", "panel", "group box"}) {
        const QString name = QString::fromLatin1(widget);
        QTest::addRow("left on the %s", widget) << name << int(Qt::LeftButton) << false;
        QTest::addRow("middle on the %s", widget) << name << int(Qt::MiddleButton) << false;
        QTest::addRow("right on the %s", widget) << name << int(Qt::RightButton) << true;
    }
}

void tst_WSimpleScaledDrawerSelection::opens()
{
    QFETCH(QString, widget);
    QFETCH(int, button);
    QFETCH(bool, opens);
    const Answer answer([](DChartSelector *) {});
    QWidget *target = widget == u"area" ? m_panel->area()
        : widget == u"panel"            ? static_cast<QWidget *>(m_panel.get())
                                        : m_panel->control("gbScalingYAxis");
    QTest::mouseClick(target, Qt::MouseButton(button), {}, QPoint(2, 2));
    QTest::qWait(0);
    QCOMPARE(answer.given(), opens);
    QVERIFY(!QApplication::activeModalWidget());
}

void tst_WSimpleScaledDrawerSelection::notSelectable()
{
    m_panel->setChartsSelectable(false);
    const Answer answer([](DChartSelector *) {});
    rightClick(m_panel->area());
    QTest::qWait(0);
    QVERIFY(!answer.given());
    PanelWindow fresh; // nor is a new panel
    QVERIFY(fresh.open({500, 300}));
    rightClick(fresh.area());
    QTest::qWait(0);
    QVERIFY(!answer.given());
}

void tst_WSimpleScaledDrawerSelection::dialogShowsTheChart()
{
    const Answer answer([this](DChartSelector *dialog) {
        QCOMPARE(dialog->parentWidget(), m_panel.get());
        QCOMPARE(dialog->windowTitle(), u"Select charts for \"Velocity\" graph"_s);
        QCOMPARE(rows(table(dialog, "twSelected")),
                 (QStringList{u"6 1  #0000ff 1 0"_s, u"6 2  #ff0000 1 0"_s}));
        QCOMPARE(rows(table(dialog, "twAvailable")),
                 (QStringList{u"6 14 delta #c0c0c0 1 0"_s, u"6 230 gamma #c0c0c0 200 3"_s}));
    });
    rightClick(m_panel->area());
    QVERIFY(answer.given());
}

void tst_WSimpleScaledDrawerSelection::cancelKeepsEverything()
{
    const QList<ChartLine *> before = m_panel->chartLines();
    QSignalSpy changed(m_panel.get(), &WSimpleScaledDrawer::chartSelectionChanged);
    const DebugLog log;
    const Answer answer([](DChartSelector *dialog) {
        clickCell(table(dialog, "twSelected"), 0, 0);
        press(dialog, QDialogButtonBox::Cancel);
    });
    rightClick(m_panel->area());
    QVERIFY(answer.given());
    QCOMPARE(m_panel->chartLines(), before);
    QCOMPARE(m_panel->samples(0), Samples{10});
    QCOMPARE(m_panel->samples(1), Samples{20});
    QCOMPARE(changed.count(), 0);
    QCOMPARE(ownLines(log), QStringList());
}

void tst_WSimpleScaledDrawerSelection::escapeKeepsEverything()
{
    QSignalSpy changed(m_panel.get(), &WSimpleScaledDrawer::chartSelectionChanged);
    const Answer answer([](DChartSelector *dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
    rightClick(m_panel->area());
    QVERIFY(answer.given());
    QCOMPARE(m_panel->samples(0), Samples{10});
    QCOMPARE(changed.count(), 0);
}

void tst_WSimpleScaledDrawerSelection::acceptedUnchanged()
{
    const QList<ChartLine *> before = m_panel->chartLines();
    QStringList seenInSignal;
    connect(m_panel.get(), &WSimpleScaledDrawer::chartSelectionChanged, m_panel.get(),
            [&] { seenInSignal.append(linesOf(*m_panel)); });
    const DebugLog log;
    const Answer answer([](DChartSelector *dialog) { press(dialog, QDialogButtonBox::Ok); });
    rightClick(m_panel->area());
    QVERIFY(answer.given());
    QCOMPARE(linesOf(*m_panel), (QStringList{u"1 0 6 1  #0000ff"_s, u"1 0 6 2  #ff0000"_s}));
    QCOMPARE(seenInSignal, linesOf(*m_panel)); // once, with all lines there
    QVERIFY(!before.contains(m_panel->chartLines().first()));
    QCOMPARE(m_panel->samples(0), Samples()); // all history is lost
    QCOMPARE(m_panel->samples(1), Samples());
    QCOMPARE(ownLines(log), QStringList{u"SelectionTable: \"2\""_s});
}

void tst_WSimpleScaledDrawerSelection::acceptedOthers()
{
    const Answer answer([](DChartSelector *dialog) {
        const ModalAnswer<QColorDialog> color(
            [](QColorDialog *chooser) { enterColor(chooser, u"#00aa00"_s); });
        clickCell(table(dialog, "twAvailable"), 1, 3);
        QVERIFY(color.given());
        clickCell(table(dialog, "twAvailable"), 1, 2);
        clickCell(table(dialog, "twAvailable"), 0, 2);
        clickCell(table(dialog, "twSelected"), 0, 0);
        press(dialog, QDialogButtonBox::Ok);
    });
    rightClick(m_panel->area());
    QVERIFY(answer.given());
    QCOMPARE(linesOf(*m_panel),
             (QStringList{u"1 0 6 2  #ff0000"_s, u"200 3 6 230 gamma #00aa00"_s,
                          u"1 0 6 14 delta #c0c0c0"_s})); // light grey where none was chosen
    m_panel->requestedTraceValue(char(200), 3, char(230), 7);
    QCOMPARE(m_panel->samples(1), Samples{7});
}

void tst_WSimpleScaledDrawerSelection::acceptedEmpty()
{
    QSignalSpy changed(m_panel.get(), &WSimpleScaledDrawer::chartSelectionChanged);
    const DebugLog log;
    const Answer answer([](DChartSelector *dialog) {
        clickCell(table(dialog, "twSelected"), 0, 0);
        clickCell(table(dialog, "twSelected"), 0, 0);
        press(dialog, QDialogButtonBox::Ok);
    });
    rightClick(m_panel->area());
    QVERIFY(answer.given());
    QVERIFY(m_panel->chartLines().isEmpty());
    QCOMPARE(changed.count(), 1);
    QCOMPARE(ownLines(log), QStringList{u"SelectionTable: \"0\""_s});
}

void tst_WSimpleScaledDrawerSelection::unreadableCells()
{
    const Answer answer([](DChartSelector *dialog) {
        QTableWidget *selected = table(dialog, "twSelected");
        selected->item(0, 1)->setText(u"many"_s);
        selected->item(0, 3)->setData(Qt::BackgroundRole, QVariant());
        press(dialog, QDialogButtonBox::Ok);
    });
    rightClick(m_panel->area());
    QVERIFY(answer.given());
    QVERIFY(m_panel->chartLines().first()->hasKey(1, 0, 6, 0));
    QVERIFY(!m_panel->chartLines().first()->color().isValid());
    m_panel->area()->repaint(); // such a line paints, too
}

void tst_WSimpleScaledDrawerSelection::samplesGoToTheOldLinesMeanwhile()
{
    const Answer answer([this](DChartSelector *dialog) {
        clickCell(table(dialog, "twSelected"), 0, 0);
        m_panel->poll(1, 11);
        QCOMPARE(m_panel->samples(0), (Samples{10, 11}));
        press(dialog, QDialogButtonBox::Cancel);
    });
    rightClick(m_panel->area());
    QVERIFY(answer.given());
    QCOMPARE(m_panel->samples(0), (Samples{10, 11}));
}

void tst_WSimpleScaledDrawerSelection::sameValueTwiceDrawsTwoLines()
{
    m_panel->addAvailableTrace(&m_traces.front());
    const Answer answer([](DChartSelector *dialog) {
        clickCell(table(dialog, "twAvailable"), 2, 2);
        clickCell(table(dialog, "twAvailable"), 0, 2);
        press(dialog, QDialogButtonBox::Ok);
    });
    rightClick(m_panel->area());
    QVERIFY(answer.given());
    m_panel->poll(14, 33);
    QCOMPARE(m_panel->samples(2), Samples{33});
    QCOMPARE(m_panel->samples(3), Samples{33});
}

void tst_WSimpleScaledDrawerSelection::oldLinesLiveUntilTheSignalIsOver()
{
    const ChartLine *old = m_panel->chartLines().first();
    Samples oldSamples;
    connect(m_panel.get(), &WSimpleScaledDrawer::chartSelectionChanged, m_panel.get(),
            [&] { oldSamples = old->samples(); });
    const Answer answer([](DChartSelector *dialog) { press(dialog, QDialogButtonBox::Ok); });
    rightClick(m_panel->area());
    QCOMPARE(oldSamples, Samples{10});
}

void tst_WSimpleScaledDrawerSelection::newLinesHaveTheLimitOfTheArea()
{
    m_panel->setMaxSamples(10000);
    const Answer answer([](DChartSelector *dialog) { press(dialog, QDialogButtonBox::Ok); });
    rightClick(m_panel->area());
    QCOMPARE(m_panel->chartLines().first()->maxSamples(), 10000);
}

void tst_WSimpleScaledDrawerSelection::dialogStaysWithItsPanel()
{
    QList<QPointer<DChartSelector>> opened;
    for (const auto button : {QDialogButtonBox::Ok, QDialogButtonBox::Cancel}) {
        const Answer answer([&opened, button](DChartSelector *dialog) {
            QVERIFY(!opened.contains(dialog)); // a new one for every click
            opened.append(dialog);
            press(dialog, button);
        });
        rightClick(m_panel->area());
        QVERIFY(answer.given());
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(opened.count(nullptr), 0);
    m_panel.reset();
    QCOMPARE(opened.count(nullptr), 2);
}

void tst_WSimpleScaledDrawerSelection::panelGoesWithItsDialogOpen()
{
    QTimer timer; // as the end of the window would, while the dialog runs
    connect(&timer, &QTimer::timeout, this, [&] {
        if (qobject_cast<DChartSelector *>(QApplication::activeModalWidget())) {
            timer.stop();
            m_panel.reset();
        }
    });
    timer.start(0);
    m_panel->requestedTraceValue(1, 0, 1, 1);
    QMouseEvent event(QEvent::MouseButtonPress, QPointF(2, 2), m_panel->mapToGlobal(QPointF(2, 2)),
                      Qt::RightButton, Qt::RightButton, Qt::NoModifier);
    QApplication::sendEvent(m_panel.get(), &event);
    QVERIFY(!m_panel);
}

void tst_WSimpleScaledDrawerSelection::availableTraces()
{
    const auto available = [this] {
        QStringList found;
        const Answer answer(
            [&found](DChartSelector *dialog) { found = rows(table(dialog, "twAvailable")); });
        rightClick(m_panel->area());
        return found;
    };
    const QString delta = u"6 14 delta #c0c0c0 1 0"_s;
    const QString gamma = u"6 230 gamma #c0c0c0 200 3"_s;
    QCOMPARE(available(), (QStringList{delta, gamma}));
    m_panel->setAvailableTraces({&m_traces.back()}); // appended, not replaced
    QCOMPARE(available(), (QStringList{delta, gamma, gamma}));
    m_panel->addAvailableTrace(&m_traces.front());
    QCOMPARE(available(), (QStringList{delta, gamma, gamma, delta}));
    m_panel->clearAvailableTraces();
    QCOMPARE(available(), QStringList());
}

QTEST_MAIN(tst_WSimpleScaledDrawerSelection)
#include "tst_WSimpleScaledDrawerSelection.moc"
