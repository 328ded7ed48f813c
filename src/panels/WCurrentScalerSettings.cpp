#include "panels/WCurrentScalerSettings.h"

#include "ui_WCurrentScalerSettings.h"

#include <QDebug>

namespace {

constexpr int InputRawError = 0;
constexpr int InputErrorGain = 1;

} // namespace

WCurrentScalerSettings::WCurrentScalerSettings(QWidget *parent)
    : ParameterPanel(Replies::FromAnyAddress, parent)
    , m_ui(std::make_unique<Ui::WCurrentScalerSettings>())
{
    m_ui->setupUi(this);
    setGroupBox(m_ui->gbScalerSettings);
    addParameter(m_apIScaleMin, m_ui->sbIScaleMin);
    addParameter(m_apIScaleMax, m_ui->sbIScaleMax);
    addParameter(m_apLagLeadLimit1, m_ui->sbLagLeadLimit1);
    addParameter(m_apLagLeadLimit2, m_ui->sbLagLeadLimit2);
    addParameter(m_apScaleInc, m_ui->sbScaleInc);
    addParameter(m_apScaleDec, m_ui->sbScaleDec);
    addParameter(m_apScaleIncTimeout, m_ui->sbScaleIncTimeout);
    addParameter(m_apScaleDecTimeout, m_ui->sbScaleDecTimeout);
    addParameter(m_apScalerEnabled, m_ui->cbScalerEnabled);
    addParameter(m_apActualScaler, m_ui->sbActualScaler);
    addParameter(m_apScalerInput, {m_ui->rbInputRawError, m_ui->rbInputErrorGain},
                 [this](int value) { showScalerInput(value); });
}

WCurrentScalerSettings::~WCurrentScalerSettings() = default;

void WCurrentScalerSettings::on_sbLagLeadLimit1_valueChanged(int value)
{
    writeParameter(m_apLagLeadLimit1, value);
    if (value >= m_ui->sbLagLeadLimit2->value()) {
        m_ui->sbLagLeadLimit2->setValue(value + 1);
    }
}

void WCurrentScalerSettings::on_sbLagLeadLimit2_valueChanged(int value)
{
    writeParameter(m_apLagLeadLimit2, value);
    // At the top only a lower limit that stands there itself is not below: it has just pushed this
    // one up. It stays, and the two are equal.
    const bool atTop = value == m_ui->sbLagLeadLimit2->maximum();
    if (value <= m_ui->sbLagLeadLimit1->value() && !atTop) {
        m_ui->sbLagLeadLimit1->setValue(value - 1);
    }
}

void WCurrentScalerSettings::on_cbScalerEnabled_toggled(bool toggle)
{
    writeParameter(m_apScalerEnabled, toggle ? 1 : 0);
}

// A switch of the input runs both slots, one of them for the button that went off: that one writes
// nothing.

void WCurrentScalerSettings::on_rbInputErrorGain_toggled()
{
    if (m_ui->rbInputErrorGain->isChecked()) {
        writeParameter(m_apScalerInput, InputErrorGain);
    }
}

void WCurrentScalerSettings::on_rbInputRawError_toggled()
{
    qDebug() << "ScalerSettings::on_rbInputRawError_toggled()";
    if (m_ui->rbInputRawError->isChecked()) {
        writeParameter(m_apScalerInput, InputRawError);
    }
}

void WCurrentScalerSettings::showScalerInput(int value)
{
    if (value == InputRawError) {
        m_ui->rbInputRawError->setChecked(true);
    } else if (value == InputErrorGain) {
        m_ui->rbInputErrorGain->setChecked(true);
    }
}
