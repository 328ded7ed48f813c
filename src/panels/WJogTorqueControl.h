#pragma once

#include "panels/MotorController.h"

#include <QWidget>

#include <memory>

namespace Ui {
class WJogTorqueControl;
}

/// Panel that sets the target phase current with a dial, on command or following the dial live.
///
/// Currents are in mA and signed: the direction of the torque lies in the sign. The range follows
/// the module's own current limit as it is polled.
class WJogTorqueControl : public QWidget, public MotorController
{
    Q_OBJECT

public:
    /// Address 1, motor 0, all parameter numbers 0, 10000 mA to either side, target 0.
    explicit WJogTorqueControl(QWidget *parent = nullptr);
    ~WJogTorqueControl() override;

    /// Sets the range of dial and target to -@p limit up to @p limit, in mA, and the step of the
    /// target to a twentieth of it. A target beyond the range is clamped by the toolkit, and so
    /// sent if the dial is tracked.
    void setCurrentRange(int limit);

    /// Sets the number of the target current, which is written.
    void setApTargetCurrent(char number);
    /// Sets the number of the largest current, which is shown.
    void setApMaxCurrent(char number);

    /// Sets the title of the group box.
    void setTitle(const QString &title);
    /// Sets the text beside the largest current.
    void setMaxLabel(const QString &label);
    /// Sets the text beside the target current.
    void setTargetLabel(const QString &label);
    /// Marks the panel as that of the module's present kind of motion, or not.
    void setActive(bool active);

signals:
    /// Writes the parameter @p type in the module.
    void changeValue(char address, char motorBank, char type, int value);
    /// Commands a stop (3).
    void doROX(char address, char motorBank, char roxCommand, int value);

public slots:
    /// Takes the largest current of this panel's module and motor as the range, and shows it.
    void requestedValue(char address, char motorBank, char type, int value);
    /// Takes a polled value, exactly as requestedValue().
    void requestedTraceValue(char address, char motorBank, char type, int value);
    /// The dial moved to @p value mA: the target follows and is sent when tracking.
    void handleDialerValueChange(int value);
    /// The target changed to @p value mA: the dial follows. Nothing is sent, also when tracking:
    /// unlike a position, a current that is typed in waits for the dial or for "Go".
    void handleSpinValueChanged(int value);
    /// Tracking takes the place of "Go" and "Stop", which are disabled by it.
    void on_cbContinuous_toggled(bool toggle);
    /// Sends the target.
    void on_btnGo_clicked();
    /// Stops.
    void on_btnStop_clicked();

private:
    void writeTarget();

    std::unique_ptr<Ui::WJogTorqueControl> m_ui;
    char m_apTargetCurrent = 0;
    char m_apMaxCurrent = 0;
};
