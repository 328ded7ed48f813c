#include "comm/HandlerProbe.h"
#include "comm/QSerialCommandHandler.h"
#include "serial/AbstractSerial.h"
#include "serial/ComPort.h"
#include "support/DebugLog.h"
#include "support/SimulatedPort.h"
#include "support/TestCase.h"

#include <QElapsedTimer>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

/// Opening, setting, closing and losing a COM port.
class tst_QSerialCommandHandlerPort : public TestCase
{
    Q_OBJECT

private slots:
    void open();
    void openFails();
    void closeAndReopen();
    void setBaudrate_data();
    void setBaudrate();
    void moduleAnswersAtItsOwnRateOnly();
    void pulledOutWhileIdle();
    void exchangeAfterExchange();
};

void tst_QSerialCommandHandlerPort::open()
{
    const ComPort port;
    QSerialCommandHandler handler;
    const DebugLog log;
    QVERIFY(handler.openDevice(port.portName()));
    QCOMPARE(maskedDevices(log.lines()),
             QStringList({u"QSerialCommandHandler::openDevice(\"%1\")"_s.arg(port.portName()),
                          u"QSerialCommandHandler::Device not open!"_s,
                          u"QSerialCommandHandler::Serial device \"%1\" opened. :DEVICE"_s.arg(
                              port.portName())}));
    QVERIFY(handler.isConnected());
    QCOMPARE(int(deviceOf(handler)->openMode()), 0x23); // for reading and writing, unbuffered
}

void tst_QSerialCommandHandlerPort::openFails()
{
    QSerialCommandHandler handler;
    const DebugLog log;
    QVERIFY(!handler.openDevice(u"COM255"_s));
    QVERIFY(!handler.isConnected());
    // Whatever can't be opened counts as busy.
    QCOMPARE(log.lines().constLast(), u"QSerialCommandHandler::Device is busy!"_s);
}

void tst_QSerialCommandHandlerPort::closeAndReopen()
{
    SimulatedPort port;
    QSerialCommandHandler handler;
    for (int opening = 0; opening < 5; ++opening) {
        QVERIFY(handler.openDevice(port.portName()));
        QCOMPARE(handler.versionText(1), u"7710V105"_s);
        QVERIFY(handler.closeDevice());
        QVERIFY(!handler.isConnected());
    }
    QVERIFY(handler.reopenDevice());
    QCOMPARE(handler.versionText(1), u"7710V105"_s);
}

void tst_QSerialCommandHandlerPort::setBaudrate_data()
{
    // 14400 has no number on the other system, by which wine could set it.
    QTest::addColumn<int>("rate");
    for (const int rate : {4800, 9600, 19200, 38400, 57600, 115200}) {
        QTest::addRow("%d", rate) << rate;
    }
}

void tst_QSerialCommandHandlerPort::setBaudrate()
{
    QFETCH(int, rate);
    const ComPort port;
    QSerialCommandHandler handler;
    QVERIFY(handler.openDevice(port.portName()));
    handler.setBaudrate(rate);
    QCOMPARE(port.line(), QByteArray::number(rate) + " 1 none");
    QCOMPARE(deviceOf(handler)->baudRate(AbstractSerial::AllBaud), u"%1 baud"_s.arg(rate));
    QCOMPARE(deviceOf(handler)->dataBits(), u"8 bit"_s);
    QCOMPARE(deviceOf(handler)->parity(), u"None"_s);
    QCOMPARE(deviceOf(handler)->stopBits(), u"1"_s);
    QCOMPARE(deviceOf(handler)->flowControl(), u"Disable"_s);
}

void tst_QSerialCommandHandlerPort::moduleAnswersAtItsOwnRateOnly()
{
    SimulatedPort port({}, 57600);
    QSerialCommandHandler handler;
    QVERIFY(handler.openDevice(port.portName()));
    handler.setBaudrate(19200);
    QCOMPARE(handler.versionText(1), QString());
    handler.setBaudrate(57600);
    QCOMPARE(handler.versionText(1), u"7710V105"_s);
}

void tst_QSerialCommandHandlerPort::pulledOutWhileIdle()
{
    SimulatedPort port;
    QSerialCommandHandler handler;
    QVERIFY(handler.openDevice(port.portName()));
    QCOMPARE(handler.versionText(1), u"7710V105"_s);
    port.pullOut();
    QCOMPARE(handler.versionText(1), QString());
    QVERIFY(handler.closeDevice());
    QVERIFY(!handler.openDevice(port.portName()));
}

// The first look for a reply comes before the module can have answered, so an exchange takes at
// least the pause of 10 ms. What it takes beyond that is for the record.
void tst_QSerialCommandHandlerPort::exchangeAfterExchange()
{
    constexpr int Exchanges = 100;
    SimulatedPort port;
    port.module().setAxisParameter(4, 300);
    QVERIFY(port.fault(u"delay 3"_s));
    QSerialCommandHandler handler;
    QVERIFY(handler.openDevice(port.portName()));
    int replies = 0;
    connect(&handler, &QSerialCommandHandler::requestedValue, this,
            [&replies](char, char, char, int value) { replies += value == 300 ? 1 : 0; });
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < Exchanges; ++i) {
        handler.getAxisParameter(1, 0, 4);
    }
    const double msecs = double(timer.nsecsElapsed()) / 1e6 / Exchanges;
    QCOMPARE(replies, Exchanges);
    QCOMPARE(port.requests().size(), Exchanges);
    qInfo("one exchange: %.2f ms", msecs);
}

QTEST_GUILESS_MAIN(tst_QSerialCommandHandlerPort)
#include "tst_QSerialCommandHandlerPort.moc"
