#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace simulator {

/// What happened, a line each, in order. Keeps the last `capacity` lines, so that a simulator may
/// run for days. Every operation may be called from every thread.
class LineLog
{
public:
    static constexpr std::size_t capacity = 10000;

    using Sink = std::function<void(const std::string &)>;

    /// Also hands every later line to @p sink, on the thread that appends it. The sink must not use
    /// the log.
    void setSink(Sink sink);

    void append(std::string line);

    /// A copy of the lines so far.
    std::vector<std::string> lines() const;
    /// Forgets all lines.
    void clear();

private:
    mutable std::mutex m_mutex; // guards all below
    std::deque<std::string> m_lines;
    Sink m_sink;
};

} // namespace simulator
