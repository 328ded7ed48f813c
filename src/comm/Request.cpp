#include "comm/Request.h"

#include "comm/ByteText.h"

#include <numeric>

using namespace Qt::StringLiterals;

Request::Request(char address, char command, char type, char motorBank, int value)
    : m_address(address)
    , m_command(command)
    , m_type(type)
    , m_motorBank(motorBank)
    , m_value(value)
    , m_checksum(checksum())
{
}

char Request::checksum() const
{
    const QByteArray valueBytes = bigEndianBytes(m_value);
    const int head = m_address + m_command + m_type + m_motorBank;
    return static_cast<char>(std::accumulate(valueBytes.cbegin(), valueBytes.cend(), head));
}

QByteArray Request::toBytes() const
{
    QByteArray bytes;
    bytes.reserve(Size);
    bytes.append(m_address).append(m_command).append(m_type).append(m_motorBank);
    bytes.append(bigEndianBytes(m_value)).append(m_checksum);
    return bytes;
}

QString Request::toByteText() const
{
    QByteArray record;
    record.append(m_address).append(m_command).append(m_type).append(m_motorBank);
    record.append(memoryBytes(m_value)).append(m_checksum);
    return "Request["_L1 + decimalByteText(record) + u']';
}

QString Request::toFieldText() const
{
    return u"Request[%1, %2, %3, %4, %5, %6]"_s.arg(unsignedByte(m_address))
        .arg(unsignedByte(m_command))
        .arg(unsignedByte(m_type))
        .arg(unsignedByte(m_motorBank))
        .arg(m_value & 0xFF)
        .arg(unsignedByte(m_checksum));
}
