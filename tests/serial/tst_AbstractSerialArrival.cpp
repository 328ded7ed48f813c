#include "FakeSerialEngine.h"
#include "serial/AbstractSerial.h"
#include "support/TestCase.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr QIODevice::OpenMode Buffered = QIODevice::ReadWrite;
constexpr QIODevice::OpenMode Direct = QIODevice::ReadWrite | QIODevice::Unbuffered;

// A character came for the device that was made last.
bool notify(const QByteArray &bytes)
{
    FakeSerialEngine::last()->incoming += bytes;
    return FakeSerialEngine::last()->readNotification();
}

} // namespace

// What a read notification does: the buffer, its limit, and notifications within notifications.
class tst_AbstractSerialArrival : public TestCase
{
    Q_OBJECT

private slots:
    void init();
    void notificationFillsTheBuffer();
    void notificationWithoutBytes_data();
    void notificationWithoutBytes();
    void notificationWithFailedRead_data();
    void notificationWithFailedRead();
    void shortReadKeepsOnlyWhatCame();
    void notificationUnbuffered();
    void notificationUnbufferedWithoutBytes_data();
    void notificationUnbufferedWithoutBytes();
    void limitCutsTheRead();
    void limitReachedStopsTheNotification();
    void limitOfReadBufferSize_data();
    void limitOfReadBufferSize();
    void unchangedLimitDoesNothing();
    void limitSetFromSlotDoesNothing();
    void nestedNotificationEmitsOnce();
    void nestedNotificationRestsAndComesBack();
    void nestedReadKeepsTheLimit();
    void slotThatClosesLeavesThePortUnwatched();
    void resetInSlotAllowsAnotherReadyRead();
    void resetInSlotReportsBeforeThat();
};

void tst_AbstractSerialArrival::init()
{
    TestCase::init();
    FakeSerialEngine::log().clear();
}

void tst_AbstractSerialArrival::notificationFillsTheBuffer()
{
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    const QSignalSpy readyRead(&device, &QIODevice::readyRead);
    FakeSerialEngine::log().clear();
    QVERIFY(notify("12"_ba));
    QCOMPARE(readyRead.size(), 1);
    QVERIFY(notify("345"_ba));
    QCOMPARE(readyRead.size(), 2);
    QCOMPARE(FakeSerialEngine::log(), (QStringList{u"read(2)"_s, u"read(3)"_s}));
    QCOMPARE(device.readAll(), "12345"_ba);
}

void tst_AbstractSerialArrival::notificationWithoutBytes_data()
{
    QTest::addColumn<qint64>("count");
    QTest::newRow("none") << qint64(0);
    QTest::newRow("failed count") << qint64(-1);
}

void tst_AbstractSerialArrival::notificationWithoutBytes()
{
    QFETCH(qint64, count);
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    FakeSerialEngine::last()->countAnswer = count;
    const QSignalSpy readyRead(&device, &QIODevice::readyRead);
    FakeSerialEngine::log().clear();
    QVERIFY(!FakeSerialEngine::last()->readNotification());
    QCOMPARE(FakeSerialEngine::log(), QStringList());
    QCOMPARE(readyRead.size(), 0);
    // That was not a notification that is still being handled: the next one is served.
    FakeSerialEngine::last()->countAnswer.reset();
    QVERIFY(notify("1"_ba));
    QCOMPARE(FakeSerialEngine::log(), QStringList{u"read(1)"_s});
    QCOMPARE(readyRead.size(), 1);
}

void tst_AbstractSerialArrival::notificationWithFailedRead_data()
{
    QTest::addColumn<qint64>("answer");
    QTest::newRow("nothing came") << qint64(0);
    QTest::newRow("failure") << qint64(-1);
}

void tst_AbstractSerialArrival::notificationWithFailedRead()
{
    QFETCH(qint64, answer);
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    QVERIFY(notify("1"_ba));
    FakeSerialEngine::last()->readAnswer = answer;
    const QSignalSpy readyRead(&device, &QIODevice::readyRead);
    QVERIFY(!notify("23"_ba));
    QCOMPARE(readyRead.size(), 0);
    QCOMPARE(device.bytesAvailable(), 1);
    QCOMPARE(device.readAll(), "1"_ba);
}

void tst_AbstractSerialArrival::shortReadKeepsOnlyWhatCame()
{
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    FakeSerialEngine::last()->countAnswer = 10;
    QVERIFY(notify("123"_ba));
    QCOMPARE(device.bytesAvailable(), 3);
    QCOMPARE(device.readAll(), "123"_ba);
}

void tst_AbstractSerialArrival::notificationUnbuffered()
{
    AbstractSerial device;
    QVERIFY(device.open(Direct));
    const QSignalSpy readyRead(&device, &QIODevice::readyRead);
    FakeSerialEngine::log().clear();
    QVERIFY(notify("12"_ba));
    QCOMPARE(readyRead.size(), 1);
    QCOMPARE(FakeSerialEngine::log(), QStringList());
    QCOMPARE(FakeSerialEngine::last()->incoming, "12"_ba);
}

void tst_AbstractSerialArrival::notificationUnbufferedWithoutBytes_data()
{
    QTest::addColumn<qint64>("count");
    QTest::addColumn<bool>("isOn");
    QTest::newRow("none, on") << qint64(0) << true;
    QTest::newRow("none, off") << qint64(0) << false;
    QTest::newRow("failed count, off") << qint64(-1) << false;
}

void tst_AbstractSerialArrival::notificationUnbufferedWithoutBytes()
{
    QFETCH(qint64, count);
    QFETCH(bool, isOn);
    AbstractSerial device;
    QVERIFY(device.open(Direct));
    FakeSerialEngine *const engine = FakeSerialEngine::last();
    engine->countAnswer = count;
    engine->setReadNotificationEnabled(isOn, false);
    const QSignalSpy readyRead(&device, &QIODevice::readyRead);
    FakeSerialEngine::log().clear();
    QVERIFY(engine->readNotification());
    QCOMPARE(FakeSerialEngine::log(),
             isOn ? QStringList() : QStringList{u"setRead(true, false)"_s});
    QVERIFY(engine->isReadNotificationEnabled());
    QCOMPARE(readyRead.size(), 0);
}

void tst_AbstractSerialArrival::limitCutsTheRead()
{
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    device.setReadBufferSize(5);
    QVERIFY(notify("123"_ba));
    FakeSerialEngine::log().clear();
    QVERIFY(notify("4567"_ba));
    QCOMPARE(FakeSerialEngine::log(), (QStringList{u"read(2)"_s, u"setRead(false, false)"_s}));
    QCOMPARE(device.bytesAvailable(), 5);
    QCOMPARE(FakeSerialEngine::last()->incoming, "67"_ba);
}

void tst_AbstractSerialArrival::limitReachedStopsTheNotification()
{
    AbstractSerial device;
    FakeSerialEngine *const engine = FakeSerialEngine::last();
    device.setReadBufferSize(4);
    QVERIFY(device.open(Buffered));
    const QSignalSpy readyRead(&device, &QIODevice::readyRead);
    QVERIFY(notify("123456"_ba));
    QVERIFY(!engine->isReadNotificationEnabled());
    QCOMPARE(readyRead.size(), 1);
    // At the limit nothing more is taken.
    FakeSerialEngine::log().clear();
    QVERIFY(!engine->readNotification());
    QCOMPARE(FakeSerialEngine::log(), QStringList());
    QCOMPARE(readyRead.size(), 1);
    // Reading makes room.
    QCOMPARE(device.read(1), "1"_ba);
    QVERIFY(engine->isReadNotificationEnabled());
    QVERIFY(engine->readNotification());
    QCOMPARE(device.readAll(), "23456"_ba);
}

void tst_AbstractSerialArrival::limitOfReadBufferSize_data()
{
    QTest::addColumn<qint64>("limit");
    QTest::addColumn<bool>("isWatched");
    QTest::newRow("no limit") << qint64(0) << true;
    QTest::newRow("above what is held") << qint64(4) << true;
    QTest::newRow("what is held") << qint64(3) << false;
    QTest::newRow("below what is held") << qint64(2) << false;
}

void tst_AbstractSerialArrival::limitOfReadBufferSize()
{
    QFETCH(qint64, limit);
    QFETCH(bool, isWatched);
    AbstractSerial device;
    FakeSerialEngine *const engine = FakeSerialEngine::last();
    QVERIFY(device.open(Buffered));
    device.setReadBufferSize(100);
    QVERIFY(notify("123"_ba));
    engine->setReadNotificationEnabled(false, false);
    FakeSerialEngine::log().clear();
    device.setReadBufferSize(limit);
    QCOMPARE(device.readBufferSize(), limit);
    QCOMPARE(FakeSerialEngine::log(),
             isWatched ? QStringList{u"setRead(true, false)"_s} : QStringList());
    QCOMPARE(notify("4"_ba), isWatched);
}

void tst_AbstractSerialArrival::unchangedLimitDoesNothing()
{
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    device.setReadBufferSize(5);
    FakeSerialEngine::log().clear();
    device.setReadBufferSize(5);
    QCOMPARE(FakeSerialEngine::log(), QStringList());
}

void tst_AbstractSerialArrival::limitSetFromSlotDoesNothing()
{
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    connect(&device, &QIODevice::readyRead, this, [&device] {
        FakeSerialEngine::log().clear();
        device.setReadBufferSize(100);
        QCOMPARE(FakeSerialEngine::log(), QStringList());
    });
    QVERIFY(notify("1"_ba));
    QCOMPARE(device.readBufferSize(), 100);
}

void tst_AbstractSerialArrival::nestedNotificationEmitsOnce()
{
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    int emitted = 0;
    connect(&device, &QIODevice::readyRead, this, [&emitted] {
        ++emitted;
        QVERIFY(notify("nested"_ba));
    });
    QVERIFY(notify("outer "_ba));
    QCOMPARE(emitted, 1);
    QCOMPARE(device.readAll(), "outer nested"_ba);
    QVERIFY(FakeSerialEngine::last()->isReadNotificationEnabled());
}

// While nothing comes in the slot, the notifier stays off from its first useless call on.
void tst_AbstractSerialArrival::nestedNotificationRestsAndComesBack()
{
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    FakeSerialEngine *const engine = FakeSerialEngine::last();
    connect(&device, &QIODevice::readyRead, this, [engine] {
        FakeSerialEngine::log().clear();
        QVERIFY(!engine->readNotification());
        QVERIFY(!engine->isReadNotificationEnabled());
    });
    QVERIFY(notify("1"_ba));
    QCOMPARE(FakeSerialEngine::log(),
             (QStringList{u"setRead(false, false)"_s, u"setRead(true, false)"_s}));
    QVERIFY(engine->isReadNotificationEnabled());
}

// The state saved during a nesting is of no use later: it must not undo the stop at the limit.
void tst_AbstractSerialArrival::nestedReadKeepsTheLimit()
{
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    FakeSerialEngine *const engine = FakeSerialEngine::last();
    device.setReadBufferSize(4);
    const auto connection = connect(&device, &QIODevice::readyRead, this, [&device, engine] {
        QVERIFY(!engine->readNotification());
        QCOMPARE(device.readAll(), "1"_ba);
    });
    QVERIFY(notify("1"_ba));
    QVERIFY(engine->isReadNotificationEnabled());
    QVERIFY(disconnect(connection));
    QVERIFY(notify("2345"_ba));
    QVERIFY(!engine->isReadNotificationEnabled());
}

void tst_AbstractSerialArrival::slotThatClosesLeavesThePortUnwatched()
{
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    FakeSerialEngine *const engine = FakeSerialEngine::last();
    connect(&device, &QIODevice::readyRead, this, [&device, engine] {
        QVERIFY(!engine->readNotification());
        device.close();
    });
    QVERIFY(notify("1"_ba));
    QVERIFY(!device.isOpen());
    QVERIFY(!engine->isReadNotificationEnabled());
}

void tst_AbstractSerialArrival::resetInSlotAllowsAnotherReadyRead()
{
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    int emitted = 0;
    connect(&device, &QIODevice::readyRead, this, [&device, &emitted] {
        if (++emitted == 1) {
            QVERIFY(device.reset());
            QVERIFY(notify("2"_ba));
        }
    });
    QVERIFY(notify("1"_ba));
    QCOMPARE(emitted, 2);
    QCOMPARE(device.readAll(), "2"_ba);
}

// What comes while reset() reports still belongs to the readyRead() that goes on.
void tst_AbstractSerialArrival::resetInSlotReportsBeforeThat()
{
    AbstractSerial device;
    QVERIFY(device.open(Buffered));
    device.enableEmitStatus(true);
    int emitted = 0;
    int emittedInReport = 0;
    connect(&device, &AbstractSerial::signalStatus, this, [&] {
        QVERIFY(notify("2"_ba));
        emittedInReport = emitted;
    });
    connect(&device, &QIODevice::readyRead, this, [&] {
        if (++emitted == 1) {
            QVERIFY(device.reset());
        }
    });
    QVERIFY(notify("1"_ba));
    QCOMPARE(emittedInReport, 1);
    QCOMPARE(emitted, 1);
    QCOMPARE(device.readAll(), "2"_ba);
}

QTEST_GUILESS_MAIN(tst_AbstractSerialArrival)
#include "tst_AbstractSerialArrival.moc"
