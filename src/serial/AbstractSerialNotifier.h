#pragma once

class AbstractSerialEngine;

/// Watches an open port for four kinds of event and calls the engine back.
class AbstractSerialNotifier
{
public:
    /// A new notifier of the platform. Its QObject parent is the engine.
    static AbstractSerialNotifier *createSerialNotifier(AbstractSerialEngine *engine);

    virtual bool isReadNotificationEnabled() const = 0;
    virtual void setReadNotificationEnabled(bool enable) = 0;
    virtual bool isWriteNotificationEnabled() const = 0;
    virtual void setWriteNotificationEnabled(bool enable) = 0;
    virtual bool isExceptionNotificationEnabled() const = 0;
    virtual void setExceptionNotificationEnabled(bool enable) = 0;
    virtual bool isLineNotificationEnabled() const = 0;
    virtual void setLineNotificationEnabled(bool enable) = 0;

protected:
    /// Not virtual: a notifier is owned as a QObject and never deleted through this interface.
    ~AbstractSerialNotifier() = default;
};
