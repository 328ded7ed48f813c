// CPU time of the program's thread over 10 s with an open port and nothing to do: once with an
// empty line, once with a byte on it that nobody reads.

#include "benchmarks/DebugLines.h"
#include "benchmarks/Figure.h"
#include "comm/QSerialCommandHandler.h"
#include "simulator/serial/Pty.h"

#include <QCoreApplication>
#include <QTimer>

#include <chrono>
#include <cstdlib>

#include <unistd.h>

using namespace std::chrono_literals;

namespace {

constexpr auto Span = 10s;

double cpuMsecsOfAnIdleSpan()
{
    QTimer::singleShot(Span, QCoreApplication::instance(), &QCoreApplication::quit);
    const auto before = processCpuTime();
    QCoreApplication::exec();
    return static_cast<double>((processCpuTime() - before).count()) / 1e6;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    ignoreDebugLines();

    simulator::Pty pty;
    QSerialCommandHandler handler;
    if (!handler.openDevice(QString::fromStdString(pty.portPath()))) {
        return EXIT_FAILURE;
    }
    const double spanMsecs = std::chrono::duration<double, std::milli>(Span).count();
    Figure{QStringLiteral("idle 10 s, connected, nothing unread, CPU"), cpuMsecsOfAnIdleSpan(),
           spanMsecs, QStringLiteral("ms"), 0.01}
        .print();

    const char late = 'x';
    if (write(pty.masterFd(), &late, 1) != 1) {
        return EXIT_FAILURE;
    }
    Figure{QStringLiteral("idle 10 s, connected, 1 byte unread, CPU"), cpuMsecsOfAnIdleSpan(),
           spanMsecs, QStringLiteral("ms"), 0.01}
        .print();
    return EXIT_SUCCESS;
}
