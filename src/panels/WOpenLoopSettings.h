#pragma once

#include "panels/ParameterPanel.h"

#include <QList>

#include <memory>

namespace Ui {
class WOpenLoopSettings;
}

/// Settings that matter while the motor is driven without its encoder: standby current and
/// microstep resolution.
///
/// The display in mA doesn't follow the module by itself: it changes when all values are read, when
/// someone else asks for its value, and after each change of the standby current.
class WOpenLoopSettings : public ParameterPanel
{
    Q_OBJECT

public:
    /// Titled "Open loop settings", without microstep resolutions, every value 0.
    explicit WOpenLoopSettings(QWidget *parent = nullptr);
    ~WOpenLoopSettings() override;

    /// @name Numbers of the parameters
    /// Each is 0 at first, and shows as the tool tip of its control.
    /// @{
    void setApStandbyCurrent(char number) { setNumber(m_apStandbyCurrent, number); }
    void setApMicrostepResolution(char number) { setNumber(m_apMicrostepResolution, number); }
    /// The current in mA that belongs to the standby current.
    void setApCurrent(char number) { setNumber(m_apCurrent, number); }
    /// @}

    /// Appends a resolution to the choice, shown as "value : text". What is written when it is
    /// chosen is @p value (0 to 255 as a byte), whatever the text says.
    void addMicrostepResolution(const QString &text, char value);

public slots:
    /// Writes the standby current and then asks for the current in mA: the module converts the one
    /// into the other.
    void on_slStandbyCurrent_valueChanged(int value);
    /// Writes the value that was added with the text of item @p index, 0 if there is none.
    void on_cmbMicrostepResolution_currentIndexChanged(int index);

private:
    struct MicrostepResolution
    {
        QString text; ///< as the item shows it
        int value;
    };

    void showMicrostepResolution(int value);

    std::unique_ptr<Ui::WOpenLoopSettings> m_ui;
    QList<MicrostepResolution> m_microstepResolutions; // in the order of adding
    Parameter m_apStandbyCurrent;
    Parameter m_apMicrostepResolution;
    Parameter m_apCurrent;
};
