#include "serial/AbstractSerial.h"

#include "serial/AbstractSerialPrivate.h"
#include "serial/SerialTexts.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

// A text that the table doesn't have gives the undefined value, which the engine refuses.
template <typename Value>
Value valueOfText(const QMap<int, QString> &texts, const QString &text)
{
    return static_cast<Value>(texts.key(text, -1));
}

} // namespace

AbstractSerial::AbstractSerial(QObject *parent)
    : QIODevice(parent)
    , d(std::make_unique<AbstractSerialPrivate>(this))
{
}

AbstractSerial::~AbstractSerial()
{
    if (isOpen()) {
        AbstractSerial::close();
    }
}

bool AbstractSerial::isSequential() const
{
    return true;
}

bool AbstractSerial::open(OpenMode mode)
{
    if (isOpen()) {
        d->report(FailAlreadyOpen);
        return false;
    }
    constexpr OpenMode unsupported = Append | Truncate | Text;
    if (mode == NotOpen || (mode & unsupported)) {
        d->report(FailModeUnsupported);
        return false;
    }
    if (!d->engine || !d->engine->open(mode)) {
        d->report(FailOpening);
        return false;
    }
    d->clearBuffers();
    if (mode & ReadOnly) {
        d->engine->setReadNotificationEnabled(true, false);
    }
    if (mode & WriteOnly) {
        d->engine->setWriteNotificationEnabled(true, false);
    }
    d->engine->setLineNotificationEnabled(true, false);
    d->report(StatusOpened);
    d->isBuffered = !(mode & Unbuffered);
    return QIODevice::open(mode);
}

void AbstractSerial::close()
{
    if (!isOpen()) {
        d->report(FailClose);
        return;
    }
    d->engine->setReadNotificationEnabled(false, true);
    d->engine->setWriteNotificationEnabled(false, true);
    d->engine->setLineNotificationEnabled(false, true);
    d->clearBuffers();
    d->engine->close();
    QIODevice::close();
    d->report(StatusClosed);
}

bool AbstractSerial::reset()
{
    if (!isOpen()) {
        d->report(FailNotOpen);
        return false;
    }
    d->clearBuffers();
    const bool done = d->engine->reset();
    d->report(done ? StatusReset : FailReset);
    // After the report: what comes while its slots run still belongs to the readyRead() going on.
    d->emittedReadyRead = false;
    return done;
}

qint64 AbstractSerial::bytesAvailable() const
{
    const qint64 held = QIODevice::bytesAvailable();
    if (d->isBuffered) {
        return held + d->readBuffer.size();
    }
    return d->engine ? held + d->engine->bytesAvailable() : held;
}

qint64 AbstractSerial::bytesToWrite() const
{
    return d->writeBuffer.size();
}

bool AbstractSerial::canReadLine() const
{
    return d->readBuffer.contains('\n') || QIODevice::canReadLine();
}

bool AbstractSerial::waitForReadyRead(int msecs)
{
    return d->waitForReadyRead(msecs);
}

bool AbstractSerial::waitForBytesWritten(int msecs)
{
    return d->waitForBytesWritten(msecs);
}

void AbstractSerial::setDeviceName(const QString &name)
{
    if (d->engine && !isOpen()) {
        d->engine->setDeviceName(name);
    }
}

QString AbstractSerial::deviceName() const
{
    return d->engine ? d->engine->deviceName() : QString();
}

bool AbstractSerial::setBaudRate(int rate, BaudRateDirection dir)
{
    return d->perform(StatusBaudRateSet, FailSetBaudRate, [=](AbstractSerialEngine &engine) {
        return rate > 0 && engine.setBaudRate(rate, dir);
    });
}

bool AbstractSerial::setBaudRate(BaudRate value, BaudRateDirection dir)
{
    return setBaudRate(SerialTexts::rate(value), dir);
}

bool AbstractSerial::setBaudRate(const QString &text, BaudRateDirection dir)
{
    static const QRegularExpression digits(u"(\\d+)"_s);
    bool isNumber = false;
    const int rate = digits.match(text).captured(1).toInt(&isNumber);
    return setBaudRate(isNumber ? rate : -1, dir);
}

QString AbstractSerial::baudRate(BaudRateDirection dir) const
{
    const int rate = d->engine ? d->engine->baudRate(dir) : 0;
    return rate > 0 ? SerialTexts::rateText(rate) : d->baudRateMap.value(BaudRateUndefined);
}

bool AbstractSerial::setDataBits(DataBits value)
{
    return d->perform(StatusDataBitsSet, FailSetDataBits,
                      [=](AbstractSerialEngine &engine) { return engine.setDataBits(value); });
}

bool AbstractSerial::setDataBits(const QString &text)
{
    return setDataBits(valueOfText<DataBits>(d->dataBitsMap, text));
}

QString AbstractSerial::dataBits() const
{
    return d->dataBitsMap.value(d->engine ? d->engine->dataBits() : DataBitsUndefined);
}

bool AbstractSerial::setParity(Parity value)
{
    return d->perform(StatusParitySet, FailSetParity,
                      [=](AbstractSerialEngine &engine) { return engine.setParity(value); });
}

bool AbstractSerial::setParity(const QString &text)
{
    return setParity(valueOfText<Parity>(d->parityMap, text));
}

QString AbstractSerial::parity() const
{
    return d->parityMap.value(d->engine ? d->engine->parity() : ParityUndefined);
}

bool AbstractSerial::setStopBits(StopBits value)
{
    return d->perform(StatusStopBitsSet, FailSetStopBits,
                      [=](AbstractSerialEngine &engine) { return engine.setStopBits(value); });
}

bool AbstractSerial::setStopBits(const QString &text)
{
    return setStopBits(valueOfText<StopBits>(d->stopBitsMap, text));
}

QString AbstractSerial::stopBits() const
{
    return d->stopBitsMap.value(d->engine ? d->engine->stopBits() : StopBitsUndefined);
}

bool AbstractSerial::setFlowControl(Flow value)
{
    return d->perform(StatusFlowSet, FailSetFlow,
                      [=](AbstractSerialEngine &engine) { return engine.setFlowControl(value); });
}

bool AbstractSerial::setFlowControl(const QString &text)
{
    return setFlowControl(valueOfText<Flow>(d->flowMap, text));
}

QString AbstractSerial::flowControl() const
{
    return d->flowMap.value(d->engine ? d->engine->flowControl() : FlowUndefined);
}

void AbstractSerial::setCharIntervalTimeout(int usecs)
{
    if (!isOpen()) {
        d->report(FailNotOpen);
        return;
    }
    d->engine->setCharIntervalTimeout(usecs);
}

void AbstractSerial::setTotalReadConstantTimeout(int msecs)
{
    if (!isOpen()) {
        d->report(FailNotOpen);
        return;
    }
    d->engine->setTotalReadConstantTimeout(msecs);
}

bool AbstractSerial::setDtr(bool set)
{
    return d->perform(StatusDtrChanged, FailSetDtr,
                      [=](AbstractSerialEngine &engine) { return engine.setDtr(set); });
}

bool AbstractSerial::setRts(bool set)
{
    return d->perform(StatusRtsChanged, FailSetRts,
                      [=](AbstractSerialEngine &engine) { return engine.setRts(set); });
}

AbstractSerial::LineStatus AbstractSerial::lineStatus()
{
    LineStatus lines = LineErr;
    d->perform(StatusLinesRead, FailLineStatus, [&lines](AbstractSerialEngine &engine) {
        lines = engine.lineStatus();
        return !lines.testFlag(LineErr);
    });
    return lines;
}

bool AbstractSerial::sendBreak(int msecs)
{
    return d->perform(StatusBreakSent, FailSendBreak, [=](AbstractSerialEngine &engine) {
        return engine.sendBreak(qMax(0, msecs));
    });
}

bool AbstractSerial::setBreak(bool set)
{
    return d->perform(StatusBreakSet, FailSetBreak,
                      [=](AbstractSerialEngine &engine) { return engine.setBreak(set); });
}

bool AbstractSerial::flush()
{
    return d->perform(StatusFlushed, FailFlush, [this](AbstractSerialEngine &engine) {
        return d->flushWriteBuffer() || engine.flush();
    });
}

QString AbstractSerial::statusToString(Status status) const
{
    return SerialTexts::message(status);
}

void AbstractSerial::enableEmitStatus(bool enable)
{
    d->emitStatus = enable;
}

bool AbstractSerial::isEmitStatus() const
{
    return d->emitStatus;
}

qint64 AbstractSerial::readBufferSize() const
{
    return d->readBufferMaxSize;
}

void AbstractSerial::setReadBufferSize(qint64 size)
{
    d->setReadBufferSize(size);
}

// The five lists are made once, from the tables of the device that is asked first, and are the
// program's from then on. So a device without an engine, whose tables are empty, leaves its list
// empty if it is the first to be asked.

QStringList AbstractSerial::listBaudRate() const
{
    static const QStringList list = d->baudRateMap.values();
    return list;
}

QStringList AbstractSerial::listDataBits() const
{
    static const QStringList list = d->dataBitsMap.values();
    return list;
}

QStringList AbstractSerial::listParity() const
{
    static const QStringList list = d->parityMap.values();
    return list;
}

QStringList AbstractSerial::listStopBits() const
{
    static const QStringList list = d->stopBitsMap.values();
    return list;
}

QStringList AbstractSerial::listFlowControl() const
{
    static const QStringList list = d->flowMap.values();
    return list;
}

QMap<int, QString> AbstractSerial::baudRateMap() const
{
    return d->baudRateMap;
}

QMap<int, QString> AbstractSerial::dataBitsMap() const
{
    return d->dataBitsMap;
}

QMap<int, QString> AbstractSerial::parityMap() const
{
    return d->parityMap;
}

QMap<int, QString> AbstractSerial::stopBitsMap() const
{
    return d->stopBitsMap;
}

QMap<int, QString> AbstractSerial::flowControlMap() const
{
    return d->flowMap;
}

qint64 AbstractSerial::readData(char *data, qint64 maxSize)
{
    return d->readData(data, maxSize);
}

qint64 AbstractSerial::readLineData(char *data, qint64 maxSize)
{
    return QIODevice::readLineData(data, maxSize);
}

qint64 AbstractSerial::writeData(const char *data, qint64 size)
{
    return d->writeData(data, size);
}
