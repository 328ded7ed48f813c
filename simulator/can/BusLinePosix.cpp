#include "simulator/can/BusLine.h"

#include <cstdlib>
#include <cstring>

#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

namespace simulator {

namespace {

/// A bus that hangs must not hang the program for good.
constexpr timeval patience{5, 0};

} // namespace

BusLine BusLine::connect()
{
    BusLine line;
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const char *path = std::getenv(canBusVariable);
    if (!path || std::strlen(path) >= sizeof address.sun_path) {
        return line;
    }
    std::memcpy(address.sun_path, path, std::strlen(path));
    const int socket = ::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0);
    line.m_socket = socket;
    if (::setsockopt(socket, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience) < 0
        || ::connect(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) < 0) {
        line.close();
    }
    return line;
}

bool BusLine::exchange(const CanCall &call, CanAnswer &answer)
{
    const auto socket = static_cast<int>(m_socket);
    return ::send(socket, &call, sizeof call, MSG_NOSIGNAL) == sizeof call
        && ::recv(socket, &answer, sizeof answer, 0) == sizeof answer;
}

void BusLine::close()
{
    if (isOpen()) {
        ::close(static_cast<int>(std::exchange(m_socket, NoSocket)));
    }
}

} // namespace simulator
