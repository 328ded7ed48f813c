#include "serial/AbstractSerialEngine.h"
#include "serial/PtyPair.h"
#include "support/TestCase.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QTest>

#include <chrono>
#include <csignal>
#include <memory>
#include <thread>

#include <pthread.h>
#include <sys/time.h>

/// Reading, writing and waiting, on real pseudo-terminals, and what is left of them when the far
/// end is pulled out.
class tst_NativeSerialEngineTransfer : public TestCase
{
    Q_OBJECT

private slots:
    void readsWhatWaits();
    void readsInTransfers_data();
    void readsInTransfers();
    void readOfNothing();
    void shortReadEndsAtTheTotalTimeout();
    void shortReadEndsAtTheTransferLimit();
    void readGoesOnWithWhatComesInTime();
    void readSurvivesSignals();
    void writesInTransfers_data();
    void writesInTransfers();
    void writeOfNothing();
    void blockedWriteFails();
    void waitFindsWaitingBytesAtOnce();
    void waitEndsWithACharacter();
    void waitWithoutTimeOnlyPolls_data();
    void waitWithoutTimeOnlyPolls();
    void waitEndsWithTheTime();
    void waitForWriting();
    void waitForBoth();
    void resetDropsTheInput();
    void flushWithNothingToSend();
    void pulledOutWhileIdle();
    void pulledOutWithUnreadBytes();
    void pulledOutInMidRead();
    void pulledOutInMidWait();
};

namespace {

/// A generous limit for what has to happen at once.
constexpr qint64 AtOnce = 3000; // ms
constexpr qint64 TransferLimit = 5000; // ms, the engine's own

/// An engine with an open port, and the far end of its line.
struct OpenLine
{
    OpenLine()
    {
        engine.reset(AbstractSerialEngine::createEngine());
        engine->setDeviceName(pty.portName());
        isOpen = engine->open(QIODevice::ReadWrite);
    }

    qint64 read(qint64 size)
    {
        got.fill('\0', size);
        const qint64 count = engine->read(got.data(), size);
        got.truncate(qMax(count, qint64(0)));
        return count;
    }
    qint64 write(const QByteArray &bytes) { return engine->write(bytes.constData(), bytes.size()); }
    bool wait(bool checkRead, bool checkWrite, int msecs)
    {
        return engine->waitForReadOrWrite(&readable, &writable, checkRead, checkWrite, msecs);
    }

    PtyPair pty;
    std::unique_ptr<AbstractSerialEngine> engine;
    bool isOpen = false;
    QByteArray got;
    bool readable = false;
    bool writable = false;
};

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
    OpenLine line;
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
    OpenLine line;
    QVERIFY(line.pty.send(pattern(size)));
    QTRY_COMPARE(line.engine->bytesAvailable(), qint64(size));
    QCOMPARE(line.read(size), qint64(size));
    QCOMPARE(line.got, pattern(size));
}

void tst_NativeSerialEngineTransfer::readOfNothing()
{
    OpenLine line;
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
    OpenLine line;
    line.engine->setTotalReadConstantTimeout(50);
    QVERIFY(line.pty.send("abc"));
    QTRY_COMPARE(line.engine->bytesAvailable(), qint64(3));
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(line.read(10), qint64(3));
    QVERIFY2(timer.elapsed() >= 50, "the read didn't wait for the rest");
    QVERIFY2(timer.elapsed() < AtOnce, "the read waited past its own limit");
    QCOMPARE(line.got, "abc");
    QCOMPARE(line.read(10), qint64(0));
    // A full transfer and a short one: the limit counts for the second alone.
    QVERIFY(line.pty.send(pattern(300)));
    QTRY_COMPARE(line.engine->bytesAvailable(), qint64(300));
    QCOMPARE(line.read(1000), qint64(300));
    QCOMPARE(line.got, pattern(300));
}

void tst_NativeSerialEngineTransfer::shortReadEndsAtTheTransferLimit()
{
    OpenLine line;
    QVERIFY(line.pty.send("abc"));
    QTRY_COMPARE(line.engine->bytesAvailable(), qint64(3));
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(line.read(10), qint64(3));
    QVERIFY(timer.elapsed() >= TransferLimit);
    QCOMPARE(line.got, "abc");
}

void tst_NativeSerialEngineTransfer::readGoesOnWithWhatComesInTime()
{
    OpenLine line;
    QVERIFY(line.pty.send("first"));
    std::thread late([&line] {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        line.pty.send("second");
    });
    QCOMPARE(line.read(11), qint64(11));
    late.join();
    QCOMPARE(line.got, "firstsecond");
}

void tst_NativeSerialEngineTransfer::readSurvivesSignals()
{
    struct sigaction ignored
    {
    };
    struct sigaction before
    {
    };
    ignored.sa_handler = [](int) {};
    QCOMPARE(::sigaction(SIGALRM, &ignored, &before), 0);
    // Every millisecond one, so that the wait is interrupted for certain.
    itimerval often{{0, 1000}, {0, 1000}};
    QCOMPARE(::setitimer(ITIMER_REAL, &often, nullptr), 0);
    OpenLine line;
    line.engine->setTotalReadConstantTimeout(100);
    QElapsedTimer timer;
    timer.start();
    const bool openedUnderSignals = line.isOpen;
    const qint64 nothing = line.read(1);
    const qint64 waited = timer.elapsed();
    const bool sent = line.pty.send("x");
    const bool woken = line.wait(true, false, int(TransferLimit));
    const itimerval off{};
    ::setitimer(ITIMER_REAL, &off, nullptr);
    ::sigaction(SIGALRM, &before, nullptr);
    QVERIFY(openedUnderSignals && sent && woken);
    QCOMPARE(nothing, qint64(0));
    QVERIFY2(waited >= 100 && waited < TransferLimit, qPrintable(QString::number(waited)));
    QCOMPARE(line.read(1), qint64(1));
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
    OpenLine line;
    QCOMPARE(line.write(pattern(size)), qint64(size));
    QTRY_COMPARE(line.pty.received(), pattern(size));
}

void tst_NativeSerialEngineTransfer::writeOfNothing()
{
    OpenLine line;
    QCOMPARE(line.engine->write("x", 0), qint64(-1));
    QCOMPARE(line.engine->write("x", -1), qint64(-1));
    QCOMPARE(line.write("y"), qint64(1));
    QTRY_COMPARE(line.pty.received(), "y");
}

void tst_NativeSerialEngineTransfer::blockedWriteFails()
{
    OpenLine line;
    QElapsedTimer timer;
    timer.start();
    // More than the line holds, and nobody takes it: the first transfers pass, the last doesn't.
    QCOMPARE(line.write(pattern(1 << 20)), qint64(-1));
    QVERIFY(timer.elapsed() >= TransferLimit);
    QVERIFY(line.pty.received().size() >= 512);
    QVERIFY(pattern(1 << 20).startsWith(line.pty.received()));
    QCOMPARE(line.write("z"), qint64(1));
}

void tst_NativeSerialEngineTransfer::waitFindsWaitingBytesAtOnce()
{
    OpenLine line;
    QVERIFY(line.pty.send("abc"));
    QTRY_COMPARE(line.engine->bytesAvailable(), qint64(3));
    QVERIFY(line.wait(true, true, 60000));
    QVERIFY(line.readable);
    QVERIFY(!line.writable);
    QVERIFY(line.wait(true, false, -1));
    // Bytes that wait count only for who asks for them.
    QVERIFY(!line.wait(false, false, -1));
    QVERIFY(!line.readable);
}

void tst_NativeSerialEngineTransfer::waitEndsWithACharacter()
{
    OpenLine line;
    std::thread late([&line] {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        line.pty.send("x");
    });
    QElapsedTimer timer;
    timer.start();
    const bool woken = line.wait(true, false, 60000);
    late.join();
    QVERIFY(woken);
    QVERIFY(timer.elapsed() < 30000);
    QVERIFY(line.readable);
    QVERIFY(!line.writable);
    QCOMPARE(line.engine->bytesAvailable(), qint64(1));
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
    OpenLine line;
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!line.wait(true, false, msecs));
    QVERIFY(timer.elapsed() < AtOnce);
    QVERIFY(!line.readable);
}

void tst_NativeSerialEngineTransfer::waitEndsWithTheTime()
{
    OpenLine line;
    QElapsedTimer timer;
    timer.start();
    QVERIFY(!line.wait(true, false, 60));
    QVERIFY(timer.elapsed() >= 59);
    QVERIFY(!line.readable);
}

void tst_NativeSerialEngineTransfer::waitForWriting()
{
    OpenLine line;
    QVERIFY(line.wait(false, true, 60000));
    QVERIFY(line.writable);
    QVERIFY(!line.readable);
}

void tst_NativeSerialEngineTransfer::waitForBoth()
{
    OpenLine line;
    QVERIFY(line.wait(true, true, 60000));
    QVERIFY(line.writable);
    QVERIFY(!line.readable);
}

void tst_NativeSerialEngineTransfer::resetDropsTheInput()
{
    OpenLine line;
    QVERIFY(line.pty.send("old"));
    QTRY_COMPARE(line.engine->bytesAvailable(), qint64(3));
    QVERIFY(line.engine->reset());
    QCOMPARE(line.engine->bytesAvailable(), qint64(0));
    QVERIFY(line.pty.send("n"));
    QTRY_COMPARE(line.engine->bytesAvailable(), qint64(1));
}

void tst_NativeSerialEngineTransfer::flushWithNothingToSend()
{
    OpenLine line;
    QVERIFY(line.engine->flush());
    QCOMPARE(line.write("x"), qint64(1));
    QVERIFY(line.engine->flush());
    QTRY_COMPARE(line.pty.received(), "x");
}

void tst_NativeSerialEngineTransfer::pulledOutWhileIdle()
{
    OpenLine line;
    line.pty.close();
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(line.engine->bytesAvailable(), qint64(-1));
    QCOMPARE(line.read(9), qint64(0));
    QCOMPARE(line.write("x"), qint64(-1));
    QVERIFY(!line.wait(true, true, int(TransferLimit)));
    QVERIFY(!line.readable && !line.writable);
    QVERIFY(!line.wait(true, false, int(TransferLimit)));
    QVERIFY(timer.elapsed() < AtOnce);
    QVERIFY(line.engine->close());
    QCOMPARE(line.engine->descriptor(), qintptr(-1));
    QVERIFY(timer.elapsed() < AtOnce);
    QVERIFY(!line.engine->open(QIODevice::ReadWrite));
}

void tst_NativeSerialEngineTransfer::pulledOutWithUnreadBytes()
{
    OpenLine line;
    QVERIFY(line.pty.send("last"));
    QTRY_COMPARE(line.engine->bytesAvailable(), qint64(4));
    line.pty.close();
    // The kernel drops them with the port, and the engine fails as if they had never been there.
    QCOMPARE(line.engine->bytesAvailable(), qint64(-1));
    QVERIFY(!line.wait(true, false, int(TransferLimit)));
    QVERIFY(!line.readable);
    QCOMPARE(line.read(9), qint64(0));
}

void tst_NativeSerialEngineTransfer::pulledOutInMidRead()
{
    OpenLine line;
    QVERIFY(line.pty.send("abc"));
    QTRY_COMPARE(line.engine->bytesAvailable(), qint64(3));
    std::thread puller([&line] {
        // Once the read has taken the three bytes and waits for the others.
        const QDeadlineTimer deadline(TransferLimit);
        while (line.engine->bytesAvailable() != 0 && !deadline.hasExpired()) {
            std::this_thread::yield();
        }
        line.pty.close();
    });
    QElapsedTimer timer;
    timer.start();
    const qint64 count = line.read(9);
    puller.join();
    QVERIFY(timer.elapsed() < TransferLimit);
    QCOMPARE(count, qint64(3));
    QVERIFY(line.engine->close());
}

void tst_NativeSerialEngineTransfer::pulledOutInMidWait()
{
    OpenLine line;
    std::thread puller([&line] {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        line.pty.close();
    });
    QElapsedTimer timer;
    timer.start();
    const bool ready = line.wait(true, false, 60000);
    puller.join();
    QVERIFY(!ready);
    QVERIFY(timer.elapsed() < 30000);
}

QTEST_GUILESS_MAIN(tst_NativeSerialEngineTransfer)
#include "tst_NativeSerialEngineTransfer.moc"
