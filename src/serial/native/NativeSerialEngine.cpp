#include "NativeSerialEngine.h"

// Those of the platform that is built for.
#include "NativeSerialEnginePrivate.h"
#include "NativeSerialNotifier.h"
#include "PortTransfer.h"

#include <QAbstractEventDispatcher>
#include <QThread>

#include <algorithm>

AbstractSerialEngine *AbstractSerialEngine::createEngine(QObject *parent)
{
    return new NativeSerialEngine(parent);
}

NativeSerialEngine::NativeSerialEngine(QObject *parent)
    : AbstractSerialEngine(std::make_unique<NativeSerialEnginePrivate>(), parent)
{
}

NativeSerialEngine::~NativeSerialEngine()
{
    close();
}

NativeSerialEnginePrivate &NativeSerialEngine::state() const
{
    return static_cast<NativeSerialEnginePrivate &>(*d);
}

bool NativeSerialEngine::open(QIODevice::OpenMode mode)
{
    if (state().isOpen()) {
        return false;
    }
    // One that was turned on while closed knows no port; the next enabling makes another.
    dropNotifier();
    if (state().openPort(mode)) {
        return true;
    }
    close();
    return false;
}

bool NativeSerialEngine::close()
{
    if (!state().isOpen()) {
        return true;
    }
    dropNotifier();
    state().restoreTimeouts();
    return state().closePort();
}

bool NativeSerialEngine::setBaudRate(int rate, AbstractSerial::BaudRateDirection dir)
{
    return state().setBaudRate(rate, dir);
}

bool NativeSerialEngine::setDataBits(AbstractSerial::DataBits value)
{
    return state().setDataBits(value);
}

bool NativeSerialEngine::setParity(AbstractSerial::Parity value)
{
    return state().setParity(value);
}

bool NativeSerialEngine::setStopBits(AbstractSerial::StopBits value)
{
    return state().setStopBits(value);
}

bool NativeSerialEngine::setFlowControl(AbstractSerial::Flow value)
{
    return state().setFlowControl(value);
}

void NativeSerialEngine::setCharIntervalTimeout(int usecs)
{
    state().setCharIntervalTimeout(usecs);
}

int NativeSerialEngine::charIntervalTimeout() const
{
    return d->charIntervalTimeout;
}

void NativeSerialEngine::setTotalReadConstantTimeout(int msecs)
{
    state().setTotalReadTimeout(msecs);
}

int NativeSerialEngine::totalReadConstantTimeout() const
{
    return state().readTotalTimeout;
}

bool NativeSerialEngine::sendBreak(int msecs)
{
    if (!setBreak(true)) {
        return false;
    }
    QThread::msleep(static_cast<unsigned long>(std::max(msecs, 0)));
    return setBreak(false);
}

qint64 NativeSerialEngine::read(char *data, qint64 maxSize)
{
    qint64 done = 0;
    while (done < maxSize) {
        const qint64 asked = std::min(maxSize - done, PortTransfer::ReadBlockSize);
        const qint64 came = state().readBlock(data + done, asked);
        done += std::max<qint64>(came, 0);
        if (came < asked) {
            break;
        }
    }
    return done;
}

qint64 NativeSerialEngine::write(const char *data, qint64 size)
{
    qint64 done = 0;
    while (done < size) {
        const qint64 asked = std::min(size - done, PortTransfer::WriteBlockSize);
        if (state().writeBlock(data + done, asked) != asked) {
            return -1;
        }
        done += asked;
    }
    return done > 0 ? done : -1;
}

bool NativeSerialEngine::waitForReadOrWrite(bool *readyToRead, bool *readyToWrite, bool checkRead,
                                            bool checkWrite, int msecs)
{
    *readyToRead = checkRead && bytesAvailable() > 0;
    *readyToWrite = false;
    if (*readyToRead) {
        return true;
    }
    const auto happened = state().waitForEvents(checkRead, checkWrite, std::max(msecs, 0));
    if (!happened) {
        return false;
    }
    // A count that can't be had counts as bytes: the read that follows tells.
    *readyToRead = checkRead && happened->toRead && bytesAvailable() != 0;
    *readyToWrite = checkWrite && happened->toWrite;
    return true;
}

bool NativeSerialEngine::isReadNotificationEnabled() const
{
    return state().notifier && state().notifier->isReadNotificationEnabled();
}

void NativeSerialEngine::setReadNotificationEnabled(bool enable, bool onClose)
{
    setNotification(&AbstractSerialNotifier::setReadNotificationEnabled, enable, onClose);
}

bool NativeSerialEngine::isWriteNotificationEnabled() const
{
    return state().notifier && state().notifier->isWriteNotificationEnabled();
}

void NativeSerialEngine::setWriteNotificationEnabled(bool enable, bool onClose)
{
    setNotification(&AbstractSerialNotifier::setWriteNotificationEnabled, enable, onClose);
}

bool NativeSerialEngine::isExceptionNotificationEnabled() const
{
    return state().notifier && state().notifier->isExceptionNotificationEnabled();
}

void NativeSerialEngine::setExceptionNotificationEnabled(bool enable, bool onClose)
{
    setNotification(&AbstractSerialNotifier::setExceptionNotificationEnabled, enable, onClose);
}

bool NativeSerialEngine::isLineNotificationEnabled() const
{
    return state().notifier && state().notifier->isLineNotificationEnabled();
}

void NativeSerialEngine::setLineNotificationEnabled(bool enable, bool onClose)
{
    setNotification(&AbstractSerialNotifier::setLineNotificationEnabled, enable, onClose);
}

qint64 NativeSerialEngine::firstQueueSize() const
{
    return -1;
}

qint64 NativeSerialEngine::secondQueueSize() const
{
    return -1;
}

void NativeSerialEngine::setNotification(void (AbstractSerialNotifier::*setter)(bool), bool enable,
                                         bool onClose)
{
    const bool turnOn = enable && !onClose;
    NativeSerialNotifier *&notifier = state().notifier;
    if (!notifier && turnOn && QAbstractEventDispatcher::instance(thread())) {
        // The factory of this platform makes this platform's notifier.
        notifier =
            static_cast<NativeSerialNotifier *>(AbstractSerialNotifier::createSerialNotifier(this));
    }
    // Turning on may call the receiver, which may close the port or delete this engine: nothing
    // is touched after that.
    if (notifier) {
        (notifier->*setter)(turnOn);
    }
    if (onClose) {
        dropNotifier();
    }
}
