#pragma once

#include <QByteArray>
#include <QString>

/// One incoming CAN frame:
///
/// | Data byte | Field    |                                     |
/// |-----------|----------|-------------------------------------|
/// | 0         | moduleId | address of the answering module     |
/// | 1         | status   | result code                         |
/// | 2         | command  | the command answered                |
/// | 3 to 6    | value    | signed, most significant byte first |
/// | 7         | lastByte | kept, never interpreted             |
///
/// In the answer to the version query in text form, all eight bytes are characters.
///
/// The identifier and the length of the bus are not kept. The record's id and length, which only
/// its dumps show, are data bytes 0 to 3 read most significant first, and data byte 4.
class CANZDRLReply
{
public:
    /// Takes the first eight of @p data.
    explicit CANZDRLReply(const unsigned char *data);

    char moduleId() const { return m_data[0]; }
    char status() const { return m_data[1]; }
    char command() const { return m_data[2]; }
    int value() const;
    char lastByte() const { return m_data[7]; }

    /// The eight data bytes as eight characters.
    QString toText() const;
    /// The record in 16 bytes (id in the order of memory, length with three filler bytes, data)
    /// with decimal digits behind "0x".
    QString toByteText() const;
    QString toFieldText() const;

private:
    int id() const;
    char length() const { return m_data[4]; }

    QByteArray m_data;
};
