#include "NativeSerialEngine.h"

#include "NativeSerialEnginePrivate.h"
#include "NativeSerialNotifier.h"

#include <QAbstractEventDispatcher>
#include <QThread>

#include <algorithm>
#include <utility>

#include <poll.h>
#include <sys/ioctl.h>

namespace {

constexpr qint64 ReadTransferSize = 256; // bytes
constexpr qint64 WriteTransferSize = 512; // bytes
/// How long a transfer, or the output queue as a whole, may take. The interval timeout between
/// two characters, 65535 ms, is longer and therefore never ends one.
constexpr int TransferLimit = 5000; // ms

/// The limit of one transfer of a read. The total is a number without sign to a driver, so one
/// below 0 is a long time.
int readLimit(int total)
{
    return total > 0 && total < TransferLimit ? total : TransferLimit;
}

struct ModemLine
{
    int bit;
    AbstractSerial::LineStatusFlag flag;
};

constexpr ModemLine ModemLines[] = {
    {TIOCM_CTS, AbstractSerial::LineCTS}, {TIOCM_DSR, AbstractSerial::LineDSR},
    {TIOCM_RNG, AbstractSerial::LineRI},  {TIOCM_CAR, AbstractSerial::LineDCD},
    {TIOCM_DTR, AbstractSerial::LineDTR}, {TIOCM_RTS, AbstractSerial::LineRTS},
};

} // namespace

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
    if (state().port.isOpen()) {
        return false;
    }
    // One that was turned on while closed knows no port; the next enabling makes another.
    dropNotifier();
    if (!state().port.open(d->deviceName, mode)) {
        return false;
    }
    d->descriptor = state().port.descriptor();
    if (state().takeOver()) {
        return true;
    }
    close();
    return false;
}

bool NativeSerialEngine::close()
{
    if (!state().port.isOpen()) {
        return true;
    }
    dropNotifier();
    if (d->oldSettingsSaved) {
        state().restoreTimeouts();
    }
    d->oldSettingsSaved = false;
    // The kernel holds a closing port for as long as its output is stuck: what doesn't leave in
    // time is dropped.
    if (!flush()) {
        state().port.drop(TCOFLUSH);
    }
    state().port.close();
    d->descriptor = AbstractSerialEnginePrivate::InvalidDescriptor;
    return true;
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

bool NativeSerialEngine::setDtr(bool set)
{
    return state().port.setModemLines(TIOCM_DTR, set);
}

bool NativeSerialEngine::setRts(bool set)
{
    return state().port.setModemLines(TIOCM_RTS, set);
}

AbstractSerial::LineStatus NativeSerialEngine::lineStatus()
{
    const std::optional<int> lines = state().port.modemLines();
    if (!lines) {
        return AbstractSerial::LineErr;
    }
    AbstractSerial::LineStatus status;
    for (const ModemLine &line : ModemLines) {
        status.setFlag(line.flag, *lines & line.bit);
    }
    return status;
}

bool NativeSerialEngine::sendBreak(int msecs)
{
    if (!setBreak(true)) {
        return false;
    }
    QThread::msleep(static_cast<unsigned long>(std::max(msecs, 0)));
    return setBreak(false);
}

bool NativeSerialEngine::setBreak(bool set)
{
    return state().port.setBreak(set);
}

bool NativeSerialEngine::flush()
{
    return state().port.waitUntilSent(TransferLimit);
}

bool NativeSerialEngine::reset()
{
    return state().port.drop(TCIOFLUSH);
}

qint64 NativeSerialEngine::bytesAvailable() const
{
    return state().port.bytesAvailable();
}

qint64 NativeSerialEngine::read(char *data, qint64 maxSize)
{
    qint64 done = 0;
    while (done < maxSize) {
        const qint64 asked = std::min(maxSize - done, ReadTransferSize);
        const qint64 came =
            state().port.read(data + done, asked, readLimit(state().readTotalTimeout));
        done += came;
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
        const qint64 asked = std::min(size - done, WriteTransferSize);
        if (state().port.write(data + done, asked, TransferLimit) < asked) {
            break;
        }
        done += asked;
    }
    if (done > 0 && state().notifier) {
        state().notifier->outputSent();
    }
    return done > 0 && done == size ? size : -1;
}

bool NativeSerialEngine::waitForReadOrWrite(bool *readyToRead, bool *readyToWrite, bool checkRead,
                                            bool checkWrite, int msecs)
{
    *readyToRead = checkRead && bytesAvailable() > 0;
    *readyToWrite = false;
    if (*readyToRead) {
        return true;
    }
    if (!state().port.isOpen()) {
        return false;
    }
    const int asked = (checkRead ? POLLIN : 0) | (checkWrite ? POLLOUT : 0);
    const int happened = state().port.wait(short(asked), std::max(msecs, 0));
    // A lost port is ready for everything, at once and for ever: a caller that waits in a loop
    // would spin. The kernel drops what it held.
    if (happened & (POLLERR | POLLHUP | POLLNVAL)) {
        return false;
    }
    *readyToRead = checkRead && (happened & POLLIN) && bytesAvailable() != 0;
    *readyToWrite = checkWrite && (happened & POLLOUT);
    return happened != 0;
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

// Released, rather than kept until the engine goes: each holds a descriptor of epoll, and a device
// that opens and closes all day would use up those of the process. Its end waits for the loop to
// run again, since this may be called from the notifier itself.
void NativeSerialEngine::dropNotifier()
{
    NativeSerialNotifier *notifier = std::exchange(state().notifier, nullptr);
    if (!notifier) {
        return;
    }
    notifier->disable();
    notifier->deleteLater();
}
