#pragma once

#include "panels/MotorController.h"

#include <QList>
#include <QWidget>

#include <memory>

namespace Ui {
class WPositionControl;
}

/// Panel that moves the motor to an exact position, or by an exact distance, in µsteps, and shows
/// the actual position.
///
/// A relative move starts from the actual position or from the last target. That target is this
/// panel's own: it starts at 0, and neither a move by another panel nor "Clear" changes it.
class WPositionControl : public QWidget, public MotorController
{
    Q_OBJECT

public:
    /// Address 1, motor 0, all parameter numbers 0, both flags off.
    explicit WPositionControl(QWidget *parent = nullptr);
    ~WPositionControl() override;

    /// Sets the number of the actual position, which is shown and cleared.
    void setApActualPosition(char number);
    /// Sets the number of the target position, which readValues() asks for.
    void setApTargetPosition(char number);
    /// Sets the second one of the two numbers that "Clear on NULL" writes, the one that the button
    /// tells by its tool tip.
    void setApClearOnNull(char number);
    /// Sets the first one of the two, which has no tool tip.
    void setApClearOnNullWithoutTip(char number);
    /// Chooses how to stop: by the command MST or by a relative move of 0.
    void setStopWithMotorStop(bool stopWithMotorStop);
    /// Chooses how to move relative to the actual position: to the sum of the position last polled
    /// and the distance, or by the module's own relative move.
    void setRelativeToActualByAbsolute(bool relativeToActualByAbsolute);
    /// The numbers that want polling: that of the actual position. The caller owns the list.
    QList<char> *traceParameters() const;
    /// Asks for the actual position, then for the target position.
    void readValues();

    /// Sets the title of the group box.
    void setTitle(const QString &title);
    /// Sets the text beside the actual position.
    void setActualLabel(const QString &label);
    /// Sets the text beside the target position.
    void setTargetLabel(const QString &label);
    /// Sets the step of the target position, in µsteps.
    void setTargetStep(int step);

signals:
    /// Asks the module for the parameter @p type.
    void requestValue(char address, char motorBank, char type);
    /// Commands a move (@p type 4, MVP) to @p value (@p moveType 0) or by it (1). Not the way on
    /// which the move reaches the module, see targetPositionChange().
    void doMove(char address, char motorBank, char type, char moveType, int value);
    /// Writes the parameter @p type in the module.
    void changeValue(char address, char motorBank, char type, int value);
    /// Commands a stop (3).
    void doROX(char address, char motorBank, char roxCommand, int value);
    /// The move just commanded, for the one who sends it.
    void targetPositionChange(char address, char motorBank, char moveType, int value);
    /// The actual position was cleared, for the one who logs it and writes it once more.
    void actualPositionChange(char address, char motorBank, int value);

public slots:
    /// Shows a polled actual position of this panel's module and motor.
    void requestedTraceValue(char address, char motorBank, char type, int value);
    /// The same for a value that was asked for.
    void requestedValue(char address, char motorBank, char type, int value);
    /// The same for the raw reply to a GAP that was carried out.
    void requestedCommand(char address, char command, char type, char motorBank, char status,
                          int data);
    /// Moves to the target.
    void on_btnMoveAbsolute_clicked();
    /// Moves by the target, from where the list says.
    void on_btnMoveRelative_clicked();
    /// Stops.
    void on_btnStop_clicked();
    /// Makes the module's actual position 0. The target and the last target stay.
    void on_btnClear_clicked();
    /// Lets the module clear its position on the next null of the encoder. Whether it does is not
    /// looked at.
    void on_btnClearOnNull_clicked();

private:
    void move(char moveType, int value);

    std::unique_ptr<Ui::WPositionControl> m_ui;
    char m_apActualPosition = 0;
    char m_apTargetPosition = 0;
    char m_apClearOnNull = 0;
    char m_apClearOnNullWithoutTip = 0;
    bool m_stopWithMotorStop = false;
    bool m_relativeToActualByAbsolute = false;
    int m_lastTargetPosition = 0;
    const QString m_relativeToActualText;
    const QString m_relativeToTargetText;
};
