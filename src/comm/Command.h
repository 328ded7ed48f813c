#pragma once

#include <QString>

/// A request or a reply without regard to the transport that carries it.
class Command
{
public:
    /// No answer: not valid, all fields 0.
    Command() = default;
    /// A valid record with status 0. In a record that stands for a reply, the reply's status is
    /// in @p type (see CommandHandlerInterface::readReply()).
    Command(char address, char command, char type, char motorBank, int value);

    /// @name Fields of the record
    /// Bytes above 127 are negative chars. The setters check nothing.
    /// @{
    bool valid() const { return m_valid; } ///< whether it was filled, or holds an answer
    void setValid(bool valid) { m_valid = valid; } ///< sets that mark alone
    char address() const { return m_address; } ///< of the module
    void setAddress(char address) { m_address = address; } ///< of the module
    char replyAddress() const { return m_replyAddress; } ///< first byte of a serial reply, else 0
    void setReplyAddress(char replyAddress) { m_replyAddress = replyAddress; } ///< the same
    char command() const { return m_command; } ///< command number
    void setCommand(char command) { m_command = command; } ///< command number
    char type() const { return m_type; } ///< command type or parameter number
    void setType(char type) { m_type = type; } ///< command type or parameter number
    char status() const { return m_status; } ///< of a reply; 100 is a command carried out
    void setStatus(char status) { m_status = status; } ///< of a reply
    char motorBank() const { return m_motorBank; } ///< motor or bank number
    void setMotorBank(char motorBank) { m_motorBank = motorBank; } ///< motor or bank number
    int value() const { return m_value; } ///< in the order of the host
    void setValue(int value) { m_value = value; } ///< in the order of the host
    char checksum() const { return m_checksum; } ///< last byte of a reply
    void setChecksum(char checksum) { m_checksum = checksum; } ///< last byte of a reply
    /// @}

    /// The fields as numbers, the value signed, all else unsigned, and the validity.
    QString toString() const;

private:
    bool m_valid = false;
    char m_address = 0;
    char m_replyAddress = 0;
    char m_command = 0;
    char m_type = 0;
    char m_status = 0;
    char m_motorBank = 0;
    int m_value = 0;
    char m_checksum = 0;
};
