#pragma once

#include "app/ValueCheckerThread.h"
#include "app/WTraceController.h"

/// The thread whose tick @p controller is carrying out, for whoever its signals call during the
/// pass; null at any other time. The panel shows its thread to nobody, but a test that has to know
/// which ticks are under way can't do without it.
inline const ValueCheckerThread *tickingThread(const WTraceController &controller)
{
    struct Opened : QObject
    {
        using QObject::sender; // else for the class itself alone
    };
    return qobject_cast<const ValueCheckerThread *>((controller.*&Opened::sender)());
}
