#include "panels/ParameterPanel.h"

#include "comm/CommandNumbers.h"
#include "panels/CommandReply.h"
#include "panels/ParameterToolTip.h"

#include <QAbstractSlider>
#include <QCheckBox>
#include <QGroupBox>
#include <QSpinBox>

ParameterPanel::ParameterPanel(Replies replies, QWidget *parent)
    : QWidget(parent)
    , m_replies(replies)
{
}

ParameterPanel::~ParameterPanel() = default;

void ParameterPanel::readValues()
{
    for (const Parameter *parameter : m_parameters) {
        requestParameter(*parameter);
    }
}

void ParameterPanel::setTitle(const QString &title)
{
    m_groupBox->setTitle(title);
}

void ParameterPanel::requestedValue(char address, char motorBank, char type, int value)
{
    if (motorBank != motor()) {
        return;
    }
    if (m_replies == Replies::FromOwnAddress && address != this->address()) {
        return;
    }
    for (const Parameter *parameter : m_parameters) {
        if (parameter->number == type) {
            parameter->show(value);
        }
    }
}

void ParameterPanel::requestedCommand(char address, char command, char type, char motorBank,
                                      char status, int value)
{
    if (status != CommandReply::CarriedOut
        || (command != CommandNumber::SetAxisParameter
            && command != CommandNumber::GetAxisParameter)) {
        return;
    }
    requestedValue(address, motorBank, type, value);
}

void ParameterPanel::setGroupBox(QGroupBox *groupBox)
{
    m_groupBox = groupBox;
}

void ParameterPanel::addParameter(Parameter &parameter, QSpinBox *control)
{
    addParameter(parameter, {control}, [control](int value) { control->setValue(value); });
}

void ParameterPanel::addParameter(Parameter &parameter, QAbstractSlider *control)
{
    addParameter(parameter, {control}, [control](int value) { control->setValue(value); });
}

void ParameterPanel::addParameter(Parameter &parameter, QCheckBox *control)
{
    addParameter(parameter, {control}, [control](int value) { control->setChecked(value != 0); });
}

void ParameterPanel::addParameter(Parameter &parameter, const QWidgetList &controls,
                                  const std::function<void(int)> &show)
{
    parameter.controls = controls;
    parameter.show = show;
    m_parameters.push_back(&parameter);
    setNumber(parameter, 0);
}

void ParameterPanel::setNumber(Parameter &parameter, char number)
{
    parameter.number = number;
    for (QWidget *control : std::as_const(parameter.controls)) {
        control->setToolTip(parameterToolTip(number));
    }
}

void ParameterPanel::requestParameter(const Parameter &parameter)
{
    emit requestValue(address(), motor(), parameter.number);
}

void ParameterPanel::writeParameter(const Parameter &parameter, int value)
{
    emit changeValue(address(), motor(), parameter.number, value);
}
