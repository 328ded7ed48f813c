// The detection of the encoder, in a dialog of its own.

#include "app/DEncoderInitialization.h"
#include "app/Stepper.h"
#include "app/WheelGuard.h"
#include "comm/CANKvaserCommandHandler.h"
#include "comm/QSerialCommandHandler.h"
#include "panels/AxisParameter.h"
#include "ui_Stepper.h"

#include <type_traits>

void Stepper::handleBtnEncoderClicked()
{
    m_ui->wEncoderSettings->applySettings();

    auto *dialog = new DEncoderInitialization(this);
    connect(this, &QObject::destroyed, dialog, [dialog] { delete dialog; });
    dialog->setAddress(m_moduleAddress);
    dialog->setStateParameter(AxisParameters::EncoderDetectionState);
    dialog->setFullstepParameter(AxisParameters::MotorFullSteps);
    WheelGuard::install(dialog);
    withBothHandlers([dialog](auto *handler) {
        using Handler = std::remove_pointer_t<decltype(handler)>;
        connect(dialog, &DEncoderInitialization::requestValue, handler, &Handler::getAxisParameter);
        connect(dialog, &DEncoderInitialization::changeValue, handler, &Handler::setAxisParameter);
        connect(handler, &Handler::requestedValue, dialog, &DEncoderInitialization::requestedValue);
    });
    // A serial port stays open when its module falls silent. Each of the calls that the pacemaker
    // still makes would then cost a time-out, and the window would stand still for minutes; a CAN
    // channel is closed, so that they cost nothing.
    connect(m_serialHandler.get(), &QSerialCommandHandler::handleDetachedDevice, dialog,
            [this, dialog] { dialog->disconnect(m_serialHandler.get()); });

    dialog->requestValues();
    dialog->exec();
    // Only the end of the program leaves the dialog on the screen or takes the window away from
    // under it. Nothing is said to the module on that way.
    if (dialog->isVisible() || !isVisible()) {
        return;
    }
    m_ui->wEncoderSettings->readValues();
    dialog->deleteWhenIdle();
}
