#include "comm/CANZDRLRequest.h"

#include "comm/ByteText.h"

using namespace Qt::StringLiterals;

namespace {

constexpr char FrameLength = 8;
constexpr char LastByte = 3;

} // namespace

CANZDRLRequest::CANZDRLRequest(char address, char command, char type, char motorBank, int value)
    : m_id(static_cast<signed char>(address))
{
    m_data.reserve(FrameLength);
    m_data.append(command).append(type).append(motorBank);
    m_data.append(bigEndianBytes(value)).append(LastByte);
}

QByteArray CANZDRLRequest::toBytes() const
{
    return memoryBytes(m_id) + FrameLength + QByteArray(3, '\0') + m_data;
}

QString CANZDRLRequest::toByteText() const
{
    return "ZDRLRequest["_L1 + decimalByteText(toBytes()) + u']';
}

QString CANZDRLRequest::toFieldText() const
{
    return u"CANZDRLRequest[id=%1, length=%2, command=%3, type=%4, motorBank=%5, value=%6]"_s
        .arg(m_id & 0xFF)
        .arg(unsignedByte(FrameLength))
        .arg(unsignedByte(m_data[0]))
        .arg(unsignedByte(m_data[1]))
        .arg(unsignedByte(m_data[2]))
        .arg(valueFromBigEndian(m_data.constData() + 3));
}
