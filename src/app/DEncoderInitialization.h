#pragma once

#include <QDialog>

#include <memory>

class EncoderInitializationThread;
class Stepper;

namespace Ui {
class DEncoderInitialization;
}

/// Has the module detect its encoder, which turns the motor: writes the motor's full steps, starts
/// the detection and shows its state until it has come to a result.
///
/// Closed by its frame while a detection runs, it goes on asking, hidden, until a result comes or
/// the pacemaker's cycles are used up.
class DEncoderInitialization : public QDialog
{
    Q_OBJECT

public:
    /// @p stepper is only stored, and isn't the dialog's parent.
    explicit DEncoderInitialization(Stepper *stepper);
    /// Ends a run at once.
    ~DEncoderInitialization() override;

    /// The module that it talks to, at first 1. Replies of others are ignored.
    void setAddress(char address);
    char address() const; ///< of the module that it talks to
    /// The motor whose encoder is detected, at first 0. Replies for others are ignored.
    void setMotorBank(char motorBank);
    char motorBank() const; ///< of the motor whose encoder is detected
    /// Number of the axis parameter of the detection's state, at first 0.
    void setStateParameter(char parameter);
    /// Number of the axis parameter of the motor's full steps per turn, at first 0. It is the tool
    /// tip of its control.
    void setFullstepParameter(char parameter);
    /// Asks for the state, then for the full steps.
    void requestValues();
    /// Has the dialog deleted by the event loop, as soon as no run is under way.
    void deleteWhenIdle();

signals:
    /// The axis parameter @p type is to be read.
    void requestValue(char address, char motorBank, char type);
    /// @p value is to be written to the axis parameter @p type.
    void changeValue(char address, char motorBank, char type, int value);

public slots:
    /// Starts a run. The controls are locked until it is over.
    void on_btnStartInitialization_clicked();
    /// The run is over, with a result or without: the controls are free again.
    void handleInitThreadReady();
    /// Has the module start the detection.
    void handleStartInitialization();
    /// Asks the module for the state of the detection.
    void handleRequestInitializationState();
    /// Writes the motor's full steps, @p value, to the module at once.
    void on_sbFullstepResolution_valueChanged(int value);
    /// The answer to any read or write of an axis parameter. A state that is a result ends the run.
    void requestedValue(char address, char motorBank, char type, int value);

private:
    void fitWarning();
    void setControlsEnabled(bool enabled);
    void showState(int state);

    std::unique_ptr<Ui::DEncoderInitialization> m_ui;
    Stepper *m_stepper; ///< not owned
    std::unique_ptr<EncoderInitializationThread> m_initThread;
    char m_address = 1;
    char m_motorBank = 0;
    char m_stateParameter = 0;
    char m_fullstepParameter = 0;
};
