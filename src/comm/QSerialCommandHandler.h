#pragma once

#include "comm/CommandHandlerInterface.h"

#include <QStringList>

class AbstractSerial;
class Reply;
class Request;
class TraceCommand;

/// The transport for everything that looks like a serial port: the module's USB virtual COM port
/// and RS485 adapters alike.
///
/// It owns one port, watches the list of ports and tells USB modules from other ports as they come
/// and go. An exchange writes nine bytes and polls for nine bytes, 51 attempts 10 ms apart.
///
/// A module that doesn't answer in time is reported as detached, yet the port stays open and
/// isConnected() true: it is for the receiver of the signal to decide what follows. Bytes that come
/// after their time-out stay in the port and are taken for the answer to the next request, since
/// the wire has no marker to resynchronise on; only the next open ends that.
class QSerialCommandHandler : public CommandHandlerInterface
{
    Q_OBJECT
    Q_INTERFACES(CommandHandlerInterface)

public:
    /// Watches the list of ports; opens nothing.
    QSerialCommandHandler();

    /// Opens @p port as it is found: the line's settings come with setBaudrate(), and a USB virtual
    /// port needs none. An open port fails to open twice and ends closed.
    bool openDevice(const QString &port);
    /// Reports the ports that are there already through the same signals as later ones. To be
    /// called once, when those signals are connected.
    void reportAvailableDevices();
    /// Writes one datagram if the port is open, and doesn't look at the outcome.
    void sendRequest(Request *request);
    /// Waits for one datagram, at most about half a second. A new record that the caller owns, null
    /// on a time-out, which is also reported by handleDetachedDevice().
    Reply *waitForReply(char address);
    /// One attempt to take nine bytes, without a wait. A new record that the caller owns, or null.
    Reply *readDatagram();

    void setBaudrate(int baudrate) override;
    void sendCommand(Command *command) override;
    Command *readReply(char address) override;
    SerialDeviceEnumerator *deviceEnumerator() override;
    /// "V 1.05", or "Bootloader V 1.05" of a module in its boot loader; empty without an answer.
    QString firmwareVersion(char address) override;
    QString versionText(char address) override;
    /// Always true.
    bool closeDevice() override;
    bool reopenDevice() override;

signals:
    void handleAttachedUsbDevice(QString port, QString description);
    void handleAttachedSerialDevice(QString port, QString description);
    void handleDetachedDevice(QString port);
    void requestedValue(char address, char motorBank, char type, int value);
    void requestResult(char address, char motorBank, char command, char status, int value);
    void requestedTraceValue(char address, char motorBank, char type, int value);
    void requestedGlobalParameter(char address, char type, char motorBank, char value);
    void requestedIOValue(char address, char type, char motorBank, int value);
    void handleHistoryMessage(QString message);

public slots:
    /// @p list is the whole set of ports now present.
    void changedSerialDevices(QStringList list);
    void slotRead();
    void slotWrite();
    void slotException();
    /// The gate of every guarded slot follows the line CTS, without the port being closed or
    /// opened.
    void slotCts(bool value);
    void slotDsr(bool value);
    void slotRing(bool value);
    void doRequest(char address, char command, char type, char motorBank, int value);
    void getAxisParameter(char address, char motorBank, char type) override;
    void setAxisParameter(char address, char motorBank, char type, int value);
    void getGlobalParameter(char address, char type, char motorBank);
    void getIOValue(char address, char type, char motorBank);
    /// Reports by requestedValue(), in which the type and the bank have swapped their places
    /// against the signal's parameter names. That is kept by design.
    void setIOValue(char address, char type, char motorBank, int value);
    void doMove(char address, char motorBank, char command, char type, int value);
    void doROX(char address, char motorBank, char roxCommand, int value);
    /// Asks for the values in the order of the list, which stays the caller's, as its entries do.
    void requestTraceValues(QList<TraceCommand *> *); // unnamed by design, as introspection shows
    void doDirectRequest(Command *request, Command *reply) override;
    void doDirectRequestWithoutAnswer(Command *request) override;

private:
    bool isUsbConstruct() const;
    bool isUsbModule(const QString &port);
    void createDevice();
    Reply *pollForReply(char address);
    Reply *waitForReplyOfUsbConstruct(char address);
    void dumpReply(const Reply &reply) const;
    bool isDeviceOpen() const;
    qint64 bytesAvailable() const;

    /// One exchange. @p onReply gets the reply, if one came; @p log asks for history messages.
    template <typename ReplyHandler>
    void exchange(Request request, bool log, ReplyHandler onReply);

    SerialDeviceEnumerator *m_enumerator; ///< the process's own, not owned
    QStringList m_usbDevices;
    QStringList m_serialDevices;
    QString m_portName; ///< of the last successful open; stays after a close
    AbstractSerial *m_device = nullptr; ///< made at the first open, a child, then kept for good
};
