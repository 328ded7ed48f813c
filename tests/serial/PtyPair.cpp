#include "PtyPair.h"

#include <QFile>

#include <array>
#include <cstdlib>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

PtyPair::PtyPair()
    : m_master(::posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC))
{
    std::array<char, 64> name{};
    if (::grantpt(m_master) == 0 && ::unlockpt(m_master) == 0
        && ::ptsname_r(m_master, name.data(), name.size()) == 0) {
        m_portName = QFile::decodeName(name.data());
    } else {
        close();
    }
}

PtyPair::~PtyPair()
{
    close();
}

void PtyPair::close()
{
    if (m_master != -1) {
        ::close(m_master);
    }
    m_master = -1;
}

bool PtyPair::send(const QByteArray &bytes)
{
    return ::write(m_master, bytes.constData(), size_t(bytes.size())) == bytes.size();
}

const QByteArray &PtyPair::received()
{
    std::array<char, 4096> block{};
    for (ssize_t count = 0; (count = ::read(m_master, block.data(), block.size())) > 0;) {
        m_received.append(block.data(), count);
    }
    return m_received;
}

termios2 PtyPair::line() const
{
    termios2 settings{};
    ::ioctl(m_master, TCGETS2, &settings);
    return settings;
}

void PtyPair::setLine(const termios2 &settings)
{
    ::ioctl(m_master, TCSETS2, &settings);
}
