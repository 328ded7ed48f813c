#pragma once

#include "serial/AbstractSerialEngine.h"

class AbstractSerialNotifier;
class NativeSerialEnginePrivate;

/// The engine over the kernel's terminals.
///
/// - The port name is the name of a node in /dev; a name with a slash is taken as a path. A new
///   engine has the name of the first on-board port, "ttyS0".
/// - Only a terminal that nobody else uses can be opened. Opening makes it carry bytes as they
///   are and drops what it received before; rate, size, parity, stop bits and flow control by
///   lines are left as found.
/// - A setting that the driver doesn't take, whether it says so or not, fails its setter, and the
///   line keeps the settings that it had.
/// - The limits of a read are kept here, not in the kernel: see read().
class NativeSerialEngine final : public AbstractSerialEngine
{
    Q_OBJECT

public:
    explicit NativeSerialEngine(QObject *parent = nullptr);
    ~NativeSerialEngine() override;

    bool open(QIODevice::OpenMode mode) override;
    /// Gives the port back, after waiting up to 5000 ms for the output to leave; what didn't is
    /// dropped. Always true.
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
    /// The modem lines; LineErr alone if the terminal has none.
    AbstractSerial::LineStatus lineStatus() override;
    /// Holds the break condition for @p msecs and blocks for that time.
    bool sendBreak(int msecs) override;
    bool setBreak(bool set) override;
    /// Waits until everything written has left the port; false if it didn't within 5000 ms.
    bool flush() override;
    /// Drops what waits in both directions.
    bool reset() override;

    /// Bytes that wait in the port, -1 on failure. A line error is no failure here: a terminal has
    /// no counterpart to error flags that are cleared by asking.
    qint64 bytesAvailable() const override;
    /// Reads in transfers of at most 256 bytes. One that finds less than asked waits for the rest
    /// for totalReadConstantTimeout(), if that isn't 0, and never longer than 5000 ms. What came
    /// by then ends the read as a short transfer. Answers the bytes read, 0 on failure.
    qint64 read(char *data, qint64 maxSize) override;
    /// Writes in transfers of at most 512 bytes, each within 5000 ms. Answers @p size or -1.
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
