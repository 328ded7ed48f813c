// The handler on a bus that isn't as it should be: frames of others, frames that come late or not
// at all, and an interface that is gone.

#include "comm/CANZDRLReply.h"
#include "comm/Command.h"
#include "comm/SleepCounter.h"
#include "comm/TraceCommand.h"
#include "comm/can/ConnectedHandlerTest.h"
#include "support/DebugLog.h"

#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;

class tst_CANKvaserFaults : public ConnectedHandlerTest
{
    Q_OBJECT

private slots:
    void answerComesFromTheNamedModule();
    void anyFrameIsTheReply();
    void doubledReplyAnswersTheNextRequest();
    void lateReplyAnswersTheNextRequest();
    void delayedReplyIsServed();
    void shortFrameGivesAFullRecord();

    void silenceEndsAfter51Attempts();
    void deviceClosedCarriesTheSentIdentifier();
    void identifierIsKeptWhileNotConnected();
    void silentPassCostsOneTimeOutAnEntry();
    void closingInAPassEndsItAtOnce();
    void wrongSpeedIsSilence();
    void lostInterfaceIsSilence();
};

void tst_CANKvaserFaults::answerComesFromTheNamedModule()
{
    QVERIFY(m_bus->canFault(u"module-id 9"_s));
    m_handler->doRequest(1, 6, 1, 0, 0);
    m_handler->getAxisParameter(1, 0, 1);
    m_handler->setAxisParameter(1, 0, 1, 3);
    m_handler->getGlobalParameter(1, 2, 0);
    m_handler->getIOValue(1, 3, 0);
    m_handler->setIOValue(1, 4, 2, 1);
    QCOMPARE(
        m_signals->take(),
        QStringList({u"requestResult(9, 0, 6, 100, 0)"_s, u"requestedValue(9, 0, 1, 0)"_s,
                     u"requestedValue(9, 0, 1, 3)"_s, u"requestedGlobalParameter(9, 2, 0, 0)"_s,
                     u"requestedIOValue(9, 3, 0, 0)"_s, u"requestedValue(9, 4, 2, 1)"_s}));

    // Curves go by the address of their entry: traces arrive all the same.
    TraceCommand entry(1, 0, 6, 1, QString());
    QList<TraceCommand *> list{&entry};
    m_handler->requestTraceValues(&list);
    QCOMPARE(m_signals->take(), QStringList(u"requestedTraceValue(1, 0, 1, 3)"_s));
}

void tst_CANKvaserFaults::anyFrameIsTheReply()
{
    QVERIFY(m_bus->canFault(u"foreign 1234 1"_s));
    m_handler->getAxisParameter(1, 0, 4);
    const int garbage = static_cast<int>(0xa5a5a5a5);
    QCOMPARE(m_signals->take(), QStringList(u"requestedValue(-91, 0, 4, %1)"_s.arg(garbage)));

    // From now on each request gets the reply of the one before.
    m_handler->getAxisParameter(1, 0, 1);
    QCOMPARE(m_signals->take(), QStringList(u"requestedValue(1, 0, 1, 1000)"_s));
    QCOMPARE(m_bus->frames(),
             QStringList({u"can < 001 [8] 06 04 00 00 00 00 00 03"_s,
                          u"can > 4D2 [8] A5 A5 A5 A5 A5 A5 A5 A5"_s,
                          u"can < 001 [8] 06 01 00 00 00 00 00 03"_s,
                          u"can > 002 [8] 01 64 06 00 00 03 E8 03"_s}));
}

void tst_CANKvaserFaults::doubledReplyAnswersTheNextRequest()
{
    QVERIFY(m_bus->fault(u"doubled 1"_s));
    m_handler->getAxisParameter(1, 0, 4);
    m_handler->getAxisParameter(1, 0, 1);
    m_handler->getAxisParameter(1, 0, 2);
    QCOMPARE(m_signals->take(),
             QStringList({u"requestedValue(1, 0, 4, 1000)"_s, u"requestedValue(1, 0, 1, 1000)"_s,
                          u"requestedValue(1, 0, 2, 0)"_s}));
}

void tst_CANKvaserFaults::lateReplyAnswersTheNextRequest()
{
    QVERIFY(m_bus->fault(u"late 200 1"_s));
    const DebugLog log;
    m_handler->getAxisParameter(1, 0, 4);
    QCOMPARE(m_signals->take(), QStringList(u"deviceClosed(1)"_s));

    m_handler->getAxisParameter(1, 0, 1);
    QCOMPARE(m_signals->take(), QStringList(u"requestedValue(1, 0, 1, 1000)"_s));
}

void tst_CANKvaserFaults::delayedReplyIsServed()
{
    QVERIFY(m_bus->fault(u"delay 250 1"_s)); // about half of the wait
    m_handler->getAxisParameter(1, 0, 4);
    QCOMPARE(m_signals->take(), QStringList(u"requestedValue(1, 0, 4, 1000)"_s));

    const QStringList calls = m_bus->calls();
    QVERIFY(readCount() > 1);
    QCOMPARE(calls.at(1), u"canRead(1, null, null) = -37"_s);
    QCOMPARE(calls.constLast(), u"canRead(1, null, null) = 0"_s);
}

void tst_CANKvaserFaults::shortFrameGivesAFullRecord()
{
    QVERIFY(m_bus->fault(u"short 1"_s));
    Command request(1, 6, 4, 0, 0);
    m_handler->sendCommand(&request);
    const std::unique_ptr<CANZDRLReply> reply{m_handler->waitForReply(1)};
    QVERIFY(reply);
    QCOMPARE(m_bus->frames().constLast(), u"can > 002 [7] 01 64 06 00 00 03 E8"_s);
    QCOMPARE(reply->value(), 1000);
    QCOMPARE(reply->lastByte(), char(0)); // not in the frame: what the buffer held
}

void tst_CANKvaserFaults::silenceEndsAfter51Attempts()
{
    QVERIFY(m_bus->fault(u"silence"_s));
    const DebugLog log;
    const SleepCounter counter;
    m_handler->getAxisParameter(1, 0, 4);
    QVERIFY(counter.hasSeenPauses(51)); // a pause also stands behind the last attempt
    QCOMPARE(readCount(), 51);
    QCOMPARE(m_signals->take(), QStringList(u"deviceClosed(1)"_s));
    QCOMPARE(log.lines(), QStringList(TimeOutLine));
    QVERIFY(m_handler->isConnected()); // it is the receiver that closes
    QVERIFY(!m_handler->isTimeoutedAddress(1)); // the list isn't used here
}

void tst_CANKvaserFaults::deviceClosedCarriesTheSentIdentifier()
{
    useBus({.address = 200});
    QVERIFY(m_bus->canFault(u"module-id 9"_s));
    m_handler->getAxisParameter(static_cast<char>(200), 0, 1);
    QCOMPARE(m_signals->take(), QStringList(u"requestedValue(9, 0, 1, 0)"_s));

    QVERIFY(m_bus->fault(u"silence"_s));
    const DebugLog log;
    m_handler->doRequest(static_cast<char>(200), 6, 1, 0, 0);
    QCOMPARE(m_signals->take(), QStringList(u"deviceClosed(-56)"_s));
}

void tst_CANKvaserFaults::identifierIsKeptWhileNotConnected()
{
    const DebugLog log;
    QVERIFY(m_handler->closeDevice());
    Command request(7, 6, 1, 0, 0);
    m_handler->sendCommand(&request);
    QVERIFY(m_handler->openDevice(500));

    QCOMPARE(m_handler->readReply(3), nullptr);
    QCOMPARE(m_signals->take(), QStringList(u"deviceClosed(7)"_s));
}

void tst_CANKvaserFaults::silentPassCostsOneTimeOutAnEntry()
{
    QVERIFY(m_bus->fault(u"silence 2"_s));
    TraceCommand first(1, 0, 6, 4, QString());
    TraceCommand second(1, 0, 6, 1, QString());
    QList<TraceCommand *> list{&first, &second, &first};
    const DebugLog log;
    m_handler->requestTraceValues(&list);
    QCOMPARE(m_signals->take(),
             QStringList({u"deviceClosed(1)"_s, u"deviceClosed(1)"_s,
                          u"requestedTraceValue(1, 0, 4, 1000)"_s}));
}

void tst_CANKvaserFaults::closingInAPassEndsItAtOnce()
{
    QVERIFY(m_bus->fault(u"silence"_s));
    connect(m_handler.get(), &CANKvaserCommandHandler::deviceClosed, m_handler.get(),
            [this] { QVERIFY(m_handler->closeDevice()); });
    TraceCommand entry(1, 0, 6, 4, QString());
    QList<TraceCommand *> list{&entry, &entry, &entry};
    const DebugLog log;
    m_handler->requestTraceValues(&list);
    QCOMPARE(m_signals->take(), QStringList(u"deviceClosed(1)"_s));
    QVERIFY(!m_handler->isConnected());
    QCOMPARE(readCount(), 51);
    QCOMPARE(m_bus->frames(), QStringList(u"can < 001 [8] 06 04 00 00 00 00 00 03"_s));
}

void tst_CANKvaserFaults::wrongSpeedIsSilence()
{
    useBus({}, 250);
    const DebugLog log;
    m_handler->getAxisParameter(1, 0, 4);
    QCOMPARE(m_signals->take(), QStringList(u"deviceClosed(1)"_s));
    QCOMPARE(m_bus->frames(), QStringList(u"can ? 001 [8] 06 04 00 00 00 00 00 03"_s));

    m_handler->setBaudrate(250);
    m_handler->getAxisParameter(1, 0, 4);
    QCOMPARE(m_signals->take(), QStringList(u"requestedValue(1, 0, 4, 1000)"_s));
}

void tst_CANKvaserFaults::lostInterfaceIsSilence()
{
    m_bus->pullOut();
    const DebugLog log;
    m_handler->getAxisParameter(1, 0, 4);
    QCOMPARE(m_signals->take(), QStringList(u"deviceClosed(1)"_s));
    QVERIFY(!m_handler->closeDevice());
    QVERIFY(m_handler->isConnected());
    QCOMPARE(log.lines().constLast(),
             u"CANKvaserCommandHandler::canBusOff -> failed! status=-31"_s);
}

QTEST_GUILESS_MAIN(tst_CANKvaserFaults)
#include "tst_CANKvaserFaults.moc"
