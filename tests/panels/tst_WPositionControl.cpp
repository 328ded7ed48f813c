#include "MotionPanelTest.h"
#include "panels/WPositionControl.h"
#include "support/MetaMethods.h"
#include "support/TestCase.h"

#include <QComboBox>
#include <QGroupBox>

#include <type_traits>

using namespace Qt::StringLiterals;
using namespace PanelTest;
using namespace MotionPanelTest;

namespace {

/// The panel as the tool sets it up, but for the flags.
class Panel : public Shown<WPositionControl>
{
public:
    Panel()
        : log(get())
        , actual(child<QSpinBox>("sbActualPosition"))
        , target(child<QSpinBox>("sbTargetPosition"))
        , relativeTo(child<QComboBox>("cmbRelativeTo"))
    {
        get()->setApActualPosition(1);
        get()->setApTargetPosition(0);
        get()->setApClearOnNull(byte(198));
        get()->setApClearOnNullWithoutTip(byte(199));
    }

    /// Moves by @p distance from the last target; what that sent.
    QStringList moveFromTarget(int distance) const
    {
        relativeTo->setCurrentIndex(1);
        target->setValue(distance);
        click("btnMoveRelative");
        return log.take();
    }

    mutable PanelSignalLog log;
    QSpinBox *actual;
    QSpinBox *target;
    QComboBox *relativeTo;
};

/// What a move sends.
QStringList move(int moveType, int value)
{
    return {u"doMove(1, 0, 4, %1, %2)"_s.arg(moveType).arg(value),
            u"targetPositionChange(1, 0, %1, %2)"_s.arg(moveType).arg(value)};
}

} // namespace

class tst_WPositionControl : public TestCase
{
    Q_OBJECT

private slots:
    void signalsAndSlots();
    void form_data();
    void form();
    void relativeToItems();
    void pictures_data();
    void pictures();
    void setters();
    void numbers();
    void moveAbsolute();
    void moveRelativeToTarget();
    void moveRelativeToActualByAbsolute();
    void moveRelativeToActual();
    void moveRelativeToActualRaisesTheTarget();
    void beginningOfTheText_data();
    void beginningOfTheText();
    void lastTargetStays();
    void targetsStayInRange();
    void stop_data();
    void stop();
    void clear();
    void clearOnNull();
    void addressAndMotor();
    void actualPosition_data();
    void actualPosition();
    void command_data();
    void command();
    void keyboard();
    void names();
};

void tst_WPositionControl::signalsAndSlots()
{
    QVERIFY((std::is_base_of_v<MotorController, WPositionControl>));
    const QMetaObject &metaObject = WPositionControl::staticMetaObject;
    QCOMPARE(metaObject.superClass(), &QWidget::staticMetaObject);
    QCOMPARE(ownMethods(metaObject, QMetaMethod::Signal),
             (QStringList{
                 u"requestValue(char address, char motorBank, char type)"_s,
                 u"doMove(char address, char motorBank, char type, char moveType, int value)"_s,
                 u"changeValue(char address, char motorBank, char type, int value)"_s,
                 u"doROX(char address, char motorBank, char roxCommand, int value)"_s,
                 u"targetPositionChange(char address, char motorBank, char moveType, int value)"_s,
                 u"actualPositionChange(char address, char motorBank, int value)"_s}));
    QCOMPARE(
        ownMethods(metaObject, QMetaMethod::Slot),
        (QStringList{u"requestedTraceValue(char address, char motorBank, char type, int value)"_s,
                     u"requestedValue(char address, char motorBank, char type, int value)"_s,
                     u"requestedCommand(char address, char command, char type, char motorBank, "
                     "char status, int data)"_s,
                     u"on_btnMoveAbsolute_clicked()"_s, u"on_btnMoveRelative_clicked()"_s,
                     u"on_btnStop_clicked()"_s, u"on_btnClear_clicked()"_s,
                     u"on_btnClearOnNull_clicked()"_s}));
    QWidget window;
    QCOMPARE(WPositionControl(&window).parentWidget(), &window);
}

void tst_WPositionControl::form_data()
{
    addPropertyColumns();
    addPropertyRow("gbPositionControl", "QGroupBox", "title", u"Position control"_s);
    addTextRow("lblActualPosition", "QLabel", "Actual pos.");
    addSpinBoxRows("sbActualPosition", -Largest, Largest, 0, false);
    addToolTipRow("sbActualPosition", "QSpinBox", "AP: 0");
    addTextRow("btnClear", "QPushButton", "Clear");
    addPropertyRow("btnClear", "QPushButton", "maximumWidth", 50);
    addToolTipRow("btnClear", "QPushButton", "AP: 0");
    addTextRow("btnClearOnNull", "QPushButton", "Clear on NULL");
    addToolTipRow("btnClearOnNull", "QPushButton", "AP: 0");
    addTextRow("lblTargetPosition", "QLabel", "Target pos.");
    addSteppedSpinBoxRows("sbTargetPosition", -Largest, Largest, 1000, 0, true);
    addToolTipRow("sbTargetPosition", "QSpinBox", "AP: 0");
    addTextRow("lblRelativeTo", "QLabel", "Relative to");
    addPropertyRow("cmbRelativeTo", "QComboBox", "currentIndex", 0);
    addPropertyRow("cmbRelativeTo", "QComboBox", "editable", false);
    addTextRow("btnMoveAbsolute", "QPushButton", "abs. ");
    addToolTipRow("btnMoveAbsolute", "QPushButton", "MVP_ABS");
    addTextRow("btnMoveRelative", "QPushButton", "rel. ");
    addToolTipRow("btnMoveRelative", "QPushButton", "MVP_REL");
    addPropertyRow("btnMoveRelative", "QPushButton", "flat", false);
    addTextRow("btnStop", "QPushButton", "");
    addToolTipRow("btnStop", "QPushButton", "");
    for (const char *button :
         {"btnClear", "btnClearOnNull", "btnMoveAbsolute", "btnMoveRelative", "btnStop"}) {
        addPropertyRow(button, "QPushButton", "enabled", true);
    }
}

void tst_WPositionControl::form()
{
    const Shown<WPositionControl> panel;
    compareProperty(*panel.get());
}

void tst_WPositionControl::relativeToItems()
{
    const Panel panel;
    QCOMPARE(panel.relativeTo->count(), 2);
    QCOMPARE(panel.relativeTo->itemText(0), u"actual position"_s);
    QCOMPARE(panel.relativeTo->itemText(1), u"target position"_s);
}

void tst_WPositionControl::pictures_data()
{
    QTest::addColumn<QString>("picture");
    QTest::newRow("btnMoveAbsolute") << u":/Editor/Redo"_s;
    QTest::newRow("btnMoveRelative") << u":/Editor/Redo"_s;
    QTest::newRow("btnStop") << u":/Player/Stop"_s;
}

void tst_WPositionControl::pictures()
{
    const Panel panel;
    comparePicture(*panel.get());
}

void tst_WPositionControl::setters()
{
    const Panel panel;
    panel->setTitle(u"Position control [µsteps]"_s);
    panel->setActualLabel(u"Actual"_s);
    panel->setTargetLabel(u"Target"_s);
    panel->setTargetStep(10000);
    QCOMPARE(panel.child<QGroupBox>("gbPositionControl")->title(), u"Position control [µsteps]"_s);
    QCOMPARE(panel.child<QLabel>("lblActualPosition")->text(), u"Actual"_s);
    QCOMPARE(panel.child<QLabel>("lblTargetPosition")->text(), u"Target"_s);
    QCOMPARE(panel.target->singleStep(), 10000);
    QTest::keyClick(panel.target, Qt::Key_Up);
    QCOMPARE(panel.target->value(), 10000);
    QCOMPARE(panel.log.take(), QStringList());
}

void tst_WPositionControl::numbers()
{
    const Panel panel;
    panel->setApActualPosition(byte(201));
    panel->setApTargetPosition(byte(202));
    QCOMPARE(panel.actual->toolTip(), u"AP: 201"_s);
    QCOMPARE(panel.child("btnClear")->toolTip(), u"AP: 201"_s);
    QCOMPARE(panel.target->toolTip(), u"AP: 202"_s);
    QCOMPARE(panel.child("btnClearOnNull")->toolTip(), u"AP: 198"_s);
    const std::unique_ptr<QList<char>> first(panel->traceParameters());
    const std::unique_ptr<QList<char>> second(panel->traceParameters());
    QCOMPARE(*first, QList<char>{byte(201)});
    QVERIFY(first != second); // a new one for each caller
    panel->readValues();
    QCOMPARE(panel.log.take(),
             (QStringList{u"requestValue(1, 0, -55)"_s, u"requestValue(1, 0, -54)"_s}));
}

void tst_WPositionControl::moveAbsolute()
{
    const Panel panel;
    panel.type("sbTargetPosition", u"-5000"_s);
    QCOMPARE(panel.log.take(), QStringList());
    panel.click("btnMoveAbsolute");
    QCOMPARE(panel.log.take(), move(0, -5000));
    QCOMPARE(panel.moveFromTarget(1000), move(0, -4000));
}

void tst_WPositionControl::moveRelativeToTarget()
{
    for (const bool byAbsolute : {true, false}) {
        const Panel panel;
        panel->setRelativeToActualByAbsolute(byAbsolute);
        QCOMPARE(panel.moveFromTarget(1000), move(0, 1000));
        QCOMPARE(panel.moveFromTarget(1000), move(0, 2000));
        QCOMPARE(panel.moveFromTarget(-500), move(0, 1500));
    }
}

void tst_WPositionControl::moveRelativeToActualByAbsolute()
{
    const Panel panel;
    panel->setRelativeToActualByAbsolute(true);
    panel.target->setValue(1000);
    panel.click("btnMoveRelative");
    QCOMPARE(panel.log.take(), move(0, 1000));
    panel.click("btnMoveRelative"); // nothing polled since
    QCOMPARE(panel.log.take(), move(0, 1000));
    panel->requestedTraceValue(1, 0, 1, -300);
    panel.click("btnMoveRelative");
    QCOMPARE(panel.log.take(), move(0, 700));
}

void tst_WPositionControl::moveRelativeToActual()
{
    const Panel panel;
    panel->requestedTraceValue(1, 0, 1, -300);
    panel.target->setValue(1000);
    panel.click("btnMoveRelative");
    QCOMPARE(panel.log.take(), move(1, 1000));
}

void tst_WPositionControl::moveRelativeToActualRaisesTheTarget()
{
    for (const bool byAbsolute : {true, false}) {
        const Panel panel;
        panel->setRelativeToActualByAbsolute(byAbsolute);
        panel.target->setValue(1000);
        panel.click("btnMoveRelative");
        panel.log.take();
        QCOMPARE(panel.moveFromTarget(10), move(0, 1010));
    }
}

void tst_WPositionControl::beginningOfTheText_data()
{
    QTest::addColumn<bool>("fromTarget");
    QTest::newRow("target position") << true;
    QTest::newRow("target position of this panel") << true;
    QTest::newRow("Target position") << false;
    QTest::newRow("the target position") << false;
    QTest::newRow("target") << false;
}

void tst_WPositionControl::beginningOfTheText()
{
    QFETCH(bool, fromTarget);
    const Panel panel;
    panel.moveFromTarget(500);
    panel.relativeTo->addItem(QString::fromLatin1(QTest::currentDataTag()));
    panel.relativeTo->setCurrentIndex(2);
    panel.target->setValue(1000);
    panel.click("btnMoveRelative");
    QCOMPARE(panel.log.take(), fromTarget ? move(0, 1500) : move(1, 1000));
}

void tst_WPositionControl::lastTargetStays()
{
    const Panel panel;
    panel.moveFromTarget(1000);
    panel->requestedTraceValue(1, 0, 1, 77777);
    panel.click("btnClear");
    panel.click("btnClearOnNull");
    panel.click("btnStop");
    panel.target->setValue(5);
    panel.log.take();
    QCOMPARE(panel.moveFromTarget(1), move(0, 1001));
}

void tst_WPositionControl::targetsStayInRange()
{
    const Panel panel;
    panel->setRelativeToActualByAbsolute(true);
    panel.moveFromTarget(Largest);
    QCOMPARE(panel.moveFromTarget(1000), move(0, Largest));
    QCOMPARE(panel.moveFromTarget(-1000), move(0, Largest - 1000));
    panel->requestedTraceValue(1, 0, 1, -Largest);
    panel.relativeTo->setCurrentIndex(0);
    panel.target->setValue(-1000);
    panel.click("btnMoveRelative");
    QCOMPARE(panel.log.take(), move(0, -Largest));
}

void tst_WPositionControl::stop_data()
{
    QTest::addColumn<bool>("stopWithMotorStop");
    QTest::addColumn<QStringList>("sent");
    QTest::newRow("MST") << true << QStringList{u"doROX(1, 0, 3, 0)"_s};
    QTest::newRow("move by nothing") << false << move(1, 0);
}

void tst_WPositionControl::stop()
{
    QFETCH(bool, stopWithMotorStop);
    const Panel panel;
    panel->setStopWithMotorStop(stopWithMotorStop);
    panel.target->setValue(1000);
    panel.click("btnStop");
    QTEST(panel.log.take(), "sent");
}

void tst_WPositionControl::clear()
{
    const Panel panel;
    panel.target->setValue(1000);
    panel->requestedTraceValue(1, 0, 1, 77);
    panel.click("btnClear");
    QCOMPARE(panel.log.take(),
             (QStringList{u"changeValue(1, 0, 1, 0)"_s, u"actualPositionChange(1, 0, 0)"_s}));
    QCOMPARE(panel.target->value(), 1000);
    QCOMPARE(panel.actual->value(), 77);
}

void tst_WPositionControl::clearOnNull()
{
    const Panel panel;
    panel.click("btnClearOnNull");
    QCOMPARE(panel.log.take(),
             (QStringList{u"changeValue(1, 0, -57, 1)"_s, u"changeValue(1, 0, -58, 1)"_s}));
    panel->setApClearOnNullWithoutTip(byte(198)); // as in the tool
    panel.click("btnClearOnNull");
    QCOMPARE(panel.log.take(),
             (QStringList{u"changeValue(1, 0, -58, 1)"_s, u"changeValue(1, 0, -58, 1)"_s}));
}

void tst_WPositionControl::addressAndMotor()
{
    const Panel panel;
    panel->setAddress(byte(200));
    panel->setMotor(2);
    panel->setStopWithMotorStop(true);
    panel.click("btnMoveAbsolute");
    panel.click("btnClear");
    panel.click("btnStop");
    QCOMPARE(panel.log.take(),
             (QStringList{u"doMove(-56, 2, 4, 0, 0)"_s, u"targetPositionChange(-56, 2, 0, 0)"_s,
                          u"changeValue(-56, 2, 1, 0)"_s, u"actualPositionChange(-56, 2, 0)"_s,
                          u"doROX(-56, 2, 3, 0)"_s}));
}

void tst_WPositionControl::actualPosition_data()
{
    QTest::addColumn<QList<int>>("reply"); // address, motor or bank, parameter, value
    QTest::addColumn<int>("shown");
    QTest::newRow("matches") << QList<int>{1, 0, 1, -70000} << -70000;
    QTest::newRow("below the field") << QList<int>{1, 0, 1, Least} << -Largest;
    QTest::newRow("another address") << QList<int>{2, 0, 1, 7} << 5;
    QTest::newRow("another motor or bank") << QList<int>{1, 1, 1, 7} << 5;
    QTest::newRow("the target's parameter") << QList<int>{1, 0, 0, 7} << 5;
}

void tst_WPositionControl::actualPosition()
{
    QFETCH(QList<int>, reply);
    using Slot = void (WPositionControl::*)(char, char, char, int);
    for (const Slot slot :
         {&WPositionControl::requestedValue, &WPositionControl::requestedTraceValue}) {
        const Panel panel;
        std::invoke(slot, panel.get(), byte(1), byte(0), byte(1), 5);
        std::invoke(slot, panel.get(), byte(reply[0]), byte(reply[1]), byte(reply[2]), reply[3]);
        QTEST(panel.actual->value(), "shown");
        QCOMPARE(panel.target->value(), 0);
        QCOMPARE(panel.log.take(), QStringList());
    }
}

void tst_WPositionControl::command_data()
{
    QTest::addColumn<QList<int>>("reply"); // address, command, parameter, motor or bank, status
    QTest::addColumn<int>("shown");
    QTest::newRow("GAP, carried out") << QList<int>{1, 6, 1, 0, 100} << 7;
    QTest::newRow("SAP, carried out") << QList<int>{1, 5, 1, 0, 100} << 0;
    QTest::newRow("GAP, refused") << QList<int>{1, 6, 1, 0, 4} << 0;
    QTest::newRow("another address") << QList<int>{2, 6, 1, 0, 100} << 0;
    QTest::newRow("another motor or bank") << QList<int>{1, 6, 1, 1, 100} << 0;
}

void tst_WPositionControl::command()
{
    QFETCH(QList<int>, reply);
    const Panel panel;
    panel->requestedCommand(byte(reply[0]), byte(reply[1]), byte(reply[2]), byte(reply[3]),
                            byte(reply[4]), 7);
    QTEST(panel.actual->value(), "shown");
}

void tst_WPositionControl::keyboard()
{
    const Panel panel;
    QCOMPARE(panel.tabOrder("sbTargetPosition"),
             (QStringList{u"sbTargetPosition"_s, u"cmbRelativeTo"_s, u"btnMoveAbsolute"_s,
                          u"btnMoveRelative"_s, u"btnStop"_s, u"btnClear"_s, u"btnClearOnNull"_s}));
}

void tst_WPositionControl::names()
{
    const Panel panel;
    QCOMPARE(unnamedControls(*panel.get()), QStringList());
    QCOMPARE(panel.clipped().join(u", "_s), QString());
}

QTEST_MAIN(tst_WPositionControl)
#include "tst_WPositionControl.moc"
