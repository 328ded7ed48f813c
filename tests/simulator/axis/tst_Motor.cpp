#include "simulator/axis/Motor.h"
#include "support/TestCase.h"

#include <QTest>

using simulator::MotionMode;
using simulator::Motor;
using simulator::Seconds;

namespace {

constexpr int highest = std::numeric_limits<int>::max();

Motor motorWithRamp()
{
    Motor motor;
    motor.setRamp({1000, 1000, 0});
    return motor;
}

} // namespace

class tst_Motor : public TestCase
{
    Q_OBJECT

private slots:
    void oneLookOrMany_data();
    void oneLookOrMany();
    void timeInMotion();
    void positionWraps();
    void targetIsTheShorterWay();
    void newTargetOnTheWay();
    void newRampOnTheWay();
    void limitSwitchStopsAtOnce_data();
    void limitSwitchStopsAtOnce();
    void limitSwitchThatDoesNotStop();
    void wayBackFromTheSwitch();
    void renumberingMovesNothing();
    void nullMark();
    void nullMarkKeepsTheNumberOfTheTarget();
    void swing();
    void swingIntoASwitch();
    void windowOfTheTarget();
    void windowOfAMovedTarget();
    void rampGoal();
};

void tst_Motor::oneLookOrMany_data()
{
    QTest::addColumn<int>("looks");
    for (const int looks : {1, 2, 7, 1000}) {
        QTest::addRow("%d", looks) << looks;
    }
}

// It must not matter how often anybody looks.
void tst_Motor::oneLookOrMany()
{
    QFETCH(const int, looks);
    Motor motor = motorWithRamp();
    motor.setSwitch(Motor::Side::Left, -300);
    motor.setSwitchStops(Motor::Side::Left, true);
    const auto pass = [&](double seconds) {
        for (int i = 0; i < looks; ++i) {
            motor.advance(Seconds(seconds / looks));
        }
    };
    motor.moveTo(4000);
    pass(4.5);
    QCOMPARE(motor.position(), 3875);
    pass(3);
    QCOMPARE(motor.position(), 4000);
    QCOMPARE(motor.state().velocity, 0.0);
    motor.turnAt(-2000);
    pass(1.5);
    QCOMPARE(motor.position(), 4000 - 1125);
    motor.drive(20);
    pass(60);
    QCOMPARE(motor.state().velocity, 1000.0);
    motor.turnAt(-100000);
    pass(100);
    QCOMPARE(motor.position(), -300);
    QCOMPARE(motor.state().velocity, 0.0);
}

void tst_Motor::timeInMotion()
{
    Motor motor = motorWithRamp();
    QCOMPARE(motor.advance(Seconds(9)).count(), 0.0);
    motor.moveTo(4000);
    QCOMPARE(motor.advance(Seconds(2)).count(), 2.0);
    QVERIFY(std::abs(motor.advance(Seconds(10)).count() - 3) < 1e-6);
    QCOMPARE(motor.advance(Seconds(0)).count(), 0.0);
    motor.swing(100, Seconds(2));
    QCOMPARE(motor.advance(Seconds(100001)).count(), 100001.0);
}

void tst_Motor::positionWraps()
{
    Motor motor = motorWithRamp();
    motor.renumber(highest);
    motor.turnAt(1000);
    motor.advance(Seconds(1));
    QCOMPARE(motor.position(), std::numeric_limits<int>::min() + 499);
    motor.turnAt(-1000);
    motor.advance(Seconds(2.5)); // 500 further, 500 back while it turns, and 500 on
    QCOMPARE(motor.position(), highest);
    motor.advance(Seconds(1));
    QCOMPARE(motor.position(), highest - 1000);
    // For days at the largest velocity.
    motor.setRamp({0, 0, 268435454});
    motor.turnAt(268435454);
    motor.advance(std::chrono::hours(1000));
    const std::int64_t way = std::int64_t{268435454} * 3600 * 1000;
    QCOMPARE(motor.position(), static_cast<int>(highest - 1000 + way));
}

void tst_Motor::targetIsTheShorterWay()
{
    Motor motor = motorWithRamp();
    motor.renumber(highest - 10);
    motor.moveTo(-highest);
    motor.advance(Seconds(10));
    QCOMPARE(motor.position(), -highest);
    QCOMPARE(motor.state().position, 12.0);
}

void tst_Motor::newTargetOnTheWay()
{
    Motor motor = motorWithRamp();
    motor.moveTo(4000);
    motor.advance(Seconds(2)); // at 1500, full speed
    motor.moveTo(0);
    motor.advance(Seconds(1));
    QCOMPARE(motor.position(), 2000);
    QCOMPARE(motor.state().velocity, 0.0);
    motor.advance(Seconds(3));
    QCOMPARE(motor.position(), 0);
    QCOMPARE(motor.state().velocity, 0.0);
}

void tst_Motor::newRampOnTheWay()
{
    Motor motor = motorWithRamp();
    motor.moveTo(4000);
    motor.advance(Seconds(1));
    motor.setRamp({500, 1000, 0});
    motor.advance(Seconds(0.5));
    QCOMPARE(motor.position(), 875);
    QCOMPARE(motor.state().velocity, 500.0);
    motor.advance(Seconds(1));
    QCOMPARE(motor.position(), 1375);
}

void tst_Motor::limitSwitchStopsAtOnce_data()
{
    QTest::addColumn<MotionMode>("mode");
    QTest::addColumn<int>("way");
    for (const int way : {1, -1}) {
        QTest::addRow("position %d", way) << MotionMode::Position << way;
        QTest::addRow("velocity %d", way) << MotionMode::Velocity << way;
        QTest::addRow("torque %d", way) << MotionMode::Torque << way;
    }
}

void tst_Motor::limitSwitchStopsAtOnce()
{
    QFETCH(const MotionMode, mode);
    QFETCH(const int, way);
    const Motor::Side side = way > 0 ? Motor::Side::Right : Motor::Side::Left;
    const Motor::Side other = way > 0 ? Motor::Side::Left : Motor::Side::Right;
    Motor motor = motorWithRamp();
    motor.setSwitch(side, way * 1234);
    motor.setSwitchStops(side, true);
    motor.setSwitchStops(other, true); // there is none
    const auto start = [&] {
        if (mode == MotionMode::Position) {
            motor.moveTo(way * 5000);
        } else if (mode == MotionMode::Velocity) {
            motor.turnAt(way * 2000);
        } else {
            motor.drive(way * 100);
        }
    };
    start();
    motor.advance(Seconds(1e-3));
    QVERIFY(!motor.atSwitch(side));
    motor.advance(Seconds(60));
    QCOMPARE(motor.position(), way * 1234);
    QCOMPARE(motor.state().velocity, 0.0);
    QVERIFY(motor.atSwitch(side));
    QVERIFY(!motor.atSwitch(other));
    QCOMPARE(motor.mode(), mode);
    QCOMPARE(motor.rampGoal(), 0.0);
    // A switch that lets go starts nothing.
    motor.setSwitchStops(side, false);
    motor.advance(Seconds(60));
    QCOMPARE(motor.position(), way * 1234);
    // And the same command again goes nowhere.
    motor.setSwitchStops(side, true);
    start();
    motor.advance(Seconds(60));
    QCOMPARE(motor.position(), way * 1234);
}

void tst_Motor::limitSwitchThatDoesNotStop()
{
    Motor motor = motorWithRamp();
    motor.setSwitch(Motor::Side::Right, 1000);
    motor.moveTo(2000);
    motor.advance(Seconds(60));
    QCOMPARE(motor.position(), 2000);
    QVERIFY(motor.atSwitch(Motor::Side::Right));
    // One that begins to count stops at once.
    motor.turnAt(1000);
    motor.advance(Seconds(1));
    QCOMPARE(motor.position(), 2500);
    motor.setSwitchStops(Motor::Side::Right, true);
    motor.advance(Seconds(1));
    QCOMPARE(motor.position(), 2500);
    motor.setSwitch(Motor::Side::Right, std::nullopt);
    QVERIFY(!motor.atSwitch(Motor::Side::Right));
}

void tst_Motor::wayBackFromTheSwitch()
{
    Motor motor = motorWithRamp();
    motor.setSwitch(Motor::Side::Right, 1000);
    motor.setSwitchStops(Motor::Side::Right, true);
    motor.turnAt(1000);
    motor.advance(Seconds(10));
    motor.turnAt(-1000);
    motor.advance(Seconds(2));
    QCOMPARE(motor.position(), 1000 - 1500);
    motor.moveTo(900);
    motor.advance(Seconds(60));
    QCOMPARE(motor.position(), 900);
}

void tst_Motor::renumberingMovesNothing()
{
    Motor motor = motorWithRamp();
    motor.moveTo(4000);
    motor.advance(Seconds(2.5));
    motor.renumber(0);
    QCOMPARE(motor.position(), 0);
    motor.advance(Seconds(60));
    QCOMPARE(motor.position(), 2000); // the same place
    QCOMPARE(motor.state().position, 4000.0);
    QCOMPARE(motor.placeOf(0), 2000.0);
}

void tst_Motor::nullMark()
{
    Motor motor = motorWithRamp();
    motor.armNull(0);
    motor.turnAt(1000);
    motor.advance(Seconds(10));
    QVERIFY(!motor.takeNull());
    motor.armNull(4000); // stands at 9500
    motor.advance(Seconds(1));
    QVERIFY(!motor.takeNull());
    QCOMPARE(motor.position(), 10500);
    motor.advance(Seconds(2));
    QCOMPARE(motor.takeNull(), std::optional(12000.0));
    QVERIFY(!motor.takeNull()); // tells of it once
    QCOMPARE(motor.position(), 500);
    motor.advance(Seconds(8));
    QCOMPARE(motor.position(), 8500); // the next marks don't count

    motor.armNull(4000);
    motor.turnAt(-1000);
    motor.advance(Seconds(60));
    // On to 21000 while it turns, then back past the mark at 20000.
    QCOMPARE(motor.takeNull(), std::optional(20000.0));
}

void tst_Motor::nullMarkKeepsTheNumberOfTheTarget()
{
    Motor motor = motorWithRamp();
    motor.moveTo(100);
    motor.advance(Seconds(60));
    motor.armNull(1000);
    motor.moveTo(2500);
    motor.advance(Seconds(60));
    QCOMPARE(motor.position(), 2500);
    QCOMPARE(motor.state().position, 3500.0);
}

void tst_Motor::swing()
{
    Motor motor = motorWithRamp();
    motor.turnAt(300);
    motor.advance(Seconds(1)); // it stands at 255
    QCOMPARE(motor.position(), 255);
    motor.swing(100, Seconds(4));
    motor.advance(Seconds(1.5));
    QCOMPARE(motor.state().velocity, 100.0);
    QCOMPARE(motor.position(), 405);
    motor.advance(Seconds(1));
    QCOMPARE(motor.state().velocity, -100.0);
    QCOMPARE(motor.position(), 405);
    motor.advance(Seconds(4000.5));
    QCOMPARE(motor.position(), 355);
    motor.advance(Seconds(1));
    motor.hold();
    QCOMPARE(motor.position(), 255);
    QCOMPARE(motor.state().velocity, 0.0);
    motor.advance(Seconds(60));
    QCOMPARE(motor.position(), 255);
    QCOMPARE(motor.mode(), MotionMode::Position);

    motor.swing(100, Seconds(0)); // no time to turn
    motor.advance(Seconds(60));
    QCOMPARE(motor.position(), 255);
}

void tst_Motor::swingIntoASwitch()
{
    Motor motor = motorWithRamp();
    motor.setSwitch(Motor::Side::Left, -50);
    motor.setSwitchStops(Motor::Side::Left, true);
    motor.swing(-100, Seconds(4));
    motor.advance(Seconds(4000));
    QCOMPARE(motor.position(), -50);
    QCOMPARE(motor.state().velocity, 0.0);
    motor.hold();
    motor.turnAt(10);
    motor.advance(Seconds(1));
    QVERIFY(motor.position() > -50);
}

void tst_Motor::windowOfTheTarget()
{
    Motor motor = motorWithRamp();
    motor.setWindow(125, Seconds(0.25));
    QVERIFY(motor.positionReached()); // it stood there all its life
    motor.moveTo(4000);
    QVERIFY(!motor.positionReached());
    // In the window from 4.5 s on: half a second before the end it is 125 away.
    motor.advance(Seconds(4.74));
    QVERIFY(!motor.positionReached());
    motor.advance(Seconds(0.02));
    QVERIFY(motor.positionReached());
    motor.setWindow(-1, Seconds(0));
    QVERIFY(!motor.positionReached());
    motor.setWindow(0, Seconds(0.25));
    motor.advance(Seconds(0.3)); // now it stands there, for less than that
    QVERIFY(!motor.positionReached());
    motor.advance(Seconds(0.25));
    QVERIFY(motor.positionReached());
    motor.turnAt(0);
    QVERIFY(!motor.positionReached()); // nothing to reach
    motor.moveTo(4000);
    QVERIFY(!motor.positionReached()); // a new move, and a new wait
    motor.advance(Seconds(0.25));
    QVERIFY(motor.positionReached());
}

void tst_Motor::windowOfAMovedTarget()
{
    Motor motor = motorWithRamp();
    motor.setWindow(10, Seconds(0.25));
    motor.moveTo(5); // inside from the start
    QVERIFY(motor.positionReached());
    motor.advance(Seconds(60));
    motor.moveTo(200); // there and back within one look
    motor.advance(Seconds(0.2));
    motor.moveTo(5);
    motor.advance(Seconds(0.6));
    QCOMPARE(motor.position(), 5);
    QVERIFY(!motor.positionReached());
    motor.advance(Seconds(0.2));
    QVERIFY(motor.positionReached());
}

void tst_Motor::rampGoal()
{
    Motor motor = motorWithRamp();
    QCOMPARE(motor.rampGoal(), 0.0);
    motor.moveTo(-4000);
    QCOMPARE(motor.rampGoal(), -1000.0);
    motor.advance(Seconds(60));
    QCOMPARE(motor.rampGoal(), 0.0);
    motor.turnAt(700);
    QCOMPARE(motor.rampGoal(), 700.0);
    motor.drive(-3);
    QCOMPARE(motor.rampGoal(), -150.0);
    motor.swing(80, Seconds(2));
    QCOMPARE(motor.rampGoal(), 80.0);
}

QTEST_GUILESS_MAIN(tst_Motor)
#include "tst_Motor.moc"
