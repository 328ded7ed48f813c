#pragma once

#include "panels/MotorController.h"

#include <QList>
#include <QWidget>

#include <memory>

namespace Ui {
class WVelocityControl;
}

/// Panel that turns the motor at an exact velocity, in pps, and shows the actual one.
///
/// The target is never negative; the buttons give the direction. Press and release of a jog button
/// are commands of their own: a stop is sent also while nothing runs.
class WVelocityControl : public QWidget, public MotorController
{
    Q_OBJECT

public:
    /// Address 1, motor 0, parameter number 0.
    explicit WVelocityControl(QWidget *parent = nullptr);
    ~WVelocityControl() override;

    /// Sets the number of the actual velocity.
    void setApActualVelocity(char number);
    /// The numbers that want polling: that of the actual velocity. The caller owns the list.
    QList<char> *traceParameters() const;
    /// Asks for the actual velocity once.
    void readValues();

    /// Sets the title of the group box.
    void setTitle(const QString &title);
    /// Sets the text beside the actual velocity.
    void setActualLabel(const QString &label);
    /// Sets the text beside the target velocity.
    void setTargetLabel(const QString &label);
    /// Sets the largest target velocity, in pps; at least 0.
    void setTargetMaximum(int maximum);
    /// Sets the step of the target velocity, in pps.
    void setTargetStep(int step);

signals:
    /// Asks the module for the parameter @p type.
    void requestValue(char address, char motorBank, char type);
    /// Commands a rotation to the right (1) or to the left (2) at @p value pps, or a stop (3).
    void doROX(char address, char motorBank, char roxCommand, int value);
    /// The velocity just commanded, in pps, negative to the left, 0 for a stop.
    void targetVelocityChange(char address, char motorBank, int value);
    /// An actual velocity came in: @p halted if it is exactly 0.
    void motorHalted(bool halted);

public slots:
    /// Shows the actual velocity of this panel's module and motor and tells whether it is 0.
    void requestedValue(char address, char motorBank, char type, int value);
    /// The same for a polled value.
    void requestedTraceValue(char address, char motorBank, char type, int value);
    /// The same for the raw reply to a GAP that was carried out.
    void requestedCommand(char address, char command, char type, char motorBank, char status,
                          int data);
    /// Turns right until the stop.
    void on_btnRight_clicked();
    /// Turns right until the button is released.
    void on_btnJogRight_pressed();
    /// Turns left until the stop.
    void on_btnLeft_clicked();
    /// Turns left until the button is released.
    void on_btnJogLeft_pressed();
    /// Stops.
    void on_btnStop_clicked();
    /// Stops.
    void on_btnJogRight_released();
    /// Stops.
    void on_btnJogLeft_released();

private:
    void turnRight();
    void turnLeft();
    void stop();

    std::unique_ptr<Ui::WVelocityControl> m_ui;
    char m_apActualVelocity = 0;
};
