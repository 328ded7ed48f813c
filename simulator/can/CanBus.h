#pragma once

#include "simulator/can/CanCall.h"
#include "simulator/can/CanEndpoint.h"
#include "simulator/can/CanFaultPlan.h"
#include "simulator/can/LineLog.h"
#include "simulator/protocol/FaultPlan.h"
#include "simulator/protocol/Module.h"

#include <optional>

namespace simulator {

/// A bus with one module at one end and one CAN interface at the other, as a program sees it
/// through a CAN library. Faults and logs may be used from every thread, the rest is for one.
///
/// The interface keeps the speed that was set last, none at first. While it isn't the module's, the
/// two don't hear each other.
class CanBus
{
public:
    /// @p module must outlive the bus.
    /// @param kiloBitsPerSecond the module's own speed; 0: any will do
    explicit CanBus(Module &module, int kiloBitsPerSecond = 0);

    /// Whether a CAN interface can be set to @p kiloBitsPerSecond.
    static bool hasSpeed(int kiloBitsPerSecond);

    /// Carries out @p call of the program @p caller, any number that tells programs apart. Only one
    /// program has the channel open at a time.
    CanAnswer execute(int caller, const CanCall &call);
    /// The program @p caller has ended: what it had open is closed.
    void leave(int caller);

    /// What goes wrong with the module's replies.
    FaultPlan &faults() { return m_faults; }
    /// What goes wrong with the interface and the bus.
    CanFaultPlan &canFaults() { return m_canFaults; }

    /// The frames on the bus: "can < 001 [8] 06 01 00 00 00 00 00 03" to the module, "can > ..." to
    /// the program, "can ? ..." a program's frame at another speed than the module's.
    LineLog &frames() { return m_frames; }
    const LineLog &frames() const { return m_frames; }
    /// The calls of the library, each with what it answered: "canOpenChannel(0, 8) = 1".
    LineLog &calls() { return m_calls; }
    const LineLog &calls() const { return m_calls; }

private:
    CanAnswer carryOut(int caller, const CanCall &call);
    std::int32_t openChannel(int caller, const CanCall &call);
    CanStatus close();
    CanStatus setSpeed(const CanCall &call);
    CanStatus busOn();
    CanStatus busOff();
    CanStatus write(const CanCall &call);
    CanAnswer read();

    bool isRefused(CanFault fault);
    bool modulesSpeed() const;

    const int m_modulesSpeed;
    FaultPlan m_faults;
    CanFaultPlan m_canFaults;
    LineLog m_frames;
    LineLog m_calls;
    CanEndpoint m_endpoint;
    int m_lastHandle = 0;
    std::optional<int> m_owner; // the program that has the channel open
    bool m_onBus = false;
    int m_speed = 0; // kBit/s; 0: never set
};

} // namespace simulator
