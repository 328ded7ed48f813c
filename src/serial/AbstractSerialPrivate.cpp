#include "serial/AbstractSerialPrivate.h"

#include "serial/SerialTexts.h"

#include <QDateTime>
#include <QElapsedTimer>

#include <array>

AbstractSerialPrivate::AbstractSerialPrivate(AbstractSerial *device)
    : engine(AbstractSerialEngine::createEngine(device))
    , q(device)
{
    if (!engine) {
        return;
    }
    engine->setReceiver(this);
    baudRateMap = SerialTexts::baudRates();
    dataBitsMap = SerialTexts::dataBits();
    parityMap = SerialTexts::parities();
    stopBitsMap = SerialTexts::stopBits();
    flowMap = SerialTexts::flows();
}

AbstractSerialPrivate::~AbstractSerialPrivate() = default;

bool AbstractSerialPrivate::readNotification()
{
    return canReadNotification();
}

bool AbstractSerialPrivate::writeNotification()
{
    return canWriteNotification();
}

bool AbstractSerialPrivate::exceptionNotification()
{
    emit q->exception();
    return true;
}

bool AbstractSerialPrivate::lineNotification()
{
    struct WatchedLine
    {
        AbstractSerial::LineStatusFlag line;
        void (AbstractSerial::*changed)(bool value);
    };
    static constexpr std::array watchedLines = {
        WatchedLine{AbstractSerial::LineCTS, &AbstractSerial::ctsChanged},
        WatchedLine{AbstractSerial::LineDSR, &AbstractSerial::dsrChanged},
        WatchedLine{AbstractSerial::LineRI, &AbstractSerial::ringChanged},
    };

    const AbstractSerial::LineStatus lines = engine->lineStatus();
    for (const WatchedLine &watched : watchedLines) {
        const bool isOn = lines.testFlag(watched.line);
        if (isOn != lastLines.testFlag(watched.line)) {
            lastLines.setFlag(watched.line, isOn);
            emit(q->*watched.changed)(isOn);
        }
    }
    return true;
}

void AbstractSerialPrivate::report(AbstractSerial::Status status)
{
    const QString message = q->statusToString(status);
    if (status >= AbstractSerial::FailOpening) {
        q->setErrorString(message);
    }
    if (emitStatus) {
        emit q->signalStatus(message, QDateTime::currentDateTime());
    }
}

void AbstractSerialPrivate::clearBuffers()
{
    readBuffer.clear();
    writeBuffer.clear();
}

void AbstractSerialPrivate::setReadBufferSize(qint64 size)
{
    if (size == readBufferMaxSize) {
        return;
    }
    readBufferMaxSize = size;
    if (!readNotifierCalled && engine && !isReadLimitReached()) {
        engine->setReadNotificationEnabled(true, false);
    }
}

qint64 AbstractSerialPrivate::readData(char *data, qint64 maxSize)
{
    if (!q->isOpen()) {
        report(AbstractSerial::FailNotOpen);
        return -1;
    }
    if (!q->isReadable()) {
        report(AbstractSerial::FailReadIo);
        return -1;
    }
    if (!isBuffered) {
        const qint64 count = engine->read(data, maxSize);
        if (count < 0) {
            report(AbstractSerial::FailReadIo);
        }
        return count;
    }
    enableReadNotifier();
    // Held are never more bytes than fit into the address space.
    return readBuffer.read(data, static_cast<qsizetype>(qMin<qint64>(maxSize, readBuffer.size())));
}

qint64 AbstractSerialPrivate::writeData(const char *data, qint64 size)
{
    if (!q->isOpen()) {
        report(AbstractSerial::FailNotOpen);
        return -1;
    }
    if (!q->isWritable()) {
        report(AbstractSerial::FailWriteIo);
        return -1;
    }
    if (isBuffered) {
        writeBuffer.append(data, static_cast<qsizetype>(size));
        enableWriteNotifierForData();
        return size;
    }
    const qint64 count = engine->write(data, size);
    if (count < 0) {
        report(AbstractSerial::FailWriteIo);
        return count;
    }
    enableWriteNotifierForData();
    emit q->bytesWritten(count);
    return count;
}

// Returns whether the buffer grew.
bool AbstractSerialPrivate::readFromDevice()
{
    qint64 wanted = engine->bytesAvailable();
    if (hasReadLimit()) {
        wanted = qMin(wanted, readBufferMaxSize - readBuffer.size());
    }
    if (wanted <= 0) {
        return false;
    }
    const auto reserved = static_cast<qsizetype>(wanted);
    const qint64 count = engine->read(readBuffer.reserve(reserved), reserved);
    const qsizetype used = static_cast<qsizetype>(qBound<qint64>(0, count, reserved));
    readBuffer.chop(reserved - used);
    return used > 0;
}

bool AbstractSerialPrivate::canReadNotification()
{
    // A slot that runs the event loop would get here again and again: nested, the notifier rests.
    if (readNotifierCalled && !readNotifierStateSet) {
        readNotifierStateSet = true;
        readNotifierState = engine->isReadNotificationEnabled();
        engine->setReadNotificationEnabled(false, false);
    }
    readNotifierCalled = true;

    bool hasNewData = true;
    if (isBuffered) {
        if (isReadLimitReached() || !readFromDevice()) {
            readNotifierCalled = false;
            return false;
        }
        if (isReadLimitReached()) {
            engine->setReadNotificationEnabled(false, false);
        }
    } else {
        hasNewData = engine->bytesAvailable() > 0;
    }

    if (!hasNewData) {
        enableReadNotifier();
    } else if (!emittedReadyRead) {
        emittedReadyRead = true;
        emit q->readyRead();
        emittedReadyRead = false;
    }

    restoreReadNotifier();
    readNotifierCalled = false;
    return true;
}

void AbstractSerialPrivate::enableReadNotifier()
{
    if (!engine->isReadNotificationEnabled()) {
        engine->setReadNotificationEnabled(true, false);
    }
}

// Back to the state from before the nesting. The saved state is cleared after every use, also where
// there is nothing to put back: left standing, it would keep the next nesting from saving its own,
// and turn on again what the read limit has turned off by then.
void AbstractSerialPrivate::restoreReadNotifier()
{
    if (!readNotifierStateSet) {
        return;
    }
    readNotifierStateSet = false;
    // A slot may have closed the port, and its notifier went with it: turning the kind on would
    // make one that watches no port.
    if (q->isOpen() && readNotifierState != engine->isReadNotificationEnabled()) {
        engine->setReadNotificationEnabled(readNotifierState, false);
    }
}

bool AbstractSerialPrivate::flushWriteBuffer()
{
    if (!engine || writeBuffer.isEmpty()) {
        return false;
    }
    const qint64 count = engine->write(writeBuffer.nextBlock(), writeBuffer.nextBlockSize());
    if (count < 0) {
        writeBuffer.clear();
        return false;
    }
    writeBuffer.free(static_cast<qsizetype>(count));
    if (count > 0 && !emittedBytesWritten) {
        emittedBytesWritten = true;
        emit q->bytesWritten(count);
        emittedBytesWritten = false;
    }
    if (writeBuffer.isEmpty() && engine->isWriteNotificationEnabled()) {
        engine->setWriteNotificationEnabled(false, false);
    }
    return count > 0;
}

bool AbstractSerialPrivate::canWriteNotification()
{
    if (engine->isWriteNotificationEnabled()) {
        engine->setWriteNotificationEnabled(false, false);
    }
    const qsizetype before = writeBuffer.size();
    flushWriteBuffer();
    enableWriteNotifierForData();
    return writeBuffer.size() < before;
}

void AbstractSerialPrivate::enableWriteNotifierForData()
{
    if (!writeBuffer.isEmpty()) {
        engine->setWriteNotificationEnabled(true, false);
    }
}

bool AbstractSerialPrivate::waitForReadyRead(int msecs)
{
    if (!q->isOpen()) {
        report(AbstractSerial::FailNotOpen);
        return false;
    }
    if (isBuffered && !readBuffer.isEmpty()) {
        return true;
    }
    if (!engine->isReadNotificationEnabled()) {
        return waitFor(Awaited::Read, msecs);
    }
    engine->setReadNotificationEnabled(false, false);
    const bool isReady = waitFor(Awaited::Read, msecs);
    if (readNotifierStateSet) {
        readNotifierState = true; // what was saved meanwhile was the state of the wait
    }
    if (q->isOpen() && !isReadLimitReached()) {
        enableReadNotifier();
    }
    return isReady;
}

bool AbstractSerialPrivate::waitForBytesWritten(int msecs)
{
    if (!q->isOpen()) {
        report(AbstractSerial::FailNotOpen);
        return false;
    }
    if (isBuffered && writeBuffer.isEmpty()) {
        return false;
    }
    return waitFor(Awaited::Write, msecs);
}

bool AbstractSerialPrivate::waitFor(Awaited awaited, int msecs)
{
    const auto timeout = awaited == Awaited::Read ? AbstractSerial::FailWaitReadTimeout
                                                  : AbstractSerial::FailWaitWriteTimeout;
    QElapsedTimer timer;
    timer.start();
    bool checkRead = true;
    bool hasProgress = true;
    for (;;) {
        // The engine takes -1 as a single look, so a wait without limit ends at once, too.
        const int left =
            msecs == -1 ? -1 : static_cast<int>(qMax<qint64>(0, msecs - timer.elapsed()));
        bool readyToRead = false;
        bool readyToWrite = false;
        // A port that claims to be ready and moves nothing must not hold the caller for ever.
        const bool isOver = !hasProgress && left <= 0;
        if (isOver
            || !engine->waitForReadOrWrite(&readyToRead, &readyToWrite, checkRead,
                                           !writeBuffer.isEmpty(), left)) {
            report(timeout);
            return false;
        }
        hasProgress = false;
        if (readyToRead) {
            const bool wasRead = canReadNotification();
            // Either what was awaited came, or writing is awaited and the reader can take nothing
            // more.
            if (wasRead == (awaited == Awaited::Read)) {
                return wasRead;
            }
            // Unbuffered bytes stay in the port and would answer every further look at once.
            checkRead = isBuffered;
            hasProgress = wasRead;
        }
        if (readyToWrite && canWriteNotification()) {
            if (awaited == Awaited::Write) {
                return true;
            }
            hasProgress = true;
        }
    }
}
