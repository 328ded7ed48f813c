#include "simulator/program/PluggedSession.h"

#include "simulator/plugged/SerialDevices.h"

#include <unistd.h>

namespace simulator {

namespace {

/// Time for the program to end by itself, in seconds.
constexpr unsigned patience = 5;

} // namespace

PluggedSession::PluggedSession(const Options &options)
    : Session(options)
    , m_usb(m_testbed, loop(), usbModuleDevice(), options.identity, 0)
    , m_rs485(m_testbed, loop(), rs485AdapterDevice(), options.identity.at(options.rs485Address),
              options.rs485BaudRate)
    , m_can(loop(), options.identity.at(options.canAddress), options.canBitRate)
{
}

PluggedSession::~PluggedSession() = default;

std::string PluggedSession::start()
{
    listenTo({preparePort("usb", m_usb), preparePort("rs485", m_rs485), prepareCan()});
    if (std::string problem = plugAll(); !problem.empty()) {
        return problem;
    }
    std::vector<std::string> environment = m_testbed.environment();
    const std::vector<std::string> more = m_can.environment();
    environment.insert(environment.end(), more.begin(), more.end());
    m_child = std::make_unique<ChildProcess>(options().command, environment);
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

Console::Port PluggedSession::preparePort(const std::string &name, PluggedPort &port)
{
    prepare(port.module());
    port.log().setSink(logFile().sinkFor(name));
    return {name, &port.faults(), &port.module(), [&port] { return port.plug(); },
            [&port] { return port.unplug(); }};
}

Console::Port PluggedSession::prepareCan()
{
    prepare(m_can.module());
    m_can.bus().frames().setSink(logFile().sink());
    return {"can",
            &m_can.bus().faults(),
            &m_can.module(),
            [this] { return m_can.plug(); },
            [this] { return m_can.unplug(); },
            &m_can.bus().canFaults()};
}

std::string PluggedSession::plugAll()
{
    std::string problem;
    if (options().startWithUsb) {
        problem = m_usb.plug();
    }
    if (problem.empty() && options().startWithRs485) {
        problem = m_rs485.plug();
    }
    if (problem.empty() && options().startWithCan) {
        problem = m_can.plug();
    }
    return problem;
}

} // namespace simulator
