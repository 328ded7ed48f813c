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
    /// Takes the first eight of @p data, which stay the caller's. Any eight make a reply.
    explicit CANZDRLReply(const unsigned char *data);

    /// Address of the answering module; one above 127 is negative.
    char moduleId() const { return m_data[0]; }
    /// Result code; 100 is a command carried out.
    char status() const { return m_data[1]; }
    /// The command answered.
    char command() const { return m_data[2]; }
    /// The value in the order of the host.
    int value() const;
    /// The last data byte, whatever it means.
    char lastByte() const { return m_data[7]; }

    /// The eight data bytes as eight characters.
    QString toText() const;
    /// The record in 16 bytes (id in the order of memory, length with three filler bytes, data)
    /// with decimal digits behind "0x".
    QString toByteText() const;
    /// The fields as numbers, the value signed, all else unsigned. Of the id only the low byte is
    /// printed.
    QString toFieldText() const;

private:
    int id() const;
    char length() const { return m_data[4]; }

    QByteArray m_data;
};
