// The charts and the list of polled values, which follows what is shown.

#include "app/Stepper.h"
#include "charts/ChartLine.h"
#include "comm/ByteText.h"
#include "comm/CommandNumbers.h"
#include "comm/TraceCommand.h"
#include "panels/AxisParameter.h"
#include "ui_Stepper.h"

#include <QDebug>

using namespace Qt::StringLiterals;

namespace {

/// Samples kept for each curve.
constexpr int HistoryLimit = 10000;
/// Height of a chart on display. A hidden one has the maximum height 0, and is told by that.
constexpr int ShownHeight = 2000;

constexpr char TraceMotorBank = 0;
/// Until an open attempt hands over another.
constexpr char FirstAddress = 1;

/// What the user may add to a chart, in the order of the list that he picks from.
constexpr const AxisParameter *ChartParameters[] = {
    &AxisParameters::TargetPosition,
    &AxisParameters::ActualPosition,
    &AxisParameters::TargetVelocity,
    &AxisParameters::TargetPhaseCurrent,
    &AxisParameters::BetaMax,
    &AxisParameters::ScalerActualValue,
    &AxisParameters::ActualVelocity,
    &AxisParameters::Gamma,
    &AxisParameters::DeltaMod,
    &AxisParameters::DeltaLut,
    &AxisParameters::VirtualActualPosition,
    &AxisParameters::VirtualTargetVelocity,
    &AxisParameters::VirtualActualVelocity,
    &AxisParameters::ScalerTargetValue,
    &AxisParameters::PositionError,
};

QString numberText(char byte)
{
    return QString::number(unsignedByte(byte));
}

ChartLine *newCurve(const AxisParameter &parameter, const QString &name, const QColor &color)
{
    return new ChartLine(FirstAddress, TraceMotorBank, CommandNumber::GetAxisParameter,
                         static_cast<quint8>(parameter.number), name, color);
}

bool isOnDisplay(const WSimpleScaledDrawer &drawer)
{
    return drawer.maximumHeight() > 0;
}

void dumpTraceCommands(const QList<TraceCommand *> &commands)
{
    qDebug().nospace() << "TraceCommand->size(): " << QString::number(commands.size());
    for (const TraceCommand *command : commands) {
        qDebug().nospace() << "TraceCommand: " << numberText(command->address()) << ", "
                           << numberText(command->motorBank()) << ", "
                           << numberText(command->command()) << ", " << numberText(command->type());
    }
}

} // namespace

std::array<WSimpleScaledDrawer *, 3> Stepper::drawers() const
{
    return {m_ui->velocityDrawer, m_ui->positionDrawer, m_ui->torqueDrawer};
}

void Stepper::buildAvailableTraceCommands()
{
    for (const AxisParameter *parameter : ChartParameters) {
        m_availableTraceCommands.push_back(std::make_unique<TraceCommand>(
            m_moduleAddress, TraceMotorBank, CommandNumber::GetAxisParameter, *parameter,
            parameter->chartName.toString()));
        for (WSimpleScaledDrawer *drawer : drawers()) {
            drawer->addAvailableTrace(m_availableTraceCommands.back().get());
        }
    }
}

void Stepper::configureCharts()
{
    struct Curve
    {
        const AxisParameter &parameter;
        QString name;
        QColor color;
    };
    const auto configure = [](WSimpleScaledDrawer *drawer, const QString &title,
                              const QList<Curve> &curves) {
        drawer->setMaxSamples(HistoryLimit);
        drawer->setTitle(title);
        for (const Curve &curve : curves) {
            drawer->addChartLine(newCurve(curve.parameter, curve.name, curve.color));
        }
        drawer->setChartsSelectable(true);
    };
    configure(m_ui->velocityDrawer, tr("Velocity"),
              {{AxisParameters::ActualVelocity, tr("actual [pps]"), Qt::blue},
               {AxisParameters::TargetVelocity, tr("target [pps]"), Qt::red}});
    configure(m_ui->positionDrawer, tr("Position"),
              {{AxisParameters::ActualPosition, tr("actual [µsteps]"), Qt::blue},
               {AxisParameters::TargetPosition, tr("target [µsteps]"), Qt::red}});
    // The menu calls this one the torque graph: delta is what a torque command sets.
    configure(m_ui->torqueDrawer, tr("Delta"),
              {{AxisParameters::TargetPhaseCurrent, tr("delta"), Qt::black}});
}

void Stepper::showVelocityDrawer(bool show)
{
    showDrawer(m_ui->velocityDrawer, show);
}

void Stepper::showPositionDrawer(bool show)
{
    showDrawer(m_ui->positionDrawer, show);
}

void Stepper::showTorqueDrawer(bool show)
{
    showDrawer(m_ui->torqueDrawer, show);
}

void Stepper::showDrawer(WSimpleScaledDrawer *drawer, bool show)
{
    drawer->setMaximumHeight(show ? ShownHeight : 0);
    // A chart of no height is still a visible widget, whose buttons the tabulator key would reach.
    const auto parts = drawer->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget *part : parts) {
        part->setVisible(show);
    }
    updateTraceCommands(m_moduleAddress);
}

void Stepper::updateTraceValues()
{
    updateTraceCommands(m_moduleAddress);
}

void Stepper::updateTraceCommands(char address)
{
    m_moduleAddress = address;
    handAddressToPanels(address);
    collectTraceCommands(address);
    dumpTraceCommands(*m_ui->wTraceController->traceCommands());
}

void Stepper::handAddressToPanels(char address)
{
    const auto setAddresses = [address](auto *...panels) { (panels->setAddress(address), ...); };
    setAddresses(m_ui->wJogVelocityControl, m_ui->wJogPositionControl, m_ui->wJogTorqueControl,
                 m_ui->wModuleSettings, m_ui->wOpenLoopSettings, m_ui->wChopperSettings,
                 m_ui->wPositionMaintenanceSettings, m_ui->wScalerSettings,
                 m_ui->wFieldWeakeningSettings, m_ui->wEncoderSettings, m_ui->wTorqueControl,
                 m_ui->wActualStepperCurrents, m_ui->wVelocityRampControl1, m_ui->wVelocityControl,
                 m_ui->wCorrectionSettings1, m_ui->wVelocityRampControl2, m_ui->wPositionControl,
                 m_ui->wCorrectionSettings2, m_ui->wDirectMode, m_ui->wStates);
}

void Stepper::collectTraceCommands(char address)
{
    auto *controller = m_ui->wTraceController;
    controller->clearTraceCommands();
    m_traceCommands.clear();
    const auto poll = [this, controller](auto &&...arguments) {
        m_traceCommands.push_back(std::make_unique<TraceCommand>(arguments...));
        controller->addTraceCommand(m_traceCommands.back().get());
    };
    // The list takes each value once, and one answer serves all.
    const auto pollFor = [address, &poll](auto *...panels) {
        const auto pollOne = [address, &poll](const auto *panel) {
            const std::unique_ptr<QList<char>> parameters{panel->traceParameters()};
            for (const char parameter : *parameters) {
                poll(address, CommandNumber::GetAxisParameter, parameter, TraceMotorBank);
            }
        };
        (pollOne(panels), ...);
    };
    pollFor(m_ui->wStates, m_ui->wActualStepperCurrents, m_ui->wVelocityControl,
            m_ui->wPositionControl, m_ui->wTorqueControl);
    for (WSimpleScaledDrawer *drawer : drawers()) {
        if (!isOnDisplay(*drawer)) {
            continue; // and its curves keep the address of their last use
        }
        for (ChartLine *line : drawer->chartLines()) {
            line->setAddress(static_cast<quint8>(address));
            poll(address, static_cast<char>(line->motorBank()), static_cast<char>(line->command()),
                 static_cast<char>(line->type()), line->name());
        }
    }
}
