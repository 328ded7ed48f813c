#include "simulator/program/Session.h"

#include "simulator/protocol/MachineLines.h"

#include <csignal>
#include <cstdio>

#include <unistd.h>

namespace simulator {

void complain(const std::string &problem)
{
    std::fprintf(stderr, "zdr-simulator: %s\n", problem.c_str());
}

Session::Session(const Options &options)
    : m_options(options)
    , m_signals({SIGINT, SIGTERM, SIGALRM})
    , m_input(STDIN_FILENO, [this](const std::string &line) {
        if (const std::string problem = m_console->execute(line); !problem.empty()) {
            complain(problem);
        }
    })
{
    std::signal(SIGPIPE, SIG_IGN); // a log that nobody reads any more is no reason to end
}

Session::~Session() = default;

int Session::run()
{
    std::string problem = m_logFile.open(m_options.logPath);
    if (problem.empty()) {
        problem = start();
    }
    if (!problem.empty()) {
        complain(problem);
        return 1;
    }
    m_loop.watch(m_signals.fd(), [this] { handleSignal(); });
    m_loop.run();
    return finish();
}

void Session::prepare(Module &module) const
{
    module.setLimitPolicy(m_options.limits);
    module.setSeed(m_options.seed);
    for (const std::string &line : m_options.machineLines) {
        MachineLines::execute(line, module); // can't fail: the options have been checked
    }
}

void Session::listenTo(std::vector<Console::Port> ports)
{
    const auto help = [] {
        std::fputs(CommandLine::help().c_str(), stdout);
        std::fflush(stdout);
    };
    m_console = std::make_unique<Console>(std::move(ports), help, [this] { quit(); });
    m_loop.watch(STDIN_FILENO, [this] {
        if (!m_input.readOnce()) {
            m_loop.unwatch(STDIN_FILENO);
        }
    });
}

void Session::handleSignal()
{
    const int signal = m_signals.take();
    if (signal == SIGALRM) {
        handleAlarm();
    } else if (signal != 0) {
        quit();
    }
}

} // namespace simulator
