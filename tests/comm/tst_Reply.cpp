#include "comm/Reply.h"
#include "support/TestCase.h"

#include <QTest>

#include <limits>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

Reply replyOf(const QByteArray &hex)
{
    const QByteArray bytes = QByteArray::fromHex(hex);
    return Reply(reinterpret_cast<const unsigned char *>(bytes.constData()));
}

} // namespace

/// The incoming datagram of the serial line.
class tst_Reply : public TestCase
{
    Q_OBJECT

private slots:
    void isInvalidWithoutBytes();
    void takesFieldsFromTheWire();
    void isValidWithAnyBytes_data();
    void isValidWithAnyBytes();
    void value_data();
    void value();
    void readsNineBytesOnly();
    void fieldsCanBeChanged();
    void versionText_data();
    void versionText();
    void versionNumbers_data();
    void versionNumbers();
    void byteText();
    void fieldText();
};

void tst_Reply::isInvalidWithoutBytes()
{
    const Reply reply;
    QVERIFY(!reply.valid());
    QCOMPARE(reply.toFieldText(), u"Reply[0, 0, 0, 0, 0, 0]"_s);
}

void tst_Reply::takesFieldsFromTheWire()
{
    const Reply reply = replyOf("02016406000003e85a");
    QVERIFY(reply.valid());
    QCOMPARE(reply.replyAddress(), char(2));
    QCOMPARE(reply.moduleAddress(), char(1));
    QCOMPARE(reply.status(), char(100));
    QCOMPARE(reply.command(), char(6));
    QCOMPARE(reply.value(), 1000);
    QCOMPARE(reply.checksum(), char(0x5A));
}

void tst_Reply::isValidWithAnyBytes_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("fields");

    QTest::newRow("nine zero bytes") << "000000000000000000"_ba << u"Reply[0, 0, 0, 0, 0, 0]"_s;
    QTest::newRow("nine full bytes")
        << "ffffffffffffffffff"_ba << u"Reply[255, 255, 255, 255, -1, 255]"_s;
    QTest::newRow("wrong checksum") << "020164060000000000"_ba << u"Reply[2, 1, 100, 6, 0, 0]"_s;
}

void tst_Reply::isValidWithAnyBytes()
{
    QFETCH(QByteArray, bytes);
    const Reply reply = replyOf(bytes);
    QVERIFY(reply.valid());
    QTEST(reply.toFieldText(), "fields");
}

void tst_Reply::value_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("value");

    QTest::newRow("-1") << "02016406ffffffff69"_ba << -1;
    QTest::newRow("most significant first") << "02016406123456786d"_ba << 0x12345678;
    QTest::newRow("largest") << "020164067fffffffe9"_ba << std::numeric_limits<int>::max();
    QTest::newRow("smallest") << "0201640680000000ed"_ba << std::numeric_limits<int>::min();
}

void tst_Reply::value()
{
    QFETCH(QByteArray, bytes);
    QTEST(replyOf(bytes).value(), "value");
}

void tst_Reply::readsNineBytesOnly()
{
    // Exactly nine on the heap, so that AddressSanitizer sees a read behind them.
    const std::unique_ptr<unsigned char[]> bytes(new unsigned char[9]{9, 8, 7, 6, 5, 4, 3, 2, 1});
    const Reply reply(bytes.get());
    QCOMPARE(reply.toByteText(), u"Reply[0x09, 0x08, 0x07, 0x06, 0x05, 0x04, 0x03, 0x02, 0x01]"_s);
}

void tst_Reply::fieldsCanBeChanged()
{
    Reply reply;
    reply.setValid(true);
    reply.setReplyAddress(2);
    reply.setModuleAddress(char(200));
    reply.setStatus(3);
    reply.setCommand(char(136));
    reply.setValue(-5);
    reply.setChecksum(7);
    QVERIFY(reply.valid());
    QCOMPARE(reply.toFieldText(), u"Reply[2, 200, 3, 136, -5, 7]"_s);
}

void tst_Reply::versionText_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");

    QTest::newRow("characters") << QByteArray("\x02"
                                              "7710V105",
                                              9)
                                       .toHex()
                                << u"7710V105"_s;
    QTest::newRow("zero bytes stay") << QByteArray("\x02"
                                                   "A\0B\0C\0D\0",
                                                   9)
                                            .toHex()
                                     << QString(u"A\0B\0C\0D\0"_s);
    QTest::newRow("bytes above 127") << "02e4f6fc7f80ff4142"_ba
                                     << QString::fromUtf16(u"\u00e4\u00f6\u00fc\u007f\u0080\u00ff"
                                                           u"AB");
}

void tst_Reply::versionText()
{
    QFETCH(QByteArray, bytes);
    const QString text = replyOf(bytes).versionText();
    QCOMPARE(text.size(), 8);
    QTEST(text, "text");
}

void tst_Reply::versionNumbers_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<int>("majorNumber");
    QTest::addColumn<int>("minorNumber");

    QTest::newRow("1.5") << "0201648800000105fa"_ba << 1 << 5;
    QTest::newRow("upper half is ignored") << "0201648877660c2200"_ba << 12 << 34;
    QTest::newRow("signed") << "020164880000ff8000"_ba << -1 << -128;
}

void tst_Reply::versionNumbers()
{
    QFETCH(QByteArray, bytes);
    const Reply reply = replyOf(bytes);
    QTEST(int(reply.majorVersion()), "majorNumber");
    QTEST(int(reply.minorVersion()), "minorNumber");
}

void tst_Reply::byteText()
{
    // Hexadecimal in the order of the wire, unlike a request's.
    QCOMPARE(replyOf("0201640600abcdefc8").toByteText(),
             u"Reply[0x02, 0x01, 0x64, 0x06, 0x00, 0xAB, 0xCD, 0xEF, 0xC8]"_s);
}

void tst_Reply::fieldText()
{
    QCOMPARE(replyOf("02c8648afffffffeff").toFieldText(), u"Reply[2, 200, 100, 138, -2, 255]"_s);
}

QTEST_GUILESS_MAIN(tst_Reply)
#include "tst_Reply.moc"
