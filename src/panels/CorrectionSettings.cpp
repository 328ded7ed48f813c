#include "panels/CorrectionSettings.h"

#include "ui_CorrectionSettings.h"

CorrectionSettings::CorrectionSettings(QWidget *parent)
    : ParameterPanel(Replies::FromAnyAddress, parent)
    , m_ui(std::make_unique<Ui::CorrectionSettings>())
{
    m_ui->setupUi(this);
    setGroupBox(m_ui->gbCorrectionSettings);
    addParameter(m_apVelocityP, m_ui->sbVelocityP);
    addParameter(m_apMaxTolerance, m_ui->sbMaxTolerance);
    addParameter(m_apMaxVelocity, m_ui->sbMaxVelocity);
}

CorrectionSettings::~CorrectionSettings() = default;
