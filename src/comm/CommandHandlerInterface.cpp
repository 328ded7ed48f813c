#include "comm/CommandHandlerInterface.h"

#include <QDebug>

void CommandHandlerInterface::addTimeoutedAddress(char address)
{
    if (!isTimeoutedAddress(address)) {
        m_timeoutedAddresses.append(address);
    }
}

void CommandHandlerInterface::removeTimeoutedAddress(char address)
{
    m_timeoutedAddresses.removeOne(address);
}

bool CommandHandlerInterface::isTimeoutedAddress(char address) const
{
    return m_timeoutedAddresses.contains(address);
}

void CommandHandlerInterface::dumpTimeoutedAddresses() const
{
    qDebug("CommandHandlerInterface::dumpTimeoutedAddresses() ");
    // As signed numbers: the list holds the addresses as the signals carry them.
    for (const char address : m_timeoutedAddresses) {
        qDebug().nospace() << "Timeouted: " << QString::number(address);
    }
}
