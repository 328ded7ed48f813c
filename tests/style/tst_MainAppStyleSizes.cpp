#include "style/AppSettings.h"
#include "style/MainAppStyleTest.h"
#include "support/DebugLog.h"

#include <QAction>
#include <QApplication>
#include <QFrame>
#include <QLayout>
#include <QSignalSpy>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

using namespace Qt::StringLiterals;

/// The strip of size buttons and what follows the size.
class tst_MainAppStyleSizes : public MainAppStyleTest
{
    Q_OBJECT

private slots:
    void stripHasFourButtons();
    void buttonShowsItsSize_data();
    void buttonShowsItsSize();
    void buttonsAreExactSquares();
    void firstStartChecksTheSecondButton();
    void choiceSurvivesARestart();
    void storedIdOutOfRangeClicksNothing_data();
    void storedIdOutOfRangeClicksNothing();
    void sizeButtonSetsTheRule_data();
    void sizeButtonSetsTheRule();
    void sizeRuleReplacesTheLast();
    void sizeRuleOfAnotherObjectIsReplaced();
    void slotWithoutASenderDoesNothing();
    void mainWindowGetsToolButtonRules();
    void buttonsAreNamedByTheirIcon();
    void buttonsKnownByNameKeepIt();
    void toolBarsFollowTheSize_data();
    void toolBarsFollowTheSize();
    void iconsAreTintedBeforeTheSignal();
};

namespace {

const QString SizeKey = u"Mainwindow/SizeButtonNr"_s;

void addSizeRows()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<int>("pixels");
    QTest::newRow("20 px") << 0 << 20;
    QTest::newRow("16 px") << 1 << 16;
    QTest::newRow("12 px") << 2 << 12;
    QTest::newRow("8 px") << 3 << 8;
}

} // namespace

void tst_MainAppStyleSizes::stripHasFourButtons()
{
    makeStyle();
    QCOMPARE(m_style->parentWidget(), m_window.get());
    auto *strip = m_style->findChild<QFrame *>(u"setFontSize"_s);
    QVERIFY(strip);
    QVERIFY(strip->styleSheet().startsWith(
        "QFrame {border-radius: 0px;border: 1px solid palette(midlight);  max-height: 25px}"_L1));
    QVERIFY(strip->styleSheet().contains("QFrame:disabled {border: 1px solid #003D91}"_L1));
    QCOMPARE(strip->layout()->spacing(), 0);
    QCOMPARE(strip->layout()->contentsMargins(), QMargins());
    const auto buttons = strip->findChildren<QToolButton *>(u"sizeBtn"_s);
    QCOMPARE(buttons.size(), 4);
    for (int id = 0; id < 4; ++id) {
        QCOMPARE(buttons.at(id), sizeButton(id));
        QCOMPARE(strip->layout()->itemAt(id)->widget(), buttons.at(id));
    }
}

void tst_MainAppStyleSizes::buttonShowsItsSize_data()
{
    addSizeRows();
}

void tst_MainAppStyleSizes::buttonShowsItsSize()
{
    QFETCH(int, id);
    QFETCH(int, pixels);
    makeStyle();
    QToolButton *button = sizeButton(id);
    QCOMPARE(button->text(), u"A"_s);
    QVERIFY(button->isCheckable());
    QCOMPARE(button->styleSheet(), sizeRules().at(id));
    button->ensurePolished();
    QCOMPARE(button->font().pixelSize(), pixels);
}

void tst_MainAppStyleSizes::buttonsAreExactSquares()
{
    makeStyle();
    m_window->setCentralWidget(m_style);
    m_window->show();
    for (int id = 0; id < 4; ++id) {
        QTRY_COMPARE(sizeButton(id)->size(), QSize(15, 15));
    }
}

void tst_MainAppStyleSizes::firstStartChecksTheSecondButton()
{
    makeStyle();
    for (int id = 0; id < 4; ++id) {
        QCOMPARE(sizeButton(id)->isChecked(), id == 1);
    }
    QCOMPARE(qApp->styleSheet(), sizeRules().at(1));
    QCOMPARE(AppSettings().value(SizeKey), QVariant(u"1"_s));
}

void tst_MainAppStyleSizes::choiceSurvivesARestart()
{
    makeStyle();
    click(3);
    QCOMPARE(AppSettings().value(SizeKey).toInt(), 3);
    delete m_style;
    makeStyle();
    QVERIFY(sizeButton(3)->isChecked());
    QCOMPARE(qApp->styleSheet(), sizeRules().at(3));
}

void tst_MainAppStyleSizes::storedIdOutOfRangeClicksNothing_data()
{
    QTest::addColumn<int>("id");
    QTest::newRow("no button's") << -1;
    QTest::newRow("too small") << -2;
    QTest::newRow("too large") << 4;
}

void tst_MainAppStyleSizes::storedIdOutOfRangeClicksNothing()
{
    QFETCH(int, id);
    AppSettings().setValue(SizeKey, id);
    makeStyle();
    for (int button = 0; button < 4; ++button) {
        QVERIFY(!sizeButton(button)->isChecked());
    }
    QCOMPARE(qApp->styleSheet(), QString());
    QCOMPARE(AppSettings().value(SizeKey).toInt(), id);
}

void tst_MainAppStyleSizes::sizeButtonSetsTheRule_data()
{
    addSizeRows();
}

void tst_MainAppStyleSizes::sizeButtonSetsTheRule()
{
    QFETCH(int, id);
    QFETCH(int, pixels);
    makeStyle();
    QSignalSpy changed(m_style, &MainAppStyle::fontSizeChanged);
    click(id);
    QCOMPARE(changed.size(), 1);
    QCOMPARE(changed.at(0).at(0).toString(), sizeRules().at(id));
    QCOMPARE(qApp->styleSheet(), sizeRules().at(id));
    QCOMPARE(AppSettings().value(SizeKey).toInt(), id);
    QVERIFY(sizeButton(id)->isChecked());
    QCOMPARE(m_bar->iconSize(), QSize(pixels, pixels));
    // All widgets that have no rule of their own follow.
    QWidget widget;
    widget.ensurePolished();
    QCOMPARE(widget.font().pixelSize(), pixels);
}

void tst_MainAppStyleSizes::sizeRuleReplacesTheLast()
{
    const QString own = u"QLabel {color: red}"_s;
    qApp->setStyleSheet(own);
    makeStyle();
    QCOMPARE(qApp->styleSheet(), own + sizeRules().at(1));
    click(0);
    QCOMPARE(qApp->styleSheet(), own + sizeRules().at(0));
    // What somebody appends stays; only the rule that was added goes.
    qApp->setStyleSheet(qApp->styleSheet() + u"QFrame {color: blue}"_s);
    click(2);
    QCOMPARE(qApp->styleSheet(), own + u"QFrame {color: blue}"_s + sizeRules().at(2));
    delete m_style;
    QCOMPARE(qApp->styleSheet(), own);
    qApp->setStyleSheet(QString());
}

// The last rule lives as long as the process, beyond the object that has added it.
void tst_MainAppStyleSizes::sizeRuleOfAnotherObjectIsReplaced()
{
    makeStyle();
    click(3);
    {
        QMainWindow other;
        const MainAppStyle second(&other); // takes the size that was chosen last
        QCOMPARE(qApp->styleSheet(), sizeRules().at(3));
    }
    click(0);
    QCOMPARE(qApp->styleSheet(), sizeRules().at(0));
}

void tst_MainAppStyleSizes::slotWithoutASenderDoesNothing()
{
    makeStyle();
    click(2);
    QSignalSpy changed(m_style, &MainAppStyle::fontSizeChanged);
    m_style->setFontSizeStyle();
    QCOMPARE(changed.size(), 0);
    QCOMPARE(qApp->styleSheet(), sizeRules().at(2));
}

void tst_MainAppStyleSizes::mainWindowGetsToolButtonRules()
{
    makeStyle();
    const QString sheet = m_window->styleSheet().simplified();
    for (
        const QString &rule : {
            u"QToolButton:checked {border: 2px solid #c7d441}"_s,
            u"QToolButton:pressed {border: 2px solid #001C42; background: rgba(255,255,255, 115)}"_s,
            u"QToolButton:disabled {border: 2px solid #003D91}"_s,
            u"QToolButton:hover:!pressed {border: 2px solid palette(text)}"_s,
            u"QToolButton#qt_toolbar_ext_button {border: 2px solid"_s,
            u"min-width: 17px; max-width: 17px; min-height: 17px; max-height: 17px}"_s,
        }) {
        QVERIFY2(sheet.contains(rule), qPrintable(rule));
    }
}

void tst_MainAppStyleSizes::buttonsAreNamedByTheirIcon()
{
    auto *elsewhere = new QToolButton(m_window.get());
    makeStyle();
    QCOMPARE(m_bar->widgetForAction(m_iconAction)->objectName(), u"iconBtn"_s);
    QCOMPARE(m_bar->widgetForAction(m_textAction)->objectName(), u"noIconBtn"_s);
    QCOMPARE(elsewhere->objectName(), u"noIconBtn"_s);

    m_textAction->setIcon(m_iconAction->icon());
    click(0);
    QCOMPARE(m_bar->widgetForAction(m_textAction)->objectName(), u"iconBtn"_s);
}

void tst_MainAppStyleSizes::buttonsKnownByNameKeepIt()
{
    makeStyle();
    QVERIFY(m_bar->findChild<QToolButton *>(u"qt_toolbar_ext_button"_s));
    QCOMPARE(m_style->findChildren<QToolButton *>(u"sizeBtn"_s).size(), 4);
}

void tst_MainAppStyleSizes::toolBarsFollowTheSize_data()
{
    QTest::addColumn<bool>("movable");
    QTest::addColumn<Qt::Orientation>("orientation");
    QTest::addColumn<QString>("textRule");
    QTest::newRow("fixed, lying") << false << Qt::Horizontal << u"QToolButton{min-height: %1px}"_s;
    QTest::newRow("fixed, upright")
        << false << Qt::Vertical << u"QToolButton{min-height: %1px;min-width: %2px}"_s;
    QTest::newRow("movable, lying")
        << true << Qt::Horizontal << u"QToolButton#noIconBtn{min-height: %1px;}"_s;
    QTest::newRow("movable, upright")
        << true << Qt::Vertical << u"QToolButton{min-height: %1px; min-width: %2px}"_s;
}

void tst_MainAppStyleSizes::toolBarsFollowTheSize()
{
    QFETCH(bool, movable);
    QFETCH(Qt::Orientation, orientation);
    QFETCH(QString, textRule);
    m_bar->setMovable(movable);
    m_bar->setOrientation(orientation);
    makeStyle();
    for (int id = 0; id < 4; ++id) {
        click(id);
        QFont font = m_bar->font();
        font.setPixelSize(m_bar->iconSize().height());
        const QFontMetrics metrics(font);
        const QString rules =
            u"QToolButton#iconBtn{min-height: %1px; min-width: %2px}"_s + textRule;
        QCOMPARE(m_bar->styleSheet(),
                 rules.arg(metrics.height()).arg(metrics.horizontalAdvance(u'M')));
    }
}

void tst_MainAppStyleSizes::iconsAreTintedBeforeTheSignal()
{
    makeStyle();
    QPalette palette;
    palette.setColor(QPalette::Text, Qt::green);
    QApplication::setPalette(palette);
    QColor seen;
    QStringList lines;
    {
        DebugLog log;
        connect(m_style, &MainAppStyle::fontSizeChanged, this, [this, &seen, &lines, &log] {
            seen = m_iconAction->icon().pixmap(20, 20).toImage().pixelColor(10, 10);
            lines = log.lines();
        });
        click(0);
    }
    disconnect(m_style, &MainAppStyle::fontSizeChanged, this, nullptr);
    QApplication::setPalette(QPalette());
    QCOMPARE(seen, QColor(Qt::green));
    QCOMPARE(lines.size(), 3);
    QVERIFY(lines.constFirst().startsWith("setIconsToTextColor "_L1));
}

QTEST_MAIN(tst_MainAppStyleSizes)
#include "tst_MainAppStyleSizes.moc"
