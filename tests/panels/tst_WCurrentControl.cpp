#include "MotionPanelTest.h"
#include "panels/WCurrentControl.h"
#include "support/MetaMethods.h"
#include "support/TestCase.h"

#include <QGroupBox>

#include <type_traits>

using namespace Qt::StringLiterals;
using namespace PanelTest;
using namespace MotionPanelTest;

namespace {

/// The panel as the tool sets it up, but for the way to stop.
class Panel : public Shown<WCurrentControl>
{
public:
    Panel()
        : log(get())
        , actual(child<QSpinBox>("sbActualCurrent"))
        , target(child<QSpinBox>("sbTargetCurrent"))
    {
        get()->setApActualCurrent(15);
        get()->setApTargetCurrent(14);
    }

    mutable PanelSignalLog log;
    QSpinBox *actual;
    QSpinBox *target;
};

} // namespace

class tst_WCurrentControl : public TestCase
{
    Q_OBJECT

private slots:
    void signalsAndSlots();
    void form_data();
    void form();
    void pictures_data();
    void pictures();
    void setters();
    void numbers();
    void buttons_data();
    void buttons();
    void addressAndMotor();
    void lowerMaximum();
    void maximumIsNotNegative();
    void actualCurrent_data();
    void actualCurrent();
    void keyboard();
    void names();
};

void tst_WCurrentControl::signalsAndSlots()
{
    QVERIFY((std::is_base_of_v<MotorController, WCurrentControl>));
    const QMetaObject &metaObject = WCurrentControl::staticMetaObject;
    QCOMPARE(metaObject.superClass(), &QWidget::staticMetaObject);
    QCOMPARE(ownMethods(metaObject, QMetaMethod::Signal),
             (QStringList{u"requestValue(char address, char motorBank, char type)"_s,
                          u"changeValue(char address, char motorBank, char type, int value)"_s,
                          u"doROX(char address, char motorBank, char roxCommand, int value)"_s,
                          u"targetTorqueChange(char address, char motorBank, int value)"_s}));
    QCOMPARE(ownMethods(metaObject, QMetaMethod::Slot),
             (QStringList{
                 u"requestedValue(char address, char motorBank, char type, int value)"_s,
                 u"requestedTraceValue(char address, char motorBank, char type, int value)"_s,
                 u"on_btnRight_clicked()"_s, u"on_btnJogRight_pressed()"_s,
                 u"on_btnLeft_clicked()"_s, u"on_btnJogLeft_pressed()"_s, u"on_btnStop_clicked()"_s,
                 u"on_btnJogRight_released()"_s, u"on_btnJogLeft_released()"_s}));
    QWidget window;
    QCOMPARE(WCurrentControl(&window).parentWidget(), &window);
}

void tst_WCurrentControl::form_data()
{
    addPropertyColumns();
    addPropertyRow("gbCurrentControl", "QGroupBox", "title", u"Current Control"_s);
    addTextRow("lblActualCurrent", "QLabel", "Actual cur. [mA] ");
    addSteppedSpinBoxRows("sbActualCurrent", -99999, 99999, 1, 0, false);
    addToolTipRow("sbActualCurrent", "QSpinBox", "AP: 0");
    addTextRow("lblTargetCurrent", "QLabel", "Target cur. [mA] ");
    addSteppedSpinBoxRows("sbTargetCurrent", 0, 99999, 100, 0, true);
    addToolTipRow("sbTargetCurrent", "QSpinBox", "AP: 0");
    for (const char *button : {"btnLeft", "btnJogLeft", "btnStop", "btnJogRight", "btnRight"}) {
        addTextRow(button, "QPushButton", "");
        addToolTipRow(button, "QPushButton", "");
        addPropertyRow(button, "QPushButton", "enabled", true);
    }
}

void tst_WCurrentControl::form()
{
    const Shown<WCurrentControl> panel;
    compareProperty(*panel.get());
}

void tst_WCurrentControl::pictures_data()
{
    addPlayerPictureRows({"btnLeft", "btnJogLeft", "btnStop", "btnJogRight", "btnRight"});
}

void tst_WCurrentControl::pictures()
{
    const Panel panel;
    comparePicture(*panel.get());
}

void tst_WCurrentControl::setters()
{
    const Panel panel;
    panel->setTitle(u"Current control [mA]"_s);
    panel->setActualLabel(u"Max. phase current"_s);
    panel->setTargetLabel(u"Target phase current"_s);
    QCOMPARE(panel.child<QGroupBox>("gbCurrentControl")->title(), u"Current control [mA]"_s);
    QCOMPARE(panel.child<QLabel>("lblActualCurrent")->text(), u"Max. phase current"_s);
    QCOMPARE(panel.child<QLabel>("lblTargetCurrent")->text(), u"Target phase current"_s);
}

void tst_WCurrentControl::numbers()
{
    const Panel panel;
    panel->setApActualCurrent(byte(215));
    panel->setApTargetCurrent(byte(214));
    QCOMPARE(panel.actual->toolTip(), u"AP: 215"_s);
    QCOMPARE(panel.target->toolTip(), u"AP: 214"_s);
    const std::unique_ptr<QList<char>> first(panel->traceParameters());
    const std::unique_ptr<QList<char>> second(panel->traceParameters());
    QCOMPARE(*first, QList<char>{byte(215)});
    QVERIFY(first != second); // a new one for each caller
    panel->readValues();
    QCOMPARE(panel.log.take(), QStringList{u"requestValue(1, 0, -41)"_s});
}

void tst_WCurrentControl::buttons_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<bool>("stopWithMotorStop");
    QTest::addColumn<QStringList>("atPress");
    QTest::addColumn<QStringList>("atRelease");
    const QStringList nothing;
    const QStringList right{u"changeValue(1, 0, 14, 700)"_s, u"targetTorqueChange(1, 0, 700)"_s};
    const QStringList left{u"changeValue(1, 0, 14, -700)"_s, u"targetTorqueChange(1, 0, -700)"_s};
    const QStringList byCommand{u"doROX(1, 0, 3, 0)"_s};
    const QStringList byCurrent{u"changeValue(1, 0, 14, 0)"_s, u"targetTorqueChange(1, 0, 0)"_s};
    for (const bool byStop : {true, false}) {
        const QStringList stop = byStop ? byCommand : byCurrent;
        const auto row = [&](const QString &name, const QStringList &press,
                             const QStringList &release) {
            QTest::addRow("%s, %s", qPrintable(name), byStop ? "MST" : "current 0")
                << name << byStop << press << release;
        };
        row(u"btnLeft"_s, nothing, left);
        row(u"btnJogLeft"_s, left, stop);
        row(u"btnStop"_s, nothing, stop);
        row(u"btnJogRight"_s, right, stop);
        row(u"btnRight"_s, nothing, right);
    }
}

void tst_WCurrentControl::buttons()
{
    QFETCH(QString, button);
    QFETCH(bool, stopWithMotorStop);
    const Panel panel;
    panel->setStopWithMotorStop(stopWithMotorStop);
    panel.type("sbTargetCurrent", u"700"_s);
    QCOMPARE(panel.log.take(), QStringList());
    compareClicks(panel, qPrintable(button));
}

void tst_WCurrentControl::addressAndMotor()
{
    const Panel panel;
    panel->setAddress(byte(200));
    panel->setMotor(2);
    panel->setStopWithMotorStop(true);
    panel.click("btnLeft");
    panel.click("btnStop");
    QCOMPARE(panel.log.take(),
             (QStringList{u"changeValue(-56, 2, 14, 0)"_s, u"targetTorqueChange(-56, 2, 0)"_s,
                          u"doROX(-56, 2, 3, 0)"_s}));
}

void tst_WCurrentControl::lowerMaximum()
{
    const Panel panel;
    panel->setTargetMaximum(5000);
    QCOMPARE(panel.target->maximum(), 5000);
    panel.target->setValue(3000);
    panel->setTargetMaximum(1200);
    QCOMPARE(panel.target->value(), 1200);
    QCOMPARE(panel.log.take(), QStringList());
}

void tst_WCurrentControl::maximumIsNotNegative()
{
    const Panel panel;
    panel->setTargetMaximum(-65535);
    QCOMPARE(panel.target->minimum(), 0);
    QCOMPARE(panel.target->maximum(), 0);
    panel->setTargetMaximum(5000);
    QCOMPARE(panel.target->minimum(), 0);
}

void tst_WCurrentControl::actualCurrent_data()
{
    QTest::addColumn<QList<int>>("reply"); // address, motor or bank, parameter, value
    QTest::addColumn<int>("shown");
    QTest::newRow("matches") << QList<int>{1, 0, 15, -700} << -700;
    QTest::newRow("above the field") << QList<int>{1, 0, 15, Largest} << 99999;
    QTest::newRow("another address") << QList<int>{2, 0, 15, 7} << 5;
    QTest::newRow("another motor or bank") << QList<int>{1, 1, 15, 7} << 5;
    QTest::newRow("the target's parameter") << QList<int>{1, 0, 14, 7} << 5;
    QTest::newRow("unconfigured number") << QList<int>{1, 0, 0, 7} << 5;
}

void tst_WCurrentControl::actualCurrent()
{
    QFETCH(QList<int>, reply);
    using Slot = void (WCurrentControl::*)(char, char, char, int);
    for (const Slot slot :
         {&WCurrentControl::requestedValue, &WCurrentControl::requestedTraceValue}) {
        const Panel panel;
        std::invoke(slot, panel.get(), byte(1), byte(0), byte(15), 5);
        std::invoke(slot, panel.get(), byte(reply[0]), byte(reply[1]), byte(reply[2]), reply[3]);
        QTEST(panel.actual->value(), "shown");
        QCOMPARE(panel.target->value(), 0);
        QCOMPARE(panel.log.take(), QStringList());
    }
}

void tst_WCurrentControl::keyboard()
{
    const Panel panel;
    QCOMPARE(panel.tabOrder("sbTargetCurrent"),
             (QStringList{u"sbTargetCurrent"_s, u"btnLeft"_s, u"btnJogLeft"_s, u"btnStop"_s,
                          u"btnJogRight"_s, u"btnRight"_s}));
}

void tst_WCurrentControl::names()
{
    const Panel panel;
    QCOMPARE(unnamedControls(*panel.get()), QStringList());
    QCOMPARE(panel.clipped().join(u", "_s), QString());
    panel->setActualLabel(u"Max. phase current"_s);
    panel->setTargetLabel(u"Target phase current"_s);
    adjustToTexts(panel.get());
    QCOMPARE(panel.clipped().join(u", "_s), QString());
}

QTEST_MAIN(tst_WCurrentControl)
#include "tst_WCurrentControl.moc"
