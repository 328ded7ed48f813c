#include "panels/WFieldWeakeningSettings.h"

#include "ui_WFieldWeakeningSettings.h"

WFieldWeakeningSettings::WFieldWeakeningSettings(QWidget *parent)
    : ParameterPanel(Replies::FromAnyAddress, parent)
    , m_ui(std::make_unique<Ui::WFieldWeakeningSettings>())
{
    m_ui->setupUi(this);
    setGroupBox(m_ui->gbFieldWeakeningSettings);
    addParameter(m_apGammaVMin, m_ui->sbGammaVMin);
    addParameter(m_apGammaVMax, m_ui->sbGammaVMax);
}

WFieldWeakeningSettings::~WFieldWeakeningSettings() = default;
