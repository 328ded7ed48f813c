#include "serial/AbstractSerialEngine.h"
#include "serial/PtyPair.h"
#include "support/TestCase.h"

#include <QMetaMethod>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

/// Opening, closing and the line settings of the engine, on real pseudo-terminals.
class tst_NativeSerialEngine : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase();
    void metaObject();
    void newEngine();
    void everyRateReachesTheLine_data();
    void everyRateReachesTheLine();
    void baudRateNeedsBothDirections();
    void dataBitsAgainstStopBits();
    void oneAndAHalfStopBitsAreRemembered();
    void settersReachTheLine();
    void settersFailWhileClosed();
    void openingReadsTheLineBack();
    void openingMakesTheLineRaw();
    void openingDropsWhatWasHeld();
    void openingResetsTheTimeouts();
    void eachModeOpens();
    void closeKeepsTheLineSettings();
    void closeGivesTheTimeoutsBack();
    void closeTwice();
    void openWhileOpen();
    void modemLinesOfAPty();
    void computedTimeout();
    void queueSizes();
};

namespace {

constexpr auto ReadWrite = QIODevice::ReadWrite;
std::unique_ptr<AbstractSerialEngine> engineOn(const QString &name)
{
    std::unique_ptr<AbstractSerialEngine> engine(AbstractSerialEngine::createEngine());
    engine->setDeviceName(name);
    return engine;
}

} // namespace

void tst_NativeSerialEngine::initTestCase()
{
    QVERIFY2(PtyPair().isOpen(), "the tests need pseudo-terminals");
}

void tst_NativeSerialEngine::metaObject()
{
    const QMetaObject &meta = AbstractSerialEngine::staticMetaObject;
    QByteArrayList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        QCOMPARE(meta.method(i).methodType(), QMetaMethod::Slot);
        QCOMPARE(meta.method(i).access(), QMetaMethod::Public);
        methods.append(meta.method(i).methodSignature());
    }
    QCOMPARE(methods,
             (QByteArrayList{"readNotification()", "writeNotification()", "exceptionNotification()",
                             "lineNotification()"}));
    QCOMPARE(meta.superClass(), &QObject::staticMetaObject);
}

void tst_NativeSerialEngine::newEngine()
{
    QObject parent;
    AbstractSerialEngine *engine = AbstractSerialEngine::createEngine(&parent);
    QCOMPARE(engine->parent(), &parent);
    QCOMPARE(engine->deviceName(), u"ttyS0"_s);
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
    engine->setDeviceName(u"COM7"_s);
    QCOMPARE(engine->deviceName(), u"COM7"_s);
}

void tst_NativeSerialEngine::everyRateReachesTheLine_data()
{
    QTest::addColumn<int>("rate");
    for (const int rate :
         {50,     75,      110,     134,     150,     200,     300,     600,     1200,
          1800,   2400,    4800,    9600,    14400,   19200,   38400,   56000,   57600,
          76800,  115200,  128000,  230400,  256000,  460800,  500000,  576000,  921600,
          300000, 1000000, 1152000, 1500000, 2000000, 2500000, 3000000, 3500000, 4000000}) {
        QTest::addRow("%d", rate) << rate;
    }
}

void tst_NativeSerialEngine::everyRateReachesTheLine()
{
    QFETCH(int, rate);
    PtyPair pty;
    const auto engine = engineOn(pty.portName());
    QVERIFY(engine->open(ReadWrite));
    QVERIFY(engine->setBaudRate(rate, AbstractSerial::AllBaud));
    QCOMPARE(pty.line().c_ospeed, speed_t(rate));
    QCOMPARE(pty.line().c_ispeed, speed_t(rate));
    QCOMPARE(engine->baudRate(AbstractSerial::AllBaud), rate);
    QCOMPARE(engine->baudRate(AbstractSerial::InputBaud), rate);
    QCOMPARE(engine->baudRate(AbstractSerial::OutputBaud), rate);
}

void tst_NativeSerialEngine::baudRateNeedsBothDirections()
{
    PtyPair pty;
    const auto engine = engineOn(pty.portName());
    QVERIFY(engine->open(ReadWrite));
    const speed_t before = pty.line().c_ospeed;
    QVERIFY(!engine->setBaudRate(9600, AbstractSerial::InputBaud));
    QVERIFY(!engine->setBaudRate(9600, AbstractSerial::OutputBaud));
    QVERIFY(!engine->setBaudRate(0, AbstractSerial::AllBaud));
    QVERIFY(!engine->setBaudRate(-1, AbstractSerial::AllBaud));
    QCOMPARE(pty.line().c_ospeed, before);
    QCOMPARE(engine->baudRate(AbstractSerial::AllBaud), int(before));
}

void tst_NativeSerialEngine::dataBitsAgainstStopBits()
{
    PtyPair pty;
    const auto engine = engineOn(pty.portName());
    QVERIFY(engine->open(ReadWrite));
    QVERIFY(engine->setStopBits(AbstractSerial::StopBits2));
    QVERIFY(pty.line().c_cflag & CSTOPB);
    QVERIFY(!engine->setDataBits(AbstractSerial::DataBits5));
    QCOMPARE(engine->dataBits(), AbstractSerial::DataBits8);
    QVERIFY(engine->setStopBits(AbstractSerial::StopBits1));
    QVERIFY(!(pty.line().c_cflag & CSTOPB));
    QVERIFY(engine->setDataBits(AbstractSerial::DataBits5));
    QCOMPARE(engine->dataBits(), AbstractSerial::DataBits5);
    QVERIFY(engine->setStopBits(AbstractSerial::StopBits2));
    QVERIFY(pty.line().c_cflag & CSTOPB);
    QCOMPARE(engine->stopBits(), AbstractSerial::StopBits2);
}

void tst_NativeSerialEngine::oneAndAHalfStopBitsAreRemembered()
{
    PtyPair pty;
    const auto engine = engineOn(pty.portName());
    QVERIFY(engine->open(ReadWrite));
    QVERIFY(engine->setStopBits(AbstractSerial::StopBits1_5));
    QCOMPARE(engine->stopBits(), AbstractSerial::StopBits1_5);
    QVERIFY(pty.line().c_cflag & CSTOPB);
    QVERIFY(!engine->setStopBits(AbstractSerial::StopBits1));
    QVERIFY(!engine->setDataBits(AbstractSerial::DataBits8));
    QCOMPARE(engine->stopBits(), AbstractSerial::StopBits1_5);
}

void tst_NativeSerialEngine::settersReachTheLine()
{
    PtyPair pty;
    const auto engine = engineOn(pty.portName());
    QVERIFY(engine->open(ReadWrite));
    QVERIFY(engine->setFlowControl(AbstractSerial::FlowHardware));
    QVERIFY(pty.line().c_cflag & CRTSCTS);
    QCOMPARE(engine->flowControl(), AbstractSerial::FlowHardware);
    QVERIFY(engine->setFlowControl(AbstractSerial::FlowXonXoff));
    QCOMPARE(pty.line().c_iflag & (IXON | IXOFF), tcflag_t(IXON | IXOFF));
    QVERIFY(!(pty.line().c_cflag & CRTSCTS));
    QCOMPARE(engine->flowControl(), AbstractSerial::FlowXonXoff);
    QVERIFY(engine->setFlowControl(AbstractSerial::FlowDisable));
    QCOMPARE(pty.line().c_iflag & (IXON | IXOFF), tcflag_t(0));
    QVERIFY(!engine->setFlowControl(AbstractSerial::FlowUndefined));
    QVERIFY(engine->setParity(AbstractSerial::ParityMark));
    QCOMPARE(pty.line().c_cflag & (PARODD | CMSPAR), tcflag_t(PARODD | CMSPAR));
    QCOMPARE(engine->parity(), AbstractSerial::ParityMark);
    QVERIFY(engine->setParity(AbstractSerial::ParitySpace));
    QCOMPARE(pty.line().c_cflag & (PARODD | CMSPAR), tcflag_t(CMSPAR));
    QVERIFY(!engine->setParity(AbstractSerial::ParityUndefined));
    QVERIFY(!engine->setParity(AbstractSerial::Parity(5)));
    QCOMPARE(engine->parity(), AbstractSerial::ParitySpace);
    QVERIFY(engine->setParity(AbstractSerial::ParityNone));
    QCOMPARE(pty.line().c_cflag & (PARENB | PARODD | CMSPAR), tcflag_t(0));
}

void tst_NativeSerialEngine::settersFailWhileClosed()
{
    const auto engine = engineOn(u"ttyS0"_s);
    QVERIFY(!engine->setBaudRate(9600, AbstractSerial::AllBaud));
    QVERIFY(!engine->setDataBits(AbstractSerial::DataBits8));
    QVERIFY(!engine->setParity(AbstractSerial::ParityNone));
    QVERIFY(!engine->setStopBits(AbstractSerial::StopBits1));
    QVERIFY(!engine->setFlowControl(AbstractSerial::FlowDisable));
    QVERIFY(!engine->setDtr(true));
    QVERIFY(!engine->setRts(true));
    QVERIFY(!engine->setBreak(true));
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

void tst_NativeSerialEngine::openingReadsTheLineBack()
{
    PtyPair pty;
    termios2 line = pty.line();
    line.c_cflag = (line.c_cflag & ~tcflag_t(CBAUD)) | BOTHER | CSTOPB | CRTSCTS;
    line.c_ispeed = line.c_ospeed = 14400;
    pty.setLine(line);
    const auto engine = engineOn(pty.portName());
    QVERIFY(engine->open(ReadWrite));
    QCOMPARE(engine->baudRate(AbstractSerial::AllBaud), 14400);
    QCOMPARE(engine->dataBits(), AbstractSerial::DataBits8);
    QCOMPARE(engine->parity(), AbstractSerial::ParityNone);
    QCOMPARE(engine->stopBits(), AbstractSerial::StopBits2);
    QCOMPARE(engine->flowControl(), AbstractSerial::FlowHardware);
    QVERIFY(engine->close());
    // A kind of parity without a parity bit is nothing that a value stands for.
    line.c_cflag = (line.c_cflag & ~tcflag_t(CSTOPB | CRTSCTS)) | PARODD;
    pty.setLine(line);
    QVERIFY(engine->open(ReadWrite));
    QCOMPARE(engine->stopBits(), AbstractSerial::StopBits1);
    QCOMPARE(engine->flowControl(), AbstractSerial::FlowDisable);
    QCOMPARE(engine->parity(), AbstractSerial::ParityUndefined);
}

void tst_NativeSerialEngine::openingMakesTheLineRaw()
{
    PtyPair pty;
    termios2 line = pty.line();
    line.c_iflag |= IXON | IXOFF | ISTRIP | INLCR | IGNPAR;
    line.c_lflag |= ECHO | ICANON | ISIG;
    pty.setLine(line);
    const auto engine = engineOn(pty.portName());
    QVERIFY(engine->open(ReadWrite));
    QCOMPARE(engine->flowControl(), AbstractSerial::FlowDisable);
    QByteArray all;
    for (int byte = 0; byte <= 255; ++byte) {
        all.append(char(byte));
    }
    QVERIFY(pty.send(all));
    QTRY_COMPARE(engine->bytesAvailable(), qint64(all.size()));
    QByteArray got(all.size(), '\0');
    QCOMPARE(engine->read(got.data(), got.size()), qint64(all.size()));
    QCOMPARE(got, all);
    // Nothing was echoed, and every byte goes out as it is.
    QCOMPARE(engine->write(all.constData(), all.size()), qint64(all.size()));
    QTRY_COMPARE(pty.received(), all);
}

void tst_NativeSerialEngine::openingDropsWhatWasHeld()
{
    PtyPair pty;
    const auto engine = engineOn(pty.portName());
    QVERIFY(engine->open(ReadWrite));
    QVERIFY(pty.send("left over"));
    QTRY_COMPARE(engine->bytesAvailable(), qint64(9));
    QVERIFY(engine->close());
    QVERIFY(engine->open(ReadWrite));
    QCOMPARE(engine->bytesAvailable(), qint64(0));
    QVERIFY(pty.send("new"));
    QTRY_COMPARE(engine->bytesAvailable(), qint64(3));
}

void tst_NativeSerialEngine::openingResetsTheTimeouts()
{
    PtyPair pty;
    const auto engine = engineOn(pty.portName());
    engine->setCharIntervalTimeout(100);
    engine->setTotalReadConstantTimeout(-1);
    QCOMPARE(engine->totalReadConstantTimeout(), 213333 + 25);
    QVERIFY(engine->open(ReadWrite));
    QCOMPARE(engine->totalReadConstantTimeout(), 0);
    QCOMPARE(engine->charIntervalTimeout(), 100);
    QVERIFY(engine->setBaudRate(300, AbstractSerial::AllBaud));
    QCOMPARE(engine->totalReadConstantTimeout(), 0);
}

void tst_NativeSerialEngine::eachModeOpens()
{
    PtyPair pty;
    const auto engine = engineOn(pty.portName());
    char byte = 'x';
    QVERIFY(engine->open(QIODevice::ReadOnly));
    QCOMPARE(engine->write(&byte, 1), qint64(-1));
    QVERIFY(pty.send("r"));
    QTRY_COMPARE(engine->bytesAvailable(), qint64(1));
    QCOMPARE(engine->read(&byte, 1), qint64(1));
    QCOMPARE(byte, 'r');
    QVERIFY(engine->close());
    QVERIFY(engine->open(QIODevice::WriteOnly));
    QVERIFY(pty.send("r"));
    QCOMPARE(engine->read(&byte, 1), qint64(0));
    QCOMPARE(engine->write("w", 1), qint64(1));
    QTRY_COMPARE(pty.received(), "w");
}

void tst_NativeSerialEngine::closeKeepsTheLineSettings()
{
    PtyPair pty;
    const auto engine = engineOn(pty.portName());
    QVERIFY(engine->open(ReadWrite));
    QVERIFY(engine->setBaudRate(300000, AbstractSerial::AllBaud));
    QVERIFY(engine->setStopBits(AbstractSerial::StopBits2));
    const termios2 open = pty.line();
    QVERIFY(engine->close());
    const termios2 closed = pty.line();
    QCOMPARE(closed.c_ospeed, speed_t(300000));
    QCOMPARE(closed.c_cflag, open.c_cflag);
    QCOMPARE(closed.c_iflag, open.c_iflag);
    QCOMPARE(closed.c_lflag, open.c_lflag);
}

void tst_NativeSerialEngine::closeGivesTheTimeoutsBack()
{
    PtyPair pty;
    termios2 line = pty.line();
    line.c_cc[VMIN] = 7;
    line.c_cc[VTIME] = 3;
    pty.setLine(line);
    const auto engine = engineOn(pty.portName());
    QVERIFY(engine->open(ReadWrite));
    QCOMPARE(int(pty.line().c_cc[VMIN]), 1);
    QCOMPARE(int(pty.line().c_cc[VTIME]), 0);
    QVERIFY(engine->close());
    QCOMPARE(int(pty.line().c_cc[VMIN]), 7);
    QCOMPARE(int(pty.line().c_cc[VTIME]), 3);
}

void tst_NativeSerialEngine::closeTwice()
{
    PtyPair pty;
    const auto engine = engineOn(pty.portName());
    QVERIFY(engine->close());
    QVERIFY(engine->open(ReadWrite));
    QVERIFY(engine->descriptor() >= 0);
    QVERIFY(engine->close());
    QCOMPARE(engine->descriptor(), qintptr(-1));
    QVERIFY(engine->close());
}

void tst_NativeSerialEngine::openWhileOpen()
{
    PtyPair pty;
    const auto engine = engineOn(pty.portName());
    QVERIFY(engine->open(ReadWrite));
    const qintptr descriptor = engine->descriptor();
    QVERIFY(!engine->open(ReadWrite));
    QCOMPARE(engine->descriptor(), descriptor);
    QCOMPARE(engine->write("w", 1), qint64(1));
}

void tst_NativeSerialEngine::modemLinesOfAPty()
{
    PtyPair pty;
    const auto engine = engineOn(pty.portName());
    QVERIFY(engine->open(ReadWrite));
    QCOMPARE(engine->lineStatus(), AbstractSerial::LineStatus(AbstractSerial::LineErr));
    QVERIFY(!engine->setDtr(true));
    QVERIFY(!engine->setRts(false));
}

void tst_NativeSerialEngine::computedTimeout()
{
    PtyPair pty;
    const auto engine = engineOn(pty.portName());
    QVERIFY(engine->open(ReadWrite));
    QVERIFY(engine->setBaudRate(9600, AbstractSerial::AllBaud));
    engine->setTotalReadConstantTimeout(-1);
    QCOMPARE(engine->totalReadConstantTimeout(), 266);
    engine->setCharIntervalTimeout(100);
    QCOMPARE(engine->charIntervalTimeout(), 100);
    QCOMPARE(engine->totalReadConstantTimeout(), 291);
    engine->setTotalReadConstantTimeout(40);
    QCOMPARE(engine->totalReadConstantTimeout(), 40);
}

void tst_NativeSerialEngine::queueSizes()
{
    PtyPair pty;
    const auto engine = engineOn(pty.portName());
    QCOMPARE(engine->firstQueueSize(), qint64(-1));
    QVERIFY(engine->open(ReadWrite));
    QCOMPARE(engine->firstQueueSize(), qint64(-1));
    QCOMPARE(engine->secondQueueSize(), qint64(-1));
}

QTEST_GUILESS_MAIN(tst_NativeSerialEngine)
#include "tst_NativeSerialEngine.moc"
