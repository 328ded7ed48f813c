// The life of a connection, and the few rules that bind panels to one another.

#include "app/Stepper.h"

#include "app/WheelGuard.h"
#include "comm/ByteText.h"
#include "comm/CANKvaserCommandHandler.h"
#include "comm/CommandNumbers.h"
#include "comm/QSerialCommandHandler.h"
#include "comm/TraceCommand.h"
#include "panels/AxisParameter.h"
#include "style/IconTinting.h"
#include "ui_Stepper.h"

#include <QDebug>

using namespace Qt::StringLiterals;

namespace {

constexpr char UsbAddress = 1;
constexpr int FirstModuleTab = 1;
constexpr int QuickstartTab = 1;

/// A pass over a slow line takes long.
constexpr int SerialTraceDelayMsecs = 500;

} // namespace

Stepper::Stepper(QWidget *mainWindow)
    : m_ui(std::make_unique<Ui::Stepper>())
    , m_mainWindow(mainWindow)
{
    m_ui->setupUi(this);
    buildAvailableTraceCommands();
    createSerialHandler();
    createCanHandler();
    wireTraceController();
    wireConnectionPanels();
    assembleQuickstartTab();
    assembleSettingsTab();
    assembleClosedLoopTab();
    assembleEncoderTab();
    assembleTorqueTab();
    assembleVelocityTab();
    assemblePositioningTab();
    wireDirectMode();
    assembleStates();
    configureCharts();
    wireCharts();
    WheelGuard::install(this);

    enableModuleControls(false);
    updateTraceCommands(m_moduleAddress);
    showVelocityDrawer(false);
    showPositionDrawer(false);
    showTorqueDrawer(false);
    setIconsToTextColor(this);
}

Stepper::~Stepper()
{
    m_serialHandler->closeDevice();
    m_canHandler->closeDevice();
}

// --- Connecting -------------------------------------------------------------------------------

template <typename ConnectionPanel, typename OpenTransport>
void Stepper::openConnection(char address, ConnectionPanel *panel, OpenTransport open)
{
    updateTraceCommands(address);
    m_deviceDetached = false;
    if (!open()) {
        panel->showDisconnected();
        return;
    }
    readModuleSettings();
    if (m_deviceDetached) {
        return;
    }
    enableModuleControls(true);
    m_ui->tabWidget->setCurrentIndex(QuickstartTab);
    m_ui->wTraceController->activateTracing();
}

void Stepper::openUsbHandler(QString port)
{
    openConnection(UsbAddress, m_ui->wUsbConnection,
                   [this, &port] { return !port.isEmpty() && m_serialHandler->openDevice(port); });
}

void Stepper::openSerialHandler(QString port, int baudrate, int address)
{
    openConnection(static_cast<char>(address), m_ui->wSerialConnection, [this, &port, baudrate] {
        if (port.isEmpty() || !m_serialHandler->openDevice(port)) {
            return false;
        }
        m_serialHandler->setBaudrate(baudrate);
        // Nothing sets the delay back: a later connection over USB or CAN polls as slowly.
        m_ui->wTraceController->setDelay(SerialTraceDelayMsecs);
        return true;
    });
}

void Stepper::openCANKvaserHandler(int bitrate, int sendID, int)
{
    // The module is addressed by the send identifier; its replies are known by coming next.
    openConnection(static_cast<char>(sendID), m_ui->wCANKvaserConnection,
                   [this, bitrate] { return m_canHandler->openDevice(bitrate); });
}

void Stepper::closeUsbHandler()
{
    m_serialHandler->closeDevice();
    enableModuleControls(false);
}

void Stepper::closeSerialHandler()
{
    qDebug() << "closing serial handler...";
    m_serialHandler->closeDevice();
    enableModuleControls(false);
}

void Stepper::closeCANKvaserHandler()
{
    qDebug() << "Stepper::closing can kvaser handler...";
    m_canHandler->closeDevice();
    enableModuleControls(false);
}

void Stepper::handleAttachedUsbDevice(QString port, QString description)
{
    qDebug().nospace() << "Stepper::handleAttachedDevice(" << port << ", " << description << ")";
    m_ui->wUsbConnection->addDevice(port, description);
}

void Stepper::handleAttachedSerialDevice(QString port, QString description)
{
    qDebug().nospace() << "Stepper::handleAttachedSerialDevice(" << port << ", " << description
                       << ")";
    m_ui->wSerialConnection->addDevice(port, description);
}

void Stepper::handleDetachedUsbDevice(QString port)
{
    qDebug().nospace() << "Stepper::handleDetachedUsbDevice(" << port << ")";
    m_ui->wTraceController->deactivateTracing();
    // Both, whichever of them was in use.
    m_ui->wUsbConnection->showDisconnected();
    m_ui->wSerialConnection->showDisconnected();
    m_deviceDetached = true;
}

void Stepper::handleCanKvaserDeviceClosed(char id)
{
    qDebug().nospace() << "Stepper::handleCanKvaserDeviceClosed(" << unsignedByte(id) << ")";
    m_ui->wTraceController->deactivateTracing();
    m_ui->wCANKvaserConnection->showDisconnected();
    m_canHandler->closeDevice();
    m_deviceDetached = true;
}

void Stepper::readModuleSettings()
{
    // Each panel is asked only while there is a module: the flag is set from within an exchange.
    const auto read = [this](auto *panel) {
        if (!m_deviceDetached) {
            panel->readValues();
        }
    };
    const auto readAll = [&read](auto *...panels) { (read(panels), ...); };
    // The second panels for ramp and correction fill themselves from the replies to the first.
    readAll(m_ui->wJogVelocityControl, m_ui->wModuleSettings, m_ui->wOpenLoopSettings,
            m_ui->wChopperSettings, m_ui->wVelocityRampControl1, m_ui->wFieldWeakeningSettings,
            m_ui->wPositionMaintenanceSettings, m_ui->wScalerSettings, m_ui->wEncoderSettings,
            m_ui->wCorrectionSettings1);
}

void Stepper::enableModuleControls(bool enabled)
{
    for (int index = FirstModuleTab; index < m_ui->tabWidget->count(); ++index) {
        m_ui->tabWidget->setTabEnabled(index, enabled);
    }
    for (WSimpleScaledDrawer *drawer : drawers()) {
        drawer->setEnabled(enabled);
    }
    m_ui->wStates->setEnabled(enabled);
    m_ui->wTraceController->setEnabled(enabled);
}

// --- Motion -----------------------------------------------------------------------------------

void Stepper::handleTargetVelocityChange(char address, char motorBank, int value)
{
    qDebug().nospace() << "TargetVelocityChange: motor=" << unsignedByte(motorBank)
                       << ", value=" << value;
    onConnectedHandlers([=](auto *handler) {
        if (value > 0) {
            handler->doROX(address, motorBank, CommandNumber::RotateRight, value);
        } else if (value == 0) {
            handler->doROX(address, motorBank, CommandNumber::MotorStop, 0);
        } else {
            // In unsigned numbers, where the least number has a magnitude, too.
            const int magnitude = static_cast<int>(0U - static_cast<unsigned int>(value));
            handler->doROX(address, motorBank, CommandNumber::RotateLeft, magnitude);
        }
    });
}

void Stepper::handleTargetPositionChange(char address, char motorBank, char moveType, int value)
{
    onConnectedHandlers([=](auto *handler) {
        handler->doMove(address, motorBank, CommandNumber::MoveToPosition, moveType, value);
    });
}

void Stepper::handleActualPositionChange(char address, char motorBank, int value)
{
    qDebug().nospace() << "ActualPositionChange: motor=" << unsignedByte(motorBank)
                       << ", value=" << value;
    onConnectedHandlers([=](auto *handler) {
        handler->setAxisParameter(address, motorBank, AxisParameters::ActualPosition, 0);
    });
}

void Stepper::handleTargetTorqueChange(char address, char motorBank, int value)
{
    qDebug().nospace() << "TargetTorqueChange: motor=" << unsignedByte(motorBank)
                       << ", value=" << value;
    onConnectedHandlers([=](auto *handler) {
        handler->setAxisParameter(address, motorBank, AxisParameters::TargetPhaseCurrent, value);
    });
}

// --- The module's state -----------------------------------------------------------------------

void Stepper::handleMaxCurrentChanged(int value)
{
    m_ui->wTorqueControl->setTargetMaximum(value);
}

void Stepper::handleMotorControlModeChanged(int mode)
{
    // The last mode is the process's, not the object's: a second window would find the motion it
    // is told of highlighted already. An unknown mode is remembered, too.
    static int lastMotorControlMode = -1;
    if (mode == lastMotorControlMode) {
        return;
    }
    constexpr int Positioning = 0;
    constexpr int Velocity = 1;
    constexpr int Torque = 2;
    if (mode >= Positioning && mode <= Torque) {
        m_ui->wJogPositionControl->setActive(mode == Positioning);
        m_ui->wJogVelocityControl->setActive(mode == Velocity);
        m_ui->wJogTorqueControl->setActive(mode == Torque);
    }
    lastMotorControlMode = mode;
}

void Stepper::handleMotorHalted(bool halted)
{
    // The process's, as above. The loop mode box of the quickstart tab stays free on purpose.
    static bool lastMotorHalted = true;
    if (halted == lastMotorHalted) {
        return;
    }
    m_ui->wOpenLoopSettings->setEnabled(halted);
    m_ui->wModuleSettings->setLoopModeEnabled(halted);
    lastMotorHalted = halted;
}

// --- Loop mode --------------------------------------------------------------------------------

void Stepper::handleSelectedTypeChanged(int type)
{
    if (type != 0 && type != 1) {
        return;
    }
    onConnectedHandlers([this, type](auto *handler) {
        handler->setAxisParameter(m_moduleAddress, 0, AxisParameters::ClosedLoopMode, type);
    });
}

void Stepper::requestedValue(char, char, char type, int value)
{
    if (type != m_loopModeParameter) {
        return;
    }
    // The number stands in the item's text. Choosing the item writes the value just read back to
    // the module, if the index changed; the echo ends there.
    const int index = m_ui->cmbLoopMode->findText(QString::number(value) + " :"_L1,
                                                  Qt::MatchStartsWith | Qt::MatchCaseSensitive);
    if (index >= 0) {
        m_ui->cmbLoopMode->setCurrentIndex(index);
    }
}

void Stepper::actualLoopModeChanged(QString value)
{
    const int mode = value.contains(" :"_L1) ? value.split(" :"_L1).constFirst().toInt() : 0;
    onConnectedHandlers([this, mode](auto *handler) {
        handler->setAxisParameter(m_moduleAddress, 0, m_loopModeParameter, mode);
    });
}
