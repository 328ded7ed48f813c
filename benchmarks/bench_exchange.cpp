// One exchange with a module that answers at once: wall time against the one sleep of 10 ms that
// lies between the write and the first look at the line, and the CPU time that it takes, against a
// fixed amount and against the bare system calls of such an exchange.

#include "benchmarks/DebugLines.h"
#include "benchmarks/Figure.h"
#include "comm/QSerialCommandHandler.h"
#include "simulator/protocol/Module.h"
#include "simulator/serial/PtyLine.h"
#include "simulator/serving/ServingThread.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>

#include <cstdlib>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

constexpr int Exchanges = 500;
constexpr double FloorMsecs = 10.0;
constexpr double CpuGoalUsecs = 100.0;

/// CPU time of the calling thread for one exchange that has no program around it.
double bareExchangeCpuUsecs(const char *portPath)
{
    constexpr unsigned char GetMaxSpeed[] = {1, 6, 4, 0, 0, 0, 0, 0, 11};
    const int port = open(portPath, O_RDWR | O_NOCTTY);
    unsigned char reply[sizeof GetMaxSpeed];
    const auto before = threadCpuTime();
    for (int i = 0; i < Exchanges; ++i) {
        int available = 0;
        bool ok = write(port, GetMaxSpeed, sizeof GetMaxSpeed) == sizeof GetMaxSpeed
            && ioctl(port, FIONREAD, &available) == 0;
        QThread::usleep(10000);
        ok = ok && ioctl(port, FIONREAD, &available) == 0
            && read(port, reply, sizeof reply) == sizeof reply;
        if (!ok) {
            qFatal("the bare exchange failed");
        }
    }
    const double cpuUsecs = static_cast<double>((threadCpuTime() - before).count()) / 1e3;
    close(port);
    return cpuUsecs / Exchanges;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    ignoreDebugLines();

    simulator::Module module;
    simulator::PtyLine line(module);
    const simulator::ServingThread thread(line.link());

    QSerialCommandHandler handler;
    int replies = 0;
    QObject::connect(&handler, &QSerialCommandHandler::requestedValue, [&replies] { ++replies; });
    if (!handler.openDevice(QString::fromStdString(line.portPath()))) {
        return EXIT_FAILURE;
    }

    const auto cpuBefore = threadCpuTime();
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < Exchanges; ++i) {
        handler.getAxisParameter(1, 0, 4);
    }
    const double wallMsecs = static_cast<double>(timer.nsecsElapsed()) / 1e6;
    const double cpuUsecs = static_cast<double>((threadCpuTime() - cpuBefore).count()) / 1e3;

    // What the platform makes of the sleep itself, in the same run.
    timer.restart();
    for (int i = 0; i < Exchanges; ++i) {
        QThread::usleep(10000);
    }
    const double sleepMsecs = static_cast<double>(timer.nsecsElapsed()) / 1e6;

    Figure{QStringLiteral("exchange, wall, against 10 ms"), wallMsecs / Exchanges, FloorMsecs,
           QStringLiteral("ms"), 1.05}
        .print();
    Figure{QStringLiteral("exchange, wall, against the bare sleep"), wallMsecs / Exchanges,
           sleepMsecs / Exchanges, QStringLiteral("ms"), 1.05}
        .print();
    Figure{QStringLiteral("exchange, CPU, against 100 us"), cpuUsecs / Exchanges, CpuGoalUsecs,
           QStringLiteral("us"), 1.0}
        .print();
    handler.closeDevice();
    Figure{QStringLiteral("exchange, CPU, against bare system calls"), cpuUsecs / Exchanges,
           bareExchangeCpuUsecs(line.portPath().c_str()), QStringLiteral("us"), 2.0}
        .print();
    return replies == Exchanges ? EXIT_SUCCESS : EXIT_FAILURE;
}
