#include "campaign/RandomUser.h"

#include "support/TurnWheel.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QFileDialog>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QSpinBox>
#include <QTabBar>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

constexpr Qt::Key Keys[] = {
    Qt::Key_Up,       Qt::Key_Down,   Qt::Key_Left,   Qt::Key_Right,     Qt::Key_PageUp,
    Qt::Key_PageDown, Qt::Key_Home,   Qt::Key_End,    Qt::Key_Space,     Qt::Key_Tab,
    Qt::Key_Return,   Qt::Key_Escape, Qt::Key_Delete, Qt::Key_Backspace, Qt::Key_1,
    Qt::Key_9,        Qt::Key_Minus,  Qt::Key_A,
};

QString nameOf(const QWidget *widget)
{
    const QString parent =
        widget->parentWidget() ? widget->parentWidget()->objectName() : QString();
    return QLatin1StringView(widget->metaObject()->className()) + u' ' + parent + u'/'
        + widget->objectName();
}

/// What can be clicked or typed into, in the order of the widget tree.
QWidgetList controlsOf(const QWidget *window)
{
    QWidgetList controls;
    for (QWidget *child : window->findChildren<QWidget *>()) {
        const bool isControl = child->focusPolicy() != Qt::NoFocus || qobject_cast<QTabBar *>(child)
            || child->inherits("DrawerArea") || child->inherits("WSimpleScaledDrawer");
        if (isControl && child->window() == window && child->isVisible() && child->isEnabled()) {
            controls.append(child);
        }
    }
    return controls;
}

} // namespace

void RandomUser::act(QWidget *mainWindow, const Told &told)
{
    if (QWidget *popup = QApplication::activePopupWidget()) {
        actOnPopup(popup, told);
    } else if (QWidget *dialog = QApplication::activeModalWidget()) {
        if (qobject_cast<QFileDialog *>(dialog)) {
            actOnFileDialog(dialog, told);
        } else if (m_random.oneIn(8)) {
            told(u"leave "_s + nameOf(dialog));
            QTest::keyClick(dialog, Qt::Key_Escape);
        } else {
            actOnWindow(dialog, told);
        }
    } else {
        actOnWindow(mainWindow, told);
    }
}

bool RandomUser::leave()
{
    QWidget *front = QApplication::activePopupWidget();
    if (!front) {
        front = QApplication::activeModalWidget();
    }
    if (!front) {
        return false;
    }
    front->close();
    return true;
}

QPoint RandomUser::somewhereOn(const QWidget *widget)
{
    return {m_random.below(widget->width()), m_random.below(widget->height())};
}

void RandomUser::actOnPopup(QWidget *popup, const Told &told)
{
    auto *menu = qobject_cast<QMenu *>(popup);
    if (menu && !menu->actions().isEmpty() && !m_random.oneIn(4)) {
        QAction *action = m_random.of(menu->actions());
        told(u"menu entry "_s + action->text());
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
        return;
    }
    constexpr Qt::Key PopupKeys[] = {Qt::Key_Up, Qt::Key_Down, Qt::Key_Return, Qt::Key_Escape};
    const Qt::Key key = PopupKeys[m_random.below(std::size(PopupKeys))];
    told(u"key %1 on a pop-up"_s.arg(key));
    QWidget *focus = popup->focusWidget() ? popup->focusWidget() : popup;
    QTest::keyClick(focus, key);
}

void RandomUser::actOnFileDialog(QWidget *dialog, const Told &told)
{
    static const QStringList names = {u"good.ini"_s,   u"empty.ini"_s,   u"broken.ini"_s,
                                      u"new.ini"_s,    u"missing.ini"_s, u"folder"_s,
                                      u"script.zdr"_s, u"/dev/full"_s};
    auto *edit = dialog->findChild<QLineEdit *>(u"fileNameEdit"_s);
    if (!edit || m_random.oneIn(4)) {
        told(u"leave the file dialog"_s);
        QTest::keyClick(dialog, Qt::Key_Escape);
        return;
    }
    edit->setText(m_random.of(names));
    told(u"file name "_s + edit->text());
    QTest::keyClick(edit, Qt::Key_Return);
}

void RandomUser::actOnWindow(QWidget *window, const Told &told)
{
    auto *mainWindow = qobject_cast<QMainWindow *>(window);
    if (mainWindow && m_random.oneIn(40)) {
        QMenuBar *bar = mainWindow->menuBar();
        QAction *action = m_random.of(bar->actions());
        told(u"menu "_s + action->text());
        QTest::mouseClick(bar, Qt::LeftButton, {}, bar->actionGeometry(action).center());
        return;
    }
    if (mainWindow && m_random.oneIn(200)) {
        const QSize size(400 + m_random.below(1400), 300 + m_random.below(800));
        told(u"size %1 x %2"_s.arg(size.width()).arg(size.height()));
        window->resize(size);
        return;
    }
    const QWidgetList controls = controlsOf(window);
    if (controls.isEmpty()) {
        told(u"nothing to click on"_s);
        return;
    }
    actOn(m_random.of(controls), told);
}

void RandomUser::actOn(QWidget *widget, const Told &told)
{
    auto *tabs = qobject_cast<QTabBar *>(widget);
    auto *spinBox = qobject_cast<QSpinBox *>(widget);
    if (tabs) {
        const int tab = m_random.below(tabs->count());
        told(u"tab "_s + tabs->tabText(tab));
        QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(tab).center());
    } else if (spinBox && m_random.oneIn(2)) {
        const int value = m_random.number();
        told(u"value %1 for "_s.arg(value) + nameOf(spinBox));
        spinBox->setFocus();
        spinBox->selectAll();
        QTest::keyClicks(spinBox, QString::number(value));
    } else if (m_random.oneIn(4)) {
        pressKey(widget, told);
    } else if (m_random.oneIn(8)) {
        turnWheel(widget, told);
    } else {
        const Qt::MouseButton button = m_random.oneIn(6) ? Qt::RightButton : Qt::LeftButton;
        const QPoint place = somewhereOn(widget);
        told(u"click %1 on "_s.arg(button) + nameOf(widget));
        // Not by a context menu of the toolkit's own, which is none of the tool's.
        widget->setContextMenuPolicy(Qt::PreventContextMenu);
        QTest::mouseClick(widget, button, {}, place);
    }
}

void RandomUser::pressKey(QWidget *widget, const Told &told)
{
    const Qt::Key key = Keys[m_random.below(std::size(Keys))];
    told(u"key %1 on "_s.arg(key) + nameOf(widget));
    QTest::keyClick(widget, key);
}

void RandomUser::turnWheel(QWidget *widget, const Told &told)
{
    const bool up = m_random.oneIn(2);
    told((up ? u"wheel up over "_s : u"wheel down over "_s) + nameOf(widget));
    ::turnWheel(widget, up);
}
