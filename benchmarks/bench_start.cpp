// From the start of the process to the window's first paint, against a program that shows a bare
// main window, in turns.

#include "benchmarks/Figure.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QList>
#include <QProcess>
#include <QProcessEnvironment>

#include <algorithm>
#include <cstdlib>

namespace {

constexpr int Runs = 21;
constexpr int LimitMsecs = 60000;

/// Milliseconds, or a negative number if the program didn't end by itself.
double startMsecs(const QString &program)
{
    QProcess process;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_GENERIC_PLUGINS"), QStringLiteral("zdrfirstpaint"));
    environment.insert(QStringLiteral("QT_PLUGIN_PATH"), QStringLiteral(ZDR_PLUGINS));
    process.setProcessEnvironment(environment);
    process.setStandardErrorFile(QProcess::nullDevice());
    QElapsedTimer timer;
    timer.start();
    process.start(program, {});
    if (!process.waitForFinished(LimitMsecs) || process.exitCode() != EXIT_SUCCESS) {
        return -1;
    }
    return static_cast<double>(timer.nsecsElapsed()) / 1e6;
}

double median(QList<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QList<double> tool;
    QList<double> bare;
    for (int run = 0; run < Runs; ++run) {
        tool.append(startMsecs(QStringLiteral(ZDR_TOOL)));
        bare.append(startMsecs(QStringLiteral(ZDR_BARE_WINDOW)));
        if (tool.last() < 0 || bare.last() < 0) {
            return EXIT_FAILURE;
        }
    }
    Figure{QStringLiteral("start to first paint, against a bare window"), median(tool),
           median(bare), QStringLiteral("ms"), 1.5}
        .print();
    return EXIT_SUCCESS;
}
