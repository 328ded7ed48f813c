#include "comm/Answers.h"
#include "comm/HandlerProbe.h"
#include "comm/QSerialCommandHandler.h"
#include "comm/ScriptedPort.h"
#include "comm/SignalLog.h"
#include "serial/AbstractSerial.h"
#include "simulator/serial/LineSettings.h"
#include "support/DebugLog.h"
#include "support/SimulatedPort.h"
#include "support/TestCase.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <sys/file.h>
#include <termios.h>

using namespace Qt::StringLiterals;

namespace {

QString settingsOf(const ScriptedPort &port)
{
    const auto settings = simulator::readLineSettings(port.masterFd());
    return settings ? QString::fromStdString(settings->toText()) : QString();
}

bool hasFlowControl(const ScriptedPort &port)
{
    termios line{};
    return ::tcgetattr(port.masterFd(), &line) == 0
        && ((line.c_cflag & CRTSCTS) || (line.c_iflag & (IXON | IXOFF)));
}

/// Leaves the line as another program might: 19200 baud, two stop bits, both flow controls.
void setUnusualLine(const ScriptedPort &port)
{
    termios line{};
    QCOMPARE(::tcgetattr(port.masterFd(), &line), 0);
    ::cfsetspeed(&line, B19200);
    line.c_cflag |= CSTOPB | CRTSCTS;
    line.c_iflag |= IXON | IXOFF;
    QCOMPARE(::tcsetattr(port.masterFd(), TCSANOW, &line), 0);
}

} // namespace

/// Opening, setting, closing and losing the port.
class tst_QSerialCommandHandlerPort : public TestCase
{
    Q_OBJECT

private slots:
    void open();
    void openFails_data();
    void openFails();
    void openFailsOnAPortHeldHere();
    void openOfAnOpenPortEndsClosed();
    void close();
    void reopen();
    void reopenAfterAFailedOpen();
    void destructorLetsGoOfThePort();
    void openKeepsTheLine();
    void setBaudrate_data();
    void setBaudrate();
    void unknownRateKeepsTheRate_data();
    void unknownRateKeepsTheRate();
    void rateIsNotSetByTheNextOpen();
    void deviceSignalsReachTheSlotsOnce();
    void ctsIsAGate();
    void pulledOutWhileIdle();
    void pulledOutInMidExchange();
};

void tst_QSerialCommandHandlerPort::open()
{
    ScriptedPort port;
    QSerialCommandHandler handler;
    const DebugLog log;
    QVERIFY(handler.openDevice(port.portName()));
    QCOMPARE(maskedDevices(log.lines()),
             QStringList({u"QSerialCommandHandler::openDevice(\"%1\")"_s.arg(port.portName()),
                          u"QSerialCommandHandler::Device not open!"_s,
                          u"QSerialCommandHandler::Serial device \"%1\" opened. :DEVICE"_s.arg(
                              port.portName())}));
    QVERIFY(handler.isConnected());
    QCOMPARE(handler.findChildren<AbstractSerial *>(Qt::FindDirectChildrenOnly).size(), 1);
    QCOMPARE(int(deviceOf(handler)->openMode()), 0x23); // for reading and writing, unbuffered
    QCOMPARE(deviceOf(handler)->deviceName(), port.portName());
}

void tst_QSerialCommandHandlerPort::openFails_data()
{
    QTest::addColumn<QString>("port");
    QTest::addColumn<bool>("busy");

    // Whatever can't be opened counts as busy.
    QTest::newRow("missing") << u"/dev/pts/no-such-port"_s << true;
    QTest::newRow("missing, bare name") << u"ttyNoSuchPort"_s << true;
    QTest::newRow("directory") << u"/dev"_s << true;
    QTest::newRow("device that is no port") << u"/dev/null"_s << false;
    QTest::newRow("plain file") << QString() << false;
}

void tst_QSerialCommandHandlerPort::openFails()
{
    QFETCH(QString, port);
    QFETCH(bool, busy);
    const QTemporaryDir folder;
    if (port.isEmpty()) {
        port = folder.filePath(u"file"_s);
        QFile file(port);
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    QSerialCommandHandler handler;
    SignalLog emitted(handler);
    const DebugLog log;
    QVERIFY(!handler.openDevice(port));
    QCOMPARE(
        maskedDevices(log.lines()),
        QStringList(
            {u"QSerialCommandHandler::openDevice(\"%1\")"_s.arg(port),
             u"QSerialCommandHandler::Device not open!"_s,
             u"QSerialCommandHandler::Serial device by default: \"%1\" open failed!"_s.arg(port),
             busy ? u"QSerialCommandHandler::Device is busy!"_s
                  : u"QSerialCommandHandler::Device not busy!"_s}));
    QVERIFY(!handler.isConnected());
    QVERIFY(!deviceOf(handler)->isOpen());
    QCOMPARE(emitted.lines(), QStringList());
}

void tst_QSerialCommandHandlerPort::openFailsOnAPortHeldHere()
{
    ScriptedPort port;
    QSerialCommandHandler handler;
    {
        const simulator::FileDescriptor holder(
            ::open(port.portName().toLocal8Bit().constData(), O_RDWR | O_NOCTTY | O_CLOEXEC));
        QCOMPARE(::flock(holder.get(), LOCK_EX), 0);
        const DebugLog log;
        QVERIFY(!handler.openDevice(port.portName()));
        QCOMPARE(log.lines().constLast(), u"QSerialCommandHandler::Device is busy!"_s);
        QVERIFY(!handler.isConnected());
    }
    QVERIFY(handler.openDevice(port.portName()));

    // And the other way round: what the handler has open is held.
    QSerialCommandHandler second;
    QVERIFY(!second.openDevice(port.portName()));
    QVERIFY(handler.closeDevice());
    QVERIFY(second.openDevice(port.portName()));
}

void tst_QSerialCommandHandlerPort::openOfAnOpenPortEndsClosed()
{
    ScriptedPort port;
    ScriptedPort other;
    QSerialCommandHandler handler;
    SignalLog emitted(handler);
    QVERIFY(handler.openDevice(port.portName()));
    {
        const DebugLog log;
        QVERIFY(!handler.openDevice(other.portName()));
        QCOMPARE(maskedDevices(log.lines()).value(1), u"QSerialCommandHandler::Device is open!"_s);
        // An open device keeps its name.
        QCOMPARE(maskedDevices(log.lines()).value(2),
                 u"QSerialCommandHandler::Serial device by default: \"%1\" open failed!"_s.arg(
                     port.portName()));
        QCOMPARE(maskedDevices(log.lines()).value(3), u"QSerialCommandHandler::Device not busy!"_s);
    }
    QVERIFY(!handler.isConnected());
    QVERIFY(!deviceOf(handler)->isOpen());
    QCOMPARE(emitted.lines(), QStringList());

    QVERIFY(handler.openDevice(other.portName()));
    QVERIFY(handler.isConnected());
    {
        const DebugLog log;
        QVERIFY(!handler.openDevice(other.portName()));
        QCOMPARE(log.lines().constLast(), u"QSerialCommandHandler::Device is busy!"_s);
    }
    QVERIFY(!handler.isConnected());
}

void tst_QSerialCommandHandlerPort::close()
{
    ScriptedPort port;
    QSerialCommandHandler handler;
    SignalLog emitted(handler);
    QVERIFY(handler.openDevice(port.portName()));
    AbstractSerial *const device = deviceOf(handler);
    const DebugLog log;
    QVERIFY(handler.closeDevice());
    QVERIFY(!handler.isConnected());
    QCOMPARE(maskedDevices(log.lines()), {u"QSerialCommandHandler::closeDevice(): DEVICE"_s});
    QVERIFY(handler.closeDevice()); // without another word
    QVERIFY(!handler.isConnected());
    QCOMPARE(log.lines().size(), 1);
    QCOMPARE(deviceOf(handler), device);
    QVERIFY(!device->isOpen());
    QCOMPARE(emitted.lines(), QStringList());
}

void tst_QSerialCommandHandlerPort::reopen()
{
    ScriptedPort port;
    QSerialCommandHandler handler;
    {
        const DebugLog log;
        QVERIFY(!handler.reopenDevice()); // of no port
        QCOMPARE(log.lines().value(0), u"QSerialCommandHandler::reopenDevice() QObject(0x0)"_s);
        QCOMPARE(log.lines().value(1), u"QSerialCommandHandler::openDevice(\"\")"_s);
        QCOMPARE(log.lines().constLast(), u"QSerialCommandHandler::Device not busy!"_s);
    }
    QVERIFY(handler.openDevice(port.portName()));
    AbstractSerial *const device = deviceOf(handler);
    QVERIFY(handler.closeDevice());
    {
        const DebugLog log;
        QVERIFY(handler.reopenDevice());
        QCOMPARE(maskedDevices(log.lines()).value(0),
                 u"QSerialCommandHandler::reopenDevice() DEVICE"_s);
    }
    QVERIFY(handler.isConnected());
    QCOMPARE(deviceOf(handler), device);
    QCOMPARE(device->deviceName(), port.portName());
    QVERIFY(!handler.reopenDevice()); // an open one ends closed
    QVERIFY(!handler.isConnected());
}

void tst_QSerialCommandHandlerPort::reopenAfterAFailedOpen()
{
    ScriptedPort port;
    QSerialCommandHandler handler;
    QVERIFY(handler.openDevice(port.portName()));
    QVERIFY(handler.closeDevice());
    QVERIFY(!handler.openDevice(u"ttyNoSuchPort"_s));
    QVERIFY(handler.reopenDevice()); // of the last that could be opened
    QCOMPARE(deviceOf(handler)->deviceName(), port.portName());
}

void tst_QSerialCommandHandlerPort::destructorLetsGoOfThePort()
{
    ScriptedPort port;
    {
        QSerialCommandHandler handler;
        QVERIFY(handler.openDevice(port.portName()));
    }
    QSerialCommandHandler handler;
    QVERIFY(handler.openDevice(port.portName()));
}

void tst_QSerialCommandHandlerPort::openKeepsTheLine()
{
    ScriptedPort port;
    setUnusualLine(port);
    const QString before = settingsOf(port);
    QCOMPARE(before, u"19200 8N2"_s);
    QSerialCommandHandler handler;
    QVERIFY(handler.openDevice(port.portName()));
    QCOMPARE(settingsOf(port), before);
    QVERIFY(hasFlowControl(port));
}

void tst_QSerialCommandHandlerPort::setBaudrate_data()
{
    QTest::addColumn<int>("rate");
    for (const int rate : {4800, 9600, 14400, 19200, 38400, 57600, 115200}) {
        QTest::addRow("%d", rate) << rate;
    }
}

void tst_QSerialCommandHandlerPort::setBaudrate()
{
    QFETCH(int, rate);
    ScriptedPort port;
    setUnusualLine(port);
    QSerialCommandHandler handler;
    QVERIFY(handler.openDevice(port.portName()));
    const DebugLog log;
    handler.setBaudrate(rate);
    QCOMPARE(log.lines(), {u"QSerialCommandHandler::setBaudrate(\"%1\")"_s.arg(rate)});
    QCOMPARE(handler.baudrate(), rate);
    QCOMPARE(settingsOf(port), u"%1 8N1"_s.arg(rate));
    QVERIFY(!hasFlowControl(port));
}

void tst_QSerialCommandHandlerPort::unknownRateKeepsTheRate_data()
{
    QTest::addColumn<int>("rate");
    // Some of them the port itself could do.
    for (const int rate : {1000, 0, -1, 2400, 56000, 230400}) {
        QTest::addRow("%d", rate) << rate;
    }
}

void tst_QSerialCommandHandlerPort::unknownRateKeepsTheRate()
{
    QFETCH(int, rate);
    ScriptedPort port;
    setUnusualLine(port);
    QSerialCommandHandler handler;
    QVERIFY(handler.openDevice(port.portName()));
    handler.setBaudrate(rate);
    QCOMPARE(handler.baudrate(), rate);
    QCOMPARE(settingsOf(port), u"19200 8N1"_s);
    QVERIFY(!hasFlowControl(port));
    QVERIFY(handler.isConnected());
}

void tst_QSerialCommandHandlerPort::rateIsNotSetByTheNextOpen()
{
    ScriptedPort port;
    setUnusualLine(port);
    QSerialCommandHandler handler;
    handler.setBaudrate(9600);
    QVERIFY(handler.openDevice(port.portName()));
    QCOMPARE(settingsOf(port), u"19200 8N2"_s);
    handler.setBaudrate(9600);
    QCOMPARE(settingsOf(port), u"9600 8N1"_s);
    QVERIFY(handler.closeDevice());
    setUnusualLine(port);
    QVERIFY(handler.reopenDevice());
    QCOMPARE(settingsOf(port), u"19200 8N2"_s);
    QCOMPARE(handler.baudrate(), 9600);
}

void tst_QSerialCommandHandlerPort::deviceSignalsReachTheSlotsOnce()
{
    ScriptedPort port;
    QSerialCommandHandler handler;
    QVERIFY(handler.openDevice(port.portName()));
    QVERIFY(handler.closeDevice());
    QVERIFY(handler.reopenDevice()); // the connections are the device's first ones
    AbstractSerial *const device = deviceOf(handler);
    DebugLog log;
    emit device->exception();
    emit device->dsrChanged(true);
    emit device->ringChanged(false);
    emit device->readyRead(); // with nothing to read
    QCOMPARE(log.lines(),
             QStringList({u"Slot: Exception notifier."_s, u"Slot: Dsr notifier. Value: true"_s,
                          u"Slot: Ring notifier. Value: false"_s}));
    log.clear();
    emit device->bytesWritten(9); // which isn't connected to slotWrite()
    emit device->ctsChanged(false);
    QCOMPARE(log.lines(), QStringList());
    QVERIFY(!handler.isConnected());
    emit device->ctsChanged(true);
    QVERIFY(handler.isConnected());

    port.send("02 01 64 06 00 00 01 2c 9a 55");
    QTRY_COMPARE(device->bytesAvailable(), 10);
    log.clear();
    emit device->readyRead();
    QCOMPARE(maskedDevices(log.lines()), {u"Slot: Rx ready notifier. 10 DEVICE"_s});
}

void tst_QSerialCommandHandlerPort::ctsIsAGate()
{
    ScriptedPort port;
    QSerialCommandHandler handler;
    SignalLog emitted(handler);
    QVERIFY(handler.openDevice(port.portName()));
    handler.slotCts(false);
    QVERIFY(!handler.isConnected());
    QVERIFY(deviceOf(handler)->isOpen());
    handler.getAxisParameter(1, 0, 4);
    QCOMPARE(emitted.lines(), QStringList());

    port.addAnswer(Answer300);
    handler.getIOValue(1, 4, 0); // has no gate
    QCOMPARE(port.requests().size(), 1);
    QCOMPARE(emitted.take(), {u"requestedIOValue(1, 4, 0, 300)"_s});

    handler.slotCts(true);
    port.addAnswer(Answer300);
    handler.getAxisParameter(1, 0, 4);
    QCOMPARE(emitted.lines(), {u"requestedValue(1, 0, 4, 300)"_s});
}

void tst_QSerialCommandHandlerPort::pulledOutWhileIdle()
{
    SimulatedPort port;
    const QString name = port.portName();
    QSerialCommandHandler handler;
    SignalLog emitted(handler);
    QVERIFY(handler.openDevice(name));
    port.pullOut();
    QCoreApplication::processEvents();
    handler.getAxisParameter(1, 0, 4);
    QCOMPARE(emitted.lines(), {detached(name)});
    QVERIFY(handler.isConnected()); // the list of ports tells otherwise, later
    QVERIFY(handler.closeDevice());
    QVERIFY(!handler.isConnected());
    QVERIFY(!handler.reopenDevice());
}

void tst_QSerialCommandHandlerPort::pulledOutInMidExchange()
{
    ScriptedPort port;
    const QString name = port.portName();
    QSerialCommandHandler handler;
    SignalLog emitted(handler);
    QVERIFY(handler.openDevice(name));
    port.pullOutOnRequest();
    handler.getAxisParameter(1, 0, 4);
    QCOMPARE(port.requests().size(), 1);
    QCOMPARE(emitted.lines(), {detached(name)});
    handler.setBaudrate(9600); // on a port that is gone
    QVERIFY(handler.closeDevice());
    QVERIFY(!handler.openDevice(name));
}

QTEST_GUILESS_MAIN(tst_QSerialCommandHandlerPort)
#include "tst_QSerialCommandHandlerPort.moc"
