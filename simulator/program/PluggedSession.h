#pragma once

#include "simulator/plugged/ChildProcess.h"
#include "simulator/plugged/PluggedCan.h"
#include "simulator/plugged/PluggedPort.h"
#include "simulator/plugged/Testbed.h"
#include "simulator/program/Session.h"

#include <memory>

namespace simulator {

/// The mode `--plugged`: a program that sees a USB module, an RS485 adapter and a CAN interface
/// plugged in, until that program ends.
class PluggedSession : public Session
{
public:
    explicit PluggedSession(const Options &options);
    ~PluggedSession() override;

protected:
    std::string start() override;
    /// Asks the program to end, and after a while makes it.
    void quit() override;
    void handleAlarm() override;
    int finish() override;

private:
    Console::Port preparePort(const std::string &name, PluggedPort &port);
    Console::Port prepareCan();
    std::string plugAll();

    Testbed m_testbed;
    PluggedPort m_usb;
    PluggedPort m_rs485;
    PluggedCan m_can;
    std::unique_ptr<ChildProcess> m_child;
};

} // namespace simulator
