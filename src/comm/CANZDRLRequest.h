#pragma once

#include <QByteArray>
#include <QString>

/// One outgoing CAN frame: a standard frame whose identifier is the module's address, with eight
/// data bytes and no checksum:
///
/// | Data byte | Field     |                                     |
/// |-----------|-----------|-------------------------------------|
/// | 0         | command   | command number                      |
/// | 1         | type      | command type or parameter number    |
/// | 2         | motorBank | motor or bank number                |
/// | 3 to 6    | value     | signed, most significant byte first |
/// | 7         |           | always 3: the module receives it so |
class CANZDRLRequest
{
public:
    /// A frame ready to be sent. Numbers above 127 are the same byte as a negative char.
    CANZDRLRequest(char address, char command, char type, char motorBank, int value);

    /// The address, sign-extended: 200 reads -56 here, and the low 8 bits are what counts.
    int id() const { return m_id; }
    /// The eight data bytes.
    QByteArray data() const { return m_data; }
    /// The whole record in 16 bytes: identifier in the order of memory, length with three filler
    /// bytes, data.
    QByteArray toBytes() const;

    /// The 16 bytes with decimal digits behind "0x". The text starts with "ZDRLRequest[", unlike
    /// that of the fields.
    QString toByteText() const;
    /// The fields as numbers, the value signed, all else unsigned. Of the identifier only the low
    /// byte is printed.
    QString toFieldText() const;

private:
    int m_id;
    QByteArray m_data;
};
