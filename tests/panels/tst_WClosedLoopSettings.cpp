#include "ParameterPanelTest.h"
#include "panels/WClosedLoopSettings.h"

#include <QComboBox>
#include <QSlider>
#include <QSpinBox>

#include <climits>

using namespace Qt::StringLiterals;

namespace {

using Panel = WClosedLoopSettings;

constexpr char LoopMode = static_cast<char>(129);
constexpr char MaxCurrent = 6;
constexpr char Current = 15;

QList<ParameterRow> rows()
{
    return {
        {.number = 6,
         .setNumber =
             [](ParameterPanel *panel, char number) {
                 static_cast<Panel *>(panel)->setApMaxCurrentAndLimits(number, 12, 13);
             },
         .controls = {u"slMaxCurrent"_s},
         .type = "QSlider",
         .label = u"Max current"_s,
         .largest = 255,
         .thenRequests = 15},
        {.number = 12,
         .setNumber =
             [](ParameterPanel *panel, char number) {
                 static_cast<Panel *>(panel)->setApMaxCurrentAndLimits(6, number, 13);
             },
         .controls = {u"cbEnableRightLimitSwitch"_s},
         .type = "QCheckBox",
         .label = u"Right limit switch disabled"_s},
        {.number = 13,
         .setNumber =
             [](ParameterPanel *panel, char number) {
                 static_cast<Panel *>(panel)->setApMaxCurrentAndLimits(6, 12, number);
             },
         .controls = {u"cbEnableLeftLimitSwitch"_s},
         .type = "QCheckBox",
         .label = u"Left limit switch disabled"_s},
        {.number = 129,
         .setNumber = setter(&Panel::setApLoopMode),
         .controls = {u"cmbLoopMode"_s},
         .type = "QComboBox",
         .label = u"Mode"_s},
        {.number = 15,
         .setNumber = setter(&Panel::setApCurrent),
         .controls = {u"sbCurrent"_s},
         .label = u"[mA]"_s,
         .accessibleName = u"Max current [mA]"_s,
         .least = -65535,
         .largest = 65535,
         .enabled = false,
         .writes = false},
        {.number = 153,
         .setNumber = setter(&Panel::setApSupplyVoltage),
         .controls = {u"sbSupplyVoltage"_s},
         .label = u"Supply voltage [1/10V]"_s,
         .largest = 1000,
         .enabled = false,
         .writes = false},
        {.number = 154,
         .setNumber = setter(&Panel::setApDCCurrent),
         .controls = {u"sbDCCurrent"_s},
         .label = u"DC current [mA]"_s,
         .largest = 100000,
         .enabled = false,
         .writes = false},
        {.number = 155,
         .setNumber = setter(&Panel::setApTemperature),
         .controls = {u"sbTemperature"_s},
         .label = u"Temperature [C]"_s,
         .largest = 300,
         .enabled = false,
         .writes = false},
    };
}

PanelFacts facts()
{
    return {
        .create =
            [](QWidget *parent) {
                auto *panel = new Panel(parent);
                panel->addLoopMode(0, u"Open loop"_s);
                panel->addLoopMode(1, u"Closed loop"_s);
                return panel;
            },
        .groupBox = u"gbSettings"_s,
        .title = u"Settings"_s,
        .size = {269, 262},
        .maximumSize = {269, 262},
        .ownSignals = {u"maxCurrentChanged(int value)"_s},
        .ownSlots = {u"on_slMaxCurrent_valueChanged(int value)"_s,
                     u"on_cbEnableRightLimitSwitch_toggled(bool toggle)"_s,
                     u"on_cbEnableLeftLimitSwitch_toggled(bool toggle)"_s,
                     u"on_cmbLoopMode_currentIndexChanged(int index)"_s,
                     u"on_btnReadValues_clicked()"_s},
        .tabOrder = {u"cmbLoopMode"_s, u"slMaxCurrent"_s, u"cbEnableRightLimitSwitch"_s,
                     u"cbEnableLeftLimitSwitch"_s, u"btnReadValues"_s},
        .properties = {{"slMaxCurrent", "QSlider", "pageStep", 5},
                       {"slMaxCurrent", "QSlider", "orientation",
                        QVariant::fromValue(Qt::Horizontal)},
                       {"cbEnableRightLimitSwitch", "QCheckBox", "checked", false},
                       {"cbEnableLeftLimitSwitch", "QCheckBox", "checked", false},
                       {"btnReadValues", "QPushButton", "text", u"Read"_s},
                       {"btnReadValues", "QPushButton", "enabled", true}},
        .rows = rows(),
    };
}

} // namespace

class tst_WClosedLoopSettings : public ParameterPanelTest
{
    Q_OBJECT

public:
    tst_WClosedLoopSettings()
        : ParameterPanelTest(facts())
    {
    }

private slots:
    void noModesAtFirst();
    void loopModes();
    void loopModeEnabled();
    void clearedModesWriteZero();
    void loopModeWrittenBackOnce();
    void unknownLoopMode_data();
    void unknownLoopMode();
    void firstMatchingLoopMode_data();
    void firstMatchingLoopMode();
    void textOfLoopMode_data();
    void textOfLoopMode();
    void pageOfMaxCurrent();
    void maxCurrentOutOfRange();
    void currentFollowsMaxCurrent();
    void displaysStayAlone();
    void maxCurrentChanged_data();
    void maxCurrentChanged();
    void limitSwitchesByMouse();
    void readButton();

private:
    static QComboBox *modes(const ParameterPanel *panel)
    {
        return panel->findChild<QComboBox *>(u"cmbLoopMode"_s);
    }
};

void tst_WClosedLoopSettings::noModesAtFirst()
{
    QCOMPARE(modes(std::make_unique<Panel>().get())->count(), 0);
}

void tst_WClosedLoopSettings::loopModes()
{
    const auto panel = make();
    QCOMPARE(modes(panel.get())->count(), 2);
    QCOMPARE(modes(panel.get())->itemText(0), u"0 : Open loop"_s);
    QCOMPARE(modes(panel.get())->itemText(1), u"1 : Closed loop"_s);
    QCOMPARE(modes(panel.get())->currentIndex(), 0);
}

void tst_WClosedLoopSettings::loopModeEnabled()
{
    const auto panel = make();
    auto *settings = static_cast<Panel *>(panel.get());
    settings->setLoopModeEnabled(false);
    QVERIFY(!modes(settings)->isEnabled());
    QVERIFY(settings->findChild<QSlider *>()->isEnabled());
    settings->setLoopModeEnabled(true);
    QVERIFY(modes(settings)->isEnabled());
}

void tst_WClosedLoopSettings::clearedModesWriteZero()
{
    const auto panel = make();
    panel->requestedValue(1, 0, LoopMode, 1);
    FakeModule module;
    module.attach(panel.get());
    static_cast<Panel *>(panel.get())->clearLoopModes();
    QCOMPARE(modes(panel.get())->count(), 0);
    QCOMPARE(module.takeLog(), QStringList{u"set 1 0 129 0"_s});
}

void tst_WClosedLoopSettings::loopModeWrittenBackOnce()
{
    const auto panel = make();
    FakeModule module;
    module.attach(panel.get());
    panel->requestedValue(1, 0, LoopMode, 1);
    QCOMPARE(modes(panel.get())->currentText(), u"1 : Closed loop"_s);
    QCOMPARE(module.takeLog(), QStringList{u"set 1 0 129 1"_s});
    panel->requestedValue(1, 0, LoopMode, 1);
    QCOMPARE(module.takeLog(), QStringList());
}

void tst_WClosedLoopSettings::unknownLoopMode_data()
{
    QTest::addColumn<int>("value");
    for (const int value : {7, 2, 10, -1, 129, INT_MIN, INT_MAX}) {
        QTest::addRow("%d", value) << value;
    }
}

void tst_WClosedLoopSettings::unknownLoopMode()
{
    QFETCH(int, value);
    const auto panel = make();
    panel->requestedValue(1, 0, LoopMode, 1);
    FakeModule module;
    module.attach(panel.get());
    panel->requestedValue(1, 0, LoopMode, value);
    QCOMPARE(modes(panel.get())->currentIndex(), 1);
    QCOMPARE(module.takeLog(), QStringList());
}

void tst_WClosedLoopSettings::firstMatchingLoopMode_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("index");
    QTest::newRow("first of two") << 1 << 2;
    QTest::newRow("not the beginning of a number") << 12 << 1;
    QTest::newRow("negative") << -1 << 4;
}

void tst_WClosedLoopSettings::firstMatchingLoopMode()
{
    QFETCH(int, value);
    QFETCH(int, index);
    Panel panel;
    panel.setApLoopMode(LoopMode);
    panel.addLoopMode(5, u"start"_s);
    panel.addLoopMode(12, u"twelve"_s);
    panel.addLoopMode(1, u"one"_s);
    panel.addLoopMode(1, u"another one"_s);
    panel.addLoopMode(-1, u"negative"_s);
    FakeModule module;
    module.attach(&panel);
    panel.requestedValue(1, 0, LoopMode, value);
    QCOMPARE(modes(&panel)->currentIndex(), index);
    QCOMPARE(module.takeLog(), QStringList{u"set 1 0 129 %1"_s.arg(value)});
}

void tst_WClosedLoopSettings::textOfLoopMode_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("value");
    QTest::newRow("as added") << u"3 : text"_s << 3;
    QTest::newRow("two separators") << u"3 : 4 : text"_s << 3;
    QTest::newRow("no second blank") << u"3 :text"_s << 3;
    QTest::newRow("negative") << u"-2 : text"_s << -2;
    QTest::newRow("no separator") << u"3"_s << 0;
    QTest::newRow("no blank before the colon") << u"3: text"_s << 0;
    QTest::newRow("nothing before the separator") << u" : 3"_s << 0;
    QTest::newRow("no number") << u"three : 3"_s << 0;
    QTest::newRow("not decimal") << u"0x3 : text"_s << 0;
    QTest::newRow("empty") << QString() << 0;
}

void tst_WClosedLoopSettings::textOfLoopMode()
{
    QFETCH(QString, text);
    QFETCH(int, value);
    const auto panel = make();
    FakeModule module;
    module.attach(panel.get());
    modes(panel.get())->addItem(text);
    module.answering = false;
    modes(panel.get())->setCurrentIndex(2);
    QCOMPARE(module.takeLog(), QStringList{u"set 1 0 129 %1"_s.arg(value)});
}

void tst_WClosedLoopSettings::pageOfMaxCurrent()
{
    const ShownPanel panel = show();
    FakeModule module;
    module.attach(panel.get());
    panel.child("slMaxCurrent")->setFocus();
    QTest::keyClick(panel.child("slMaxCurrent"), Qt::Key_PageUp);
    QCOMPARE(module.takeLog(), (QStringList{u"set 1 0 6 5"_s, u"get 1 0 15"_s}));
}

void tst_WClosedLoopSettings::maxCurrentOutOfRange()
{
    const auto panel = make();
    FakeModule module;
    module.attach(panel.get());
    panel->requestedValue(1, 0, MaxCurrent, 300);
    QCOMPARE(panel->findChild<QSlider *>(u"slMaxCurrent"_s)->value(), 255);
    QCOMPARE(module.takeLog(), (QStringList{u"set 1 0 6 255"_s, u"get 1 0 15"_s}));
    panel->requestedValue(1, 0, MaxCurrent, 300);
    QCOMPARE(module.takeLog(), QStringList());
}

void tst_WClosedLoopSettings::currentFollowsMaxCurrent()
{
    const ShownPanel panel = show();
    FakeModule module;
    module.attach(panel.get());
    module.values[Current] = 1234;
    panel.child("slMaxCurrent")->setFocus();
    QTest::keyClick(panel.child("slMaxCurrent"), Qt::Key_Right);
    QCOMPARE(panel.child<QSpinBox>("sbCurrent")->value(), 1234);
}

void tst_WClosedLoopSettings::displaysStayAlone()
{
    const ShownPanel panel = show();
    FakeModule module;
    module.attach(panel.get());
    module.values = {{15, 100}, {153, 240}, {154, 500}, {155, 35}};
    panel->requestedValue(1, 0, LoopMode, 1);
    QTest::keyClick(panel.child("cbEnableLeftLimitSwitch"), Qt::Key_Space);
    QCOMPARE(panel.child<QSpinBox>("sbCurrent")->value(), 0);
    panel.child("slMaxCurrent")->setFocus();
    QTest::keyClick(panel.child("slMaxCurrent"), Qt::Key_Right);
    QCOMPARE(panel.child<QSpinBox>("sbCurrent")->value(), 100);
    QCOMPARE(panel.child<QSpinBox>("sbSupplyVoltage")->value(), 0);
    panel->readValues();
    QCOMPARE(panel.child<QSpinBox>("sbSupplyVoltage")->value(), 240);
    QCOMPARE(panel.child<QSpinBox>("sbDCCurrent")->value(), 500);
    QCOMPARE(panel.child<QSpinBox>("sbTemperature")->value(), 35);
}

void tst_WClosedLoopSettings::maxCurrentChanged_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("display");
    QTest::newRow("in range") << 3000 << 3000;
    QTest::newRow("shown already") << 0 << 0;
    QTest::newRow("above the display's range") << 70000 << 65535;
    QTest::newRow("negative") << -1 << -1;
}

void tst_WClosedLoopSettings::maxCurrentChanged()
{
    QFETCH(int, value);
    QFETCH(int, display);
    const auto panel = make();
    auto *current = panel->findChild<QSpinBox *>(u"sbCurrent"_s);
    QList<QList<int>> told; // the value and what the display shows by then
    connect(static_cast<Panel *>(panel.get()), &Panel::maxCurrentChanged, this, [&](int told_) {
        told.append({told_, current->value()});
    });
    panel->requestedValue(1, 1, Current, value); // another bank
    panel->requestedValue(1, 0, MaxCurrent, 0); // another parameter
    QVERIFY(told.isEmpty());
    panel->requestedValue(1, 0, Current, value);
    QCOMPARE(told, (QList<QList<int>>{{value, display}}));
}

void tst_WClosedLoopSettings::limitSwitchesByMouse()
{
    const ShownPanel panel = show();
    FakeModule module;
    module.attach(panel.get());
    const auto click = [&](const char *name) {
        QTest::mouseClick(panel.child(name), Qt::LeftButton, {}, QPoint(8, 8));
    };
    click("cbEnableRightLimitSwitch");
    click("cbEnableLeftLimitSwitch");
    click("cbEnableRightLimitSwitch");
    click("cbEnableLeftLimitSwitch");
    QCOMPARE(
        module.takeLog(),
        (QStringList{u"set 1 0 12 1"_s, u"set 1 0 13 1"_s, u"set 1 0 12 0"_s, u"set 1 0 13 0"_s}));
}

void tst_WClosedLoopSettings::readButton()
{
    const ShownPanel panel = show();
    FakeModule module;
    module.attach(panel.get());
    panel.click("btnReadValues");
    QCOMPARE(module.takeLog(),
             (QStringList{u"get 1 0 6"_s, u"get 1 0 12"_s, u"get 1 0 13"_s, u"get 1 0 129"_s,
                          u"get 1 0 15"_s, u"get 1 0 153"_s, u"get 1 0 154"_s, u"get 1 0 155"_s}));
}

QTEST_MAIN(tst_WClosedLoopSettings)
#include "tst_WClosedLoopSettings.moc"
