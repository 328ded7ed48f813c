#include "app/MainWindow.h"
#include "app/Stepper.h"
#include "support/DebugLog.h"
#include "support/TestCase.h"

#include <QApplication>
#include <QMenuBar>
#include <QMessageBox>
#include <QMetaMethod>
#include <QStatusBar>
#include <QTest>
#include <QTimer>
#include <QToolBar>

using namespace Qt::StringLiterals;

class tst_MainWindow : public TestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void slotsInTheOrderOfTheMetaObject();
    void windowHasItsTitleAndStyle();
    void stepperIsTheCentralWidget();
    void menus_data();
    void menus();
    void menuBarHasThreeMenusAndNothingElse();
    void graphEntriesToggle_data();
    void graphEntriesToggle();
    void aboutBoxNamesModelAndVersion();
    void exitClosesTheWindow();
    void closeBoxClosesTheWindow();
    void fileEntriesDoNothingVisibleWithoutAModule_data();
    void fileEntriesDoNothingVisibleWithoutAModule();

private:
    std::unique_ptr<DebugLog> m_log;

    static QAction *entry(const MainWindow &window, const QString &menu, const QString &text);
};

void tst_MainWindow::init()
{
    TestCase::init();
    m_log = std::make_unique<DebugLog>(); // the window reports the ports of this machine
}

void tst_MainWindow::cleanup()
{
    m_log.reset();
}

/// The entry of that text, found as a user would: first the menu, then the entry.
QAction *tst_MainWindow::entry(const MainWindow &window, const QString &menu, const QString &text)
{
    for (const QAction *menuAction : window.menuBar()->actions()) {
        if (menuAction->text() != menu) {
            continue;
        }
        for (QAction *action : menuAction->menu()->actions()) {
            if (action->text() == text) {
                return action;
            }
        }
    }
    return nullptr;
}

void tst_MainWindow::slotsInTheOrderOfTheMetaObject()
{
    const QMetaObject &meta = MainWindow::staticMetaObject;
    QStringList signatures;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        signatures.append(QString::fromLatin1(meta.method(i).methodSignature()));
    }
    QCOMPARE(
        signatures,
        QStringList({u"exitProgram()"_s, u"showVersionInfo()"_s, u"velocityDrawerTriggered()"_s,
                     u"positionDrawerTriggered()"_s, u"torqueDrawerTriggered()"_s}));
}

void tst_MainWindow::windowHasItsTitleAndStyle()
{
    const MainWindow window;
    QCOMPARE(window.windowTitle(), u"ZDRM-7710/7711"_s);
    QCOMPARE(window.styleSheet(),
             u"QGroupBox{border: 1px solid gray; border-radius: 3px; margin-top: 0.5em;}"
             "QGroupBox::title{subcontrol-origin: margin; left: 10px; padding: 0 3px 0 3px;}"_s);
    QVERIFY(!window.parent());
}

void tst_MainWindow::stepperIsTheCentralWidget()
{
    const MainWindow window;
    QVERIFY(qobject_cast<Stepper *>(window.centralWidget()));
}

void tst_MainWindow::menus_data()
{
    QTest::addColumn<int>("menu");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QStringList>("entries"); // an empty text is a separator, "?" is checkable
    QTest::newRow("file") << 0 << u"&File"_s
                          << QStringList({u"Export settings to *.ini"_s,
                                          u"Import settings from *.ini"_s, QString(),
                                          u"Export settings to ZDRL"_s, QString(), u"Exit"_s});
    QTest::newRow("info") << 1 << u"&Info"_s
                          << QStringList({u"?Show velocity graph"_s, u"?Show position graph"_s,
                                          u"?Show torque graph"_s});
    QTest::newRow("help") << 2 << u"&Help"_s << QStringList({u"&About"_s});
}

void tst_MainWindow::menus()
{
    QFETCH(int, menu);
    QFETCH(QString, title);
    QFETCH(QStringList, entries);
    const MainWindow window;
    const QAction *menuAction = window.menuBar()->actions().at(menu);
    QCOMPARE(menuAction->text(), title);

    QStringList found;
    const auto actions = menuAction->menu()->actions();
    for (const QAction *action : actions) {
        found.append((action->isCheckable() ? u"?"_s : QString()) + action->text());
        QCOMPARE(action->isSeparator(), action->text().isEmpty());
        QVERIFY(action->isEnabled());
        QVERIFY(!action->isChecked());
        QVERIFY2(action->shortcut().isEmpty(), "there are no shortcuts but the mnemonics");
    }
    QCOMPARE(found, entries);
}

void tst_MainWindow::menuBarHasThreeMenusAndNothingElse()
{
    const MainWindow window;
    QCOMPARE(window.menuBar()->actions().size(), 3);
    QVERIFY(window.findChildren<QToolBar *>().isEmpty());
    QVERIFY(window.findChildren<QStatusBar *>().isEmpty());
}

void tst_MainWindow::graphEntriesToggle_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("chart");
    QTest::newRow("velocity") << u"Show velocity graph"_s << u"velocityDrawer"_s;
    QTest::newRow("position") << u"Show position graph"_s << u"positionDrawer"_s;
    QTest::newRow("torque") << u"Show torque graph"_s << u"torqueDrawer"_s;
}

void tst_MainWindow::graphEntriesToggle()
{
    QFETCH(QString, text);
    QFETCH(QString, chart);
    const QStringList charts{u"velocityDrawer"_s, u"positionDrawer"_s, u"torqueDrawer"_s};
    const MainWindow window;
    const auto shownCharts = [&] {
        QStringList shown = charts;
        shown.removeIf([&window](const QString &name) {
            return window.findChild<QWidget *>(name)->maximumHeight() == 0;
        });
        return shown;
    };
    QAction *action = entry(window, u"&Info"_s, text);
    QVERIFY(action);
    QCOMPARE(shownCharts(), QStringList());
    action->trigger();
    QVERIFY(action->isChecked());
    QCOMPARE(shownCharts(), QStringList{chart});
    action->trigger();
    QVERIFY(!action->isChecked());
    QCOMPARE(shownCharts(), QStringList());
}

void tst_MainWindow::aboutBoxNamesModelAndVersion()
{
    const MainWindow window;
    QAction *about = entry(window, u"&Help"_s, u"&About"_s);
    QVERIFY(about);
    QString title;
    QString text;
    bool hasParent = true;
    QTimer::singleShot(0, &window, [&] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (box) {
            title = box->windowTitle();
            text = box->text();
            hasParent = box->parent() != nullptr;
            box->accept();
        }
    });
    about->trigger();
    QCOMPARE(title, u"About this Version..."_s);
    QCOMPARE(text, u"ZDRM-7710\nVersion:  \t1.0\n"_s);
    QVERIFY2(!hasParent, "the box centres on the screen, not on the window");
}

void tst_MainWindow::exitClosesTheWindow()
{
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTimer::singleShot(0, entry(window, u"&File"_s, u"Exit"_s), &QAction::trigger);
    QTimer::singleShot(30000, &window, [] { QCoreApplication::exit(1); });
    QCOMPARE(QApplication::exec(), 0); // it was the last window
    QVERIFY(!window.isVisible());
}

void tst_MainWindow::closeBoxClosesTheWindow()
{
    MainWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTimer::singleShot(0, &window, &QWidget::close);
    QTimer::singleShot(30000, &window, [] { QCoreApplication::exit(1); });
    QCOMPARE(QApplication::exec(), 0);
    QVERIFY(!window.isVisible());
}

void tst_MainWindow::fileEntriesDoNothingVisibleWithoutAModule_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("export") << u"Export settings to *.ini"_s;
    QTest::newRow("import") << u"Import settings from *.ini"_s;
    QTest::newRow("script") << u"Export settings to ZDRL"_s;
}

void tst_MainWindow::fileEntriesDoNothingVisibleWithoutAModule()
{
    QFETCH(QString, text);
    MainWindow window;
    window.show();
    QAction *action = entry(window, u"&File"_s, text);
    QVERIFY(action->isEnabled());
    bool sawDialog = false;
    QTimer::singleShot(0, &window, [&] {
        if (QWidget *dialog = QApplication::activeModalWidget()) {
            sawDialog = true;
            dialog->close();
        }
    });
    action->trigger();
    QCoreApplication::processEvents();
    QVERIFY(!sawDialog);
}

QTEST_MAIN(tst_MainWindow)
#include "tst_MainWindow.moc"
