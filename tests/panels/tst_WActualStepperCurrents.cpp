#include "MotionPanelTest.h"
#include "panels/WActualStepperCurrents.h"
#include "support/MetaMethods.h"
#include "support/TestCase.h"

#include <QGroupBox>

using namespace Qt::StringLiterals;
using namespace PanelTest;
using namespace MotionPanelTest;

namespace {

/// The panel as the tool sets it up.
class Panel : public Shown<WActualStepperCurrents>
{
public:
    Panel()
    {
        get()->setApMotorCurrent(byte(150));
        get()->setApPhaseA(byte(151));
        get()->setApPhaseB(byte(152));
    }

    /// The currents of the motor, of phase A and of phase B.
    QList<int> shown() const
    {
        return {child<QSpinBox>("sbMotorCurrent")->value(),
                child<QSpinBox>("sbCurrentPhaseA")->value(),
                child<QSpinBox>("sbCurrentPhaseB")->value()};
    }
};

} // namespace

class tst_WActualStepperCurrents : public TestCase
{
    Q_OBJECT

private slots:
    void signalsAndSlots();
    void form_data();
    void form();
    void title();
    void numbers();
    void values_data();
    void values();
    void unconfigured();
    void command_data();
    void command();
    void names();
};

void tst_WActualStepperCurrents::signalsAndSlots()
{
    const QMetaObject &metaObject = WActualStepperCurrents::staticMetaObject;
    QCOMPARE(metaObject.superClass(), &QWidget::staticMetaObject);
    QCOMPARE(ownMethods(metaObject, QMetaMethod::Signal), QStringList());
    QCOMPARE(
        ownMethods(metaObject, QMetaMethod::Slot),
        (QStringList{u"requestedTraceValue(char address, char motorBank, char type, int value)"_s,
                     u"requestedCommand(char address, char command, char type, char motorBank, "
                     "char status, int data)"_s}));
    QWidget window;
    QCOMPARE(WActualStepperCurrents(&window).parentWidget(), &window);
}

void tst_WActualStepperCurrents::form_data()
{
    addPropertyColumns();
    addPropertyRow("gbActualCurrents", "QGroupBox", "title", u"Actual currents [mA]"_s);
    addTextRow("lblMotorCurrent", "QLabel", "Motor current");
    addTextRow("lblPeakCurrentA", "QLabel", "Peak current phase A");
    addTextRow("lblPeakCurrentB", "QLabel", "Peak current phase B");
    for (const char *spinBox : {"sbMotorCurrent", "sbCurrentPhaseA", "sbCurrentPhaseB"}) {
        addSpinBoxRows(spinBox, -20000, 20000, 0, false);
        addToolTipRow(spinBox, "QSpinBox", "AP: 0");
    }
}

void tst_WActualStepperCurrents::form()
{
    const Shown<WActualStepperCurrents> panel;
    compareProperty(*panel.get());
}

void tst_WActualStepperCurrents::title()
{
    const Panel panel;
    panel->setTitle(u"Currents"_s);
    QCOMPARE(panel.child<QGroupBox>("gbActualCurrents")->title(), u"Currents"_s);
}

void tst_WActualStepperCurrents::numbers()
{
    const Panel panel;
    QCOMPARE(panel.child("sbMotorCurrent")->toolTip(), u"AP: 150"_s);
    QCOMPARE(panel.child("sbCurrentPhaseA")->toolTip(), u"AP: 151"_s);
    QCOMPARE(panel.child("sbCurrentPhaseB")->toolTip(), u"AP: 152"_s);
    const std::unique_ptr<QList<char>> first(panel->traceParameters());
    const std::unique_ptr<QList<char>> second(panel->traceParameters());
    QCOMPARE(*first, (QList<char>{byte(150), byte(151), byte(152)}));
    QVERIFY(first != second); // a new one for each caller
}

void tst_WActualStepperCurrents::values_data()
{
    QTest::addColumn<QList<int>>("reply"); // address, motor or bank, parameter, value
    QTest::addColumn<QList<int>>("shown");
    const QList<int> nothing{0, 0, 0};
    QTest::newRow("motor") << QList<int>{200, 2, 150, 700} << QList<int>{700, 0, 0};
    QTest::newRow("phase A") << QList<int>{200, 2, 151, -700} << QList<int>{0, -700, 0};
    QTest::newRow("phase B") << QList<int>{200, 2, 152, 700} << QList<int>{0, 0, 700};
    QTest::newRow("above the field") << QList<int>{200, 2, 152, 20001} << QList<int>{0, 0, 20000};
    QTest::newRow("below the field") << QList<int>{200, 2, 150, Least} << QList<int>{-20000, 0, 0};
    QTest::newRow("another address") << QList<int>{1, 2, 150, 700} << nothing;
    QTest::newRow("another motor or bank") << QList<int>{200, 0, 150, 700} << nothing;
    QTest::newRow("another parameter") << QList<int>{200, 2, 153, 700} << nothing;
    QTest::newRow("unconfigured number") << QList<int>{200, 2, 0, 700} << nothing;
}

void tst_WActualStepperCurrents::values()
{
    QFETCH(QList<int>, reply);
    const Panel panel;
    panel->setAddress(byte(200));
    panel->setMotor(2);
    panel->requestedTraceValue(byte(reply[0]), byte(reply[1]), byte(reply[2]), reply[3]);
    QTEST(panel.shown(), "shown");
}

void tst_WActualStepperCurrents::unconfigured()
{
    const Panel panel;
    panel->setApPhaseB(byte(151));
    panel->requestedTraceValue(1, 0, byte(151), 7);
    QCOMPARE(panel.shown(), (QList<int>{0, 7, 7})); // each number is compared
}

void tst_WActualStepperCurrents::command_data()
{
    QTest::addColumn<QList<int>>("reply"); // address, command, parameter, motor or bank, status
    QTest::addColumn<int>("shown");
    QTest::newRow("GAP, carried out") << QList<int>{1, 6, 151, 0, 100} << 7;
    QTest::newRow("SAP, carried out") << QList<int>{1, 5, 151, 0, 100} << 0;
    QTest::newRow("GAP, refused") << QList<int>{1, 6, 151, 0, 4} << 0;
    QTest::newRow("another address") << QList<int>{2, 6, 151, 0, 100} << 0;
    QTest::newRow("another motor or bank") << QList<int>{1, 6, 151, 1, 100} << 0;
}

void tst_WActualStepperCurrents::command()
{
    QFETCH(QList<int>, reply);
    QFETCH(int, shown);
    const Panel panel;
    panel->requestedCommand(byte(reply[0]), byte(reply[1]), byte(reply[2]), byte(reply[3]),
                            byte(reply[4]), 7);
    QCOMPARE(panel.shown(), (QList<int>{0, shown, 0}));
}

void tst_WActualStepperCurrents::names()
{
    const Panel panel;
    QCOMPARE(unnamedControls(*panel.get()), QStringList());
    QCOMPARE(panel.clipped().join(u", "_s), QString());
}

QTEST_MAIN(tst_WActualStepperCurrents)
#include "tst_WActualStepperCurrents.moc"
