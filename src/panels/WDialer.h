#pragma once

#include <QWidget>

#include <memory>

class DialCoupling;

namespace Ui {
class WDialer;
}

/// A dial with a spin box for the same value, on a linear or a logarithmic scale.
///
/// The program builds none: the jog panels have their dials inline. This is the form of the same
/// logic for a panel to come.
class WDialer : public QWidget
{
    Q_OBJECT

public:
    /// Value 0, maximum 99, linear scale.
    explicit WDialer(QWidget *parent = nullptr);
    ~WDialer() override;

    /// The value that the spin box shows, in real units.
    int value() const;
    /// Sets the spin box, and by it the dial, unless @p value is the one that was set last, here
    /// or on any other dialer: the remembered value is one for all instances and starts at 0. A
    /// user's change in between does not count, so setting the same value again doesn't undo it.
    void setValue(int value);
    /// Sets the largest value, in real units. The least one is 0.
    void setMaximum(int maximum);
    /// Sets the step of the spin box.
    void setSingleStep(int step);
    /// Sets the text beside the spin box.
    void setLabel(const QString &label);
    /// Chooses the logarithmic or the linear scale of the dial. The value stays.
    void setLogarithmic(bool logarithmic);
    /// Sets the tool tip of the spin box and of the dial, not that of the widget around them.
    void setToolTip(const QString &toolTip);

signals:
    /// The dial or the spin box moved; @p value is that of the spin box.
    void valueChanged(int value);

public slots:
    /// The dial moved to the step @p value: the spin box follows.
    void handleDialValueChanged(int value);
    /// The spin box changed to @p value: the dial follows.
    void handleSpinValueChanged(int value);

private:
    std::unique_ptr<Ui::WDialer> m_ui;
    std::unique_ptr<DialCoupling> m_coupling;
};
