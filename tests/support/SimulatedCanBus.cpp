#include "support/SimulatedCanBus.h"

namespace {

QStringList linesOf(const simulator::LineLog &log)
{
    QStringList lines;
    for (const std::string &line : log.lines()) {
        lines.append(QString::fromStdString(line));
    }
    return lines;
}

} // namespace

SimulatedCanBus::SimulatedCanBus(const simulator::Identity &identity, int kiloBitsPerSecond)
    : m_module(identity)
    , m_bus(m_module, kiloBitsPerSecond)
    , m_server(std::make_unique<simulator::CanBusServer>(
          m_bus, m_directory.filePath(QStringLiteral("bus")).toStdString()))
    , m_thread([this](simulator::ServingLoop &loop) { m_server->attach(loop); })
{
    qputenv(simulator::canBusVariable, QByteArray::fromStdString(m_server->path()));
}

SimulatedCanBus::~SimulatedCanBus()
{
    qunsetenv(simulator::canBusVariable);
}

bool SimulatedCanBus::fault(const QString &line)
{
    return m_bus.faults().execute("fault " + line.toStdString()).empty();
}

bool SimulatedCanBus::canFault(const QString &line)
{
    return m_bus.canFaults().execute("canfault " + line.toStdString()).empty();
}

QStringList SimulatedCanBus::frames() const
{
    return linesOf(m_bus.frames());
}

QStringList SimulatedCanBus::calls() const
{
    return linesOf(m_bus.calls());
}

void SimulatedCanBus::clear()
{
    m_bus.frames().clear();
    m_bus.calls().clear();
}

void SimulatedCanBus::pullOut()
{
    m_thread.stop();
    m_server.reset();
}
