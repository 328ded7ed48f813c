#include "simulator/serial/Pty.h"

#include <array>

#include <fcntl.h>
#include <stdlib.h>
#include <termios.h>

namespace simulator {

Pty::Pty()
{
    FileDescriptor master(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK));
    std::array<char, 64> path{};
    termios settings{};
    if (!master.isValid() || ::grantpt(master.get()) < 0 || ::unlockpt(master.get()) < 0
        || ::ptsname_r(master.get(), path.data(), path.size()) != 0
        || ::tcgetattr(master.get(), &settings) < 0) {
        return;
    }
    // A fresh terminal echoes: the first request would come back as its own reply.
    ::cfmakeraw(&settings);
    if (::tcsetattr(master.get(), TCSANOW, &settings) < 0) {
        return;
    }
    m_portPath = path.data();
    m_master = std::move(master);
}

} // namespace simulator
