#include "charts/WSimpleScaledDrawer.h"

#include "charts/ChartLine.h"
#include "charts/DChartSelector.h"
#include "charts/DrawerArea.h"
#include "charts/WSimpleScaledGraphController.h"
#include "comm/CommandNumbers.h"

#include <QDebug>
#include <QHBoxLayout>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTableWidget>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int RepaintMsecs = 100;
constexpr int ScrollStep = 100;
constexpr int StartMaxSamples = 1000;

} // namespace

WSimpleScaledDrawer::WSimpleScaledDrawer(QWidget *parent)
    : QWidget(parent)
    , m_area(new DrawerArea)
    , m_controller(new WSimpleScaledGraphController)
    , m_scrollBar(new QScrollBar(Qt::Horizontal))
{
    m_area->setInterval(RepaintMsecs);
    m_scrollBar->setSingleStep(ScrollStep);

    auto *chart = new QWidget;
    auto *chartLayout = new QVBoxLayout(chart);
    chartLayout->setSpacing(0);
    chartLayout->addWidget(m_area);
    chartLayout->addWidget(m_scrollBar);
    auto *layout = new QHBoxLayout(this);
    layout->setSpacing(0);
    layout->addWidget(chart);
    layout->addWidget(m_controller);

    using Controller = WSimpleScaledGraphController;
    connect(m_area, &DrawerArea::scaleChanged, m_controller, &Controller::changedScaleValues);
    connect(m_area, &DrawerArea::changedChartWidth, this,
            &WSimpleScaledDrawer::handleChangedChartWidth);
    connect(m_controller, &Controller::scaleManually, m_area, &DrawerArea::doManualScaling);
    connect(m_controller, &Controller::scaleDynamic, m_area, &DrawerArea::doDynamicScaling);
    connect(m_controller, &Controller::minValueChanged, m_area, &DrawerArea::setMinValue);
    connect(m_controller, &Controller::maxValueChanged, m_area, &DrawerArea::setMaxValue);
    connect(m_controller, &Controller::clear, m_area, &DrawerArea::clearValues);
    connect(m_scrollBar, &QScrollBar::valueChanged, this,
            &WSimpleScaledDrawer::scrollBarValueChanged);

    setMaxSamples(StartMaxSamples);
}

WSimpleScaledDrawer::~WSimpleScaledDrawer()
{
    m_area->clearChartLines();
    qDeleteAll(m_ownedLines);
}

void WSimpleScaledDrawer::setTitle(const QString &title)
{
    m_area->setTitle(title);
    setWindowTitle(title);
}

QString WSimpleScaledDrawer::title() const
{
    return m_area->title();
}

void WSimpleScaledDrawer::setChartsSelectable(bool selectable)
{
    m_chartsSelectable = selectable;
}

void WSimpleScaledDrawer::setAvailableTraces(const QList<TraceCommand *> &traces)
{
    m_availableTraces.append(traces);
}

void WSimpleScaledDrawer::addAvailableTrace(TraceCommand *trace)
{
    m_availableTraces.append(trace);
}

void WSimpleScaledDrawer::clearAvailableTraces()
{
    m_availableTraces.clear();
}

void WSimpleScaledDrawer::setMaxSamples(int n)
{
    m_area->setMaxSamples(n);
    const int newest = std::max(n, 0) - 1;
    m_scrollBar->setMinimum(0);
    m_scrollBar->setMaximum(newest);
    m_scrollBar->setValue(newest);
}

void WSimpleScaledDrawer::addChartLine(ChartLine *line)
{
    m_ownedLines.insert(line);
    m_area->addChartLine(line);
}

void WSimpleScaledDrawer::clearChartLines()
{
    m_area->clearChartLines();
}

const QList<ChartLine *> &WSimpleScaledDrawer::chartLines() const
{
    return m_area->chartLines();
}

void WSimpleScaledDrawer::removeChartLine(quint8 address, quint8 motorBank, quint8 command,
                                          quint8 type)
{
    m_area->removeChartLine(address, motorBank, command, type);
}

void WSimpleScaledDrawer::clearValues()
{
    m_area->clearValues();
}

void WSimpleScaledDrawer::setMaxValue(int max)
{
    m_area->setMaxValue(max);
}

void WSimpleScaledDrawer::setMinValue(int min)
{
    m_area->setMinValue(min);
}

void WSimpleScaledDrawer::doManualScaling()
{
    m_area->doManualScaling();
}

void WSimpleScaledDrawer::doDynamicScaling()
{
    m_area->doDynamicScaling();
}

void WSimpleScaledDrawer::scrollBarValueChanged(int value)
{
    m_area->setScrollRange(m_scrollBar->minimum(), m_scrollBar->maximum(), value);
    if (m_areaPaints) {
        update(); // the paint under way may be of a part only
    } else {
        repaint();
    }
}

void WSimpleScaledDrawer::startDrawing()
{
    m_area->startDrawer();
}

void WSimpleScaledDrawer::stopDrawing()
{
    m_area->stopDrawer();
}

void WSimpleScaledDrawer::requestedTraceValue(char address, char motorBank, char typeNumber,
                                              int value)
{
    m_area->addValue(static_cast<quint8>(address), static_cast<quint8>(motorBank),
                     CommandNumber::GetAxisParameter, static_cast<quint8>(typeNumber), value);
}

void WSimpleScaledDrawer::handleChangedChartWidth(int width)
{
    // The area is in the midst of a paint. A minimum above the bar's value moves the value, and a
    // repaint from there would be a paint inside of a paint.
    const QScopedValueRollback<bool> painting(m_areaPaints, true);
    m_scrollBar->setMinimum(width);
}

void WSimpleScaledDrawer::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::RightButton || !m_chartsSelectable) {
        QWidget::mousePressEvent(event);
        return;
    }
    // Kept on purpose: a new dialog each time, which stays a child of this panel until that ends.
    auto *selector = new DChartSelector(this, m_area, m_availableTraces);
    if (selector->exec() != QDialog::Accepted) {
        return; // also if the dialog has gone with this panel
    }
    const QTableWidget *table = selector->selectedTable();
    qDebug() << "SelectionTable:" << QString::number(table->rowCount());
    replaceChartLines(DChartSelector::chartLines(*table));
}

void WSimpleScaledDrawer::replaceChartLines(const QList<ChartLine *> &lines)
{
    // Kept on purpose: every line is a new one, so that all history is lost, also that of curves
    // which stay selected.
    const QSet<ChartLine *> replaced = std::exchange(m_ownedLines, {});
    clearChartLines();
    for (ChartLine *line : lines) {
        addChartLine(line);
    }
    emit chartSelectionChanged();
    qDeleteAll(replaced);
}
