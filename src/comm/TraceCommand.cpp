#include "comm/TraceCommand.h"

#include "comm/ByteText.h"

#include <utility>

using namespace Qt::StringLiterals;

TraceCommand::TraceCommand(char address, char motorBank, char command, char type, QString name)
    : m_address(address)
    , m_motorBank(motorBank)
    , m_command(command)
    , m_type(type)
    , m_name(std::move(name))
{
}

TraceCommand::TraceCommand(char address, char command, char type, char motorBank)
    : TraceCommand(address, motorBank, command, type, QString())
{
}

void TraceCommand::incrementCount()
{
    ++m_count;
}

void TraceCommand::decrementCount()
{
    if (m_count > 0) {
        --m_count;
    }
}

QString TraceCommand::toString() const
{
    return "TraceCommand("_L1
        + u"%1, %2, %3, %4, "_s.arg(unsignedByte(m_address))
              .arg(unsignedByte(m_motorBank))
              .arg(unsignedByte(m_command))
              .arg(unsignedByte(m_type))
        + m_name + u" [%1])"_s.arg(m_count);
}
