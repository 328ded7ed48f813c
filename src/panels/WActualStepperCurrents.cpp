#include "panels/WActualStepperCurrents.h"

#include "panels/CommandReply.h"
#include "panels/ParameterToolTip.h"
#include "ui_WActualStepperCurrents.h"

WActualStepperCurrents::WActualStepperCurrents(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::WActualStepperCurrents>())
{
    m_ui->setupUi(this);
    setApMotorCurrent(0);
    setApPhaseA(0);
    setApPhaseB(0);
}

WActualStepperCurrents::~WActualStepperCurrents() = default;

void WActualStepperCurrents::setApMotorCurrent(char number)
{
    m_apMotorCurrent = number;
    m_ui->sbMotorCurrent->setToolTip(parameterToolTip(number));
}

void WActualStepperCurrents::setApPhaseA(char number)
{
    m_apPhaseA = number;
    m_ui->sbCurrentPhaseA->setToolTip(parameterToolTip(number));
}

void WActualStepperCurrents::setApPhaseB(char number)
{
    m_apPhaseB = number;
    m_ui->sbCurrentPhaseB->setToolTip(parameterToolTip(number));
}

QList<char> *WActualStepperCurrents::traceParameters() const
{
    return new QList<char>{m_apMotorCurrent, m_apPhaseA, m_apPhaseB};
}

void WActualStepperCurrents::setTitle(const QString &title)
{
    m_ui->gbActualCurrents->setTitle(title);
}

void WActualStepperCurrents::requestedTraceValue(char address, char motorBank, char type, int value)
{
    if (!isFrom(address, motorBank)) {
        return;
    }
    if (type == m_apMotorCurrent) {
        m_ui->sbMotorCurrent->setValue(value);
    }
    if (type == m_apPhaseA) {
        m_ui->sbCurrentPhaseA->setValue(value);
    }
    if (type == m_apPhaseB) {
        m_ui->sbCurrentPhaseB->setValue(value);
    }
}

void WActualStepperCurrents::requestedCommand(char address, char command, char type, char motorBank,
                                              char status, int value)
{
    if (CommandReply::isRead(command, status)) {
        requestedTraceValue(address, motorBank, type, value);
    }
}
