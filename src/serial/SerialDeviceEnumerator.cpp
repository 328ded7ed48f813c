#include "serial/SerialDeviceEnumerator.h"

#include "SerialDeviceEnumeratorPrivate.h" // the one of the platform that is built for

SerialDeviceEnumerator::SerialDeviceEnumerator(QObject *parent)
    : QObject(parent)
    , d(std::make_unique<SerialDeviceEnumeratorPrivate>(this))
{
    setEnabled(true);
}

SerialDeviceEnumerator::~SerialDeviceEnumerator() = default;

SerialDeviceEnumerator *SerialDeviceEnumerator::instance()
{
    // A plain pointer: an object destroyed after the application would have to give back its
    // notifier to an event loop that is gone.
    static SerialDeviceEnumerator *const enumerator = new SerialDeviceEnumerator;
    return enumerator;
}

void SerialDeviceEnumerator::setEnabled(bool enable)
{
    d->makeNotifier();
    if (!d->canWatch()) {
        return;
    }
    d->notifier->setEnabled(enable);
    if (enable) {
        _q_processWatcher();
    }
}

bool SerialDeviceEnumerator::isEnabled() const
{
    return d->canWatch() && d->notifier->isEnabled();
}

QStringList SerialDeviceEnumerator::devicesAvailable() const
{
    return d->infoMap.keys();
}

void SerialDeviceEnumerator::setDeviceName(const QString &name)
{
    d->currentName = name;
    d->current = d->infoMap.value(name);
}

QString SerialDeviceEnumerator::name() const
{
    return d->currentName;
}

QString SerialDeviceEnumerator::portName() const
{
    return d->current.portName;
}

QString SerialDeviceEnumerator::deviceObject() const
{
    return d->current.deviceObject;
}

QString SerialDeviceEnumerator::deviceClass() const
{
    return d->current.deviceClass;
}

QString SerialDeviceEnumerator::locationInfo() const
{
    return d->current.locationInfo;
}

QString SerialDeviceEnumerator::driverPath() const
{
    return d->current.driverPath;
}

QString SerialDeviceEnumerator::friendlyName() const
{
    return d->current.friendlyName;
}

QString SerialDeviceEnumerator::description() const
{
    return d->current.description;
}

QStringList SerialDeviceEnumerator::hardwareIds() const
{
    return d->current.hardwareIds;
}

QString SerialDeviceEnumerator::vendorId() const
{
    return d->current.vendorId;
}

QString SerialDeviceEnumerator::productId() const
{
    return d->current.productId;
}

QString SerialDeviceEnumerator::manufacturer() const
{
    return d->current.manufacturer;
}

QString SerialDeviceEnumerator::service() const
{
    return d->current.service;
}

QString SerialDeviceEnumerator::busName() const
{
    return d->current.busName;
}

QString SerialDeviceEnumerator::reserved() const
{
    return d->current.reserved;
}

bool SerialDeviceEnumerator::isExists() const
{
    return d->infoMap.contains(d->currentName);
}

bool SerialDeviceEnumerator::isBusy() const
{
    return !d->currentName.isEmpty() && d->isPortBusy();
}

void SerialDeviceEnumerator::_q_processWatcher()
{
    if (!d->canWatch()) {
        return;
    }
    d->acceptEvents();
    const SerialInfoMap ports = d->scan();
    if (ports != d->infoMap) {
        d->infoMap = ports;
        emit hasChanged(ports.keys());
    }
    d->armWatch();
}
