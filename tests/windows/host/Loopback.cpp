#include "windows/host/Loopback.h"

#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

using simulator::FileDescriptor;

FileDescriptor Loopback::listen()
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    FileDescriptor listener(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    if (!listener.isValid()
        || ::bind(listener.get(), reinterpret_cast<const sockaddr *>(&address), sizeof address) < 0
        || ::listen(listener.get(), SOMAXCONN) < 0) {
        return {};
    }
    return listener;
}

int Loopback::portOf(const FileDescriptor &listener)
{
    sockaddr_in address{};
    socklen_t size = sizeof address;
    ::getsockname(listener.get(), reinterpret_cast<sockaddr *>(&address), &size);
    return ntohs(address.sin_port);
}

FileDescriptor Loopback::accept(const FileDescriptor &listener)
{
    FileDescriptor client(::accept4(listener.get(), nullptr, nullptr, SOCK_CLOEXEC));
    // Short questions and answers, each of which the other end waits for.
    const int on = 1;
    ::setsockopt(client.get(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    return client;
}

bool Loopback::readAll(int socket, void *data, std::size_t size)
{
    return size == 0 || ::recv(socket, data, size, MSG_WAITALL) == static_cast<ssize_t>(size);
}

bool Loopback::writeAll(int socket, const void *data, std::size_t size)
{
    const auto *bytes = static_cast<const char *>(data);
    while (size > 0) {
        const ssize_t count = ::send(socket, bytes, size, MSG_NOSIGNAL);
        if (count <= 0) {
            return false;
        }
        bytes += count;
        size -= static_cast<std::size_t>(count);
    }
    return true;
}
