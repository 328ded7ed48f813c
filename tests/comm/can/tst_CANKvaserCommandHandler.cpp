// The handler's channel: construction, open, speed and close. What the CAN library is asked for, in
// which order and with which arguments, is read from the double of the library.

#include "comm/CANKvaserCommandHandler.h"
#include "support/DebugLog.h"
#include "support/MetaMethods.h"
#include "support/SimulatedCanBus.h"
#include "support/TestCase.h"

#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

/// The calls that take the first channel that a bus gives out on the bus.
QStringList openingCalls(int code)
{
    return {u"canInitializeLibrary() = 0"_s, u"canOpenChannel(0, 8) = 1"_s,
            u"canSetBusParams(1, %1, 0, 0, 0, 0, 0) = 0"_s.arg(code), u"canBusOn(1) = 0"_s};
}

} // namespace

class tst_CANKvaserCommandHandler : public TestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void signalsAndSlotsStandInOrder();
    void answersForItsInterface();
    void constructionTouchesNoLibrary();

    void openTakesTheFirstChannelOnTheBus();
    void bitRatesHaveTheirCodes_data();
    void bitRatesHaveTheirCodes();
    void bitRateWithoutCodeEndsInADebugLine();
    void setBaudrateSetsTheSpeedOfAnOpenChannel();
    void openWithoutAChannelFails();
    void openWithoutADriverFails();
    void openWhileConnectedLosesTheHandle();
    void refusedSpeedDoesNotEndTheOpening();
    void refusedBusLeavesTheChannelOpen();
    void halfOpenChannelCanBeClosed();

    void closeLeavesTheBusAndCloses();
    void secondCloseAsksForTheOldHandle();
    void refusedBusOffKeepsTheConnection();
    void refusedCloseKeepsTheConnection();
    void opensAgainAfterAClose();
    void reopenUsesTheStoredBitRate();
    void debugOutputTellsEachStep();

private:
    std::unique_ptr<SimulatedCanBus> m_bus;
    std::unique_ptr<CANKvaserCommandHandler> m_handler;
};

void tst_CANKvaserCommandHandler::init()
{
    TestCase::init();
    m_bus = std::make_unique<SimulatedCanBus>();
    m_handler = std::make_unique<CANKvaserCommandHandler>();
}

void tst_CANKvaserCommandHandler::cleanup()
{
    m_handler.reset();
    m_bus.reset();
}

void tst_CANKvaserCommandHandler::signalsAndSlotsStandInOrder()
{
    const QStringList expectedSignals = {
        u"handleDetachedDevice()"_s,
        u"requestResult(char address, char motorBank, char command, char status, int value)"_s,
        u"requestedValue(char address, char motorBank, char type, int value)"_s,
        u"requestedTraceValue(char address, char motorBank, char type, int value)"_s,
        u"requestedGlobalParameter(char address, char type, char motorBank, char value)"_s,
        u"requestedIOValue(char address, char type, char motorBank, int value)"_s,
        u"deviceClosed(char address)"_s,
    };
    const QStringList expectedSlots = {
        u"doRequest(char address, char command, char type, char motorBank, int value)"_s,
        u"getAxisParameter(char address, char motorBank, char type)"_s,
        u"setAxisParameter(char address, char motorBank, char type, int value)"_s,
        u"getGlobalParameter(char address, char type, char motorBank)"_s,
        u"getIOValue(char address, char type, char motorBank)"_s,
        u"setIOValue(char address, char type, char motorBank, int value)"_s,
        u"doMove(char address, char motorBank, char command, char type, int value)"_s,
        u"doROX(char address, char motorBank, char roxCommand, int value)"_s,
        u"requestTraceValues(QList<TraceCommand*>*)"_s,
        u"doDirectRequest(Command* request, Command* reply)"_s,
        u"doDirectRequestWithoutAnswer(Command* request)"_s,
    };

    const QMetaObject &meta = CANKvaserCommandHandler::staticMetaObject;
    QCOMPARE(ownMethods(meta, QMetaMethod::Signal), expectedSignals);
    QCOMPARE(ownMethods(meta, QMetaMethod::Slot), expectedSlots);
    QCOMPARE(meta.methodCount() - meta.methodOffset(),
             expectedSignals.size() + expectedSlots.size());
}

void tst_CANKvaserCommandHandler::answersForItsInterface()
{
    CommandHandlerInterface *const interface = m_handler.get();
    QCOMPARE(qobject_cast<CommandHandlerInterface *>(static_cast<QObject *>(m_handler.get())),
             interface);
    QCOMPARE(m_handler->qt_metacast("com.zdr.CommandHandler/1.0"), static_cast<void *>(interface));
    QCOMPARE(m_handler->qt_metacast("CANKvaserCommandHandler"),
             static_cast<void *>(m_handler.get()));
}

void tst_CANKvaserCommandHandler::constructionTouchesNoLibrary()
{
    QVERIFY(!m_handler->isConnected());
    QVERIFY(!m_handler->debugOutput());
    QCOMPARE(m_handler->baudrate(), 1000);
    QCOMPARE(m_handler->deviceEnumerator(), nullptr);
    QCOMPARE(m_bus->calls(), QStringList());
}

void tst_CANKvaserCommandHandler::openTakesTheFirstChannelOnTheBus()
{
    const DebugLog log;
    QVERIFY(m_handler->openDevice(500));
    QVERIFY(m_handler->isConnected());
    QCOMPARE(m_handler->baudrate(), 500);
    QCOMPARE(m_bus->calls(), openingCalls(-2));
    QCOMPARE(log.lines(), QStringList());
}

void tst_CANKvaserCommandHandler::bitRatesHaveTheirCodes_data()
{
    QTest::addColumn<int>("bitrate");
    QTest::addColumn<int>("code");

    QTest::newRow("1000") << 1000 << -1;
    QTest::newRow("500") << 500 << -2;
    QTest::newRow("250") << 250 << -3;
    QTest::newRow("125") << 125 << -4;
    QTest::newRow("100") << 100 << -5;
    QTest::newRow("50") << 50 << -7;
    QTest::newRow("10") << 10 << -9;
}

void tst_CANKvaserCommandHandler::bitRatesHaveTheirCodes()
{
    QFETCH(const int, bitrate);
    QFETCH(const int, code);

    QVERIFY(m_handler->openDevice(bitrate));
    QCOMPARE(m_handler->baudrate(), bitrate);
    QCOMPARE(m_bus->calls(), openingCalls(code));
}

void tst_CANKvaserCommandHandler::bitRateWithoutCodeEndsInADebugLine()
{
    const DebugLog log;
    QVERIFY(m_handler->openDevice(20));
    QVERIFY(m_handler->isConnected());
    QCOMPARE(m_handler->baudrate(), 20);
    QCOMPARE(m_bus->calls().mid(2),
             QStringList({u"canSetBusParams(1, 0, 0, 0, 0, 0, 0) = -35"_s, u"canBusOn(1) = 0"_s}));
    QCOMPARE(log.lines(),
             QStringList(u"CANKvaserCommandHandler::canSetBusParams -> failed! "
                         "status=-35"_s));
}

void tst_CANKvaserCommandHandler::setBaudrateSetsTheSpeedOfAnOpenChannel()
{
    QVERIFY(m_handler->openDevice(500));
    m_bus->clear();

    m_handler->setBaudrate(125);
    QCOMPARE(m_handler->baudrate(), 125);
    QCOMPARE(m_bus->calls(), QStringList(u"canSetBusParams(1, -4, 0, 0, 0, 0, 0) = 0"_s));
}

void tst_CANKvaserCommandHandler::openWithoutAChannelFails()
{
    QVERIFY(m_bus->canFault(u"no-channel 1"_s));
    {
        const DebugLog log;
        QVERIFY(!m_handler->openDevice(500));
        QCOMPARE(log.lines(),
                 QStringList(u"CANKvaserCommandHandler::canOpenChannel -> failed! "
                             "handle=\"-32\""_s));
    }
    QVERIFY(!m_handler->isConnected());
    QCOMPARE(m_handler->baudrate(), 1000); // the speed isn't looked at before there is a channel
    QCOMPARE(m_bus->calls(),
             QStringList({u"canInitializeLibrary() = 0"_s, u"canOpenChannel(0, 8) = -32"_s}));

    // Nothing was opened, so the next attempt finds the channel closed.
    QVERIFY(m_handler->openDevice(500));
    QVERIFY(m_handler->isConnected());
}

void tst_CANKvaserCommandHandler::openWithoutADriverFails()
{
    m_bus->pullOut();
    const DebugLog log;
    QVERIFY(!m_handler->openDevice(500));
    QVERIFY(!m_handler->isConnected());
    QCOMPARE(log.lines(),
             QStringList(u"CANKvaserCommandHandler::canOpenChannel -> failed! "
                         "handle=\"-31\""_s));
}

void tst_CANKvaserCommandHandler::openWhileConnectedLosesTheHandle()
{
    QVERIFY(m_handler->openDevice(500));
    m_bus->clear();

    const DebugLog log;
    QVERIFY(!m_handler->openDevice(250));
    QVERIFY(m_handler->isConnected());
    QCOMPARE(m_handler->baudrate(), 500);
    QVERIFY(!m_handler->closeDevice());
    QVERIFY(m_handler->isConnected());
    QCOMPARE(m_bus->calls(),
             QStringList({u"canInitializeLibrary() = 0"_s, u"canOpenChannel(0, 8) = -33"_s,
                          u"canBusOff(-33) = -34"_s}));
    QCOMPARE(log.lines(),
             QStringList({u"CANKvaserCommandHandler::canOpenChannel -> failed! handle=\"-33\""_s,
                          u"CANKvaserCommandHandler::closeDevice"_s,
                          u"CANKvaserCommandHandler::canBusOff -> failed! status=-34"_s}));
}

void tst_CANKvaserCommandHandler::refusedSpeedDoesNotEndTheOpening()
{
    QVERIFY(m_bus->canFault(u"speed-refused"_s));
    const DebugLog log;
    QVERIFY(m_handler->openDevice(500));
    QVERIFY(m_handler->isConnected());
    QCOMPARE(m_bus->calls().constLast(), u"canBusOn(1) = 0"_s);
    QCOMPARE(log.lines(),
             QStringList(u"CANKvaserCommandHandler::canSetBusParams -> failed! "
                         "status=-38"_s));
}

void tst_CANKvaserCommandHandler::refusedBusLeavesTheChannelOpen()
{
    QVERIFY(m_bus->canFault(u"on-refused 1"_s));
    const DebugLog log;
    QVERIFY(!m_handler->openDevice(500));
    QVERIFY(!m_handler->isConnected());
    QCOMPARE(m_bus->calls().constLast(), u"canBusOn(1) = -38"_s); // no canClose after it
    QCOMPARE(log.lines(),
             QStringList(u"CANKvaserCommandHandler::canBusOn -> failed! status=-38"_s));

    QVERIFY(!m_handler->openDevice(500));
    QCOMPARE(m_bus->calls().constLast(), u"canOpenChannel(0, 8) = -33"_s);
    QVERIFY(!m_handler->isConnected());
}

void tst_CANKvaserCommandHandler::halfOpenChannelCanBeClosed()
{
    QVERIFY(m_bus->canFault(u"on-refused 1"_s));
    const DebugLog log;
    QVERIFY(!m_handler->openDevice(500));
    QVERIFY(m_handler->closeDevice());
    QVERIFY(!m_handler->isConnected());
    QVERIFY(m_handler->openDevice(500));
    QVERIFY(m_handler->isConnected());
}

void tst_CANKvaserCommandHandler::closeLeavesTheBusAndCloses()
{
    QVERIFY(m_handler->openDevice(500));
    m_bus->clear();

    const DebugLog log;
    QVERIFY(m_handler->closeDevice());
    QVERIFY(!m_handler->isConnected());
    QCOMPARE(m_bus->calls(), QStringList({u"canBusOff(1) = 0"_s, u"canClose(1) = 0"_s}));
    QCOMPARE(log.lines(), QStringList(u"CANKvaserCommandHandler::closeDevice"_s));
}

void tst_CANKvaserCommandHandler::secondCloseAsksForTheOldHandle()
{
    QVERIFY(m_handler->openDevice(500));
    const DebugLog log;
    QVERIFY(m_handler->closeDevice());
    m_bus->clear();

    QVERIFY(!m_handler->closeDevice());
    QVERIFY(!m_handler->isConnected());
    QCOMPARE(m_bus->calls(), QStringList(u"canBusOff(1) = -34"_s));
    QCOMPARE(log.lines().constLast(),
             u"CANKvaserCommandHandler::canBusOff -> failed! status=-34"_s);
}

void tst_CANKvaserCommandHandler::refusedBusOffKeepsTheConnection()
{
    QVERIFY(m_handler->openDevice(500));
    QVERIFY(m_bus->canFault(u"off-refused 1"_s));
    m_bus->clear();

    const DebugLog log;
    QVERIFY(!m_handler->closeDevice());
    QVERIFY(m_handler->isConnected());
    QCOMPARE(m_bus->calls(), QStringList(u"canBusOff(1) = -38"_s));
    QCOMPARE(log.lines(),
             QStringList({u"CANKvaserCommandHandler::closeDevice"_s,
                          u"CANKvaserCommandHandler::canBusOff -> failed! status=-38"_s}));

    QVERIFY(m_handler->closeDevice());
    QVERIFY(!m_handler->isConnected());
}

void tst_CANKvaserCommandHandler::refusedCloseKeepsTheConnection()
{
    QVERIFY(m_handler->openDevice(500));
    QVERIFY(m_bus->canFault(u"close-refused 1"_s));
    m_bus->clear();

    const DebugLog log;
    QVERIFY(!m_handler->closeDevice());
    QVERIFY(m_handler->isConnected());
    QCOMPARE(m_bus->calls(), QStringList({u"canBusOff(1) = 0"_s, u"canClose(1) = -38"_s}));
    QCOMPARE(log.lines(),
             QStringList({u"CANKvaserCommandHandler::closeDevice"_s,
                          u"CANKvaserCommandHandler::canClose -> failed! status=-38"_s}));
}

void tst_CANKvaserCommandHandler::opensAgainAfterAClose()
{
    const DebugLog log;
    for (int round = 1; round <= 100; ++round) {
        m_bus->clear();
        QVERIFY(m_handler->openDevice(500));
        QVERIFY(m_handler->isConnected());
        QCOMPARE(m_bus->calls().at(1), u"canOpenChannel(0, 8) = %1"_s.arg(round));
        QVERIFY(m_handler->closeDevice());
        QVERIFY(!m_handler->isConnected());
    }
}

void tst_CANKvaserCommandHandler::reopenUsesTheStoredBitRate()
{
    {
        const DebugLog log;
        QVERIFY(m_handler->openDevice(250));
        QVERIFY(m_handler->closeDevice());
    }
    m_bus->clear();
    QVERIFY(m_handler->reopenDevice());
    QVERIFY(m_handler->isConnected());
    QCOMPARE(m_bus->calls(),
             QStringList({u"canInitializeLibrary() = 0"_s, u"canOpenChannel(0, 8) = 2"_s,
                          u"canSetBusParams(2, -3, 0, 0, 0, 0, 0) = 0"_s, u"canBusOn(2) = 0"_s}));

    // It doesn't close before, so on an open channel it fails as any second open does.
    const DebugLog log;
    m_bus->clear();
    QVERIFY(!m_handler->reopenDevice());
    QCOMPARE(m_bus->calls(),
             QStringList({u"canInitializeLibrary() = 0"_s, u"canOpenChannel(0, 8) = -33"_s}));
}

void tst_CANKvaserCommandHandler::debugOutputTellsEachStep()
{
    m_handler->setDebugOutput(true);
    const DebugLog log;
    QVERIFY(m_handler->openDevice(500));
    QVERIFY(m_handler->closeDevice());
    QCOMPARE(log.lines(),
             QStringList({u"CANKvaserCommandHandler::openDevice(\"500\")"_s,
                          u"CANKvaserCommandHandler::canInitializeLibrary -> ok"_s,
                          u"CANKvaserCommandHandler::canOpenChannel -> ok"_s,
                          u"CANKvaserCommandHandler::canSetBusParams -> ok"_s,
                          u"CANKvaserCommandHandler::canBusOn -> ok"_s,
                          u"CANKvaserCommandHandler::closeDevice"_s,
                          u"CANKvaserCommandHandler::canBusOff -> ok"_s,
                          u"CANKvaserCommandHandler::canClose -> ok"_s}));
}

QTEST_GUILESS_MAIN(tst_CANKvaserCommandHandler)
#include "tst_CANKvaserCommandHandler.moc"
