#pragma once

#include "comm/can/CanLink.h"

#include <QStringList>

#include <array>

#include <sys/socket.h>

/// What the test knows and says about the one interface.
struct PlayedKernel
{
    bool hasInterface = true;
    bool isUp = true;
    bool mayChange = true; ///< the program has the permission to configure the interface
    bool hasSocket = true;
    std::optional<unsigned int> bitRate = 500000;
    QStringList changes; ///< what the program did to the interface
    int far = -1; ///< the bus's end of the frames
};

/// An interface whose frames go through a pair of local sockets, as the kernel's own would.
class PlayedCanLink : public CanLink
{
public:
    explicit PlayedCanLink(PlayedKernel &kernel)
        : m_kernel(kernel)
    {
    }

    bool isUp() const override { return m_kernel.isUp; }
    bool setUp(bool up) override
    {
        m_kernel.changes.append(up ? QStringLiteral("up") : QStringLiteral("down"));
        m_kernel.isUp = m_kernel.mayChange ? up : m_kernel.isUp;
        return m_kernel.mayChange;
    }
    std::optional<unsigned int> bitRate() const override { return m_kernel.bitRate; }
    bool setBitRate(unsigned int bitsPerSecond) override
    {
        m_kernel.changes.append(QString::number(bitsPerSecond));
        if (!m_kernel.mayChange || m_kernel.isUp) {
            return false;
        }
        m_kernel.bitRate = bitsPerSecond;
        return true;
    }
    int openSocket() override
    {
        std::array<int, 2> ends{-1, -1};
        if (!m_kernel.hasSocket
            || ::socketpair(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0, ends.data())
                < 0) {
            return -1;
        }
        m_kernel.far = ends[1];
        return ends[0];
    }

private:
    PlayedKernel &m_kernel;
};
