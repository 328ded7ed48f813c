#include "ParameterPanelTest.h"
#include "panels/WPositionMaintenanceSettings.h"

#include <QLabel>

#include <climits>

using namespace Qt::StringLiterals;

namespace {

PanelFacts facts()
{
    using Panel = WPositionMaintenanceSettings;
    return {
        .create = [](QWidget *parent) { return new Panel(parent); },
        .groupBox = u"gbPositionMaintenanceSettings"_s,
        .title = u"Position maintenance settings"_s,
        .size = {279, 207},
        .maximumSize = {279, 207},
        .ownSlots = {u"on_sbPositionWindow_valueChanged(int value)"_s,
                     u"on_sbPositionWindowTime_valueChanged(int value)"_s,
                     u"on_sbStandStillP_valueChanged(int value)"_s,
                     u"on_sbStandDampening_valueChanged(int value)"_s,
                     u"on_sbStandStillErrorLimit_valueChanged(int value)"_s,
                     u"on_sbVelocityWindow_valueChanged(int value)"_s},
        .tabOrder = {u"sbPositionWindow"_s, u"sbPositionWindowTime"_s, u"sbStandStillP"_s,
                     u"sbStandDampening"_s, u"sbStandStillErrorLimit"_s, u"sbVelocityWindow"_s},
        .properties = {{"lblPositionReachedT", "QLabel", "text", u"[1/10ms]"_s}},
        .rows = {{.number = 134,
                  .setNumber = setter(&Panel::setApPositionWindow),
                  .controls = {u"sbPositionWindow"_s},
                  .label = u"Position reached window"_s,
                  .labelObject = u"lblPositionWindow"_s,
                  .least = -INT_MAX,
                  .largest = INT_MAX,
                  .probe = -70000},
                 {.number = 135,
                  .setNumber = setter(&Panel::setApPositionWindowTime),
                  .controls = {u"sbPositionWindowTime"_s},
                  .label = u"Position reached time"_s,
                  .labelObject = u"lblPositionWindowTime"_s,
                  .accessibleName = u"Position reached time [1/10ms]"_s,
                  .largest = INT_MAX},
                 {.number = 136,
                  .setNumber = setter(&Panel::setApStandStillP),
                  .controls = {u"sbStandStillP"_s},
                  .label = u"Standstill  error gain"_s,
                  .labelObject = u"lblStandStillP"_s,
                  .least = 10,
                  .largest = 50,
                  .start = 10,
                  .probe = 49},
                 {.number = 137,
                  .setNumber = setter(&Panel::setApStandDampening),
                  .controls = {u"sbStandDampening"_s},
                  .label = u"Standstill  dampening"_s,
                  .labelObject = u"lblStandStillDampening"_s,
                  .largest = 65535},
                 {.number = 138,
                  .setNumber = setter(&Panel::setApStandStillErrorLimit),
                  .controls = {u"sbStandStillErrorLimit"_s},
                  .label = u"Standstill  error limit"_s,
                  .labelObject = u"lblStandStillErrorLimit"_s,
                  .largest = INT_MAX},
                 {.number = 17,
                  .setNumber = setter(&Panel::setApVelocityWindow),
                  .controls = {u"sbVelocityWindow"_s},
                  .label = u"Velocity reached window"_s,
                  .labelObject = u"lblVelocityWindow"_s,
                  .largest = INT_MAX}},
    };
}

} // namespace

class tst_WPositionMaintenanceSettings : public ParameterPanelTest
{
    Q_OBJECT

public:
    tst_WPositionMaintenanceSettings()
        : ParameterPanelTest(facts())
    {
    }

private slots:
    void errorGainBelowItsRange_data();
    void errorGainBelowItsRange();
};

void tst_WPositionMaintenanceSettings::errorGainBelowItsRange_data()
{
    QTest::addColumn<int>("before");
    QTest::addColumn<QStringList>("log");
    QTest::newRow("the control changes") << 30 << QStringList{u"set 1 0 136 10"_s};
    QTest::newRow("the control stands at 10") << 10 << QStringList();
}

void tst_WPositionMaintenanceSettings::errorGainBelowItsRange()
{
    QFETCH(int, before);
    QFETCH(QStringList, log);
    const auto panel = make();
    panel->requestedValue(1, 0, static_cast<char>(136), before);
    FakeModule module;
    module.attach(panel.get());
    panel->requestedValue(1, 0, static_cast<char>(136), 0);
    QCOMPARE(shown(panel.get(), m_facts.rows.at(2)), 10);
    QCOMPARE(module.takeLog(), log);
}

QTEST_MAIN(tst_WPositionMaintenanceSettings)
#include "tst_WPositionMaintenanceSettings.moc"
