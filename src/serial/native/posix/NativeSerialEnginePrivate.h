#pragma once

#include "PortTransfer.h"
#include "TerminalPort.h"
#include "serial/SerialLineState.h"

#include <QIODevice>

#include <optional>

class NativeSerialNotifier;

/// The state of an engine whose port is a terminal.
///
/// A setting that the driver doesn't take, whether it says so or not, fails its setter, and the
/// line keeps the settings that it had. The limits of a read are kept here, not in the kernel.
class NativeSerialEnginePrivate : public SerialLineState
{
public:
    NativeSerialEnginePrivate();

    bool isOpen() const { return port.isOpen(); }
    /// Opens the terminal named deviceName for @p mode and for nobody else, drops what it received
    /// before, saves the settings found, puts the defaults in their place and reads them back. If
    /// any of that failed it answers false, and the port may be left open.
    bool openPort(QIODevice::OpenMode mode);
    /// Gives the timeouts found on opening back to the port, and nothing else.
    void restoreTimeouts();
    /// Closes the port when its output has left, or after 5000 ms without it. Always true.
    bool closePort();

    /// Each moves one block of @p size bytes (see PortTransfer) and answers how many were moved
    /// within the time that a block may take.
    qint64 readBlock(char *data, qint64 size);
    qint64 writeBlock(const char *data, qint64 size);

    /// Waits at most @p msecs for the events asked for and answers what happened; nothing if the
    /// time passed or the port is lost.
    std::optional<PortTransfer::Events> waitForEvents(bool toRead, bool toWrite, int msecs) const;

    TerminalPort port;
    NativeSerialNotifier *notifier = nullptr; ///< a child of the engine; null until first needed

protected:
    bool applySettings() override;
    void applyTimeouts() override;

private:
    bool takeOver();

    termios2 m_found{}; ///< what the port had on opening
    termios2 m_line{}; ///< what the driver took last
};
