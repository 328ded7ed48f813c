#pragma once

#include "simulator/protocol/Module.h"
#include "support/RemoteObject.h"

/// A simulated module on a COM port, served on the other system while the object lives. The same
/// class as there, for the same tests.
class SimulatedPort
{
public:
    explicit SimulatedPort(const simulator::Identity &identity = {}, int baudRate = 0)
        : m_object(RemoteObject::moduleKind("simulated", identity, baudRate))
        , m_module(m_object)
    {
    }

    QString portName() const { return QString::fromLatin1(m_object.place()); }
    RemoteModule &module() { return m_module; }
    bool fault(const QString &line)
    {
        return m_object.execute("fault " + line.toUtf8()).has_value();
    }
    QStringList wireLog() const { return m_object.lines("wire-log"); }
    QStringList requests() const { return m_object.lines("requests"); }
    void clearWireLog() { m_object.execute("clear"); }
    void pullOut() { m_object.execute("pull-out"); }

private:
    RemoteObject m_object;
    RemoteModule m_module;
};
