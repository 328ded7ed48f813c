#pragma once

#include "TerminalPort.h"
#include "serial/SerialLineState.h"

class NativeSerialNotifier;

/// The state of an engine whose port is a terminal.
class NativeSerialEnginePrivate : public SerialLineState
{
public:
    NativeSerialEnginePrivate();

    /// Saves the settings found on the newly opened port, puts the defaults in their place and
    /// reads them back. False if the port refused that.
    bool takeOver();
    /// Gives the timeouts found on opening back to the port, and nothing else.
    void restoreTimeouts();

    TerminalPort port;
    NativeSerialNotifier *notifier = nullptr; ///< a child of the engine; null until first needed

protected:
    bool applySettings() override;
    void applyTimeouts() override;

private:
    termios2 m_found{}; ///< what the port had on opening
    termios2 m_line{}; ///< what the driver took last
};
