#include "simulator/can/CanBusServer.h"

#include <cerrno>
#include <cstring>
#include <utility>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace simulator {

namespace {

constexpr int backlog = 4;

FileDescriptor listenAt(const std::string &path)
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (path.size() >= sizeof address.sun_path) {
        return {};
    }
    std::memcpy(address.sun_path, path.data(), path.size());
    FileDescriptor listener(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    ::unlink(path.c_str()); // left over from a simulator that was killed
    if (!listener.isValid()
        || ::bind(listener.get(), reinterpret_cast<const sockaddr *>(&address), sizeof address) < 0
        || ::listen(listener.get(), backlog) < 0) {
        return {};
    }
    return listener;
}

} // namespace

CanBusServer::CanBusServer(CanBus &bus, std::string path)
    : m_bus(bus)
    , m_path(std::move(path))
    , m_listener(listenAt(m_path))
{
}

CanBusServer::~CanBusServer()
{
    if (isListening()) {
        ::unlink(m_path.c_str());
    }
}

void CanBusServer::attach(ServingLoop &loop)
{
    if (isListening()) {
        m_loop = &loop;
        loop.watch(m_listener.get(), [this] { accept(); });
    }
}

void CanBusServer::detach()
{
    if (!m_loop) {
        return;
    }
    m_loop->unwatch(m_listener.get());
    for (const FileDescriptor &client : m_clients) {
        m_loop->unwatch(client.get());
        m_bus.leave(client.get());
    }
    m_clients.clear();
    m_loop = nullptr;
}

void CanBusServer::accept()
{
    FileDescriptor client(
        ::accept4(m_listener.get(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
    if (client.isValid()) {
        const int fd = client.get();
        m_clients.push_back(std::move(client));
        m_loop->watch(fd, [this, fd] { serve(fd); });
    }
}

void CanBusServer::serve(int client)
{
    CanCall call;
    CanAnswer answer;
    const ssize_t size = ::recv(client, &call, sizeof call, 0);
    if (size < 0 && errno == EAGAIN) {
        return; // the loop meant an earlier descriptor with the same number
    }
    if (size == sizeof call) {
        answer = m_bus.execute(client, call);
        if (::send(client, &answer, sizeof answer, MSG_NOSIGNAL) == sizeof answer) {
            return;
        }
    }
    // The program has ended, or is none that knows the records.
    m_loop->unwatch(client);
    m_bus.leave(client);
    std::erase_if(m_clients, [client](const FileDescriptor &fd) { return fd.get() == client; });
}

} // namespace simulator
