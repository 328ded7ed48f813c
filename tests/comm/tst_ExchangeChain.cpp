#include "comm/ExchangeChain.h"
#include "comm/QSerialCommandHandler.h"
#include "support/SimulatedPort.h"
#include "support/TestCase.h"

#include <QTest>

class tst_ExchangeChain : public TestCase
{
    Q_OBJECT

private slots:
    void chainsAreCountedAnew();
    void lineOneReplyBehindEndsTheChain();
};

void tst_ExchangeChain::chainsAreCountedAnew()
{
    for (int i = 0; i < 2 * ExchangeChain::LongestChain; ++i) {
        const ExchangeChain alone;
        QVERIFY(!alone.isTooLong());
    }
    const ExchangeChain first;
    for (int link = 2; link <= ExchangeChain::LongestChain; ++link) {
        const ExchangeChain next;
        QVERIFY(!next.isTooLong());
    }
    const ExchangeChain last;
    QVERIFY(last.isTooLong());
}

/// A control that writes what it is told, if that isn't what it shows.
void tst_ExchangeChain::lineOneReplyBehindEndsTheChain()
{
    SimulatedPort port;
    QSerialCommandHandler handler;
    QVERIFY(handler.openDevice(port.portName()));
    int shown = 1;
    connect(&handler, &QSerialCommandHandler::requestedValue, this,
            [&](char address, char motorBank, char type, int value) {
                if (value != shown) {
                    shown = value;
                    handler.setAxisParameter(address, motorBank, type, value);
                }
            });
    handler.setAxisParameter(1, 0, 4, shown);
    QVERIFY(port.fault(QStringLiteral("doubled 1")));
    handler.setAxisParameter(1, 0, 4, shown);
    port.clearWireLog();

    shown = 2;
    handler.setAxisParameter(1, 0, 4, shown); // answered with 1, that with 2, that with 1 ...
    QCOMPARE(port.requests().size(), ExchangeChain::LongestChain);

    // The next one is a chain of its own.
    port.clearWireLog();
    handler.getAxisParameter(1, 0, 5);
    QVERIFY(!port.requests().isEmpty());
}

QTEST_GUILESS_MAIN(tst_ExchangeChain)
#include "tst_ExchangeChain.moc"
