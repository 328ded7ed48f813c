#include "FakeUart.h"
#include "serial/AbstractSerialEngine.h"
#include "serial/PtyPair.h"
#include "serial/native/RecordingReceiver.h"
#include "support/TestCase.h"

#include <QElapsedTimer>
#include <QTest>

#include <memory>

#include <sys/ioctl.h>

/// What needs a driver with modem lines, a break and limits of its own.
class tst_NativeSerialEngineUart : public TestCase
{
    Q_OBJECT

private slots:
    void lineStatus_data();
    void lineStatus();
    void outputLines();
    void breakCondition();
    void sentBreak();
    void silentlyIgnoredSettingFails();
    void refusedSettingIsSentAgain();
    void refusalOnOpeningClosesThePort();
    void portWithoutExclusiveUseIsLocked();
    void interruptedCallsGoOn();
    void resetDropsBothQueues();
    void flushWaitsUntilAllIsSent();
    void flushGivesUpOnABlockedLine();
    void closeDropsStuckOutput();
    void linesAsFoundAreNotTold();
    void changedLineIsTold_data();
    void changedLineIsTold();
    void linesAreTakenAnewWhenTurnedOn();
    void lineKindEndsWithTheOpening();
    void closeInTheLineCall();
};

namespace {

struct UartLine
{
    UartLine()
    {
        engine.reset(AbstractSerialEngine::createEngine());
        engine->setDeviceName(pty.portName());
        engine->setReceiver(&receiver);
    }

    bool open() { return engine->open(QIODevice::ReadWrite); }

    FakeUart uart;
    PtyPair pty;
    RecordingReceiver receiver;
    std::unique_ptr<AbstractSerialEngine> engine;
};

/// Turns the loop until the modem lines were looked at twice more, so once at least since the call.
bool linesAreLookedAt(const FakeUart &uart)
{
    const int before = uart.looks;
    return QTest::qWaitFor([&] { return uart.looks >= before + 2; });
}

/// Turns the loop for as long as an engine would take to look at its lines. The one under test
/// doesn't, so that another engine has to measure the time.
bool linesCouldBeLookedAt(const FakeUart &uart)
{
    const PtyPair pty;
    const std::unique_ptr<AbstractSerialEngine> clock(AbstractSerialEngine::createEngine());
    clock->setDeviceName(pty.portName());
    if (!clock->open(QIODevice::ReadWrite)) {
        return false;
    }
    clock->setLineNotificationEnabled(true, false);
    return linesAreLookedAt(uart);
}

constexpr qint64 TransferLimit = 5000; // ms, the engine's own

} // namespace

void tst_NativeSerialEngineUart::lineStatus_data()
{
    QTest::addColumn<int>("bits");
    QTest::addColumn<int>("status");
    QTest::newRow("all low") << 0 << 0;
    QTest::newRow("CTS") << TIOCM_CTS << 32;
    QTest::newRow("DSR") << TIOCM_DSR << 256;
    QTest::newRow("ring") << TIOCM_RNG << 128;
    QTest::newRow("carrier") << TIOCM_CAR << 64;
    QTest::newRow("DTR") << TIOCM_DTR << 2;
    QTest::newRow("RTS") << TIOCM_RTS << 4;
    QTest::newRow("all high") << (TIOCM_CTS | TIOCM_DSR | TIOCM_RNG | TIOCM_CAR | TIOCM_DTR
                                  | TIOCM_RTS)
                              << (32 + 256 + 128 + 64 + 2 + 4);
    QTest::newRow("others") << (TIOCM_LE | TIOCM_ST | TIOCM_SR) << 0;
}

void tst_NativeSerialEngineUart::lineStatus()
{
    QFETCH(int, bits);
    UartLine line;
    QVERIFY(line.open());
    line.uart.modemLines = bits;
    QTEST(int(line.engine->lineStatus().toInt()), "status");
    line.uart.hasModemLines = false;
    QCOMPARE(line.engine->lineStatus().toInt(), int(AbstractSerial::LineErr));
}

void tst_NativeSerialEngineUart::outputLines()
{
    UartLine line;
    QVERIFY(line.open());
    line.uart.modemLines = TIOCM_CTS;
    QVERIFY(line.engine->setDtr(true));
    QCOMPARE(line.uart.modemLines, TIOCM_CTS | TIOCM_DTR);
    QVERIFY(line.engine->setRts(true));
    QCOMPARE(line.uart.modemLines, TIOCM_CTS | TIOCM_DTR | TIOCM_RTS);
    QVERIFY(line.engine->setDtr(false));
    QCOMPARE(line.uart.modemLines, TIOCM_CTS | TIOCM_RTS);
    QVERIFY(line.engine->setRts(false));
    QCOMPARE(line.uart.modemLines, TIOCM_CTS);
}

void tst_NativeSerialEngineUart::breakCondition()
{
    UartLine line;
    QVERIFY(line.open());
    QVERIFY(line.engine->setBreak(true));
    QVERIFY(line.uart.breakHeld);
    QVERIFY(line.engine->setBreak(false));
    QVERIFY(!line.uart.breakHeld);
    line.uart.refusesBreak = true;
    QVERIFY(!line.engine->setBreak(true));
}

void tst_NativeSerialEngineUart::sentBreak()
{
    UartLine line;
    QVERIFY(line.open());
    QElapsedTimer timer;
    timer.start();
    QVERIFY(line.engine->sendBreak(30));
    QVERIFY(timer.elapsed() >= 30);
    QCOMPARE(line.uart.breaks, 1);
    QVERIFY(!line.uart.breakHeld);
    QVERIFY(line.engine->sendBreak(-5));
    QCOMPARE(line.uart.breaks, 2);
    line.uart.refusesBreak = true;
    timer.start();
    QVERIFY(!line.engine->sendBreak(60000));
    QVERIFY(timer.elapsed() < 30000);
}

void tst_NativeSerialEngineUart::silentlyIgnoredSettingFails()
{
    UartLine line;
    line.uart.ignoredControl = CRTSCTS;
    QVERIFY(line.open());
    QVERIFY(!line.engine->setFlowControl(AbstractSerial::FlowHardware));
    QCOMPARE(line.engine->flowControl(), AbstractSerial::FlowDisable);
    // The line keeps what it had, and the refused value comes with the next setter.
    const termios2 before = line.pty.line();
    QVERIFY(!line.engine->setBaudRate(19200, AbstractSerial::AllBaud));
    QCOMPARE(line.pty.line().c_ospeed, before.c_ospeed);
    line.uart.ignoredControl = 0;
    QVERIFY(line.engine->setBaudRate(19200, AbstractSerial::AllBaud));
    QVERIFY(line.pty.line().c_cflag & CRTSCTS);
    QCOMPARE(line.engine->flowControl(), AbstractSerial::FlowDisable);
}

void tst_NativeSerialEngineUart::refusedSettingIsSentAgain()
{
    UartLine line;
    QVERIFY(line.open());
    line.uart.refusesSettings = true;
    QVERIFY(!line.engine->setBaudRate(57600, AbstractSerial::AllBaud));
    QVERIFY(!line.engine->setStopBits(AbstractSerial::StopBits2));
    QVERIFY(!line.engine->setDataBits(AbstractSerial::DataBits7));
    QVERIFY(!line.engine->setParity(AbstractSerial::ParityOdd));
    QVERIFY(!line.engine->setFlowControl(AbstractSerial::FlowXonXoff));
    QVERIFY(line.engine->baudRate(AbstractSerial::AllBaud) != 57600);
    QCOMPARE(line.engine->stopBits(), AbstractSerial::StopBits1);
    QCOMPARE(line.engine->dataBits(), AbstractSerial::DataBits8);
    QCOMPARE(line.engine->parity(), AbstractSerial::ParityNone);
    QCOMPARE(line.engine->flowControl(), AbstractSerial::FlowDisable);
    line.uart.refusesSettings = false;
    QVERIFY(line.engine->setFlowControl(AbstractSerial::FlowDisable));
    QCOMPARE(line.pty.line().c_ospeed, speed_t(57600));
    QVERIFY(line.pty.line().c_cflag & CSTOPB);
    QVERIFY(line.pty.line().c_cflag & PARODD);
    QCOMPARE(line.engine->stopBits(), AbstractSerial::StopBits1);
}

void tst_NativeSerialEngineUart::refusalOnOpeningClosesThePort()
{
    UartLine line;
    line.uart.refusesSettings = true;
    QVERIFY(!line.open());
    QCOMPARE(line.engine->descriptor(), qintptr(-1));
    line.uart.refusesSettings = false;
    QVERIFY(line.open());
}

void tst_NativeSerialEngineUart::portWithoutExclusiveUseIsLocked()
{
    UartLine line;
    line.uart.refusesExclusiveUse = true;
    QVERIFY(line.open());
    std::unique_ptr<AbstractSerialEngine> second(AbstractSerialEngine::createEngine());
    second->setDeviceName(line.pty.portName());
    QVERIFY(!second->open(QIODevice::ReadWrite));
    QVERIFY(line.engine->close());
    QVERIFY(second->open(QIODevice::ReadWrite));
}

void tst_NativeSerialEngineUart::interruptedCallsGoOn()
{
    UartLine line;
    line.uart.interruptions = 3;
    QVERIFY(line.open());
    QCOMPARE(line.uart.interruptions, 0);
    line.uart.interruptions = 3;
    QVERIFY(line.engine->setBaudRate(9600, AbstractSerial::AllBaud));
    line.uart.interruptions = 3;
    QVERIFY(line.engine->setDtr(true));
    line.uart.interruptions = 3;
    QCOMPARE(line.engine->bytesAvailable(), qint64(0));
    QCOMPARE(line.uart.interruptions, 0);
}

void tst_NativeSerialEngineUart::resetDropsBothQueues()
{
    UartLine line;
    QVERIFY(line.open());
    QCOMPARE(line.uart.dropped, QList<int>{TCIFLUSH});
    QVERIFY(line.engine->reset());
    QCOMPARE(line.uart.dropped.last(), TCIOFLUSH);
}

void tst_NativeSerialEngineUart::flushWaitsUntilAllIsSent()
{
    UartLine line;
    QVERIFY(line.open());
    line.uart.queued = 40;
    line.uart.drainedPerLook = 10;
    line.uart.shifting = 8;
    QVERIFY(line.engine->flush());
    QCOMPARE(line.uart.queued, 0);
    QCOMPARE(line.uart.shifting, 0);
}

void tst_NativeSerialEngineUart::flushGivesUpOnABlockedLine()
{
    UartLine line;
    QVERIFY(line.open());
    line.uart.queued = 1;
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!line.engine->flush());
    QVERIFY(timer.elapsed() >= TransferLimit);
    line.uart.queued = 0;
    QVERIFY(line.engine->flush());
}

void tst_NativeSerialEngineUart::closeDropsStuckOutput()
{
    UartLine line;
    QVERIFY(line.open());
    QVERIFY(line.engine->close());
    QVERIFY(!line.uart.dropped.contains(TCOFLUSH));
    QVERIFY(line.open());
    line.uart.queued = 1;
    QVERIFY(line.engine->close());
    QCOMPARE(line.uart.dropped.last(), TCOFLUSH);
    QCOMPARE(line.engine->descriptor(), qintptr(-1));
}

void tst_NativeSerialEngineUart::linesAsFoundAreNotTold()
{
    UartLine line;
    line.uart.modemLines = TIOCM_DSR;
    QVERIFY(line.open());
    line.uart.modemLines |= TIOCM_CTS;
    line.engine->setLineNotificationEnabled(true, false);
    QVERIFY(linesAreLookedAt(line.uart));
    QCOMPARE(line.receiver.lines, 0);
    line.uart.modemLines ^= TIOCM_CAR | TIOCM_DTR | TIOCM_RTS;
    QVERIFY(linesAreLookedAt(line.uart));
    QCOMPARE(line.receiver.lines, 0);
}

void tst_NativeSerialEngineUart::changedLineIsTold_data()
{
    QTest::addColumn<int>("bit");
    QTest::newRow("CTS") << TIOCM_CTS;
    QTest::newRow("DSR") << TIOCM_DSR;
    QTest::newRow("ring") << TIOCM_RNG;
}

void tst_NativeSerialEngineUart::changedLineIsTold()
{
    QFETCH(int, bit);
    UartLine line;
    QVERIFY(line.open());
    line.engine->setLineNotificationEnabled(true, false);
    line.uart.modemLines ^= bit;
    QTRY_COMPARE(line.receiver.lines, 1);
    line.uart.modemLines ^= bit;
    QTRY_COMPARE(line.receiver.lines, 2);
    // A port that stops answering, as one that was pulled out, tells nothing.
    line.uart.hasModemLines = false;
    QVERIFY(linesAreLookedAt(line.uart));
    QCOMPARE(line.receiver.lines, 2);
}

void tst_NativeSerialEngineUart::linesAreTakenAnewWhenTurnedOn()
{
    UartLine line;
    QVERIFY(line.open());
    line.engine->setLineNotificationEnabled(true, false);
    line.engine->setLineNotificationEnabled(false, false);
    QVERIFY(!line.engine->isLineNotificationEnabled());
    line.uart.modemLines = TIOCM_CTS;
    QVERIFY(linesCouldBeLookedAt(line.uart));
    line.engine->setLineNotificationEnabled(true, false);
    QVERIFY(linesAreLookedAt(line.uart));
    QCOMPARE(line.receiver.lines, 0);
    line.uart.modemLines = 0;
    QTRY_COMPARE(line.receiver.lines, 1);
}

void tst_NativeSerialEngineUart::lineKindEndsWithTheOpening()
{
    UartLine line;
    QVERIFY(line.open());
    line.engine->setLineNotificationEnabled(true, false);
    line.engine->setLineNotificationEnabled(false, true);
    QVERIFY(line.engine->close());
    line.uart.modemLines = TIOCM_CTS;
    QVERIFY(linesCouldBeLookedAt(line.uart));
    QVERIFY(line.open());
    line.engine->setLineNotificationEnabled(true, false);
    QVERIFY(linesAreLookedAt(line.uart));
    QCOMPARE(line.receiver.lines, 0);
}

void tst_NativeSerialEngineUart::closeInTheLineCall()
{
    UartLine line;
    line.receiver.onLine = [&line] { line.engine->close(); };
    QVERIFY(line.open());
    line.engine->setLineNotificationEnabled(true, false);
    line.uart.modemLines = TIOCM_CTS;
    QTRY_COMPARE(line.receiver.lines, 1);
    line.uart.modemLines = 0;
    QVERIFY(linesCouldBeLookedAt(line.uart));
    QCOMPARE(line.receiver.lines, 1);
    QCOMPARE(line.engine->descriptor(), qintptr(-1));
}

QTEST_GUILESS_MAIN(tst_NativeSerialEngineUart)
#include "tst_NativeSerialEngineUart.moc"
