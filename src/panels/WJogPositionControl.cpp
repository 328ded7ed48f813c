#include "panels/WJogPositionControl.h"

#include "comm/CommandNumbers.h"
#include "panels/ActiveBorder.h"
#include "panels/MoveType.h"
#include "panels/ParameterToolTip.h"
#include "panels/SaturatedInt.h"
#include "ui_WJogPositionControl.h"

#include <QSignalBlocker>

#include <algorithm>

namespace {

constexpr int StartDialRange = 10000; // µsteps
constexpr int LeastDialRange = 1; // the toolkit's endless dial divides by its range

} // namespace

WJogPositionControl::WJogPositionControl(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::WJogPositionControl>())
{
    m_ui->setupUi(this);
    connect(m_ui->dialer, &QDial::valueChanged, this,
            &WJogPositionControl::handleDialerValueChange);
    connect(m_ui->sbTarget, &QSpinBox::valueChanged, this,
            &WJogPositionControl::handleSpinValueChanged);
    setDialRange(StartDialRange);
    setApActualPosition(0);
    setApAcceleration(0);
    setApVelocity(0);
}

WJogPositionControl::~WJogPositionControl() = default;

void WJogPositionControl::setDialRange(int range)
{
    m_dialRange = std::max(range, LeastDialRange);
    m_dialQuarter = m_dialRange / 4;
    m_ui->dialer->setMaximum(m_dialRange);
}

void WJogPositionControl::setApActualPosition(char number)
{
    m_apActualPosition = number;
    m_ui->sbActual->setToolTip(parameterToolTip(number));
    m_ui->btnClear->setToolTip(parameterToolTip(number));
}

void WJogPositionControl::setApAcceleration(char number)
{
    m_apAcceleration = number;
}

void WJogPositionControl::setApVelocity(char number)
{
    m_apVelocity = number;
}

void WJogPositionControl::setTitle(const QString &title)
{
    m_ui->gbJogPositionControl->setTitle(title);
}

void WJogPositionControl::setActualLabel(const QString &label)
{
    m_ui->lblActual->setText(label);
}

void WJogPositionControl::setTargetLabel(const QString &label)
{
    m_ui->lblTarget->setText(label);
}

void WJogPositionControl::setActive(bool active)
{
    setActiveBorder(m_ui->gbJogPositionControl, active);
}

void WJogPositionControl::requestedTraceValue(char address, char motorBank, char type, int value)
{
    if (isFrom(address, motorBank) && type == m_apActualPosition) {
        m_ui->sbActual->setValue(value);
    }
}

void WJogPositionControl::handleVelocityChange(int value)
{
    m_pendingVelocity = value;
}

void WJogPositionControl::handleAcceleration(int value)
{
    m_pendingAcceleration = value;
}

void WJogPositionControl::handleDialerValueChange(int value)
{
    m_targetPosition = SaturatedInt::saturated(m_targetPosition + stepTo(value));
    m_lastDialValue = value;
    {
        const QSignalBlocker blocker(m_ui->sbTarget);
        m_ui->sbTarget->setValue(m_targetPosition);
    }
    track(m_ui->sbTarget->value());
}

void WJogPositionControl::handleSpinValueChanged(int value)
{
    m_targetPosition = value;
    {
        const QSignalBlocker blocker(m_ui->dialer);
        // The remainder has the sign of the target. Left to itself, the endless dial would bring a
        // negative one into the turn from the top; a negative target belongs at its minimum.
        m_ui->dialer->setValue(std::max(value % m_dialRange, m_ui->dialer->minimum()));
    }
    track(value);
}

void WJogPositionControl::on_cbContinuous_toggled(bool /*toggle*/)
{
    const bool tracking = m_ui->cbContinuous->isChecked();
    m_ui->btnGo->setEnabled(!tracking);
    m_ui->btnStop->setEnabled(!tracking);
}

void WJogPositionControl::on_btnGo_clicked()
{
    moveTo(m_ui->sbTarget->value());
}

void WJogPositionControl::on_btnStop_clicked()
{
    emit doROX(address(), motor(), CommandNumber::MotorStop, 0);
}

void WJogPositionControl::on_btnClear_clicked()
{
    emit changeValue(address(), motor(), m_apActualPosition, 0);
}

/// The way from the dial's last place to @p dialValue. Between the first and the last quarter the
/// short way leads over the end of the turn.
qint64 WJogPositionControl::stepTo(int dialValue) const
{
    const int lastQuarter = 3 * m_dialQuarter;
    const qint64 step = qint64{dialValue} - m_lastDialValue;
    if (dialValue < m_dialQuarter && m_lastDialValue > lastQuarter) {
        return step + m_dialRange;
    }
    if (dialValue > lastQuarter && m_lastDialValue < m_dialQuarter) {
        return step - m_dialRange;
    }
    return step;
}

void WJogPositionControl::track(int position)
{
    if (m_ui->cbContinuous->isChecked()) {
        moveTo(position);
    }
}

/// The ramp goes out behind the move: it counts from the next one on, or for the running one if
/// the module takes it at once.
void WJogPositionControl::moveTo(int position)
{
    emit doMove(address(), motor(), CommandNumber::MoveToPosition, MoveType::Absolute, position);
    writeRamp();
}

void WJogPositionControl::writeRamp()
{
    // Kept before the signal: the module's answer, which comes within it, may bring another
    // pending value, and that one is still to be written.
    if (m_pendingAcceleration != m_writtenAcceleration) {
        m_writtenAcceleration = m_pendingAcceleration;
        emit changeValue(address(), motor(), m_apAcceleration, m_writtenAcceleration);
    }
    if (m_pendingVelocity != m_writtenVelocity) {
        m_writtenVelocity = m_pendingVelocity;
        emit changeValue(address(), motor(), m_apVelocity, m_writtenVelocity);
    }
}
