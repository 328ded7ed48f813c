#pragma once

#include <QList>
#include <QSet>
#include <QWidget>

class ChartLine;
class DrawerArea;
class QScrollBar;
class TraceCommand;
class WSimpleScaledGraphController;

/// A chart with a scroll bar through its history below it and its scaling controls beside it.
///
/// A right click opens a dialog in which the user picks the curves, if that is allowed. The panel
/// is handed every polled value and shows those that it has a line for.
class WSimpleScaledDrawer : public QWidget
{
    Q_OBJECT

public:
    /// No lines, a history of 1000 samples, repaints every 100 ms once it is started; the user may
    /// not pick the curves.
    explicit WSimpleScaledDrawer(QWidget *parent = nullptr);
    ~WSimpleScaledDrawer() override;

    /// The text above the chart, and the window title.
    void setTitle(const QString &title);
    /// What setTitle() has set; empty at the start.
    QString title() const;

    /// Whether a right click lets the user pick the curves.
    void setChartsSelectable(bool selectable);
    /// Appends to what the user may pick. The records are not owned here and have to live as long
    /// as they are offered.
    void setAvailableTraces(const QList<TraceCommand *> &traces);
    /// Appends one value to what the user may pick, on the same terms.
    void addAvailableTrace(TraceCommand *trace);
    /// Offers nothing any longer. The records live on.
    void clearAvailableTraces();

    /// Number of samples kept for each line that is added from now on. The scroll bar goes from 0
    /// to @p n - 1 and stands at the newest sample.
    void setMaxSamples(int n);

    /// Takes ownership of @p line. It lives, also when it is no longer shown, until the user has
    /// accepted other curves and chartSelectionChanged() was emitted, or until the panel ends.
    void addChartLine(ChartLine *line);
    /// See DrawerArea::clearChartLines().
    void clearChartLines();
    /// The lines that are shown, in the order of the legend.
    const QList<ChartLine *> &chartLines() const;
    /// See DrawerArea::removeChartLine(): the line behind a removed one stays.
    void removeChartLine(quint8 address, quint8 motorBank, quint8 command, quint8 type);
    /// Forgets the samples of every line.
    void clearValues();

    /// Top of the scale from the next paint on.
    void setMaxValue(int max);
    /// Bottom of the scale from the next paint on.
    void setMinValue(int min);
    /// See DrawerArea::doManualScaling(). The controls beside the chart don't follow.
    void doManualScaling();
    /// See DrawerArea::doDynamicScaling(). The controls beside the chart don't follow.
    void doDynamicScaling();

signals:
    /// The user has accepted other curves: what is polled has to follow.
    void chartSelectionChanged();

public slots:
    /// Scrolls the chart to where the scroll bar stands.
    void scrollBarValueChanged(int value);
    /// Repaints the chart every 100 ms from now on.
    void startDrawing();
    /// Ends that. Samples are stored all the same.
    void stopDrawing();
    /// A polled axis parameter: a sample for each line that reads it, dropped if there is none.
    void requestedTraceValue(char address, char motorBank, char typeNumber, int value);
    /// Keeps a whole width of samples in view at the scroll bar's lower end.
    void handleChangedChartWidth(int width);

protected:
    void mousePressEvent(QMouseEvent *event) override;

private:
    void replaceChartLines(const QList<ChartLine *> &lines);

    DrawerArea *m_area;
    WSimpleScaledGraphController *m_controller;
    QScrollBar *m_scrollBar;
    QList<TraceCommand *> m_availableTraces;
    bool m_chartsSelectable = false;
    bool m_areaPaints = false;
    QSet<ChartLine *> m_ownedLines;
};
