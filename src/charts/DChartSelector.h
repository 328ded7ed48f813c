#pragma once

#include <QDialog>
#include <QList>

#include <memory>

class ChartLine;
class DrawerArea;
class QTableWidget;
class TraceCommand;

namespace Ui {
class DChartSelector;
}

/// Lets the user choose which values a chart shows, and in which colours: on the left what can be
/// polled, on the right what the chart is to draw.
///
/// A click on command, type or name moves the row to the other table, one on colour, address or
/// motor chooses its colour. The dialog itself changes nothing: who runs it reads the right table.
class DChartSelector : public QDialog
{
    Q_OBJECT

public:
    /// @param parent panel whose window title names the chart
    /// @param area chart whose lines are selected at the start; only read, here alone
    /// @param availableTraces what can be polled; only read, here alone
    DChartSelector(QWidget *parent, DrawerArea *area, const QList<TraceCommand *> &availableTraces);
    ~DChartSelector() override;

    /// The right table.
    QTableWidget *selectedTable() const;

    /// New lines as the rows of @p table describe them, in their order; the caller owns them. A
    /// number that can't be read is 0, a larger one is cut to 8 bits, and a row without a colour
    /// gives a line with an invalid one.
    static QList<ChartLine *> chartLines(const QTableWidget &table);

public slots:
    /// @param x row of the click
    /// @param y its column
    void onLWSelectedClicked(int x, int y);
    /// @param x row of the click
    /// @param y its column
    void onLWAvailableClicked(int x, int y);

private:
    void addRow(QTableWidget *table, const ChartLine &line);
    bool isSelected(const TraceCommand &trace) const;
    void moveRow(QTableWidget *from, int row, QTableWidget *to);
    void chooseColor(QTableWidget *table, int row);

    std::unique_ptr<Ui::DChartSelector> m_ui;
};
