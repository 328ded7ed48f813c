#include "comm/CANZDRLReply.h"
#include "support/TestCase.h"

#include <QTest>

#include <limits>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

CANZDRLReply replyOf(const QByteArray &hex)
{
    const QByteArray bytes = QByteArray::fromHex(hex);
    return CANZDRLReply(reinterpret_cast<const unsigned char *>(bytes.constData()));
}

} // namespace

/// The incoming CAN frame.
class tst_CANZDRLReply : public TestCase
{
    Q_OBJECT

private slots:
    void takesFieldsFromTheFrame();
    void value_data();
    void value();
    void readsEightBytesOnly();
    void text_data();
    void text();
    void byteText();
    void fieldText_data();
    void fieldText();
};

void tst_CANZDRLReply::takesFieldsFromTheFrame()
{
    const CANZDRLReply reply = replyOf("c86488000003e809");
    QCOMPARE(reply.moduleId(), char(200));
    QCOMPARE(reply.status(), char(100));
    QCOMPARE(reply.command(), char(136));
    QCOMPARE(reply.value(), 1000);
    QCOMPARE(reply.lastByte(), char(9));
}

void tst_CANZDRLReply::value_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("value");

    QTest::newRow("-1") << "016406ffffffff00"_ba << -1;
    QTest::newRow("most significant first") << "0164061234567800"_ba << 0x12345678;
    QTest::newRow("largest") << "0164067fffffff00"_ba << std::numeric_limits<int>::max();
    QTest::newRow("smallest") << "0164068000000000"_ba << std::numeric_limits<int>::min();
}

void tst_CANZDRLReply::value()
{
    QFETCH(QByteArray, bytes);
    QTEST(replyOf(bytes).value(), "value");
}

void tst_CANZDRLReply::readsEightBytesOnly()
{
    // Exactly eight on the heap, so that AddressSanitizer sees a read behind them.
    const std::unique_ptr<unsigned char[]> bytes(new unsigned char[8]{8, 7, 6, 5, 4, 3, 2, 1});
    const CANZDRLReply reply(bytes.get());
    QCOMPARE(reply.moduleId(), char(8));
    QCOMPARE(reply.value(), 0x05040302);
    QCOMPARE(reply.lastByte(), char(1));
}

void tst_CANZDRLReply::text_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");

    QTest::newRow("characters") << "7710V105"_ba << u"7710V105"_s;
    QTest::newRow("zero bytes stay")
        << QByteArray("A\0B\0\0\0\0\0", 8) << QString(u"A\0B\0\0\0\0\0"_s);
    QTest::newRow("bytes above 127")
        << QByteArray("\xe4\xff\x80 BCDE", 8) << u"\u00e4\u00ff\u0080 BCDE"_s;
}

void tst_CANZDRLReply::text()
{
    QFETCH(QByteArray, bytes);
    const QString text = replyOf(bytes.toHex()).toText();
    QCOMPARE(text.size(), 8);
    QTEST(text, "text");
}

void tst_CANZDRLReply::byteText()
{
    const CANZDRLReply reply = replyOf("016406000003e809");
    QVERIFY(reply.toByteText().endsWith(
        u", 0x001, 0x100, 0x006, 0x000, 0x000, 0x003, 0x232, 0x009]"_s));
    if (Q_BYTE_ORDER == Q_LITTLE_ENDIAN) {
        // The identifier is data bytes 0 to 3 turned over, the length data byte 4.
        QCOMPARE(reply.toByteText(),
                 u"CANZDRLReply[0x000, 0x006, 0x100, 0x001, 0x000, 0x000, 0x000, 0x000, "
                 "0x001, 0x100, 0x006, 0x000, 0x000, 0x003, 0x232, 0x009]"_s);
    }
}

void tst_CANZDRLReply::fieldText_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");

    QTest::newRow("plain")
        << "016406000003e809"_ba
        << u"CANZDRLReply[id=0, length=0, moduleId=1, status=100, command=6, value=1000]"_s;
    QTest::newRow("id and length are data bytes 3 and 4")
        << "c864881122334409"_ba
        << u"CANZDRLReply[id=17, length=34, moduleId=200, status=100, command=136, "
           "value=287454020]"_s;
    QTest::newRow("all full")
        << "ffffffffffffffff"_ba
        << u"CANZDRLReply[id=255, length=255, moduleId=255, status=255, command=255, value=-1]"_s;
}

void tst_CANZDRLReply::fieldText()
{
    QFETCH(QByteArray, bytes);
    QTEST(replyOf(bytes).toFieldText(), "text");
}

QTEST_GUILESS_MAIN(tst_CANZDRLReply)
#include "tst_CANZDRLReply.moc"
