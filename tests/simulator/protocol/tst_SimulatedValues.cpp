#include "simulator/ModuleUnderTest.h"
#include "support/TestCase.h"

#include <QTest>

using namespace std::chrono_literals;

namespace {

// Bits of the status word.
constexpr int Reached = 0x001;
constexpr int ClosedLoop = 0x004;
constexpr int PositionMode = 0x008;

} // namespace

/// The values that the module measures or computes while the motor turns, and at rest.
class tst_SimulatedValues : public TestCase
{
    Q_OBJECT

private slots:
    void init();
    void encoderCounts();
    void currentsInMotion();
    void currentOfTheScaler();
    void closedLoopValues();
    void closedLoopValuesAtRest();
    void scalerTarget_data();
    void scalerTarget();
    void closedLoopIsInitialised();
    void heldValues();
    void statusOfTheSupply();
    void atRestNothingChanges();
    void sameSeedSameRun();

private:
    std::unique_ptr<ModuleUnderTest> m_module;
};

void tst_SimulatedValues::init()
{
    TestCase::init();
    m_module = std::make_unique<ModuleUnderTest>();
    m_module->write(4, 1000);
    m_module->write(5, 1000);
}

void tst_SimulatedValues::encoderCounts()
{
    m_module->write(4, 100000);
    m_module->write(5, 100000);
    m_module->moveTo(51200); // a turn
    m_module->pass(1min);
    QCOMPARE(m_module->axis(209), 4000);
    m_module->write(1, 0); // what the module calls the position doesn't turn the shaft
    QCOMPARE(m_module->axis(209), 4000);
    m_module->write(210, 1000); // what was counted before stays
    QCOMPARE(m_module->axis(209), 4000);
    m_module->moveTo(-25600);
    m_module->pass(1min);
    QCOMPARE(m_module->axis(209), 3500);
    m_module->write(202, 0); // no turn, no count
    m_module->moveTo(0);
    m_module->pass(1min);
    QCOMPARE(m_module->axis(209), 3500);
}

void tst_SimulatedValues::currentsInMotion()
{
    m_module->write(6, 255);
    m_module->write(7, 51);
    QCOMPARE(m_module->axis(150), 1500);
    QCOMPARE(m_module->axis(151), 1500); // stands on a full step
    QCOMPARE(m_module->axis(152), 0);
    QCOMPARE(m_module->axis(153), 240);
    QCOMPARE(m_module->axis(154), 120);
    QCOMPARE(m_module->axis(155), 31);
    m_module->write(5, 100000);
    m_module->turnRight(51200);
    m_module->pass(1h);
    for (const int number : {150, 151, 152}) {
        const int first = m_module->axis(number);
        const int second = m_module->axis(number);
        QVERIFY(qAbs(first - 7500) <= 150);
        QVERIFY(qAbs(second - 7500) <= 150);
        QVERIFY(first != second);
    }
    QCOMPARE(m_module->axis(153), 235);
    QCOMPARE(m_module->axis(154), 120 + 1875 + 188);
    QCOMPARE(m_module->axis(155), 91);
    m_module->stop();
    m_module->pass(10h);
    QCOMPARE(m_module->axis(150), 1500);
    QCOMPARE(m_module->axis(155), 33); // the standby current warms, too
}

void tst_SimulatedValues::currentOfTheScaler()
{
    m_module->write(6, 255);
    m_module->write(129, 1);
    m_module->write(122, 1);
    m_module->turnRight(1000);
    m_module->pass(2s);
    QCOMPARE(m_module->axis(123), 25); // no error to speak of
    QVERIFY(qAbs(m_module->axis(150) - 7500 * 25 / 255) <= 20);
    m_module->write(129, 0); // the scaler belongs to the closed loop
    QVERIFY(qAbs(m_module->axis(150) - 7500) <= 150);
}

void tst_SimulatedValues::closedLoopValues()
{
    m_module->write(5, 1000000);
    m_module->turnLeft(175000); // in the middle between AP 108 and AP 109
    m_module->pass(10s);
    for (const int number : {230, 231, 232, 237}) {
        QCOMPARE(m_module->axis(number), 0); // open loop
    }
    QCOMPARE(m_module->axis(233), m_module->axis(1));
    m_module->write(129, 1);
    QCOMPARE(m_module->axis(230), -128);
    QCOMPARE(m_module->axis(231), -(255 + 128));
    QCOMPARE(m_module->axis(232), 127);
    QCOMPARE(m_module->axis(237), -175);
    QCOMPARE(m_module->axis(233), m_module->axis(1) - 175);
    QCOMPARE(m_module->axis(235), -175000);
    m_module->write(124, 500); // less gain, more error
    QCOMPARE(m_module->axis(237), -350);
    m_module->write(124, 0);
    QCOMPARE(m_module->axis(237), -175000);
    m_module->turnLeft(50000);
    m_module->pass(10s);
    QCOMPARE(m_module->axis(230), 0); // up to AP 108
    m_module->turnRight(300000);
    m_module->pass(10s);
    QCOMPARE(m_module->axis(230), 255); // from AP 109 on
    m_module->write(109, 0); // below AP 108
    QCOMPARE(m_module->axis(230), 255);
}

void tst_SimulatedValues::closedLoopValuesAtRest()
{
    m_module->write(129, 1);
    for (const int number : {230, 231, 232, 233, 234, 235, 236, 237}) {
        QCOMPARE(m_module->axis(number), 0);
    }
    QCOMPARE(m_module->axis(123), 25);
    QCOMPARE(m_module->axis(18), PositionMode | Reached | ClosedLoop);
}

void tst_SimulatedValues::scalerTarget_data()
{
    QTest::addColumn<int>("velocity"); // the error is a thousandth of it
    QTest::addColumn<int>("input");
    QTest::addColumn<int>("scale");
    QTest::newRow("small error") << 100000 << 0 << 25;
    QTest::newRow("half way") << 150000 << 0 << 113;
    QTest::newRow("large error") << -200000 << 0 << 200;
    QTest::newRow("with gain, half way") << 7500 << 1 << 25 + 175 * 60 / 100; // 8 times 20
    QTest::newRow("with gain, large") << 10000 << 1 << 200;
}

void tst_SimulatedValues::scalerTarget()
{
    QFETCH(const int, velocity);
    QFETCH(const int, input);
    m_module->write(5, 1000000);
    m_module->write(129, 1);
    m_module->write(115, input);
    m_module->turnRight(velocity);
    m_module->pass(10s);
    QCOMPARE(m_module->axis(236), 0); // off
    QCOMPARE(m_module->axis(123), 25);
    m_module->write(122, 1);
    QTEST(m_module->axis(236), "scale");
    QTEST(m_module->axis(123), "scale");
}

void tst_SimulatedValues::closedLoopIsInitialised()
{
    QCOMPARE(m_module->axis(133), 0);
    m_module->pass(1h);
    m_module->write(129, 1);
    m_module->pass(499ms);
    QCOMPARE(m_module->axis(133), 0);
    m_module->write(129, 1); // the tool's echo begins nothing anew
    m_module->pass(1ms);
    QCOMPARE(m_module->axis(133), 1);
    m_module->write(129, 0);
    QCOMPARE(m_module->axis(133), 0);
    m_module->module().chooseEncoder(simulator::EncoderFate::NotFound, 0ms);
    m_module->write(129, 1);
    m_module->pass(1h);
    QCOMPARE(m_module->axis(133), 0);
}

void tst_SimulatedValues::heldValues()
{
    QVERIFY(m_module->module().setAxisParameter(131, 77));
    m_module->turnRight(1000);
    m_module->pass(1min);
    QCOMPARE(m_module->axis(131), 77);
    QVERIFY(m_module->module().releaseAxisParameter(131));
    QCOMPARE(m_module->axis(131), 1000);
    QVERIFY(m_module->module().releaseAxisParameter(131)); // nothing left to do
    QVERIFY(m_module->module().releaseAxisParameter(4));
    QVERIFY(!m_module->module().releaseAxisParameter(3));
    QCOMPARE(m_module->axis(131), 1000);

    m_module->write(14, 7500);
    QVERIFY(m_module->module().setAxisParameter(15, 100)); // the limit of a motor that turns
    m_module->pass(1min);
    QCOMPARE(m_module->axis(131), 5000);
    QVERIFY(m_module->module().setAxisParameter(15, -100));
    m_module->pass(1min);
    QCOMPARE(m_module->axis(131), 0);

    QVERIFY(m_module->module().setAxisParameter(1, 5)); // no held value: it goes on from there
    m_module->write(14, 1);
    QVERIFY(m_module->module().releaseAxisParameter(15));
    m_module->pass(1s);
    QVERIFY(m_module->axis(1) > 5);
}

void tst_SimulatedValues::statusOfTheSupply()
{
    m_module->module().setAxisParameter(153, 80);
    QCOMPARE(m_module->axis(18), PositionMode | Reached | 0x200);
    m_module->module().setAxisParameter(153, 600);
    QCOMPARE(m_module->axis(18), PositionMode | Reached | 0x400);
    m_module->module().setAxisParameter(155, 120);
    QCOMPARE(m_module->axis(18), PositionMode | Reached | 0xc00);
    m_module->module().releaseAxisParameter(153);
    m_module->module().releaseAxisParameter(155);
    QCOMPARE(m_module->axis(18), PositionMode | Reached);
    m_module->module().setAxisParameter(18, 0xfff);
    QCOMPARE(m_module->axis(18), 0xfff);
}

void tst_SimulatedValues::atRestNothingChanges()
{
    QList<int> before;
    for (int number = 0; number < 256; ++number) {
        before.append(m_module->axis(number));
    }
    m_module->pass(24h);
    for (int number = 0; number < 256; ++number) {
        QCOMPARE(m_module->axis(number), before.at(number));
    }
}

void tst_SimulatedValues::sameSeedSameRun()
{
    const auto run = [](std::uint32_t seed) {
        ModuleUnderTest module;
        module.module().setSeed(seed);
        module.turnRight(1000);
        QList<int> values;
        for (int i = 0; i < 20; ++i) {
            module.pass(10ms);
            values << module.axis(150) << module.axis(151) << module.axis(131) << module.axis(1);
        }
        return values;
    };
    QCOMPARE(run(5), run(5));
    QVERIFY(run(5) != run(6));
}

QTEST_GUILESS_MAIN(tst_SimulatedValues)
#include "tst_SimulatedValues.moc"
