#include "DeviceReport.h"
#include "ExposedSerial.h"
#include "FakeSerialEngine.h"
#include "serial/AbstractSerial.h"
#include "support/TestCase.h"

#include <QMetaMethod>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QString opened = u"Opened::Device is successfully opened. OK!"_s;
const QString closed = u"Closed::Device is successfully closed. OK!"_s;
const QString notOpen = u"Device is not open. Error!"_s;

} // namespace

// Opening, closing, resetting, and what all reports have in common.
class tst_AbstractSerial : public TestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void metaObject();
    void startsClosed();
    void openTurnsNotificationsOn_data();
    void openTurnsNotificationsOn();
    void openRefusesMode_data();
    void openRefusesMode();
    void openTwice();
    void openThatTheEngineRefuses();
    void openDropsWhatTheBuffersHeld();
    void close();
    void closeOfClosed();
    void closeDropsWhatTheBuffersHeld();
    void destructionClosesFirst();
    void destructionOfClosedReportsNothing();
    void reset_data();
    void reset();
    void resetOfClosed();
    void reportsBeforeItIsOpenAndAfterItIsClosed();
    void reportsOnlyWhenAsked();
    void reportCarriesTheTime();
    void onlyFailuresBecomeErrorStrings();
    void deviceNameWhileClosedAndOpen();
    void withoutEngine();
};

void tst_AbstractSerial::init()
{
    TestCase::init();
    FakeSerialEngine::log().clear();
}

void tst_AbstractSerial::cleanup()
{
    FakeSerialEngine::setAvailable(true);
}

void tst_AbstractSerial::metaObject()
{
    const QMetaObject &meta = AbstractSerial::staticMetaObject;
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        QVERIFY(method.methodType() == QMetaMethod::Signal);
        methods.append(QString::fromLatin1(method.methodSignature()) + u' '
                       + QString::fromLatin1(method.parameterNames().join(',')));
    }
    QCOMPARE(methods,
             (QStringList{u"signalStatus(QString,QDateTime) status,current"_s, u"exception() "_s,
                          u"ctsChanged(bool) value"_s, u"dsrChanged(bool) value"_s,
                          u"ringChanged(bool) value"_s}));
    QCOMPARE(meta.superClass(), &QIODevice::staticMetaObject);
}

void tst_AbstractSerial::startsClosed()
{
    AbstractSerial device;
    QVERIFY(!device.isOpen());
    QVERIFY(device.isSequential());
    QVERIFY(!device.isEmitStatus());
    QCOMPARE(device.readBufferSize(), 0);
    QCOMPARE(device.bytesToWrite(), 0);
    QVERIFY(!device.canReadLine());
    QCOMPARE(FakeSerialEngine::last()->parent(), &device);
    QCOMPARE(FakeSerialEngine::log(), QStringList());
}

void tst_AbstractSerial::openTurnsNotificationsOn_data()
{
    using Mode = QIODevice::OpenMode;
    QTest::addColumn<Mode>("mode");
    QTest::addColumn<QStringList>("calls");
    const QString read = u"setRead(true, false)"_s;
    const QString write = u"setWrite(true, false)"_s;
    const QString line = u"setLine(true, false)"_s;
    QTest::newRow("read") << Mode(QIODevice::ReadOnly) << QStringList{u"open(1)"_s, read, line};
    QTest::newRow("write") << Mode(QIODevice::WriteOnly) << QStringList{u"open(2)"_s, write, line};
    QTest::newRow("both") << Mode(QIODevice::ReadWrite)
                          << QStringList{u"open(3)"_s, read, write, line};
    QTest::newRow("both, unbuffered") << Mode(QIODevice::ReadWrite | QIODevice::Unbuffered)
                                      << QStringList{u"open(35)"_s, read, write, line};
}

void tst_AbstractSerial::openTurnsNotificationsOn()
{
    QFETCH(QIODevice::OpenMode, mode);
    QFETCH(QStringList, calls);
    AbstractSerial device;
    DeviceReport report(device);
    QVERIFY(device.open(mode));
    QVERIFY(device.isOpen());
    QCOMPARE(device.openMode(), mode);
    QCOMPARE(FakeSerialEngine::log(), calls);
    QCOMPARE(report.take(), QStringList{opened});
}

void tst_AbstractSerial::openRefusesMode_data()
{
    using Mode = QIODevice::OpenMode;
    QTest::addColumn<Mode>("mode");
    QTest::newRow("empty") << Mode();
    QTest::newRow("append") << (QIODevice::ReadWrite | QIODevice::Append);
    QTest::newRow("truncate") << (QIODevice::ReadWrite | QIODevice::Truncate);
    QTest::newRow("text") << (QIODevice::ReadWrite | QIODevice::Text);
    QTest::newRow("text, unbuffered")
        << (QIODevice::ReadOnly | QIODevice::Text | QIODevice::Unbuffered);
    QTest::newRow("append alone") << Mode(QIODevice::Append);
}

void tst_AbstractSerial::openRefusesMode()
{
    QFETCH(QIODevice::OpenMode, mode);
    AbstractSerial device;
    DeviceReport report(device);
    QVERIFY(!device.open(mode));
    QVERIFY(!device.isOpen());
    QCOMPARE(report.take(), QStringList{u"Opened::Opened mode unsupported. Error!"_s});
    QCOMPARE(device.errorString(), u"Opened::Opened mode unsupported. Error!"_s);
    QCOMPARE(FakeSerialEngine::log(), QStringList());
}

void tst_AbstractSerial::openTwice()
{
    AbstractSerial device;
    QVERIFY(device.open(QIODevice::ReadOnly));
    FakeSerialEngine::log().clear();
    DeviceReport report(device);
    QVERIFY(!device.open(QIODevice::ReadWrite));
    QCOMPARE(report.take(), QStringList{u"Device is already open. Error!"_s});
    QCOMPARE(device.errorString(), u"Device is already open. Error!"_s);
    // That comes before a look at the mode.
    QVERIFY(!device.open(QIODevice::NotOpen));
    QCOMPARE(report.take(), QStringList{u"Device is already open. Error!"_s});
    QVERIFY(device.isOpen());
    QCOMPARE(device.openMode(), QIODevice::OpenMode(QIODevice::ReadOnly));
    QCOMPARE(FakeSerialEngine::log(), QStringList());
}

void tst_AbstractSerial::openThatTheEngineRefuses()
{
    AbstractSerial device;
    FakeSerialEngine::last()->answer = false;
    DeviceReport report(device);
    QVERIFY(!device.open(QIODevice::ReadWrite));
    QVERIFY(!device.isOpen());
    QCOMPARE(report.take(), QStringList{u"Error opening. Error!"_s});
    QCOMPARE(device.errorString(), u"Error opening. Error!"_s);
    QCOMPARE(FakeSerialEngine::log(), QStringList{u"open(3)"_s});
}

// A notification that comes between two openings must leave nothing for the second.
void tst_AbstractSerial::openDropsWhatTheBuffersHeld()
{
    AbstractSerial device;
    QVERIFY(device.open(QIODevice::ReadWrite));
    device.close();
    FakeSerialEngine::last()->incoming = "late"_ba;
    QVERIFY(FakeSerialEngine::last()->readNotification());
    QCOMPARE(device.bytesAvailable(), 4);
    QVERIFY(device.open(QIODevice::ReadWrite));
    QCOMPARE(device.bytesAvailable(), 0);
}

void tst_AbstractSerial::close()
{
    AbstractSerial device;
    QVERIFY(device.open(QIODevice::ReadWrite));
    FakeSerialEngine::log().clear();
    DeviceReport report(device);
    const QSignalSpy aboutToClose(&device, &QIODevice::aboutToClose);
    device.close();
    QVERIFY(!device.isOpen());
    QCOMPARE(device.openMode(), QIODevice::OpenMode(QIODevice::NotOpen));
    QCOMPARE(FakeSerialEngine::log(),
             (QStringList{u"setRead(false, true)"_s, u"setWrite(false, true)"_s,
                          u"setLine(false, true)"_s, u"close()"_s}));
    QCOMPARE(report.take(), QStringList{closed});
    QCOMPARE(aboutToClose.size(), 1);
    QVERIFY(device.open(QIODevice::ReadWrite));
}

void tst_AbstractSerial::closeOfClosed()
{
    AbstractSerial device;
    DeviceReport report(device);
    device.close();
    QCOMPARE(report.take(), QStringList{u"Closed::Fail close device. Error!"_s});
    QCOMPARE(device.errorString(), u"Closed::Fail close device. Error!"_s);
    QCOMPARE(FakeSerialEngine::log(), QStringList());
}

void tst_AbstractSerial::closeDropsWhatTheBuffersHeld()
{
    AbstractSerial device;
    QVERIFY(device.open(QIODevice::ReadWrite));
    FakeSerialEngine::last()->incoming = "in\n"_ba;
    QVERIFY(FakeSerialEngine::last()->readNotification());
    QCOMPARE(device.write("out"_ba), 3);
    QCOMPARE(device.bytesAvailable(), 3);
    QVERIFY(device.canReadLine());
    QCOMPARE(device.bytesToWrite(), 3);
    device.close();
    QCOMPARE(device.bytesAvailable(), 0);
    QVERIFY(!device.canReadLine());
    QCOMPARE(device.bytesToWrite(), 0);
    QCOMPARE(FakeSerialEngine::last()->written, QByteArray());
}

void tst_AbstractSerial::destructionClosesFirst()
{
    auto device = std::make_unique<AbstractSerial>();
    QVERIFY(device->open(QIODevice::ReadWrite));
    QStringList messages;
    device->enableEmitStatus(true);
    connect(device.get(), &AbstractSerial::signalStatus, this,
            [&messages](const QString &status) { messages.append(status); });
    FakeSerialEngine::log().clear();
    device.reset();
    QCOMPARE(messages, QStringList{closed});
    QCOMPARE(FakeSerialEngine::log(),
             (QStringList{u"setRead(false, true)"_s, u"setWrite(false, true)"_s,
                          u"setLine(false, true)"_s, u"close()"_s, u"destroyed"_s}));
    QVERIFY(!FakeSerialEngine::last());
}

void tst_AbstractSerial::destructionOfClosedReportsNothing()
{
    auto device = std::make_unique<AbstractSerial>();
    QStringList messages;
    device->enableEmitStatus(true);
    connect(device.get(), &AbstractSerial::signalStatus, this,
            [&messages](const QString &status) { messages.append(status); });
    device.reset();
    QCOMPARE(messages, QStringList());
    QCOMPARE(FakeSerialEngine::log(), QStringList{u"destroyed"_s});
}

void tst_AbstractSerial::reset_data()
{
    QTest::addColumn<bool>("answer");
    QTest::addColumn<QString>("message");
    QTest::newRow("success") << true << u"Controls::Reset successfully. OK!"_s;
    QTest::newRow("failure") << false << u"Controls::Reset fail. Error!"_s;
}

void tst_AbstractSerial::reset()
{
    QFETCH(bool, answer);
    QFETCH(QString, message);
    AbstractSerial device;
    QVERIFY(device.open(QIODevice::ReadWrite));
    FakeSerialEngine *const engine = FakeSerialEngine::last();
    engine->incoming = "in"_ba;
    QVERIFY(engine->readNotification());
    QCOMPARE(device.write("out"_ba), 3);
    engine->answer = answer;
    FakeSerialEngine::log().clear();
    DeviceReport report(device);
    QCOMPARE(device.reset(), answer);
    QCOMPARE(report.take(), QStringList{message});
    QCOMPARE(FakeSerialEngine::log(), QStringList{u"reset()"_s});
    QCOMPARE(device.bytesAvailable(), 0);
    QCOMPARE(device.bytesToWrite(), 0);
    QVERIFY(device.isOpen());
}

void tst_AbstractSerial::resetOfClosed()
{
    AbstractSerial device;
    DeviceReport report(device);
    QVERIFY(!device.reset());
    QCOMPARE(report.take(), QStringList{notOpen});
    QCOMPARE(device.errorString(), notOpen);
    QCOMPARE(FakeSerialEngine::log(), QStringList());
}

void tst_AbstractSerial::reportsBeforeItIsOpenAndAfterItIsClosed()
{
    AbstractSerial device;
    device.enableEmitStatus(true);
    QList<std::pair<QString, bool>> reports;
    connect(&device, &AbstractSerial::signalStatus, this, [&](const QString &status) {
        reports.append({status, device.isOpen()});
    });
    QVERIFY(device.open(QIODevice::ReadWrite));
    device.close();
    QCOMPARE(reports, (QList<std::pair<QString, bool>>{{opened, false}, {closed, false}}));
}

void tst_AbstractSerial::reportsOnlyWhenAsked()
{
    AbstractSerial device;
    const QSignalSpy spy(&device, &AbstractSerial::signalStatus);
    QVERIFY(device.open(QIODevice::ReadWrite));
    device.close();
    device.close();
    QCOMPARE(spy.size(), 0);
    QCOMPARE(device.errorString(), u"Closed::Fail close device. Error!"_s);
    device.enableEmitStatus(true);
    QVERIFY(device.isEmitStatus());
    device.close();
    QCOMPARE(spy.size(), 1);
    device.enableEmitStatus(false);
    QVERIFY(!device.isEmitStatus());
    device.close();
    QCOMPARE(spy.size(), 1);
}

void tst_AbstractSerial::reportCarriesTheTime()
{
    AbstractSerial device;
    device.enableEmitStatus(true);
    const QSignalSpy spy(&device, &AbstractSerial::signalStatus);
    const QDateTime before = QDateTime::currentDateTime();
    QVERIFY(device.open(QIODevice::ReadWrite));
    const QDateTime after = QDateTime::currentDateTime();
    QCOMPARE(spy.size(), 1);
    const QDateTime current = spy.first().at(1).toDateTime();
    QVERIFY(before <= current);
    QVERIFY(current <= after);
}

void tst_AbstractSerial::onlyFailuresBecomeErrorStrings()
{
    AbstractSerial device;
    QVERIFY(device.open(QIODevice::ReadWrite));
    FakeSerialEngine::last()->answer = false;
    QVERIFY(!device.setDtr(true));
    QCOMPARE(device.errorString(), u"Controls::Set DTR fail. Error!"_s);
    FakeSerialEngine::last()->answer = true;
    QVERIFY(device.setDtr(true));
    QCOMPARE(device.errorString(), u"Controls::Set DTR fail. Error!"_s);
}

void tst_AbstractSerial::deviceNameWhileClosedAndOpen()
{
    AbstractSerial device;
    device.setDeviceName(u"ttyACM0"_s);
    QCOMPARE(device.deviceName(), u"ttyACM0"_s);
    QCOMPARE(FakeSerialEngine::last()->deviceName(), u"ttyACM0"_s);
    QVERIFY(device.open(QIODevice::ReadWrite));
    device.setDeviceName(u"ttyACM1"_s);
    QCOMPARE(device.deviceName(), u"ttyACM0"_s);
    device.close();
    device.setDeviceName(u"ttyACM1"_s);
    QCOMPARE(device.deviceName(), u"ttyACM1"_s);
}

void tst_AbstractSerial::withoutEngine()
{
    FakeSerialEngine::setAvailable(false);
    ExposedSerial device;
    DeviceReport report(device);
    QVERIFY(!device.open(QIODevice::ReadWrite));
    QCOMPARE(report.take(), QStringList{u"Error opening. Error!"_s});
    QVERIFY(!device.open(QIODevice::NotOpen));
    QCOMPARE(report.take(), QStringList{u"Opened::Opened mode unsupported. Error!"_s});
    device.close();
    QCOMPARE(report.take(), QStringList{u"Closed::Fail close device. Error!"_s});

    device.setDeviceName(u"ttyACM0"_s);
    QCOMPARE(device.deviceName(), QString());
    device.setReadBufferSize(5);
    QCOMPARE(device.readBufferSize(), 5);
    QCOMPARE(device.bytesAvailable(), 0);
    QCOMPARE(device.bytesToWrite(), 0);
    QVERIFY(!device.canReadLine());
    QVERIFY(device.baudRateMap().isEmpty());
    QVERIFY(device.dataBitsMap().isEmpty());
    QVERIFY(device.parityMap().isEmpty());
    QVERIFY(device.stopBitsMap().isEmpty());
    QVERIFY(device.flowControlMap().isEmpty());
    QCOMPARE(device.baudRate(), QString());
    QCOMPARE(device.dataBits(), QString());
    QCOMPARE(device.parity(), QString());
    QCOMPARE(device.stopBits(), QString());
    QCOMPARE(device.flowControl(), QString());
    QCOMPARE(report.take(), QStringList());

    char byte = 0;
    QVERIFY(!device.setBaudRate(9600));
    QVERIFY(!device.setParity(u"Even"_s));
    QVERIFY(!device.flush());
    QVERIFY(!device.reset());
    QVERIFY(!device.waitForReadyRead(-1));
    QVERIFY(!device.waitForBytesWritten(-1));
    QCOMPARE(device.readData(&byte, 1), -1);
    QCOMPARE(device.writeData(&byte, 1), -1);
    QCOMPARE(device.lineStatus(), AbstractSerial::LineStatus(AbstractSerial::LineErr));
    QCOMPARE(report.take(), QStringList(9, notOpen));
}

QTEST_GUILESS_MAIN(tst_AbstractSerial)
#include "tst_AbstractSerial.moc"
