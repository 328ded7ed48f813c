#include "style/BlueLook.h"

#include <QApplication>
#include <QColor>

#include <array>

using namespace Qt::StringLiterals;

namespace {

struct NamedColor
{
    const char *name; ///< as in the rules below
    const char *color;
};

/// The colours of the rules that aren't roles of the palette.
constexpr std::array<NamedColor, 12> RuleColors = {{
    {"@disabled", "#003D91"}, // borders and text; tabs in the back, the page of a slider, too
    {"@tabBorder", "#AFB2B5"},
    {"@accent", "#c7d441"}, // what is checked
    {"@spinPressed", "#000F24"},
    {"@deep", "#001C42"}, // borders of what is pressed, the tab in front, handles
    {"@pale", "#9AA9B6"},
    {"@alternate", "#3A5B78"},
    {"@glass", "rgba( 70, 70, 70, 115)"}, // controls on the background
    {"@shine", "rgba(255,255,255, 115)"}, // under the mouse
    {"@indicator", "rgba(55,55,55,115)"},
    {"@ledOn", "rgba(255, 0, 0, 255)"},
    {"@ledOff", "rgba(25, 20, 30, 255)"},
}};

/// The rules, kind by kind. A later rule of the same weight wins, so the order counts. Colours that
/// the palette knows are named by their role and follow it; the others are named as above. Pictures
/// are drawn as "image", which scales them to the part's size.
constexpr std::array<const char *, 23> Rules = {
    R"(
QAbstractSpinBox:enabled { border: 2px solid palette(window-text); background: palette(window); }
QAbstractSpinBox:disabled { border: 2px solid palette(shadow); background: palette(highlighted-text); }
QAbstractSpinBox::up-button, QAbstractSpinBox::down-button { subcontrol-origin: border;
    width: 16px; background: @glass; }
QAbstractSpinBox::up-button { subcontrol-position: top right; border-top-right-radius: 7px; }
QAbstractSpinBox::down-button { subcontrol-position: bottom right; border-bottom-right-radius: 7px; }
QAbstractSpinBox::up-button:hover, QAbstractSpinBox::down-button:hover { background: @shine; }
QAbstractSpinBox::up-button:pressed, QAbstractSpinBox::down-button:pressed { background: @shine;
    border: 1px solid @spinPressed; }
QAbstractSpinBox::up-arrow { image: url(":/MainButtons1/Table Up"); width: 8px; height: 8px; }
QAbstractSpinBox::down-arrow { image: url(":/MainButtons1/Table Down"); width: 8px; height: 8px; }
)",
    R"(
QLineEdit { lineedit-password-character: 8226; border: 2px solid white; background: palette(base); }
QLineEdit:disabled { border-color: @disabled; color: @disabled; }
)",
    R"(
QComboBox { border: 2px solid white; background: transparent; padding: 1px 4px; }
QComboBox:editable { background: palette(base); }
QComboBox:!editable { background: @glass; }
QComboBox:disabled { border-color: @disabled; color: @disabled; }
QComboBox::drop-down { border: none; width: 16px; }
QComboBox::down-arrow { image: url(":/MainButtons1/Down"); width: 10px; height: 10px; }
)",
    R"(
QScrollBar { background: @glass; border-radius: 9px; }
QScrollBar:horizontal { height: 18px; margin: 0px 15px 0px 15px; }
QScrollBar:vertical { width: 18px; margin: 15px 0px 15px 0px; }
QScrollBar::handle { background: palette(window-text); border-radius: 9px; }
QScrollBar::handle:horizontal { min-width: 25px; }
QScrollBar::handle:vertical { min-height: 25px; }
QScrollBar::add-line, QScrollBar::sub-line { background: transparent; subcontrol-origin: margin; }
QScrollBar::add-line:horizontal { width: 15px; subcontrol-position: right; }
QScrollBar::sub-line:horizontal { width: 15px; subcontrol-position: left; }
QScrollBar::add-line:vertical { height: 15px; subcontrol-position: bottom; }
QScrollBar::sub-line:vertical { height: 15px; subcontrol-position: top; }
QScrollBar::left-arrow { image: url(":/MainButtons1/Left"); width: 10px; height: 10px; }
QScrollBar::right-arrow { image: url(":/MainButtons1/Right"); width: 10px; height: 10px; }
QScrollBar::up-arrow { image: url(":/MainButtons1/Up"); width: 10px; height: 10px; }
QScrollBar::down-arrow { image: url(":/MainButtons1/Down"); width: 10px; height: 10px; }
)",
    R"(
QFrame { border-color: palette(window-text); }
QFrame:disabled { border-color: @disabled; }
)",
    R"(
QToolButton { margin: 0px; border: 2px solid transparent; border-radius: 9px; }
QToolButton:hover { border-color: palette(window-text); }
QToolButton:checked { color: @accent; }
QToolButton:pressed { border-color: @deep; }
QToolButton:disabled { color: @disabled; }
)",
    R"(
QPushButton { padding: 4px 6px; border: 2px solid palette(window-text); background: @glass; }
QPushButton:hover { background: @shine; }
QPushButton:pressed { border-color: @deep; }
QPushButton:checked { border-color: @accent; color: @accent; }
QPushButton:disabled { border-color: @disabled; color: @disabled; }
QPushButton#btnUpdate { image: url(":/Misc/Refresh"); }
)",
    R"(
QCheckBox::indicator { background: @indicator; border-radius: 7px; width: 14px; height: 14px; }
QCheckBox::indicator:checked { image: url(":/MainButtons1/Haekchen_normal"); }
QCheckBox::indicator:checked:disabled { image: url(":/MainButtons1/Haekchen_disabled"); }
)",
    R"(
QDialogButtonBox { dialogbuttonbox-buttons-have-icons: 1; }
)",
    R"(
QGroupBox { background: transparent; border: 2px solid palette(window-text); border-radius: 11px;
    margin-top: 6ex; }
QGroupBox:disabled { border-color: @disabled; }
QGroupBox::title { subcontrol-origin: margin; subcontrol-position: top left; }
)",
    R"(
QTabWidget::pane { border-top: 2px solid @pale; }
QTabBar::tab { background: @disabled; border: 2px solid @tabBorder; padding: 4px 8px;
    border-top-left-radius: 6px; border-top-right-radius: 6px; }
QTabBar::tab:selected, QTabBar::tab:hover { background: @deep; }
QTabBar::tab:!selected { margin-top: 2px; }
QTabBar::tab:selected { margin-left: -4px; margin-right: -4px; }
QTabBar::tab:first:selected { margin-left: 0px; }
QTabBar::tab:last:selected { margin-right: 0px; }
QTabBar::tab:only-one { margin: 0px; }
)",
    R"(
QToolBox::tab { background: red; }
QToolBox::handle { image: url("@folderZDR-Logo"); }
)",
    R"(
QProgressBar { border: none; border-radius: 4px; color: tomato; text-decoration: overline;
    font-size: 16px; }
QProgressBar::chunk { border-radius: 4px; background: qlineargradient(x1: 0, y1: 0, x2: 1, y2: 0,
    stop: 0 @deep, stop: 1 @pale); }
)",
    R"(
QSlider::handle { background: @deep; border-radius: 4px; image: url(":/Misc/MoravintCur"); }
QSlider::handle:horizontal { width: 14px; margin: -5px 0px; }
QSlider::handle:vertical { height: 14px; margin: 0px -5px; }
QSlider::add-page { background: @deep; margin: 5px; }
QSlider::sub-page { background: @disabled; margin: 5px; }
)",
    R"(
QAbstractScrollArea { border-style: solid; background: transparent; }
QTreeView, QHeaderView, QTableView { border-style: solid; background: transparent;
    alternate-background-color: @alternate; selection-background-color: transparent; }
QHeaderView::section { background: transparent; }
)",
    R"(
QTreeView::branch:has-children:closed { image: url(":/Misc/BranchOpen"); }
QTreeView::branch:has-children:open { image: url(":/Misc/BranchClose"); }
)",
    R"(
QLabel:enabled { color: palette(window-text); }
QLabel:disabled { color: @disabled; }
QLabel#WindowsTitle:active { color: palette(window-text); }
QLabel#WindowsTitle:!active { color: @pale; }
)",
    R"(
QLabel#Led { border: none; border-radius: 9px; min-width: 18px; max-width: 18px; min-height: 18px;
    max-height: 18px; }
QLabel#Led:enabled { background: qradialgradient(cx: 0.5, cy: 0.5, radius: 0.5, fx: 0.3, fy: 0.3,
    stop: 0 white, stop: 1 @ledOn); }
QLabel#Led:disabled { background: qradialgradient(cx: 0.5, cy: 0.5, radius: 0.5, fx: 0.3, fy: 0.3,
    stop: 0 white, stop: 1 @ledOff); }
)",
    R"(
QListView::item:selected:active { background: @pale; color: gold; }
QListView::item:selected:!active { background: @deep; }
)",
    R"(
QDockWidget { border: 1px solid lime; }
)",
    R"(
QMainWindow::separator { width: 4px; height: 4px; background: palette(base); }
)",
    R"(
QSplitter::handle { image: url(":/Misc/MoravintCur"); }
QSplitter::handle:horizontal { width: 9px; }
QSplitter::handle:vertical { height: 9px; }
)",
    R"(
QSizeGrip { image: url(":/Misc/SizeGrip"); width: 16px; height: 16px; }
)",
};

QString composeStyleSheet(const QString &folder)
{
    QString sheet;
    for (const char *rule : Rules) {
        sheet += QLatin1String(rule);
    }
    for (const NamedColor &named : RuleColors) {
        sheet.replace(QLatin1String(named.name), QLatin1String(named.color));
    }
    return sheet.replace("@folder"_L1, folder);
}

} // namespace

BlueLook composeBlueLook(const QColor &window, const QColor &mid, const QString &folder)
{
    const QColor base(u"#002E6E"_s);
    const QColor pale(u"#9AA9B6"_s);
    const QColor edge(u"#15252F"_s);

    BlueLook look;
    look.palette = QApplication::palette();
    const auto set = [&look](QPalette::ColorRole role, const QColor &color) {
        look.palette.setColor(QPalette::All, role, color);
    };
    set(QPalette::Window, window);
    set(QPalette::Text, Qt::white);
    set(QPalette::WindowText, Qt::white);
    set(QPalette::ButtonText, Qt::white);
    set(QPalette::Base, base);
    set(QPalette::Light, QColor(u"#3A5B78"_s));
    set(QPalette::Highlight, base);
    set(QPalette::HighlightedText, pale);
    set(QPalette::ToolTipBase, base);
    set(QPalette::ToolTipText, Qt::white);
    set(QPalette::Shadow, QColor(u"#001C42"_s));
    set(QPalette::Mid, mid);
    set(QPalette::Dark, pale);
    set(QPalette::Link, edge);
    set(QPalette::LinkVisited, pale);

    look.styleSheet = composeStyleSheet(folder);
    // The sheet resolves its roles when it is applied, so that this is the shadow that it shows.
    set(QPalette::Shadow, edge);
    return look;
}
