#include "charts/WSimpleScaledGraphController.h"

#include "ui_WSimpleScaledGraphController.h"

WSimpleScaledGraphController::WSimpleScaledGraphController(QWidget *parent)
    : QWidget(parent)
    , m_ui(std::make_unique<Ui::WSimpleScaledGraphController>())
{
    m_ui->setupUi(this);
}

WSimpleScaledGraphController::~WSimpleScaledGraphController() = default;

void WSimpleScaledGraphController::changedScaleValues(int minValue, int maxValue)
{
    m_ui->sbMin->setValue(minValue);
    m_ui->sbMax->setValue(maxValue);
}

void WSimpleScaledGraphController::on_btnClearCharts_clicked()
{
    emit clear();
}

void WSimpleScaledGraphController::on_sbMin_valueChanged(int value)
{
    emit minValueChanged(value);
}

void WSimpleScaledGraphController::on_sbMax_valueChanged(int value)
{
    emit maxValueChanged(value);
}

// Kept on purpose: neither slot looks at its argument nor checks its own button again. A second
// click on the active button so leaves both unchecked, and the mode as it is.

void WSimpleScaledGraphController::on_btnScaleManually_clicked(bool)
{
    m_ui->btnScaleDynamic->setChecked(false);
    m_ui->sbMax->setEnabled(true);
    m_ui->sbMin->setEnabled(true);
    emit scaleManually();
}

void WSimpleScaledGraphController::on_btnScaleDynamic_clicked(bool)
{
    m_ui->btnScaleManually->setChecked(false);
    m_ui->sbMax->setEnabled(false);
    m_ui->sbMin->setEnabled(false);
    emit scaleDynamic();
}
