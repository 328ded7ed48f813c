#pragma once

#include "serial/AbstractSerialEngine.h"

class AbstractSerialNotifier;
class NativeSerialEnginePrivate;

/// The engine over the communications functions of Windows.
///
/// - The port name is "COM7" and the like. A new engine has the name "COM1".
/// - A port that anybody has open can't be opened. Opening makes it carry bytes as they are; rate,
///   size, parity, stop bits and flow control by lines are left as found.
/// - Settings reach the driver whole, in one step, and are refused whole.
/// - A transfer that takes longer than 5000 ms is given up and counts as failed, but isn't
///   cancelled: what comes for a read later is swallowed by it.
class NativeSerialEngine final : public AbstractSerialEngine
{
    Q_OBJECT

public:
    explicit NativeSerialEngine(QObject *parent = nullptr);
    ~NativeSerialEngine() override;

    bool open(QIODevice::OpenMode mode) override;
    bool close() override;

    bool setBaudRate(int rate, AbstractSerial::BaudRateDirection dir) override;
    bool setDataBits(AbstractSerial::DataBits value) override;
    bool setParity(AbstractSerial::Parity value) override;
    bool setStopBits(AbstractSerial::StopBits value) override;
    bool setFlowControl(AbstractSerial::Flow value) override;

    void setCharIntervalTimeout(int usecs) override;
    int charIntervalTimeout() const override;
    void setTotalReadConstantTimeout(int msecs) override;
    int totalReadConstantTimeout() const override;

    bool setDtr(bool set) override;
    bool setRts(bool set) override;
    /// The modem lines. Without the two output lines, and without an error, if only those can't be
    /// read.
    AbstractSerial::LineStatus lineStatus() override;
    bool sendBreak(int msecs) override;
    bool setBreak(bool set) override;
    bool flush() override;
    bool reset() override;

    /// Bytes that wait in the port; -1 on failure, and once after an error on the line.
    qint64 bytesAvailable() const override;
    /// Reads in transfers of at most 256 bytes; one that finds less than asked waits for the rest.
    qint64 read(char *data, qint64 maxSize) override;
    /// Writes in transfers of at most 512 bytes.
    qint64 write(const char *data, qint64 size) override;
    bool waitForReadOrWrite(bool *readyToRead, bool *readyToWrite, bool checkRead, bool checkWrite,
                            int msecs) override;

    bool isReadNotificationEnabled() const override;
    void setReadNotificationEnabled(bool enable, bool onClose) override;
    bool isWriteNotificationEnabled() const override;
    void setWriteNotificationEnabled(bool enable, bool onClose) override;
    bool isExceptionNotificationEnabled() const override;
    void setExceptionNotificationEnabled(bool enable, bool onClose) override;
    bool isLineNotificationEnabled() const override;
    void setLineNotificationEnabled(bool enable, bool onClose) override;

    qint64 firstQueueSize() const override;
    qint64 secondQueueSize() const override;

private:
    NativeSerialEnginePrivate &state() const;
    void setNotification(void (AbstractSerialNotifier::*setter)(bool), bool enable, bool onClose);
    void dropNotifier();
};
