#pragma once

#include "simulator/can/CanBus.h"
#include "simulator/can/CanBusServer.h"
#include "simulator/protocol/Module.h"
#include "simulator/serving/ServingThread.h"

#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

/// A simulated module on a simulated CAN bus, served by a thread while the object lives. A program,
/// or this one, reaches it through the double of the CAN library (target zdr_canlib_double), which
/// the loader finds if its directory is in LD_LIBRARY_PATH. Only one may live at a time.
class SimulatedCanBus
{
public:
    /// @param identity address and version of the module
    /// @param kiloBitsPerSecond the one speed at which the module hears the bus; 0: at any
    explicit SimulatedCanBus(const simulator::Identity &identity = {}, int kiloBitsPerSecond = 0);
    ~SimulatedCanBus();
    SimulatedCanBus(const SimulatedCanBus &) = delete;
    SimulatedCanBus &operator=(const SimulatedCanBus &) = delete;

    /// The module, for its parameters. May be used while it is served.
    simulator::Module &module() { return m_module; }

    /// Carries out a line of FaultPlan::execute(), which stands without the word "fault":
    /// `fault(u"silence 3"_s)`. False, if the line isn't understood.
    bool fault(const QString &line);
    /// The same for CanFaultPlan::execute() and the word "canfault".
    bool canFault(const QString &line);

    /// What crossed the bus so far, see CanBus::frames().
    QStringList frames() const;
    /// The calls of the library so far, see CanBus::calls().
    QStringList calls() const;
    /// Forgets both.
    void clear();

    /// The interface is gone: nothing answers any more. For good.
    void pullOut();

private:
    QTemporaryDir m_directory;
    simulator::Module m_module;
    simulator::CanBus m_bus;
    std::unique_ptr<simulator::CanBusServer> m_server;
    simulator::ServingThread m_thread; // last: it is the first to end
};
