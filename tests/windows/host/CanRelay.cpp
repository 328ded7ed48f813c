#include "windows/host/CanRelay.h"

#include "simulator/can/CanCall.h"
#include "windows/host/Loopback.h"

#include <array>
#include <cstring>
#include <utility>

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

using simulator::FileDescriptor;

namespace {

/// Waits until @p socket can be read. False if @p stop can be.
bool waitFor(int socket, const FileDescriptor &stop)
{
    std::array<pollfd, 2> watched{{{socket, POLLIN, 0}, {stop.get(), POLLIN, 0}}};
    return ::poll(watched.data(), watched.size(), -1) > 0 && watched[1].revents == 0;
}

} // namespace

CanRelay::CanRelay(QByteArray busPath)
    : m_busPath(std::move(busPath))
    , m_listener(Loopback::listen())
    , m_stop(::eventfd(0, EFD_CLOEXEC))
    , m_thread([this] { run(); })
{
}

CanRelay::~CanRelay()
{
    ::eventfd_write(m_stop.get(), 1);
    m_thread.join();
}

int CanRelay::port() const
{
    return Loopback::portOf(m_listener);
}

void CanRelay::run()
{
    while (waitFor(m_listener.get(), m_stop)) {
        const FileDescriptor program = Loopback::accept(m_listener);
        relay(program.get());
    }
}

FileDescriptor CanRelay::connectToBus() const
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, m_busPath.constData(),
                static_cast<std::size_t>(m_busPath.size()));
    FileDescriptor bus(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0));
    if (::connect(bus.get(), reinterpret_cast<const sockaddr *>(&address), sizeof address) < 0) {
        return {};
    }
    return bus;
}

/// Until the program closes its end, or the bus is gone.
void CanRelay::relay(int program)
{
    const FileDescriptor bus = connectToBus();
    simulator::CanCall call;
    simulator::CanAnswer answer;
    while (bus.isValid() && waitFor(program, m_stop)
           && Loopback::readAll(program, &call, sizeof call)
           && ::send(bus.get(), &call, sizeof call, MSG_NOSIGNAL) == sizeof call
           && ::recv(bus.get(), &answer, sizeof answer, 0) == sizeof answer
           && Loopback::writeAll(program, &answer, sizeof answer)) { }
}
