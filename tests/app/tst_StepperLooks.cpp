#include "app/MainWindow.h"
#include "support/DebugLog.h"
#include "support/TestCase.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QStyleOptionComboBox>
#include <QTabWidget>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

/// The window as a user sees it: whether all of it can be seen and read, and reached by keyboard.
/// Runs at other scales and languages, too, by its environment.
class tst_StepperLooks : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanupTestCase();
    void scaleIsThatOfTheEnvironment();
    void nothingIsCut_data();
    void nothingIsCut();
    void chartsFitOnALargeScreen();
    void tabKeyFollowsTheEye_data();
    void tabKeyFollowsTheEye();

private:
    template <typename Widget>
    Widget *child(const QString &name) const;
    QTabWidget *tabs() const { return child<QTabWidget>(u"tabWidget"_s); }
    /// Whether a chart above @p widget has no height.
    static bool isInHiddenChart(const QWidget *widget);
    /// What the user sees of the window: no parts of a control, and nothing of a hidden chart.
    QWidgetList visibleWidgets() const;
    QStringList cutWidgets() const;
    QStringList unreadableTexts() const;
    /// Shows or hides all charts by the menu.
    void toggleCharts();
    /// Goes round by the Tab key: the tabs, the page's @p panels, the lamps, then the @p charts.
    void compareTabOrder(const QStringList &panels, const QStringList &charts);
    /// The panel that a control belongs to: what stands on the page, or beside the tabs.
    QString panelOf(const QWidget *control) const;

    std::unique_ptr<DebugLog> m_log;
    std::unique_ptr<MainWindow> m_window;
};

namespace {

constexpr const char *Charts[] = {"velocityDrawer", "positionDrawer", "torqueDrawer"};

/// Width that @p text takes on @p widget, without the marks of mnemonics.
int textWidth(const QWidget *widget, const QString &text)
{
    return widget->fontMetrics().size(Qt::TextShowMnemonic, text).width();
}

QString described(const QWidget *widget)
{
    const QWidget *parent = widget->parentWidget();
    return u"%1/%2 %3x%4"_s.arg(parent ? parent->objectName() : QString(), widget->objectName())
        .arg(widget->width())
        .arg(widget->height());
}

bool hasRoomForItems(const QComboBox *box)
{
    QStyleOptionComboBox option;
    option.initFrom(box);
    const int room =
        box->style()
            ->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, box)
            .width();
    for (int index = 0; index < box->count(); ++index) {
        if (textWidth(box, box->itemText(index)) > room) {
            return false;
        }
    }
    return true;
}

bool hasRoomForText(const QWidget *widget)
{
    if (const auto *label = qobject_cast<const QLabel *>(widget); label && label->wordWrap()) {
        const QStringList words = label->text().split(u' ');
        return label->height() >= label->heightForWidth(label->width())
            && std::all_of(words.cbegin(), words.cend(), [label](const QString &word) {
                   return label->width() >= textWidth(label, word);
               });
    }
    if (const auto *label = qobject_cast<const QLabel *>(widget)) {
        return label->width() >= label->sizeHint().width()
            && label->height() >= label->fontMetrics().height();
    }
    if (qobject_cast<const QCheckBox *>(widget) || qobject_cast<const QRadioButton *>(widget)) {
        return widget->width() >= widget->sizeHint().width()
            && widget->height() >= widget->fontMetrics().height();
    }
    if (const auto *button = qobject_cast<const QPushButton *>(widget)) {
        return button->width() >= textWidth(button, button->text())
            && button->height() >= button->fontMetrics().height();
    }
    if (const auto *box = qobject_cast<const QComboBox *>(widget)) {
        return hasRoomForItems(box);
    }
    if (const auto *box = qobject_cast<const QSpinBox *>(widget)) {
        const auto *field = box->findChild<QLineEdit *>();
        return field->width() >= textWidth(field, field->text())
            && field->height() >= field->fontMetrics().height();
    }
    if (const auto *box = qobject_cast<const QGroupBox *>(widget)) {
        constexpr int Indent = 10 + 2 * 3; // of the title, by the window's style sheet
        return box->width() >= textWidth(box, box->title()) + Indent;
    }
    return true;
}

} // namespace

void tst_StepperLooks::initTestCase()
{
    m_log = std::make_unique<DebugLog>(); // the window reports the ports of this machine
    m_window = std::make_unique<MainWindow>();
    // As with a module.
    for (int index = 0; index < tabs()->count(); ++index) {
        tabs()->setTabEnabled(index, true);
    }
    child<QWidget>(u"wStates"_s)->setEnabled(true);
    child<QWidget>(u"wTraceController"_s)->setEnabled(true);
    for (const char *name : Charts) {
        child<QWidget>(QLatin1String(name))->setEnabled(true);
    }
    m_window->resize(1000, 500);
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void tst_StepperLooks::init()
{
    TestCase::init();
}

void tst_StepperLooks::cleanupTestCase()
{
    m_window.reset();
    m_log.reset();
}

template <typename Widget>
Widget *tst_StepperLooks::child(const QString &name) const
{
    auto *widget = m_window->findChild<Widget *>(name);
    if (!widget) {
        qFatal("no %s", qPrintable(name));
    }
    return widget;
}

bool tst_StepperLooks::isInHiddenChart(const QWidget *widget)
{
    for (; widget; widget = widget->parentWidget()) {
        if (widget->objectName().endsWith("Drawer"_L1) && widget->maximumHeight() == 0) {
            return true;
        }
    }
    return false;
}

QWidgetList tst_StepperLooks::visibleWidgets() const
{
    QWidgetList widgets;
    for (QWidget *widget : m_window->centralWidget()->findChildren<QWidget *>()) {
        if (widget->isVisible() && !widget->objectName().isEmpty()
            && !widget->objectName().startsWith("qt_"_L1) && !isInHiddenChart(widget)) {
            widgets.append(widget);
        }
    }
    return widgets;
}

QStringList tst_StepperLooks::cutWidgets() const
{
    QStringList cut;
    for (const QWidget *widget : visibleWidgets()) {
        if (!widget->parentWidget()->rect().contains(widget->geometry())) {
            cut.append(described(widget));
        }
    }
    return cut;
}

QStringList tst_StepperLooks::unreadableTexts() const
{
    QStringList unreadable;
    for (const QWidget *widget : visibleWidgets()) {
        if (!hasRoomForText(widget)) {
            unreadable.append(described(widget));
        }
    }
    return unreadable;
}

/// A scale or language that the environment asked for in vain would make the run a repetition.
void tst_StepperLooks::scaleIsThatOfTheEnvironment()
{
    const int scale = qMax(1, qEnvironmentVariableIntValue("QT_SCALE_FACTOR"));
    QCOMPARE(m_window->devicePixelRatio(), qreal(scale));
}

void tst_StepperLooks::nothingIsCut_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("tab");
    for (const QSize size : {QSize(1000, 500), QSize(1366, 768), QSize(1600, 900)}) {
        for (int tab = 0; tab < tabs()->count(); ++tab) {
            QTest::addRow("%dx%d %s", size.width(), size.height(), qPrintable(tabs()->tabText(tab)))
                << size << tab;
        }
    }
}

void tst_StepperLooks::nothingIsCut()
{
    QFETCH(QSize, size);
    QFETCH(int, tab);
    tabs()->setCurrentIndex(tab);
    m_window->resize(size);
    QTRY_COMPARE(m_window->size(), size); // it can be that small
    QCoreApplication::processEvents();
    QCOMPARE(m_window->size(), size);
    QCOMPARE(cutWidgets().join(u'\n'), QString());
    QCOMPARE(unreadableTexts().join(u'\n'), QString());
    // All tabs can be seen without scrolling through them.
    const QTabBar *bar = tabs()->tabBar();
    QVERIFY(bar->rect().contains(bar->tabRect(bar->count() - 1)));
}

void tst_StepperLooks::toggleCharts()
{
    for (const QAction *menu : m_window->menuBar()->actions()) {
        for (QAction *entry : menu->menu()->actions()) {
            if (entry->isCheckable()) {
                entry->trigger();
            }
        }
    }
}

void tst_StepperLooks::chartsFitOnALargeScreen()
{
    tabs()->setCurrentIndex(1);
    m_window->resize(1600, 900);
    toggleCharts();
    for (const char *name : Charts) {
        QTRY_COMPARE_GT(child<QWidget>(QLatin1String(name))->height(), 50);
    }
    QCOMPARE(m_window->size(), QSize(1600, 900));
    QCOMPARE(cutWidgets().join(u'\n'), QString());
    QCOMPARE(unreadableTexts().join(u'\n'), QString());
    compareTabOrder({u"wJogVelocityControl"_s, u"wJogPositionControl"_s, u"wJogTorqueControl"_s,
                     u"cmbLoopMode"_s, u"btnInitEncoder2"_s},
                    {u"velocityDrawer"_s, u"positionDrawer"_s, u"torqueDrawer"_s});
    toggleCharts();
}

QString tst_StepperLooks::panelOf(const QWidget *control) const
{
    const QWidget *page = tabs()->currentWidget();
    for (; control->parentWidget(); control = control->parentWidget()) {
        if (control == tabs() || control->parentWidget() == page
            || control->parentWidget() == m_window->centralWidget()) {
            return control->objectName();
        }
    }
    return {};
}

void tst_StepperLooks::tabKeyFollowsTheEye_data()
{
    QTest::addColumn<int>("tab");
    QTest::addColumn<QStringList>("panels"); // from left to right, then down
    const auto row = [this](int tab, const QStringList &panels) {
        QTest::newRow(qPrintable(tabs()->tabText(tab))) << tab << panels;
    };
    row(0, {u"twConnections"_s, u"wTraceController"_s});
    row(1,
        {u"wJogVelocityControl"_s, u"wJogPositionControl"_s, u"wJogTorqueControl"_s,
         u"cmbLoopMode"_s, u"btnInitEncoder2"_s});
    row(2, {u"wModuleSettings"_s, u"wOpenLoopSettings"_s, u"wChopperSettings"_s});
    row(3, {u"wPositionMaintenanceSettings"_s, u"wScalerSettings"_s, u"wFieldWeakeningSettings"_s});
    row(4, {u"wEncoderSettings"_s, u"btnInitEncoder"_s});
    row(5, {u"wTorqueControl"_s});
    row(6, {u"wVelocityRampControl1"_s, u"wVelocityControl"_s, u"wCorrectionSettings1"_s});
    row(7, {u"wVelocityRampControl2"_s, u"wPositionControl"_s, u"wCorrectionSettings2"_s});
    row(8, {u"wDirectMode"_s});
}

void tst_StepperLooks::tabKeyFollowsTheEye()
{
    QFETCH(int, tab);
    QFETCH(QStringList, panels);
    tabs()->setCurrentIndex(tab);
    compareTabOrder(panels, {});
}

void tst_StepperLooks::compareTabOrder(const QStringList &panels, const QStringList &charts)
{
    tabs()->tabBar()->setFocus();
    QWidgetList reached;
    QStringList panelsReached;
    for (QWidget *at = QApplication::focusWidget(); at && !reached.contains(at);
         at = QApplication::focusWidget()) {
        reached.append(at);
        QVERIFY2(!isInHiddenChart(at), qPrintable(described(at)));
        if (panelsReached.isEmpty() || panelsReached.constLast() != panelOf(at)) {
            panelsReached.append(panelOf(at));
        }
        QTest::keyClick(at, Qt::Key_Tab);
    }
    QCOMPARE(panelsReached,
             QStringList(u"tabWidget"_s) + panels + QStringList(u"wStates"_s) + charts);
    // And every control is reached. Of a group of radio buttons it is one, and then the arrows.
    for (QWidget *widget : visibleWidgets()) {
        const auto *radio = qobject_cast<QRadioButton *>(widget);
        if (widget->isEnabled() && (widget->focusPolicy() & Qt::TabFocus) != 0
            && !(radio && radio->autoExclusive())) {
            QVERIFY2(reached.contains(widget) || reached.contains(widget->focusProxy()),
                     qPrintable(described(widget)));
        }
    }
}

QTEST_MAIN(tst_StepperLooks)
#include "tst_StepperLooks.moc"
