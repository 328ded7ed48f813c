#include "simulator/plugged/PluggedPort.h"

namespace simulator {

PluggedPort::PluggedPort(Testbed &testbed, ServingLoop &loop, SerialDevice device,
                         const Identity &identity, int baudRate)
    : m_testbed(testbed)
    , m_loop(loop)
    , m_device(std::move(device))
    , m_baudRate(baudRate)
    , m_module(identity)
    , m_endpoint(m_module, m_faults, m_log)
{
}

PluggedPort::~PluggedPort()
{
    if (m_link) {
        m_loop.remove(*m_link);
    }
}

std::string PluggedPort::plug()
{
    if (m_pty) {
        return m_device.node + " is plugged in already";
    }
    auto pty = std::make_unique<Pty>();
    if (!pty->isOpen()) {
        return "no pseudo-terminal to be had";
    }
    if (std::string problem = m_testbed.plug(m_device, pty->portPath()); !problem.empty()) {
        return problem;
    }
    m_pty = std::move(pty);
    m_link = std::make_unique<SerialLink>(m_pty->masterFd(), m_endpoint,
                                          LineSettings{m_baudRate, 8, 'N', 1});
    m_loop.add(*m_link);
    return {};
}

std::string PluggedPort::unplug()
{
    if (!m_pty) {
        return m_device.node + " is not plugged in";
    }
    m_loop.remove(*m_link);
    m_link.reset();
    m_pty.reset(); // the hang-up comes first, as it does with a real port
    m_testbed.unplug(m_device);
    return {};
}

} // namespace simulator
