#include "app/AllPanels.h"
#include "app/ParameterAccess.h"
#include "app/StepperTest.h"
#include "app/WTraceController.h"
#include "comm/TraceCommand.h"
#include "support/SimulatedCanBus.h"
#include "support/SimulatedPort.h"

#include <QSignalSpy>

#include <functional>

using namespace Qt::StringLiterals;

/// The life of a connection over CAN, with a simulated module behind the double of the maker's
/// library.
class tst_StepperCan : public StepperTest
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void connectUsesTheSendIdentifierAndTheBitRate();
    void directCommandGoesOverCanAlone();
    void changeOfAPanelGoesOverCanAlone();
    void silentModuleClosesTheChannel();
    void refusedChannelPutsThePanelBackToReady();
    void disconnectClosesTheChannel();
    void bothTransportsGetEachCommand();
    void serialTransportComesFirst_data();
    void serialTransportComesFirst();
    void moduleOfAnotherIdentifierEndsTheFirstRead();

private:
    QStringList requests() const { return requestsOf(*m_bus); }

    std::unique_ptr<SimulatedCanBus> m_bus;
};

void tst_StepperCan::init()
{
    m_bus = std::make_unique<SimulatedCanBus>(simulator::Identity{.address = 5}, 500);
    StepperTest::init();
}

void tst_StepperCan::cleanup()
{
    StepperTest::cleanup();
    m_bus.reset();
}

void tst_StepperCan::connectUsesTheSendIdentifierAndTheBitRate()
{
    connectOverCan(500, 5, 2);
    QVERIFY(moduleTabsAreEnabled());
    QCOMPARE(child<QTabWidget>("tabWidget")->currentIndex(), 1);
    m_bus->clear(); // of what the connect has read
    QTRY_COMPARE_GE(requests().size(), 7);
    QCOMPARE(
        requests().first(7),
        QStringList(
            {u"can < 005 [8] 06 12 00 00 00 00 00 03"_s, u"can < 005 [8] 06 96 00 00 00 00 00 03"_s,
             u"can < 005 [8] 06 97 00 00 00 00 00 03"_s, u"can < 005 [8] 06 98 00 00 00 00 00 03"_s,
             u"can < 005 [8] 06 83 00 00 00 00 00 03"_s, u"can < 005 [8] 06 01 00 00 00 00 00 03"_s,
             u"can < 005 [8] 06 0F 00 00 00 00 00 03"_s}));
}

void tst_StepperCan::directCommandGoesOverCanAlone()
{
    connectOverCan(500, 5, 2);
    stopPolling(*m_bus);
    sendDirectCommand(u"6 - GAP"_s, 4);
    QCOMPARE(requests(), QStringList(u"can < 005 [8] 06 04 00 00 00 00 00 03"_s));
    QCOMPARE(child<QSpinBox>("sbReplyAddress")->value(), 5);
    QCOMPARE(child<QSpinBox>("sbReplyType")->value(), 100);
    QVERIFY(m_log->lines().filter(u"could not send data"_s).isEmpty());
}

/// The serial transport, which gets the same signal, doesn't even try.
void tst_StepperCan::changeOfAPanelGoesOverCanAlone()
{
    connectOverCan(500, 5, 2);
    stopPolling(*m_bus);
    m_log->clear();
    child<QTabWidget>("tabWidget")->setCurrentIndex(3);
    auto *minimum = child<QSpinBox>("sbGammaVMin");
    minimum->setFocus();
    QTest::keyClick(minimum, Qt::Key_Up);
    QCOMPARE(requests(), QStringList(ParameterAccess::write(108, 51000).onBus(5)));
    QVERIFY(m_log->lines().filter(u"could not send data"_s).isEmpty());
    QVERIFY(m_log->lines().filter(u"communicationTimeouted!"_s).isEmpty());
}

void tst_StepperCan::silentModuleClosesTheChannel()
{
    connectOverCan(500, 5, 2);
    stopPolling(*m_bus);
    QVERIFY(m_bus->fault(u"silence"_s));
    m_log->clear();
    sendDirectCommand(u"6 - GAP"_s, 4);
    QVERIFY(isReady("wCANKvaserConnection"));
    QVERIFY2(moduleTabsAreEnabled(), "the tabs stay as they were");
    QVERIFY(m_log->lines().contains(u"Stepper::handleCanKvaserDeviceClosed(5)"_s));
    QVERIFY(m_log->lines().contains(u"CANKvaserCommandHandler::closeDevice"_s));

    QVERIFY(m_bus->fault(u"off"_s));
    connectOverCan(500, 5, 2);
    QVERIFY(!isReady("wCANKvaserConnection"));
}

void tst_StepperCan::refusedChannelPutsThePanelBackToReady()
{
    QVERIFY(m_bus->canFault(u"no-channel"_s));
    connectOverCan(500, 9, 2);
    QVERIFY(isReady("wCANKvaserConnection"));
    QVERIFY(moduleTabsAreDisabled());
    QCOMPARE(child<QSpinBox>("sbRequestAddress")->value(), 9);
}

void tst_StepperCan::disconnectClosesTheChannel()
{
    connectOverCan(500, 5, 2);
    m_log->clear();
    child<QTabWidget>("tabWidget")->setCurrentIndex(0);
    click("wCANKvaserConnection", "btnDisconnect");
    QVERIFY(isReady("wCANKvaserConnection"));
    QVERIFY(moduleTabsAreDisabled());
    QCOMPARE(m_log->lines().filter(u"losing"_s)
                 + m_log->lines().filter(u"CANKvaserCommandHandler::closeDevice"_s),
             QStringList({u"Stepper::closing can kvaser handler..."_s,
                          u"CANKvaserCommandHandler::closeDevice"_s}));
    connectOverCan(500, 5, 2);
    QVERIFY(moduleTabsAreEnabled());
}

void tst_StepperCan::bothTransportsGetEachCommand()
{
    SimulatedPort serialModule({.address = 5});
    connectOverSerial(serialModule.portName(), 9600, 5);
    connectOverCan(500, 5, 2);
    stopPolling(*m_bus);
    serialModule.clearWireLog();

    m_stepper->handleTargetPositionChange(5, 0, 0, 256);
    QCOMPARE(serialModule.requests(), QStringList(u"05 04 00 00 00 00 01 00 0A"_s));
    QCOMPARE(requests(), QStringList(u"can < 005 [8] 04 00 00 00 00 01 00 03"_s));
}

void tst_StepperCan::serialTransportComesFirst_data()
{
    QTest::addColumn<std::function<void()>>("action");
    const auto row = [](const char *name, const std::function<void()> &action) {
        QTest::newRow(name) << action;
    };
    row("polling pass", [this] {
        TraceCommand entry(5, 6, 1, 0);
        auto *trace = child<WTraceController>("wTraceController");
        trace->clearTraceCommands();
        trace->addTraceCommand(&entry);
        trace->requestTraceValues();
        trace->clearTraceCommands();
    });
    row("read by a panel", [this] {
        emit child<WFieldWeakeningSettings>("wFieldWeakeningSettings")->requestValue(5, 0, 1);
    });
    row("write by a panel", [this] {
        emit child<WFieldWeakeningSettings>("wFieldWeakeningSettings")->changeValue(5, 0, 1, 0);
    });
    row("rotation by a panel",
        [this] { emit child<WVelocityControl>("wVelocityControl")->doROX(5, 0, 3, 0); });
    row("move by a panel",
        [this] { emit child<WJogPositionControl>("wJogPositionControl")->doMove(5, 0, 4, 1, 0); });
    row("direct command", [this] { sendDirectCommand(u"6 - GAP"_s, 1); });
    row("motion", [this] { m_stepper->handleTargetPositionChange(5, 0, 0, 256); });
}

/// With both connected, each request goes over both. Of two silent modules the one that was asked
/// first is told of first.
void tst_StepperCan::serialTransportComesFirst()
{
    QFETCH(std::function<void()>, action);
    SimulatedPort serialModule({.address = 5});
    connectOverSerial(serialModule.portName(), 9600, 5);
    connectOverCan(500, 5, 2);
    stopPolling(*m_bus);
    serialModule.clearWireLog();
    QVERIFY(serialModule.fault(u"silence"_s));
    QVERIFY(m_bus->fault(u"silence"_s));
    m_log->clear();
    action();

    QStringList silent;
    for (const QString &line : m_log->lines().filter(u"communicationTimeouted!"_s)) {
        silent.append(line.section(u':', 0, 0));
    }
    QCOMPARE(silent, QStringList({u"QSerialCommandHandler"_s, u"CANKvaserCommandHandler"_s}));
    QCOMPARE(serialModule.requests().size(), 1);
    QCOMPARE(requests().size(), 1);
}

/// The panel is ready again, the tabs stay disabled, and nothing is polled.
void tst_StepperCan::moduleOfAnotherIdentifierEndsTheFirstRead()
{
    const QSignalSpy starts(child<WTraceController>("wTraceController"), &WTraceController::start);
    m_log->clear();
    connectOverCan(500, 6, 2);
    QVERIFY(isReady("wCANKvaserConnection"));
    QVERIFY(moduleTabsAreDisabled());
    QCOMPARE(child<QTabWidget>("tabWidget")->currentIndex(), 0);
    QCOMPARE(starts.size(), 0);
    // The first time-out closes the channel; what the panel asks for behind it ends at once.
    QCOMPARE(m_log->lines().filter(u"communicationTimeouted!"_s).size(), 1);
    QCOMPARE(requests(), QStringList(ParameterAccess::read(131).onBus(6)));
}

QTEST_MAIN(tst_StepperCan)
#include "tst_StepperCan.moc"
