#pragma once

#include "panels/ParameterPanel.h"

#include <memory>

namespace Ui {
class WStepperEncoderSettings;
}

/// The motor's encoder. Unlike the other panels this one doesn't write on each change: values go
/// out with the button "Set" alone, and a read before that overwrites what the user has entered.
class WStepperEncoderSettings : public ParameterPanel
{
    Q_OBJECT

public:
    /// Titled "Encoder settings", every value 0 but the 200 full steps of the motor.
    explicit WStepperEncoderSettings(QWidget *parent = nullptr);
    ~WStepperEncoderSettings() override;

    /// @name Numbers of the parameters
    /// Each is 0 at first, and shows as the tool tip of its control.
    /// @{
    void setApCounter(char number) { setNumber(m_apCounter, number); }
    void setApResolution(char number) { setNumber(m_apResolution, number); }
    void setApFullstepResolution(char number) { setNumber(m_apFullstepResolution, number); }
    void setApEncoderOffset(char number) { setNumber(m_apEncoderOffset, number); }
    /// @}

    /// Writes encoder resolution, full steps and encoder offset to the module, in this order.
    void applySettings();

public slots:
    /// Does what applySettings() does.
    void on_btnSetSettings_clicked();
    /// Does what readValues() does.
    void on_btnReadSettings_clicked();

private:
    std::unique_ptr<Ui::WStepperEncoderSettings> m_ui;
    Parameter m_apCounter;
    Parameter m_apResolution;
    Parameter m_apFullstepResolution;
    Parameter m_apEncoderOffset;
};
