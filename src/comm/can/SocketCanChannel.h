#pragma once

#include "comm/can/CanLink.h"

#include <functional>
#include <memory>

struct can_frame;

/// The operations of CANlib over one CAN interface of the kernel. There is one channel, number 0,
/// and one handle for it.
///
/// What of the interface belongs to the system and what to this program:
/// - An interface that runs at the wanted speed already is left alone. Otherwise its speed is set,
///   for which it is taken down and up again; without the permission the speed counts as refused.
/// - An interface that is down is taken up for as long as the channel is on the bus. One that was
///   up before stays up, since other programs may use it.
///
/// Failures answer Refused. Nothing blocks.
class SocketCanChannel
{
public:
    /// The answer of every operation that fails.
    static constexpr int Refused = -1;

    /// Finds the interface when the channel is opened; null, if there is none.
    using FindLink = std::function<std::unique_ptr<CanLink>()>;

    explicit SocketCanChannel(FindLink findLink);
    ~SocketCanChannel();
    SocketCanChannel(const SocketCanChannel &) = delete;
    SocketCanChannel &operator=(const SocketCanChannel &) = delete;

    /// Answers the handle. Refused, if it is open already: the opening is exclusive.
    int open(int channel);
    /// Closes, also while on the bus.
    int close(int handle);
    /// @param code see CanBitRate.h
    int setBusParams(int handle, long code);
    /// Goes on the bus; the interface is taken up for it if it is down. Again does no harm.
    int busOn(int handle);
    /// Never fails on an open channel: the interface may have been pulled out, and a channel that
    /// couldn't leave the bus couldn't be closed either.
    int busOff(int handle);
    /// Only the low 8 bits of @p identifier go on the bus: an address is a byte, and one above 127
    /// comes here sign-extended.
    int write(int handle, long identifier, const void *data, unsigned int length);
    /// Takes one received frame, of which at most 8 bytes of @p data and its length are written.
    /// Refused, if there is none.
    int read(int handle, long *identifier, void *data, unsigned int *length);

private:
    bool isOpen(int handle) const;
    bool isOnBus(int handle) const;

    FindLink m_findLink;
    std::unique_ptr<CanLink> m_link; ///< null while closed
    int m_socket = -1; ///< valid while on the bus
    bool m_tookUp = false; ///< the interface is up because of this channel
};

/// A standard frame with the low 8 bits of @p identifier and the first @p length bytes of @p data,
/// 8 at most.
can_frame canFrame(long identifier, const void *data, unsigned int length);
