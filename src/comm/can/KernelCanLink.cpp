#include "comm/can/KernelCanLink.h"

#include <QDir>
#include <QFile>

#include <utility>

#ifdef ZDR_HAVE_LIBSOCKETCAN
#include <libsocketcan.h>
#endif
#include <linux/can.h>
#include <linux/can/raw.h>
#include <net/if.h>
#include <net/if_arp.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

/// A descriptor that lives no longer than the scope.
class ScopedSocket
{
public:
    ScopedSocket()
        : m_fd(::socket(PF_CAN, SOCK_RAW | SOCK_NONBLOCK | SOCK_CLOEXEC, CAN_RAW))
    {
    }
    ~ScopedSocket()
    {
        if (m_fd >= 0) {
            ::close(m_fd);
        }
    }
    ScopedSocket(const ScopedSocket &) = delete;
    ScopedSocket &operator=(const ScopedSocket &) = delete;

    bool isValid() const { return m_fd >= 0; }
    int fd() const { return m_fd; }
    int release() { return std::exchange(m_fd, -1); }

private:
    int m_fd;
};

/// The kernel's request record for the interface @p name.
ifreq requestFor(const QByteArray &name)
{
    ifreq request{};
    qstrncpy(request.ifr_name, name.constData(), sizeof request.ifr_name);
    return request;
}

} // namespace

KernelCanLink::KernelCanLink(const QString &name)
    : m_name(name.toLocal8Bit())
{
}

bool KernelCanLink::isUp() const
{
    const ScopedSocket socket;
    ifreq request = requestFor(m_name);
    return ::ioctl(socket.fd(), SIOCGIFFLAGS, &request) == 0 && (request.ifr_flags & IFF_UP) != 0;
}

bool KernelCanLink::setUp(bool up)
{
    const ScopedSocket socket;
    ifreq request = requestFor(m_name);
    if (::ioctl(socket.fd(), SIOCGIFFLAGS, &request) < 0) {
        return false;
    }
    const int flags = up ? request.ifr_flags | IFF_UP : request.ifr_flags & ~IFF_UP;
    request.ifr_flags = static_cast<short>(flags);
    return ::ioctl(socket.fd(), SIOCSIFFLAGS, &request) == 0;
}

#ifdef ZDR_HAVE_LIBSOCKETCAN

std::optional<unsigned int> KernelCanLink::bitRate() const
{
    can_bittiming timing{};
    if (can_get_bittiming(m_name.constData(), &timing) < 0) {
        return std::nullopt;
    }
    return timing.bitrate;
}

bool KernelCanLink::setBitRate(unsigned int bitsPerSecond)
{
    return can_set_bitrate(m_name.constData(), bitsPerSecond) == 0;
}

#else

std::optional<unsigned int> KernelCanLink::bitRate() const
{
    return std::nullopt;
}

bool KernelCanLink::setBitRate(unsigned int)
{
    return false;
}

#endif

int KernelCanLink::openSocket()
{
    ScopedSocket socket;
    ifreq request = requestFor(m_name);
    if (::ioctl(socket.fd(), SIOCGIFINDEX, &request) < 0) {
        return -1; // also without a socket
    }
    sockaddr_can address{};
    address.can_family = AF_CAN;
    address.can_ifindex = request.ifr_ifindex;
    if (::bind(socket.fd(), reinterpret_cast<const sockaddr *>(&address), sizeof address) < 0) {
        return -1;
    }
    return socket.release();
}

QString firstCanInterface(const QString &directory)
{
    const QDir interfaces(directory);
    const QStringList names = interfaces.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString &name : names) {
        QFile type(interfaces.filePath(name + "/type"_L1));
        if (type.open(QIODevice::ReadOnly) && type.readAll().trimmed().toInt() == ARPHRD_CAN) {
            return name;
        }
    }
    return {};
}

bool kernelHasCan()
{
    return ScopedSocket().isValid();
}
