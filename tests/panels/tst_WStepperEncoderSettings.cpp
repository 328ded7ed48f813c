#include "ParameterPanelTest.h"
#include "panels/WStepperEncoderSettings.h"

#include <QSpinBox>

#include <climits>

using namespace Qt::StringLiterals;

namespace {

using Panel = WStepperEncoderSettings;

PanelFacts facts()
{
    return {
        .create = [](QWidget *parent) { return new Panel(parent); },
        .groupBox = u"gbEncoderSettings"_s,
        .title = u"Encoder settings"_s,
        .size = {324, 211},
        .maximumSize = {324, 211},
        .ownSlots = {u"on_btnSetSettings_clicked()"_s, u"on_btnReadSettings_clicked()"_s},
        .tabOrder = {u"sbResolution"_s, u"sbFullstepResolution"_s, u"sbEncoderOffset"_s,
                     u"btnSetSettings"_s, u"btnReadSettings"_s},
        .properties = {{"sbCounter", "QSpinBox", "minimumWidth", 130},
                       {"btnSetSettings", "QPushButton", "text", u"Set"_s},
                       {"btnSetSettings", "QPushButton", "maximumWidth", 35},
                       {"btnReadSettings", "QPushButton", "text", u"Read"_s},
                       {"btnReadSettings", "QPushButton", "maximumWidth", 35},
                       {"lblEncoderType", "QLabel", "text", u"Encoder type"_s},
                       {"rbEncoderTypeSSI", "QRadioButton", "text", u"SSI"_s},
                       {"rbEncoderTypeABN", "QRadioButton", "text", u"ABN"_s}},
        .rows = {{.number = 209,
                  .setNumber = setter(&Panel::setApCounter),
                  .controls = {u"sbCounter"_s},
                  .label = u"Actual encoder value"_s,
                  .least = -INT_MAX,
                  .largest = INT_MAX,
                  .probe = -5,
                  .enabled = false,
                  .writes = false},
                 {.number = 210,
                  .setNumber = setter(&Panel::setApResolution),
                  .controls = {u"sbResolution"_s},
                  .label = u"Encoder resolution (positions)"_s,
                  .largest = INT_MAX,
                  .writes = false},
                 {.number = 202,
                  .setNumber = setter(&Panel::setApFullstepResolution),
                  .controls = {u"sbFullstepResolution"_s},
                  .label = u"Motor fullstep resolution"_s,
                  .largest = 400,
                  .start = 200,
                  .writes = false},
                 {.number = 112,
                  .setNumber = setter(&Panel::setApEncoderOffset),
                  .controls = {u"sbEncoderOffset"_s},
                  .label = u"Encoder offset"_s,
                  .largest = INT_MAX,
                  .writes = false}},
    };
}

const QStringList readAll{u"get 1 0 209"_s, u"get 1 0 210"_s, u"get 1 0 202"_s, u"get 1 0 112"_s};

} // namespace

class tst_WStepperEncoderSettings : public ParameterPanelTest
{
    Q_OBJECT

public:
    tst_WStepperEncoderSettings()
        : ParameterPanelTest(facts())
    {
    }

private slots:
    void encoderTypeIsHidden_data();
    void encoderTypeIsHidden();
    void changesAreNotWritten();
    void setButton();
    void applySettings();
    void setFollowsTheModule();
    void readButton();
    void readOverwritesAnEdit();
};

void tst_WStepperEncoderSettings::encoderTypeIsHidden_data()
{
    QTest::addColumn<QByteArray>("object");
    for (const char *object : {"lblEncoderType", "rbEncoderTypeSSI", "rbEncoderTypeABN"}) {
        QTest::newRow(object) << QByteArray(object);
    }
}

void tst_WStepperEncoderSettings::encoderTypeIsHidden()
{
    QFETCH(QByteArray, object);
    QVERIFY(show().child(object)->isHidden());
}

void tst_WStepperEncoderSettings::changesAreNotWritten()
{
    const ShownPanel panel = show();
    FakeModule module;
    module.attach(panel.get());
    for (const ParameterRow &row : m_facts.rows) {
        const int before = shown(panel.get(), row);
        const int after = changeByUser(panel.get(), row);
        QCOMPARE(after, row.enabled ? before + 1 : before);
    }
    QCOMPARE(module.takeLog(), QStringList());
}

void tst_WStepperEncoderSettings::setButton()
{
    const ShownPanel panel = show();
    FakeModule module;
    module.attach(panel.get());
    panel.type("sbResolution", u"4000"_s);
    panel.type("sbFullstepResolution", u"400"_s);
    panel.type("sbEncoderOffset", u"17"_s);
    QCOMPARE(module.takeLog(), QStringList());
    panel.click("btnSetSettings");
    QCOMPARE(module.takeLog(),
             (QStringList{u"set 1 0 210 4000"_s, u"set 1 0 202 400"_s, u"set 1 0 112 17"_s}));
}

void tst_WStepperEncoderSettings::applySettings()
{
    const auto panel = make();
    panel->setAddress(static_cast<char>(200));
    panel->setMotor(1);
    FakeModule module;
    module.attach(panel.get());
    static_cast<Panel *>(panel.get())->applySettings();
    QCOMPARE(module.takeLog(),
             (QStringList{u"set 200 1 210 0"_s, u"set 200 1 202 200"_s, u"set 200 1 112 0"_s}));
}

void tst_WStepperEncoderSettings::setFollowsTheModule()
{
    const ShownPanel panel = show();
    FakeModule module;
    module.attach(panel.get());
    module.largest[202] = 300;
    panel.type("sbFullstepResolution", u"400"_s);
    panel.click("btnSetSettings");
    QCOMPARE(panel.child<QSpinBox>("sbFullstepResolution")->value(), 300);
    QCOMPARE(module.takeLog(),
             (QStringList{u"set 1 0 210 0"_s, u"set 1 0 202 400"_s, u"set 1 0 112 0"_s}));
}

void tst_WStepperEncoderSettings::readButton()
{
    const ShownPanel panel = show();
    FakeModule module;
    module.attach(panel.get());
    panel.click("btnReadSettings");
    QCOMPARE(module.takeLog(), readAll);
}

void tst_WStepperEncoderSettings::readOverwritesAnEdit()
{
    const ShownPanel panel = show();
    FakeModule module;
    module.attach(panel.get());
    module.values = {{112, 5}, {202, 200}};
    panel.type("sbEncoderOffset", u"17"_s);
    panel->readValues();
    QCOMPARE(panel.child<QSpinBox>("sbEncoderOffset")->value(), 5);
    QCOMPARE(module.takeLog(), readAll);
}

QTEST_MAIN(tst_WStepperEncoderSettings)
#include "tst_WStepperEncoderSettings.moc"
