#pragma once

#include "serial/AbstractSerial.h"

#include <QObject>

#include <memory>

class AbstractSerialEnginePrivate;
class AbstractSerialEngineReceiver;

/// The only place that touches a real port: one interface, one NativeSerialEngine each platform.
///
/// Operations answer false, -1 or LineErr on failure and have no messages of their own. An engine
/// lives as long as its device and opens and closes a port any number of times; its destructor
/// closes the port. It runs on the thread of its device.
class AbstractSerialEngine : public QObject
{
    Q_OBJECT

public:
    ~AbstractSerialEngine() override;

    /// A new engine of the platform, null if the platform has none. It is a child of @p parent. The
    /// device passes itself and deletes the engine with its own state, before its children go.
    static AbstractSerialEngine *createEngine(QObject *parent = nullptr);

    /// Who hears of the port's events; not owned, may be null.
    void setReceiver(AbstractSerialEngineReceiver *receiver);

    /// Port name without any prefix of the platform ("ttyACM0", "COM3").
    QString deviceName() const;
    void setDeviceName(const QString &name);

    /// Rate in baud. For both directions together 0 if they differ.
    int baudRate(AbstractSerial::BaudRateDirection direction) const;
    AbstractSerial::DataBits dataBits() const;
    AbstractSerial::Parity parity() const;
    AbstractSerial::StopBits stopBits() const;
    AbstractSerial::Flow flowControl() const;
    /// The platform's handle of the open port, -1 while closed.
    qintptr descriptor() const;

    /// Opens the port named deviceName() for this program alone and reads its line settings back
    /// into the getters. False if that failed; the port is closed again then.
    virtual bool open(QIODevice::OpenMode mode) = 0;
    /// Gives the port back with the timeouts that it had. The line settings stay as they are: that
    /// asymmetry is by design. True as well if no port is open.
    virtual bool close() = 0;

    /// The setters of the line answer false for an undefined value, for one that doesn't go with
    /// the present state, and for one that the driver refuses. The getter keeps the old value then;
    /// a value that the driver refused is sent again with the next setter.
    ///
    /// A rate in baud, from 1; @p dir must be AllBaud.
    virtual bool setBaudRate(int rate, AbstractSerial::BaudRateDirection dir) = 0;
    virtual bool setDataBits(AbstractSerial::DataBits value) = 0;
    virtual bool setParity(AbstractSerial::Parity value) = 0;
    virtual bool setStopBits(AbstractSerial::StopBits value) = 0;
    virtual bool setFlowControl(AbstractSerial::Flow value) = 0;

    /// Gap allowed between two characters, in microseconds.
    virtual void setCharIntervalTimeout(int usecs) = 0;
    virtual int charIntervalTimeout() const = 0;
    /// Limit of a whole read in milliseconds; -1 lets the engine compute it from the line.
    virtual void setTotalReadConstantTimeout(int msecs) = 0;
    virtual int totalReadConstantTimeout() const = 0;

    /// Turns an output line on or off.
    virtual bool setDtr(bool set) = 0;
    virtual bool setRts(bool set) = 0;
    /// The modem lines that are on, LineErr if they can't be read.
    virtual AbstractSerial::LineStatus lineStatus() = 0;
    /// Holds the break condition for @p msecs milliseconds and blocks for that time.
    virtual bool sendBreak(int msecs) = 0;
    /// Holds or releases the break condition.
    virtual bool setBreak(bool set) = 0;
    /// Waits until everything written has left the port.
    virtual bool flush() = 0;
    /// Drops what waits in the port, in both directions.
    virtual bool reset() = 0;

    /// Bytes that wait in the port, -1 on failure.
    virtual qint64 bytesAvailable() const = 0;
    /// Reads up to @p maxSize bytes and waits a limited time if less is there. Answers how many
    /// were read, 0 on failure.
    virtual qint64 read(char *data, qint64 maxSize) = 0;
    /// Writes @p size bytes. Answers @p size, or -1 if not all of them, or none, could be written.
    virtual qint64 write(const char *data, qint64 size) = 0;
    /// Waits at most @p msecs for one of the asked events; a negative time only polls.
    virtual bool waitForReadOrWrite(bool *readyToRead, bool *readyToWrite, bool checkRead,
                                    bool checkWrite, int msecs) = 0;

    /// The four kinds of notification. With @p onClose set the kind is turned off and the
    /// notifier is dropped; a later opening makes a new one.
    virtual bool isReadNotificationEnabled() const = 0;
    virtual void setReadNotificationEnabled(bool enable, bool onClose) = 0;
    virtual bool isWriteNotificationEnabled() const = 0;
    virtual void setWriteNotificationEnabled(bool enable, bool onClose) = 0;
    virtual bool isExceptionNotificationEnabled() const = 0;
    virtual void setExceptionNotificationEnabled(bool enable, bool onClose) = 0;
    virtual bool isLineNotificationEnabled() const = 0;
    virtual void setLineNotificationEnabled(bool enable, bool onClose) = 0;

    /// Sizes of the port's two queues: unknown, always -1.
    virtual qint64 firstQueueSize() const = 0;
    virtual qint64 secondQueueSize() const = 0;

public slots:
    /// Each calls the receiver and answers what it answered, false without one.
    bool readNotification();
    bool writeNotification();
    bool exceptionNotification();
    bool lineNotification();

protected:
    /// @p state is the platform's own; the engine owns it.
    AbstractSerialEngine(std::unique_ptr<AbstractSerialEnginePrivate> state, QObject *parent);

    std::unique_ptr<AbstractSerialEnginePrivate> d;
};
