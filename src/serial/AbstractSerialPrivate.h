#pragma once

#include "serial/AbstractSerial.h"
#include "serial/AbstractSerialEngine.h"
#include "serial/AbstractSerialEngineReceiver.h"
#include "serial/RingBuffer.h"

#include <QMap>
#include <QString>

#include <memory>

/// The state of an AbstractSerial and the work behind its operations: status reports, the two
/// buffers, and what turns the engine's notifications into the device's signals.
///
/// The flags guard against re-entry on the device's one thread, from a slot that runs the event
/// loop; nothing here is locked.
class AbstractSerialPrivate : public AbstractSerialEngineReceiver
{
public:
    /// The state of @p device, with a new engine and the tables of texts. Without an engine the
    /// tables stay empty. Has the engine tell this object of the port's events.
    explicit AbstractSerialPrivate(AbstractSerial *device);
    ~AbstractSerialPrivate() override;
    Q_DISABLE_COPY_MOVE(AbstractSerialPrivate)

    bool readNotification() override;
    bool writeNotification() override;
    bool exceptionNotification() override;
    bool lineNotification() override;

    /// Reports @p status: a failure becomes the device's error string, and if emitStatus is set,
    /// any status is emitted with the date and time.
    void report(AbstractSerial::Status status);

    /// The shape of all settings and controls: false and FailNotOpen on a closed device, else the
    /// answer of @p operation, which is called with the engine, reported as @p success or
    /// @p failure.
    template <typename Operation>
    bool perform(AbstractSerial::Status success, AbstractSerial::Status failure,
                 Operation operation);

    /// Empties both buffers and gives their memory back.
    void clearBuffers();
    /// Writes the first piece of writeBuffer to the port. A refusal drops the whole buffer: the
    /// bytes are lost and not tried again. Returns whether anything was written.
    bool flushWriteBuffer();
    /// Limits readBuffer to @p size bytes, 0 for no limit; see AbstractSerial::setReadBufferSize().
    void setReadBufferSize(qint64 size);
    /// Whether the size of readBuffer is limited.
    bool hasReadLimit() const { return readBufferMaxSize > 0; }
    /// Whether readBuffer holds as much as it may.
    bool isReadLimitReached() const
    {
        return hasReadLimit() && readBuffer.size() >= readBufferMaxSize;
    }

    qint64 readData(char *data, qint64 maxSize); ///< see AbstractSerial::readData()
    qint64 writeData(const char *data, qint64 size); ///< see AbstractSerial::writeData()
    bool waitForReadyRead(int msecs); ///< see AbstractSerial::waitForReadyRead()
    bool waitForBytesWritten(int msecs); ///< see AbstractSerial::waitForBytesWritten()

    // All maps run from the value of the enumeration, with the undefined value -1, to its text.
    QMap<int, QString> baudRateMap;
    QMap<int, QString> dataBitsMap;
    QMap<int, QString> parityMap;
    QMap<int, QString> stopBitsMap;
    QMap<int, QString> flowMap;
    qint64 readBufferMaxSize = 0; ///< limit of readBuffer in bytes; 0 is no limit
    RingBuffer readBuffer; ///< bytes taken from the port and not yet read
    RingBuffer writeBuffer; ///< bytes written and not yet given to the port
    bool isBuffered = false; ///< opened without QIODevice::Unbuffered
    bool readNotifierCalled = false; ///< a read notification is being handled
    bool readNotifierState = false; ///< the read notifier's state saved during nesting
    bool readNotifierStateSet = false; ///< readNotifierState is valid
    bool emittedReadyRead = false; ///< readyRead() is being emitted
    bool emittedBytesWritten = false; ///< bytesWritten() is being emitted
    bool emitStatus = false; ///< signalStatus() is to be emitted
    std::unique_ptr<AbstractSerialEngine> engine; ///< null if the platform has none
    AbstractSerial *q; ///< the device

private:
    enum class Awaited { Read, Write };

    bool canReadNotification();
    bool readFromDevice();
    void enableReadNotifier();
    void restoreReadNotifier();
    bool canWriteNotification();
    void enableWriteNotifierForData();
    bool waitFor(Awaited awaited, int msecs);

    /// The modem lines as they were last seen. They are the process's, not the device's: a second
    /// device would compare its lines with the first one's. That is kept by design, since only one
    /// port is open at a time.
    static inline AbstractSerial::LineStatus lastLines;
};

template <typename Operation>
bool AbstractSerialPrivate::perform(AbstractSerial::Status success, AbstractSerial::Status failure,
                                    Operation operation)
{
    if (!q->isOpen()) {
        report(AbstractSerial::FailNotOpen);
        return false;
    }
    const bool done = operation(*engine);
    report(done ? success : failure);
    return done;
}
