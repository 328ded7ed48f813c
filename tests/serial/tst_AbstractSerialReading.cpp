#include "DeviceReport.h"
#include "ExposedSerial.h"
#include "FakeSerialEngine.h"
#include "serial/AbstractSerial.h"
#include "support/TestCase.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr QIODevice::OpenMode Buffered = QIODevice::ReadWrite;
constexpr QIODevice::OpenMode Direct = QIODevice::ReadWrite | QIODevice::Unbuffered;

const QString readFailed = u"Controls::Read data from device - i/o problem. Error!"_s;

// A character came for the device that was made last.
bool notify(const QByteArray &bytes)
{
    FakeSerialEngine::last()->incoming += bytes;
    return FakeSerialEngine::last()->readNotification();
}

} // namespace

// What the reader gets: from the buffer, or unbuffered from the port.
class tst_AbstractSerialReading : public TestCase
{
    Q_OBJECT

private slots:
    void init();
    void readDataOfClosed();
    void readDataOfWriteOnly();
    void unbufferedReadAsksThePort();
    void unbufferedReadFails();
    void unbufferedBytesAvailable();
    void bufferedReadOfNothing();
    void bufferedReadTurnsNotificationOn();
    void bufferedReadTakesFromTheBuffer_data();
    void bufferedReadTakesFromTheBuffer();
    void bytesAvailableCountsBothBuffers();
    void canReadLine();
    void readLine();
    void readLineDataIsTheBases();
};

void tst_AbstractSerialReading::init()
{
    TestCase::init();
    FakeSerialEngine::log().clear();
}

void tst_AbstractSerialReading::readDataOfClosed()
{
    ExposedSerial device;
    DeviceReport report(device);
    char byte = 0;
    QCOMPARE(device.readData(&byte, 1), -1);
    QCOMPARE(report.take(), QStringList{u"Device is not open. Error!"_s});
    QCOMPARE(FakeSerialEngine::log(), QStringList());
}

void tst_AbstractSerialReading::readDataOfWriteOnly()
{
    ExposedSerial device;
    QVERIFY(device.open(QIODevice::WriteOnly));
    FakeSerialEngine::log().clear();
    DeviceReport report(device);
    char byte = 0;
    QCOMPARE(device.readData(&byte, 1), -1);
    QCOMPARE(report.take(), QStringList{readFailed});
    QCOMPARE(FakeSerialEngine::log(), QStringList());
}

void tst_AbstractSerialReading::unbufferedReadAsksThePort()
{
    AbstractSerial device;
    QVERIFY(device.open(Direct));
    FakeSerialEngine::last()->incoming = "123456789"_ba;
    FakeSerialEngine::log().clear();
    DeviceReport report(device);
    QCOMPARE(device.read(4), "1234"_ba);
    QCOMPARE(device.read(9), "56789"_ba);
    QCOMPARE(FakeSerialEngine::log(), (QStringList{u"read(4)"_s, u"read(9)"_s}));
    QCOMPARE(report.take(), QStringList());
}

void tst_AbstractSerialReading::unbufferedReadFails()
{
    AbstractSerial device;
    QVERIFY(device.open(Direct));
    FakeSerialEngine::last()->readAnswer = -1;
    DeviceReport report(device);
    char byte = 0;
    QCOMPARE(device.read(&byte, 1), -1);
    QCOMPARE(report.take(), QStringList{readFailed});
    QCOMPARE(device.errorString(), readFailed);
}

void tst_AbstractSerialReading::unbufferedBytesAvailable()
{
    AbstractSerial device;
    QVERIFY(device.open(Direct));
    QCOMPARE(device.bytesAvailable(), 0);
    FakeSerialEngine::last()->incoming = "123"_ba;
    QCOMPARE(device.bytesAvailable(), 3);
    // What is peeked at moves into the QIODevice.
    QCOMPARE(device.peek(2), "12"_ba);
    QCOMPARE(FakeSerialEngine::last()->incoming, "3"_ba);
    QCOMPARE(device.bytesAvailable(), 3);
    QCOMPARE(device.read(3), "123"_ba);
    FakeSerialEngine::last()->countAnswer = -1;
    QCOMPARE(device.bytesAvailable(), -1);
}

void tst_AbstractSerialReading::bufferedReadOfNothing()
{
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    FakeSerialEngine::last()->incoming = "not taken yet"_ba;
    QCOMPARE(device.bytesAvailable(), 0);
    FakeSerialEngine::log().clear();
    DeviceReport report(device);
    char byte = 0;
    QCOMPARE(device.read(&byte, 1), 0);
    QCOMPARE(report.take(), QStringList());
    QCOMPARE(FakeSerialEngine::log(), QStringList());
}

void tst_AbstractSerialReading::bufferedReadTurnsNotificationOn()
{
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    FakeSerialEngine::last()->setReadNotificationEnabled(false, false);
    FakeSerialEngine::log().clear();
    QCOMPARE(device.read(1), QByteArray());
    QCOMPARE(FakeSerialEngine::log(), QStringList{u"setRead(true, false)"_s});
}

void tst_AbstractSerialReading::bufferedReadTakesFromTheBuffer_data()
{
    QTest::addColumn<qint64>("held");
    QTest::addColumn<qint64>("asked");
    QTest::newRow("one of one") << qint64(1) << qint64(1);
    QTest::newRow("one of many") << qint64(9) << qint64(1);
    QTest::newRow("some of many") << qint64(9) << qint64(5);
    QTest::newRow("more than held") << qint64(9) << qint64(10);
    QTest::newRow("over the edge of a chunk") << qint64(40000) << qint64(30000);
}

void tst_AbstractSerialReading::bufferedReadTakesFromTheBuffer()
{
    QFETCH(qint64, held);
    QFETCH(qint64, asked);
    ExposedSerial device;
    QVERIFY(device.open(Buffered));
    QByteArray all;
    // In parts of 9999 bytes, so that the buffer has several chunks.
    while (all.size() < held) {
        const qint64 part = qMin<qint64>(9999, held - all.size());
        const QByteArray bytes(part, static_cast<char>('a' + all.size() % 26));
        QVERIFY(notify(bytes));
        all += bytes;
    }
    QByteArray data(asked, '\0');
    const qint64 count = device.readData(data.data(), asked);
    QCOMPARE(count, qMin(asked, held));
    QCOMPARE(data.first(count), all.first(count));
    QCOMPARE(device.bytesAvailable(), held - count);
    QCOMPARE(device.readAll(), all.mid(count));
}

void tst_AbstractSerialReading::bytesAvailableCountsBothBuffers()
{
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    QVERIFY(notify("1234"_ba));
    QCOMPARE(device.bytesAvailable(), 4);
    // The QIODevice takes all of it over for the sake of one byte.
    QCOMPARE(device.read(1), "1"_ba);
    QCOMPARE(device.bytesAvailable(), 3);
    QVERIFY(notify("56"_ba));
    QCOMPARE(device.bytesAvailable(), 5);
    QCOMPARE(device.readAll(), "23456"_ba);
    QCOMPARE(device.bytesAvailable(), 0);
}

void tst_AbstractSerialReading::canReadLine()
{
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    FakeSerialEngine::last()->incoming = "in the port\n"_ba;
    QVERIFY(!device.canReadLine());
    FakeSerialEngine::last()->incoming.clear();
    QVERIFY(notify("ab"_ba));
    QVERIFY(!device.canReadLine());
    QVERIFY(notify("c\nd"_ba));
    QVERIFY(device.canReadLine());
    // The end of the line now waits in the QIODevice.
    QCOMPARE(device.read(1), "a"_ba);
    QVERIFY(device.canReadLine());
    QCOMPARE(device.read(3), "bc\n"_ba);
    QVERIFY(!device.canReadLine());
}

void tst_AbstractSerialReading::readLine()
{
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    QVERIFY(notify("first\nsecond\nthi"_ba));
    QCOMPARE(device.readLine(), "first\n"_ba);
    QCOMPARE(device.readLine(3), "se"_ba);
    QCOMPARE(device.readLine(), "cond\n"_ba);
    QCOMPARE(device.readLine(), "thi"_ba);
}

void tst_AbstractSerialReading::readLineDataIsTheBases()
{
    ExposedSerial device;
    QVERIFY(device.open(Buffered));
    QVERIFY(notify("first\nsecond"_ba));
    char data[10] = {};
    QCOMPARE(device.readLineData(data, sizeof data), 6);
    QCOMPARE(QByteArray(data), "first\n"_ba);
}

QTEST_GUILESS_MAIN(tst_AbstractSerialReading)
#include "tst_AbstractSerialReading.moc"
