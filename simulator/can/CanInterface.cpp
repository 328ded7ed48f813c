#include "simulator/can/CanInterface.h"

#include <cerrno>

#include <linux/can.h>
#include <linux/can/raw.h>
#include <net/if.h>
#include <sys/socket.h>

namespace simulator {

FileDescriptor openCanInterface(const std::string &name)
{
    FileDescriptor socket(::socket(PF_CAN, SOCK_RAW | SOCK_NONBLOCK | SOCK_CLOEXEC, CAN_RAW));
    sockaddr_can address{};
    address.can_family = AF_CAN;
    address.can_ifindex = static_cast<int>(::if_nametoindex(name.c_str()));
    if (!socket.isValid() || address.can_ifindex == 0) { // 0 would stand for all interfaces
        return FileDescriptor();
    }
    if (::bind(socket.get(), reinterpret_cast<const sockaddr *>(&address), sizeof address) < 0) {
        return FileDescriptor();
    }
    return socket;
}

} // namespace simulator
