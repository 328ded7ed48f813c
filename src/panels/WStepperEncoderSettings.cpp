#include "panels/WStepperEncoderSettings.h"

#include "ui_WStepperEncoderSettings.h"

WStepperEncoderSettings::WStepperEncoderSettings(QWidget *parent)
    : ParameterPanel(Replies::FromAnyAddress, parent)
    , m_ui(std::make_unique<Ui::WStepperEncoderSettings>())
{
    m_ui->setupUi(this);
    setGroupBox(m_ui->gbEncoderSettings);
    addParameter(m_apCounter, m_ui->sbCounter);
    addParameter(m_apResolution, m_ui->sbResolution);
    addParameter(m_apFullstepResolution, m_ui->sbFullstepResolution);
    addParameter(m_apEncoderOffset, m_ui->sbEncoderOffset);

    // The encoder's type isn't changed here, though the exported files carry it. The choice waits
    // in the form.
    m_ui->lblEncoderType->hide();
    m_ui->rbEncoderTypeSSI->hide();
    m_ui->rbEncoderTypeABN->hide();
}

WStepperEncoderSettings::~WStepperEncoderSettings() = default;

void WStepperEncoderSettings::applySettings()
{
    writeParameter(m_apResolution, m_ui->sbResolution->value());
    writeParameter(m_apFullstepResolution, m_ui->sbFullstepResolution->value());
    writeParameter(m_apEncoderOffset, m_ui->sbEncoderOffset->value());
}

void WStepperEncoderSettings::on_btnSetSettings_clicked()
{
    applySettings();
}

void WStepperEncoderSettings::on_btnReadSettings_clicked()
{
    readValues();
}
