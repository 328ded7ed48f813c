#pragma once

#include "ModalAnswer.h"

#include <QAbstractSpinBox>
#include <QColorDialog>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTableWidget>
#include <QTest>

/// The user's hand on the chart selection dialog.
namespace SelectorTest {

inline QTableWidget *table(QWidget *dialog, const char *name)
{
    return dialog->findChild<QTableWidget *>(QString::fromLatin1(name));
}

/// Clicks on a cell, which is brought into view before.
inline void clickCell(QTableWidget *table, int row, int column)
{
    const QTableWidgetItem *cell = table->item(row, column);
    table->scrollToItem(cell);
    QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, table->visualItemRect(cell).center());
}

inline void press(QWidget *dialog, QDialogButtonBox::StandardButton button)
{
    auto *box = dialog->findChild<QDialogButtonBox *>();
    QTest::mouseClick(box->button(button), Qt::LeftButton);
}

/// The texts of each row, in front of the colour's name: "6 131 name #0000ff 1 0".
inline QStringList rows(const QTableWidget *table)
{
    QStringList result;
    for (int row = 0; row < table->rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < table->columnCount(); ++column) {
            const QTableWidgetItem *cell = table->item(row, column);
            cells.append(column == 3 ? cell->text() + cell->background().color().name()
                                     : cell->text());
        }
        result.append(cells.join(u' '));
    }
    return result;
}

/// The colour dialog's field for a name like "#0000ff": the only one that isn't part of a spin box.
inline QLineEdit *colorField(const QColorDialog *dialog)
{
    for (QLineEdit *edit : dialog->findChildren<QLineEdit *>()) {
        if (!qobject_cast<QAbstractSpinBox *>(edit->parentWidget())) {
            return edit;
        }
    }
    qFatal("the colour dialog has no field for a name");
}

/// Types @p color over the name in the colour dialog.
inline void typeColor(const QColorDialog *dialog, const QString &color)
{
    colorField(dialog)->selectAll();
    QTest::keyClicks(colorField(dialog), color);
}

/// Types @p color into the colour dialog and accepts it.
inline void enterColor(QColorDialog *dialog, const QString &color)
{
    typeColor(dialog, color);
    press(dialog, QDialogButtonBox::Ok);
}

} // namespace SelectorTest
