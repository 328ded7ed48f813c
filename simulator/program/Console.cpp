#include "simulator/program/Console.h"

#include "simulator/protocol/MachineLines.h"
#include "simulator/protocol/Text.h"

namespace simulator {

Console::Console(std::vector<Port> ports, std::function<void()> help, std::function<void()> quit)
    : m_ports(std::move(ports))
    , m_help(std::move(help))
    , m_quit(std::move(quit))
{
}

std::string Console::execute(std::string_view line)
{
    std::string_view rest = line;
    const std::string_view word = takeWord(rest);
    if (word == "fault" || MachineLines::understands(word)) {
        return executeOnAll(line);
    }
    if (word == "canfault") {
        return injectCanFault(line);
    }
    if (const Port *port = findPort(word)) {
        return executeOn(*port, rest);
    }
    if (word == "plug" || word == "unplug") {
        return movePlug(takeWord(rest), word == "plug" ? &Port::plug : &Port::unplug);
    }
    if (word == "help") {
        m_help();
    } else if (word == "quit") {
        m_quit();
    } else if (!word.empty()) {
        return "unknown line: " + std::string(word) + " (try help)";
    }
    return {};
}

const Console::Port *Console::findPort(std::string_view name) const
{
    for (const Port &port : m_ports) {
        if (port.name == name) {
            return &port;
        }
    }
    return nullptr;
}

std::string Console::executeOn(const Port &port, std::string_view line)
{
    std::string_view rest = line;
    return MachineLines::understands(takeWord(rest)) ? MachineLines::execute(line, *port.module)
                                                     : port.faults->execute(line);
}

std::string Console::executeOnAll(std::string_view line)
{
    std::string problem;
    for (const Port &port : m_ports) {
        if (std::string other = executeOn(port, line); !other.empty()) {
            problem = std::move(other); // one is enough: they hardly differ
        }
    }
    return problem;
}

std::string Console::injectCanFault(std::string_view line)
{
    for (const Port &port : m_ports) {
        if (port.canFaults) {
            return port.canFaults->execute(line);
        }
    }
    return "no CAN interface";
}

std::string Console::movePlug(std::string_view name, Action Port::*action)
{
    const Port *port = findPort(name);
    if (!port || !(port->*action)) {
        return "no port to plug or unplug: " + std::string(name);
    }
    return (port->*action)();
}

} // namespace simulator
