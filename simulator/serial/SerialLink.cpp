#include "simulator/serial/SerialLink.h"

#include <array>
#include <utility>

#include <poll.h>
#include <unistd.h>

namespace simulator {

SerialLink::SerialLink(int lineFd, SerialEndpoint &endpoint, LineSettings own, Reopen reopen)
    : m_lineFd(lineFd)
    , m_endpoint(endpoint)
    , m_own(own)
    , m_reopen(std::move(reopen))
{
}

int SerialLink::fd() const
{
    return m_hungUpUntil ? -1 : m_lineFd;
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
        m_hungUpUntil.reset();
        revents = lookAgain();
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

// What poll() finds after the pause; a line that can't be had yet is hung up.
short SerialLink::lookAgain()
{
    if (m_reopen) {
        m_lineFd = m_reopen();
    }
    pollfd look{m_lineFd, POLLIN, 0};
    ::poll(&look, 1, 0);
    return m_lineFd < 0 ? short(POLLHUP) : look.revents;
}

void SerialLink::readAll(Clock::time_point now)
{
    std::array<std::uint8_t, 1024> buffer{};
    ssize_t count = 0;
    while ((count = ::read(m_lineFd, buffer.data(), buffer.size())) > 0) {
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
    m_hungUpUntil = now + pauseWhenCutOff;
}

void SerialLink::writeDue(Clock::time_point now)
{
    const std::vector<std::uint8_t> due = m_endpoint.takeDue(now);
    if (m_unwritten.size() + due.size() <= maxUnwritten) {
        m_unwritten.insert(m_unwritten.end(), due.begin(), due.end());
    }
    while (!m_unwritten.empty()) {
        const ssize_t count = ::write(m_lineFd, m_unwritten.data(), m_unwritten.size());
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
    const auto line = readLineSettings(m_lineFd);
    return !line || *line == m_own;
}

} // namespace simulator
