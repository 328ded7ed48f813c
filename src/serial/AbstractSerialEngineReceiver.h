#pragma once

/// Who hears of a port's events: the engine calls back through this interface.
class AbstractSerialEngineReceiver
{
public:
    virtual ~AbstractSerialEngineReceiver() = default;

    /// A character came. Returns whether there was something new for the reader.
    virtual bool readNotification() = 0;
    /// The port can take more. Returns whether something was written.
    virtual bool writeNotification() = 0;
    /// The line reported an error.
    virtual bool exceptionNotification() = 0;
    /// A modem line changed.
    virtual bool lineNotification() = 0;
};
