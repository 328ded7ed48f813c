#include "comm/Answers.h"
#include "comm/Command.h"
#include "comm/QSerialCommandHandler.h"
#include "comm/Reply.h"
#include "comm/Request.h"
#include "comm/SignalLog.h"
#include "comm/SleepCounter.h"
#include "comm/TraceCommand.h"
#include "serial/AbstractSerial.h"
#include "serial/SerialDeviceEnumerator.h"
#include "simulator/serial/Pty.h"
#include "support/DebugLog.h"
#include "support/MetaMethods.h"
#include "support/TestCase.h"

#include <QProcess>
#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;

namespace {

const auto NotSent = u"could not send data: is device opened?"_s;

using Call = std::function<void(QSerialCommandHandler &)>;

} // namespace

Q_DECLARE_METATYPE(Call)

/// The handler's face, and what it does while it has no port.
class tst_QSerialCommandHandler : public TestCase
{
    Q_OBJECT

private slots:
    void signalsInOrder();
    void slotsInOrder();
    void identifier();
    void startsIdle();
    void guardedSlotsDoNothing_data();
    void guardedSlotsDoNothing();
    void unguardedSlotsRunTheirFullCourse_data();
    void unguardedSlotsRunTheirFullCourse();
    void directRequestStaysWithoutAnswer();
    void versionsAreEmpty();
    void sendingSaysThatNothingIsOpen();
    void readDatagramGivesNothing();
    void closeDevice();
    void setBaudrateOnlyStores();
    void lineSlots_data();
    void lineSlots();
    void slotCtsOpensTheGate();
    void emptyTraceListAsksNothing();
    void portOfAnotherProgram();
};

void tst_QSerialCommandHandler::signalsInOrder()
{
    const QStringList expected = {
        u"handleAttachedUsbDevice(QString port, QString description)"_s,
        u"handleAttachedSerialDevice(QString port, QString description)"_s,
        u"handleDetachedDevice(QString port)"_s,
        u"requestedValue(char address, char motorBank, char type, int value)"_s,
        u"requestResult(char address, char motorBank, char command, char status, int value)"_s,
        u"requestedTraceValue(char address, char motorBank, char type, int value)"_s,
        u"requestedGlobalParameter(char address, char type, char motorBank, char value)"_s,
        u"requestedIOValue(char address, char type, char motorBank, int value)"_s,
        u"handleHistoryMessage(QString message)"_s,
    };
    QCOMPARE(ownMethods(QSerialCommandHandler::staticMetaObject, QMetaMethod::Signal), expected);
}

void tst_QSerialCommandHandler::slotsInOrder()
{
    const QStringList expected = {
        u"changedSerialDevices(QStringList list)"_s,
        u"slotRead()"_s,
        u"slotWrite()"_s,
        u"slotException()"_s,
        u"slotCts(bool value)"_s,
        u"slotDsr(bool value)"_s,
        u"slotRing(bool value)"_s,
        u"doRequest(char address, char command, char type, char motorBank, int value)"_s,
        u"getAxisParameter(char address, char motorBank, char type)"_s,
        u"setAxisParameter(char address, char motorBank, char type, int value)"_s,
        u"getGlobalParameter(char address, char type, char motorBank)"_s,
        u"getIOValue(char address, char type, char motorBank)"_s,
        u"setIOValue(char address, char type, char motorBank, int value)"_s,
        u"doMove(char address, char motorBank, char command, char type, int value)"_s,
        u"doROX(char address, char motorBank, char roxCommand, int value)"_s,
        u"requestTraceValues(QList<TraceCommand*>*)"_s, // its parameter has no name
        u"doDirectRequest(Command* request, Command* reply)"_s,
        u"doDirectRequestWithoutAnswer(Command* request)"_s,
    };
    const QMetaObject &metaObject = QSerialCommandHandler::staticMetaObject;
    QCOMPARE(ownMethods(metaObject, QMetaMethod::Slot), expected);
    QCOMPARE(metaObject.methodCount() - metaObject.methodOffset(), 9 + expected.size());
}

void tst_QSerialCommandHandler::identifier()
{
    QSerialCommandHandler handler;
    void *const interface = static_cast<CommandHandlerInterface *>(&handler);
    QCOMPARE(handler.qt_metacast("com.zdr.CommandHandler/1.0"), interface);
    QCOMPARE(handler.qt_metacast("QSerialCommandHandler"), static_cast<void *>(&handler));
    QCOMPARE(handler.qt_metacast("CommandHandlerInterface"), interface);
    QCOMPARE(handler.qt_metacast("CANKvaserCommandHandler"), nullptr);
}

void tst_QSerialCommandHandler::startsIdle()
{
    QSerialCommandHandler handler;
    QVERIFY(!handler.isConnected());
    QCOMPARE(handler.baudrate(), 0);
    QCOMPARE(handler.parent(), nullptr);
    QVERIFY(handler.objectName().isEmpty());
    QCOMPARE(handler.findChildren<AbstractSerial *>().size(), 0);
    QCOMPARE(handler.deviceEnumerator(), SerialDeviceEnumerator::instance());
}

void tst_QSerialCommandHandler::guardedSlotsDoNothing_data()
{
    QTest::addColumn<Call>("call");
    using H = QSerialCommandHandler;
    QTest::newRow("doRequest") << Call([](H &h) { h.doRequest(1, 6, 4, 0, 0); });
    QTest::newRow("getAxisParameter") << Call([](H &h) { h.getAxisParameter(1, 0, 4); });
    QTest::newRow("setAxisParameter") << Call([](H &h) { h.setAxisParameter(1, 0, 4, 5); });
    QTest::newRow("doMove") << Call([](H &h) { h.doMove(1, 0, 4, 0, 5); });
    QTest::newRow("doROX") << Call([](H &h) { h.doROX(1, 0, 1, 5); });
    QTest::newRow("requestTraceValues") << Call([](H &h) {
        TraceCommand entry(1, 6, 4, 0);
        QList<TraceCommand *> list = {&entry};
        h.requestTraceValues(&list);
    });
}

void tst_QSerialCommandHandler::guardedSlotsDoNothing()
{
    QFETCH(Call, call);
    QSerialCommandHandler handler;
    handler.setDebugOutput(true);
    handler.setLogRequest(true);
    handler.setLogGetAxisParameter(true);
    handler.setLogSetAxisParameter(true);
    handler.setLogMove(true);
    handler.setLogROX(true);
    handler.setLogTrace(true);
    SignalLog emitted(handler);
    const DebugLog log;
    call(handler);
    QCOMPARE(log.lines(), QStringList()); // nor a word of a failed sending
    QCOMPARE(emitted.lines(), QStringList());
}

void tst_QSerialCommandHandler::unguardedSlotsRunTheirFullCourse_data()
{
    QTest::addColumn<Call>("call");
    using H = QSerialCommandHandler;
    QTest::newRow("getGlobalParameter") << Call([](H &h) { h.getGlobalParameter(3, 4, 0); });
    QTest::newRow("getIOValue") << Call([](H &h) { h.getIOValue(3, 4, 0); });
    QTest::newRow("setIOValue") << Call([](H &h) { h.setIOValue(3, 4, 0, 5); });
    QTest::newRow("readReply") << Call([](H &h) { QCOMPARE(h.readReply(3), nullptr); });
    QTest::newRow("waitForReply") << Call([](H &h) { QCOMPARE(h.waitForReply(3), nullptr); });
}

void tst_QSerialCommandHandler::unguardedSlotsRunTheirFullCourse()
{
    QFETCH(Call, call);
    QSerialCommandHandler handler;
    SignalLog emitted(handler);
    const SleepCounter counter;
    {
        const DebugLog log;
        call(handler);
        QVERIFY(log.lines().contains(u"Timeouted: \"3\""_s));
    }
    QVERIFY(counter.hasSeenPauses(51));
    QCOMPARE(emitted.lines(), {detached(QString())}); // of no port: none was ever open
    QVERIFY(handler.isTimeoutedAddress(3));
    QVERIFY(!handler.isConnected());
}

void tst_QSerialCommandHandler::directRequestStaysWithoutAnswer()
{
    QSerialCommandHandler handler;
    Command request(3, 6, 4, 0, 0);
    Command reply(9, 8, 7, 6, 5);
    handler.doDirectRequest(&request, &reply);
    QCOMPARE(reply.toString(), u"Command(9, 8, 7, 0, 6, 5, invalid)"_s);
    QVERIFY(request.valid());
}

void tst_QSerialCommandHandler::versionsAreEmpty()
{
    QSerialCommandHandler handler;
    SignalLog emitted(handler);
    QCOMPARE(handler.versionText(3), QString());
    QCOMPARE(emitted.take().size(), 1);
    QCOMPARE(handler.firmwareVersion(3), QString());
    QCOMPARE(emitted.take().size(), 1); // without a number the text isn't asked for
}

void tst_QSerialCommandHandler::sendingSaysThatNothingIsOpen()
{
    QSerialCommandHandler handler;
    Command command(1, 6, 4, 0, 0);
    const DebugLog log;
    handler.sendCommand(&command);
    handler.doDirectRequestWithoutAnswer(&command);
    Request request(1, 6, 4, 0, 0);
    handler.sendRequest(&request);
    QCOMPARE(log.lines(), QStringList(3, NotSent));
}

void tst_QSerialCommandHandler::readDatagramGivesNothing()
{
    QSerialCommandHandler handler;
    QCOMPARE(handler.readDatagram(), nullptr);
}

void tst_QSerialCommandHandler::closeDevice()
{
    QSerialCommandHandler handler;
    const DebugLog log;
    QVERIFY(handler.closeDevice());
    QVERIFY(handler.closeDevice());
    QVERIFY(!handler.isConnected());
    QCOMPARE(log.lines(),
             QStringList(2, u"QSerialCommandHandler::closeDevice(): device == NULL"_s));
}

void tst_QSerialCommandHandler::setBaudrateOnlyStores()
{
    QSerialCommandHandler handler;
    const DebugLog log;
    handler.setBaudrate(9600);
    QCOMPARE(handler.baudrate(), 9600);
    QCOMPARE(log.lines(), {u"QSerialCommandHandler::setBaudrate(\"9600\")"_s});
    QCOMPARE(handler.findChildren<AbstractSerial *>().size(), 0);
}

void tst_QSerialCommandHandler::lineSlots_data()
{
    QTest::addColumn<Call>("call");
    QTest::addColumn<QStringList>("lines");
    using H = QSerialCommandHandler;
    QTest::newRow("read") << Call([](H &h) { h.slotRead(); }) << QStringList();
    QTest::newRow("write") << Call([](H &h) { h.slotWrite(); })
                           << QStringList(u"Slot: Tx empty notifier."_s);
    QTest::newRow("exception") << Call([](H &h) { h.slotException(); })
                               << QStringList(u"Slot: Exception notifier."_s);
    QTest::newRow("DSR on") << Call([](H &h) { h.slotDsr(true); })
                            << QStringList(u"Slot: Dsr notifier. Value: true"_s);
    QTest::newRow("DSR off") << Call([](H &h) { h.slotDsr(false); })
                             << QStringList(u"Slot: Dsr notifier. Value: false"_s);
    QTest::newRow("ring on") << Call([](H &h) { h.slotRing(true); })
                             << QStringList(u"Slot: Ring notifier. Value: true"_s);
    QTest::newRow("ring off") << Call([](H &h) { h.slotRing(false); })
                              << QStringList(u"Slot: Ring notifier. Value: false"_s);
}

void tst_QSerialCommandHandler::lineSlots()
{
    QFETCH(Call, call);
    QSerialCommandHandler handler;
    SignalLog emitted(handler);
    const DebugLog log;
    call(handler);
    QTEST(log.lines(), "lines");
    QVERIFY(!handler.isConnected());
    QCOMPARE(emitted.lines(), QStringList());
}

void tst_QSerialCommandHandler::slotCtsOpensTheGate()
{
    QSerialCommandHandler handler;
    SignalLog emitted(handler);
    handler.slotCts(true);
    QVERIFY(handler.isConnected()); // though nothing was opened
    {
        const DebugLog log;
        handler.getAxisParameter(1, 0, 4);
        QCOMPARE(log.lines().value(0), NotSent);
    }
    QCOMPARE(emitted.take(), {detached(QString())});
    QVERIFY(handler.isConnected());
    handler.slotCts(false);
    QVERIFY(!handler.isConnected());
    handler.getAxisParameter(1, 0, 4);
    QCOMPARE(emitted.lines(), QStringList());
}

void tst_QSerialCommandHandler::emptyTraceListAsksNothing()
{
    QSerialCommandHandler handler;
    handler.slotCts(true);
    SignalLog emitted(handler);
    const DebugLog log;
    QList<TraceCommand *> list;
    handler.requestTraceValues(&list);
    QCOMPARE(log.lines(), QStringList());
    QCOMPARE(emitted.lines(), QStringList());
}

void tst_QSerialCommandHandler::portOfAnotherProgram()
{
    const simulator::Pty pty;
    const QString port = QString::fromStdString(pty.portPath());
    QProcess holder; // until it gets a line
    holder.start(u"flock"_s, {u"-x"_s, port, u"-c"_s, u"echo held; read line"_s});
    QTRY_VERIFY(holder.canReadLine());
    QSerialCommandHandler handler;
    {
        const DebugLog log;
        QVERIFY(!handler.openDevice(port));
        QCOMPARE(log.lines().constLast(), u"QSerialCommandHandler::Device is busy!"_s);
        QVERIFY(!handler.isConnected());
    }
    holder.write("\n");
    QVERIFY(holder.waitForFinished());
    QVERIFY(handler.openDevice(port));
}

QTEST_GUILESS_MAIN(tst_QSerialCommandHandler)
#include "tst_QSerialCommandHandler.moc"
