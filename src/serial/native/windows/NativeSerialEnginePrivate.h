#pragma once

#include "OverlappedRecord.h"
#include "PortTransfer.h"
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
    NativeSerialEnginePrivate();

    bool isOpen() const { return descriptor != InvalidDescriptor; }
    /// The open port; INVALID_HANDLE_VALUE, which every function refuses, while closed.
    HANDLE port() const { return reinterpret_cast<HANDLE>(descriptor); }

    /// Opens the port named deviceName for @p mode and for nobody else, saves the settings found,
    /// puts the defaults in their place, reads them back and makes the events that @p mode needs.
    /// If any of that failed it answers false, and the port may be left open.
    bool openPort(QIODevice::OpenMode mode);
    /// Gives the timeouts found on opening back to the port, and nothing else.
    void restoreTimeouts();
    /// Ends all transfers and closes port and events. False if an event could not be closed.
    bool closePort();

    /// Each moves one block and answers how many bytes were moved, at most @p size; -1 on a
    /// failure, if the block took too long, or if the port isn't open for that direction. @p size
    /// is at most PortTransfer::ReadBlockSize or WriteBlockSize: the caller cuts its bytes into
    /// blocks.
    qint64 readBlock(char *data, qint64 size);
    qint64 writeBlock(const char *data, qint64 size);

    /// Waits at most @p msecs for the events asked for and answers what happened; nothing if the
    /// wait failed or took too long.
    std::optional<PortTransfer::Events> waitForEvents(bool toRead, bool toWrite, int msecs);

    NativeSerialNotifier *notifier = nullptr; ///< a child of the engine; null until first needed

protected:
    bool applySettings() override;
    void applyTimeouts() override;

private:
    bool takeOver(QIODevice::OpenMode mode);
    bool createEvents(QIODevice::OpenMode mode);
    qint64 finish(OverlappedRecord &record, BOOL atOnce) const;

    DCB m_line{}; ///< what the next apply sends
    DCB m_foundLine{};
    COMMTIMEOUTS m_timeouts{};
    COMMTIMEOUTS m_foundTimeouts{};
    OverlappedRecord m_readRecord;
    OverlappedRecord m_writeRecord;
    OverlappedRecord m_waitRecord;
    /// What a wait has seen. Not on the stack of the wait, since one that took too long ends later.
    DWORD m_waitedEvents = 0;
    std::array<char, PortTransfer::ReadBlockSize> m_readBlock{};
    std::array<char, PortTransfer::WriteBlockSize> m_writeBlock{};
};
