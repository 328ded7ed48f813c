#include "app/WTraceController.h"

#include "app/ValueCheckerThread.h"
#include "comm/TraceCommand.h"
#include "ui_WTraceController.h"

#include <algorithm>

namespace {

constexpr int StartDelayMsecs = 100;
constexpr int DelayStepMsecs = 1;

bool asksForTheSame(const TraceCommand &a, const TraceCommand &b)
{
    return a.address() == b.address() && a.command() == b.command() && a.type() == b.type()
        && a.motorBank() == b.motorBank();
}

} // namespace

WTraceController::WTraceController(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::WTraceController>())
    , m_checkerThread(std::make_unique<ValueCheckerThread>(StartDelayMsecs))
    , m_traceCommands(std::make_unique<QList<TraceCommand *>>())
{
    m_ui->setupUi(this);
    m_ui->btnStop->setEnabled(false);
    setDelay(StartDelayMsecs);
    setDelayStep(DelayStepMsecs);

    ValueCheckerThread *thread = m_checkerThread.get();
    connect(this, &WTraceController::start, thread, [thread] { thread->start(); });
    connect(this, &WTraceController::stop, thread, &ValueCheckerThread::stop);
    connect(this, &WTraceController::delayChanged, thread, &ValueCheckerThread::changeDelay);
    connect(thread, &ValueCheckerThread::checkRequested, this,
            qOverload<>(&WTraceController::requestTraceValues));
}

WTraceController::~WTraceController() = default;

void WTraceController::setTracingActive(bool active)
{
    if (active) {
        on_btnStart_clicked();
    } else {
        on_btnStop_clicked();
    }
}

void WTraceController::setDelay(int msecs)
{
    m_ui->sbDelay->setValue(msecs);
}

void WTraceController::setDelayMinimum(int msecs)
{
    m_ui->sbDelay->setMinimum(msecs);
}

void WTraceController::setDelayMaximum(int msecs)
{
    m_ui->sbDelay->setMaximum(msecs);
}

void WTraceController::setDelayStep(int msecs)
{
    m_ui->sbDelay->setSingleStep(msecs);
}

void WTraceController::addTraceCommand(TraceCommand *command)
{
    const bool isKnown = std::any_of(
        m_traceCommands->cbegin(), m_traceCommands->cend(),
        [command](const TraceCommand *entry) { return asksForTheSame(*entry, *command); });
    if (!isKnown) {
        m_traceCommands->append(command);
    }
}

void WTraceController::clearTraceCommands()
{
    m_traceCommands->clear();
}

QList<TraceCommand *> *WTraceController::traceCommands()
{
    return m_traceCommands.get();
}

void WTraceController::on_btnStart_clicked()
{
    m_ui->btnStart->setEnabled(false);
    m_ui->btnStop->setEnabled(true);
    emit start();
}

void WTraceController::on_btnStop_clicked()
{
    m_ui->btnStart->setEnabled(true);
    m_ui->btnStop->setEnabled(false);
    emit stop();
}

void WTraceController::on_sbDelay_valueChanged(int value)
{
    emit delayChanged(value);
}

void WTraceController::requestTraceValues()
{
    emit requestTraceValues(m_traceCommands.get());
    emit requestPDOValues();
}

void WTraceController::activateTracing()
{
    setTracingActive(true);
}

void WTraceController::deactivateTracing()
{
    setTracingActive(false);
}
