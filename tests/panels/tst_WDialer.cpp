#include "MotionPanelTest.h"
#include "panels/WDialer.h"
#include "support/MetaMethods.h"
#include "support/TestCase.h"

#include <QKeyEvent>

using namespace Qt::StringLiterals;
using namespace PanelTest;
using namespace MotionPanelTest;

using Panel = Shown<WDialer>;

class tst_WDialer : public TestCase
{
    Q_OBJECT

private slots:
    void setValueIgnoresRepeats(); // first: the remembered value is one for all instances
    void signalsAndSlots();
    void form_data();
    void form();
    void spinBoxMovesDial();
    void dialMovesSpinBox();
    void dragging();
    void maximum();
    void setters();
    void names();
};

void tst_WDialer::setValueIgnoresRepeats()
{
    const Panel first;
    const Panel second;
    PanelSignalLog log(first.get());
    first.child<QSpinBox>("sbActualValue")->setValue(9);
    log.take();
    first->setValue(0); // what is remembered at first
    QCOMPARE(first->value(), 9);
    first->setValue(42);
    QCOMPARE(first->value(), 42);
    QCOMPARE(first.child<QDial>("dialer")->value(), 42);
    QCOMPARE(log.take(), QStringList{u"valueChanged(42)"_s});
    second->setValue(42);
    QCOMPARE(second->value(), 0);
    first.child<QSpinBox>("sbActualValue")->setValue(7);
    first->setValue(42);
    QCOMPARE(first->value(), 7);
    second->setValue(43);
    QCOMPARE(second->value(), 43);
    first->setValue(42);
    QCOMPARE(first->value(), 42);
}

void tst_WDialer::signalsAndSlots()
{
    const QMetaObject &metaObject = WDialer::staticMetaObject;
    QCOMPARE(metaObject.superClass(), &QWidget::staticMetaObject);
    QCOMPARE(ownMethods(metaObject, QMetaMethod::Signal),
             QStringList{u"valueChanged(int value)"_s});
    QCOMPARE(ownMethods(metaObject, QMetaMethod::Slot),
             (QStringList{u"handleDialValueChanged(int value)"_s,
                          u"handleSpinValueChanged(int value)"_s}));
}

void tst_WDialer::form_data()
{
    addPropertyColumns();
    addDialRows("dialer", 0, 99, false, 5.0);
    addPropertyRow("dialer", "QDial", "invertedControls", true);
    addPropertyRow("dialer", "QDial", "invertedAppearance", false);
    addTextRow("lblActualValue", "QLabel", "Value");
    addPropertyRow("lblActualValue", "QLabel", "textFormat", QVariant::fromValue(Qt::PlainText));
    addPropertyRow("lblActualValue", "QLabel", "textInteractionFlags",
                   QVariant::fromValue(Qt::TextInteractionFlags(Qt::NoTextInteraction)));
    addSteppedSpinBoxRows("sbActualValue", 0, 99, 10000, 0, true);
}

void tst_WDialer::form()
{
    const Panel panel;
    compareProperty(*panel.get());
}

void tst_WDialer::spinBoxMovesDial()
{
    const Panel panel;
    PanelSignalLog log(panel.get());
    panel.child<QSpinBox>("sbActualValue")->setValue(30);
    QCOMPARE(panel.child<QDial>("dialer")->value(), 30);
    QCOMPARE(log.take(), QStringList{u"valueChanged(30)"_s});
    panel->setLogarithmic(true);
    panel->setMaximum(8000000);
    panel.type("sbActualValue", u"1000"_s);
    QCOMPARE(panel.child<QDial>("dialer")->value(), 30);
    QCOMPARE(log.take().last(), u"valueChanged(1000)"_s);
}

void tst_WDialer::dialMovesSpinBox()
{
    const Panel panel;
    PanelSignalLog log(panel.get());
    auto *dial = panel.child<QDial>("dialer");
    dial->setValue(30);
    QCOMPARE(panel->value(), 30);
    QTest::keyClick(dial, Qt::Key_Up); // inverted
    QCOMPARE(panel->value(), 29);
    QCOMPARE(log.take(), (QStringList{u"valueChanged(30)"_s, u"valueChanged(29)"_s}));
    panel->setLogarithmic(true);
    panel->setMaximum(8000000);
    dial->setValue(30);
    QCOMPARE(panel->value(), 999);
    dial->setValue(70);
    QCOMPARE(panel->value(), 8000000);
    QCOMPARE(log.take(), (QStringList{u"valueChanged(999)"_s, u"valueChanged(8000000)"_s}));
}

void tst_WDialer::dragging()
{
    const Panel panel;
    auto *dial = panel.child<QDial>("dialer");
    QSignalSpy turned(dial, &QDial::valueChanged);
    PanelSignalLog log(panel.get());
    dragDial(dial, {dialPoint(dial, -1, 0), dialPoint(dial, 0, -1), dialPoint(dial, 1, 0)});
    QStringList expected;
    for (const QVariantList &step : turned) {
        expected.append(u"valueChanged(%1)"_s.arg(step.first().toInt()));
    }
    QCOMPARE(expected.size(), 3);
    QCOMPARE(log.take(), expected);
    QCOMPARE(panel->value(), dial->value());
    QVERIFY(panel->value() > 50);
}

void tst_WDialer::maximum()
{
    const Panel panel;
    panel->setMaximum(500);
    QCOMPARE(panel.child<QSpinBox>("sbActualValue")->maximum(), 500);
    QCOMPARE(panel.child<QDial>("dialer")->maximum(), 500);
    panel->setLogarithmic(true);
    QCOMPARE(panel.child<QDial>("dialer")->maximum(), 28); // 10 * 2.699 + 1
}

void tst_WDialer::setters()
{
    const Panel panel;
    panel->setSingleStep(25);
    panel->setLabel(u"Speed"_s);
    panel->setToolTip(u"pps"_s);
    QCOMPARE(panel.child<QSpinBox>("sbActualValue")->singleStep(), 25);
    QCOMPARE(panel.child<QLabel>("lblActualValue")->text(), u"Speed"_s);
    QCOMPARE(panel.child("sbActualValue")->toolTip(), u"pps"_s);
    QCOMPARE(panel.child("dialer")->toolTip(), u"pps"_s);
}

void tst_WDialer::names()
{
    const Panel panel;
    QCOMPARE(unnamedControls(*panel.get()), QStringList());
    QCOMPARE(panel.clipped().join(u", "_s), QString());
    QCOMPARE(panel.tabOrder("dialer"), (QStringList{u"dialer"_s, u"sbActualValue"_s}));
}

QTEST_MAIN(tst_WDialer)
#include "tst_WDialer.moc"
