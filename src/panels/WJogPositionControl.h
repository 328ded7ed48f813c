#pragma once

#include "panels/MotorController.h"

#include <QWidget>

#include <memory>

namespace Ui {
class WJogPositionControl;
}

/// Panel that moves the motor to a position chosen with a dial, on command or following the dial
/// live.
///
/// Positions are in µsteps. The dial is endless and stands for one turn; the target counts across
/// turns. Velocity (pps) and acceleration (pps/s) of the moves come from outside by
/// handleVelocityChange() and handleAcceleration() and are written only when they changed.
class WJogPositionControl : public QWidget, public MotorController
{
    Q_OBJECT

public:
    /// Address 1, motor 0, all parameter numbers 0, 10000 µsteps to a turn, target 0.
    explicit WJogPositionControl(QWidget *parent = nullptr);
    ~WJogPositionControl() override;

    /// Sets the µsteps of one turn of the dial; at least 1.
    void setDialRange(int range);

    /// Sets the number of the actual position, which is shown and cleared.
    void setApActualPosition(char number);
    /// Sets the number of the acceleration, which is only written.
    void setApAcceleration(char number);
    /// Sets the number of the velocity, which is only written.
    void setApVelocity(char number);

    /// Sets the title of the group box.
    void setTitle(const QString &title);
    /// Sets the text beside the actual position.
    void setActualLabel(const QString &label);
    /// Sets the text beside the target position.
    void setTargetLabel(const QString &label);
    /// Marks the panel as that of the module's present kind of motion, or not.
    void setActive(bool active);

signals:
    /// Commands a move (@p type 4, MVP) to the position @p value (@p moveType 0).
    void doMove(char address, char motorBank, char type, char moveType, int value);
    /// Commands a stop (3).
    void doROX(char address, char motorBank, char roxCommand, int value);
    /// Writes the parameter @p type in the module.
    void changeValue(char address, char motorBank, char type, int value);

public slots:
    /// Shows the actual position of this panel's module and motor.
    void requestedTraceValue(char address, char motorBank, char type, int value);
    /// Keeps @p value, in pps, to be written after the next move.
    void handleVelocityChange(int value);
    /// Keeps @p value, in pps/s, to be written after the next move.
    void handleAcceleration(int value);
    /// The dial moved to @p value: the target goes on by as much, over the end of the turn where
    /// the dial crossed it. When tracking, the motor moves there.
    void handleDialerValueChange(int value);
    /// The target changed to @p value: the dial turns to its place within the turn. When tracking,
    /// the motor moves there.
    void handleSpinValueChanged(int value);
    /// Tracking takes the place of "Move absolut" and "Stop", which are disabled by it.
    void on_cbContinuous_toggled(bool toggle);
    /// Moves to the target.
    void on_btnGo_clicked();
    /// Stops.
    void on_btnStop_clicked();
    /// Makes the module's actual position 0. Target and dial stay.
    void on_btnClear_clicked();

private:
    qint64 stepTo(int dialValue) const;
    void track(int position);
    void moveTo(int position);
    void writeRamp();

    std::unique_ptr<Ui::WJogPositionControl> m_ui;
    int m_dialRange = 0;
    int m_dialQuarter = 0;
    int m_targetPosition = 0;
    /// Only the dial's own moves count: after an edit of the target the next move of the dial is
    /// measured from where it was left last, by design.
    int m_lastDialValue = 0;
    char m_apActualPosition = 0;
    char m_apAcceleration = 0;
    char m_apVelocity = 0;
    int m_pendingVelocity = 0;
    int m_writtenVelocity = 0;
    int m_pendingAcceleration = 0;
    int m_writtenAcceleration = 0;
};
