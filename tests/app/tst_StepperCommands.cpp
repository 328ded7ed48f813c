#include "app/StepperTest.h"
#include "support/SimulatedPort.h"
#include "support/TurnWheel.h"

#include <functional>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr char asByte(int number)
{
    return static_cast<char>(number);
}

} // namespace

/// What the window itself sends to the module: motion and the loop mode.
class tst_StepperCommands : public StepperTest
{
    Q_OBJECT

private slots:
    void motionSlotsSendTheirCommands_data();
    void motionSlotsSendTheirCommands();
    void motionSlotsAreSilentWithoutAModule();
    void loopModeChosenByTheUserIsWritten();
    void wheelOverAControlWithoutTheFocusSendsNothing();
    void loopModeOfTheModuleIsShownAndEchoed();
    void loopModeWithoutAnItemLeavesTheBox_data();
    void loopModeWithoutAnItemLeavesTheBox();
    void loopModeTextWithoutANumberIsZero_data();
    void loopModeTextWithoutANumberIsZero();
};

void tst_StepperCommands::motionSlotsSendTheirCommands_data()
{
    using Action = std::function<void(Stepper &)>;
    QTest::addColumn<Action>("action");
    QTest::addColumn<QStringList>("requests");
    QTest::addColumn<QStringList>("lines");
    QTest::newRow("velocity above 0")
        << Action([](Stepper &stepper) { stepper.handleTargetVelocityChange(1, 0, 1000); })
        << QStringList({u"01 01 00 00 00 00 03 E8 ED"_s})
        << QStringList({u"TargetVelocityChange: motor=0, value=1000"_s});
    QTest::newRow("velocity 0") << Action([](Stepper &stepper) {
        stepper.handleTargetVelocityChange(1, 0, 0);
    }) << QStringList({u"01 03 00 00 00 00 00 00 04"_s})
                                << QStringList({u"TargetVelocityChange: motor=0, value=0"_s});
    QTest::newRow("velocity below 0")
        << Action([](Stepper &stepper) { stepper.handleTargetVelocityChange(1, 0, -1000); })
        << QStringList({u"01 02 00 00 00 00 03 E8 EE"_s})
        << QStringList({u"TargetVelocityChange: motor=0, value=-1000"_s});
    QTest::newRow("least velocity")
        << Action([](Stepper &stepper) {
               stepper.handleTargetVelocityChange(1, 0, std::numeric_limits<int>::min());
           })
        << QStringList({u"01 02 00 00 80 00 00 00 83"_s})
        << QStringList({u"TargetVelocityChange: motor=0, value=-2147483648"_s});
    QTest::newRow("bank above 127")
        << Action([](Stepper &stepper) { stepper.handleTargetVelocityChange(1, asByte(200), 0); })
        << QStringList({u"01 03 00 C8 00 00 00 00 CC"_s})
        << QStringList({u"TargetVelocityChange: motor=200, value=0"_s});
    QTest::newRow("absolute position")
        << Action([](Stepper &stepper) { stepper.handleTargetPositionChange(1, 0, 0, 256); })
        << QStringList({u"01 04 00 00 00 00 01 00 06"_s}) << QStringList();
    QTest::newRow("closed loop")
        << Action([](Stepper &stepper) { stepper.handleSelectedTypeChanged(1); })
        // The reply chooses the item in both boxes, each of which writes it once more.
        << QStringList({u"01 05 81 00 00 00 00 01 88"_s, u"01 05 81 00 00 00 00 01 88"_s,
                        u"01 05 81 00 00 00 00 01 88"_s})
        << QStringList();
    QTest::newRow("relative position")
        << Action([](Stepper &stepper) { stepper.handleTargetPositionChange(1, 0, 1, -1); })
        << QStringList({u"01 04 01 00 FF FF FF FF 02"_s}) << QStringList();
    QTest::newRow("actual position is zeroed")
        << Action([](Stepper &stepper) { stepper.handleActualPositionChange(1, 0, 555); })
        << QStringList({u"01 05 01 00 00 00 00 00 07"_s})
        << QStringList({u"ActualPositionChange: motor=0, value=555"_s});
    QTest::newRow("torque") << Action([](Stepper &stepper) {
        stepper.handleTargetTorqueChange(1, 0, 300);
    }) << QStringList({u"01 05 0E 00 00 00 01 2C 41"_s})
                            << QStringList({u"TargetTorqueChange: motor=0, value=300"_s});
    QTest::newRow("open loop") << Action(
        [](Stepper &stepper) { stepper.handleSelectedTypeChanged(0); })
                               << QStringList({u"01 05 81 00 00 00 00 00 87"_s}) << QStringList();
    QTest::newRow("another loop mode")
        << Action([](Stepper &stepper) { stepper.handleSelectedTypeChanged(2); }) << QStringList()
        << QStringList();
}

void tst_StepperCommands::motionSlotsSendTheirCommands()
{
    QFETCH(std::function<void(Stepper &)>, action);
    QFETCH(QStringList, requests);
    QFETCH(QStringList, lines);
    SimulatedPort module;
    connectOverUsb(module.portName());
    stopPolling(module);
    m_log->clear();
    action(*m_stepper);
    QCOMPARE(module.requests(), requests);
    QCOMPARE(m_log->lines(), lines);
}

void tst_StepperCommands::motionSlotsAreSilentWithoutAModule()
{
    m_log->clear();
    m_stepper->handleTargetPositionChange(1, 0, 0, 100);
    m_stepper->handleSelectedTypeChanged(1);
    m_stepper->actualLoopModeChanged(u"1 : Closed loop"_s);
    QCOMPARE(m_log->lines(), QStringList());
}

void tst_StepperCommands::loopModeChosenByTheUserIsWritten()
{
    SimulatedPort module;
    connectOverUsb(module.portName());
    stopPolling(module);
    auto *loopMode = child<QComboBox>("cmbLoopMode", "quickstartTab");
    loopMode->setFocus();
    QTest::keyClick(loopMode, Qt::Key_Down);
    QCOMPARE(loopMode->currentText(), u"1 : Closed loop"_s);
    // The other box for the loop mode follows the reply and writes it, too. There it ends.
    QCOMPARE(child<QComboBox>("cmbLoopMode", "wModuleSettings")->currentText(),
             u"1 : Closed loop"_s);
    QCOMPARE(module.requests(),
             QStringList({u"01 05 81 00 00 00 00 01 88"_s, u"01 05 81 00 00 00 00 01 88"_s}));
}

void tst_StepperCommands::wheelOverAControlWithoutTheFocusSendsNothing()
{
    SimulatedPort module;
    connectOverUsb(module.portName());
    stopPolling(module);
    auto *loopMode = child<QComboBox>("cmbLoopMode", "quickstartTab");
    child<QTabWidget>("tabWidget")->setFocus();
    turnWheel(loopMode, false);
    QCOMPARE(loopMode->currentIndex(), 0);
    QVERIFY(!loopMode->hasFocus());
    QVERIFY(module.requests().isEmpty());
}

void tst_StepperCommands::loopModeOfTheModuleIsShownAndEchoed()
{
    SimulatedPort module;
    connectOverUsb(module.portName());
    stopPolling(module);
    // Neither the address nor the bank counts.
    m_stepper->requestedValue(99, 3, asByte(129), 1);
    QCOMPARE(child<QComboBox>("cmbLoopMode", "quickstartTab")->currentIndex(), 1);
    // The echo, and that of the other box, which the reply has reached.
    QCOMPARE(module.requests(),
             QStringList({u"01 05 81 00 00 00 00 01 88"_s, u"01 05 81 00 00 00 00 01 88"_s}));

    module.clearWireLog();
    m_stepper->requestedValue(1, 0, asByte(129), 1);
    QVERIFY2(module.requests().isEmpty(), "an equal value writes nothing");
}

void tst_StepperCommands::loopModeWithoutAnItemLeavesTheBox_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("value");
    QTest::newRow("no item starts with 2") << 129 << 2;
    QTest::newRow("negative") << 129 << -1;
    QTest::newRow("another parameter") << 130 << 1;
    QTest::newRow("no item starts with 10") << 129 << 10;
}

void tst_StepperCommands::loopModeWithoutAnItemLeavesTheBox()
{
    QFETCH(int, type);
    QFETCH(int, value);
    SimulatedPort module;
    connectOverUsb(module.portName());
    stopPolling(module);
    m_stepper->requestedValue(1, 0, asByte(type), value);
    QCOMPARE(child<QComboBox>("cmbLoopMode", "quickstartTab")->currentIndex(), 0);
    QVERIFY(module.requests().isEmpty());
}

void tst_StepperCommands::loopModeTextWithoutANumberIsZero_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("requests");
    const QStringList zero = {u"01 05 81 00 00 00 00 00 87"_s};
    const QStringList one = {u"01 05 81 00 00 00 00 01 88"_s};
    // The reply chooses the item of that number in both boxes, each of which writes it once more.
    QTest::newRow("number") << u"1 : x"_s << one + one + one;
    QTest::newRow("no separator") << u"1: x"_s << zero;
    QTest::newRow("not a number") << u"one : x"_s << zero;
    QTest::newRow("empty") << QString() << zero;
}

void tst_StepperCommands::loopModeTextWithoutANumberIsZero()
{
    QFETCH(QString, text);
    QFETCH(QStringList, requests);
    SimulatedPort module;
    connectOverUsb(module.portName());
    stopPolling(module);
    m_stepper->actualLoopModeChanged(text);
    QCOMPARE(module.requests(), requests);
}

QTEST_MAIN(tst_StepperCommands)
#include "tst_StepperCommands.moc"
