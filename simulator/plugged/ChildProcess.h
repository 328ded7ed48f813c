#pragma once

#include "simulator/serving/FileDescriptor.h"

#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

namespace simulator {

/// A program that is started, watched and ended.
class ChildProcess
{
public:
    /// Starts @p command with @p environment ("NAME=value") put over this process's own, and with
    /// nothing to read on its standard input. It gets SIGTERM if this process should die.
    /// See isRunning() for success; a program that can't be found ends with exit code 127.
    ChildProcess(const std::vector<std::string> &command,
                 const std::vector<std::string> &environment);
    /// Kills it, if it still runs.
    ~ChildProcess();
    ChildProcess(const ChildProcess &) = delete;
    ChildProcess &operator=(const ChildProcess &) = delete;

    bool isRunning() const { return m_pid > 0; }
    /// Can be read when the program has ended.
    int endFd() const { return m_end.get(); }

    /// Asks it to end (SIGTERM).
    void terminate();
    /// Ends it by force.
    void kill();
    /// Waits for its end. @return its exit code; 128 and the signal's number, if a signal ended it;
    /// 127 if it never ran.
    int wait();

private:
    void send(int signal);

    pid_t m_pid = -1;
    FileDescriptor m_end; // a descriptor of the process
    int m_exitCode = 127;
};

} // namespace simulator
