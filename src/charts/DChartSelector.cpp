#include "charts/DChartSelector.h"

#include "charts/ChartLine.h"
#include "charts/DrawerArea.h"
#include "comm/TraceCommand.h"
#include "ui_DChartSelector.h"

#include <QColorDialog>
#include <QScrollBar>

namespace {

enum Column { Cmd, Type, Name, Color, Address, Motor, ColumnCount };

constexpr int RowHeight = 20;
constexpr int NumberWidth = 50;
/// What the other columns and the scroll bar take of a table's width.
constexpr int BesideName = 269;

void setUpTable(QTableWidget *table)
{
    table->setColumnCount(ColumnCount);
    table->setHorizontalHeaderLabels({DChartSelector::tr("Cmd"), DChartSelector::tr("Type"),
                                      DChartSelector::tr("Name"), DChartSelector::tr("Color"),
                                      DChartSelector::tr("Address"), DChartSelector::tr("Motor")});
    for (int column = 0; column < ColumnCount; ++column) {
        table->setColumnWidth(column,
                              column == Name ? table->maximumWidth() - BesideName : NumberWidth);
    }
    table->setShowGrid(false);
    table->verticalHeader()->hide();
    table->verticalHeader()->setMinimumSectionSize(RowHeight); // some styles ask for more
    table->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    table->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
}

QTableWidgetItem *newCell(const QString &text, Qt::Alignment alignment = Qt::AlignCenter)
{
    auto *cell = new QTableWidgetItem(text);
    cell->setTextAlignment(alignment);
    return cell;
}

QString text(const QTableWidget &table, int row, Column column)
{
    const QTableWidgetItem *cell = table.item(row, column);
    return cell ? cell->text() : QString();
}

/// The number in a cell, cut to 8 bits; 0 if there is none.
quint8 number(const QTableWidget &table, int row, Column column)
{
    return static_cast<quint8>(text(table, row, column).toInt());
}

/// The colour of a row; invalid if there is none, or another kind of background.
QColor color(const QTableWidget &table, int row)
{
    const QTableWidgetItem *cell = table.item(row, Color);
    return cell ? cell->data(Qt::BackgroundRole).value<QColor>() : QColor();
}

quint8 unsignedNumber(char byte)
{
    return static_cast<quint8>(byte);
}

} // namespace

DChartSelector::DChartSelector(QWidget *parent, DrawerArea *area,
                               const QList<TraceCommand *> &availableTraces)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::DChartSelector>())
{
    m_ui->setupUi(this);
    setWindowTitle(tr("Select charts for \"%1\" graph").arg(parent->windowTitle()));
    setUpTable(m_ui->twSelected);
    setUpTable(m_ui->twAvailable);
    // Kept on purpose: the left one alone can not be dragged.
    m_ui->twAvailable->verticalScrollBar()->setEnabled(false);

    for (const ChartLine *line : area->chartLines()) {
        addRow(m_ui->twSelected, *line);
    }
    for (const TraceCommand *trace : availableTraces) {
        if (!isSelected(*trace)) {
            addRow(m_ui->twAvailable,
                   ChartLine(unsignedNumber(trace->address()), unsignedNumber(trace->motorBank()),
                             unsignedNumber(trace->command()), unsignedNumber(trace->type()),
                             trace->name(), Qt::lightGray));
        }
    }
    connect(m_ui->twSelected, &QTableWidget::cellClicked, this,
            &DChartSelector::onLWSelectedClicked);
    connect(m_ui->twAvailable, &QTableWidget::cellClicked, this,
            &DChartSelector::onLWAvailableClicked);
}

DChartSelector::~DChartSelector() = default;

QTableWidget *DChartSelector::selectedTable() const
{
    return m_ui->twSelected;
}

QList<ChartLine *> DChartSelector::chartLines(const QTableWidget &table)
{
    QList<ChartLine *> lines;
    for (int row = 0; row < table.rowCount(); ++row) {
        lines.append(new ChartLine(number(table, row, Address), number(table, row, Motor),
                                   number(table, row, Cmd), number(table, row, Type),
                                   text(table, row, Name), color(table, row)));
    }
    return lines;
}

void DChartSelector::onLWSelectedClicked(int x, int y)
{
    if (y <= Name) {
        moveRow(m_ui->twSelected, x, m_ui->twAvailable);
    } else {
        chooseColor(m_ui->twSelected, x);
    }
}

void DChartSelector::onLWAvailableClicked(int x, int y)
{
    if (y <= Name) {
        moveRow(m_ui->twAvailable, x, m_ui->twSelected);
    } else {
        chooseColor(m_ui->twAvailable, x);
    }
}

void DChartSelector::addRow(QTableWidget *table, const ChartLine &line)
{
    const int row = table->rowCount();
    table->insertRow(row);
    table->setItem(row, Cmd, newCell(QString::number(line.command())));
    table->setItem(row, Type, newCell(QString::number(line.type())));
    table->setItem(row, Name, newCell(line.name(), Qt::AlignLeft | Qt::AlignVCenter));
    QTableWidgetItem *colorCell = newCell(QString());
    colorCell->setBackground(line.color());
    table->setItem(row, Color, colorCell);
    table->setItem(row, Address, newCell(QString::number(line.address())));
    table->setItem(row, Motor, newCell(QString::number(line.motorBank())));
    table->setRowHeight(row, RowHeight);
}

bool DChartSelector::isSelected(const TraceCommand &trace) const
{
    // Kept on purpose: the type is compared with the column of the command. A line that is selected
    // so stays available, too, and as soon as one of command 6 is selected, a value of type 6 is
    // hidden.
    const QString type = QString::number(unsignedNumber(trace.type()));
    for (int row = 0; row < m_ui->twSelected->rowCount(); ++row) {
        if (text(*m_ui->twSelected, row, Cmd) == type) {
            return true;
        }
    }
    return false;
}

void DChartSelector::moveRow(QTableWidget *from, int row, QTableWidget *to)
{
    const int newRow = to->rowCount();
    to->insertRow(newRow);
    for (int column = 0; column < ColumnCount; ++column) {
        to->setItem(newRow, column, from->takeItem(row, column));
    }
    to->setRowHeight(newRow, RowHeight);
    from->removeRow(row);
}

void DChartSelector::chooseColor(QTableWidget *table, int row)
{
    const QColor chosen = QColorDialog::getColor(color(*table, row), this);
    if (chosen.isValid()) {
        table->item(row, Color)->setBackground(chosen);
    }
    table->clearSelection();
}
