#pragma once

#include "simulator/can/LineLog.h"
#include "simulator/serial/WireLog.h"

#include <cstdio>
#include <string>

namespace simulator {

/// A file that takes logs as lines, each written out at once: "usb < 01 06 01 ...", "can < 001
/// ...".
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
    /// The same for a log whose lines say themselves where they are from.
    LineLog::Sink sink();

private:
    void write(const std::string &line);

    std::FILE *m_file = nullptr;
};

} // namespace simulator
