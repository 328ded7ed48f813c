// Who is wired to whom. The order of the rows is part of the behaviour: a signal reaches its slots
// in the order of the connections.

#include "app/Stepper.h"
#include "comm/ByteText.h"
#include "comm/CANKvaserCommandHandler.h"
#include "comm/QSerialCommandHandler.h"
#include "comm/TraceCommand.h"
#include "ui_Stepper.h"

#include <type_traits>

using namespace Qt::StringLiterals;

namespace {

/// kBit/s. 20, which the panel's own list has, is left out: the CAN interface has no code for it.
constexpr int Bitrates[] = {1000, 500, 250, 125, 100, 50, 10};

constexpr int TraceDelayMinimumMsecs = 200;
constexpr int TraceDelayMsecs = 300;

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

void Stepper::wireLoopMode()
{
    QComboBox *loopMode = m_ui->cmbLoopMode;
    loopMode->setToolTip(u"AP: %1"_s.arg(unsignedByte(m_loopModeParameter)));
    loopMode->addItem(u"0 : "_s + tr("Open loop"));
    loopMode->addItem(u"1 : "_s + tr("Closed loop"));
    withBothHandlers([this](auto *handler) {
        using Handler = std::remove_pointer_t<decltype(handler)>;
        connect(handler, &Handler::requestedValue, this, &Stepper::requestedValue);
    });
    connect(loopMode, &QComboBox::currentIndexChanged, this,
            [this, loopMode](int index) { actualLoopModeChanged(loopMode->itemText(index)); });
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
