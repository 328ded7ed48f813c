#include "MotionPanelTest.h"
#include "panels/WVelocityControl.h"
#include "support/MetaMethods.h"
#include "support/TestCase.h"

#include <QGroupBox>

#include <type_traits>

using namespace Qt::StringLiterals;
using namespace PanelTest;
using namespace MotionPanelTest;

namespace {

/// The panel as the tool sets it up.
class Panel : public Shown<WVelocityControl>
{
public:
    Panel()
        : log(get())
        , actual(child<QSpinBox>("sbActualVelocity"))
        , target(child<QSpinBox>("sbTargetVelocity"))
    {
        get()->setApActualVelocity(byte(131));
    }

    mutable PanelSignalLog log;
    QSpinBox *actual;
    QSpinBox *target;
};

} // namespace

class tst_WVelocityControl : public TestCase
{
    Q_OBJECT

private slots:
    void signalsAndSlots();
    void form_data();
    void form();
    void pictures_data();
    void pictures();
    void setters();
    void targetMaximum_data();
    void targetMaximum();
    void numbers();
    void buttons_data();
    void buttons();
    void buttonsAtZero();
    void jogWithTheKeyboard();
    void targetSendsNothing();
    void targetIsNotNegative();
    void addressAndMotor();
    void halted_data();
    void halted();
    void mismatch_data();
    void mismatch();
    void command_data();
    void command();
    void keyboard();
    void names();
};

void tst_WVelocityControl::signalsAndSlots()
{
    QVERIFY((std::is_base_of_v<MotorController, WVelocityControl>));
    const QMetaObject &metaObject = WVelocityControl::staticMetaObject;
    QCOMPARE(metaObject.superClass(), &QWidget::staticMetaObject);
    QCOMPARE(ownMethods(metaObject, QMetaMethod::Signal),
             (QStringList{u"requestValue(char address, char motorBank, char type)"_s,
                          u"doROX(char address, char motorBank, char roxCommand, int value)"_s,
                          u"targetVelocityChange(char address, char motorBank, int value)"_s,
                          u"motorHalted(bool halted)"_s}));
    QCOMPARE(ownMethods(metaObject, QMetaMethod::Slot),
             (QStringList{
                 u"requestedValue(char address, char motorBank, char type, int value)"_s,
                 u"requestedTraceValue(char address, char motorBank, char type, int value)"_s,
                 u"requestedCommand(char address, char command, char type, char motorBank, "
                 "char status, int data)"_s,
                 u"on_btnRight_clicked()"_s, u"on_btnJogRight_pressed()"_s,
                 u"on_btnLeft_clicked()"_s, u"on_btnJogLeft_pressed()"_s, u"on_btnStop_clicked()"_s,
                 u"on_btnJogRight_released()"_s, u"on_btnJogLeft_released()"_s}));
    QWidget window;
    QCOMPARE(WVelocityControl(&window).parentWidget(), &window);
}

void tst_WVelocityControl::form_data()
{
    addPropertyColumns();
    addPropertyRow("gbVelocityControl", "QGroupBox", "title", u"Velocity control"_s);
    addTextRow("lblActualVelocity", "QLabel", "Actual vel. [rpm] ");
    addSteppedSpinBoxRows("sbActualVelocity", -Largest, Largest, 100, 0, false);
    addToolTipRow("sbActualVelocity", "QSpinBox", "AP: 0");
    addTextRow("lblTargetVelocity", "QLabel", "Target vel. [rpm] ");
    addSteppedSpinBoxRows("sbTargetVelocity", 0, 100000, 100, 0, true);
    const std::pair<const char *, const char *> buttons[] = {{"btnLeft", "ROL"},
                                                             {"btnJogLeft", ""},
                                                             {"btnStop", "MST"},
                                                             {"btnJogRight", ""},
                                                             {"btnRight", "ROR"}};
    for (const auto &[button, toolTip] : buttons) {
        addTextRow(button, "QPushButton", "");
        addToolTipRow(button, "QPushButton", toolTip);
        addPropertyRow(button, "QPushButton", "enabled", true);
    }
    addPropertyRow("btnStop", "QPushButton", "iconSize", QSize(16, 16));
}

void tst_WVelocityControl::form()
{
    const Shown<WVelocityControl> panel;
    compareProperty(*panel.get());
}

void tst_WVelocityControl::pictures_data()
{
    addPlayerPictureRows({"btnLeft", "btnJogLeft", "btnStop", "btnJogRight", "btnRight"});
}

void tst_WVelocityControl::pictures()
{
    const Panel panel;
    comparePicture(*panel.get());
}

void tst_WVelocityControl::setters()
{
    const Panel panel;
    panel->setTitle(u"Velocity control [pps]"_s);
    panel->setActualLabel(u"Actual vel."_s);
    panel->setTargetLabel(u"Target vel."_s);
    panel->setTargetStep(10000);
    QCOMPARE(panel.child<QGroupBox>("gbVelocityControl")->title(), u"Velocity control [pps]"_s);
    QCOMPARE(panel.child<QLabel>("lblActualVelocity")->text(), u"Actual vel."_s);
    QCOMPARE(panel.child<QLabel>("lblTargetVelocity")->text(), u"Target vel."_s);
    QCOMPARE(panel.target->singleStep(), 10000);
    QCOMPARE(panel.log.take(), QStringList());
}

void tst_WVelocityControl::targetMaximum_data()
{
    QTest::addColumn<int>("maximum");
    QTest::addColumn<int>("expected");
    QTest::newRow("as in the tool") << 268435454 << 268435454;
    QTest::newRow("0") << 0 << 0;
    QTest::newRow("negative") << -5 << 0;
}

void tst_WVelocityControl::targetMaximum()
{
    QFETCH(int, maximum);
    const Panel panel;
    panel->setTargetMaximum(maximum);
    QTEST(panel.target->maximum(), "expected");
    QCOMPARE(panel.target->minimum(), 0);
}

void tst_WVelocityControl::numbers()
{
    const Panel panel;
    QCOMPARE(panel.actual->toolTip(), u"AP: 131"_s);
    const std::unique_ptr<QList<char>> first(panel->traceParameters());
    const std::unique_ptr<QList<char>> second(panel->traceParameters());
    QCOMPARE(*first, QList<char>{byte(131)});
    QVERIFY(first != second); // a new one for each caller
    panel->setAddress(byte(200));
    panel->setMotor(2);
    panel->readValues();
    QCOMPARE(panel.log.take(), QStringList{u"requestValue(-56, 2, -125)"_s});
}

void tst_WVelocityControl::buttons_data()
{
    QTest::addColumn<QStringList>("atPress");
    QTest::addColumn<QStringList>("atRelease");
    const QStringList nothing;
    const QStringList right{u"doROX(1, 0, 1, 5000)"_s, u"targetVelocityChange(1, 0, 5000)"_s};
    const QStringList left{u"doROX(1, 0, 2, 5000)"_s, u"targetVelocityChange(1, 0, -5000)"_s};
    const QStringList stop{u"doROX(1, 0, 3, 0)"_s, u"targetVelocityChange(1, 0, 0)"_s};
    QTest::newRow("btnLeft") << nothing << left;
    QTest::newRow("btnJogLeft") << left << stop;
    QTest::newRow("btnStop") << nothing << stop;
    QTest::newRow("btnJogRight") << right << stop;
    QTest::newRow("btnRight") << nothing << right;
}

void tst_WVelocityControl::buttons()
{
    const Panel panel;
    panel.type("sbTargetVelocity", u"5000"_s);
    compareClicks(panel, QTest::currentDataTag());
}

void tst_WVelocityControl::buttonsAtZero()
{
    const Panel panel;
    panel.click("btnRight");
    panel.click("btnLeft");
    QCOMPARE(panel.log.take(),
             (QStringList{u"doROX(1, 0, 1, 0)"_s, u"targetVelocityChange(1, 0, 0)"_s,
                          u"doROX(1, 0, 2, 0)"_s, u"targetVelocityChange(1, 0, 0)"_s}));
}

void tst_WVelocityControl::jogWithTheKeyboard()
{
    const Panel panel;
    panel.target->setValue(30);
    QWidget *button = panel.child("btnJogLeft");
    button->setFocus();
    QTest::keyPress(button, Qt::Key_Space);
    QCOMPARE(panel.log.take().first(), u"doROX(1, 0, 2, 30)"_s);
    QTest::keyRelease(button, Qt::Key_Space);
    QCOMPARE(panel.log.take().first(), u"doROX(1, 0, 3, 0)"_s);
}

void tst_WVelocityControl::targetSendsNothing()
{
    const Panel panel;
    panel.click("btnRight");
    panel.log.take();
    panel.type("sbTargetVelocity", u"5000"_s);
    QTest::keyClick(panel.target, Qt::Key_Up);
    QCOMPARE(panel.target->value(), 5100);
    QCOMPARE(panel.log.take(), QStringList());
}

void tst_WVelocityControl::targetIsNotNegative()
{
    const Panel panel;
    panel.type("sbTargetVelocity", u"-5"_s);
    panel.click("btnRight");
    QCOMPARE(panel.log.take().first(), u"doROX(1, 0, 1, 5)"_s); // the sign isn't accepted
}

void tst_WVelocityControl::addressAndMotor()
{
    const Panel panel;
    QCOMPARE(int{panel->address()}, 1);
    QCOMPARE(int{panel->motor()}, 0);
    panel->setAddress(byte(200));
    panel->setMotor(2);
    panel.click("btnRight");
    QCOMPARE(panel.log.take(),
             (QStringList{u"doROX(-56, 2, 1, 0)"_s, u"targetVelocityChange(-56, 2, 0)"_s}));
}

void tst_WVelocityControl::halted_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("shown");
    QTest::addColumn<bool>("halted");
    QTest::newRow("0") << 0 << 0 << true;
    QTest::newRow("right") << 1 << 1 << false;
    QTest::newRow("left") << -1 << -1 << false;
    QTest::newRow("below the field") << Least << -Largest << false;
}

void tst_WVelocityControl::halted()
{
    QFETCH(int, value);
    QFETCH(bool, halted);
    const Panel panel;
    const QStringList expected{u"motorHalted(%1)"_s.arg(QVariant(halted).toString())};
    panel->requestedValue(1, 0, byte(131), value);
    QTEST(panel.actual->value(), "shown");
    QCOMPARE(panel.log.take(), expected);
    // With every value, the same ones, too.
    panel->requestedTraceValue(1, 0, byte(131), value);
    QCOMPARE(panel.log.take(), expected);
    panel->requestedCommand(1, 6, byte(131), 0, 100, value);
    QCOMPARE(panel.log.take(), expected);
    QTEST(panel.actual->value(), "shown");
}

void tst_WVelocityControl::mismatch_data()
{
    QTest::addColumn<int>("address");
    QTest::addColumn<int>("motorBank");
    QTest::addColumn<int>("type");
    QTest::newRow("address") << 2 << 0 << 131;
    QTest::newRow("motor or bank") << 1 << 1 << 131;
    QTest::newRow("parameter") << 1 << 0 << 130;
    QTest::newRow("unconfigured number") << 1 << 0 << 0;
}

void tst_WVelocityControl::mismatch()
{
    QFETCH(int, address);
    QFETCH(int, motorBank);
    QFETCH(int, type);
    const Panel panel;
    panel->requestedValue(byte(address), byte(motorBank), byte(type), 7);
    panel->requestedTraceValue(byte(address), byte(motorBank), byte(type), 7);
    panel->requestedCommand(byte(address), 6, byte(type), byte(motorBank), 100, 7);
    QCOMPARE(panel.actual->value(), 0);
    QCOMPARE(panel.log.take(), QStringList());
}

void tst_WVelocityControl::command_data()
{
    QTest::addColumn<int>("command");
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("shown");
    QTest::newRow("GAP, carried out") << 6 << 100 << 7;
    QTest::newRow("SAP, carried out") << 5 << 100 << 0;
    QTest::newRow("GAP, refused") << 6 << 4 << 0;
    QTest::newRow("neither") << 10 << 1 << 0;
}

void tst_WVelocityControl::command()
{
    QFETCH(int, command);
    QFETCH(int, status);
    QFETCH(int, shown);
    const Panel panel;
    panel->requestedCommand(1, byte(command), byte(131), 0, byte(status), 7);
    QCOMPARE(panel.actual->value(), shown);
    QCOMPARE(panel.log.take().size(), shown == 0 ? 0 : 1);
}

void tst_WVelocityControl::keyboard()
{
    const Panel panel;
    QCOMPARE(panel.tabOrder("sbTargetVelocity"),
             (QStringList{u"sbTargetVelocity"_s, u"btnLeft"_s, u"btnJogLeft"_s, u"btnStop"_s,
                          u"btnJogRight"_s, u"btnRight"_s}));
}

void tst_WVelocityControl::names()
{
    const Panel panel;
    QCOMPARE(unnamedControls(*panel.get()), QStringList());
    QCOMPARE(panel.clipped().join(u", "_s), QString());
}

QTEST_MAIN(tst_WVelocityControl)
#include "tst_WVelocityControl.moc"
