#pragma once

#include "panels/MotorController.h"

#include <QWidget>

#include <functional>
#include <vector>

class QAbstractSlider;
class QCheckBox;
class QGroupBox;
class QSpinBox;

/// Base of the panels that show and change a handful of the module's axis parameters.
///
/// A panel is a table: its constructor names the parameters in the order in which they are read,
/// each with its control. Reading all, tool tips and the reactions to replies follow from that. The
/// numbers of the parameters are given to the panel from outside, and are 0 until then: a reply for
/// parameter 0 then lands in every control. Numbers, addresses and banks are the protocol's signed
/// bytes.
///
/// Each change of a control is one write at once. A reply changes the control with its signals on,
/// so that the value goes back to the module: the module answers with the same value, the control
/// doesn't change, and the exchange ends. If the module has limited a value, the control jumps to
/// what it answered and writes once more. Where two panels show one parameter, a change on one
/// makes two writes, since the twin follows the reply and writes it, too. A value outside of a
/// control's range is clamped by the control, and goes back to the module only if the control
/// changed by it.
///
/// A panel holds nothing but the values in its controls and reports no failure: a request without
/// an answer leaves the control as it is.
class ParameterPanel : public QWidget, public MotorController
{
    Q_OBJECT

public:
    ~ParameterPanel() override;

    /// Asks the module for every parameter, in the order of the panel's table.
    void readValues();
    /// Sets the title of the group box.
    void setTitle(const QString &title);

signals:
    /// The panel wants to know parameter @p type. The answer is expected at requestedValue(),
    /// before the signal returns.
    void requestValue(char address, char motorBank, char type);
    /// Parameter @p type is to become @p value. The value that the module answers with is expected
    /// at requestedValue(), before the signal returns.
    void changeValue(char address, char motorBank, char type, int value);

public slots:
    /// The module has answered @p value for parameter @p type, to whomever: shows it in every
    /// control that stands for the parameter. Replies of another motor bank are left alone, and
    /// those of another address if the panel looks at addresses.
    void requestedValue(char address, char motorBank, char type, int value);
    /// The same for the raw reply to a read or a write of an axis parameter. Replies to other
    /// commands, and those with another status than "carried out", are left alone.
    void requestedCommand(char address, char command, char type, char motorBank, char status,
                          int data);

protected:
    /// The replies that a panel takes: those of its motor bank at any address, or only those of
    /// its own address.
    enum class Replies { FromAnyAddress, FromOwnAddress };

    /// One parameter of a panel. Panels have one as a member for each row of their table.
    struct Parameter
    {
        char number = 0;
        QWidgetList controls; ///< carry the number as their tool tip; owned by the form
        std::function<void(int value)> show; ///< sets the control, with its signals on
    };

    ParameterPanel(Replies replies, QWidget *parent);

    /// Names the group box, which setTitle() is about. The form owns it.
    void setGroupBox(QGroupBox *groupBox);

    /// Appends @p parameter, a member of the panel, to the table; its number is 0. The value of
    /// the parameter is the control's.
    void addParameter(Parameter &parameter, QSpinBox *control);
    /// @overload
    void addParameter(Parameter &parameter, QAbstractSlider *control);
    /// @overload Every value but 0 checks the box.
    void addParameter(Parameter &parameter, QCheckBox *control);
    /// @overload A value is shown by @p show.
    void addParameter(Parameter &parameter, const QWidgetList &controls,
                      const std::function<void(int value)> &show);

    /// Lets @p parameter stand for the axis parameter @p number, which its controls tell as their
    /// tool tips.
    static void setNumber(Parameter &parameter, char number);

    /// Asks the module for @p parameter.
    void requestParameter(const Parameter &parameter);
    /// Writes @p value to @p parameter of the module.
    void writeParameter(const Parameter &parameter, int value);

private:
    const Replies m_replies;
    QGroupBox *m_groupBox = nullptr;
    std::vector<Parameter *> m_parameters; // members of the panel, in the order of reading
};
