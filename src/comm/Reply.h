#pragma once

#include <QByteArray>
#include <QString>

/// One incoming datagram of the serial line:
///
/// | Offset | Width | Field         |                                           |
/// |--------|-------|---------------|-------------------------------------------|
/// | 0      | 1     | replyAddress  | address that the module answers to        |
/// | 1      | 1     | moduleAddress | address of the answering module           |
/// | 2      | 1     | status        | result code, 100 is a command carried out |
/// | 3      | 1     | command       | the command answered                      |
/// | 4      | 4     | value         | signed, most significant byte first       |
/// | 8      | 1     | checksum      | as sent by the module                     |
///
/// The answer to the version query in text form is the exception: bytes 1 to 8 are characters.
///
/// Nothing is compared with the request, and the checksum is never tested: the wire has no marker,
/// and whatever nine bytes come next are the answer.
class Reply
{
public:
    /// Bytes of a datagram.
    static constexpr int Size = 9;

    /// No answer: not valid, all fields 0.
    Reply() = default;
    /// Takes the first nine of @p bytes, which stay the caller's. Any nine make a valid reply.
    explicit Reply(const unsigned char *bytes);

    /// @name Fields of the record
    /// As in the table above, bytes above 127 as negative chars, the value in the order of the
    /// host. The setters check nothing.
    /// @{
    bool valid() const { return m_valid; } ///< whether the record was made of nine bytes
    void setValid(bool valid) { m_valid = valid; } ///< sets that mark alone
    char replyAddress() const { return m_replyAddress; } ///< byte 0
    void setReplyAddress(char replyAddress) { m_replyAddress = replyAddress; } ///< byte 0
    char moduleAddress() const { return m_moduleAddress; } ///< byte 1
    void setModuleAddress(char moduleAddress) { m_moduleAddress = moduleAddress; } ///< byte 1
    char status() const { return m_status; } ///< byte 2
    void setStatus(char status) { m_status = status; } ///< byte 2
    char command() const { return m_command; } ///< byte 3
    void setCommand(char command) { m_command = command; } ///< byte 3
    int value() const { return m_value; } ///< bytes 4 to 7
    void setValue(int value) { m_value = value; } ///< bytes 4 to 7
    char checksum() const { return m_checksum; } ///< byte 8, as it came
    void setChecksum(char checksum) { m_checksum = checksum; } ///< byte 8
    /// @}

    /// The eight characters of a version answer in text form: bytes 1 to 8 of the datagram.
    QString versionText() const;
    /// Firmware number of a version answer in number form: bits 8 to 15 of the value, -128 to 127.
    signed char majorVersion() const;
    /// The same of bits 0 to 7.
    signed char minorVersion() const;

    /// The nine bytes in the order of the wire, hexadecimal.
    QString toByteText() const;
    /// The fields as numbers, the value signed, all else unsigned.
    QString toFieldText() const;

private:
    QByteArray toBytes() const;

    bool m_valid = false;
    char m_replyAddress = 0;
    char m_moduleAddress = 0;
    char m_status = 0;
    char m_command = 0;
    int m_value = 0;
    char m_checksum = 0;
};
