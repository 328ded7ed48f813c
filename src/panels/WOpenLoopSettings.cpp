#include "panels/WOpenLoopSettings.h"

#include "comm/ByteText.h"
#include "ui_WOpenLoopSettings.h"

#include <algorithm>

using namespace Qt::StringLiterals;

WOpenLoopSettings::WOpenLoopSettings(QWidget *parent)
    : ParameterPanel(Replies::FromAnyAddress, parent)
    , m_ui(std::make_unique<Ui::WOpenLoopSettings>())
{
    m_ui->setupUi(this);
    setGroupBox(m_ui->gbOpenLoopSettings);
    addParameter(m_apStandbyCurrent, m_ui->slStandbyCurrent);
    addParameter(m_apMicrostepResolution, {m_ui->cmbMicrostepResolution},
                 [this](int value) { showMicrostepResolution(value); });
    addParameter(m_apCurrent, m_ui->sbCurrent);
}

WOpenLoopSettings::~WOpenLoopSettings() = default;

void WOpenLoopSettings::addMicrostepResolution(const QString &text, char value)
{
    const int number = unsignedByte(value);
    const QString itemText = QString::number(number) + " : "_L1 + text;
    // The first item becomes the chosen one right here, before its value is known, and writes 0.
    m_ui->cmbMicrostepResolution->addItem(itemText);
    m_microstepResolutions.append({itemText, number});
}

void WOpenLoopSettings::on_slStandbyCurrent_valueChanged(int value)
{
    writeParameter(m_apStandbyCurrent, value);
    requestParameter(m_apCurrent);
}

void WOpenLoopSettings::on_cmbMicrostepResolution_currentIndexChanged(int index)
{
    const QString text = m_ui->cmbMicrostepResolution->itemText(index);
    const auto found =
        std::find_if(m_microstepResolutions.cbegin(), m_microstepResolutions.cend(),
                     [&](const MicrostepResolution &known) { return known.text == text; });
    writeParameter(m_apMicrostepResolution,
                   found == m_microstepResolutions.cend() ? 0 : found->value);
}

void WOpenLoopSettings::showMicrostepResolution(int value)
{
    const auto found =
        std::find_if(m_microstepResolutions.cbegin(), m_microstepResolutions.cend(),
                     [&](const MicrostepResolution &known) { return known.value == value; });
    if (found == m_microstepResolutions.cend()) {
        return;
    }
    const int index = m_ui->cmbMicrostepResolution->findText(
        found->text, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (index >= 0) {
        m_ui->cmbMicrostepResolution->setCurrentIndex(index);
    }
}
