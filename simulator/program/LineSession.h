#pragma once

#include "simulator/program/Session.h"
#include "simulator/protocol/FaultPlan.h"
#include "simulator/protocol/Module.h"
#include "simulator/serial/SerialEndpoint.h"
#include "simulator/serial/SerialLink.h"
#include "simulator/serial/WireLog.h"
#include "simulator/serving/FileDescriptor.h"

#include <optional>

namespace simulator {

/// The mode `--line`: one module at the end of a serial line that exists, until told to end. A line
/// that hangs up, or goes away, is opened again as soon as it is there; the module keeps its supply
/// meanwhile, and so its state.
class LineSession : public Session
{
public:
    explicit LineSession(const Options &options);

protected:
    std::string start() override;

private:
    /// Opens the line anew. @return its descriptor, which stays here; -1 with errno set on failure
    int open();

    Module m_module;
    FaultPlan m_faults;
    WireLog m_log;
    SerialEndpoint m_endpoint;
    FileDescriptor m_line;
    std::optional<SerialLink> m_link; // once the line is open
};

} // namespace simulator
