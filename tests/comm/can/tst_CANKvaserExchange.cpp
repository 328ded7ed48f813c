// The handler's exchanges: the frames that its slots send, and what they make of the replies.

#include "comm/Command.h"
#include "comm/TraceCommand.h"
#include "comm/can/ConnectedHandlerTest.h"
#include "support/DebugLog.h"

#include <QTest>

#include <functional>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

using Action = std::function<void(CANKvaserCommandHandler &)>;

} // namespace

class tst_CANKvaserExchange : public ConnectedHandlerTest
{
    Q_OBJECT

private slots:
    void slotsSendTheirFrames_data();
    void slotsSendTheirFrames();
    void closedHandlerDoesNothing_data();
    void closedHandlerDoesNothing();
    void callsOfAnExchange();
    void addressAbove127();
    void tracePassOfBytesAbove127();
    void globalValueIsCutToEightBits();

    void versionTexts();
    void readReplyCarriesTheStatusAsType();
    void directRequest();
    void directRequestWithoutReply();
    void sendingDoesNotWait();
    void debugOutputTellsEachFrame();
};

void tst_CANKvaserExchange::slotsSendTheirFrames_data()
{
    QTest::addColumn<Action>("action");
    QTest::addColumn<QStringList>("frames");
    QTest::addColumn<QStringList>("result");

    using Handler = CANKvaserCommandHandler;
    QTest::newRow("doRequest") << Action([](Handler &handler) { handler.doRequest(1, 5, 4, 0, 9); })
                               << QStringList{u"can < 001 [8] 05 04 00 00 00 00 09 03"_s,
                                              u"can > 002 [8] 01 64 05 00 00 00 09 03"_s}
                               << QStringList(u"requestResult(1, 0, 5, 100, 9)"_s);
    QTest::newRow("doRequest of a command that the module refuses")
        << Action([](Handler &handler) { handler.doRequest(1, 6, 4, 1, 7); })
        << QStringList{u"can < 001 [8] 06 04 01 00 00 00 07 03"_s,
                       u"can > 002 [8] 01 04 06 00 00 00 07 03"_s}
        << QStringList(u"requestResult(1, 1, 6, 4, 7)"_s);
    QTest::newRow("getAxisParameter")
        << Action([](Handler &handler) { handler.getAxisParameter(1, 0, 4); })
        << QStringList{u"can < 001 [8] 06 04 00 00 00 00 00 03"_s,
                       u"can > 002 [8] 01 64 06 00 00 03 E8 03"_s}
        << QStringList(u"requestedValue(1, 0, 4, 1000)"_s);
    QTest::newRow("setAxisParameter")
        << Action([](Handler &handler) { handler.setAxisParameter(1, 0, 1, -2); })
        << QStringList{u"can < 001 [8] 05 01 00 FF FF FF FE 03"_s,
                       u"can > 002 [8] 01 64 05 FF FF FF FE 03"_s}
        << QStringList(u"requestedValue(1, 0, 1, -2)"_s);
    QTest::newRow("getGlobalParameter")
        << Action([](Handler &handler) { handler.getGlobalParameter(1, 9, 2); })
        << QStringList{u"can < 001 [8] 0A 09 02 00 00 00 00 03"_s,
                       u"can > 002 [8] 01 64 0A 00 00 00 2A 03"_s}
        << QStringList(u"requestedGlobalParameter(1, 9, 2, 42)"_s);
    QTest::newRow("getIOValue") << Action([](Handler &handler) { handler.getIOValue(1, 3, 1); })
                                << QStringList{u"can < 001 [8] 0F 03 01 00 00 00 00 03"_s,
                                               u"can > 002 [8] 01 64 0F 00 00 0F A0 03"_s}
                                << QStringList(u"requestedIOValue(1, 3, 1, 4000)"_s);
    QTest::newRow("setIOValue, type and bank swapped in the signal")
        << Action([](Handler &handler) { handler.setIOValue(1, 5, 2, 1); })
        << QStringList{u"can < 001 [8] 0E 05 02 00 00 00 01 03"_s,
                       u"can > 002 [8] 01 64 0E 00 00 00 01 03"_s}
        << QStringList(u"requestedValue(1, 5, 2, 1)"_s);
    QTest::newRow("doMove") << Action([](Handler &handler) { handler.doMove(1, 0, 4, 1, -1); })
                            << QStringList{u"can < 001 [8] 04 01 00 FF FF FF FF 03"_s,
                                           u"can > 002 [8] 01 64 04 FF FF FF FF 03"_s}
                            << QStringList();
    QTest::newRow("doROX") << Action([](Handler &handler) { handler.doROX(1, 0, 2, 500); })
                           << QStringList{u"can < 001 [8] 02 00 00 00 00 01 F4 03"_s,
                                          u"can > 002 [8] 01 64 02 00 00 01 F4 03"_s}
                           << QStringList();
    QTest::newRow("requestTraceValues") << Action([](Handler &handler) {
        TraceCommand speed(1, 0, 6, 4, u"speed"_s);
        TraceCommand position(1, 0, 6, 1, u"position"_s);
        QList<TraceCommand *> list{&speed, &position};
        handler.requestTraceValues(&list);
    })
                                        << QStringList{u"can < 001 [8] 06 04 00 00 00 00 00 03"_s,
                                                       u"can > 002 [8] 01 64 06 00 00 03 E8 03"_s,
                                                       u"can < 001 [8] 06 01 00 00 00 00 00 03"_s,
                                                       u"can > 002 [8] 01 64 06 00 00 00 00 03"_s}
                                        << QStringList{u"requestedTraceValue(1, 0, 4, 1000)"_s,
                                                       u"requestedTraceValue(1, 0, 1, 0)"_s};
    QTest::newRow("requestTraceValues of nothing") << Action([](Handler &handler) {
        QList<TraceCommand *> list;
        handler.requestTraceValues(&list);
    }) << QStringList() << QStringList();
}

void tst_CANKvaserExchange::slotsSendTheirFrames()
{
    QFETCH(const Action, action);
    QFETCH(const QStringList, frames);
    QFETCH(const QStringList, result);
    QVERIFY(m_bus->module().setGlobalParameter(2, 9, 42));
    QVERIFY(m_bus->module().setIoValue(1, 3, 4000));

    const DebugLog log;
    action(*m_handler);
    QCOMPARE(m_bus->frames(), frames);
    QCOMPARE(m_signals->take(), result);
    QCOMPARE(log.lines(), QStringList());
}

void tst_CANKvaserExchange::closedHandlerDoesNothing_data()
{
    slotsSendTheirFrames_data();

    using Handler = CANKvaserCommandHandler;
    QTest::newRow("versionText") << Action([](Handler &handler) {
        QCOMPARE(handler.versionText(1), QString());
    }) << QStringList() << QStringList();
    QTest::newRow("readReply") << Action([](Handler &handler) {
        QCOMPARE(handler.readReply(1), nullptr);
    }) << QStringList() << QStringList();
    QTest::newRow("readFrame") << Action([](Handler &handler) {
        QCOMPARE(handler.readFrame(), nullptr);
    }) << QStringList() << QStringList();
    QTest::newRow("doDirectRequest") << Action([](Handler &handler) {
        Command request(1, 6, 4, 0, 0);
        Command reply(1, 2, 3, 4, 5);
        handler.doDirectRequest(&request, &reply);
        QVERIFY(!reply.valid());
    }) << QStringList() << QStringList();
    QTest::newRow("doDirectRequestWithoutAnswer") << Action([](Handler &handler) {
        Command request(1, 6, 4, 0, 0);
        handler.doDirectRequestWithoutAnswer(&request);
    }) << QStringList() << QStringList();
}

void tst_CANKvaserExchange::closedHandlerDoesNothing()
{
    QFETCH(const Action, action);
    const DebugLog log;
    QVERIFY(m_handler->closeDevice());
    m_bus->clear();

    action(*m_handler);
    // No call of the library at all: nothing was sent, and nothing was waited for.
    QCOMPARE(m_bus->calls(), QStringList());
    QCOMPARE(m_bus->frames(), QStringList());
    QCOMPARE(m_signals->take(), QStringList());
    QCOMPARE(log.lines(), QStringList(u"CANKvaserCommandHandler::closeDevice"_s));
}

void tst_CANKvaserExchange::callsOfAnExchange()
{
    m_handler->getAxisParameter(1, 0, 4);
    QCOMPARE(m_bus->calls(),
             QStringList({u"canWrite(1, 1, 06 04 00 00 00 00 00 03, 8, 0) = 0"_s,
                          u"canRead(1, null, null) = 0"_s}));
}

void tst_CANKvaserExchange::addressAbove127()
{
    useBus({.address = 200});
    m_handler->getAxisParameter(static_cast<char>(200), 0, static_cast<char>(129));
    QCOMPARE(m_bus->calls().constFirst(), u"canWrite(1, -56, 06 81 00 00 00 00 00 03, 8, 0) = 0"_s);
    QCOMPARE(m_bus->frames().constFirst(), u"can < 0C8 [8] 06 81 00 00 00 00 00 03"_s);
    QCOMPARE(m_signals->take(), QStringList(u"requestedValue(-56, 0, -127, 0)"_s));
}

/// Each entry with its own command, which needn't be the one that reads an axis parameter. The
/// module has no such port, and its refusal is a reply like any other.
void tst_CANKvaserExchange::tracePassOfBytesAbove127()
{
    useBus({.address = 200});
    m_handler->setLogTrace(true); // changes nothing: there are no history messages over CAN
    TraceCommand entry(static_cast<char>(200), static_cast<char>(130), 15, static_cast<char>(237),
                       QString());
    QList<TraceCommand *> list{&entry};
    m_handler->requestTraceValues(&list);
    QCOMPARE(m_bus->frames().size(), 2);
    QCOMPARE(m_bus->frames().constFirst(), u"can < 0C8 [8] 0F ED 82 00 00 00 00 03"_s);
    QCOMPARE(m_signals->take(), QStringList(u"requestedTraceValue(-56, -126, -19, 0)"_s));
}

void tst_CANKvaserExchange::globalValueIsCutToEightBits()
{
    QVERIFY(m_bus->module().setGlobalParameter(0, 1, 300));
    m_handler->getGlobalParameter(1, 1, 0);
    QCOMPARE(m_signals->take(), QStringList(u"requestedGlobalParameter(1, 1, 0, 44)"_s));
}

void tst_CANKvaserExchange::versionTexts()
{
    QCOMPARE(m_handler->versionText(1), u"7710V105"_s);
    QCOMPARE(m_bus->frames(),
             QStringList({u"can < 001 [8] 88 00 00 00 00 00 00 03"_s,
                          u"can > 002 [8] 37 37 31 30 56 31 30 35"_s}));
    m_bus->clear();

    QCOMPARE(m_handler->firmwareVersion(1), u"unknown!"_s);
    QCOMPARE(m_bus->frames(), QStringList());

    QVERIFY(m_bus->fault(u"silence 1"_s));
    const DebugLog log;
    QCOMPARE(m_handler->versionText(1), QString());
    QCOMPARE(m_signals->take(), QStringList(u"deviceClosed(1)"_s));
}

void tst_CANKvaserExchange::readReplyCarriesTheStatusAsType()
{
    QVERIFY(m_bus->fault(u"status 3"_s));
    QVERIFY(m_bus->canFault(u"module-id 200"_s));
    Command request(1, 6, 4, 0, 0);
    m_handler->sendCommand(&request);
    const std::unique_ptr<Command> reply{m_handler->readReply(1)};
    QVERIFY(reply);
    QVERIFY(reply->valid());
    QCOMPARE(reply->address(), static_cast<char>(200));
    QCOMPARE(reply->command(), char(6));
    QCOMPARE(reply->type(), char(3));
    QCOMPARE(reply->motorBank(), char(0));
    QCOMPARE(reply->status(), char(0));
    QCOMPARE(reply->value(), 1000);
}

void tst_CANKvaserExchange::directRequest()
{
    QVERIFY(m_bus->module().setGlobalParameter(2, 9, 300));
    QVERIFY(m_bus->fault(u"checksum"_s));
    QVERIFY(m_bus->canFault(u"module-id 9"_s));
    Command request(1, 10, 9, 2, 0);
    Command reply;
    reply.setReplyAddress(77);
    m_handler->doDirectRequest(&request, &reply);
    QVERIFY(reply.valid());
    QCOMPARE(reply.address(), char(9));
    QCOMPARE(reply.command(), char(10));
    QCOMPARE(reply.type(), char(9));
    QCOMPARE(reply.status(), char(100));
    QCOMPARE(reply.motorBank(), char(2));
    QCOMPARE(reply.value(), 300);
    QCOMPARE(reply.replyAddress(), char(0));
    QCOMPARE(reply.checksum(), static_cast<char>(0xFC)); // the last byte, whatever it is
    QCOMPARE(m_bus->frames().constFirst(), u"can < 001 [8] 0A 09 02 00 00 00 00 03"_s);
}

void tst_CANKvaserExchange::directRequestWithoutReply()
{
    QVERIFY(m_bus->fault(u"silence"_s));
    const DebugLog log;
    Command request(1, 6, 4, 0, 0);
    Command reply(1, 2, 3, 4, 5);
    m_handler->doDirectRequest(&request, &reply);
    QVERIFY(!reply.valid());
    QCOMPARE(reply.address(), char(1));
    QCOMPARE(reply.command(), char(2));
    QCOMPARE(reply.type(), char(3));
    QCOMPARE(reply.motorBank(), char(4));
    QCOMPARE(reply.value(), 5);
}

void tst_CANKvaserExchange::sendingDoesNotWait()
{
    Command request(1, 5, 4, 0, 1);
    m_handler->sendCommand(&request);
    m_handler->doDirectRequestWithoutAnswer(&request);
    const QString write = u"canWrite(1, 1, 05 04 00 00 00 00 01 03, 8, 0) = 0"_s;
    QCOMPARE(m_bus->calls(), QStringList({write, write}));
    QCOMPARE(m_signals->take(), QStringList());
}

void tst_CANKvaserExchange::debugOutputTellsEachFrame()
{
    m_handler->setDebugOutput(true);
    QVERIFY(m_bus->fault(u"silence 1"_s));
    DebugLog log;
    m_handler->getAxisParameter(1, 0, 4);
    QStringList expected{
        u"\"CANZDRLRequest[id=1, length=8, command=6, type=4, motorBank=0, value=0]\""_s,
        u"\"ZDRLRequest[0x001, 0x000, 0x000, 0x000, 0x008, 0x000, 0x000, 0x000, 0x006, 0x004, "
        "0x000, 0x000, 0x000, 0x000, 0x000, 0x003]\""_s};
    const QStringList request = expected;
    expected.append(QStringList(51, u"CANKvaserCommandHandler::canRead -> failed!"_s));
    expected.append(TimeOutLine);
    QCOMPARE(log.lines(), expected);

    log.clear();
    m_handler->getAxisParameter(1, 0, 4);
    expected = request;
    expected.append(u"CANKvaserCommandHandler::canRead -> ok id=\"2\" length=\"8\""_s);
    expected.append(u"\"CANZDRLReply[0x000, 0x006, 0x100, 0x001, 0x000, 0x000, 0x000, 0x000, "
                    "0x001, 0x100, 0x006, 0x000, 0x000, 0x003, 0x232, 0x003]\""_s);
    expected.append(u"\"CANZDRLReply[id=0, length=0, moduleId=1, status=100, command=6, "
                    "value=1000]\""_s);
    QCOMPARE(log.lines(), expected);
}

QTEST_GUILESS_MAIN(tst_CANKvaserExchange)
#include "tst_CANKvaserExchange.moc"
