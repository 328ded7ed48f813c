#pragma once

#include "simulator/can/CanEndpoint.h"
#include "simulator/can/CanFaultPlan.h"
#include "simulator/can/CanInterfaceLink.h"
#include "simulator/can/LineLog.h"
#include "simulator/program/Session.h"
#include "simulator/protocol/FaultPlan.h"
#include "simulator/protocol/Module.h"

namespace simulator {

/// The mode `--can-interface`: one module behind a CAN interface of the kernel, until told to end.
/// The interface's speed and state are the system's: the module serves it as it is, and goes on
/// when it is taken up, or plugged in, again.
class CanInterfaceSession : public Session
{
public:
    explicit CanInterfaceSession(const Options &options);

protected:
    std::string start() override;

private:
    Module m_module;
    FaultPlan m_faults;
    CanFaultPlan m_canFaults;
    LineLog m_frames;
    CanEndpoint m_endpoint;
    CanInterfaceLink m_link;
};

} // namespace simulator
