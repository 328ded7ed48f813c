#include "driver/UserInput.h"

#include "driver/ControlGeometry.h"
#include "driver/WidgetFinder.h"

#include <QApplication>
#include <QKeySequence>
#include <QPointer>
#include <QTest>
#include <QWheelEvent>
#include <QWindow>

#include <cstdlib>
#include <memory>

using namespace Qt::StringLiterals;

namespace driver::input {

namespace {

using Guarded = QPointer<QWidget>;

constexpr int unitsPerNotch = 120;

bool isPopup(const QWidget *window)
{
    return window->windowType() == Qt::Popup;
}

// The window of a widget that may have gone meanwhile; null if no event can be sent there.
QWindow *windowOf(const Guarded &widget)
{
    QWindow *window = widget ? widget->window()->windowHandle() : nullptr;
    return window && window->isVisible() ? window : nullptr;
}

QPoint inWindow(const QWidget *widget, QPoint point)
{
    return widget->mapTo(widget->window(), point);
}

QString whyHidden(const QWidget *widget)
{
    for (const QWidget *each = widget; each != widget->window(); each = each->parentWidget()) {
        if (!each->isHidden()) {
            continue;
        }
        return each == widget ? u"is hidden"_s
                              : u"is hidden, %1 isn't shown"_s.arg(WidgetFinder::pathOf(each));
    }
    return u"is hidden"_s;
}

QString windowObstacle(const QWidget *window)
{
    const QWidget *popup = QApplication::activePopupWidget();
    if (popup && popup != window) {
        return u"is out of reach, %1 is open"_s.arg(WidgetFinder::pathOf(popup));
    }
    const QWidget *modal = QApplication::activeModalWidget();
    if (modal && !isPopup(window) && modal != window && !modal->isAncestorOf(window)) {
        return u"is behind the dialog \"%1\""_s.arg(modal->windowTitle());
    }
    return {};
}

// Ready for events: shown, and in front as a window manager puts the window that is clicked on.
Progress comeToFront(const Guarded &widget)
{
    QWindow *handle = windowOf(widget);
    if (!handle || !handle->isExposed()) {
        return Progress::notYet(u"its window doesn't appear"_s);
    }
    QWidget *window = widget->window();
    if (isPopup(window) || window->isActiveWindow()) {
        return Progress::done();
    }
    window->activateWindow();
    return Progress::notYet(u"its window doesn't become active"_s);
}

// Sends something to the window of a widget, or nothing if that window has gone.
void send(Plan &plan, QWidget *widget, QPoint point, std::function<void(QWindow *, QPoint)> event)
{
    plan.act([widget = Guarded(widget), point, event = std::move(event)] {
        if (QWindow *window = windowOf(widget)) {
            event(window, inWindow(widget, point));
        }
    });
}

void sendWheel(QWindow *window, QPoint point, int notches)
{
    QWheelEvent event(point, window->mapToGlobal(point), QPoint(),
                      QPoint(0, notches * unitsPerNotch), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    // Only the wheel of a user gives a control the focus, so the event must pass for one.
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(window, &event);
}

QWindow *keyWindow(const Guarded &widget)
{
    QWidget *popup = QApplication::activePopupWidget();
    return windowOf(popup ? Guarded(popup) : widget);
}

// A stroke in two actions: what it starts may be a dialog, and the key goes up while that is open.
void stroke(Plan &plan, QWidget *widget, Qt::Key key, const QString &text,
            Qt::KeyboardModifiers modifiers)
{
    // The toolkit's test library passes the delay on as the number of repetitions, which is one.
    constexpr int once = 1;
    const auto pressed = std::make_shared<QPointer<QWindow>>();
    plan.act([=, widget = Guarded(widget)] {
        if (QWindow *window = keyWindow(widget)) {
            *pressed = window;
            QTest::sendKeyEvent(QTest::Press, window, key, text, modifiers, once);
        }
    });
    plan.act([=] {
        if (*pressed && (*pressed)->isVisible()) {
            QTest::sendKeyEvent(QTest::Release, *pressed, key, text, modifiers, once);
        }
    });
}

// What a key types; nothing if it does something else, as shortcuts do.
QString typedText(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    const bool printable = key >= Qt::Key_Space && key <= Qt::Key_AsciiTilde;
    if (!printable || modifiers & ~Qt::KeyboardModifiers(Qt::ShiftModifier)) {
        return {};
    }
    const QChar sign(static_cast<char16_t>(key));
    return modifiers & Qt::ShiftModifier ? sign : sign.toLower();
}

Plan whenInFront(QWidget *widget)
{
    Plan plan;
    plan.attempt([widget = Guarded(widget)] { return comeToFront(widget); });
    return plan;
}

Plan awaitFocus(QWidget *widget)
{
    Plan plan;
    plan.attempt(
        [widget = Guarded(widget)] {
            const bool focused =
                widget && (widget->hasFocus() || widget->isAncestorOf(QApplication::focusWidget()));
            return focused ? Progress::done()
                           : Progress::notYet(u"doesn't take the keyboard focus"_s);
        },
        std::chrono::seconds(2));
    return plan;
}

} // namespace

QString obstacle(const QWidget *widget, QPoint point)
{
    if (!widget->isVisible()) {
        return whyHidden(widget);
    }
    if (!widget->isEnabled()) {
        return u"is disabled"_s;
    }
    const QWidget *window = widget->window();
    if (const QString inTheWay = windowObstacle(window); !inTheWay.isEmpty()) {
        return inTheWay;
    }
    if (!geometry::visibleRect(widget).contains(point)) {
        return u"is outside of what its window shows"_s;
    }
    const QWidget *top = window->childAt(inWindow(widget, point));
    if (top && top != widget && !widget->isAncestorOf(top)) {
        return u"is covered by %1"_s.arg(WidgetFinder::pathOf(top));
    }
    return {};
}

Plan moveTo(QWidget *widget, QPoint point)
{
    if (const QString inTheWay = obstacle(widget, point); !inTheWay.isEmpty()) {
        return Plan::failure(inTheWay);
    }
    Plan plan = whenInFront(widget);
    send(plan, widget, point, [](QWindow *window, QPoint at) { QTest::mouseMove(window, at); });
    return plan;
}

Plan press(QWidget *widget, QPoint point)
{
    Plan plan = moveTo(widget, point);
    send(plan, widget, point, [](QWindow *window, QPoint at) {
        QTest::mousePress(window, Qt::LeftButton, Qt::NoModifier, at);
    });
    return plan;
}

Plan drag(QWidget *widget, QPoint point)
{
    Plan plan;
    send(plan, widget, point, [](QWindow *window, QPoint at) { QTest::mouseMove(window, at); });
    return plan;
}

Plan release(QWidget *widget, QPoint point)
{
    Plan plan;
    send(plan, widget, point, [](QWindow *window, QPoint at) {
        QTest::mouseRelease(window, Qt::LeftButton, Qt::NoModifier, at);
    });
    return plan;
}

Plan click(QWidget *widget, QPoint point)
{
    return press(widget, point).then(release(widget, point));
}

Plan doubleClick(QWidget *widget, QPoint point)
{
    Plan plan = moveTo(widget, point);
    send(plan, widget, point, [](QWindow *window, QPoint at) {
        QTest::mouseDClick(window, Qt::LeftButton, Qt::NoModifier, at);
    });
    return plan;
}

Plan wheel(QWidget *widget, QPoint point, int notches)
{
    Plan plan = moveTo(widget, point);
    for (int i = 0; i < std::abs(notches); ++i) {
        send(plan, widget, point, [notch = notches < 0 ? -1 : 1](QWindow *window, QPoint at) {
            sendWheel(window, at, notch);
        });
    }
    return plan;
}

Plan focusByClick(QWidget *widget)
{
    const QPoint middle = widget->rect().center();
    if (const QString inTheWay = obstacle(widget, middle); !inTheWay.isEmpty()) {
        return Plan::failure(inTheWay);
    }
    Plan plan = whenInFront(widget);
    plan.attempt([widget = Guarded(widget), middle] {
        return widget && !widget->hasFocus() ? Progress::doneThen(click(widget, middle))
                                             : Progress::done();
    });
    return plan.then(awaitFocus(widget));
}

Plan focusByTab(QWidget *widget)
{
    if (!(widget->focusPolicy() & Qt::TabFocus)) {
        return Plan::failure(u"can't be reached with the tabulator key"_s);
    }
    if (const QString inTheWay = obstacle(widget, widget->rect().center()); !inTheWay.isEmpty()) {
        return Plan::failure(inTheWay);
    }
    Plan plan = whenInFront(widget);
    plan.act([widget = Guarded(widget)] {
        if (widget) {
            widget->setFocus(Qt::TabFocusReason);
        }
    });
    return plan.then(awaitFocus(widget));
}

Plan keys(QWidget *widget, const QKeySequence &sequence)
{
    Plan plan;
    for (int i = 0; i < sequence.count(); ++i) {
        const QKeyCombination combination = sequence[static_cast<uint>(i)];
        stroke(plan, widget, combination.key(),
               typedText(combination.key(), combination.keyboardModifiers()),
               combination.keyboardModifiers());
    }
    return plan;
}

Plan text(QWidget *widget, const QString &text)
{
    Plan plan;
    // The codes of keys are those of the capital letters and signs on them.
    for (const QChar c : text) {
        stroke(plan, widget, static_cast<Qt::Key>(c.toUpper().unicode()), c, Qt::NoModifier);
    }
    return plan;
}

} // namespace driver::input
