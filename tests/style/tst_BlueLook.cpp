#include "style/BlueLook.h"
#include "support/TestCase.h"

#include <QApplication>
#include <QFile>
#include <QFrame>
#include <QLabel>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_BlueLook : public TestCase
{
    Q_OBJECT

private slots:
    void initTestCase();
    void role_data();
    void role();
    void otherRolesStay();
    void nothingIsApplied();
    void rule_data();
    void rule();
    void kindsStandInTheirOrder();
    void noNameIsLeft();
    void picturesAreThere();
    void toolkitUnderstandsTheSheet();
    void statusLamp_data();
    void statusLamp();

private:
    BlueLook m_look;
};

namespace {

/// The declarations of all rules of @p sheet whose list of selectors holds @p selector, in order
/// and without line breaks.
QString declarationsOf(const QString &sheet, const QString &selector)
{
    static const QRegularExpression rule(u"([^{}]+)\\{([^{}]*)\\}"_s);
    QString declarations;
    auto matches = rule.globalMatch(sheet);
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        const QStringList selectors = match.captured(1).simplified().split(u", "_s);
        if (selectors.contains(selector)) {
            declarations += match.captured(2).simplified() + u' ';
        }
    }
    return declarations;
}

} // namespace

void tst_BlueLook::initTestCase()
{
    m_look = composeBlueLook(QColor(u"#004DB9"_s), QColor(u"#123456"_s), u"pictures/"_s);
}

void tst_BlueLook::role_data()
{
    QTest::addColumn<QPalette::ColorRole>("role");
    QTest::addColumn<QColor>("color");
    QTest::newRow("Window") << QPalette::Window << QColor(u"#004DB9"_s);
    QTest::newRow("Text") << QPalette::Text << QColor(Qt::white);
    QTest::newRow("WindowText") << QPalette::WindowText << QColor(Qt::white);
    QTest::newRow("ButtonText") << QPalette::ButtonText << QColor(Qt::white);
    QTest::newRow("Base") << QPalette::Base << QColor(u"#002E6E"_s);
    QTest::newRow("Light") << QPalette::Light << QColor(u"#3A5B78"_s);
    QTest::newRow("Highlight") << QPalette::Highlight << QColor(u"#002E6E"_s);
    QTest::newRow("HighlightedText") << QPalette::HighlightedText << QColor(u"#9AA9B6"_s);
    QTest::newRow("ToolTipBase") << QPalette::ToolTipBase << QColor(u"#002E6E"_s);
    QTest::newRow("ToolTipText") << QPalette::ToolTipText << QColor(Qt::white);
    QTest::newRow("Shadow") << QPalette::Shadow << QColor(u"#15252F"_s);
    QTest::newRow("Mid") << QPalette::Mid << QColor(u"#123456"_s);
    QTest::newRow("Dark") << QPalette::Dark << QColor(u"#9AA9B6"_s);
    QTest::newRow("Link") << QPalette::Link << QColor(u"#15252F"_s);
    QTest::newRow("LinkVisited") << QPalette::LinkVisited << QColor(u"#9AA9B6"_s);
}

void tst_BlueLook::role()
{
    QFETCH(QPalette::ColorRole, role);
    QFETCH(QColor, color);
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        QCOMPARE(m_look.palette.color(group, role), color);
    }
}

void tst_BlueLook::otherRolesStay()
{
    for (const auto role : {QPalette::Button, QPalette::Midlight, QPalette::AlternateBase}) {
        QCOMPARE(m_look.palette.color(role), QApplication::palette().color(role));
    }
}

void tst_BlueLook::nothingIsApplied()
{
    QVERIFY(QApplication::palette().color(QPalette::Window) != QColor(u"#004DB9"_s));
    QCOMPARE(qApp->styleSheet(), QString());
}

void tst_BlueLook::rule_data()
{
    QTest::addColumn<QString>("selector");
    QTest::addColumn<QStringList>("declarations");
    const auto row = [](const char *selector, const QStringList &declarations) {
        QTest::newRow(selector) << QString::fromLatin1(selector) << declarations;
    };
    row("QAbstractSpinBox:enabled",
        {u"border: 2px solid palette(window-text);"_s, u"background: palette(window);"_s});
    row("QAbstractSpinBox:disabled",
        {u"background: palette(highlighted-text);"_s, u"palette(shadow);"_s});
    row("QAbstractSpinBox::up-button", {u"background: rgba( 70, 70, 70, 115);"_s});
    row("QAbstractSpinBox::down-button", {u"background: rgba( 70, 70, 70, 115);"_s});
    row("QAbstractSpinBox::up-button:hover", {u"background: rgba(255,255,255, 115);"_s});
    row("QAbstractSpinBox::down-button:hover", {u"background: rgba(255,255,255, 115);"_s});
    row("QAbstractSpinBox::up-button:pressed",
        {u"background: rgba(255,255,255, 115);"_s, u"#000F24"_s});
    row("QAbstractSpinBox::down-button:pressed", {u"background: rgba(255,255,255, 115);"_s});
    row("QAbstractSpinBox::up-arrow",
        {u"url(\":/MainButtons1/Table Up\")"_s, u"width: 8px;"_s, u"height: 8px;"_s});
    row("QAbstractSpinBox::down-arrow",
        {u"url(\":/MainButtons1/Table Down\")"_s, u"width: 8px;"_s, u"height: 8px;"_s});
    row("QLineEdit",
        {u"lineedit-password-character: 8226;"_s, u"2px solid white;"_s,
         u"background: palette(base);"_s});
    row("QComboBox", {u"2px solid white;"_s, u"background: transparent;"_s});
    row("QComboBox:editable", {u"background: palette(base);"_s});
    row("QComboBox:!editable", {u"background: rgba( 70, 70, 70, 115);"_s});
    row("QScrollBar", {u"border-radius: 9px;"_s});
    row("QScrollBar:horizontal", {u"height: 18px;"_s, u"margin: 0px 15px 0px 15px;"_s});
    row("QScrollBar:vertical", {u"width: 18px;"_s, u"margin: 15px 0px 15px 0px;"_s});
    row("QScrollBar::handle", {u"background: palette(window-text);"_s, u"border-radius: 9px;"_s});
    row("QScrollBar::handle:horizontal", {u"min-width: 25px;"_s});
    row("QScrollBar::handle:vertical", {u"min-height: 25px;"_s});
    for (const char *side : {"left", "right", "up", "down"}) {
        QString picture = QString::fromLatin1(side);
        picture[0] = picture.at(0).toUpper();
        const QByteArray selector = QByteArray("QScrollBar::") + side + "-arrow";
        row(selector.constData(),
            {u":/MainButtons1/"_s + picture, u"width: 10px; height: 10px;"_s});
    }
    row("QFrame", {u"palette(window-text);"_s});
    row("QFrame:disabled", {u"#003D91;"_s});
    row("QToolButton",
        {u"margin: 0px;"_s, u"border: 2px solid transparent;"_s, u"border-radius: 9px;"_s});
    row("QToolButton:hover", {u"palette(window-text);"_s});
    row("QToolButton:checked", {u"color: #c7d441;"_s});
    row("QPushButton", {u"padding: 4px 6px;"_s});
    row("QPushButton:hover", {u"rgba(255,255,255, 115);"_s});
    row("QPushButton:checked", {u"border-color: #c7d441;"_s, u" color: #c7d441;"_s});
    row("QPushButton#btnUpdate", {u":/Misc/Refresh"_s});
    row("QCheckBox::indicator", {u"background: rgba(55,55,55,115);"_s, u"border-radius: 7px;"_s});
    row("QCheckBox::indicator:checked", {u":/MainButtons1/Haekchen_normal"_s});
    row("QCheckBox::indicator:checked:disabled", {u":/MainButtons1/Haekchen_disabled"_s});
    row("QDialogButtonBox", {u"dialogbuttonbox-buttons-have-icons: 1;"_s});
    row("QGroupBox",
        {u"background: transparent;"_s, u"border: 2px solid palette(window-text);"_s,
         u"border-radius: 11px;"_s, u"margin-top: 6ex;"_s});
    row("QGroupBox::title", {u"subcontrol-position: top left;"_s});
    row("QTabWidget::pane", {u"border-top: 2px solid #9AA9B6;"_s});
    row("QTabBar::tab", {u"background: #003D91;"_s, u"#AFB2B5;"_s});
    row("QTabBar::tab:selected",
        {u"background: #001C42;"_s, u"margin-left: -4px; margin-right: -4px;"_s});
    row("QTabBar::tab:hover", {u"background: #001C42;"_s});
    row("QTabBar::tab:!selected", {u"margin-top: 2px;"_s});
    row("QTabBar::tab:first:selected", {u"margin-left: 0px;"_s});
    row("QTabBar::tab:last:selected", {u"margin-right: 0px;"_s});
    row("QTabBar::tab:only-one", {u"margin: 0px;"_s});
    row("QToolBox::tab", {u"background: red;"_s});
    row("QToolBox::handle", {u"url(\"pictures/ZDR-Logo\");"_s});
    row("QProgressBar",
        {u"border: none;"_s, u"border-radius: 4px;"_s, u"color: tomato;"_s,
         u"text-decoration: overline;"_s, u"font-size: 16px;"_s});
    row("QProgressBar::chunk", {u"background: qlineargradient("_s});
    row("QSlider::handle", {u"background: #001C42;"_s, u":/Misc/MoravintCur"_s});
    row("QSlider::add-page", {u"background: #001C42;"_s, u"margin: 5px;"_s});
    row("QSlider::sub-page", {u"background: #003D91;"_s, u"margin: 5px;"_s});
    for (const char *view : {"QTreeView", "QHeaderView", "QTableView"}) {
        row(view,
            {u"border-style: solid;"_s, u"background: transparent;"_s,
             u"alternate-background-color: #3A5B78;"_s,
             u"selection-background-color: transparent;"_s});
    }
    row("QAbstractScrollArea", {u"border-style: solid;"_s, u"background: transparent;"_s});
    row("QTreeView::branch:has-children:closed", {u":/Misc/BranchOpen"_s});
    row("QTreeView::branch:has-children:open", {u":/Misc/BranchClose"_s});
    row("QLabel:enabled", {u"color: palette(window-text);"_s});
    row("QLabel#WindowsTitle:active", {u"color: palette(window-text);"_s});
    row("QLabel#WindowsTitle:!active", {u"color: #9AA9B6;"_s});
    row("QLabel#Led", {u"border-radius: 9px;"_s});
    row("QLabel#Led:enabled",
        {u"qradialgradient("_s, u"stop: 0 white, stop: 1 rgba(255, 0, 0, 255)"_s});
    row("QLabel#Led:disabled",
        {u"qradialgradient("_s, u"stop: 0 white, stop: 1 rgba(25, 20, 30, 255)"_s});
    row("QListView::item:selected:active", {u"background: #9AA9B6;"_s, u"color: gold;"_s});
    row("QListView::item:selected:!active", {u"background: #001C42;"_s});
    row("QDockWidget", {u"lime;"_s});
    row("QMainWindow::separator",
        {u"width: 4px;"_s, u"height: 4px;"_s, u"background: palette(base);"_s});
    row("QSplitter::handle", {u":/Misc/MoravintCur"_s});
    row("QSplitter::handle:horizontal", {u"width: 9px;"_s});
    row("QSplitter::handle:vertical", {u"height: 9px;"_s});
    row("QSizeGrip", {u":/Misc/SizeGrip"_s, u"width: 16px;"_s, u"height: 16px;"_s});
}

void tst_BlueLook::rule()
{
    QFETCH(QString, selector);
    QFETCH(QStringList, declarations);
    const QString found = declarationsOf(m_look.styleSheet, selector);
    for (const QString &declaration : declarations) {
        QVERIFY2(found.contains(declaration), qPrintable(declaration + u" is not in "_s + found));
    }
}

void tst_BlueLook::kindsStandInTheirOrder()
{
    const QStringList kinds = {
        u"QAbstractSpinBox"_s, u"QLineEdit"_s,   u"QComboBox"_s,           u"QScrollBar"_s,
        u"QFrame"_s,           u"QToolButton"_s, u"QPushButton"_s,         u"QCheckBox"_s,
        u"QDialogButtonBox"_s, u"QGroupBox"_s,   u"QTabWidget"_s,          u"QToolBox"_s,
        u"QProgressBar"_s,     u"QSlider"_s,     u"QAbstractScrollArea"_s, u"QLabel:"_s,
        u"QLabel#Led"_s,       u"QListView"_s,   u"QDockWidget"_s,
    };
    qsizetype last = -1;
    for (const QString &kind : kinds) {
        const qsizetype found = m_look.styleSheet.indexOf(u'\n' + kind);
        QVERIFY2(found > last, qPrintable(kind));
        last = found;
    }
}

void tst_BlueLook::noNameIsLeft()
{
    QVERIFY2(!m_look.styleSheet.contains(u'@'), qPrintable(m_look.styleSheet));
}

void tst_BlueLook::picturesAreThere()
{
    static const QRegularExpression resource(u"url\\(\"(:[^\"]+)\"\\)"_s);
    int found = 0;
    auto matches = resource.globalMatch(m_look.styleSheet);
    while (matches.hasNext()) {
        const QString path = matches.next().captured(1);
        QVERIFY2(QFile::exists(path), qPrintable(path));
        ++found;
    }
    QCOMPARE_GE(found, 14);
}

// A rule that it can't read would be told of by a warning, which fails the test.
void tst_BlueLook::toolkitUnderstandsTheSheet()
{
    QFrame frame;
    frame.setStyleSheet(m_look.styleSheet);
    frame.setFrameShape(QFrame::Box);
    frame.resize(20, 20);
    QVERIFY(!frame.grab().isNull());
}

void tst_BlueLook::statusLamp_data()
{
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<QColor>("rim");
    QTest::newRow("lit") << true << QColor(255, 0, 0);
    QTest::newRow("dark") << false << QColor(25, 20, 30);
}

void tst_BlueLook::statusLamp()
{
    QFETCH(bool, enabled);
    QFETCH(QColor, rim);
    QWidget window;
    window.setStyleSheet(m_look.styleSheet);
    auto *lamp = new QLabel(&window);
    lamp->setObjectName(u"Led"_s);
    lamp->setEnabled(enabled);
    lamp->ensurePolished();
    lamp->adjustSize();
    QCOMPARE(lamp->size(), QSize(18, 18));
    const QImage image = lamp->grab().toImage();
    // White stands where the light falls, near the upper left, the colour at the rim.
    QVERIFY(qGray(image.pixel(6, 6)) > qGray(image.pixel(9, 15)) + 50);
    const QColor found = image.pixelColor(9, 16);
    QVERIFY2(qAbs(found.red() - rim.red()) < 40 && qAbs(found.green() - rim.green()) < 60,
             qPrintable(found.name()));
}

QTEST_MAIN(tst_BlueLook)
#include "tst_BlueLook.moc"
