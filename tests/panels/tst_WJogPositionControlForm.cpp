#include "MotionPanelTest.h"
#include "panels/WJogPositionControl.h"
#include "support/MetaMethods.h"
#include "support/TestCase.h"

#include <QGroupBox>

using namespace Qt::StringLiterals;
using namespace PanelTest;
using namespace MotionPanelTest;

using Panel = Shown<WJogPositionControl>;

class tst_WJogPositionControlForm : public TestCase
{
    Q_OBJECT

private slots:
    void signalsAndSlots();
    void form_data();
    void form();
    void titleAndLabels();
    void numbers();
    void active();
    void keyboard();
    void names();
};

void tst_WJogPositionControlForm::signalsAndSlots()
{
    const QMetaObject &metaObject = WJogPositionControl::staticMetaObject;
    QCOMPARE(metaObject.superClass(), &QWidget::staticMetaObject);
    QCOMPARE(
        ownMethods(metaObject, QMetaMethod::Signal),
        (QStringList{u"doMove(char address, char motorBank, char type, char moveType, int value)"_s,
                     u"doROX(char address, char motorBank, char roxCommand, int value)"_s,
                     u"changeValue(char address, char motorBank, char type, int value)"_s}));
    QCOMPARE(ownMethods(metaObject, QMetaMethod::Slot),
             (QStringList{
                 u"requestedTraceValue(char address, char motorBank, char type, int value)"_s,
                 u"handleVelocityChange(int value)"_s, u"handleAcceleration(int value)"_s,
                 u"handleDialerValueChange(int value)"_s, u"handleSpinValueChanged(int value)"_s,
                 u"on_cbContinuous_toggled(bool toggle)"_s, u"on_btnGo_clicked()"_s,
                 u"on_btnStop_clicked()"_s, u"on_btnClear_clicked()"_s}));
    QWidget window;
    QCOMPARE(WJogPositionControl(&window).parentWidget(), &window);
}

void tst_WJogPositionControlForm::form_data()
{
    addPropertyColumns();
    addPropertyRow("gbJogPositionControl", "QGroupBox", "title", u"Motor 1"_s);
    addPropertyRow("gbJogPositionControl", "QGroupBox", "styleSheet", QString());
    addDialRows("dialer", 0, 10000, true, 33.7);
    addTextRow("lblActual", "QLabel", "Actual");
    addSteppedSpinBoxRows("sbActual", -Largest, Largest, 1000, 0, false);
    addToolTipRow("sbActual", "QSpinBox", "AP: 0");
    addTextRow("lblTarget", "QLabel", "Target");
    addSteppedSpinBoxRows("sbTarget", -Largest, Largest, 1000, 0, true);
    addTextRow("btnClear", "QPushButton", "Clear");
    addPropertyRow("btnClear", "QPushButton", "maximumWidth", 50);
    addToolTipRow("btnClear", "QPushButton", "AP: 0");
    addPropertyRow("btnClear", "QPushButton", "enabled", true);
    addTextRow("cbContinuous", "QCheckBox", "Track continuous");
    addPropertyRow("cbContinuous", "QCheckBox", "checked", false);
    addTextRow("btnGo", "QPushButton", "Move absolut");
    addToolTipRow("btnGo", "QPushButton", "MVP");
    addPropertyRow("btnGo", "QPushButton", "enabled", true);
    addTextRow("btnStop", "QPushButton", "Stop");
    addToolTipRow("btnStop", "QPushButton", "MST");
    addPropertyRow("btnStop", "QPushButton", "enabled", true);
}

void tst_WJogPositionControlForm::form()
{
    const Panel panel;
    compareProperty(*panel.get());
}

void tst_WJogPositionControlForm::titleAndLabels()
{
    const Panel panel;
    panel->setTitle(u"Position mode [µsteps]"_s);
    panel->setActualLabel(u"X_ACTUAL"_s);
    panel->setTargetLabel(u"X_TARGET"_s);
    QCOMPARE(panel.child<QGroupBox>("gbJogPositionControl")->title(), u"Position mode [µsteps]"_s);
    QCOMPARE(panel.child<QLabel>("lblActual")->text(), u"X_ACTUAL"_s);
    QCOMPARE(panel.child<QLabel>("lblTarget")->text(), u"X_TARGET"_s);
}

void tst_WJogPositionControlForm::numbers()
{
    const Panel panel;
    panel->setApActualPosition(byte(201));
    panel->setApAcceleration(5);
    panel->setApVelocity(4);
    QStringList withToolTip;
    for (const QWidget *widget : panel->findChildren<QWidget *>()) {
        if (widget->toolTip().startsWith(u"AP: ")) {
            QCOMPARE(widget->toolTip(), u"AP: 201"_s);
            withToolTip.append(widget->objectName());
        }
    }
    withToolTip.sort();
    QCOMPARE(withToolTip, (QStringList{u"btnClear"_s, u"sbActual"_s}));
}

void tst_WJogPositionControlForm::active()
{
    const Panel panel;
    panel->setActive(true);
    QCOMPARE(panel.child("gbJogPositionControl")->styleSheet(), u"border-color:blue;"_s);
    panel->setActive(false);
    QCOMPARE(panel.child("gbJogPositionControl")->styleSheet(), QString());
}

void tst_WJogPositionControlForm::keyboard()
{
    const Panel panel;
    QCOMPARE(panel.tabOrder("dialer"),
             (QStringList{u"dialer"_s, u"sbTarget"_s, u"btnClear"_s, u"cbContinuous"_s, u"btnGo"_s,
                          u"btnStop"_s}));
}

void tst_WJogPositionControlForm::names()
{
    const Panel panel;
    QCOMPARE(unnamedControls(*panel.get()), QStringList());
    QCOMPARE(panel.clipped().join(u", "_s), QString());
    panel->setActualLabel(u"X_ACTUAL"_s);
    panel->setTargetLabel(u"X_TARGET"_s);
    adjustToTexts(panel.get());
    QCOMPARE(panel.clipped().join(u", "_s), QString());
}

QTEST_MAIN(tst_WJogPositionControlForm)
#include "tst_WJogPositionControlForm.moc"
