#pragma once

#include <QString>

/// One value that is polled periodically. Replies are matched by its numbers; the name is only
/// for the display.
class TraceCommand
{
public:
    /// With a name for the display, which may be empty.
    TraceCommand(char address, char motorBank, char command, char type, QString name);
    /// Without a name. Mind the order of the arguments: it is that of a request, and differs from
    /// the other constructor's.
    TraceCommand(char address, char command, char type, char motorBank);

    /// Address of the module.
    char address() const { return m_address; }
    /// Motor or bank number.
    char motorBank() const { return m_motorBank; }
    /// Number of the command that asks for the value: 6, which reads an axis parameter.
    char command() const { return m_command; }
    /// Axis parameter number.
    char type() const { return m_type; }
    /// Use count, 1 after construction and never below 0.
    int count() const { return m_count; }
    /// What the value is called for the user; may be empty.
    QString name() const { return m_name; }

    /// One use more.
    void incrementCount();
    /// One use less; stops at 0.
    void decrementCount();

    /// The fields for the debug stream, the numbers unsigned, the count in brackets.
    QString toString() const;

private:
    char m_address;
    char m_motorBank;
    char m_command;
    char m_type;
    int m_count = 1;
    QString m_name;
};
