#include "serial/LineRules.h"
#include "support/TestCase.h"

#include <QTest>

#include <limits>

class tst_LineRules : public TestCase
{
    Q_OBJECT

private slots:
    void dataBitsAgainstStopBits_data();
    void dataBitsAgainstStopBits();
    void stopBitsAgainstPresentState_data();
    void stopBitsAgainstPresentState();
    void parity();
    void flowControl();
    void rateInDirection_data();
    void rateInDirection();
    void blockTimeout_data();
    void blockTimeout();
};

void tst_LineRules::dataBitsAgainstStopBits_data()
{
    QTest::addColumn<int>("dataBits");
    QTest::addColumn<int>("stopBits");
    QTest::addColumn<bool>("accepted");
    for (int dataBits = -2; dataBits <= 5; ++dataBits) {
        for (int stopBits = -1; stopBits <= 2; ++stopBits) {
            const bool defined = dataBits >= 0 && dataBits <= 3;
            const bool refused = dataBits == 0 ? stopBits == 2 : stopBits == 1;
            QTest::addRow("data %d, stop %d", dataBits, stopBits)
                << dataBits << stopBits << (defined && !refused);
        }
    }
}

void tst_LineRules::dataBitsAgainstStopBits()
{
    QFETCH(int, dataBits);
    QFETCH(int, stopBits);
    QTEST(LineRules::acceptsDataBits(dataBits, stopBits), "accepted");
}

void tst_LineRules::stopBitsAgainstPresentState_data()
{
    QTest::addColumn<int>("wanted");
    QTest::addColumn<int>("dataBits");
    QTest::addColumn<int>("stopBits");
    QTest::addColumn<bool>("accepted");
    for (int wanted = -2; wanted <= 4; ++wanted) {
        for (int dataBits = -1; dataBits <= 3; ++dataBits) {
            for (int stopBits = -1; stopBits <= 2; ++stopBits) {
                const bool defined = wanted >= 0 && wanted <= 2;
                const bool stuck =
                    (dataBits == 0 && stopBits == 2) || (dataBits >= 1 && stopBits == 1);
                QTest::addRow("stop %d with data %d, stop %d", wanted, dataBits, stopBits)
                    << wanted << dataBits << stopBits << (defined && !stuck);
            }
        }
    }
}

void tst_LineRules::stopBitsAgainstPresentState()
{
    QFETCH(int, wanted);
    QFETCH(int, dataBits);
    QFETCH(int, stopBits);
    QTEST(LineRules::acceptsStopBits(wanted, dataBits, stopBits), "accepted");
}

void tst_LineRules::parity()
{
    for (int value = 0; value <= 4; ++value) {
        QVERIFY(LineRules::acceptsParity(value));
    }
    for (const int value :
         {-1, 5, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        QVERIFY(!LineRules::acceptsParity(value));
    }
}

void tst_LineRules::flowControl()
{
    for (int value = 0; value <= 2; ++value) {
        QVERIFY(LineRules::acceptsFlowControl(value));
    }
    for (const int value :
         {-1, 3, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()}) {
        QVERIFY(!LineRules::acceptsFlowControl(value));
    }
}

void tst_LineRules::rateInDirection_data()
{
    QTest::addColumn<int>("direction");
    QTest::addColumn<int>("input");
    QTest::addColumn<int>("output");
    QTest::addColumn<int>("rate");
    QTest::newRow("input") << 1 << 300 << 9600 << 300;
    QTest::newRow("output") << 2 << 300 << 9600 << 9600;
    QTest::newRow("both, equal") << 3 << 9600 << 9600 << 9600;
    QTest::newRow("both, different") << 3 << 300 << 9600 << 0;
    QTest::newRow("no direction, equal") << 0 << 300 << 300 << 300;
    QTest::newRow("unknown direction, different") << 8 << 300 << 9600 << 0;
}

void tst_LineRules::rateInDirection()
{
    QFETCH(int, direction);
    QFETCH(int, input);
    QFETCH(int, output);
    const auto flags = AbstractSerial::BaudRateDirection::fromInt(direction);
    QTEST(LineRules::rateInDirection(flags, input, output), "rate");
}

void tst_LineRules::blockTimeout_data()
{
    QTest::addColumn<int>("rate");
    QTest::addColumn<int>("dataBits");
    QTest::addColumn<int>("parity");
    QTest::addColumn<int>("stopBits");
    QTest::addColumn<int>("gap");
    QTest::addColumn<int>("msecs");
    QTest::newRow("8N1") << 9600 << 3 << 0 << 0 << 0 << 266;
    QTest::newRow("8N1 with a gap") << 9600 << 3 << 0 << 0 << 100 << 266 + 25;
    QTest::newRow("5N1, 7 bits") << 9600 << 0 << 0 << 0 << 0 << 7 * 256000 / 9600;
    QTest::newRow("6N1, 8 bits") << 9600 << 1 << 0 << 0 << 0 << 8 * 256000 / 9600;
    QTest::newRow("7N1, 9 bits") << 9600 << 2 << 0 << 0 << 0 << 9 * 256000 / 9600;
    QTest::newRow("unknown size, 10 bits") << 9600 << -1 << 0 << 0 << 0 << 266;
    QTest::newRow("8E1, 11 bits") << 9600 << 3 << 2 << 0 << 0 << 11 * 256000 / 9600;
    QTest::newRow("unknown parity, 11 bits") << 9600 << 3 << -1 << 0 << 0 << 11 * 256000 / 9600;
    QTest::newRow("5N1.5, 7 bits") << 9600 << 0 << 0 << 1 << 0 << 7 * 256000 / 9600;
    QTest::newRow("8N2, 11 bits") << 9600 << 3 << 0 << 2 << 0 << 11 * 256000 / 9600;
    QTest::newRow("8S2, 12 bits") << 9600 << 3 << 4 << 2 << 0 << 320;
    QTest::newRow("divided one by one") << 9600 << 3 << 0 << 0 << 7 << 266 + 1;
    QTest::newRow("slowest") << 1 << 3 << 0 << 0 << 0 << 2560000;
    QTest::newRow("fast enough for none") << 4000000 << 3 << 0 << 0 << 0 << 0;
    QTest::newRow("longest gap") << std::numeric_limits<int>::max() << 3 << 0 << 0
                                 << std::numeric_limits<int>::max() << 547608329;
    QTest::newRow("negative gap") << 9600 << 3 << 0 << 0 << -100 << 266 - 25;
}

void tst_LineRules::blockTimeout()
{
    QFETCH(int, rate);
    QFETCH(int, dataBits);
    QFETCH(int, parity);
    QFETCH(int, stopBits);
    QFETCH(int, gap);
    QTEST(LineRules::blockTimeout(rate, dataBits, parity, stopBits, gap), "msecs");
}

QTEST_GUILESS_MAIN(tst_LineRules)
#include "tst_LineRules.moc"
