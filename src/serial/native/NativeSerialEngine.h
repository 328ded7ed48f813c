#pragma once

#include "serial/AbstractSerialEngine.h"

class AbstractSerialNotifier;
class NativeSerialEnginePrivate;

/// The engine of the platform: over the kernel's terminals on Linux, over the communications
/// functions on Windows.
///
/// What platforms share is written once, in NativeSerialEngine.cpp. A platform's own folder has
/// NativeSerialEnginePrivate, which opens the port and moves blocks of bytes, NativeSerialNotifier,
/// and NativeSerialEnginePort.cpp with the operations of this class that are one call to the
/// system.
///
/// - The port name is the name of a node in /dev on Linux, where a name with a slash is taken as a
///   path, and "COM7" and the like on Windows. A new engine has the name of the first on-board
///   port: "ttyS0", "COM1".
/// - A port that anybody has open can't be opened. Opening makes it carry bytes as they are; rate,
///   size, parity, stop bits and flow control by lines are left as found.
/// - Settings reach the driver whole, in one step, and are refused whole.
class NativeSerialEngine final : public AbstractSerialEngine
{
    Q_OBJECT

public:
    explicit NativeSerialEngine(QObject *parent = nullptr);
    ~NativeSerialEngine() override;

    /// On Linux it drops what the port received before.
    bool open(QIODevice::OpenMode mode) override;
    /// On Linux it waits up to 5000 ms for the output to leave; what didn't is dropped.
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
    /// The modem lines; LineErr alone if the input lines can't be read. Without the two output
    /// lines, and without an error, if a driver of Windows doesn't tell those.
    AbstractSerial::LineStatus lineStatus() override;
    /// A negative time counts as 0.
    bool sendBreak(int msecs) override;
    bool setBreak(bool set) override;
    /// On Linux false if the output didn't leave within 5000 ms.
    bool flush() override;
    bool reset() override;

    /// Bytes that wait in the port; -1 on failure, and on Windows once after an error on the line.
    /// A terminal of Linux has no counterpart to error flags that are cleared by asking.
    qint64 bytesAvailable() const override;
    /// Reads in transfers of at most 256 bytes. One that finds less than asked waits for the rest
    /// for totalReadConstantTimeout(), if that isn't 0, and never longer than 5000 ms. On Linux
    /// what came by then ends the read as a short transfer. On Windows the transfer is given up
    /// then, but not cancelled: what comes for it later goes to the read under way by then, as much
    /// as that one asked for, and is lost if there is none.
    qint64 read(char *data, qint64 maxSize) override;
    /// Writes in transfers of at most 512 bytes, each within 5000 ms. Nothing at all answers -1.
    qint64 write(const char *data, qint64 size) override;
    /// While a notifier watches a port of Windows for what is asked here, the driver takes no
    /// second wait and this fails at once.
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
