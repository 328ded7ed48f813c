#pragma once

#include "simulator/protocol/Module.h"
#include "simulator/serial/PtyLine.h"
#include "simulator/serving/ServingThread.h"

#include <QString>
#include <QStringList>

/// A simulated module on a serial port that really exists, a pseudo-terminal, served by a thread
/// while the object lives. The tool opens portName() as any other port.
class SimulatedPort
{
public:
    /// @param identity address and version of the module
    /// @param baudRate the one speed at which the module answers; 0: at any, as over USB
    explicit SimulatedPort(const simulator::Identity &identity = {}, int baudRate = 0);

    /// Path of the port, "/dev/pts/N"; empty if the system gave none.
    QString portName() const;

    /// The module, for its parameters. May be used while it is served.
    simulator::Module &module() { return m_module; }

    /// Carries out a fault line (FaultPlan::execute()), which stands without the word "fault":
    /// `fault(u"silence 3"_s)`. False, if the line isn't understood.
    bool fault(const QString &line);

    /// What crossed the line so far, a datagram a line: "< 01 06 01 00 00 00 00 00 08" to the
    /// module, "> ..." from it, "? ..." if the module couldn't read it.
    QStringList wireLog() const;
    /// Only what went to the module, without the "< ": each datagram as hexadecimal pairs.
    QStringList requests() const;
    /// Forgets the log.
    void clearWireLog();

    /// Pulls the port out: whoever has it open sees a hang-up, and the path is gone. For good.
    void pullOut();

private:
    simulator::Module m_module;
    simulator::PtyLine m_line;
    simulator::ServingThread m_thread; // last: it is the first to end
};
