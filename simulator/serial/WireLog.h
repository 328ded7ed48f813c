#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <span>
#include <string>
#include <vector>

namespace simulator {

/// What crossed a line, in order. Keeps the last `capacity` entries, so that a simulator may run
/// for days. Every operation may be called from every thread.
class WireLog
{
public:
    static constexpr std::size_t capacity = 100000;

    enum class Direction : std::uint8_t {
        Received, ///< a datagram of the host, also one for another module
        Sent, ///< bytes to the host: a reply, or what a fault made of it
        Unreadable, ///< bytes of a host that uses other line settings than the module
    };

    struct Entry
    {
        Direction direction;
        std::vector<std::uint8_t> bytes;

        /// The entry as a line: "<", ">" or "?", then the bytes as hexadecimal pairs.
        std::string toText() const;
        bool operator==(const Entry &) const = default;
    };

    using Sink = std::function<void(const Entry &)>;

    /// Also hands every later entry to @p sink, on the thread that appends it. The sink must not
    /// use the log.
    void setSink(Sink sink);

    void append(Direction direction, std::span<const std::uint8_t> bytes);

    /// A copy of the entries so far.
    std::vector<Entry> entries() const;
    /// Forgets all entries.
    void clear();

private:
    mutable std::mutex m_mutex; // guards all below
    std::deque<Entry> m_entries;
    Sink m_sink;
};

} // namespace simulator
