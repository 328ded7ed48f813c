#pragma once

#include "campaign/Random.h"
#include "support/SimulatedCanBus.h"
#include "support/SimulatedPort.h"
#include "support/UsbMachine.h"

#include <memory>

/// All that the tool can be plugged to, with everything that can go wrong there: a module on USB,
/// one behind an RS485 adapter, one on a CAN bus.
class FaultyWorld
{
public:
    FaultyWorld();
    ~FaultyWorld();

    /// Lets something happen, told in one line.
    QString happen(Random &random);

    /// The module behind the adapter.
    static constexpr int Rs485Address = 7;

private:
    struct Plug
    {
        QString name; ///< of the port
        UsbDevice device;
        int address;
        std::unique_ptr<SimulatedPort> port; ///< null while pulled out
    };

    void plugIn(Plug &plug);
    void pullOut(Plug &plug);
    QString movePlug(Random &random);
    QString moveCan();
    QString injectFault(Random &random);
    QString injectCanFault(Random &random);
    QString changeParameter(Random &random);

    UsbMachine m_machine;
    Plug m_plugs[2];
    std::unique_ptr<SimulatedCanBus> m_bus; // null while pulled out
};
