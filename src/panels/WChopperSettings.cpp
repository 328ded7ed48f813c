#include "panels/WChopperSettings.h"

#include "ui_WChopperSettings.h"

WChopperSettings::WChopperSettings(QWidget *parent)
    : ParameterPanel(Replies::FromOwnAddress, parent)
    , m_ui(std::make_unique<Ui::WChopperSettings>())
{
    m_ui->setupUi(this);
    setGroupBox(m_ui->gbChopperSettings);
    addParameter(m_apBlankTime, m_ui->sbChopperBlankTime);
    addParameter(m_apChopperMode, m_ui->sbChopperMode);
    addParameter(m_apHysteresisDecrement, m_ui->sbHysteresisDecrement);
    addParameter(m_apHysteresisEnd, m_ui->sbHysteresisEnd);
    addParameter(m_apHysteresisStart, m_ui->sbHysteresisStart);
    addParameter(m_apOffTime, m_ui->sbOffTime);
    addParameter(m_apSlopeHighSide, m_ui->sbSlopeHighSide);
    addParameter(m_apSlopeLowSide, m_ui->sbSlopeLowSide);
}

WChopperSettings::~WChopperSettings() = default;
