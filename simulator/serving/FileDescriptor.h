#pragma once

#include <utility>

namespace simulator {

/// Owner of one file descriptor, closed at the end.
class FileDescriptor
{
public:
    FileDescriptor() = default;
    /// Takes over @p fd; negative means none.
    explicit FileDescriptor(int fd)
        : m_fd(fd)
    {
    }
    FileDescriptor(FileDescriptor &&other) noexcept
        : m_fd(std::exchange(other.m_fd, -1))
    {
    }
    FileDescriptor &operator=(FileDescriptor &&other) noexcept
    {
        std::swap(m_fd, other.m_fd);
        return *this;
    }
    ~FileDescriptor() { reset(); }

    /// The descriptor, still owned here; -1, if there is none.
    int get() const { return m_fd; }
    bool isValid() const { return m_fd >= 0; }
    /// Closes it now.
    void reset();

private:
    int m_fd = -1;
};

} // namespace simulator
