#pragma once

#include "simulator/serving/FileDescriptor.h"

#include <initializer_list>

namespace simulator {

/// Turns signals into something to read. They stay blocked for the rest of the process; make it
/// before there are other threads, which inherit that.
class SignalReader
{
public:
    explicit SignalReader(std::initializer_list<int> signals);

    /// Can be read when a signal has come.
    int fd() const { return m_fd.get(); }
    /// The next signal that has come; 0, if none has.
    int take();

private:
    FileDescriptor m_fd;
};

} // namespace simulator
