#pragma once

#include "panels/ParameterPanel.h"

#include <memory>

namespace Ui {
class WClosedLoopSettings;
}

/// General settings of the module: loop mode, maximum current, limit switches, and displays of what
/// it is supplied with.
///
/// The displays don't follow the module by themselves: they change when all values are read, when
/// someone else asks for theirs, and, the current, after each change of the maximum current.
class WClosedLoopSettings : public ParameterPanel
{
    Q_OBJECT

public:
    /// Titled "Settings", without loop modes, every value 0.
    explicit WClosedLoopSettings(QWidget *parent = nullptr);
    ~WClosedLoopSettings() override;

    /// @name Numbers of the parameters
    /// Each is 0 at first, and shows as the tool tip of its control.
    /// @{
    void setApMaxCurrentAndLimits(char maxCurrent, char rightLimit, char leftLimit);
    void setApLoopMode(char number) { setNumber(m_apLoopMode, number); }
    /// The current in mA that belongs to the maximum current.
    void setApCurrent(char number) { setNumber(m_apCurrent, number); }
    void setApSupplyVoltage(char number) { setNumber(m_apSupplyVoltage, number); }
    void setApDCCurrent(char number) { setNumber(m_apDCCurrent, number); }
    void setApTemperature(char number) { setNumber(m_apTemperature, number); }
    /// @}

    /// Appends the loop mode @p value to the choice, shown as "value : text".
    void addLoopMode(int value, const QString &text);
    /// Empties the choice of loop modes. A choice that was not empty changes by that, to a text
    /// without a number, so that 0 is written.
    void clearLoopModes();
    /// Lets the user choose the loop mode, or not: the mode must not change while the motor turns.
    void setLoopModeEnabled(bool enabled);

signals:
    /// The module has told its current limit, in mA, as it came.
    void maxCurrentChanged(int value);

public slots:
    /// Writes the maximum current and then asks for the current in mA: the module converts the one
    /// into the other.
    void on_slMaxCurrent_valueChanged(int value);
    /// Writes 1 or 0.
    void on_cbEnableRightLimitSwitch_toggled(bool toggle);
    /// Writes 1 or 0.
    void on_cbEnableLeftLimitSwitch_toggled(bool toggle);
    /// Writes the number at the beginning of the chosen loop mode's text, 0 if there is none.
    void on_cmbLoopMode_currentIndexChanged(int index);
    /// Does what readValues() does.
    void on_btnReadValues_clicked();

private:
    void showLoopMode(int value);

    std::unique_ptr<Ui::WClosedLoopSettings> m_ui;
    Parameter m_apMaxCurrent;
    Parameter m_apRightLimit;
    Parameter m_apLeftLimit;
    Parameter m_apLoopMode;
    Parameter m_apCurrent;
    Parameter m_apSupplyVoltage;
    Parameter m_apDCCurrent;
    Parameter m_apTemperature;
};
