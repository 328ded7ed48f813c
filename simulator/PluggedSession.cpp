#include "simulator/PluggedSession.h"

#include "simulator/SerialDevices.h"

#include <unistd.h>

namespace simulator {

namespace {

/// Time for the program to end by itself, in seconds.
constexpr unsigned patience = 5;

Identity withAddress(Identity identity, std::uint8_t address)
{
    identity.address = address;
    return identity;
}

} // namespace

PluggedSession::PluggedSession(const Options &options)
    : Session(options)
    , m_usb(m_testbed, loop(), usbModuleDevice(), options.identity, 0)
    , m_rs485(m_testbed, loop(), rs485AdapterDevice(),
              withAddress(options.identity, options.rs485Address), options.rs485BaudRate)
{
}

PluggedSession::~PluggedSession() = default;

std::string PluggedSession::start()
{
    listenTo({prepare("usb", m_usb), prepare("rs485", m_rs485)});
    std::string problem;
    if (options().startWithUsb) {
        problem = m_usb.plug();
    }
    if (problem.empty() && options().startWithRs485) {
        problem = m_rs485.plug();
    }
    if (!problem.empty()) {
        return problem;
    }
    m_child = std::make_unique<ChildProcess>(options().command, m_testbed.environment());
    if (!m_child->isRunning()) {
        return "cannot start another process";
    }
    loop().watch(m_child->endFd(), [this] { loop().stop(); });
    return {};
}

void PluggedSession::quit()
{
    m_child->terminate();
    ::alarm(patience);
}

void PluggedSession::handleAlarm()
{
    m_child->kill();
}

int PluggedSession::finish()
{
    return m_child->wait();
}

Console::Port PluggedSession::prepare(const std::string &name, PluggedPort &port)
{
    port.module().setLimitPolicy(options().limits);
    port.log().setSink(logFile().sinkFor(name));
    return {name, &port.faults(), [&port] { return port.plug(); },
            [&port] { return port.unplug(); }};
}

} // namespace simulator
