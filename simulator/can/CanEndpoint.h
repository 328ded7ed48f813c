#pragma once

#include "simulator/can/CanFaultPlan.h"
#include "simulator/can/CanFrame.h"
#include "simulator/protocol/FaultPlan.h"
#include "simulator/protocol/Module.h"

#include <chrono>
#include <deque>
#include <optional>

namespace simulator {

/// The module's end of a CAN bus: answers the frames whose identifier is the module's address, and
/// spoils the answers as the fault plans have it. For one thread.
///
///     request byte  0        1       2          3 to 6                7
///                   command  type    motorBank  value, highest first  3
///     reply byte    0        1       2          3 to 6                7
///                   module   status  command    value, highest first  3
///
/// A request of any other length, or with another last byte, isn't answered. The reply's identifier
/// is the host that the module answers to. The text form of the version query is the exception: all
/// eight bytes are characters.
class CanEndpoint
{
public:
    using Clock = std::chrono::steady_clock;

    /// @p module, @p faults and @p canFaults must outlive the endpoint.
    CanEndpoint(Module &module, FaultPlan &faults, CanFaultPlan &canFaults);

    /// Takes a frame that crossed the bus at @p now.
    void receive(const CanFrame &frame, Clock::time_point now);
    /// When the next frame is due; nothing, if there is none.
    std::optional<Clock::time_point> nextDue() const;
    /// The next frame that is due at @p now, which thereby counts as sent; nothing, if none is.
    std::optional<CanFrame> takeDue(Clock::time_point now);

private:
    struct Pending
    {
        Clock::time_point due;
        CanFrame frame;
    };

    void send(const CanFrame &frame, Clock::time_point due);

    Module &m_module;
    FaultPlan &m_faults;
    CanFaultPlan &m_canFaults;
    std::deque<Pending> m_pending; // in the order of the requests, so with ascending due times
};

} // namespace simulator
