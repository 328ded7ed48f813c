#include "comm/CANZDRLRequest.h"
#include "support/TestCase.h"

#include <QTest>

#include <cstring>
#include <limits>

using namespace Qt::StringLiterals;

/// The outgoing CAN frame.
class tst_CANZDRLRequest : public TestCase
{
    Q_OBJECT

private slots:
    void identifierIsTheAddress_data();
    void identifierIsTheAddress();
    void dataBytes_data();
    void dataBytes();
    void wholeRecord();
    void byteText();
    void fieldText_data();
    void fieldText();
};

void tst_CANZDRLRequest::identifierIsTheAddress_data()
{
    QTest::addColumn<int>("address");
    QTest::addColumn<int>("id");

    QTest::newRow("1") << 1 << 1;
    QTest::newRow("127") << 127 << 127;
    QTest::newRow("128") << 128 << -128;
    QTest::newRow("200") << 200 << -56;
    QTest::newRow("255") << 255 << -1;
}

void tst_CANZDRLRequest::identifierIsTheAddress()
{
    QFETCH(int, address);
    const CANZDRLRequest request(char(address), 6, 1, 0, 0);
    QTEST(request.id(), "id");
    QCOMPARE(request.id() & 0xFF, address);
}

void tst_CANZDRLRequest::dataBytes_data()
{
    QTest::addColumn<int>("command");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("value");
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("zero") << 6 << 1 << 0 << "0601020000000003"_ba;
    QTest::newRow("1000") << 5 << 4 << 1000 << "050402000003e803"_ba;
    QTest::newRow("-1") << 4 << 1 << -1 << "040102ffffffff03"_ba;
    QTest::newRow("numbers above 127") << 136 << 230 << 0 << "88e6020000000003"_ba;
    QTest::newRow("largest") << 5 << 0 << std::numeric_limits<int>::max() << "0500027fffffff03"_ba;
    QTest::newRow("smallest") << 5 << 0 << std::numeric_limits<int>::min() << "0500028000000003"_ba;
}

void tst_CANZDRLRequest::dataBytes()
{
    QFETCH(int, command);
    QFETCH(int, type);
    QFETCH(int, value);
    const CANZDRLRequest request(1, char(command), char(type), 2, value);
    QTEST(request.data().toHex(), "bytes");
}

void tst_CANZDRLRequest::wholeRecord()
{
    const CANZDRLRequest request(char(200), 5, 4, 2, 1000);
    const QByteArray bytes = request.toBytes();
    QCOMPARE(bytes.size(), 16);
    const int id = -56; // in the order of this processor's memory
    QCOMPARE(std::memcmp(bytes.constData(), &id, 4), 0);
    QCOMPARE(bytes.at(4), char(8));
    QCOMPARE(bytes.sliced(8), request.data());
}

void tst_CANZDRLRequest::byteText()
{
    const CANZDRLRequest request(7, 5, 4, 2, 1000);
    QVERIFY(request.toByteText().endsWith(
        u", 0x005, 0x004, 0x002, 0x000, 0x000, 0x003, 0x232, 0x003]"_s));
    if (Q_BYTE_ORDER == Q_LITTLE_ENDIAN) {
        QCOMPARE(request.toByteText(),
                 u"ZDRLRequest[0x007, 0x000, 0x000, 0x000, 0x008, 0x000, 0x000, 0x000, "
                 "0x005, 0x004, 0x002, 0x000, 0x000, 0x003, 0x232, 0x003]"_s);
        QVERIFY(CANZDRLRequest(char(200), 5, 4, 2, 1000)
                    .toByteText()
                    .startsWith(u"ZDRLRequest[0x200, 0x255, 0x255, 0x255, 0x008, "_s));
    }
}

void tst_CANZDRLRequest::fieldText_data()
{
    QTest::addColumn<int>("address");
    QTest::addColumn<int>("command");
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("text");

    QTest::newRow("plain")
        << 1 << 5 << 1000
        << u"CANZDRLRequest[id=1, length=8, command=5, type=4, motorBank=2, value=1000]"_s;
    QTest::newRow("above 127")
        << 200 << 136 << -1
        << u"CANZDRLRequest[id=200, length=8, command=136, type=4, motorBank=2, value=-1]"_s;
}

void tst_CANZDRLRequest::fieldText()
{
    QFETCH(int, address);
    QFETCH(int, command);
    QFETCH(int, value);
    QTEST(CANZDRLRequest(char(address), char(command), 4, 2, value).toFieldText(), "text");
}

QTEST_GUILESS_MAIN(tst_CANZDRLRequest)
#include "tst_CANZDRLRequest.moc"
