#include "NativeSerialEngine.h"

#include "NativeSerialEnginePrivate.h"
#include "NativeSerialNotifier.h"

#include <QAbstractEventDispatcher>
#include <qt_windows.h>

#include <algorithm>
#include <utility>

#include <winioctl.h>

namespace {

/// Asks for the output lines (IOCTL_SERIAL_GET_DTRRTS, which belongs to the driver kit's headers):
/// function 27 hexadecimal 1B is the class of serial ports, 30 the function in it.
constexpr DWORD GetDtrRts = 1769592;
static_assert(GetDtrRts == CTL_CODE(FILE_DEVICE_SERIAL_PORT, 30, METHOD_BUFFERED, FILE_ANY_ACCESS));

struct ModemLine
{
    DWORD bit;
    AbstractSerial::LineStatusFlag flag;
};

constexpr ModemLine InputLines[] = {
    {MS_CTS_ON, AbstractSerial::LineCTS},
    {MS_DSR_ON, AbstractSerial::LineDSR},
    {MS_RING_ON, AbstractSerial::LineRI},
    {MS_RLSD_ON, AbstractSerial::LineDCD},
};

constexpr ModemLine OutputLines[] = {
    {0x1, AbstractSerial::LineDTR},
    {0x2, AbstractSerial::LineRTS},
};

void addLines(const auto &lines, DWORD bits, AbstractSerial::LineStatus &status)
{
    for (const ModemLine &line : lines) {
        status.setFlag(line.flag, bits & line.bit);
    }
}

/// The output lines of @p port as bits; none if the driver doesn't tell.
DWORD outputLines(HANDLE port)
{
    OverlappedRecord record;
    DWORD lines = 0;
    if (!record.createEvent()) {
        return 0;
    }
    const BOOL atOnce =
        DeviceIoControl(port, GetDtrRts, nullptr, 0, &lines, sizeof lines, nullptr, record.begin());
    // The driver answers from its own memory, so the wait needs no limit.
    const bool answered = atOnce
        || (GetLastError() == ERROR_IO_PENDING && record.waitForEnd(INFINITE)
            && record.byteCount(port));
    return answered ? lines : 0;
}

/// Makes the events that a port is watched for include @p wanted while the object lives. Whoever
/// waits for the port's events meanwhile, as the notifier does, sees its wait end without an event.
class WidenedMask
{
public:
    WidenedMask(HANDLE port, DWORD wanted)
        : m_port(port)
    {
        GetCommMask(m_port, &m_before);
        if ((m_before & wanted) != wanted) {
            SetCommMask(m_port, m_before | wanted);
        }
    }
    ~WidenedMask() { SetCommMask(m_port, m_before); }
    WidenedMask(const WidenedMask &) = delete;
    WidenedMask &operator=(const WidenedMask &) = delete;

private:
    HANDLE m_port;
    DWORD m_before = 0;
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
    if (state().isOpen()) {
        return false;
    }
    // One that was turned on while closed knows no port; the next enabling makes another.
    dropNotifier();
    if (!state().openPort(mode)) {
        return false;
    }
    if (state().takeOver(mode)) {
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

bool NativeSerialEngine::setDtr(bool set)
{
    return EscapeCommFunction(state().port(), set ? SETDTR : CLRDTR);
}

bool NativeSerialEngine::setRts(bool set)
{
    return EscapeCommFunction(state().port(), set ? SETRTS : CLRRTS);
}

AbstractSerial::LineStatus NativeSerialEngine::lineStatus()
{
    DWORD inputLines = 0;
    if (!GetCommModemStatus(state().port(), &inputLines)) {
        return AbstractSerial::LineErr;
    }
    AbstractSerial::LineStatus status;
    addLines(InputLines, inputLines, status);
    addLines(OutputLines, outputLines(state().port()), status);
    return status;
}

bool NativeSerialEngine::sendBreak(int msecs)
{
    if (!setBreak(true)) {
        return false;
    }
    Sleep(static_cast<DWORD>(std::max(msecs, 0)));
    return setBreak(false);
}

bool NativeSerialEngine::setBreak(bool set)
{
    return set ? SetCommBreak(state().port()) : ClearCommBreak(state().port());
}

bool NativeSerialEngine::flush()
{
    return FlushFileBuffers(state().port());
}

bool NativeSerialEngine::reset()
{
    return PurgeComm(state().port(), PURGE_TXABORT | PURGE_RXABORT | PURGE_TXCLEAR | PURGE_RXCLEAR);
}

qint64 NativeSerialEngine::bytesAvailable() const
{
    DWORD errors = 0;
    COMSTAT queues{};
    // Asking clears the errors, so the next call can answer.
    if (!ClearCommError(state().port(), &errors, &queues) || errors != 0) {
        return -1;
    }
    return queues.cbInQue;
}

qint64 NativeSerialEngine::read(char *data, qint64 maxSize)
{
    qint64 done = 0;
    while (done < maxSize) {
        const qint64 asked = std::min(maxSize - done, NativeSerialEnginePrivate::ReadBlockSize);
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
        const qint64 asked = std::min(size - done, NativeSerialEnginePrivate::WriteBlockSize);
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
    if (!state().waitRecord.hasEvent()) {
        return false;
    }
    const DWORD wanted = (checkRead ? DWORD{EV_RXCHAR} : 0) | (checkWrite ? DWORD{EV_TXEMPTY} : 0);
    const WidenedMask mask(state().port(), wanted);
    const auto happened = state().waitForEvent(static_cast<DWORD>(std::max(msecs, 0)));
    if (!happened) {
        return false;
    }
    *readyToRead = checkRead && (*happened & EV_RXCHAR) && bytesAvailable() != 0;
    *readyToWrite = checkWrite && (*happened & EV_TXEMPTY);
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

// The object stays a child until the engine goes: this may be called from the notifier itself, and
// Windows still writes the end of its wait into its record.
void NativeSerialEngine::dropNotifier()
{
    if (NativeSerialNotifier *notifier = std::exchange(state().notifier, nullptr)) {
        notifier->disable();
    }
}
