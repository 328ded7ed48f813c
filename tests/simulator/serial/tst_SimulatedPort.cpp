#include "simulator/RawPort.h"
#include "support/SimulatedPort.h"
#include "support/TestCase.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QByteArray question = QByteArray::fromHex("0706990000000000a6");
const QByteArray answer = QByteArray::fromHex("02076406000000f063");

} // namespace

class tst_SimulatedPort : public TestCase
{
    Q_OBJECT

private slots:
    void exchange();
    void faults();
    void parameters();
    void baudRate();
    void pulledOut();
};

void tst_SimulatedPort::exchange()
{
    SimulatedPort simulated({.address = 7});
    RawPort port(simulated.portName());
    QCOMPARE(port.exchange(question), answer);
    QCOMPARE(simulated.wireLog(),
             (QStringList{u"< 07 06 99 00 00 00 00 00 A6"_s, u"> 02 07 64 06 00 00 00 F0 63"_s}));
    QCOMPARE(simulated.requests(), QStringList{u"07 06 99 00 00 00 00 00 A6"_s});
    simulated.clearWireLog();
    QVERIFY(simulated.wireLog().isEmpty());
}

void tst_SimulatedPort::faults()
{
    SimulatedPort simulated({.address = 7});
    RawPort port(simulated.portName());
    QVERIFY(simulated.fault(u"short 1"_s));
    QVERIFY(!simulated.fault(u"short of money"_s));
    port.send(question);
    QCOMPARE(port.receive(8), answer.left(8));
    QCOMPARE(port.exchange(question), answer);
}

void tst_SimulatedPort::parameters()
{
    SimulatedPort simulated({.address = 7});
    RawPort port(simulated.portName());
    simulated.module().setAxisParameter(153, 241);
    QCOMPARE(port.exchange(question), QByteArray::fromHex("02076406000000f164"));
    port.exchange(QByteArray::fromHex("07050600000000ff11"));
    QCOMPARE(simulated.module().axisParameter(6), std::optional(255));
}

void tst_SimulatedPort::baudRate()
{
    SimulatedPort simulated({.address = 7}, 57600);
    RawPort port(simulated.portName());
    QVERIFY(port.setLine(57600));
    QCOMPARE(port.exchange(question), answer);
    QVERIFY(port.setLine(19200));
    simulated.clearWireLog();
    port.send(question);
    QTRY_COMPARE(simulated.wireLog(), QStringList{u"? 07 06 99 00 00 00 00 00 A6"_s});
    QVERIFY(simulated.requests().isEmpty());
}

void tst_SimulatedPort::pulledOut()
{
    SimulatedPort simulated;
    RawPort port(simulated.portName());
    simulated.pullOut();
    QVERIFY(port.waitForHangUp());
    QVERIFY(!port.reopen());
    simulated.pullOut(); // harmless
}

QTEST_GUILESS_MAIN(tst_SimulatedPort)
#include "tst_SimulatedPort.moc"
