#pragma once

#include <QByteArray>
#include <QString>

/// One outgoing datagram of the serial line, complete from its construction:
///
/// | Offset | Width | Field     |                                       |
/// |--------|-------|-----------|---------------------------------------|
/// | 0      | 1     | address   | address of the module                 |
/// | 1      | 1     | command   | command number                        |
/// | 2      | 1     | type      | command type or parameter number      |
/// | 3      | 1     | motorBank | motor or bank number                  |
/// | 4      | 4     | value     | signed, most significant byte first   |
/// | 8      | 1     | checksum  | sum of bytes 0 to 7 modulo 256        |
class Request
{
public:
    /// Bytes of a datagram.
    static constexpr int Size = 9;

    /// Numbers above 127 are the same byte as a negative char.
    Request(char address, char command, char type, char motorBank, int value);

    char address() const { return m_address; } ///< of the module
    char command() const { return m_command; } ///< see CommandNumbers.h
    char type() const { return m_type; } ///< command type or parameter number
    char motorBank() const { return m_motorBank; } ///< motor or bank number
    int value() const { return m_value; } ///< in the order of the host
    /// The sum of the eight bytes before it, computed anew.
    char checksum() const;

    /// The datagram, in the order of the wire.
    QByteArray toBytes() const;
    /// All bytes of the record, value in the order of memory, with decimal digits behind "0x".
    QString toByteText() const;
    /// The fields as unsigned numbers. Of the value only the low byte is printed.
    QString toFieldText() const;

private:
    char m_address;
    char m_command;
    char m_type;
    char m_motorBank;
    int m_value;
    char m_checksum;
};
