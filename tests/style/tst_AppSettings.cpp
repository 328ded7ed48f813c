#include "style/AppSettings.h"
#include "support/DebugLog.h"
#include "support/TestCase.h"

#include <QApplication>
#include <QDockWidget>
#include <QFile>
#include <QMainWindow>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_AppSettings : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void fileIsTheUsersIniOfTheOrganisation();
    void saveStoresSizeAndPositionUnderTheSuffix();
    void saveOfAPlainWidgetHasNoWindowState();
    void saveOfAWindowInAnUnusualStateKeepsTheLastGeometry_data();
    void saveOfAWindowInAnUnusualStateKeepsTheLastGeometry();
    void restoreWithAnEmptyFileCentresOnThePrimaryScreen_data();
    void restoreWithAnEmptyFileCentresOnThePrimaryScreen();
    void restoreAppliesWhatIsStored();
    void restoreOfAMainWindowTakesItsState();
    void restoreOfAPlainWidgetSkipsTheState();
    void groupIsLeftAgain();
    void parameterMapSurvives();
    void missingParameterMapIsEmpty();

private:
    QTemporaryDir m_folder;
};

void tst_AppSettings::initTestCase()
{
    QVERIFY(m_folder.isValid());
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_folder.path());
}

void tst_AppSettings::init()
{
    TestCase::init();
    AppSettings().clear();
}

void tst_AppSettings::fileIsTheUsersIniOfTheOrganisation()
{
    AppSettings settings;
    QCOMPARE(settings.format(), QSettings::IniFormat);
    QCOMPARE(settings.scope(), QSettings::UserScope);
    QCOMPARE(settings.organizationName(), u"MORAVINT Drive Works"_s);
    QCOMPARE(settings.applicationName(), qAppName());
    QCOMPARE(settings.fileName(),
             m_folder.filePath(u"MORAVINT Drive Works/"_s + qAppName() + u".ini"_s));
    QVERIFY(QCoreApplication::organizationName().isEmpty());
}

void tst_AppSettings::saveStoresSizeAndPositionUnderTheSuffix()
{
    QMainWindow window;
    window.resize(321, 234);
    window.move(17, 29);
    AppSettings settings;
    settings.saveWidgetGeometry(&window, u"Main"_s);

    QCOMPARE(settings.value("Mainwindow/SizeMain").toSize(), QSize(321, 234));
    QCOMPARE(settings.value("Mainwindow/PositionMain").toPoint(), QPoint(17, 29));
    QCOMPARE(settings.value("Mainwindow/WindowState").toByteArray(), window.saveState(0));
    QVERIFY2(QFile::exists(settings.fileName()), "it is written at once");
}

void tst_AppSettings::saveOfAPlainWidgetHasNoWindowState()
{
    QWidget widget;
    widget.resize(100, 50);
    AppSettings settings;
    settings.saveWidgetGeometry(&widget, QString());
    QCOMPARE(settings.allKeys(), QStringList({u"Mainwindow/Position"_s, u"Mainwindow/Size"_s}));
}

void tst_AppSettings::saveOfAWindowInAnUnusualStateKeepsTheLastGeometry_data()
{
    QTest::addColumn<Qt::WindowState>("state");
    QTest::newRow("maximised") << Qt::WindowMaximized;
    QTest::newRow("minimised") << Qt::WindowMinimized;
}

void tst_AppSettings::saveOfAWindowInAnUnusualStateKeepsTheLastGeometry()
{
    QFETCH(Qt::WindowState, state);
    QMainWindow window;
    window.resize(300, 200);
    window.move(10, 20);
    AppSettings settings;
    settings.saveWidgetGeometry(&window, u"X"_s);
    settings.remove(u"Mainwindow/WindowState"_s);

    window.setWindowState(state);
    if (state == Qt::WindowMaximized) {
        window.show(); // takes the screen's size
    } else {
        window.resize(640, 480);
    }
    QTRY_VERIFY(window.size() != QSize(300, 200));
    settings.saveWidgetGeometry(&window, u"X"_s);
    QCOMPARE(settings.value("Mainwindow/SizeX").toSize(), QSize(300, 200));
    QCOMPARE(settings.value("Mainwindow/PositionX").toPoint(), QPoint(10, 20));
    QVERIFY(settings.contains(u"Mainwindow/WindowState"_s));
}

void tst_AppSettings::restoreWithAnEmptyFileCentresOnThePrimaryScreen_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("even") << QSize(200, 100);
    QTest::newRow("odd") << QSize(201, 101);
    // A widget larger than the screen gets a negative position, cut towards zero.
    const QSize screen = QGuiApplication::primaryScreen()->geometry().size();
    QTest::newRow("larger than the screen") << screen + QSize(3, 5);
}

void tst_AppSettings::restoreWithAnEmptyFileCentresOnThePrimaryScreen()
{
    QFETCH(QSize, size);
    QWidget widget;
    widget.resize(size);
    AppSettings().restoreWidgetGeometry(&widget, u"None"_s);
    const QSize screen = QGuiApplication::primaryScreen()->geometry().size();
    QCOMPARE(widget.size(), size);
    QCOMPARE(widget.pos(),
             QPoint((screen.width() - size.width()) / 2, (screen.height() - size.height()) / 2));
}

void tst_AppSettings::restoreAppliesWhatIsStored()
{
    AppSettings settings;
    settings.setValue(u"Mainwindow/SizeA"_s, QSize(222, 111));
    settings.setValue(u"Mainwindow/PositionA"_s, QPoint(5, 7));
    QWidget widget;
    widget.resize(50, 50);
    settings.restoreWidgetGeometry(&widget, u"A"_s);
    QCOMPARE(widget.size(), QSize(222, 111));
    QCOMPARE(widget.pos(), QPoint(5, 7));
}

void tst_AppSettings::restoreOfAMainWindowTakesItsState()
{
    const auto fill = [](QMainWindow *window) {
        auto *dock = new QDockWidget(window);
        dock->setObjectName(u"dock"_s);
        window->addDockWidget(Qt::LeftDockWidgetArea, dock);
        return dock;
    };
    QMainWindow saved;
    QDockWidget *savedDock = fill(&saved);
    saved.addDockWidget(Qt::RightDockWidgetArea, savedDock);
    AppSettings settings;
    settings.saveWidgetGeometry(&saved, QString());

    QMainWindow restored;
    QDockWidget *restoredDock = fill(&restored);
    settings.restoreWidgetGeometry(&restored, QString());
    QCOMPARE(restored.dockWidgetArea(restoredDock), Qt::RightDockWidgetArea);
}

void tst_AppSettings::restoreOfAPlainWidgetSkipsTheState()
{
    AppSettings settings;
    settings.setValue(u"Mainwindow/WindowState"_s, QByteArray("not a state"));
    QWidget widget;
    widget.resize(60, 40);
    settings.restoreWidgetGeometry(&widget, QString());
    QCOMPARE(widget.size(), QSize(60, 40));
}

void tst_AppSettings::groupIsLeftAgain()
{
    QWidget widget;
    AppSettings settings;
    settings.saveWidgetGeometry(&widget, QString());
    QVERIFY(settings.group().isEmpty());
    settings.restoreWidgetGeometry(&widget, QString());
    QVERIFY(settings.group().isEmpty());
}

void tst_AppSettings::parameterMapSurvives()
{
    const QMap<QString, QVariant> map = {{u"speed"_s, 1000}, {u"unit"_s, u"µsteps"_s}};
    DebugLog log;
    AppSettings().writeParameterMap(map);
    QCOMPARE(log.lines().size(), 1);
    QVERIFY2(log.lines().constFirst().startsWith("Parameter QMap("_L1),
             qPrintable(log.lines().constFirst()));

    AppSettings settings;
    QVERIFY(settings.contains(u"Parameter Map"_s));
    QCOMPARE(settings.readParameterMap(), map);
}

void tst_AppSettings::missingParameterMapIsEmpty()
{
    QVERIFY(AppSettings().readParameterMap().isEmpty());
}

QTEST_MAIN(tst_AppSettings)
#include "tst_AppSettings.moc"
