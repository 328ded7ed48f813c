#pragma once

#include <QWidget>

#include <memory>

namespace Ui {
class WSimpleScaledGraphController;
}

/// The controls beside a chart: how its value axis is scaled, and a button that clears its curves.
///
/// "dynamic" and "manual" are two buttons on their own, on purpose no group: a click on the active
/// one unchecks it while the mode stays, so that both may stand unchecked.
class WSimpleScaledGraphController : public QWidget
{
    Q_OBJECT

public:
    /// Dynamic scaling, with both bounds disabled.
    explicit WSimpleScaledGraphController(QWidget *parent = nullptr);
    ~WSimpleScaledGraphController() override;

signals:
    /// The curves are to be cleared.
    void clear();
    void scaleManually();
    void scaleDynamic();
    void minValueChanged(int min);
    void maxValueChanged(int max);
    /// For a choice of samples a point. Nothing emits it yet.
    void changeResolution(int resolution);

public slots:
    /// Shows the scale of the chart. Values that are new come back by minValueChanged() and
    /// maxValueChanged(), in this order.
    void changedScaleValues(int minValue, int maxValue);
    void on_btnClearCharts_clicked();
    void on_sbMin_valueChanged(int value);
    void on_sbMax_valueChanged(int value);
    /// Chooses manual scaling, whether the button is now @p checked or not.
    void on_btnScaleManually_clicked(bool checked);
    /// Chooses dynamic scaling, whether the button is now @p checked or not.
    void on_btnScaleDynamic_clicked(bool checked);

private:
    std::unique_ptr<Ui::WSimpleScaledGraphController> m_ui;
};
