#pragma once

#include "PanelSignalLog.h"
#include "PanelTest.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QCoreApplication>
#include <QDial>
#include <QIcon>
#include <QImage>
#include <QLabel>
#include <QSpinBox>

#include <array>
#include <cstddef>
#include <limits>

/// What the tests of the jog and motion panels share.
namespace MotionPanelTest {

inline constexpr int Largest = std::numeric_limits<int>::max();
inline constexpr int Least = std::numeric_limits<int>::min();

inline char byte(int value)
{
    return static_cast<char>(value);
}

/// Rows for a spin box with its step.
inline void addSteppedSpinBoxRows(const char *object, int least, int largest, int step, int initial,
                                  bool enabled)
{
    PanelTest::addSpinBoxRows(object, least, largest, initial, enabled);
    PanelTest::addPropertyRow(object, "QSpinBox", "singleStep", step);
}

inline void addDialRows(const char *object, int least, int largest, bool wrapping,
                        double notchTarget)
{
    using PanelTest::addPropertyRow;
    addPropertyRow(object, "QDial", "minimum", least);
    addPropertyRow(object, "QDial", "maximum", largest);
    addPropertyRow(object, "QDial", "value", 0);
    addPropertyRow(object, "QDial", "wrapping", wrapping);
    addPropertyRow(object, "QDial", "notchTarget", notchTarget);
    addPropertyRow(object, "QDial", "notchesVisible", true);
    addPropertyRow(object, "QDial", "tracking", true);
    addPropertyRow(object, "QDial", "enabled", true);
}

inline void addTextRow(const char *object, const char *className, const char *text)
{
    PanelTest::addPropertyRow(object, className, "text", QString::fromUtf8(text));
}

inline void addToolTipRow(const char *object, const char *className, const char *toolTip)
{
    PanelTest::addPropertyRow(object, className, "toolTip", QString::fromUtf8(toolTip));
}

/// The controls that assistive tools find no name for, and the labels that name none.
inline QStringList unnamedControls(const QWidget &panel)
{
    QStringList names;
    for (QWidget *widget : panel.findChildren<QWidget *>()) {
        if (widget->objectName().isEmpty()
            || widget->objectName().startsWith(QStringLiteral("qt_"))) {
            continue;
        }
        const auto *label = qobject_cast<const QLabel *>(widget);
        const QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(widget);
        if (label ? !label->buddy() : accessible->text(QAccessible::Name).isEmpty()) {
            names.append(widget->objectName());
        }
    }
    return names;
}

/// Gives the panel the size that its layout asks for with its present texts, as a page of the tool
/// does.
inline void adjustToTexts(QWidget *panel)
{
    QCoreApplication::sendPostedEvents(); // the layouts learn of the texts
    panel->adjustSize();
    QCoreApplication::sendPostedEvents();
}

/// Whether the button shows the picture @p path of the resources.
inline bool showsPicture(const QAbstractButton &button, const QString &path)
{
    const auto image = [](const QIcon &icon) { return icon.pixmap(16).toImage(); };
    return !image(QIcon(path)).isNull() && image(button.icon()) == image(QIcon(path));
}

/// Rows for the buttons that run a motor like a player, with the column "picture": @p buttons are
/// run left, jog left, stop, jog right and run right.
inline void addPlayerPictureRows(const std::array<const char *, 5> &buttons)
{
    constexpr const char *Pictures[] = {"Left", "leftStep", "Stop", "rightStep", "Right"};
    QTest::addColumn<QString>("picture");
    for (std::size_t i = 0; i < buttons.size(); ++i) {
        QTest::newRow(buttons[i]) << QStringLiteral(":/Player/") + QLatin1String(Pictures[i]);
    }
}

/// Compares what the button that the row is named after shows with the row's "picture".
inline void comparePicture(const QWidget &panel)
{
    QFETCH(QString, picture);
    const auto *button =
        panel.findChild<QAbstractButton *>(QString::fromLatin1(QTest::currentDataTag()));
    QVERIFY(button);
    QVERIFY(showsPicture(*button, picture));
}

/// Clicks twice on @p button. The panel's signals at a press and at a release are those of the
/// row's columns "atPress" and "atRelease".
template <typename Panel>
void compareClicks(const Panel &panel, const char *button)
{
    QFETCH(QStringList, atPress);
    QFETCH(QStringList, atRelease);
    QWidget *control = panel.child(button);
    for (int i = 0; i < 2; ++i) {
        QTest::mousePress(control, Qt::LeftButton);
        QCOMPARE(panel.log.take(), atPress);
        QTest::mouseRelease(control, Qt::LeftButton);
        QCOMPARE(panel.log.take(), atRelease);
    }
}

/// A place on the dial: @p x and @p y from -1 to 1 from its middle, to the right and downwards.
inline QPoint dialPoint(const QDial *dial, double x, double y)
{
    const double radius = qMin(dial->width(), dial->height()) / 2.0 - 5;
    return QPoint(qRound(dial->width() / 2.0 + x * radius),
                  qRound(dial->height() / 2.0 + y * radius));
}

/// Presses the mouse on the dial at the first of @p points, drags it over the others and releases.
inline void dragDial(QDial *dial, const QList<QPoint> &points)
{
    QTest::mousePress(dial, Qt::LeftButton, {}, points.first());
    for (const QPoint &point : points) {
        QTest::mouseMove(dial, point);
    }
    QTest::mouseRelease(dial, Qt::LeftButton, {}, points.last());
}

} // namespace MotionPanelTest
