#pragma once

#include <QDateTime>
#include <QDebug>
#include <QIODevice>
#include <QMap>
#include <QStringList>

#include <memory>

class AbstractSerialPrivate;

/// The serial port as a QIODevice. It knows no platform: all port work goes through an
/// AbstractSerialEngine, which it makes and owns.
///
/// No operation throws. A failure shows as a false or negative result, as the QIODevice's error
/// string and, if enableEmitStatus() asked for it, as signalStatus().
///
/// Opened without QIODevice::Unbuffered, the device collects what comes as the event loop runs, and
/// hands on what is written when the port can take it. Unbuffered, every read, write and count goes
/// to the port at once, and a read of more than waits there blocks until the engine gives up: ask
/// bytesAvailable() first. In both ways the device is sequential.
///
/// Every operation on a port, the waits included, answers false, -1 or LineErr on a device that is
/// not open, and reports FailNotOpen.
///
/// A device lives on the thread that made it. Its notifications come through that thread's event
/// loop. It must not be deleted from a slot of one of its own signals.
class AbstractSerial : public QIODevice
{
    Q_OBJECT

public:
    /// Index into the table of rates; the rate itself is what reaches the engine.
    enum BaudRate : int {
        BaudRateUndefined = -1,
        BaudRate50,
        BaudRate75,
        BaudRate110,
        BaudRate134,
        BaudRate150,
        BaudRate200,
        BaudRate300,
        BaudRate600,
        BaudRate1200,
        BaudRate1800,
        BaudRate2400,
        BaudRate4800,
        BaudRate9600,
        BaudRate14400,
        BaudRate19200,
        BaudRate38400,
        BaudRate56000,
        BaudRate57600,
        BaudRate76800,
        BaudRate115200,
        BaudRate128000,
        BaudRate230400,
        BaudRate256000,
        BaudRate460800,
        BaudRate500000,
        BaudRate576000,
        BaudRate921600,
        BaudRate1000000,
        BaudRate1152000,
        BaudRate1500000,
        BaudRate2000000,
        BaudRate2500000,
        BaudRate3000000,
        BaudRate3500000,
        BaudRate4000000
    };

    /// Direction in which a rate is meant. The engines here set only both together.
    enum BaudRateDirectionFlag { InputBaud = 1, OutputBaud = 2, AllBaud = InputBaud | OutputBaud };
    Q_DECLARE_FLAGS(BaudRateDirection, BaudRateDirectionFlag)

    /// Bits of one character.
    enum DataBits : int { DataBitsUndefined = -1, DataBits5, DataBits6, DataBits7, DataBits8 };
    /// Check bit after the data bits.
    enum Parity : int {
        ParityUndefined = -1,
        ParityNone,
        ParityOdd,
        ParityEven,
        ParityMark,
        ParitySpace
    };
    /// Length of the pause after a character, in bits.
    enum StopBits : int { StopBitsUndefined = -1, StopBits1, StopBits1_5, StopBits2 };
    /// How the two ends hold each other up.
    enum Flow : int { FlowUndefined = -1, FlowDisable, FlowHardware, FlowXonXoff };

    /// Modem lines, as a set.
    enum LineStatusFlag {
        LineLE = 1, ///< line enable
        LineDTR = 2, ///< data terminal ready is on
        LineRTS = 4, ///< request to send is on
        LineST = 8, ///< secondary transmit
        LineSR = 16, ///< secondary receive
        LineCTS = 32, ///< clear to send is on
        LineDCD = 64, ///< carrier detect is on
        LineRI = 128, ///< ring indicator is on
        LineDSR = 256, ///< data set ready is on
        LineErr = 32768 ///< the lines could not be read
    };
    Q_DECLARE_FLAGS(LineStatus, LineStatusFlag)

    /// Outcome of an operation. Up to 31 it is a success, from 32 on a failure.
    enum Status : int {
        StatusNoError = 0,
        StatusOpened = 1,
        StatusClosed = 2,
        StatusBaudRateSet = 3,
        StatusParitySet = 4,
        StatusDataBitsSet = 5,
        StatusStopBitsSet = 6,
        StatusFlowSet = 7,
        StatusCharTimeoutSet = 8,
        StatusDtrChanged = 9,
        StatusRtsChanged = 10,
        StatusLinesRead = 11,
        StatusBreakSent = 12,
        StatusBreakSet = 13,
        StatusFlushed = 14,
        StatusReset = 15,
        FailOpening = 32,
        FailNotOpen = 33,
        FailModeUnsupported = 34,
        FailModeUndefined = 35,
        FailInvalidDescriptor = 36,
        FailSaveOldSettings = 37,
        FailGetCurrentSettings = 38,
        FailSetDefaultSettings = 39,
        FailAlreadyOpen = 40,
        FailSetOldSettings = 41,
        FailCloseDescriptor = 42,
        FailClose = 43,
        FailSetBaudRate = 64,
        FailSetDataBits = 65,
        FailSetParity = 66,
        FailSetStopBits = 67,
        FailSetFlow = 68,
        FailSetCharInterval = 69,
        FailSetTotalRead = 70,
        FailBytesAvailable = 96,
        FailSetDtr = 97,
        FailSetRts = 98,
        FailLineStatus = 99,
        FailWaitReadIo = 100,
        FailWaitReadTimeout = 101,
        FailWaitWriteIo = 102,
        FailWaitWriteTimeout = 103,
        FailReadIo = 104,
        FailWriteIo = 105,
        FailFlush = 106,
        FailSendBreak = 107,
        FailSetBreak = 108,
        FailReset = 109
    };

    /// A closed device with a new engine of the platform. Where the platform has none, open()
    /// fails and all else is as on a closed device, with empty tables of texts.
    explicit AbstractSerial(QObject *parent = nullptr);
    /// Closes the port if it is open.
    ~AbstractSerial() override;

    /// Always true.
    bool isSequential() const override;
    /// Opens the port named by setDeviceName() with the line parameters that it has.
    /// @p mode is any of ReadOnly, WriteOnly and Unbuffered; Append, Truncate, Text and NotOpen are
    /// refused. Reports StatusOpened, or returns false and reports FailAlreadyOpen (the port stays
    /// open), FailModeUnsupported or FailOpening.
    bool open(OpenMode mode) override;
    /// Closes the port and drops what is still in the buffers, unwritten bytes included. Reports
    /// StatusClosed; on a closed device FailClose and nothing else happens.
    void close() override;
    /// Drops what is in the buffers and in the queues of the port. Reports StatusReset, or returns
    /// false and reports FailReset. What QIODevice itself has already taken over stays.
    bool reset() override;
    /// Bytes that can be read: what QIODevice holds, with the buffer, or unbuffered with what waits
    /// in the port. A port that can't be asked counts as -1 there.
    qint64 bytesAvailable() const override;
    /// Bytes that were written and not yet given to the port; 0 on an unbuffered device.
    qint64 bytesToWrite() const override;
    /// Whether an end of line is in the buffers. Bytes in the port are not looked at.
    bool canReadLine() const override;
    /// Waits until there is something new to read, and returns whether there is. @p msecs is the
    /// limit in milliseconds, -1 a single look without waiting. Bytes that are waiting to be
    /// written are written meanwhile. Buffered bytes are an answer at once. At the limit false and
    /// FailWaitReadTimeout.
    bool waitForReadyRead(int msecs) override;
    /// Waits until a block of the buffer was written, and returns whether it was. @p msecs as for
    /// waitForReadyRead(). Arriving bytes are taken meanwhile; a buffer that can take no more of
    /// them ends the wait with false. False at the limit, with FailWaitWriteTimeout. With nothing
    /// to be written, a buffered device answers false at once; an unbuffered one, which never has
    /// anything, waits until its limit.
    bool waitForBytesWritten(int msecs) override;

    /// Names the port to open, without any prefix of the platform ("ttyACM0", "COM3"). Ignored
    /// while open.
    void setDeviceName(const QString &name);
    /// The name of the port, empty without an engine.
    QString deviceName() const;

    /// Sets the speed to @p rate baud. Reports StatusBaudRateSet, or returns false and reports
    /// FailSetBaudRate; a rate below 1 doesn't reach the engine.
    bool setBaudRate(int rate, BaudRateDirection dir = AllBaud);
    /// Sets the speed that @p value stands for. A value without a rate fails as a rate below 1.
    bool setBaudRate(BaudRate value, BaudRateDirection dir = AllBaud);
    /// Sets the speed to the first number in @p text, be it in the table or not. A text without a
    /// number, or with one beyond an int, fails as a rate below 1.
    bool setBaudRate(const QString &text, BaudRateDirection dir = AllBaud);
    /// The speed as the text "%1 baud", also for a rate outside the table; the text of the
    /// undefined rate if the engine knows none, for both directions also if they differ.
    QString baudRate(BaudRateDirection dir = AllBaud) const;

    /// Reports StatusDataBitsSet, or returns false and reports FailSetDataBits.
    bool setDataBits(DataBits value);
    /// Sets the value whose text in the table is exactly @p text; any other text fails.
    bool setDataBits(const QString &text);
    /// Text of the present value, empty for a value outside the table.
    QString dataBits() const;

    /// Reports StatusParitySet, or returns false and reports FailSetParity.
    bool setParity(Parity value);
    /// Sets the value whose text in the table is exactly @p text; any other text fails.
    bool setParity(const QString &text);
    /// Text of the present value, empty for a value outside the table.
    QString parity() const;

    /// Reports StatusStopBitsSet, or returns false and reports FailSetStopBits.
    bool setStopBits(StopBits value);
    /// Sets the value whose text in the table is exactly @p text; any other text fails.
    bool setStopBits(const QString &text);
    /// Text of the present value, empty for a value outside the table.
    QString stopBits() const;

    /// Reports StatusFlowSet, or returns false and reports FailSetFlow.
    bool setFlowControl(Flow value);
    /// Sets the value whose text in the table is exactly @p text; any other text fails.
    bool setFlowControl(const QString &text);
    /// Text of the present value, empty for a value outside the table.
    QString flowControl() const;

    /// Gap allowed between two characters, in microseconds. Reports nothing but FailNotOpen.
    void setCharIntervalTimeout(int usecs);
    /// Limit of a whole read in milliseconds; -1 lets the engine compute it from the line. Reports
    /// nothing but FailNotOpen.
    void setTotalReadConstantTimeout(int msecs);

    /// Turns the line DTR on or off. Reports StatusDtrChanged, or returns false and reports
    /// FailSetDtr.
    bool setDtr(bool set);
    /// Turns the line RTS on or off. Reports StatusRtsChanged, or returns false and reports
    /// FailSetRts.
    bool setRts(bool set);
    /// The modem lines as they are now. Reports StatusLinesRead; with LineErr in the answer
    /// FailLineStatus, or FailNotOpen on a closed device, whose answer is LineErr alone.
    LineStatus lineStatus();
    /// Holds the break condition for @p msecs milliseconds, blocking; a negative time counts as 0.
    /// Reports StatusBreakSent, or returns false and reports FailSendBreak.
    bool sendBreak(int msecs);
    /// Begins or ends the break condition. Reports StatusBreakSet, or returns false and reports
    /// FailSetBreak.
    bool setBreak(bool set);
    /// Gives the first block of the write buffer to the port, or if nothing was written waits until
    /// the port has sent all. Reports StatusFlushed, or returns false and reports FailFlush. A
    /// block that the port refuses takes the whole write buffer with it.
    bool flush();

    /// The message of @p status, translated. A number that is no status gets one that names it.
    QString statusToString(Status status) const;
    /// Whether signalStatus() is emitted; it is not at the start.
    void enableEmitStatus(bool enable);
    /// What enableEmitStatus() was last told.
    bool isEmitStatus() const;

    /// Limit of the read buffer in bytes; 0, the value at the start, is no limit.
    qint64 readBufferSize() const;
    /// Limits the read buffer to @p size bytes; 0 or less is no limit. At the limit the port is no
    /// longer watched for arriving bytes, until a read or a higher limit makes room.
    void setReadBufferSize(qint64 size);

    /// Texts of the speeds in use, the undefined one first. This list and the four after it are
    /// made at the first call in the process and are then the same for every device.
    QStringList listBaudRate() const;
    QStringList listDataBits() const; ///< texts of DataBits, the undefined one first
    QStringList listParity() const; ///< texts of Parity, the undefined one first
    QStringList listStopBits() const; ///< texts of StopBits, the undefined one first
    QStringList listFlowControl() const; ///< texts of Flow, the undefined one first

    QMap<int, QString> baudRateMap() const; ///< BaudRate to text, with the undefined value
    QMap<int, QString> dataBitsMap() const; ///< DataBits to text, with the undefined value
    QMap<int, QString> parityMap() const; ///< Parity to text, with the undefined value
    QMap<int, QString> stopBitsMap() const; ///< StopBits to text, with the undefined value
    QMap<int, QString> flowControlMap() const; ///< Flow to text, with the undefined value

signals:
    /// An operation ended: the message of its status, and when. Only after enableEmitStatus().
    void signalStatus(QString status, QDateTime current);
    /// The line reported an error.
    void exception();
    /// The line CTS changed to @p value. The last states of the three lines are the process's, not
    /// the device's.
    void ctsChanged(bool value);
    /// The line DSR changed to @p value.
    void dsrChanged(bool value);
    /// The ring indicator changed to @p value.
    void ringChanged(bool value);

protected:
    /// Moves up to @p maxSize bytes to @p data, from the buffer, or unbuffered from the port, and
    /// returns how many; 0 if the buffer is empty. On failure -1 with FailNotOpen, or the engine's
    /// negative answer with FailReadIo.
    qint64 readData(char *data, qint64 maxSize) override;
    /// As QIODevice does it.
    qint64 readLineData(char *data, qint64 maxSize) override;
    /// Takes @p size bytes: into the buffer, which the event loop empties, or unbuffered to the
    /// port. Returns how many were taken. On failure -1 with FailNotOpen, or the engine's negative
    /// answer with FailWriteIo.
    qint64 writeData(const char *data, qint64 size) override;

private:
    friend class AbstractSerialPrivate;
    std::unique_ptr<AbstractSerialPrivate> d;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(AbstractSerial::BaudRateDirection)
Q_DECLARE_OPERATORS_FOR_FLAGS(AbstractSerial::LineStatus)

/// Debug output: the name of the type with the value's short text, as in DataBits("8"). A value
/// outside its table prints as "Undefined". The modem lines print a word only for a single line.
QDebug operator<<(QDebug debug, AbstractSerial::BaudRate value);
QDebug operator<<(QDebug debug, AbstractSerial::DataBits value);
QDebug operator<<(QDebug debug, AbstractSerial::Parity value);
QDebug operator<<(QDebug debug, AbstractSerial::StopBits value);
QDebug operator<<(QDebug debug, AbstractSerial::Flow value);
QDebug operator<<(QDebug debug, AbstractSerial::LineStatus value);
