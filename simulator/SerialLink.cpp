#include "simulator/SerialLink.h"

#include <array>
#include <cerrno>

#include <poll.h>
#include <unistd.h>

namespace simulator {

SerialLink::SerialLink(int masterFd, SerialEndpoint &endpoint, LineSettings own)
    : m_masterFd(masterFd)
    , m_endpoint(endpoint)
    , m_own(own)
{
}

int SerialLink::fd() const
{
    return m_hungUpUntil ? -1 : m_masterFd;
}

short SerialLink::events() const
{
    return static_cast<short>(m_unwritten.empty() ? POLLIN : POLLIN | POLLOUT);
}

std::optional<SerialLink::Clock::time_point> SerialLink::wakeAt() const
{
    return m_hungUpUntil ? m_hungUpUntil : m_endpoint.nextDue();
}

void SerialLink::service(short revents, Clock::time_point now)
{
    if (m_hungUpUntil) {
        if (now < *m_hungUpUntil) {
            return;
        }
        pollfd look{m_masterFd, POLLIN, 0};
        ::poll(&look, 1, 0);
        revents = look.revents;
        m_hungUpUntil.reset();
    }
    if ((revents & POLLIN) != 0) {
        readAll(now);
    }
    if ((revents & (POLLHUP | POLLERR | POLLNVAL)) != 0) {
        hangUp(now);
    } else {
        writeDue(now);
    }
}

void SerialLink::readAll(Clock::time_point now)
{
    std::array<std::uint8_t, 1024> buffer{};
    ssize_t count = 0;
    while ((count = ::read(m_masterFd, buffer.data(), buffer.size())) > 0) {
        const std::span<const std::uint8_t> bytes(buffer.data(), static_cast<std::size_t>(count));
        if (understandsLine()) {
            m_endpoint.receive(bytes, now);
        } else {
            m_endpoint.receiveUnreadable(bytes);
        }
    }
}

void SerialLink::hangUp(Clock::time_point now)
{
    m_unwritten.clear();
    m_endpoint.dropDue(now);
    m_hungUpUntil = now + hangUpPause;
}

void SerialLink::writeDue(Clock::time_point now)
{
    const std::vector<std::uint8_t> due = m_endpoint.takeDue(now);
    if (m_unwritten.size() + due.size() <= maxUnwritten) {
        m_unwritten.insert(m_unwritten.end(), due.begin(), due.end());
    }
    while (!m_unwritten.empty()) {
        const ssize_t count = ::write(m_masterFd, m_unwritten.data(), m_unwritten.size());
        if (count <= 0) {
            // A full terminal takes the rest later; everything else is the hang-up that the next
            // poll() tells of.
            return;
        }
        m_unwritten.erase(m_unwritten.begin(), m_unwritten.begin() + count);
    }
}

// A module hears nothing but framing errors on a line that runs at another speed.
bool SerialLink::understandsLine() const
{
    if (m_own.baudRate == 0) {
        return true;
    }
    const auto line = readLineSettings(m_masterFd);
    return !line || *line == m_own;
}

} // namespace simulator
