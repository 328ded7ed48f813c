#include "MotionPanelTest.h"
#include "panels/WStepperStatusFlags.h"
#include "support/MetaMethods.h"
#include "support/TestCase.h"

#include <QRadioButton>

using namespace Qt::StringLiterals;
using namespace PanelTest;
using namespace MotionPanelTest;

namespace {

struct Lamp
{
    const char *name;
    const char *text;
    int bit;
};

/// In the order of the form.
constexpr Lamp lamps[] = {
    {"rbPositionMode", "Position mode", 3},       {"rbVelocityMode", "Velocity mode", 4},
    {"rbTorqueMode", "Torque mode", 5},           {"rbPositionReached", "Position reached", 0},
    {"rbVelocityReached", "Velocity reached", 1}, {"rbHomeSwitch", "Home switch", 6},
    {"rbRightLimitSwitch", "Right switch", 8},    {"rbLeftSwitch", "Left switch", 7},
    {"rbClosedLoop", "Closed loop", 2},           {"rbUndervoltage", "Undervoltage", 9},
    {"rbOvervoltage", "Overvoltage", 10},         {"rbOvertemperature", "Overtemperature", 11},
};

constexpr int AllBits = 0xfff;

/// The panel as the tool sets it up.
class Panel : public Shown<WStepperStatusFlags>
{
public:
    Panel()
        : log(get())
    {
        get()->setStatusParameter(18);
    }

    /// The bits whose lamps are lit.
    int lit() const
    {
        int word = 0;
        for (const Lamp &lamp : lamps) {
            if (child<QRadioButton>(lamp.name)->isChecked()) {
                word |= 1 << lamp.bit;
            }
        }
        return word;
    }

    /// A click onto the lamp itself, left of the text.
    void clickLamp(const char *name) const
    {
        QWidget *lamp = child(name);
        QTest::mouseClick(lamp, Qt::LeftButton, {}, QPoint(8, lamp->height() / 2));
    }

    mutable PanelSignalLog log;
};

} // namespace

class tst_WStepperStatusFlags : public TestCase
{
    Q_OBJECT

private slots:
    void signalsAndSlots();
    void form_data();
    void form();
    void orderOfLamps();
    void numbers();
    void word_data();
    void word();
    void oneBit_data();
    void oneBit();
    void orderOfChanges();
    void repeatedWord();
    void mismatch_data();
    void mismatch();
    void mouse_data();
    void mouse();
    void overvoltageTakesTheMouse();
    void filter_data();
    void filter();
    void filterLeavesTheRest();
    void spaceBar_data();
    void spaceBar();
    void names();
};

void tst_WStepperStatusFlags::signalsAndSlots()
{
    const QMetaObject &metaObject = WStepperStatusFlags::staticMetaObject;
    QCOMPARE(metaObject.superClass(), &QWidget::staticMetaObject);
    QCOMPARE(ownMethods(metaObject, QMetaMethod::Signal),
             QStringList{u"motorControlModeChanged(int mode)"_s});
    QCOMPARE(ownMethods(metaObject, QMetaMethod::Slot),
             QStringList{u"requestedTraceValue(char address, char motorBank, char type, "
                         "int value)"_s});
    QWidget window;
    QCOMPARE(WStepperStatusFlags(&window).parentWidget(), &window);
}

void tst_WStepperStatusFlags::form_data()
{
    addPropertyColumns();
    addPropertyRow("panel", "WStepperStatusFlags", "size", QSize(147, 323));
    addPropertyRow("panel", "WStepperStatusFlags", "maximumSize", QSize(147, 323));
    addPropertyRow("gbStates", "QGroupBox", "title", u"Status flags"_s);
    addPropertyRow("gbStates", "QGroupBox", "flat", false);
    addPropertyRow("gbStates", "QGroupBox", "checkable", false);
    for (const Lamp &lamp : lamps) {
        addTextRow(lamp.name, "QRadioButton", lamp.text);
        addPropertyRow(lamp.name, "QRadioButton", "autoExclusive", false);
        addPropertyRow(lamp.name, "QRadioButton", "checked", false);
        addPropertyRow(lamp.name, "QRadioButton", "enabled", true);
        addToolTipRow(lamp.name, "QRadioButton", "");
    }
}

void tst_WStepperStatusFlags::form()
{
    const Shown<WStepperStatusFlags> panel;
    compareProperty(*panel.get());
}

void tst_WStepperStatusFlags::orderOfLamps()
{
    const Panel panel;
    QCOMPARE(panel->findChildren<QRadioButton *>().size(), std::size(lamps));
    int bottom = 0;
    QStringList inTabOrder;
    for (const Lamp &lamp : lamps) {
        const QWidget *button = panel.child(lamp.name);
        QVERIFY2(button->y() >= bottom, lamp.name);
        bottom = button->geometry().bottom();
        inTabOrder.append(QString::fromLatin1(lamp.name));
    }
    QCOMPARE(panel.tabOrder("rbPositionMode"), inTabOrder);
}

void tst_WStepperStatusFlags::numbers()
{
    const Panel panel;
    panel->setStatusParameter(byte(218));
    const std::unique_ptr<QList<char>> first(panel->traceParameters());
    const std::unique_ptr<QList<char>> second(panel->traceParameters());
    QCOMPARE(*first, QList<char>{byte(218)});
    QVERIFY(first != second); // a new one for each caller
    for (const QWidget *widget : panel->findChildren<QWidget *>()) {
        QCOMPARE(widget->toolTip(), QString());
    }
}

void tst_WStepperStatusFlags::word_data()
{
    QTest::addColumn<int>("word");
    QTest::addColumn<int>("lit");
    QTest::addColumn<QStringList>("modes");
    const QString position = u"motorControlModeChanged(0)"_s;
    const QString velocity = u"motorControlModeChanged(1)"_s;
    const QString torque = u"motorControlModeChanged(2)"_s;
    const QStringList none;
    QTest::newRow("none") << 0 << 0 << none;
    QTest::newRow("position mode and overtemperature") << 0x808 << 0x808 << QStringList{position};
    QTest::newRow("two modes") << 0x18 << 0x18 << QStringList{position, velocity};
    QTest::newRow("velocity") << 0x10 << 0x10 << QStringList{velocity};
    QTest::newRow("torque and position") << 0x28 << 0x28 << QStringList{position, torque};
    QTest::newRow("no mode") << 0xfc7 << 0xfc7 << none;
    QTest::newRow("all") << AllBits << AllBits << QStringList{position, velocity, torque};
    QTest::newRow("unknown bits alone") << ~AllBits << 0 << none;
    QTest::newRow("all bits there are") << -1 << AllBits << QStringList{position, velocity, torque};
    QTest::newRow("least") << Least << 0 << none;
}

void tst_WStepperStatusFlags::word()
{
    QFETCH(int, word);
    for (const int before : {0, AllBits}) {
        const Panel panel;
        panel->requestedTraceValue(1, 0, 18, before);
        QCOMPARE(panel.lit(), before);
        panel.log.take();
        panel->requestedTraceValue(1, 0, 18, word);
        QTEST(panel.lit(), "lit");
        QTEST(panel.log.take(), "modes");
    }
}

void tst_WStepperStatusFlags::oneBit_data()
{
    QTest::addColumn<int>("bit");
    for (const Lamp &lamp : lamps) {
        QTest::newRow(lamp.name) << lamp.bit;
    }
}

void tst_WStepperStatusFlags::oneBit()
{
    QFETCH(int, bit);
    const Panel panel;
    panel->requestedTraceValue(1, 0, 18, 1 << bit);
    QStringList lit;
    for (const QRadioButton *lamp : panel->findChildren<QRadioButton *>()) {
        if (lamp->isChecked()) {
            lit.append(lamp->objectName());
        }
    }
    QCOMPARE(lit, QStringList{QString::fromLatin1(QTest::currentDataTag())});
}

void tst_WStepperStatusFlags::orderOfChanges()
{
    const Panel panel;
    QStringList changes;
    for (const QRadioButton *lamp : panel->findChildren<QRadioButton *>()) {
        connect(lamp, &QRadioButton::toggled, panel.get(),
                [&changes, lamp] { changes.append(lamp->objectName()); });
    }
    connect(panel.get(), &WStepperStatusFlags::motorControlModeChanged, panel.get(),
            [&changes](int mode) { changes.append(QString::number(mode)); });
    panel->requestedTraceValue(1, 0, 18, AllBits);
    QCOMPARE(
        changes,
        (QStringList{u"rbPositionReached"_s, u"rbVelocityReached"_s, u"rbClosedLoop"_s,
                     u"rbPositionMode"_s, u"0"_s, u"rbVelocityMode"_s, u"1"_s, u"rbTorqueMode"_s,
                     u"2"_s, u"rbHomeSwitch"_s, u"rbLeftSwitch"_s, u"rbRightLimitSwitch"_s,
                     u"rbUndervoltage"_s, u"rbOvervoltage"_s, u"rbOvertemperature"_s}));
}

void tst_WStepperStatusFlags::repeatedWord()
{
    const Panel panel;
    panel->requestedTraceValue(1, 0, 18, 0x10);
    panel->requestedTraceValue(1, 0, 18, 0x10);
    const QString velocity = u"motorControlModeChanged(1)"_s;
    QCOMPARE(panel.log.take(), (QStringList{velocity, velocity}));
}

void tst_WStepperStatusFlags::mismatch_data()
{
    QTest::addColumn<int>("address");
    QTest::addColumn<int>("motorBank");
    QTest::addColumn<int>("type");
    QTest::newRow("address") << 1 << 2 << 18;
    QTest::newRow("motor or bank") << 200 << 0 << 18;
    QTest::newRow("parameter") << 200 << 2 << 19;
    QTest::newRow("unconfigured number") << 200 << 2 << 0;
}

void tst_WStepperStatusFlags::mismatch()
{
    QFETCH(int, address);
    QFETCH(int, motorBank);
    QFETCH(int, type);
    const Panel panel;
    panel->setAddress(byte(200));
    panel->setMotor(2);
    panel->requestedTraceValue(byte(200), 2, 18, 0x204);
    panel->requestedTraceValue(byte(address), byte(motorBank), byte(type), AllBits);
    QCOMPARE(panel.lit(), 0x204);
    QCOMPARE(panel.log.take(), QStringList());
}

void tst_WStepperStatusFlags::mouse_data()
{
    QTest::addColumn<bool>("takesTheMouse");
    for (const Lamp &lamp : lamps) {
        QTest::newRow(lamp.name) << (qstrcmp(lamp.name, "rbOvervoltage") == 0);
    }
}

void tst_WStepperStatusFlags::mouse()
{
    QFETCH(bool, takesTheMouse);
    const char *name = QTest::currentDataTag();
    for (const int before : {0, AllBits}) {
        const Panel panel;
        panel->requestedTraceValue(1, 0, 18, before);
        panel.log.take();
        panel.clickLamp(name);
        QCOMPARE(panel.lit() != before, takesTheMouse);
        panel.click(name);
        QCOMPARE(panel.lit(), before);
        QTest::mouseDClick(panel.child(name), Qt::LeftButton);
        QTest::mouseClick(panel.child(name), Qt::RightButton);
        QCOMPARE(panel.lit(), before);
        QVERIFY(panel.enabled(name));
        QCOMPARE(panel.log.take(), QStringList());
    }
}

void tst_WStepperStatusFlags::overvoltageTakesTheMouse()
{
    const Panel panel;
    panel.clickLamp("rbOvervoltage");
    QCOMPARE(panel.lit(), 1 << 10);
    panel.clickLamp("rbOvervoltage");
    QCOMPARE(panel.lit(), 0);
    panel->requestedTraceValue(1, 0, 18, 1 << 10);
    panel.clickLamp("rbOvervoltage");
    QCOMPARE(panel.lit(), 0);
    panel->requestedTraceValue(1, 0, 18, 1 << 10); // the next poll
    QCOMPARE(panel.lit(), 1 << 10);
}

void tst_WStepperStatusFlags::filter_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<bool>("swallowed");
    QTest::newRow("press") << int{QEvent::MouseButtonPress} << true;
    QTest::newRow("release") << int{QEvent::MouseButtonRelease} << true;
    QTest::newRow("double click") << int{QEvent::MouseButtonDblClick} << true;
    QTest::newRow("move") << int{QEvent::MouseMove} << false;
    QTest::newRow("wheel") << int{QEvent::Wheel} << false;
    QTest::newRow("key") << int{QEvent::KeyPress} << false;
    QTest::newRow("tool tip") << int{QEvent::ToolTip} << false;
}

void tst_WStepperStatusFlags::filter()
{
    QFETCH(int, type);
    QFETCH(bool, swallowed);
    const Panel panel;
    QEvent event(static_cast<QEvent::Type>(type));
    for (const Lamp &lamp : lamps) {
        const bool filtered = qstrcmp(lamp.name, "rbOvervoltage") != 0;
        QCOMPARE(panel->eventFilter(panel.child(lamp.name), &event), swallowed && filtered);
    }
}

void tst_WStepperStatusFlags::filterLeavesTheRest()
{
    const Panel panel;
    QEvent press(QEvent::MouseButtonPress);
    QVERIFY(!panel->eventFilter(panel.child("gbStates"), &press));
    QVERIFY(!panel->eventFilter(panel.get(), &press));
    QRadioButton stranger;
    QVERIFY(!panel->eventFilter(&stranger, &press));
}

void tst_WStepperStatusFlags::spaceBar_data()
{
    oneBit_data();
}

void tst_WStepperStatusFlags::spaceBar()
{
    QFETCH(int, bit);
    const Panel panel;
    QWidget *lamp = panel.child(QTest::currentDataTag());
    lamp->setFocus();
    QTest::keyClick(lamp, Qt::Key_Space);
    QCOMPARE(panel.lit(), 1 << bit);
    QTest::keyClick(lamp, Qt::Key_Space);
    QCOMPARE(panel.lit(), 0);
    QTest::keyClick(lamp, Qt::Key_Space);
    panel->requestedTraceValue(1, 0, 18, 0);
    QCOMPARE(panel.lit(), 0);
    QCOMPARE(panel.log.take(), QStringList());
}

void tst_WStepperStatusFlags::names()
{
    const Panel panel;
    QCOMPARE(unnamedControls(*panel.get()), QStringList());
    QCOMPARE(panel.clipped().join(u", "_s), QString());
}

QTEST_MAIN(tst_WStepperStatusFlags)
#include "tst_WStepperStatusFlags.moc"
