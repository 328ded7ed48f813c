#pragma once

#include "comm/CommandHandlerInterface.h"

class CANZDRLReply;
class CANZDRLRequest;
class TraceCommand;

/// The transport for a module on a CAN bus, which is reached through the first channel of the CAN
/// library of the machine. The library is loaded at each open, so that the program starts, and
/// serves serial ports, where there is no CAN software at all.
///
/// Every frame that reaches the channel counts as the reply, from whichever node and with whichever
/// identifier or length: no filter is set, and nothing is compared. Frames that come between two
/// exchanges wait in the library's queue, and the next request takes them for its reply.
///
/// While not connected, sending and waiting do nothing and cost nothing; that is why only one slot
/// has a guard of its own. The interface's log flags and its list of timed-out addresses aren't
/// used here.
class CANKvaserCommandHandler : public CommandHandlerInterface
{
    Q_OBJECT
    Q_INTERFACES(CommandHandlerInterface)

public:
    /// Touches no library.
    CANKvaserCommandHandler();

    /// Loads the library, opens the channel for exclusive use, sets the speed and goes on the bus.
    /// A speed that is refused doesn't end the opening. False on failure; isConnected() then stays
    /// as it was.
    ///
    /// An open while the channel is open already fails, since the opening is exclusive, and puts
    /// the failure's code in the place of the handle. The channel is then out of reach until the
    /// process ends, though isConnected() stays true. The same goes for an open that follows one
    /// that failed only at going on the bus, unless closeDevice() comes between: that one has left
    /// the channel open. Both are kept by design.
    /// @param bitrate in kBit/s: 1000, 500, 250, 125, 100, 50 or 10
    bool openDevice(int bitrate);
    /// Writes one frame if connected, and doesn't look at the outcome. @p request stays the
    /// caller's.
    void sendRequest(CANZDRLRequest *request);
    /// One attempt to take a frame, without a wait. A new record that the caller owns, or null.
    CANZDRLReply *readFrame();
    /// Waits for one frame, at most about half a second. A new record that the caller owns, null on
    /// a time-out, which is also reported by deviceClosed(). Null at once if not connected.
    /// @param address isn't looked at: any frame is the reply
    CANZDRLReply *waitForReply(char address);

    /// @param baudrate in kBit/s. Another number than those of openDevice() is refused by the
    /// library, which shows on the debug stream only.
    void setBaudrate(int baudrate) override;
    /// Sends if connected.
    void sendCommand(Command *command) override;
    /// Waits as waitForReply() does. The address of the record is the module's own.
    Command *readReply(char address) override;
    /// Null: a bus has no list of ports.
    SerialDeviceEnumerator *deviceEnumerator() override;
    /// "unknown!", without an exchange.
    QString firmwareVersion(char address) override;
    /// Empty at once while not connected.
    QString versionText(char address) override;
    /// False, if the channel can't leave the bus or be closed, as when none is open; isConnected()
    /// then stays as it was.
    bool closeDevice() override;
    /// Opens at the stored bit rate without closing before, so it fails on an open channel.
    bool reopenDevice() override;

signals:
    /// Never emitted: deviceClosed() tells of a lost module. Stands for the serial transport's
    /// signal of the name.
    void handleDetachedDevice();
    // In the next five, the address is the one that the module names in its reply, save for
    // requestedTraceValue(), which carries that of the list entry.
    /// The reply to doRequest(); @p command and @p status are the reply's own.
    void requestResult(char address, char motorBank, char command, char status, int value);
    /// The value of the axis parameter @p type, read or just written.
    void requestedValue(char address, char motorBank, char type, int value);
    /// The value of one entry of a polling pass.
    void requestedTraceValue(char address, char motorBank, char type, int value);
    /// The low 8 bits of a global parameter: 300 arrives as 44.
    void requestedGlobalParameter(char address, char type, char motorBank, char value);
    /// The state of the port @p type of the module.
    void requestedIOValue(char address, char type, char motorBank, int value);
    /// A module didn't answer. @p address is the identifier of the last frame that was sent.
    void deviceClosed(char address);

public slots:
    // Each of the following is one exchange; without an answer it emits nothing but deviceClosed().
    /// Sends any command. Reports by requestResult().
    void doRequest(char address, char command, char type, char motorBank, int value);
    /// Reads an axis parameter. Reports by requestedValue().
    void getAxisParameter(char address, char motorBank, char type) override;
    /// Writes an axis parameter. Reports by requestedValue(), with the value that the module
    /// answers.
    void setAxisParameter(char address, char motorBank, char type, int value);
    /// Reads a global parameter. Reports by requestedGlobalParameter().
    void getGlobalParameter(char address, char type, char motorBank);
    /// Reads the port @p type of the module. Reports by requestedIOValue().
    void getIOValue(char address, char type, char motorBank);
    /// Writes the port @p type of the module. Reports by requestedValue(), in which the type and
    /// the bank have swapped their places against the signal's parameter names. That is kept by
    /// design.
    void setIOValue(char address, char type, char motorBank, int value);
    /// Moves to a position in µsteps; @p type 0 is absolute, 1 relative. The reply is dropped.
    void doMove(char address, char motorBank, char command, char type, int value);
    /// Rotates (@p roxCommand 1 right, 2 left) at the velocity @p value in pps, or stops (3). The
    /// reply is dropped.
    void doROX(char address, char motorBank, char roxCommand, int value);
    /// Asks for the values in the order of the list, which stays the caller's, as its entries do.
    /// Reports by requestedTraceValue(). A value without an answer costs its time-out, unless the
    /// receiver of deviceClosed() closes the channel.
    void requestTraceValues(QList<TraceCommand *> *); // unnamed by design, as introspection shows
    /// Of the reply, type and bank are the request's, and the reply address is 0.
    void doDirectRequest(Command *request, Command *reply) override;
    /// Does what sendCommand() does.
    void doDirectRequestWithoutAnswer(Command *request) override;

private:
    bool succeeded(const char *operation, int status) const;

    /// One exchange. @p onReply gets the reply, if one came.
    template <typename ReplyHandler>
    void exchange(CANZDRLRequest request, ReplyHandler onReply);

    int m_handle = -1; ///< of the channel; a negative code after a failed opening
    int m_lastId = 0; ///< identifier of the last frame sent, also of one that wasn't let out
};
