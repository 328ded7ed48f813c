#pragma once

#include "panels/ParameterPanel.h"

#include <memory>

namespace Ui {
class WPositionMaintenanceSettings;
}

/// How the module holds a position and when it counts as reached.
///
/// The error gain can't show a value below 10: the control clamps it, and what it then shows goes
/// back to the module if the control changed by that. At its start value of 10 it stays silent.
class WPositionMaintenanceSettings : public ParameterPanel
{
    Q_OBJECT

public:
    /// Titled "Position maintenance settings", every value 0 but the error gain, which is 10.
    explicit WPositionMaintenanceSettings(QWidget *parent = nullptr);
    ~WPositionMaintenanceSettings() override;

    /// @name Numbers of the parameters
    /// Each is 0 at first, and shows as the tool tip of its control.
    /// @{
    void setApPositionWindow(char number) { setNumber(m_apPositionWindow, number); }
    void setApPositionWindowTime(char number) { setNumber(m_apPositionWindowTime, number); }
    void setApStandStillP(char number) { setNumber(m_apStandStillP, number); }
    void setApStandDampening(char number) { setNumber(m_apStandDampening, number); }
    void setApStandStillErrorLimit(char number) { setNumber(m_apStandStillErrorLimit, number); }
    void setApVelocityWindow(char number) { setNumber(m_apVelocityWindow, number); }
    /// @}

public slots:
    /// @name The control has changed: its value goes to the module
    /// @{
    void on_sbPositionWindow_valueChanged(int value) { writeParameter(m_apPositionWindow, value); }
    void on_sbPositionWindowTime_valueChanged(int value)
    {
        writeParameter(m_apPositionWindowTime, value);
    }
    void on_sbStandStillP_valueChanged(int value) { writeParameter(m_apStandStillP, value); }
    void on_sbStandDampening_valueChanged(int value) { writeParameter(m_apStandDampening, value); }
    void on_sbStandStillErrorLimit_valueChanged(int value)
    {
        writeParameter(m_apStandStillErrorLimit, value);
    }
    void on_sbVelocityWindow_valueChanged(int value) { writeParameter(m_apVelocityWindow, value); }
    /// @}

private:
    std::unique_ptr<Ui::WPositionMaintenanceSettings> m_ui;
    Parameter m_apPositionWindow;
    Parameter m_apPositionWindowTime;
    Parameter m_apStandStillP;
    Parameter m_apStandDampening;
    Parameter m_apStandStillErrorLimit;
    Parameter m_apVelocityWindow;
};
