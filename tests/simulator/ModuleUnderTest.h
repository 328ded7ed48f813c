#pragma once

#include "simulator/protocol/Module.h"

/// A module whose time passes only when the test says so, spoken to as a host would.
class ModuleUnderTest
{
public:
    explicit ModuleUnderTest(const simulator::Identity &identity = {})
        : m_module(identity, [this] { return m_now; })
    {
    }

    /// Lets time pass.
    void pass(std::chrono::nanoseconds time) { m_now += time; }

    simulator::Reply send(int command, int type, int motorBank, int value)
    {
        simulator::Request request;
        request.address = m_module.address();
        request.command = static_cast<std::uint8_t>(command);
        request.type = static_cast<std::uint8_t>(type);
        request.motorBank = static_cast<std::uint8_t>(motorBank);
        request.value = value;
        return m_module.execute(request);
    }
    /// Writes axis parameter @p number. @return the value in the reply
    int write(int number, int value) { return send(5, number, 0, value).value; }
    /// The value of axis parameter @p number.
    int axis(int number) { return send(6, number, 0, 0).value; }
    /// Sends ROR.
    void turnRight(int velocity) { send(1, 0, 0, velocity); }
    /// Sends ROL.
    void turnLeft(int velocity) { send(2, 0, 0, velocity); }
    /// Sends MST.
    void stop() { send(3, 0, 0, 0); }
    /// Sends an absolute MVP.
    void moveTo(int position) { send(4, 0, 0, position); }

    simulator::Module &module() { return m_module; }

private:
    simulator::TimePoint m_now{std::chrono::hours(1)};
    simulator::Module m_module;
};
