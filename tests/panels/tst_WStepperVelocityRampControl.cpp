#include "ParameterPanelTest.h"
#include "panels/WStepperVelocityRampControl.h"

#include <QLabel>
#include <QSpinBox>

#include <climits>

using namespace Qt::StringLiterals;

namespace {

PanelFacts facts()
{
    using Panel = WStepperVelocityRampControl;
    return {
        .create = [](QWidget *parent) { return new Panel(parent); },
        .groupBox = u"gbVelocityRampControl"_s,
        .title = u"Velocity ramp control"_s,
        .size = {244, 125},
        .ownAddressOnly = true,
        .ownSlots = {u"on_sbMaxVelocity_valueChanged(int value)"_s,
                     u"on_sbAcceleration_valueChanged(int value)"_s,
                     u"on_sbStartStopVelocity_valueChanged(int value)"_s},
        .tabOrder = {u"sbMaxVelocity"_s, u"sbAcceleration"_s, u"sbStartStopVelocity"_s},
        .rows = {{.number = 4,
                  .setNumber = setter(&Panel::setApMaxVelocity),
                  .controls = {u"sbMaxVelocity"_s},
                  .label = u"Max velocity [pps]"_s,
                  .largest = INT_MAX,
                  .step = 100},
                 {.number = 5,
                  .setNumber = setter(&Panel::setApAcceleration),
                  .controls = {u"sbAcceleration"_s},
                  .label = u"Acceleration [pps/s]"_s,
                  .largest = INT_MAX,
                  .step = 100,
                  .start = 1,
                  .probe = 500},
                 {.number = 130,
                  .setNumber = setter(&Panel::setApStartStopVelocity),
                  .controls = {u"sbStartStopVelocity"_s},
                  .label = u"Start-stop velocity [pps]"_s,
                  .largest = INT_MAX,
                  .step = 100,
                  .start = 1,
                  .probe = 500}},
    };
}

WStepperVelocityRampControl *ramp(const std::unique_ptr<ParameterPanel> &panel)
{
    return static_cast<WStepperVelocityRampControl *>(panel.get());
}

QString labelOf(const ParameterPanel &panel, const QString &object)
{
    for (const QLabel *label : panel.findChildren<QLabel *>()) {
        if (label->buddy() == panel.findChild<QWidget *>(object)) {
            return label->text();
        }
    }
    return {};
}

} // namespace

class tst_WStepperVelocityRampControl : public ParameterPanelTest
{
    Q_OBJECT

public:
    tst_WStepperVelocityRampControl()
        : ParameterPanelTest(facts())
    {
    }

private slots:
    void limitsAndSteps();
    void texts();
    void startStopVelocityOfZeroIsWrittenBack();
    void twinFollows();
};

void tst_WStepperVelocityRampControl::limitsAndSteps()
{
    const auto panel = make();
    const auto *velocity = panel->findChild<QSpinBox *>(u"sbMaxVelocity"_s);
    const auto *acceleration = panel->findChild<QSpinBox *>(u"sbAcceleration"_s);
    ramp(panel)->setMaxVelocityMaximum(268435454);
    ramp(panel)->setAccelerationMaximum(33554431);
    ramp(panel)->setMaxVelocityStep(10000);
    ramp(panel)->setAccelerationStep(1000);
    QCOMPARE(velocity->maximum(), 268435454);
    QCOMPARE(acceleration->maximum(), 33554431);
    QCOMPARE(velocity->singleStep(), 10000);
    QCOMPARE(acceleration->singleStep(), 1000);
    const auto *startStop = panel->findChild<QSpinBox *>(u"sbStartStopVelocity"_s);
    QCOMPARE(startStop->maximum(), INT_MAX);
    QCOMPARE(startStop->singleStep(), 100);
}

void tst_WStepperVelocityRampControl::texts()
{
    const auto panel = make();
    ramp(panel)->setMaxVelocityLabel(u"Max. velocity [pps]"_s);
    ramp(panel)->setAccelerationLabel(u"Accel.[pps/s]"_s);
    QCOMPARE(labelOf(*panel, u"sbMaxVelocity"_s), u"Max. velocity [pps]"_s);
    QCOMPARE(labelOf(*panel, u"sbAcceleration"_s), u"Accel.[pps/s]"_s);
    QCOMPARE(labelOf(*panel, u"sbStartStopVelocity"_s), u"Start-stop velocity [pps]"_s);
}

void tst_WStepperVelocityRampControl::startStopVelocityOfZeroIsWrittenBack()
{
    const auto panel = make();
    FakeModule module;
    module.attach(panel.get());
    module.values = {{4, 0}, {5, 1}, {130, 0}};
    QCOMPARE(shown(panel.get(), m_facts.rows.at(2)), 1);
    panel->readValues();
    QCOMPARE(module.takeLog(),
             (QStringList{u"get 1 0 4"_s, u"get 1 0 5"_s, u"get 1 0 130"_s, u"set 1 0 130 0"_s}));
    QCOMPARE(shown(panel.get(), m_facts.rows.at(2)), 0);
}

void tst_WStepperVelocityRampControl::twinFollows()
{
    const ShownPanel first = show();
    const auto second = make();
    FakeModule module;
    module.attach(first.get());
    module.attach(second.get());
    first.child("sbMaxVelocity")->setFocus();
    QTest::keyClick(first.child("sbMaxVelocity"), Qt::Key_Up);
    // The user's write, and the redundant one of the twin that followed the reply.
    QCOMPARE(module.takeLog(), (QStringList{u"set 1 0 4 100"_s, u"set 1 0 4 100"_s}));
    QCOMPARE(shown(first.get(), m_facts.rows.at(0)), 100);
    QCOMPARE(shown(second.get(), m_facts.rows.at(0)), 100);

    // And back, where the value is equal again.
    second->requestedValue(1, 0, 4, 100);
    QCOMPARE(module.takeLog(), QStringList());
}

QTEST_MAIN(tst_WStepperVelocityRampControl)
#include "tst_WStepperVelocityRampControl.moc"
