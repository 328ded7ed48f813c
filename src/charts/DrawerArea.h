#pragma once

#include <QList>
#include <QTimer>
#include <QWidget>

class ChartGeometry;
class ChartLine;
class QPainter;

/// The canvas of one chart: keeps the chart's lines with their samples and paints them against
/// time, the newest sample at the right edge.
///
/// It paints by a timer, between startDrawer() and stopDrawer(), and when the window system asks
/// for it. Neither a new sample nor a new scale repaints by itself. A paint takes as long with a
/// long history as with a short one.
///
/// In dynamic mode, that at the start, each paint takes from the samples that it visited the scale
/// of the next one. Zero always lies within that scale. In manual mode the scale is that of
/// setMinValue() and setMaxValue().
class DrawerArea : public QWidget
{
    Q_OBJECT

public:
    /// Scale 0 to 100, dynamic; no lines; one repaint a second, once it is started.
    explicit DrawerArea(QWidget *parent = nullptr);

    /// Text above the chart.
    void setTitle(const QString &title);
    /// What setTitle() has set; empty at the start.
    QString title() const { return m_title; }

    /// Time between two repaints in milliseconds. Doesn't start them.
    void setInterval(int msecs);

    /// Limit on the samples of each line that is added from now on. Lines that are there keep
    /// theirs.
    void setMaxSamples(int maxSamples);
    /// Where the scroll bar stands: @p value below @p maximum hides as many of the newest samples
    /// as it is below it, divided by the resolution. Doesn't repaint.
    /// @param minimum is only kept
    void setScrollRange(int minimum, int maximum, int value);
    /// Draws one point for this many samples. Ignored unless above 0.
    void setResolution(int resolution);

    /// Appends @p line and gives it the limit of this area. Doesn't take ownership; the line has
    /// to live as long as it is in the list.
    void addChartLine(ChartLine *line);
    /// Empties the list; the lines live on.
    void clearChartLines();
    /// Takes lines with this key out of the list; they live on. Each line that follows a removed
    /// one stays, whatever its key.
    void removeChartLine(quint8 address, quint8 motorBank, quint8 command, quint8 type);
    /// In the order of the legend.
    const QList<ChartLine *> &chartLines() const { return m_lines; }

    /// Appends a sample to every line with this key; dropped if there is none.
    void addValue(quint8 address, quint8 motorBank, quint8 command, quint8 type, int value);

signals:
    /// The next paint will use this scale, as the one that ends here has found out.
    void scaleChanged(int minValue, int maxValue);
    /// Comes with every paint, from within it: slots must not repaint the area at once. What they
    /// set by setScrollRange() holds for this paint.
    /// @param width room for this many points; below 1 if there is no room
    void changedChartWidth(int width);

public slots:
    /// Repaints from now on by the timer.
    void startDrawer();
    /// Ends that. Samples are stored all the same.
    void stopDrawer();
    /// Forgets the samples of every line; their smoothed values stay.
    void clearValues();
    /// Keeps the scale as it is, from the next paint on.
    void doManualScaling();
    /// Lets each paint find out the scale of the next one.
    void doDynamicScaling();
    /// Top of the scale from the next paint on.
    void setMaxValue(int max);
    /// Bottom of the scale from the next paint on.
    void setMinValue(int min);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    struct Scale
    {
        int min;
        int max;
    };

    void drawFrame(QPainter &painter, const ChartGeometry &geometry) const;
    void drawLines(QPainter &painter, const ChartGeometry &geometry, Scale &scale) const;
    void drawCurve(QPainter &painter, const ChartGeometry &geometry, const ChartLine &line,
                   Scale &scale) const;

    int m_maxValue = 100;
    int m_minValue = 0;
    int m_maxSamples;
    int m_scrollMinimum = 0;
    int m_scrollMaximum = 0;
    int m_scrollValue = 0;
    int m_resolution = 1;
    QString m_title;
    QList<ChartLine *> m_lines;
    QTimer m_timer{this};
    int m_interval = 1000;
    bool m_dynamicScaling = true;
};
