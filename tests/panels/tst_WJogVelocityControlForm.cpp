#include "MotionPanelTest.h"
#include "panels/WJogVelocityControl.h"
#include "support/MetaMethods.h"
#include "support/TestCase.h"

#include <QGroupBox>

using namespace Qt::StringLiterals;
using namespace PanelTest;
using namespace MotionPanelTest;

using Panel = Shown<WJogVelocityControl>;

class tst_WJogVelocityControlForm : public TestCase
{
    Q_OBJECT

private slots:
    void signalsAndSlots();
    void form_data();
    void form();
    void pictures_data();
    void pictures();
    void titleAndLabels();
    void numbers();
    void active();
    void limits_data();
    void limits();
    void keyboard();
    void names();
};

void tst_WJogVelocityControlForm::signalsAndSlots()
{
    const QMetaObject &metaObject = WJogVelocityControl::staticMetaObject;
    QCOMPARE(metaObject.superClass(), &QWidget::staticMetaObject);
    QCOMPARE(ownMethods(metaObject, QMetaMethod::Signal),
             (QStringList{u"requestValue(char address, char motorBank, char type)"_s,
                          u"changeValue(char address, char motorBank, char type, int value)"_s,
                          u"doROX(char address, char motorBank, char roxCommand, int value)"_s,
                          u"velocityChanged(int value)"_s, u"accelerationChanged(int value)"_s}));
    QCOMPARE(
        ownMethods(metaObject, QMetaMethod::Slot),
        (QStringList{u"requestedTraceValue(char address, char motorBank, char type, int value)"_s,
                     u"requestedValue(char address, char motorBank, char type, int value)"_s,
                     u"on_btnJogFastLeft_clicked()"_s, u"on_btnJogLeft_pressed()"_s,
                     u"on_btnJogLeft_released()"_s, u"on_btnJogStop_clicked()"_s,
                     u"on_btnJogRight_pressed()"_s, u"on_btnJogRight_released()"_s,
                     u"on_btnJogFastRight_clicked()"_s, u"handleDialVelocityChanged(int value)"_s,
                     u"handleDialAccelerationChanged(int value)"_s,
                     u"handleSpinVelocityChanged(int value)"_s,
                     u"handleSpinAccelerationChanged(int value)"_s}));
    QWidget window;
    QCOMPARE(WJogVelocityControl(&window).parentWidget(), &window);
}

void tst_WJogVelocityControlForm::form_data()
{
    addPropertyColumns();
    addPropertyRow("gbSimpleVelocityMode", "QGroupBox", "title", u" Motor 1"_s);
    addPropertyRow("gbSimpleVelocityMode", "QGroupBox", "styleSheet", QString());
    addDialRows("dialerVelocity", 0, 99, false, 5.0);
    addToolTipRow("dialerVelocity", "QDial", "Velocity");
    addDialRows("dialerAcceleration", 0, 99, false, 5.0);
    addToolTipRow("dialerAcceleration", "QDial", "Accelleration");
    addTextRow("lblActualVelocity", "QLabel", "Actual");
    addSteppedSpinBoxRows("sbActualVelocity", -Largest, Largest, 10000, 0, false);
    addToolTipRow("sbActualVelocity", "QSpinBox", "AP: 0");
    addTextRow("lblTargetVelocity", "QLabel", "Target");
    addSteppedSpinBoxRows("sbTargetVelocity", 0, 99, 10000, 0, true);
    addTextRow("lblAcceleration", "QLabel", "Acceleration");
    addSteppedSpinBoxRows("sbAcceleration", 0, 99, 10000, 0, true);
    addToolTipRow("sbAcceleration", "QSpinBox", "AP: 0");
    const std::pair<const char *, const char *> buttons[] = {{"btnJogFastLeft", "ROL"},
                                                             {"btnJogLeft", "ROL"},
                                                             {"btnJogStop", "MST"},
                                                             {"btnJogRight", "ROR"},
                                                             {"btnJogFastRight", "ROR"}};
    for (const auto &[button, toolTip] : buttons) {
        addTextRow(button, "QPushButton", "");
        addToolTipRow(button, "QPushButton", toolTip);
        addPropertyRow(button, "QPushButton", "enabled", true);
    }
}

void tst_WJogVelocityControlForm::form()
{
    const Panel panel;
    compareProperty(*panel.get());
}

void tst_WJogVelocityControlForm::pictures_data()
{
    addPlayerPictureRows(
        {"btnJogFastLeft", "btnJogLeft", "btnJogStop", "btnJogRight", "btnJogFastRight"});
}

void tst_WJogVelocityControlForm::pictures()
{
    const Panel panel;
    comparePicture(*panel.get());
}

void tst_WJogVelocityControlForm::titleAndLabels()
{
    const Panel panel;
    panel->setTitle(u"Velocity mode [pps, pps/s]"_s);
    panel->setActualLabel(u"V_ACTUAL"_s);
    panel->setTargetLabel(u"V_TARGET"_s);
    QCOMPARE(panel.child<QGroupBox>("gbSimpleVelocityMode")->title(),
             u"Velocity mode [pps, pps/s]"_s);
    QCOMPARE(panel.child<QLabel>("lblActualVelocity")->text(), u"V_ACTUAL"_s);
    QCOMPARE(panel.child<QLabel>("lblTargetVelocity")->text(), u"V_TARGET"_s);
    QCOMPARE(panel.child<QLabel>("lblAcceleration")->text(), u"Acceleration"_s);
}

void tst_WJogVelocityControlForm::numbers()
{
    const Panel panel;
    panel->setApAcceleration(5);
    panel->setApActualVelocity(byte(131));
    QCOMPARE(panel.child("sbActualVelocity")->toolTip(), u"AP: 131"_s);
    QCOMPARE(panel.child("sbAcceleration")->toolTip(), u"AP: 5"_s);
    panel->setAddress(byte(200));
    panel->setMotor(2);
    PanelSignalLog log(panel.get());
    panel->readValues();
    QCOMPARE(log.take(),
             (QStringList{u"requestValue(-56, 2, -125)"_s, u"requestValue(-56, 2, 5)"_s}));
}

void tst_WJogVelocityControlForm::active()
{
    const Panel panel;
    panel->setActive(true);
    QCOMPARE(panel.child("gbSimpleVelocityMode")->styleSheet(), u"border-color:blue;"_s);
    panel->setActive(false);
    QCOMPARE(panel.child("gbSimpleVelocityMode")->styleSheet(), QString());
}

void tst_WJogVelocityControlForm::limits_data()
{
    QTest::addColumn<bool>("logarithmic");
    QTest::addColumn<int>("limit");
    QTest::addColumn<int>("velocityMaximum");
    QTest::addColumn<int>("velocityDialMaximum");
    QTest::addColumn<int>("accelerationMaximum");
    QTest::addColumn<int>("accelerationDialMaximum");
    const auto row = [](bool logarithmic, int limit, QList<int> expected) {
        QTest::addRow("%s %d", logarithmic ? "logarithmic" : "linear", limit)
            << logarithmic << limit << expected[0] << expected[1] << expected[2] << expected[3];
    };
    row(false, 8000000, {8000000, 8000000, 8000000, 8000000});
    row(true, 8000000, {8000000, 70, 8000000, 70});
    row(false, 0, {0, 0, 0, 0});
    row(true, 0, {0, 0, 0, 0});
    // Only the velocity takes the magnitude.
    row(false, -1000, {1000, 1000, -1000, -1000});
    row(true, -1000, {1000, 31, -1000, 0});
    row(true, Least, {Largest, 94, Least, 0});
}

void tst_WJogVelocityControlForm::limits()
{
    QFETCH(bool, logarithmic);
    QFETCH(int, limit);
    for (const bool scaleFirst : {true, false}) {
        const Panel panel;
        if (scaleFirst) {
            panel->setLogarithmic(logarithmic);
        }
        panel->setVelocityLimit(limit);
        panel->setAccelerationLimit(limit);
        if (!scaleFirst) {
            panel->setLogarithmic(logarithmic);
        }
        QTEST(panel.child<QSpinBox>("sbTargetVelocity")->maximum(), "velocityMaximum");
        QTEST(panel.child<QDial>("dialerVelocity")->maximum(), "velocityDialMaximum");
        QTEST(panel.child<QSpinBox>("sbAcceleration")->maximum(), "accelerationMaximum");
        QTEST(panel.child<QDial>("dialerAcceleration")->maximum(), "accelerationDialMaximum");
    }
}

void tst_WJogVelocityControlForm::keyboard()
{
    const Panel panel;
    QCOMPARE(panel.tabOrder("dialerVelocity"),
             (QStringList{u"dialerVelocity"_s, u"dialerAcceleration"_s, u"sbTargetVelocity"_s,
                          u"sbAcceleration"_s, u"btnJogFastLeft"_s, u"btnJogLeft"_s,
                          u"btnJogStop"_s, u"btnJogRight"_s, u"btnJogFastRight"_s}));
}

void tst_WJogVelocityControlForm::names()
{
    const Panel panel;
    QCOMPARE(unnamedControls(*panel.get()), QStringList());
    QCOMPARE(panel.clipped().join(u", "_s), QString());
    panel->setActualLabel(u"V_ACTUAL"_s);
    panel->setTargetLabel(u"V_TARGET"_s);
    adjustToTexts(panel.get());
    QCOMPARE(panel.clipped().join(u", "_s), QString());
}

QTEST_MAIN(tst_WJogVelocityControlForm)
#include "tst_WJogVelocityControlForm.moc"
