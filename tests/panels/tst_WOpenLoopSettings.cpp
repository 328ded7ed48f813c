#include "ParameterPanelTest.h"
#include "panels/WOpenLoopSettings.h"

#include <QComboBox>
#include <QSlider>
#include <QSpinBox>

#include <climits>

using namespace Qt::StringLiterals;

namespace {

using Panel = WOpenLoopSettings;

constexpr char Resolution = static_cast<char>(140);

const QStringList resolutions{u"full step"_s,     u"half step"_s,      u"4 microsteps"_s,
                              u"8 microsteps"_s,  u"16 microsteps"_s,  u"32 microsteps"_s,
                              u"64 microsteps"_s, u"128 microsteps"_s, u"256 microsteps"_s};

PanelFacts facts()
{
    return {
        .create =
            [](QWidget *parent) {
                auto *panel = new Panel(parent);
                for (qsizetype value = 0; value < resolutions.size(); ++value) {
                    panel->addMicrostepResolution(resolutions.at(value), static_cast<char>(value));
                }
                return panel;
            },
        .groupBox = u"gbOpenLoopSettings"_s,
        .title = u"Open loop settings"_s,
        .size = {213, 130},
        .maximumSize = {2130, 130},
        .ownSlots = {u"on_slStandbyCurrent_valueChanged(int value)"_s,
                     u"on_cmbMicrostepResolution_currentIndexChanged(int index)"_s},
        .tabOrder = {u"slStandbyCurrent"_s, u"cmbMicrostepResolution"_s},
        .properties = {{"slStandbyCurrent", "QSlider", "pageStep", 5},
                       {"slStandbyCurrent", "QSlider", "orientation",
                        QVariant::fromValue(Qt::Horizontal)}},
        .rows = {{.number = 7,
                  .setNumber = setter(&Panel::setApStandbyCurrent),
                  .controls = {u"slStandbyCurrent"_s},
                  .type = "QSlider",
                  .label = u"Standby current"_s,
                  .largest = 255,
                  .thenRequests = 156},
                 {.number = 140,
                  .setNumber = setter(&Panel::setApMicrostepResolution),
                  .controls = {u"cmbMicrostepResolution"_s},
                  .type = "QComboBox",
                  .label = u"Microstep resolution"_s},
                 {.number = 156,
                  .setNumber = setter(&Panel::setApCurrent),
                  .controls = {u"sbCurrent"_s},
                  .label = u"[mA]"_s,
                  .accessibleName = u"Standby current [mA]"_s,
                  .least = -65535,
                  .largest = 65535,
                  .enabled = false,
                  .writes = false}},
    };
}

QComboBox *combo(const ParameterPanel *panel)
{
    return panel->findChild<QComboBox *>(u"cmbMicrostepResolution"_s);
}

} // namespace

class tst_WOpenLoopSettings : public ParameterPanelTest
{
    Q_OBJECT

public:
    tst_WOpenLoopSettings()
        : ParameterPanelTest(facts())
    {
    }

private slots:
    void noResolutionsAtFirst();
    void resolution_data();
    void resolution();
    void unknownResolution_data();
    void unknownResolution();
    void textDoesNotMatter();
    void firstOfEqualValues();
    void firstResolutionWritesZero();
    void textWithoutValueWritesZero();
    void emptiedChoiceWritesZero();
    void itemIsGone();
    void bytesAreUnsigned();
    void pageOfStandbyCurrent();
    void currentFollowsStandbyCurrent();
};

void tst_WOpenLoopSettings::noResolutionsAtFirst()
{
    QCOMPARE(combo(std::make_unique<Panel>().get())->count(), 0);
}

void tst_WOpenLoopSettings::resolution_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("text");
    for (qsizetype value = 0; value < resolutions.size(); ++value) {
        const QString text = u"%1 : %2"_s.arg(value).arg(resolutions.at(value));
        QTest::newRow(qPrintable(text)) << static_cast<int>(value) << text;
    }
}

void tst_WOpenLoopSettings::resolution()
{
    QFETCH(int, value);
    QFETCH(QString, text);
    const auto panel = make();
    FakeModule module;
    module.attach(panel.get());
    QCOMPARE(combo(panel.get())->count(), 9);
    QCOMPARE(combo(panel.get())->itemText(value), text);

    const int other = value == 0 ? 1 : 0;
    panel->requestedValue(1, 0, Resolution, other);
    module.takeLog();
    combo(panel.get())->setCurrentIndex(value);
    QCOMPARE(module.takeLog(), QStringList{u"set 1 0 140 %1"_s.arg(value)});

    panel->requestedValue(1, 0, Resolution, other);
    module.takeLog();
    panel->requestedValue(1, 0, Resolution, value);
    QCOMPARE(combo(panel.get())->currentText(), text);
    QCOMPARE(module.takeLog(), QStringList{u"set 1 0 140 %1"_s.arg(value)});
}

void tst_WOpenLoopSettings::unknownResolution_data()
{
    QTest::addColumn<int>("value");
    for (const int value : {9, -1, 256, INT_MIN, INT_MAX}) {
        QTest::addRow("%d", value) << value;
    }
}

void tst_WOpenLoopSettings::unknownResolution()
{
    QFETCH(int, value);
    const auto panel = make();
    panel->requestedValue(1, 0, Resolution, 3);
    FakeModule module;
    module.attach(panel.get());
    panel->requestedValue(1, 0, Resolution, value);
    QCOMPARE(combo(panel.get())->currentIndex(), 3);
    QCOMPARE(module.takeLog(), QStringList());
}

void tst_WOpenLoopSettings::textDoesNotMatter()
{
    Panel panel;
    panel.setApMicrostepResolution(Resolution);
    panel.addMicrostepResolution(u"full step"_s, 0);
    panel.addMicrostepResolution(u"7 : as many as 99"_s, 2);
    QCOMPARE(combo(&panel)->itemText(1), u"2 : 7 : as many as 99"_s);
    FakeModule module;
    module.attach(&panel);
    combo(&panel)->setCurrentIndex(1);
    QCOMPARE(module.takeLog(), QStringList{u"set 1 0 140 2"_s});
}

void tst_WOpenLoopSettings::firstOfEqualValues()
{
    Panel panel;
    panel.setApMicrostepResolution(Resolution);
    panel.addMicrostepResolution(u"full step"_s, 0);
    panel.addMicrostepResolution(u"8 microsteps"_s, 3);
    panel.addMicrostepResolution(u"eight microsteps"_s, 3);
    panel.requestedValue(1, 0, Resolution, 3);
    QCOMPARE(combo(&panel)->currentIndex(), 1);
}

void tst_WOpenLoopSettings::firstResolutionWritesZero()
{
    Panel panel;
    panel.setApMicrostepResolution(Resolution);
    FakeModule module;
    module.attach(&panel);
    module.answering = false;
    panel.addMicrostepResolution(u"8 microsteps"_s, 3);
    QCOMPARE(module.takeLog(), QStringList{u"set 1 0 140 0"_s});
    panel.addMicrostepResolution(u"16 microsteps"_s, 4);
    QCOMPARE(module.takeLog(), QStringList());
}

void tst_WOpenLoopSettings::textWithoutValueWritesZero()
{
    const auto panel = make();
    FakeModule module;
    module.attach(panel.get());
    module.answering = false;
    combo(panel.get())->addItem(u"5 : unheard of"_s);
    combo(panel.get())->setCurrentIndex(9);
    QCOMPARE(module.takeLog(), QStringList{u"set 1 0 140 0"_s});
}

void tst_WOpenLoopSettings::emptiedChoiceWritesZero()
{
    const auto panel = make();
    panel->requestedValue(1, 0, Resolution, 3);
    FakeModule module;
    module.attach(panel.get());
    combo(panel.get())->clear();
    QCOMPARE(module.takeLog(), QStringList{u"set 1 0 140 0"_s});
}

void tst_WOpenLoopSettings::itemIsGone()
{
    const auto panel = make();
    combo(panel.get())->removeItem(5);
    panel->requestedValue(1, 0, Resolution, 5);
    QCOMPARE(combo(panel.get())->currentIndex(), 0);
}

void tst_WOpenLoopSettings::bytesAreUnsigned()
{
    Panel panel;
    panel.setApMicrostepResolution(Resolution);
    panel.addMicrostepResolution(u"full step"_s, 0);
    panel.addMicrostepResolution(u"many"_s, static_cast<char>(200));
    QCOMPARE(combo(&panel)->itemText(1), u"200 : many"_s);
    panel.requestedValue(1, 0, Resolution, 200);
    QCOMPARE(combo(&panel)->currentIndex(), 1);
}

void tst_WOpenLoopSettings::pageOfStandbyCurrent()
{
    const ShownPanel panel = show();
    FakeModule module;
    module.attach(panel.get());
    panel.child("slStandbyCurrent")->setFocus();
    QTest::keyClick(panel.child("slStandbyCurrent"), Qt::Key_PageUp);
    QCOMPARE(module.takeLog(), (QStringList{u"set 1 0 7 5"_s, u"get 1 0 156"_s}));
}

void tst_WOpenLoopSettings::currentFollowsStandbyCurrent()
{
    const ShownPanel panel = show();
    FakeModule module;
    module.attach(panel.get());
    module.values[156] = 321;
    panel->requestedValue(1, 0, Resolution, 4);
    QCOMPARE(panel.child<QSpinBox>("sbCurrent")->value(), 0);
    panel.child("slStandbyCurrent")->setFocus();
    QTest::keyClick(panel.child("slStandbyCurrent"), Qt::Key_Right);
    QCOMPARE(panel.child<QSpinBox>("sbCurrent")->value(), 321);
}

QTEST_MAIN(tst_WOpenLoopSettings)
#include "tst_WOpenLoopSettings.moc"
