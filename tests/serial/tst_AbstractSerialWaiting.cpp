#include "DeviceReport.h"
#include "FakeSerialEngine.h"
#include "serial/AbstractSerial.h"
#include "support/TestCase.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

using Event = FakeSerialEngine::Event;

constexpr QIODevice::OpenMode Buffered = QIODevice::ReadWrite;
constexpr QIODevice::OpenMode Direct = QIODevice::ReadWrite | QIODevice::Unbuffered;

const QString notOpen = u"Device is not open. Error!"_s;
const QString readTimeout = u"Controls::Wait for ready read timeout. Error!"_s;
const QString writeTimeout = u"Controls::Wait for bytes writtten timeout. Error!"_s;

// The waits of the engine, without what the device does in between.
QStringList waits()
{
    return FakeSerialEngine::log().filter(u"wait("_s);
}

// Lets the waits find these events one after the other, and then nothing.
void script(const QList<Event> &events)
{
    FakeSerialEngine::last()->nextEvent = [left = events]() mutable -> std::optional<Event> {
        if (left.isEmpty()) {
            return {};
        }
        return left.takeFirst();
    };
}

// Lets every wait find this event, as a port does that is lost.
void always(Event event)
{
    FakeSerialEngine::last()->nextEvent = [event] { return event; };
}

} // namespace

class tst_AbstractSerialWaiting : public TestCase
{
    Q_OBJECT

private slots:
    void init();
    void closedDevice();
    void readyReadWithBufferedBytes();
    void readyReadTimesOut_data();
    void readyReadTimesOut();
    void readyReadThatComes();
    void readyReadUnbuffered();
    void readyReadWritesMeanwhile();
    void readyReadComesBeforeWriting();
    void readyReadGoesOnWithoutNews();
    void readyReadOfLostPortEnds_data();
    void readyReadOfLostPortEnds();
    void readyReadRestoresTheNotification();
    void readyReadLeavesTheNotificationOff();
    void readyReadAtTheLimitLeavesTheNotificationOff();
    void readyReadInSlotOfReadyRead_data();
    void readyReadInSlotOfReadyRead();
    void readyReadWhoseSlotCloses();
    void bytesWrittenOfNothing();
    void bytesWrittenTimesOut_data();
    void bytesWrittenTimesOut();
    void bytesWrittenThatComes();
    void bytesWrittenReadsMeanwhile_data();
    void bytesWrittenReadsMeanwhile();
    void bytesWrittenEndsWithFullReader();
    void bytesWrittenOfRefusedWrite();
    void bytesWrittenThatNeverGoEnds_data();
    void bytesWrittenThatNeverGoEnds();
    void bytesWrittenUnbuffered_data();
    void bytesWrittenUnbuffered();
};

void tst_AbstractSerialWaiting::init()
{
    TestCase::init();
    FakeSerialEngine::log().clear();
}

void tst_AbstractSerialWaiting::closedDevice()
{
    AbstractSerial device;
    DeviceReport report(device);
    QVERIFY(!device.waitForReadyRead(10));
    QCOMPARE(report.take(), QStringList{notOpen});
    QVERIFY(!device.waitForBytesWritten(10));
    QCOMPARE(report.take(), QStringList{notOpen});
    QCOMPARE(FakeSerialEngine::log(), QStringList());
}

void tst_AbstractSerialWaiting::readyReadWithBufferedBytes()
{
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    FakeSerialEngine::last()->incoming = "1"_ba;
    QVERIFY(FakeSerialEngine::last()->readNotification());
    FakeSerialEngine::log().clear();
    DeviceReport report(device);
    QVERIFY(device.waitForReadyRead(10));
    QCOMPARE(FakeSerialEngine::log(), QStringList());
    QCOMPARE(report.take(), QStringList());
}

void tst_AbstractSerialWaiting::readyReadTimesOut_data()
{
    QTest::addColumn<int>("msecs");
    QTest::addColumn<QString>("left");
    QTest::newRow("limit") << 100000 << u"left"_s;
    QTest::newRow("no time") << 0 << u"0"_s;
    QTest::newRow("-1 is handed on") << -1 << u"-1"_s;
    QTest::newRow("-2 counts as no time") << -2 << u"0"_s;
}

void tst_AbstractSerialWaiting::readyReadTimesOut()
{
    QFETCH(int, msecs);
    QFETCH(QString, left);
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    FakeSerialEngine::log().clear();
    DeviceReport report(device);
    QVERIFY(!device.waitForReadyRead(msecs));
    QCOMPARE(waits(), QStringList{u"wait(true, false, %1)"_s.arg(left)});
    QCOMPARE(report.take(), QStringList{readTimeout});
    QCOMPARE(device.errorString(), readTimeout);
}

void tst_AbstractSerialWaiting::readyReadThatComes()
{
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    FakeSerialEngine::last()->incoming = "12"_ba;
    script({{.read = true}});
    const QSignalSpy readyRead(&device, &QIODevice::readyRead);
    DeviceReport report(device);
    QVERIFY(device.waitForReadyRead(100000));
    QCOMPARE(readyRead.size(), 1);
    QCOMPARE(report.take(), QStringList());
    QCOMPARE(device.readAll(), "12"_ba);
}

void tst_AbstractSerialWaiting::readyReadUnbuffered()
{
    AbstractSerial device;
    QVERIFY(device.open(Direct));
    FakeSerialEngine::last()->incoming = "12"_ba;
    script({{.read = true}});
    FakeSerialEngine::log().clear();
    QVERIFY(device.waitForReadyRead(100000));
    QCOMPARE(waits(), QStringList{u"wait(true, false, left)"_s});
    QCOMPARE(FakeSerialEngine::last()->incoming, "12"_ba);
}

void tst_AbstractSerialWaiting::readyReadWritesMeanwhile()
{
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    QCOMPARE(device.write("out"_ba), 3);
    script({{.write = true}, {.read = true}});
    FakeSerialEngine::last()->incoming = "in"_ba;
    FakeSerialEngine::log().clear();
    QVERIFY(device.waitForReadyRead(100000));
    QCOMPARE(waits(), (QStringList{u"wait(true, true, left)"_s, u"wait(true, false, left)"_s}));
    QCOMPARE(FakeSerialEngine::last()->written, "out"_ba);
    QCOMPARE(device.readAll(), "in"_ba);
}

void tst_AbstractSerialWaiting::readyReadComesBeforeWriting()
{
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    QCOMPARE(device.write("out"_ba), 3);
    FakeSerialEngine::last()->incoming = "in"_ba;
    script({{.read = true, .write = true}});
    QVERIFY(device.waitForReadyRead(100000));
    QCOMPARE(device.bytesToWrite(), 3);
}

void tst_AbstractSerialWaiting::readyReadGoesOnWithoutNews()
{
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    FakeSerialEngine *const engine = FakeSerialEngine::last();
    int looks = 0;
    engine->nextEvent = [&looks, engine] {
        if (++looks == 3) {
            engine->incoming = "late"_ba;
        }
        return Event{.read = true};
    };
    DeviceReport report(device);
    QVERIFY(device.waitForReadyRead(100000));
    QCOMPARE(looks, 3);
    QCOMPARE(report.take(), QStringList());
}

void tst_AbstractSerialWaiting::readyReadOfLostPortEnds_data()
{
    QTest::addColumn<int>("msecs");
    QTest::newRow("limit") << 5;
    QTest::newRow("no time") << 0;
    QTest::newRow("-1") << -1;
}

void tst_AbstractSerialWaiting::readyReadOfLostPortEnds()
{
    QFETCH(int, msecs);
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    FakeSerialEngine::last()->countAnswer = -1;
    always({.read = true});
    DeviceReport report(device);
    QVERIFY(!device.waitForReadyRead(msecs));
    QCOMPARE(report.take(), QStringList{readTimeout});
}

void tst_AbstractSerialWaiting::readyReadRestoresTheNotification()
{
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    FakeSerialEngine *const engine = FakeSerialEngine::last();
    FakeSerialEngine::log().clear();
    QVERIFY(!device.waitForReadyRead(0));
    QCOMPARE(FakeSerialEngine::log(),
             (QStringList{u"setRead(false, false)"_s, u"wait(true, false, 0)"_s,
                          u"setRead(true, false)"_s}));
    engine->incoming = "1"_ba;
    script({{.read = true}});
    QVERIFY(device.waitForReadyRead(0));
    QVERIFY(engine->isReadNotificationEnabled());
}

void tst_AbstractSerialWaiting::readyReadLeavesTheNotificationOff()
{
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    FakeSerialEngine::last()->setReadNotificationEnabled(false, false);
    FakeSerialEngine::log().clear();
    QVERIFY(!device.waitForReadyRead(0));
    QCOMPARE(FakeSerialEngine::log(), QStringList{u"wait(true, false, 0)"_s});
}

void tst_AbstractSerialWaiting::readyReadAtTheLimitLeavesTheNotificationOff()
{
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    device.setReadBufferSize(2);
    FakeSerialEngine::last()->incoming = "123"_ba;
    script({{.read = true}});
    QVERIFY(device.waitForReadyRead(0));
    QCOMPARE(device.bytesAvailable(), 2);
    QVERIFY(!FakeSerialEngine::last()->isReadNotificationEnabled());
}

void tst_AbstractSerialWaiting::readyReadInSlotOfReadyRead_data()
{
    QTest::addColumn<QByteArray>("later");
    QTest::newRow("something comes") << "2"_ba;
    QTest::newRow("nothing comes") << QByteArray();
}

// A slot that waits for the rest of a message must not leave the port unwatched.
void tst_AbstractSerialWaiting::readyReadInSlotOfReadyRead()
{
    QFETCH(QByteArray, later);
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    FakeSerialEngine *const engine = FakeSerialEngine::last();
    int emitted = 0;
    connect(&device, &QIODevice::readyRead, this, [&] {
        ++emitted;
        QCOMPARE(device.readAll(), "1"_ba);
        engine->incoming = later;
        script({{.read = true}});
        QCOMPARE(device.waitForReadyRead(0), !later.isEmpty());
        QCOMPARE(device.readAll(), later);
    });
    engine->incoming = "1"_ba;
    QVERIFY(engine->readNotification());
    QCOMPARE(emitted, 1);
    QVERIFY(engine->isReadNotificationEnabled());
}

void tst_AbstractSerialWaiting::readyReadWhoseSlotCloses()
{
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    connect(&device, &QIODevice::readyRead, &device, &QIODevice::close);
    FakeSerialEngine::last()->incoming = "1"_ba;
    script({{.read = true}});
    QVERIFY(device.waitForReadyRead(0));
    QVERIFY(!device.isOpen());
    QVERIFY(!FakeSerialEngine::last()->isReadNotificationEnabled());
}

void tst_AbstractSerialWaiting::bytesWrittenOfNothing()
{
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    FakeSerialEngine::log().clear();
    DeviceReport report(device);
    QVERIFY(!device.waitForBytesWritten(100000));
    QCOMPARE(FakeSerialEngine::log(), QStringList());
    QCOMPARE(report.take(), QStringList());
}

void tst_AbstractSerialWaiting::bytesWrittenTimesOut_data()
{
    readyReadTimesOut_data();
}

void tst_AbstractSerialWaiting::bytesWrittenTimesOut()
{
    QFETCH(int, msecs);
    QFETCH(QString, left);
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    QCOMPARE(device.write("out"_ba), 3);
    FakeSerialEngine::log().clear();
    DeviceReport report(device);
    QVERIFY(!device.waitForBytesWritten(msecs));
    QCOMPARE(FakeSerialEngine::log(), QStringList{u"wait(true, true, %1)"_s.arg(left)});
    QCOMPARE(report.take(), QStringList{writeTimeout});
    QCOMPARE(device.errorString(), writeTimeout);
    QCOMPARE(device.bytesToWrite(), 3);
}

void tst_AbstractSerialWaiting::bytesWrittenThatComes()
{
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    QCOMPARE(device.write("out"_ba), 3);
    script({{.write = true}});
    const QSignalSpy bytesWritten(&device, &QIODevice::bytesWritten);
    QVERIFY(device.waitForBytesWritten(100000));
    QCOMPARE(bytesWritten.size(), 1);
    QCOMPARE(FakeSerialEngine::last()->written, "out"_ba);
}

void tst_AbstractSerialWaiting::bytesWrittenReadsMeanwhile_data()
{
    QTest::addColumn<QList<Event>>("events");
    QTest::newRow("before") << QList<Event>{{.read = true}, {.write = true}};
    QTest::newRow("in the same look") << QList<Event>{{.read = true, .write = true}};
}

void tst_AbstractSerialWaiting::bytesWrittenReadsMeanwhile()
{
    QFETCH(QList<Event>, events);
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    QCOMPARE(device.write("out"_ba), 3);
    FakeSerialEngine::last()->incoming = "in"_ba;
    script(events);
    FakeSerialEngine::log().clear();
    QVERIFY(device.waitForBytesWritten(0));
    QCOMPARE(waits(), QStringList(events.size(), u"wait(true, true, 0)"_s));
    QCOMPARE(FakeSerialEngine::last()->written, "out"_ba);
    QCOMPARE(device.readAll(), "in"_ba);
}

void tst_AbstractSerialWaiting::bytesWrittenEndsWithFullReader()
{
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    device.setReadBufferSize(1);
    FakeSerialEngine::last()->incoming = "12"_ba;
    QVERIFY(FakeSerialEngine::last()->readNotification());
    QCOMPARE(device.write("out"_ba), 3);
    always({.read = true, .write = true});
    DeviceReport report(device);
    QVERIFY(!device.waitForBytesWritten(100000));
    QCOMPARE(report.take(), QStringList());
    QCOMPARE(device.bytesToWrite(), 3);
}

void tst_AbstractSerialWaiting::bytesWrittenOfRefusedWrite()
{
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    QCOMPARE(device.write("out"_ba), 3);
    FakeSerialEngine::last()->writeAnswer = -1;
    script({{.write = true}});
    // A refused write empties the buffer, so its size went down.
    QVERIFY(device.waitForBytesWritten(100000));
    QCOMPARE(device.bytesToWrite(), 0);
    QCOMPARE(FakeSerialEngine::last()->written, QByteArray());
}

void tst_AbstractSerialWaiting::bytesWrittenThatNeverGoEnds_data()
{
    readyReadOfLostPortEnds_data();
}

void tst_AbstractSerialWaiting::bytesWrittenThatNeverGoEnds()
{
    QFETCH(int, msecs);
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    QCOMPARE(device.write("out"_ba), 3);
    FakeSerialEngine::last()->writeAnswer = 0;
    always({.write = true});
    DeviceReport report(device);
    QVERIFY(!device.waitForBytesWritten(msecs));
    QCOMPARE(report.take(), QStringList{writeTimeout});
    QCOMPARE(device.bytesToWrite(), 3);
}

void tst_AbstractSerialWaiting::bytesWrittenUnbuffered_data()
{
    QTest::addColumn<QByteArray>("incoming");
    QTest::addColumn<QStringList>("calls");
    QTest::newRow("nothing to read") << QByteArray() << QStringList{u"wait(true, false, left)"_s};
    // Bytes that stay in the port are no reason to look again and again.
    QTest::newRow("bytes to read")
        << "in"_ba << QStringList{u"wait(true, false, left)"_s, u"wait(false, false, left)"_s};
}

void tst_AbstractSerialWaiting::bytesWrittenUnbuffered()
{
    QFETCH(QByteArray, incoming);
    QFETCH(QStringList, calls);
    AbstractSerial device;
    QVERIFY(device.open(Direct));
    QCOMPARE(device.write("out"_ba), 3);
    FakeSerialEngine::last()->incoming = incoming;
    if (!incoming.isEmpty()) {
        script({{.read = true}});
    }
    const QSignalSpy readyRead(&device, &QIODevice::readyRead);
    FakeSerialEngine::log().clear();
    DeviceReport report(device);
    QVERIFY(!device.waitForBytesWritten(100000));
    QCOMPARE(waits(), calls);
    QCOMPARE(report.take(), QStringList{writeTimeout});
    QCOMPARE(readyRead.size(), incoming.isEmpty() ? 0 : 1);
}

QTEST_GUILESS_MAIN(tst_AbstractSerialWaiting)
#include "tst_AbstractSerialWaiting.moc"
