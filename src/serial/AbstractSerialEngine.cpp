#include "serial/AbstractSerialEngine.h"

#include "serial/AbstractSerialEnginePrivate.h"
#include "serial/AbstractSerialEngineReceiver.h"
#include "serial/LineRules.h"

#include <utility>

AbstractSerialEngine::AbstractSerialEngine(std::unique_ptr<AbstractSerialEnginePrivate> state,
                                           QObject *parent)
    : QObject(parent)
    , d(std::move(state))
{
}

AbstractSerialEngine::~AbstractSerialEngine() = default;

void AbstractSerialEngine::setReceiver(AbstractSerialEngineReceiver *receiver)
{
    d->receiver = receiver;
}

QString AbstractSerialEngine::deviceName() const
{
    return d->deviceName;
}

void AbstractSerialEngine::setDeviceName(const QString &name)
{
    d->deviceName = name;
}

int AbstractSerialEngine::baudRate(AbstractSerial::BaudRateDirection direction) const
{
    return LineRules::rateInDirection(direction, d->inputBaudRate, d->outputBaudRate);
}

AbstractSerial::DataBits AbstractSerialEngine::dataBits() const
{
    return AbstractSerial::DataBits(d->dataBits);
}

AbstractSerial::Parity AbstractSerialEngine::parity() const
{
    return AbstractSerial::Parity(d->parity);
}

AbstractSerial::StopBits AbstractSerialEngine::stopBits() const
{
    return AbstractSerial::StopBits(d->stopBits);
}

AbstractSerial::Flow AbstractSerialEngine::flowControl() const
{
    return AbstractSerial::Flow(d->flow);
}

qintptr AbstractSerialEngine::descriptor() const
{
    return d->descriptor;
}

bool AbstractSerialEngine::readNotification()
{
    return d->receiver && d->receiver->readNotification();
}

bool AbstractSerialEngine::writeNotification()
{
    return d->receiver && d->receiver->writeNotification();
}

bool AbstractSerialEngine::exceptionNotification()
{
    return d->receiver && d->receiver->exceptionNotification();
}

bool AbstractSerialEngine::lineNotification()
{
    return d->receiver && d->receiver->lineNotification();
}
