#include "simulator/serving/FileDescriptor.h"

#include <unistd.h>

namespace simulator {

void FileDescriptor::reset()
{
    if (m_fd >= 0) {
        ::close(std::exchange(m_fd, -1));
    }
}

} // namespace simulator
