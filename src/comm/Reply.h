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
    /// Takes the first nine of @p bytes. Any nine bytes make a valid reply.
    explicit Reply(const unsigned char *bytes);

    bool valid() const { return m_valid; }
    void setValid(bool valid) { m_valid = valid; }
    char replyAddress() const { return m_replyAddress; }
    void setReplyAddress(char replyAddress) { m_replyAddress = replyAddress; }
    char moduleAddress() const { return m_moduleAddress; }
    void setModuleAddress(char moduleAddress) { m_moduleAddress = moduleAddress; }
    char status() const { return m_status; }
    void setStatus(char status) { m_status = status; }
    char command() const { return m_command; }
    void setCommand(char command) { m_command = command; }
    int value() const { return m_value; }
    void setValue(int value) { m_value = value; }
    char checksum() const { return m_checksum; }
    void setChecksum(char checksum) { m_checksum = checksum; }

    /// The eight characters of a version answer in text form: bytes 1 to 8 of the datagram.
    QString versionText() const;
    /// Firmware number of a version answer in number form.
    signed char majorVersion() const;
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
