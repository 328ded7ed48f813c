#include "simulator/can/LineLog.h"

#include <utility>

namespace simulator {

void LineLog::setSink(Sink sink)
{
    const std::lock_guard lock(m_mutex);
    m_sink = std::move(sink);
}

void LineLog::append(std::string line)
{
    const std::lock_guard lock(m_mutex);
    if (m_lines.size() == capacity) {
        m_lines.pop_front();
    }
    m_lines.push_back(std::move(line));
    if (m_sink) {
        m_sink(m_lines.back());
    }
}

std::vector<std::string> LineLog::lines() const
{
    const std::lock_guard lock(m_mutex);
    return {m_lines.begin(), m_lines.end()};
}

void LineLog::clear()
{
    const std::lock_guard lock(m_mutex);
    m_lines.clear();
}

} // namespace simulator
