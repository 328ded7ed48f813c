#pragma once

#include "panels/MotorController.h"

#include <QList>
#include <QWidget>

#include <memory>

namespace Ui {
class WCurrentControl;
}

/// Panel that applies a phase current, in mA, and shows the largest one.
///
/// The current that is sent is signed, and the direction lies in its sign: there is no command to
/// turn. The field is never negative; the buttons give the direction.
class WCurrentControl : public QWidget, public MotorController
{
    Q_OBJECT

public:
    /// Address 1, motor 0, all parameter numbers 0, stop by a current of 0.
    explicit WCurrentControl(QWidget *parent = nullptr);
    ~WCurrentControl() override;

    /// Sets the number of the current that is shown as the actual one.
    void setApActualCurrent(char number);
    /// Sets the number of the target current, which is written.
    void setApTargetCurrent(char number);
    /// Chooses how to stop: by the command MST, which leaves the target current in the module as
    /// it is, or by writing a target current of 0.
    void setStopWithMotorStop(bool stopWithMotorStop);
    /// The numbers that want polling: that of the actual current. The caller owns the list.
    QList<char> *traceParameters() const;
    /// Asks for the actual current once.
    void readValues();

    /// Sets the title of the group box.
    void setTitle(const QString &title);
    /// Sets the text beside the actual current.
    void setActualLabel(const QString &label);
    /// Sets the text beside the target current.
    void setTargetLabel(const QString &label);
    /// Sets the largest target current, in mA; at least 0. A target above it is clamped, and
    /// nothing is sent.
    void setTargetMaximum(int maximum);

signals:
    /// Asks the module for the parameter @p type.
    void requestValue(char address, char motorBank, char type);
    /// Writes the parameter @p type in the module. Not the way on which the target current reaches
    /// the module, see targetTorqueChange().
    void changeValue(char address, char motorBank, char type, int value);
    /// Commands a stop (3).
    void doROX(char address, char motorBank, char roxCommand, int value);
    /// The current just commanded, in mA, negative to the left, for the one who sends and logs it.
    void targetTorqueChange(char address, char motorBank, int value);

public slots:
    /// Shows the actual current of this panel's module and motor.
    void requestedValue(char address, char motorBank, char type, int value);
    /// The same for a polled value.
    void requestedTraceValue(char address, char motorBank, char type, int value);
    /// Applies the current to the right until the stop.
    void on_btnRight_clicked();
    /// Applies the current to the right until the button is released.
    void on_btnJogRight_pressed();
    /// Applies the current to the left until the stop.
    void on_btnLeft_clicked();
    /// Applies the current to the left until the button is released.
    void on_btnJogLeft_pressed();
    /// Stops.
    void on_btnStop_clicked();
    /// Stops.
    void on_btnJogRight_released();
    /// Stops.
    void on_btnJogLeft_released();

private:
    void apply(int current);
    void stop();

    std::unique_ptr<Ui::WCurrentControl> m_ui;
    char m_apTargetCurrent = 0;
    char m_apActualCurrent = 0;
    bool m_stopWithMotorStop = false;
};
