#include "NativeSerialEnginePrivate.h"

#include "DcbSettings.h"
#include "PortPath.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// The gap between two characters that ends a read. It is this number as such, and not the one of
/// all ones, which would let every read answer at once.
constexpr DWORD ReadInterval = 65535; // ms

DWORD accessFor(QIODevice::OpenMode mode)
{
    return (mode.testFlag(QIODevice::ReadOnly) ? GENERIC_READ : 0)
        | (mode.testFlag(QIODevice::WriteOnly) ? GENERIC_WRITE : 0);
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

NativeSerialEnginePrivate::NativeSerialEnginePrivate()
{
    deviceName = u"COM1"_s;
    m_line.DCBlength = sizeof m_line;
    m_foundLine.DCBlength = sizeof m_foundLine;
}

bool NativeSerialEnginePrivate::openPort(QIODevice::OpenMode mode)
{
    constexpr DWORD NoSharing = 0;
    const HANDLE opened = CreateFileW(portPath(deviceName).c_str(), accessFor(mode), NoSharing,
                                      nullptr, OPEN_EXISTING, FILE_FLAG_OVERLAPPED, nullptr);
    descriptor = reinterpret_cast<qintptr>(opened);
    return isOpen() && takeOver(mode);
}

bool NativeSerialEnginePrivate::takeOver(QIODevice::OpenMode mode)
{
    if (!GetCommState(port(), &m_foundLine) || !GetCommTimeouts(port(), &m_foundTimeouts)) {
        return false;
    }
    m_line = m_foundLine;
    m_timeouts = m_foundTimeouts;
    oldSettingsSaved = true;

    DcbSettings::makeTransparent(m_line);
    settings = DcbSettings::load(m_line);
    if (!applySettings()) {
        return false;
    }
    m_timeouts = COMMTIMEOUTS{};
    m_timeouts.ReadIntervalTimeout = ReadInterval;
    readTotalTimeout = 0;
    autoReadTotalTimeout = false;
    if (!SetCommTimeouts(port(), &m_timeouts)) {
        return false;
    }
    readBackSettings();
    return createEvents(mode);
}

// By design the timeouts alone are given back. The line settings found on opening are read over
// with the present ones, so the next program finds the line as the module was last spoken to.
//
// What was given back is held no more: an opening that fails before it has found anything is closed
// through here, too, and would give this port the timeouts of the one that was open before.
void NativeSerialEnginePrivate::restoreTimeouts()
{
    if (std::exchange(oldSettingsSaved, false)) {
        GetCommState(port(), &m_foundLine);
        SetCommTimeouts(port(), &m_foundTimeouts);
    }
}

bool NativeSerialEnginePrivate::closePort()
{
    OverlappedRecord *const records[] = {&m_readRecord, &m_writeRecord, &m_waitRecord};
    CancelIo(port());
    for (const OverlappedRecord *record : records) {
        record->settle();
    }
    CloseHandle(port());
    descriptor = InvalidDescriptor;
    bool closed = true;
    for (OverlappedRecord *record : records) {
        closed = record->close() && closed;
    }
    return closed;
}

qint64 NativeSerialEnginePrivate::readBlock(char *data, qint64 size)
{
    if (!m_readRecord.hasEvent()) {
        return -1;
    }
    const BOOL atOnce = ReadFile(port(), m_readBlock.data(), static_cast<DWORD>(size), nullptr,
                                 m_readRecord.begin());
    // One that was given up may end in here in the place of this one, with more than is asked now.
    const qint64 count = std::min(finish(m_readRecord, atOnce), size);
    if (count > 0) {
        std::copy_n(m_readBlock.cbegin(), count, data);
    }
    return count;
}

qint64 NativeSerialEnginePrivate::writeBlock(const char *data, qint64 size)
{
    if (!m_writeRecord.hasEvent()) {
        return -1;
    }
    std::copy_n(data, size, m_writeBlock.begin());
    const BOOL atOnce = WriteFile(port(), m_writeBlock.data(), static_cast<DWORD>(size), nullptr,
                                  m_writeRecord.begin());
    return finish(m_writeRecord, atOnce);
}

std::optional<PortTransfer::Events>
NativeSerialEnginePrivate::waitForEvents(bool toRead, bool toWrite, int msecs)
{
    if (!m_waitRecord.hasEvent()) {
        return std::nullopt;
    }
    const WidenedMask mask(port(),
                           (toRead ? DWORD{EV_RXCHAR} : 0) | (toWrite ? DWORD{EV_TXEMPTY} : 0));
    m_waitedEvents = 0;
    if (!WaitCommEvent(port(), &m_waitedEvents, m_waitRecord.begin())
        && (GetLastError() != ERROR_IO_PENDING
            || !m_waitRecord.waitForEnd(static_cast<DWORD>(msecs))
            || !m_waitRecord.byteCount(port()))) {
        return std::nullopt;
    }
    return PortTransfer::Events{(m_waitedEvents & EV_RXCHAR) != 0,
                                (m_waitedEvents & EV_TXEMPTY) != 0};
}

bool NativeSerialEnginePrivate::applySettings()
{
    DcbSettings::store(settings, m_line);
    return SetCommState(port(), &m_line);
}

void NativeSerialEnginePrivate::applyTimeouts()
{
    m_timeouts.ReadTotalTimeoutConstant = static_cast<DWORD>(readTotalTimeout);
    SetCommTimeouts(port(), &m_timeouts);
}

bool NativeSerialEnginePrivate::createEvents(QIODevice::OpenMode mode)
{
    return (!mode.testFlag(QIODevice::ReadOnly) || m_readRecord.createEvent())
        && (!mode.testFlag(QIODevice::WriteOnly) || m_writeRecord.createEvent())
        && m_waitRecord.createEvent();
}

/// The byte count of a transfer that was started on @p record and, with @p atOnce, has ended.
qint64 NativeSerialEnginePrivate::finish(OverlappedRecord &record, BOOL atOnce) const
{
    if (!atOnce
        && (GetLastError() != ERROR_IO_PENDING
            || !record.waitForEnd(PortTransfer::TransferLimit))) {
        return -1;
    }
    const std::optional<DWORD> count = record.byteCount(port());
    return count ? static_cast<qint64>(*count) : -1;
}
