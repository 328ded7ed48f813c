#include "app/ControlWalk.h"
#include "app/DEncoderInitialization.h"
#include "app/MainWindow.h"
#include "charts/DChartSelector.h"
#include "charts/DrawerArea.h"
#include "support/DebugLog.h"
#include "support/TestCase.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QKeySequence>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QRadioButton>
#include <QTabWidget>
#include <QTest>

#include <algorithm>
#include <memory>

using namespace Qt::StringLiterals;

/// What a user without a mouse or without a screen needs, looked up in every page of the window and
/// in the dialogs: each control has a name, no letter chooses two things, Tab follows the eye.
class tst_Accessibility : public TestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void everyControlHasAName_data();
    void everyControlHasAName();
    void namesOfAGroupDiffer_data();
    void namesOfAGroupDiffer();
    void buddiesAreControls_data();
    void buddiesAreControls();
    void mnemonicsDoNotClash_data();
    void mnemonicsDoNotClash();
    void mnemonicsOfMenusDoNotClash();
    void tabFollowsTheEye_data();
    void tabFollowsTheEye();
    void iconsAreReadable_data();
    void iconsAreReadable();

private:
    /// A row for each page of the window, with charts and without, and for each dialog.
    static void addPlaces();
    /// Shows what the row names and returns the window.
    QWidget *showPlace();

    std::unique_ptr<DebugLog> m_log;
    std::unique_ptr<QWidget> m_window;
    std::unique_ptr<DrawerArea> m_area;
};

namespace {

constexpr int ModuleTabs = 9;
constexpr int ConnectionTabs = 3;

/// The mnemonics of @p texts, sorted.
QStringList mnemonicsOf(const QStringList &texts)
{
    QStringList mnemonics;
    for (const QString &text : texts) {
        const QKeySequence key = QKeySequence::mnemonic(text);
        if (!key.isEmpty()) {
            mnemonics.append(key.toString(QKeySequence::PortableText));
        }
    }
    mnemonics.sort();
    return mnemonics;
}

bool hasDoubles(const QStringList &sorted)
{
    return std::adjacent_find(sorted.cbegin(), sorted.cend()) != sorted.cend();
}

QRect placeOf(const QWidget *widget)
{
    return QRect(widget->mapTo(widget->window(), QPoint()), widget->size());
}

/// Reading goes to the right or down; up only at the start of a further column, to the left only at
/// the start of a further row.
bool followsTheEye(const QRect &from, const QRect &to)
{
    const bool isAbove = to.bottom() <= from.top();
    const bool isToTheLeft = to.right() <= from.left();
    const bool isToTheRight = to.left() >= from.right();
    const bool isBelow = to.top() >= from.bottom();
    return !(isAbove && !isToTheRight) && !(isToTheLeft && !isBelow);
}

/// Of a group of radio buttons Tab visits the chosen one.
bool isOtherChoice(const QWidget *widget)
{
    const auto *choice = qobject_cast<const QRadioButton *>(widget);
    return choice && !choice->isChecked();
}

} // namespace

void tst_Accessibility::init()
{
    TestCase::init();
    m_log = std::make_unique<DebugLog>();
}

void tst_Accessibility::cleanup()
{
    m_window.reset();
    m_area.reset();
    m_log.reset();
}

void tst_Accessibility::addPlaces()
{
    QTest::addColumn<QString>("window");
    QTest::addColumn<int>("tab");
    QTest::addColumn<int>("connectionTab");
    QTest::addColumn<bool>("charts");
    for (int tab = 0; tab < ConnectionTabs; ++tab) {
        QTest::addRow("connection %d", tab) << u"main"_s << 0 << tab << false;
    }
    for (int tab = 1; tab < ModuleTabs; ++tab) {
        QTest::addRow("tab %d", tab) << u"main"_s << tab << 0 << false;
    }
    QTest::newRow("charts") << u"main"_s << 1 << 0 << true;
    QTest::newRow("encoder dialog") << u"encoder"_s << 0 << 0 << false;
    QTest::newRow("chart selector") << u"selector"_s << 0 << 0 << false;
}

QWidget *tst_Accessibility::showPlace()
{
    QFETCH(QString, window);
    QFETCH(int, tab);
    QFETCH(int, connectionTab);
    QFETCH(bool, charts);

    if (window == "encoder"_L1) {
        m_window = std::make_unique<DEncoderInitialization>(nullptr);
    } else if (window == "selector"_L1) {
        m_area = std::make_unique<DrawerArea>();
        m_window =
            std::make_unique<DChartSelector>(m_area.get(), m_area.get(), QList<TraceCommand *>());
    } else {
        m_window = std::make_unique<MainWindow>();
        m_window->resize(1366, 740);
        auto *tabs = m_window->findChild<QTabWidget *>(u"tabWidget"_s);
        for (int index = 0; index < tabs->count(); ++index) {
            tabs->setTabEnabled(index, true);
        }
        tabs->setCurrentIndex(tab);
        m_window->findChild<QTabWidget *>(u"twConnections"_s)->setCurrentIndex(connectionTab);
        m_window->findChild<QWidget *>(u"wTraceController"_s)->setEnabled(true);
        m_window->findChild<QWidget *>(u"wStates"_s)->setEnabled(true);
        for (const char *drawer : {"velocityDrawer", "positionDrawer", "torqueDrawer"}) {
            m_window->findChild<QWidget *>(QLatin1String(drawer))->setEnabled(true);
        }
        const auto actions = m_window->findChildren<QAction *>();
        for (QAction *action : actions) {
            if (charts && action->text().startsWith("Show "_L1)) {
                action->trigger();
            }
        }
    }
    m_window->show();
    if (!QTest::qWaitForWindowActive(m_window.get())) {
        qFatal("the window doesn't become active");
    }
    return m_window.get();
}

void tst_Accessibility::everyControlHasAName_data()
{
    addPlaces();
}

void tst_Accessibility::everyControlHasAName()
{
    const QWidget *window = showPlace();
    const auto controls = visibleControls(window);
    QVERIFY(!controls.isEmpty());
    QByteArrayList nameless;
    for (const QWidget *control : controls) {
        if (nameOf(window, control).isEmpty()) {
            nameless.append(describe(control));
        }
    }
    QVERIFY2(nameless.isEmpty(), nameless.join(", ").constData());
}

void tst_Accessibility::namesOfAGroupDiffer_data()
{
    addPlaces();
}

// "Target" alone is a good name only as long as there is one in the group.
void tst_Accessibility::namesOfAGroupDiffer()
{
    const QWidget *window = showPlace();
    QByteArrayList doubles;
    QHash<const QWidget *, QStringList> names;
    for (const QWidget *control : visibleControls(window)) {
        const QString name = nameOf(window, control);
        QStringList &known = names[groupOf(control)];
        if (known.contains(name)) {
            doubles.append(describe(control) + " \"" + name.toUtf8() + '"');
        }
        known.append(name);
    }
    QVERIFY2(doubles.isEmpty(), doubles.join(", ").constData());
}

void tst_Accessibility::buddiesAreControls_data()
{
    addPlaces();
}

// A label belongs to a control that is on display with it, and each control has one label at most.
void tst_Accessibility::buddiesAreControls()
{
    const QWidget *window = showPlace();
    QList<const QWidget *> labelled;
    const auto labels = window->findChildren<QLabel *>();
    for (const QLabel *label : labels) {
        const QWidget *buddy = label->buddy();
        if (!isSeen(label) || !buddy) {
            continue;
        }
        QVERIFY2(isControl(buddy) && isSeen(buddy), describe(label).constData());
        QVERIFY2(!labelled.contains(buddy), describe(label).constData());
        labelled.append(buddy);
    }
}

void tst_Accessibility::mnemonicsDoNotClash_data()
{
    addPlaces();
}

void tst_Accessibility::mnemonicsDoNotClash()
{
    const QWidget *window = showPlace();
    const QStringList mnemonics = mnemonicsOf(visibleTexts(window));
    QVERIFY2(!hasDoubles(mnemonics), qPrintable(mnemonics.join(u' ')));
    if (qobject_cast<const MainWindow *>(window)) {
        for (const QString &key : {u"Alt+F"_s, u"Alt+I"_s, u"Alt+H"_s}) {
            QVERIFY2(mnemonics.contains(key), qPrintable(key)); // they are seen at all
        }
    }
}

void tst_Accessibility::mnemonicsOfMenusDoNotClash()
{
    const MainWindow window;
    const auto menus = window.menuBar()->findChildren<QMenu *>();
    QCOMPARE(menus.size(), 3);
    for (const QMenu *menu : menus) {
        QStringList texts;
        for (const QAction *action : menu->actions()) {
            texts.append(action->text());
        }
        const QStringList mnemonics = mnemonicsOf(texts);
        QVERIFY2(!hasDoubles(mnemonics), qPrintable(mnemonics.join(u' ')));
    }
}

void tst_Accessibility::tabFollowsTheEye_data()
{
    addPlaces();
}

void tst_Accessibility::tabFollowsTheEye()
{
    QWidget *window = showPlace();
    const QList<QWidget *> order = tabOrder(window);

    QByteArrayList unreached;
    for (const QWidget *control : visibleControls(window)) {
        if (control->isEnabled() && (control->focusPolicy() & Qt::TabFocus)
            && !isOtherChoice(control) && !order.contains(control)) {
            unreached.append(describe(control));
        }
    }
    for (const QWidget *control : order) {
        QVERIFY2(isSeen(control), (describe(control) + " has the focus unseen").constData());
    }
    QVERIFY2(unreached.isEmpty(), ("not reached: " + unreached.join(", ")).constData());

    QByteArrayList jumps;
    for (qsizetype i = 1; i < order.size(); ++i) {
        if (!followsTheEye(placeOf(order.at(i - 1)), placeOf(order.at(i)))) {
            jumps.append(describe(order.at(i - 1)) + " to " + describe(order.at(i)));
        }
    }
    QVERIFY2(jumps.isEmpty(), jumps.join("; ").constData());
}

void tst_Accessibility::iconsAreReadable_data()
{
    QTest::addColumn<QColor>("text");
    QTest::newRow("light palette") << QColor(Qt::black);
    QTest::newRow("dark palette") << QColor(Qt::white);
}

// The window tints its icons at the start, whatever colour they were drawn in.
void tst_Accessibility::iconsAreReadable()
{
    QFETCH(QColor, text);
    QPalette palette;
    palette.setColor(QPalette::Text, text);
    QApplication::setPalette(palette);
    const MainWindow window;
    QApplication::setPalette(QPalette());

    int icons = 0;
    const auto buttons = window.findChildren<QAbstractButton *>();
    for (const QAbstractButton *button : buttons) {
        if (button->icon().isNull() || isPartOfAControl(button)) {
            continue;
        }
        const QImage image = button->icon().pixmap(64, 64).toImage();
        int inked = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (qAlpha(image.pixel(x, y)) == 255) {
                    ++inked;
                    QCOMPARE(image.pixelColor(x, y), text);
                }
            }
        }
        QVERIFY2(inked > 0, describe(button).constData());
        ++icons;
    }
    // Five arrows and squares on each of three panels, three buttons of the position panel.
    QCOMPARE(icons, 18);
}

QTEST_MAIN(tst_Accessibility)
#include "tst_Accessibility.moc"
