#include "simulator/serving/ServingLoop.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <limits>

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace simulator {

ServingLoop::ServingLoop()
    : m_wake(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))
{
}

void ServingLoop::add(Link &link)
{
    m_links.push_back(&link);
}

void ServingLoop::remove(Link &link)
{
    std::erase(m_links, &link);
}

void ServingLoop::watch(int fd, Callback readable)
{
    unwatch(fd);
    m_watches.push_back({fd, std::move(readable)});
}

void ServingLoop::unwatch(int fd)
{
    std::erase_if(m_watches, [fd](const Watch &watch) { return watch.fd == fd; });
}

void ServingLoop::run()
{
    m_running = m_wake.isValid();
    while (m_running) {
        runOnce();
    }
}

void ServingLoop::stop()
{
    const std::uint64_t one = 1;
    // Can only fail with a counter that is full, which wakes the loop just as well.
    [[maybe_unused]] const ssize_t written = ::write(m_wake.get(), &one, sizeof one);
}

void ServingLoop::runOnce()
{
    // Copies: what is called below may change both lists.
    const std::vector<Link *> links = m_links;
    std::vector<pollfd> polled{{m_wake.get(), POLLIN, 0}};
    for (const Link *link : links) {
        polled.push_back({link->fd(), link->events(), 0});
    }
    for (const Watch &watch : m_watches) {
        polled.push_back({watch.fd, POLLIN, 0});
    }

    if (::poll(polled.data(), polled.size(), millisecondsToWait()) < 0) {
        return; // interrupted by a signal
    }
    if (polled[0].revents != 0) {
        std::uint64_t count = 0;
        [[maybe_unused]] const ssize_t drained = ::read(m_wake.get(), &count, sizeof count);
        m_running = false;
        return;
    }
    const auto now = Link::Clock::now();
    for (std::size_t i = 0; i < links.size(); ++i) {
        links[i]->service(polled[1 + i].revents, now);
    }
    for (std::size_t i = 1 + links.size(); i < polled.size(); ++i) {
        if (polled[i].revents != 0) {
            callReadable(polled[i].fd);
        }
    }
}

int ServingLoop::millisecondsToWait() const
{
    using std::chrono::milliseconds;
    std::optional<Link::Clock::time_point> earliest;
    for (const Link *link : m_links) {
        const auto wake = link->wakeAt();
        if (wake && (!earliest || *wake < *earliest)) {
            earliest = wake;
        }
    }
    if (!earliest) {
        return -1;
    }
    // Rounded up: a wait that ends too early would be repeated without a pause.
    const auto wait = std::chrono::ceil<milliseconds>(*earliest - Link::Clock::now());
    return static_cast<int>(
        std::clamp<milliseconds::rep>(wait.count(), 0, std::numeric_limits<int>::max()));
}

void ServingLoop::callReadable(int fd)
{
    const auto found = std::find_if(m_watches.begin(), m_watches.end(),
                                    [fd](const Watch &watch) { return watch.fd == fd; });
    if (found != m_watches.end()) {
        const Callback readable = found->readable; // it may take itself off the list
        readable();
    }
}

} // namespace simulator
