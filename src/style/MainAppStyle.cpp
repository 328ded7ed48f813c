#include "style/MainAppStyle.h"

#include "style/AppSettings.h"
#include "style/BlueLook.h"
#include "style/IconTinting.h"

#include <QApplication>
#include <QButtonGroup>
#include <QDebug>
#include <QFontDatabase>
#include <QFontMetrics>
#include <QFrame>
#include <QHBoxLayout>
#include <QRegularExpression>
#include <QStyle>
#include <QStyleFactory>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {

constexpr QRgb Background = 0xff004db9;

const QString SizeButtonKey = u"Mainwindow/SizeButtonNr"_s;
constexpr int DefaultSizeButton = 1;
const QString SizeButtonName = u"sizeBtn"_s;

/// By button id.
const QString SizeRules[] = {
    u"QWidget {font-size: 20px}"_s,
    u"QWidget {font-size: 16px}"_s,
    u"QWidget {font-size: 12px}"_s,
    u"QWidget {font-size: 8px}"_s,
};

const QString StripSheet =
    u"QFrame {border-radius: 0px;border: 1px solid palette(midlight);  max-height: 25px}"
    "QFrame:disabled {border: 1px solid #003D91}"
    "QToolButton {border: none; min-width: 15px; max-width: 15px; min-height: 15px;"
    " max-height: 15px}"_s;

const QString BaseSheet =
    u" QWidget{border-width: 2px; border-radius: 9px} \n"
    " QToolBar, QMenuBar, QStatusBar {border-width: 1px; border-radius:0px} \n"
    " QWidget{font: small normal 12px 'ManualOrifice'} "_s;

const QString ToolButtonSheet =
    u"QToolButton:checked {border: 2px solid #c7d441}"
    "QToolButton:pressed {border: 2px solid #001C42; background: rgba(255,255,255, 115)}"
    "QToolButton:disabled {border: 2px solid #003D91}"
    "QToolButton:hover:!pressed {border: 2px solid palette(text)}"
    "QToolButton#qt_toolbar_ext_button {border: 2px solid transparent; min-width: 17px;"
    " max-width: 17px; min-height: 17px; max-height: 17px}"_s;

/// The toolkit's style that the look is made for, or its successor.
QString toolkitStyle()
{
    const QString wanted = u"cleanlooks"_s;
    return QStyleFactory::keys().contains(wanted, Qt::CaseInsensitive) ? wanted : u"fusion"_s;
}

/// The name under which the application's style can be set again. A style sheet of the application
/// puts a nameless style in front of it, so the sheet steps aside for the question.
QString nameOfStyle()
{
    const QString sheet = qApp->styleSheet();
    if (sheet.isEmpty()) {
        return QApplication::style()->objectName();
    }
    qApp->setStyleSheet(QString());
    QString name = QApplication::style()->objectName();
    qApp->setStyleSheet(sheet);
    return name;
}

/// Puts @p rule in place of the one that the last call, by whatever object, has added to the
/// application's sheet. Other rules of the sheet stay.
void replaceFontRule(const QString &rule)
{
    static QString lastRule;
    QString sheet = qApp->styleSheet();
    const qsizetype start = lastRule.isEmpty() ? -1 : sheet.lastIndexOf(lastRule);
    if (start >= 0) {
        sheet.remove(start, lastRule.size());
    }
    lastRule = rule;
    qApp->setStyleSheet(sheet + rule);
}

int numberIn(const QString &rule)
{
    static const QRegularExpression number(u"(\\d+)"_s);
    return number.match(rule).captured(1).toInt(nullptr, 10);
}

/// The rule for the buttons of a tool bar that have no icon. A bar that the user can move is sized
/// by them alone if it lies; one that stands gives them their breadth, too.
QString textButtonRule(const QToolBar *bar)
{
    const bool upright = bar->orientation() == Qt::Vertical;
    if (bar->isMovable() || bar->isFloating()) {
        return upright ? u"QToolButton{min-height: %1px; min-width: %2px}"_s
                       : u"QToolButton#noIconBtn{min-height: %1px;}"_s;
    }
    return upright ? u"QToolButton{min-height: %1px;min-width: %2px}"_s
                   : u"QToolButton{min-height: %1px}"_s;
}

} // namespace

MainAppStyle::MainAppStyle(QWidget *mainWindow)
    : QWidget(mainWindow)
    , m_savedStyleSheet(qApp->styleSheet())
    , m_savedPalette(QApplication::palette())
    , m_savedFont(QApplication::font())
    , m_savedStyleName(nameOfStyle())
    , m_mainWindow(mainWindow)
    , m_sizeButtons(new QButtonGroup(this))
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(createSizeStrip());
    clickStoredSize();
}

MainAppStyle::~MainAppStyle()
{
    qDebug() << "MainAppStyle::~MainAppStyle()";
    // Whoever listens finds the look's own style in place; what is composed isn't applied any more.
    composeStyle(QColor(Background), QString());
    emit fontSizeChanged(u"Style end"_s);

    QApplication::setStyle(m_savedStyleName);
    QApplication::setPalette(m_savedPalette);
    QApplication::setFont(m_savedFont);
    qApp->setStyleSheet(m_savedStyleSheet);
}

void MainAppStyle::applyStyle(QWidget *widget)
{
    const QColor oldColor = QApplication::palette().color(QPalette::Text);
    const QString folder = setBaseStyle(widget);
    const BlueLook look = composeStyle(QColor(Background), folder);

    qApp->setStyleSheet(look.styleSheet);
    QApplication::setPalette(look.palette);
    QApplication::setStyle(toolkitStyle());
    widget->setStyleSheet(BaseSheet);

    if (QAbstractButton *chosen = m_sizeButtons->checkedButton()) {
        // The sheet has just taken the place of the one with the size of the font.
        QTimer::singleShot(0, chosen, &QAbstractButton::click);
    }
    const QColor newColor = QApplication::palette().color(QPalette::Text);
    if (newColor != oldColor) {
        emit textColorChanged(newColor, oldColor);
    }
}

void MainAppStyle::setFontSizeStyle()
{
    const auto *button = qobject_cast<QAbstractButton *>(sender());
    if (!button) {
        return;
    }
    const QString rule = button->styleSheet();
    replaceFontRule(rule);
    m_mainWindow->setStyleSheet(ToolButtonSheet);

    const int fontPixels = numberIn(rule);
    nameToolButtons();
    const auto bars = m_mainWindow->findChildren<QToolBar *>();
    for (QToolBar *bar : bars) {
        adaptToolBar(bar, fontPixels);
    }
    AppSettings().setValue(SizeButtonKey, m_sizeButtons->checkedId());
    setIconsToTextColor(m_mainWindow); // the icons' size has changed
    emit fontSizeChanged(rule);
}

QFrame *MainAppStyle::createSizeStrip()
{
    auto *strip = new QFrame(this);
    strip->setObjectName(u"setFontSize"_s);
    strip->setStyleSheet(StripSheet);
    auto *layout = new QHBoxLayout(strip);
    layout->setSpacing(0);
    layout->setContentsMargins(0, 0, 0, 0);
    int id = 0;
    for (const QString &rule : SizeRules) {
        auto *button = new QToolButton(strip);
        button->setObjectName(SizeButtonName);
        button->setText(u"A"_s);
        button->setAccessibleName(tr("Font size %1").arg(numberIn(rule)));
        button->setCheckable(true);
        button->setStyleSheet(rule);
        m_sizeButtons->addButton(button, id++);
        layout->addWidget(button);
        connect(button, &QToolButton::clicked, this, &MainAppStyle::setFontSizeStyle);
    }
    return strip;
}

void MainAppStyle::clickStoredSize()
{
    const int id = AppSettings().value(SizeButtonKey, DefaultSizeButton).toInt();
    if (QAbstractButton *button = m_sizeButtons->button(id)) {
        button->click();
    }
}

QString MainAppStyle::setBaseStyle(QWidget *widget)
{
    widget->setStyleSheet(BaseSheet);
    for (const QString &file : {u":/fonts/MoravintFont"_s, u":/fonts/MoravintFontItalic"_s,
                                u":/fonts/MoravintFontBold"_s}) {
        QFontDatabase::addApplicationFont(file);
    }
    // The system's own families stay behind it, for the case that it isn't there.
    QFont font = QApplication::font();
    font.setFamilies(QStringList(u"ManualOrifice"_s) + m_savedFont.families());
    QApplication::setFont(font);
    return u"qml/"_s;
}

BlueLook MainAppStyle::composeStyle(const QColor &background, const QString &folder)
{
    QApplication::setStyle(toolkitStyle());
    return composeBlueLook(background, background, folder);
}

void MainAppStyle::nameToolButtons()
{
    const auto buttons = m_mainWindow->findChildren<QToolButton *>();
    for (QToolButton *button : buttons) {
        // Rules know the toolkit's own buttons, as that at the end of a tool bar, by their names.
        const bool keepsName =
            button->objectName() == SizeButtonName || button->objectName().startsWith("qt_"_L1);
        if (!keepsName) {
            button->setObjectName(button->icon().isNull() ? u"noIconBtn"_s : u"iconBtn"_s);
        }
    }
}

void MainAppStyle::adaptToolBar(QToolBar *bar, int fontPixels)
{
    bar->setIconSize(QSize(fontPixels, fontPixels));
    QFont font = bar->font();
    font.setPixelSize(fontPixels);
    const QFontMetrics metrics(font);
    const QString rules =
        u"QToolButton#iconBtn{min-height: %1px; min-width: %2px}"_s + textButtonRule(bar);
    bar->setStyleSheet(rules.arg(metrics.height()).arg(metrics.horizontalAdvance(u'M')));
}
