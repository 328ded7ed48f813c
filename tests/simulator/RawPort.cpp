#include "simulator/RawPort.h"

#include <QDeadlineTimer>

#include <array>

#include <asm/termbits.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

RawPort::RawPort(const QString &path)
    : m_path(path)
{
    open();
}

RawPort::~RawPort()
{
    close();
}

bool RawPort::reopen()
{
    close();
    open();
    return isOpen();
}

void RawPort::open()
{
    m_fd = ::open(m_path.toLocal8Bit().constData(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
}

void RawPort::close()
{
    if (m_fd >= 0) {
        ::close(m_fd);
        m_fd = -1;
    }
}

bool RawPort::setLine(int baudRate, int stopBits)
{
    termios2 settings{};
    settings.c_cflag = static_cast<tcflag_t>(CS8 | CREAD | CLOCAL | BOTHER)
        | static_cast<tcflag_t>(stopBits == 2 ? CSTOPB : 0);
    settings.c_ispeed = static_cast<speed_t>(baudRate);
    settings.c_ospeed = static_cast<speed_t>(baudRate);
    return ::ioctl(m_fd, TCSETS2, &settings) == 0;
}

bool RawPort::send(const QByteArray &bytes)
{
    return ::write(m_fd, bytes.constData(), static_cast<std::size_t>(bytes.size())) == bytes.size();
}

QByteArray RawPort::receive(int count, int timeout)
{
    QByteArray received;
    const QDeadlineTimer deadline(timeout);
    while (received.size() < count && !deadline.hasExpired()) {
        pollfd waiting{m_fd, POLLIN, 0};
        ::poll(&waiting, 1, static_cast<int>(deadline.remainingTime()));
        if ((waiting.revents & (POLLHUP | POLLERR | POLLNVAL)) != 0) {
            break;
        }
        std::array<char, 256> buffer{};
        const ssize_t got =
            ::read(m_fd, buffer.data(),
                   std::min(buffer.size(), static_cast<std::size_t>(count - received.size())));
        received.append(buffer.data(), static_cast<qsizetype>(std::max<ssize_t>(got, 0)));
    }
    return received;
}

QByteArray RawPort::exchange(const QByteArray &request)
{
    return send(request) ? receive(9) : QByteArray();
}

bool RawPort::waitForHangUp(int timeout)
{
    pollfd waiting{m_fd, 0, 0};
    ::poll(&waiting, 1, timeout);
    return (waiting.revents & POLLHUP) != 0;
}

int RawPort::waiting() const
{
    int count = 0;
    return ::ioctl(m_fd, FIONREAD, &count) == 0 ? count : -1;
}
