#include "app/StepperTest.h"
#include "panels/WConnection.h"
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

class tst_StepperHotPlug : public StepperTest
{
    Q_OBJECT

private slots:
    void aHundredConnectionsLeaveNothingBehind();

private:
    /// How a connection ends.
    enum class End {
        Disconnect, ///< by the user, then the port goes
        PullOut, ///< the port goes while values are polled
        HangUp, ///< the line dies first, the list of ports learns of it later
    };
    void connectOnce(End end);

    UsbMachine m_machine;
};

void tst_StepperHotPlug::connectOnce(End end)
{
    SimulatedPort module;
    m_machine.plugIn(u"ttyACM0"_s, {}, module.portName());
    const auto *devices = child<QComboBox>("cmbDevices", "wUsbConnection");
    QTRY_COMPARE(devices->currentText(), u"ttyACM0 [ZDRM-7710]"_s);
    click("wUsbConnection", "btnConnect");
    QVERIFY(moduleTabsAreEnabled());
    module.clearWireLog();
    QTRY_VERIFY(!module.requests().isEmpty()); // polled
    switch (end) {
    case End::Disconnect:
        click("wUsbConnection", "btnDisconnect");
        QVERIFY(moduleTabsAreDisabled());
        break;
    case End::HangUp:
        module.pullOut();
        break;
    case End::PullOut:
        break;
    }
    m_machine.pullOut(u"ttyACM0"_s);
    QTRY_VERIFY(isReady("wUsbConnection"));
    QTRY_VERIFY(SerialDeviceEnumerator::instance()->devicesAvailable().isEmpty());
    // The panel keeps a vanished port in its list; the next round begins with an empty one.
    QCOMPARE(devices->count(), 1);
    child<WConnection>("wUsbConnection")->clearDevices();
    m_log->clear();
}

void tst_StepperHotPlug::aHundredConnectionsLeaveNothingBehind()
{
    constexpr End Ends[] = {End::Disconnect, End::PullOut, End::HangUp};
    for (const End end : Ends) {
        connectOnce(end); // makes what is made once
    }
    const auto filesAtStart = openFiles();
    const auto threadsAtStart = threads();
    for (int i = 0; i < 100 && !QTest::currentTestFailed(); ++i) {
        connectOnce(Ends[i % 3]);
    }
    QTRY_COMPARE(openFiles(), filesAtStart);
    QTRY_COMPARE(threads(), threadsAtStart);
}

QTEST_MAIN(tst_StepperHotPlug)
#include "tst_StepperHotPlug.moc"
