#include "ParameterPanelTest.h"
#include "panels/WCurrentScalerSettings.h"
#include "support/DebugLog.h"

#include <QRadioButton>
#include <QSpinBox>

#include <climits>

using namespace Qt::StringLiterals;

namespace {

using Panel = WCurrentScalerSettings;

const QString rawErrorLine = u"ScalerSettings::on_rbInputRawError_toggled()"_s;

ParameterRow spinBoxRow(int number, void (Panel::*set)(char), const QString &object,
                        const QString &label, int largest)
{
    return {.number = number,
            .setNumber = setter(set),
            .controls = {object},
            .label = label,
            .largest = largest};
}

QList<ParameterRow> rows()
{
    QList<ParameterRow> rows{
        spinBoxRow(113, &Panel::setApIScaleMin, u"sbIScaleMin"_s, u"Current I scaler min"_s, 255),
        spinBoxRow(114, &Panel::setApIScaleMax, u"sbIScaleMax"_s, u"Current I scaler max"_s, 255),
        spinBoxRow(116, &Panel::setApLagLeadLimit1, u"sbLagLeadLimit1"_s, u"Scaler lower limit"_s,
                   4095),
        spinBoxRow(117, &Panel::setApLagLeadLimit2, u"sbLagLeadLimit2"_s, u"Scaler upper limit"_s,
                   4095),
        spinBoxRow(118, &Panel::setApScaleInc, u"sbScaleInc"_s, u"Scale inc"_s, 15),
        spinBoxRow(119, &Panel::setApScaleDec, u"sbScaleDec"_s, u"Scale dec"_s, 15),
        spinBoxRow(120, &Panel::setApScaleIncTimeout, u"sbScaleIncTimeout"_s,
                   u"Scale inc timeout"_s, 15),
        spinBoxRow(121, &Panel::setApScaleDecTimeout, u"sbScaleDecTimeout"_s,
                   u"Scaler dec timeout"_s, 10000),
        {.number = 122,
         .setNumber = setter(&Panel::setApScalerEnabled),
         .controls = {u"cbScalerEnabled"_s},
         .type = "QCheckBox",
         .label = u"Current scaler enabled"_s},
        spinBoxRow(123, &Panel::setApActualScaler, u"sbActualScaler"_s, u"Current scaler value"_s,
                   255),
        {.number = 115,
         .setNumber = setter(&Panel::setApScalerInput),
         .controls = {u"rbInputRawError"_s, u"rbInputErrorGain"_s},
         .type = "QRadioButton",
         .start = -1},
    };
    rows[2].pushes = true;
    rows[3].pushes = true;
    rows[9].enabled = false;
    rows[9].writes = false;
    return rows;
}

PanelFacts facts()
{
    return {
        .create = [](QWidget *parent) { return new Panel(parent); },
        .groupBox = u"gbScalerSettings"_s,
        .title = u"Scaler settings"_s,
        .size = {400, 207},
        .maximumSize = {400, 207},
        .ownSlots = {u"on_sbIScaleMin_valueChanged(int value)"_s,
                     u"on_sbIScaleMax_valueChanged(int value)"_s,
                     u"on_sbLagLeadLimit1_valueChanged(int value)"_s,
                     u"on_sbLagLeadLimit2_valueChanged(int value)"_s,
                     u"on_sbScaleInc_valueChanged(int value)"_s,
                     u"on_sbScaleDec_valueChanged(int value)"_s,
                     u"on_sbScaleIncTimeout_valueChanged(int value)"_s,
                     u"on_sbScaleDecTimeout_valueChanged(int value)"_s,
                     u"on_cbScalerEnabled_toggled(bool toggle)"_s,
                     u"on_rbInputErrorGain_toggled()"_s, u"on_rbInputRawError_toggled()"_s},
        .tabOrder = {u"sbIScaleMin"_s, u"sbIScaleMax"_s, u"sbLagLeadLimit1"_s, u"sbLagLeadLimit2"_s,
                     u"sbScaleInc"_s, u"sbScaleDec"_s, u"sbScaleIncTimeout"_s,
                     u"sbScaleDecTimeout"_s, u"cbScalerEnabled"_s,
                     u"rbInputRawError"_s}, // the arrow keys go through a radio group
        .properties = {{"rbInputRawError", "QRadioButton", "text", u"error x 1"_s},
                       {"rbInputErrorGain", "QRadioButton", "text", u"error x gain"_s},
                       {"rbInputRawError", "QRadioButton", "checked", false},
                       {"rbInputErrorGain", "QRadioButton", "checked", false},
                       {"cbScalerEnabled", "QCheckBox", "checked", false},
                       {"lblScalerInput", "QLabel", "text", u"Current scaler input"_s}},
        .rows = rows(),
    };
}

} // namespace

class tst_WCurrentScalerSettings : public ParameterPanelTest
{
    Q_OBJECT

public:
    tst_WCurrentScalerSettings()
        : ParameterPanelTest(facts())
    {
    }

private slots:
    void limitPushesTheOther_data();
    void limitPushesTheOther();
    void raisedAndLoweredByKeys();
    void typedToTheTop();
    void firstReadOverwritesTheUpperLimit();
    void enabledByMouse();
    void switchOfInput();
    void firstChoiceOfInput();
    void inputReplies_data();
    void inputReplies();
    void otherInputReplies_data();
    void otherInputReplies();
    void actualValueIsOnlyRead();

private:
    static QList<int> limits(const ParameterPanel *panel)
    {
        return {panel->findChild<QSpinBox *>(u"sbLagLeadLimit1"_s)->value(),
                panel->findChild<QSpinBox *>(u"sbLagLeadLimit2"_s)->value()};
    }
    /// Brings the limits to these two without a push.
    static void setLimits(ParameterPanel *panel, int lower, int upper)
    {
        panel->requestedValue(1, 0, 117, upper);
        panel->requestedValue(1, 0, 116, lower);
        panel->requestedValue(1, 0, 117, upper);
        QCOMPARE(limits(panel), (QList<int>{lower, upper}));
    }
};

void tst_WCurrentScalerSettings::limitPushesTheOther_data()
{
    QTest::addColumn<bool>("byReply"); // or by the limit's own control
    QTest::addColumn<QList<int>>("before");
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("value");
    QTest::addColumn<QList<int>>("after");
    QTest::addColumn<QStringList>("log");
    const auto add = [](const char *name, const QList<int> &before, int number, int value,
                        const QList<int> &after, const QStringList &more = {}) {
        const QStringList log = QStringList{u"set 1 0 %1 %2"_s.arg(number).arg(value)} + more;
        for (const bool byReply : {false, true}) {
            QTest::addRow("%s, %s", name, byReply ? "by reply" : "by hand")
                << byReply << before << number << value << after << log;
        }
    };
    add("lower stays below", {10, 1500}, 116, 1499, {1499, 1500});
    add("lower reaches the upper", {10, 1500}, 116, 1500, {1500, 1501}, {u"set 1 0 117 1501"_s});
    add("lower passes the upper", {10, 1500}, 116, 2000, {2000, 2001}, {u"set 1 0 117 2001"_s});
    add("lower to the end, upper there", {4094, 4095}, 116, 4095, {4095, 4095});
    add("lower to the end, upper on the way", {10, 1500}, 116, 4095, {4095, 4095},
        {u"set 1 0 117 4095"_s});
    add("upper stays above", {1500, 3000}, 117, 1501, {1500, 1501});
    add("upper reaches the lower", {1500, 3000}, 117, 1500, {1499, 1500}, {u"set 1 0 116 1499"_s});
    add("upper passes the lower", {1500, 3000}, 117, 700, {699, 700}, {u"set 1 0 116 699"_s});
    add("upper to the end", {10, 1500}, 117, 4095, {10, 4095});
    add("upper leaves the end, lower there", {4095, 4095}, 117, 4094, {4093, 4094},
        {u"set 1 0 116 4093"_s});
    add("upper to 0, lower there", {0, 100}, 117, 0, {0, 0});
    add("upper to 0, lower on the way", {50, 100}, 117, 0, {0, 1},
        {u"set 1 0 116 0"_s, u"set 1 0 117 1"_s});
}

void tst_WCurrentScalerSettings::limitPushesTheOther()
{
    QFETCH(bool, byReply);
    QFETCH(QList<int>, before);
    QFETCH(int, number);
    QFETCH(int, value);
    QFETCH(QStringList, log);
    const auto panel = make();
    setLimits(panel.get(), before.first(), before.last());
    FakeModule module;
    module.attach(panel.get());
    if (byReply) {
        panel->requestedValue(1, 0, static_cast<char>(number), value);
    } else {
        const auto name = number == 116 ? u"sbLagLeadLimit1"_s : u"sbLagLeadLimit2"_s;
        panel->findChild<QSpinBox *>(name)->setValue(value);
    }
    QCOMPARE(module.takeLog(), log);
    QTEST(limits(panel.get()), "after");
}

void tst_WCurrentScalerSettings::raisedAndLoweredByKeys()
{
    const ShownPanel panel = show();
    FakeModule module;
    module.attach(panel.get());
    panel.child("sbLagLeadLimit1")->setFocus();
    QTest::keyClick(panel.child("sbLagLeadLimit1"), Qt::Key_Up);
    QCOMPARE(module.takeLog(), (QStringList{u"set 1 0 116 1"_s, u"set 1 0 117 2"_s}));
    panel.child("sbLagLeadLimit2")->setFocus();
    QTest::keyClick(panel.child("sbLagLeadLimit2"), Qt::Key_Down);
    QCOMPARE(module.takeLog(), (QStringList{u"set 1 0 117 1"_s, u"set 1 0 116 0"_s}));
    QTest::keyClick(panel.child("sbLagLeadLimit2"), Qt::Key_Down);
    QCOMPARE(module.takeLog(), QStringList{u"set 1 0 117 0"_s});
    QCOMPARE(limits(panel.get()), (QList<int>{0, 0}));
}

void tst_WCurrentScalerSettings::typedToTheTop()
{
    const ShownPanel panel = show();
    FakeModule module;
    module.attach(panel.get());
    panel.type("sbLagLeadLimit1", u"4095"_s);
    QCOMPARE(module.takeLog(),
             (QStringList{u"set 1 0 116 4"_s, u"set 1 0 117 5"_s, u"set 1 0 116 40"_s,
                          u"set 1 0 117 41"_s, u"set 1 0 116 409"_s, u"set 1 0 117 410"_s,
                          u"set 1 0 116 4095"_s, u"set 1 0 117 4095"_s}));
    QCOMPARE(limits(panel.get()), (QList<int>{4095, 4095}));
}

void tst_WCurrentScalerSettings::firstReadOverwritesTheUpperLimit()
{
    const auto panel = make();
    FakeModule module;
    module.attach(panel.get());
    module.values = {{115, -1}, {116, 100}, {117, 200}};
    panel->readValues();
    QCOMPARE(module.takeLog(),
             (QStringList{u"get 1 0 113"_s, u"get 1 0 114"_s, u"get 1 0 116"_s,
                          u"set 1 0 116 100"_s, u"set 1 0 117 101"_s, u"get 1 0 117"_s,
                          u"get 1 0 118"_s, u"get 1 0 119"_s, u"get 1 0 120"_s, u"get 1 0 121"_s,
                          u"get 1 0 122"_s, u"get 1 0 123"_s, u"get 1 0 115"_s}));
    QCOMPARE(limits(panel.get()), (QList<int>{100, 101}));
}

void tst_WCurrentScalerSettings::enabledByMouse()
{
    const ShownPanel panel = show();
    FakeModule module;
    module.attach(panel.get());
    for (int i = 0; i < 2; ++i) {
        QTest::mouseClick(panel.child("cbScalerEnabled"), Qt::LeftButton, {}, QPoint(8, 8));
    }
    QCOMPARE(module.takeLog(), (QStringList{u"set 1 0 122 1"_s, u"set 1 0 122 0"_s}));
}

void tst_WCurrentScalerSettings::switchOfInput()
{
    const ShownPanel panel = show();
    FakeModule module;
    module.attach(panel.get());
    {
        const DebugLog quiet;
        panel->requestedValue(1, 0, 115, 0);
        QCOMPARE(module.takeLog(), QStringList{u"set 1 0 115 0"_s});
    }
    DebugLog log;
    QTest::mouseClick(panel.child("rbInputErrorGain"), Qt::LeftButton, {}, QPoint(8, 8));
    QCOMPARE(module.takeLog(), QStringList{u"set 1 0 115 1"_s});
    QCOMPARE(log.lines(), QStringList{rawErrorLine}); // of the button that went off

    log.clear();
    QTest::mouseClick(panel.child("rbInputRawError"), Qt::LeftButton, {}, QPoint(8, 8));
    QCOMPARE(module.takeLog(), QStringList{u"set 1 0 115 0"_s});
    QCOMPARE(log.lines(), QStringList{rawErrorLine});
}

void tst_WCurrentScalerSettings::firstChoiceOfInput()
{
    const ShownPanel panel = show();
    FakeModule module;
    module.attach(panel.get());
    const DebugLog log;
    QTest::mouseClick(panel.child("rbInputErrorGain"), Qt::LeftButton, {}, QPoint(8, 8));
    QCOMPARE(module.takeLog(), QStringList{u"set 1 0 115 1"_s});
    QCOMPARE(log.lines(), QStringList()); // no other button went off
}

void tst_WCurrentScalerSettings::inputReplies_data()
{
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("value");
    QTest::addColumn<QStringList>("log");
    QTest::newRow("0 at first") << -1 << 0 << QStringList{u"set 1 0 115 0"_s};
    QTest::newRow("1 at first") << -1 << 1 << QStringList{u"set 1 0 115 1"_s};
    QTest::newRow("0 to 1") << 0 << 1 << QStringList{u"set 1 0 115 1"_s};
    QTest::newRow("1 to 0") << 1 << 0 << QStringList{u"set 1 0 115 0"_s};
    QTest::newRow("0 again") << 0 << 0 << QStringList();
    QTest::newRow("1 again") << 1 << 1 << QStringList();
}

void tst_WCurrentScalerSettings::inputReplies()
{
    QFETCH(int, before);
    QFETCH(int, value);
    QFETCH(QStringList, log);
    const DebugLog quiet;
    const auto panel = make();
    panel->requestedValue(1, 0, 115, before);
    QCOMPARE(shown(panel.get(), m_facts.rows.last()), before);
    FakeModule module;
    module.attach(panel.get());
    panel->requestedValue(1, 0, 115, value);
    QCOMPARE(shown(panel.get(), m_facts.rows.last()), value);
    QCOMPARE(module.takeLog(), log);
}

void tst_WCurrentScalerSettings::otherInputReplies_data()
{
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("value");
    for (const int before : {-1, 0, 1}) {
        for (const int value : {5, 2, -1, 256, INT_MIN, INT_MAX}) {
            QTest::addRow("%d, %d", before, value) << before << value;
        }
    }
}

void tst_WCurrentScalerSettings::otherInputReplies()
{
    QFETCH(int, before);
    QFETCH(int, value);
    DebugLog log;
    const auto panel = make();
    panel->requestedValue(1, 0, 115, before);
    FakeModule module;
    module.attach(panel.get());
    log.clear();
    panel->requestedValue(1, 0, 115, value);
    QCOMPARE(shown(panel.get(), m_facts.rows.last()), before);
    QCOMPARE(module.takeLog(), QStringList());
    QCOMPARE(log.lines(), QStringList());
}

void tst_WCurrentScalerSettings::actualValueIsOnlyRead()
{
    const auto panel = make();
    FakeModule module;
    module.attach(panel.get());
    panel->requestedValue(1, 0, 123, 77);
    QCOMPARE(panel->findChild<QSpinBox *>(u"sbActualScaler"_s)->value(), 77);
    QCOMPARE(module.takeLog(), QStringList());
}

QTEST_MAIN(tst_WCurrentScalerSettings)
#include "tst_WCurrentScalerSettings.moc"
