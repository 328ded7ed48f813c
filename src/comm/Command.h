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

    bool valid() const { return m_valid; }
    void setValid(bool valid) { m_valid = valid; }
    char address() const { return m_address; }
    void setAddress(char address) { m_address = address; }
    /// First byte of a serial reply, 0 over CAN.
    char replyAddress() const { return m_replyAddress; }
    void setReplyAddress(char replyAddress) { m_replyAddress = replyAddress; }
    char command() const { return m_command; }
    void setCommand(char command) { m_command = command; }
    char type() const { return m_type; }
    void setType(char type) { m_type = type; }
    char status() const { return m_status; }
    void setStatus(char status) { m_status = status; }
    char motorBank() const { return m_motorBank; }
    void setMotorBank(char motorBank) { m_motorBank = motorBank; }
    int value() const { return m_value; }
    void setValue(int value) { m_value = value; }
    /// Last byte of a reply.
    char checksum() const { return m_checksum; }
    void setChecksum(char checksum) { m_checksum = checksum; }

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
