#include "app/ParameterAccess.h"
#include "app/StepperTest.h"
#include "app/WTraceController.h"
#include "support/SimulatedCanBus.h"
#include "support/SimulatedPort.h"

#include <QCheckBox>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

/// What a connect reads from the module, and what goes back to it: every datagram in order.
class tst_StepperFirstConnect : public StepperTest
{
    Q_OBJECT

private slots:
    void everyDatagramInOrder_data();
    void everyDatagramInOrder();
    void secondConnectOnlyReads_data();
    void secondConnectOnlyReads();
    void anotherModuleIsWrittenWhatDiffers();
    void bothTransportsAreReadWhileBothAreOpen();
    void panelsShowWhatTheModuleHas();
    void moduleLostDuringTheRead_data();
    void moduleLostDuringTheRead();

private:
    /// Has @p then called when the reply for a parameter has changed the control @p name of
    /// @p panel, behind what the panel itself does about that.
    void whenChanged(const char *panel, const char *name, const std::function<void()> &then);
};

namespace {

/// The beginning of @p accesses, up to the @p nth that has the command and number of @p last.
ParameterAccesses upTo(const ParameterAccesses &accesses, const ParameterAccess &last, int nth = 1)
{
    for (qsizetype i = 0; i < accesses.size(); ++i) {
        const ParameterAccess &access = accesses.at(i);
        if (access.command == last.command && access.number == last.number && --nth == 0) {
            return accesses.first(i + 1);
        }
    }
    return {};
}

ParameterAccesses reads(const QList<int> &numbers)
{
    ParameterAccesses accesses;
    for (const int number : numbers) {
        accesses.append(ParameterAccess::read(number));
    }
    return accesses;
}

} // namespace

void tst_StepperFirstConnect::whenChanged(const char *panel, const char *name,
                                          const std::function<void()> &then)
{
    if (auto *box = child<QWidget>(panel)->findChild<QCheckBox *>(QLatin1String(name))) {
        connect(box, &QCheckBox::toggled, this, then);
    } else {
        connect(child<QSpinBox>(name, panel), &QSpinBox::valueChanged, this, then);
    }
}

void tst_StepperFirstConnect::everyDatagramInOrder_data()
{
    QTest::addColumn<QString>("transport");
    QTest::newRow("usb") << u"usb"_s;
    QTest::newRow("rs485") << u"rs485"_s;
    QTest::newRow("can") << u"can"_s;
}

void tst_StepperFirstConnect::everyDatagramInOrder()
{
    QFETCH(QString, transport);
    QStringList requests;
    qsizetype replies = 0;
    QStringList expected;
    if (transport == "can"_L1) {
        const SimulatedCanBus bus({.address = 5}, 250);
        connectOverCan(250, 5, 2);
        requests = requestsOf(bus);
        replies = bus.frames().filter(u"can > "_s).size();
        expected = onBus(firstConnect(), 5);
    } else if (transport == "usb"_L1) {
        const SimulatedPort module;
        connectOverUsb(module.portName());
        requests = module.requests();
        replies = module.wireLog().filter(u"> "_s).size();
        expected = onSerialLine(firstConnect());
    } else {
        const SimulatedPort module({.address = 7}, 57600);
        connectOverSerial(module.portName(), 57600, 7);
        requests = module.requests();
        replies = module.wireLog().filter(u"> "_s).size();
        expected = onSerialLine(firstConnect(), 7);
    }
    QCOMPARE(requests, expected);
    QCOMPARE(replies, expected.size());
    QVERIFY(moduleTabsAreEnabled());
    QCOMPARE(child<QTabWidget>("tabWidget")->currentIndex(), 1);
    QVERIFY(child<QPushButton>("btnStop", "wTraceController")->isEnabled());
}

void tst_StepperFirstConnect::secondConnectOnlyReads_data()
{
    QTest::addColumn<bool>("can");
    QTest::newRow("usb") << false;
    QTest::newRow("can") << true;
}

void tst_StepperFirstConnect::secondConnectOnlyReads()
{
    QFETCH(bool, can);
    if (can) {
        SimulatedCanBus bus;
        connectOverCan(1000, 1, 2);
        stopPolling(bus);
        child<QTabWidget>("tabWidget")->setCurrentIndex(0);
        click("wCANKvaserConnection", "btnDisconnect");
        connectOverCan(1000, 1, 2);
        QCOMPARE(requestsOf(bus), onBus(laterConnect()));
    } else {
        SimulatedPort module;
        connectOverUsb(module.portName());
        stopPolling(module);
        child<QTabWidget>("tabWidget")->setCurrentIndex(0);
        click("wUsbConnection", "btnDisconnect");
        connectOverUsb(module.portName());
        QCOMPARE(module.requests(), onSerialLine(laterConnect()));
    }
}

void tst_StepperFirstConnect::anotherModuleIsWrittenWhatDiffers()
{
    const SimulatedPort module;
    connectOverUsb(module.portName());
    child<QTabWidget>("tabWidget")->setCurrentIndex(0);
    click("wUsbConnection", "btnDisconnect");
    const SimulatedPort another({.address = 7});
    connectOverSerial(another.portName(), 9600, 7);
    QCOMPARE(another.requests(), onSerialLine(connectToSecondModule(), 7));
}

/// Nothing keeps a second transport from being opened beside the first: each request then goes
/// over both.
void tst_StepperFirstConnect::bothTransportsAreReadWhileBothAreOpen()
{
    SimulatedPort module;
    connectOverUsb(module.portName());
    stopPolling(module);
    module.module().setAxisParameter(117, 200); // as in the other one, so that no value differs
    child<QSpinBox>("sbLagLeadLimit2", "wScalerSettings")->setValue(200);
    module.clearWireLog();
    const SimulatedCanBus bus;
    connectOverCan(1000, 1, 2);
    QCOMPARE(module.requests(), onSerialLine(laterConnect()));
    QCOMPARE(requestsOf(bus), onBus(laterConnect()));
}

void tst_StepperFirstConnect::panelsShowWhatTheModuleHas()
{
    SimulatedPort module;
    module.module().setAxisParameter(15, 2345);
    module.module().setAxisParameter(129, 1);
    module.module().setAxisParameter(130, 77);
    module.module().setAxisParameter(126, 88);
    connectOverUsb(module.portName());
    QCOMPARE(child<QSpinBox>("sbCurrent", "wModuleSettings")->value(), 2345);
    QCOMPARE(child<QSpinBox>("sbTargetCurrent", "wTorqueControl")->maximum(), 2345);
    QCOMPARE(child<QComboBox>("cmbLoopMode", "quickstartTab")->currentText(), u"1 : Closed loop"_s);
    QCOMPARE(child<QComboBox>("cmbLoopMode", "wModuleSettings")->currentText(),
             u"1 : Closed loop"_s);
    // The twins on the positioning tab aren't asked for: they hear the answers to the others.
    for (const char *ramp : {"wVelocityRampControl1", "wVelocityRampControl2"}) {
        QCOMPARE(child<QSpinBox>("sbMaxVelocity", ramp)->value(), 51200);
        QCOMPARE(child<QSpinBox>("sbAcceleration", ramp)->value(), 51200);
        QCOMPARE(child<QSpinBox>("sbStartStopVelocity", ramp)->value(), 77);
    }
    for (const char *correction : {"wCorrectionSettings1", "wCorrectionSettings2"}) {
        QCOMPARE(child<QSpinBox>("sbVelocityP", correction)->value(), 1000);
        QCOMPARE(child<QSpinBox>("sbMaxTolerance", correction)->value(), 10);
        QCOMPARE(child<QSpinBox>("sbMaxVelocity", correction)->value(), 88);
    }
}

void tst_StepperFirstConnect::moduleLostDuringTheRead_data()
{
    QTest::addColumn<bool>("can");
    QTest::addColumn<bool>("pulledOut");
    QTest::addColumn<QString>("panel");
    QTest::addColumn<QString>("control");
    QTest::addColumn<ParameterAccesses>("answered");
    // What the panel asks for until it is through. The next panel isn't asked.
    QTest::addColumn<ParameterAccesses>("unanswered");

    struct Row
    {
        const char *panel;
        const char *control;
        ParameterAccesses answered;
        ParameterAccesses unanswered;
    };
    using Access = ParameterAccess;
    const ParameterAccesses all = firstConnect();
    const Row rows[] = {
        {"wModuleSettings", "cbEnableRightLimitSwitch", upTo(all, Access::write(12, 1)),
         reads({13, 129, 15, 153, 154, 155})},
        {"wChopperSettings", "sbHysteresisEnd", upTo(all, Access::write(165, 2)),
         reads({166, 167, 175, 176})},
        {"wFieldWeakeningSettings", "sbGammaVMin", upTo(all, Access::write(108, 0)), reads({109})},
        {"wCorrectionSettings1", "sbVelocityP", upTo(all, Access::write(124, 0), 2),
         reads({125, 126})},
    };
    for (const Row &row : rows) {
        for (const char *loss : {"usb silent", "usb pulled out", "can silent"}) {
            const QByteArray name(loss);
            QTest::addRow("%s, %s", row.panel, loss)
                << name.startsWith("can") << name.endsWith("out") << QString::fromLatin1(row.panel)
                << QString::fromLatin1(row.control) << row.answered << row.unanswered;
        }
    }
}

void tst_StepperFirstConnect::moduleLostDuringTheRead()
{
    QFETCH(bool, can);
    QFETCH(bool, pulledOut);
    QFETCH(QString, panel);
    QFETCH(QString, control);
    QFETCH(ParameterAccesses, answered);
    QFETCH(ParameterAccesses, unanswered);
    const QSignalSpy starts(child<WTraceController>("wTraceController"), &WTraceController::start);
    m_log->clear();
    qsizetype expectedTimeOuts = unanswered.size();
    if (can) {
        SimulatedCanBus bus;
        whenChanged(qPrintable(panel), qPrintable(control), [&] { bus.fault(u"silence"_s); });
        connectOverCan(1000, 1, 2);
        // The first time-out closes the channel, and the rest goes nowhere.
        QCOMPARE(requestsOf(bus), onBus(answered + unanswered.first(1)));
        expectedTimeOuts = 1;
        QVERIFY(isReady("wCANKvaserConnection"));
    } else {
        SimulatedPort module;
        whenChanged(qPrintable(panel), qPrintable(control), [&] {
            if (pulledOut) {
                module.pullOut();
            } else {
                module.fault(u"silence"_s);
            }
        });
        connectOverUsb(module.portName());
        QCOMPARE(module.requests(), onSerialLine(pulledOut ? answered : answered + unanswered));
        QVERIFY(isReady("wUsbConnection"));
        QVERIFY(isReady("wSerialConnection"));
    }
    QCOMPARE(m_log->lines().filter(u"communicationTimeouted!"_s).size(), expectedTimeOuts);
    QVERIFY(moduleTabsAreDisabled());
    QCOMPARE(child<QTabWidget>("tabWidget")->currentIndex(), 0);
    QCOMPARE(starts.size(), 0);
}

QTEST_MAIN(tst_StepperFirstConnect)
#include "tst_StepperFirstConnect.moc"
