#include "simulator/program/CanInterfaceSession.h"

#include "simulator/can/CanInterface.h"

#include <cerrno>
#include <cstring>

namespace simulator {

CanInterfaceSession::CanInterfaceSession(const Options &options)
    : Session(options)
    , m_module(options.identity.at(options.canAddress))
    , m_endpoint(m_module, m_faults, m_canFaults)
    , m_link([name = options.canInterface] { return openCanInterface(name); }, m_endpoint, m_frames)
{
    prepare(m_module);
}

std::string CanInterfaceSession::start()
{
    if (!m_link.open()) {
        return "cannot serve the CAN interface " + options().canInterface + ": "
            + std::strerror(errno);
    }
    m_frames.setSink(logFile().sink());
    listenTo({{"can", &m_faults, &m_module, {}, {}, &m_canFaults}});
    loop().add(m_link);
    return {};
}

} // namespace simulator
