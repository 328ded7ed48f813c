#pragma once

#include "EdgeWatch.h"
#include "serial/AbstractSerialNotifier.h"
#include "serial/ModemLineWatch.h"

#include <QObject>
#include <QTimer>

class AbstractSerialEngine;
class QSocketNotifier;

/// Watches a terminal for its engine, from the event loop of the engine's thread.
///
/// - Read: a character came. A byte that stays unread is told once; one that waited when the kind
///   was turned on is not told at all.
/// - Write: something was sent and the port can take more. With nothing to send nothing is told.
/// - Exception: the port was lost, told once. The kernel tells a reader of no other line error.
/// - Line: CTS, DSR or RI changed since the kind was turned on. The lines are looked at ten times
///   a second, if the terminal has any.
///
/// A call to the engine may change the kinds, close the port or delete the engine.
class NativeSerialNotifier final : public QObject, public AbstractSerialNotifier
{
    Q_OBJECT

public:
    /// A notifier for the port that @p engine, which becomes its parent, has open.
    explicit NativeSerialNotifier(AbstractSerialEngine *engine);
    ~NativeSerialNotifier() override;

    bool isReadNotificationEnabled() const override;
    void setReadNotificationEnabled(bool enable) override;
    bool isWriteNotificationEnabled() const override;
    /// Turning the kind on calls the engine at once: the readiness for more is told only after
    /// something was sent, so the first block must be pushed by hand.
    void setWriteNotificationEnabled(bool enable) override;
    bool isExceptionNotificationEnabled() const override;
    void setExceptionNotificationEnabled(bool enable) override;
    bool isLineNotificationEnabled() const override;
    void setLineNotificationEnabled(bool enable) override;

    /// Turns every kind off: nothing is told from now on.
    void disable();
    /// To be called when the port took bytes.
    void outputSent();

private:
    /// The kinds, by the bits that the events have in the mask of a serial driver.
    enum Kind : quint32 { ReadKind = 1, WriteKind = 4, ExceptionKind = 128, LineKind = 280 };

    bool isEnabled(Kind kind) const { return m_mask & kind; }
    void setMask(quint32 mask);
    void setKind(Kind kind, bool enable);
    int port() const;
    void handlePortEvent();
    void handleWritable();
    void pollLines();

    AbstractSerialEngine *m_engine;
    quint32 m_mask = 0; ///< the kinds wanted
    EdgeWatch m_edges;
    QSocketNotifier *m_portEvent = nullptr; ///< on m_edges; a child, null if the kernel gave none
    QSocketNotifier *m_writable =
        nullptr; ///< a child, made when first needed, enabled for one shot
    ModemLineWatch m_lines;
    QTimer m_linePoll;
};
