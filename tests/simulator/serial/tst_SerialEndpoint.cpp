#include "simulator/serial/SerialEndpoint.h"
#include "support/TestCase.h"

#include <QTest>

using simulator::FaultPlan;
using simulator::Module;
using simulator::SerialEndpoint;
using simulator::WireLog;
using namespace std::chrono_literals;

namespace {

const QByteArray question = "01 06 99 00 00 00 00 00 a0"; // supply voltage
const QByteArray answer = "02 01 64 06 00 00 00 f0 5d";
const QByteArray stranger = "02 06 99 00 00 00 00 00 a1"; // for another module

// An endpoint with time that stands still until told otherwise.
struct Bench
{
    Module module;
    FaultPlan faults;
    WireLog log;
    SerialEndpoint endpoint{module, faults, log};
    SerialEndpoint::Clock::time_point now = SerialEndpoint::Clock::now();

    void send(const QByteArray &hex)
    {
        const QByteArray bytes = QByteArray::fromHex(hex);
        const auto *data = reinterpret_cast<const std::uint8_t *>(bytes.constData());
        endpoint.receive({data, static_cast<std::size_t>(bytes.size())}, now);
    }
    QByteArray take()
    {
        const std::vector<std::uint8_t> bytes = endpoint.takeDue(now);
        return QByteArray(reinterpret_cast<const char *>(bytes.data()),
                          static_cast<qsizetype>(bytes.size()))
            .toHex(' ');
    }
    QByteArray exchange(const QByteArray &hex)
    {
        send(hex);
        return take();
    }
    QByteArrayList lines() const
    {
        QByteArrayList texts;
        for (const WireLog::Entry &entry : log.entries()) {
            texts.append(QByteArray::fromStdString(entry.toText()).toLower());
        }
        return texts;
    }
};

} // namespace

class tst_SerialEndpoint : public TestCase
{
    Q_OBJECT

private slots:
    void answers();
    void otherAddressesAreSilent();
    void wrongChecksum();
    void piecesMakeADatagram();
    void pauseEndsADatagram();
    void severalAtOnce();
    void faults_data();
    void faults();
    void delayed();
    void late();
    void noReplyOvertakes();
    void othersDontUseUpFaults();
    void droppedWhenNobodyListens();
    void unreadable();
    void wireLog();
    void wireLogForgets();
};

void tst_SerialEndpoint::answers()
{
    Bench bench;
    QCOMPARE(bench.exchange(question), answer);
    QCOMPARE(bench.take(), QByteArray());
}

void tst_SerialEndpoint::otherAddressesAreSilent()
{
    Bench bench;
    QCOMPARE(bench.exchange(stranger), QByteArray());
    QVERIFY(!bench.endpoint.nextDue().has_value());
    QCOMPARE(bench.exchange(question), answer);
}

void tst_SerialEndpoint::wrongChecksum()
{
    Bench bench;
    QCOMPARE(bench.exchange("01 05 06 00 00 00 00 05 ff"),
             QByteArray("02 01 01 05 00 00 00 05 0e"));
    QCOMPARE(bench.module.axisParameter(6), std::optional(128));
}

void tst_SerialEndpoint::piecesMakeADatagram()
{
    Bench bench;
    QCOMPARE(bench.exchange(question.left(11)), QByteArray());
    bench.now += 50ms;
    QCOMPARE(bench.exchange(question.mid(12)), answer);
}

void tst_SerialEndpoint::pauseEndsADatagram()
{
    Bench bench;
    bench.send("01 02 03");
    bench.now += 101ms;
    QCOMPARE(bench.exchange(question), answer);
}

void tst_SerialEndpoint::severalAtOnce()
{
    Bench bench;
    QCOMPARE(bench.exchange(question + ' ' + stranger + ' ' + question), answer + ' ' + answer);
}

void tst_SerialEndpoint::faults_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("silence") << QByteArray("fault silence 1") << QByteArray();
    QTest::newRow("short") << QByteArray("fault short 1") << QByteArray("02 01 64 06 00 00 00 f0");
    QTest::newRow("long") << QByteArray("fault long 1") << answer + " a5";
    QTest::newRow("doubled") << QByteArray("fault doubled 1") << answer + ' ' + answer;
    QTest::newRow("checksum") << QByteArray("fault checksum 1")
                              << QByteArray("02 01 64 06 00 00 00 f0 a2");
    QTest::newRow("garbage") << QByteArray("fault garbage 2 1") << answer + " a5 a5";
    QTest::newRow("status") << QByteArray("fault status 5 1")
                            << QByteArray("02 01 05 06 00 00 00 f0 fe");
}

void tst_SerialEndpoint::faults()
{
    QFETCH(QByteArray, line);
    QFETCH(QByteArray, expected);
    Bench bench;
    QCOMPARE(bench.faults.execute(line.toStdString()), std::string());
    QCOMPARE(bench.exchange(question), expected);
    QCOMPARE(bench.exchange(question), answer); // one exchange only
}

void tst_SerialEndpoint::delayed()
{
    Bench bench;
    QVERIFY(bench.faults.execute("fault delay 200").empty());
    QCOMPARE(bench.exchange(question), QByteArray());
    QCOMPARE(bench.endpoint.nextDue(), std::optional(bench.now + 200ms));
    bench.now += 199ms;
    QCOMPARE(bench.take(), QByteArray());
    bench.now += 1ms;
    QCOMPARE(bench.take(), answer);
}

void tst_SerialEndpoint::late()
{
    Bench bench;
    QVERIFY(bench.faults.execute("fault late 40 1").empty());
    bench.send(question);
    QCOMPARE(bench.endpoint.nextDue(), std::optional(bench.now + 550ms));
}

void tst_SerialEndpoint::noReplyOvertakes()
{
    Bench bench;
    QVERIFY(bench.faults.execute("fault late 40 1").empty());
    bench.send("01 06 9b 00 00 00 00 00 a2"); // temperature
    bench.now += 520ms;
    QCOMPARE(bench.exchange(question), QByteArray());
    bench.now += 30ms;
    QCOMPARE(bench.take(), "02 01 64 06 00 00 00 1f 8c " + answer);
}

void tst_SerialEndpoint::othersDontUseUpFaults()
{
    Bench bench;
    QVERIFY(bench.faults.execute("fault silence 1").empty());
    QCOMPARE(bench.exchange(stranger), QByteArray());
    QCOMPARE(bench.exchange(question), QByteArray());
    QCOMPARE(bench.exchange(question), answer);
}

void tst_SerialEndpoint::droppedWhenNobodyListens()
{
    Bench bench;
    bench.send(question);
    bench.endpoint.dropDue(bench.now);
    QCOMPARE(bench.take(), QByteArray());
    QCOMPARE(bench.lines(), QByteArrayList{"< " + question}); // it was never sent
}

void tst_SerialEndpoint::unreadable()
{
    Bench bench;
    bench.send("01 06"); // what follows at another speed can't complete this
    const std::array<std::uint8_t, 2> bytes{0x99, 0x00};
    bench.endpoint.receiveUnreadable(bytes);
    QCOMPARE(bench.exchange(question), answer);
    QCOMPARE(bench.lines(), (QByteArrayList{"? 99 00", "< " + question, "> " + answer}));
}

void tst_SerialEndpoint::wireLog()
{
    Bench bench;
    QByteArrayList sink;
    bench.log.setSink([&sink](const WireLog::Entry &entry) {
        sink.append(QByteArray::fromStdString(entry.toText()).toLower());
    });
    QVERIFY(bench.faults.execute("fault garbage 1 1").empty());
    bench.exchange(question);
    bench.exchange(stranger);
    bench.exchange(question);
    const QByteArrayList expected{"< " + question, "> " + answer,   "> a5",
                                  "< " + stranger, "< " + question, "> " + answer};
    QCOMPARE(bench.lines(), expected);
    QCOMPARE(sink, expected);
    bench.log.clear();
    QCOMPARE(bench.lines(), QByteArrayList());
}

void tst_SerialEndpoint::wireLogForgets()
{
    WireLog log;
    for (std::size_t i = 0; i <= WireLog::capacity; ++i) {
        log.append(WireLog::Direction::Sent, std::array{std::uint8_t(i == 0 ? 1 : 2)});
    }
    QCOMPARE(log.entries().size(), WireLog::capacity);
    QCOMPARE(log.entries().front().toText(), std::string("> 02"));
}

QTEST_GUILESS_MAIN(tst_SerialEndpoint)
#include "tst_SerialEndpoint.moc"
