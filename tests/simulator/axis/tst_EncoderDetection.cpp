#include "simulator/ModuleUnderTest.h"
#include "simulator/axis/EncoderDetection.h"
#include "support/TestCase.h"

#include <QTest>

using namespace std::chrono_literals;
using simulator::EncoderDetection;
using simulator::EncoderFate;

Q_DECLARE_METATYPE(simulator::EncoderFate)

/// The detection of the encoder as a host sees it: it writes 1 to AP 132 and asks for it again.
class tst_EncoderDetection : public TestCase
{
    Q_OBJECT

private slots:
    void result_data();
    void result();
    void succeedsByDefault();
    void turnsTheMotorThereAndBack();
    void endless();
    void atOnce();
    void chosenWhileItRuns();
    void startedAgain();
    void startedWhileTurning();
    void otherStates_data();
    void otherStates();
    void motionCommandEndsIt_data();
    void motionCommandEndsIt();
    void refusedCommandDoesNotEndIt();
    void stateByItself();
};

void tst_EncoderDetection::result_data()
{
    QTest::addColumn<EncoderFate>("fate");
    QTest::addColumn<int>("state");
    QTest::addColumn<int>("offset");
    QTest::newRow("success") << EncoderFate::Found << 2 << simulator::Axis::foundOffset;
    QTest::newRow("failure") << EncoderFate::NotFound << 3 << 0;
}

void tst_EncoderDetection::result()
{
    QFETCH(const EncoderFate, fate);
    ModuleUnderTest module;
    module.module().chooseEncoder(fate, 300ms);
    QCOMPARE(module.axis(132), 0);
    QCOMPARE(module.write(132, 1), 1);
    module.pass(299ms);
    QCOMPARE(module.axis(132), 1);
    QCOMPARE(module.axis(112), 0);
    module.pass(1ms);
    QTEST(module.axis(132), "state");
    QTEST(module.axis(112), "offset");
    module.pass(1h);
    QTEST(module.axis(132), "state");
    QCOMPARE(module.axis(202), 200); // the user's own
    QCOMPARE(module.axis(210), 4000);
}

void tst_EncoderDetection::succeedsByDefault()
{
    ModuleUnderTest module;
    module.write(132, 1);
    module.pass(EncoderDetection::usualDuration - 1ms);
    QCOMPARE(module.axis(132), 1);
    module.pass(1ms);
    QCOMPARE(module.axis(132), 2);
}

void tst_EncoderDetection::turnsTheMotorThereAndBack()
{
    ModuleUnderTest module;
    module.module().setAxisParameter(1, 500);
    module.write(132, 1);
    module.pass(500ms);
    QCOMPARE(module.axis(131), 25600); // half a turn a second
    QCOMPARE(module.axis(1), 500 + 12800);
    QCOMPARE(module.axis(209), 1000);
    QCOMPARE(module.axis(18), 0x008); // on its way
    module.pass(1s);
    QCOMPARE(module.axis(131), -25600);
    QCOMPARE(module.axis(1), 500 + 12800);
    module.pass(500ms);
    QCOMPARE(module.axis(131), 0);
    QCOMPARE(module.axis(1), 500);
    QCOMPARE(module.axis(0), 500);
    QCOMPARE(module.axis(2), 0);
    module.pass(1s);
    QCOMPARE(module.axis(1), 500);
    QCOMPARE(module.axis(18), 0x009);
}

void tst_EncoderDetection::endless()
{
    ModuleUnderTest module;
    module.module().chooseEncoder(EncoderFate::Endless, 2s);
    module.write(132, 1);
    module.pass(24h + 500ms);
    QCOMPARE(module.axis(132), 1);
    QCOMPARE(module.axis(131), 25600);
    module.pass(1s);
    QCOMPARE(module.axis(131), -25600);
    QCOMPARE(module.axis(132), 1);
}

void tst_EncoderDetection::atOnce()
{
    ModuleUnderTest module;
    module.module().chooseEncoder(EncoderFate::Found, 0ms);
    QCOMPARE(module.write(132, 1), 1);
    module.pass(1ns);
    QCOMPARE(module.axis(132), 2);
    QCOMPARE(module.axis(1), 0);
}

void tst_EncoderDetection::chosenWhileItRuns()
{
    ModuleUnderTest module;
    module.module().chooseEncoder(EncoderFate::Endless, 2s);
    module.write(132, 1);
    module.pass(1min);
    module.module().chooseEncoder(EncoderFate::NotFound, 2s); // its time is over
    module.pass(1ms);
    QCOMPARE(module.axis(132), 3);
    QCOMPARE(module.axis(131), 0);
}

void tst_EncoderDetection::startedAgain()
{
    ModuleUnderTest module;
    module.write(132, 1);
    module.pass(1500ms);
    module.write(132, 1); // begins from the start
    module.pass(1500ms);
    QCOMPARE(module.axis(132), 1);
    module.pass(500ms);
    QCOMPARE(module.axis(132), 2);
    module.module().chooseEncoder(EncoderFate::NotFound, 1s);
    module.write(132, 1);
    QCOMPARE(module.axis(132), 1);
    module.pass(1s);
    QCOMPARE(module.axis(132), 3);
}

void tst_EncoderDetection::startedWhileTurning()
{
    ModuleUnderTest module;
    module.write(5, 1000000);
    module.turnRight(100000);
    module.pass(1s);
    module.write(132, 1);
    module.pass(1ms);
    QCOMPARE(module.axis(131), 25600);
    QCOMPARE(module.axis(2), 0);
    module.pass(1min);
    QCOMPARE(module.axis(132), 2);
    QCOMPARE(module.axis(131), 0); // the rotation is forgotten
}

void tst_EncoderDetection::otherStates_data()
{
    QTest::addColumn<int>("state");
    QTest::newRow("not performed") << 0;
    QTest::newRow("succeeded") << 2;
    QTest::newRow("failed") << 3;
}

void tst_EncoderDetection::otherStates()
{
    QFETCH(const int, state);
    ModuleUnderTest module;
    module.moveTo(100000);
    module.pass(100ms);
    QCOMPARE(module.write(132, state), state); // starts and stops nothing
    QVERIFY(module.axis(131) != 0);
    module.write(132, 1);
    module.pass(100ms);
    QCOMPARE(module.write(132, state), state);
    QCOMPARE(module.axis(131), 0);
    module.pass(1h);
    QCOMPARE(module.axis(132), state);
    QCOMPARE(module.axis(112), 0); // nothing was detected
}

void tst_EncoderDetection::motionCommandEndsIt_data()
{
    QTest::addColumn<int>("command");
    QTest::addColumn<int>("type");
    QTest::newRow("ROR") << 1 << 0;
    QTest::newRow("ROL") << 2 << 0;
    QTest::newRow("MST") << 3 << 0;
    QTest::newRow("MVP") << 4 << 0;
    QTest::newRow("target position") << 5 << 0;
    QTest::newRow("target velocity") << 5 << 2;
    QTest::newRow("target current") << 5 << 14;
}

void tst_EncoderDetection::motionCommandEndsIt()
{
    QFETCH(const int, command);
    QFETCH(const int, type);
    ModuleUnderTest module;
    module.write(132, 1);
    module.pass(100ms);
    module.send(command, type, 0, 0);
    QCOMPARE(module.axis(132), 3);
    module.pass(1min);
    QCOMPARE(module.axis(132), 3);
    QCOMPARE(module.axis(131), 0);
}

void tst_EncoderDetection::refusedCommandDoesNotEndIt()
{
    ModuleUnderTest module;
    module.write(132, 1);
    module.pass(100ms);
    QCOMPARE(int(module.send(1, 0, 0, std::numeric_limits<int>::max()).status), 4);
    QCOMPARE(int(module.send(1, 0, 1, 100).status), 4);
    QCOMPARE(module.axis(132), 1);
    QCOMPARE(module.axis(131), 25600);
}

void tst_EncoderDetection::stateByItself()
{
    const simulator::TimePoint start{1h};
    EncoderDetection detection;
    QVERIFY(!detection.isRunning());
    QVERIFY(!detection.endsAt());
    detection.start(start);
    QVERIFY(detection.isRunning());
    QVERIFY(detection.endsAt() == start + 2s);
    detection.choose(EncoderFate::Endless, 2s);
    QVERIFY(!detection.endsAt());
    detection.choose(EncoderFate::NotFound, 5s);
    QVERIFY(detection.endsAt() == start + 5s);
    detection.finish();
    QCOMPARE(detection.state(), 3);
    QVERIFY(!detection.endsAt());
    detection.reset(0);
    QCOMPARE(detection.state(), 0);
}

QTEST_GUILESS_MAIN(tst_EncoderDetection)
#include "tst_EncoderDetection.moc"
