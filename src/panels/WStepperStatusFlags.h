#pragma once

#include "panels/MotorController.h"

#include <QList>
#include <QWidget>

#include <memory>

namespace Ui {
class WStepperStatusFlags;
}

/// Panel that shows the module's status word as twelve lamps and tells the module's motion mode
/// from three of its bits.
class WStepperStatusFlags : public QWidget, public MotorController
{
    Q_OBJECT

public:
    /// Address 1, motor 0, parameter number 0, all lamps off.
    explicit WStepperStatusFlags(QWidget *parent = nullptr);
    ~WStepperStatusFlags() override;

    /// Sets the number of the status word.
    void setStatusParameter(char number);
    /// The numbers that want polling: that of the status word. The caller owns the list.
    QList<char> *traceParameters() const;
    /// Keeps the buttons of the mouse away from the lamps, which show and can't be set, though they
    /// are enabled and so in full colour. The keyboard still reaches them.
    bool eventFilter(QObject *object, QEvent *event) override;

signals:
    /// A status word came with the bit of @p mode set: 0 position, 1 velocity, 2 torque. Comes with
    /// every word, changed or not, and once for each of the three bits that is set.
    void motorControlModeChanged(int mode);

public slots:
    /// Shows the status word of this panel's module and motor. Bits above 11 are ignored.
    void requestedTraceValue(char address, char motorBank, char type, int value);

private:
    std::unique_ptr<Ui::WStepperStatusFlags> m_ui;
    char m_apStatus = 0;
};
