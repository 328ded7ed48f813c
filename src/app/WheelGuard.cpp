#include "app/WheelGuard.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QDial>
#include <QEvent>
#include <QSlider>
#include <QWidget>

namespace {

bool takesWheelSteps(const QWidget *widget)
{
    return qobject_cast<const QAbstractSpinBox *>(widget) || qobject_cast<const QComboBox *>(widget)
        || qobject_cast<const QDial *>(widget) || qobject_cast<const QSlider *>(widget);
}

} // namespace

void WheelGuard::install(QWidget *root)
{
    auto *guard = new WheelGuard(root);
    const auto widgets = root->findChildren<QWidget *>();
    for (QWidget *widget : widgets) {
        if (!takesWheelSteps(widget)) {
            continue;
        }
        widget->installEventFilter(guard);
        if (widget->focusPolicy() == Qt::WheelFocus) {
            // The toolkit would hand it the focus by the very wheel step that is to be kept away.
            widget->setFocusPolicy(Qt::StrongFocus);
        }
    }
}

bool WheelGuard::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::Wheel || static_cast<QWidget *>(watched)->hasFocus()) {
        return false;
    }
    event->ignore(); // so that a surrounding scroll area may take it
    return true;
}
