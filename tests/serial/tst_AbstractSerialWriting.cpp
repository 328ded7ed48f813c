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

const QString writeFailed = u"Controls::Write data to device - i/o problem. Error!"_s;

} // namespace

// From the writer to the port: writing, the buffer, the write notification.
class tst_AbstractSerialWriting : public TestCase
{
    Q_OBJECT

private slots:
    void init();
    void writeDataOfClosed();
    void writeDataOfReadOnly();
    void unbufferedWriteGoesToThePort();
    void unbufferedWriteFails_data();
    void unbufferedWriteFails();
    void unbufferedWriteInPart();
    void bufferedWriteWaitsForTheNotification_data();
    void bufferedWriteWaitsForTheNotification();
    void bufferedWriteOfNothing();
    void notificationWritesOneBlock();
    void notificationWritesInPart();
    void notificationOfNothing();
    void notificationThatThePortRefuses();
    void flushTakesTheNotificationsWork();
    void pushedWritesDrainTheBuffer();
    void writeFromBytesWritten();
};

void tst_AbstractSerialWriting::init()
{
    TestCase::init();
    FakeSerialEngine::log().clear();
}

void tst_AbstractSerialWriting::writeDataOfClosed()
{
    ExposedSerial device;
    DeviceReport report(device);
    QCOMPARE(device.writeData("a", 1), -1);
    QCOMPARE(report.take(), QStringList{u"Device is not open. Error!"_s});
    QCOMPARE(FakeSerialEngine::log(), QStringList());
}

void tst_AbstractSerialWriting::writeDataOfReadOnly()
{
    ExposedSerial device;
    QVERIFY(device.open(QIODevice::ReadOnly));
    FakeSerialEngine::log().clear();
    DeviceReport report(device);
    QCOMPARE(device.writeData("a", 1), -1);
    QCOMPARE(report.take(), QStringList{writeFailed});
    QCOMPARE(FakeSerialEngine::log(), QStringList());
    QCOMPARE(device.bytesToWrite(), 0);
}

void tst_AbstractSerialWriting::unbufferedWriteGoesToThePort()
{
    AbstractSerial device;
    QVERIFY(device.open(Direct));
    const QSignalSpy bytesWritten(&device, &QIODevice::bytesWritten);
    FakeSerialEngine::log().clear();
    DeviceReport report(device);
    QCOMPARE(device.write("123456789"_ba), 9);
    QCOMPARE(FakeSerialEngine::log(), QStringList{u"write(9)"_s});
    QCOMPARE(FakeSerialEngine::last()->written, "123456789"_ba);
    QCOMPARE(bytesWritten.size(), 1);
    QCOMPARE(bytesWritten.first().first().toLongLong(), 9);
    QCOMPARE(device.bytesToWrite(), 0);
    QCOMPARE(report.take(), QStringList());
}

void tst_AbstractSerialWriting::unbufferedWriteFails_data()
{
    QTest::addColumn<qint64>("answer");
    QTest::newRow("-1") << qint64(-1);
    QTest::newRow("-2") << qint64(-2);
}

void tst_AbstractSerialWriting::unbufferedWriteFails()
{
    QFETCH(qint64, answer);
    AbstractSerial device;
    QVERIFY(device.open(Direct));
    FakeSerialEngine::last()->writeAnswer = answer;
    const QSignalSpy bytesWritten(&device, &QIODevice::bytesWritten);
    DeviceReport report(device);
    QCOMPARE(device.write("1"_ba), answer);
    QCOMPARE(report.take(), QStringList{writeFailed});
    QCOMPARE(device.errorString(), writeFailed);
    QCOMPARE(bytesWritten.size(), 0);
}

void tst_AbstractSerialWriting::unbufferedWriteInPart()
{
    AbstractSerial device;
    QVERIFY(device.open(Direct));
    FakeSerialEngine::last()->writeAnswer = 2;
    const QSignalSpy bytesWritten(&device, &QIODevice::bytesWritten);
    QCOMPARE(device.write("123"_ba), 2);
    QCOMPARE(bytesWritten.size(), 1);
    QCOMPARE(bytesWritten.first().first().toLongLong(), 2);
    QCOMPARE(device.bytesToWrite(), 0);
}

void tst_AbstractSerialWriting::bufferedWriteWaitsForTheNotification_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("one byte") << "1"_ba;
    QTest::newRow("a datagram") << "123456789"_ba;
}

void tst_AbstractSerialWriting::bufferedWriteWaitsForTheNotification()
{
    QFETCH(QByteArray, bytes);
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    FakeSerialEngine *const engine = FakeSerialEngine::last();
    engine->setWriteNotificationEnabled(false, false);
    const QSignalSpy bytesWritten(&device, &QIODevice::bytesWritten);
    FakeSerialEngine::log().clear();
    QCOMPARE(device.write(bytes), bytes.size());
    QCOMPARE(device.bytesToWrite(), bytes.size());
    QCOMPARE(FakeSerialEngine::log(), QStringList{u"setWrite(true, false)"_s});
    QCOMPARE(bytesWritten.size(), 0);

    FakeSerialEngine::log().clear();
    QVERIFY(engine->writeNotification());
    QCOMPARE(engine->written, bytes);
    QCOMPARE(device.bytesToWrite(), 0);
    QCOMPARE(bytesWritten.size(), 1);
    QCOMPARE(bytesWritten.first().first().toLongLong(), bytes.size());
    QCOMPARE(FakeSerialEngine::log(),
             (QStringList{u"setWrite(false, false)"_s, u"write(%1)"_s.arg(bytes.size())}));
}

void tst_AbstractSerialWriting::bufferedWriteOfNothing()
{
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    FakeSerialEngine::log().clear();
    QCOMPARE(device.write(QByteArray()), 0);
    QCOMPARE(device.bytesToWrite(), 0);
    QCOMPARE(FakeSerialEngine::log(), QStringList());
}

void tst_AbstractSerialWriting::notificationWritesOneBlock()
{
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    FakeSerialEngine *const engine = FakeSerialEngine::last();
    QCOMPARE(device.write(QByteArray(16384, 'a')), 16384);
    QCOMPARE(device.write(QByteArray(10, 'b')), 10);
    FakeSerialEngine::log().clear();
    QVERIFY(engine->writeNotification());
    QCOMPARE(
        FakeSerialEngine::log(),
        (QStringList{u"setWrite(false, false)"_s, u"write(16384)"_s, u"setWrite(true, false)"_s}));
    QCOMPARE(device.bytesToWrite(), 10);
    QVERIFY(engine->writeNotification());
    QCOMPARE(device.bytesToWrite(), 0);
    QCOMPARE(engine->written, QByteArray(16384, 'a') + QByteArray(10, 'b'));
    QVERIFY(!engine->isWriteNotificationEnabled());
}

void tst_AbstractSerialWriting::notificationWritesInPart()
{
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    FakeSerialEngine *const engine = FakeSerialEngine::last();
    QCOMPARE(device.write("123456"_ba), 6);
    const QSignalSpy bytesWritten(&device, &QIODevice::bytesWritten);
    engine->writeAnswer = 4;
    QVERIFY(engine->writeNotification());
    QCOMPARE(device.bytesToWrite(), 2);
    QVERIFY(engine->isWriteNotificationEnabled());
    QCOMPARE(bytesWritten.size(), 1);
    QCOMPARE(bytesWritten.first().first().toLongLong(), 4);
    // A port that takes nothing, without a failure: nothing is told and nothing is lost.
    engine->writeAnswer = 0;
    QVERIFY(!engine->writeNotification());
    QCOMPARE(device.bytesToWrite(), 2);
    QCOMPARE(bytesWritten.size(), 1);
    QVERIFY(engine->isWriteNotificationEnabled());
    engine->writeAnswer.reset();
    QVERIFY(engine->writeNotification());
    QCOMPARE(engine->written, "123456"_ba);
}

void tst_AbstractSerialWriting::notificationOfNothing()
{
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    FakeSerialEngine *const engine = FakeSerialEngine::last();
    FakeSerialEngine::log().clear();
    QVERIFY(!engine->writeNotification());
    QCOMPARE(FakeSerialEngine::log(), QStringList{u"setWrite(false, false)"_s});
    QVERIFY(!engine->writeNotification());
    QCOMPARE(FakeSerialEngine::log(), QStringList{u"setWrite(false, false)"_s});
}

// What the port refuses is dropped with all that was to follow, and nothing is reported.
void tst_AbstractSerialWriting::notificationThatThePortRefuses()
{
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    FakeSerialEngine *const engine = FakeSerialEngine::last();
    QCOMPARE(device.write(QByteArray(16384, 'a')), 16384);
    QCOMPARE(device.write(QByteArray(10, 'b')), 10);
    const QSignalSpy bytesWritten(&device, &QIODevice::bytesWritten);
    const QString errorBefore = device.errorString();
    DeviceReport report(device);
    engine->writeAnswer = -1;
    QVERIFY(engine->writeNotification());
    QCOMPARE(device.bytesToWrite(), 0);
    QVERIFY(!engine->isWriteNotificationEnabled());
    QCOMPARE(bytesWritten.size(), 0);
    QCOMPARE(report.take(), QStringList());
    QCOMPARE(device.errorString(), errorBefore);
    engine->writeAnswer.reset();
    QVERIFY(!engine->writeNotification());
    QCOMPARE(engine->written, QByteArray());
}

void tst_AbstractSerialWriting::flushTakesTheNotificationsWork()
{
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    FakeSerialEngine *const engine = FakeSerialEngine::last();
    QCOMPARE(device.write("123456"_ba), 6);
    FakeSerialEngine::log().clear();
    engine->writeAnswer = 4;
    QVERIFY(device.flush());
    QVERIFY(engine->isWriteNotificationEnabled()); // there is a rest
    engine->writeAnswer.reset();
    QVERIFY(device.flush());
    QCOMPARE(FakeSerialEngine::log(),
             (QStringList{u"write(6)"_s, u"write(2)"_s, u"setWrite(false, false)"_s}));
    QVERIFY(!engine->isWriteNotificationEnabled());
    QCOMPARE(engine->written, "123456"_ba);
}

// Engines call back as soon as the notification is turned on, so a write drains itself.
void tst_AbstractSerialWriting::pushedWritesDrainTheBuffer()
{
    AbstractSerial device;
    FakeSerialEngine *const engine = FakeSerialEngine::last();
    engine->pushesWrites = true;
    QVERIFY(device.open(Buffered));
    QVERIFY(!engine->isWriteNotificationEnabled());
    const QSignalSpy bytesWritten(&device, &QIODevice::bytesWritten);
    QCOMPARE(device.write("123"_ba), 3);
    QCOMPARE(engine->written, "123"_ba);
    QCOMPARE(device.bytesToWrite(), 0);
    QCOMPARE(bytesWritten.size(), 1);
    QVERIFY(!engine->isWriteNotificationEnabled());
}

// bytesWritten() is not emitted within itself, and what a slot of it writes goes out all the same.
void tst_AbstractSerialWriting::writeFromBytesWritten()
{
    AbstractSerial device;
    FakeSerialEngine *const engine = FakeSerialEngine::last();
    QVERIFY(device.open(Buffered));
    engine->pushesWrites = true;
    int emitted = 0;
    connect(&device, &QIODevice::bytesWritten, this, [&device, &emitted] {
        ++emitted;
        QCOMPARE(device.write("next"_ba), 4);
    });
    QCOMPARE(device.write("first "_ba), 6);
    QCOMPARE(emitted, 1);
    QCOMPARE(engine->written, "first next"_ba);
    QCOMPARE(device.bytesToWrite(), 0);
}

QTEST_GUILESS_MAIN(tst_AbstractSerialWriting)
#include "tst_AbstractSerialWriting.moc"
