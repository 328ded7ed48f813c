#include "panels/WJogTorqueControl.h"

#include "comm/CommandNumbers.h"
#include "panels/ActiveBorder.h"
#include "panels/ParameterToolTip.h"
#include "panels/SaturatedInt.h"
#include "ui_WJogTorqueControl.h"

#include <QSignalBlocker>

namespace {

constexpr int StartCurrentLimit = 10000; // mA
constexpr int StepsToLimit = 20; // of the target's spin box, from 0

} // namespace

WJogTorqueControl::WJogTorqueControl(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::WJogTorqueControl>())
{
    m_ui->setupUi(this);
    connect(m_ui->dialer, &QDial::valueChanged, this, &WJogTorqueControl::handleDialerValueChange);
    connect(m_ui->sbTargetCurrent, &QSpinBox::valueChanged, this,
            &WJogTorqueControl::handleSpinValueChanged);
    setCurrentRange(StartCurrentLimit);
    setApTargetCurrent(0);
    setApMaxCurrent(0);
}

WJogTorqueControl::~WJogTorqueControl() = default;

void WJogTorqueControl::setCurrentRange(int limit)
{
    const int maximum = SaturatedInt::saturated(limit);
    m_ui->dialer->setMinimum(-maximum);
    m_ui->dialer->setMaximum(maximum);
    m_ui->sbTargetCurrent->setMinimum(-maximum);
    m_ui->sbTargetCurrent->setMaximum(maximum);
    m_ui->sbTargetCurrent->setSingleStep(SaturatedInt::magnitude(maximum) / StepsToLimit);
}

void WJogTorqueControl::setApTargetCurrent(char number)
{
    m_apTargetCurrent = number;
    m_ui->sbTargetCurrent->setToolTip(parameterToolTip(number));
    m_ui->btnGo->setToolTip(parameterToolTip(number));
}

void WJogTorqueControl::setApMaxCurrent(char number)
{
    m_apMaxCurrent = number;
    m_ui->sbMaxCurrent->setToolTip(parameterToolTip(number));
}

void WJogTorqueControl::setTitle(const QString &title)
{
    m_ui->gbTorqueControl->setTitle(title);
}

void WJogTorqueControl::setMaxLabel(const QString &label)
{
    m_ui->lblMaxCurrent->setText(label);
}

void WJogTorqueControl::setTargetLabel(const QString &label)
{
    m_ui->lblTargetCurrent->setText(label);
}

void WJogTorqueControl::setActive(bool active)
{
    setActiveBorder(m_ui->gbTorqueControl, active);
}

void WJogTorqueControl::requestedValue(char address, char motorBank, char type, int value)
{
    if (isFrom(address, motorBank) && type == m_apMaxCurrent) {
        setCurrentRange(value);
        m_ui->sbMaxCurrent->setValue(value);
    }
}

void WJogTorqueControl::requestedTraceValue(char address, char motorBank, char type, int value)
{
    requestedValue(address, motorBank, type, value);
}

void WJogTorqueControl::handleDialerValueChange(int value)
{
    {
        const QSignalBlocker blocker(m_ui->sbTargetCurrent);
        m_ui->sbTargetCurrent->setValue(value);
    }
    if (m_ui->cbContinuous->isChecked()) {
        writeTarget();
    }
}

void WJogTorqueControl::handleSpinValueChanged(int value)
{
    const QSignalBlocker blocker(m_ui->dialer);
    m_ui->dialer->setValue(value);
}

void WJogTorqueControl::on_cbContinuous_toggled(bool /*toggle*/)
{
    const bool tracking = m_ui->cbContinuous->isChecked();
    m_ui->btnGo->setEnabled(!tracking);
    m_ui->btnStop->setEnabled(!tracking);
}

void WJogTorqueControl::on_btnGo_clicked()
{
    writeTarget();
}

void WJogTorqueControl::on_btnStop_clicked()
{
    emit doROX(address(), motor(), CommandNumber::MotorStop, 0);
}

void WJogTorqueControl::writeTarget()
{
    emit changeValue(address(), motor(), m_apTargetCurrent, m_ui->sbTargetCurrent->value());
}
