#include "simulator/RawPort.h"
#include "simulator/serial/PtyLine.h"
#include "simulator/serving/ServingThread.h"
#include "support/TestCase.h"

#include <QElapsedTimer>
#include <QTest>

#include <ctime>

using simulator::LineSettings;
using simulator::Module;
using simulator::PtyLine;
using simulator::ServingThread;

namespace {

const QByteArray question = QByteArray::fromHex("0106990000000000a0");
const QByteArray answer = QByteArray::fromHex("02016406000000f05d");

// A module with its line and thread.
struct Served
{
    explicit Served(int baudRate = 0)
        : line(module, baudRate)
        , thread(line.link())
    {
    }

    Module module;
    PtyLine line;
    ServingThread thread;
    RawPort port{QString::fromStdString(line.portPath())};
};

double processorSeconds()
{
    timespec used{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
    return static_cast<double>(used.tv_sec) + static_cast<double>(used.tv_nsec) / 1e9;
}

} // namespace

class tst_PtyLine : public TestCase
{
    Q_OBJECT

private slots:
    void exchange();
    void pathIsATerminal();
    void rawFromTheStart();
    void survivesCloseAndOpen();
    void restsWhileNobodyListens();
    void anyBaudRate();
    void ownBaudRate();
    void stopBits();
    void readsSettings();
    void floodIsAnswered();
    void nobodyReads();
    void delayedReply();
    void hangsUp();
    void stopsPromptly();
};

void tst_PtyLine::exchange()
{
    Served served;
    QVERIFY(served.port.isOpen());
    for (int i = 0; i < 50; ++i) {
        QCOMPARE(served.port.exchange(question), answer);
    }
}

void tst_PtyLine::pathIsATerminal()
{
    Module module;
    const PtyLine line(module);
    QVERIFY(line.isOpen());
    QVERIFY(QString::fromStdString(line.portPath()).startsWith(QLatin1String("/dev/pts/")));
}

void tst_PtyLine::rawFromTheStart()
{
    Served served;
    // Every byte that a terminal would treat in a special way, as a request and as its reply.
    for (const char *hex : {"01050400000d0a0323", "010501001a04110339"}) {
        const QByteArray reply = served.port.exchange(QByteArray::fromHex(hex));
        QCOMPARE(reply.size(), 9);
        QCOMPARE(reply.mid(4, 4), QByteArray::fromHex(hex).mid(4, 4));
    }
}

void tst_PtyLine::survivesCloseAndOpen()
{
    Served served;
    for (int i = 0; i < 5; ++i) {
        QCOMPARE(served.port.exchange(question), answer);
        QVERIFY(served.port.reopen());
    }
}

void tst_PtyLine::restsWhileNobodyListens()
{
    Module module;
    PtyLine line(module);
    const ServingThread thread(line.link());
    {
        RawPort port(QString::fromStdString(line.portPath()));
        QCOMPARE(port.exchange(question), answer);
    }
    // The line is hung up now. A loop that spins would need all of this time.
    const double before = processorSeconds();
    QTest::qWait(500);
    QVERIFY(processorSeconds() - before < 0.25);
}

void tst_PtyLine::anyBaudRate()
{
    Served served;
    for (const int baudRate : {4800, 300000}) {
        QVERIFY(served.port.setLine(baudRate));
        QCOMPARE(served.port.exchange(question), answer);
    }
}

void tst_PtyLine::ownBaudRate()
{
    Served served(14400); // a speed without a constant of its own
    QVERIFY(served.port.setLine(9600));
    QVERIFY(served.port.send(question));
    QTRY_COMPARE(served.line.log().entries().size(), std::size_t(1));
    QVERIFY(served.line.log().entries().front().toText().starts_with("? 01 06"));
    QVERIFY(served.port.setLine(14400));
    QCOMPARE(served.port.exchange(question), answer);
}

void tst_PtyLine::stopBits()
{
    Served served(9600);
    QVERIFY(served.port.setLine(9600, 2));
    QVERIFY(served.port.send(question));
    QTRY_COMPARE(served.line.log().entries().size(), std::size_t(1));
    QVERIFY(served.port.setLine(9600, 1));
    QCOMPARE(served.port.exchange(question), answer);
}

void tst_PtyLine::readsSettings()
{
    simulator::Pty pty;
    RawPort port(QString::fromStdString(pty.portPath()));
    QVERIFY(port.setLine(76800, 2));
    const auto settings = simulator::readLineSettings(pty.masterFd());
    QVERIFY(settings.has_value());
    QCOMPARE(settings->toText(), std::string("76800 8N2"));
    QVERIFY(!simulator::readLineSettings(-1).has_value());
}

void tst_PtyLine::floodIsAnswered()
{
    Served served;
    constexpr int count = 100;
    QVERIFY(served.port.send(question.repeated(count)));
    QCOMPARE(served.port.receive(9 * count), answer.repeated(count));
}

void tst_PtyLine::nobodyReads()
{
    Served served;
    // More replies than a terminal holds, then a normal life after they have been read.
    constexpr int bursts = 30;
    for (int i = 1; i <= bursts; ++i) {
        QVERIFY(served.port.send(question.repeated(50)));
        QTRY_VERIFY(served.line.log().entries().size() >= std::size_t(i) * 100);
    }
    QCOMPARE(served.port.receive(9 * 50 * bursts), answer.repeated(50 * bursts));
    QCOMPARE(served.port.exchange(question), answer);
}

void tst_PtyLine::delayedReply()
{
    Served served;
    QVERIFY(served.line.faults().execute("fault delay 150 1").empty());
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(served.port.exchange(question), answer);
    QVERIFY(timer.elapsed() >= 150);
}

void tst_PtyLine::hangsUp()
{
    Served served;
    served.thread.stop();
    served.line.close();
    QVERIFY(served.port.waitForHangUp());
    QVERIFY(!served.port.reopen());
}

void tst_PtyLine::stopsPromptly()
{
    Served served;
    QVERIFY(served.line.faults().execute("fault delay 60000").empty());
    QVERIFY(served.port.send(question));
    QTRY_COMPARE(served.line.log().entries().size(), std::size_t(1));
    QElapsedTimer timer;
    timer.start();
    served.thread.stop();
    served.thread.stop();
    QVERIFY(timer.elapsed() < 10000);
}

QTEST_GUILESS_MAIN(tst_PtyLine)
#include "tst_PtyLine.moc"
