#include "app/ControlWalk.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QScrollBar>
#include <QTabBar>
#include <QTest>
#include <QTextEdit>

using namespace Qt::StringLiterals;

namespace {

QString withoutMnemonic(QString text)
{
    return text.remove(u'&').trimmed();
}

/// The focus, with the control that a part belongs to.
QWidget *focusedControl()
{
    QWidget *widget = QApplication::focusWidget();
    while (widget && widget->focusProxy()) {
        widget = widget->focusProxy();
    }
    while (widget && isPartOfAControl(widget) && widget->parentWidget()) {
        widget = widget->parentWidget();
    }
    return widget;
}

} // namespace

bool isSeen(const QWidget *widget)
{
    return widget->isVisible() && !widget->visibleRegion().isEmpty();
}

bool isPartOfAControl(const QWidget *widget)
{
    for (const QWidget *parent = widget->parentWidget(); parent; parent = parent->parentWidget()) {
        if (qobject_cast<const QAbstractSpinBox *>(parent)
            || qobject_cast<const QComboBox *>(parent)
            || qobject_cast<const QAbstractItemView *>(parent)
            || qobject_cast<const QTabBar *>(parent)) {
            return true;
        }
    }
    return widget->objectName().startsWith("qt_"_L1) || qobject_cast<const QScrollBar *>(widget);
}

bool isControl(const QWidget *widget)
{
    const bool isOfAKind = qobject_cast<const QAbstractButton *>(widget)
        || qobject_cast<const QAbstractSpinBox *>(widget) || qobject_cast<const QComboBox *>(widget)
        || qobject_cast<const QAbstractSlider *>(widget) || qobject_cast<const QLineEdit *>(widget)
        || qobject_cast<const QTextEdit *>(widget)
        || qobject_cast<const QAbstractItemView *>(widget);
    return isOfAKind && !isPartOfAControl(widget);
}

QList<QWidget *> visibleControls(const QWidget *window)
{
    QList<QWidget *> controls;
    const auto widgets = window->findChildren<QWidget *>();
    for (QWidget *widget : widgets) {
        if (isSeen(widget) && isControl(widget)) {
            controls.append(widget);
        }
    }
    return controls;
}

QString nameOf(const QWidget *window, const QWidget *control)
{
    if (!control->accessibleName().isEmpty()) {
        return control->accessibleName();
    }
    if (const auto *button = qobject_cast<const QAbstractButton *>(control)) {
        return withoutMnemonic(button->text());
    }
    const auto labels = window->findChildren<QLabel *>();
    for (const QLabel *label : labels) {
        if (label->buddy() == control) {
            return withoutMnemonic(label->text());
        }
    }
    return {};
}

const QWidget *groupOf(const QWidget *control)
{
    const QWidget *group = control->parentWidget();
    while (!group->isWindow() && !qobject_cast<const QGroupBox *>(group)) {
        group = group->parentWidget();
    }
    return group;
}

QByteArray describe(const QWidget *widget)
{
    QByteArray path;
    for (; widget; widget = widget->parentWidget()) {
        if (!widget->objectName().isEmpty()) {
            path = widget->objectName().toLatin1() + (path.isEmpty() ? "" : "/") + path;
        }
    }
    return path;
}

QStringList visibleTexts(const QWidget *window)
{
    QStringList texts;
    const auto widgets = window->findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        if (!isSeen(widget)) {
            continue;
        }
        if (const auto *button = qobject_cast<const QAbstractButton *>(widget)) {
            texts.append(button->text());
        } else if (const auto *group = qobject_cast<const QGroupBox *>(widget)) {
            texts.append(group->title());
        } else if (const auto *label = qobject_cast<const QLabel *>(widget)) {
            if (label->buddy()) {
                texts.append(label->text());
            }
        } else if (const auto *tabs = qobject_cast<const QTabBar *>(widget)) {
            for (int index = 0; index < tabs->count(); ++index) {
                texts.append(tabs->tabText(index));
            }
        } else if (const auto *menuBar = qobject_cast<const QMenuBar *>(widget)) {
            for (const QAction *action : menuBar->actions()) {
                texts.append(action->text());
            }
        }
    }
    return texts;
}

QList<QWidget *> tabOrder(QWidget *window)
{
    constexpr int Enough = 200;
    for (QWidget *widget = window->nextInFocusChain(); widget != window;
         widget = widget->nextInFocusChain()) {
        if (isSeen(widget) && widget->isEnabled() && (widget->focusPolicy() & Qt::TabFocus)
            && widget->window() == window) {
            widget->setFocus(Qt::TabFocusReason);
            break;
        }
    }
    QList<QWidget *> order;
    for (int i = 0; i < Enough; ++i) {
        QWidget *control = focusedControl();
        if (!control || order.contains(control)) {
            break;
        }
        order.append(control);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    return order;
}
