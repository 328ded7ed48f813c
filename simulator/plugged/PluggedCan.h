#pragma once

#include "simulator/can/CanBus.h"
#include "simulator/can/CanBusServer.h"
#include "simulator/plugged/TemporaryFolder.h"
#include "simulator/protocol/Module.h"
#include "simulator/serving/ServingLoop.h"

#include <memory>
#include <string>
#include <vector>

namespace simulator {

/// A CAN interface with a module on its bus, which can be pulled out and plugged in again. Programs
/// that run with environment() added to theirs reach it through what they take for the CAN maker's
/// library. The module keeps its supply all the while, and so its state, faults and log. For the
/// thread of the loop.
class PluggedCan
{
public:
    /// Starts pulled out. @p loop must outlive it. For @p kiloBitsPerSecond see CanBus.
    PluggedCan(ServingLoop &loop, const Identity &identity, int kiloBitsPerSecond);
    ~PluggedCan();
    PluggedCan(const PluggedCan &) = delete;
    PluggedCan &operator=(const PluggedCan &) = delete;

    Module &module() { return m_module; }
    CanBus &bus() { return m_bus; }

    /// What lets a program find the double of the library and the bus, as "NAME=value" texts.
    std::vector<std::string> environment() const;

    /// Plugs it in. @return an empty text, or in one line what went wrong.
    std::string plug();
    /// Pulls it out: whatever a program still calls fails. @return an empty text, or in one line
    /// what went wrong.
    std::string unplug();

private:
    std::string socketPath() const;

    ServingLoop &m_loop;
    const TemporaryFolder m_folder;
    Module m_module;
    CanBus m_bus;
    std::unique_ptr<CanBusServer> m_server; // null while pulled out
};

} // namespace simulator
