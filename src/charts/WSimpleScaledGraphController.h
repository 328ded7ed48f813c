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
    /// The scale is to be that of the two bounds.
    void scaleManually();
    /// The scale is to follow the samples.
    void scaleDynamic();
    /// The lower bound has another value, entered or shown.
    void minValueChanged(int min);
    /// The upper bound has another value, entered or shown.
    void maxValueChanged(int max);
    /// For a choice of samples a point. Nothing emits it yet.
    void changeResolution(int resolution);

public slots:
    /// Shows the scale of the chart. Values that are new come back by minValueChanged() and
    /// maxValueChanged(), in this order.
    void changedScaleValues(int minValue, int maxValue);
    /// Emits clear().
    void on_btnClearCharts_clicked();
    /// Emits minValueChanged().
    void on_sbMin_valueChanged(int value);
    /// Emits maxValueChanged().
    void on_sbMax_valueChanged(int value);
    /// Chooses manual scaling, whether the button is now @p checked or not.
    void on_btnScaleManually_clicked(bool checked);
    /// Chooses dynamic scaling, whether the button is now @p checked or not.
    void on_btnScaleDynamic_clicked(bool checked);

private:
    std::unique_ptr<Ui::WSimpleScaledGraphController> m_ui;
};
