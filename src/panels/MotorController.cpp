#include "panels/MotorController.h"

void MotorController::setAddress(char address)
{
    m_address = address;
}

char MotorController::address() const
{
    return m_address;
}

void MotorController::setMotor(char motor)
{
    m_motor = motor;
}

char MotorController::motor() const
{
    return m_motor;
}

bool MotorController::isFrom(char address, char motorBank) const
{
    return address == m_address && motorBank == m_motor;
}
