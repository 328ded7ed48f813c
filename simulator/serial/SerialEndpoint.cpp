#include "simulator/serial/SerialEndpoint.h"

#include <algorithm>

namespace simulator {

namespace {

// Neither a module's address nor a status that means anything, and easy to see in a log.
constexpr std::uint8_t garbageByte = 0xa5;

} // namespace

SerialEndpoint::SerialEndpoint(Module &module, FaultPlan &faults, WireLog &log)
    : m_module(module)
    , m_faults(faults)
    , m_log(log)
{
}

void SerialEndpoint::receive(std::span<const std::uint8_t> bytes, Clock::time_point now)
{
    if (now - m_lastByte > datagramPause) {
        m_partial.clear();
    }
    m_lastByte = now;
    for (const std::uint8_t byte : bytes) {
        m_partial.push_back(byte);
        if (m_partial.size() == datagramSize) {
            Datagram datagram;
            std::copy(m_partial.begin(), m_partial.end(), datagram.begin());
            m_partial.clear();
            answer(datagram, now);
        }
    }
}

void SerialEndpoint::receiveUnreadable(std::span<const std::uint8_t> bytes)
{
    m_partial.clear();
    m_log.append(WireLog::Direction::Unreadable, bytes);
}

std::optional<SerialEndpoint::Clock::time_point> SerialEndpoint::nextDue() const
{
    return m_pending.empty() ? std::nullopt : std::optional(m_pending.front().due);
}

std::vector<std::uint8_t> SerialEndpoint::takeDue(Clock::time_point now)
{
    std::vector<std::uint8_t> bytes;
    for (; !m_pending.empty() && m_pending.front().due <= now; m_pending.pop_front()) {
        const std::vector<std::uint8_t> &next = m_pending.front().bytes;
        m_log.append(WireLog::Direction::Sent, next);
        bytes.insert(bytes.end(), next.begin(), next.end());
    }
    return bytes;
}

void SerialEndpoint::dropDue(Clock::time_point now)
{
    while (!m_pending.empty() && m_pending.front().due <= now) {
        m_pending.pop_front();
    }
}

void SerialEndpoint::answer(const Datagram &datagram, Clock::time_point now)
{
    m_log.append(WireLog::Direction::Received, datagram);
    const Request request = Request::fromBytes(datagram);
    if (request.address != m_module.address()) {
        return;
    }
    Reply reply = m_module.execute(request);
    const ExchangeFaults faults = m_faults.next();
    if (faults.silence) {
        return;
    }

    reply.status = faults.status.value_or(reply.status);
    const Datagram whole = reply.toBytes();
    std::vector<std::uint8_t> bytes(whole.begin(), whole.end());
    if (faults.wrongChecksum) {
        bytes.back() = static_cast<std::uint8_t>(~bytes.back());
    }
    bytes.resize(faults.length, garbageByte);

    const Clock::time_point due = now + faults.delay;
    for (int copy = 0; copy < faults.copies; ++copy) {
        send(bytes, due);
    }
    if (faults.garbage > 0) {
        send(std::vector<std::uint8_t>(faults.garbage, garbageByte), due);
    }
}

// A module does one thing after the other: no reply overtakes the one before.
void SerialEndpoint::send(std::vector<std::uint8_t> bytes, Clock::time_point due)
{
    if (!m_pending.empty()) {
        due = std::max(due, m_pending.back().due);
    }
    m_pending.push_back({due, std::move(bytes)});
}

} // namespace simulator
