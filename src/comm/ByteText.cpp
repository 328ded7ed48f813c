#include "comm/ByteText.h"

#include <QStringList>
#include <QtEndian>

#include <cstring>

using namespace Qt::StringLiterals;

namespace {

QString joinedBytes(const QByteArray &bytes, int base, int digits)
{
    QStringList items;
    for (const char byte : bytes) {
        const QString number = QString::number(unsignedByte(byte), base).toUpper();
        items.append("0x"_L1 + number.rightJustified(digits, u'0'));
    }
    return items.join(", "_L1);
}

} // namespace

QByteArray bigEndianBytes(int value)
{
    QByteArray bytes(sizeof(qint32), Qt::Uninitialized);
    qToBigEndian<qint32>(value, bytes.data());
    return bytes;
}

QByteArray memoryBytes(int value)
{
    QByteArray bytes(sizeof(qint32), Qt::Uninitialized);
    std::memcpy(bytes.data(), &value, sizeof(qint32));
    return bytes;
}

int valueFromBigEndian(const char *bytes)
{
    return qFromBigEndian<qint32>(bytes);
}

QString decimalByteText(const QByteArray &bytes)
{
    return joinedBytes(bytes, 10, 3);
}

QString hexadecimalByteText(const QByteArray &bytes)
{
    return joinedBytes(bytes, 16, 2);
}

QString characterText(const QByteArray &bytes)
{
    return QString::fromLatin1(bytes);
}
