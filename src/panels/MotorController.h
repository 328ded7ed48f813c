#pragma once

/// Whom a panel talks to: the address of the module and the motor (or bank) in it.
///
/// A plain base to be inherited beside QWidget: no virtual functions, no signals, not to be
/// deleted through.
class MotorController
{
public:
    /// Sets the address of the module that requests go to and replies come from, as the protocol's
    /// byte. Starts at 1.
    void setAddress(char address);
    /// The address of the module.
    char address() const;

    /// Sets the number of the motor, or of the bank, in the module. Starts at 0.
    void setMotor(char motor);
    /// The number of the motor or bank.
    char motor() const;

protected:
    MotorController() = default;
    ~MotorController() = default;

    /// True if a reply with these two comes from this controller's motor.
    bool isFrom(char address, char motorBank) const;

private:
    char m_address = 1;
    char m_motor = 0;
};
