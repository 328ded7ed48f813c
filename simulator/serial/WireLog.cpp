#include "simulator/serial/WireLog.h"

namespace simulator {

std::string WireLog::Entry::toText() const
{
    static constexpr char digits[] = "0123456789ABCDEF";
    std::string text;
    switch (direction) {
    case Direction::Received:
        text = "<";
        break;
    case Direction::Sent:
        text = ">";
        break;
    case Direction::Unreadable:
        text = "?";
        break;
    }
    for (const std::uint8_t byte : bytes) {
        text += {' ', digits[byte >> 4], digits[byte & 0xf]};
    }
    return text;
}

void WireLog::setSink(Sink sink)
{
    const std::lock_guard lock(m_mutex);
    m_sink = std::move(sink);
}

void WireLog::append(Direction direction, std::span<const std::uint8_t> bytes)
{
    const std::lock_guard lock(m_mutex);
    if (m_entries.size() == capacity) {
        m_entries.pop_front();
    }
    m_entries.push_back({direction, {bytes.begin(), bytes.end()}});
    if (m_sink) {
        m_sink(m_entries.back());
    }
}

std::vector<WireLog::Entry> WireLog::entries() const
{
    const std::lock_guard lock(m_mutex);
    return {m_entries.begin(), m_entries.end()};
}

void WireLog::clear()
{
    const std::lock_guard lock(m_mutex);
    m_entries.clear();
}

} // namespace simulator
