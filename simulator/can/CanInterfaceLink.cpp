#include "simulator/can/CanInterfaceLink.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include <linux/can.h>
#include <poll.h>
#include <unistd.h>

namespace simulator {

namespace {

// Extended and remote frames are none of this protocol, and error frames come from the kernel.
bool isPlainDataFrame(const can_frame &frame)
{
    return (frame.can_id & (CAN_EFF_FLAG | CAN_RTR_FLAG | CAN_ERR_FLAG)) == 0;
}

CanFrame fromKernel(const can_frame &frame)
{
    CanFrame result{static_cast<std::uint16_t>(frame.can_id & CAN_SFF_MASK),
                    static_cast<std::uint8_t>(std::min<std::size_t>(frame.can_dlc, maxFrameLength)),
                    {}};
    std::copy_n(frame.data, result.length, result.data.begin());
    return result;
}

can_frame toKernel(const CanFrame &frame)
{
    can_frame result{};
    result.can_id = frame.identifier;
    result.can_dlc = frame.length;
    std::copy_n(frame.data.begin(), frame.length, result.data);
    return result;
}

} // namespace

CanInterfaceLink::CanInterfaceLink(Open openInterface, CanEndpoint &endpoint, LineLog &frames)
    : m_open(std::move(openInterface))
    , m_endpoint(endpoint)
    , m_frames(frames)
{
}

bool CanInterfaceLink::open()
{
    m_socket = m_open();
    return m_socket.isValid();
}

short CanInterfaceLink::events() const
{
    return POLLIN;
}

std::optional<CanInterfaceLink::Clock::time_point> CanInterfaceLink::wakeAt() const
{
    return m_socket.isValid() ? m_endpoint.nextDue() : m_awayUntil;
}

void CanInterfaceLink::service(short revents, Clock::time_point now)
{
    if (!m_socket.isValid() && now >= m_awayUntil && !open()) {
        m_awayUntil = now + pauseWhenCutOff;
    }
    if (revents != 0) {
        readAll(now);
    }
    writeDue(now);
}

void CanInterfaceLink::readAll(Clock::time_point now)
{
    can_frame frame{};
    ssize_t count = 0;
    while ((count = ::read(m_socket.get(), &frame, sizeof frame)) == sizeof frame) {
        if (isPlainDataFrame(frame)) {
            const CanFrame received = fromKernel(frame);
            m_frames.append("can < " + received.toText());
            m_endpoint.receive(received, now);
        }
    }
    // The socket of an interface that was taken down tells so once, and works when it is up again.
    const bool works = count < 0 && (errno == EAGAIN || errno == EINTR || errno == ENETDOWN);
    if (!works) {
        m_socket.reset();
        m_awayUntil = now + pauseWhenCutOff;
    }
}

void CanInterfaceLink::writeDue(Clock::time_point now)
{
    while (const std::optional<CanFrame> reply = m_endpoint.takeDue(now)) {
        const can_frame frame = toKernel(*reply);
        if (::write(m_socket.get(), &frame, sizeof frame) == sizeof frame) {
            m_frames.append("can > " + reply->toText());
        } // else nobody can hear it
    }
}

} // namespace simulator
