#pragma once

#include "simulator/protocol/FaultPlan.h"
#include "simulator/protocol/Module.h"
#include "simulator/serial/LineSettings.h"
#include "simulator/serial/Pty.h"
#include "simulator/serial/SerialEndpoint.h"
#include "simulator/serial/SerialLink.h"
#include "simulator/serial/WireLog.h"

#include <string>

namespace simulator {

/// A module at the far end of a pseudo-terminal of its own: all that a ServingLoop needs to serve
/// it. Faults and log may be used from every thread, the rest as the loop's own rules say.
class PtyLine
{
public:
    /// Opens the pseudo-terminal; see isOpen() for success. @p module must outlive the line. With a
    /// @p baudRate the module answers only on a line of that speed with 8 data bits, no parity and
    /// one stop bit; with 0 the settings don't matter, as on USB.
    explicit PtyLine(Module &module, int baudRate = 0);

    bool isOpen() const { return m_pty.isOpen(); }
    /// Path of the port for the tool, "/dev/pts/N".
    const std::string &portPath() const { return m_pty.portPath(); }
    FaultPlan &faults() { return m_faults; }
    WireLog &log() { return m_log; }
    const WireLog &log() const { return m_log; }
    /// What a ServingLoop serves.
    SerialLink &link() { return m_link; }
    /// Hangs up, for good. Take the link out of its loop before.
    void close() { m_pty.close(); }

private:
    FaultPlan m_faults;
    WireLog m_log;
    Pty m_pty;
    SerialEndpoint m_endpoint;
    SerialLink m_link;
};

} // namespace simulator
