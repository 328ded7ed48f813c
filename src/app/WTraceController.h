#pragma once

#include <QList>
#include <QWidget>

#include <memory>

class TraceCommand;
class ValueCheckerThread;

namespace Ui {
class WTraceController;
}

/// Starts and stops the polling of values and sets its delay. At every tick it hands its list of
/// values to whoever asks the module for them.
///
/// The buttons show what was asked for last: a start right after a stop, while the thread sits in
/// its last sleep, is lost, and the buttons then show running though no ticks come until the next
/// stop and start.
class WTraceController : public QWidget
{
    Q_OBJECT

public:
    /// Stopped, with an empty list and a delay of 100 ms.
    explicit WTraceController(QWidget *parent = nullptr);
    /// Ends the ticking at once, in a long sleep, too.
    ~WTraceController() override;

    /// Does what the button "Start" does if @p active, else what "Stop" does.
    void setTracingActive(bool active);

    /// Sets the delay between two ticks in milliseconds, cut to its range. In force from the next
    /// sleep on.
    void setDelay(int msecs);
    void setDelayMinimum(int msecs); ///< least delay that the user can set, in milliseconds
    void setDelayMaximum(int msecs); ///< largest delay, in milliseconds; 100000 at first
    void setDelayStep(int msecs); ///< step of the field, in milliseconds

    /// Appends @p command, which has to live as long as it is in the list and is never deleted
    /// here. One that equals an entry in address, command, type and motor bank is left out, and the
    /// entry stays as it is.
    void addTraceCommand(TraceCommand *command);
    /// Empties the list and deletes none of its records.
    void clearTraceCommands();
    /// The list that the ticks carry: the same object for the whole run.
    QList<TraceCommand *> *traceCommands();

signals:
    /// The ticks are to begin; also emitted while they come.
    void start();
    /// The ticks are to end; also emitted while none come.
    void stop();
    /// The user or the program changed the delay, in milliseconds.
    void delayChanged(int delay);
    /// A pass begins: each receiver asks the module for every value of the list in turn. The list
    /// and its records stay their owners'.
    void requestTraceValues(QList<TraceCommand *> *traceCommands);
    /// Marks the end of a pass, for a transport with process data objects. Nothing receives it yet.
    void requestPDOValues();

public slots:
    /// Shows the running state and emits start().
    void on_btnStart_clicked();
    /// Shows the stopped state and emits stop().
    void on_btnStop_clicked();
    /// Emits delayChanged(). @p value in milliseconds
    void on_sbDelay_valueChanged(int value);
    /// One pass through the list.
    void requestTraceValues();
    void activateTracing(); ///< does what the button "Start" does
    void deactivateTracing(); ///< does what the button "Stop" does

private:
    std::unique_ptr<Ui::WTraceController> m_ui;
    std::unique_ptr<ValueCheckerThread> m_checkerThread;
    std::unique_ptr<QList<TraceCommand *>> m_traceCommands;
};
