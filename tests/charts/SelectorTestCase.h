#pragma once

#include "ChartTest.h"
#include "SelectorTest.h"
#include "charts/DChartSelector.h"
#include "comm/TraceCommand.h"
#include "support/TestCase.h"

#include <memory>
#include <vector>

/// Base of the tests of the chart selection dialog: opens it on a chart with two lines, with three
/// values to pick from.
class SelectorTestCase : public TestCase
{
protected:
    void setUp()
    {
        m_panel.setWindowTitle(QStringLiteral("Velocity"));
        m_area = std::make_unique<DrawerArea>();
        m_lines = {ChartLine(1, 0, 6, 131, QStringLiteral("actual [pps]"), Qt::blue),
                   ChartLine(200, 2, 6, 230, QStringLiteral("gamma"), Qt::red)};
        m_traces = {TraceCommand(1, 0, 6, 0, QStringLiteral("target position")),
                    TraceCommand(1, 0, 6, char(131), QStringLiteral("actual velocity")),
                    TraceCommand(char(200), 1, 6, char(230), QStringLiteral("gamma"))};
        open();
    }

    void tearDown()
    {
        m_dialog.reset();
        m_area.reset();
    }

    /// Opens a new dialog on what the lists hold now.
    void open()
    {
        m_dialog.reset();
        m_area->clearChartLines();
        for (ChartLine &line : m_lines) {
            m_area->addChartLine(&line);
        }
        QList<TraceCommand *> traces;
        for (TraceCommand &trace : m_traces) {
            traces.append(&trace);
        }
        m_dialog = std::make_unique<DChartSelector>(&m_panel, m_area.get(), traces);
        m_dialog->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_dialog.get()));
    }

    QTableWidget *selected() const { return SelectorTest::table(m_dialog.get(), "twSelected"); }
    QTableWidget *available() const { return SelectorTest::table(m_dialog.get(), "twAvailable"); }

    QWidget m_panel;
    std::unique_ptr<DrawerArea> m_area;
    std::vector<ChartLine> m_lines;
    std::vector<TraceCommand> m_traces;
    std::unique_ptr<DChartSelector> m_dialog;
};
