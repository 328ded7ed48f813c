#pragma once

#include "comm/CANKvaserCommandHandler.h"
#include "support/SimulatedCanBus.h"
#include "support/TestCase.h"

#include <QStringList>

#include <memory>

/// Every signal of a handler as a line of text, in the order of their coming:
/// "requestedValue(1, 0, 4, 1000)". Bytes stand as signed numbers, as they travel.
class CanSignalLog : public QObject
{
    Q_OBJECT

public:
    explicit CanSignalLog(CANKvaserCommandHandler &handler);

    /// The lines so far, which are thereby forgotten.
    QStringList take();

private:
    template <typename... Arguments>
    void watch(void (CANKvaserCommandHandler::*signal)(Arguments...), const QString &name);

    CANKvaserCommandHandler &m_handler;
    QStringList m_lines;
};

/// Base of the tests of a handler that is connected, at 500 kBit/s, to a module whose axis
/// parameter 4 is 1000. The bus's logs start empty.
class ConnectedHandlerTest : public TestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

protected:
    /// A fresh handler on a fresh bus.
    void useBus(const simulator::Identity &identity, int kiloBitsPerSecond = 0);
    /// The calls of canRead() so far, successful or not.
    qsizetype readCount() const;

    std::unique_ptr<SimulatedCanBus> m_bus;
    std::unique_ptr<CANKvaserCommandHandler> m_handler;
    std::unique_ptr<CanSignalLog> m_signals;
};
