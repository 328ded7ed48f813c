#include "comm/TraceCommand.h"
#include "support/TestCase.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// One polled value.
class tst_TraceCommand : public TestCase
{
    Q_OBJECT

private slots:
    void constructors();
    void useCount();
    void text_data();
    void text();
};

void tst_TraceCommand::constructors()
{
    const TraceCommand named(1, 2, 6, 3, u"Velocity"_s);
    QCOMPARE(named.address(), char(1));
    QCOMPARE(named.motorBank(), char(2));
    QCOMPARE(named.command(), char(6));
    QCOMPARE(named.type(), char(3));
    QCOMPARE(named.count(), 1);
    QCOMPARE(named.name(), u"Velocity"_s);

    // The order of a request: address, command, type, bank.
    const TraceCommand unnamed(1, 6, 3, 2);
    QCOMPARE(unnamed.address(), char(1));
    QCOMPARE(unnamed.motorBank(), char(2));
    QCOMPARE(unnamed.command(), char(6));
    QCOMPARE(unnamed.type(), char(3));
    QCOMPARE(unnamed.count(), 1);
    QCOMPARE(unnamed.name(), QString());
}

void tst_TraceCommand::useCount()
{
    TraceCommand command(1, 6, 3, 2);
    command.incrementCount();
    QCOMPARE(command.count(), 2);
    command.decrementCount();
    command.decrementCount();
    QCOMPARE(command.count(), 0);
    command.decrementCount();
    QCOMPARE(command.count(), 0);
    command.incrementCount();
    QCOMPARE(command.count(), 1);
}

void tst_TraceCommand::text_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("text");

    QTest::newRow("named") << u"Velocity"_s << u"TraceCommand(200, 1, 6, 206, Velocity [1])"_s;
    QTest::newRow("unnamed") << QString() << u"TraceCommand(200, 1, 6, 206,  [1])"_s;
    // A name isn't a place for a number, whatever it looks like.
    QTest::newRow("with %1") << u"Load %1"_s << u"TraceCommand(200, 1, 6, 206, Load %1 [1])"_s;
}

void tst_TraceCommand::text()
{
    QFETCH(QString, name);
    QTEST(TraceCommand(char(200), 1, 6, char(206), name).toString(), "text");
}

QTEST_GUILESS_MAIN(tst_TraceCommand)
#include "tst_TraceCommand.moc"
