#include "WatchedLine.h"
#include "support/TestCase.h"

#include <QElapsedTimer>
#include <QTest>

#include <array>
#include <chrono>
#include <thread>

/// Reading, writing and waiting on COM ports.
class tst_NativeSerialEngineTransfer : public TestCase
{
    Q_OBJECT

private slots:
    void readsWhatWaits();
    void readsInTransfers_data();
    void readsInTransfers();
    void readOfNothing();
    void shortReadEndsAtTheTotalTimeout();
    void shortReadIsGivenUp();
    void readGoesOnWithWhatComesInTime();
    void writesInTransfers_data();
    void writesInTransfers();
    void writeOfNothing();
    void blockedWriteFails();
    void everyByteCrossesAsItIs();
    void waitFindsWaitingBytesAtOnce();
    void waitWithoutTimeOnlyPolls_data();
    void waitWithoutTimeOnlyPolls();
    void waitRestoresTheMask_data();
    void waitRestoresTheMask();
    void resetDropsTheInput();
    void flushWithNothingToSend();
    void pulledOut();
};

namespace {

/// A generous limit for what has to happen at once.
constexpr qint64 AtOnce = 3000; // ms
constexpr qint64 TransferLimit = 5000; // ms, the engine's own

QByteArray pattern(qsizetype size)
{
    QByteArray bytes(size, '\0');
    for (qsizetype at = 0; at < size; ++at) {
        bytes[at] = char(at % 251);
    }
    return bytes;
}

} // namespace

void tst_NativeSerialEngineTransfer::readsWhatWaits()
{
    WatchedLine line;
    QVERIFY(line.isOpen);
    QCOMPARE(line.engine->bytesAvailable(), qint64(0));
    QVERIFY(line.pty.send("123456789"));
    QTRY_COMPARE(line.engine->bytesAvailable(), qint64(9));
    QCOMPARE(line.read(1), qint64(1));
    QCOMPARE(line.got, "1");
    QCOMPARE(line.read(8), qint64(8));
    QCOMPARE(line.got, "23456789");
    QCOMPARE(line.engine->bytesAvailable(), qint64(0));
}

void tst_NativeSerialEngineTransfer::readsInTransfers_data()
{
    QTest::addColumn<int>("size");
    for (const int size : {255, 256, 257, 512, 1000, 3000}) {
        QTest::addRow("%d", size) << size;
    }
}

void tst_NativeSerialEngineTransfer::readsInTransfers()
{
    QFETCH(int, size);
    WatchedLine line;
    QVERIFY(line.pty.send(pattern(size)));
    QTRY_COMPARE(line.engine->bytesAvailable(), qint64(size));
    QCOMPARE(line.read(size), qint64(size));
    QCOMPARE(line.got, pattern(size));
}

void tst_NativeSerialEngineTransfer::readOfNothing()
{
    WatchedLine line;
    QVERIFY(line.pty.send("kept"));
    QTRY_COMPARE(line.engine->bytesAvailable(), qint64(4));
    char byte = 'x';
    QCOMPARE(line.engine->read(&byte, 0), qint64(0));
    QCOMPARE(line.engine->read(&byte, -1), qint64(0));
    QCOMPARE(byte, 'x');
    QCOMPARE(line.engine->bytesAvailable(), qint64(4));
}

void tst_NativeSerialEngineTransfer::shortReadEndsAtTheTotalTimeout()
{
    WatchedLine line;
    line.engine->setTotalReadConstantTimeout(50);
    QVERIFY(line.pty.send("abc"));
    QTRY_COMPARE(line.engine->bytesAvailable(), qint64(3));
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(line.read(10), qint64(3));
    QVERIFY2(timer.elapsed() < AtOnce, "the read waited past its own limit");
    QCOMPARE(line.got, "abc");
    QCOMPARE(line.read(10), qint64(0));
    QVERIFY(line.pty.send(pattern(300)));
    QTRY_COMPARE(line.engine->bytesAvailable(), qint64(300));
    QCOMPARE(line.read(1000), qint64(300));
    QCOMPARE(line.got, pattern(300));
}

// With the interval timeout of 65535 ms nothing but the engine's own patience ends such a read.
// What comes after that goes into a transfer that nobody waits for any more.
void tst_NativeSerialEngineTransfer::shortReadIsGivenUp()
{
    WatchedLine line;
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(line.read(10), qint64(0));
    QVERIFY(timer.elapsed() >= TransferLimit - 1);
    QVERIFY(line.pty.send(pattern(10)));
    std::array<char, 64> stack{}; // where nothing may be written any more
    QTest::qWait(200);
    QCOMPARE(stack, (std::array<char, 64>{}));
    QVERIFY(line.engine->close());
    QVERIFY(line.engine->open(QIODevice::ReadWrite));
    QVERIFY(line.engine->reset());
    QVERIFY(line.pty.send("new"));
    QTRY_COMPARE(line.engine->bytesAvailable(), qint64(3));
    QCOMPARE(line.read(3), qint64(3));
    QCOMPARE(line.got, "new");
}

void tst_NativeSerialEngineTransfer::readGoesOnWithWhatComesInTime()
{
    WatchedLine line;
    QVERIFY(line.pty.send("first"));
    std::thread late([&line] {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        line.pty.send("second");
    });
    const qint64 count = line.read(11);
    late.join();
    QCOMPARE(count, qint64(11));
    QCOMPARE(line.got, "firstsecond");
}

void tst_NativeSerialEngineTransfer::writesInTransfers_data()
{
    QTest::addColumn<int>("size");
    for (const int size : {1, 9, 511, 512, 513, 1024, 3000}) {
        QTest::addRow("%d", size) << size;
    }
}

void tst_NativeSerialEngineTransfer::writesInTransfers()
{
    QFETCH(int, size);
    WatchedLine line;
    QCOMPARE(line.write(pattern(size)), qint64(size));
    QTRY_COMPARE(line.pty.received(), pattern(size));
}

void tst_NativeSerialEngineTransfer::writeOfNothing()
{
    WatchedLine line;
    QCOMPARE(line.engine->write("x", 0), qint64(-1));
    QCOMPARE(line.engine->write("x", -1), qint64(-1));
    QCOMPARE(line.write("y"), qint64(1));
    QTRY_COMPARE(line.pty.received(), "y");
}

void tst_NativeSerialEngineTransfer::blockedWriteFails()
{
    WatchedLine line;
    QElapsedTimer timer;
    timer.start();
    // More than the line holds, and nobody takes it: the first transfers pass, the last doesn't.
    QCOMPARE(line.write(pattern(1 << 20)), qint64(-1));
    QVERIFY(timer.elapsed() >= TransferLimit - 1);
    const QByteArray received = line.pty.received();
    QVERIFY(received.size() >= 512);
    QVERIFY(pattern(1 << 20).startsWith(received));
}

void tst_NativeSerialEngineTransfer::everyByteCrossesAsItIs()
{
    WatchedLine line;
    QByteArray all;
    for (int byte = 0; byte <= 255; ++byte) {
        all.append(char(byte));
    }
    QVERIFY(line.pty.send(all));
    QTRY_COMPARE(line.engine->bytesAvailable(), qint64(all.size()));
    QCOMPARE(line.read(all.size()), qint64(all.size()));
    QCOMPARE(line.got, all);
    QCOMPARE(line.write(all), qint64(all.size()));
    QTRY_COMPARE(line.pty.received(), all);
}

void tst_NativeSerialEngineTransfer::waitFindsWaitingBytesAtOnce()
{
    WatchedLine line;
    QVERIFY(line.pty.send("abc"));
    QTRY_COMPARE(line.engine->bytesAvailable(), qint64(3));
    bool readable = false;
    bool writable = true;
    QVERIFY(line.engine->waitForReadOrWrite(&readable, &writable, true, true, 60000));
    QVERIFY(readable);
    QVERIFY(!writable);
}

void tst_NativeSerialEngineTransfer::waitWithoutTimeOnlyPolls_data()
{
    QTest::addColumn<int>("msecs");
    QTest::newRow("-1") << -1;
    QTest::newRow("-60000") << -60000;
    QTest::newRow("0") << 0;
}

void tst_NativeSerialEngineTransfer::waitWithoutTimeOnlyPolls()
{
    QFETCH(int, msecs);
    WatchedLine line;
    bool readable = true;
    bool writable = true;
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!line.engine->waitForReadOrWrite(&readable, &writable, true, false, msecs));
    QVERIFY(timer.elapsed() < AtOnce);
    QVERIFY(!readable);
    QVERIFY(!writable);
}

void tst_NativeSerialEngineTransfer::waitRestoresTheMask_data()
{
    QTest::addColumn<DWORD>("mask");
    QTest::newRow("nothing watched") << DWORD(0);
    QTest::newRow("other events watched") << DWORD(EV_CTS | EV_DSR | EV_RING);
    QTest::newRow("the same event watched") << DWORD(EV_RXCHAR);
}

void tst_NativeSerialEngineTransfer::waitRestoresTheMask()
{
    QFETCH(DWORD, mask);
    WatchedLine line;
    QVERIFY(SetCommMask(line.port(), mask));
    bool readable = false;
    bool writable = false;
    line.engine->waitForReadOrWrite(&readable, &writable, true, true, 0);
    QCOMPARE(line.mask(), mask);
}

void tst_NativeSerialEngineTransfer::resetDropsTheInput()
{
    WatchedLine line;
    QVERIFY(line.pty.send("old"));
    QTRY_COMPARE(line.engine->bytesAvailable(), qint64(3));
    QVERIFY(line.engine->reset());
    QCOMPARE(line.engine->bytesAvailable(), qint64(0));
    QVERIFY(line.pty.send("n"));
    QTRY_COMPARE(line.engine->bytesAvailable(), qint64(1));
}

void tst_NativeSerialEngineTransfer::flushWithNothingToSend()
{
    WatchedLine line;
    QVERIFY(line.engine->flush());
    QCOMPARE(line.write("x"), qint64(1));
    QVERIFY(line.engine->flush());
    QTRY_COMPARE(line.pty.received(), "x");
}

void tst_NativeSerialEngineTransfer::pulledOut()
{
    WatchedLine line;
    line.pty.pullOut();
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(line.write("x"), qint64(-1));
    QCOMPARE(line.read(9), qint64(0));
    QVERIFY(line.engine->close());
    QVERIFY(timer.elapsed() < AtOnce);
    QCOMPARE(line.engine->descriptor(), qintptr(-1));
    QVERIFY(!line.engine->open(QIODevice::ReadWrite));
}

QTEST_GUILESS_MAIN(tst_NativeSerialEngineTransfer)
#include "tst_NativeSerialEngineTransfer.moc"
