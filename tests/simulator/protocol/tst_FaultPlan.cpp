#include "simulator/protocol/FaultPlan.h"
#include "support/TestCase.h"

#include <QTest>

using simulator::ExchangeFaults;
using simulator::FaultPlan;
using namespace std::chrono_literals;

class tst_FaultPlan : public TestCase
{
    Q_OBJECT

private slots:
    void nothingByDefault();
    void everyKind();
    void counts();
    void untilTurnedOff();
    void kindsTogether();
    void replaced();
    void wrongLines_data();
    void wrongLines();
    void helpNamesEveryKind();
};

void tst_FaultPlan::nothingByDefault()
{
    FaultPlan plan;
    const ExchangeFaults faults = plan.next();
    QVERIFY(!faults.silence);
    QCOMPARE(faults.delay, 0ms);
    QCOMPARE(faults.length, std::size_t(9));
    QCOMPARE(faults.copies, 1);
    QVERIFY(!faults.wrongChecksum);
    QCOMPARE(faults.garbage, std::size_t(0));
    QVERIFY(!faults.status.has_value());
}

void tst_FaultPlan::everyKind()
{
    const auto first = [](const char *line) {
        FaultPlan plan;
        const std::string problem = plan.execute(line);
        return problem.empty() ? plan.next() : ExchangeFaults{.copies = -1};
    };
    QVERIFY(first("fault silence").silence);
    QCOMPARE(first("fault delay 200").delay, 200ms);
    QCOMPARE(first("fault late 30").delay, simulator::toolTimeout + 30ms);
    QCOMPARE(first("fault short").length, std::size_t(8));
    QCOMPARE(first("fault long").length, std::size_t(10));
    QCOMPARE(first("fault doubled").copies, 2);
    QVERIFY(first("fault checksum").wrongChecksum);
    QCOMPARE(first("fault garbage 7").garbage, std::size_t(7));
    QCOMPARE(first("  fault\tstatus 4  1\r").status, std::optional<std::uint8_t>(4));
}

void tst_FaultPlan::counts()
{
    FaultPlan plan;
    QVERIFY(plan.execute("fault silence 2").empty());
    QVERIFY(plan.next().silence);
    QVERIFY(plan.next().silence);
    QVERIFY(!plan.next().silence);
}

void tst_FaultPlan::untilTurnedOff()
{
    FaultPlan plan;
    QVERIFY(plan.execute("fault silence").empty());
    QVERIFY(plan.execute("fault doubled").empty());
    for (int i = 0; i < 100; ++i) {
        QVERIFY(plan.next().silence);
    }
    QVERIFY(plan.execute("fault off silence").empty());
    QVERIFY(!plan.next().silence);
    QCOMPARE(plan.next().copies, 2);
    QVERIFY(plan.execute("fault off").empty());
    QCOMPARE(plan.next().copies, 1);
}

void tst_FaultPlan::kindsTogether()
{
    FaultPlan plan;
    QVERIFY(plan.execute("fault delay 10 2").empty());
    QVERIFY(plan.execute("fault status 3 1").empty());
    const ExchangeFaults both = plan.next();
    QCOMPARE(both.delay, 10ms);
    QCOMPARE(both.status, std::optional<std::uint8_t>(3));
    const ExchangeFaults one = plan.next();
    QCOMPARE(one.delay, 10ms);
    QVERIFY(!one.status.has_value());
    QCOMPARE(plan.next().delay, 0ms);
}

void tst_FaultPlan::replaced()
{
    FaultPlan plan;
    QVERIFY(plan.execute("fault delay 10").empty());
    QVERIFY(plan.execute("fault delay 20 1").empty());
    QCOMPARE(plan.next().delay, 20ms);
    QCOMPARE(plan.next().delay, 0ms);
}

void tst_FaultPlan::wrongLines_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QByteArray>("complaint");
    const auto add = [](const char *line, const char *complaint) {
        QTest::newRow(line) << QByteArray(line) << QByteArray(complaint);
    };
    add("", "a fault line starts with the word fault");
    add("silence", "a fault line starts with the word fault");
    add("fault", "unknown fault: ");
    add("fault noise", "unknown fault: noise");
    add("fault delay", "fault delay needs MS, 0 to 60000");
    add("fault delay x", "fault delay needs MS, 0 to 60000");
    add("fault delay -1", "fault delay needs MS, 0 to 60000");
    add("fault late 60001", "fault late needs MS, 0 to 60000");
    add("fault garbage 0", "fault garbage needs BYTES, 1 to 1000");
    add("fault garbage 1001", "fault garbage needs BYTES, 1 to 1000");
    add("fault status 256", "fault status needs CODE, 0 to 255");
    add("fault delay 5 0", "not a number of exchanges, 1 to 1000000: 0");
    add("fault delay 5 x", "not a number of exchanges, 1 to 1000000: x");
    add("fault silence 1000001", "not a number of exchanges, 1 to 1000000: 1000001");
    add("fault silence 99999999999", "not a number of exchanges, 1 to 1000000: 99999999999");
    add("fault silence 1.5", "not a number of exchanges, 1 to 1000000: 1.5");
    add("fault silence 1 2", "too many words: 2");
    add("fault off noise", "unknown fault: noise");
    add("fault off silence silence", "too many words: silence");
}

void tst_FaultPlan::wrongLines()
{
    QFETCH(const QByteArray, line);
    QFETCH(const QByteArray, complaint);
    FaultPlan plan;
    QVERIFY(plan.execute("fault doubled").empty());
    QCOMPARE(QByteArray::fromStdString(plan.execute(line.toStdString())), complaint);
    const ExchangeFaults faults = plan.next();
    QCOMPARE(faults.copies, 2); // nothing changed
    QVERIFY(!faults.silence);
    QCOMPARE(faults.delay, 0ms);
}

void tst_FaultPlan::helpNamesEveryKind()
{
    const QByteArray help = QByteArray::fromStdString(FaultPlan::help());
    for (const char *word :
         {"silence [N]", "delay MS [N]", "late MS [N]", "short [N]", "long [N]", "doubled [N]",
          "checksum [N]", "garbage BYTES [N]", "status CODE [N]", "off [KIND]"}) {
        QVERIFY2(help.contains("fault " + QByteArray(word) + ' '), word);
    }
}

QTEST_GUILESS_MAIN(tst_FaultPlan)
#include "tst_FaultPlan.moc"
