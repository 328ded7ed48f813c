#include "simulator/can/BusLine.h"

#include <cstdlib>

#include <winsock2.h>
#include <ws2tcpip.h>

namespace simulator {

namespace {

/// A bus that hangs must not hang the program for good.
constexpr DWORD patience = 5000; // ms

} // namespace

BusLine BusLine::connect()
{
    BusLine line;
    const char *port = std::getenv(canBusVariable);
    WSADATA data;
    if (!port || WSAStartup(MAKEWORD(2, 2), &data) != 0) {
        return line;
    }
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(static_cast<u_short>(std::atoi(port)));
    const SOCKET socket = ::socket(AF_INET, SOCK_STREAM, 0);
    line.m_socket = static_cast<std::intptr_t>(socket);
    const int on = 1;
    ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char *>(&on), sizeof on);
    ::setsockopt(socket, SOL_SOCKET, SO_RCVTIMEO, reinterpret_cast<const char *>(&patience),
                 sizeof patience);
    if (::connect(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0) {
        line.close();
    }
    return line;
}

bool BusLine::exchange(const CanCall &call, CanAnswer &answer)
{
    const auto socket = static_cast<SOCKET>(m_socket);
    return ::send(socket, reinterpret_cast<const char *>(&call), sizeof call, 0) == sizeof call
        && ::recv(socket, reinterpret_cast<char *>(&answer), sizeof answer, MSG_WAITALL)
        == sizeof answer;
}

void BusLine::close()
{
    if (isOpen()) {
        ::closesocket(static_cast<SOCKET>(std::exchange(m_socket, NoSocket)));
        WSACleanup();
    }
}

} // namespace simulator
