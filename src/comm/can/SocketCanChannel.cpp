#include "comm/can/SocketCanChannel.h"

#include "comm/can/CanBitRate.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include <linux/can.h>
#include <unistd.h>

namespace {

constexpr int Handle = 0;
constexpr long AddressMask = 0xFF;

long identifierOf(const can_frame &frame)
{
    const bool extended = (frame.can_id & CAN_EFF_FLAG) != 0;
    return static_cast<long>(frame.can_id & (extended ? CAN_EFF_MASK : CAN_SFF_MASK));
}

} // namespace

SocketCanChannel::SocketCanChannel(FindLink findLink)
    : m_findLink(std::move(findLink))
{
}

SocketCanChannel::~SocketCanChannel()
{
    close(Handle);
}

int SocketCanChannel::open(int channel)
{
    if (m_link || channel != 0) {
        return Refused;
    }
    m_link = m_findLink();
    return m_link ? Handle : Refused;
}

int SocketCanChannel::close(int handle)
{
    if (!isOpen(handle)) {
        return Refused;
    }
    busOff(handle);
    m_link.reset();
    return 0;
}

int SocketCanChannel::setBusParams(int handle, long code)
{
    const unsigned int wanted = canBitsPerSecond(code);
    if (!isOpen(handle) || wanted == 0) {
        return Refused;
    }
    if (m_link->bitRate() == wanted) {
        return 0;
    }
    const bool wasUp = m_link->isUp();
    if (wasUp && !m_link->setUp(false)) {
        return Refused;
    }
    const bool isSet = m_link->setBitRate(wanted);
    const bool isBack = !wasUp || m_link->setUp(true);
    return isSet && isBack ? 0 : Refused;
}

int SocketCanChannel::busOn(int handle)
{
    if (!isOpen(handle)) {
        return Refused;
    }
    if (m_socket >= 0) {
        return 0;
    }
    if (!m_link->isUp()) {
        if (!m_link->setUp(true)) {
            return Refused;
        }
        m_tookUp = true;
    }
    m_socket = m_link->openSocket();
    if (m_socket < 0) {
        busOff(handle); // leaves the interface as it was found
        return Refused;
    }
    return 0;
}

int SocketCanChannel::busOff(int handle)
{
    if (!isOpen(handle)) {
        return Refused;
    }
    if (m_socket >= 0) {
        ::close(std::exchange(m_socket, -1));
    }
    if (std::exchange(m_tookUp, false)) {
        m_link->setUp(false);
    }
    return 0;
}

int SocketCanChannel::write(int handle, long identifier, const void *data, unsigned int length)
{
    if (!isOnBus(handle)) {
        return Refused;
    }
    const can_frame frame = canFrame(identifier, data, length);
    return ::write(m_socket, &frame, sizeof frame) == sizeof frame ? 0 : Refused;
}

int SocketCanChannel::read(int handle, long *identifier, void *data, unsigned int *length)
{
    can_frame frame{};
    if (!isOnBus(handle) || ::read(m_socket, &frame, sizeof frame) != sizeof frame) {
        return Refused;
    }
    *identifier = identifierOf(frame);
    *length = std::min<unsigned int>(frame.can_dlc, CAN_MAX_DLEN);
    std::memcpy(data, frame.data, *length);
    return 0;
}

bool SocketCanChannel::isOpen(int handle) const
{
    return m_link && handle == Handle;
}

bool SocketCanChannel::isOnBus(int handle) const
{
    return isOpen(handle) && m_socket >= 0;
}

can_frame canFrame(long identifier, const void *data, unsigned int length)
{
    can_frame frame{};
    frame.can_id = static_cast<canid_t>(identifier & AddressMask);
    frame.can_dlc = static_cast<__u8>(std::min<unsigned int>(length, CAN_MAX_DLEN));
    std::memcpy(frame.data, data, frame.can_dlc);
    return frame;
}
