// The charts and the list of polled values. The window has no charts yet: what stands here is the
// address that every panel gets.

#include "app/Stepper.h"
#include "ui_Stepper.h"

void Stepper::showVelocityDrawer(bool)
{
    updateTraceCommands(m_moduleAddress);
}

void Stepper::showPositionDrawer(bool)
{
    updateTraceCommands(m_moduleAddress);
}

void Stepper::showTorqueDrawer(bool)
{
    updateTraceCommands(m_moduleAddress);
}

void Stepper::updateTraceValues()
{
    updateTraceCommands(m_moduleAddress);
}

void Stepper::updateTraceCommands(char address)
{
    m_moduleAddress = address;
    m_ui->wDirectMode->setAddress(address);
}
