#pragma once

#include "simulator/serving/FileDescriptor.h"

#include <string>

namespace simulator {

/// A new pseudo-terminal in raw mode. The master end is here; the slave end is a port for others.
class Pty
{
public:
    /// Opens one; see isOpen() for success.
    Pty();

    bool isOpen() const { return m_master.isValid(); }
    /// The master end, non-blocking; -1 if not open.
    int masterFd() const { return m_master.get(); }
    /// Path of the slave end, "/dev/pts/N"; empty if the opening failed.
    const std::string &portPath() const { return m_portPath; }
    /// Closes the master: whoever has the slave open sees a hang-up, as of a pulled-out port, and
    /// the path is gone.
    void close() { m_master.reset(); }

private:
    FileDescriptor m_master;
    std::string m_portPath;
};

} // namespace simulator
