#pragma once

#include "serial/AbstractSerialEngineReceiver.h"

#include <functional>

/// Counts what an engine tells, and does on each call what the test asks for.
class RecordingReceiver : public AbstractSerialEngineReceiver
{
public:
    bool readNotification() override { return note(reads, onRead); }
    bool writeNotification() override { return note(writes, onWrite); }
    bool exceptionNotification() override { return note(exceptions, onException); }
    bool lineNotification() override { return note(lines, onLine); }

    int reads = 0;
    int writes = 0;
    int exceptions = 0;
    int lines = 0;
    std::function<void()> onRead;
    std::function<void()> onWrite;
    std::function<void()> onException;
    std::function<void()> onLine;

private:
    static bool note(int &count, const std::function<void()> &action)
    {
        ++count;
        if (action) {
            action();
        }
        return true;
    }
};
