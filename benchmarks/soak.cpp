// Many exchanges in a row with a simulated module: resident memory after the first 10,000 and at
// the end, and the number of exchanges that failed. Each takes 10 ms at least, so 200,000 need
// somewhat more than half an hour; a smaller number may be given as the only argument.

#include "benchmarks/DebugLines.h"
#include "benchmarks/Figure.h"
#include "comm/QSerialCommandHandler.h"
#include "simulator/protocol/Module.h"
#include "simulator/serial/PtyLine.h"
#include "simulator/serving/ServingThread.h"

#include <QCoreApplication>
#include <QFile>
#include <QTextStream>

#include <cstdlib>

#include <unistd.h>

namespace {

constexpr int DefaultExchanges = 200'000;
constexpr int WarmUpExchanges = 10'000;
/// In MiB over the warm-up.
constexpr double GrowthGoal = 1.0;
constexpr char MaxPositioningSpeed = 4;

double residentMebibytes()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly)) {
        return 0;
    }
    const auto pages = file.readAll().split(' ').value(1).toLongLong();
    return static_cast<double>(pages * sysconf(_SC_PAGESIZE)) / (1024.0 * 1024.0);
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const int exchanges = argc > 1 ? QCoreApplication::arguments().at(1).toInt() : DefaultExchanges;
    ignoreDebugLines();

    simulator::Module module;
    simulator::PtyLine line(module);
    const simulator::ServingThread thread(line.link());

    QSerialCommandHandler handler;
    int replies = 0;
    int wrong = 0;
    int expected = 0;
    QObject::connect(&handler, &QSerialCommandHandler::requestedValue,
                     [&](char, char, char, int value) {
                         ++replies;
                         wrong += value != expected;
                     });
    if (!handler.openDevice(QString::fromStdString(line.portPath()))) {
        return EXIT_FAILURE;
    }

    double warm = residentMebibytes();
    for (int i = 0; i < exchanges; ++i) {
        // Every second one writes what the next one reads.
        if (i % 2 == 0) {
            expected = i;
            handler.setAxisParameter(1, 0, MaxPositioningSpeed, expected);
        } else {
            handler.getAxisParameter(1, 0, MaxPositioningSpeed);
        }
        line.log().clear();
        if (i + 1 == WarmUpExchanges) {
            warm = residentMebibytes();
        }
    }
    Figure{QStringLiteral("soak, growth of resident memory"), residentMebibytes() - warm,
           GrowthGoal, QStringLiteral("MiB"), 1.0}
        .print();
    QTextStream(stdout) << QStringLiteral("soak: %1 exchanges, %2 without a reply, %3 wrong, "
                                          "%4 MiB resident after %5\n")
                               .arg(exchanges)
                               .arg(exchanges - replies)
                               .arg(wrong)
                               .arg(warm, 0, 'f', 2)
                               .arg(WarmUpExchanges);
    return replies == exchanges && wrong == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
