#include "EdgeWatch.h"

#include <sys/epoll.h>
#include <unistd.h>

EdgeWatch::EdgeWatch()
    : m_epoll(::epoll_create1(EPOLL_CLOEXEC))
{
}

EdgeWatch::~EdgeWatch()
{
    if (m_epoll != -1) {
        ::close(m_epoll);
    }
}

void EdgeWatch::watch(int descriptor)
{
    stop();
    m_watched = descriptor;
    arm();
    // The kernel reports what waits already like a new arrival: that first report is dropped.
    // A port that it finds lost was unregistered with it, so it is registered once more.
    if (take() == Event::PortLost) {
        m_watched = descriptor;
        arm();
    }
}

void EdgeWatch::stop()
{
    if (m_watched == -1) {
        return;
    }
    ::epoll_ctl(m_epoll, EPOLL_CTL_DEL, m_watched, nullptr);
    m_watched = -1;
}

EdgeWatch::Event EdgeWatch::take()
{
    epoll_event event{};
    if (::epoll_wait(m_epoll, &event, 1, 0) < 1) {
        return Event::None;
    }
    if (event.events & (EPOLLERR | EPOLLHUP)) {
        // A lost port counts as readable, too, and holds nothing.
        stop();
        return Event::PortLost;
    }
    return Event::CharactersCame;
}

void EdgeWatch::arm()
{
    epoll_event event{};
    event.events = EPOLLIN | EPOLLET;
    ::epoll_ctl(m_epoll, EPOLL_CTL_ADD, m_watched, &event);
}
