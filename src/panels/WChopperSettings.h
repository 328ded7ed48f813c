#pragma once

#include "panels/ParameterPanel.h"

#include <memory>

namespace Ui {
class WChopperSettings;
}

/// The chopper of the motor driver. It looks at the address of a reply, too. The panel sets no
/// relation between the values; the end of the hysteresis is the one that can be negative.
class WChopperSettings : public ParameterPanel
{
    Q_OBJECT

public:
    /// Titled "Chopper settings", every value 0.
    explicit WChopperSettings(QWidget *parent = nullptr);
    ~WChopperSettings() override;

    /// @name Numbers of the parameters
    /// Each is 0 at first, and shows as the tool tip of its control.
    /// @{
    void setApBlankTime(char number) { setNumber(m_apBlankTime, number); }
    void setApChopperMode(char number) { setNumber(m_apChopperMode, number); }
    void setApHysteresisDecrement(char number) { setNumber(m_apHysteresisDecrement, number); }
    void setApHysteresisEnd(char number) { setNumber(m_apHysteresisEnd, number); }
    void setApHysteresisStart(char number) { setNumber(m_apHysteresisStart, number); }
    void setApOffTime(char number) { setNumber(m_apOffTime, number); }
    void setApSlopeHighSide(char number) { setNumber(m_apSlopeHighSide, number); }
    void setApSlopeLowSide(char number) { setNumber(m_apSlopeLowSide, number); }
    /// @}

public slots:
    /// @name The control has changed: its value goes to the module
    /// @{
    void on_sbChopperBlankTime_valueChanged(int value) { writeParameter(m_apBlankTime, value); }
    void on_sbChopperMode_valueChanged(int value) { writeParameter(m_apChopperMode, value); }
    void on_sbHysteresisDecrement_valueChanged(int value)
    {
        writeParameter(m_apHysteresisDecrement, value);
    }
    void on_sbHysteresisEnd_valueChanged(int value) { writeParameter(m_apHysteresisEnd, value); }
    void on_sbHysteresisStart_valueChanged(int value)
    {
        writeParameter(m_apHysteresisStart, value);
    }
    void on_sbOffTime_valueChanged(int value) { writeParameter(m_apOffTime, value); }
    void on_sbSlopeHighSide_valueChanged(int value) { writeParameter(m_apSlopeHighSide, value); }
    void on_sbSlopeLowSide_valueChanged(int value) { writeParameter(m_apSlopeLowSide, value); }
    /// @}

private:
    std::unique_ptr<Ui::WChopperSettings> m_ui;
    Parameter m_apBlankTime;
    Parameter m_apChopperMode;
    Parameter m_apHysteresisDecrement;
    Parameter m_apHysteresisEnd;
    Parameter m_apHysteresisStart;
    Parameter m_apOffTime;
    Parameter m_apSlopeHighSide;
    Parameter m_apSlopeLowSide;
};
