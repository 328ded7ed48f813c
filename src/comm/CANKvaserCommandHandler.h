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
    /// Writes one frame if connected, and doesn't look at the outcome.
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
    void sendCommand(Command *command) override;
    Command *readReply(char address) override;
    /// Null: a bus has no list of ports.
    SerialDeviceEnumerator *deviceEnumerator() override;
    /// "unknown!", without an exchange.
    QString firmwareVersion(char address) override;
    QString versionText(char address) override;
    /// False, if the channel can't leave the bus or be closed, as when none is open; isConnected()
    /// then stays as it was.
    bool closeDevice() override;
    bool reopenDevice() override;

signals:
    /// Never emitted: deviceClosed() tells of a lost module. Stands for the serial transport's
    /// signal of the name.
    void handleDetachedDevice();
    // In the next five, the address is the one that the module names in its reply, save for
    // requestedTraceValue(), which carries that of the list entry.
    void requestResult(char address, char motorBank, char command, char status, int value);
    void requestedValue(char address, char motorBank, char type, int value);
    void requestedTraceValue(char address, char motorBank, char type, int value);
    void requestedGlobalParameter(char address, char type, char motorBank, char value);
    void requestedIOValue(char address, char type, char motorBank, int value);
    /// A module didn't answer. @p address is the identifier of the last frame that was sent.
    void deviceClosed(char address);

public slots:
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
    void requestTraceValues(QList<TraceCommand *> *);
    void doDirectRequest(Command *request, Command *reply) override;
    void doDirectRequestWithoutAnswer(Command *request) override;

private:
    bool succeeded(const char *operation, int status) const;

    /// One exchange. @p onReply gets the reply, if one came.
    template <typename ReplyHandler>
    void exchange(CANZDRLRequest request, ReplyHandler onReply);

    int m_handle = -1; ///< of the channel; a negative code after a failed opening
    int m_lastId = 0; ///< identifier of the last frame sent, also of one that wasn't let out
};
