#include "panels/WClosedLoopSettings.h"

#include "ui_WClosedLoopSettings.h"

using namespace Qt::StringLiterals;

namespace {

/// Stands between the number and the name of a loop mode. The number lives in the text alone.
constexpr auto Separator = " :"_L1;

/// The number that @p text begins with; 0 if there is no separator or no number before it.
int numberOf(const QString &text)
{
    const qsizetype end = text.indexOf(Separator);
    return end < 0 ? 0 : text.first(end).toInt();
}

} // namespace

WClosedLoopSettings::WClosedLoopSettings(QWidget *parent)
    : ParameterPanel(Replies::FromAnyAddress, parent)
    , m_ui(std::make_unique<Ui::WClosedLoopSettings>())
{
    m_ui->setupUi(this);
    setGroupBox(m_ui->gbSettings);
    addParameter(m_apMaxCurrent, m_ui->slMaxCurrent);
    addParameter(m_apRightLimit, m_ui->cbEnableRightLimitSwitch);
    addParameter(m_apLeftLimit, m_ui->cbEnableLeftLimitSwitch);
    addParameter(m_apLoopMode, {m_ui->cmbLoopMode}, [this](int value) { showLoopMode(value); });
    addParameter(m_apCurrent, {m_ui->sbCurrent}, [this](int value) {
        m_ui->sbCurrent->setValue(value);
        emit maxCurrentChanged(value);
    });
    addParameter(m_apSupplyVoltage, m_ui->sbSupplyVoltage);
    addParameter(m_apDCCurrent, m_ui->sbDCCurrent);
    addParameter(m_apTemperature, m_ui->sbTemperature);
}

WClosedLoopSettings::~WClosedLoopSettings() = default;

void WClosedLoopSettings::setApMaxCurrentAndLimits(char maxCurrent, char rightLimit, char leftLimit)
{
    setNumber(m_apMaxCurrent, maxCurrent);
    setNumber(m_apRightLimit, rightLimit);
    setNumber(m_apLeftLimit, leftLimit);
}

void WClosedLoopSettings::addLoopMode(int value, const QString &text)
{
    m_ui->cmbLoopMode->addItem(QString::number(value) + " : "_L1 + text);
}

void WClosedLoopSettings::clearLoopModes()
{
    m_ui->cmbLoopMode->clear();
}

void WClosedLoopSettings::setLoopModeEnabled(bool enabled)
{
    m_ui->cmbLoopMode->setEnabled(enabled);
}

void WClosedLoopSettings::on_slMaxCurrent_valueChanged(int value)
{
    writeParameter(m_apMaxCurrent, value);
    requestParameter(m_apCurrent);
}

void WClosedLoopSettings::on_cbEnableRightLimitSwitch_toggled(bool toggle)
{
    writeParameter(m_apRightLimit, toggle ? 1 : 0);
}

void WClosedLoopSettings::on_cbEnableLeftLimitSwitch_toggled(bool toggle)
{
    writeParameter(m_apLeftLimit, toggle ? 1 : 0);
}

void WClosedLoopSettings::on_cmbLoopMode_currentIndexChanged(int)
{
    writeParameter(m_apLoopMode, numberOf(m_ui->cmbLoopMode->currentText()));
}

void WClosedLoopSettings::on_btnReadValues_clicked()
{
    readValues();
}

void WClosedLoopSettings::showLoopMode(int value)
{
    const QString start = QString::number(value) + Separator;
    for (int index = 0; index < m_ui->cmbLoopMode->count(); ++index) {
        if (m_ui->cmbLoopMode->itemText(index).startsWith(start)) {
            m_ui->cmbLoopMode->setCurrentIndex(index);
            return;
        }
    }
}
