#include "app/StepperTest.h"
#include "support/SimulatedPort.h"

#include <QGroupBox>

using namespace Qt::StringLiterals;

/// What the window does about what the module tells of itself: its current limit, the kind of
/// motion that it is in, and whether the motor turns.
class tst_StepperModuleState : public StepperTest
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void maxCurrentLimitsTheTargetCurrent();
    void maxCurrentOfTheModuleArrives();
    void modeHighlightsItsPanel_data();
    void modeHighlightsItsPanel();
    void unknownModeKeepsTheHighlight_data();
    void unknownModeKeepsTheHighlight();
    void unknownModeIsRemembered();
    void repeatedModeDoesNothing();
    void modeBelongsToTheProcess();
    void modeOfTheModuleArrives_data();
    void modeOfTheModuleArrives();
    void turningMotorLocksTheSettings();
    void haltBelongsToTheProcess();
    void turningMotorOfTheModuleLocksTheSettings();

private:
    /// The border of the group boxes for position, velocity and torque.
    static QStringList borders(const Stepper &stepper);
    QStringList borders() const { return borders(*m_stepper); }
    /// A window that is in no mode, whatever a test before has left behind.
    static void forgetMode(Stepper &stepper);
    static bool isLocked(const Stepper &stepper);
};

namespace {

const QString Highlighted = u"border-color:blue;"_s;
const QString Normal;

const QStringList PositionHighlighted = {Highlighted, Normal, Normal};
const QStringList VelocityHighlighted = {Normal, Highlighted, Normal};
const QStringList TorqueHighlighted = {Normal, Normal, Highlighted};

constexpr int UnknownMode = 5;

} // namespace

void tst_StepperModuleState::init()
{
    StepperTest::init();
    forgetMode(*m_stepper);
}

void tst_StepperModuleState::cleanup()
{
    m_stepper->handleMotorHalted(true); // which the process remembers
    StepperTest::cleanup();
}

void tst_StepperModuleState::forgetMode(Stepper &stepper)
{
    stepper.handleMotorControlModeChanged(-1);
}

QStringList tst_StepperModuleState::borders(const Stepper &stepper)
{
    QStringList borders;
    for (const char *box : {"gbJogPositionControl", "gbSimpleVelocityMode", "gbTorqueControl"}) {
        borders.append(stepper.findChild<QGroupBox *>(QLatin1String(box))->styleSheet());
    }
    return borders;
}

bool tst_StepperModuleState::isLocked(const Stepper &stepper)
{
    const auto *openLoop = stepper.findChild<QWidget *>(u"wOpenLoopSettings"_s);
    const auto *settings = stepper.findChild<QWidget *>(u"wModuleSettings"_s);
    const bool openLoopIsFree = openLoop->isEnabledTo(openLoop->parentWidget());
    const bool loopModeIsFree =
        settings->findChild<QWidget *>(u"cmbLoopMode"_s)->isEnabledTo(settings);
    if (openLoopIsFree != loopModeIsFree) {
        QTest::qFail("one without the other", __FILE__, __LINE__);
    }
    return !openLoopIsFree;
}

void tst_StepperModuleState::maxCurrentLimitsTheTargetCurrent()
{
    SimulatedPort module;
    connectOverUsb(module.portName());
    stopPolling(module);
    auto *target = child<QSpinBox>("sbTargetCurrent", "wTorqueControl");
    m_stepper->handleMaxCurrentChanged(3000);
    QCOMPARE(target->maximum(), 3000);
    target->setValue(2500);
    m_stepper->handleMaxCurrentChanged(2000);
    QCOMPARE(target->maximum(), 2000);
    QCOMPARE(target->value(), 2000);
    m_stepper->handleMaxCurrentChanged(4000);
    QCOMPARE(target->maximum(), 4000);
    QCOMPARE(target->value(), 2000);
    QVERIFY2(module.requests().isEmpty(), "nothing is sent");
}

void tst_StepperModuleState::maxCurrentOfTheModuleArrives()
{
    SimulatedPort module;
    module.module().setAxisParameter(15, 1234);
    const auto *target = child<QSpinBox>("sbTargetCurrent", "wTorqueControl");
    QCOMPARE(target->maximum(), 5000);
    connectOverUsb(module.portName());
    QCOMPARE(target->maximum(), 1234);
    // By the move of a slider, after which the module tells the current in mA.
    stopPolling(module);
    module.module().setAxisParameter(15, 999);
    child<QTabWidget>("tabWidget")->setCurrentIndex(2);
    auto *slider = child<QWidget>("slMaxCurrent", "wModuleSettings");
    slider->setFocus();
    QTest::keyClick(slider, Qt::Key_Right);
    QCOMPARE(target->maximum(), 999);
}

void tst_StepperModuleState::modeHighlightsItsPanel_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QStringList>("borders");
    QTest::newRow("positioning") << 0 << PositionHighlighted;
    QTest::newRow("velocity") << 1 << VelocityHighlighted;
    QTest::newRow("torque") << 2 << TorqueHighlighted;
}

void tst_StepperModuleState::modeHighlightsItsPanel()
{
    QFETCH(int, mode);
    QCOMPARE(borders(), QStringList({Normal, Normal, Normal}));
    m_stepper->handleMotorControlModeChanged(mode);
    QTEST(borders(), "borders");
    // Also coming from each of the others.
    for (const int other : {(mode + 1) % 3, (mode + 2) % 3}) {
        m_stepper->handleMotorControlModeChanged(other);
        QCOMPARE(borders().at(other), Highlighted);
        m_stepper->handleMotorControlModeChanged(mode);
        QTEST(borders(), "borders");
    }
}

void tst_StepperModuleState::unknownModeKeepsTheHighlight_data()
{
    QTest::addColumn<int>("mode");
    for (const int mode : {-2, 3, UnknownMode, 256}) {
        QTest::addRow("%d", mode) << mode;
    }
}

void tst_StepperModuleState::unknownModeKeepsTheHighlight()
{
    QFETCH(int, mode);
    m_stepper->handleMotorControlModeChanged(1);
    m_stepper->handleMotorControlModeChanged(mode);
    QCOMPARE(borders(), VelocityHighlighted);
}

/// So that the mode before it highlights its panel again, as it would do on its first day.
void tst_StepperModuleState::unknownModeIsRemembered()
{
    m_stepper->handleMotorControlModeChanged(0);
    auto *box = child<QGroupBox>("gbJogPositionControl");
    box->setStyleSheet(Normal); // to see it set again
    m_stepper->handleMotorControlModeChanged(UnknownMode);
    QCOMPARE(box->styleSheet(), Normal);
    m_stepper->handleMotorControlModeChanged(0);
    QCOMPARE(borders(), PositionHighlighted);
}

void tst_StepperModuleState::repeatedModeDoesNothing()
{
    m_stepper->handleMotorControlModeChanged(0);
    auto *box = child<QGroupBox>("gbJogPositionControl");
    box->setStyleSheet(Normal);
    m_stepper->handleMotorControlModeChanged(0);
    QCOMPARE(box->styleSheet(), Normal);
}

void tst_StepperModuleState::modeBelongsToTheProcess()
{
    m_stepper->handleMotorControlModeChanged(1);
    Stepper another(nullptr);
    another.handleMotorControlModeChanged(1); // known already
    QCOMPARE(borders(another), QStringList({Normal, Normal, Normal}));
    another.handleMotorControlModeChanged(2);
    QCOMPARE(borders(another), TorqueHighlighted);
    QCOMPARE(borders(), VelocityHighlighted);
}

void tst_StepperModuleState::modeOfTheModuleArrives_data()
{
    QTest::addColumn<int>("statusFlags");
    QTest::addColumn<QStringList>("borders");
    QTest::newRow("positioning") << (1 << 3) << PositionHighlighted;
    QTest::newRow("velocity") << (1 << 4) << VelocityHighlighted;
    QTest::newRow("torque") << (1 << 5) << TorqueHighlighted;
    QTest::newRow("the highest bit wins") << (7 << 3) << TorqueHighlighted;
}

void tst_StepperModuleState::modeOfTheModuleArrives()
{
    QFETCH(int, statusFlags);
    QFETCH(QStringList, borders);
    SimulatedPort module;
    module.module().setAxisParameter(18, statusFlags);
    connectOverUsb(module.portName());
    QTRY_COMPARE(this->borders(), borders);
}

void tst_StepperModuleState::turningMotorLocksTheSettings()
{
    QVERIFY(!isLocked(*m_stepper));
    m_stepper->handleMotorHalted(false);
    QVERIFY(isLocked(*m_stepper));
    QVERIFY(child<QWidget>("wModuleSettings")->isEnabledTo(child<QWidget>("settingsTab")));
    const auto *quickstart = child<QWidget>("quickstartTab");
    QVERIFY2(child<QComboBox>("cmbLoopMode", "quickstartTab")->isEnabledTo(quickstart),
             "the other box for the loop mode stays usable");
    m_stepper->handleMotorHalted(false);
    QVERIFY(isLocked(*m_stepper));
    m_stepper->handleMotorHalted(true);
    QVERIFY(!isLocked(*m_stepper));
}

void tst_StepperModuleState::haltBelongsToTheProcess()
{
    m_stepper->handleMotorHalted(false);
    Stepper another(nullptr);
    another.handleMotorHalted(false); // known already
    QVERIFY(!isLocked(another));
    another.handleMotorHalted(true);
    QVERIFY(isLocked(*m_stepper)); // of which this one hears nothing
    another.handleMotorHalted(false);
    QVERIFY(isLocked(another));
}

void tst_StepperModuleState::turningMotorOfTheModuleLocksTheSettings()
{
    SimulatedPort module;
    connectOverUsb(module.portName());
    QVERIFY(!isLocked(*m_stepper));
    module.module().setAxisParameter(131, -1);
    QTRY_VERIFY(isLocked(*m_stepper));
    module.module().setAxisParameter(131, 0);
    QTRY_VERIFY(!isLocked(*m_stepper));
}

QTEST_MAIN(tst_StepperModuleState)
#include "tst_StepperModuleState.moc"
