#include "support/SimulatedPort.h"

using simulator::WireLog;

SimulatedPort::SimulatedPort(const simulator::Identity &identity, int baudRate)
    : m_module(identity)
    , m_line(m_module, baudRate)
    , m_thread(m_line.link())
{
}

QString SimulatedPort::portName() const
{
    return QString::fromStdString(m_line.portPath());
}

bool SimulatedPort::fault(const QString &line)
{
    return m_line.faults().execute("fault " + line.toStdString()).empty();
}

QStringList SimulatedPort::wireLog() const
{
    QStringList lines;
    for (const WireLog::Entry &entry : m_line.log().entries()) {
        lines.append(QString::fromStdString(entry.toText()));
    }
    return lines;
}

QStringList SimulatedPort::requests() const
{
    QStringList lines;
    for (const WireLog::Entry &entry : m_line.log().entries()) {
        if (entry.direction == WireLog::Direction::Received) {
            lines.append(QString::fromStdString(entry.toText().substr(2)));
        }
    }
    return lines;
}

void SimulatedPort::clearWireLog()
{
    m_line.log().clear();
}

void SimulatedPort::pullOut()
{
    m_thread.stop();
    m_line.close();
}
