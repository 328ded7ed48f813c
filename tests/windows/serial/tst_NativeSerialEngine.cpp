#include "WatchedLine.h"
#include "support/TestCase.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// Opening, closing and the line settings of the engine, on COM ports.
class tst_NativeSerialEngine : public TestCase
{
    Q_OBJECT

private slots:
    void newEngine();
    void opensByName();
    void openFails_data();
    void openFails();
    void openFailsOnALineThatCannotBeRead();
    void openWhileOpen();
    void openingSetsDefaults();
    void openingReadsTheLineBack();
    void openingResetsTheTimeouts();
    void everyRateReachesTheLine_data();
    void everyRateReachesTheLine();
    void baudRateNeedsBothDirections();
    void dataBits_data();
    void dataBits();
    void dataBitsAgainstStopBits();
    void flowControl_data();
    void flowControl();
    void undefinedValuesAreRefused();
    void refusedValueIsSentAgain();
    void settersFailWhileClosed();
    void closeGivesBackTheTimeoutsAlone();
    void closeTwice();
    void destructorGivesThePortBack();
    void modemLinesThatCannotBeRead();
    void breakIsHeldAndReleased();
    void computedTimeout();
    void computedTimeoutFollowsTheLine();
    void queueSizes();
};

namespace {

/// A second handle of an open port, which stays when the first is closed.
class SecondHandle
{
public:
    explicit SecondHandle(HANDLE first)
    {
        DuplicateHandle(GetCurrentProcess(), first, GetCurrentProcess(), &m_handle, 0, FALSE,
                        DUPLICATE_SAME_ACCESS);
    }
    ~SecondHandle() { CloseHandle(m_handle); }
    SecondHandle(const SecondHandle &) = delete;
    SecondHandle &operator=(const SecondHandle &) = delete;

    HANDLE get() const { return m_handle; }

private:
    HANDLE m_handle = nullptr;
};

} // namespace

void tst_NativeSerialEngine::newEngine()
{
    QObject parent;
    AbstractSerialEngine *engine = AbstractSerialEngine::createEngine(&parent);
    QCOMPARE(engine->parent(), &parent);
    QCOMPARE(engine->deviceName(), u"COM1"_s);
    QCOMPARE(engine->baudRate(AbstractSerial::AllBaud), 12);
    QCOMPARE(engine->baudRate(AbstractSerial::InputBaud), 12);
    QCOMPARE(engine->baudRate(AbstractSerial::OutputBaud), 12);
    QCOMPARE(engine->dataBits(), AbstractSerial::DataBits8);
    QCOMPARE(engine->parity(), AbstractSerial::ParityNone);
    QCOMPARE(engine->stopBits(), AbstractSerial::StopBits1);
    QCOMPARE(engine->flowControl(), AbstractSerial::FlowDisable);
    QCOMPARE(engine->charIntervalTimeout(), 0);
    QCOMPARE(engine->totalReadConstantTimeout(), 0);
    QCOMPARE(engine->descriptor(), qintptr(-1));
}

void tst_NativeSerialEngine::opensByName()
{
    WatchedLine line;
    QVERIFY(line.isOpen);
    QVERIFY(line.engine->descriptor() != -1);
    QCOMPARE(line.write("over the line"), qint64(13));
    QTRY_COMPARE(line.pty.received(), "over the line");
}

void tst_NativeSerialEngine::openFails_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("missing") << u"COM255"_s;
    QTest::newRow("no name") << QString();
    QTest::newRow("no port") << u"nothing of the kind"_s;
    QTest::newRow("device that is no port") << u"NUL"_s;
}

void tst_NativeSerialEngine::openFails()
{
    QFETCH(QString, name);
    QObject parent;
    AbstractSerialEngine *engine = AbstractSerialEngine::createEngine(&parent);
    engine->setDeviceName(name);
    QVERIFY(!engine->open(QIODevice::ReadWrite));
    QCOMPARE(engine->descriptor(), qintptr(-1));
    QCOMPARE(engine->baudRate(AbstractSerial::AllBaud), 12);
    QVERIFY(engine->close());
}

// The port is there, but its settings can't be had: it is closed again.
void tst_NativeSerialEngine::openFailsOnALineThatCannotBeRead()
{
    WatchedLine line;
    QVERIFY(line.engine->close());
    line.pty.leaveLine(12345); // a rate that wine has no number for
    QVERIFY(!line.engine->open(QIODevice::ReadWrite));
    QCOMPARE(line.engine->descriptor(), qintptr(-1));
    line.pty.leaveLine(9600);
    QVERIFY(line.engine->open(QIODevice::ReadWrite));
    QCOMPARE(line.engine->baudRate(AbstractSerial::AllBaud), 9600);
}

void tst_NativeSerialEngine::openWhileOpen()
{
    WatchedLine line;
    const qintptr descriptor = line.engine->descriptor();
    QVERIFY(!line.engine->open(QIODevice::ReadWrite));
    QCOMPARE(line.engine->descriptor(), descriptor);
    QCOMPARE(line.write("w"), qint64(1));
}

void tst_NativeSerialEngine::openingSetsDefaults()
{
    WatchedLine line;
    const DCB dcb = line.line();
    QCOMPARE(int(dcb.fBinary), 1);
    QCOMPARE(int(dcb.fOutX), 0);
    QCOMPARE(int(dcb.fInX), 0);
    QCOMPARE(int(dcb.fNull), 0);
    QCOMPARE(int(dcb.fAbortOnError), 0);
    const COMMTIMEOUTS timeouts = line.timeouts();
    QCOMPARE(timeouts.ReadIntervalTimeout, DWORD(65535));
    QCOMPARE(timeouts.ReadTotalTimeoutConstant, DWORD(0));
    QCOMPARE(timeouts.ReadTotalTimeoutMultiplier, DWORD(0));
    QCOMPARE(timeouts.WriteTotalTimeoutConstant, DWORD(0));
    QCOMPARE(timeouts.WriteTotalTimeoutMultiplier, DWORD(0));
}

void tst_NativeSerialEngine::openingReadsTheLineBack()
{
    WatchedLine line;
    QVERIFY(line.engine->setStopBits(AbstractSerial::StopBits2));
    QVERIFY(line.engine->setFlowControl(AbstractSerial::FlowXonXoff));
    QVERIFY(line.engine->close());
    line.pty.leaveLine(19200);
    QVERIFY(line.engine->open(QIODevice::ReadWrite));
    QCOMPARE(line.engine->baudRate(AbstractSerial::AllBaud), 19200);
    QCOMPARE(line.engine->baudRate(AbstractSerial::InputBaud), 19200);
    QCOMPARE(line.engine->baudRate(AbstractSerial::OutputBaud), 19200);
    QCOMPARE(line.engine->dataBits(), AbstractSerial::DataBits8);
    QCOMPARE(line.engine->parity(), AbstractSerial::ParityNone);
    QCOMPARE(line.engine->stopBits(), AbstractSerial::StopBits2);
    // XON and XOFF are what opening takes away.
    QCOMPARE(int(line.line().fOutX), 0);
    QVERIFY(line.engine->flowControl() != AbstractSerial::FlowXonXoff);
}

void tst_NativeSerialEngine::openingResetsTheTimeouts()
{
    WatchedLine line;
    line.engine->setCharIntervalTimeout(100);
    line.engine->setTotalReadConstantTimeout(40);
    QCOMPARE(line.timeouts().ReadTotalTimeoutConstant, DWORD(40));
    QVERIFY(line.engine->close());
    QVERIFY(line.engine->open(QIODevice::ReadWrite));
    QCOMPARE(line.engine->totalReadConstantTimeout(), 0);
    QCOMPARE(line.timeouts().ReadTotalTimeoutConstant, DWORD(0));
    QCOMPARE(line.engine->charIntervalTimeout(), 100);
    QVERIFY(line.engine->setBaudRate(2400, AbstractSerial::AllBaud));
    QCOMPARE(line.engine->totalReadConstantTimeout(), 0);
}

void tst_NativeSerialEngine::everyRateReachesTheLine_data()
{
    // Wine knows the rates that have a number of their own on the other system.
    QTest::addColumn<int>("rate");
    for (const int rate : {110,     300,     600,     1200,    2400,    4800,    9600,   19200,
                           38400,   57600,   115200,  230400,  460800,  500000,  921600, 1000000,
                           1152000, 1500000, 2000000, 2500000, 3000000, 3500000, 4000000}) {
        QTest::addRow("%d", rate) << rate;
    }
}

void tst_NativeSerialEngine::everyRateReachesTheLine()
{
    QFETCH(int, rate);
    WatchedLine line;
    QVERIFY(line.engine->setBaudRate(rate, AbstractSerial::AllBaud));
    QCOMPARE(line.pty.line(), QByteArray::number(rate) + " 1 none");
    QCOMPARE(int(line.line().BaudRate), rate);
    QCOMPARE(line.engine->baudRate(AbstractSerial::AllBaud), rate);
    QCOMPARE(line.engine->baudRate(AbstractSerial::InputBaud), rate);
    QCOMPARE(line.engine->baudRate(AbstractSerial::OutputBaud), rate);
}

void tst_NativeSerialEngine::baudRateNeedsBothDirections()
{
    WatchedLine line;
    const DWORD before = line.line().BaudRate;
    QVERIFY(!line.engine->setBaudRate(2400, AbstractSerial::InputBaud));
    QVERIFY(!line.engine->setBaudRate(2400, AbstractSerial::OutputBaud));
    QVERIFY(!line.engine->setBaudRate(0, AbstractSerial::AllBaud));
    QVERIFY(!line.engine->setBaudRate(-1, AbstractSerial::AllBaud));
    QCOMPARE(line.line().BaudRate, before);
    QCOMPARE(line.engine->baudRate(AbstractSerial::AllBaud), int(before));
}

void tst_NativeSerialEngine::dataBits_data()
{
    QTest::addColumn<AbstractSerial::DataBits>("value");
    QTest::addColumn<bool>("taken");
    // The line of a pseudo-terminal is kept at 8, and wine looks whether a number was taken.
    QTest::newRow("8") << AbstractSerial::DataBits8 << true;
    QTest::newRow("7") << AbstractSerial::DataBits7 << false;
    QTest::newRow("6") << AbstractSerial::DataBits6 << false;
}

void tst_NativeSerialEngine::dataBits()
{
    QFETCH(AbstractSerial::DataBits, value);
    QFETCH(bool, taken);
    WatchedLine line;
    QCOMPARE(line.engine->setDataBits(value), taken);
    QCOMPARE(line.engine->dataBits(), AbstractSerial::DataBits8);
}

void tst_NativeSerialEngine::dataBitsAgainstStopBits()
{
    WatchedLine line;
    QVERIFY(line.engine->setStopBits(AbstractSerial::StopBits2));
    QVERIFY(line.pty.line().contains(" 2 "));
    QVERIFY(!line.engine->setDataBits(AbstractSerial::DataBits5));
    QCOMPARE(line.engine->dataBits(), AbstractSerial::DataBits8);
    QVERIFY(line.engine->setStopBits(AbstractSerial::StopBits1));
    QVERIFY(line.pty.line().contains(" 1 "));
    QVERIFY(line.engine->setDataBits(AbstractSerial::DataBits5));
    QCOMPARE(line.engine->dataBits(), AbstractSerial::DataBits5);
}

void tst_NativeSerialEngine::flowControl_data()
{
    QTest::addColumn<AbstractSerial::Flow>("value");
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("hardware") << AbstractSerial::FlowHardware << "hardware"_ba;
    QTest::newRow("software") << AbstractSerial::FlowXonXoff << "software"_ba;
    QTest::newRow("none") << AbstractSerial::FlowDisable << "none"_ba;
}

void tst_NativeSerialEngine::flowControl()
{
    QFETCH(AbstractSerial::Flow, value);
    QFETCH(QByteArray, line);
    WatchedLine watched;
    QVERIFY(watched.engine->setFlowControl(value));
    QCOMPARE(watched.engine->flowControl(), value);
    QCOMPARE(watched.pty.line().split(' ').constLast(), line);
    QVERIFY(watched.engine->setFlowControl(AbstractSerial::FlowDisable));
    QCOMPARE(watched.pty.line().split(' ').constLast(), "none");
}

void tst_NativeSerialEngine::undefinedValuesAreRefused()
{
    WatchedLine line;
    const DCB before = line.line();
    QVERIFY(!line.engine->setDataBits(AbstractSerial::DataBitsUndefined));
    QVERIFY(!line.engine->setDataBits(AbstractSerial::DataBits(4)));
    QVERIFY(!line.engine->setParity(AbstractSerial::ParityUndefined));
    QVERIFY(!line.engine->setParity(AbstractSerial::Parity(5)));
    QVERIFY(!line.engine->setStopBits(AbstractSerial::StopBitsUndefined));
    QVERIFY(!line.engine->setStopBits(AbstractSerial::StopBits(3)));
    QVERIFY(!line.engine->setFlowControl(AbstractSerial::FlowUndefined));
    QVERIFY(!line.engine->setFlowControl(AbstractSerial::Flow(3)));
    const DCB after = line.line();
    QCOMPARE(QByteArray(reinterpret_cast<const char *>(&after), sizeof after),
             QByteArray(reinterpret_cast<const char *>(&before), sizeof before));
}

void tst_NativeSerialEngine::refusedValueIsSentAgain()
{
    WatchedLine line;
    QVERIFY(line.engine->setBaudRate(9600, AbstractSerial::AllBaud));
    // A pseudo-terminal is kept at 8 data bits, and wine looks whether they were taken.
    QVERIFY(!line.engine->setDataBits(AbstractSerial::DataBits7));
    QCOMPARE(line.engine->dataBits(), AbstractSerial::DataBits8);
    QVERIFY(!line.engine->setParity(AbstractSerial::ParityNone));
    QVERIFY(!line.engine->setFlowControl(AbstractSerial::FlowDisable));
    QVERIFY(line.engine->setDataBits(AbstractSerial::DataBits8));
    QVERIFY(line.engine->setParity(AbstractSerial::ParityNone));
    QVERIFY(line.engine->setFlowControl(AbstractSerial::FlowDisable));
}

void tst_NativeSerialEngine::settersFailWhileClosed()
{
    QObject parent;
    AbstractSerialEngine *engine = AbstractSerialEngine::createEngine(&parent);
    QVERIFY(!engine->setBaudRate(9600, AbstractSerial::AllBaud));
    QVERIFY(!engine->setDataBits(AbstractSerial::DataBits8));
    QVERIFY(!engine->setParity(AbstractSerial::ParityNone));
    QVERIFY(!engine->setStopBits(AbstractSerial::StopBits1));
    QVERIFY(!engine->setFlowControl(AbstractSerial::FlowDisable));
    QVERIFY(!engine->setDtr(true));
    QVERIFY(!engine->setRts(true));
    QVERIFY(!engine->setBreak(true));
    QVERIFY(!engine->setBreak(false));
    QVERIFY(!engine->sendBreak(0));
    QVERIFY(!engine->flush());
    QVERIFY(!engine->reset());
    QCOMPARE(engine->lineStatus(), AbstractSerial::LineStatus(AbstractSerial::LineErr));
    QCOMPARE(engine->bytesAvailable(), qint64(-1));
    char byte = 0;
    QCOMPARE(engine->read(&byte, 1), qint64(0));
    QCOMPARE(engine->write(&byte, 1), qint64(-1));
    bool readable = true;
    bool writable = true;
    QVERIFY(!engine->waitForReadOrWrite(&readable, &writable, true, true, 60000));
    QVERIFY(!readable && !writable);
    QCOMPARE(engine->baudRate(AbstractSerial::AllBaud), 12);
}

void tst_NativeSerialEngine::closeGivesBackTheTimeoutsAlone()
{
    WatchedLine line;
    QVERIFY(line.engine->setBaudRate(115200, AbstractSerial::AllBaud));
    QVERIFY(line.engine->setStopBits(AbstractSerial::StopBits2));
    line.engine->setTotalReadConstantTimeout(40);
    const SecondHandle second(line.port());
    QVERIFY(line.engine->close());

    COMMTIMEOUTS timeouts{};
    QVERIFY(GetCommTimeouts(second.get(), &timeouts));
    QVERIFY(timeouts.ReadIntervalTimeout != 65535);
    QCOMPARE(timeouts.ReadTotalTimeoutConstant, DWORD(0));
    DCB dcb{};
    dcb.DCBlength = sizeof dcb;
    QVERIFY(GetCommState(second.get(), &dcb));
    QCOMPARE(dcb.BaudRate, DWORD(115200));
    QCOMPARE(line.pty.line(), "115200 2 none");
}

void tst_NativeSerialEngine::closeTwice()
{
    WatchedLine line;
    QVERIFY(line.engine->close());
    QCOMPARE(line.engine->descriptor(), qintptr(-1));
    QVERIFY(line.engine->close());
    QVERIFY(line.engine->open(QIODevice::ReadWrite));
    QVERIFY(line.engine->close());
    QObject parent;
    QVERIFY(AbstractSerialEngine::createEngine(&parent)->close());
}

void tst_NativeSerialEngine::destructorGivesThePortBack()
{
    WatchedLine line;
    line.engine->setReadNotificationEnabled(true, false);
    delete line.engine;
    QObject parent;
    AbstractSerialEngine *next = AbstractSerialEngine::createEngine(&parent);
    next->setDeviceName(line.pty.portName());
    QVERIFY(next->open(QIODevice::ReadWrite));
}

void tst_NativeSerialEngine::modemLinesThatCannotBeRead()
{
    WatchedLine line;
    QCOMPARE(line.engine->lineStatus(), AbstractSerial::LineStatus(AbstractSerial::LineErr));
    QVERIFY(!line.engine->setDtr(true));
    QVERIFY(!line.engine->setRts(false));
}

void tst_NativeSerialEngine::breakIsHeldAndReleased()
{
    WatchedLine line;
    QVERIFY(line.engine->setBreak(true));
    QVERIFY(line.engine->setBreak(false));
    QElapsedTimer timer;
    timer.start();
    QVERIFY(line.engine->sendBreak(50));
    QVERIFY(timer.elapsed() >= 49);
    QVERIFY(line.engine->sendBreak(-5));
}

void tst_NativeSerialEngine::computedTimeout()
{
    WatchedLine line;
    QVERIFY(line.engine->setBaudRate(9600, AbstractSerial::AllBaud));
    line.engine->setTotalReadConstantTimeout(-1);
    QCOMPARE(line.engine->totalReadConstantTimeout(), 266);
    QCOMPARE(line.timeouts().ReadTotalTimeoutConstant, DWORD(266));
    line.engine->setCharIntervalTimeout(100);
    QCOMPARE(line.engine->charIntervalTimeout(), 100);
    QCOMPARE(line.engine->totalReadConstantTimeout(), 291);
    QCOMPARE(line.timeouts().ReadTotalTimeoutConstant, DWORD(291));
    line.engine->setTotalReadConstantTimeout(40);
    QCOMPARE(line.engine->totalReadConstantTimeout(), 40);
    QCOMPARE(line.timeouts().ReadTotalTimeoutConstant, DWORD(40));
    QCOMPARE(line.timeouts().ReadIntervalTimeout, DWORD(65535));
}

void tst_NativeSerialEngine::computedTimeoutFollowsTheLine()
{
    WatchedLine line;
    QVERIFY(line.engine->setBaudRate(9600, AbstractSerial::AllBaud));
    line.engine->setTotalReadConstantTimeout(-1);
    QVERIFY(line.engine->setStopBits(AbstractSerial::StopBits2));
    QCOMPARE(line.timeouts().ReadTotalTimeoutConstant, DWORD(11 * 256000 / 9600));
    QVERIFY(line.engine->setBaudRate(19200, AbstractSerial::AllBaud));
    QCOMPARE(line.timeouts().ReadTotalTimeoutConstant, DWORD(11 * 256000 / 19200));
    QVERIFY(line.engine->setParity(AbstractSerial::ParityEven));
    QCOMPARE(line.timeouts().ReadTotalTimeoutConstant, DWORD(12 * 256000 / 19200));
}

void tst_NativeSerialEngine::queueSizes()
{
    WatchedLine line;
    QCOMPARE(line.engine->firstQueueSize(), qint64(-1));
    QCOMPARE(line.engine->secondQueueSize(), qint64(-1));
}

QTEST_GUILESS_MAIN(tst_NativeSerialEngine)
#include "tst_NativeSerialEngine.moc"
