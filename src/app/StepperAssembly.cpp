// What each panel is given, and who is wired to whom. The order of the rows is part of the
// behaviour: a signal reaches its slots in the order of the connections.

#include "app/Stepper.h"
#include "comm/CANKvaserCommandHandler.h"
#include "comm/QSerialCommandHandler.h"
#include "panels/AxisParameter.h"
#include "panels/ParameterToolTip.h"
#include "ui_Stepper.h"

#include <type_traits>

using namespace Qt::StringLiterals;

namespace {

/// kBit/s. 20, which the panel's own list has, is left out: the CAN interface has no code for it.
constexpr int Bitrates[] = {1000, 500, 250, 125, 100, 50, 10};

constexpr int TraceDelayMinimumMsecs = 200;
constexpr int TraceDelayMsecs = 300;

// What the module can be told, in pps, pps/s and mA.
constexpr int VelocityMaximum = 268435454;
constexpr int AccelerationMaximum = 33554431;
constexpr int TargetCurrentMaximum = 5000;
/// The dials go less far, or a step would be too much of a jump.
constexpr int JogLimit = 8000000;
/// One turn of the position dial, in µsteps: a turn of a motor of 200 full steps.
constexpr int JogDialRange = 51200;

constexpr int PositionStep = 10000;
constexpr int VelocityStep = 10000;
constexpr int AccelerationStep = 1000;

} // namespace

void Stepper::createSerialHandler()
{
    m_serialHandler = std::make_unique<QSerialCommandHandler>();
    auto *serial = m_serialHandler.get();
    connect(serial, &QSerialCommandHandler::handleAttachedUsbDevice, this,
            &Stepper::handleAttachedUsbDevice);
    connect(serial, &QSerialCommandHandler::handleAttachedSerialDevice, this,
            &Stepper::handleAttachedSerialDevice);
    connect(serial, &QSerialCommandHandler::handleDetachedDevice, this,
            &Stepper::handleDetachedUsbDevice);
    // Only now, so that ports plugged in before the start reach the panels as later ones do.
    serial->reportAvailableDevices();
}

void Stepper::createCanHandler()
{
    m_canHandler = std::make_unique<CANKvaserCommandHandler>();
    connect(m_canHandler.get(), &CANKvaserCommandHandler::deviceClosed, this,
            &Stepper::handleCanKvaserDeviceClosed);
}

void Stepper::wireTraceController()
{
    auto *trace = m_ui->wTraceController;
    trace->setDelayMinimum(TraceDelayMinimumMsecs);
    trace->setDelay(TraceDelayMsecs);
    withBothHandlers([trace](auto *handler) {
        using Handler = std::remove_pointer_t<decltype(handler)>;
        connect(trace, qOverload<QList<TraceCommand *> *>(&WTraceController::requestTraceValues),
                handler, &Handler::requestTraceValues);
    });
}

void Stepper::wireConnectionPanels()
{
    auto *usb = m_ui->wUsbConnection;
    usb->setTitle(tr("USB connection"));
    connect(usb, &WConnection::openDevice, this, &Stepper::openUsbHandler);
    connect(usb, &WConnection::closeDevice, this, &Stepper::closeUsbHandler);

    auto *can = m_ui->wCANKvaserConnection;
    can->setTitle(tr("CAN connection"));
    can->clearBitrates();
    for (const int bitrate : Bitrates) {
        can->addBitrate(bitrate);
    }
    connect(can, &WCANConnection::openDevice, this, &Stepper::openCANKvaserHandler);
    connect(can, &WCANConnection::closeDevice, this, &Stepper::closeCANKvaserHandler);

    auto *serial = m_ui->wSerialConnection;
    serial->setTitle(tr("Serial connection"));
    connect(serial, &WSerialConnection::openDevice, this, &Stepper::openSerialHandler);
    connect(serial, &WSerialConnection::closeDevice, this, &Stepper::closeSerialHandler);
}

void Stepper::wireDirectMode()
{
    auto *directMode = m_ui->wDirectMode;
    withBothHandlers([directMode](auto *handler) {
        using Handler = std::remove_pointer_t<decltype(handler)>;
        connect(directMode, &WDirectMode::doRequest, handler, &Handler::doRequest);
    });
    withBothHandlers([directMode](auto *handler) {
        using Handler = std::remove_pointer_t<decltype(handler)>;
        connect(handler, &Handler::requestResult, directMode, &WDirectMode::requestResult);
    });
}

// --- Motor panels -----------------------------------------------------------------------------

/// How a panel and the transports are bound to each other.
namespace Wire {
constexpr unsigned Reads = 1U << 0; ///< it asks for parameters
constexpr unsigned Writes = 1U << 1; ///< it changes parameters
constexpr unsigned Rotates = 1U << 2; ///< it turns and stops the motor
constexpr unsigned Moves = 1U << 3; ///< it sends the motor to positions
constexpr unsigned Hears = 1U << 4; ///< it gets every reply for a parameter
constexpr unsigned HearsPolled = 1U << 5; ///< it gets every polled value
constexpr unsigned Settings = Reads | Writes | Hears;
} // namespace Wire

template <unsigned Links, typename Panel>
void Stepper::wire(Panel *panel)
{
    withBothHandlers([panel](auto *handler) {
        using Handler = std::remove_pointer_t<decltype(handler)>;
        if constexpr ((Links & Wire::Reads) != 0) {
            connect(panel, &Panel::requestValue, handler, &Handler::getAxisParameter);
        }
        if constexpr ((Links & Wire::Writes) != 0) {
            connect(panel, &Panel::changeValue, handler, &Handler::setAxisParameter);
        }
        if constexpr ((Links & Wire::Rotates) != 0) {
            connect(panel, &Panel::doROX, handler, &Handler::doROX);
        }
        if constexpr ((Links & Wire::Moves) != 0) {
            connect(panel, &Panel::doMove, handler, &Handler::doMove);
        }
        if constexpr ((Links & Wire::Hears) != 0) {
            connect(handler, &Handler::requestedValue, panel, &Panel::requestedValue);
        }
        if constexpr ((Links & Wire::HearsPolled) != 0) {
            connect(handler, &Handler::requestedTraceValue, panel, &Panel::requestedTraceValue);
        }
    });
}

void Stepper::assembleQuickstartTab()
{
    auto *velocity = m_ui->wJogVelocityControl;
    velocity->setTitle(tr("Velocity mode [pps, pps/s]"));
    velocity->setActualLabel(tr("V_ACTUAL"));
    velocity->setTargetLabel(tr("V_TARGET"));
    velocity->setApAcceleration(AxisParameters::Acceleration);
    velocity->setApActualVelocity(AxisParameters::ActualVelocity);
    velocity->setLogarithmic(true);
    velocity->setVelocityLimit(JogLimit);
    velocity->setAccelerationLimit(JogLimit);
    wire<Wire::Settings | Wire::Rotates | Wire::HearsPolled>(velocity);

    auto *position = m_ui->wJogPositionControl;
    position->setTitle(tr("Position mode [µsteps]"));
    position->setActualLabel(tr("X_ACTUAL"));
    position->setTargetLabel(tr("X_TARGET"));
    position->setApActualPosition(AxisParameters::ActualPosition);
    position->setApAcceleration(AxisParameters::Acceleration);
    position->setApVelocity(AxisParameters::MaxPositioningSpeed);
    position->setDialRange(JogDialRange);
    wire<Wire::Writes | Wire::Rotates | Wire::Moves | Wire::HearsPolled>(position);
    connect(velocity, &WJogVelocityControl::velocityChanged, position,
            &WJogPositionControl::handleVelocityChange);
    connect(velocity, &WJogVelocityControl::accelerationChanged, position,
            &WJogPositionControl::handleAcceleration);

    auto *torque = m_ui->wJogTorqueControl;
    torque->setTitle(tr("Torque mode [mA]"));
    torque->setMaxLabel(tr("Phase Î max"));
    torque->setTargetLabel(tr("Phase Î target"));
    torque->setApTargetCurrent(AxisParameters::TargetPhaseCurrent);
    torque->setApMaxCurrent(AxisParameters::MaxPhaseCurrent);
    wire<Wire::Writes | Wire::Rotates | Wire::HearsPolled>(torque);

    connect(m_ui->btnInitEncoder2, &QPushButton::clicked, this, &Stepper::handleBtnEncoderClicked);

    QComboBox *loopMode = m_ui->cmbLoopMode;
    loopMode->setToolTip(parameterToolTip(m_loopModeParameter));
    loopMode->addItem(u"0 : "_s + tr("Open loop"));
    loopMode->addItem(u"1 : "_s + tr("Closed loop"));
    wire<Wire::Hears>(this);
    connect(loopMode, &QComboBox::currentIndexChanged, this,
            [this, loopMode](int index) { actualLoopModeChanged(loopMode->itemText(index)); });
}

void Stepper::assembleSettingsTab()
{
    auto *module = m_ui->wModuleSettings;
    module->setTitle(tr("General settings"));
    module->setApMaxCurrentAndLimits(AxisParameters::MaxCurrent,
                                     AxisParameters::RightLimitSwitchDisabled,
                                     AxisParameters::LeftLimitSwitchDisabled);
    module->setApLoopMode(AxisParameters::ClosedLoopMode);
    module->setApCurrent(AxisParameters::MaxPhaseCurrent);
    module->setApSupplyVoltage(AxisParameters::SupplyVoltage);
    module->setApDCCurrent(AxisParameters::DCCurrent);
    module->setApTemperature(AxisParameters::Temperature);
    module->addLoopMode(0, tr("Open loop"));
    module->addLoopMode(1, tr("Closed loop"));
    wire<Wire::Settings>(module);
    connect(module, &WClosedLoopSettings::maxCurrentChanged, this,
            &Stepper::handleMaxCurrentChanged);

    auto *openLoop = m_ui->wOpenLoopSettings;
    openLoop->setApStandbyCurrent(AxisParameters::StandbyCurrent);
    openLoop->setApCurrent(AxisParameters::StandbyPhaseCurrent);
    openLoop->setApMicrostepResolution(AxisParameters::MicrostepResolution);
    char resolution = 0;
    for (const QString &text : {tr("full step"), tr("half step"), tr("4 microsteps"),
                                tr("8 microsteps"), tr("16 microsteps"), tr("32 microsteps"),
                                tr("64 microsteps"), tr("128 microsteps"), tr("256 microsteps")}) {
        openLoop->addMicrostepResolution(text, resolution++);
    }
    wire<Wire::Settings>(openLoop);

    auto *chopper = m_ui->wChopperSettings;
    chopper->setTitle(tr("Chopper settings ZDR626"));
    chopper->setApBlankTime(AxisParameters::ChopperBlankTime);
    chopper->setApChopperMode(AxisParameters::ChopperMode);
    chopper->setApHysteresisDecrement(AxisParameters::HysteresisDecrement);
    chopper->setApHysteresisEnd(AxisParameters::HysteresisEnd);
    chopper->setApHysteresisStart(AxisParameters::HysteresisStart);
    chopper->setApOffTime(AxisParameters::OffTime);
    chopper->setApSlopeHighSide(AxisParameters::SlopeHighSide);
    chopper->setApSlopeLowSide(AxisParameters::SlopeLowSide);
    wire<Wire::Settings>(chopper);
}

void Stepper::assembleClosedLoopTab()
{
    auto *maintenance = m_ui->wPositionMaintenanceSettings;
    maintenance->setApPositionWindow(AxisParameters::PositionReachedWindow);
    maintenance->setApPositionWindowTime(AxisParameters::PositionReachedTime);
    maintenance->setApStandStillP(AxisParameters::StandstillErrorGain);
    maintenance->setApStandDampening(AxisParameters::StandstillDampening);
    maintenance->setApStandStillErrorLimit(AxisParameters::StandstillErrorLimit);
    maintenance->setApVelocityWindow(AxisParameters::VelocityReachedWindow);
    wire<Wire::Settings>(maintenance);

    auto *scaler = m_ui->wScalerSettings;
    scaler->setTitle(tr("Current scaler settings"));
    scaler->setApIScaleMin(AxisParameters::ScalerMinimum);
    scaler->setApIScaleMax(AxisParameters::ScalerMaximum);
    scaler->setApLagLeadLimit1(AxisParameters::ScalerLimit1);
    scaler->setApLagLeadLimit2(AxisParameters::ScalerLimit2);
    scaler->setApScaleInc(AxisParameters::ScalerIncrement);
    scaler->setApScaleDec(AxisParameters::ScalerDecrement);
    scaler->setApScaleIncTimeout(AxisParameters::ScalerIncrementTimeout);
    scaler->setApScaleDecTimeout(AxisParameters::ScalerDecrementTimeout);
    scaler->setApScalerEnabled(AxisParameters::ScalerEnabled);
    scaler->setApActualScaler(AxisParameters::ScalerActualValue);
    scaler->setApScalerInput(AxisParameters::ScalerInput);
    wire<Wire::Settings>(scaler);

    auto *fieldWeakening = m_ui->wFieldWeakeningSettings;
    fieldWeakening->setApGammaVMin(AxisParameters::GammaVMin);
    fieldWeakening->setApGammaVMax(AxisParameters::GammaVMax);
    wire<Wire::Settings>(fieldWeakening);
}

void Stepper::assembleEncoderTab()
{
    auto *encoder = m_ui->wEncoderSettings;
    encoder->setApCounter(AxisParameters::ActualEncoderValue);
    encoder->setApResolution(AxisParameters::EncoderResolution);
    encoder->setApFullstepResolution(AxisParameters::MotorFullSteps);
    encoder->setApEncoderOffset(AxisParameters::EncoderOffset);
    wire<Wire::Settings>(encoder);
    connect(m_ui->btnInitEncoder, &QPushButton::clicked, this, &Stepper::handleBtnEncoderClicked);
}

void Stepper::assembleTorqueTab()
{
    auto *torque = m_ui->wTorqueControl;
    torque->setTitle(tr("Current control [mA]"));
    torque->setActualLabel(tr("Max. phase current"));
    torque->setTargetLabel(tr("Target phase current"));
    torque->setApActualCurrent(AxisParameters::MaxPhaseCurrent);
    torque->setApTargetCurrent(AxisParameters::TargetPhaseCurrent);
    torque->setTargetMaximum(TargetCurrentMaximum);
    torque->setStopWithMotorStop(true);
    wire<Wire::Rotates | Wire::Hears | Wire::HearsPolled>(torque);
    connect(torque, &WCurrentControl::targetTorqueChange, this, &Stepper::handleTargetTorqueChange);

    auto *currents = m_ui->wActualStepperCurrents;
    currents->setApMotorCurrent(AxisParameters::MotorCurrent);
    currents->setApPhaseA(AxisParameters::PeakCurrentPhaseA);
    currents->setApPhaseB(AxisParameters::PeakCurrentPhaseB);
    wire<Wire::HearsPolled>(currents);
}

void Stepper::assembleRampControl(WStepperVelocityRampControl *ramp)
{
    ramp->setMaxVelocityLabel(tr("Max. velocity [pps]"));
    ramp->setAccelerationLabel(tr("Accel.[pps/s]"));
    ramp->setApMaxVelocity(AxisParameters::MaxPositioningSpeed);
    ramp->setApAcceleration(AxisParameters::Acceleration);
    ramp->setApStartStopVelocity(AxisParameters::StartStopVelocity);
    ramp->setAccelerationMaximum(AccelerationMaximum);
    ramp->setMaxVelocityMaximum(VelocityMaximum);
    ramp->setMaxVelocityStep(VelocityStep);
    ramp->setAccelerationStep(AccelerationStep);
    wire<Wire::Settings>(ramp);
}

void Stepper::assembleCorrectionSettings(CorrectionSettings *correction)
{
    correction->setApVelocityP(AxisParameters::CorrectionVelocityP);
    correction->setApMaxTolerance(AxisParameters::MaxCorrectionTolerance);
    correction->setApMaxVelocity(AxisParameters::MaxCorrectionSpeed);
    wire<Wire::Settings>(correction);
}

void Stepper::assembleVelocityTab()
{
    assembleRampControl(m_ui->wVelocityRampControl1);

    auto *velocity = m_ui->wVelocityControl;
    velocity->setTitle(tr("Velocity control [pps]"));
    velocity->setActualLabel(tr("Actual vel."));
    velocity->setTargetLabel(tr("Target vel."));
    velocity->setApActualVelocity(AxisParameters::ActualVelocity);
    velocity->setTargetMaximum(VelocityMaximum);
    velocity->setTargetStep(VelocityStep);
    wire<Wire::Reads | Wire::Rotates | Wire::Hears | Wire::HearsPolled>(velocity);
    connect(velocity, &WVelocityControl::motorHalted, this, &Stepper::handleMotorHalted);

    assembleCorrectionSettings(m_ui->wCorrectionSettings1);
}

void Stepper::assemblePositioningTab()
{
    // The same parameters as on the velocity tab: the reply to what one writes reaches the other.
    assembleRampControl(m_ui->wVelocityRampControl2);

    auto *position = m_ui->wPositionControl;
    position->setTitle(tr("Position control [µsteps]"));
    position->setApActualPosition(AxisParameters::ActualPosition);
    position->setApTargetPosition(AxisParameters::TargetPosition);
    position->setApClearOnNull(AxisParameters::ClearOnNull);
    position->setApClearOnNullWithoutTip(AxisParameters::ClearOnNull);
    position->setTargetStep(PositionStep);
    position->setStopWithMotorStop(true);
    position->setRelativeToActualByAbsolute(true);
    wire<Wire::Writes | Wire::Rotates | Wire::HearsPolled>(position);
    connect(position, &WPositionControl::targetPositionChange, this,
            &Stepper::handleTargetPositionChange);
    connect(position, &WPositionControl::actualPositionChange, this,
            &Stepper::handleActualPositionChange);

    assembleCorrectionSettings(m_ui->wCorrectionSettings2);
}

void Stepper::assembleStates()
{
    auto *states = m_ui->wStates;
    states->setStatusParameter(AxisParameters::StatusFlags);
    wire<Wire::HearsPolled>(states);
    connect(states, &WStepperStatusFlags::motorControlModeChanged, this,
            &Stepper::handleMotorControlModeChanged);
}

// --- Charts -----------------------------------------------------------------------------------

void Stepper::wireCharts()
{
    for (WSimpleScaledDrawer *drawer : drawers()) {
        wire<Wire::HearsPolled>(drawer);
    }
    for (WSimpleScaledDrawer *drawer : drawers()) {
        connect(m_ui->wTraceController, &WTraceController::start, drawer,
                &WSimpleScaledDrawer::startDrawing);
    }
    for (WSimpleScaledDrawer *drawer : drawers()) {
        connect(m_ui->wTraceController, &WTraceController::stop, drawer,
                &WSimpleScaledDrawer::stopDrawing);
    }
    for (WSimpleScaledDrawer *drawer : drawers()) {
        connect(drawer, &WSimpleScaledDrawer::chartSelectionChanged, this,
                &Stepper::updateTraceValues);
    }
}
