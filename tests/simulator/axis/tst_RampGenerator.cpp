#include "simulator/axis/RampGenerator.h"
#include "support/TestCase.h"

#include <QTest>

#include <cmath>

using simulator::MotionSegment;
using simulator::MotionState;
using simulator::Ramp;
using simulator::RampGenerator;

Q_DECLARE_METATYPE(Ramp)
Q_DECLARE_METATYPE(MotionState)

namespace {

struct Journey
{
    MotionState end;
    double time = 0;
    double peak = 0; // largest speed on the way
    double farthest = 0; // place farthest to the right
};

// Follows one segment after the other until one lasts forever.
template <typename NextSegment>
Journey travel(MotionState from, NextSegment next)
{
    Journey journey{from, 0, 0, from.position};
    for (int piece = 0; piece < 100; ++piece) {
        const MotionSegment segment = next(journey.end);
        const MotionState begin = segment.at(0);
        journey.peak = std::max(journey.peak, std::abs(begin.velocity));
        if (!std::isfinite(segment.duration())) {
            journey.end = begin;
            return journey;
        }
        journey.end = segment.at(segment.duration());
        journey.time += segment.duration();
        journey.peak = std::max(journey.peak, std::abs(journey.end.velocity));
        journey.farthest = std::max(journey.farthest, journey.end.position);
    }
    journey.time = -1; // never comes to an end
    return journey;
}

bool isNear(double value, double expected)
{
    return std::abs(value - expected) <= 1e-6 * std::max(1.0, std::abs(expected));
}

} // namespace

#define COMPARE_NEAR(value, expected)                                                              \
    QVERIFY2(isNear(value, expected),                                                              \
             qPrintable(QStringLiteral("%1 is not %2").arg(value).arg(expected)))

class tst_RampGenerator : public TestCase
{
    Q_OBJECT

private slots:
    void position_data();
    void position();
    void velocity_data();
    void velocity();
    void torque_data();
    void torque();
    void velocityJumpsAtTheStart();
    void segmentFindsItsPlaces_data();
    void segmentFindsItsPlaces();
};

void tst_RampGenerator::position_data()
{
    QTest::addColumn<Ramp>("ramp");
    QTest::addColumn<MotionState>("from");
    QTest::addColumn<double>("target");
    QTest::addColumn<double>("time");
    QTest::addColumn<double>("peak");
    QTest::addColumn<double>("farthest");

    const Ramp ramp{1000, 1000, 0};
    const double root = std::sqrt(0.5);
    QTest::newRow("trapezium") << ramp << MotionState{0, 0} << 4000.0 << 5.0 << 1000.0 << 4000.0;
    QTest::newRow("to the left") << ramp << MotionState{100, 0} << -3900.0 << 5.0 << 1000.0
                                 << 100.0;
    QTest::newRow("triangle") << ramp << MotionState{0, 0} << 250.0 << 1.0 << 500.0 << 250.0;
    QTest::newRow("nothing to do") << ramp << MotionState{7, 0} << 7.0 << 0.0 << 0.0 << 7.0;
    QTest::newRow("one microstep")
        << ramp << MotionState{0, 0} << 1.0 << 2 * std::sqrt(0.001) << std::sqrt(1000.0) << 1.0;
    QTest::newRow("from full speed")
        << ramp << MotionState{0, 1000} << 1500.0 << 2.0 << 1000.0 << 1500.0;
    QTest::newRow("too fast for the ramp")
        << ramp << MotionState{0, 2000} << 4000.0 << 1.0 + 2.0 + 1.0 << 2000.0 << 4000.0;
    // Stands at 500 after 1 s, and goes the 500 back with a peak of 707 pps.
    QTest::newRow("away from it at first")
        << ramp << MotionState{0, 1000} << 0.0 << 1 + 2 * root << 1000.0 << 500.0;
    QTest::newRow("can't brake any more")
        << ramp << MotionState{0, 1000} << 250.0 << 1 + 2 * std::sqrt(0.25) << 1000.0 << 500.0;
    QTest::newRow("start-stop velocity") << Ramp{1000, 1000, 500} << MotionState{0, 0} << 1750.0
                                         << 0.5 + 1.0 + 0.5 << 1000.0 << 1750.0;
    QTest::newRow("start-stop velocity above the largest")
        << Ramp{1000, 1000, 5000} << MotionState{0, 0} << 2000.0 << 2.0 << 1000.0 << 2000.0;
    QTest::newRow("no velocity") << Ramp{0, 1000, 0} << MotionState{0, 0} << 100.0 << 0.0 << 0.0
                                 << 0.0;
    QTest::newRow("no velocity any more")
        << Ramp{0, 1000, 0} << MotionState{0, 1000} << 9000.0 << 1.0 << 1000.0 << 500.0;
    QTest::newRow("no acceleration")
        << Ramp{1000, 0, 0} << MotionState{0, 0} << 100.0 << 0.0 << 0.0 << 0.0;
    QTest::newRow("no acceleration any more")
        << Ramp{1000, 0, 0} << MotionState{0, 800} << 1600.0 << 2.0 << 800.0 << 1600.0;
    QTest::newRow("no acceleration, but a start-stop velocity")
        << Ramp{1000, 0, 200} << MotionState{0, 0} << 100.0 << 0.5 << 200.0 << 100.0;
    QTest::newRow("the longest way")
        << Ramp{268435454, 33554431, 0} << MotionState{-2147483647, 0} << 2147483647.0
        << 268435454.0 / 33554431 + 4294967294.0 / 268435454 << 268435454.0 << 2147483647.0;
    QTest::newRow("the slowest ramp")
        << Ramp{268435454, 1, 0} << MotionState{0, 0} << 10000.0 << 200.0 << 100.0 << 10000.0;
}

void tst_RampGenerator::position()
{
    QFETCH(const Ramp, ramp);
    QFETCH(const MotionState, from);
    QFETCH(const double, target);
    QFETCH(const double, time);
    QFETCH(const double, peak);
    QFETCH(const double, farthest);
    const RampGenerator generator(ramp);
    const Journey journey =
        travel(from, [&](MotionState state) { return generator.towardsPosition(state, target); });
    COMPARE_NEAR(journey.time, time);
    COMPARE_NEAR(journey.peak, peak);
    COMPARE_NEAR(journey.farthest, farthest);
    QCOMPARE(journey.end.velocity, 0.0);
    const bool arrives = ramp.maxVelocity > 0 && time > 0;
    if (arrives) {
        QCOMPARE(journey.end.position, target); // exactly, not nearly
    }
}

void tst_RampGenerator::velocity_data()
{
    QTest::addColumn<Ramp>("ramp");
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("target");
    QTest::addColumn<double>("time");
    QTest::addColumn<double>("way");

    const Ramp ramp{10, 1000, 0}; // the largest velocity is for positioning only
    QTest::newRow("start") << ramp << 0.0 << 2000.0 << 2.0 << 2000.0;
    QTest::newRow("start to the left") << ramp << 0.0 << -2000.0 << 2.0 << -2000.0;
    QTest::newRow("stop") << ramp << 1000.0 << 0.0 << 1.0 << 500.0;
    QTest::newRow("faster") << ramp << 1000.0 << 2000.0 << 1.0 << 1500.0;
    QTest::newRow("slower") << ramp << 2000.0 << 1000.0 << 1.0 << 1500.0;
    QTest::newRow("reversal") << ramp << 1000.0 << -2000.0 << 3.0 << 500.0 - 2000.0;
    QTest::newRow("as it is") << ramp << -70.0 << -70.0 << 0.0 << 0.0;
    const Ramp jumping{10, 1000, 500};
    QTest::newRow("start with a jump") << jumping << 0.0 << 1000.0 << 0.5 << 375.0;
    QTest::newRow("stop with a jump") << jumping << 1000.0 << 0.0 << 0.5 << 375.0;
    QTest::newRow("slow start") << jumping << 0.0 << -300.0 << 0.0 << 0.0;
    QTest::newRow("slow stop") << jumping << 300.0 << 0.0 << 0.0 << 0.0;
    QTest::newRow("slow reversal") << jumping << 300.0 << -300.0 << 0.0 << 0.0;
    QTest::newRow("reversal with jumps") << jumping << 1000.0 << -1000.0 << 1.0 << 0.0;
    const Ramp none{10, 0, 0};
    QTest::newRow("stop without a ramp") << none << 1000.0 << 0.0 << 0.0 << 0.0;
    QTest::newRow("slower without a ramp") << none << 1000.0 << 300.0 << 0.0 << 0.0;
}

void tst_RampGenerator::velocity()
{
    QFETCH(const Ramp, ramp);
    QFETCH(const double, from);
    QFETCH(const double, target);
    QFETCH(const double, time);
    QFETCH(const double, way);
    const RampGenerator generator(ramp);
    const Journey journey = travel(
        {0, from}, [&](MotionState state) { return generator.towardsVelocity(state, target); });
    COMPARE_NEAR(journey.time, time);
    COMPARE_NEAR(journey.end.position, way);
    QCOMPARE(journey.end.velocity, target); // exactly
}

void tst_RampGenerator::torque_data()
{
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("current");
    QTest::newRow("start") << 0.0 << 1000.0;
    QTest::newRow("to the left") << 0.0 << -1000.0;
    QTest::newRow("more") << 10000.0 << 1000.0;
    QTest::newRow("off") << 50000.0 << 0.0;
    QTest::newRow("reversal") << 50000.0 << -2000.0;
    QTest::newRow("as it is") << 100.0 << 2.0;
}

void tst_RampGenerator::torque()
{
    QFETCH(const double, from);
    QFETCH(const double, current);
    const double end = current * RampGenerator::velocityPerCurrent;
    const Journey journey = travel(
        {0, from}, [&](MotionState state) { return RampGenerator::underTorque(state, current); });
    QVERIFY(journey.time >= 0);
    QCOMPARE(journey.end.velocity, end);
    // From the law itself: what of the way isn't covered at the final velocity.
    const double lag = (from - end) * RampGenerator::torqueTimeConstant;
    QVERIFY(std::abs(journey.end.position - (end * journey.time + lag)) < 1);
    if (from == 0) {
        const MotionState soon =
            RampGenerator::underTorque({0, 0}, current).at(RampGenerator::torqueTimeConstant);
        COMPARE_NEAR(soon.velocity, end * (1 - std::exp(-1.0)));
    }
}

void tst_RampGenerator::velocityJumpsAtTheStart()
{
    const RampGenerator generator({1000, 1000, 500});
    QCOMPARE(generator.towardsVelocity({0, 0}, -800).at(0).velocity, -500.0);
    QCOMPARE(generator.towardsPosition({0, 0}, -800).at(0).velocity, -500.0);
    const RampGenerator none({1000, 0, 0});
    QCOMPARE(none.towardsVelocity({5, 0}, 800).at(100).position, 5.0); // it never gets going
}

void tst_RampGenerator::segmentFindsItsPlaces_data()
{
    QTest::addColumn<double>("velocity");
    QTest::addColumn<double>("place");
    QTest::addColumn<double>("horizon");
    QTest::addColumn<double>("time"); // -1: never
    QTest::newRow("ahead") << 100.0 << 50.0 << 1.0 << 0.5;
    QTest::newRow("at the horizon") << 100.0 << 100.0 << 1.0 << 1.0;
    QTest::newRow("behind the horizon") << 100.0 << 101.0 << 1.0 << -1.0;
    QTest::newRow("behind") << 100.0 << -1.0 << 1.0 << -1.0;
    QTest::newRow("here") << 100.0 << 0.0 << 1.0 << -1.0;
    QTest::newRow("to the left") << -100.0 << -50.0 << 1.0 << 0.5;
    QTest::newRow("at rest") << 0.0 << 0.0 << 1.0 << -1.0;
}

void tst_RampGenerator::segmentFindsItsPlaces()
{
    QFETCH(const double, velocity);
    QFETCH(const double, place);
    QFETCH(const double, horizon);
    QFETCH(const double, time);
    const auto found = MotionSegment::steady({0, velocity}).timeOfReaching(place, horizon);
    QCOMPARE(found.has_value(), time >= 0);
    COMPARE_NEAR(found.value_or(-1), time);
}

QTEST_GUILESS_MAIN(tst_RampGenerator)
#include "tst_RampGenerator.moc"
