#pragma once

#include "simulator/WireLog.h"

#include <cstdio>
#include <string>

namespace simulator {

/// A file that takes wire logs as lines, each written out at once: "usb < 01 06 01 ...".
class LogFile
{
public:
    LogFile() = default;
    ~LogFile();
    LogFile(const LogFile &) = delete;
    LogFile &operator=(const LogFile &) = delete;

    /// Opens @p path anew; "-" is the standard output, an empty path no file at all.
    /// @return an empty text, or in one line what went wrong
    std::string open(const std::string &path);

    /// A sink that writes with @p name in front; it must not outlive the file. Does nothing without
    /// a file.
    WireLog::Sink sinkFor(const std::string &name);

private:
    std::FILE *m_file = nullptr;
};

} // namespace simulator
