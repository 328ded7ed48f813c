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
    bool isConnected() const { return m_connected; }

    /// Whether each frame goes to the debug stream.
    bool debugOutput() const { return m_debugOutput; }
    void setDebugOutput(bool debugOutput) { m_debugOutput = debugOutput; }

    /// The last rate given to setBaudrate(): baud on a serial line, kBit/s on CAN.
    int baudrate() const { return m_baudrate; }

    /// Switches for a developer: whether the slot of the name reports its frames as history
    /// messages. All are off unless somebody sets them.
    bool logSetAxisParameter() const { return m_logSetAxisParameter; }
    void setLogSetAxisParameter(bool log) { m_logSetAxisParameter = log; }
    bool logGetAxisParameter() const { return m_logGetAxisParameter; }
    void setLogGetAxisParameter(bool log) { m_logGetAxisParameter = log; }
    bool logROX() const { return m_logROX; }
    void setLogROX(bool log) { m_logROX = log; }
    bool logMove() const { return m_logMove; }
    void setLogMove(bool log) { m_logMove = log; }
    bool logTrace() const { return m_logTrace; }
    void setLogTrace(bool log) { m_logTrace = log; }
    bool logRequest() const { return m_logRequest; }
    void setLogRequest(bool log) { m_logRequest = log; }

    /// The addresses that failed to answer, each once. A handler keeps them over a close and a new
    /// open, so the list only grows.
    void addTimeoutedAddress(char address);
    /// Removes @p address if it is there.
    void removeTimeoutedAddress(char address);
    bool isTimeoutedAddress(char address) const;
    /// Writes the list to the debug stream, whatever debugOutput() says.
    void dumpTimeoutedAddresses() const;

    /// Stores the rate and sets the speed of the line or of the bus.
    virtual void setBaudrate(int baudrate) = 0;
    /// Sends and returns at once, without waiting for the reply. Takes no ownership.
    virtual void sendCommand(Command *command) = 0;
    /// Waits for one reply. A new record that the caller owns, null if none came. The reply's
    /// status stands in the record's type; its motor bank and its status are 0.
    virtual Command *readReply(char address) = 0;
    /// The list of ports, null if the transport has none. Not owned by the caller.
    virtual SerialDeviceEnumerator *deviceEnumerator() = 0;
    virtual QString firmwareVersion(char address) = 0;
    /// The eight characters of the module's version, empty if it doesn't answer.
    virtual QString versionText(char address) = 0;
    virtual bool closeDevice() = 0;
    /// Opens again with what the last open used.
    virtual bool reopenDevice() = 0;

public slots:
    virtual void getAxisParameter(char address, char motorBank, char type) = 0;
    /// Sends the fields of @p request and fills @p reply; only its validity, false, if none came.
    virtual void doDirectRequest(Command *request, Command *reply) = 0;
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
