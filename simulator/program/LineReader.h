#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace simulator {

/// Cuts what comes from a descriptor into lines.
class LineReader
{
public:
    using Handler = std::function<void(const std::string &line)>;

    /// Longer lines are dropped: nobody types them.
    static constexpr std::size_t maxLength = 4096;

    /// Reads @p fd, which stays the caller's, and hands each line to @p handler.
    LineReader(int fd, Handler handler);

    /// Reads once; call it when there is something to read.
    /// @return false at the end of the input, or if it can't be read
    bool readOnce();

private:
    const int m_fd;
    Handler m_handler;
    std::string m_partial;
};

} // namespace simulator
