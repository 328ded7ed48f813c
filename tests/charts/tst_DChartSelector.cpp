#include "SelectorTest.h"
#include "SelectorTestCase.h"

using namespace Qt::StringLiterals;
using namespace SelectorTest;

class tst_DChartSelector : public SelectorTestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void selectedRows();
    void availableRows();
    void typeSixIsHidden();
    void moveToTheRight_data();
    void moveToTheRight();
    void moveToTheLeft_data();
    void moveToTheLeft();
    void movedRowGoesToTheEnd();
    void movedRowKeepsItsColor();
    void sameValueTwice();
    void chooseColor_data();
    void chooseColor();
    void cancelColor_data();
    void cancelColor();
    void colorDialogBeginsWithTheRowsColor();
    void colorOfABackgroundThatIsNone_data();
    void colorOfABackgroundThatIsNone();
    void chartLinesOfATable();
    void chartLinesOfBadCells_data();
    void chartLinesOfBadCells();
    void nothingIsApplied();
    void emptyLists();
};

void tst_DChartSelector::init()
{
    TestCase::init();
    setUp();
}

void tst_DChartSelector::cleanup()
{
    tearDown();
}

void tst_DChartSelector::selectedRows()
{
    QCOMPARE(rows(selected()),
             (QStringList{u"6 131 actual [pps] #0000ff 1 0"_s, u"6 230 gamma #ff0000 200 2"_s}));
    QCOMPARE(selected()->rowHeight(0), 20);
    QCOMPARE(selected()->rowHeight(1), 20);
}

void tst_DChartSelector::availableRows()
{
    // 131 and 230 are selected and stand here as well.
    QCOMPARE(rows(available()),
             (QStringList{u"6 0 target position #c0c0c0 1 0"_s,
                          u"6 131 actual velocity #c0c0c0 1 0"_s, u"6 230 gamma #c0c0c0 200 1"_s}));
    QCOMPARE(available()->rowHeight(2), 20);
}

void tst_DChartSelector::typeSixIsHidden()
{
    m_traces.push_back(TraceCommand(1, 0, 6, 6, u"maximum current"_s));
    open();
    QCOMPARE(available()->rowCount(), 3); // since a line of command 6 is selected
    m_lines.clear();
    open();
    QCOMPARE(rows(available()).last(), u"6 6 maximum current #c0c0c0 1 0"_s);
    m_lines = {ChartLine(1, 0, 10, 1, u"global parameter"_s, Qt::blue)};
    m_traces.push_back(TraceCommand(1, 0, 6, 10, u"type 10"_s));
    open();
    QCOMPARE(available()->rowCount(), 4);
    QCOMPARE(rows(available()).last(), u"6 6 maximum current #c0c0c0 1 0"_s);
}

void tst_DChartSelector::moveToTheRight_data()
{
    QTest::addColumn<int>("column");
    for (const int column : {0, 1, 2}) {
        QTest::addRow("column %d", column) << column;
    }
}

void tst_DChartSelector::moveToTheRight()
{
    QFETCH(int, column);
    clickCell(available(), 1, column);
    QCOMPARE(rows(available()),
             (QStringList{u"6 0 target position #c0c0c0 1 0"_s, u"6 230 gamma #c0c0c0 200 1"_s}));
    QCOMPARE(rows(selected()).mid(1),
             (QStringList{u"6 230 gamma #ff0000 200 2"_s, u"6 131 actual velocity #c0c0c0 1 0"_s}));
    QCOMPARE(selected()->rowHeight(2), 20);
}

void tst_DChartSelector::moveToTheLeft_data()
{
    moveToTheRight_data();
}

void tst_DChartSelector::moveToTheLeft()
{
    QFETCH(int, column);
    clickCell(selected(), 0, column);
    QCOMPARE(rows(selected()), QStringList{u"6 230 gamma #ff0000 200 2"_s});
    QCOMPARE(rows(available()).mid(2),
             (QStringList{u"6 230 gamma #c0c0c0 200 1"_s, u"6 131 actual [pps] #0000ff 1 0"_s}));
    QCOMPARE(available()->rowHeight(3), 20);
}

void tst_DChartSelector::movedRowGoesToTheEnd()
{
    while (selected()->rowCount() > 0) {
        clickCell(selected(), 0, 2);
    }
    for (int i = 0; i < 5; ++i) {
        clickCell(available(), 0, 2);
    }
    QCOMPARE(available()->rowCount(), 0);
    QCOMPARE(rows(selected()),
             (QStringList{u"6 0 target position #c0c0c0 1 0"_s,
                          u"6 131 actual velocity #c0c0c0 1 0"_s, u"6 230 gamma #c0c0c0 200 1"_s,
                          u"6 131 actual [pps] #0000ff 1 0"_s, u"6 230 gamma #ff0000 200 2"_s}));
}

void tst_DChartSelector::movedRowKeepsItsColor()
{
    const QString row = u"6 0 target position #112233 1 0"_s;
    const ModalAnswer<QColorDialog> answer(
        [](QColorDialog *dialog) { enterColor(dialog, u"#112233"_s); });
    clickCell(available(), 0, 3);
    QVERIFY(answer.given());
    QCOMPARE(rows(available()).first(), row);
    clickCell(available(), 0, 0);
    QCOMPARE(rows(selected()).last(), row);
    clickCell(selected(), 2, 0);
    QCOMPARE(rows(available()).last(), row);
}

void tst_DChartSelector::sameValueTwice()
{
    m_traces.push_back(m_traces.front());
    open();
    clickCell(available(), 3, 2);
    clickCell(available(), 0, 2);
    QCOMPARE(
        rows(selected()).mid(2),
        (QStringList{u"6 0 target position #c0c0c0 1 0"_s, u"6 0 target position #c0c0c0 1 0"_s}));
}

void tst_DChartSelector::chooseColor_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<int>("column");
    for (const char *name : {"twAvailable", "twSelected"}) {
        for (const int column : {3, 4, 5}) {
            QTest::addRow("%s, column %d", name, column) << QByteArray(name) << column;
        }
    }
}

void tst_DChartSelector::chooseColor()
{
    QFETCH(QByteArray, name);
    QFETCH(int, column);
    QTableWidget *tableWidget = table(m_dialog.get(), name);
    const QStringList before = rows(selected()) + rows(available());
    const QString other = rows(tableWidget).first();
    const ModalAnswer<QColorDialog> answer([&](QColorDialog *dialog) {
        QCOMPARE(dialog->parentWidget(), m_dialog.get());
        enterColor(dialog, u"#445566"_s);
    });
    clickCell(tableWidget, 1, column);
    QVERIFY(answer.given());
    QCOMPARE(tableWidget->item(1, 3)->background().color(), QColor(u"#445566"_s));
    QCOMPARE(tableWidget->item(1, 3)->text(), QString());
    QVERIFY(tableWidget->selectedItems().isEmpty());
    QCOMPARE(rows(tableWidget).first(), other);
    QCOMPARE((rows(selected()) + rows(available())).size(), before.size());
}

void tst_DChartSelector::cancelColor_data()
{
    QTest::addColumn<bool>("byKey");
    QTest::newRow("button") << false;
    QTest::newRow("escape") << true;
}

void tst_DChartSelector::cancelColor()
{
    QFETCH(bool, byKey);
    const QStringList before = rows(selected());
    const ModalAnswer<QColorDialog> answer([byKey](QColorDialog *dialog) {
        typeColor(dialog, u"#445566"_s);
        if (byKey) {
            QTest::keyClick(dialog, Qt::Key_Escape);
        } else {
            press(dialog, QDialogButtonBox::Cancel);
        }
    });
    clickCell(selected(), 1, 3);
    QVERIFY(answer.given());
    QCOMPARE(rows(selected()), before);
    QVERIFY(selected()->selectedItems().isEmpty());
}

void tst_DChartSelector::colorDialogBeginsWithTheRowsColor()
{
    QColor shown;
    const ModalAnswer<QColorDialog> answer(
        [&shown](QColorDialog *dialog) { shown = dialog->currentColor(); });
    clickCell(selected(), 1, 3);
    QVERIFY(answer.given());
    QCOMPARE(shown, QColor(Qt::red));
}

void tst_DChartSelector::colorOfABackgroundThatIsNone_data()
{
    QTest::addColumn<QVariant>("background");
    QTest::newRow("none") << QVariant();
    QTest::newRow("gradient") << QVariant(QBrush(QLinearGradient(0, 0, 1, 1)));
    QTest::newRow("text") << QVariant(u"no colour"_s);
    QTest::newRow("invalid colour") << QVariant(QBrush(QColor()));
}

void tst_DChartSelector::colorOfABackgroundThatIsNone()
{
    QFETCH(QVariant, background);
    selected()->item(0, 3)->setData(Qt::BackgroundRole, background);
    const QList<ChartLine *> lines = DChartSelector::chartLines(*selected());
    QVERIFY(!lines.first()->color().isValid());
    QCOMPARE(lines.last()->color(), QColor(Qt::red));
    qDeleteAll(lines);
    // A colour can be chosen nevertheless.
    const ModalAnswer<QColorDialog> answer(
        [](QColorDialog *dialog) { enterColor(dialog, u"#010203"_s); });
    clickCell(selected(), 0, 3);
    QVERIFY(answer.given());
    QCOMPARE(selected()->item(0, 3)->background().color(), QColor(1, 2, 3));
}

void tst_DChartSelector::chartLinesOfATable()
{
    const QList<ChartLine *> lines = DChartSelector::chartLines(*selected());
    QCOMPARE(lines.size(), 2);
    QVERIFY(lines.first()->hasKey(1, 0, 6, 131));
    QVERIFY(lines.last()->hasKey(200, 2, 6, 230));
    QCOMPARE(lines.last()->name(), u"gamma"_s);
    QCOMPARE(lines.last()->color(), QColor(Qt::red));
    QVERIFY(lines.last() != &m_lines.back());
    qDeleteAll(lines);
}

void tst_DChartSelector::chartLinesOfBadCells_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("number");
    QTest::newRow("empty") << QString() << 0;
    QTest::newRow("no number") << u"six"_s << 0;
    QTest::newRow("hexadecimal") << u"0x10"_s << 0;
    QTest::newRow("leading zero") << u"010"_s << 10;
    QTest::newRow("more than 8 bits") << u"300"_s << 44;
    QTest::newRow("negative") << u"-1"_s << 255;
    QTest::newRow("more than 32 bits") << u"4294967297"_s << 0;
}

void tst_DChartSelector::chartLinesOfBadCells()
{
    QFETCH(QString, text);
    QFETCH(int, number);
    for (const int column : {0, 1, 4, 5}) {
        selected()->item(0, column)->setText(text);
    }
    delete selected()->takeItem(1, 0);
    delete selected()->takeItem(1, 2);
    delete selected()->takeItem(1, 3);
    const QList<ChartLine *> lines = DChartSelector::chartLines(*selected());
    const auto byte = static_cast<quint8>(number);
    QVERIFY(lines.first()->hasKey(byte, byte, byte, byte));
    QVERIFY(lines.last()->hasKey(200, 2, 0, 230));
    QCOMPARE(lines.last()->name(), QString());
    QVERIFY(!lines.last()->color().isValid());
    qDeleteAll(lines);
}

void tst_DChartSelector::nothingIsApplied()
{
    m_lines.front().addValue(5);
    clickCell(selected(), 0, 0);
    press(m_dialog.get(), QDialogButtonBox::Ok);
    QCOMPARE(m_area->chartLines(), (QList<ChartLine *>{&m_lines.front(), &m_lines.back()}));
    QCOMPARE(m_lines.front().samples(), QList<double>{5});
    QCOMPARE(m_lines.front().color(), QColor(Qt::blue));
}

void tst_DChartSelector::emptyLists()
{
    m_lines.clear();
    m_traces.clear();
    open();
    QCOMPARE(selected()->rowCount(), 0);
    QCOMPARE(available()->rowCount(), 0);
    QVERIFY(DChartSelector::chartLines(*selected()).isEmpty());
}

QTEST_MAIN(tst_DChartSelector)
#include "tst_DChartSelector.moc"
