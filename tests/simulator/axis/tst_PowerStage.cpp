#include "simulator/axis/PowerStage.h"
#include "simulator/axis/StatusWord.h"
#include "support/TestCase.h"

#include <QTest>

#include <numbers>
#include <set>

using namespace std::chrono_literals;
using simulator::MotorLoad;
using simulator::PowerStage;
using simulator::StatusWord;

namespace {

using Measurement = std::int32_t (PowerStage::*)(const MotorLoad &);

constexpr Measurement Measurements[] = {&PowerStage::motorCurrent, &PowerStage::phaseA,
                                        &PowerStage::phaseB};

QList<int> measure(PowerStage &stage, const MotorLoad &load, int count)
{
    QList<int> values;
    for (int i = 0; i < count; ++i) {
        for (const Measurement measurement : Measurements) {
            values.append((stage.*measurement)(load));
        }
    }
    return values;
}

} // namespace

class tst_PowerStage : public TestCase
{
    Q_OBJECT

private slots:
    void scaledCurrent_data();
    void scaledCurrent();
    void noNoiseAtRest_data();
    void noNoiseAtRest();
    void noiseIsNarrowAndThere();
    void noiseFollowsTheSeed();
    void supply_data();
    void supply();
    void temperature();
    void statusBits_data();
    void statusBits();
    void statusBitsOfTheSupply_data();
    void statusBitsOfTheSupply();
};

void tst_PowerStage::scaledCurrent_data()
{
    QTest::addColumn<int>("scale");
    QTest::addColumn<int>("current");
    QTest::newRow("none") << 0 << 0;
    QTest::newRow("a fifth") << 51 << 1500;
    QTest::newRow("cut off") << 128 << 3764;
    QTest::newRow("full") << 255 << 7500;
}

void tst_PowerStage::scaledCurrent()
{
    QFETCH(const int, scale);
    QTEST(PowerStage::scaledCurrent(scale), "current");
}

void tst_PowerStage::noNoiseAtRest_data()
{
    QTest::addColumn<double>("angle");
    QTest::addColumn<int>("phaseA");
    QTest::addColumn<int>("phaseB");
    constexpr double full = 2 * std::numbers::pi;
    QTest::newRow("0") << 0.0 << 1000 << 0;
    QTest::newRow("half a full step") << full / 8 << 707 << 707;
    QTest::newRow("full step") << full / 4 << 0 << 1000;
    QTest::newRow("two full steps") << full / 2 << 1000 << 0;
    QTest::newRow("back") << -full / 12 << 866 << 500;
}

void tst_PowerStage::noNoiseAtRest()
{
    QFETCH(const double, angle);
    QFETCH(const int, phaseA);
    QFETCH(const int, phaseB);
    PowerStage stage;
    const MotorLoad load{1000, 0, angle};
    QCOMPARE(measure(stage, load, 2), QList<int>({1000, phaseA, phaseB, 1000, phaseA, phaseB}));
}

void tst_PowerStage::noiseIsNarrowAndThere()
{
    PowerStage stage;
    const QList<int> values = measure(stage, {1000, -0.1, 0}, 100);
    QVERIFY(*std::min_element(values.begin(), values.end()) >= 980);
    QVERIFY(*std::min_element(values.begin(), values.end()) < 990);
    QVERIFY(*std::max_element(values.begin(), values.end()) <= 1020);
    QVERIFY(*std::max_element(values.begin(), values.end()) > 1010);
    QVERIFY(std::set<int>(values.begin(), values.end()).size() > 20);
    QCOMPARE(stage.motorCurrent({0, 1, 0}), 0);
}

void tst_PowerStage::noiseFollowsTheSeed()
{
    const MotorLoad load{1000, 1, 0};
    PowerStage first;
    PowerStage second;
    first.setSeed(7);
    second.setSeed(7);
    measure(second, {1000, 0, 0}, 5); // what is measured at rest uses up no noise
    const QList<int> values = measure(first, load, 10);
    QCOMPARE(measure(second, load, 10), values);
    second.setSeed(8);
    QVERIFY(measure(second, load, 10) != values);
    second.setSeed(7);
    QCOMPARE(measure(second, load, 10), values);
}

void tst_PowerStage::supply_data()
{
    QTest::addColumn<double>("current");
    QTest::addColumn<double>("turns");
    QTest::addColumn<int>("voltage");
    QTest::addColumn<int>("dcCurrent");
    QTest::newRow("at rest") << 7500.0 << 0.0 << 240 << 120;
    QTest::newRow("slow") << 3000.0 << 1.0 << 238 << 120 + 750 + 75;
    QTest::newRow("to the left") << 3000.0 << -1.0 << 238 << 120 + 750 + 75;
    QTest::newRow("fast") << 3000.0 << 10.0 << 238 << 120 + 750 + 750;
    QTest::newRow("no faster") << 3000.0 << 5000.0 << 238 << 120 + 750 + 1500;
    QTest::newRow("full current") << 7500.0 << 4.0 << 235 << 120 + 1875 + 750;
}

void tst_PowerStage::supply()
{
    QFETCH(const double, current);
    QFETCH(const double, turns);
    const MotorLoad load{current, turns, 0};
    QTEST(PowerStage::supplyVoltage(load), "voltage");
    QTEST(PowerStage::dcCurrent(load), "dcCurrent");
}

void tst_PowerStage::temperature()
{
    PowerStage stage;
    QCOMPARE(stage.temperature(), 31);
    stage.pass(1h, 0);
    QCOMPARE(stage.temperature(), 31);
    stage.pass(180s, 7500); // one time constant
    QCOMPARE(stage.temperature(), 31 + 38);
    stage.pass(1h, 7500);
    QCOMPARE(stage.temperature(), 31 + 60);
    stage.pass(1h, 3750); // a quarter of the losses
    QCOMPARE(stage.temperature(), 31 + 15);
    for (int i = 0; i < 180; ++i) {
        stage.pass(1s, 0);
    }
    QCOMPARE(stage.temperature(), 31 + 6); // 15 / e, however often anybody looks
}

void tst_PowerStage::statusBits_data()
{
    using Bit = StatusWord::Bit;
    QTest::addColumn<StatusWord::Bit>("bit");
    QTest::addColumn<int>("value");
    QTest::newRow("position reached") << Bit::PositionReached << 0x001;
    QTest::newRow("velocity reached") << Bit::VelocityReached << 0x002;
    QTest::newRow("closed loop") << Bit::ClosedLoop << 0x004;
    QTest::newRow("position mode") << Bit::PositionMode << 0x008;
    QTest::newRow("velocity mode") << Bit::VelocityMode << 0x010;
    QTest::newRow("torque mode") << Bit::TorqueMode << 0x020;
    QTest::newRow("home switch") << Bit::HomeSwitch << 0x040;
    QTest::newRow("left switch") << Bit::LeftSwitch << 0x080;
    QTest::newRow("right switch") << Bit::RightSwitch << 0x100;
    QTest::newRow("undervoltage") << Bit::Undervoltage << 0x200;
    QTest::newRow("overvoltage") << Bit::Overvoltage << 0x400;
    QTest::newRow("overtemperature") << Bit::Overtemperature << 0x800;
}

void tst_PowerStage::statusBits()
{
    QFETCH(const StatusWord::Bit, bit);
    QFETCH(const int, value);
    QCOMPARE(StatusWord().with(bit, true).value(), value);
    QCOMPARE(StatusWord().with(bit, false).value(), 0);
    QCOMPARE(StatusWord().with(bit, true).with(bit, false).value(), value); // only adds
}

void tst_PowerStage::statusBitsOfTheSupply_data()
{
    QTest::addColumn<int>("voltage");
    QTest::addColumn<int>("temperature");
    QTest::addColumn<int>("value");
    QTest::newRow("well") << 240 << 31 << 0;
    QTest::newRow("lowest") << 90 << 31 << 0;
    QTest::newRow("too low") << 89 << 31 << 0x200;
    QTest::newRow("highest") << 550 << 31 << 0;
    QTest::newRow("too high") << 551 << 31 << 0x400;
    QTest::newRow("warm") << 240 << 99 << 0;
    QTest::newRow("hot") << 240 << 100 << 0x800;
    QTest::newRow("hot without supply") << 0 << 300 << 0xa00;
}

void tst_PowerStage::statusBitsOfTheSupply()
{
    QFETCH(const int, voltage);
    QFETCH(const int, temperature);
    QTEST(StatusWord().withSupply(voltage, temperature).value(), "value");
}

QTEST_GUILESS_MAIN(tst_PowerStage)
#include "tst_PowerStage.moc"
