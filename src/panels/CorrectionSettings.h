#pragma once

#include "panels/ParameterPanel.h"

#include <memory>

namespace Ui {
class CorrectionSettings;
}

/// The dynamic correction of the following error. Two panels show the same parameters; only one of
/// them needs to be read, since the replies reach both.
class CorrectionSettings : public ParameterPanel
{
    Q_OBJECT

public:
    /// Titled "Dynamic error correction", every value 0.
    explicit CorrectionSettings(QWidget *parent = nullptr);
    ~CorrectionSettings() override;

    /// @name Numbers of the parameters
    /// Each is 0 at first, and shows as the tool tip of its control.
    /// @{
    void setApVelocityP(char number) { setNumber(m_apVelocityP, number); }
    void setApMaxTolerance(char number) { setNumber(m_apMaxTolerance, number); }
    void setApMaxVelocity(char number) { setNumber(m_apMaxVelocity, number); }
    /// @}

public slots:
    /// @name The control has changed: its value goes to the module
    /// @{
    void on_sbVelocityP_valueChanged(int value) { writeParameter(m_apVelocityP, value); }
    void on_sbMaxTolerance_valueChanged(int value) { writeParameter(m_apMaxTolerance, value); }
    void on_sbMaxVelocity_valueChanged(int value) { writeParameter(m_apMaxVelocity, value); }
    /// @}

private:
    std::unique_ptr<Ui::CorrectionSettings> m_ui;
    Parameter m_apVelocityP;
    Parameter m_apMaxTolerance;
    Parameter m_apMaxVelocity;
};
