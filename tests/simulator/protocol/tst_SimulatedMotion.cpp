#include "simulator/ModuleUnderTest.h"
#include "support/TestCase.h"

#include <QTest>

using namespace std::chrono_literals;
using simulator::Axis;

namespace {

// Bits of the status word.
constexpr int Reached = 0x001;
constexpr int AtVelocity = 0x002;
constexpr int PositionMode = 0x008;
constexpr int VelocityMode = 0x010;
constexpr int TorqueMode = 0x020;
constexpr int AtHome = 0x040;
constexpr int AtLeft = 0x080;
constexpr int AtRight = 0x100;

} // namespace

/// What a host sees of a motor that needs its time, parameter by parameter.
class tst_SimulatedMotion : public TestCase
{
    Q_OBJECT

private slots:
    void init();
    void velocityFollowsTheRamp();
    void positionFollowsTheRamp();
    void startStopVelocity();
    void moves_data();
    void moves();
    void coordinates();
    void torque();
    void torqueIsLimited();
    void stopAfterTorque();
    void lastCommandWins();
    void clearedOnTheWay();
    void clearedInVelocityMode();
    void clearOnNull();
    void limitSwitches_data();
    void limitSwitches();
    void homeSwitch();
    void switchesStayAtTheirPlace();
    void velocityWindow();
    void positionWindow();

private:
    std::unique_ptr<ModuleUnderTest> m_module;
};

void tst_SimulatedMotion::init()
{
    TestCase::init();
    m_module = std::make_unique<ModuleUnderTest>();
    m_module->write(4, 1000);
    m_module->write(5, 1000);
}

void tst_SimulatedMotion::velocityFollowsTheRamp()
{
    m_module->turnRight(2000); // AP 4 is for positioning only
    QCOMPARE(m_module->axis(2), 2000);
    QCOMPARE(m_module->axis(131), 0);
    QCOMPARE(m_module->axis(18), VelocityMode);
    m_module->pass(500ms);
    QCOMPARE(m_module->axis(131), 500);
    QCOMPARE(m_module->axis(1), 125);
    m_module->pass(1500ms);
    QCOMPARE(m_module->axis(131), 2000);
    QCOMPARE(m_module->axis(18), VelocityMode | AtVelocity);
    QCOMPARE(m_module->axis(234), 2000);
    QCOMPARE(m_module->axis(235), 2000);
    m_module->turnLeft(1000);
    QCOMPARE(m_module->axis(2), -1000);
    m_module->pass(1s);
    QCOMPARE(m_module->axis(131), 1000);
    m_module->pass(2s);
    QCOMPARE(m_module->axis(131), -1000);
    QCOMPARE(m_module->axis(1), 2000 + 2000 - 500);
    m_module->write(5, 2000); // takes effect at once
    m_module->stop();
    QCOMPARE(m_module->axis(131), -1000);
    m_module->pass(500ms);
    QCOMPARE(m_module->axis(131), 0);
    QCOMPARE(m_module->axis(1), 3250);
    QCOMPARE(m_module->axis(18), VelocityMode | AtVelocity);
}

void tst_SimulatedMotion::positionFollowsTheRamp()
{
    m_module->moveTo(-4000);
    QCOMPARE(m_module->axis(0), -4000);
    QCOMPARE(m_module->axis(1), 0);
    QCOMPARE(m_module->axis(18), PositionMode);
    m_module->pass(2500ms);
    QCOMPARE(m_module->axis(1), -2000);
    QCOMPARE(m_module->axis(131), -1000);
    QCOMPARE(m_module->axis(234), -1000);
    QCOMPARE(m_module->axis(2), 0);
    m_module->pass(2s);
    QCOMPARE(m_module->axis(1), -3875);
    QCOMPARE(m_module->axis(131), -500);
    m_module->pass(10s);
    QCOMPARE(m_module->axis(1), -4000);
    QCOMPARE(m_module->axis(131), 0);
    QCOMPARE(m_module->axis(234), 0);
    QCOMPARE(m_module->axis(18), PositionMode | Reached);
}

void tst_SimulatedMotion::startStopVelocity()
{
    m_module->write(130, 500);
    m_module->turnRight(400);
    m_module->pass(1ms);
    QCOMPARE(m_module->axis(131), 400);
    m_module->turnRight(1000);
    m_module->pass(100ms);
    QCOMPARE(m_module->axis(131), 600);
}

void tst_SimulatedMotion::moves_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("position");
    QTest::newRow("absolute") << 0 << 2500 << 100 << 2500;
    QTest::newRow("relative to where it is") << 1 << 2500 << 100 << 3000;
    QTest::newRow("relative, back") << 1 << -2500 << 100 << -2000;
    QTest::newRow("relative by nothing") << 1 << 0 << 100 << 500;
    QTest::newRow("coordinate") << 2 << 20 << 100 << 700;
    QTest::newRow("no such coordinate") << 2 << 21 << 4 << 5000;
    QTest::newRow("no coordinate at all") << 2 << -236 << 4 << 5000; // 20 in its last byte
    QTest::newRow("coordinate number too large") << 2 << 276 << 4 << 5000; // here, too
    QTest::newRow("no such type") << 3 << 0 << 3 << 5000;
}

// Sent on the way to 5000, at 500.
void tst_SimulatedMotion::moves()
{
    QFETCH(const int, type);
    QFETCH(const int, value);
    m_module->send(30, 20, 0, 700);
    m_module->moveTo(5000);
    m_module->pass(1s);
    const simulator::Reply reply = m_module->send(4, type, 0, value);
    QTEST(int(reply.status), "status");
    QCOMPARE(reply.value, value);
    m_module->pass(1min);
    QTEST(m_module->axis(1), "position");
    QTEST(m_module->axis(0), "position");
}

void tst_SimulatedMotion::coordinates()
{
    const auto set = m_module->send(30, 3, 0, -42); // SCO
    QCOMPARE(int(set.status), 100);
    QCOMPARE(set.value, -42);
    QCOMPARE(m_module->send(31, 3, 0, 0).value, -42); // GCO
    QCOMPARE(m_module->send(31, 4, 0, 0).value, 0);
    m_module->moveTo(77);
    m_module->pass(1min);
    const auto captured = m_module->send(32, 20, 0, 5); // CCO
    QCOMPARE(int(captured.status), 100);
    QCOMPARE(captured.value, 77);
    QCOMPARE(m_module->send(31, 20, 0, 0).value, 77);
    for (const int command : {30, 31, 32}) {
        QCOMPARE(int(m_module->send(command, 21, 0, 0).status), 3);
        QCOMPARE(int(m_module->send(command, 3, 1, 0).status), 4); // there is no motor 1
    }
    QCOMPARE(int(m_module->send(30, 3, 0, std::numeric_limits<int>::min()).status), 4);
    QCOMPARE(m_module->send(31, 3, 0, 0).value, -42);
}

void tst_SimulatedMotion::torque()
{
    QCOMPARE(m_module->write(14, 1000), 1000);
    QCOMPARE(m_module->axis(18), TorqueMode);
    QCOMPARE(m_module->axis(131), 0);
    m_module->pass(250ms);
    QCOMPARE(m_module->axis(131), 31606); // 50000 * (1 - 1 / e)
    QCOMPARE(m_module->axis(234), 50000);
    m_module->pass(1min);
    QCOMPARE(m_module->axis(131), 50000);
    m_module->write(14, -500); // the sign is the direction
    m_module->pass(1min);
    QCOMPARE(m_module->axis(131), -25000);
    m_module->write(14, 0);
    m_module->pass(1min);
    QCOMPARE(m_module->axis(131), 0);
    QCOMPARE(m_module->axis(18), TorqueMode);
    QCOMPARE(m_module->axis(150), 0);
}

void tst_SimulatedMotion::torqueIsLimited()
{
    m_module->write(6, 51); // 1500 mA
    m_module->write(14, -7500);
    m_module->pass(1min);
    QCOMPARE(m_module->axis(14), -7500); // what is wanted stays as it is
    QCOMPARE(m_module->axis(131), -75000);
    m_module->write(6, 102); // the limit of a motor that turns
    m_module->pass(1min);
    QCOMPARE(m_module->axis(131), -150000);
}

void tst_SimulatedMotion::stopAfterTorque()
{
    m_module->write(14, 40);
    m_module->pass(1min);
    m_module->stop();
    QCOMPARE(m_module->axis(14), 40); // keeps the old target
    QCOMPARE(m_module->axis(18), VelocityMode);
    m_module->pass(1s);
    QCOMPARE(m_module->axis(131), 1000);
    m_module->pass(1s);
    QCOMPARE(m_module->axis(131), 0);
}

void tst_SimulatedMotion::lastCommandWins()
{
    m_module->moveTo(4000);
    m_module->pass(1s);
    m_module->write(2, -1000);
    m_module->pass(3s);
    QCOMPARE(m_module->axis(131), -1000);
    QCOMPARE(m_module->axis(1), 500 + 500 - 500 - 1000);
    m_module->write(0, -2000); // the target as a parameter, from full speed
    QCOMPARE(m_module->axis(2), 0);
    m_module->pass(1s);
    QCOMPARE(m_module->axis(1), -1500);
    m_module->pass(1s);
    QCOMPARE(m_module->axis(1), -2000);
    QCOMPARE(m_module->axis(131), 0);
}

void tst_SimulatedMotion::clearedOnTheWay()
{
    m_module->moveTo(4000);
    m_module->pass(2500ms);
    QCOMPARE(m_module->write(1, 0), 0);
    QCOMPARE(m_module->axis(1), 0);
    QCOMPARE(m_module->axis(0), 2000); // the same place under another number
    QCOMPARE(m_module->axis(131), 1000);
    m_module->pass(1min);
    QCOMPARE(m_module->axis(1), 2000);
    QCOMPARE(m_module->axis(18), PositionMode | Reached);
    m_module->write(1, 0);
    QCOMPARE(m_module->axis(0), 0);
    QCOMPARE(m_module->axis(18), PositionMode | Reached); // at once
    m_module->pass(1min);
    QCOMPARE(m_module->axis(1), 0);
}

void tst_SimulatedMotion::clearedInVelocityMode()
{
    m_module->turnRight(1000);
    m_module->pass(2s);
    m_module->write(1, -7);
    QCOMPARE(m_module->axis(0), -7);
    m_module->pass(1s);
    QCOMPARE(m_module->axis(1), 993);
    QCOMPARE(m_module->axis(131), 1000);
}

void tst_SimulatedMotion::clearOnNull()
{
    m_module->write(140, 0); // full steps: a turn is 200 of them, and 4000 encoder positions
    m_module->turnRight(100);
    m_module->pass(2s); // at 195
    m_module->write(198, 1);
    QCOMPARE(m_module->axis(198), 1);
    QCOMPARE(m_module->axis(1), 195);
    m_module->pass(1s); // 95 behind the mark
    QCOMPARE(m_module->axis(1), 95);
    QCOMPARE(m_module->axis(209), 95 * 20);
    QCOMPARE(m_module->axis(198), 0);
    m_module->pass(2s);
    QCOMPARE(m_module->axis(1), 295); // one mark only
    m_module->write(198, 1);
    m_module->write(198, 0); // thought better of it
    m_module->pass(2s);
    QCOMPARE(m_module->axis(1), 495);
}

void tst_SimulatedMotion::limitSwitches_data()
{
    QTest::addColumn<int>("disabled"); // the parameter
    QTest::addColumn<int>("other");
    QTest::addColumn<int>("side"); // 1 right, -1 left
    QTest::addColumn<int>("bit");
    QTest::newRow("right") << 12 << 13 << 1 << AtRight;
    QTest::newRow("left") << 13 << 12 << -1 << AtLeft;
}

void tst_SimulatedMotion::limitSwitches()
{
    QFETCH(const int, disabled);
    QFETCH(const int, other);
    QFETCH(const int, side);
    QFETCH(const int, bit);
    m_module->module().placeSwitch(side > 0 ? Axis::Switch::Right : Axis::Switch::Left,
                                   side * 2000);
    m_module->write(other, 0);
    m_module->moveTo(side * 3000);
    m_module->pass(1min);
    QCOMPARE(m_module->axis(1), side * 3000); // disabled, as both are at the start
    QCOMPARE(m_module->axis(18), PositionMode | Reached | bit); // the lamp is lit all the same
    m_module->moveTo(0);
    m_module->pass(1min);
    QCOMPARE(m_module->axis(18), PositionMode | Reached);

    m_module->write(disabled, 0);
    m_module->moveTo(side * 3000);
    m_module->pass(1min);
    QCOMPARE(m_module->axis(1), side * 2000);
    QCOMPARE(m_module->axis(131), 0);
    QCOMPARE(m_module->axis(18), PositionMode | bit);
    m_module->turnRight(side * 500);
    m_module->pass(1min);
    QCOMPARE(m_module->axis(1), side * 2000);
    QCOMPARE(m_module->axis(2), side * 500);
    QCOMPARE(m_module->axis(18), VelocityMode | bit); // the velocity isn't reached
    m_module->turnLeft(side * 500);
    m_module->pass(1s);
    QCOMPARE(m_module->axis(131), -side * 500);
    QCOMPARE(m_module->axis(18), VelocityMode | AtVelocity);
    m_module->write(14, side * 100);
    m_module->pass(1min);
    QCOMPARE(m_module->axis(1), side * 2000);
    QCOMPARE(m_module->axis(18), TorqueMode | bit);
    QCOMPARE(m_module->axis(150), 100); // pushes against it

    m_module->module().placeSwitch(side > 0 ? Axis::Switch::Right : Axis::Switch::Left,
                                   std::nullopt);
    QCOMPARE(m_module->axis(18), TorqueMode);
}

void tst_SimulatedMotion::homeSwitch()
{
    m_module->module().placeSwitch(Axis::Switch::Home, 1000);
    for (const auto &[position, closed] : std::vector<std::pair<int, bool>>{
             {899, false}, {900, true}, {1000, true}, {1100, true}, {1101, false}}) {
        m_module->moveTo(position);
        m_module->pass(1min);
        QCOMPARE(m_module->axis(18), PositionMode | Reached | (closed ? AtHome : 0));
    }
    m_module->moveTo(1000);
    m_module->pass(1min);
    m_module->module().placeSwitch(Axis::Switch::Home, std::nullopt);
    QCOMPARE(m_module->axis(18), PositionMode | Reached);
}

void tst_SimulatedMotion::switchesStayAtTheirPlace()
{
    m_module->module().placeSwitch(Axis::Switch::Right, 2000);
    m_module->write(12, 0);
    m_module->moveTo(500);
    m_module->pass(1min);
    m_module->write(1, 0);
    m_module->turnRight(1000);
    m_module->pass(1min);
    QCOMPARE(m_module->axis(1), 1500);
}

void tst_SimulatedMotion::velocityWindow()
{
    m_module->write(17, 100);
    m_module->turnLeft(1000);
    m_module->pass(899ms);
    QCOMPARE(m_module->axis(18), VelocityMode);
    m_module->pass(2ms);
    QCOMPARE(m_module->axis(18), VelocityMode | AtVelocity);
    m_module->write(17, 0);
    QCOMPARE(m_module->axis(18), VelocityMode);
    m_module->pass(1s);
    QCOMPARE(m_module->axis(18), VelocityMode | AtVelocity);
}

void tst_SimulatedMotion::positionWindow()
{
    m_module->write(134, 125); // 500 ms before the end
    m_module->write(135, 2500); // 250 ms
    m_module->moveTo(4000);
    m_module->pass(4740ms);
    QCOMPARE(m_module->axis(18), PositionMode);
    m_module->pass(20ms);
    QCOMPARE(m_module->axis(18), PositionMode | Reached);
    m_module->write(134, -1);
    m_module->pass(1min);
    QCOMPARE(m_module->axis(18), PositionMode);
}

QTEST_GUILESS_MAIN(tst_SimulatedMotion)
#include "tst_SimulatedMotion.moc"
