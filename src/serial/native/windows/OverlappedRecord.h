#pragma once

#include "EventHandle.h"

#include <qt_windows.h>

#include <optional>

/// The record of an overlapped operation, with an event of its own that tells of the end.
///
/// Windows writes into the record until the operation has ended, so a record has to outlive it.
class OverlappedRecord
{
public:
    /// Makes the event. False, if Windows gave none.
    bool createEvent() { return m_event.create(); }
    /// Closes the event. True as well if there is none.
    bool close();
    bool hasEvent() const { return m_event.isValid(); }
    /// Null if there is none.
    HANDLE event() const { return m_event.get(); }

    /// Makes the record ready for the next operation, which is given the answer: cleared, and with
    /// the event not signalled. An operation that ends at once leaves the event signalled, which
    /// would end the next one's wait before its time.
    OVERLAPPED *begin();
    /// Forgets an operation that could not be started.
    void abandon();
    /// Waits for the end of an operation that was cancelled: most drivers end it at once, others a
    /// moment later. Gives up after a second.
    void settle() const;
    /// Whether an operation is under way.
    bool isPending() const;
    /// Waits at most @p msecs for the end. False if it didn't come.
    bool waitForEnd(DWORD msecs) const;
    /// How many bytes the operation on @p port moved; nothing if it failed or hasn't ended.
    std::optional<DWORD> byteCount(HANDLE port);

private:
    EventHandle m_event;
    OVERLAPPED m_record{};
};
