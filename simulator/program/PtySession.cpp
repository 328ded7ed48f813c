#include "simulator/program/PtySession.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <sys/stat.h>
#include <unistd.h>

namespace simulator {

PtySession::PtySession(const Options &options)
    : Session(options)
    , m_module(options.identity)
    , m_line(m_module, options.baudRate)
{
    prepare(m_module);
}

PtySession::~PtySession()
{
    if (m_linked) {
        ::unlink(options().linkPath.c_str());
    }
}

std::string PtySession::start()
{
    if (!m_line.isOpen()) {
        return "no pseudo-terminal to be had";
    }
    if (std::string problem = makeLink(); !problem.empty()) {
        return problem;
    }
    m_line.log().setSink(logFile().sinkFor("pty"));
    listenTo({{"pty", &m_line.faults(), &m_module, {}, {}}});
    loop().add(m_line.link());
    std::printf("%s\n", m_line.portPath().c_str());
    std::fflush(stdout);
    return {};
}

std::string PtySession::makeLink()
{
    const std::string &path = options().linkPath;
    if (path.empty()) {
        return {};
    }
    // A link may be left over from a run that was killed. Anything else is somebody's file.
    struct stat existing
    {
    };
    if (::lstat(path.c_str(), &existing) == 0 && S_ISLNK(existing.st_mode)) {
        ::unlink(path.c_str());
    }
    if (::symlink(m_line.portPath().c_str(), path.c_str()) < 0) {
        return "cannot make the link " + path + ": " + std::strerror(errno);
    }
    m_linked = true;
    return {};
}

} // namespace simulator
