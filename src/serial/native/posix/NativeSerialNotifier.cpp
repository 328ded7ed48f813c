#include "NativeSerialNotifier.h"

#include "serial/AbstractSerialEngine.h"

#include <QSocketNotifier>

#include <chrono>

namespace {

/// Time between two looks at the modem lines: quick for a hand on a plug, cheap for a USB adapter.
constexpr std::chrono::milliseconds LinePollInterval{100};

} // namespace

AbstractSerialNotifier *AbstractSerialNotifier::createSerialNotifier(AbstractSerialEngine *engine)
{
    return new NativeSerialNotifier(engine);
}

NativeSerialNotifier::NativeSerialNotifier(AbstractSerialEngine *engine)
    : QObject(engine)
    , m_engine(engine)
    , m_lines([engine] { return engine->lineStatus(); })
    , m_linePoll(this)
{
    m_linePoll.setInterval(LinePollInterval);
    connect(&m_linePoll, &QTimer::timeout, this, &NativeSerialNotifier::pollLines);
    if (m_edges.descriptor() == -1) {
        return;
    }
    m_portEvent = new QSocketNotifier(m_edges.descriptor(), QSocketNotifier::Read, this);
    m_portEvent->setEnabled(false);
    connect(m_portEvent, &QSocketNotifier::activated, this, &NativeSerialNotifier::handlePortEvent);
}

NativeSerialNotifier::~NativeSerialNotifier()
{
    disable();
}

bool NativeSerialNotifier::isReadNotificationEnabled() const
{
    return isEnabled(ReadKind);
}

void NativeSerialNotifier::setReadNotificationEnabled(bool enable)
{
    setKind(ReadKind, enable);
}

bool NativeSerialNotifier::isWriteNotificationEnabled() const
{
    return isEnabled(WriteKind);
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
    return isEnabled(ExceptionKind);
}

void NativeSerialNotifier::setExceptionNotificationEnabled(bool enable)
{
    setKind(ExceptionKind, enable);
}

bool NativeSerialNotifier::isLineNotificationEnabled() const
{
    return isEnabled(LineKind);
}

void NativeSerialNotifier::setLineNotificationEnabled(bool enable)
{
    setKind(LineKind, enable);
}

void NativeSerialNotifier::disable()
{
    setMask(0);
}

void NativeSerialNotifier::outputSent()
{
    if (!isEnabled(WriteKind)) {
        return;
    }
    if (m_writable) {
        m_writable->setEnabled(true);
        return;
    }
    m_writable = new QSocketNotifier(port(), QSocketNotifier::Write, this);
    connect(m_writable, &QSocketNotifier::activated, this, &NativeSerialNotifier::handleWritable);
}

void NativeSerialNotifier::setKind(Kind kind, bool enable)
{
    setMask(enable ? m_mask | kind : m_mask & ~quint32(kind));
}

void NativeSerialNotifier::setMask(quint32 mask)
{
    constexpr quint32 PortKinds = ReadKind | ExceptionKind;
    const quint32 turnedOn = mask & ~m_mask;
    const bool wasWatched = m_mask & PortKinds;
    m_mask = mask;
    if (!(mask & PortKinds)) {
        m_edges.stop();
    } else if ((turnedOn & ReadKind) || !wasWatched) {
        m_edges.watch(port());
    }
    if (m_portEvent) {
        m_portEvent->setEnabled(mask & PortKinds);
    }
    if (m_writable && !(mask & WriteKind)) {
        m_writable->setEnabled(false);
    }
    if (!(mask & LineKind)) {
        m_linePoll.stop();
    } else if ((turnedOn & LineKind) && m_lines.start()) {
        m_linePoll.start();
    }
}

int NativeSerialNotifier::port() const
{
    return int(m_engine->descriptor());
}

void NativeSerialNotifier::handlePortEvent()
{
    const EdgeWatch::Event event = m_edges.take();
    if (event == EdgeWatch::Event::CharactersCame && isEnabled(ReadKind)) {
        m_engine->readNotification();
    } else if (event == EdgeWatch::Event::PortLost && isEnabled(ExceptionKind)) {
        m_engine->exceptionNotification();
    }
}

// A port can nearly always take more. It is told once for each time that something was sent.
void NativeSerialNotifier::handleWritable()
{
    m_writable->setEnabled(false);
    if (isEnabled(WriteKind)) {
        m_engine->writeNotification();
    }
}

void NativeSerialNotifier::pollLines()
{
    if (m_lines.hasChanged()) {
        m_engine->lineNotification();
    }
}
