#include "comm/Answers.h"
#include "comm/HandlerProbe.h"
#include "comm/QSerialCommandHandler.h"
#include "comm/Reply.h"
#include "comm/ScriptedPort.h"
#include "comm/SignalLog.h"
#include "serial/AbstractSerial.h"
#include "simulator/serving/FileDescriptor.h"
#include "support/DebugLog.h"
#include "support/TestCase.h"

#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QTest>
#include <QThread>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <new>

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/ioctl.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// Whether so many bytes lie in the port before long. Other than the event loop, the wait leaves
/// them there.
bool portHolds(int slave, int count)
{
    const QDeadlineTimer deadline(30s);
    int held = -1;
    while (::ioctl(slave, FIONREAD, &held) == 0 && held < count && !deadline.hasExpired()) {
        QThread::yieldCurrentThread();
    }
    return held == count;
}

/// For a message handler, which can't carry anything along.
ScriptedPort *lastMomentPort = nullptr;
int slaveOfLastMomentPort = -1;
QStringList lastMomentLines;

/// Sends a reply at the handler's last but one round, where it is read by the port's own buffer and
/// by nobody after that.
void sendAtTheLastMoment(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    lastMomentLines.append((type == QtWarningMsg ? u"warning "_s : QString()) + text);
    if (text.contains(u"ZDRL rx (again): 0 0 2"_s)) {
        lastMomentPort->send(Answer300);
        portHolds(slaveOfLastMomentPort, Reply::Size);
    }
}

/// Lets every allocation fail that this thread makes for a reply.
thread_local bool noMemoryForReplies = false;

/// False for what a library of the toolkit allocates, which may be of the same size.
bool isInThisProgram(const void *code)
{
    Dl_info place{};
    Dl_info own{};
    return dladdr(code, &place) != 0
        && dladdr(reinterpret_cast<const void *>(&isInThisProgram), &own) != 0
        && place.dli_fbase == own.dli_fbase;
}

} // namespace

// These stand before those of the library, for the whole program.

void *operator new(std::size_t size)
{
    const bool refused =
        noMemoryForReplies && size == sizeof(Reply) && isInThisProgram(__builtin_return_address(0));
    void *memory = refused ? nullptr : std::malloc(std::max(size, std::size_t{1}));
    if (!memory) {
        throw std::bad_alloc();
    }
    return memory;
}

void operator delete(void *memory) noexcept
{
    std::free(memory);
}

void operator delete(void *memory, std::size_t) noexcept
{
    std::free(memory);
}

/// The other form of reading, which a handler's name chooses, once for the whole process.
class tst_QSerialCommandHandlerUsbConstruct : public TestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void opensBuffered();
    void exchange();
    void replyInPieces();
    void replyDumps();
    void surplusIsThrownAway();
    void outOfMemory();
    void timeOut();
    void timedOutAddressIsNotWaitedFor();
    void surplusInThePortIsReported();
    void replyAfterTheLastRoundIsReported();
    void choiceHoldsForTheProcess();
    void withoutADevice();
    void onAClosedDevice();

private:
    void sendInAdvance(const QByteArray &hex);

    std::unique_ptr<ScriptedPort> m_port;
    simulator::FileDescriptor m_slave; ///< the handler's end of the port, to look into it
    std::unique_ptr<QSerialCommandHandler> m_handler;
    std::unique_ptr<SignalLog> m_emitted;
};

void tst_QSerialCommandHandlerUsbConstruct::init()
{
    TestCase::init();
    m_port = std::make_unique<ScriptedPort>();
    // Before the handler has the port for itself.
    m_slave = simulator::FileDescriptor(
        ::open(m_port->portName().toLocal8Bit().constData(), O_RDWR | O_NOCTTY | O_CLOEXEC));
    m_handler = std::make_unique<QSerialCommandHandler>();
    m_handler->setObjectName(u"the USB construct, first form"_s);
    m_emitted = std::make_unique<SignalLog>(*m_handler);
    QVERIFY(m_handler->openDevice(m_port->portName()));
}

void tst_QSerialCommandHandlerUsbConstruct::cleanup()
{
    m_emitted.reset();
    m_handler.reset();
    m_slave = {};
    m_port.reset();
}

/// An answer that is there before its request: this form waits for 63 ms or so, in which a busy
/// machine may not get round to answering.
void tst_QSerialCommandHandlerUsbConstruct::sendInAdvance(const QByteArray &hex)
{
    m_port->send(hex);
    QVERIFY(portHolds(m_slave.get(), int(QByteArray::fromHex(hex).size())));
}

void tst_QSerialCommandHandlerUsbConstruct::opensBuffered()
{
    const auto *device = deviceOf(*m_handler);
    QCOMPARE(int(device->openMode()), 0x03);
}

void tst_QSerialCommandHandlerUsbConstruct::exchange()
{
    sendInAdvance(Answer300);
    m_handler->getAxisParameter(1, 0, 4);
    sendInAdvance(Answer7);
    m_handler->getAxisParameter(1, 0, 5);
    QTRY_COMPARE(m_port->requests(),
                 QStringList({u"01060400000000000b"_s, u"01060500000000000c"_s}));
    QCOMPARE(m_emitted->lines(),
             QStringList({u"requestedValue(1, 0, 4, 300)"_s, u"requestedValue(1, 0, 5, 7)"_s}));
}

void tst_QSerialCommandHandlerUsbConstruct::replyInPieces()
{
    sendInAdvance("02 01 64");
    // The next piece comes when the one before has been read.
    connect(deviceOf(*m_handler), &AbstractSerial::readyRead, this,
            [this, pieces = QByteArrayList{"06 00 00", "01 2c 9a"}]() mutable {
                if (!pieces.isEmpty()) {
                    m_port->send(pieces.takeFirst());
                    QVERIFY(portHolds(m_slave.get(), 3));
                }
            });
    m_handler->getAxisParameter(1, 0, 4);
    QCOMPARE(m_emitted->lines(), {u"requestedValue(1, 0, 4, 300)"_s});
}

void tst_QSerialCommandHandlerUsbConstruct::replyDumps()
{
    sendInAdvance(Answer300);
    m_handler->setDebugOutput(true);
    const DebugLog log;
    m_handler->getAxisParameter(1, 0, 4);
    QCOMPARE(maskedDevices(log.lines()).last(2),
             QStringList({u"\"Reply[0x02, 0x01, 0x64, 0x06, 0x00, 0x00, 0x01, 0x2C, 0x9A]\""_s,
                          u"\"Reply[2, 1, 100, 6, 300, 154]\""_s}));
}

/// Other than in the polled form, what comes with a reply isn't kept for the next request.
void tst_QSerialCommandHandlerUsbConstruct::surplusIsThrownAway()
{
    const DebugLog log;
    sendInAdvance("02 01 64 06 00 00 01 2c 9a 55 55 55");
    m_handler->getAxisParameter(1, 0, 4);
    sendInAdvance(Answer7);
    m_handler->getAxisParameter(1, 0, 5);
    QCOMPARE(m_emitted->lines(),
             QStringList({u"requestedValue(1, 0, 4, 300)"_s, u"requestedValue(1, 0, 5, 7)"_s}));
}

void tst_QSerialCommandHandlerUsbConstruct::outOfMemory()
{
    sendInAdvance(Answer300);
    const DebugLog log;
    noMemoryForReplies = true;
    m_handler->getAxisParameter(1, 0, 4);
    noMemoryForReplies = false;
    QCOMPARE(log.lines(),
             QStringList(u"QSerialCommandHandler::bad_alloc caught: std::bad_alloc"_s));
    // Neither a reply nor a time-out: the address is waited for as before.
    sendInAdvance(Answer7);
    m_handler->getAxisParameter(1, 0, 4);
    QCOMPARE(m_emitted->lines(), QStringList(u"requestedValue(1, 0, 4, 7)"_s));
}

void tst_QSerialCommandHandlerUsbConstruct::timeOut()
{
    const DebugLog log;
    QElapsedTimer timer;
    timer.start();
    m_handler->getAxisParameter(1, 0, 4);
    QVERIFY(timer.elapsed() >= 50); // 59 rounds of a millisecond each
    QCOMPARE(m_port->requests().size(), 1);
    // The last two rounds tell of themselves, and nothing tells of a detached device.
    QCOMPARE(maskedDevices(log.lines()),
             QStringList({
                 u"QSerialCommandHandler::ZDRL rx (again): 0 0 2  [ DEVICE ]"_s,
                 u"QSerialCommandHandler::ZDRL rx (again): 0 0 1  [ DEVICE ]"_s,
                 u"CommandHandlerInterface::dumpTimeoutedAddresses() "_s,
                 u"Timeouted: \"1\""_s,
             }));
    QCOMPARE(m_emitted->lines(), QStringList());
    QVERIFY(m_handler->isTimeoutedAddress(1));
    QVERIFY(m_handler->isConnected());
}

void tst_QSerialCommandHandlerUsbConstruct::timedOutAddressIsNotWaitedFor()
{
    m_handler->addTimeoutedAddress(1);
    m_port->addAnswer(Answer300);
    const DebugLog log;
    m_handler->getAxisParameter(1, 0, 4);
    // Nobody waits, so nothing is said, and the answer goes to whom it wasn't meant for.
    QCOMPARE(log.lines(), QStringList());
    QCOMPARE(m_emitted->lines(), QStringList());
    QVERIFY(portHolds(m_slave.get(), Reply::Size));
    m_handler->getAxisParameter(2, 0, 5);
    QCOMPARE(m_emitted->lines(), {u"requestedValue(2, 0, 5, 300)"_s});
}

void tst_QSerialCommandHandlerUsbConstruct::surplusInThePortIsReported()
{
    sendInAdvance("02 01 64 06 00 00 01 2c 9a 55");
    const DebugLog log;
    const std::unique_ptr<Reply> reply(m_handler->waitForReply(1));
    QVERIFY(reply);
    QCOMPARE(reply->value(), 300);
    QCOMPARE(maskedDevices(log.lines()),
             QStringList({
                 u"Slot: Rx ready notifier. 10 DEVICE"_s,
                 u"QSerialCommandHandler::ZDRL rx (again): 0 10 60  [ DEVICE ]"_s,
             }));
}

void tst_QSerialCommandHandlerUsbConstruct::replyAfterTheLastRoundIsReported()
{
    lastMomentPort = m_port.get();
    slaveOfLastMomentPort = m_slave.get();
    lastMomentLines.clear();
    const QtMessageHandler before = qInstallMessageHandler(sendAtTheLastMoment);
    const Reply *const reply = m_handler->waitForReply(1);
    qInstallMessageHandler(before);
    QCOMPARE(reply, nullptr);
    QCOMPARE(maskedDevices(lastMomentLines),
             QStringList({
                 u"QSerialCommandHandler::ZDRL rx (again): 0 0 2  [ DEVICE ]"_s,
                 u"QSerialCommandHandler::ZDRL rx (again): 0 9 1  [ DEVICE ]"_s,
                 u"warning QSerialCommandHandler::!!!!!!!!!!: 0 9  [ DEVICE ]"_s,
                 u"CommandHandlerInterface::dumpTimeoutedAddresses() "_s,
                 u"Timeouted: \"1\""_s,
             }));
}

void tst_QSerialCommandHandlerUsbConstruct::choiceHoldsForTheProcess()
{
    m_handler->closeDevice();
    QSerialCommandHandler unnamed;
    SignalLog emitted(unnamed);
    QVERIFY(unnamed.openDevice(m_port->portName()));
    QCOMPARE(int(deviceOf(unnamed)->openMode()), 0x03);
    const DebugLog log;
    unnamed.getAxisParameter(1, 0, 4);
    QCOMPARE(emitted.lines(), QStringList()); // no detached device in this form
}

void tst_QSerialCommandHandlerUsbConstruct::withoutADevice()
{
    QSerialCommandHandler handler;
    SignalLog emitted(handler);
    {
        const DebugLog log;
        handler.getIOValue(3, 4, 0);
        QCOMPARE(log.lines(),
                 QStringList({u"could not send data: is device opened?"_s,
                              u"CommandHandlerInterface::dumpTimeoutedAddresses() "_s,
                              u"Timeouted: \"3\""_s}));
    }
    QCOMPARE(emitted.lines(), QStringList());
}

void tst_QSerialCommandHandlerUsbConstruct::onAClosedDevice()
{
    QVERIFY(m_handler->closeDevice());
    const DebugLog log;
    m_handler->getIOValue(3, 4, 0);
    QVERIFY(m_handler->isTimeoutedAddress(3));
    QCOMPARE(m_emitted->lines(), QStringList());
}

QTEST_GUILESS_MAIN(tst_QSerialCommandHandlerUsbConstruct)
#include "tst_QSerialCommandHandlerUsbConstruct.moc"
