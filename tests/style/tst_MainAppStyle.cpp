#include "style/AppSettings.h"
#include "style/MainAppStyleTest.h"
#include "support/DebugLog.h"
#include "support/MetaMethods.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontInfo>
#include <QSignalSpy>
#include <QStyle>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

using namespace Qt::StringLiterals;

/// The look as a whole: how it comes and goes.
class tst_MainAppStyle : public MainAppStyleTest
{
    Q_OBJECT

private slots:
    void signalsAndSlots();
    void applyingSetsTheLook();
    void applyingTellsANewTextColour();
    void applyingTwiceTellsOnce();
    void applyingBringsTheFontSizeBack();
    void applyingWithoutAChosenSize();
    void widgetGetsTheBaseSheet();
    void fontIsOurs();
    void withoutOurFontsTheSystemsStays();
    void endPutsAllBack_data();
    void endPutsAllBack();
    void endIsToldBeforeTheStateGoesBack();
    void endOfTheWindowIsTheEndOfTheLook();
};

namespace {

const QString SizeKey = u"Mainwindow/SizeButtonNr"_s;

} // namespace

/// While it lives, the program has no pictures and no fonts of its own. Outside of any namespace,
/// as the functions that it calls are.
struct MissingResources
{
    MissingResources() { Q_CLEANUP_RESOURCE(resources); }
    ~MissingResources() { Q_INIT_RESOURCE(resources); }
};

void tst_MainAppStyle::signalsAndSlots()
{
    QCOMPARE(ownMethods(MainAppStyle::staticMetaObject, QMetaMethod::Signal),
             QStringList({u"textColorChanged(QColor colorNew, QColor colorOld)"_s,
                          u"fontSizeChanged(QString fontSize)"_s}));
    QCOMPARE(ownMethods(MainAppStyle::staticMetaObject, QMetaMethod::Slot),
             QStringList(u"setFontSizeStyle()"_s));
}

void tst_MainAppStyle::applyingSetsTheLook()
{
    makeStyle();
    m_style->applyStyle(m_window.get());
    QCOMPARE(QApplication::palette().color(QPalette::Window), QColor(u"#004DB9"_s));
    QCOMPARE(QApplication::palette().color(QPalette::Mid), QColor(u"#004DB9"_s));
    QCOMPARE(QApplication::palette().color(QPalette::Text), QColor(Qt::white));
    QVERIFY(qApp->styleSheet().contains("QToolBox::handle { image: url(\"qml/ZDR-Logo\"); }"_L1));
    // The sheet hides the name of the style below it.
    const QString sheet = qApp->styleSheet();
    qApp->setStyleSheet(QString());
    QCOMPARE(QApplication::style()->objectName(), u"fusion"_s);
    qApp->setStyleSheet(sheet);

    m_window->resize(200, 100);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    QCOMPARE(m_window->grab().toImage().pixelColor(190, 90), QColor(u"#004DB9"_s));
}

void tst_MainAppStyle::applyingTellsANewTextColour()
{
    makeStyle();
    const QColor old = QApplication::palette().color(QPalette::Text);
    QSignalSpy changed(m_style, &MainAppStyle::textColorChanged);
    m_style->applyStyle(m_window.get());
    QCOMPARE(changed.size(), 1);
    QCOMPARE(changed.at(0).at(0).value<QColor>(), QColor(Qt::white));
    QCOMPARE(changed.at(0).at(1).value<QColor>(), old);
}

void tst_MainAppStyle::applyingTwiceTellsOnce()
{
    makeStyle();
    QSignalSpy changed(m_style, &MainAppStyle::textColorChanged);
    m_style->applyStyle(m_window.get());
    m_style->applyStyle(m_window.get());
    QCOMPARE(changed.size(), 1);
}

void tst_MainAppStyle::applyingBringsTheFontSizeBack()
{
    makeStyle();
    click(0);
    QSignalSpy changed(m_style, &MainAppStyle::fontSizeChanged);
    m_style->applyStyle(m_window.get());
    QVERIFY(!qApp->styleSheet().contains(sizeRules().at(0)));
    QCOMPARE(changed.size(), 0); // not from within the call
    QTRY_COMPARE(changed.size(), 1);
    QCOMPARE(changed.at(0).at(0).toString(), sizeRules().at(0));
    QVERIFY(qApp->styleSheet().endsWith(sizeRules().at(0)));
    QVERIFY(sizeButton(0)->isChecked());
    m_window->ensurePolished();
    QCOMPARE(m_window->font().pixelSize(), 20);
}

void tst_MainAppStyle::applyingWithoutAChosenSize()
{
    AppSettings().setValue(SizeKey, 9);
    makeStyle();
    QSignalSpy changed(m_style, &MainAppStyle::fontSizeChanged);
    m_style->applyStyle(m_window.get());
    const QString sheet = qApp->styleSheet();
    QCoreApplication::processEvents();
    QCOMPARE(changed.size(), 0);
    QCOMPARE(qApp->styleSheet(), sheet);
}

void tst_MainAppStyle::widgetGetsTheBaseSheet()
{
    makeStyle();
    QWidget central(m_window.get());
    m_style->applyStyle(&central);
    QCOMPARE(central.styleSheet(),
             u" QWidget{border-width: 2px; border-radius: 9px} \n"
             " QToolBar, QMenuBar, QStatusBar {border-width: 1px; border-radius:0px} \n"
             " QWidget{font: small normal 12px 'ManualOrifice'} "_s);
}

void tst_MainAppStyle::fontIsOurs()
{
    makeStyle();
    m_style->applyStyle(m_window.get());
    QCOMPARE(QApplication::font().family(), u"ManualOrifice"_s);
    QCOMPARE(QFontInfo(QApplication::font()).family(), u"ManualOrifice"_s);
    QFont bold = QApplication::font();
    bold.setBold(true);
    QVERIFY(QFontInfo(bold).bold());
    QFont italic = QApplication::font();
    italic.setItalic(true);
    QVERIFY(QFontInfo(italic).italic());
}

void tst_MainAppStyle::withoutOurFontsTheSystemsStays()
{
    QFontDatabase::removeAllApplicationFonts();
    const MissingResources missing;
    const QFont oldFont = QApplication::font();
    QFont font = oldFont;
    font.setFamily(QFontInfo(QFontDatabase::systemFont(QFontDatabase::FixedFont)).family());
    QVERIFY(QFontInfo(QFont(u"ManualOrifice"_s)).family() != font.family());
    QApplication::setFont(font);
    makeStyle();
    {
        const DebugLog log;
        m_style->applyStyle(m_window.get());
        QCOMPARE(log.lines(), QStringList());
    }
    QCOMPARE(QApplication::font().family(), u"ManualOrifice"_s);
    QCOMPARE(QFontInfo(QApplication::font()).family(), font.family());
    delete m_style;
    QCOMPARE(QApplication::font(), font);
    QApplication::setFont(oldFont);
}

void tst_MainAppStyle::endPutsAllBack_data()
{
    QTest::addColumn<QString>("sheet");
    QTest::newRow("without a sheet") << QString();
    QTest::newRow("with a sheet") << u"QLabel {color: red}"_s;
}

void tst_MainAppStyle::endPutsAllBack()
{
    QFETCH(QString, sheet);
    const QFont oldFont = QApplication::font();
    const QPalette oldPalette = QApplication::palette();
    const QString oldStyle = QApplication::style()->objectName();
    QPalette palette;
    palette.setColor(QPalette::Text, Qt::darkGreen);
    QFont font = oldFont;
    font.setPointSize(17);
    QApplication::setStyle(u"windows"_s);
    QApplication::setPalette(palette);
    QApplication::setFont(font);
    qApp->setStyleSheet(sheet);

    makeStyle();
    m_style->applyStyle(m_window.get());
    click(3);
    delete m_style;

    QCOMPARE(qApp->styleSheet(), sheet);
    qApp->setStyleSheet(QString());
    QCOMPARE(QApplication::style()->objectName(), u"windows"_s);
    QCOMPARE(QApplication::palette().color(QPalette::Text), QColor(Qt::darkGreen));
    QVERIFY(QApplication::palette().color(QPalette::Window) != QColor(u"#004DB9"_s));
    QCOMPARE(QApplication::font(), font);

    QApplication::setStyle(oldStyle);
    QApplication::setPalette(oldPalette);
    QApplication::setFont(oldFont);
}

void tst_MainAppStyle::endIsToldBeforeTheStateGoesBack()
{
    makeStyle();
    m_style->applyStyle(m_window.get());
    QStringList told;
    QColor seen;
    connect(m_style, &MainAppStyle::fontSizeChanged, this, [&told, &seen](const QString &fontSize) {
        told.append(fontSize);
        seen = QApplication::palette().color(QPalette::Window);
    });
    DebugLog log;
    delete m_style;
    QCOMPARE(told, QStringList(u"Style end"_s));
    QCOMPARE(seen, QColor(u"#004DB9"_s));
    QCOMPARE(log.lines(), QStringList(u"MainAppStyle::~MainAppStyle()"_s));
    QVERIFY(QApplication::palette().color(QPalette::Window) != QColor(u"#004DB9"_s));
}

void tst_MainAppStyle::endOfTheWindowIsTheEndOfTheLook()
{
    const QColor background = QApplication::palette().color(QPalette::Window);
    makeStyle();
    m_bar->addWidget(m_style);
    m_style->applyStyle(m_window.get());
    m_window->show();
    m_window.reset();
    QCOMPARE(QApplication::palette().color(QPalette::Window), background);
    QCOMPARE(qApp->styleSheet(), QString());
}

QTEST_MAIN(tst_MainAppStyle)
#include "tst_MainAppStyle.moc"
