#include "FakeSerialEngine.h"

#include "serial/AbstractSerialEnginePrivate.h"

using namespace Qt::StringLiterals;

namespace {

bool isAvailable = true;
FakeSerialEngine *lastEngine = nullptr;
QStringList calls;

QString text(bool value)
{
    return value ? u"true"_s : u"false"_s;
}

} // namespace

AbstractSerialEngine *AbstractSerialEngine::createEngine(QObject *parent)
{
    return isAvailable ? new FakeSerialEngine(parent) : nullptr;
}

FakeSerialEngine::FakeSerialEngine(QObject *parent)
    : AbstractSerialEngine(std::make_unique<AbstractSerialEnginePrivate>(), parent)
{
    lastEngine = this;
}

FakeSerialEngine::~FakeSerialEngine()
{
    note(u"destroyed"_s);
    if (lastEngine == this) {
        lastEngine = nullptr;
    }
}

void FakeSerialEngine::setAvailable(bool available)
{
    isAvailable = available;
}

FakeSerialEngine *FakeSerialEngine::last()
{
    return lastEngine;
}

QStringList &FakeSerialEngine::log()
{
    return calls;
}

void FakeSerialEngine::setRates(int input, int output)
{
    d->inputBaudRate = input;
    d->outputBaudRate = output;
}

void FakeSerialEngine::setLine(int dataBits, int parity, int stopBits, int flow)
{
    d->dataBits = dataBits;
    d->parity = parity;
    d->stopBits = stopBits;
    d->flow = flow;
}

bool FakeSerialEngine::note(const QString &call, bool isAccepted)
{
    calls.append(call);
    return answer && isAccepted;
}

void FakeSerialEngine::noteSwitch(const char *kind, bool &state, bool enable, bool onClose)
{
    note(u"%1(%2, %3)"_s.arg(QLatin1String(kind), text(enable), text(onClose)));
    state = enable && !onClose;
}

bool FakeSerialEngine::open(QIODevice::OpenMode mode)
{
    return note(u"open(%1)"_s.arg(mode.toInt()));
}

bool FakeSerialEngine::close()
{
    return note(u"close()"_s);
}

bool FakeSerialEngine::setBaudRate(int rate, AbstractSerial::BaudRateDirection dir)
{
    const bool done = note(u"setBaudRate(%1, %2)"_s.arg(rate).arg(dir.toInt()));
    if (done) {
        setRates(rate, rate);
    }
    return done;
}

bool FakeSerialEngine::setDataBits(AbstractSerial::DataBits value)
{
    return note(u"setDataBits(%1)"_s.arg(int(value)), value >= 0);
}

bool FakeSerialEngine::setParity(AbstractSerial::Parity value)
{
    return note(u"setParity(%1)"_s.arg(int(value)), value >= 0);
}

bool FakeSerialEngine::setStopBits(AbstractSerial::StopBits value)
{
    return note(u"setStopBits(%1)"_s.arg(int(value)), value >= 0);
}

bool FakeSerialEngine::setFlowControl(AbstractSerial::Flow value)
{
    return note(u"setFlowControl(%1)"_s.arg(int(value)), value >= 0);
}

void FakeSerialEngine::setCharIntervalTimeout(int usecs)
{
    note(u"setCharIntervalTimeout(%1)"_s.arg(usecs));
    d->charIntervalTimeout = usecs;
}

int FakeSerialEngine::charIntervalTimeout() const
{
    return d->charIntervalTimeout;
}

void FakeSerialEngine::setTotalReadConstantTimeout(int msecs)
{
    note(u"setTotalReadConstantTimeout(%1)"_s.arg(msecs));
    m_totalTimeout = msecs;
}

int FakeSerialEngine::totalReadConstantTimeout() const
{
    return m_totalTimeout;
}

bool FakeSerialEngine::setDtr(bool set)
{
    return note(u"setDtr(%1)"_s.arg(text(set)));
}

bool FakeSerialEngine::setRts(bool set)
{
    return note(u"setRts(%1)"_s.arg(text(set)));
}

AbstractSerial::LineStatus FakeSerialEngine::lineStatus()
{
    note(u"lineStatus()"_s);
    return lines;
}

bool FakeSerialEngine::sendBreak(int msecs)
{
    return note(u"sendBreak(%1)"_s.arg(msecs));
}

bool FakeSerialEngine::setBreak(bool set)
{
    return note(u"setBreak(%1)"_s.arg(text(set)));
}

bool FakeSerialEngine::flush()
{
    return note(u"flush()"_s);
}

bool FakeSerialEngine::reset()
{
    return note(u"reset()"_s);
}

qint64 FakeSerialEngine::bytesAvailable() const
{
    return countAnswer.value_or(incoming.size());
}

qint64 FakeSerialEngine::read(char *data, qint64 maxSize)
{
    note(u"read(%1)"_s.arg(maxSize));
    if (readAnswer) {
        return *readAnswer;
    }
    const qsizetype count = qMin<qsizetype>(maxSize, incoming.size());
    std::copy_n(incoming.constData(), count, data);
    incoming.remove(0, count);
    return count;
}

qint64 FakeSerialEngine::write(const char *data, qint64 size)
{
    note(u"write(%1)"_s.arg(size));
    const qint64 count = qMin(writeAnswer.value_or(size), size);
    written.append(data, qMax<qint64>(0, count));
    return count;
}

bool FakeSerialEngine::waitForReadOrWrite(bool *readyToRead, bool *readyToWrite, bool checkRead,
                                          bool checkWrite, int msecs)
{
    // How much of a limit is left depends on the clock, so it is told apart only from 0 and -1.
    const QString left = msecs > 0 ? u"left"_s : QString::number(msecs);
    note(u"wait(%1, %2, %3)"_s.arg(text(checkRead), text(checkWrite), left));
    const std::optional<Event> event = nextEvent ? nextEvent() : std::nullopt;
    if (event) {
        *readyToRead = event->read;
        *readyToWrite = event->write;
    }
    return event.has_value();
}

bool FakeSerialEngine::isReadNotificationEnabled() const
{
    return m_readEnabled;
}

void FakeSerialEngine::setReadNotificationEnabled(bool enable, bool onClose)
{
    noteSwitch("setRead", m_readEnabled, enable, onClose);
}

bool FakeSerialEngine::isWriteNotificationEnabled() const
{
    return m_writeEnabled;
}

void FakeSerialEngine::setWriteNotificationEnabled(bool enable, bool onClose)
{
    noteSwitch("setWrite", m_writeEnabled, enable, onClose);
    if (pushesWrites && m_writeEnabled) {
        writeNotification();
    }
}

bool FakeSerialEngine::isExceptionNotificationEnabled() const
{
    return m_exceptionEnabled;
}

void FakeSerialEngine::setExceptionNotificationEnabled(bool enable, bool onClose)
{
    noteSwitch("setException", m_exceptionEnabled, enable, onClose);
}

bool FakeSerialEngine::isLineNotificationEnabled() const
{
    return m_lineEnabled;
}

void FakeSerialEngine::setLineNotificationEnabled(bool enable, bool onClose)
{
    noteSwitch("setLine", m_lineEnabled, enable, onClose);
}

qint64 FakeSerialEngine::firstQueueSize() const
{
    return -1;
}

qint64 FakeSerialEngine::secondQueueSize() const
{
    return -1;
}
