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

    /// A new engine of the platform, owned by @p parent.
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

    virtual bool open(QIODevice::OpenMode mode) = 0;
    virtual bool close() = 0;

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

    virtual bool setDtr(bool set) = 0;
    virtual bool setRts(bool set) = 0;
    virtual AbstractSerial::LineStatus lineStatus() = 0;
    virtual bool sendBreak(int msecs) = 0;
    virtual bool setBreak(bool set) = 0;
    virtual bool flush() = 0;
    virtual bool reset() = 0;

    /// Bytes that wait in the port, -1 on failure.
    virtual qint64 bytesAvailable() const = 0;
    virtual qint64 read(char *data, qint64 maxSize) = 0;
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
    bool readNotification();
    bool writeNotification();
    bool exceptionNotification();
    bool lineNotification();

protected:
    AbstractSerialEngine(std::unique_ptr<AbstractSerialEnginePrivate> state, QObject *parent);

    std::unique_ptr<AbstractSerialEnginePrivate> d;
};
