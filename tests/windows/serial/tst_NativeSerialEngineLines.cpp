#include "serial/FakedLine.h"
#include "support/TestCase.h"

#include <QTest>

using namespace Qt::StringLiterals;

/// What the engine asks of a driver about lines, breaks and queues, and what it makes of the
/// answers.
class tst_NativeSerialEngineLines : public TestCase
{
    Q_OBJECT

private slots:
    void modemLines_data();
    void modemLines();
    void outputLinesThatCannotBeRead_data();
    void outputLinesThatCannotBeRead();
    void outputLinesAreSet();
    void breaks();
    void queues();
    void bytesAvailable();
};

namespace {

using Status = AbstractSerial::LineStatus;

} // namespace

void tst_NativeSerialEngineLines::modemLines_data()
{
    QTest::addColumn<DWORD>("inputLines");
    QTest::addColumn<DWORD>("outputLines");
    QTest::addColumn<Status>("status");
    QTest::newRow("none") << DWORD(0) << DWORD(0) << Status();
    QTest::newRow("CTS") << DWORD(16) << DWORD(0) << Status(AbstractSerial::LineCTS);
    QTest::newRow("DSR") << DWORD(32) << DWORD(0) << Status(AbstractSerial::LineDSR);
    QTest::newRow("RI") << DWORD(64) << DWORD(0) << Status(AbstractSerial::LineRI);
    QTest::newRow("DCD") << DWORD(128) << DWORD(0) << Status(AbstractSerial::LineDCD);
    QTest::newRow("DTR") << DWORD(0) << DWORD(1) << Status(AbstractSerial::LineDTR);
    QTest::newRow("RTS") << DWORD(0) << DWORD(2) << Status(AbstractSerial::LineRTS);
    QTest::newRow("unknown") << DWORD(15) << DWORD(0xfc) << Status();
    QTest::newRow("all") << DWORD(240) << DWORD(3)
                         << Status(AbstractSerial::LineCTS | AbstractSerial::LineDSR
                                   | AbstractSerial::LineRI | AbstractSerial::LineDCD
                                   | AbstractSerial::LineDTR | AbstractSerial::LineRTS);
}

void tst_NativeSerialEngineLines::modemLines()
{
    QFETCH(DWORD, inputLines);
    QFETCH(DWORD, outputLines);
    for (const auto ending : {FakeDriver::Ending::AtOnce, FakeDriver::Ending::Later}) {
        FakedLine line;
        line.driver.inputLines = inputLines;
        line.driver.outputLines = outputLines;
        line.driver.ending = ending;
        QTEST(line.engine->lineStatus(), "status");
        const QStringList calls = line.driver.takeCalls();
        QVERIFY(calls.contains(u"GetCommModemStatus"_s));
        QVERIFY(calls.contains(u"DeviceIoControl 1769592 4"_s));
        // The event of the question is given back.
        QCOMPARE(calls.count(u"CreateEventW 0 0 0"_s), calls.count(u"CloseHandle event"_s));
    }
    FakedLine line;
    line.driver.inputLines = inputLines;
    line.driver.failing = {"GetCommModemStatus"_ba};
    QCOMPARE(line.engine->lineStatus(), Status(AbstractSerial::LineErr));
}

void tst_NativeSerialEngineLines::outputLinesThatCannotBeRead_data()
{
    QTest::addColumn<QByteArray>("function");
    QTest::newRow("refused") << "DeviceIoControl"_ba;
    QTest::newRow("without an end") << "GetOverlappedResult"_ba;
    QTest::newRow("no event") << "CreateEventW"_ba;
}

void tst_NativeSerialEngineLines::outputLinesThatCannotBeRead()
{
    QFETCH(QByteArray, function);
    FakedLine line;
    line.driver.inputLines = MS_CTS_ON;
    line.driver.outputLines = 3;
    line.driver.ending = FakeDriver::Ending::Later;
    line.driver.failing = {function};
    QCOMPARE(line.engine->lineStatus(), Status(AbstractSerial::LineCTS));
}

void tst_NativeSerialEngineLines::outputLinesAreSet()
{
    FakedLine line;
    QVERIFY(line.engine->setRts(true));
    QVERIFY(line.engine->setRts(false));
    QVERIFY(line.engine->setDtr(true));
    QVERIFY(line.engine->setDtr(false));
    QCOMPARE(line.driver.takeCalls(),
             (QStringList{u"EscapeCommFunction 3"_s, u"EscapeCommFunction 4"_s,
                          u"EscapeCommFunction 5"_s, u"EscapeCommFunction 6"_s}));
    line.driver.failing = {"EscapeCommFunction"_ba};
    QVERIFY(!line.engine->setRts(true));
    QVERIFY(!line.engine->setDtr(true));
}

void tst_NativeSerialEngineLines::breaks()
{
    FakedLine line;
    const QStringList both{u"SetCommBreak"_s, u"ClearCommBreak"_s};
    QVERIFY(line.engine->setBreak(true));
    QVERIFY(line.engine->setBreak(false));
    QCOMPARE(line.driver.takeCalls(), both);
    QVERIFY(line.engine->sendBreak(0));
    QCOMPARE(line.driver.takeCalls(), both);
    line.driver.failing = {"ClearCommBreak"_ba};
    QVERIFY(!line.engine->sendBreak(0));
    QCOMPARE(line.driver.takeCalls(), both);
    line.driver.failing = {"SetCommBreak"_ba};
    QVERIFY(!line.engine->sendBreak(0));
    QCOMPARE(line.driver.takeCalls(), both.first(1));
}

void tst_NativeSerialEngineLines::queues()
{
    FakedLine line;
    QVERIFY(line.engine->reset());
    QVERIFY(line.engine->flush());
    QCOMPARE(line.driver.takeCalls(), (QStringList{u"PurgeComm 15"_s, u"FlushFileBuffers"_s}));
    line.driver.failing = {"PurgeComm"_ba, "FlushFileBuffers"_ba};
    QVERIFY(!line.engine->reset());
    QVERIFY(!line.engine->flush());
}

void tst_NativeSerialEngineLines::bytesAvailable()
{
    FakedLine line;
    line.driver.received = "abc";
    QCOMPARE(line.engine->bytesAvailable(), qint64(3));
    line.driver.errors = CE_FRAME;
    QCOMPARE(line.engine->bytesAvailable(), qint64(-1));
    QCOMPARE(line.engine->bytesAvailable(), qint64(3)); // asking has cleared the error
    line.driver.failing = {"ClearCommError"_ba};
    QCOMPARE(line.engine->bytesAvailable(), qint64(-1));
}

QTEST_GUILESS_MAIN(tst_NativeSerialEngineLines)
#include "tst_NativeSerialEngineLines.moc"
