// One pass over the seven values that are always polled, against one sleep of 10 ms for each.

#include "benchmarks/DebugLines.h"
#include "benchmarks/Figure.h"
#include "comm/CANKvaserCommandHandler.h"
#include "comm/CommandNumbers.h"
#include "comm/QSerialCommandHandler.h"
#include "comm/TraceCommand.h"
#include "tests/support/SimulatedCanBus.h"
#include "tests/support/SimulatedPort.h"

#include <QCoreApplication>
#include <QElapsedTimer>

#include <cstdlib>
#include <memory>
#include <vector>

namespace {

constexpr int Passes = 40;
constexpr int Parameters[] = {18, 150, 151, 152, 131, 1, 15};
constexpr double FloorMsecs = 10.0 * std::size(Parameters);
constexpr double Goal = 1.05;
constexpr int KiloBitsPerSecond = 500;

/// The values as the window polls them.
class TraceList
{
public:
    TraceList()
    {
        for (const int parameter : Parameters) {
            m_owned.push_back(std::make_unique<TraceCommand>(1, CommandNumber::GetAxisParameter,
                                                             static_cast<char>(parameter), 0));
            m_list.append(m_owned.back().get());
        }
    }

    QList<TraceCommand *> *list() { return &m_list; }

private:
    std::vector<std::unique_ptr<TraceCommand>> m_owned;
    QList<TraceCommand *> m_list;
};

/// False if not every value of every pass was answered.
template <typename Handler>
bool measurePasses(Handler &handler, const QString &transport)
{
    TraceList values;
    int answers = 0;
    QObject::connect(&handler, &Handler::requestedTraceValue, [&answers] { ++answers; });

    QElapsedTimer timer;
    timer.start();
    for (int pass = 0; pass < Passes; ++pass) {
        handler.requestTraceValues(values.list());
    }
    const double msecs = static_cast<double>(timer.nsecsElapsed()) / 1e6 / Passes;
    Figure{QStringLiteral("polling pass of 7 values, %1, wall").arg(transport), msecs, FloorMsecs,
           QStringLiteral("ms"), Goal}
        .print();
    return answers == Passes * static_cast<int>(std::size(Parameters));
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    ignoreDebugLines();

    const SimulatedPort port;
    QSerialCommandHandler serial;
    if (!serial.openDevice(port.portName()) || !measurePasses(serial, QStringLiteral("serial"))) {
        return EXIT_FAILURE;
    }
    const SimulatedCanBus bus;
    CANKvaserCommandHandler can;
    if (!can.openDevice(KiloBitsPerSecond) || !measurePasses(can, QStringLiteral("CAN"))) {
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
