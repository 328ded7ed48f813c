#include "comm/Reply.h"

#include "comm/ByteText.h"

using namespace Qt::StringLiterals;

Reply::Reply(const unsigned char *bytes)
    : m_valid(true)
    , m_replyAddress(static_cast<char>(bytes[0]))
    , m_moduleAddress(static_cast<char>(bytes[1]))
    , m_status(static_cast<char>(bytes[2]))
    , m_command(static_cast<char>(bytes[3]))
    , m_value(valueFromBigEndian(reinterpret_cast<const char *>(bytes) + 4))
    , m_checksum(static_cast<char>(bytes[8]))
{
}

QString Reply::versionText() const
{
    return characterText(toBytes().sliced(1));
}

signed char Reply::majorVersion() const
{
    return static_cast<signed char>(m_value >> 8);
}

signed char Reply::minorVersion() const
{
    return static_cast<signed char>(m_value);
}

QString Reply::toByteText() const
{
    return "Reply["_L1 + hexadecimalByteText(toBytes()) + u']';
}

QString Reply::toFieldText() const
{
    return u"Reply[%1, %2, %3, %4, %5, %6]"_s.arg(unsignedByte(m_replyAddress))
        .arg(unsignedByte(m_moduleAddress))
        .arg(unsignedByte(m_status))
        .arg(unsignedByte(m_command))
        .arg(m_value)
        .arg(unsignedByte(m_checksum));
}

QByteArray Reply::toBytes() const
{
    QByteArray bytes;
    bytes.reserve(Size);
    bytes.append(m_replyAddress).append(m_moduleAddress).append(m_status).append(m_command);
    bytes.append(bigEndianBytes(m_value)).append(m_checksum);
    return bytes;
}
