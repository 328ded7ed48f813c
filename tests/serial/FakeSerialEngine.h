#pragma once

#include "serial/AbstractSerialEngine.h"

#include <QByteArray>
#include <QStringList>

#include <functional>
#include <optional>

/// An engine without a port: it writes down what it is asked to do and answers what the test wants.
/// A test program that links it gets one from AbstractSerialEngine::createEngine().
class FakeSerialEngine : public AbstractSerialEngine
{
    Q_OBJECT

public:
    explicit FakeSerialEngine(QObject *parent = nullptr);
    ~FakeSerialEngine() override;

    /// Whether createEngine() gives an engine at all; true at the start.
    static void setAvailable(bool available);
    /// The engine made last, null after its end.
    static FakeSerialEngine *last();
    /// The calls to all engines so far, as "name(arguments)". Questions without an effect are left
    /// out: counts, timeouts and whether a notification is on.
    static QStringList &log();

    /// Puts the rates in place that baudRate() answers, in baud.
    void setRates(int input, int output);
    /// Puts the numbers in place that the other getters of line parameters answer.
    void setLine(int dataBits, int parity, int stopBits, int flow);

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
    AbstractSerial::LineStatus lineStatus() override;
    bool sendBreak(int msecs) override;
    bool setBreak(bool set) override;
    bool flush() override;
    bool reset() override;
    qint64 bytesAvailable() const override;
    qint64 read(char *data, qint64 maxSize) override;
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

    /// What one call of waitForReadOrWrite() finds.
    struct Event
    {
        bool read = false;
        bool write = false;
    };

    bool answer = true; ///< of every operation that answers bool, but for a value below 0
    AbstractSerial::LineStatus lines; ///< the modem lines
    QByteArray incoming; ///< bytes that wait in the port
    QByteArray written; ///< bytes that the port took
    std::optional<qint64> countAnswer; ///< of bytesAvailable(), instead of what waits
    std::optional<qint64> readAnswer; ///< of read(), which then reads nothing
    std::optional<qint64> writeAnswer; ///< of write(), which takes that many bytes
    std::function<std::optional<Event>()> nextEvent; ///< of a wait; without one it finds nothing
    bool pushesWrites = false; ///< turning the write notification on calls back at once

private:
    bool note(const QString &call, bool isAccepted = true);
    void noteSwitch(const char *kind, bool &state, bool enable, bool onClose);

    bool m_readEnabled = false;
    bool m_writeEnabled = false;
    bool m_exceptionEnabled = false;
    bool m_lineEnabled = false;
    int m_totalTimeout = 0;
};
