#include "simulator/serial/LineSettings.h"

#include <asm/termbits.h>
#include <sys/ioctl.h>

namespace simulator {

namespace {

int dataBitsOf(tcflag_t flags)
{
    switch (flags & CSIZE) {
    case CS5:
        return 5;
    case CS6:
        return 6;
    case CS7:
        return 7;
    default:
        return 8;
    }
}

char parityOf(tcflag_t flags)
{
    if ((flags & PARENB) == 0) {
        return 'N';
    }
    const bool odd = (flags & PARODD) != 0;
    if ((flags & CMSPAR) != 0) {
        return odd ? 'M' : 'S';
    }
    return odd ? 'O' : 'E';
}

} // namespace

std::string LineSettings::toText() const
{
    return std::to_string(baudRate) + ' ' + std::to_string(dataBits) + parity
        + std::to_string(stopBits);
}

std::optional<LineSettings> readLineSettings(int fd)
{
    // termios2 has the speed as a number, so that any speed can be compared.
    termios2 settings{};
    if (::ioctl(fd, TCGETS2, &settings) < 0) {
        return std::nullopt;
    }
    return LineSettings{static_cast<int>(settings.c_ospeed), dataBitsOf(settings.c_cflag),
                        parityOf(settings.c_cflag), (settings.c_cflag & CSTOPB) != 0 ? 2 : 1};
}

bool makeByteLine(int fd, int baudRate)
{
    termios2 settings{};
    if (::ioctl(fd, TCGETS2, &settings) < 0) {
        return false;
    }
    settings.c_iflag = IGNBRK;
    settings.c_oflag = 0;
    settings.c_lflag = 0;
    settings.c_cflag &= ~static_cast<tcflag_t>(CSIZE | PARENB | CMSPAR | CSTOPB | CRTSCTS);
    settings.c_cflag |= CS8 | CREAD | CLOCAL;
    settings.c_cc[VMIN] = 1;
    settings.c_cc[VTIME] = 0;
    if (baudRate != 0) {
        settings.c_cflag &= ~static_cast<tcflag_t>(CBAUD | (CBAUD << IBSHIFT));
        settings.c_cflag |= BOTHER | (BOTHER << IBSHIFT);
        settings.c_ospeed = settings.c_ispeed = static_cast<speed_t>(baudRate);
    }
    return ::ioctl(fd, TCSETS2, &settings) == 0 && ::ioctl(fd, TCFLSH, TCIFLUSH) == 0;
}

} // namespace simulator
