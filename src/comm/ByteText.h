#pragma once

#include <QByteArray>
#include <QString>

/// The number that a byte of the protocol stands for, 0 to 255. The protocol's bytes travel as
/// signed char; this is the one place where they are widened for printing.
constexpr int unsignedByte(char byte)
{
    return static_cast<unsigned char>(byte);
}

/// @p value as four bytes, most significant byte first: the order of the wire.
QByteArray bigEndianBytes(int value);
/// @p value as four bytes in the order of the host's memory.
QByteArray memoryBytes(int value);
/// The four bytes at @p bytes, most significant byte first, as a number.
int valueFromBigEndian(const char *bytes);

/// The bytes as "0x" and three decimal digits each, joined with ", ". The digits are decimal in
/// spite of the prefix; whoever reads these dumps knows them so.
QString decimalByteText(const QByteArray &bytes);
/// The bytes as "0x" and two uppercase hexadecimal digits each, joined with ", ".
QString hexadecimalByteText(const QByteArray &bytes);
/// Each byte as one character, zero bytes included.
QString characterText(const QByteArray &bytes);
