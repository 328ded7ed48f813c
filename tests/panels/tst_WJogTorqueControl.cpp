#include "MotionPanelTest.h"
#include "panels/WJogTorqueControl.h"
#include "support/MetaMethods.h"
#include "support/TestCase.h"

#include <QGroupBox>

using namespace Qt::StringLiterals;
using namespace PanelTest;
using namespace MotionPanelTest;

namespace {

using Reply = void (WJogTorqueControl::*)(char, char, char, int);

/// The panel as the tool sets it up.
class Panel : public Shown<WJogTorqueControl>
{
public:
    Panel()
        : log(get())
        , dial(child<QDial>("dialer"))
        , maximum(child<QSpinBox>("sbMaxCurrent"))
        , target(child<QSpinBox>("sbTargetCurrent"))
    {
        get()->setApTargetCurrent(14);
        get()->setApMaxCurrent(15);
    }

    mutable PanelSignalLog log;
    QDial *dial;
    QSpinBox *maximum;
    QSpinBox *target;
};

QString write(int current)
{
    return u"changeValue(1, 0, 14, %1)"_s.arg(current);
}

} // namespace

class tst_WJogTorqueControl : public TestCase
{
    Q_OBJECT

private slots:
    void signalsAndSlots();
    void form_data();
    void form();
    void titleAndLabels();
    void numbers();
    void active();
    void currentRange_data();
    void currentRange();
    void currentRangeOfAnything();
    void spinBoxMovesDial();
    void dialMovesSpinBox();
    void trackingTheDial();
    void trackingNotTheSpinBox();
    void draggingWhileTracking();
    void go();
    void stop();
    void continuous();
    void addressAndMotor();
    void maxCurrent_data();
    void maxCurrent();
    void noCurrentLeft();
    void rangeFollowsEveryPoll();
    void clampedTargetWhileTracking();
    void keyboard();
    void names();
};

void tst_WJogTorqueControl::signalsAndSlots()
{
    const QMetaObject &metaObject = WJogTorqueControl::staticMetaObject;
    QCOMPARE(metaObject.superClass(), &QWidget::staticMetaObject);
    QCOMPARE(ownMethods(metaObject, QMetaMethod::Signal),
             (QStringList{u"changeValue(char address, char motorBank, char type, int value)"_s,
                          u"doROX(char address, char motorBank, char roxCommand, int value)"_s}));
    QCOMPARE(ownMethods(metaObject, QMetaMethod::Slot),
             (QStringList{
                 u"requestedValue(char address, char motorBank, char type, int value)"_s,
                 u"requestedTraceValue(char address, char motorBank, char type, int value)"_s,
                 u"handleDialerValueChange(int value)"_s, u"handleSpinValueChanged(int value)"_s,
                 u"on_cbContinuous_toggled(bool toggle)"_s, u"on_btnGo_clicked()"_s,
                 u"on_btnStop_clicked()"_s}));
    QWidget window;
    QCOMPARE(WJogTorqueControl(&window).parentWidget(), &window);
}

void tst_WJogTorqueControl::form_data()
{
    addPropertyColumns();
    addPropertyRow("gbTorqueControl", "QGroupBox", "title", u"Motor 0"_s);
    addPropertyRow("gbTorqueControl", "QGroupBox", "styleSheet", QString());
    addDialRows("dialer", -10000, 10000, false, 33.7);
    addTextRow("lblMaxCurrent", "QLabel", "Max");
    addSteppedSpinBoxRows("sbMaxCurrent", -20000, 20000, 100, 0, false);
    addToolTipRow("sbMaxCurrent", "QSpinBox", "AP: 0");
    addTextRow("lblTargetCurrent", "QLabel", "Target");
    addSteppedSpinBoxRows("sbTargetCurrent", -10000, 10000, 500, 0, true);
    addToolTipRow("sbTargetCurrent", "QSpinBox", "AP: 0");
    addTextRow("cbContinuous", "QCheckBox", "Track continuous");
    addPropertyRow("cbContinuous", "QCheckBox", "checked", false);
    addTextRow("btnGo", "QPushButton", "Go");
    addToolTipRow("btnGo", "QPushButton", "AP: 0");
    addPropertyRow("btnGo", "QPushButton", "enabled", true);
    addTextRow("btnStop", "QPushButton", "Stop");
    addToolTipRow("btnStop", "QPushButton", "MST");
    addPropertyRow("btnStop", "QPushButton", "enabled", true);
}

void tst_WJogTorqueControl::form()
{
    const Shown<WJogTorqueControl> panel;
    compareProperty(*panel.get());
}

void tst_WJogTorqueControl::titleAndLabels()
{
    const Panel panel;
    panel->setTitle(u"Torque mode [mA]"_s);
    panel->setMaxLabel(u"Phase \u00CE max"_s);
    panel->setTargetLabel(u"Phase \u00CE target"_s);
    QCOMPARE(panel.child<QGroupBox>("gbTorqueControl")->title(), u"Torque mode [mA]"_s);
    QCOMPARE(panel.child<QLabel>("lblMaxCurrent")->text(), u"Phase \u00CE max"_s);
    QCOMPARE(panel.child<QLabel>("lblTargetCurrent")->text(), u"Phase \u00CE target"_s);
}

void tst_WJogTorqueControl::numbers()
{
    const Panel panel;
    panel->setApTargetCurrent(byte(214));
    panel->setApMaxCurrent(byte(215));
    QCOMPARE(panel.target->toolTip(), u"AP: 214"_s);
    QCOMPARE(panel.child("btnGo")->toolTip(), u"AP: 214"_s);
    QCOMPARE(panel.maximum->toolTip(), u"AP: 215"_s);
}

void tst_WJogTorqueControl::active()
{
    const Panel panel;
    panel->setActive(true);
    QCOMPARE(panel.child("gbTorqueControl")->styleSheet(), u"border-color:blue;"_s);
    panel->setActive(false);
    QCOMPARE(panel.child("gbTorqueControl")->styleSheet(), QString());
}

void tst_WJogTorqueControl::currentRange_data()
{
    QTest::addColumn<int>("limit");
    QTest::addColumn<int>("step");
    QTest::newRow("1500") << 1500 << 75;
    QTest::newRow("5000") << 5000 << 250;
    QTest::newRow("remainder") << 1519 << 75;
    QTest::newRow("less than a step") << 19 << 0;
    QTest::newRow("0") << 0 << 0;
    QTest::newRow("largest") << Largest << 107374182;
}

void tst_WJogTorqueControl::currentRange()
{
    QFETCH(int, limit);
    const Panel panel;
    panel->setCurrentRange(limit);
    QCOMPARE(panel.dial->minimum(), -limit);
    QCOMPARE(panel.dial->maximum(), limit);
    QCOMPARE(panel.target->minimum(), -limit);
    QCOMPARE(panel.target->maximum(), limit);
    QTEST(panel.target->singleStep(), "step");
}

void tst_WJogTorqueControl::currentRangeOfAnything()
{
    const Panel panel;
    panel->setCurrentRange(-1500);
    QCOMPARE(panel.target->singleStep(), 75);
    panel->setCurrentRange(Least);
    QCOMPARE(panel.target->singleStep(), 107374182);
    panel->setCurrentRange(1500);
    QCOMPARE(panel.target->minimum(), -1500);
    QCOMPARE(panel.dial->minimum(), -1500);
}

void tst_WJogTorqueControl::spinBoxMovesDial()
{
    const Panel panel;
    panel.type("sbTargetCurrent", u"-1250"_s);
    QCOMPARE(panel.dial->value(), -1250);
    QCOMPARE(panel.target->value(), -1250);
    QTest::keyClick(panel.target, Qt::Key_Up);
    QCOMPARE(panel.dial->value(), -750);
    QCOMPARE(panel.log.take(), QStringList());
}

void tst_WJogTorqueControl::dialMovesSpinBox()
{
    const Panel panel;
    panel.dial->setValue(-700);
    QCOMPARE(panel.target->value(), -700);
    QTest::keyClick(panel.dial, Qt::Key_Down);
    QCOMPARE(panel.target->value(), -701);
    QCOMPARE(panel.log.take(), QStringList());
}

void tst_WJogTorqueControl::trackingTheDial()
{
    const Panel panel;
    panel.click("cbContinuous");
    QTest::keyClick(panel.dial, Qt::Key_Up);
    panel.dial->setValue(-700);
    QCOMPARE(panel.log.take(), (QStringList{write(1), write(-700)}));
    panel.click("cbContinuous");
    panel.dial->setValue(0);
    QCOMPARE(panel.log.take(), QStringList());
}

void tst_WJogTorqueControl::trackingNotTheSpinBox()
{
    const Panel panel;
    panel.click("cbContinuous");
    panel.target->setFocus();
    QTest::keyClick(panel.target, Qt::Key_Up);
    panel.target->setValue(2000);
    QCOMPARE(panel.dial->value(), 2000);
    QCOMPARE(panel.log.take(), QStringList());
    QTest::keyClick(panel.dial, Qt::Key_Up);
    QCOMPARE(panel.log.take(), QStringList{write(2001)});
}

void tst_WJogTorqueControl::draggingWhileTracking()
{
    const Panel panel;
    panel.click("cbContinuous");
    QStringList expected;
    connect(panel.dial, &QDial::valueChanged, panel.get(),
            [&](int value) { expected.append(write(value)); });
    QDial *dial = panel.dial;
    dragDial(dial, {dialPoint(dial, -1, 0), dialPoint(dial, 0.5, -0.5), dialPoint(dial, 1, 0)});
    QCOMPARE(expected.size(), 3);
    QCOMPARE(panel.log.take(), expected);
    QCOMPARE(panel.target->value(), dial->value());
    QVERIFY(panel.target->value() > 5000);
}

void tst_WJogTorqueControl::go()
{
    const Panel panel;
    panel.target->setValue(-250);
    panel.click("btnGo");
    panel.click("btnGo");
    QCOMPARE(panel.log.take(), (QStringList{write(-250), write(-250)}));
}

void tst_WJogTorqueControl::stop()
{
    const Panel panel;
    panel.target->setValue(-250);
    panel.click("btnStop");
    QCOMPARE(panel.log.take(), QStringList{u"doROX(1, 0, 3, 0)"_s});
    QCOMPARE(panel.target->value(), -250);
}

void tst_WJogTorqueControl::continuous()
{
    const Panel panel;
    for (const bool tracking : {true, false}) {
        panel.click("cbContinuous");
        QCOMPARE(panel.enabled("btnGo"), !tracking);
        QCOMPARE(panel.enabled("btnStop"), !tracking);
        panel.click("btnStop");
        QCOMPARE(panel.log.take().size(), tracking ? 0 : 1);
    }
}

void tst_WJogTorqueControl::addressAndMotor()
{
    const Panel panel;
    panel->setAddress(byte(200));
    panel->setMotor(2);
    panel->setApTargetCurrent(byte(214));
    panel.click("btnGo");
    panel.click("btnStop");
    QCOMPARE(panel.log.take(),
             (QStringList{u"changeValue(-56, 2, -42, 0)"_s, u"doROX(-56, 2, 3, 0)"_s}));
}

void tst_WJogTorqueControl::maxCurrent_data()
{
    QTest::addColumn<QList<int>>("reply"); // address, motor or bank, parameter, value
    QTest::addColumn<QList<int>>("expected"); // limit of the range, largest current shown
    const QList<int> before{4000, 4000};
    QTest::newRow("matches") << QList<int>{1, 0, 15, 3000} << QList<int>{3000, 3000};
    QTest::newRow("above the field") << QList<int>{1, 0, 15, 65535} << QList<int>{65535, 20000};
    QTest::newRow("another address") << QList<int>{2, 0, 15, 3000} << before;
    QTest::newRow("another motor or bank") << QList<int>{1, 1, 15, 3000} << before;
    QTest::newRow("another parameter") << QList<int>{1, 0, 0, 3000} << before;
    QTest::newRow("the target's parameter") << QList<int>{1, 0, 14, 3000} << before;
}

void tst_WJogTorqueControl::maxCurrent()
{
    QFETCH(QList<int>, reply);
    QFETCH(QList<int>, expected);
    for (const Reply slot :
         {&WJogTorqueControl::requestedValue, &WJogTorqueControl::requestedTraceValue}) {
        const Panel panel;
        std::invoke(slot, panel.get(), byte(1), byte(0), byte(15), 4000);
        std::invoke(slot, panel.get(), byte(reply[0]), byte(reply[1]), byte(reply[2]), reply[3]);
        QCOMPARE(panel.dial->maximum(), expected[0]);
        QCOMPARE(panel.dial->minimum(), -expected[0]);
        QCOMPARE(panel.target->maximum(), expected[0]);
        QCOMPARE(panel.target->minimum(), -expected[0]);
        QCOMPARE(panel.target->singleStep(), expected[0] / 20);
        QCOMPARE(panel.maximum->value(), expected[1]);
        QCOMPARE(panel.log.take(), QStringList());
    }
}

void tst_WJogTorqueControl::noCurrentLeft()
{
    const Panel panel;
    panel.target->setValue(-3000);
    panel->requestedTraceValue(1, 0, 15, 0);
    QCOMPARE(panel.dial->value(), 0);
    QCOMPARE(panel.dial->minimum(), 0);
    QCOMPARE(panel.dial->maximum(), 0);
    QCOMPARE(panel.target->value(), 0);
    QCOMPARE(panel.maximum->value(), 0);
    QCOMPARE(panel.log.take(), QStringList());
}

void tst_WJogTorqueControl::rangeFollowsEveryPoll()
{
    const Panel panel;
    panel.target->setValue(-3000);
    panel->requestedTraceValue(1, 0, 15, 1000);
    QCOMPARE(panel.target->value(), -1000);
    QCOMPARE(panel.dial->value(), -1000);
    panel->requestedTraceValue(1, 0, 15, 5000);
    QCOMPARE(panel.target->value(), -1000);
    QCOMPARE(panel.target->maximum(), 5000);
}

void tst_WJogTorqueControl::clampedTargetWhileTracking()
{
    const Panel panel;
    panel.click("cbContinuous");
    panel.dial->setValue(3000);
    panel.log.take();
    panel->requestedTraceValue(1, 0, 15, 4000);
    QCOMPARE(panel.log.take(), QStringList());
    panel->requestedTraceValue(1, 0, 15, 1000);
    QCOMPARE(panel.log.take(), QStringList{write(1000)});
}

void tst_WJogTorqueControl::keyboard()
{
    const Panel panel;
    QCOMPARE(panel.tabOrder("dialer"),
             (QStringList{u"dialer"_s, u"sbTargetCurrent"_s, u"cbContinuous"_s, u"btnGo"_s,
                          u"btnStop"_s}));
}

void tst_WJogTorqueControl::names()
{
    const Panel panel;
    QCOMPARE(unnamedControls(*panel.get()), QStringList());
    QCOMPARE(panel.clipped().join(u", "_s), QString());
    panel->setMaxLabel(u"Phase \u00CE max"_s);
    panel->setTargetLabel(u"Phase \u00CE target"_s);
    adjustToTexts(panel.get());
    QCOMPARE(panel.clipped().join(u", "_s), QString());
}

QTEST_MAIN(tst_WJogTorqueControl)
#include "tst_WJogTorqueControl.moc"
