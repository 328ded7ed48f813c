#include "comm/Answers.h"
#include "comm/HandlerProbe.h"
#include "comm/QSerialCommandHandler.h"
#include "comm/Reply.h"
#include "comm/ScriptedPort.h"
#include "comm/SignalLog.h"
#include "comm/SleepCounter.h"
#include "comm/TraceCommand.h"
#include "serial/AbstractSerial.h"
#include "support/DebugLog.h"
#include "support/SimulatedPort.h"
#include "support/TestCase.h"

#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// The polled wait for a reply: replies that are late, cut, doubled or missing.
class tst_QSerialCommandHandlerWait : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void replyBetweenAttempts();
    void replyIsTakenWithoutASleep();
    void replyInPieces();
    void timeOut();
    void timedOutModuleIsAskedAgain();
    void timedOutAddressesStay();
    void everyTracedValueTimesOut();
    void passGoesOnAfterATimeOut();
    void passGoesOnWithoutItsPort();
    void eightBytesStayForTheNextAttempt();
    void eightBytesAreNoDatagram();
    void cutReplyIsCompletedByTheNextOne();
    void tenthByteStays();
    void doubledReplyAnswersTheNextRequest();
    void lateReplyPutsAllOneBehind();
    void slotReadReportsSurplusOnly();
    void nothingIsReadByTheEventLoop();
    void lateReplyOfASimulatedModule();

private:
    std::unique_ptr<ScriptedPort> m_port;
    std::unique_ptr<QSerialCommandHandler> m_handler;
    std::unique_ptr<SignalLog> m_emitted;
};

/// The first handler of the process decides the form of reading for all; this isn't quite the name
/// that asks for the other form.
void tst_QSerialCommandHandlerWait::initTestCase()
{
    QSerialCommandHandler handler;
    handler.setObjectName(u"usb construct"_s);
    SignalLog emitted(handler);
    QVERIFY(!handler.openDevice(u"/nowhere"_s));
    QCOMPARE(handler.waitForReply(1), nullptr);
    QCOMPARE(emitted.lines(), {detached(QString())});
}

void tst_QSerialCommandHandlerWait::init()
{
    TestCase::init();
    m_port = std::make_unique<ScriptedPort>();
    m_handler = std::make_unique<QSerialCommandHandler>();
    m_handler->setObjectName(u"USB construct"_s); // too late to count
    m_emitted = std::make_unique<SignalLog>(*m_handler);
    QVERIFY(m_handler->openDevice(m_port->portName()));
}

void tst_QSerialCommandHandlerWait::cleanup()
{
    m_emitted.reset();
    m_handler.reset();
    m_port.reset();
}

void tst_QSerialCommandHandlerWait::replyBetweenAttempts()
{
    m_port->addAnswer({{Answer300, 35ms}});
    m_handler->getAxisParameter(1, 0, 4);
    QCOMPARE(m_emitted->lines(), {u"requestedValue(1, 0, 4, 300)"_s});
}

void tst_QSerialCommandHandlerWait::replyIsTakenWithoutASleep()
{
    m_port->send(Answer300);
    m_port->send(Answer7);
    QTRY_COMPARE(deviceOf(*m_handler)->bytesAvailable(), 18);
    const SleepCounter counter;
    const std::unique_ptr<Reply> first(m_handler->waitForReply(1));
    QVERIFY(first);
    QCOMPARE(first->value(), 300);
    const std::unique_ptr<Reply> second(m_handler->waitForReply(1));
    QVERIFY(second);
    QCOMPARE(second->value(), 7);
    QVERIFY(counter.hasSeenPauses(0));
}

void tst_QSerialCommandHandlerWait::replyInPieces()
{
    m_port->addAnswer({{"02 01 64", 30ms}, {"06 00 00", 90ms}, {"01 2c 9a", 60ms}});
    m_handler->getAxisParameter(1, 0, 4);
    QCOMPARE(m_emitted->lines(), {u"requestedValue(1, 0, 4, 300)"_s});
}

void tst_QSerialCommandHandlerWait::timeOut()
{
    DebugLog log;
    const SleepCounter counter;
    m_handler->getAxisParameter(char(200), 0, 4);
    QVERIFY(counter.hasSeenPauses(51));

    QCOMPARE(log.lines().size(), 3);
    QCOMPARE(maskedDevices(log.lines()).at(0),
             u"QSerialCommandHandler: communicationTimeouted! \"USB construct\" \n0 DEVICE true"_s);
    QCOMPARE(log.lines().at(1), u"CommandHandlerInterface::dumpTimeoutedAddresses() "_s);
    QCOMPARE(log.lines().at(2), u"Timeouted: \"-56\""_s);

    QCOMPARE(m_emitted->lines(), {detached(m_port->portName())});
    QVERIFY(m_handler->isTimeoutedAddress(char(200)));
    // It is for the receiver of the signal to decide what follows.
    QVERIFY(m_handler->isConnected());
    QVERIFY(deviceOf(*m_handler)->isOpen());
}

void tst_QSerialCommandHandlerWait::timedOutModuleIsAskedAgain()
{
    const DebugLog log;
    m_handler->getAxisParameter(1, 0, 4);
    QCOMPARE(m_emitted->take(), {detached(m_port->portName())});
    m_port->addAnswer(Answer300);
    m_handler->getAxisParameter(1, 0, 4);
    QCOMPARE(m_emitted->lines(), {u"requestedValue(1, 0, 4, 300)"_s});
    QVERIFY(m_handler->isTimeoutedAddress(1)); // the list only grows
}

void tst_QSerialCommandHandlerWait::timedOutAddressesStay()
{
    DebugLog log;
    m_handler->getAxisParameter(1, 0, 4);
    QVERIFY(m_handler->closeDevice());
    QVERIFY(m_handler->openDevice(m_port->portName()));
    m_handler->getAxisParameter(2, 0, 4);
    log.clear();
    m_handler->getAxisParameter(1, 0, 4);
    // The first address once more, but in the list only once.
    QCOMPARE(log.lines().sliced(1),
             QStringList({u"CommandHandlerInterface::dumpTimeoutedAddresses() "_s,
                          u"Timeouted: \"1\""_s, u"Timeouted: \"2\""_s}));
    QCOMPARE(m_emitted->lines(), QStringList(3, detached(m_port->portName())));
}

void tst_QSerialCommandHandlerWait::everyTracedValueTimesOut()
{
    const DebugLog log;
    m_port->addAnswer(Answer300);
    TraceCommand entries[] = {{1, 6, 4, 0}, {1, 6, 5, 0}, {1, 6, 6, 0}};
    QList<TraceCommand *> list = {&entries[0], &entries[1], &entries[2]};
    m_handler->requestTraceValues(&list);
    QCOMPARE(m_port->requests().size(), 3);
    QCOMPARE(m_emitted->lines(),
             QStringList({u"requestedTraceValue(1, 0, 4, 300)"_s, detached(m_port->portName()),
                          detached(m_port->portName())}));
}

void tst_QSerialCommandHandlerWait::passGoesOnAfterATimeOut()
{
    const DebugLog log;
    m_handler->setLogTrace(true);
    TraceCommand entries[] = {{1, 6, 4, 0}, {1, 15, 5, 2}}; // any command, not just GAP
    QList<TraceCommand *> list = {&entries[0], &entries[1]};
    m_port->addAnswer(std::vector<ScriptedPort::Piece>{}); // silence for the first
    m_port->addAnswer(Answer7);
    m_handler->requestTraceValues(&list);
    QCOMPARE(m_port->requests(), QStringList({u"01060400000000000b"_s, u"010f05020000000017"_s}));
    QCOMPARE(m_emitted->lines(),
             QStringList({
                 u"handleHistoryMessage(Request[0x001, 0x006, 0x004, 0x000, "
                 "0x000, 0x000, 0x000, 0x000, 0x011])"_s,
                 detached(m_port->portName()),
                 u"handleHistoryMessage(Request[0x001, 0x015, 0x005, 0x002, "
                 "0x000, 0x000, 0x000, 0x000, 0x023])"_s,
                 u"requestedTraceValue(1, 2, 5, 7)"_s,
                 u"handleHistoryMessage("
                 "Reply[0x02, 0x01, 0x64, 0x06, 0x00, 0x00, 0x00, 0x07, 0x74])"_s,
             }));
}

void tst_QSerialCommandHandlerWait::passGoesOnWithoutItsPort()
{
    const DebugLog log;
    TraceCommand entries[] = {{1, 6, 4, 0}, {1, 6, 5, 0}, {1, 6, 6, 0}};
    QList<TraceCommand *> list = {&entries[0], &entries[1], &entries[2]};
    // Closed by whoever hears of the first silence. The gate was passed before: each entry that
    // remains finds no open device and waits its full time.
    connect(m_handler.get(), &QSerialCommandHandler::handleDetachedDevice, this,
            [this] { m_handler->closeDevice(); });
    m_handler->requestTraceValues(&list);
    QCOMPARE(m_port->requests(), QStringList(u"01060400000000000b"_s));
    QCOMPARE(log.lines().count(u"could not send data: is device opened?"_s), 2);
    QCOMPARE(m_emitted->lines(), QStringList(3, detached(m_port->portName())));
}

void tst_QSerialCommandHandlerWait::eightBytesStayForTheNextAttempt()
{
    m_port->addAnswer({{"02 01 64 06 00 00 01 2c"}, {"9a", 60ms}});
    m_handler->getAxisParameter(1, 0, 4);
    QCOMPARE(m_emitted->lines(), {u"requestedValue(1, 0, 4, 300)"_s});
}

void tst_QSerialCommandHandlerWait::eightBytesAreNoDatagram()
{
    m_port->send("02 01 64 06 00 00 01 2c");
    QTRY_COMPARE(deviceOf(*m_handler)->bytesAvailable(), 8);
    QCOMPARE(m_handler->readDatagram(), nullptr);
    QCOMPARE(deviceOf(*m_handler)->bytesAvailable(), 8);
    m_port->send("9a");
    QTRY_COMPARE(deviceOf(*m_handler)->bytesAvailable(), 9);
    const std::unique_ptr<Reply> reply(m_handler->readDatagram());
    QVERIFY(reply);
    QCOMPARE(reply->toFieldText(), u"Reply[2, 1, 100, 6, 300, 154]"_s);
    QCOMPARE(deviceOf(*m_handler)->bytesAvailable(), 0);
}

void tst_QSerialCommandHandlerWait::cutReplyIsCompletedByTheNextOne()
{
    m_port->addAnswer("02 01 64 06 00 00 01 2c");
    m_port->addAnswer(Answer7);
    {
        const DebugLog log;
        m_handler->getAxisParameter(1, 0, 4);
        QVERIFY(maskedDevices(log.lines()).constFirst().endsWith(u"\n8 DEVICE true"_s));
    }
    QCOMPARE(m_emitted->take(), {detached(m_port->portName())});
    m_handler->getAxisParameter(1, 0, 4);
    // Nine bytes are nine bytes: the last of them was the first of the second reply.
    QCOMPARE(m_emitted->lines(), {u"requestedValue(1, 0, 4, 300)"_s});
    QTRY_COMPARE(deviceOf(*m_handler)->bytesAvailable(), 8);
}

void tst_QSerialCommandHandlerWait::tenthByteStays()
{
    m_port->addAnswer("02 01 64 06 00 00 01 2c 9a 55");
    m_port->addAnswer(Answer7);
    m_handler->getAxisParameter(1, 0, 4);
    QTRY_COMPARE(deviceOf(*m_handler)->bytesAvailable(), 1);
    m_handler->doRequest(1, 6, 4, 0, 0);
    // 55 02 01 64 06 00 00 00 07: the surplus byte pushes all fields one place on.
    QCOMPARE(m_emitted->lines(),
             QStringList(
                 {u"requestedValue(1, 0, 4, 300)"_s, u"requestResult(1, 0, 100, 1, 100663296)"_s}));
}

void tst_QSerialCommandHandlerWait::doubledReplyAnswersTheNextRequest()
{
    m_port->addAnswer({{Answer300}, {Answer7}});
    m_port->addAnswer(Answer8);
    m_handler->getAxisParameter(1, 0, 4);
    QTRY_COMPARE(deviceOf(*m_handler)->bytesAvailable(), 9);
    m_handler->getAxisParameter(1, 0, 5);
    QTRY_COMPARE(deviceOf(*m_handler)->bytesAvailable(), 9);
    m_handler->doRequest(1, 6, 6, 0, 0);
    QCOMPARE(m_emitted->lines(),
             QStringList({u"requestedValue(1, 0, 4, 300)"_s, u"requestedValue(1, 0, 5, 7)"_s,
                          u"requestResult(1, 0, 6, 100, 8)"_s}));
}

void tst_QSerialCommandHandlerWait::lateReplyPutsAllOneBehind()
{
    const DebugLog log;
    m_handler->getAxisParameter(1, 0, 4); // answered too late
    m_port->send(Answer300);
    QTRY_COMPARE(deviceOf(*m_handler)->bytesAvailable(), 9);

    m_port->addAnswer(Answer7);
    m_port->addAnswer(Answer8);
    m_port->addAnswer(Answer8);
    m_handler->getAxisParameter(1, 0, 5);
    QTRY_COMPARE(deviceOf(*m_handler)->bytesAvailable(), 9);
    m_handler->getAxisParameter(1, 0, 6);
    QTRY_COMPARE(deviceOf(*m_handler)->bytesAvailable(), 9);
    QCOMPARE(m_emitted->take(),
             QStringList({detached(m_port->portName()), u"requestedValue(1, 0, 5, 300)"_s,
                          u"requestedValue(1, 0, 6, 7)"_s}));

    // Only the next open ends it.
    QVERIFY(m_handler->closeDevice());
    QVERIFY(m_handler->reopenDevice());
    QCOMPARE(deviceOf(*m_handler)->bytesAvailable(), 0);
    m_handler->getAxisParameter(1, 0, 7);
    QCOMPARE(m_emitted->lines(), {u"requestedValue(1, 0, 7, 8)"_s});
}

void tst_QSerialCommandHandlerWait::slotReadReportsSurplusOnly()
{
    DebugLog log;
    m_port->send(Answer300);
    QTRY_COMPARE(deviceOf(*m_handler)->bytesAvailable(), 9);
    m_handler->slotRead();
    QCOMPARE(log.lines(), QStringList());
    m_port->send("55");
    QTRY_COMPARE(deviceOf(*m_handler)->bytesAvailable(), 10);
    log.clear(); // of what the event loop has told meanwhile
    m_handler->slotRead();
    QCOMPARE(log.lines().size(), 1);
    QVERIFY(
        log.lines().constFirst().startsWith(u"Slot: Rx ready notifier. 10 AbstractSerial(0x"_s));
    QCOMPARE(deviceOf(*m_handler)->bytesAvailable(), 10);
}

void tst_QSerialCommandHandlerWait::nothingIsReadByTheEventLoop()
{
    const DebugLog log;
    QSignalSpy ready(deviceOf(*m_handler), &AbstractSerial::readyRead);
    m_port->send(Answer300);
    m_port->send(Answer7);
    QTRY_VERIFY(!ready.isEmpty());
    QTRY_COMPARE(deviceOf(*m_handler)->bytesAvailable(), 18);
    m_handler->getAxisParameter(1, 0, 4);
    QCOMPARE(m_emitted->lines(), {u"requestedValue(1, 0, 4, 300)"_s});
    QCOMPARE(deviceOf(*m_handler)->bytesAvailable() % 9, 0);
}

void tst_QSerialCommandHandlerWait::lateReplyOfASimulatedModule()
{
    const DebugLog log;
    SimulatedPort port;
    QVERIFY(port.module().setAxisParameter(4, 300));
    QVERIFY(port.module().setAxisParameter(5, 7));
    QVERIFY(m_handler->closeDevice());
    QVERIFY(m_handler->openDevice(port.portName()));
    // So late that the wait is over on a busy machine, too.
    QVERIFY(port.fault(u"late 2000 1"_s));
    m_handler->getAxisParameter(1, 0, 4);
    QTRY_COMPARE_WITH_TIMEOUT(deviceOf(*m_handler)->bytesAvailable(), 9, 30000);
    m_handler->getAxisParameter(1, 0, 5);
    QCOMPARE(m_emitted->lines(),
             QStringList({detached(port.portName()), u"requestedValue(1, 0, 5, 300)"_s}));
}

QTEST_GUILESS_MAIN(tst_QSerialCommandHandlerWait)
#include "tst_QSerialCommandHandlerWait.moc"
