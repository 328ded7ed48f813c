#include "panels/WStepperVelocityRampControl.h"

#include "ui_WStepperVelocityRampControl.h"

WStepperVelocityRampControl::WStepperVelocityRampControl(QWidget *parent)
    : ParameterPanel(Replies::FromOwnAddress, parent)
    , m_ui(std::make_unique<Ui::WStepperVelocityRampControl>())
{
    m_ui->setupUi(this);
    setGroupBox(m_ui->gbVelocityRampControl);
    addParameter(m_apMaxVelocity, m_ui->sbMaxVelocity);
    addParameter(m_apAcceleration, m_ui->sbAcceleration);
    addParameter(m_apStartStopVelocity, m_ui->sbStartStopVelocity);
}

WStepperVelocityRampControl::~WStepperVelocityRampControl() = default;

void WStepperVelocityRampControl::setMaxVelocityMaximum(int maximum)
{
    m_ui->sbMaxVelocity->setMaximum(maximum);
}

void WStepperVelocityRampControl::setAccelerationMaximum(int maximum)
{
    m_ui->sbAcceleration->setMaximum(maximum);
}

void WStepperVelocityRampControl::setMaxVelocityStep(int step)
{
    m_ui->sbMaxVelocity->setSingleStep(step);
}

void WStepperVelocityRampControl::setAccelerationStep(int step)
{
    m_ui->sbAcceleration->setSingleStep(step);
}

void WStepperVelocityRampControl::setMaxVelocityLabel(const QString &label)
{
    m_ui->lblMaxVelocity->setText(label);
}

void WStepperVelocityRampControl::setAccelerationLabel(const QString &label)
{
    m_ui->lblAcceleration->setText(label);
}
