#include "comm/Request.h"
#include "support/TestCase.h"

#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

/// The outgoing datagram of the serial line.
class tst_Request : public TestCase
{
    Q_OBJECT

private slots:
    void keepsItsFields();
    void wireBytes_data();
    void wireBytes();
    void byteText_data();
    void byteText();
    void fieldText_data();
    void fieldText();
};

void tst_Request::keepsItsFields()
{
    const Request request(1, 5, 4, 2, 1000);
    QCOMPARE(request.address(), char(1));
    QCOMPARE(request.command(), char(5));
    QCOMPARE(request.type(), char(4));
    QCOMPARE(request.motorBank(), char(2));
    QCOMPARE(request.value(), 1000);
    QCOMPARE(request.checksum(), char(0xF7)); // 01 + 05 + 04 + 02 + 03 + E8
}

void tst_Request::wireBytes_data()
{
    QTest::addColumn<int>("address");
    QTest::addColumn<int>("command");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("motorBank");
    QTest::addColumn<int>("value");
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("read a parameter") << 1 << 6 << 1 << 0 << 0 << "010601000000000008"_ba;
    QTest::newRow("write a parameter") << 1 << 5 << 4 << 0 << 1000 << "01050400000003e8f5"_ba;
    QTest::newRow("relative move by -1") << 1 << 4 << 1 << 0 << -1 << "01040100ffffffff02"_ba;
    QTest::newRow("sum of 0x401 wraps") << 5 << 0 << 0 << 0 << -1 << "05000000ffffffff01"_ba;
    QTest::newRow("address 128") << 128 << 6 << 1 << 0 << 0 << "800601000000000087"_ba;
    QTest::newRow("address 255") << 255 << 6 << 1 << 0 << 0 << "ff0601000000000006"_ba;
    QTest::newRow("all bytes above 127")
        << 200 << 136 << 230 << 240 << -2 << "c888e6f0fffffffe21"_ba;
    QTest::newRow("largest value")
        << 1 << 5 << 0 << 0 << std::numeric_limits<int>::max() << "010500007fffffff82"_ba;
    QTest::newRow("smallest value")
        << 1 << 5 << 0 << 0 << std::numeric_limits<int>::min() << "010500008000000086"_ba;
    QTest::newRow("four different bytes")
        << 1 << 5 << 3 << 2 << 0x12345678 << "01050302123456781f"_ba;
}

void tst_Request::wireBytes()
{
    QFETCH(int, address);
    QFETCH(int, command);
    QFETCH(int, type);
    QFETCH(int, motorBank);
    QFETCH(int, value);
    QFETCH(QByteArray, bytes);

    const Request request(char(address), char(command), char(type), char(motorBank), value);
    QCOMPARE(request.toBytes().size(), Request::Size);
    QCOMPARE(request.toBytes().toHex(), bytes);
    QCOMPARE(request.checksum(), request.toBytes().back());
}

void tst_Request::byteText_data()
{
    QTest::addColumn<int>("address");
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("text");

    // Decimal digits behind "0x", and the value in the memory order of this processor.
    const bool little = Q_BYTE_ORDER == Q_LITTLE_ENDIAN;
    QTest::newRow("value 1000") << 1 << 1000
                                << (little ? u"Request[0x001, 0x005, 0x004, 0x000, "
                                             "0x232, 0x003, 0x000, 0x000, 0x245]"_s
                                           : u"Request[0x001, 0x005, 0x004, 0x000, "
                                             "0x000, 0x000, 0x003, 0x232, 0x245]"_s);
    QTest::newRow("address 200") << 200 << 0
                                 << u"Request[0x200, 0x005, 0x004, 0x000, "
                                    "0x000, 0x000, 0x000, 0x000, 0x209]"_s;
    QTest::newRow("value -1") << 1 << -1
                              << u"Request[0x001, 0x005, 0x004, 0x000, "
                                 "0x255, 0x255, 0x255, 0x255, 0x006]"_s;
}

void tst_Request::byteText()
{
    QFETCH(int, address);
    QFETCH(int, value);
    QTEST(Request(char(address), 5, 4, 0, value).toByteText(), "text");
}

void tst_Request::fieldText_data()
{
    QTest::addColumn<int>("address");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("text");

    QTest::newRow("low byte of 1000") << 1 << 4 << 1000 << u"Request[1, 5, 4, 7, 232, 252]"_s;
    QTest::newRow("low byte of -1") << 1 << 4 << -1 << u"Request[1, 5, 4, 7, 255, 13]"_s;
    QTest::newRow("unsigned numbers") << 200 << 230 << 0 << u"Request[200, 5, 230, 7, 0, 186]"_s;
}

void tst_Request::fieldText()
{
    QFETCH(int, address);
    QFETCH(int, type);
    QFETCH(int, value);
    QTEST(Request(char(address), 5, char(type), 7, value).toFieldText(), "text");
}

QTEST_GUILESS_MAIN(tst_Request)
#include "tst_Request.moc"
