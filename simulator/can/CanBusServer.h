#pragma once

#include "simulator/can/CanBus.h"
#include "simulator/serving/FileDescriptor.h"
#include "simulator/serving/ServingLoop.h"

#include <string>
#include <vector>

namespace simulator {

/// Serves a CanBus to programs over a local socket. The programs reach it through the double of the
/// CAN library, which finds the socket by the environment variable `canBusVariable`. For the thread
/// of its loop.
class CanBusServer
{
public:
    /// Listens at @p path, which is removed at the end; see isListening() for success. @p bus must
    /// outlive the server.
    CanBusServer(CanBus &bus, std::string path);
    ~CanBusServer();
    CanBusServer(const CanBusServer &) = delete;
    CanBusServer &operator=(const CanBusServer &) = delete;

    bool isListening() const { return m_listener.isValid(); }
    const std::string &path() const { return m_path; }

    /// Lets @p loop serve it from now on. The loop must not run any more when the server ends, or
    /// the server must be detached.
    void attach(ServingLoop &loop);
    /// The loop serves it no longer. The programs that it has served are cut off, and what they had
    /// open is closed.
    void detach();

private:
    void accept();
    void serve(int client);

    CanBus &m_bus;
    const std::string m_path;
    FileDescriptor m_listener;
    ServingLoop *m_loop = nullptr;
    std::vector<FileDescriptor> m_clients;
};

} // namespace simulator
