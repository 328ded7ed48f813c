#include "panels/WStepperStatusFlags.h"

#include "ui_WStepperStatusFlags.h"

#include <QEvent>

namespace {

using Form = Ui::WStepperStatusFlags;

constexpr int NoMode = -1;

/// The lamp of one bit of the status word.
struct Lamp
{
    QRadioButton *Form::*button;
    int mode = NoMode; ///< what motorControlModeChanged() tells if the bit is set
    bool takesClicks = false; ///< is not kept from the mouse
};

/// By bit, from 0 on. The overvoltage lamp takes clicks, by design: the user can check and clear it
/// until the next status word sets it again.
constexpr Lamp Lamps[] = {
    {&Form::rbPositionReached},
    {&Form::rbVelocityReached},
    {&Form::rbClosedLoop},
    {&Form::rbPositionMode, 0},
    {&Form::rbVelocityMode, 1},
    {&Form::rbTorqueMode, 2},
    {&Form::rbHomeSwitch},
    {&Form::rbLeftSwitch},
    {&Form::rbRightLimitSwitch},
    {&Form::rbUndervoltage},
    {.button = &Form::rbOvervoltage, .takesClicks = true},
    {&Form::rbOvertemperature},
};

} // namespace

WStepperStatusFlags::WStepperStatusFlags(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::WStepperStatusFlags>())
{
    m_ui->setupUi(this);
    for (const Lamp &lamp : Lamps) {
        if (!lamp.takesClicks) {
            ((*m_ui).*lamp.button)->installEventFilter(this);
        }
    }
}

WStepperStatusFlags::~WStepperStatusFlags() = default;

void WStepperStatusFlags::setStatusParameter(char number)
{
    m_apStatus = number;
}

QList<char> *WStepperStatusFlags::traceParameters() const
{
    return new QList<char>{m_apStatus};
}

bool WStepperStatusFlags::eventFilter(QObject *object, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
        for (const Lamp &lamp : Lamps) {
            if (object == (*m_ui).*lamp.button && !lamp.takesClicks) {
                return true;
            }
        }
        break;
    default:
        break;
    }
    return QWidget::eventFilter(object, event);
}

void WStepperStatusFlags::requestedTraceValue(char address, char motorBank, char type, int value)
{
    if (!isFrom(address, motorBank) || type != m_apStatus) {
        return;
    }
    auto word = static_cast<unsigned int>(value);
    for (const Lamp &lamp : Lamps) {
        const bool set = (word & 1U) != 0;
        ((*m_ui).*lamp.button)->setChecked(set);
        if (set && lamp.mode != NoMode) {
            emit motorControlModeChanged(lamp.mode);
        }
        word >>= 1U;
    }
}
