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
    explicit WTraceController(QWidget *parent = nullptr);
    ~WTraceController() override;

    /// Does what the button "Start" does if @p active, else what "Stop" does.
    void setTracingActive(bool active);

    /// The delay between two ticks, its range and its step, in milliseconds.
    void setDelay(int msecs);
    void setDelayMinimum(int msecs);
    void setDelayMaximum(int msecs);
    void setDelayStep(int msecs);

    /// Appends @p command, which has to live as long as it is in the list and is never deleted
    /// here. One that equals an entry in address, command, type and motor bank is left out, and the
    /// entry stays as it is.
    void addTraceCommand(TraceCommand *command);
    void clearTraceCommands();
    /// The list that the ticks carry: the same object for the whole run.
    QList<TraceCommand *> *traceCommands();

signals:
    void start();
    void stop();
    void delayChanged(int delay);
    void requestTraceValues(QList<TraceCommand *> *traceCommands);
    /// Marks the end of a pass, for a transport with process data objects. Nothing receives it yet.
    void requestPDOValues();

public slots:
    void on_btnStart_clicked();
    void on_btnStop_clicked();
    void on_sbDelay_valueChanged(int value);
    /// One pass through the list.
    void requestTraceValues();
    void activateTracing();
    void deactivateTracing();

private:
    std::unique_ptr<Ui::WTraceController> m_ui;
    std::unique_ptr<ValueCheckerThread> m_checkerThread;
    std::unique_ptr<QList<TraceCommand *>> m_traceCommands;
};
