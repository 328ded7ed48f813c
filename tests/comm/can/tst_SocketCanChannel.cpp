// The operations over the kernel's CAN, on an interface that the test plays: a pair of local
// sockets carries the frames as the kernel's own would.

#include "comm/can/CanBitRate.h"
#include "comm/can/PlayedCanLink.h"
#include "comm/can/SocketCanChannel.h"
#include "comm/can/SocketCanLibrary.h"
#include "support/TestCase.h"

#include <QTest>

#include <array>

#include <linux/can.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int Refused = SocketCanChannel::Refused;
constexpr int HalfMegabitCode = -2;

QByteArray dataOf(const can_frame &frame)
{
    return QByteArray(reinterpret_cast<const char *>(frame.data), frame.can_dlc);
}

} // namespace

class tst_SocketCanChannel : public TestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void bitRatesOfTheCodes_data();
    void bitRatesOfTheCodes();
    void framesArePacked();

    void openingIsExclusive();
    void openingWithoutAnInterface();
    void otherHandlesAreRefused();

    void rightBitRateCountsAsSet();
    void bitRateIsSetOnAnInterfaceThatIsDown();
    void bitRateIsSetOnAnInterfaceThatIsUp();
    void bitRateWithoutPermission();
    void bitRateThatDoesNotExist();
    void unknownBitRateIsSet();

    void busOnUsesAnInterfaceThatIsUp();
    void busOnTakesTheInterfaceUpForAsLong();
    void busOnWithoutPermission();
    void busOnWithoutASocket();
    void closingLeavesTheBus();
    void endingLeavesTheBus();

    void writesStandardFrames();
    void readsWhatIsThere();
    void readsExtendedAndShortFrames();
    void brokenRecordIsNoFrame();
    void offTheBusNothingIsReadOrWritten();
    void lostInterface();

    void tableRefusesWhatIsNotOpen();

private:
    void takeOnTheBus();

    PlayedKernel m_kernel;
    std::unique_ptr<SocketCanChannel> m_channel;
};

void tst_SocketCanChannel::init()
{
    TestCase::init();
    m_kernel = PlayedKernel();
    m_channel = std::make_unique<SocketCanChannel>([this]() -> std::unique_ptr<CanLink> {
        return m_kernel.hasInterface ? std::make_unique<PlayedCanLink>(m_kernel) : nullptr;
    });
}

void tst_SocketCanChannel::cleanup()
{
    m_channel.reset();
    if (m_kernel.far >= 0) {
        ::close(m_kernel.far);
    }
}

void tst_SocketCanChannel::takeOnTheBus()
{
    QCOMPARE(m_channel->open(0), 0);
    QCOMPARE(m_channel->busOn(0), 0);
}

void tst_SocketCanChannel::bitRatesOfTheCodes_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<unsigned int>("bitsPerSecond");

    QTest::newRow("-1") << -1 << 1000000U;
    QTest::newRow("-2") << -2 << 500000U;
    QTest::newRow("-3") << -3 << 250000U;
    QTest::newRow("-4") << -4 << 125000U;
    QTest::newRow("-5") << -5 << 100000U;
    QTest::newRow("-7") << -7 << 50000U;
    QTest::newRow("-9") << -9 << 10000U;
    QTest::newRow("-6 is none") << -6 << 0U;
    QTest::newRow("-8 is none") << -8 << 0U;
    QTest::newRow("0 is none") << 0 << 0U;
    QTest::newRow("1 is none") << 1 << 0U;
}

void tst_SocketCanChannel::bitRatesOfTheCodes()
{
    QFETCH(const int, code);
    QFETCH(const unsigned int, bitsPerSecond);

    QCOMPARE(canBitsPerSecond(code), bitsPerSecond);
    QCOMPARE(canBitRateCode(static_cast<int>(bitsPerSecond / 1000)), bitsPerSecond ? code : 0);
}

void tst_SocketCanChannel::framesArePacked()
{
    const can_frame frame = canFrame(-56, "\x06\x01\x02\x03\x04\x05\x06\x03", 8);
    QCOMPARE(frame.can_id, 200U); // the low 8 bits, and neither extended nor remote
    QCOMPARE(int(frame.can_dlc), 8);
    QCOMPARE(dataOf(frame), QByteArray("\x06\x01\x02\x03\x04\x05\x06\x03"));

    QCOMPARE(canFrame(0x101, "", 0).can_id, 1U);
    QCOMPARE(dataOf(canFrame(1, "ab", 2)), QByteArray("ab"));
    QCOMPARE(dataOf(canFrame(1, "123456789", 9)), QByteArray("12345678"));
}

void tst_SocketCanChannel::openingIsExclusive()
{
    QCOMPARE(m_channel->open(1), Refused); // there is channel 0 alone
    QCOMPARE(m_channel->open(0), 0);
    QCOMPARE(m_channel->open(0), Refused);
    QCOMPARE(m_channel->close(0), 0);
    QCOMPARE(m_channel->close(0), Refused);
    QCOMPARE(m_channel->open(0), 0);
}

void tst_SocketCanChannel::openingWithoutAnInterface()
{
    m_kernel.hasInterface = false;
    QCOMPARE(m_channel->open(0), Refused);
    QCOMPARE(m_channel->busOn(0), Refused);

    m_kernel.hasInterface = true; // plugged in meanwhile
    QCOMPARE(m_channel->open(0), 0);
}

void tst_SocketCanChannel::otherHandlesAreRefused()
{
    takeOnTheBus();
    long identifier = 0;
    unsigned int length = 0;
    std::array<char, 8> data{};
    for (const int handle : {-1, 1}) {
        QCOMPARE(m_channel->setBusParams(handle, HalfMegabitCode), Refused);
        QCOMPARE(m_channel->busOn(handle), Refused);
        QCOMPARE(m_channel->write(handle, 1, data.data(), 8), Refused);
        QCOMPARE(m_channel->read(handle, &identifier, data.data(), &length), Refused);
        QCOMPARE(m_channel->busOff(handle), Refused);
        QCOMPARE(m_channel->close(handle), Refused);
    }
    QCOMPARE(m_channel->write(0, 1, data.data(), 8), 0); // none of which touched the channel
}

void tst_SocketCanChannel::rightBitRateCountsAsSet()
{
    m_kernel.mayChange = false;
    QCOMPARE(m_channel->open(0), 0);
    QCOMPARE(m_channel->setBusParams(0, HalfMegabitCode), 0);
    QCOMPARE(m_kernel.changes, QStringList());
}

void tst_SocketCanChannel::bitRateIsSetOnAnInterfaceThatIsDown()
{
    m_kernel.isUp = false;
    QCOMPARE(m_channel->open(0), 0);
    QCOMPARE(m_channel->setBusParams(0, -3), 0);
    QCOMPARE(m_kernel.changes, QStringList(u"250000"_s));
    QCOMPARE(m_kernel.bitRate.value_or(0), 250000U);
    QVERIFY(!m_kernel.isUp);
}

void tst_SocketCanChannel::bitRateIsSetOnAnInterfaceThatIsUp()
{
    QCOMPARE(m_channel->open(0), 0);
    QCOMPARE(m_channel->setBusParams(0, -3), 0);
    QCOMPARE(m_kernel.changes, QStringList({u"down"_s, u"250000"_s, u"up"_s}));
    QVERIFY(m_kernel.isUp);
}

void tst_SocketCanChannel::bitRateWithoutPermission()
{
    m_kernel.mayChange = false;
    QCOMPARE(m_channel->open(0), 0);
    QCOMPARE(m_channel->setBusParams(0, -3), Refused);
    QVERIFY(m_kernel.isUp);
    QCOMPARE(m_kernel.bitRate.value_or(0), 500000U);

    m_kernel.isUp = false;
    QCOMPARE(m_channel->setBusParams(0, -3), Refused);
}

void tst_SocketCanChannel::bitRateThatDoesNotExist()
{
    QCOMPARE(m_channel->open(0), 0);
    QCOMPARE(m_channel->setBusParams(0, 0), Refused);
    QCOMPARE(m_channel->setBusParams(0, -6), Refused);
    QCOMPARE(m_kernel.changes, QStringList());
}

void tst_SocketCanChannel::unknownBitRateIsSet()
{
    m_kernel.bitRate.reset();
    m_kernel.isUp = false;
    QCOMPARE(m_channel->open(0), 0);
    QCOMPARE(m_channel->setBusParams(0, HalfMegabitCode), 0);
    QCOMPARE(m_kernel.changes, QStringList(u"500000"_s));
}

void tst_SocketCanChannel::busOnUsesAnInterfaceThatIsUp()
{
    m_kernel.mayChange = false;
    takeOnTheBus();
    QCOMPARE(m_channel->busOn(0), 0); // again does no harm
    QCOMPARE(m_channel->busOff(0), 0);
    QCOMPARE(m_channel->busOff(0), 0);
    QCOMPARE(m_kernel.changes, QStringList()); // it was up before, so it stays up
}

void tst_SocketCanChannel::busOnTakesTheInterfaceUpForAsLong()
{
    m_kernel.isUp = false;
    takeOnTheBus();
    QVERIFY(m_kernel.isUp);
    QCOMPARE(m_channel->busOff(0), 0);
    QVERIFY(!m_kernel.isUp);
    QCOMPARE(m_kernel.changes, QStringList({u"up"_s, u"down"_s}));
}

void tst_SocketCanChannel::busOnWithoutPermission()
{
    m_kernel.isUp = false;
    m_kernel.mayChange = false;
    QCOMPARE(m_channel->open(0), 0);
    QCOMPARE(m_channel->busOn(0), Refused);
    QCOMPARE(m_channel->close(0), 0);
}

void tst_SocketCanChannel::busOnWithoutASocket()
{
    m_kernel.isUp = false;
    m_kernel.hasSocket = false;
    QCOMPARE(m_channel->open(0), 0);
    QCOMPARE(m_channel->busOn(0), Refused);
    QVERIFY(!m_kernel.isUp); // as it was found
}

void tst_SocketCanChannel::closingLeavesTheBus()
{
    m_kernel.isUp = false;
    takeOnTheBus();
    QCOMPARE(m_channel->close(0), 0);
    QVERIFY(!m_kernel.isUp);
    char byte = 0;
    QCOMPARE(::write(m_kernel.far, &byte, 1), -1); // nobody is there any more
    QCOMPARE(m_channel->open(0), 0);
}

void tst_SocketCanChannel::endingLeavesTheBus()
{
    m_kernel.isUp = false;
    takeOnTheBus();
    m_channel.reset();
    QVERIFY(!m_kernel.isUp);
    char byte = 0;
    QCOMPARE(::write(m_kernel.far, &byte, 1), -1);
}

void tst_SocketCanChannel::writesStandardFrames()
{
    takeOnTheBus();
    QCOMPARE(m_channel->write(0, -56, "\x06\x01\x02\x03\x04\x05\x06\x03", 8), 0);
    can_frame frame{};
    QCOMPARE(::read(m_kernel.far, &frame, sizeof frame), ssize_t(CAN_MTU));
    QCOMPARE(frame.can_id, 200U);
    QCOMPARE(dataOf(frame), QByteArray("\x06\x01\x02\x03\x04\x05\x06\x03"));
}

void tst_SocketCanChannel::readsWhatIsThere()
{
    takeOnTheBus();
    long identifier = -1;
    unsigned int length = 99;
    std::array<char, 8> data{};
    // Returns at once, and leaves everything alone.
    QCOMPARE(m_channel->read(0, &identifier, data.data(), &length), Refused);
    QCOMPARE(identifier, -1L);
    QCOMPARE(length, 99U);

    for (const char *text : {"12345678", "abcdefgh"}) {
        const can_frame frame = canFrame(2, text, 8);
        QCOMPARE(::write(m_kernel.far, &frame, sizeof frame), ssize_t(CAN_MTU));
    }
    QCOMPARE(m_channel->read(0, &identifier, data.data(), &length), 0);
    QCOMPARE(identifier, 2L);
    QCOMPARE(length, 8U);
    QCOMPARE(QByteArray(data.data(), 8), QByteArray("12345678"));
    QCOMPARE(m_channel->read(0, &identifier, data.data(), &length), 0);
    QCOMPARE(QByteArray(data.data(), 8), QByteArray("abcdefgh"));
    QCOMPARE(m_channel->read(0, &identifier, data.data(), &length), Refused);
}

void tst_SocketCanChannel::readsExtendedAndShortFrames()
{
    takeOnTheBus();
    can_frame frame = canFrame(0, "ab", 2);
    frame.can_id = 0x12345678U | CAN_EFF_FLAG;
    QCOMPARE(::write(m_kernel.far, &frame, sizeof frame), ssize_t(CAN_MTU));
    frame = canFrame(0, "123", 3);
    frame.can_id = 0x7ffU | CAN_RTR_FLAG;
    QCOMPARE(::write(m_kernel.far, &frame, sizeof frame), ssize_t(CAN_MTU));

    long identifier = 0;
    unsigned int length = 0;
    QByteArray data("........");
    QCOMPARE(m_channel->read(0, &identifier, data.data(), &length), 0);
    QCOMPARE(identifier, 0x12345678L);
    QCOMPARE(length, 2U);
    QCOMPARE(data, QByteArray("ab......")); // the rest of the buffer is as it was
    QCOMPARE(m_channel->read(0, &identifier, data.data(), &length), 0);
    QCOMPARE(identifier, 0x7ffL);
    QCOMPARE(length, 3U);
}

void tst_SocketCanChannel::brokenRecordIsNoFrame()
{
    takeOnTheBus();
    QCOMPARE(::write(m_kernel.far, "12345", 5), ssize_t(5));
    can_frame tooLong = canFrame(1, "12345678", 8);
    tooLong.can_dlc = 200;
    QCOMPARE(::write(m_kernel.far, &tooLong, sizeof tooLong), ssize_t(CAN_MTU));

    long identifier = 0;
    unsigned int length = 0;
    std::array<char, 8> data{};
    QCOMPARE(m_channel->read(0, &identifier, data.data(), &length), Refused);
    QCOMPARE(m_channel->read(0, &identifier, data.data(), &length), 0);
    QCOMPARE(length, 8U); // never more than there is room for
}

void tst_SocketCanChannel::offTheBusNothingIsReadOrWritten()
{
    long identifier = 0;
    unsigned int length = 0;
    std::array<char, 8> data{};
    QCOMPARE(m_channel->write(0, 1, data.data(), 8), Refused);
    QCOMPARE(m_channel->open(0), 0);
    QCOMPARE(m_channel->write(0, 1, data.data(), 8), Refused);
    QCOMPARE(m_channel->read(0, &identifier, data.data(), &length), Refused);
}

void tst_SocketCanChannel::lostInterface()
{
    m_kernel.isUp = false;
    takeOnTheBus();
    ::close(std::exchange(m_kernel.far, -1));
    m_kernel.mayChange = false;

    long identifier = 0;
    unsigned int length = 0;
    std::array<char, 8> data{};
    QCOMPARE(m_channel->write(0, 1, data.data(), 8), Refused);
    QCOMPARE(m_channel->read(0, &identifier, data.data(), &length), Refused);
    QCOMPARE(m_channel->busOff(0), 0); // or the channel could never be closed
    QCOMPARE(m_channel->close(0), 0);
}

void tst_SocketCanChannel::tableRefusesWhatIsNotOpen()
{
    const CanLibrary library = socketCanLibrary();
    long identifier = 0;
    unsigned int length = 0;
    std::array<char, 8> data{};
    library.canInitializeLibrary();
    QVERIFY(library.canOpenChannel(1, 8) < 0);
    QVERIFY(library.canSetBusParams(0, -1, 0, 0, 0, 0, 0) < 0);
    QVERIFY(library.canBusOn(0) < 0);
    QVERIFY(library.canWrite(0, 1, data.data(), 8, 0) < 0);
    QVERIFY(library.canRead(0, &identifier, data.data(), &length, nullptr, nullptr) < 0);
    QVERIFY(library.canBusOff(0) < 0);
    QVERIFY(library.canClose(0) < 0);
}

QTEST_GUILESS_MAIN(tst_SocketCanChannel)
#include "tst_SocketCanChannel.moc"
