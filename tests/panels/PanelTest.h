#pragma once

#include <QLocale>
#include <QSignalSpy>
#include <QTest>
#include <QWidget>

#include <functional>

/// What the tests of the panels share.
namespace PanelTest {

/// Makes @p locale the one that new widgets get, while the object lives.
class DefaultLocale
{
public:
    explicit DefaultLocale(const QString &locale) { QLocale::setDefault(QLocale(locale)); }
    ~DefaultLocale() { QLocale::setDefault(m_before); }
    DefaultLocale(const DefaultLocale &) = delete;
    DefaultLocale &operator=(const DefaultLocale &) = delete;

private:
    QLocale m_before;
};

/// A panel inside a shown window, as it stands in the tool.
template <typename Panel>
class Shown
{
public:
    /// @param create makes the panel, as a child of the window
    explicit Shown(const std::function<Panel *(QWidget *window)> &create =
                       [](QWidget *window) { return new Panel(window); })
        : m_panel(create(&m_window))
    {
        m_window.resize(600, 300);
        m_window.show();
        m_window.activateWindow();
        if (!QTest::qWaitForWindowActive(&m_window)) {
            qFatal("the window doesn't get active");
        }
    }

    Panel *operator->() const { return m_panel; }
    Panel *get() const { return m_panel; }

    /// The control with that object name; its absence ends the test program.
    template <typename Widget>
    Widget *child(const char *name) const
    {
        auto *widget = m_panel->template findChild<Widget *>(QString::fromLatin1(name));
        if (!widget) {
            qFatal("no control %s", name);
        }
        return widget;
    }
    QWidget *child(const char *name) const { return child<QWidget>(name); }

    void click(const char *name) const { QTest::mouseClick(child(name), Qt::LeftButton); }
    bool enabled(const char *name) const { return child(name)->isEnabled(); }

    /// Types @p text over what the control holds.
    void type(const char *name, const QString &text) const
    {
        QWidget *widget = child(name);
        widget->setFocus();
        QTest::keySequence(widget, QKeySequence::SelectAll);
        QTest::keyClicks(widget, text);
    }

    /// The names of the controls that Tab goes through, beginning with @p first, until it comes
    /// round or leaves the panel.
    QStringList tabOrder(const char *first) const
    {
        QStringList names;
        child(first)->setFocus();
        for (QWidget *at = QApplication::focusWidget();
             at && m_panel->isAncestorOf(at) && !names.contains(at->objectName());
             at = QApplication::focusWidget()) {
            names.append(at->objectName());
            QTest::keyClick(at, Qt::Key_Tab);
        }
        return names;
    }

    /// The names of the controls that lie outside of their panel or get less room than they ask
    /// for at least.
    QStringList clipped() const
    {
        QStringList names;
        for (const QWidget *widget : m_panel->template findChildren<QWidget *>()) {
            if (!widget->isVisible() || widget->objectName().isEmpty()
                || widget->objectName().startsWith(QStringLiteral("qt_"))) {
                continue;
            }
            const QRect place(widget->mapTo(m_panel, QPoint()), widget->size());
            const QSize least = widget->minimumSizeHint().boundedTo(widget->maximumSize());
            if (!m_panel->rect().contains(place) || widget->width() < least.width()
                || widget->height() < least.height()) {
                names.append(widget->objectName());
            }
        }
        return names;
    }

private:
    QWidget m_window;
    Panel *m_panel;
};

/// Columns for rows that compare one property of one control.
inline void addPropertyColumns()
{
    QTest::addColumn<QString>("object");
    QTest::addColumn<QString>("className");
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QVariant>("value");
}

inline void addPropertyRow(const char *object, const char *className, const char *property,
                           const QVariant &value)
{
    QTest::addRow("%s.%s", object, property)
        << QString::fromLatin1(object) << QString::fromLatin1(className) << QByteArray(property)
        << value;
}

/// Rows for a spin box from @p least to @p largest.
inline void addSpinBoxRows(const char *object, int least, int largest, int initial, bool enabled)
{
    addPropertyRow(object, "QSpinBox", "minimum", least);
    addPropertyRow(object, "QSpinBox", "maximum", largest);
    addPropertyRow(object, "QSpinBox", "value", initial);
    addPropertyRow(object, "QSpinBox", "enabled", enabled);
}

/// Compares the row's property; to be called by the test function of these rows.
inline void compareProperty(const QWidget &panel)
{
    QFETCH(QString, object);
    QFETCH(QString, className);
    QFETCH(QByteArray, property);
    QFETCH(QVariant, value);
    const QWidget *widget =
        object == QStringLiteral("panel") ? &panel : panel.findChild<QWidget *>(object);
    QVERIFY(widget);
    QCOMPARE(QString::fromLatin1(widget->metaObject()->className()), className);
    QVERIFY(widget->metaObject()->indexOfProperty(property) >= 0);
    QCOMPARE(widget->property(property), value);
}

} // namespace PanelTest
