// What the engine does by one call to Windows.

#include "NativeSerialEngine.h"
#include "NativeSerialEnginePrivate.h"
#include "NativeSerialNotifier.h"

#include <qt_windows.h>

#include <utility>

#include <winioctl.h>

namespace {

/// Asks for the output lines: IOCTL_SERIAL_GET_DTRRTS, which belongs to the driver kit's headers.
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

} // namespace

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

// The object stays a child until the engine goes: this may be called from the notifier itself, and
// Windows still writes the end of its wait into its record.
void NativeSerialEngine::dropNotifier()
{
    if (NativeSerialNotifier *notifier = std::exchange(state().notifier, nullptr)) {
        notifier->disable();
    }
}
