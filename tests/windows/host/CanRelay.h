#pragma once

#include "simulator/serving/FileDescriptor.h"

#include <QByteArray>

#include <thread>

/// Lets a program that knows no local sockets reach a simulated CAN bus: calls come over a TCP port
/// and go on to the bus, answers go back. One program at a time.
class CanRelay
{
public:
    /// @p busPath is the local socket of the bus.
    explicit CanRelay(QByteArray busPath);
    ~CanRelay();
    CanRelay(const CanRelay &) = delete;
    CanRelay &operator=(const CanRelay &) = delete;

    /// The number of the TCP port.
    int port() const;

private:
    void run();
    simulator::FileDescriptor connectToBus() const;
    void relay(int program);

    const QByteArray m_busPath;
    simulator::FileDescriptor m_listener;
    simulator::FileDescriptor m_stop; ///< readable when the thread is to end
    std::thread m_thread;
};
