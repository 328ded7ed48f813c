#include "panels/WPositionMaintenanceSettings.h"

#include "ui_WPositionMaintenanceSettings.h"

WPositionMaintenanceSettings::WPositionMaintenanceSettings(QWidget *parent)
    : ParameterPanel(Replies::FromAnyAddress, parent)
    , m_ui(std::make_unique<Ui::WPositionMaintenanceSettings>())
{
    m_ui->setupUi(this);
    setGroupBox(m_ui->gbPositionMaintenanceSettings);
    addParameter(m_apPositionWindow, m_ui->sbPositionWindow);
    addParameter(m_apPositionWindowTime, m_ui->sbPositionWindowTime);
    addParameter(m_apStandStillP, m_ui->sbStandStillP);
    addParameter(m_apStandDampening, m_ui->sbStandDampening);
    addParameter(m_apStandStillErrorLimit, m_ui->sbStandStillErrorLimit);
    addParameter(m_apVelocityWindow, m_ui->sbVelocityWindow);
}

WPositionMaintenanceSettings::~WPositionMaintenanceSettings() = default;
