// What the engine does by one call to the kernel.

#include "NativeSerialEngine.h"
#include "NativeSerialEnginePrivate.h"
#include "NativeSerialNotifier.h"
#include "PortTransfer.h"

#include <utility>

#include <sys/ioctl.h>

namespace {

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

bool NativeSerialEngine::setBreak(bool set)
{
    return state().port.setBreak(set);
}

bool NativeSerialEngine::flush()
{
    return state().port.waitUntilSent(PortTransfer::TransferLimit);
}

bool NativeSerialEngine::reset()
{
    return state().port.drop(TCIOFLUSH);
}

qint64 NativeSerialEngine::bytesAvailable() const
{
    return state().port.bytesAvailable();
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
