#include "simulator/program/LineReader.h"

#include <array>
#include <cerrno>
#include <utility>

#include <unistd.h>

namespace simulator {

LineReader::LineReader(int fd, Handler handler)
    : m_fd(fd)
    , m_handler(std::move(handler))
{
}

bool LineReader::readOnce()
{
    std::array<char, 1024> buffer{};
    const ssize_t count = ::read(m_fd, buffer.data(), buffer.size());
    if (count < 0) {
        return errno == EINTR || errno == EAGAIN;
    }
    for (ssize_t i = 0; i < count; ++i) {
        const char character = buffer[static_cast<std::size_t>(i)];
        if (character != '\n') {
            m_partial.push_back(character);
            continue;
        }
        const std::string line = std::exchange(m_partial, {});
        if (line.size() <= maxLength) {
            m_handler(line);
        }
    }
    if (m_partial.size() > maxLength) {
        m_partial.resize(maxLength + 1); // still too long when its end comes
    }
    return count > 0;
}

} // namespace simulator
