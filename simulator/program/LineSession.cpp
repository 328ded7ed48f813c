#include "simulator/program/LineSession.h"

#include "simulator/serial/LineSettings.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>

namespace simulator {

// At a wrong rate a line that exists carries rubbish by itself, so the module answers all it reads.
LineSession::LineSession(const Options &options)
    : Session(options)
    , m_module(options.identity)
    , m_endpoint(m_module, m_faults, m_log)
{
    prepare(m_module);
}

std::string LineSession::start()
{
    const int line = open();
    if (line < 0) {
        return "cannot serve the line " + options().linePath + ": " + std::strerror(errno);
    }
    m_log.setSink(logFile().sinkFor("line"));
    listenTo({{"line", &m_faults, &m_module, {}, {}}});
    loop().add(m_link.emplace(line, m_endpoint, LineSettings{}, [this] { return open(); }));
    return {};
}

int LineSession::open()
{
    m_line.reset(); // first: as long as it is held, a device comes back under another name
    FileDescriptor line(
        ::open(options().linePath.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
    if (line.isValid() && makeByteLine(line.get(), options().baudRate)) {
        m_line = std::move(line);
    }
    return m_line.get();
}

} // namespace simulator
