#pragma once

#include "panels/ParameterPanel.h"

#include <memory>

namespace Ui {
class WStepperVelocityRampControl;
}

/// Velocity and acceleration of the ramps. It looks at the address of a reply, too. Two panels show
/// the same parameters; only one of them needs to be read, since the replies reach both.
///
/// Acceleration and start-stop velocity show 1 before a module answers, so a first reply of 0 is
/// written back to the module.
class WStepperVelocityRampControl : public ParameterPanel
{
    Q_OBJECT

public:
    /// Titled "Velocity ramp control", with velocities in pps and steps of 100.
    explicit WStepperVelocityRampControl(QWidget *parent = nullptr);
    ~WStepperVelocityRampControl() override;

    /// @name Numbers of the parameters
    /// Each is 0 at first, and shows as the tool tip of its control.
    /// @{
    void setApMaxVelocity(char number) { setNumber(m_apMaxVelocity, number); }
    void setApAcceleration(char number) { setNumber(m_apAcceleration, number); }
    void setApStartStopVelocity(char number) { setNumber(m_apStartStopVelocity, number); }
    /// @}

    /// Sets the largest velocity that can be chosen, in pps.
    void setMaxVelocityMaximum(int maximum);
    /// Sets the largest acceleration that can be chosen, in pps/s.
    void setAccelerationMaximum(int maximum);
    /// Sets by how much one step of the control changes the velocity, in pps.
    void setMaxVelocityStep(int step);
    /// Sets by how much one step of the control changes the acceleration, in pps/s.
    void setAccelerationStep(int step);
    /// Sets the text before the velocity.
    void setMaxVelocityLabel(const QString &label);
    /// Sets the text before the acceleration.
    void setAccelerationLabel(const QString &label);

public slots:
    /// @name The control has changed: its value goes to the module
    /// @{
    void on_sbMaxVelocity_valueChanged(int value) { writeParameter(m_apMaxVelocity, value); }
    void on_sbAcceleration_valueChanged(int value) { writeParameter(m_apAcceleration, value); }
    void on_sbStartStopVelocity_valueChanged(int value)
    {
        writeParameter(m_apStartStopVelocity, value);
    }
    /// @}

private:
    std::unique_ptr<Ui::WStepperVelocityRampControl> m_ui;
    Parameter m_apMaxVelocity;
    Parameter m_apAcceleration;
    Parameter m_apStartStopVelocity;
};
