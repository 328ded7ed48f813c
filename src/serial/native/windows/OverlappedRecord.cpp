#include "OverlappedRecord.h"

#include <QDeadlineTimer>

#include <chrono>

namespace {

/// For a driver that doesn't end what it was told to end.
constexpr std::chrono::seconds Patience{1};

} // namespace

bool OverlappedRecord::close()
{
    abandon();
    return m_event.close();
}

OVERLAPPED *OverlappedRecord::begin()
{
    ResetEvent(event());
    m_record = OVERLAPPED{};
    m_record.hEvent = event();
    return &m_record;
}

void OverlappedRecord::abandon()
{
    m_record = OVERLAPPED{};
}

void OverlappedRecord::settle() const
{
    const QDeadlineTimer deadline(Patience);
    while (isPending() && !deadline.hasExpired()) {
        Sleep(1); // not by the event, whose signal may have gone to somebody else
    }
}

bool OverlappedRecord::isPending() const
{
    // It is changed behind the compiler's back.
    return *const_cast<const volatile ULONG_PTR *>(&m_record.Internal) == STATUS_PENDING;
}

bool OverlappedRecord::waitForEnd(DWORD msecs) const
{
    return WaitForSingleObject(event(), msecs) == WAIT_OBJECT_0;
}

std::optional<DWORD> OverlappedRecord::byteCount(HANDLE port)
{
    constexpr BOOL Wait = FALSE;
    DWORD count = 0;
    if (!GetOverlappedResult(port, &m_record, &count, Wait)) {
        return std::nullopt;
    }
    return count;
}
