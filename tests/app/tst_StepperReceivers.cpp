#include "app/AllPanels.h"
#include "app/StepperTest.h"
#include "app/WTraceController.h"
#include "charts/ChartLine.h"
#include "charts/WSimpleScaledDrawer.h"
#include "comm/TraceCommand.h"
#include "support/SimulatedCanBus.h"
#include "support/SimulatedPort.h"

#include <QRadioButton>
#include <QSlider>

using namespace Qt::StringLiterals;

namespace {

/// Every panel is made to listen to the one parameter that the window itself listens to.
constexpr char Number = static_cast<char>(129);
constexpr int Value = 1;

constexpr const char *Drawers[] = {"velocityDrawer", "positionDrawer", "torqueDrawer"};

} // namespace

/// Whom the replies of either transport reach, and in which order.
class tst_StepperReceivers : public StepperTest
{
    Q_OBJECT

private slots:
    void replyReachesItsReceiversInOrder_data() { addTransports(); }
    void replyReachesItsReceiversInOrder();
    void polledValueReachesItsReceiversInOrder_data() { addTransports(); }
    void polledValueReachesItsReceiversInOrder();
    void everyPanelGetsTheAddress();
    void cleanup();

private:
    static void addTransports();
    /// Connects over the row's transport to a module in which the parameter has the value.
    void connectModule();
    /// Gives every panel the parameter, and notes who shows a change of it.
    void listenEverywhere();
    template <typename Control>
    void note(const char *panel, const char *control);
    /// A panel that reads and writes. It doesn't write the value back, which would be an exchange
    /// in the midst of the round.
    template <typename Panel>
    void listenSilently(const char *panel, const char *control, void (Panel::*setNumber)(char));
    template <typename Panel>
    void listen(const char *panel, const char *control, void (Panel::*setNumber)(char));

    template <typename Panel>
    void expectAddress(const char *panel, int address) const
    {
        QVERIFY2(int(child<Panel>(panel)->address()) == address, panel);
    }

    std::unique_ptr<SimulatedPort> m_module;
    std::unique_ptr<SimulatedCanBus> m_bus;
    QStringList m_receivers;
};

void tst_StepperReceivers::cleanup()
{
    StepperTest::cleanup();
    m_bus.reset();
    m_module.reset();
}

void tst_StepperReceivers::addTransports()
{
    QTest::addColumn<bool>("can");
    QTest::newRow("serial") << false;
    QTest::newRow("can") << true;
}

void tst_StepperReceivers::connectModule()
{
    QFETCH(bool, can);
    if (can) {
        m_bus = std::make_unique<SimulatedCanBus>();
        connectOverCan(1000, 1, 2);
        stopPolling(*m_bus);
        m_bus->module().setAxisParameter(129, Value);
    } else {
        m_module = std::make_unique<SimulatedPort>();
        connectOverUsb(m_module->portName());
        stopPolling(*m_module);
        m_module->module().setAxisParameter(129, Value);
    }
}

template <typename Control>
void tst_StepperReceivers::note(const char *panel, const char *control)
{
    const QString name = QString::fromLatin1(panel);
    const auto add = [this, name] { m_receivers.append(name); };
    auto *widget = child<Control>(control, panel);
    if constexpr (std::is_same_v<Control, QComboBox>) {
        connect(widget, &QComboBox::currentIndexChanged, m_stepper.get(), add);
    } else if constexpr (std::is_same_v<Control, QRadioButton>) {
        widget->setChecked(false);
        connect(widget, &QRadioButton::toggled, m_stepper.get(), add);
    } else {
        QVERIFY2(widget->value() != Value, control);
        connect(widget, &Control::valueChanged, m_stepper.get(), add);
    }
}

template <typename Panel>
void tst_StepperReceivers::listen(const char *panel, const char *control,
                                  void (Panel::*setNumber)(char))
{
    (child<Panel>(panel)->*setNumber)(Number);
    note<QSpinBox>(panel, control);
}

template <typename Panel>
void tst_StepperReceivers::listenSilently(const char *panel, const char *control,
                                          void (Panel::*setNumber)(char))
{
    listen(panel, control, setNumber);
    child<Panel>(panel)->blockSignals(true);
}

void tst_StepperReceivers::listenEverywhere()
{
    using Ramp = WStepperVelocityRampControl;
    disconnect(child<QComboBox>("cmbLoopMode", "quickstartTab"), nullptr, m_stepper.get(), nullptr);
    note<QComboBox>("quickstartTab", "cmbLoopMode"); // the window itself
    child<WClosedLoopSettings>("wModuleSettings")->blockSignals(true);
    note<QComboBox>("wModuleSettings", "cmbLoopMode");
    child<WOpenLoopSettings>("wOpenLoopSettings")->setApStandbyCurrent(Number);
    child<WOpenLoopSettings>("wOpenLoopSettings")->blockSignals(true);
    note<QSlider>("wOpenLoopSettings", "slStandbyCurrent");
    listenSilently("wChopperSettings", "sbChopperBlankTime", &WChopperSettings::setApBlankTime);
    listenSilently("wPositionMaintenanceSettings", "sbPositionWindow",
                   &WPositionMaintenanceSettings::setApPositionWindow);
    listenSilently("wScalerSettings", "sbIScaleMin", &WCurrentScalerSettings::setApIScaleMin);
    listenSilently("wFieldWeakeningSettings", "sbGammaVMin",
                   &WFieldWeakeningSettings::setApGammaVMin);
    listenSilently("wEncoderSettings", "sbResolution", &WStepperEncoderSettings::setApResolution);
    listenSilently("wVelocityRampControl1", "sbMaxVelocity", &Ramp::setApMaxVelocity);
    listenSilently("wVelocityRampControl2", "sbMaxVelocity", &Ramp::setApMaxVelocity);
    listenSilently("wCorrectionSettings1", "sbVelocityP", &CorrectionSettings::setApVelocityP);
    listenSilently("wCorrectionSettings2", "sbVelocityP", &CorrectionSettings::setApVelocityP);
    listen("wJogVelocityControl", "sbActualVelocity", &WJogVelocityControl::setApActualVelocity);
    listen("wJogPositionControl", "sbActual", &WJogPositionControl::setApActualPosition);
    listen("wJogTorqueControl", "sbMaxCurrent", &WJogTorqueControl::setApMaxCurrent);
    listen("wTorqueControl", "sbActualCurrent", &WCurrentControl::setApActualCurrent);
    listen("wActualStepperCurrents", "sbMotorCurrent", &WActualStepperCurrents::setApMotorCurrent);
    listen("wVelocityControl", "sbActualVelocity", &WVelocityControl::setApActualVelocity);
    listen("wPositionControl", "sbActualPosition", &WPositionControl::setApActualPosition);
    child<WStepperStatusFlags>("wStates")->setStatusParameter(Number);
    note<QRadioButton>("wStates", "rbPositionReached"); // the bit that the value sets
    m_receivers.clear();
}

void tst_StepperReceivers::replyReachesItsReceiversInOrder()
{
    connectModule();
    listenEverywhere();
    emit child<WVelocityControl>("wVelocityControl")->requestValue(1, 0, Number);
    QCOMPARE(
        m_receivers,
        QStringList({u"wJogVelocityControl"_s, u"quickstartTab"_s, u"wModuleSettings"_s,
                     u"wOpenLoopSettings"_s, u"wChopperSettings"_s,
                     u"wPositionMaintenanceSettings"_s, u"wScalerSettings"_s,
                     u"wFieldWeakeningSettings"_s, u"wEncoderSettings"_s, u"wTorqueControl"_s,
                     u"wVelocityRampControl1"_s, u"wVelocityControl"_s, u"wCorrectionSettings1"_s,
                     u"wVelocityRampControl2"_s, u"wCorrectionSettings2"_s}));
    m_stepper->handleMotorHalted(true); // which the process remembers
}

void tst_StepperReceivers::polledValueReachesItsReceiversInOrder()
{
    connectModule();
    listenEverywhere();
    for (const char *name : Drawers) {
        child<WSimpleScaledDrawer>(name)->addChartLine(
            new ChartLine(1, 0, 6, static_cast<quint8>(Number), QString(), Qt::black));
    }
    const auto samples = [this] {
        qsizetype count = 0;
        for (const char *name : Drawers) {
            count += child<WSimpleScaledDrawer>(name)->chartLines().constLast()->samples().size();
        }
        return count;
    };
    qsizetype samplesAtTheLastPanel = -1;
    connect(child<QRadioButton>("rbPositionReached"), &QRadioButton::toggled, this,
            [&] { samplesAtTheLastPanel = samples(); });
    TraceCommand entry(1, 6, Number, 0);
    QList<TraceCommand *> list = {&entry};
    emit child<WTraceController>("wTraceController")->requestTraceValues(&list);
    QCOMPARE(m_receivers,
             QStringList({u"wJogVelocityControl"_s, u"wJogPositionControl"_s,
                          u"wJogTorqueControl"_s, u"wTorqueControl"_s, u"wActualStepperCurrents"_s,
                          u"wVelocityControl"_s, u"wPositionControl"_s, u"wStates"_s}));
    QCOMPARE(samplesAtTheLastPanel, 0); // the charts are the last
    for (const char *name : Drawers) {
        QCOMPARE(child<WSimpleScaledDrawer>(name)->chartLines().constLast()->samples(),
                 QList<double>{Value});
    }
    m_stepper->handleMotorHalted(true); // which the process remembers
}

void tst_StepperReceivers::everyPanelGetsTheAddress()
{
    m_stepper->openSerialHandler(QString(), 9600, 7);
    expectAddress<WJogVelocityControl>("wJogVelocityControl", 7);
    expectAddress<WJogPositionControl>("wJogPositionControl", 7);
    expectAddress<WJogTorqueControl>("wJogTorqueControl", 7);
    expectAddress<WClosedLoopSettings>("wModuleSettings", 7);
    expectAddress<WOpenLoopSettings>("wOpenLoopSettings", 7);
    expectAddress<WChopperSettings>("wChopperSettings", 7);
    expectAddress<WPositionMaintenanceSettings>("wPositionMaintenanceSettings", 7);
    expectAddress<WCurrentScalerSettings>("wScalerSettings", 7);
    expectAddress<WFieldWeakeningSettings>("wFieldWeakeningSettings", 7);
    expectAddress<WStepperEncoderSettings>("wEncoderSettings", 7);
    expectAddress<WCurrentControl>("wTorqueControl", 7);
    expectAddress<WActualStepperCurrents>("wActualStepperCurrents", 7);
    expectAddress<WStepperVelocityRampControl>("wVelocityRampControl1", 7);
    expectAddress<WVelocityControl>("wVelocityControl", 7);
    expectAddress<CorrectionSettings>("wCorrectionSettings1", 7);
    expectAddress<WStepperVelocityRampControl>("wVelocityRampControl2", 7);
    expectAddress<WPositionControl>("wPositionControl", 7);
    expectAddress<CorrectionSettings>("wCorrectionSettings2", 7);
    expectAddress<WStepperStatusFlags>("wStates", 7);
    QCOMPARE(child<QSpinBox>("sbRequestAddress", "wDirectMode")->value(), 7);
}

QTEST_MAIN(tst_StepperReceivers)
#include "tst_StepperReceivers.moc"
