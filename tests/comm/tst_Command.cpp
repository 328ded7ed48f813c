#include "comm/Command.h"
#include "support/TestCase.h"

#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

/// The record of an exchange without regard to the transport.
class tst_Command : public TestCase
{
    Q_OBJECT

private slots:
    void isInvalidByDefault();
    void isValidWhenFilled();
    void fieldsCanBeChanged();
    void text_data();
    void text();
};

void tst_Command::isInvalidByDefault()
{
    const Command command;
    QVERIFY(!command.valid());
    QCOMPARE(command.replyAddress(), char(0));
    QCOMPARE(command.toString(), u"Command(0, 0, 0, 0, 0, 0, invalid)"_s);
}

void tst_Command::isValidWhenFilled()
{
    const Command command(1, 5, 4, 2, -1000);
    QVERIFY(command.valid());
    QCOMPARE(command.address(), char(1));
    QCOMPARE(command.command(), char(5));
    QCOMPARE(command.type(), char(4));
    QCOMPARE(command.motorBank(), char(2));
    QCOMPARE(command.value(), -1000);
    QCOMPARE(command.status(), char(0));
}

void tst_Command::fieldsCanBeChanged()
{
    Command command;
    command.setValid(true);
    command.setAddress(char(200));
    command.setReplyAddress(2);
    command.setCommand(char(136));
    command.setType(char(230));
    command.setStatus(100);
    command.setMotorBank(3);
    command.setValue(-7);
    command.setChecksum(char(0x99));
    QCOMPARE(command.replyAddress(), char(2));
    QCOMPARE(command.checksum(), char(0x99));
    QCOMPARE(command.toString(), u"Command(200, 136, 230, 100, 3, -7, valid)"_s);
}

void tst_Command::text_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<bool>("valid");
    QTest::addColumn<QString>("text");

    QTest::newRow("valid") << 42 << true << u"Command(255, 6, 129, 0, 1, 42, valid)"_s;
    QTest::newRow("invalid") << 42 << false << u"Command(255, 6, 129, 0, 1, 42, invalid)"_s;
    QTest::newRow("smallest value") << std::numeric_limits<int>::min() << true
                                    << u"Command(255, 6, 129, 0, 1, -2147483648, valid)"_s;
}

void tst_Command::text()
{
    QFETCH(int, value);
    QFETCH(bool, valid);
    Command command(char(255), 6, char(129), 1, value);
    command.setValid(valid);
    QTEST(command.toString(), "text");
}

QTEST_GUILESS_MAIN(tst_Command)
#include "tst_Command.moc"
