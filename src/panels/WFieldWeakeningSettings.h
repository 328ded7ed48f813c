#pragma once

#include "panels/ParameterPanel.h"

#include <memory>

namespace Ui {
class WFieldWeakeningSettings;
}

/// The velocities between which the field is weakened. Nothing keeps the lower one below the upper
/// one: the module has the last word, and its replies set the controls.
class WFieldWeakeningSettings : public ParameterPanel
{
    Q_OBJECT

public:
    /// Titled "Field weakening settings", both velocities 0.
    explicit WFieldWeakeningSettings(QWidget *parent = nullptr);
    ~WFieldWeakeningSettings() override;

    /// @name Numbers of the parameters
    /// Each is 0 at first, and shows as the tool tip of its control.
    /// @{
    void setApGammaVMin(char number) { setNumber(m_apGammaVMin, number); }
    void setApGammaVMax(char number) { setNumber(m_apGammaVMax, number); }
    /// @}

public slots:
    /// @name The control has changed: its value goes to the module
    /// @{
    void on_sbGammaVMin_valueChanged(int value) { writeParameter(m_apGammaVMin, value); }
    void on_sbGammaVMax_valueChanged(int value) { writeParameter(m_apGammaVMax, value); }
    /// @}

private:
    std::unique_ptr<Ui::WFieldWeakeningSettings> m_ui;
    Parameter m_apGammaVMin;
    Parameter m_apGammaVMax;
};
