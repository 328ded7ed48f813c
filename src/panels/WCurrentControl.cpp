#include "panels/WCurrentControl.h"

#include "comm/CommandNumbers.h"
#include "panels/ParameterToolTip.h"
#include "ui_WCurrentControl.h"

#include <algorithm>

WCurrentControl::WCurrentControl(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::WCurrentControl>())
{
    m_ui->setupUi(this);
    setApActualCurrent(0);
    setApTargetCurrent(0);
}

WCurrentControl::~WCurrentControl() = default;

void WCurrentControl::setApActualCurrent(char number)
{
    m_apActualCurrent = number;
    m_ui->sbActualCurrent->setToolTip(parameterToolTip(number));
}

void WCurrentControl::setApTargetCurrent(char number)
{
    m_apTargetCurrent = number;
    m_ui->sbTargetCurrent->setToolTip(parameterToolTip(number));
}

void WCurrentControl::setStopWithMotorStop(bool stopWithMotorStop)
{
    m_stopWithMotorStop = stopWithMotorStop;
}

QList<char> *WCurrentControl::traceParameters() const
{
    return new QList<char>{m_apActualCurrent};
}

void WCurrentControl::readValues()
{
    emit requestValue(address(), motor(), m_apActualCurrent);
}

void WCurrentControl::setTitle(const QString &title)
{
    m_ui->gbCurrentControl->setTitle(title);
}

void WCurrentControl::setActualLabel(const QString &label)
{
    m_ui->lblActualCurrent->setText(label);
}

void WCurrentControl::setTargetLabel(const QString &label)
{
    m_ui->lblTargetCurrent->setText(label);
}

void WCurrentControl::setTargetMaximum(int maximum)
{
    // A negative one would take the minimum down with it, for good.
    m_ui->sbTargetCurrent->setMaximum(std::max(maximum, 0));
}

void WCurrentControl::requestedValue(char address, char motorBank, char type, int value)
{
    if (isFrom(address, motorBank) && type == m_apActualCurrent) {
        m_ui->sbActualCurrent->setValue(value);
    }
}

void WCurrentControl::requestedTraceValue(char address, char motorBank, char type, int value)
{
    requestedValue(address, motorBank, type, value);
}

void WCurrentControl::on_btnRight_clicked()
{
    apply(m_ui->sbTargetCurrent->value());
}

void WCurrentControl::on_btnJogRight_pressed()
{
    apply(m_ui->sbTargetCurrent->value());
}

void WCurrentControl::on_btnLeft_clicked()
{
    apply(-m_ui->sbTargetCurrent->value());
}

void WCurrentControl::on_btnJogLeft_pressed()
{
    apply(-m_ui->sbTargetCurrent->value());
}

void WCurrentControl::on_btnStop_clicked()
{
    stop();
}

void WCurrentControl::on_btnJogRight_released()
{
    stop();
}

void WCurrentControl::on_btnJogLeft_released()
{
    stop();
}

void WCurrentControl::apply(int current)
{
    emit changeValue(address(), motor(), m_apTargetCurrent, current);
    emit targetTorqueChange(address(), motor(), current);
}

void WCurrentControl::stop()
{
    if (m_stopWithMotorStop) {
        emit doROX(address(), motor(), CommandNumber::MotorStop, 0);
    } else {
        apply(0);
    }
}
