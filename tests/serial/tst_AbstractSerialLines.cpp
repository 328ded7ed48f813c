#include "DeviceReport.h"
#include "FakeSerialEngine.h"
#include "serial/AbstractSerial.h"
#include "support/TestCase.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// The changes of modem lines that a device tells, as "CTS on".
class LineChanges : public QStringList
{
public:
    explicit LineChanges(AbstractSerial &device)
    {
        watch(device, &AbstractSerial::ctsChanged, u"CTS"_s);
        watch(device, &AbstractSerial::dsrChanged, u"DSR"_s);
        watch(device, &AbstractSerial::ringChanged, u"RI"_s);
    }

    QStringList take() { return std::exchange(static_cast<QStringList &>(*this), {}); }

private:
    void watch(AbstractSerial &device, void (AbstractSerial::*changed)(bool), const QString &line)
    {
        QObject::connect(&device, changed, &device, [this, line](bool value) {
            append(line + (value ? u" on"_s : u" off"_s));
        });
    }
};

// The states outlive the devices, so each test begins by turning the lines off.
void turnLinesOff(FakeSerialEngine *engine)
{
    engine->lines = {};
    engine->lineNotification();
}

} // namespace

// The modem lines and the error of the line.
class tst_AbstractSerialLines : public TestCase
{
    Q_OBJECT

private slots:
    void init();
    void exceptionNotification();
    void lineNotification();
    void lineStateIsStoredBeforeItIsTold();
    void lineStatesBelongToTheProcess();
    void lineStatusAnswers();
    void lineStatusWithError();
    void lineStatusOfClosed();
};

void tst_AbstractSerialLines::init()
{
    TestCase::init();
    FakeSerialEngine::log().clear();
}

void tst_AbstractSerialLines::exceptionNotification()
{
    AbstractSerial device;
    QVERIFY(device.open(QIODevice::ReadWrite));
    const QSignalSpy spy(&device, &AbstractSerial::exception);
    QVERIFY(FakeSerialEngine::last()->exceptionNotification());
    QCOMPARE(spy.size(), 1);
}

void tst_AbstractSerialLines::lineNotification()
{
    AbstractSerial device;
    QVERIFY(device.open(QIODevice::ReadWrite));
    FakeSerialEngine *const engine = FakeSerialEngine::last();
    turnLinesOff(engine);
    LineChanges changes(device);

    engine->lines = AbstractSerial::LineCTS | AbstractSerial::LineDSR | AbstractSerial::LineRI;
    QVERIFY(engine->lineNotification());
    QCOMPARE(changes.take(), (QStringList{u"CTS on"_s, u"DSR on"_s, u"RI on"_s}));
    QVERIFY(engine->lineNotification());
    QCOMPARE(changes.take(), QStringList());
    engine->lines = AbstractSerial::LineCTS | AbstractSerial::LineRI | AbstractSerial::LineDCD;
    QVERIFY(engine->lineNotification());
    QCOMPARE(changes.take(), QStringList{u"DSR off"_s});
    engine->lines = AbstractSerial::LineDTR | AbstractSerial::LineRTS;
    QVERIFY(engine->lineNotification());
    QCOMPARE(changes.take(), (QStringList{u"CTS off"_s, u"RI off"_s}));
}

// A slot that runs the event loop may bring the next notification: it finds the new state.
void tst_AbstractSerialLines::lineStateIsStoredBeforeItIsTold()
{
    AbstractSerial device;
    QVERIFY(device.open(QIODevice::ReadWrite));
    FakeSerialEngine *const engine = FakeSerialEngine::last();
    turnLinesOff(engine);
    LineChanges changes(device);
    int nested = 0;
    connect(&device, &AbstractSerial::ctsChanged, this, [&] {
        if (++nested == 1) {
            QVERIFY(engine->lineNotification());
        }
    });
    engine->lines = AbstractSerial::LineCTS | AbstractSerial::LineDSR;
    QVERIFY(engine->lineNotification());
    QCOMPARE(nested, 1);
    QCOMPARE(changes.take(), (QStringList{u"CTS on"_s, u"DSR on"_s}));
}

void tst_AbstractSerialLines::lineStatesBelongToTheProcess()
{
    AbstractSerial first;
    FakeSerialEngine *const firstEngine = FakeSerialEngine::last();
    AbstractSerial second;
    FakeSerialEngine *const secondEngine = FakeSerialEngine::last();
    turnLinesOff(firstEngine);
    LineChanges firstChanges(first);
    LineChanges secondChanges(second);

    firstEngine->lines = AbstractSerial::LineCTS;
    QVERIFY(firstEngine->lineNotification());
    QCOMPARE(firstChanges.take(), QStringList{u"CTS on"_s});
    // The second device's CTS is on, too, which is no change to what the first one saw.
    secondEngine->lines = AbstractSerial::LineCTS;
    QVERIFY(secondEngine->lineNotification());
    QCOMPARE(secondChanges.take(), QStringList());
    secondEngine->lines = {};
    QVERIFY(secondEngine->lineNotification());
    QCOMPARE(secondChanges.take(), QStringList{u"CTS off"_s});
    QCOMPARE(firstChanges.take(), QStringList());
}

void tst_AbstractSerialLines::lineStatusAnswers()
{
    AbstractSerial device;
    QVERIFY(device.open(QIODevice::ReadWrite));
    const AbstractSerial::LineStatus lines = AbstractSerial::LineCTS | AbstractSerial::LineDTR;
    FakeSerialEngine::last()->lines = lines;
    FakeSerialEngine::log().clear();
    DeviceReport report(device);
    QCOMPARE(device.lineStatus(), lines);
    QCOMPARE(FakeSerialEngine::log(), QStringList{u"lineStatus()"_s});
    QCOMPARE(report.take(), QStringList{u"Controls::Status lines successfully get. OK!"_s});
}

void tst_AbstractSerialLines::lineStatusWithError()
{
    AbstractSerial device;
    QVERIFY(device.open(QIODevice::ReadWrite));
    const AbstractSerial::LineStatus lines = AbstractSerial::LineErr | AbstractSerial::LineDTR;
    FakeSerialEngine::last()->lines = lines;
    DeviceReport report(device);
    QCOMPARE(device.lineStatus(), lines);
    QCOMPARE(report.take(), QStringList{u"Controls::Get lines status fail. Error!"_s});
    QCOMPARE(device.errorString(), u"Controls::Get lines status fail. Error!"_s);
}

void tst_AbstractSerialLines::lineStatusOfClosed()
{
    AbstractSerial device;
    FakeSerialEngine::last()->lines = AbstractSerial::LineCTS;
    DeviceReport report(device);
    QCOMPARE(device.lineStatus(), AbstractSerial::LineStatus(AbstractSerial::LineErr));
    QCOMPARE(report.take(), QStringList{u"Device is not open. Error!"_s});
    QCOMPARE(FakeSerialEngine::log(), QStringList());
}

QTEST_GUILESS_MAIN(tst_AbstractSerialLines)
#include "tst_AbstractSerialLines.moc"
