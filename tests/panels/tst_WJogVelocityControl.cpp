#include "MotionPanelTest.h"
#include "panels/WJogVelocityControl.h"
#include "support/TestCase.h"

using namespace Qt::StringLiterals;
using namespace PanelTest;
using namespace MotionPanelTest;

namespace {

using Reply = void (WJogVelocityControl::*)(char, char, char, int);

/// The panel as the tool sets it up, but on the linear scale.
class Panel : public Shown<WJogVelocityControl>
{
public:
    Panel()
        : log(get())
        , velocityDial(child<QDial>("dialerVelocity"))
        , accelerationDial(child<QDial>("dialerAcceleration"))
        , actual(child<QSpinBox>("sbActualVelocity"))
        , target(child<QSpinBox>("sbTargetVelocity"))
        , acceleration(child<QSpinBox>("sbAcceleration"))
    {
        get()->setApAcceleration(5);
        get()->setApActualVelocity(byte(131));
        get()->setVelocityLimit(8000000);
        get()->setAccelerationLimit(8000000);
    }

    mutable PanelSignalLog log;
    QDial *velocityDial;
    QDial *accelerationDial;
    QSpinBox *actual;
    QSpinBox *target;
    QSpinBox *acceleration;
};

} // namespace

class tst_WJogVelocityControl : public TestCase
{
    Q_OBJECT

private slots:
    void nothingToldAtFirst(); // first: what was told last is one for all panels
    void spinBoxesMoveDials();
    void dialsMoveSpinBoxes();
    void logarithmicScale();
    void buttons_data();
    void buttons();
    void jogWithTheKeyboard();
    void holdingTheKey();
    void dialWhileRunning_data();
    void dialWhileRunning();
    void draggingWhileRunning();
    void accelerationWhileRunning();
    void spinBoxWhileRunning();
    void releaseStopsWhoeverStarted();
    void runStateIsThePanelsOwn();
    void limitAndScaleWhileRunning();
    void addressAndMotor();
    void actualVelocity_data();
    void actualVelocity();
    void actualVelocityOnlyOnChange();
    void accelerationOnlyOnChange();
    void accelerationIsClamped();
    void mismatch_data();
    void mismatch();
    void unconfigured();
};

void tst_WJogVelocityControl::nothingToldAtFirst()
{
    const Panel panel;
    panel.actual->setValue(7);
    panel.acceleration->setValue(7);
    panel->requestedValue(1, 0, byte(131), 0);
    panel->requestedValue(1, 0, 5, 0);
    QCOMPARE(panel.actual->value(), 7); // 0 counts as told
    QCOMPARE(panel.acceleration->value(), 7);
}

void tst_WJogVelocityControl::spinBoxesMoveDials()
{
    const Panel panel;
    panel.target->setValue(5000);
    QCOMPARE(panel.log.take(), QStringList{u"velocityChanged(5000)"_s});
    QCOMPARE(panel.velocityDial->value(), 5000);
    panel.acceleration->setValue(700);
    QCOMPARE(panel.log.take(), QStringList{u"accelerationChanged(700)"_s});
    QCOMPARE(panel.accelerationDial->value(), 700);
    panel.target->setValue(0);
    QCOMPARE(panel.velocityDial->value(), 0);
    QCOMPARE(panel.accelerationDial->value(), 700);
}

void tst_WJogVelocityControl::dialsMoveSpinBoxes()
{
    const Panel panel;
    panel.velocityDial->setValue(5000);
    QCOMPARE(panel.log.take(), QStringList{u"velocityChanged(5000)"_s});
    QCOMPARE(panel.target->value(), 5000);
    panel.accelerationDial->setValue(700);
    QCOMPARE(panel.log.take(), QStringList{u"accelerationChanged(700)"_s});
    QCOMPARE(panel.acceleration->value(), 700);
    QCOMPARE(panel.target->value(), 5000);
}

void tst_WJogVelocityControl::logarithmicScale()
{
    const Panel panel;
    panel->setLogarithmic(true);
    const std::pair<QDial *, QSpinBox *> pairs[] = {{panel.velocityDial, panel.target},
                                                    {panel.accelerationDial, panel.acceleration}};
    for (const auto &[dial, spinBox] : pairs) {
        QCOMPARE(dial->maximum(), 70);
        spinBox->setValue(1000);
        QCOMPARE(dial->value(), 30);
        QTest::keyClick(dial, Qt::Key_Up);
        QCOMPARE(spinBox->value(), 1258);
        QTest::keyClick(dial, Qt::Key_Down);
        QCOMPARE(spinBox->value(), 999); // the way back is not exact
        QTest::keyClick(dial, Qt::Key_End);
        QCOMPARE(spinBox->value(), 8000000); // clamped from 9999999
        QTest::keyClick(dial, Qt::Key_Home);
        QCOMPARE(spinBox->value(), 0);
        spinBox->setValue(8000000);
        QCOMPARE(dial->value(), 69);
        spinBox->setValue(0);
        QCOMPARE(dial->value(), 0);
    }
    panel.log.take();
    panel.velocityDial->setValue(30);
    panel.accelerationDial->setValue(40);
    QCOMPARE(panel.log.take(),
             (QStringList{u"velocityChanged(999)"_s, u"accelerationChanged(9999)"_s}));
}

void tst_WJogVelocityControl::buttons_data()
{
    QTest::addColumn<QStringList>("atPress");
    QTest::addColumn<QStringList>("atRelease");
    const QStringList nothing;
    const QStringList right{u"doROX(1, 0, 1, 5000)"_s, u"changeValue(1, 0, 5, 700)"_s};
    const QStringList left{u"doROX(1, 0, 2, 5000)"_s, u"changeValue(1, 0, 5, 700)"_s};
    const QStringList stop{u"doROX(1, 0, 3, 0)"_s, u"changeValue(1, 0, 5, 700)"_s};
    QTest::newRow("btnJogFastRight") << nothing << right;
    QTest::newRow("btnJogRight") << right << stop;
    QTest::newRow("btnJogFastLeft") << nothing << left;
    QTest::newRow("btnJogLeft") << left << stop;
    QTest::newRow("btnJogStop") << nothing << stop;
}

void tst_WJogVelocityControl::buttons()
{
    const Panel panel;
    panel.target->setValue(5000);
    panel.acceleration->setValue(700);
    panel.log.take();
    compareClicks(panel, QTest::currentDataTag());
}

void tst_WJogVelocityControl::jogWithTheKeyboard()
{
    const Panel panel;
    QWidget *button = panel.child("btnJogLeft");
    button->setFocus();
    QTest::keyPress(button, Qt::Key_Space);
    QCOMPARE(panel.log.take(), (QStringList{u"doROX(1, 0, 2, 0)"_s, u"changeValue(1, 0, 5, 0)"_s}));
    QTest::keyRelease(button, Qt::Key_Space);
    QCOMPARE(panel.log.take(), (QStringList{u"doROX(1, 0, 3, 0)"_s, u"changeValue(1, 0, 5, 0)"_s}));
}

void tst_WJogVelocityControl::holdingTheKey()
{
    const Panel panel;
    QWidget *button = panel.child("btnJogRight");
    button->setFocus();
    QTest::keyPress(button, Qt::Key_Space);
    panel.log.take();
    QKeyEvent repeat(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, u" "_s, true);
    QCoreApplication::sendEvent(button, &repeat);
    QCOMPARE(panel.log.take(), QStringList());
    QTest::keyRelease(button, Qt::Key_Space);
    QCOMPARE(panel.log.take().first(), u"doROX(1, 0, 3, 0)"_s);
}

void tst_WJogVelocityControl::dialWhileRunning_data()
{
    QTest::addColumn<QStringList>("clicks");
    QTest::addColumn<QString>("command"); // of a dial step to 6000
    QTest::newRow("at first") << QStringList{} << QString();
    QTest::newRow("right") << QStringList{u"btnJogFastRight"_s} << u"doROX(1, 0, 1, 6000)"_s;
    QTest::newRow("left") << QStringList{u"btnJogFastLeft"_s} << u"doROX(1, 0, 2, 6000)"_s;
    QTest::newRow("turned round") << QStringList{u"btnJogFastLeft"_s, u"btnJogFastRight"_s}
                                  << u"doROX(1, 0, 1, 6000)"_s;
    QTest::newRow("stopped") << QStringList{u"btnJogFastRight"_s, u"btnJogStop"_s} << QString();
    QTest::newRow("jogged") << QStringList{u"btnJogLeft"_s} << QString();
}

void tst_WJogVelocityControl::dialWhileRunning()
{
    QFETCH(QStringList, clicks);
    QFETCH(QString, command);
    const Panel panel;
    for (const QString &button : clicks) {
        panel.click(qPrintable(button));
    }
    panel.log.take();
    panel.velocityDial->setValue(6000);
    QStringList expected{u"velocityChanged(6000)"_s};
    if (!command.isEmpty()) {
        expected.append(command);
    }
    QCOMPARE(panel.log.take(), expected);
}

void tst_WJogVelocityControl::draggingWhileRunning()
{
    const Panel panel;
    panel->setLogarithmic(true);
    panel.click("btnJogFastRight");
    panel.log.take();
    QStringList expected;
    connect(panel.velocityDial, &QDial::valueChanged, panel.get(), [&] {
        const int target = panel.target->value();
        expected.append(u"velocityChanged(%1)"_s.arg(target));
        expected.append(u"doROX(1, 0, 1, %1)"_s.arg(target));
    });
    QDial *dial = panel.velocityDial;
    dragDial(dial,
             {dialPoint(dial, -1, 0), dialPoint(dial, -0.5, -0.5), dialPoint(dial, 0, -1),
              dialPoint(dial, 1, 0)});
    QCOMPARE(expected.size(), 8);
    QCOMPARE(panel.log.take(), expected);
    QVERIFY(panel.target->value() > 100000);
}

void tst_WJogVelocityControl::accelerationWhileRunning()
{
    const Panel panel;
    panel.click("btnJogFastRight");
    panel.log.take();
    panel.accelerationDial->setValue(300);
    panel.acceleration->setValue(400);
    QCOMPARE(panel.log.take(),
             (QStringList{u"accelerationChanged(300)"_s, u"accelerationChanged(400)"_s}));
    panel.click("btnJogStop");
    QCOMPARE(panel.log.take(),
             (QStringList{u"doROX(1, 0, 3, 0)"_s, u"changeValue(1, 0, 5, 400)"_s}));
}

void tst_WJogVelocityControl::spinBoxWhileRunning()
{
    const Panel panel;
    panel.target->setValue(100);
    panel.click("btnJogFastRight");
    panel.log.take();
    panel.type("sbTargetVelocity", u"7"_s);
    QCOMPARE(panel.log.take(), QStringList{u"velocityChanged(7)"_s});
    QTest::keyClick(panel.velocityDial, Qt::Key_Up);
    QCOMPARE(panel.log.take(), (QStringList{u"velocityChanged(8)"_s, u"doROX(1, 0, 1, 8)"_s}));
    panel.target->setValue(50);
    panel.click("btnJogFastLeft");
    QCOMPARE(panel.log.take(),
             (QStringList{u"velocityChanged(50)"_s, u"doROX(1, 0, 2, 50)"_s,
                          u"changeValue(1, 0, 5, 0)"_s}));
}

void tst_WJogVelocityControl::releaseStopsWhoeverStarted()
{
    const Panel panel;
    panel.click("btnJogFastRight");
    panel.log.take();
    QTest::mousePress(panel.child("btnJogRight"), Qt::LeftButton);
    QTest::mouseRelease(panel.child("btnJogRight"), Qt::LeftButton);
    QCOMPARE(panel.log.take(),
             (QStringList{u"doROX(1, 0, 1, 0)"_s, u"changeValue(1, 0, 5, 0)"_s,
                          u"doROX(1, 0, 3, 0)"_s, u"changeValue(1, 0, 5, 0)"_s}));
    panel.velocityDial->setValue(10);
    QCOMPARE(panel.log.take(), QStringList{u"velocityChanged(10)"_s});
}

void tst_WJogVelocityControl::runStateIsThePanelsOwn()
{
    const Panel panel;
    panel.click("btnJogFastLeft");
    // A limit switch has stopped the motor.
    panel->requestedTraceValue(1, 0, byte(131), 2222);
    panel->requestedTraceValue(1, 0, byte(131), 0);
    panel.log.take();
    panel.velocityDial->setValue(10);
    QCOMPARE(panel.log.take(), (QStringList{u"velocityChanged(10)"_s, u"doROX(1, 0, 2, 10)"_s}));
}

void tst_WJogVelocityControl::limitAndScaleWhileRunning()
{
    const Panel panel;
    panel.target->setValue(5000);
    panel.click("btnJogFastRight");
    panel.log.take();
    panel->setLogarithmic(true);
    panel->setVelocityLimit(1000000);
    QCOMPARE(panel.target->value(), 5000);
    QCOMPARE(panel.velocityDial->value(), 37);
    QCOMPARE(panel.log.take(), QStringList());
    panel->setVelocityLimit(100);
    QCOMPARE(panel.target->value(), 100);
    QCOMPARE(panel.velocityDial->value(), 20);
    QCOMPARE(panel.log.take(), QStringList{u"velocityChanged(100)"_s});
}

void tst_WJogVelocityControl::addressAndMotor()
{
    const Panel panel;
    panel->setAddress(byte(200));
    panel->setMotor(2);
    panel.click("btnJogFastRight");
    QCOMPARE(panel.log.take(),
             (QStringList{u"doROX(-56, 2, 1, 0)"_s, u"changeValue(-56, 2, 5, 0)"_s}));
    panel.velocityDial->setValue(10);
    QCOMPARE(panel.log.take().last(), u"doROX(-56, 2, 1, 10)"_s);
}

void tst_WJogVelocityControl::actualVelocity_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("shown");
    QTest::newRow("right") << 31001 << 31001;
    QTest::newRow("left shows positive") << -31002 << 31002;
    QTest::newRow("halted") << 0 << 0;
    QTest::newRow("least") << -Largest << Largest;
    QTest::newRow("below") << Least << Largest;
}

void tst_WJogVelocityControl::actualVelocity()
{
    QFETCH(int, value);
    for (const Reply reply :
         {&WJogVelocityControl::requestedValue, &WJogVelocityControl::requestedTraceValue}) {
        const Panel panel;
        std::invoke(reply, panel.get(), byte(1), byte(0), byte(131), 5);
        QCOMPARE(panel.actual->value(), 5);
        std::invoke(reply, panel.get(), byte(1), byte(0), byte(131), value);
        QTEST(panel.actual->value(), "shown");
        QCOMPARE(panel.log.take(), QStringList());
    }
}

void tst_WJogVelocityControl::actualVelocityOnlyOnChange()
{
    const Panel panel;
    const Panel other;
    panel->requestedValue(1, 0, byte(131), 4001);
    panel.actual->setValue(7);
    panel->requestedTraceValue(1, 0, byte(131), 4001);
    panel->requestedTraceValue(1, 0, byte(131), -4001);
    QCOMPARE(panel.actual->value(), 7);
    // What was shown last is one for all panels.
    other->requestedValue(1, 0, byte(131), 4001);
    QCOMPARE(other.actual->value(), 0);
    other->requestedValue(1, 0, byte(131), 4002);
    QCOMPARE(other.actual->value(), 4002);
    panel->requestedValue(1, 0, byte(131), 4001);
    QCOMPARE(panel.actual->value(), 4001);
}

void tst_WJogVelocityControl::accelerationOnlyOnChange()
{
    const Panel panel;
    const Panel other;
    panel->requestedValue(1, 0, 5, 5001);
    QCOMPARE(panel.acceleration->value(), 5001);
    QCOMPARE(panel.accelerationDial->value(), 5001);
    QCOMPARE(panel.log.take(), QStringList{u"accelerationChanged(5001)"_s});
    panel.acceleration->setValue(7);
    panel.log.take();
    panel->requestedTraceValue(1, 0, 5, 5001); // the user's 7 stands
    other->requestedValue(1, 0, 5, 5001);
    QCOMPARE(panel.acceleration->value(), 7);
    QCOMPARE(other.acceleration->value(), 0);
    panel->requestedTraceValue(1, 0, 5, 5002);
    QCOMPARE(panel.acceleration->value(), 5002);
    QCOMPARE(panel.log.take(), QStringList{u"accelerationChanged(5002)"_s});
    QCOMPARE(panel.target->value(), 0);
}

void tst_WJogVelocityControl::accelerationIsClamped()
{
    const Panel panel;
    panel->requestedValue(1, 0, 5, 6001);
    panel.log.take();
    panel->requestedValue(1, 0, 5, 33554431);
    QCOMPARE(panel.acceleration->value(), 8000000);
    QCOMPARE(panel.log.take(), QStringList{u"accelerationChanged(8000000)"_s});
    panel->requestedValue(1, 0, 5, Least);
    QCOMPARE(panel.acceleration->value(), 0);
}

void tst_WJogVelocityControl::mismatch_data()
{
    QTest::addColumn<int>("address");
    QTest::addColumn<int>("motorBank");
    QTest::addColumn<int>("type");
    QTest::newRow("address") << 2 << 0 << 131;
    QTest::newRow("motor or bank") << 1 << 1 << 131;
    QTest::newRow("parameter") << 1 << 0 << 132;
    QTest::newRow("address, acceleration") << 2 << 0 << 5;
    QTest::newRow("motor or bank, acceleration") << 1 << 1 << 5;
    QTest::newRow("unconfigured number") << 1 << 0 << 0;
}

void tst_WJogVelocityControl::mismatch()
{
    QFETCH(int, address);
    QFETCH(int, motorBank);
    QFETCH(int, type);
    const Panel panel;
    for (const Reply reply :
         {&WJogVelocityControl::requestedValue, &WJogVelocityControl::requestedTraceValue}) {
        std::invoke(reply, panel.get(), byte(address), byte(motorBank), byte(type), 7777);
        QCOMPARE(panel.actual->value(), 0);
        QCOMPARE(panel.acceleration->value(), 0);
        QCOMPARE(panel.log.take(), QStringList());
    }
}

void tst_WJogVelocityControl::unconfigured()
{
    const Panel panel;
    panel->setApActualVelocity(0);
    panel->setApAcceleration(0);
    panel->requestedValue(1, 0, 0, 8001);
    QCOMPARE(panel.actual->value(), 8001);
    QCOMPARE(panel.acceleration->value(), 8001);
}

QTEST_MAIN(tst_WJogVelocityControl)
#include "tst_WJogVelocityControl.moc"
