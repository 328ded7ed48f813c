// One exchange with a module that answers at once: wall time against the one sleep of 10 ms that
// lies between the write and the first look at the line, and the CPU time that it takes.

#include "benchmarks/Figure.h"
#include "comm/QSerialCommandHandler.h"
#include "simulator/Module.h"
#include "simulator/PtyLine.h"
#include "simulator/ServingThread.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QThread>

#include <cstdlib>

namespace {

constexpr int Exchanges = 500;
constexpr double FloorMsecs = 10.0;
constexpr double CpuGoalUsecs = 100.0;

void ignoreDebugLines(QtMsgType, const QMessageLogContext &, const QString &) { }

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    qInstallMessageHandler(ignoreDebugLines);

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
    return replies == Exchanges ? EXIT_SUCCESS : EXIT_FAILURE;
}
