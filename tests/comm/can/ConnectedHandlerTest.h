#pragma once

#include "comm/CANKvaserCommandHandler.h"
#include "comm/SignalLog.h"
#include "support/SimulatedCanBus.h"
#include "support/TestCase.h"

#include <QLatin1StringView>

#include <memory>

/// What the handler writes when a module hasn't answered.
inline constexpr auto TimeOutLine =
    QLatin1StringView("CANKvaserCommandHandler::CANZDRLReplyCommand->communicationTimeouted!");

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
    std::unique_ptr<SignalLog> m_signals;
};
