#include "comm/CANZDRLReply.h"

#include "comm/ByteText.h"

using namespace Qt::StringLiterals;

CANZDRLReply::CANZDRLReply(const unsigned char *data)
    : m_data(reinterpret_cast<const char *>(data), 8)
{
}

int CANZDRLReply::value() const
{
    return valueFromBigEndian(m_data.constData() + 3);
}

QString CANZDRLReply::toText() const
{
    return characterText(m_data);
}

QString CANZDRLReply::toByteText() const
{
    const QByteArray record = memoryBytes(id()) + length() + QByteArray(3, '\0') + m_data;
    return "CANZDRLReply["_L1 + decimalByteText(record) + u']';
}

QString CANZDRLReply::toFieldText() const
{
    return u"CANZDRLReply[id=%1, length=%2, moduleId=%3, status=%4, command=%5, value=%6]"_s
        .arg(id() & 0xFF)
        .arg(unsignedByte(length()))
        .arg(unsignedByte(moduleId()))
        .arg(unsignedByte(status()))
        .arg(unsignedByte(command()))
        .arg(value());
}

int CANZDRLReply::id() const
{
    return valueFromBigEndian(m_data.constData());
}
