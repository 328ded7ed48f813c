#include "simulator/can/CanEndpoint.h"
#include "support/TestCase.h"

#include <QTest>

#include <memory>

using namespace simulator;
using namespace std::chrono_literals;

namespace {

using Clock = CanEndpoint::Clock;

/// "Read axis parameter 4" to module 1.
constexpr CanFrame ReadSpeed{1, 8, {6, 4, 0, 0, 0, 0, 0, 3}};

} // namespace

class tst_CanEndpoint : public TestCase
{
    Q_OBJECT

private slots:
    void init();

    void answersItsOwnRequests();
    void carriesValuesHighestByteFirst();
    void answersVersionAsText();
    void ignoresWhatIsNotForIt_data();
    void ignoresWhatIsNotForIt();
    void faultsSpoilTheReply_data();
    void faultsSpoilTheReply();
    void delayHoldsTheReplyBack();
    void noReplyOvertakesAnother();

private:
    QByteArrayList answers(const CanFrame &request);
    QByteArrayList due(Clock::time_point now);

    const Clock::time_point m_start = Clock::now();
    std::unique_ptr<Module> m_module;
    std::unique_ptr<FaultPlan> m_faults;
    std::unique_ptr<CanFaultPlan> m_canFaults;
    std::unique_ptr<CanEndpoint> m_endpoint;
};

void tst_CanEndpoint::init()
{
    TestCase::init();
    m_endpoint.reset();
    m_module = std::make_unique<Module>();
    m_faults = std::make_unique<FaultPlan>();
    m_canFaults = std::make_unique<CanFaultPlan>();
    m_endpoint = std::make_unique<CanEndpoint>(*m_module, *m_faults, *m_canFaults);
    m_module->setAxisParameter(4, 1000);
}

QByteArrayList tst_CanEndpoint::due(Clock::time_point now)
{
    QByteArrayList frames;
    while (const auto frame = m_endpoint->takeDue(now)) {
        frames.append(QByteArray::fromStdString(frame->toText()));
    }
    return frames;
}

/// What comes back at once.
QByteArrayList tst_CanEndpoint::answers(const CanFrame &request)
{
    m_endpoint->receive(request, m_start);
    return due(m_start);
}

void tst_CanEndpoint::answersItsOwnRequests()
{
    QCOMPARE(answers(ReadSpeed), QByteArrayList{"002 [8] 01 64 06 00 00 03 E8 03"});
    QCOMPARE(due(m_start + 1h), QByteArrayList());
}

void tst_CanEndpoint::carriesValuesHighestByteFirst()
{
    QCOMPARE(answers({1, 8, {5, 1, 0, 0xff, 0xff, 0xff, 0xfe, 3}}),
             QByteArrayList{"002 [8] 01 64 05 FF FF FF FE 03"});
    QCOMPARE(m_module->axisParameter(1), std::optional(-2));
}

void tst_CanEndpoint::answersVersionAsText()
{
    QCOMPARE(answers({1, 8, {136, 0, 0, 0, 0, 0, 0, 3}}),
             QByteArrayList{"002 [8] 37 37 31 30 56 31 30 35"});
}

void tst_CanEndpoint::ignoresWhatIsNotForIt_data()
{
    QTest::addColumn<int>("identifier");
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("lastByte");

    QTest::newRow("another module") << 2 << 8 << 3;
    QTest::newRow("same low byte, another identifier") << 0x101 << 8 << 3;
    QTest::newRow("too short") << 1 << 7 << 3;
    QTest::newRow("another last byte") << 1 << 8 << 0;
}

void tst_CanEndpoint::ignoresWhatIsNotForIt()
{
    QFETCH(const int, identifier);
    QFETCH(const int, length);
    QFETCH(const int, lastByte);

    CanFrame request = ReadSpeed;
    request.identifier = static_cast<std::uint16_t>(identifier);
    request.length = static_cast<std::uint8_t>(length);
    request.data.back() = static_cast<std::uint8_t>(lastByte);
    m_endpoint->receive(request, m_start);
    QCOMPARE(due(m_start + 1h), QByteArrayList());
}

void tst_CanEndpoint::faultsSpoilTheReply_data()
{
    QTest::addColumn<QByteArray>("fault");
    QTest::addColumn<QByteArrayList>("frames");

    const QByteArray reply = "002 [8] 01 64 06 00 00 03 E8 03";
    QTest::newRow("silence") << QByteArray("fault silence") << QByteArrayList();
    QTest::newRow("short") << QByteArray("fault short")
                           << QByteArrayList{"002 [7] 01 64 06 00 00 03 E8"};
    QTest::newRow("long is no longer") << QByteArray("fault long") << QByteArrayList{reply};
    QTest::newRow("doubled") << QByteArray("fault doubled") << QByteArrayList{reply, reply};
    QTest::newRow("checksum") << QByteArray("fault checksum")
                              << QByteArrayList{"002 [8] 01 64 06 00 00 03 E8 FC"};
    QTest::newRow("status") << QByteArray("fault status 3")
                            << QByteArrayList{"002 [8] 01 03 06 00 00 03 E8 03"};
    QTest::newRow("garbage") << QByteArray("fault garbage 10")
                             << QByteArrayList{reply, "002 [8] A5 A5 A5 A5 A5 A5 A5 A5",
                                               "002 [2] A5 A5"};
    QTest::newRow("module-id") << QByteArray("canfault module-id 200")
                               << QByteArrayList{"002 [8] C8 64 06 00 00 03 E8 03"};
    QTest::newRow("foreign") << QByteArray("canfault foreign 1234")
                             << QByteArrayList{"4D2 [8] A5 A5 A5 A5 A5 A5 A5 A5", reply};
}

void tst_CanEndpoint::faultsSpoilTheReply()
{
    QFETCH(const QByteArray, fault);
    QFETCH(const QByteArrayList, frames);

    const std::string line = fault.toStdString() + " 1";
    const bool forTheBus = fault.startsWith("canfault");
    QCOMPARE(forTheBus ? m_canFaults->execute(line) : m_faults->execute(line), std::string());
    QCOMPARE(answers(ReadSpeed), frames);
    // The next exchange is well again.
    QCOMPARE(answers(ReadSpeed), QByteArrayList{"002 [8] 01 64 06 00 00 03 E8 03"});
}

void tst_CanEndpoint::delayHoldsTheReplyBack()
{
    QCOMPARE(m_faults->execute("fault delay 50"), std::string());
    QCOMPARE(answers(ReadSpeed), QByteArrayList());
    QCOMPARE(due(m_start + 49ms), QByteArrayList());
    QCOMPARE(due(m_start + 50ms), QByteArrayList{"002 [8] 01 64 06 00 00 03 E8 03"});
}

void tst_CanEndpoint::noReplyOvertakesAnother()
{
    QCOMPARE(m_faults->execute("fault delay 50 1"), std::string());
    m_endpoint->receive(ReadSpeed, m_start);
    m_endpoint->receive({1, 8, {6, 1, 0, 0, 0, 0, 0, 3}}, m_start);
    QCOMPARE(due(m_start + 49ms), QByteArrayList());
    QCOMPARE(
        due(m_start + 50ms),
        (QByteArrayList{"002 [8] 01 64 06 00 00 03 E8 03", "002 [8] 01 64 06 00 00 00 00 03"}));
}

QTEST_GUILESS_MAIN(tst_CanEndpoint)
#include "tst_CanEndpoint.moc"
