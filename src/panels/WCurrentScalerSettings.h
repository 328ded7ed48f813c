#pragma once

#include "panels/ParameterPanel.h"

#include <memory>

namespace Ui {
class WCurrentScalerSettings;
}

/// The scaler, by which the module fits the motor current to the load.
///
/// Its two limits push each other, so that the lower one stays below the upper one. The pushed
/// limit writes itself, after the one that pushed it. A reply pushes like a user does: when all
/// values are read for the first time, the lower limit arrives while the upper one still shows 0,
/// pushes it and so overwrites the module's upper limit before that is read.
class WCurrentScalerSettings : public ParameterPanel
{
    Q_OBJECT

public:
    /// Titled "Scaler settings", every value 0, no input chosen.
    explicit WCurrentScalerSettings(QWidget *parent = nullptr);
    ~WCurrentScalerSettings() override;

    /// @name Numbers of the parameters
    /// Each is 0 at first, and shows as the tool tip of its control, of both for the input.
    /// @{
    void setApIScaleMin(char number) { setNumber(m_apIScaleMin, number); }
    void setApIScaleMax(char number) { setNumber(m_apIScaleMax, number); }
    void setApLagLeadLimit1(char number) { setNumber(m_apLagLeadLimit1, number); }
    void setApLagLeadLimit2(char number) { setNumber(m_apLagLeadLimit2, number); }
    void setApScaleInc(char number) { setNumber(m_apScaleInc, number); }
    void setApScaleDec(char number) { setNumber(m_apScaleDec, number); }
    void setApScaleIncTimeout(char number) { setNumber(m_apScaleIncTimeout, number); }
    void setApScaleDecTimeout(char number) { setNumber(m_apScaleDecTimeout, number); }
    void setApScalerEnabled(char number) { setNumber(m_apScalerEnabled, number); }
    void setApActualScaler(char number) { setNumber(m_apActualScaler, number); }
    void setApScalerInput(char number) { setNumber(m_apScalerInput, number); }
    /// @}

public slots:
    /// @name The control has changed: its value goes to the module
    /// The display of the actual value has no such slot.
    /// @{
    void on_sbIScaleMin_valueChanged(int value) { writeParameter(m_apIScaleMin, value); }
    void on_sbIScaleMax_valueChanged(int value) { writeParameter(m_apIScaleMax, value); }
    /// Then pushes the upper limit to @p value + 1, if that isn't above @p value already. At the
    /// top of the range, where the upper limit can't get above, the two end equal.
    void on_sbLagLeadLimit1_valueChanged(int value);
    /// Then pushes the lower limit to @p value - 1, if that isn't below @p value already; from the
    /// top of the range it pushes nothing. If @p value is 0 and the lower limit is 0 before, the
    /// two end equal; if the push takes it there, it pushes back in turn.
    void on_sbLagLeadLimit2_valueChanged(int value);
    void on_sbScaleInc_valueChanged(int value) { writeParameter(m_apScaleInc, value); }
    void on_sbScaleDec_valueChanged(int value) { writeParameter(m_apScaleDec, value); }
    void on_sbScaleIncTimeout_valueChanged(int value)
    {
        writeParameter(m_apScaleIncTimeout, value);
    }
    void on_sbScaleDecTimeout_valueChanged(int value)
    {
        writeParameter(m_apScaleDecTimeout, value);
    }
    /// Writes 1 or 0.
    void on_cbScalerEnabled_toggled(bool toggle);
    /// Writes 1, if the button went on.
    void on_rbInputErrorGain_toggled();
    /// Writes 0, if the button went on.
    void on_rbInputRawError_toggled();
    /// @}

private:
    void showScalerInput(int value);

    std::unique_ptr<Ui::WCurrentScalerSettings> m_ui;
    Parameter m_apIScaleMin;
    Parameter m_apIScaleMax;
    Parameter m_apLagLeadLimit1;
    Parameter m_apLagLeadLimit2;
    Parameter m_apScaleInc;
    Parameter m_apScaleDec;
    Parameter m_apScaleIncTimeout;
    Parameter m_apScaleDecTimeout;
    Parameter m_apScalerEnabled;
    Parameter m_apActualScaler;
    Parameter m_apScalerInput;
};
