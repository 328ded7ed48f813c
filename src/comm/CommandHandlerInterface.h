#pragma once

#include <QList>
#include <QObject>
#include <QString>

class Command;
class SerialDeviceEnumerator;

/// The transport to the module, without regard to whether a serial port or a CAN channel lies
/// behind it.
///
/// Every exchange is one request and one reply, and it is synchronous: a slot sends, blocks the
/// thread until the reply or the time-out, and emits its result signal before it returns. Callers
/// rely on that. A failed exchange shows only as a signal that doesn't come; a lost module is told
/// by the derived class's own signal.
///
/// Both handlers live side by side for the whole run, and every panel is wired to both. One that
/// isn't connected doesn't act. All work is done on the GUI thread, and nothing is locked.
class CommandHandlerInterface : public QObject
{
    Q_OBJECT

public:
    /// Whether the transport counts as open; the guards of the slots go by it. False at first.
    bool isConnected() const { return m_connected; }

    /// Whether each frame goes to the debug stream; off at first.
    bool debugOutput() const { return m_debugOutput; }
    /// Has each frame written to the debug stream, or no longer.
    void setDebugOutput(bool debugOutput) { m_debugOutput = debugOutput; }

    /// The last rate given to setBaudrate(), understood or not: baud on a serial line, where it is
    /// 0 at first, kBit/s on CAN, where it is 1000 at first.
    int baudrate() const { return m_baudrate; }

    /// @name Switches for a developer
    /// Whether a slot reports its frames as history messages. All are off unless somebody sets
    /// them, and a transport without such messages (CAN) doesn't look at them.
    /// @{
    bool logSetAxisParameter() const { return m_logSetAxisParameter; } ///< of setAxisParameter()
    void setLogSetAxisParameter(bool log) { m_logSetAxisParameter = log; } ///< the same
    bool logGetAxisParameter() const { return m_logGetAxisParameter; } ///< of getAxisParameter()
    void setLogGetAxisParameter(bool log) { m_logGetAxisParameter = log; } ///< the same
    bool logROX() const { return m_logROX; } ///< of doROX()
    void setLogROX(bool log) { m_logROX = log; } ///< the same
    bool logMove() const { return m_logMove; } ///< of doMove()
    void setLogMove(bool log) { m_logMove = log; } ///< the same
    bool logTrace() const { return m_logTrace; } ///< of requestTraceValues()
    void setLogTrace(bool log) { m_logTrace = log; } ///< the same
    bool logRequest() const { return m_logRequest; } ///< of doRequest()
    void setLogRequest(bool log) { m_logRequest = log; } ///< the same
    /// @}

    /// Notes an address that failed to answer; one that is noted already stays noted once. The
    /// notes outlive a close and a new open, so they only grow.
    void addTimeoutedAddress(char address);
    /// Removes @p address if it is there.
    void removeTimeoutedAddress(char address);
    /// Whether @p address failed to answer since the program started.
    bool isTimeoutedAddress(char address) const;
    /// Writes the list to the debug stream, whatever debugOutput() says.
    void dumpTimeoutedAddresses() const;

    /// Stores the rate and sets the speed of the line (baud) or of the bus (kBit/s). A rate that
    /// the transport doesn't know is stored and sets no speed.
    virtual void setBaudrate(int baudrate) = 0;
    /// Sends and returns at once, without waiting for the reply. Takes no ownership.
    virtual void sendCommand(Command *command) = 0;
    /// Waits for one reply. A new record that the caller owns, null if none came. The reply's
    /// status stands in the record's type; its motor bank and its status are 0.
    virtual Command *readReply(char address) = 0;
    /// The list of ports, null if the transport has none. Not owned by the caller.
    virtual SerialDeviceEnumerator *deviceEnumerator() = 0;
    /// The version of the module's firmware as text for the user, as far as the transport can tell.
    virtual QString firmwareVersion(char address) = 0;
    /// The eight characters of the module's version, empty if it doesn't answer.
    virtual QString versionText(char address) = 0;
    /// Closes the transport, also one that isn't open. Whether that succeeded.
    virtual bool closeDevice() = 0;
    /// Opens again with what the last open used. False on failure.
    virtual bool reopenDevice() = 0;

public slots:
    /// Asks for the axis parameter @p type. The answer comes by the derived class's signal
    /// requestedValue() before the call returns; without an answer no signal comes.
    virtual void getAxisParameter(char address, char motorBank, char type) = 0;
    /// Sends the fields of @p request and fills @p reply; only its validity, false, if none came.
    /// Both stay the caller's.
    virtual void doDirectRequest(Command *request, Command *reply) = 0;
    /// Does what sendCommand() does.
    virtual void doDirectRequestWithoutAnswer(Command *request) = 0;

protected:
    CommandHandlerInterface() = default;

    void setConnected(bool connected) { m_connected = connected; }
    void storeBaudrate(int baudrate) { m_baudrate = baudrate; }

private:
    bool m_debugOutput = false;
    bool m_connected = false;
    int m_baudrate = 0;
    bool m_logSetAxisParameter = false;
    bool m_logGetAxisParameter = false;
    bool m_logROX = false;
    bool m_logMove = false;
    bool m_logTrace = false;
    bool m_logRequest = false;
    QList<char> m_timeoutedAddresses;
};

/// The derived classes answer qt_metacast() for this identifier, too.
Q_DECLARE_INTERFACE(CommandHandlerInterface, "com.zdr.CommandHandler/1.0")
