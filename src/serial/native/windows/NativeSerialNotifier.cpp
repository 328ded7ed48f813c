#include "NativeSerialNotifier.h"

#include "serial/AbstractSerialEngine.h"

#include <QCoreApplication>
#include <QEvent>
#include <QPointer>

#include <chrono>
#include <utility>

namespace {

/// How long a port rests whose waits fail, or end without an event again and again.
constexpr std::chrono::milliseconds RestOfThePort{100};

} // namespace

AbstractSerialNotifier *AbstractSerialNotifier::createSerialNotifier(AbstractSerialEngine *engine)
{
    return new NativeSerialNotifier(engine);
}

NativeSerialNotifier::NativeSerialNotifier(AbstractSerialEngine *engine)
    : QWinEventNotifier(engine)
    , m_engine(engine)
    , m_rest(this)
{
    if (m_wait.createEvent()) {
        setHandle(m_wait.event());
    }
    m_rest.setSingleShot(true);
    m_rest.setInterval(RestOfThePort);
    connect(&m_rest, &QTimer::timeout, this, &NativeSerialNotifier::startWait);
}

// The engine is half gone by now, and its port closed: only what is the notifier's own is ended.
NativeSerialNotifier::~NativeSerialNotifier()
{
    setEnabled(false);
}

bool NativeSerialNotifier::isReadNotificationEnabled() const
{
    return isKindEnabled(ReadKind);
}

void NativeSerialNotifier::setReadNotificationEnabled(bool enable)
{
    setKind(ReadKind, enable);
}

bool NativeSerialNotifier::isWriteNotificationEnabled() const
{
    return isKindEnabled(WriteKind);
}

void NativeSerialNotifier::setWriteNotificationEnabled(bool enable)
{
    setKind(WriteKind, enable);
    if (enable) {
        m_engine->writeNotification();
    }
}

bool NativeSerialNotifier::isExceptionNotificationEnabled() const
{
    return isKindEnabled(ExceptionKind);
}

void NativeSerialNotifier::setExceptionNotificationEnabled(bool enable)
{
    setKind(ExceptionKind, enable);
}

bool NativeSerialNotifier::isLineNotificationEnabled() const
{
    return isKindEnabled(LineKind);
}

void NativeSerialNotifier::setLineNotificationEnabled(bool enable)
{
    setKind(LineKind, enable);
}

void NativeSerialNotifier::disable()
{
    m_setMask = 0;
    rearm();
    m_wait.settle();
}

bool NativeSerialNotifier::event(QEvent *e)
{
    // Whom the engine calls may delete it, and this notifier with it.
    const QPointer<NativeSerialNotifier> self(this);
    // The toolkit watches the handle for one signal at a time, and begins anew in here.
    bool handled = QWinEventNotifier::event(e);
    if (self && e->type() == QEvent::WinEventAct) {
        handled = tellEngine();
    }
    if (self) {
        startNextWait();
    }
    return handled;
}

void NativeSerialNotifier::setKind(Kind kind, bool enable)
{
    m_setMask = enable ? m_setMask | kind : m_setMask & ~DWORD{kind};
    rearm();
}

void NativeSerialNotifier::rearm()
{
    SetCommMask(port(), m_setMask); // which ends the wait that is under way
    const bool wanted = m_setMask != 0 && m_wait.hasEvent();
    if (wanted != isEnabled()) {
        setEnabled(wanted);
    }
    startWait();
}

/// Has no effect while nothing is wanted, so that one that was dropped leaves alone the port that
/// its engine has opened meanwhile: a driver takes one wait at a time. For the same reason a wait
/// that is under way is left to itself. One that can't be started, say because the driver is still
/// busy with the end of the one before, is tried again later; nobody is told. Without an open port
/// nothing is tried: opening makes another notifier.
void NativeSerialNotifier::startWait()
{
    if (!isEnabled() || m_wait.isPending() || m_engine->descriptor() == -1) {
        return;
    }
    if (collectEvents() & m_setMask) {
        // The signal that was to tell of them is taken back by begin().
        QCoreApplication::postEvent(this, new QEvent(QEvent::WinEventAct));
    }
    if (!WaitCommEvent(port(), &m_delivered, m_wait.begin())
        && GetLastError() != ERROR_IO_PENDING) {
        m_wait.abandon();
        m_rest.start();
    }
}

/// Takes over what a wait has delivered, and answers it. A new wait may begin before the event loop
/// comes to tell of it, and would write over it.
DWORD NativeSerialNotifier::collectEvents()
{
    const DWORD delivered = std::exchange(m_delivered, 0);
    m_eventMask |= delivered;
    return delivered;
}

/// A wait ends without an event when somebody set the mask, which the engine does when it waits
/// itself: then the next one begins at once. But there are drivers that can't wait for a port's
/// events and end every wait so; the event loop would do nothing else any more.
void NativeSerialNotifier::startNextWait()
{
    if (m_emptyWaits > 1) {
        m_rest.start();
    } else {
        startWait();
    }
}

/// Tells the engine what has happened. Answers whether the engine was called.
///
/// The events are taken at once, and what is wanted is looked at afresh each time: whoever is
/// called may change it, and a wait that is started thereby may deliver before the last kind is
/// dealt with.
bool NativeSerialNotifier::tellEngine()
{
    const bool ended = !m_wait.isPending(); // else the signal is from the wait before
    if (ended) {
        collectEvents();
    }
    const DWORD events = std::exchange(m_eventMask, 0);
    if (events != 0) {
        m_emptyWaits = 0;
    } else if (ended) {
        ++m_emptyWaits;
    }

    constexpr std::pair<Kind, bool (AbstractSerialEngine::*)()> Calls[] = {
        {ReadKind, &AbstractSerialEngine::readNotification},
        {WriteKind, &AbstractSerialEngine::writeNotification},
        {ExceptionKind, &AbstractSerialEngine::exceptionNotification},
        {LineKind, &AbstractSerialEngine::lineNotification},
    };
    const QPointer<NativeSerialNotifier> self(this);
    bool called = false;
    for (const auto &[kind, call] : Calls) {
        if (self && (events & m_setMask & kind)) {
            (m_engine->*call)();
            called = true;
        }
    }
    return called;
}

Qt::HANDLE NativeSerialNotifier::port() const
{
    return reinterpret_cast<Qt::HANDLE>(m_engine->descriptor());
}
