#include "comm/can/ConnectedHandlerTest.h"

#include <QTest>

using namespace Qt::StringLiterals;

void ConnectedHandlerTest::init()
{
    TestCase::init();
    useBus({});
}

void ConnectedHandlerTest::cleanup()
{
    m_signals.reset();
    m_handler.reset();
    m_bus.reset();
}

void ConnectedHandlerTest::useBus(const simulator::Identity &identity, int kiloBitsPerSecond)
{
    cleanup();
    m_bus = std::make_unique<SimulatedCanBus>(identity, kiloBitsPerSecond);
    m_handler = std::make_unique<CANKvaserCommandHandler>();
    m_signals = std::make_unique<SignalLog>(*m_handler);
    m_bus->module().setAxisParameter(4, 1000);
    QVERIFY(m_handler->openDevice(500));
    m_bus->clear();
}

qsizetype ConnectedHandlerTest::readCount() const
{
    return m_bus->calls().filter(u"canRead("_s).size();
}
