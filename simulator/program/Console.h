#pragma once

#include "simulator/can/CanFaultPlan.h"
#include "simulator/protocol/FaultPlan.h"
#include "simulator/protocol/Module.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

/// The lines that a user types while the simulator runs.
class Console
{
public:
    /// Does something; returns an empty text, or in one line what went wrong.
    using Action = std::function<std::string()>;

    /// A port that lines can be about.
    struct Port
    {
        std::string name;
        FaultPlan *faults; ///< not owned
        Module *module; ///< not owned
        Action plug; ///< may be empty: this port can't be pulled out
        Action unplug;
        CanFaultPlan *canFaults = nullptr; ///< not owned; null: not a CAN interface
    };

    /// @p help and @p quit are what the lines of the same name do.
    Console(std::vector<Port> ports, std::function<void()> help, std::function<void()> quit);

    /// Carries out @p line; an empty one does nothing.
    /// @return an empty text, or in one line what is wrong
    std::string execute(std::string_view line);

private:
    const Port *findPort(std::string_view name) const;
    static std::string executeOn(const Port &port, std::string_view line);
    std::string executeOnAll(std::string_view line);
    std::string injectCanFault(std::string_view line);
    std::string movePlug(std::string_view name, Action Port::*action);

    std::vector<Port> m_ports;
    std::function<void()> m_help;
    std::function<void()> m_quit;
};

} // namespace simulator
