#include "DeviceReport.h"
#include "FakeSerialEngine.h"
#include "serial/AbstractSerial.h"
#include "support/TestCase.h"

#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;

using Operation = std::function<bool(AbstractSerial &)>;
Q_DECLARE_METATYPE(Operation)

namespace {

const QString notOpen = u"Device is not open. Error!"_s;

// Every operation that answers bool, with its messages.
void addOperations()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<QString>("call");
    QTest::addColumn<QString>("successText");
    QTest::addColumn<QString>("failureText");
    const auto row = [](const char *name, const Operation &operation, const QString &call,
                        const QString &successText, const QString &failureText) {
        QTest::newRow(name) << operation << call << successText << failureText;
    };
    row(
        "baud rate", [](AbstractSerial &device) { return device.setBaudRate(300000); },
        u"setBaudRate(300000, 3)"_s, u"Controls::Baud rate is successfully set. OK!"_s,
        u"Parameters::Set baud rate fail. Error!"_s);
    row(
        "data bits",
        [](AbstractSerial &device) { return device.setDataBits(AbstractSerial::DataBits7); },
        u"setDataBits(2)"_s, u"Controls::Data bits is successfully set. OK!"_s,
        u"Parameters::Set data bits fail. Error!"_s);
    row(
        "parity",
        [](AbstractSerial &device) { return device.setParity(AbstractSerial::ParityMark); },
        u"setParity(3)"_s, u"Controls::Parity is successfully set. OK!"_s,
        u"Parameters::Set parity fail. Error!"_s);
    row(
        "stop bits",
        [](AbstractSerial &device) { return device.setStopBits(AbstractSerial::StopBits2); },
        u"setStopBits(2)"_s, u"Controls::Stop bits is successfully set. OK!"_s,
        u"Parameters::Set stop bits fail. Error!"_s);
    row(
        "flow control",
        [](AbstractSerial &device) { return device.setFlowControl(AbstractSerial::FlowHardware); },
        u"setFlowControl(1)"_s, u"Controls::Flow is successfully set. OK!"_s,
        u"Parameters::Set flow control fail. Error!"_s);
    row(
        "DTR", [](AbstractSerial &device) { return device.setDtr(true); }, u"setDtr(true)"_s,
        u"Controls::DTR is successfully changed. OK!"_s, u"Controls::Set DTR fail. Error!"_s);
    row(
        "RTS", [](AbstractSerial &device) { return device.setRts(false); }, u"setRts(false)"_s,
        u"Controls::RTS is successfully changed. OK!"_s, u"Controls::Set RTS fail. Error!"_s);
    row(
        "send break", [](AbstractSerial &device) { return device.sendBreak(25); },
        u"sendBreak(25)"_s, u"Controls::Send break successfully. OK!"_s,
        u"Controls::Send break fail. Error!"_s);
    row(
        "set break", [](AbstractSerial &device) { return device.setBreak(true); },
        u"setBreak(true)"_s, u"Controls::Set break successfully. OK!"_s,
        u"Controls::Set break fail. Error!"_s);
    row(
        "flush", [](AbstractSerial &device) { return device.flush(); }, u"flush()"_s,
        u"Controls::Flush successfully. OK!"_s, u"Controls::Flush fail. Error!"_s);
    row(
        "reset", [](AbstractSerial &device) { return device.reset(); }, u"reset()"_s,
        u"Controls::Reset successfully. OK!"_s, u"Controls::Reset fail. Error!"_s);
}

} // namespace

// The line parameters and controls: what reaches the engine, what is reported and answered.
class tst_AbstractSerialControls : public TestCase
{
    Q_OBJECT

private slots:
    void init();
    void success_data() { addOperations(); }
    void success();
    void failure_data() { addOperations(); }
    void failure();
    void closedDevice_data() { addOperations(); }
    void closedDevice();
    void valueByText_data();
    void valueByText();
    void valueByUnknownText_data();
    void valueByUnknownText();
    void presentLine();
    void presentLineOutsideTheTables();
    void gettersOnNewDevice();
    void timeouts();
    void timeoutsOfClosed();
    void sendBreakOfNegativeTime();
    void flushWritesOneBlock();
    void flushOfUnwrittenBlock_data();
    void flushOfUnwrittenBlock();
};

void tst_AbstractSerialControls::init()
{
    TestCase::init();
    FakeSerialEngine::log().clear();
}

void tst_AbstractSerialControls::success()
{
    QFETCH(Operation, operation);
    QFETCH(QString, call);
    QFETCH(QString, successText);
    AbstractSerial device;
    QVERIFY(device.open(QIODevice::ReadWrite));
    const QString errorBefore = device.errorString();
    FakeSerialEngine::log().clear();
    DeviceReport report(device);
    QVERIFY(operation(device));
    QCOMPARE(FakeSerialEngine::log(), QStringList{call});
    QCOMPARE(report.take(), QStringList{successText});
    QCOMPARE(device.errorString(), errorBefore);
}

void tst_AbstractSerialControls::failure()
{
    QFETCH(Operation, operation);
    QFETCH(QString, call);
    QFETCH(QString, failureText);
    AbstractSerial device;
    QVERIFY(device.open(QIODevice::ReadWrite));
    FakeSerialEngine::last()->answer = false;
    FakeSerialEngine::log().clear();
    DeviceReport report(device);
    QVERIFY(!operation(device));
    QCOMPARE(FakeSerialEngine::log(), QStringList{call});
    QCOMPARE(report.take(), QStringList{failureText});
    QCOMPARE(device.errorString(), failureText);
}

void tst_AbstractSerialControls::closedDevice()
{
    QFETCH(Operation, operation);
    AbstractSerial device;
    DeviceReport report(device);
    QVERIFY(!operation(device));
    QCOMPARE(FakeSerialEngine::log(), QStringList());
    QCOMPARE(report.take(), QStringList{notOpen});
    QCOMPARE(device.errorString(), notOpen);
}

void tst_AbstractSerialControls::valueByText_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<QString>("call");
    const auto rows = [](const QMap<int, QString> &texts, const char *name,
                         bool (AbstractSerial::*set)(const QString &)) {
        for (auto it = texts.begin(); it != texts.end(); ++it) {
            const QString text = it.value();
            QTest::addRow("%s %d", name, it.key())
                << Operation([=](AbstractSerial &device) { return (device.*set)(text); })
                << u"%1(%2)"_s.arg(QLatin1String(name)).arg(it.key());
        }
    };
    const AbstractSerial device;
    rows(device.dataBitsMap(), "setDataBits", &AbstractSerial::setDataBits);
    rows(device.parityMap(), "setParity", &AbstractSerial::setParity);
    rows(device.stopBitsMap(), "setStopBits", &AbstractSerial::setStopBits);
    rows(device.flowControlMap(), "setFlowControl", &AbstractSerial::setFlowControl);
}

// The text of the undefined value is in the table, too, and the engine refuses that value.
void tst_AbstractSerialControls::valueByText()
{
    QFETCH(Operation, operation);
    QFETCH(QString, call);
    AbstractSerial device;
    QVERIFY(device.open(QIODevice::ReadWrite));
    FakeSerialEngine::log().clear();
    QCOMPARE(operation(device), !call.endsWith(u"(-1)"));
    QCOMPARE(FakeSerialEngine::log(), QStringList{call});
}

void tst_AbstractSerialControls::valueByUnknownText_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<QString>("call");
    QTest::addColumn<QString>("message");
    QTest::newRow("data bits") << Operation([](AbstractSerial &device) {
        return device.setDataBits(u"8"_s);
    }) << u"setDataBits(-1)"_s << u"Parameters::Set data bits fail. Error!"_s;
    QTest::newRow("parity in lower case")
        << Operation([](AbstractSerial &device) { return device.setParity(u"even"_s); })
        << u"setParity(-1)"_s << u"Parameters::Set parity fail. Error!"_s;
    QTest::newRow("stop bits with a blank")
        << Operation([](AbstractSerial &device) { return device.setStopBits(u"1 "_s); })
        << u"setStopBits(-1)"_s << u"Parameters::Set stop bits fail. Error!"_s;
    QTest::newRow("flow control, empty")
        << Operation([](AbstractSerial &device) { return device.setFlowControl(QString()); })
        << u"setFlowControl(-1)"_s << u"Parameters::Set flow control fail. Error!"_s;
}

void tst_AbstractSerialControls::valueByUnknownText()
{
    QFETCH(Operation, operation);
    QFETCH(QString, call);
    QFETCH(QString, message);
    AbstractSerial device;
    QVERIFY(device.open(QIODevice::ReadWrite));
    FakeSerialEngine::log().clear();
    DeviceReport report(device);
    QVERIFY(!operation(device));
    QCOMPARE(FakeSerialEngine::log(), QStringList{call});
    QCOMPARE(report.take(), QStringList{message});
}

void tst_AbstractSerialControls::presentLine()
{
    const AbstractSerial device;
    FakeSerialEngine::last()->setLine(0, 4, 1, 2);
    QCOMPARE(device.dataBits(), u"5 bit"_s);
    QCOMPARE(device.parity(), u"Space"_s);
    QCOMPARE(device.stopBits(), u"1.5"_s);
    QCOMPARE(device.flowControl(), u"Xon/Xoff"_s);
    FakeSerialEngine::last()->setLine(-1, -1, -1, -1);
    QCOMPARE(device.dataBits(), u"Undefined data bits"_s);
    QCOMPARE(device.parity(), u"Undefined parity"_s);
    QCOMPARE(device.stopBits(), u"Undefined stop bits"_s);
    QCOMPARE(device.flowControl(), u"Undefined flow"_s);
}

void tst_AbstractSerialControls::presentLineOutsideTheTables()
{
    const AbstractSerial device;
    FakeSerialEngine::last()->setLine(4, 5, 3, 3);
    QCOMPARE(device.dataBits(), QString());
    QCOMPARE(device.parity(), QString());
    QCOMPARE(device.stopBits(), QString());
    QCOMPARE(device.flowControl(), QString());
}

void tst_AbstractSerialControls::gettersOnNewDevice()
{
    const AbstractSerial device;
    QCOMPARE(device.dataBits(), u"8 bit"_s);
    QCOMPARE(device.parity(), u"None"_s);
    QCOMPARE(device.stopBits(), u"1"_s);
    QCOMPARE(device.flowControl(), u"Disable"_s);
}

void tst_AbstractSerialControls::timeouts()
{
    AbstractSerial device;
    QVERIFY(device.open(QIODevice::ReadWrite));
    FakeSerialEngine::log().clear();
    DeviceReport report(device);
    device.setCharIntervalTimeout(100);
    device.setTotalReadConstantTimeout(-1);
    // The engine's view of it is not asked for, so nothing is reported, not even a failure.
    FakeSerialEngine::last()->answer = false;
    device.setCharIntervalTimeout(0);
    QCOMPARE(FakeSerialEngine::log(),
             (QStringList{u"setCharIntervalTimeout(100)"_s, u"setTotalReadConstantTimeout(-1)"_s,
                          u"setCharIntervalTimeout(0)"_s}));
    QCOMPARE(report.take(), QStringList());
}

void tst_AbstractSerialControls::timeoutsOfClosed()
{
    AbstractSerial device;
    DeviceReport report(device);
    device.setCharIntervalTimeout(100);
    QCOMPARE(report.take(), QStringList{notOpen});
    device.setTotalReadConstantTimeout(100);
    QCOMPARE(report.take(), QStringList{notOpen});
    QCOMPARE(FakeSerialEngine::log(), QStringList());
}

void tst_AbstractSerialControls::sendBreakOfNegativeTime()
{
    AbstractSerial device;
    QVERIFY(device.open(QIODevice::ReadWrite));
    FakeSerialEngine::log().clear();
    QVERIFY(device.sendBreak(-5));
    QCOMPARE(FakeSerialEngine::log(), QStringList{u"sendBreak(0)"_s});
}

void tst_AbstractSerialControls::flushWritesOneBlock()
{
    AbstractSerial device;
    QVERIFY(device.open(QIODevice::ReadWrite));
    // Two chunks of the buffer, of which one goes.
    QCOMPARE(device.write(QByteArray(16384, 'a')), 16384);
    QCOMPARE(device.write(QByteArray(10, 'b')), 10);
    FakeSerialEngine::log().clear();
    DeviceReport report(device);
    QVERIFY(device.flush());
    QCOMPARE(FakeSerialEngine::log(), QStringList{u"write(16384)"_s});
    QCOMPARE(FakeSerialEngine::last()->written, QByteArray(16384, 'a'));
    QCOMPARE(device.bytesToWrite(), 10);
    QCOMPARE(report.take(), QStringList{u"Controls::Flush successfully. OK!"_s});
}

void tst_AbstractSerialControls::flushOfUnwrittenBlock_data()
{
    QTest::addColumn<qint64>("answer");
    QTest::addColumn<qint64>("left");
    QTest::newRow("refused") << qint64(-1) << qint64(0);
    QTest::newRow("nothing taken") << qint64(0) << qint64(4);
}

void tst_AbstractSerialControls::flushOfUnwrittenBlock()
{
    QFETCH(qint64, answer);
    QFETCH(qint64, left);
    AbstractSerial device;
    QVERIFY(device.open(QIODevice::ReadWrite));
    QCOMPARE(device.write("lost"_ba), 4);
    FakeSerialEngine::last()->writeAnswer = answer;
    FakeSerialEngine::log().clear();
    DeviceReport report(device);
    QVERIFY(device.flush());
    QCOMPARE(FakeSerialEngine::log(), (QStringList{u"write(4)"_s, u"flush()"_s}));
    QCOMPARE(device.bytesToWrite(), left);
    QCOMPARE(report.take(), QStringList{u"Controls::Flush successfully. OK!"_s});
}

QTEST_GUILESS_MAIN(tst_AbstractSerialControls)
#include "tst_AbstractSerialControls.moc"
