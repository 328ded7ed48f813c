#include "comm/can/ConnectedHandlerTest.h"

#include <QTest>

#include <utility>

using namespace Qt::StringLiterals;

CanSignalLog::CanSignalLog(CANKvaserCommandHandler &handler)
    : m_handler(handler)
{
    using Handler = CANKvaserCommandHandler;
    watch(&Handler::handleDetachedDevice, u"handleDetachedDevice"_s);
    watch(&Handler::requestResult, u"requestResult"_s);
    watch(&Handler::requestedValue, u"requestedValue"_s);
    watch(&Handler::requestedTraceValue, u"requestedTraceValue"_s);
    watch(&Handler::requestedGlobalParameter, u"requestedGlobalParameter"_s);
    watch(&Handler::requestedIOValue, u"requestedIOValue"_s);
    watch(&Handler::deviceClosed, u"deviceClosed"_s);
}

QStringList CanSignalLog::take()
{
    return std::exchange(m_lines, {});
}

template <typename... Arguments>
void CanSignalLog::watch(void (CANKvaserCommandHandler::*signal)(Arguments...), const QString &name)
{
    connect(&m_handler, signal, this, [this, name](Arguments... arguments) {
        const QStringList numbers{QString::number(static_cast<int>(arguments))...};
        m_lines.append(name + u'(' + numbers.join(", "_L1) + u')');
    });
}

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
    m_signals = std::make_unique<CanSignalLog>(*m_handler);
    m_bus->module().setAxisParameter(4, 1000);
    QVERIFY(m_handler->openDevice(500));
    m_bus->clear();
}

qsizetype ConnectedHandlerTest::readCount() const
{
    return m_bus->calls().filter(u"canRead("_s).size();
}
