#pragma once

#include "OverlappedRecord.h"
#include "serial/SerialLineState.h"

#include <QIODevice>
#include <qt_windows.h>

#include <array>
#include <optional>

class NativeSerialNotifier;

/// The state of an engine on the communications functions of Windows.
///
/// Transfers go through blocks that are kept here, not through the caller's memory: one that takes
/// too long is given up without being cancelled, and Windows moves its bytes all the same, later.
class NativeSerialEnginePrivate : public SerialLineState
{
public:
    static constexpr qint64 ReadBlockSize = 256; ///< bytes
    static constexpr qint64 WriteBlockSize = 512; ///< bytes

    NativeSerialEnginePrivate();

    bool isOpen() const { return descriptor != InvalidDescriptor; }
    /// The open port; INVALID_HANDLE_VALUE, which every function refuses, while closed.
    HANDLE port() const { return reinterpret_cast<HANDLE>(descriptor); }

    /// Opens the port named deviceName for @p mode and for nobody else; see takeOver().
    bool openPort(QIODevice::OpenMode mode);
    /// Saves the settings found on the newly opened port, puts the defaults in their place, reads
    /// them back and makes the events that @p mode needs. False if any of that failed.
    bool takeOver(QIODevice::OpenMode mode);
    /// Gives the timeouts found on opening back to the port, and nothing else.
    void restoreTimeouts();
    /// Ends all transfers and closes port and events. False if an event could not be closed.
    bool closePort();

    /// Each moves one block of at most its size and answers how many bytes were moved, -1 on a
    /// failure or if the block took longer than 5000 ms. A block moves for the direction that the
    /// port is open for alone.
    qint64 readBlock(char *data, qint64 size);
    qint64 writeBlock(const char *data, qint64 size);

    /// Waits at most @p msecs for one of the events in the port's mask and answers what happened;
    /// nothing if the wait failed or took too long.
    std::optional<DWORD> waitForEvent(DWORD msecs);

    OverlappedRecord waitRecord;
    NativeSerialNotifier *notifier = nullptr; ///< a child of the engine; null until first needed

protected:
    bool applySettings() override;
    void applyTimeouts() override;

private:
    bool createEvents(QIODevice::OpenMode mode);
    qint64 finish(OverlappedRecord &record, BOOL atOnce) const;

    DCB m_line{}; ///< what the next apply sends
    DCB m_foundLine{};
    COMMTIMEOUTS m_timeouts{};
    COMMTIMEOUTS m_foundTimeouts{};
    OverlappedRecord m_readRecord;
    OverlappedRecord m_writeRecord;
    /// What a wait has seen. Not on the stack of the wait, since one that took too long ends later.
    DWORD m_waitedEvents = 0;
    std::array<char, ReadBlockSize> m_readBlock{};
    std::array<char, WriteBlockSize> m_writeBlock{};
};
