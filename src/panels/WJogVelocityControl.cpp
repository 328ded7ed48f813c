#include "panels/WJogVelocityControl.h"

#include "panels/ActiveBorder.h"
#include "panels/DialCoupling.h"
#include "panels/ParameterToolTip.h"
#include "panels/SaturatedInt.h"
#include "ui_WJogVelocityControl.h"

namespace {

constexpr int StartVelocityLimit = 99; // pps
constexpr int StartAccelerationLimit = 99; // pps/s

} // namespace

WJogVelocityControl::WJogVelocityControl(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::WJogVelocityControl>())
{
    m_ui->setupUi(this);
    m_velocity = std::make_unique<DialCoupling>(m_ui->dialerVelocity, m_ui->sbTargetVelocity);
    m_acceleration = std::make_unique<DialCoupling>(m_ui->dialerAcceleration, m_ui->sbAcceleration);
    connect(m_ui->dialerVelocity, &QDial::valueChanged, this,
            &WJogVelocityControl::handleDialVelocityChanged);
    connect(m_ui->dialerAcceleration, &QDial::valueChanged, this,
            &WJogVelocityControl::handleDialAccelerationChanged);
    connect(m_ui->sbTargetVelocity, &QSpinBox::valueChanged, this,
            &WJogVelocityControl::handleSpinVelocityChanged);
    connect(m_ui->sbAcceleration, &QSpinBox::valueChanged, this,
            &WJogVelocityControl::handleSpinAccelerationChanged);
    setVelocityLimit(StartVelocityLimit);
    setAccelerationLimit(StartAccelerationLimit);
    setApActualVelocity(0);
    setApAcceleration(0);
}

WJogVelocityControl::~WJogVelocityControl() = default;

void WJogVelocityControl::setLogarithmic(bool logarithmic)
{
    m_velocity->setLogarithmic(logarithmic);
    m_acceleration->setLogarithmic(logarithmic);
}

void WJogVelocityControl::setVelocityLimit(int limit)
{
    m_velocity->setLimit(SaturatedInt::magnitude(limit));
}

void WJogVelocityControl::setAccelerationLimit(int limit)
{
    m_acceleration->setLimit(limit);
}

void WJogVelocityControl::setApActualVelocity(char number)
{
    m_apActualVelocity = number;
    m_ui->sbActualVelocity->setToolTip(parameterToolTip(number));
}

void WJogVelocityControl::setApAcceleration(char number)
{
    m_apAcceleration = number;
    m_ui->sbAcceleration->setToolTip(parameterToolTip(number));
}

void WJogVelocityControl::readValues()
{
    emit requestValue(address(), motor(), m_apActualVelocity);
    emit requestValue(address(), motor(), m_apAcceleration);
}

void WJogVelocityControl::setTitle(const QString &title)
{
    m_ui->gbSimpleVelocityMode->setTitle(title);
}

void WJogVelocityControl::setActualLabel(const QString &label)
{
    m_ui->lblActualVelocity->setText(label);
}

void WJogVelocityControl::setTargetLabel(const QString &label)
{
    m_ui->lblTargetVelocity->setText(label);
}

void WJogVelocityControl::setActive(bool active)
{
    setActiveBorder(m_ui->gbSimpleVelocityMode, active);
}

void WJogVelocityControl::requestedTraceValue(char address, char motorBank, char type, int value)
{
    requestedValue(address, motorBank, type, value);
}

void WJogVelocityControl::requestedValue(char address, char motorBank, char type, int value)
{
    // One for all instances, by design. A value that the user changed since stands until the
    // module tells another one than it told last.
    static int lastActualVelocity = 0;
    static int lastAcceleration = 0;
    if (!isFrom(address, motorBank)) {
        return;
    }
    if (type == m_apActualVelocity) {
        const int velocity = SaturatedInt::magnitude(value);
        if (velocity != lastActualVelocity) {
            m_ui->sbActualVelocity->setValue(velocity);
            lastActualVelocity = velocity;
        }
    }
    if (type == m_apAcceleration && value != lastAcceleration) {
        // With its signals: the dial follows, and whoever writes the ramp learns the acceleration.
        m_ui->sbAcceleration->setValue(value);
        lastAcceleration = value;
    }
}

void WJogVelocityControl::on_btnJogFastLeft_clicked()
{
    start(CommandNumber::RotateLeft);
}

void WJogVelocityControl::on_btnJogLeft_pressed()
{
    start(CommandNumber::RotateLeft);
}

void WJogVelocityControl::on_btnJogLeft_released()
{
    stop();
}

void WJogVelocityControl::on_btnJogStop_clicked()
{
    stop();
}

void WJogVelocityControl::on_btnJogRight_pressed()
{
    start(CommandNumber::RotateRight);
}

void WJogVelocityControl::on_btnJogRight_released()
{
    stop();
}

void WJogVelocityControl::on_btnJogFastRight_clicked()
{
    start(CommandNumber::RotateRight);
}

void WJogVelocityControl::handleDialVelocityChanged(int value)
{
    m_velocity->setSpinBox(value);
    const int target = m_ui->sbTargetVelocity->value();
    emit velocityChanged(target);
    if (m_runState != CommandNumber::MotorStop) {
        emit doROX(address(), motor(), m_runState, target);
    }
}

void WJogVelocityControl::handleDialAccelerationChanged(int value)
{
    m_acceleration->setSpinBox(value);
    emit accelerationChanged(m_ui->sbAcceleration->value());
}

void WJogVelocityControl::handleSpinVelocityChanged(int value)
{
    m_velocity->turnDial(value);
    emit velocityChanged(m_ui->sbTargetVelocity->value());
}

void WJogVelocityControl::handleSpinAccelerationChanged(int value)
{
    m_acceleration->turnDial(value);
    emit accelerationChanged(m_ui->sbAcceleration->value());
}

void WJogVelocityControl::start(char roxCommand)
{
    m_runState = roxCommand;
    emit doROX(address(), motor(), roxCommand, m_ui->sbTargetVelocity->value());
    writeAcceleration();
}

void WJogVelocityControl::stop()
{
    emit doROX(address(), motor(), CommandNumber::MotorStop, 0);
    writeAcceleration();
    m_runState = CommandNumber::MotorStop;
}

/// After the command, so that a changed acceleration counts from the next motion on.
void WJogVelocityControl::writeAcceleration()
{
    emit changeValue(address(), motor(), m_apAcceleration, m_ui->sbAcceleration->value());
}
