#include "comm/Answers.h"
#include "comm/Command.h"
#include "comm/HandlerProbe.h"
#include "comm/QSerialCommandHandler.h"
#include "comm/Reply.h"
#include "comm/Request.h"
#include "comm/ScriptedPort.h"
#include "comm/SignalLog.h"
#include "comm/TraceCommand.h"
#include "support/DebugLog.h"
#include "support/SimulatedPort.h"
#include "support/TestCase.h"

#include <QTest>

#include <functional>
#include <memory>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

using Handler = QSerialCommandHandler;
using Call = std::function<void(Handler &)>;
using Switch = void (CommandHandlerInterface::*)(bool);

void traceTwo(Handler &handler)
{
    TraceCommand first(1, 2, 6, 4, u"Velocity"_s);
    TraceCommand second(char(200), 0, 6, char(206), u"Load"_s);
    QList<TraceCommand *> list = {&first, &second};
    handler.requestTraceValues(&list);
}

} // namespace

Q_DECLARE_METATYPE(Call)
Q_DECLARE_METATYPE(Switch)

/// What each slot sends over a real port, and what it makes of the reply.
class tst_QSerialCommandHandlerExchange : public TestCase
{
    Q_OBJECT

private slots:
    void slotsOnTheWire_data();
    void slotsOnTheWire();
    void tracePass();
    void replyIsUsedAsItIs_data();
    void replyIsUsedAsItIs();
    void directRequest();
    void directRequestWithoutAnswer_data();
    void directRequestWithoutAnswer();
    void readReply();
    void history_data();
    void history();
    void historyOfTracePass();
    void noHistoryByDefault();
    void debugOutput();
    void nestedExchange();
    void parameterOfASimulatedModule();
    void moduleAnswersAtItsOwnRateOnly();
};

void tst_QSerialCommandHandlerExchange::slotsOnTheWire_data()
{
    QTest::addColumn<Call>("call");
    QTest::addColumn<QString>("request");
    QTest::addColumn<QStringList>("emitted");

    // The reply's value is 300 throughout, its status 100, its command 6.
    QTest::newRow("doRequest") << Call([](Handler &h) { h.doRequest(1, char(138), 4, 2, -1); })
                               << u"018a0402ffffffff8d"_s
                               << QStringList(u"requestResult(1, 2, 6, 100, 300)"_s);
    QTest::newRow("getAxisParameter")
        << Call([](Handler &h) { h.getAxisParameter(1, 2, 4); }) << u"01060402000000000d"_s
        << QStringList(u"requestedValue(1, 2, 4, 300)"_s);
    QTest::newRow("getAxisParameter, above 127")
        << Call([](Handler &h) { h.getAxisParameter(char(200), 0, char(129)); })
        << u"c8068100000000004f"_s << QStringList(u"requestedValue(-56, 0, -127, 300)"_s);
    QTest::newRow("setAxisParameter")
        << Call([](Handler &h) { h.setAxisParameter(1, 2, 4, 1000); }) << u"01050402000003e8f7"_s
        << QStringList(u"requestedValue(1, 2, 4, 300)"_s);
    // 300 doesn't fit into the signal's 8 bits.
    QTest::newRow("getGlobalParameter")
        << Call([](Handler &h) { h.getGlobalParameter(1, 4, 2); }) << u"010a04020000000011"_s
        << QStringList(u"requestedGlobalParameter(1, 4, 2, 44)"_s);
    QTest::newRow("getIOValue") << Call([](Handler &h) { h.getIOValue(1, 4, 2); })
                                << u"010f04020000000016"_s
                                << QStringList(u"requestedIOValue(1, 4, 2, 300)"_s);
    // The signal's bank is the type 4, and its type the bank 2.
    QTest::newRow("setIOValue") << Call([](Handler &h) { h.setIOValue(1, 4, 2, 7); })
                                << u"010e0402000000071c"_s
                                << QStringList(u"requestedValue(1, 4, 2, 300)"_s);
    QTest::newRow("doMove") << Call([](Handler &h) { h.doMove(1, 2, 4, 1, -1); })
                            << u"01040102ffffffff04"_s << QStringList();
    QTest::newRow("doROX") << Call([](Handler &h) { h.doROX(1, 2, 3, 1000); })
                           << u"01030002000003e8f1"_s << QStringList();
}

void tst_QSerialCommandHandlerExchange::slotsOnTheWire()
{
    QFETCH(Call, call);
    QFETCH(QString, request);
    ScriptedPort port;
    Handler handler;
    SignalLog emitted(handler);
    QVERIFY(handler.openDevice(port.portName()));
    port.addAnswer(Answer300);
    call(handler);
    // Both have happened when the slot returns.
    QCOMPARE(port.requests(), {request});
    QTEST(emitted.take(), "emitted");

    // Also the reply that nobody is told of was taken from the port.
    port.addAnswer(Answer7);
    handler.getAxisParameter(1, 0, 1);
    QCOMPARE(emitted.lines(), {u"requestedValue(1, 0, 1, 7)"_s});
}

void tst_QSerialCommandHandlerExchange::tracePass()
{
    ScriptedPort port;
    Handler handler;
    SignalLog emitted(handler);
    QVERIFY(handler.openDevice(port.portName()));
    port.addAnswer(Answer300);
    port.addAnswer("02 c8 64 06 ff ff ff fe 30");
    traceTwo(handler);
    QCOMPARE(port.requests(), QStringList({u"01060402000000000d"_s, u"c806ce00000000009c"_s}));
    QCOMPARE(emitted.lines(),
             QStringList({u"requestedTraceValue(1, 2, 4, 300)"_s,
                          u"requestedTraceValue(-56, 0, -50, -2)"_s}));
}

void tst_QSerialCommandHandlerExchange::replyIsUsedAsItIs_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("result");

    QTest::newRow("status of a refusal")
        << "02 01 04 06 00 00 00 07 14"_ba << u"requestResult(1, 0, 6, 4, 7)"_s;
    QTest::newRow("another module's address")
        << "02 05 64 06 00 00 00 07 78"_ba << u"requestResult(1, 0, 6, 100, 7)"_s;
    QTest::newRow("another command")
        << "02 01 64 c8 00 00 00 07 36"_ba << u"requestResult(1, 0, -56, 100, 7)"_s;
    QTest::newRow("wrong checksum")
        << "02 01 64 06 00 00 00 07 00"_ba << u"requestResult(1, 0, 6, 100, 7)"_s;
    QTest::newRow("nine zero bytes")
        << "00 00 00 00 00 00 00 00 00"_ba << u"requestResult(1, 0, 0, 0, 0)"_s;
    QTest::newRow("nine full bytes")
        << "ff ff ff ff ff ff ff ff ff"_ba << u"requestResult(1, 0, -1, -1, -1)"_s;
    QTest::newRow("smallest value")
        << "02 01 64 06 80 00 00 00 ed"_ba << u"requestResult(1, 0, 6, 100, -2147483648)"_s;
}

void tst_QSerialCommandHandlerExchange::replyIsUsedAsItIs()
{
    QFETCH(QByteArray, answer);
    ScriptedPort port;
    Handler handler;
    SignalLog emitted(handler);
    QVERIFY(handler.openDevice(port.portName()));
    port.addAnswer(answer);
    handler.doRequest(1, 6, 4, 0, 0);
    QFETCH(QString, result);
    QCOMPARE(emitted.lines(), {result});
}

void tst_QSerialCommandHandlerExchange::directRequest()
{
    ScriptedPort port;
    Handler handler;
    QVERIFY(handler.openDevice(port.portName()));
    port.addAnswer("02 c8 63 8a ff ff ff fe 99");
    Command request(1, 6, 4, 2, 5);
    Command reply;
    handler.doDirectRequest(&request, &reply);
    QCOMPARE(port.requests(), {u"010604020000000512"_s});
    // Type and bank are the request's, all else the answer's.
    QCOMPARE(reply.toString(), u"Command(200, 138, 4, 99, 2, -2, valid)"_s);
    QCOMPARE(reply.replyAddress(), char(2));
    QCOMPARE(reply.checksum(), char(0x99));
}

void tst_QSerialCommandHandlerExchange::directRequestWithoutAnswer_data()
{
    QTest::addColumn<bool>("asSlot");
    QTest::newRow("doDirectRequestWithoutAnswer") << true;
    QTest::newRow("sendCommand") << false;
}

void tst_QSerialCommandHandlerExchange::directRequestWithoutAnswer()
{
    QFETCH(bool, asSlot);
    ScriptedPort port;
    Handler handler;
    SignalLog emitted(handler);
    QVERIFY(handler.openDevice(port.portName()));
    port.addAnswer(Answer300);
    Command command(1, 6, 4, 2, -1);
    if (asSlot) {
        handler.doDirectRequestWithoutAnswer(&command);
    } else {
        handler.sendCommand(&command);
    }
    QTRY_COMPARE(port.requests(), QStringList(u"01060402ffffffff09"_s));
    QCOMPARE(emitted.lines(), QStringList());

    // The reply, which nobody waited for, is there for whoever reads next.
    const std::unique_ptr<Command> reply{handler.readReply(1)};
    QVERIFY(reply);
    QCOMPARE(reply->value(), 300);
}

void tst_QSerialCommandHandlerExchange::readReply()
{
    ScriptedPort port;
    Handler handler;
    QVERIFY(handler.openDevice(port.portName()));
    port.send("02 c8 63 8a 00 00 01 2c 99");
    const std::unique_ptr<Command> reply{handler.readReply(1)};
    QVERIFY(reply);
    // The status stands in the type's place.
    QCOMPARE(reply->toString(), u"Command(200, 138, 99, 0, 0, 300, valid)"_s);
}

void tst_QSerialCommandHandlerExchange::history_data()
{
    QTest::addColumn<Switch>("on");
    QTest::addColumn<Call>("call");
    QTest::addColumn<QString>("request");
    QTest::addColumn<QStringList>("result");

    using H = Handler;
    QTest::newRow("doRequest") << Switch(&H::setLogRequest)
                               << Call([](H &h) { h.doRequest(1, 6, 4, 2, 1000); })
                               << u"0x006, 0x004, 0x002, 0x232, 0x003, 0x000, 0x000, 0x248"_s
                               << QStringList(u"requestResult(1, 2, 6, 100, 300)"_s);
    QTest::newRow("getAxisParameter")
        << Switch(&H::setLogGetAxisParameter) << Call([](H &h) { h.getAxisParameter(1, 2, 4); })
        << u"0x006, 0x004, 0x002, 0x000, 0x000, 0x000, 0x000, 0x013"_s
        << QStringList(u"requestedValue(1, 2, 4, 300)"_s);
    QTest::newRow("setAxisParameter") << Switch(&H::setLogSetAxisParameter)
                                      << Call([](H &h) { h.setAxisParameter(1, 2, 4, 1000); })
                                      << u"0x005, 0x004, 0x002, 0x232, 0x003, 0x000, 0x000, 0x247"_s
                                      << QStringList(u"requestedValue(1, 2, 4, 300)"_s);
    QTest::newRow("doMove") << Switch(&H::setLogMove)
                            << Call([](H &h) { h.doMove(1, 2, 4, 1, 1000); })
                            << u"0x004, 0x001, 0x002, 0x232, 0x003, 0x000, 0x000, 0x243"_s
                            << QStringList();
    QTest::newRow("doROX") << Switch(&H::setLogROX) << Call([](H &h) { h.doROX(1, 2, 1, 1000); })
                           << u"0x001, 0x000, 0x002, 0x232, 0x003, 0x000, 0x000, 0x239"_s
                           << QStringList();
}

void tst_QSerialCommandHandlerExchange::history()
{
    QFETCH(Switch, on);
    QFETCH(Call, call);
    QFETCH(QString, request);
    QFETCH(QStringList, result);
    ScriptedPort port;
    Handler handler;
    SignalLog emitted(handler);
    (handler.*on)(true);
    QVERIFY(handler.openDevice(port.portName()));
    // The request's message goes out before the sending.
    QObject::connect(&handler, &Handler::handleHistoryMessage, &handler,
                     [&port, first = true]() mutable {
                         if (std::exchange(first, false)) {
                             QCOMPARE(port.requests(), QStringList());
                         }
                     });
    port.addAnswer(Answer300);
    call(handler);
    const QStringList expected =
        QStringList(u"handleHistoryMessage(Request[0x001, "_s + request + u"])"_s) + result
        + QStringList(u"handleHistoryMessage("
                      "Reply[0x02, 0x01, 0x64, 0x06, 0x00, 0x00, 0x01, 0x2C, 0x9A])"_s);
    QCOMPARE(emitted.take(), expected);

    // Without a reply there is only the request.
    const DebugLog log;
    call(handler);
    QCOMPARE(emitted.lines(), QStringList({expected.constFirst(), detached(port.portName())}));
}

void tst_QSerialCommandHandlerExchange::historyOfTracePass()
{
    ScriptedPort port;
    Handler handler;
    SignalLog emitted(handler);
    handler.setLogTrace(true);
    QVERIFY(handler.openDevice(port.portName()));
    port.addAnswer(Answer300);
    port.addAnswer(Answer300);
    traceTwo(handler);
    const auto reply = u"handleHistoryMessage("
                       "Reply[0x02, 0x01, 0x64, 0x06, 0x00, 0x00, 0x01, 0x2C, 0x9A])"_s;
    const QStringList expected = {
        u"handleHistoryMessage(Request[0x001, 0x006, 0x004, 0x002, "
        "0x000, 0x000, 0x000, 0x000, 0x013])"_s,
        u"requestedTraceValue(1, 2, 4, 300)"_s,
        reply,
        u"handleHistoryMessage(Request[0x200, 0x006, 0x206, 0x000, "
        "0x000, 0x000, 0x000, 0x000, 0x156])"_s,
        u"requestedTraceValue(-56, 0, -50, 300)"_s,
        reply,
    };
    QCOMPARE(emitted.lines(), expected);
}

void tst_QSerialCommandHandlerExchange::noHistoryByDefault()
{
    ScriptedPort port;
    Handler handler;
    handler.setDebugOutput(true); // which is another thing
    SignalLog emitted(handler);
    QVERIFY(handler.openDevice(port.portName()));
    for (int i = 0; i < 7; ++i) {
        port.addAnswer(Answer300);
    }
    handler.doRequest(1, 6, 4, 0, 0);
    handler.getAxisParameter(1, 0, 4);
    handler.setAxisParameter(1, 0, 4, 1);
    handler.doMove(1, 0, 4, 1, 1);
    handler.doROX(1, 0, 1, 1);
    traceTwo(handler);
    QCOMPARE(emitted.lines().size(), 5);
    QVERIFY(emitted.lines().filter(u"handleHistoryMessage"_s).isEmpty());
}

void tst_QSerialCommandHandlerExchange::debugOutput()
{
    ScriptedPort port;
    Handler handler;
    QVERIFY(handler.openDevice(port.portName()));
    port.addAnswer(Answer300);
    port.addAnswer(Answer300);
    DebugLog log;
    handler.getAxisParameter(1, 2, 4);
    QCOMPARE(log.lines(), QStringList());

    handler.setDebugOutput(true);
    handler.getAxisParameter(1, 2, 4);
    const QStringList expected = {
        u"\"Request[1, 6, 4, 2, 0, 13]\" [DEVICE]"_s,
        u"\"Request[0x001, 0x006, 0x004, 0x002, 0x000, 0x000, 0x000, 0x000, 0x013]\" [DEVICE]"_s,
        u"\"Reply[0x02, 0x01, 0x64, 0x06, 0x00, 0x00, 0x01, 0x2C, 0x9A]\""_s,
        u"\"Reply[2, 1, 100, 6, 300, 154]\""_s,
    };
    QCOMPARE(maskedDevices(log.lines()), expected);
}

/// A panel may ask for the next value from within the answer to the last.
void tst_QSerialCommandHandlerExchange::nestedExchange()
{
    ScriptedPort port;
    Handler handler;
    SignalLog emitted(handler);
    QVERIFY(handler.openDevice(port.portName()));
    port.addAnswer(Answer300);
    port.addAnswer(Answer7);
    QObject::connect(&handler, &Handler::requestedValue, &handler,
                     [&handler](char address, char motorBank, char type) {
                         if (type < 5) {
                             handler.getAxisParameter(address, motorBank, 5);
                         }
                     });
    handler.getAxisParameter(1, 0, 4);
    QCOMPARE(port.requests(), QStringList({u"01060400000000000b"_s, u"01060500000000000c"_s}));
    QCOMPARE(emitted.lines(),
             QStringList({u"requestedValue(1, 0, 4, 300)"_s, u"requestedValue(1, 0, 5, 7)"_s}));
}

void tst_QSerialCommandHandlerExchange::parameterOfASimulatedModule()
{
    SimulatedPort port;
    Handler handler;
    SignalLog emitted(handler);
    QVERIFY(handler.openDevice(port.portName()));
    handler.setAxisParameter(1, 0, 4, 1000);
    QCOMPARE(emitted.take(), {u"requestedValue(1, 0, 4, 1000)"_s});
    QCOMPARE(port.module().axisParameter(4), 1000);
    handler.getAxisParameter(1, 0, 4);
    QCOMPARE(emitted.take(), {u"requestedValue(1, 0, 4, 1000)"_s});
}

void tst_QSerialCommandHandlerExchange::moduleAnswersAtItsOwnRateOnly()
{
    const simulator::Identity identity;
    SimulatedPort port(identity, 57600);
    QVERIFY(port.module().setAxisParameter(4, 300));
    Handler handler;
    SignalLog emitted(handler);
    QVERIFY(handler.openDevice(port.portName()));
    handler.setBaudrate(57600);
    handler.getAxisParameter(1, 0, 4);
    QCOMPARE(emitted.take(), {u"requestedValue(1, 0, 4, 300)"_s});
    handler.setBaudrate(9600);
    handler.getAxisParameter(1, 0, 4);
    QVERIFY(!emitted.take().contains(u"requestedValue(1, 0, 4, 300)"_s));
}

QTEST_GUILESS_MAIN(tst_QSerialCommandHandlerExchange)
#include "tst_QSerialCommandHandlerExchange.moc"
