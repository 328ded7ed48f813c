#include "EventHandle.h"

#include <utility>

bool EventHandle::create()
{
    close();
    constexpr BOOL ManualReset = FALSE;
    constexpr BOOL Signalled = FALSE;
    m_handle = CreateEventW(nullptr, ManualReset, Signalled, nullptr);
    return isValid();
}

bool EventHandle::close()
{
    const HANDLE handle = std::exchange(m_handle, nullptr);
    return !handle || CloseHandle(handle);
}
