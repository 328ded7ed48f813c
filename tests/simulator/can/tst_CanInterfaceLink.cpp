#include "simulator/can/CanInterfaceLink.h"
#include "support/TestCase.h"

#include <QTest>

#include <array>
#include <memory>

#include <linux/can.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace simulator;
using namespace std::chrono_literals;

namespace {

using Clock = CanInterfaceLink::Clock;

/// "Read axis parameter 4" to module 1.
constexpr CanFrame ReadSpeed{1, 8, {6, 4, 0, 0, 0, 0, 0, 3}};

can_frame kernelFrame(const CanFrame &frame, canid_t flags = 0)
{
    can_frame result{};
    result.can_id = frame.identifier | flags;
    result.can_dlc = frame.length;
    std::copy(frame.data.begin(), frame.data.end(), result.data);
    return result;
}

} // namespace

/// The link over a pair of local sockets, which carry whole frames as those of the kernel do.
class tst_CanInterfaceLink : public TestCase
{
    Q_OBJECT

private slots:
    void init();
    void answers();
    void passesOverOtherFrames_data();
    void passesOverOtherFrames();
    void wakesForADelayedReply();
    void opensAnInterfaceThatIsBack();
    void losesRepliesThatNobodyHears();
    void failsToOpen();

private:
    void send(const can_frame &frame) const;
    void serve(Clock::time_point now) const;
    QByteArrayList received() const;
    QByteArrayList log() const;

    const Clock::time_point m_start = Clock::now();
    std::unique_ptr<Module> m_module;
    std::unique_ptr<FaultPlan> m_faults;
    std::unique_ptr<CanFaultPlan> m_canFaults;
    std::unique_ptr<CanEndpoint> m_endpoint;
    std::unique_ptr<LineLog> m_frames;
    std::unique_ptr<CanInterfaceLink> m_link;
    FileDescriptor m_far; // the rest of the bus
    bool m_plugged = true;
};

void tst_CanInterfaceLink::init()
{
    TestCase::init();
    m_link.reset();
    m_endpoint.reset();
    m_module = std::make_unique<Module>();
    m_module->setAxisParameter(4, 1000);
    m_faults = std::make_unique<FaultPlan>();
    m_canFaults = std::make_unique<CanFaultPlan>();
    m_endpoint = std::make_unique<CanEndpoint>(*m_module, *m_faults, *m_canFaults);
    m_frames = std::make_unique<LineLog>();
    m_plugged = true;
    m_link = std::make_unique<CanInterfaceLink>(
        [this] {
            std::array<int, 2> ends{-1, -1};
            if (m_plugged) {
                ::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_NONBLOCK | SOCK_CLOEXEC, 0,
                             ends.data());
            }
            m_far = FileDescriptor(ends[0]);
            return FileDescriptor(ends[1]);
        },
        *m_endpoint, *m_frames);
    QVERIFY(m_link->open());
}

void tst_CanInterfaceLink::send(const can_frame &frame) const
{
    QCOMPARE(::write(m_far.get(), &frame, sizeof frame), ssize_t{sizeof frame});
}

/// What a ServingLoop does once.
void tst_CanInterfaceLink::serve(Clock::time_point now) const
{
    pollfd polled{m_link->fd(), m_link->events(), 0};
    ::poll(&polled, 1, 0);
    m_link->service(polled.revents, now);
}

QByteArrayList tst_CanInterfaceLink::received() const
{
    QByteArrayList frames;
    can_frame frame{};
    while (::read(m_far.get(), &frame, sizeof frame) == sizeof frame) {
        frames.append(
            QByteArray::number(frame.can_id, 16) + ' '
            + QByteArray(reinterpret_cast<const char *>(frame.data), frame.can_dlc).toHex(' '));
    }
    return frames;
}

QByteArrayList tst_CanInterfaceLink::log() const
{
    QByteArrayList lines;
    for (const std::string &line : m_frames->lines()) {
        lines.append(QByteArray::fromStdString(line));
    }
    return lines;
}

void tst_CanInterfaceLink::answers()
{
    send(kernelFrame(ReadSpeed));
    send(kernelFrame({2, 8, {6, 4, 0, 0, 0, 0, 0, 3}})); // another module's
    serve(m_start);
    QCOMPARE(received(), QByteArrayList{"2 01 64 06 00 00 03 e8 03"});
    QCOMPARE(log(),
             (QByteArrayList{"can < 001 [8] 06 04 00 00 00 00 00 03",
                             "can < 002 [8] 06 04 00 00 00 00 00 03",
                             "can > 002 [8] 01 64 06 00 00 03 E8 03"}));
    QVERIFY(!m_link->wakeAt());
}

void tst_CanInterfaceLink::passesOverOtherFrames_data()
{
    QTest::addColumn<uint>("flag");
    QTest::newRow("extended") << CAN_EFF_FLAG;
    QTest::newRow("remote") << CAN_RTR_FLAG;
    QTest::newRow("error") << CAN_ERR_FLAG;
}

void tst_CanInterfaceLink::passesOverOtherFrames()
{
    QFETCH(const uint, flag);
    send(kernelFrame(ReadSpeed, flag));
    send(kernelFrame(ReadSpeed));
    serve(m_start);
    QCOMPARE(received().size(), 1);
    QCOMPARE(log().size(), 2);
}

void tst_CanInterfaceLink::wakesForADelayedReply()
{
    QCOMPARE(m_faults->execute("fault delay 300 1"), std::string());
    send(kernelFrame(ReadSpeed));
    serve(m_start);
    QCOMPARE(m_link->wakeAt(), std::optional(m_start + 300ms));
    QCOMPARE(received(), QByteArrayList());
    serve(m_start + 300ms);
    QCOMPARE(received().size(), 1);
    QVERIFY(!m_link->wakeAt());
}

void tst_CanInterfaceLink::opensAnInterfaceThatIsBack()
{
    m_plugged = false;
    m_far.reset();
    serve(m_start);
    QCOMPARE(m_link->fd(), -1);
    QCOMPARE(m_link->wakeAt(), std::optional(m_start + Link::pauseWhenCutOff));
    serve(m_start + Link::pauseWhenCutOff); // still away
    QCOMPARE(m_link->wakeAt(), std::optional(m_start + 2 * Link::pauseWhenCutOff));
    m_plugged = true;
    serve(m_start + 2 * Link::pauseWhenCutOff - 1ms); // too early to look
    QCOMPARE(m_link->fd(), -1);
    serve(m_start + 2 * Link::pauseWhenCutOff);
    QVERIFY(m_link->fd() >= 0);
    send(kernelFrame(ReadSpeed));
    serve(m_start + 1h);
    QCOMPARE(received().size(), 1);
}

void tst_CanInterfaceLink::losesRepliesThatNobodyHears()
{
    QCOMPARE(m_faults->execute("fault delay 300 1"), std::string());
    send(kernelFrame(ReadSpeed));
    serve(m_start);
    m_plugged = false;
    m_far.reset();
    serve(m_start + 1s);
    QCOMPARE(log(), QByteArrayList{"can < 001 [8] 06 04 00 00 00 00 00 03"});
    m_plugged = true;
    serve(m_start + 2s);
    QCOMPARE(received(), QByteArrayList());
}

void tst_CanInterfaceLink::failsToOpen()
{
    m_plugged = false;
    QVERIFY(!m_link->open());
    QCOMPARE(m_link->fd(), -1);
}

QTEST_GUILESS_MAIN(tst_CanInterfaceLink)
#include "tst_CanInterfaceLink.moc"
