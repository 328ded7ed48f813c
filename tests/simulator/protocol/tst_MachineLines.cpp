#include "simulator/ModuleUnderTest.h"
#include "simulator/protocol/MachineLines.h"
#include "support/TestCase.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using simulator::MachineLines;

/// The lines about the machine, and what each does.
class tst_MachineLines : public TestCase
{
    Q_OBJECT

private slots:
    void switches_data();
    void switches();
    void encoder_data();
    void encoder();
    void set();
    void range();
    void wrongLines_data();
    void wrongLines();
    void understands();
    void help();
};

void tst_MachineLines::switches_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<int>("bits");
    QTest::newRow("right") << QByteArray("switch right -5") << 0x100;
    QTest::newRow("left") << QByteArray("switch left 0") << 0x080;
    QTest::newRow("home") << QByteArray("  switch\thome 100 \r") << 0x040;
    QTest::newRow("right, elsewhere") << QByteArray("switch right 5") << 0;
    QTest::newRow("left, elsewhere") << QByteArray("switch left -2147483647") << 0;
}

void tst_MachineLines::switches()
{
    QFETCH(const QByteArray, line);
    ModuleUnderTest module;
    QCOMPARE(MachineLines::execute(line.toStdString(), module.module()), std::string());
    QTEST(module.axis(18) & ~0x009, "bits");
    const std::string side = line.simplified().split(' ').at(1).toStdString();
    QCOMPARE(MachineLines::execute("switch " + side + " off", module.module()), std::string());
    QCOMPARE(module.axis(18), 0x009);
}

void tst_MachineLines::encoder_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<int>("time"); // ms
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("after");
    QTest::newRow("success") << QByteArray("encoder success") << 2000 << 1 << 2;
    QTest::newRow("success, with time") << QByteArray("encoder success 70") << 70 << 1 << 2;
    QTest::newRow("failure") << QByteArray("encoder failure") << 2000 << 1 << 3;
    QTest::newRow("failure, with time") << QByteArray("encoder failure 600000") << 600000 << 1 << 3;
    QTest::newRow("endless") << QByteArray("encoder endless") << 600000 << 1 << 1;
}

void tst_MachineLines::encoder()
{
    QFETCH(const QByteArray, line);
    QFETCH(const int, time);
    ModuleUnderTest module;
    QCOMPARE(MachineLines::execute(line.toStdString(), module.module()), std::string());
    module.write(132, 1);
    module.pass(std::chrono::milliseconds(time) - 1ms);
    QTEST(module.axis(132), "before");
    module.pass(1ms);
    QTEST(module.axis(132), "after");
}

void tst_MachineLines::set()
{
    ModuleUnderTest module;
    const auto execute = [&](const char *line) {
        return MachineLines::execute(line, module.module()).empty();
    };
    QVERIFY(execute("set 4 1234"));
    QCOMPARE(module.axis(4), 1234);
    QVERIFY(execute("set 153 -80"));
    QCOMPARE(module.axis(153), -80);
    QVERIFY(execute("release 153"));
    QCOMPARE(module.axis(153), 240);
    QVERIFY(execute("release 4")); // not held, and no harm done
    QCOMPARE(module.axis(4), 1234);
}

void tst_MachineLines::range()
{
    ModuleUnderTest module;
    QCOMPARE(MachineLines::execute("range 4 10 1000", module.module()), std::string());
    QCOMPARE(int(module.send(5, 4, 0, 1001).status), 4);
    module.module().setLimitPolicy(simulator::LimitPolicy::Clamp);
    QCOMPARE(module.write(4, 5000), 1000); // it comes back changed
    QCOMPARE(module.write(4, 0), 10);
}

void tst_MachineLines::wrongLines_data()
{
    QTest::addColumn<QByteArray>("line");
    for (const char *line : {"",
                             "motor",
                             "switch",
                             "switch up 5",
                             "switch right",
                             "switch right on",
                             "switch right 5x",
                             "switch right 2147483648",
                             "switch right off now",
                             "switch right 5 6",
                             "encoder",
                             "encoder works",
                             "encoder success soon",
                             "encoder success -1",
                             "encoder success 600001",
                             "encoder failure 1 2",
                             "encoder endless 5",
                             "set",
                             "set 4",
                             "set 256 5",
                             "set -1 5",
                             "set 3 5",
                             "set 4 fast",
                             "set 4 5 6",
                             "release",
                             "release x",
                             "release 3",
                             "release 4 5",
                             "range",
                             "range 4",
                             "range 4 5",
                             "range 4 6 5",
                             "range 4 5 6 7",
                             "range 3 5 6",
                             "range 256 5 6"}) {
        QTest::newRow(*line ? line : "empty") << QByteArray(line);
    }
}

void tst_MachineLines::wrongLines()
{
    QFETCH(const QByteArray, line);
    ModuleUnderTest module;
    QList<int> before;
    for (int number = 0; number < 256; ++number) {
        before.append(module.axis(number));
    }
    const std::string problem = MachineLines::execute(line.toStdString(), module.module());
    QVERIFY(!problem.empty());
    QVERIFY(problem.find('\n') == std::string::npos);
    for (int number = 0; number < 256; ++number) {
        QCOMPARE(module.axis(number), before.at(number));
    }
    QCOMPARE(int(module.send(5, 4, 0, 7).status), 100); // nor any range
}

void tst_MachineLines::understands()
{
    for (const char *word : {"switch", "encoder", "set", "release", "range"}) {
        QVERIFY2(MachineLines::understands(word), word);
    }
    for (const char *word : {"", "fault", "Switch", "switches", "usb"}) {
        QVERIFY2(!MachineLines::understands(word), word);
    }
}

// Each line of the help stands for one that works.
void tst_MachineLines::help()
{
    ModuleUnderTest module;
    const QString text = QString::fromStdString(MachineLines::help());
    const QStringList lines = text.split(u'\n', Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), 8);
    for (QString line : lines) {
        line = line.left(line.indexOf(u"  "_s));
        line.replace(u"SIDE"_s, u"left"_s)
            .replace(u"POSITION"_s, u"5"_s)
            .replace(u"[MS]"_s, u"100"_s);
        line.replace(u"AP"_s, u"4"_s).replace(u"VALUE"_s, u"7"_s);
        line.replace(u"MINIMUM"_s, u"5"_s).replace(u"MAXIMUM"_s, u"9"_s);
        QCOMPARE(MachineLines::execute(line.toStdString(), module.module()), std::string());
    }
}

QTEST_GUILESS_MAIN(tst_MachineLines)
#include "tst_MachineLines.moc"
