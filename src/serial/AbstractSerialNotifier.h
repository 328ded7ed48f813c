#pragma once

class AbstractSerialEngine;

/// Watches an open port for four kinds of event and calls the engine back, from the event loop of
/// the engine's thread. A kind is off until it is turned on.
///
/// Whoever the engine tells may turn kinds on or off, close the port, or delete the engine and the
/// notifier with it.
class AbstractSerialNotifier
{
public:
    /// A new notifier of the platform. Its QObject parent is the engine.
    static AbstractSerialNotifier *createSerialNotifier(AbstractSerialEngine *engine);

    /// Characters came: AbstractSerialEngine::readNotification(). Those that wait when the kind is
    /// turned on need not be told.
    virtual bool isReadNotificationEnabled() const = 0;
    virtual void setReadNotificationEnabled(bool enable) = 0;
    /// The port can take more, told after something was sent only. Turning the kind on therefore
    /// calls AbstractSerialEngine::writeNotification() at once, before the setter returns, so that
    /// the first block is pushed: engine and notifier may be gone after it.
    virtual bool isWriteNotificationEnabled() const = 0;
    virtual void setWriteNotificationEnabled(bool enable) = 0;
    /// Something is wrong with the line or the port: AbstractSerialEngine::exceptionNotification().
    virtual bool isExceptionNotificationEnabled() const = 0;
    virtual void setExceptionNotificationEnabled(bool enable) = 0;
    /// CTS, DSR or RI changed: AbstractSerialEngine::lineNotification().
    virtual bool isLineNotificationEnabled() const = 0;
    virtual void setLineNotificationEnabled(bool enable) = 0;

protected:
    /// Not virtual: a notifier is owned as a QObject and never deleted through this interface.
    ~AbstractSerialNotifier() = default;
};
