#include "MotionPanelTest.h"
#include "panels/WJogPositionControl.h"
#include "support/TestCase.h"

using namespace Qt::StringLiterals;
using namespace PanelTest;
using namespace MotionPanelTest;

namespace {

constexpr int DialRange = 51200;

/// The panel as the tool sets it up.
class Panel : public Shown<WJogPositionControl>
{
public:
    explicit Panel(int dialRange = DialRange)
        : log(get())
        , dial(child<QDial>("dialer"))
        , actual(child<QSpinBox>("sbActual"))
        , target(child<QSpinBox>("sbTarget"))
    {
        get()->setApActualPosition(1);
        get()->setApAcceleration(5);
        get()->setApVelocity(4);
        get()->setDialRange(dialRange);
    }

    mutable PanelSignalLog log;
    QDial *dial;
    QSpinBox *actual;
    QSpinBox *target;
};

QString moveTo(int position)
{
    return u"doMove(1, 0, 4, 0, %1)"_s.arg(position);
}

} // namespace

class tst_WJogPositionControl : public TestCase
{
    Q_OBJECT

private slots:
    void dialSteps_data();
    void dialSteps();
    void targetCountsTurns();
    void targetStaysInRange();
    void spinBoxTurnsDial_data();
    void spinBoxTurnsDial();
    void dialGoesOnFromItsOwnPlace();
    void dialRange_data();
    void dialRange();
    void nothingIsSentWithoutTracking();
    void trackingTheDial();
    void trackingTheSpinBox();
    void draggingOverTheTop();
    void draggingWhileTracking();
    void go();
    void rampIsWrittenOnChange();
    void rampOfTheAnswer();
    void rampWhileTracking();
    void stop();
    void clear();
    void continuous();
    void continuousReadsTheBox();
    void addressAndMotor();
    void actualPosition_data();
    void actualPosition();
};

void tst_WJogPositionControl::dialSteps_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<int>("step");
    const auto row = [](int from, int to, int step) {
        QTest::addRow("%d to %d", from, to) << from << to << step;
    };
    row(51100, 100, 200);
    row(100, 51100, -200);
    row(20000, 30000, 10000);
    row(30000, 20000, -10000);
    row(40000, 45000, 5000);
    row(0, 51199, -1);
    row(51199, 0, 1);
    row(51200, 0, 0); // the two ends of the dial are one place
    // The quarters don't include their inner ends.
    row(38401, 12799, 12799 + DialRange - 38401);
    row(38400, 12799, 12799 - 38400);
    row(38401, 12800, 12800 - 38401);
    row(12799, 38401, 38401 - DialRange - 12799);
    row(12800, 38401, 38401 - 12800);
    row(12799, 38400, 38400 - 12799);
}

void tst_WJogPositionControl::dialSteps()
{
    QFETCH(int, from);
    QFETCH(int, to);
    const Panel panel;
    panel.dial->setValue(20000); // from here to each place without crossing the end
    panel.dial->setValue(from);
    QCOMPARE(panel.target->value(), from);
    panel.dial->setValue(to);
    QCOMPARE(panel.dial->value(), to);
    QTEST(panel.target->value() - from, "step");
    QCOMPARE(panel.log.take(), QStringList());
}

void tst_WJogPositionControl::targetCountsTurns()
{
    const Panel panel;
    for (int turn = 0; turn < 3; ++turn) {
        for (const int place : {10000, 20000, 30000, 40000, 50000, 0}) {
            panel.dial->setValue(place);
        }
        QCOMPARE(panel.target->value(), (turn + 1) * DialRange);
    }
    for (int turn = 0; turn < 5; ++turn) {
        for (const int place : {50000, 40000, 30000, 20000, 10000, 0}) {
            panel.dial->setValue(place);
        }
    }
    QCOMPARE(panel.target->value(), -2 * DialRange);
}

void tst_WJogPositionControl::targetStaysInRange()
{
    const Panel panel;
    panel.target->setValue(Largest);
    panel.dial->setValue(0); // where it was at its own last move
    panel.dial->setValue(100);
    panel.dial->setValue(200);
    QCOMPARE(panel.target->value(), Largest);
    panel.dial->setValue(150);
    QCOMPARE(panel.target->value(), Largest - 50);
    panel.target->setValue(-Largest);
    panel.dial->setValue(149);
    panel.dial->setValue(100);
    QCOMPARE(panel.target->value(), -Largest);
    // No overflow from whatever comes.
    panel->handleDialerValueChange(Least);
    panel->handleDialerValueChange(Largest);
    QCOMPARE(panel.target->value(), Largest - (DialRange - 1));
}

void tst_WJogPositionControl::spinBoxTurnsDial_data()
{
    QTest::addColumn<int>("target");
    QTest::addColumn<int>("place");
    const auto row = [](int target, int place) { QTest::addRow("%d", target) << target << place; };
    row(0, 0);
    row(1000, 1000);
    row(51199, 51199);
    row(51200, 0);
    row(60000, 8800);
    row(Largest, Largest % DialRange);
    // The endless dial itself would make 50200 of this.
    row(-1000, 0);
    row(-51200, 0);
    row(-60000, 0);
    row(-Largest, 0);
}

void tst_WJogPositionControl::spinBoxTurnsDial()
{
    QFETCH(int, target);
    const Panel panel;
    panel.target->setValue(500);
    panel.type("sbTarget", QString::number(target));
    QCOMPARE(panel.target->value(), target);
    QTEST(panel.dial->value(), "place");
    QCOMPARE(panel.log.take(), QStringList());
}

void tst_WJogPositionControl::dialGoesOnFromItsOwnPlace()
{
    const Panel panel;
    panel.dial->setValue(1000);
    panel.target->setValue(60000);
    QCOMPARE(panel.dial->value(), 8800);
    QTest::keyClick(panel.dial, Qt::Key_Up);
    // Not 60001: the dial was at 1000 at its own last move.
    QCOMPARE(panel.target->value(), 60000 + 8801 - 1000);
    QTest::keyClick(panel.dial, Qt::Key_Up);
    QCOMPARE(panel.target->value(), 60000 + 8802 - 1000);
}

void tst_WJogPositionControl::dialRange_data()
{
    QTest::addColumn<int>("range");
    QTest::addColumn<int>("maximum");
    QTest::addColumn<int>("quarter");
    QTest::newRow("as in the tool") << 51200 << 51200 << 12800;
    QTest::newRow("quarter without remainder") << 1003 << 1003 << 250;
    // The endless dial divides by its range.
    QTest::newRow("none") << 0 << 1 << 0;
    QTest::newRow("negative") << -51200 << 1 << 0;
}

void tst_WJogPositionControl::dialRange()
{
    QFETCH(int, range);
    QFETCH(int, maximum);
    QFETCH(int, quarter);
    const Panel panel(20);
    panel.dial->setValue(15);
    panel->setDialRange(range);
    QCOMPARE(panel.dial->minimum(), 0);
    QCOMPARE(panel.dial->maximum(), maximum);
    panel.target->setValue(maximum);
    QCOMPARE(panel.dial->value(), 0);
    if (quarter > 0) {
        const int lastQuarter = 3 * quarter;
        panel->handleDialerValueChange(lastQuarter + 1);
        panel.target->setValue(0);
        panel->handleDialerValueChange(quarter - 1);
        QCOMPARE(panel.target->value(), maximum - lastQuarter + quarter - 2);
        panel->handleDialerValueChange(lastQuarter);
        QCOMPARE(panel.target->value(), maximum - 1);
    }
}

void tst_WJogPositionControl::nothingIsSentWithoutTracking()
{
    const Panel panel;
    panel->handleVelocityChange(2000);
    panel->handleAcceleration(3000);
    panel.dial->setValue(1000);
    panel.target->setValue(2000);
    QCOMPARE(panel.log.take(), QStringList());
}

void tst_WJogPositionControl::trackingTheDial()
{
    const Panel panel;
    panel.click("cbContinuous");
    panel.dial->setFocus();
    QTest::keyClick(panel.dial, Qt::Key_Up);
    QTest::keyClick(panel.dial, Qt::Key_Down);
    QTest::keyClick(panel.dial, Qt::Key_Down); // over the end
    QCOMPARE(panel.dial->value(), 51199);
    QCOMPARE(panel.log.take(), (QStringList{moveTo(1), moveTo(0), moveTo(-1)}));
    QCOMPARE(panel.target->value(), -1);
}

void tst_WJogPositionControl::trackingTheSpinBox()
{
    const Panel panel;
    panel.click("cbContinuous");
    panel.target->setFocus();
    QTest::keyClick(panel.target, Qt::Key_Up);
    QTest::keyClick(panel.target, Qt::Key_Down);
    panel.target->setValue(-1000);
    QCOMPARE(panel.log.take(), (QStringList{moveTo(1000), moveTo(0), moveTo(-1000)}));
    panel.target->setValue(-1000);
    QCOMPARE(panel.log.take(), QStringList());
}

void tst_WJogPositionControl::draggingOverTheTop()
{
    const Panel panel;
    QDial *dial = panel.dial;
    // From the left over the top to the right, and past the bottom, where the dial starts again.
    dragDial(dial,
             {dialPoint(dial, -1, 0), dialPoint(dial, 0, -1), dialPoint(dial, 1, 0),
              dialPoint(dial, 0.3, 1), dialPoint(dial, -0.3, 1)});
    QVERIFY(dial->value() > 0 && dial->value() < DialRange / 4);
    QCOMPARE(panel.target->value(), DialRange + dial->value());
    // And back.
    dragDial(dial, {dialPoint(dial, 0.3, 1), dialPoint(dial, 0, -1)});
    QCOMPARE(panel.target->value(), dial->value());
    QCOMPARE(panel.log.take(), QStringList());
}

void tst_WJogPositionControl::draggingWhileTracking()
{
    const Panel panel;
    panel.click("cbContinuous");
    QStringList expected;
    connect(panel.dial, &QDial::valueChanged, panel.get(),
            [&](int value) { expected.append(moveTo(value)); });
    QDial *dial = panel.dial;
    dragDial(dial, {dialPoint(dial, -0.5, 0.5), dialPoint(dial, -1, 0), dialPoint(dial, 0, -1)});
    QCOMPARE(expected.size(), 3);
    QCOMPARE(panel.log.take(), expected);
    QVERIFY(panel.target->value() > 20000);
}

void tst_WJogPositionControl::go()
{
    const Panel panel;
    panel.target->setValue(-5000);
    panel.click("btnGo");
    panel.click("btnGo");
    QCOMPARE(panel.log.take(), (QStringList{moveTo(-5000), moveTo(-5000)}));
}

void tst_WJogPositionControl::rampIsWrittenOnChange()
{
    const Panel panel;
    const auto go = [&panel] {
        panel.click("btnGo");
        return panel.log.take();
    };
    QCOMPARE(go(), QStringList{moveTo(0)});
    panel->handleVelocityChange(2000);
    panel->handleAcceleration(3000);
    const QString acceleration = u"changeValue(1, 0, 5, 3000)"_s;
    const QString velocity = u"changeValue(1, 0, 4, 2000)"_s;
    QCOMPARE(go(), (QStringList{moveTo(0), acceleration, velocity}));
    QCOMPARE(go(), QStringList{moveTo(0)});
    panel->handleVelocityChange(2001);
    panel->handleVelocityChange(2000); // as written
    QCOMPARE(go(), QStringList{moveTo(0)});
    panel->handleVelocityChange(2002);
    QCOMPARE(go(), (QStringList{moveTo(0), u"changeValue(1, 0, 4, 2002)"_s}));
    panel->handleAcceleration(0);
    QCOMPARE(go(), (QStringList{moveTo(0), u"changeValue(1, 0, 5, 0)"_s}));
    QCOMPARE(go(), QStringList{moveTo(0)});
}

void tst_WJogPositionControl::rampOfTheAnswer()
{
    // The module limits the acceleration, and its answer comes back within the signal.
    const Panel panel;
    connect(
        panel.get(), &WJogPositionControl::changeValue, panel.get(),
        [&panel](char, char, char, int value) { panel->handleAcceleration(qMin(value, 2500)); });
    panel->handleAcceleration(3000);
    panel.click("btnGo");
    QCOMPARE(panel.log.take(), (QStringList{moveTo(0), u"changeValue(1, 0, 5, 3000)"_s}));
    panel.click("btnGo");
    QCOMPARE(panel.log.take(), (QStringList{moveTo(0), u"changeValue(1, 0, 5, 2500)"_s}));
    panel.click("btnGo");
    QCOMPARE(panel.log.take(), QStringList{moveTo(0)});
}

void tst_WJogPositionControl::rampWhileTracking()
{
    const Panel panel;
    panel.click("cbContinuous");
    panel->handleVelocityChange(2000);
    panel.dial->setValue(10);
    panel.dial->setValue(20);
    panel->handleAcceleration(3000);
    panel.target->setValue(30);
    panel.target->setValue(40);
    QCOMPARE(panel.log.take(),
             (QStringList{moveTo(10), u"changeValue(1, 0, 4, 2000)"_s, moveTo(20), moveTo(30),
                          u"changeValue(1, 0, 5, 3000)"_s, moveTo(40)}));
}

void tst_WJogPositionControl::stop()
{
    const Panel panel;
    panel->handleVelocityChange(2000);
    panel.click("btnStop");
    QCOMPARE(panel.log.take(), QStringList{u"doROX(1, 0, 3, 0)"_s});
}

void tst_WJogPositionControl::clear()
{
    const Panel panel;
    panel.dial->setValue(1000);
    panel->requestedTraceValue(1, 0, 1, 77);
    panel.click("btnClear");
    QCOMPARE(panel.log.take(), QStringList{u"changeValue(1, 0, 1, 0)"_s});
    QCOMPARE(panel.actual->value(), 77);
    QCOMPARE(panel.dial->value(), 1000);
    QCOMPARE(panel.target->value(), 1000);
    panel.dial->setValue(1001);
    QCOMPARE(panel.target->value(), 1001);
}

void tst_WJogPositionControl::continuous()
{
    const Panel panel;
    for (const bool tracking : {true, false}) {
        panel.click("cbContinuous");
        QCOMPARE(panel.enabled("btnGo"), !tracking);
        QCOMPARE(panel.enabled("btnStop"), !tracking);
        panel.click("btnStop");
        QCOMPARE(panel.log.take().size(), tracking ? 0 : 1);
    }
    QVERIFY(panel.enabled("btnClear"));
}

void tst_WJogPositionControl::continuousReadsTheBox()
{
    const Panel panel;
    panel->on_cbContinuous_toggled(true);
    QVERIFY(panel.enabled("btnGo"));
    QVERIFY(panel.enabled("btnStop"));
}

void tst_WJogPositionControl::addressAndMotor()
{
    const Panel panel;
    panel->setAddress(byte(200));
    panel->setMotor(2);
    panel->setApVelocity(byte(204));
    panel->handleVelocityChange(9);
    panel.click("btnGo");
    panel.click("btnStop");
    panel.click("btnClear");
    QCOMPARE(panel.log.take(),
             (QStringList{u"doMove(-56, 2, 4, 0, 0)"_s, u"changeValue(-56, 2, -52, 9)"_s,
                          u"doROX(-56, 2, 3, 0)"_s, u"changeValue(-56, 2, 1, 0)"_s}));
}

void tst_WJogPositionControl::actualPosition_data()
{
    QTest::addColumn<QList<int>>("reply"); // address, motor or bank, parameter, value
    QTest::addColumn<int>("shown");
    QTest::newRow("matches") << QList<int>{1, 0, 1, -70000} << -70000;
    QTest::newRow("below the field") << QList<int>{1, 0, 1, Least} << -Largest;
    QTest::newRow("another address") << QList<int>{2, 0, 1, 7} << 5;
    QTest::newRow("another motor or bank") << QList<int>{1, 1, 1, 7} << 5;
    QTest::newRow("another parameter") << QList<int>{1, 0, 0, 7} << 5;
    QTest::newRow("acceleration") << QList<int>{1, 0, 5, 7} << 5;
}

void tst_WJogPositionControl::actualPosition()
{
    QFETCH(QList<int>, reply);
    const Panel panel;
    panel->requestedTraceValue(1, 0, 1, 5);
    panel->requestedTraceValue(byte(reply[0]), byte(reply[1]), byte(reply[2]), reply[3]);
    QTEST(panel.actual->value(), "shown");
    QCOMPARE(panel.target->value(), 0);
    QCOMPARE(panel.log.take(), QStringList());
}

QTEST_MAIN(tst_WJogPositionControl)
#include "tst_WJogPositionControl.moc"
