#pragma once

#include "comm/CommandNumbers.h"
#include "panels/MotorController.h"

#include <QWidget>

#include <memory>

class DialCoupling;

namespace Ui {
class WJogVelocityControl;
}

/// Panel that turns the motor at a speed chosen with a dial: for as long as a jog button is held,
/// or from a click on a fast button to the stop.
///
/// Velocities are in pps, accelerations in pps/s. The target is never negative; the direction is in
/// the command.
class WJogVelocityControl : public QWidget, public MotorController
{
    Q_OBJECT

public:
    /// Address 1, motor 0, all parameter numbers 0, linear dials up to 99.
    explicit WJogVelocityControl(QWidget *parent = nullptr);
    ~WJogVelocityControl() override;

    /// Chooses the logarithmic or the linear scale of both dials. No value changes by it, and it
    /// may come before or after the limits.
    void setLogarithmic(bool logarithmic);
    /// Sets the largest target velocity, in pps: the magnitude of @p limit.
    void setVelocityLimit(int limit);
    /// Sets the largest acceleration, in pps/s.
    void setAccelerationLimit(int limit);

    /// Sets the number of the actual velocity, which is only shown.
    void setApActualVelocity(char number);
    /// Sets the number of the acceleration, which is shown and written.
    void setApAcceleration(char number);

    /// Asks for the actual velocity, then for the acceleration.
    void readValues();

    /// Sets the title of the group box.
    void setTitle(const QString &title);
    /// Sets the text beside the actual velocity.
    void setActualLabel(const QString &label);
    /// Sets the text beside the target velocity.
    void setTargetLabel(const QString &label);
    /// Marks the panel as that of the module's present kind of motion, or not.
    void setActive(bool active);

signals:
    /// Asks the module for the parameter @p type.
    void requestValue(char address, char motorBank, char type);
    /// Writes the parameter @p type in the module.
    void changeValue(char address, char motorBank, char type, int value);
    /// Commands a rotation to the right (1) or to the left (2) at @p value pps, or a stop (3).
    void doROX(char address, char motorBank, char roxCommand, int value);
    /// The target velocity changed, in pps.
    void velocityChanged(int value);
    /// The acceleration changed, in pps/s; by the module's answer, too.
    void accelerationChanged(int value);

public slots:
    /// Shows a polled value, exactly as requestedValue().
    void requestedTraceValue(char address, char motorBank, char type, int value);
    /// Shows a value of this panel's module and motor: the actual velocity by its magnitude, or the
    /// acceleration. One that is the same as the last one leaves the control alone.
    void requestedValue(char address, char motorBank, char type, int value);
    /// Turns left until the stop.
    void on_btnJogFastLeft_clicked();
    /// Turns left until the button is released.
    void on_btnJogLeft_pressed();
    /// Stops, whoever started.
    void on_btnJogLeft_released();
    /// Stops.
    void on_btnJogStop_clicked();
    /// Turns right until the button is released.
    void on_btnJogRight_pressed();
    /// Stops, whoever started.
    void on_btnJogRight_released();
    /// Turns right until the stop.
    void on_btnJogFastRight_clicked();
    /// The velocity dial moved to the step @p value: the target follows, and a running motor takes
    /// it at once by the same command again.
    void handleDialVelocityChanged(int value);
    /// The acceleration dial moved to the step @p value: the acceleration follows. It is written
    /// with the next start or stop.
    void handleDialAccelerationChanged(int value);
    /// The target velocity changed to @p value pps: the dial follows. A running motor keeps its
    /// speed.
    void handleSpinVelocityChanged(int value);
    /// The acceleration changed to @p value pps/s: the dial follows.
    void handleSpinAccelerationChanged(int value);

private:
    void start(char roxCommand);
    void stop();
    void writeAcceleration();

    std::unique_ptr<Ui::WJogVelocityControl> m_ui;
    std::unique_ptr<DialCoupling> m_velocity;
    std::unique_ptr<DialCoupling> m_acceleration;
    /// What this panel commanded last: running right, running left or stopped, by the number of the
    /// command. It doesn't follow the module, by design: after a stop by a limit switch or by
    /// another panel, the next step of the dial starts the motor again.
    char m_runState = CommandNumber::MotorStop;
    char m_apActualVelocity = 0;
    char m_apAcceleration = 0;
};
