#pragma once

#include "OverlappedRecord.h"
#include "serial/AbstractSerialNotifier.h"

#include <QTimer>
#include <QWinEventNotifier>
#include <qt_windows.h>

class AbstractSerialEngine;

/// Watches a port for its engine by an overlapped wait for the port's events, whose end comes to
/// the event loop of the engine's thread.
///
/// - Read: a character came.
/// - Write: the last character was sent. With nothing to send nothing is told.
/// - Exception: an error on the line.
/// - Line: CTS, DSR or RI changed.
///
/// A call to the engine may change the kinds, close the port or delete the engine.
class NativeSerialNotifier final : public QWinEventNotifier, public AbstractSerialNotifier
{
    Q_OBJECT

public:
    /// A notifier for the port that @p engine, which becomes its parent, has open.
    explicit NativeSerialNotifier(AbstractSerialEngine *engine);
    ~NativeSerialNotifier() override;

    bool isReadNotificationEnabled() const override;
    void setReadNotificationEnabled(bool enable) override;
    bool isWriteNotificationEnabled() const override;
    /// Turning the kind on calls the engine at once: an empty output is told only after something
    /// was sent, so the first block must be pushed by hand.
    void setWriteNotificationEnabled(bool enable) override;
    bool isExceptionNotificationEnabled() const override;
    void setExceptionNotificationEnabled(bool enable) override;
    bool isLineNotificationEnabled() const override;
    void setLineNotificationEnabled(bool enable) override;

    /// Turns every kind off and ends the wait: nothing is told and no wait begins from now on.
    void disable();

protected:
    bool event(QEvent *e) override;

private:
    /// The kinds, by the bits of their events.
    enum Kind : DWORD {
        ReadKind = EV_RXCHAR,
        WriteKind = EV_TXEMPTY,
        ExceptionKind = EV_ERR,
        LineKind = EV_CTS | EV_DSR | EV_RING,
    };

    bool isKindEnabled(Kind kind) const { return isEnabled() && (m_setMask & kind); }
    void setKind(Kind kind, bool enable);
    void rearm();
    void startWait();
    void startNextWait();
    DWORD collectEvents();
    bool tellEngine();
    Qt::HANDLE port() const;

    AbstractSerialEngine *m_engine;
    OverlappedRecord m_wait;
    DWORD m_setMask = 0; ///< the events wanted
    DWORD m_delivered = 0; ///< where the wait under way puts its events
    DWORD m_eventMask = 0; ///< what has happened and isn't told yet
    int m_emptyWaits = 0; ///< waits in a row that ended without an event
    QTimer m_rest; ///< until the next wait, if the last ones came to nothing
};
