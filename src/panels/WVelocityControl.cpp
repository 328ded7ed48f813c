#include "panels/WVelocityControl.h"

#include "comm/CommandNumbers.h"
#include "panels/CommandReply.h"
#include "panels/ParameterToolTip.h"
#include "ui_WVelocityControl.h"

#include <algorithm>

WVelocityControl::WVelocityControl(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::WVelocityControl>())
{
    m_ui->setupUi(this);
    setApActualVelocity(0);
}

WVelocityControl::~WVelocityControl() = default;

void WVelocityControl::setApActualVelocity(char number)
{
    m_apActualVelocity = number;
    m_ui->sbActualVelocity->setToolTip(parameterToolTip(number));
}

QList<char> *WVelocityControl::traceParameters() const
{
    return new QList<char>{m_apActualVelocity};
}

void WVelocityControl::readValues()
{
    emit requestValue(address(), motor(), m_apActualVelocity);
}

void WVelocityControl::setTitle(const QString &title)
{
    m_ui->gbVelocityControl->setTitle(title);
}

void WVelocityControl::setActualLabel(const QString &label)
{
    m_ui->lblActualVelocity->setText(label);
}

void WVelocityControl::setTargetLabel(const QString &label)
{
    m_ui->lblTargetVelocity->setText(label);
}

void WVelocityControl::setTargetMaximum(int maximum)
{
    // A negative one would take the minimum down with it, for good.
    m_ui->sbTargetVelocity->setMaximum(std::max(maximum, 0));
}

void WVelocityControl::setTargetStep(int step)
{
    m_ui->sbTargetVelocity->setSingleStep(step);
}

void WVelocityControl::requestedValue(char address, char motorBank, char type, int value)
{
    if (!isFrom(address, motorBank) || type != m_apActualVelocity) {
        return;
    }
    m_ui->sbActualVelocity->setValue(value);
    emit motorHalted(value == 0);
}

void WVelocityControl::requestedTraceValue(char address, char motorBank, char type, int value)
{
    requestedValue(address, motorBank, type, value);
}

void WVelocityControl::requestedCommand(char address, char command, char type, char motorBank,
                                        char status, int value)
{
    if (CommandReply::isRead(command, status)) {
        requestedTraceValue(address, motorBank, type, value);
    }
}

void WVelocityControl::on_btnRight_clicked()
{
    turnRight();
}

void WVelocityControl::on_btnJogRight_pressed()
{
    turnRight();
}

void WVelocityControl::on_btnLeft_clicked()
{
    turnLeft();
}

void WVelocityControl::on_btnJogLeft_pressed()
{
    turnLeft();
}

void WVelocityControl::on_btnStop_clicked()
{
    stop();
}

void WVelocityControl::on_btnJogRight_released()
{
    stop();
}

void WVelocityControl::on_btnJogLeft_released()
{
    stop();
}

void WVelocityControl::turnRight()
{
    const int target = m_ui->sbTargetVelocity->value();
    emit doROX(address(), motor(), CommandNumber::RotateRight, target);
    emit targetVelocityChange(address(), motor(), target);
}

void WVelocityControl::turnLeft()
{
    const int target = m_ui->sbTargetVelocity->value();
    emit doROX(address(), motor(), CommandNumber::RotateLeft, target);
    emit targetVelocityChange(address(), motor(), -target);
}

void WVelocityControl::stop()
{
    emit doROX(address(), motor(), CommandNumber::MotorStop, 0);
    emit targetVelocityChange(address(), motor(), 0);
}
