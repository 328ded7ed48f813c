#include "ParameterPanelTest.h"
#include "panels/WFieldWeakeningSettings.h"

using namespace Qt::StringLiterals;

namespace {

PanelFacts facts()
{
    using Panel = WFieldWeakeningSettings;
    return {
        .create = [](QWidget *parent) { return new Panel(parent); },
        .groupBox = u"gbFieldWeakeningSettings"_s,
        .title = u"Field weakening settings"_s,
        .size = {189, 101},
        .maximumSize = {189, 101},
        .ownSlots = {u"on_sbGammaVMin_valueChanged(int value)"_s,
                     u"on_sbGammaVMax_valueChanged(int value)"_s},
        .tabOrder = {u"sbGammaVMin"_s, u"sbGammaVMax"_s},
        .rows = {{.number = 108,
                  .setNumber = setter(&Panel::setApGammaVMin),
                  .controls = {u"sbGammaVMin"_s},
                  .label = u"Gamma VMin"_s,
                  .largest = 268435454,
                  .step = 1000},
                 {.number = 109,
                  .setNumber = setter(&Panel::setApGammaVMax),
                  .controls = {u"sbGammaVMax"_s},
                  .label = u"Gamma VMax"_s,
                  .largest = 268435454,
                  .step = 1000}},
    };
}

} // namespace

class tst_WFieldWeakeningSettings : public ParameterPanelTest
{
    Q_OBJECT

public:
    tst_WFieldWeakeningSettings()
        : ParameterPanelTest(facts())
    {
    }

private slots:
    void nothingKeepsTheLowerBelowTheUpper();
};

void tst_WFieldWeakeningSettings::nothingKeepsTheLowerBelowTheUpper()
{
    const ShownPanel panel = show();
    FakeModule module;
    module.attach(panel.get());
    panel.child("sbGammaVMin")->setFocus();
    QTest::keyClick(panel.child("sbGammaVMin"), Qt::Key_Up);
    QCOMPARE(module.takeLog(), QStringList{u"set 1 0 108 1000"_s});
    QCOMPARE(shown(panel.get(), m_facts.rows.at(0)), 1000);
    QCOMPARE(shown(panel.get(), m_facts.rows.at(1)), 0);
}

QTEST_MAIN(tst_WFieldWeakeningSettings)
#include "tst_WFieldWeakeningSettings.moc"
