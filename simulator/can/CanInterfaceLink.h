#pragma once

#include "simulator/can/CanEndpoint.h"
#include "simulator/can/LineLog.h"
#include "simulator/serving/FileDescriptor.h"
#include "simulator/serving/Link.h"

#include <functional>

namespace simulator {

/// Carries frames between a CAN interface of the kernel and a CanEndpoint. An interface that is
/// down is waited for; one that was pulled out is opened again when it is back.
class CanInterfaceLink : public Link
{
public:
    /// Opens the interface: see openCanInterface().
    using Open = std::function<FileDescriptor()>;

    /// @p endpoint and @p frames must outlive the link. The frames are logged as those of a CanBus.
    CanInterfaceLink(Open openInterface, CanEndpoint &endpoint, LineLog &frames);

    /// Opens the interface for the first time. @return false with errno set, if that fails
    bool open();

    int fd() const override { return m_socket.get(); }
    short events() const override;
    std::optional<Clock::time_point> wakeAt() const override;
    void service(short revents, Clock::time_point now) override;

private:
    void readAll(Clock::time_point now);
    void writeDue(Clock::time_point now);

    const Open m_open;
    CanEndpoint &m_endpoint;
    LineLog &m_frames;
    FileDescriptor m_socket; // invalid while the interface is away
    Clock::time_point m_awayUntil;
};

} // namespace simulator
