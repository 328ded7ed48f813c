// What the user of the window waits for, on the link of a simulated module: the connect, the moves
// of a dial that is dragged, and what three charts cost the thread that also talks to the module.

#include "benchmarks/DebugLines.h"
#include "benchmarks/Figure.h"
#include "benchmarks/WindowUnderMeasure.h"

#include <QCheckBox>
#include <QDial>
#include <QElapsedTimer>
#include <QSpinBox>
#include <QTimer>

#include <chrono>
#include <cstdlib>

using namespace std::chrono_literals;

namespace {

constexpr double ExchangeMsecs = 10.0;

qsizetype measureConnect(WindowUnderMeasure &window)
{
    QElapsedTimer timer;
    timer.start();
    window.connectOverUsb();
    const double msecs = static_cast<double>(timer.nsecsElapsed()) / 1e6;
    const qsizetype exchanges = window.port().requests().size();
    Figure{QStringLiteral("connect, %1 exchanges, wall").arg(exchanges), msecs,
           ExchangeMsecs * static_cast<double>(exchanges), QStringLiteral("ms"), 1.05}
        .print();
    return exchanges;
}

/// Turns the dial by a step as often as the program takes one, as a mouse that never rests does.
qsizetype measureDial(WindowUnderMeasure &window)
{
    constexpr auto Span = 5s;
    constexpr double MovesPerSecond = 100.0; // one exchange of 10 ms each
    window.child<QPushButton>("btnStop", "wTraceController")->click();
    window.child<QCheckBox>("cbContinuous", "wJogPositionControl")->setChecked(true);
    auto *dial = window.child<QDial>("dialer", "wJogPositionControl");
    QApplication::processEvents();
    window.port().clearWireLog();

    QElapsedTimer timer;
    timer.start();
    while (!timer.hasExpired(std::chrono::milliseconds(Span).count())) {
        dial->setValue(dial->value() + 100);
        QApplication::processEvents();
    }
    const double seconds = static_cast<double>(timer.nsecsElapsed()) / 1e9;
    const qsizetype moves = window.port().requests().size();
    Figure{QStringLiteral("dial dragged for 5 s, time of a move"),
           seconds * 1000 / static_cast<double>(moves), 1000 / MovesPerSecond, QStringLiteral("ms"),
           1.05}
        .print();
    window.child<QCheckBox>("cbContinuous", "wJogPositionControl")->setChecked(false);
    return moves;
}

/// CPU time of this thread over a span with polling on.
double cpuMsecsOfPolling(std::chrono::milliseconds span)
{
    QTimer::singleShot(span, qApp, &QCoreApplication::quit);
    const auto before = threadCpuTime();
    QApplication::exec();
    return static_cast<double>((threadCpuTime() - before).count()) / 1e6;
}

void measureCharts(WindowUnderMeasure &window)
{
    constexpr auto Span = 10s;
    const double spanMsecs = std::chrono::duration<double, std::milli>(Span).count();
    window.child<QSpinBox>("sbDelay", "wTraceController")->setValue(200);
    window.child<QPushButton>("btnStart", "wTraceController")->click();
    cpuMsecsOfPolling(1s); // what the measures before left in the queue
    const double without = cpuMsecsOfPolling(Span);
    window.stepper().showVelocityDrawer(true);
    window.stepper().showPositionDrawer(true);
    window.stepper().showTorqueDrawer(true);
    const double with = cpuMsecsOfPolling(Span);
    Figure{QStringLiteral("three charts at 10 Hz, CPU of the thread"), with - without, spanMsecs,
           QStringLiteral("ms"), 0.03}
        .print();
    Figure{QStringLiteral("polling of 10 values and charts, CPU of the thread"), with, spanMsecs,
           QStringLiteral("ms"), 0.1}
        .print();
}

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    ignoreDebugLines();

    WindowUnderMeasure window;
    if (measureConnect(window) == 0 || measureDial(window) == 0) {
        return EXIT_FAILURE;
    }
    measureCharts(window);
    return EXIT_SUCCESS;
}
