#include "app/AllPanels.h"
#include "app/ParameterAccess.h"
#include "app/StepperTest.h"
#include "app/WTraceController.h"
#include "comm/TraceCommand.h"
#include "support/SimulatedCanBus.h"
#include "support/SimulatedPort.h"

using namespace Qt::StringLiterals;

namespace {

/// A parameter that no control stands for, so that its reply ends there.
constexpr char Unshown = static_cast<char>(201);

} // namespace

/// What the panels' signals send, with a module on each of the two transports.
class tst_StepperWiring : public StepperTest
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup() { }
    void cleanupTestCase();
    void signalReachesBothTransports_data();
    void signalReachesBothTransports();
    void jogPanelForPositionsWritesTheRampOfTheOther();
    void loopModeIsWrittenByBothBoxes();
    void rampReachesTheTwin();
    void correctionReachesTheTwin();
    void buttonsOfTheMotionPanels_data();
    void buttonsOfTheMotionPanels();

private:
    using Action = std::function<void()>;

    template <typename Panel>
    void rowsFor(const char *name);
    template <typename Panel>
    void readRow(const char *name, const ParameterAccesses &sent);
    template <typename Panel>
    void writeRow(const char *name, const ParameterAccesses &sent);
    template <typename Panel>
    void rotateRow(const char *name, const ParameterAccesses &sent);
    template <typename Panel>
    void moveRow(const char *name, const ParameterAccesses &sent);
    static void row(const char *panel, const char *signal, const Action &action,
                    const ParameterAccesses &sent);
    /// What went over both transports, which has to be the same.
    void compareSent(const ParameterAccesses &sent);

    std::unique_ptr<SimulatedPort> m_module;
    std::unique_ptr<SimulatedCanBus> m_bus;
};

void tst_StepperWiring::initTestCase()
{
    StepperTest::init();
    m_module = std::make_unique<SimulatedPort>();
    m_bus = std::make_unique<SimulatedCanBus>();
    connectOverUsb(m_module->portName());
    connectOverCan(1000, 1, 2);
    stopPolling(*m_bus);
    QVERIFY(moduleTabsAreEnabled());
}

void tst_StepperWiring::init()
{
    TestCase::init();
    m_module->clearWireLog();
    m_bus->clear();
}

void tst_StepperWiring::cleanupTestCase()
{
    StepperTest::cleanup();
    m_bus.reset();
    m_module.reset();
}

void tst_StepperWiring::row(const char *panel, const char *signal, const Action &action,
                            const ParameterAccesses &sent)
{
    QTest::addRow("%s.%s", panel, signal) << action << sent;
}

template <typename Panel>
void tst_StepperWiring::readRow(const char *name, const ParameterAccesses &sent)
{
    auto *panel = child<Panel>(name);
    row(
        name, "requestValue", [panel] { emit panel->requestValue(1, 0, Unshown); }, sent);
}

template <typename Panel>
void tst_StepperWiring::writeRow(const char *name, const ParameterAccesses &sent)
{
    auto *panel = child<Panel>(name);
    row(
        name, "changeValue", [panel] { emit panel->changeValue(1, 0, Unshown, 7); }, sent);
}

template <typename Panel>
void tst_StepperWiring::rotateRow(const char *name, const ParameterAccesses &sent)
{
    auto *panel = child<Panel>(name);
    row(
        name, "doROX", [panel] { emit panel->doROX(1, 0, 2, 3); }, sent);
}

template <typename Panel>
void tst_StepperWiring::moveRow(const char *name, const ParameterAccesses &sent)
{
    auto *panel = child<Panel>(name);
    row(
        name, "doMove", [panel] { emit panel->doMove(1, 0, 4, 1, 9); }, sent);
}

/// A panel that reads and writes.
template <typename Panel>
void tst_StepperWiring::rowsFor(const char *name)
{
    readRow<Panel>(name, {ParameterAccess::read(201)});
    writeRow<Panel>(name, {ParameterAccess::write(201, 7)});
}

void tst_StepperWiring::signalReachesBothTransports_data()
{
    QTest::addColumn<Action>("action");
    QTest::addColumn<ParameterAccesses>("sent");
    const ParameterAccesses read = {ParameterAccess::read(201)};
    const ParameterAccesses write = {ParameterAccess::write(201, 7)};
    const ParameterAccesses rotate = {{2, 0, 3}};
    const ParameterAccesses move = {{4, 1, 9}};
    const ParameterAccesses nothing;

    rowsFor<WJogVelocityControl>("wJogVelocityControl");
    rotateRow<WJogVelocityControl>("wJogVelocityControl", rotate);
    writeRow<WJogPositionControl>("wJogPositionControl", write);
    rotateRow<WJogPositionControl>("wJogPositionControl", rotate);
    moveRow<WJogPositionControl>("wJogPositionControl", move);
    writeRow<WJogTorqueControl>("wJogTorqueControl", write);
    rotateRow<WJogTorqueControl>("wJogTorqueControl", rotate);
    rowsFor<WClosedLoopSettings>("wModuleSettings");
    rowsFor<WOpenLoopSettings>("wOpenLoopSettings");
    rowsFor<WChopperSettings>("wChopperSettings");
    rowsFor<WPositionMaintenanceSettings>("wPositionMaintenanceSettings");
    rowsFor<WCurrentScalerSettings>("wScalerSettings");
    rowsFor<WFieldWeakeningSettings>("wFieldWeakeningSettings");
    rowsFor<WStepperEncoderSettings>("wEncoderSettings");
    rowsFor<WStepperVelocityRampControl>("wVelocityRampControl1");
    rowsFor<WStepperVelocityRampControl>("wVelocityRampControl2");
    rowsFor<CorrectionSettings>("wCorrectionSettings1");
    rowsFor<CorrectionSettings>("wCorrectionSettings2");
    rotateRow<WCurrentControl>("wTorqueControl", rotate);
    readRow<WVelocityControl>("wVelocityControl", read);
    rotateRow<WVelocityControl>("wVelocityControl", rotate);
    writeRow<WPositionControl>("wPositionControl", write);
    rotateRow<WPositionControl>("wPositionControl", rotate);

    auto *torque = child<WCurrentControl>("wTorqueControl");
    auto *velocity = child<WVelocityControl>("wVelocityControl");
    auto *position = child<WPositionControl>("wPositionControl");
    // The window sends these.
    row("wTorqueControl", "targetTorqueChange",
        [torque] { emit torque->targetTorqueChange(1, 0, 77); }, {ParameterAccess::write(14, 77)});
    row(
        "wPositionControl", "targetPositionChange",
        [position] { emit position->targetPositionChange(1, 0, 1, 9); }, move);
    row("wPositionControl", "actualPositionChange",
        [position] { emit position->actualPositionChange(1, 0, 5); },
        {ParameterAccess::write(1, 0)});

    // These lead nowhere: a command of theirs would go out twice.
    readRow<WCurrentControl>("wTorqueControl", nothing);
    writeRow<WCurrentControl>("wTorqueControl", nothing);
    row(
        "wVelocityControl", "targetVelocityChange",
        [velocity] { emit velocity->targetVelocityChange(1, 0, 9); }, nothing);
    readRow<WPositionControl>("wPositionControl", nothing);
    moveRow<WPositionControl>("wPositionControl", nothing);

    row(
        "wDirectMode", "doRequest",
        [this] { emit child<WDirectMode>("wDirectMode")->doRequest(1, 6, Unshown, 0, 0); }, read);
    row("wTraceController", "requestTraceValues",
        [this] {
            TraceCommand first(1, 6, Unshown, 0);
            TraceCommand second(1, 6, 0, 0);
            QList<TraceCommand *> list = {&first, &second};
            emit child<WTraceController>("wTraceController")->requestTraceValues(&list);
        },
        {ParameterAccess::read(201), ParameterAccess::read(0)});
}

void tst_StepperWiring::compareSent(const ParameterAccesses &sent)
{
    QCOMPARE(m_module->requests(), onSerialLine(sent));
    QCOMPARE(requestsOf(*m_bus), onBus(sent));
}

void tst_StepperWiring::signalReachesBothTransports()
{
    QFETCH(Action, action);
    QFETCH(ParameterAccesses, sent);
    action();
    compareSent(sent);
}

void tst_StepperWiring::jogPanelForPositionsWritesTheRampOfTheOther()
{
    child<QTabWidget>("tabWidget")->setCurrentIndex(1);
    auto *velocity = child<WJogVelocityControl>("wJogVelocityControl");
    emit velocity->velocityChanged(123);
    emit velocity->accelerationChanged(456);
    compareSent({});
    child<QSpinBox>("sbTarget", "wJogPositionControl")->setValue(0);
    click("wJogPositionControl", "btnGo");
    // Each of the two ramp panels writes what it hears.
    const auto acceleration = ParameterAccess::write(5, 456);
    const auto speed = ParameterAccess::write(4, 123);
    compareSent({{4, 0, 0}, acceleration, acceleration, acceleration, speed, speed, speed});
}

void tst_StepperWiring::loopModeIsWrittenByBothBoxes()
{
    auto *loopMode = child<QComboBox>("cmbLoopMode", "wModuleSettings");
    loopMode->setFocus();
    const auto closed = ParameterAccess::write(129, 1);
    QTest::keyClick(loopMode, Qt::Key_Down);
    compareSent({closed, closed});
    QCOMPARE(child<QComboBox>("cmbLoopMode", "quickstartTab")->currentIndex(), 1);
    init();
    const auto open = ParameterAccess::write(129, 0);
    QTest::keyClick(loopMode, Qt::Key_Up);
    compareSent({open, open});
}

/// What is changed on the velocity tab shows on the positioning tab when the reply comes back.
void tst_StepperWiring::rampReachesTheTwin()
{
    child<QTabWidget>("tabWidget")->setCurrentIndex(6);
    auto *maximum = child<QSpinBox>("sbMaxVelocity", "wVelocityRampControl1");
    const int target = maximum->value() + 10000;
    maximum->setFocus();
    QTest::keyClick(maximum, Qt::Key_Up);
    const auto write = ParameterAccess::write(4, target);
    compareSent({write, write});
    QCOMPARE(child<QSpinBox>("sbMaxVelocity", "wVelocityRampControl2")->value(), target);
    init();
    QTest::keyClick(child<QSpinBox>("sbMaxVelocity", "wVelocityRampControl2"), Qt::Key_Down);
    const auto back = ParameterAccess::write(4, target - 10000);
    compareSent({back, back});
    QCOMPARE(maximum->value(), target - 10000);
}

void tst_StepperWiring::correctionReachesTheTwin()
{
    QTest::keyClick(child<QSpinBox>("sbMaxTolerance", "wCorrectionSettings2"), Qt::Key_Up);
    const auto write = ParameterAccess::write(125, 11);
    compareSent({write, write});
    QCOMPARE(child<QSpinBox>("sbMaxTolerance", "wCorrectionSettings1")->value(), 11);
}

void tst_StepperWiring::buttonsOfTheMotionPanels_data()
{
    QTest::addColumn<int>("tab");
    QTest::addColumn<QString>("panel");
    QTest::addColumn<QString>("button");
    QTest::addColumn<ParameterAccesses>("sent");
    const ParameterAccess stop = {3, 0, 0};
    const auto row = [](int tab, const char *panel, const char *button,
                        const ParameterAccesses &sent) {
        QTest::addRow("%s.%s", panel, button)
            << tab << QString::fromLatin1(panel) << QString::fromLatin1(button) << sent;
    };
    // The stop buttons stop the motor, in place of writing a target.
    row(5, "wTorqueControl", "btnStop", {stop});
    row(7, "wPositionControl", "btnStop", {stop});
    row(1, "wJogPositionControl", "btnStop", {stop});
    row(1, "wJogTorqueControl", "btnStop", {stop});
    // A torque goes out once, through the window.
    row(5, "wTorqueControl", "btnRight", {ParameterAccess::write(14, 100)});
    row(5, "wTorqueControl", "btnLeft", {ParameterAccess::write(14, -100)});
    row(6, "wVelocityControl", "btnRight", {{1, 0, 40000}});
    row(6, "wVelocityControl", "btnLeft", {{2, 0, 40000}});
    row(6, "wVelocityControl", "btnStop", {stop});
    // A move goes out once, through the window; relative to the actual position it is an absolute
    // one, which the panel works out.
    row(7, "wPositionControl", "btnMoveAbsolute", {{4, 0, 600}});
    row(7, "wPositionControl", "btnMoveRelative", {{4, 0, 1600}});
    // By the panel and by the window, and by both numbers.
    row(7, "wPositionControl", "btnClear",
        {ParameterAccess::write(1, 0), ParameterAccess::write(1, 0)});
    row(7, "wPositionControl", "btnClearOnNull",
        {ParameterAccess::write(198, 1), ParameterAccess::write(198, 1)});
    row(1, "wJogPositionControl", "btnClear", {ParameterAccess::write(1, 0)});
    row(1, "wJogTorqueControl", "btnGo", {ParameterAccess::write(14, 100)});
}

void tst_StepperWiring::buttonsOfTheMotionPanels()
{
    QFETCH(int, tab);
    QFETCH(QString, panel);
    QFETCH(QString, button);
    QFETCH(ParameterAccesses, sent);
    child<QTabWidget>("tabWidget")->setCurrentIndex(tab);
    child<QSpinBox>("sbTargetCurrent", "wTorqueControl")->setValue(100);
    child<QSpinBox>("sbTargetCurrent", "wJogTorqueControl")->setValue(100);
    child<QSpinBox>("sbTargetVelocity", "wVelocityControl")->setValue(40000);
    child<QSpinBox>("sbActualPosition", "wPositionControl")->setValue(1000);
    child<QSpinBox>("sbTargetPosition", "wPositionControl")->setValue(600);
    compareSent({});
    click(qPrintable(panel), qPrintable(button));
    compareSent(sent);
}

QTEST_MAIN(tst_StepperWiring)
#include "tst_StepperWiring.moc"
