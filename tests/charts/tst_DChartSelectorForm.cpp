#include "SelectorTest.h"
#include "SelectorTestCase.h"
#include "panels/PanelTest.h"
#include "support/MetaMethods.h"

#include <QHeaderView>

using namespace Qt::StringLiterals;
using namespace PanelTest;
using namespace SelectorTest;

/// What the chart selection dialog looks like, and its buttons.
class tst_DChartSelectorForm : public SelectorTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void metaObject();
    void form_data();
    void form();
    void columns_data();
    void columns();
    void tables_data();
    void tables();
    void cells_data();
    void cells();
    void buttons_data();
    void buttons();
};

void tst_DChartSelectorForm::init()
{
    TestCase::init();
    setUp();
}

void tst_DChartSelectorForm::cleanup()
{
    tearDown();
}

void tst_DChartSelectorForm::metaObject()
{
    const QMetaObject &meta = DChartSelector::staticMetaObject;
    QCOMPARE(meta.superClass(), &QDialog::staticMetaObject);
    QCOMPARE(ownMethods(meta, QMetaMethod::Signal), QStringList());
    QCOMPARE(ownMethods(meta, QMetaMethod::Slot),
             (QStringList{u"onLWSelectedClicked(int x, int y)"_s,
                          u"onLWAvailableClicked(int x, int y)"_s}));
    QCOMPARE(m_dialog->parentWidget(), &m_panel);
    QCOMPARE(m_dialog->objectName(), u"DChartSelector"_s);
    QCOMPARE(m_dialog->windowTitle(), u"Select charts for \"Velocity\" graph"_s);
    QCOMPARE(m_dialog->maximumSize(), QSize(800, 240));
    QCOMPARE(m_dialog->selectedTable(), selected());
}

void tst_DChartSelectorForm::form_data()
{
    addPropertyColumns();
    constexpr auto row = &addPropertyRow;
    row("lblAvailable", "QLabel", "text", u"Available parameter"_s);
    row("lblSelected", "QLabel", "text", u"Selected parameter"_s);
    row("twAvailable", "QTableWidget", "maximumSize", QSize(484, 168));
    row("twSelected", "QTableWidget", "maximumSize", QSize(484, 168));
    row("buttonBox", "QDialogButtonBox", "standardButtons",
        QVariant::fromValue(QDialogButtonBox::Ok | QDialogButtonBox::Cancel));
}

void tst_DChartSelectorForm::form()
{
    compareProperty(*m_dialog);
}

void tst_DChartSelectorForm::columns_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("header");
    QTest::addColumn<int>("width");
    QTest::newRow("Cmd") << 0 << u"Cmd"_s << 50;
    QTest::newRow("Type") << 1 << u"Type"_s << 50;
    QTest::newRow("Name") << 2 << u"Name"_s << 215; // 484 - 269
    QTest::newRow("Color") << 3 << u"Color"_s << 50;
    QTest::newRow("Address") << 4 << u"Address"_s << 50;
    QTest::newRow("Motor") << 5 << u"Motor"_s << 50;
}

void tst_DChartSelectorForm::columns()
{
    QFETCH(int, column);
    for (const QTableWidget *tableWidget : {selected(), available()}) {
        QCOMPARE(tableWidget->columnCount(), 6);
        QTEST(tableWidget->horizontalHeaderItem(column)->text(), "header");
        QTEST(tableWidget->columnWidth(column), "width");
    }
}

void tst_DChartSelectorForm::tables_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<bool>("scrollBarEnabled");
    QTest::newRow("available") << QByteArray("twAvailable") << false;
    QTest::newRow("selected") << QByteArray("twSelected") << true;
}

void tst_DChartSelectorForm::tables()
{
    QFETCH(QByteArray, name);
    QTableWidget *tableWidget = table(m_dialog.get(), name);
    QVERIFY(!tableWidget->showGrid());
    QVERIFY(!tableWidget->verticalHeader()->isVisible());
    QCOMPARE(tableWidget->horizontalScrollBarPolicy(), Qt::ScrollBarAlwaysOff);
    QCOMPARE(tableWidget->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
    QTEST(tableWidget->verticalScrollBar()->isEnabled(), "scrollBarEnabled");
    QCOMPARE(tableWidget->selectionBehavior(), QAbstractItemView::SelectRows);

    tableWidget->setCurrentCell(0, 2);
    QCOMPARE(tableWidget->selectedItems().size(), 6);
    const QStringList before = rows(tableWidget);
    tableWidget->setFocus();
    QTest::keyClick(tableWidget, Qt::Key_F2); // neither this nor typing edits a cell
    QTest::keyClicks(tableWidget, u"9"_s);
    QTest::mouseDClick(tableWidget->viewport(), Qt::LeftButton, {},
                       tableWidget->visualItemRect(tableWidget->item(1, 2)).center());
    QVERIFY(!tableWidget->findChild<QLineEdit *>());
    QCOMPARE(rows(tableWidget), before);
}

void tst_DChartSelectorForm::cells_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<bool>("isCentred");
    for (int column = 0; column < 6; ++column) {
        QTest::addRow("column %d", column) << column << (column != 2);
    }
}

void tst_DChartSelectorForm::cells()
{
    QFETCH(int, column);
    QFETCH(bool, isCentred);
    for (const QTableWidget *tableWidget : {selected(), available()}) {
        QCOMPARE(tableWidget->item(0, column)->textAlignment(),
                 isCentred ? int(Qt::AlignCenter) : int(Qt::AlignLeft | Qt::AlignVCenter));
    }
    QCOMPARE(selected()->item(0, 3)->text(), QString());
}

void tst_DChartSelectorForm::buttons_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<int>("result");
    QTest::newRow("OK") << int(QDialogButtonBox::Ok) << int(QDialog::Accepted);
    QTest::newRow("Cancel") << int(QDialogButtonBox::Cancel) << int(QDialog::Rejected);
}

void tst_DChartSelectorForm::buttons()
{
    QFETCH(int, button);
    m_dialog->setResult(-1);
    press(m_dialog.get(), QDialogButtonBox::StandardButton(button));
    QVERIFY(!m_dialog->isVisible());
    QTEST(m_dialog->result(), "result");
}

QTEST_MAIN(tst_DChartSelectorForm)
#include "tst_DChartSelectorForm.moc"
