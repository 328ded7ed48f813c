#include "simulator/program/CanInterfaceSession.h"
#include "simulator/program/CommandLine.h"
#include "simulator/program/LineSession.h"
#include "simulator/program/PluggedSession.h"
#include "simulator/program/PtySession.h"
#include "simulator/program/Session.h"

#include <cstdio>

int main(int argc, char **argv)
{
    simulator::Options options;
    const std::string problem = simulator::CommandLine::parse(argc, argv, options);
    if (!problem.empty()) {
        simulator::complain(problem + " (see --help)");
        return 2;
    }
    if (options.help) {
        std::fputs(simulator::CommandLine::help().c_str(), stdout);
        return 0;
    }
    if (options.pty) {
        return simulator::PtySession(options).run();
    }
    if (!options.linePath.empty()) {
        return simulator::LineSession(options).run();
    }
    if (!options.canInterface.empty()) {
        return simulator::CanInterfaceSession(options).run();
    }
    return simulator::PluggedSession(options).run();
}
