#include "driver/ControlGeometry.h"
#include "driver/OnWidget.h"
#include "driver/Steps.h"
#include "driver/UserInput.h"
#include "driver/WidgetPath.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace driver::steps {

namespace {

QStringList withoutMnemonics(const QStringList &texts)
{
    QStringList plain;
    for (const QString &text : texts) {
        plain.append(withoutMnemonic(text));
    }
    return plain;
}

// Index of the one of `texts` that `text` names; -1 with a reason if there isn't exactly one.
qsizetype indexOf(const QStringList &texts, const QString &text, QString *problem)
{
    const QStringList plain = withoutMnemonics(texts);
    const QString wanted = withoutMnemonic(text);
    switch (plain.count(wanted)) {
    case 0:
        *problem = u"has no \"%1\", only: %2"_s.arg(text, plain.join(u" | "_s));
        return -1;
    case 1:
        return plain.indexOf(wanted);
    default:
        *problem = u"is ambiguous: it has \"%1\" more than once"_s.arg(text);
        return -1;
    }
}

// Moves the mark in an open list to `row`, key by key, and takes it. By key and not by click: the
// toolkit ignores clicks in a list that has just opened, and long lists need no scrolling this way.
Plan pickRow(QComboBox *combo, int row, int strokesLeft)
{
    Plan plan;
    plan.attempt([combo = QPointer<QComboBox>(combo), row, strokesLeft] {
        if (!combo || !combo->view()->isVisible()) {
            return Progress::notYet(u"its list doesn't open"_s);
        }
        const int at = combo->view()->currentIndex().row();
        QWidget *list = combo->view();
        if (at == row) {
            return Progress::doneThen(input::keys(list, QKeySequence(Qt::Key_Return)));
        }
        if (strokesLeft == 0) {
            return Progress::failed(u"its list doesn't reach the item"_s);
        }
        Plan next = input::keys(list, QKeySequence(at < row ? Qt::Key_Down : Qt::Key_Up));
        return Progress::doneThen(next.then(pickRow(combo, row, strokesLeft - 1)));
    });
    return plan;
}

QModelIndex findItem(const QAbstractItemView *view, const QString &text, QString *problem)
{
    QStringList texts;
    QModelIndexList indexes;
    const QAbstractItemModel *model = view->model();
    QModelIndexList open{view->rootIndex()};
    while (model && !open.isEmpty()) {
        const QModelIndex parent = open.takeFirst();
        for (int row = 0; row < model->rowCount(parent); ++row) {
            for (int column = 0; column < model->columnCount(parent); ++column) {
                const QModelIndex index = model->index(row, column, parent);
                texts.append(index.data().toString());
                indexes.append(index);
                if (model->hasChildren(index)) {
                    open.append(index);
                }
            }
        }
    }
    const qsizetype found = indexOf(texts, text, problem);
    return found < 0 ? QModelIndex() : indexes[found];
}

// A bar that is too narrow for its tabs has two buttons at its end that scroll it.
Plan clickTab(QTabBar *bar, int index, int scrollsLeft)
{
    Plan plan;
    plan.attempt([bar = QPointer<QTabBar>(bar), index, scrollsLeft] {
        if (!bar) {
            return Progress::failed(u"has gone"_s);
        }
        const QPoint point = bar->tabRect(index).center();
        const bool inView = bar->rect().contains(point) && !bar->childAt(point);
        if (inView) {
            return Progress::doneThen(input::click(bar, point));
        }
        const QString name =
            point.x() < 0 || point.y() < 0 ? u"ScrollLeftButton"_s : u"ScrollRightButton"_s;
        auto *scroll = bar->findChild<QToolButton *>(name);
        if (!scroll || scrollsLeft == 0) {
            return Progress::failed(u"has that tab out of view"_s);
        }
        Plan next = input::click(scroll, scroll->rect().center());
        return Progress::doneThen(next.then(clickTab(bar, index, scrollsLeft - 1)));
    });
    return plan;
}

Plan chooseTab(QTabBar *bar, const QString &text)
{
    QStringList texts;
    for (int i = 0; i < bar->count(); ++i) {
        texts.append(bar->tabText(i));
    }
    QString problem;
    const int index = static_cast<int>(indexOf(texts, text, &problem));
    if (index < 0) {
        return Plan::failure(problem);
    }
    if (const QString inTheWay = input::obstacle(bar, geometry::clickPoint(bar));
        !inTheWay.isEmpty()) {
        return Plan::failure(inTheWay);
    }
    if (!bar->isTabEnabled(index)) {
        return Plan::failure(u"has the tab \"%1\" disabled"_s.arg(text));
    }
    Plan plan = clickTab(bar, index, bar->count());
    plan.attempt([bar = QPointer<QTabBar>(bar), index] {
        const bool chosen = !bar || bar->currentIndex() == index;
        return chosen ? Progress::done() : Progress::failed(u"stays on another tab"_s);
    });
    return plan;
}

// Clicks through `texts`, the first of which is an entry of `bar` (a menu bar or menu).
template <typename Bar>
Plan walkMenu(Bar *bar, const QStringList &texts)
{
    QStringList offered;
    for (const QAction *action : bar->actions()) {
        offered.append(action->text().section(u'\t', 0, 0));
    }
    QString problem;
    const qsizetype index = indexOf(offered, texts.first(), &problem);
    if (index < 0) {
        return Plan::failure(problem);
    }
    QAction *action = bar->actions().at(index);
    if (!action->isVisible()) {
        return Plan::failure(u"has \"%1\" hidden"_s.arg(texts.first()));
    }
    if (!action->isEnabled()) {
        return Plan::failure(u"has \"%1\" disabled"_s.arg(texts.first()));
    }
    if (texts.size() > 1 && !action->menu()) {
        return Plan::failure(u"has no menu behind \"%1\""_s.arg(texts.first()));
    }

    Plan plan = input::click(bar, bar->actionGeometry(action).center());
    if (texts.size() == 1) {
        return plan;
    }
    plan.attempt([menu = QPointer<QMenu>(action->menu()), rest = texts.mid(1)] {
        const bool open = menu && menu->isVisible() && QApplication::activePopupWidget() == menu;
        return open ? Progress::doneThen(walkMenu(menu.data(), rest))
                    : Progress::notYet(u"the menu doesn't open"_s);
    });
    return plan;
}

} // namespace

Plan select(const QStringList &arguments)
{
    const QString text = arguments[1];
    return onWidget<QComboBox>(arguments[0], "combo box", [&](QComboBox *combo) {
        QStringList texts;
        for (int i = 0; i < combo->count(); ++i) {
            texts.append(combo->itemText(i));
        }
        QString problem;
        const int row = static_cast<int>(indexOf(texts, text, &problem));
        if (row < 0) {
            return Plan::failure(problem);
        }
        const QModelIndex index =
            combo->model()->index(row, combo->modelColumn(), combo->rootModelIndex());
        if (!index.flags().testFlag(Qt::ItemIsEnabled)) {
            return Plan::failure(u"has the item \"%1\" disabled"_s.arg(text));
        }

        Plan plan = input::click(combo, geometry::clickPoint(combo));
        plan.then(pickRow(combo, row, combo->count() + 1));
        plan.attempt([combo = QPointer<QComboBox>(combo), shown = texts[row]] {
            if (!combo || combo->currentText() == shown) {
                return Progress::done();
            }
            return Progress::failed(u"shows \"%1\""_s.arg(combo->currentText()));
        });
        return plan;
    });
}

Plan item(const QStringList &arguments)
{
    return onWidget<QAbstractItemView>(
        arguments[0], "list, table or tree", [&](QAbstractItemView *view) {
            QString problem;
            const QModelIndex index = findItem(view, arguments[1], &problem);
            if (!index.isValid()) {
                return Plan::failure(problem);
            }
            const QPoint point = view->visualRect(index).center();
            if (!view->viewport()->rect().contains(point)) {
                return Plan::failure(u"has that item out of view"_s);
            }
            return input::click(view->viewport(), point);
        });
}

Plan tab(const QStringList &arguments)
{
    return onWidget(arguments[0], [&](QWidget *widget) {
        if (auto *tabs = qobject_cast<QTabWidget *>(widget)) {
            return chooseTab(tabs->tabBar(), arguments[1]);
        }
        if (auto *bar = qobject_cast<QTabBar *>(widget)) {
            return chooseTab(bar, arguments[1]);
        }
        return Plan::failure(u"is a %1, not a tab widget"_s.arg(
            QString::fromLatin1(widget->metaObject()->className())));
    });
}

Plan menu(const QStringList &arguments)
{
    QWidget *window = WidgetFinder::mainWindow();
    auto *bar = window ? window->findChild<QMenuBar *>() : nullptr;
    return bar ? walkMenu(bar, arguments) : Plan::failure(u"the main window has no menu bar"_s);
}

} // namespace driver::steps
