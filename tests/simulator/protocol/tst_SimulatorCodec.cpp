#include "simulator/protocol/Reply.h"
#include "simulator/protocol/Request.h"
#include "support/TestCase.h"

#include <QTest>

using simulator::Datagram;
using simulator::Reply;
using simulator::Request;

namespace {

Datagram fromHex(const char *hex)
{
    const QByteArray bytes = QByteArray::fromHex(hex);
    Datagram datagram{};
    std::copy(bytes.begin(), bytes.end(), datagram.begin());
    return datagram;
}

QByteArray toHex(const Datagram &datagram)
{
    return QByteArray(reinterpret_cast<const char *>(datagram.data()), datagram.size()).toHex(' ');
}

} // namespace

class tst_SimulatorCodec : public TestCase
{
    Q_OBJECT

private slots:
    void requests_data();
    void requests();
    void wrongChecksum();
    void checksumWraps();
    void reply();
    void textReply();
};

void tst_SimulatorCodec::requests_data()
{
    QTest::addColumn<QByteArray>("hex");
    QTest::addColumn<int>("address");
    QTest::addColumn<int>("command");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("motorBank");
    QTest::addColumn<int>("value");
    QTest::newRow("GAP") << QByteArray("01 06 01 00 00 00 00 00 08") << 1 << 6 << 1 << 0 << 0;
    QTest::newRow("SAP") << QByteArray("01 05 04 00 00 00 03 e8 f5") << 1 << 5 << 4 << 0 << 1000;
    QTest::newRow("MVP") << QByteArray("01 04 01 00 ff ff ff ff 02") << 1 << 4 << 1 << 0 << -1;
    QTest::newRow("high bytes") << QByteArray("c8 88 e6 02 80 00 00 00 b8") << 200 << 136 << 230
                                << 2 << std::numeric_limits<int>::min();
}

void tst_SimulatorCodec::requests()
{
    QFETCH(QByteArray, hex);
    QFETCH(int, address);
    QFETCH(int, command);
    QFETCH(int, type);
    QFETCH(int, motorBank);
    QFETCH(int, value);

    const Request request = Request::fromBytes(fromHex(hex.constData()));
    QVERIFY(request.intact);
    QCOMPARE(int(request.address), address);
    QCOMPARE(int(request.command), command);
    QCOMPARE(int(request.type), type);
    QCOMPARE(int(request.motorBank), motorBank);
    QCOMPARE(request.value, value);
    QCOMPARE(toHex(request.toBytes()), hex);
}

void tst_SimulatorCodec::wrongChecksum()
{
    const Request request = Request::fromBytes(fromHex("01 06 01 00 00 00 00 00 09"));
    QVERIFY(!request.intact);
    QVERIFY(!Request::fromBytes(request.toBytes()).intact);
}

void tst_SimulatorCodec::checksumWraps()
{
    // The bytes sum up to 0x401.
    QCOMPARE(int(simulator::checksumOf(fromHex("ff ff ff ff 05 00 00 00 00"))), 0x01);
}

void tst_SimulatorCodec::reply()
{
    Reply reply;
    reply.replyAddress = 2;
    reply.moduleAddress = 1;
    reply.command = 6;
    reply.value = -2;
    const Datagram bytes = reply.toBytes();
    QCOMPARE(toHex(bytes), QByteArray("02 01 64 06 ff ff ff fe 68"));

    const Reply read = Reply::fromBytes(bytes);
    QCOMPARE(int(read.replyAddress), 2);
    QCOMPARE(int(read.moduleAddress), 1);
    QCOMPARE(int(read.status), 100);
    QCOMPARE(int(read.command), 6);
    QCOMPARE(read.value, -2);
}

void tst_SimulatorCodec::textReply()
{
    Reply reply;
    reply.replyAddress = 2;
    reply.moduleAddress = 1;
    reply.text = {'7', '7', '1', '0', 'V', '1', '0', '\0'};
    QCOMPARE(toHex(reply.toBytes()), QByteArray("02 37 37 31 30 56 31 30 00"));
}

QTEST_GUILESS_MAIN(tst_SimulatorCodec)
#include "tst_SimulatorCodec.moc"
