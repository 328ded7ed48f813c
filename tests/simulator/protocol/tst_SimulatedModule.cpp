#include "simulator/ModuleUnderTest.h"
#include "simulator/axis/AxisParameterTable.h"
#include "support/TestCase.h"

#include <QTest>

using namespace std::chrono_literals;
using simulator::LimitPolicy;
using simulator::Reply;
using simulator::Request;

namespace {

constexpr int highest = std::numeric_limits<int>::max();
constexpr int lowest = std::numeric_limits<int>::min();

Reply send(ModuleUnderTest &module, int command, int type, int motorBank, int value)
{
    return module.send(command, type, motorBank, value);
}

int axis(ModuleUnderTest &module, int number)
{
    return module.axis(number);
}

} // namespace

class tst_SimulatedModule : public TestCase
{
    Q_OBJECT

private slots:
    void everyParameterHasItsStartValue();
    void everyRangeIsKept();
    void refusedWriteAnswersTheOldValue();
    void clampedWriteAnswersTheNearestValue();
    void narrowedRange();
    void readOnlyParameters();
    void currentsInMilliamperes();
    void rotation();
    void positioning();
    void clearedPosition();
    void statusFlags();
    void globalParameters();
    void ports();
    void version();
    void shortVersionText();
    void refusals_data();
    void refusals();
    void replyFields();
    void innerAccess();
};

void tst_SimulatedModule::everyParameterHasItsStartValue()
{
    ModuleUnderTest module;
    int lastNumber = -1;
    for (const simulator::AxisParameterEntry &entry : simulator::axisParameterTable()) {
        QVERIFY(entry.number > lastNumber);
        lastNumber = entry.number;
        const Reply reply = send(module, 6, entry.number, 0, 0);
        QCOMPARE(int(reply.status), 100);
        if (entry.access == simulator::Access::ReadWrite) {
            QCOMPARE(reply.value, entry.start);
        }
        QVERIFY(reply.value >= entry.minimum && reply.value <= entry.maximum);
    }
}

void tst_SimulatedModule::everyRangeIsKept()
{
    ModuleUnderTest module;
    for (const simulator::AxisParameterEntry &entry : simulator::axisParameterTable()) {
        if (entry.access != simulator::Access::ReadWrite) {
            continue;
        }
        for (const int value : {entry.minimum, entry.maximum}) {
            const Reply reply = send(module, 5, entry.number, 0, value);
            QCOMPARE(int(reply.status), 100);
            QCOMPARE(reply.value, value);
            QCOMPARE(axis(module, entry.number), value);
        }
        if (entry.maximum < highest) {
            QCOMPARE(int(send(module, 5, entry.number, 0, entry.maximum + 1).status), 4);
        }
        QCOMPARE(int(send(module, 5, entry.number, 0, entry.minimum - 1).status), 4);
        QCOMPARE(axis(module, entry.number), entry.maximum);
    }
}

void tst_SimulatedModule::refusedWriteAnswersTheOldValue()
{
    ModuleUnderTest module;
    send(module, 5, 6, 0, 77);
    const Reply reply = send(module, 5, 6, 0, 300);
    QCOMPARE(int(reply.status), 4);
    QCOMPARE(reply.value, 77);
}

void tst_SimulatedModule::clampedWriteAnswersTheNearestValue()
{
    ModuleUnderTest module;
    module.module().setLimitPolicy(LimitPolicy::Clamp);
    const Reply high = send(module, 5, 6, 0, 300);
    QCOMPARE(int(high.status), 100);
    QCOMPARE(high.value, 255);
    QCOMPARE(send(module, 5, 165, 0, -100).value, -3);
    QCOMPARE(axis(module, 15), simulator::fullScaleCurrent); // follows the value that was taken
}

void tst_SimulatedModule::narrowedRange()
{
    ModuleUnderTest module;
    module.module().setLimitPolicy(LimitPolicy::Clamp);
    QVERIFY(module.module().setAxisParameterRange(4, 10, 1000));
    QCOMPARE(send(module, 5, 4, 0, 5000).value, 1000);
    QCOMPARE(send(module, 5, 4, 0, 0).value, 10);
    QVERIFY(!module.module().setAxisParameterRange(4, 1, 0));
    QVERIFY(!module.module().setAxisParameterRange(3, 0, 1));
}

void tst_SimulatedModule::readOnlyParameters()
{
    ModuleUnderTest module;
    for (const int number : {15, 18, 123, 131, 150, 153, 154, 155, 156, 209, 237}) {
        const int before = axis(module, number);
        const Reply reply = send(module, 5, number, 0, before + 1);
        QCOMPARE(int(reply.status), 6);
        QCOMPARE(reply.value, before);
    }
}

void tst_SimulatedModule::currentsInMilliamperes()
{
    ModuleUnderTest module;
    send(module, 5, 6, 0, 255);
    QCOMPARE(axis(module, 15), 7500);
    send(module, 5, 6, 0, 51);
    QCOMPARE(axis(module, 15), 1500);
    QCOMPARE(axis(module, 156), 8 * 7500 / 255); // its own scale value hasn't changed
    send(module, 5, 7, 0, 102);
    QCOMPARE(axis(module, 156), 3000);
    QCOMPARE(axis(module, 15), 1500);
}

void tst_SimulatedModule::rotation()
{
    ModuleUnderTest module;
    QCOMPARE(int(send(module, 1, 0, 0, 1000).status), 100); // ROR
    QCOMPARE(axis(module, 2), 1000);
    QCOMPARE(axis(module, 131), 0); // it needs its time
    module.pass(1s);
    QCOMPARE(axis(module, 131), 1000);
    const Reply left = send(module, 2, 0, 0, 500); // ROL
    QCOMPARE(int(left.status), 100);
    QCOMPARE(left.value, 500);
    QCOMPARE(axis(module, 2), -500);
    module.pass(1s);
    QCOMPARE(axis(module, 131), -500);
    QCOMPARE(int(send(module, 3, 0, 0, 0).status), 100); // MST
    QCOMPARE(axis(module, 2), 0);
    module.pass(1s);
    QCOMPARE(axis(module, 131), 0);
    send(module, 5, 2, 0, 42); // the target velocity as a parameter turns the motor, too
    module.pass(1s);
    QCOMPARE(axis(module, 131), 42);
}

void tst_SimulatedModule::positioning()
{
    ModuleUnderTest module;
    const Reply absolute = send(module, 4, 0, 0, 4000);
    QCOMPARE(int(absolute.status), 100);
    QCOMPARE(absolute.value, 4000);
    QCOMPARE(axis(module, 0), 4000);
    module.pass(1min);
    QCOMPARE(axis(module, 1), 4000);
    send(module, 4, 1, 0, -1);
    QCOMPARE(axis(module, 0), 3999);
    module.pass(1min);
    QCOMPARE(axis(module, 1), 3999);

    send(module, 5, 1, 0, highest);
    QCOMPARE(int(send(module, 4, 1, 0, 1).status), 4);
    QCOMPARE(axis(module, 0), highest);

    send(module, 1, 0, 0, 100);
    module.pass(1s);
    send(module, 4, 0, 0, highest); // a move ends a rotation
    QCOMPARE(axis(module, 2), 0);
    module.pass(1min);
    QCOMPARE(axis(module, 131), 0);
    QCOMPARE(axis(module, 1), highest);
}

void tst_SimulatedModule::clearedPosition()
{
    ModuleUnderTest module;
    send(module, 4, 0, 0, 4000);
    module.pass(1min);
    QCOMPARE(send(module, 5, 1, 0, 0).value, 0);
    QCOMPARE(axis(module, 1), 0);
    QCOMPARE(axis(module, 0), 0);
}

void tst_SimulatedModule::statusFlags()
{
    ModuleUnderTest module;
    QCOMPARE(axis(module, 18), 0x09); // position mode, reached
    send(module, 1, 0, 0, 1000);
    QCOMPARE(axis(module, 18), 0x10); // velocity mode
    module.pass(1s);
    QCOMPARE(axis(module, 18), 0x12); // reached
    send(module, 5, 129, 0, 1);
    QCOMPARE(axis(module, 18), 0x16); // closed loop beside it
    send(module, 5, 14, 0, 300);
    QCOMPARE(axis(module, 18), 0x24); // torque mode
    send(module, 4, 0, 0, 100000);
    QCOMPARE(axis(module, 18), 0x0c);
    module.pass(1min);
    QCOMPARE(axis(module, 18), 0x0d);
    send(module, 5, 129, 0, 0);
    QCOMPARE(axis(module, 18), 0x09);
}

void tst_SimulatedModule::globalParameters()
{
    ModuleUnderTest module;
    QCOMPARE(int(send(module, 10, 255, 3, 0).status), 100);
    const Reply written = send(module, 9, 5, 2, -7);
    QCOMPARE(int(written.status), 100);
    QCOMPARE(written.value, -7);
    QCOMPARE(send(module, 10, 5, 2, 0).value, -7);
    QCOMPARE(send(module, 10, 5, 1, 0).value, 0); // another bank, another value
    QCOMPARE(int(send(module, 10, 5, 4, 0).status), 3);
    QCOMPARE(int(send(module, 9, 5, 4, 0).status), 3);
}

void tst_SimulatedModule::ports()
{
    ModuleUnderTest module;
    const Reply written = send(module, 14, 1, 2, 1);
    QCOMPARE(int(written.status), 100);
    QCOMPARE(send(module, 15, 1, 2, 0).value, 1);
    QCOMPARE(int(send(module, 14, 1, 2, 2).status), 4);
    QCOMPARE(int(send(module, 14, 8, 2, 1).status), 3);
    QCOMPARE(int(send(module, 14, 1, 0, 1).status), 6); // an input
    QVERIFY(module.module().setIoValue(1, 3, 2047));
    QCOMPARE(send(module, 15, 3, 1, 0).value, 2047);
    QCOMPARE(int(send(module, 15, 8, 0, 0).status), 3);
    QCOMPARE(int(send(module, 15, 0, 3, 0).status), 3);
}

void tst_SimulatedModule::version()
{
    ModuleUnderTest module({.address = 1, .majorVersion = 2, .minorVersion = 17});
    const Reply text = send(module, 136, 0, 0, 0);
    QVERIFY(text.text.has_value());
    QCOMPARE(QByteArray(text.text->data(), 8), QByteArray("7710V105"));
    const Reply number = send(module, 136, 1, 0, 0);
    QVERIFY(!number.text.has_value());
    QCOMPARE(int(number.status), 100);
    QCOMPARE((number.value >> 8) & 0xff, 2);
    QCOMPARE(number.value & 0xff, 17);
    const Reply other = send(module, 136, 2, 0, 0);
    QCOMPARE(int(other.status), 3);
    QVERIFY(!other.text.has_value());
}

void tst_SimulatedModule::shortVersionText()
{
    ModuleUnderTest module({.versionText = "B1"});
    QCOMPARE(QByteArray(send(module, 136, 0, 0, 0).text->data(), 8),
             QByteArray("B1\0\0\0\0\0\0", 8));
}

void tst_SimulatedModule::refusals_data()
{
    QTest::addColumn<int>("command");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("motorBank");
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("status");
    for (const int command : {0, 7, 8, 11, 12, 13, 16, 28, 64, 71, 135, 137, 255}) {
        QTest::addRow("command %d", command) << command << 0 << 0 << 0 << 2;
    }
    QTest::newRow("ROR of a type") << 1 << 1 << 0 << 5 << 3;
    QTest::newRow("ROL of the lowest number") << 2 << 0 << 0 << lowest << 4;
    QTest::newRow("ROR too fast") << 1 << 0 << 0 << highest << 4;
    QTest::newRow("MVP of a type") << 4 << 3 << 0 << 5 << 3;
    QTest::newRow("SAP of nothing") << 5 << 3 << 0 << 5 << 3;
    QTest::newRow("GAP of nothing") << 6 << 255 << 0 << 0 << 3;
    for (const int command : {1, 2, 3, 4, 5, 6}) {
        QTest::addRow("command %d of motor 1", command) << command << 0 << 1 << 1 << 4;
    }
}

void tst_SimulatedModule::refusals()
{
    QFETCH(int, command);
    QFETCH(int, type);
    QFETCH(int, motorBank);
    QFETCH(int, value);
    QFETCH(int, status);
    ModuleUnderTest module;
    const Reply reply = send(module, command, type, motorBank, value);
    QCOMPARE(int(reply.status), status);
    QCOMPARE(int(reply.command), command);
    QVERIFY(!reply.text.has_value());
    for (const int number : {0, 1, 2, 131}) {
        QCOMPARE(axis(module, number), 0); // nothing moved
    }
}

void tst_SimulatedModule::replyFields()
{
    ModuleUnderTest module({.address = 200, .replyAddress = 9});
    const Reply reply = send(module, 6, 153, 0, 12345);
    QCOMPARE(int(reply.replyAddress), 9);
    QCOMPARE(int(reply.moduleAddress), 200);
    QCOMPARE(int(reply.command), 6);
    QCOMPARE(reply.value, 240);

    Request damaged;
    damaged.command = 5;
    damaged.type = 6;
    damaged.value = 1;
    damaged.intact = false;
    QCOMPARE(int(module.module().execute(damaged).status), 1);
    QCOMPARE(axis(module, 6), 128);
}

void tst_SimulatedModule::innerAccess()
{
    ModuleUnderTest module;
    QVERIFY(module.module().setAxisParameter(155, 300));
    QCOMPARE(axis(module, 155), 300);
    QVERIFY(module.module().setAxisParameter(6, 300)); // no range from inside
    QCOMPARE(module.module().axisParameter(6), std::optional(300));
    QVERIFY(module.module().setAxisParameter(1, 77)); // moved by something else than a target
    QCOMPARE(axis(module, 0), 0);
    QVERIFY(!module.module().setAxisParameter(3, 1));
    QVERIFY(!module.module().axisParameter(3).has_value());

    QVERIFY(module.module().setGlobalParameter(0, 66, 5));
    QCOMPARE(module.module().globalParameter(0, 66), std::optional(5));
    QVERIFY(!module.module().setGlobalParameter(9, 0, 5));
    QVERIFY(!module.module().globalParameter(9, 0).has_value());
    QCOMPARE(module.module().ioValue(2, 0), std::optional(0));
    QVERIFY(!module.module().setIoValue(2, 8, 1));
    QVERIFY(!module.module().ioValue(2, 8).has_value());
}

QTEST_GUILESS_MAIN(tst_SimulatedModule)
#include "tst_SimulatedModule.moc"
