#include "comm/CANKvaserCommandHandler.h"

#include "comm/CANZDRLReply.h"
#include "comm/CANZDRLRequest.h"
#include "comm/Command.h"
#include "comm/CommandNumbers.h"
#include "comm/ExchangeChain.h"
#include "comm/ReplyPolling.h"
#include "comm/TraceCommand.h"
#include "comm/can/CanBitRate.h"
#include "comm/can/CanLibrary.h"

#include <QDebug>

#include <memory>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int DefaultBitRate = 1000; // kBit/s

constexpr int FirstChannel = 0;
constexpr int ExclusiveOpen = 8;
constexpr unsigned int FrameLength = 8;
constexpr unsigned int StandardFrame = 0;

} // namespace

CANKvaserCommandHandler::CANKvaserCommandHandler()
{
    storeBaudrate(DefaultBitRate);
}

// --- The channel ------------------------------------------------------------------------------

/// Whether @p status is a success, which is told to those who follow every step; a failure is told
/// in any case.
bool CANKvaserCommandHandler::succeeded(const char *operation, int status) const
{
    if (status < 0) {
        qDebug().nospace() << "CANKvaserCommandHandler::" << operation
                           << " -> failed! status=" << status;
        return false;
    }
    if (debugOutput()) {
        qDebug().nospace() << "CANKvaserCommandHandler::" << operation << " -> ok";
    }
    return true;
}

bool CANKvaserCommandHandler::openDevice(int bitrate)
{
    if (debugOutput()) {
        qDebug().nospace() << "CANKvaserCommandHandler::openDevice(" << QString::number(bitrate)
                           << ")";
    }
    if (!loadCanLibrary()) {
        qDebug("CANKvaserCommandHandler::canInitializeLibrary -> failed");
        return false;
    }
    canLibrary().canInitializeLibrary();
    if (debugOutput()) {
        qDebug("CANKvaserCommandHandler::canInitializeLibrary -> ok");
    }

    // The handle takes a failure's code, too. On a channel that is open already that is the end of
    // its real handle: the frames of a handler that stays "connected" then go nowhere.
    m_handle = canLibrary().canOpenChannel(FirstChannel, ExclusiveOpen);
    if (m_handle < 0) {
        qDebug().nospace() << "CANKvaserCommandHandler::canOpenChannel -> failed! handle="
                           << QString::number(m_handle);
        return false;
    }
    if (debugOutput()) {
        qDebug("CANKvaserCommandHandler::canOpenChannel -> ok");
    }

    setBaudrate(bitrate);
    if (!succeeded("canBusOn", canLibrary().canBusOn(m_handle))) {
        return false; // with the channel left open
    }
    setConnected(true);
    return true;
}

bool CANKvaserCommandHandler::closeDevice()
{
    qDebug("CANKvaserCommandHandler::closeDevice");
    if (!succeeded("canBusOff", canLibrary().canBusOff(m_handle))
        || !succeeded("canClose", canLibrary().canClose(m_handle))) {
        return false;
    }
    setConnected(false);
    return true;
}

bool CANKvaserCommandHandler::reopenDevice()
{
    return openDevice(baudrate());
}

void CANKvaserCommandHandler::setBaudrate(int baudrate)
{
    storeBaudrate(baudrate);
    const int code = canBitRateCode(baudrate);
    succeeded("canSetBusParams", canLibrary().canSetBusParams(m_handle, code, 0, 0, 0, 0, 0));
}

SerialDeviceEnumerator *CANKvaserCommandHandler::deviceEnumerator()
{
    return nullptr;
}

// --- One frame --------------------------------------------------------------------------------

void CANKvaserCommandHandler::sendRequest(CANZDRLRequest *request)
{
    if (debugOutput()) {
        qDebug() << request->toFieldText();
        qDebug() << request->toByteText();
    }
    m_lastId = request->id();
    if (isConnected()) {
        QByteArray data = request->data();
        canLibrary().canWrite(m_handle, m_lastId, data.data(), FrameLength, StandardFrame);
    }
}

CANZDRLReply *CANKvaserCommandHandler::readFrame()
{
    if (!isConnected()) {
        return nullptr;
    }
    long identifier = 0;
    unsigned char data[FrameLength] = {};
    unsigned int length = 0;
    if (canLibrary().canRead(m_handle, &identifier, data, &length, nullptr, nullptr) != 0) {
        if (debugOutput()) {
            qDebug("CANKvaserCommandHandler::canRead -> failed!");
        }
        return nullptr;
    }
    if (debugOutput()) {
        qDebug().nospace() << "CANKvaserCommandHandler::canRead -> ok id="
                           << QString::number(identifier) << " length=" << QString::number(length);
    }
    return new CANZDRLReply(data); // of a short frame, the rest is what the buffer held
}

CANZDRLReply *CANKvaserCommandHandler::waitForReply(char)
{
    if (!isConnected()) {
        return nullptr;
    }
    CANZDRLReply *reply = ReplyPolling::firstReply([this] { return readFrame(); });
    if (!reply) {
        qDebug("CANKvaserCommandHandler::CANZDRLReplyCommand->communicationTimeouted!");
        emit deviceClosed(static_cast<char>(m_lastId));
        return nullptr;
    }
    if (debugOutput()) {
        qDebug() << reply->toByteText();
        qDebug() << reply->toFieldText();
    }
    return reply;
}

// --- Exchanges --------------------------------------------------------------------------------

template <typename ReplyHandler>
void CANKvaserCommandHandler::exchange(CANZDRLRequest request, ReplyHandler onReply)
{
    const ExchangeChain chain;
    if (chain.isTooLong()) {
        return;
    }
    sendRequest(&request);
    const std::unique_ptr<CANZDRLReply> reply{waitForReply(static_cast<char>(request.id()))};
    if (reply) {
        onReply(*reply);
    }
}

void CANKvaserCommandHandler::doRequest(char address, char command, char type, char motorBank,
                                        int value)
{
    if (!isConnected()) {
        return;
    }
    exchange({address, command, type, motorBank, value}, [&](const CANZDRLReply &reply) {
        emit requestResult(reply.moduleId(), motorBank, reply.command(), reply.status(),
                           reply.value());
    });
}

void CANKvaserCommandHandler::getAxisParameter(char address, char motorBank, char type)
{
    exchange({address, CommandNumber::GetAxisParameter, type, motorBank, 0},
             [&](const CANZDRLReply &reply) {
                 emit requestedValue(reply.moduleId(), motorBank, type, reply.value());
             });
}

void CANKvaserCommandHandler::setAxisParameter(char address, char motorBank, char type, int value)
{
    exchange({address, CommandNumber::SetAxisParameter, type, motorBank, value},
             [&](const CANZDRLReply &reply) {
                 emit requestedValue(reply.moduleId(), motorBank, type, reply.value());
             });
}

void CANKvaserCommandHandler::getGlobalParameter(char address, char type, char motorBank)
{
    exchange({address, CommandNumber::GetGlobalParameter, type, motorBank, 0},
             [&](const CANZDRLReply &reply) {
                 // The signal carries 8 bits: a value of 300 arrives as 44.
                 emit requestedGlobalParameter(reply.moduleId(), type, motorBank,
                                               static_cast<char>(reply.value()));
             });
}

void CANKvaserCommandHandler::getIOValue(char address, char type, char motorBank)
{
    exchange({address, CommandNumber::GetIO, type, motorBank, 0}, [&](const CANZDRLReply &reply) {
        emit requestedIOValue(reply.moduleId(), type, motorBank, reply.value());
    });
}

void CANKvaserCommandHandler::setIOValue(char address, char type, char motorBank, int value)
{
    exchange({address, CommandNumber::SetIO, type, motorBank, value},
             [&](const CANZDRLReply &reply) {
                 emit requestedValue(reply.moduleId(), type, motorBank, reply.value());
             });
}

void CANKvaserCommandHandler::doMove(char address, char motorBank, char command, char type,
                                     int value)
{
    exchange({address, command, type, motorBank, value}, [](const CANZDRLReply &) {});
}

void CANKvaserCommandHandler::doROX(char address, char motorBank, char roxCommand, int value)
{
    exchange({address, roxCommand, 0, motorBank, value}, [](const CANZDRLReply &) {});
}

void CANKvaserCommandHandler::requestTraceValues(QList<TraceCommand *> *list)
{
    // A pass isn't stopped by a time-out, but its receiver closes the handler, and what remains of
    // the pass then costs nothing.
    for (const TraceCommand *entry : std::as_const(*list)) {
        exchange({entry->address(), entry->command(), entry->type(), entry->motorBank(), 0},
                 [&](const CANZDRLReply &reply) {
                     emit requestedTraceValue(entry->address(), entry->motorBank(), entry->type(),
                                              reply.value());
                 });
    }
}

void CANKvaserCommandHandler::doDirectRequest(Command *request, Command *reply)
{
    reply->setValid(false);
    exchange({request->address(), request->command(), request->type(), request->motorBank(),
              request->value()},
             [&](const CANZDRLReply &answer) {
                 reply->setValid(true);
                 reply->setAddress(answer.moduleId());
                 reply->setCommand(answer.command());
                 reply->setType(request->type());
                 reply->setStatus(answer.status());
                 reply->setMotorBank(request->motorBank());
                 reply->setValue(answer.value());
                 reply->setReplyAddress(0); // a frame names no address that it is meant for
                 reply->setChecksum(answer.lastByte());
             });
}

void CANKvaserCommandHandler::doDirectRequestWithoutAnswer(Command *request)
{
    sendCommand(request);
}

void CANKvaserCommandHandler::sendCommand(Command *command)
{
    CANZDRLRequest request(command->address(), command->command(), command->type(),
                           command->motorBank(), command->value());
    sendRequest(&request);
}

Command *CANKvaserCommandHandler::readReply(char address)
{
    const std::unique_ptr<CANZDRLReply> reply{waitForReply(address)};
    if (!reply) {
        return nullptr;
    }
    return new Command(reply->moduleId(), reply->command(), reply->status(), 0, reply->value());
}

// --- Version ----------------------------------------------------------------------------------

QString CANKvaserCommandHandler::versionText(char address)
{
    QString text;
    exchange({address, CommandNumber::GetVersion, 0, 0, 0},
             [&text](const CANZDRLReply &reply) { text = reply.toText(); });
    return text;
}

QString CANKvaserCommandHandler::firmwareVersion(char)
{
    return u"unknown!"_s;
}
