#include "comm/Command.h"

#include "comm/ByteText.h"

using namespace Qt::StringLiterals;

Command::Command(char address, char command, char type, char motorBank, int value)
    : m_valid(true)
    , m_address(address)
    , m_command(command)
    , m_type(type)
    , m_motorBank(motorBank)
    , m_value(value)
{
}

QString Command::toString() const
{
    return u"Command(%1, %2, %3, %4, %5, %6, %7)"_s.arg(unsignedByte(m_address))
        .arg(unsignedByte(m_command))
        .arg(unsignedByte(m_type))
        .arg(unsignedByte(m_status))
        .arg(unsignedByte(m_motorBank))
        .arg(m_value)
        .arg(m_valid ? "valid"_L1 : "invalid"_L1);
}
