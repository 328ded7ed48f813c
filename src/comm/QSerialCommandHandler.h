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

    /// Opens @p port ("ttyACM0", "COM7") as it is found: the line's settings come with
    /// setBaudrate(), and a USB virtual port needs none. False on failure, also while a port is
    /// open already; no port is open then, not even that one.
    bool openDevice(const QString &port);
    /// Reports the ports that are there already through the same signals as later ones. To be
    /// called once, when those signals are connected.
    void reportAvailableDevices();
    /// Writes one datagram if the port is open, and doesn't look at the outcome. @p request stays
    /// the caller's.
    void sendRequest(Request *request);
    /// Waits for one datagram, at most about half a second. A new record that the caller owns, null
    /// on a time-out, which is also reported by handleDetachedDevice().
    /// @param address is only noted on a time-out: any nine bytes are the reply
    Reply *waitForReply(char address);
    /// One attempt to take nine bytes, without a wait. A new record that the caller owns, or null.
    Reply *readDatagram();

    /// Sets the rate of the port, 8 data bits, no parity, one stop bit and no flow control. Before
    /// the first open it only stores the rate, and no later open applies it.
    /// @param baudrate 4800, 9600, 14400, 19200, 38400, 57600 or 115200 baud. Any other number
    /// leaves the rate as it is and sets the rest.
    void setBaudrate(int baudrate) override;
    /// Sends without a guard: with no port open that is a debug line.
    void sendCommand(Command *command) override;
    /// Waits as waitForReply() does, its full time on a closed port, too.
    Command *readReply(char address) override;
    /// The one list of ports of the process.
    SerialDeviceEnumerator *deviceEnumerator() override;
    /// "V 1.05", or "Bootloader V 1.05" of a module in its boot loader; empty without an answer.
    /// Two exchanges.
    QString firmwareVersion(char address) override;
    /// Waits its full time on a closed port, too.
    QString versionText(char address) override;
    /// Always true. The name of the port is kept for reopenDevice().
    bool closeDevice() override;
    /// Opens the port of the last successful openDevice(). On an open port it fails, as
    /// openDevice() does.
    bool reopenDevice() override;

signals:
    /// A USB module was plugged in. @p description is its model, may be empty.
    void handleAttachedUsbDevice(QString port, QString description);
    /// Another port turned up. @p description is always "unknown".
    void handleAttachedSerialDevice(QString port, QString description);
    /// The port that was opened last is gone, and then closed already; or the module didn't answer
    /// in time, and then the port is as it was.
    void handleDetachedDevice(QString port);
    // In the next five, the address is that of the request.
    /// The value of the axis parameter @p type, read or just written.
    void requestedValue(char address, char motorBank, char type, int value);
    /// The reply to doRequest(); @p command and @p status are the reply's own.
    void requestResult(char address, char motorBank, char command, char status, int value);
    /// The value of one entry of a polling pass.
    void requestedTraceValue(char address, char motorBank, char type, int value);
    /// The low 8 bits of a global parameter: 300 arrives as 44.
    void requestedGlobalParameter(char address, char type, char motorBank, char value);
    /// The state of the port @p type of the module.
    void requestedIOValue(char address, char type, char motorBank, int value);
    /// A frame as text, of a slot whose log switch is on: the request before it is sent, the reply
    /// after the slot's result signal.
    void handleHistoryMessage(QString message);

public slots:
    /// Tells of the ports that came and, if it is the one opened last, of the one that went.
    /// @p list is the whole set of ports now present.
    void changedSerialDevices(QStringList list);
    /// Reads nothing: the data is fetched by the exchanges alone. Writes a debug line if more than
    /// one datagram lies in the port.
    void slotRead();
    /// Writes a debug line, as the next one does.
    void slotWrite();
    void slotException(); ///< the port reports an error
    /// The gate of every guarded slot follows the line CTS, without the port being closed or
    /// opened.
    void slotCts(bool value);
    /// Writes a debug line, as the next one does.
    void slotDsr(bool value);
    void slotRing(bool value); ///< the line RI changed
    // Each of the following is one exchange. Those that say nothing else do nothing while not
    // connected, and emit nothing without an answer.
    /// Sends any command. Reports by requestResult().
    void doRequest(char address, char command, char type, char motorBank, int value);
    /// Reads an axis parameter. Reports by requestedValue().
    void getAxisParameter(char address, char motorBank, char type) override;
    /// Writes an axis parameter. Reports by requestedValue(), with the value that the module
    /// answers.
    void setAxisParameter(char address, char motorBank, char type, int value);
    /// Reads a global parameter. Reports by requestedGlobalParameter(). Not guarded: on a closed
    /// port it waits its full time.
    void getGlobalParameter(char address, char type, char motorBank);
    /// Reads the port @p type of the module. Reports by requestedIOValue(). Not guarded.
    void getIOValue(char address, char type, char motorBank);
    /// Writes the port @p type of the module. Not guarded. Reports by requestedValue(), in which
    /// the type and the bank have swapped their places against the signal's parameter names. That
    /// is kept by design.
    void setIOValue(char address, char type, char motorBank, int value);
    /// Moves to a position in µsteps; @p type 0 is absolute, 1 relative. The reply is dropped.
    void doMove(char address, char motorBank, char command, char type, int value);
    /// Rotates (@p roxCommand 1 right, 2 left) at the velocity @p value in pps, or stops (3). The
    /// reply is dropped.
    void doROX(char address, char motorBank, char roxCommand, int value);
    /// Asks for the values in the order of the list, which stays the caller's, as its entries do.
    /// Reports by requestedTraceValue(). A value without an answer costs its time-out, and the pass
    /// goes on.
    void requestTraceValues(QList<TraceCommand *> *); // unnamed by design, as introspection shows
    /// Not guarded. Of the reply, type and bank are the request's.
    void doDirectRequest(Command *request, Command *reply) override;
    /// Not guarded; never waits.
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
