#pragma once

#include <optional>

/// One CAN interface of the kernel ("can0"), as SocketCanChannel needs it.
class CanLink
{
public:
    CanLink() = default;
    virtual ~CanLink() = default;
    CanLink(const CanLink &) = delete;
    CanLink &operator=(const CanLink &) = delete;

    /// Whether the interface takes part in the traffic of the bus.
    virtual bool isUp() const = 0;
    /// Takes the interface up or down. False, if that isn't permitted or fails.
    virtual bool setUp(bool up) = 0;

    /// The speed in bit/s; nothing, if it can't be found out, or the interface has none.
    virtual std::optional<unsigned int> bitRate() const = 0;
    /// Sets the speed in bit/s, which the kernel allows only while the interface is down. False, if
    /// that isn't permitted or fails.
    virtual bool setBitRate(unsigned int bitsPerSecond) = 0;

    /// A new non-blocking descriptor that carries the frames of the interface as struct can_frame
    /// and belongs to the caller; -1 on failure.
    virtual int openSocket() = 0;
};
