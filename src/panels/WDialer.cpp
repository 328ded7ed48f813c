#include "panels/WDialer.h"

#include "panels/DialCoupling.h"
#include "ui_WDialer.h"

namespace {

constexpr int StartMaximum = 99;

} // namespace

WDialer::WDialer(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::WDialer>())
{
    m_ui->setupUi(this);
    m_coupling = std::make_unique<DialCoupling>(m_ui->dialer, m_ui->sbActualValue);
    connect(m_ui->dialer, &QDial::valueChanged, this, &WDialer::handleDialValueChanged);
    connect(m_ui->sbActualValue, &QSpinBox::valueChanged, this, &WDialer::handleSpinValueChanged);
    setMaximum(StartMaximum);
}

WDialer::~WDialer() = default;

int WDialer::value() const
{
    return m_ui->sbActualValue->value();
}

void WDialer::setValue(int value)
{
    // One for all instances, by design: setting a repeated value does nothing even on another one.
    static int lastValue = 0;
    if (value == lastValue) {
        return;
    }
    m_ui->sbActualValue->setValue(value);
    lastValue = value;
}

void WDialer::setMaximum(int maximum)
{
    m_coupling->setLimit(maximum);
}

void WDialer::setSingleStep(int step)
{
    m_ui->sbActualValue->setSingleStep(step);
}

void WDialer::setLabel(const QString &label)
{
    m_ui->lblActualValue->setText(label);
}

void WDialer::setLogarithmic(bool logarithmic)
{
    m_coupling->setLogarithmic(logarithmic);
}

void WDialer::setToolTip(const QString &toolTip)
{
    m_ui->sbActualValue->setToolTip(toolTip);
    m_ui->dialer->setToolTip(toolTip);
}

void WDialer::handleDialValueChanged(int value)
{
    m_coupling->setSpinBox(value);
    emit valueChanged(m_ui->sbActualValue->value());
}

void WDialer::handleSpinValueChanged(int value)
{
    m_coupling->turnDial(value);
    emit valueChanged(m_ui->sbActualValue->value());
}
