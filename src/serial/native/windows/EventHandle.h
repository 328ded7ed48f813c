#pragma once

#include <qt_windows.h>

/// Owner of an event that resets itself when somebody has waited for it.
class EventHandle
{
public:
    EventHandle() = default;
    ~EventHandle() { close(); }
    EventHandle(const EventHandle &) = delete;
    EventHandle &operator=(const EventHandle &) = delete;

    /// Makes the event, not signalled. False, if Windows gave none.
    bool create();
    /// Closes the event. True as well if there is none.
    bool close();
    bool isValid() const { return m_handle != nullptr; }
    /// Null if there is none.
    HANDLE get() const { return m_handle; }

private:
    HANDLE m_handle = nullptr;
};
