#include "NativeSerialEnginePrivate.h"

#include "NativeSerialNotifier.h"
#include "TermiosSettings.h"

#include <utility>

#include <poll.h>

using namespace Qt::StringLiterals;

namespace {

/// The limit of one transfer of a read. The total is a number without sign to a driver, so one
/// below 0 is a long time.
int readLimit(int total)
{
    return total > 0 && total < PortTransfer::TransferLimit ? total : PortTransfer::TransferLimit;
}

} // namespace

NativeSerialEnginePrivate::NativeSerialEnginePrivate()
{
    deviceName = u"ttyS0"_s;
}

bool NativeSerialEnginePrivate::openPort(QIODevice::OpenMode mode)
{
    if (!port.open(deviceName, mode)) {
        return false;
    }
    descriptor = port.descriptor();
    return takeOver();
}

bool NativeSerialEnginePrivate::takeOver()
{
    const std::optional<termios2> found = port.settings();
    if (!found) {
        return false;
    }
    m_found = m_line = *found;
    oldSettingsSaved = true;
    settings = TermiosSettings::load(m_found);
    settings.outX = settings.inX = false;

    TermiosSettings::makeRaw(m_line);
    // A read answers as soon as there is one byte, and poll tells of one byte.
    m_line.c_cc[VMIN] = 1;
    m_line.c_cc[VTIME] = 0;
    readTotalTimeout = 0;
    autoReadTotalTimeout = false;
    // What came before the opening, perhaps at another rate, isn't for this program.
    if (!applySettings() || !port.drop(TCIFLUSH)) {
        return false;
    }
    readBackSettings();
    return true;
}

// The line settings stay as the program left them, as the only things that are not given back.
// That is by design: the next program finds the line as the module was last spoken to.
void NativeSerialEnginePrivate::restoreTimeouts()
{
    if (!std::exchange(oldSettingsSaved, false)) {
        return;
    }
    std::optional<termios2> line = port.settings();
    if (!line) {
        return;
    }
    line->c_cc[VMIN] = m_found.c_cc[VMIN];
    line->c_cc[VTIME] = m_found.c_cc[VTIME];
    port.setSettings(*line);
}

// The kernel holds a closing port for as long as its output is stuck: what doesn't leave in time is
// dropped.
bool NativeSerialEnginePrivate::closePort()
{
    if (!port.waitUntilSent(PortTransfer::TransferLimit)) {
        port.drop(TCOFLUSH);
    }
    port.close();
    descriptor = InvalidDescriptor;
    return true;
}

qint64 NativeSerialEnginePrivate::readBlock(char *data, qint64 size)
{
    return port.read(data, size, readLimit(readTotalTimeout));
}

qint64 NativeSerialEnginePrivate::writeBlock(const char *data, qint64 size)
{
    const qint64 taken = port.write(data, size, PortTransfer::TransferLimit);
    if (taken > 0 && notifier) {
        notifier->outputSent();
    }
    return taken;
}

std::optional<PortTransfer::Events>
NativeSerialEnginePrivate::waitForEvents(bool toRead, bool toWrite, int msecs) const
{
    if (!isOpen()) {
        return std::nullopt;
    }
    const int asked = (toRead ? POLLIN : 0) | (toWrite ? POLLOUT : 0);
    const int happened = port.wait(short(asked), msecs);
    // A lost port is ready for everything, at once and for ever: a caller that waits in a loop
    // would spin. The kernel drops what it held.
    if (happened == 0 || (happened & (POLLERR | POLLHUP | POLLNVAL))) {
        return std::nullopt;
    }
    return PortTransfer::Events{(happened & POLLIN) != 0, (happened & POLLOUT) != 0};
}

bool NativeSerialEnginePrivate::applySettings()
{
    termios2 wanted = m_line;
    TermiosSettings::store(settings, wanted);
    if (!port.setSettings(wanted)) {
        return false;
    }
    // A driver leaves out what it can't do and reports success all the same.
    const auto medium =
        port.isPseudoTerminal() ? TermiosSettings::Medium::Pseudo : TermiosSettings::Medium::Wire;
    const std::optional<termios2> taken = port.settings();
    if (!taken || !TermiosSettings::isTaken(wanted, *taken, medium)) {
        port.setSettings(m_line);
        return false;
    }
    m_line = wanted;
    return true;
}

// The kernel has no such timeouts: the engine reads the limit afresh for each transfer.
void NativeSerialEnginePrivate::applyTimeouts() { }
