#include "serial/FakedLine.h"
#include "support/TestCase.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// What the engine asks of a driver to read, to write and to wait, and what it makes of the
/// answers.
class tst_NativeSerialEngineBlocks : public TestCase
{
    Q_OBJECT

private slots:
    void readsInBlocks_data();
    void readsInBlocks();
    void readEndsWithAShortBlock();
    void readThatTakesTooLong();
    void givenUpReadEndsInTheNext_data();
    void givenUpReadEndsInTheNext();
    void readFails_data();
    void readFails();
    void readFailsAtALaterBlock_data();
    void readFailsAtALaterBlock();
    void writesInBlocks_data();
    void writesInBlocks();
    void writeEndsWithAShortBlock();
    void writeThatTakesTooLong();
    void writeFails_data();
    void writeFails();
    void writeFailsAtALaterBlock();

    void waitWidensTheMask_data();
    void waitWidensTheMask();
    void waitFindsWaitingBytes();
    void waitTellsWhatHappened_data();
    void waitTellsWhatHappened();
    void waitFails_data();
    void waitFails();
    void waitTakesItsTime_data();
    void waitTakesItsTime();
};

namespace {

using Ending = FakeDriver::Ending;

QByteArray pattern(qsizetype size)
{
    QByteArray bytes(size, '\0');
    for (qsizetype at = 0; at < size; ++at) {
        bytes[at] = char(at % 251);
    }
    return bytes;
}

/// The calls of a row of transfers, each of which ends as @p ending says.
QStringList transfers(const QString &function, const QList<int> &sizes, Ending ending)
{
    QStringList calls;
    for (const int size : sizes) {
        calls << function + u' ' + QString::number(size);
        if (ending == Ending::Later) {
            calls << u"WaitForSingleObject 5000"_s;
        }
        calls << u"GetOverlappedResult"_s;
    }
    return calls;
}

/// Rows of a size and of the blocks that it is cut into.
void addSizes(int block)
{
    QTest::addColumn<int>("size");
    QTest::addColumn<QList<int>>("blocks");
    QTest::newRow("one byte") << 1 << QList<int>{1};
    QTest::newRow("a block less one") << block - 1 << QList<int>{block - 1};
    QTest::newRow("a block") << block << QList<int>{block};
    QTest::newRow("a block and one") << block + 1 << QList<int>{block, 1};
    QTest::newRow("two blocks") << 2 * block << QList<int>{block, block};
    QTest::newRow("more") << 2 * block + 88 << QList<int>{block, block, 88};
}

} // namespace

void tst_NativeSerialEngineBlocks::readsInBlocks_data()
{
    addSizes(256);
}

void tst_NativeSerialEngineBlocks::readsInBlocks()
{
    QFETCH(int, size);
    QFETCH(QList<int>, blocks);
    for (const Ending ending : {Ending::AtOnce, Ending::Later}) {
        FakedLine line;
        line.driver.received = pattern(size) + "rest";
        line.driver.ending = ending;
        QByteArray got(size, '\0');
        QCOMPARE(line.engine->read(got.data(), size), qint64(size));
        QCOMPARE(got, pattern(size));
        QCOMPARE(line.driver.received, "rest");
        QCOMPARE(line.driver.takeCalls(), transfers(u"ReadFile"_s, blocks, ending));
    }
}

void tst_NativeSerialEngineBlocks::readEndsWithAShortBlock()
{
    FakedLine line;
    line.driver.received = pattern(300);
    QByteArray got(1000, 'x');
    QCOMPARE(line.engine->read(got.data(), got.size()), qint64(300));
    QCOMPARE(got, pattern(300) + QByteArray(700, 'x'));
    QCOMPARE(line.driver.takeCalls(), transfers(u"ReadFile"_s, {256, 256}, Ending::AtOnce));
    QCOMPARE(line.engine->read(got.data(), got.size()), qint64(0));
    QCOMPARE(line.driver.takeCalls(), transfers(u"ReadFile"_s, {256}, Ending::AtOnce));
}

// It is given up, but by design not cancelled.
void tst_NativeSerialEngineBlocks::readThatTakesTooLong()
{
    FakedLine line;
    line.driver.ending = Ending::TooLate;
    char byte = 'x';
    QCOMPARE(line.engine->read(&byte, 1), qint64(0));
    QCOMPARE(byte, 'x');
    QCOMPARE(line.driver.takeCalls(),
             (QStringList{u"ReadFile 1"_s, u"WaitForSingleObject 5000"_s}));
}

void tst_NativeSerialEngineBlocks::givenUpReadEndsInTheNext_data()
{
    QTest::addColumn<int>("asked");
    QTest::addColumn<int>("came");
    QTest::newRow("less than was given up") << 3 << 3;
    QTest::newRow("as much") << 100 << 100;
    QTest::newRow("more") << 256 << 100;
}

// What comes for the read that was given up goes to the one under way by then: never more than that
// one asked for, and never into the memory of the first, which may be gone.
void tst_NativeSerialEngineBlocks::givenUpReadEndsInTheNext()
{
    QFETCH(int, asked);
    QFETCH(int, came);
    FakedLine line;
    line.driver.ending = Ending::TooLate;
    QByteArray first(100, 'x');
    QCOMPARE(line.engine->read(first.data(), first.size()), qint64(0));
    line.driver.received = pattern(300);
    line.driver.ending = Ending::Later;
    QByteArray got(256, 'y');
    QCOMPARE(line.engine->read(got.data(), asked), qint64(came));
    QCOMPARE(got, pattern(came) + QByteArray(256 - came, 'y'));
    QCOMPARE(first, QByteArray(100, 'x'));
    QCOMPARE(line.driver.received, pattern(300).sliced(100)); // the first asked for 100
}

void tst_NativeSerialEngineBlocks::readFails_data()
{
    QTest::addColumn<QByteArray>("function");
    QTest::newRow("at the start") << "ReadFile"_ba;
    QTest::newRow("at the end") << "GetOverlappedResult"_ba;
}

void tst_NativeSerialEngineBlocks::readFails()
{
    QFETCH(QByteArray, function);
    for (const Ending ending : {Ending::AtOnce, Ending::Later}) {
        FakedLine line;
        line.driver.received = "abc";
        line.driver.ending = ending;
        line.driver.failing = {function};
        char bytes[3] = {};
        QCOMPARE(line.engine->read(bytes, 3), qint64(0));
        QCOMPARE(line.driver.takeCalls().contains(u"WaitForSingleObject 5000"_s),
                 ending == Ending::Later && function != "ReadFile");
    }
}

void tst_NativeSerialEngineBlocks::readFailsAtALaterBlock_data()
{
    QTest::addColumn<QByteArray>("function");
    QTest::addColumn<int>("block");
    QTest::addColumn<int>("came");
    QTest::newRow("second, at the start") << "ReadFile"_ba << 2 << 256;
    QTest::newRow("second, at the end") << "GetOverlappedResult"_ba << 2 << 256;
    QTest::newRow("third, at the start") << "ReadFile"_ba << 3 << 512;
    QTest::newRow("third, at the end") << "GetOverlappedResult"_ba << 3 << 512;
}

void tst_NativeSerialEngineBlocks::readFailsAtALaterBlock()
{
    QFETCH(QByteArray, function);
    QFETCH(int, block);
    QFETCH(int, came);
    FakedLine line;
    line.driver.received = pattern(2000);
    line.driver.failAt(function, block);
    QByteArray got(1000, 'x');
    QCOMPARE(line.engine->read(got.data(), got.size()), qint64(came));
    QCOMPARE(got, pattern(came) + QByteArray(1000 - came, 'x'));
}

void tst_NativeSerialEngineBlocks::writesInBlocks_data()
{
    addSizes(512);
}

void tst_NativeSerialEngineBlocks::writesInBlocks()
{
    QFETCH(int, size);
    QFETCH(QList<int>, blocks);
    for (const Ending ending : {Ending::AtOnce, Ending::Later}) {
        FakedLine line;
        line.driver.ending = ending;
        const QByteArray bytes = pattern(size);
        QCOMPARE(line.engine->write(bytes.constData(), size), qint64(size));
        QCOMPARE(line.driver.sent, bytes);
        QCOMPARE(line.driver.takeCalls(), transfers(u"WriteFile"_s, blocks, ending));
    }
}

void tst_NativeSerialEngineBlocks::writeEndsWithAShortBlock()
{
    FakedLine line;
    line.driver.room = 600;
    const QByteArray bytes = pattern(2000);
    QCOMPARE(line.engine->write(bytes.constData(), bytes.size()), qint64(-1));
    QCOMPARE(line.driver.sent, bytes.first(600));
    QCOMPARE(line.driver.takeCalls(), transfers(u"WriteFile"_s, {512, 512}, Ending::AtOnce));
}

void tst_NativeSerialEngineBlocks::writeThatTakesTooLong()
{
    FakedLine line;
    line.driver.ending = Ending::TooLate;
    QCOMPARE(line.engine->write("x", 1), qint64(-1));
    QCOMPARE(line.driver.takeCalls(),
             (QStringList{u"WriteFile 1"_s, u"WaitForSingleObject 5000"_s}));
}

void tst_NativeSerialEngineBlocks::writeFails_data()
{
    QTest::addColumn<QByteArray>("function");
    QTest::newRow("at the start") << "WriteFile"_ba;
    QTest::newRow("at the end") << "GetOverlappedResult"_ba;
}

void tst_NativeSerialEngineBlocks::writeFails()
{
    QFETCH(QByteArray, function);
    FakedLine line;
    line.driver.failing = {function};
    QCOMPARE(line.engine->write("abc", 3), qint64(-1));
}

// Whatever went out before, a write is done whole or has failed.
void tst_NativeSerialEngineBlocks::writeFailsAtALaterBlock()
{
    FakedLine line;
    line.driver.failAt("WriteFile"_ba, 3);
    const QByteArray bytes = pattern(2000);
    QCOMPARE(line.engine->write(bytes.constData(), bytes.size()), qint64(-1));
    QCOMPARE(line.driver.sent, bytes.first(1024));
    QCOMPARE(line.driver.takeCalls().constLast(), u"WriteFile 512"_s); // nothing follows
}

void tst_NativeSerialEngineBlocks::waitWidensTheMask_data()
{
    QTest::addColumn<DWORD>("before");
    QTest::addColumn<bool>("checkRead");
    QTest::addColumn<bool>("checkWrite");
    QTest::addColumn<QList<DWORD>>("set");
    QTest::newRow("to read") << DWORD(0) << true << false << QList<DWORD>{1, 0};
    QTest::newRow("to write") << DWORD(0) << false << true << QList<DWORD>{4, 0};
    QTest::newRow("both") << DWORD(0) << true << true << QList<DWORD>{5, 0};
    QTest::newRow("lines are watched") << DWORD(280) << true << false << QList<DWORD>{281, 280};
    QTest::newRow("one of both is watched") << DWORD(1) << true << true << QList<DWORD>{5, 1};
    QTest::newRow("all is watched") << DWORD(5) << true << false << QList<DWORD>{5};
}

void tst_NativeSerialEngineBlocks::waitWidensTheMask()
{
    QFETCH(DWORD, before);
    QFETCH(bool, checkRead);
    QFETCH(bool, checkWrite);
    QFETCH(QList<DWORD>, set);
    FakedLine line;
    line.driver.mask = before;
    line.driver.ending = Ending::TooLate;
    bool readable = true;
    bool writable = true;
    QVERIFY(!line.engine->waitForReadOrWrite(&readable, &writable, checkRead, checkWrite, 20));
    QVERIFY(!readable && !writable);

    QStringList calls;
    if (checkRead) {
        calls << u"ClearCommError"_s;
    }
    calls << u"GetCommMask"_s;
    if (set.size() > 1) {
        calls << u"SetCommMask %1"_s.arg(set.constFirst());
    }
    calls << u"WaitCommEvent"_s << u"WaitForSingleObject 20"_s
          << u"SetCommMask %1"_s.arg(set.constLast());
    QCOMPARE(line.driver.takeCalls(), calls);
    QCOMPARE(line.driver.mask, before);
}

void tst_NativeSerialEngineBlocks::waitFindsWaitingBytes()
{
    FakedLine line;
    line.driver.received = "abc";
    bool readable = false;
    bool writable = true;
    QVERIFY(line.engine->waitForReadOrWrite(&readable, &writable, true, true, 60000));
    QVERIFY(readable && !writable);
    QCOMPARE(line.driver.takeCalls(), QStringList(u"ClearCommError"_s));
}

void tst_NativeSerialEngineBlocks::waitTellsWhatHappened_data()
{
    QTest::addColumn<DWORD>("events");
    QTest::addColumn<bool>("checkRead");
    QTest::addColumn<bool>("checkWrite");
    QTest::addColumn<bool>("isCountKnown");
    QTest::addColumn<bool>("readable");
    QTest::addColumn<bool>("writable");
    // Nothing waits at the beginning of each, so a count that is known is 0.
    QTest::newRow("sent") << DWORD(4) << true << true << true << false << true;
    QTest::newRow("sent, nobody asked") << DWORD(4) << true << false << true << false << false;
    QTest::newRow("character that is gone") << DWORD(1) << true << true << true << false << false;
    QTest::newRow("unknown count counts") << DWORD(1) << true << true << false << true << false;
    QTest::newRow("character, nobody asked")
        << DWORD(1) << false << true << false << false << false;
    QTest::newRow("both") << DWORD(5) << true << true << false << true << true;
    QTest::newRow("others") << DWORD(280) << true << true << false << false << false;
    QTest::newRow("none") << DWORD(0) << true << true << false << false << false;
}

void tst_NativeSerialEngineBlocks::waitTellsWhatHappened()
{
    QFETCH(DWORD, events);
    QFETCH(bool, checkRead);
    QFETCH(bool, checkWrite);
    QFETCH(bool, isCountKnown);
    for (const Ending ending : {Ending::AtOnce, Ending::Later}) {
        FakedLine line;
        line.driver.events = events;
        line.driver.ending = ending;
        if (!isCountKnown) {
            line.driver.failing = {"ClearCommError"_ba};
        }
        bool readable = true;
        bool writable = true;
        QVERIFY(line.engine->waitForReadOrWrite(&readable, &writable, checkRead, checkWrite, 20));
        QTEST(readable, "readable");
        QTEST(writable, "writable");
        QCOMPARE(line.driver.mask, DWORD(0));
    }
}

void tst_NativeSerialEngineBlocks::waitFails_data()
{
    QTest::addColumn<QByteArray>("function");
    QTest::newRow("at the start") << "WaitCommEvent"_ba;
    QTest::newRow("at the end") << "GetOverlappedResult"_ba;
}

void tst_NativeSerialEngineBlocks::waitFails()
{
    QFETCH(QByteArray, function);
    FakedLine line;
    line.driver.mask = 280;
    line.driver.events = 5;
    line.driver.ending = Ending::Later;
    line.driver.failing = {function};
    bool readable = true;
    bool writable = true;
    QVERIFY(!line.engine->waitForReadOrWrite(&readable, &writable, true, true, 20));
    QVERIFY(!readable && !writable);
    QCOMPARE(line.driver.takeCalls().constLast(), u"SetCommMask 280"_s);
}

void tst_NativeSerialEngineBlocks::waitTakesItsTime_data()
{
    QTest::addColumn<int>("msecs");
    QTest::addColumn<QString>("wait");
    QTest::newRow("long") << 60000 << u"WaitForSingleObject 60000"_s;
    QTest::newRow("0") << 0 << u"WaitForSingleObject 0"_s;
    QTest::newRow("-1 polls") << -1 << u"WaitForSingleObject 0"_s;
}

void tst_NativeSerialEngineBlocks::waitTakesItsTime()
{
    QFETCH(int, msecs);
    QFETCH(QString, wait);
    FakedLine line;
    line.driver.ending = Ending::TooLate;
    bool readable = true;
    bool writable = true;
    QVERIFY(!line.engine->waitForReadOrWrite(&readable, &writable, true, true, msecs));
    QVERIFY(line.driver.takeCalls().contains(wait));
}

QTEST_GUILESS_MAIN(tst_NativeSerialEngineBlocks)
#include "tst_NativeSerialEngineBlocks.moc"
