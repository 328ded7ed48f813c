#pragma once

#include "simulator/can/CanCall.h"
#include "simulator/protocol/Module.h"
#include "support/RemoteObject.h"

/// A simulated module on a simulated CAN bus, served on the other system while the object lives.
/// The same class as there, for the same tests; only one may live at a time.
class SimulatedCanBus
{
public:
    explicit SimulatedCanBus(const simulator::Identity &identity = {}, int kiloBitsPerSecond = 0)
        : m_object(RemoteObject::moduleKind("can", identity, kiloBitsPerSecond))
        , m_module(m_object)
    {
        qputenv(simulator::canBusVariable, m_object.place());
    }
    ~SimulatedCanBus() { qunsetenv(simulator::canBusVariable); }
    SimulatedCanBus(const SimulatedCanBus &) = delete;
    SimulatedCanBus &operator=(const SimulatedCanBus &) = delete;

    RemoteModule &module() { return m_module; }
    bool fault(const QString &line)
    {
        return m_object.execute("fault " + line.toUtf8()).has_value();
    }
    bool canFault(const QString &line)
    {
        return m_object.execute("canfault " + line.toUtf8()).has_value();
    }
    QStringList frames() const { return m_object.lines("frames"); }
    QStringList calls() const { return m_object.lines("calls"); }
    void clear() { m_object.execute("clear"); }
    void pullOut() { m_object.execute("pull-out"); }

private:
    RemoteObject m_object;
    RemoteModule m_module;
};
