#include "app/StepperTest.h"
#include "serial/SerialDeviceEnumerator.h"
#include "support/SimulatedPort.h"
#include "support/UsbMachine.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace {

qsizetype entries(const QString &folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size();
}

qsizetype openFiles()
{
    return entries(u"/proc/self/fd"_s);
}

qsizetype threads()
{
    return entries(u"/proc/self/task"_s);
}

} // namespace

/// Ports that come and go, seen by the whole window.
class tst_StepperHotPlug : public StepperTest
{
    Q_OBJECT

private slots:
    void aHundredConnectionsLeaveNothingBehind_data();
    void aHundredConnectionsLeaveNothingBehind();

private:
    /// How a connection ends.
    enum class End {
        Disconnect, ///< by the user, then the port goes
        PullOut, ///< the port goes while values are polled
        HangUp, ///< the line dies first, the list of ports learns of it later
    };
    void connectOnce(End end);
    /// How often the window was told of the port, by the beginning of its debug line.
    qsizetype told(const QString &slot) const
    {
        return m_log->lines().filter(slot + "(\"ttyACM0\""_L1).size();
    }

    UsbMachine m_machine;
};

void tst_StepperHotPlug::connectOnce(End end)
{
    m_log->clear();
    SimulatedPort module;
    m_machine.plugIn(u"ttyACM0"_s, {}, module.portName());
    QTRY_COMPARE(told(u"Stepper::handleAttachedDevice"_s), 1);
    connectOverUsb(u"ttyACM0"_s);
    QVERIFY(moduleTabsAreEnabled());
    module.clearWireLog(); // of what the connect has read
    QTRY_VERIFY(!module.requests().isEmpty()); // polled
    const auto *start = child<QPushButton>("btnStart", "wTraceController");
    QVERIFY(!start->isEnabled());
    switch (end) {
    case End::Disconnect:
        child<QTabWidget>("tabWidget")->setCurrentIndex(0);
        click("wUsbConnection", "btnDisconnect");
        break;
    case End::HangUp:
        stopPolling(module); // or each of its values would cost a time-out
        module.pullOut();
        sendDirectCommand(u"6 - GAP"_s, 1);
        QCOMPARE(told(u"Stepper::handleDetachedUsbDevice"_s), 1);
        break;
    case End::PullOut:
        break;
    }
    const qsizetype before = told(u"Stepper::handleDetachedUsbDevice"_s);
    m_machine.pullOut(u"ttyACM0"_s);
    QTRY_COMPARE(told(u"Stepper::handleDetachedUsbDevice"_s), before + 1);
    QVERIFY(SerialDeviceEnumerator::instance()->devicesAvailable().isEmpty());
    QVERIFY(isReady("wUsbConnection"));
    QVERIFY(isReady("wSerialConnection"));
    // The polling has stopped. The tabs stay as they were.
    QVERIFY(start->isEnabledTo(start->parentWidget()));
    QVERIFY(end == End::Disconnect ? moduleTabsAreDisabled() : moduleTabsAreEnabled());
}

void tst_StepperHotPlug::aHundredConnectionsLeaveNothingBehind_data()
{
    QTest::addColumn<End>("end");
    QTest::newRow("the user disconnects") << End::Disconnect;
    QTest::newRow("the port is pulled out") << End::PullOut;
    QTest::newRow("the line hangs up") << End::HangUp;
}

void tst_StepperHotPlug::aHundredConnectionsLeaveNothingBehind()
{
    QFETCH(End, end);
    constexpr int Rounds = 34; // in each of the three rows
    const auto threadsAtStart = threads();
    qsizetype filesAtStart = 0;
    for (int round = 0; round < Rounds; ++round) {
        connectOnce(end);
        // A start of the polling in its last sleep would be lost, so the next round waits for it.
        QTRY_COMPARE(threads(), threadsAtStart);
        if (round == 0) {
            filesAtStart = openFiles(); // with those that are opened once
        }
        if (QTest::currentTestFailed()) {
            return;
        }
    }
    QTRY_COMPARE_LE(openFiles(), filesAtStart);
}

QTEST_MAIN(tst_StepperHotPlug)
#include "tst_StepperHotPlug.moc"
