#include "simulator/can/CanFaultPlan.h"
#include "support/TestCase.h"

#include <QTest>

using namespace simulator;

class tst_CanFaultPlan : public TestCase
{
    Q_OBJECT

private slots:
    void nothingIsOnAtFirst();
    void linesTurnFaultsOn_data();
    void linesTurnFaultsOn();
    void faultEndsAfterItsUses();
    void linesTurnFaultsOff();
    void wrongLinesChangeNothing_data();
    void wrongLinesChangeNothing();
    void helpNamesEachFault();
};

void tst_CanFaultPlan::nothingIsOnAtFirst()
{
    CanFaultPlan plan;
    QVERIFY(!plan.take(CanFault::NoChannel));
    QVERIFY(!plan.take(CanFault::Foreign));
}

void tst_CanFaultPlan::linesTurnFaultsOn_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<int>("fault");
    QTest::addColumn<int>("argument");

    const auto add = [](const char *line, CanFault fault, int argument) {
        QTest::newRow(line) << QByteArray(line) << static_cast<int>(fault) << argument;
    };
    add("canfault no-channel", CanFault::NoChannel, 0);
    add("canfault speed-refused", CanFault::SpeedRefused, 0);
    add("canfault on-refused", CanFault::OnRefused, 0);
    add("canfault off-refused", CanFault::OffRefused, 0);
    add("canfault close-refused", CanFault::CloseRefused, 0);
    add("canfault foreign 2047", CanFault::Foreign, 2047);
    add("canfault foreign 0", CanFault::Foreign, 0);
    add("  canfault\tmodule-id  255 ", CanFault::ModuleId, 255);
}

void tst_CanFaultPlan::linesTurnFaultsOn()
{
    QFETCH(const QByteArray, line);
    QFETCH(const int, fault);
    QFETCH(const int, argument);

    CanFaultPlan plan;
    QCOMPARE(plan.execute(line.toStdString()), std::string());
    for (int use = 0; use < 3; ++use) {
        QCOMPARE(plan.take(static_cast<CanFault>(fault)), std::optional(argument));
    }
    // And no other.
    for (int other = 0; other <= static_cast<int>(CanFault::ModuleId); ++other) {
        QCOMPARE(plan.take(static_cast<CanFault>(other)).has_value(), other == fault);
    }
}

void tst_CanFaultPlan::faultEndsAfterItsUses()
{
    CanFaultPlan plan;
    QCOMPARE(plan.execute("canfault foreign 7 2"), std::string());
    QCOMPARE(plan.execute("canfault on-refused 1"), std::string());
    QCOMPARE(plan.take(CanFault::Foreign), std::optional(7));
    QCOMPARE(plan.take(CanFault::Foreign), std::optional(7));
    QVERIFY(!plan.take(CanFault::Foreign));
    QVERIFY(plan.take(CanFault::OnRefused));
    QVERIFY(!plan.take(CanFault::OnRefused));
}

void tst_CanFaultPlan::linesTurnFaultsOff()
{
    CanFaultPlan plan;
    QCOMPARE(plan.execute("canfault no-channel"), std::string());
    QCOMPARE(plan.execute("canfault on-refused"), std::string());
    QCOMPARE(plan.execute("canfault module-id 9"), std::string());

    QCOMPARE(plan.execute("canfault off no-channel"), std::string());
    QVERIFY(!plan.take(CanFault::NoChannel));
    QVERIFY(plan.take(CanFault::OnRefused));

    QCOMPARE(plan.execute("canfault off"), std::string());
    QVERIFY(!plan.take(CanFault::OnRefused));
    QVERIFY(!plan.take(CanFault::ModuleId));
}

void tst_CanFaultPlan::wrongLinesChangeNothing_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QByteArray>("complaint");

    const auto add = [](const char *line, const char *complaint) {
        QTest::newRow(line) << QByteArray(line) << QByteArray(complaint);
    };
    add("", "a CAN fault line starts with the word canfault");
    add("fault no-channel", "a CAN fault line starts with the word canfault");
    add("canfault", "unknown CAN fault: ");
    add("canfault smoke", "unknown CAN fault: smoke");
    add("canfault foreign", "canfault foreign needs ID, 0 to 2047");
    add("canfault foreign 2048", "canfault foreign needs ID, 0 to 2047");
    add("canfault module-id -1", "canfault module-id needs ID, 0 to 255");
    add("canfault no-channel 0", "not a number of uses, 1 to 1000000: 0");
    add("canfault no-channel x", "not a number of uses, 1 to 1000000: x");
    add("canfault foreign 7 2 3", "too many words: 3");
    add("canfault off smoke", "unknown CAN fault: smoke");
    add("canfault off no-channel 1", "too many words: 1");
}

void tst_CanFaultPlan::wrongLinesChangeNothing()
{
    QFETCH(const QByteArray, line);
    QFETCH(const QByteArray, complaint);

    CanFaultPlan plan;
    QCOMPARE(plan.execute("canfault close-refused"), std::string());
    QCOMPARE(QByteArray::fromStdString(plan.execute(line.toStdString())), complaint);
    for (int fault = 0; fault <= static_cast<int>(CanFault::ModuleId); ++fault) {
        const bool isOn = plan.take(static_cast<CanFault>(fault)).has_value();
        QCOMPARE(isOn, fault == static_cast<int>(CanFault::CloseRefused));
    }
}

void tst_CanFaultPlan::helpNamesEachFault()
{
    const QByteArrayList lines = QByteArray::fromStdString(CanFaultPlan::help()).split('\n');
    QCOMPARE(lines.size(), 9); // seven faults, the line for off, and the end
    QCOMPARE(lines.at(0), QByteArray("canfault no-channel [N]    the channel can't be opened"));
    QCOMPARE(lines.at(6), QByteArray("canfault module-id ID [N]  the reply names module ID"));
    QCOMPARE(lines.at(7), QByteArray("canfault off [KIND]        that fault off, or all"));
}

QTEST_GUILESS_MAIN(tst_CanFaultPlan)
#include "tst_CanFaultPlan.moc"
