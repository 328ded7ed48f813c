// The charts and the list of polled values. The window has no charts yet: what is polled is what
// the panels of the module's state and motion show all the time.

#include "app/Stepper.h"
#include "comm/ByteText.h"
#include "comm/CommandNumbers.h"
#include "comm/TraceCommand.h"
#include "ui_Stepper.h"

#include <QDebug>

namespace {

constexpr char TraceMotorBank = 0;

/// Axis parameters, in the order in which they are polled.
constexpr char StandingTraceValues[] = {
    18, // status flags
    static_cast<char>(150), // motor current
    static_cast<char>(151), // peak current of phase A
    static_cast<char>(152), // peak current of phase B
    static_cast<char>(131), // actual velocity
    1, // actual position
    15, // phase current
};

QString numberText(char byte)
{
    return QString::number(unsignedByte(byte));
}

} // namespace

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

    m_ui->wTraceController->clearTraceCommands();
    m_traceCommands.clear();
    for (const char parameter : StandingTraceValues) {
        m_traceCommands.push_back(std::make_unique<TraceCommand>(
            address, CommandNumber::GetAxisParameter, parameter, TraceMotorBank));
        m_ui->wTraceController->addTraceCommand(m_traceCommands.back().get());
    }

    const QList<TraceCommand *> &list = *m_ui->wTraceController->traceCommands();
    qDebug() << "TraceCommand->size(): " << QString::number(list.size());
    for (const TraceCommand *command : list) {
        qDebug().nospace() << "TraceCommand: " << numberText(command->address()) << ", "
                           << numberText(command->motorBank()) << ", "
                           << numberText(command->command()) << ", " << numberText(command->type());
    }
}
