#include "ParameterPanelTest.h"
#include "panels/MotorController.h"
#include "panels/WChopperSettings.h"

#include <type_traits>

using namespace Qt::StringLiterals;

static_assert(std::is_base_of_v<MotorController, WChopperSettings>);

namespace {

PanelFacts facts()
{
    using Panel = WChopperSettings;
    return {
        .create = [](QWidget *parent) { return new Panel(parent); },
        .groupBox = u"gbChopperSettings"_s,
        .title = u"Chopper settings"_s,
        .size = {335, 155},
        .maximumSize = {335, 155},
        .ownAddressOnly = true,
        .ownSlots = {u"on_sbChopperBlankTime_valueChanged(int value)"_s,
                     u"on_sbChopperMode_valueChanged(int value)"_s,
                     u"on_sbHysteresisDecrement_valueChanged(int value)"_s,
                     u"on_sbHysteresisEnd_valueChanged(int value)"_s,
                     u"on_sbHysteresisStart_valueChanged(int value)"_s,
                     u"on_sbOffTime_valueChanged(int value)"_s,
                     u"on_sbSlopeHighSide_valueChanged(int value)"_s,
                     u"on_sbSlopeLowSide_valueChanged(int value)"_s},
        .tabOrder = {u"sbChopperBlankTime"_s, u"sbChopperMode"_s, u"sbSlopeHighSide"_s,
                     u"sbSlopeLowSide"_s, u"sbHysteresisDecrement"_s, u"sbHysteresisEnd"_s,
                     u"sbHysteresisStart"_s, u"sbOffTime"_s},
        .rows = {{.number = 162,
                  .setNumber = setter(&Panel::setApBlankTime),
                  .controls = {u"sbChopperBlankTime"_s},
                  .label = u"Blank time"_s,
                  .labelObject = u"lblBlankTime"_s,
                  .largest = 3},
                 {.number = 163,
                  .setNumber = setter(&Panel::setApChopperMode),
                  .controls = {u"sbChopperMode"_s},
                  .label = u"Mode"_s,
                  .labelObject = u"lblMode"_s,
                  .largest = 1},
                 {.number = 164,
                  .setNumber = setter(&Panel::setApHysteresisDecrement),
                  .controls = {u"sbHysteresisDecrement"_s},
                  .label = u"Hysteresis decrement"_s,
                  .labelObject = u"lbHysteresisDecrement"_s,
                  .largest = 3},
                 {.number = 165,
                  .setNumber = setter(&Panel::setApHysteresisEnd),
                  .controls = {u"sbHysteresisEnd"_s},
                  .label = u"Hysteresis end"_s,
                  .labelObject = u"lbHysteresisEnd"_s,
                  .least = -3,
                  .largest = 12,
                  .probe = -2},
                 {.number = 166,
                  .setNumber = setter(&Panel::setApHysteresisStart),
                  .controls = {u"sbHysteresisStart"_s},
                  .label = u"Hysteresis start"_s,
                  .labelObject = u"lbHysteresisStart"_s,
                  .largest = 8},
                 {.number = 167,
                  .setNumber = setter(&Panel::setApOffTime),
                  .controls = {u"sbOffTime"_s},
                  .label = u"Off time"_s,
                  .labelObject = u"lbOffTime"_s,
                  .largest = 15},
                 {.number = 175,
                  .setNumber = setter(&Panel::setApSlopeHighSide),
                  .controls = {u"sbSlopeHighSide"_s},
                  .label = u"Slope high side"_s,
                  .labelObject = u"lblSlopeHighSide"_s,
                  .largest = 3},
                 {.number = 176,
                  .setNumber = setter(&Panel::setApSlopeLowSide),
                  .controls = {u"sbSlopeLowSide"_s},
                  .label = u"Slope low side"_s,
                  .labelObject = u"lblSlopeLowSide"_s,
                  .largest = 3}},
    };
}

} // namespace

class tst_WChopperSettings : public ParameterPanelTest
{
    Q_OBJECT

public:
    tst_WChopperSettings()
        : ParameterPanelTest(facts())
    {
    }

private slots:
    void addressAndMotor();
    void hysteresisEndGoesOutWithItsSign();
};

void tst_WChopperSettings::addressAndMotor()
{
    const auto panel = make(false);
    QCOMPARE(panel->address(), char(1));
    QCOMPARE(panel->motor(), char(0));
}

void tst_WChopperSettings::hysteresisEndGoesOutWithItsSign()
{
    const ShownPanel panel = show();
    FakeModule module;
    module.attach(panel.get());
    panel.child("sbHysteresisEnd")->setFocus();
    QTest::keyClick(panel.child("sbHysteresisEnd"), Qt::Key_Down);
    QCOMPARE(module.takeLog(), QStringList{u"set 1 0 165 -1"_s});
}

QTEST_MAIN(tst_WChopperSettings)
#include "tst_WChopperSettings.moc"
