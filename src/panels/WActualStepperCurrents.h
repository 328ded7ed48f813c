#pragma once

#include "panels/MotorController.h"

#include <QList>
#include <QWidget>

#include <memory>

namespace Ui {
class WActualStepperCurrents;
}

/// Panel that shows the polled currents of the motor and of its phases, in mA.
class WActualStepperCurrents : public QWidget, public MotorController
{
    Q_OBJECT

public:
    /// Address 1, motor 0, all parameter numbers 0.
    explicit WActualStepperCurrents(QWidget *parent = nullptr);
    ~WActualStepperCurrents() override;

    /// Sets the number of the motor's current.
    void setApMotorCurrent(char number);
    /// Sets the number of the peak current in phase A.
    void setApPhaseA(char number);
    /// Sets the number of the peak current in phase B.
    void setApPhaseB(char number);
    /// The numbers that want polling: motor, phase A, phase B. The caller owns the list.
    QList<char> *traceParameters() const;

    /// Sets the title of the group box.
    void setTitle(const QString &title);

public slots:
    /// Shows a polled current of this panel's module and motor, in each field of that number.
    void requestedTraceValue(char address, char motorBank, char type, int value);
    /// The same for the raw reply to a GAP that was carried out.
    void requestedCommand(char address, char command, char type, char motorBank, char status,
                          int data);

private:
    std::unique_ptr<Ui::WActualStepperCurrents> m_ui;
    char m_apMotorCurrent = 0;
    char m_apPhaseA = 0;
    char m_apPhaseB = 0;
};
