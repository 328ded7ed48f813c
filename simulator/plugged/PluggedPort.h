#pragma once

#include "simulator/plugged/Testbed.h"
#include "simulator/protocol/FaultPlan.h"
#include "simulator/protocol/Module.h"
#include "simulator/serial/Pty.h"
#include "simulator/serial/SerialEndpoint.h"
#include "simulator/serial/SerialLink.h"
#include "simulator/serial/WireLog.h"
#include "simulator/serving/ServingLoop.h"

#include <memory>
#include <string>

namespace simulator {

/// A port of the testbed with a module behind it, which can be pulled out and plugged in again.
/// The module keeps its supply all the while, and so its state, faults and log. For the thread of
/// the loop.
class PluggedPort
{
public:
    /// Starts pulled out. @p testbed and @p loop must outlive the port. For @p baudRate see
    /// PtyLine.
    PluggedPort(Testbed &testbed, ServingLoop &loop, SerialDevice device, const Identity &identity,
                int baudRate);
    ~PluggedPort();
    PluggedPort(const PluggedPort &) = delete;
    PluggedPort &operator=(const PluggedPort &) = delete;

    Module &module() { return m_module; }
    FaultPlan &faults() { return m_faults; }
    WireLog &log() { return m_log; }

    /// Plugs it in. @return an empty text, or in one line what went wrong.
    std::string plug();
    /// Pulls it out. @return an empty text, or in one line what went wrong.
    std::string unplug();

private:
    Testbed &m_testbed;
    ServingLoop &m_loop;
    const SerialDevice m_device;
    const int m_baudRate;
    Module m_module;
    FaultPlan m_faults;
    WireLog m_log;
    SerialEndpoint m_endpoint;
    std::unique_ptr<Pty> m_pty; // null while pulled out, as is m_link
    std::unique_ptr<SerialLink> m_link;
};

} // namespace simulator
