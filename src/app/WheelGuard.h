#pragma once

#include <QObject>

class QWidget;

/// Keeps the mouse wheel from driving the motor by accident: every step of a control is a command
/// to the module, so a wheel that passes over a spin box, dial, slider or combo box changes it only
/// if that control has the keyboard focus.
class WheelGuard : public QObject
{
    Q_OBJECT

public:
    /// Guards all such controls below @p root that are there now. Owned by @p root.
    static void install(QWidget *root);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    using QObject::QObject;
};
