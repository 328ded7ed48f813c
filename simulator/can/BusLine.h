#pragma once

#include "simulator/can/CanCall.h"

#include <cstdint>
#include <utility>

namespace simulator {

/// A program's line to a simulated bus, over a socket that the environment variable
/// `canBusVariable` names: the path of a local socket; on Windows, which has none, the number of a
/// TCP port.
class BusLine
{
public:
    BusLine() = default;
    BusLine(BusLine &&other) noexcept
        : m_socket(std::exchange(other.m_socket, NoSocket))
    {
    }
    BusLine &operator=(BusLine &&other) noexcept
    {
        std::swap(m_socket, other.m_socket);
        return *this;
    }
    ~BusLine() { close(); }

    /// A line to the bus; see isOpen() for success.
    static BusLine connect();
    bool isOpen() const { return m_socket != NoSocket; }

    /// Hands @p call over and waits for the answer, which is `CanStatus::NoBus` if there is no
    /// line. A line that doesn't answer is closed.
    CanAnswer execute(const CanCall &call);

private:
    static constexpr std::intptr_t NoSocket = -1;

    bool exchange(const CanCall &call, CanAnswer &answer);
    void close();

    std::intptr_t m_socket = NoSocket;
};

} // namespace simulator
