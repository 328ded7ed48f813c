#pragma once

#include "ChartTest.h"
#include "charts/WSimpleScaledDrawer.h"

#include <QScrollBar>
#include <QSpinBox>

/// A chart panel in a shown window, with two lines: type 1 in blue, type 2 in red.
class PanelWindow : public WSimpleScaledDrawer
{
public:
    PanelWindow()
    {
        addChartLine(new ChartLine(ChartTest::newLine(1)));
        addChartLine(new ChartLine(ChartTest::newLine(2, Qt::red)));
    }

    /// False if the window doesn't come.
    bool open(const QSize &size)
    {
        resize(size);
        show();
        activateWindow();
        return QTest::qWaitForWindowActive(this);
    }

    DrawerArea *area() const { return findChild<DrawerArea *>(); }
    QScrollBar *scrollBar() const { return findChild<QScrollBar *>(); }
    QWidget *control(const char *name) const
    {
        return findChild<QWidget *>(QString::fromLatin1(name));
    }
    QSpinBox *box(const char *name) const
    {
        return findChild<QSpinBox *>(QString::fromLatin1(name));
    }
    void click(const char *name) const { QTest::mouseClick(control(name), Qt::LeftButton); }
    /// A polled value of address 1, motor bank 0.
    void poll(int type, int value) { requestedTraceValue(1, 0, static_cast<char>(type), value); }
    const QList<double> &samples(int line) const { return chartLines().at(line)->samples(); }
};
