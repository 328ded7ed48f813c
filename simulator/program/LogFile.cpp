#include "simulator/program/LogFile.h"

#include <cerrno>
#include <cstring>

namespace simulator {

LogFile::~LogFile()
{
    if (m_file && m_file != stdout) {
        std::fclose(m_file);
    }
}

std::string LogFile::open(const std::string &path)
{
    if (path.empty()) {
        return {};
    }
    m_file = path == "-" ? stdout : std::fopen(path.c_str(), "we");
    return m_file ? std::string() : "cannot write " + path + ": " + std::strerror(errno);
}

WireLog::Sink LogFile::sinkFor(const std::string &name)
{
    return [this, name](const WireLog::Entry &entry) { write(name + " " + entry.toText()); };
}

LineLog::Sink LogFile::sink()
{
    return [this](const std::string &line) { write(line); };
}

void LogFile::write(const std::string &line)
{
    if (m_file) {
        std::fprintf(m_file, "%s\n", line.c_str());
        std::fflush(m_file);
    }
}

} // namespace simulator
