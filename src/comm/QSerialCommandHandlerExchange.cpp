// The exchanges of the handler: one datagram out, one datagram in, and the slots that are made of
// them.

#include "comm/Command.h"
#include "comm/CommandNumbers.h"
#include "comm/ExchangeChain.h"
#include "comm/QSerialCommandHandler.h"
#include "comm/Reply.h"
#include "comm/ReplyPolling.h"
#include "comm/Request.h"
#include "comm/TraceCommand.h"
#include "serial/AbstractSerial.h"

#include <QDebug>

#include <memory>
#include <new>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// The form of reading in use for a handler whose object name says "USB construct".
constexpr int UsbConstructRounds = 60;
constexpr int UsbConstructFirstWaitMsecs = 4;
constexpr int UsbConstructWaitMsecs = 1;

} // namespace

// --- One datagram -----------------------------------------------------------------------------

void QSerialCommandHandler::sendRequest(Request *request)
{
    if (debugOutput()) {
        qDebug().nospace() << request->toFieldText() << " [" << m_device << "]";
        qDebug().nospace() << request->toByteText() << " [" << m_device << "]";
    }
    if (!isDeviceOpen()) {
        qDebug("could not send data: is device opened?");
        return;
    }
    m_device->write(request->toBytes());
}

Reply *QSerialCommandHandler::readDatagram()
{
    if (!isDeviceOpen() || m_device->bytesAvailable() < Reply::Size) {
        return nullptr;
    }
    const QByteArray bytes = m_device->read(Reply::Size);
    if (bytes.size() != Reply::Size) {
        return nullptr; // and those bytes are lost
    }
    return new Reply(reinterpret_cast<const unsigned char *>(bytes.constData()));
}

Reply *QSerialCommandHandler::waitForReply(char address)
{
    static const bool usbConstruct = isUsbConstruct();

    return usbConstruct ? waitForReplyOfUsbConstruct(address) : pollForReply(address);
}

Reply *QSerialCommandHandler::pollForReply(char address)
{
    if (Reply *reply = ReplyPolling::firstReply([this] { return readDatagram(); })) {
        dumpReply(*reply);
        return reply;
    }
    qDebug() << "QSerialCommandHandler: communicationTimeouted!" << objectName() << Qt::endl
             << bytesAvailable() << m_device << isDeviceOpen();
    addTimeoutedAddress(address);
    dumpTimeoutedAddresses();
    emit handleDetachedDevice(m_portName);
    return nullptr;
}

/// Not in force unless the handler's object name asks for it: waits for bytes by the port's own
/// means and gives up at once on an address that failed before. It reports no detached device.
Reply *QSerialCommandHandler::waitForReplyOfUsbConstruct(char address)
{
    if (isTimeoutedAddress(address)) {
        return nullptr;
    }
    QByteArray bytes;
    if (m_device) {
        m_device->waitForReadyRead(UsbConstructFirstWaitMsecs);
    }
    for (int counter = UsbConstructRounds; m_device;
         m_device->waitForReadyRead(UsbConstructWaitMsecs)) {
        if (counter <= 2 || m_device->bytesAvailable() > Reply::Size) {
            qDebug() << "QSerialCommandHandler::ZDRL rx (again):" << bytes.size()
                     << m_device->bytesAvailable() << counter << " [" << m_device << "]";
        }
        if (--counter == 0) {
            break;
        }
        if (m_device->isOpen()) { // the toolkit warns of every read from a closed one
            bytes.append(m_device->readAll());
        }
        if (bytes.size() < Reply::Size) {
            continue;
        }
        try {
            auto reply =
                std::make_unique<Reply>(reinterpret_cast<const unsigned char *>(bytes.constData()));
            dumpReply(*reply);
            return reply.release();
        } catch (const std::bad_alloc &failure) {
            qDebug() << "QSerialCommandHandler::bad_alloc caught:" << failure.what();
            return nullptr;
        }
    }
    if (bytesAvailable() >= Reply::Size) {
        qWarning() << "QSerialCommandHandler::!!!!!!!!!!:" << bytes.size() << bytesAvailable()
                   << " [" << m_device << "]";
    }
    addTimeoutedAddress(address);
    dumpTimeoutedAddresses();
    return nullptr;
}

void QSerialCommandHandler::dumpReply(const Reply &reply) const
{
    if (debugOutput()) {
        qDebug() << reply.toByteText();
        qDebug() << reply.toFieldText();
    }
}

// --- Exchanges --------------------------------------------------------------------------------

template <typename ReplyHandler>
void QSerialCommandHandler::exchange(Request request, bool log, ReplyHandler onReply)
{
    const ExchangeChain chain;
    if (chain.isTooLong()) {
        return;
    }
    if (log) {
        emit handleHistoryMessage(request.toByteText());
    }
    sendRequest(&request);
    const std::unique_ptr<Reply> reply{waitForReply(request.address())};
    if (!reply) {
        return;
    }
    onReply(*reply);
    if (log) {
        emit handleHistoryMessage(reply->toByteText());
    }
}

void QSerialCommandHandler::doRequest(char address, char command, char type, char motorBank,
                                      int value)
{
    if (!isConnected()) {
        return;
    }
    exchange({address, command, type, motorBank, value}, logRequest(), [&](const Reply &reply) {
        emit requestResult(address, motorBank, reply.command(), reply.status(), reply.value());
    });
}

void QSerialCommandHandler::getAxisParameter(char address, char motorBank, char type)
{
    if (!isConnected()) {
        return;
    }
    exchange(
        {address, CommandNumber::GetAxisParameter, type, motorBank, 0}, logGetAxisParameter(),
        [&](const Reply &reply) { emit requestedValue(address, motorBank, type, reply.value()); });
}

void QSerialCommandHandler::setAxisParameter(char address, char motorBank, char type, int value)
{
    if (!isConnected()) {
        return;
    }
    exchange(
        {address, CommandNumber::SetAxisParameter, type, motorBank, value}, logSetAxisParameter(),
        [&](const Reply &reply) { emit requestedValue(address, motorBank, type, reply.value()); });
}

// The next three have no gate: on a closed port they wait their full time.

void QSerialCommandHandler::getGlobalParameter(char address, char type, char motorBank)
{
    exchange({address, CommandNumber::GetGlobalParameter, type, motorBank, 0}, false,
             [&](const Reply &reply) {
                 // The signal carries 8 bits: a value of 300 arrives as 44.
                 emit requestedGlobalParameter(address, type, motorBank,
                                               static_cast<char>(reply.value()));
             });
}

void QSerialCommandHandler::getIOValue(char address, char type, char motorBank)
{
    exchange({address, CommandNumber::GetIO, type, motorBank, 0}, false, [&](const Reply &reply) {
        emit requestedIOValue(address, type, motorBank, reply.value());
    });
}

void QSerialCommandHandler::setIOValue(char address, char type, char motorBank, int value)
{
    exchange(
        {address, CommandNumber::SetIO, type, motorBank, value}, false,
        [&](const Reply &reply) { emit requestedValue(address, type, motorBank, reply.value()); });
}

void QSerialCommandHandler::doMove(char address, char motorBank, char command, char type, int value)
{
    if (!isConnected()) {
        return;
    }
    exchange({address, command, type, motorBank, value}, logMove(), [](const Reply &) {});
}

void QSerialCommandHandler::doROX(char address, char motorBank, char roxCommand, int value)
{
    if (!isConnected()) {
        return;
    }
    exchange({address, roxCommand, 0, motorBank, value}, logROX(), [](const Reply &) {});
}

void QSerialCommandHandler::requestTraceValues(QList<TraceCommand *> *list)
{
    if (!isConnected()) {
        return;
    }
    // Nothing stops a pass once it is under way: a module that falls silent costs one full
    // time-out for each entry that remains.
    for (const TraceCommand *entry : std::as_const(*list)) {
        exchange({entry->address(), entry->command(), entry->type(), entry->motorBank(), 0},
                 logTrace(), [&](const Reply &reply) {
                     emit requestedTraceValue(entry->address(), entry->motorBank(), entry->type(),
                                              reply.value());
                 });
    }
}

void QSerialCommandHandler::doDirectRequest(Command *request, Command *reply)
{
    reply->setValid(false);
    exchange({request->address(), request->command(), request->type(), request->motorBank(),
              request->value()},
             false, [&](const Reply &answer) {
                 reply->setValid(true);
                 reply->setAddress(answer.moduleAddress());
                 reply->setCommand(answer.command());
                 reply->setType(request->type());
                 reply->setStatus(answer.status());
                 reply->setMotorBank(request->motorBank());
                 reply->setValue(answer.value());
                 reply->setReplyAddress(answer.replyAddress());
                 reply->setChecksum(answer.checksum());
             });
}

void QSerialCommandHandler::doDirectRequestWithoutAnswer(Command *request)
{
    sendCommand(request);
}

void QSerialCommandHandler::sendCommand(Command *command)
{
    Request request(command->address(), command->command(), command->type(), command->motorBank(),
                    command->value());
    sendRequest(&request);
}

Command *QSerialCommandHandler::readReply(char address)
{
    const std::unique_ptr<Reply> reply{waitForReply(address)};
    if (!reply) {
        return nullptr;
    }
    return new Command(reply->moduleAddress(), reply->command(), reply->status(), 0,
                       reply->value());
}

// --- Version ----------------------------------------------------------------------------------

QString QSerialCommandHandler::versionText(char address)
{
    QString text;
    exchange({address, CommandNumber::GetVersion, 0, 0, 0}, false,
             [&text](const Reply &reply) { text = reply.versionText(); });
    return text;
}

QString QSerialCommandHandler::firmwareVersion(char address)
{
    QString version;
    exchange({address, CommandNumber::GetVersion, 1, 0, 0}, false, [&](const Reply &reply) {
        const QString text = versionText(address);
        qDebug() << "#################    fw " << reply.toByteText() << text;
        const bool inBootLoader = text.contains(u'B', Qt::CaseInsensitive);
        const int minorNumber = reply.minorVersion();
        version = (inBootLoader ? "Bootloader V "_L1 : "V "_L1)
            + QString::number(reply.majorVersion()) + u'.' + (minorNumber < 10 ? "0"_L1 : ""_L1)
            + QString::number(minorNumber);
    });
    return version;
}
