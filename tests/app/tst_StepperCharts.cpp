#include "app/StepperTest.h"
#include "app/WTraceController.h"
#include "charts/ChartLine.h"
#include "charts/DChartSelector.h"
#include "charts/DrawerArea.h"
#include "charts/ModalAnswer.h"
#include "charts/SelectorTest.h"
#include "charts/WSimpleScaledDrawer.h"
#include "comm/TraceCommand.h"
#include "support/SimulatedPort.h"

#include <QScrollBar>

using namespace Qt::StringLiterals;

namespace {

constexpr const char *Drawers[] = {"velocityDrawer", "positionDrawer", "torqueDrawer"};

const QList<int> StandingNumbers = {18, 150, 151, 152, 131, 1, 15};

/// What the debug stream tells of a list of these numbers.
QStringList debugLines(const QList<int> &numbers, int address = 1)
{
    QStringList lines = {u"TraceCommand->size(): \"%1\""_s.arg(numbers.size())};
    for (const int number : numbers) {
        lines.append(u"TraceCommand: \"%1\", \"0\", \"6\", \"%2\""_s.arg(address).arg(number));
    }
    return lines;
}

/// Without what the platform without a screen says of itself.
QStringList ownLines(const DebugLog &log)
{
    QStringList lines = log.lines();
    lines.removeIf([](const QString &line) { return line.startsWith("This plugin does"_L1); });
    return lines;
}

/// Counts how often a widget is painted.
class PaintCounter : public QObject
{
public:
    explicit PaintCounter(QWidget *widget) { widget->installEventFilter(this); }
    int count() const { return m_count; }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        m_count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }

private:
    int m_count = 0;
};

} // namespace

/// The charts below the tabs, and the list of values that the module is polled for.
class tst_StepperCharts : public StepperTest
{
    Q_OBJECT

private slots:
    void chartsHaveTheirCurves_data();
    void chartsHaveTheirCurves();
    void chartsKeepTenThousandSamples();
    void chartsOfferFifteenValues_data();
    void chartsOfferFifteenValues();
    void constructorBuildsTheListFourTimes();
    void listFollowsWhatIsShown_data();
    void listFollowsWhatIsShown();
    void firstNameOfAValueStays();
    void showingWithoutAConnectionSendsNothing();
    void sameValueInTwoChartsIsPolledOnce();
    void hiddenChartsKeepTheirAddress();
    void addressAbove127IsToldAsAByte();
    void failedOpenHandsOverTheAddress();
    void pickedCurveIsPolledAtOnce();
    void changedChoiceBuildsTheListAnew();
    void shownChartDrawsWhatIsPolled();
    void chartsOutliveADisconnect();
    void pollingStartsAndStopsTheDrawing();

private:
    WSimpleScaledDrawer *drawer(const char *name) const { return child<WSimpleScaledDrawer>(name); }
    void show(int drawer, bool show);
    QList<TraceCommand *> list() const
    {
        return *child<WTraceController>("wTraceController")->traceCommands();
    }
    /// One field of each entry of the list.
    QList<int> bytes(char (TraceCommand::*field)() const) const;
    QList<int> numbers() const { return bytes(&TraceCommand::type); }
    QList<int> addresses() const { return bytes(&TraceCommand::address); }
    /// Right-clicks on a chart and plays the user in the dialog.
    bool choose(WSimpleScaledDrawer *drawer, const std::function<void(DChartSelector *)> &user);
};

void tst_StepperCharts::show(int drawer, bool show)
{
    using Show = void (Stepper::*)(bool);
    static constexpr std::array<Show, 3> Operations = {
        &Stepper::showVelocityDrawer, &Stepper::showPositionDrawer, &Stepper::showTorqueDrawer};
    std::invoke(Operations.at(static_cast<std::size_t>(drawer)), m_stepper.get(), show);
}

QList<int> tst_StepperCharts::bytes(char (TraceCommand::*field)() const) const
{
    QList<int> bytes;
    for (const TraceCommand *command : list()) {
        bytes.append(static_cast<quint8>((command->*field)()));
    }
    return bytes;
}

bool tst_StepperCharts::choose(WSimpleScaledDrawer *drawer,
                               const std::function<void(DChartSelector *)> &user)
{
    drawer->setEnabled(true); // as with a module
    const ModalAnswer<DChartSelector> answer(user);
    auto *area = drawer->findChild<DrawerArea *>();
    QTest::mouseClick(area, Qt::RightButton, {}, QPoint(2, 2));
    return answer.given();
}

void tst_StepperCharts::chartsHaveTheirCurves_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QStringList>("curves");
    QTest::newRow("velocity") << u"velocityDrawer"_s << u"Velocity"_s
                              << QStringList({u"1 0 6 131 actual [pps] #0000ff"_s,
                                              u"1 0 6 2 target [pps] #ff0000"_s});
    QTest::newRow("position") << u"positionDrawer"_s << u"Position"_s
                              << QStringList({u"1 0 6 1 actual [\u00b5steps] #0000ff"_s,
                                              u"1 0 6 0 target [\u00b5steps] #ff0000"_s});
    QTest::newRow("torque") << u"torqueDrawer"_s << u"Delta"_s
                            << QStringList(u"1 0 6 14 delta #000000"_s);
}

void tst_StepperCharts::chartsHaveTheirCurves()
{
    QFETCH(QString, name);
    QFETCH(QString, title);
    QFETCH(QStringList, curves);
    const auto *chart = drawer(qPrintable(name));
    QCOMPARE(chart->title(), title);
    QStringList found;
    for (const ChartLine *line : chart->chartLines()) {
        found.append(u"%1 %2 %3 %4 %5 %6"_s.arg(line->address())
                         .arg(line->motorBank())
                         .arg(line->command())
                         .arg(line->type())
                         .arg(line->name(), line->color().name()));
    }
    QCOMPARE(found, curves);
}

void tst_StepperCharts::chartsKeepTenThousandSamples()
{
    for (const char *name : Drawers) {
        for (const ChartLine *line : drawer(name)->chartLines()) {
            QCOMPARE(line->maxSamples(), 10000);
        }
        const auto *bar = drawer(name)->findChild<QScrollBar *>();
        QCOMPARE(bar->minimum(), 0);
        QCOMPARE(bar->maximum(), 9999);
        QCOMPARE(bar->value(), 9999);
    }
}

void tst_StepperCharts::chartsOfferFifteenValues_data()
{
    QTest::addColumn<int>("index");
    QTest::newRow("velocity") << 0;
    QTest::newRow("position") << 1;
    QTest::newRow("torque") << 2;
}

void tst_StepperCharts::chartsOfferFifteenValues()
{
    QFETCH(int, index);
    const QList<std::pair<int, QString>> all = {
        {0, u"target position [\u00b5steps]"_s},
        {1, u"actual position [\u00b5steps]"_s},
        {2, u"target velocity [pps]"_s},
        {14, u"delta"_s},
        {111, u"cl_beta"_s},
        {123, u"scaler actual value"_s},
        {131, u"actual velocity [pps]"_s},
        {230, u"gamma"_s},
        {231, u"delta mod"_s},
        {232, u"delta lut"_s},
        {233, u"virtual actual position"_s},
        {234, u"virtual target velocity"_s},
        {235, u"virutal actual velocity"_s}, // spelled so on purpose
        {236, u"scaler target value"_s},
        {237, u"position error"_s},
    };
    QStringList expected;
    for (const auto &[number, name] : all) {
        expected.append(u"6 %1 %2"_s.arg(number).arg(name));
    }
    show(index, true);
    QStringList offered;
    QVERIFY(choose(drawer(Drawers[index]), [&](DChartSelector *dialog) {
        const QTableWidget *table = SelectorTest::table(dialog, "twAvailable");
        for (int row = 0; row < table->rowCount(); ++row) {
            offered.append(table->item(row, 0)->text() + u' ' + table->item(row, 1)->text() + u' '
                           + table->item(row, 2)->text());
            QCOMPARE(table->item(row, 4)->text(), u"1"_s); // address
            QCOMPARE(table->item(row, 5)->text(), u"0"_s); // motor bank
        }
    }));
    QCOMPARE(offered, expected);
}

/// First with the charts as the form has them, then without one after the other.
void tst_StepperCharts::constructorBuildsTheListFourTimes()
{
    QStringList expected;
    expected += debugLines(StandingNumbers + QList<int>{2, 0, 14});
    expected += debugLines(StandingNumbers + QList<int>{0, 14});
    expected += debugLines(StandingNumbers + QList<int>{14});
    expected += debugLines(StandingNumbers);
    QCOMPARE(m_log->lines().filter(u"TraceCommand"_s), expected);
    for (const char *name : Drawers) {
        QCOMPARE(drawer(name)->maximumHeight(), 0);
    }
}

void tst_StepperCharts::listFollowsWhatIsShown_data()
{
    QTest::addColumn<QList<int>>("shown");
    QTest::addColumn<QList<int>>("added");
    QTest::newRow("none") << QList<int>{} << QList<int>{};
    QTest::newRow("velocity") << QList<int>{0} << QList<int>{2};
    QTest::newRow("position") << QList<int>{1} << QList<int>{0};
    QTest::newRow("torque") << QList<int>{2} << QList<int>{14};
    QTest::newRow("velocity, position") << QList<int>{0, 1} << QList<int>{2, 0};
    QTest::newRow("velocity, torque") << QList<int>{0, 2} << QList<int>{2, 14};
    QTest::newRow("position, torque") << QList<int>{1, 2} << QList<int>{0, 14};
    QTest::newRow("all") << QList<int>{0, 1, 2} << QList<int>{2, 0, 14};
    QTest::newRow("all, shown from the bottom up") << QList<int>{2, 1, 0} << QList<int>{2, 0, 14};
}

void tst_StepperCharts::listFollowsWhatIsShown()
{
    QFETCH(QList<int>, shown);
    QFETCH(QList<int>, added);
    for (const int index : std::as_const(shown)) {
        m_log->clear();
        show(index, true);
        QCOMPARE(drawer(Drawers[index])->maximumHeight(), 2000);
    }
    QCOMPARE(numbers(), StandingNumbers + added);
    if (!shown.isEmpty()) {
        QCOMPARE(ownLines(*m_log), debugLines(StandingNumbers + added));
    }
    for (const TraceCommand *command : list()) {
        QCOMPARE(int(command->command()), 6);
        QCOMPARE(int(command->motorBank()), 0);
        QCOMPARE(int(command->address()), 1);
    }
    for (const int index : std::as_const(shown)) {
        show(index, false);
        QCOMPARE(drawer(Drawers[index])->maximumHeight(), 0);
    }
    QCOMPARE(numbers(), StandingNumbers);
}

void tst_StepperCharts::firstNameOfAValueStays()
{
    show(0, true);
    show(1, true);
    show(2, true);
    QStringList names;
    for (const TraceCommand *command : list()) {
        names.append(command->name());
    }
    // The panels' names are empty, so the actual values of the charts have none.
    QCOMPARE(names,
             QStringList({QString(), QString(), QString(), QString(), QString(), QString(),
                          QString(), u"target [pps]"_s, u"target [\u00b5steps]"_s, u"delta"_s}));
}

void tst_StepperCharts::showingWithoutAConnectionSendsNothing()
{
    const SimulatedPort module; // plugged in, but not connected
    m_log->clear();
    show(0, true);
    QCOMPARE(ownLines(*m_log), debugLines(StandingNumbers + QList<int>{2})); // nor tried to
    QTRY_VERIFY(drawer("velocityDrawer")->height() > 0);
    QVERIFY(drawer("velocityDrawer")->isVisible());
    QVERIFY(module.wireLog().isEmpty());
}

void tst_StepperCharts::sameValueInTwoChartsIsPolledOnce()
{
    show(0, true);
    show(2, true);
    drawer("torqueDrawer")->addChartLine(new ChartLine(1, 0, 6, 2, u"again"_s, Qt::green));
    m_stepper->updateTraceValues();
    QCOMPARE(numbers(), StandingNumbers + QList<int>({2, 14}));
    QCOMPARE(list().at(7)->name(), u"target [pps]"_s);
}

void tst_StepperCharts::hiddenChartsKeepTheirAddress()
{
    const auto addressesOf = [this](const char *name) {
        QList<int> addresses;
        for (const ChartLine *line : drawer(name)->chartLines()) {
            addresses.append(line->address());
        }
        return addresses;
    };
    const SimulatedPort module({.address = 7});
    show(0, true);
    m_log->clear();
    connectOverSerial(module.portName(), 9600, 7);
    QVERIFY(moduleTabsAreEnabled());
    QCOMPARE(addresses(), QList<int>(8, 7));
    QCOMPARE(m_log->lines().filter(u"TraceCommand"_s),
             debugLines(StandingNumbers + QList<int>{2}, 7));
    QCOMPARE(addressesOf("velocityDrawer"), QList<int>({7, 7}));
    QCOMPARE(addressesOf("positionDrawer"), QList<int>({1, 1}));
    QCOMPARE(addressesOf("torqueDrawer"), QList<int>({1}));
    show(1, true);
    QCOMPARE(addressesOf("positionDrawer"), QList<int>({7, 7}));
    QCOMPARE(addresses(), QList<int>(9, 7));

    show(0, false);
    m_stepper->openUsbHandler(QString());
    QCOMPARE(addressesOf("velocityDrawer"), QList<int>({7, 7}));
    QCOMPARE(addressesOf("positionDrawer"), QList<int>({1, 1}));
}

void tst_StepperCharts::addressAbove127IsToldAsAByte()
{
    m_log->clear();
    m_stepper->openSerialHandler(QString(), 9600, 200);
    QCOMPARE(ownLines(*m_log), debugLines(StandingNumbers, 200));
    QCOMPARE(addresses(), QList<int>(7, 200));
}

void tst_StepperCharts::failedOpenHandsOverTheAddress()
{
    m_stepper->openSerialHandler(QString(), 9600, 7);
    QCOMPARE(addresses(), QList<int>(7, 7));
    show(2, true); // with the standing address
    QCOMPARE(addresses(), QList<int>(8, 7));
    m_stepper->openUsbHandler(QString());
    QCOMPARE(addresses(), QList<int>(8, 1));
}

void tst_StepperCharts::pickedCurveIsPolledAtOnce()
{
    show(2, true);
    m_log->clear();
    QVERIFY(choose(drawer("torqueDrawer"), [&](DChartSelector *dialog) {
        QTableWidget *available = SelectorTest::table(dialog, "twAvailable");
        int gamma = 0;
        while (available->item(gamma, 1)->text() != "230"_L1) {
            ++gamma;
        }
        SelectorTest::clickCell(available, gamma, 2);
        SelectorTest::press(dialog, QDialogButtonBox::Ok);
    }));
    QCOMPARE(m_log->lines().filter(u"TraceCommand"_s),
             debugLines(StandingNumbers + QList<int>{14, 230}));
    QCOMPARE(list().constLast()->name(), u"gamma"_s);
}

void tst_StepperCharts::changedChoiceBuildsTheListAnew()
{
    m_stepper->openSerialHandler(QString(), 9600, 7);
    for (const char *name : Drawers) {
        m_log->clear();
        emit drawer(name)->chartSelectionChanged();
        QCOMPARE(ownLines(*m_log), debugLines(StandingNumbers, 7));
    }
}

void tst_StepperCharts::shownChartDrawsWhatIsPolled()
{
    SimulatedPort module;
    module.module().setAxisParameter(131, 1234);
    module.module().setAxisParameter(0, 55);
    connectOverUsb(module.portName());
    show(0, true);
    show(1, true);
    const QList<ChartLine *> velocity = drawer("velocityDrawer")->chartLines();
    const QList<ChartLine *> position = drawer("positionDrawer")->chartLines();
    QTRY_VERIFY(!velocity.at(0)->samples().isEmpty() && !position.at(1)->samples().isEmpty());
    QCOMPARE(velocity.at(0)->samples().constFirst(), 1234.0);
    QCOMPARE(position.at(1)->samples().constFirst(), 55.0);
    QVERIFY(drawer("torqueDrawer")->chartLines().at(0)->samples().isEmpty()); // not polled
}

void tst_StepperCharts::chartsOutliveADisconnect()
{
    SimulatedPort module;
    show(0, true);
    connectOverUsb(module.portName());
    stopPolling(module);
    const auto samples = drawer("velocityDrawer")->chartLines().at(0)->samples();
    QVERIFY(!samples.isEmpty());
    child<QTabWidget>("tabWidget")->setCurrentIndex(0);
    click("wUsbConnection", "btnDisconnect");
    QCOMPARE(drawer("velocityDrawer")->chartLines().at(0)->samples(), samples);
    QCOMPARE(drawer("velocityDrawer")->maximumHeight(), 2000);
    QVERIFY(!drawer("velocityDrawer")->isEnabled());
}

void tst_StepperCharts::pollingStartsAndStopsTheDrawing()
{
    std::vector<std::unique_ptr<PaintCounter>> paints;
    for (int index = 0; index < 3; ++index) {
        show(index, true);
        auto *area = drawer(Drawers[index])->findChild<DrawerArea *>();
        QTRY_VERIFY(area->isVisible());
        paints.push_back(std::make_unique<PaintCounter>(area));
    }
    auto *trace = child<WTraceController>("wTraceController");
    emit trace->start();
    for (const auto &counter : paints) {
        const int before = counter->count();
        QTRY_COMPARE_GE(counter->count(), before + 3);
    }
    emit trace->stop();
    QCoreApplication::processEvents();
    // The first chart is the clock: while it draws, the others would, too.
    drawer(Drawers[0])->startDrawing();
    const int second = paints.at(1)->count();
    const int third = paints.at(2)->count();
    const int first = paints.at(0)->count();
    QTRY_COMPARE_GE(paints.at(0)->count(), first + 5);
    QCOMPARE(paints.at(1)->count(), second);
    QCOMPARE(paints.at(2)->count(), third);
    emit trace->stop();
    drawer(Drawers[1])->startDrawing();
    const int last = paints.at(0)->count();
    QTRY_COMPARE_GE(paints.at(1)->count(), second + 5);
    QCOMPARE(paints.at(0)->count(), last);
}

QTEST_MAIN(tst_StepperCharts)
#include "tst_StepperCharts.moc"
