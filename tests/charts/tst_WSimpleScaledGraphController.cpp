#include "charts/WSimpleScaledGraphController.h"
#include "panels/PanelTest.h"
#include "support/MetaMethods.h"
#include "support/TestCase.h"

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>

#include <memory>

using namespace Qt::StringLiterals;
using namespace PanelTest;

using Signals = QStringList;

/// Drives the panel by the names of its controls and writes down what it emits, in order.
class tst_WSimpleScaledGraphController : public TestCase
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void metaObject();
    void form_data();
    void form();
    void everythingIsInTheGroup();
    void controlsFit();
    void manual();
    void dynamicAgain();
    void secondClick_data();
    void secondClick();
    void argumentIsNotLookedAt();
    void clearCharts();
    void enteredValues();
    void changedScaleValues();
    void scaleBeyondTheBoxes();

private:
    template <typename Widget = QWidget>
    Widget *child(const char *name) const
    {
        return m_window->findChild<Widget *>(QString::fromLatin1(name));
    }
    QPushButton *button(const char *name) const { return child<QPushButton>(name); }
    QSpinBox *box(const char *name) const { return child<QSpinBox>(name); }
    void click(const char *name) const { QTest::mouseClick(child(name), Qt::LeftButton); }
    /// Checked: dynamic, manual; enabled: sbMax, sbMin.
    QList<bool> state() const
    {
        return {button("btnScaleDynamic")->isChecked(), button("btnScaleManually")->isChecked(),
                box("sbMax")->isEnabled(), box("sbMin")->isEnabled()};
    }
    void enter(const char *name, const QString &text) const
    {
        box(name)->setFocus();
        box(name)->selectAll();
        QTest::keyClicks(box(name), text);
    }

    std::unique_ptr<QWidget> m_window;
    WSimpleScaledGraphController *m_controller = nullptr;
    Signals m_signals;
};

void tst_WSimpleScaledGraphController::init()
{
    TestCase::init();
    m_signals.clear();
    m_window = std::make_unique<QWidget>();
    m_window->resize(156, 164);
    m_controller = new WSimpleScaledGraphController(m_window.get());
    using Controller = WSimpleScaledGraphController;
    connect(m_controller, &Controller::clear, this, [this] { m_signals.append(u"clear"_s); });
    connect(m_controller, &Controller::scaleManually, this,
            [this] { m_signals.append(u"manually"_s); });
    connect(m_controller, &Controller::scaleDynamic, this,
            [this] { m_signals.append(u"dynamic"_s); });
    connect(m_controller, &Controller::minValueChanged, this,
            [this](int min) { m_signals.append(u"min %1"_s.arg(min)); });
    connect(m_controller, &Controller::maxValueChanged, this,
            [this](int max) { m_signals.append(u"max %1"_s.arg(max)); });
    connect(m_controller, &Controller::changeResolution, this,
            [this] { m_signals.append(u"resolution"_s); });
    m_window->show();
    m_window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void tst_WSimpleScaledGraphController::cleanup()
{
    m_window.reset();
}

void tst_WSimpleScaledGraphController::metaObject()
{
    const QMetaObject &meta = WSimpleScaledGraphController::staticMetaObject;
    QCOMPARE(meta.superClass(), &QWidget::staticMetaObject);
    QCOMPARE(ownMethods(meta, QMetaMethod::Signal),
             (QStringList{u"clear()"_s, u"scaleManually()"_s, u"scaleDynamic()"_s,
                          u"minValueChanged(int min)"_s, u"maxValueChanged(int max)"_s,
                          u"changeResolution(int resolution)"_s}));
    QCOMPARE(ownMethods(meta, QMetaMethod::Slot),
             (QStringList{u"changedScaleValues(int minValue, int maxValue)"_s,
                          u"on_btnClearCharts_clicked()"_s, u"on_sbMin_valueChanged(int value)"_s,
                          u"on_sbMax_valueChanged(int value)"_s,
                          u"on_btnScaleManually_clicked(bool checked)"_s,
                          u"on_btnScaleDynamic_clicked(bool checked)"_s}));
    QCOMPARE(m_controller->parentWidget(), m_window.get());
    QCOMPARE(m_controller->objectName(), u"WSimpleScaledGraphController"_s);
    QCOMPARE(m_controller->maximumSize(), QSize(156, 164));
    QCOMPARE(m_signals, Signals()); // the construction says nothing
}

void tst_WSimpleScaledGraphController::form_data()
{
    addPropertyColumns();
    constexpr auto row = &addPropertyRow;
    row("gbScalingYAxis", "QGroupBox", "title", u"Scaling Y-axis"_s);
    row("btnScaleDynamic", "QPushButton", "text", u"dynamic"_s);
    row("btnScaleDynamic", "QPushButton", "checkable", true);
    row("btnScaleDynamic", "QPushButton", "checked", true);
    row("btnScaleManually", "QPushButton", "text", u"manual"_s);
    row("btnScaleManually", "QPushButton", "checkable", true);
    row("btnScaleManually", "QPushButton", "checked", false);
    row("lblMax", "QLabel", "text", u"Max."_s);
    row("lblMin", "QLabel", "text", u"Min."_s);
    for (const char *name : {"sbMax", "sbMin"}) {
        row(name, "QSpinBox", "minimum", -2147483647);
        row(name, "QSpinBox", "maximum", 2147483647);
        row(name, "QSpinBox", "singleStep", 100);
        row(name, "QSpinBox", "enabled", false);
    }
    row("sbMax", "QSpinBox", "value", 4000);
    row("sbMin", "QSpinBox", "value", 0);
    row("btnClearCharts", "QPushButton", "text", u"Clear charts"_s);
    row("btnClearCharts", "QPushButton", "checkable", false);
    row("btnClearCharts", "QPushButton", "maximumWidth", 100);
}

void tst_WSimpleScaledGraphController::form()
{
    compareProperty(*m_controller);
}

void tst_WSimpleScaledGraphController::everythingIsInTheGroup()
{
    for (const char *name : {"btnScaleDynamic", "btnScaleManually", "lblMax", "sbMax", "lblMin",
                             "sbMin", "btnClearCharts"}) {
        QVERIFY2(child("gbScalingYAxis")->isAncestorOf(child(name)), name);
    }
}

void tst_WSimpleScaledGraphController::controlsFit()
{
    m_controller->resize(m_controller->maximumSize());
    m_controller->changedScaleValues(-2147483647, 2147483647);
    QTRY_COMPARE(child("gbScalingYAxis")->size(), QSize(156, 164));
    for (const char *name : {"btnScaleDynamic", "btnScaleManually", "lblMax", "sbMax", "lblMin",
                             "sbMin", "btnClearCharts"}) {
        const QWidget *control = child(name);
        QVERIFY2(m_controller->rect().contains(
                     QRect(control->mapTo(m_controller, QPoint()), control->size())),
                 name);
        QVERIFY2(control->height() >= control->minimumSizeHint().height(), name);
    }
    for (const char *name : {"btnScaleDynamic", "btnScaleManually", "btnClearCharts"}) {
        // Room for the text, if not for all the air that a style likes around it.
        const int textWidth = button(name)->fontMetrics().horizontalAdvance(button(name)->text());
        QVERIFY2(button(name)->width() >= textWidth + 8, name);
    }
    for (const char *name : {"sbMax", "sbMin"}) {
        const auto *edit = box(name)->findChild<QLineEdit *>();
        QVERIFY2(edit->width() >= edit->fontMetrics().horizontalAdvance(u"-2147483647"_s), name);
    }
}

void tst_WSimpleScaledGraphController::manual()
{
    click("btnScaleManually");
    QCOMPARE(state(), (QList<bool>{false, true, true, true}));
    QCOMPARE(m_signals, Signals{u"manually"_s});
}

void tst_WSimpleScaledGraphController::dynamicAgain()
{
    click("btnScaleManually");
    click("btnScaleDynamic");
    QCOMPARE(state(), (QList<bool>{true, false, false, false}));
    QCOMPARE(m_signals, (Signals{u"manually"_s, u"dynamic"_s}));
}

void tst_WSimpleScaledGraphController::secondClick_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::addColumn<QList<bool>>("state");
    QTest::addColumn<Signals>("emitted");
    // It is active from the start, so that the first click is the second one.
    QTest::newRow("dynamic") << QByteArray("btnScaleDynamic")
                             << QList<bool>{false, false, false, false} << Signals{u"dynamic"_s};
    QTest::newRow("manual") << QByteArray("btnScaleManually")
                            << QList<bool>{false, false, true, true} << Signals{u"manually"_s};
}

void tst_WSimpleScaledGraphController::secondClick()
{
    QFETCH(QByteArray, button);
    if (button == "btnScaleManually") {
        click(button);
        m_signals.clear();
    }
    click(button);
    QTEST(state(), "state");
    QTEST(m_signals, "emitted");
}

void tst_WSimpleScaledGraphController::argumentIsNotLookedAt()
{
    m_controller->on_btnScaleManually_clicked(false);
    QCOMPARE(state(), (QList<bool>{false, false, true, true}));
    m_controller->on_btnScaleDynamic_clicked(false);
    QCOMPARE(state(), (QList<bool>{false, false, false, false}));
    QCOMPARE(m_signals, (Signals{u"manually"_s, u"dynamic"_s}));
}

void tst_WSimpleScaledGraphController::clearCharts()
{
    click("btnClearCharts");
    QCOMPARE(m_signals, Signals{u"clear"_s});
}

void tst_WSimpleScaledGraphController::enteredValues()
{
    click("btnScaleManually");
    m_signals.clear();
    enter("sbMax", u"-7"_s);
    QCOMPARE(m_signals, (Signals{u"max -7"_s})); // "-" alone is no number yet
    m_signals.clear();
    QTest::keyClick(box("sbMin"), Qt::Key_Up);
    QTest::keyClick(box("sbMin"), Qt::Key_Down);
    QTest::keyClick(box("sbMin"), Qt::Key_Down);
    QCOMPARE(m_signals, (Signals{u"min 100"_s, u"min 0"_s, u"min -100"_s}));
}

void tst_WSimpleScaledGraphController::changedScaleValues()
{
    m_controller->changedScaleValues(-8, 151);
    QCOMPARE(box("sbMin")->value(), -8);
    QCOMPARE(box("sbMax")->value(), 151);
    QCOMPARE(m_signals, (Signals{u"min -8"_s, u"max 151"_s}));
    m_controller->changedScaleValues(-8, 151);
    QCOMPARE(m_signals.size(), 2);
}

void tst_WSimpleScaledGraphController::scaleBeyondTheBoxes()
{
    m_controller->changedScaleValues(std::numeric_limits<int>::min(), 2147483647);
    QCOMPARE(m_signals, (Signals{u"min -2147483647"_s, u"max 2147483647"_s}));
}

QTEST_MAIN(tst_WSimpleScaledGraphController)
#include "tst_WSimpleScaledGraphController.moc"
