#include "ParameterPanelTest.h"
#include "panels/CorrectionSettings.h"

#include <climits>

using namespace Qt::StringLiterals;

namespace {

PanelFacts facts()
{
    using Panel = CorrectionSettings;
    return {
        .create = [](QWidget *parent) { return new Panel(parent); },
        .groupBox = u"gbCorrectionSettings"_s,
        .title = u"Dynamic error correction"_s,
        .size = {274, 127},
        .maximumSize = {274, 127},
        .ownSlots = {u"on_sbVelocityP_valueChanged(int value)"_s,
                     u"on_sbMaxTolerance_valueChanged(int value)"_s,
                     u"on_sbMaxVelocity_valueChanged(int value)"_s},
        .tabOrder = {u"sbVelocityP"_s, u"sbMaxTolerance"_s, u"sbMaxVelocity"_s},
        .rows = {{.number = 124,
                  .setNumber = setter(&Panel::setApVelocityP),
                  .controls = {u"sbVelocityP"_s},
                  .label = u"Velocity correction P"_s,
                  .largest = 65535},
                 {.number = 125,
                  .setNumber = setter(&Panel::setApMaxTolerance),
                  .controls = {u"sbMaxTolerance"_s},
                  .label = u"Max. following error [s]"_s,
                  .largest = 65535},
                 {.number = 126,
                  .setNumber = setter(&Panel::setApMaxVelocity),
                  .controls = {u"sbMaxVelocity"_s},
                  .label = u"Max. correction velocity [pps]"_s,
                  .largest = INT_MAX}},
    };
}

} // namespace

class tst_CorrectionSettings : public ParameterPanelTest
{
    Q_OBJECT

public:
    tst_CorrectionSettings()
        : ParameterPanelTest(facts())
    {
    }

private slots:
    void readingOneFillsBoth();
};

void tst_CorrectionSettings::readingOneFillsBoth()
{
    const auto first = make();
    const auto second = make();
    FakeModule module;
    module.attach(first.get());
    module.attach(second.get());
    module.values = {{124, 7}, {125, 8}, {126, 9}};
    first->readValues();
    for (const auto *panel : {first.get(), second.get()}) {
        QCOMPARE(shown(panel, m_facts.rows.at(0)), 7);
        QCOMPARE(shown(panel, m_facts.rows.at(1)), 8);
        QCOMPARE(shown(panel, m_facts.rows.at(2)), 9);
    }
    // Each of the two writes each value back once.
    QCOMPARE(module.takeLog(),
             (QStringList{u"get 1 0 124"_s, u"set 1 0 124 7"_s, u"set 1 0 124 7"_s,
                          u"get 1 0 125"_s, u"set 1 0 125 8"_s, u"set 1 0 125 8"_s,
                          u"get 1 0 126"_s, u"set 1 0 126 9"_s, u"set 1 0 126 9"_s}));
}

QTEST_MAIN(tst_CorrectionSettings)
#include "tst_CorrectionSettings.moc"
