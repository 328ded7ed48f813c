#include "app/StepperTest.h"

#include "app/TickingThread.h"
#include "support/SimulatedCanBus.h"
#include "support/SimulatedPort.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int FirstModuleTab = 1;

} // namespace

void StepperTest::click(const char *panel, const char *button)
{
    QTest::mouseClick(child<QPushButton>(button, panel), Qt::LeftButton);
}

void StepperTest::connectOverUsb(const QString &port)
{
    child<QTabWidget>("tabWidget")->setCurrentIndex(0);
    child<QTabWidget>("twConnections")->setCurrentIndex(0);
    auto *devices = child<QComboBox>("cmbDevices", "wUsbConnection");
    if (devices->findText(port, Qt::MatchStartsWith) < 0) {
        m_stepper->handleAttachedUsbDevice(port, u"ZDRM-7710"_s);
    }
    devices->setCurrentIndex(devices->findText(port, Qt::MatchStartsWith));
    click("wUsbConnection", "btnConnect");
}

void StepperTest::connectOverSerial(const QString &port, int baudrate, int address)
{
    child<QTabWidget>("twConnections")->setCurrentIndex(1);
    m_stepper->handleAttachedSerialDevice(port, u"unknown"_s);
    auto *devices = child<QComboBox>("cmbDevices", "wSerialConnection");
    devices->setCurrentIndex(devices->findText(port, Qt::MatchStartsWith));
    child<QComboBox>("cmbBaudrates")->setCurrentText(QString::number(baudrate));
    child<QSpinBox>("sbAddress")->setValue(address);
    click("wSerialConnection", "btnConnect");
}

void StepperTest::sendDirectCommand(const QString &command, int type)
{
    child<QTabWidget>("tabWidget")->setCurrentIndex(8);
    child<QComboBox>("cbCommand")->setCurrentText(command);
    child<QSpinBox>("sbRequestType")->setValue(type);
    click("wDirectMode", "btnSend");
}

bool StepperTest::isReady(const char *panel) const
{
    return child<QPushButton>("btnConnect", panel)->isEnabled()
        && !child<QPushButton>("btnDisconnect", panel)->isEnabled();
}

void StepperTest::init()
{
    TestCase::init();
    m_log = std::make_unique<DebugLog>();
    m_stepper = std::make_unique<Stepper>(nullptr);
    m_stepper->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_stepper.get()));
}

void StepperTest::cleanup()
{
    m_stepper.reset();
    m_log.reset();
}

void StepperTest::connectOverCan(int kiloBitsPerSecond, int sendId, int receiveId)
{
    child<QTabWidget>("tabWidget")->setCurrentIndex(0);
    child<QTabWidget>("twConnections")->setCurrentIndex(2);
    child<QComboBox>("cmbBitrate")->setCurrentText(QString::number(kiloBitsPerSecond));
    child<QSpinBox>("sbSendId")->setValue(sendId);
    child<QSpinBox>("sbReceiveId")->setValue(receiveId);
    click("wCANKvaserConnection", "btnConnect");
}

void StepperTest::stopPollingAfterPass()
{
    const auto *controller = child<WTraceController>("wTraceController");
    const ValueCheckerThread *thread = nullptr;
    const QObject watch; // no longer than the variable
    connect(controller, &WTraceController::requestPDOValues, &watch,
            [&] { thread = tickingThread(*controller); });
    QTRY_VERIFY(thread);
    child<QPushButton>("btnStop", "wTraceController")->click();
    // A thread that had looked at its flag just before the click has a tick left. What it has
    // ticked when it is at its end is in the queue.
    QTRY_VERIFY(thread->isFinished());
    QCoreApplication::processEvents();
}

void StepperTest::stopPolling(SimulatedPort &module)
{
    stopPollingAfterPass();
    module.clearWireLog();
}

void StepperTest::stopPolling(SimulatedCanBus &bus)
{
    stopPollingAfterPass();
    bus.clear();
}

QStringList StepperTest::requestsOf(const SimulatedCanBus &bus)
{
    return bus.frames().filter(u"can < "_s);
}

int StepperTest::enabledModuleTabs() const
{
    const auto *tabs = child<QTabWidget>("tabWidget");
    int count = 0;
    for (int index = FirstModuleTab; index < tabs->count(); ++index) {
        count += tabs->isTabEnabled(index) ? 1 : 0;
    }
    return count;
}

bool StepperTest::moduleTabsAreEnabled() const
{
    return enabledModuleTabs() == child<QTabWidget>("tabWidget")->count() - FirstModuleTab
        && child<QWidget>("wTraceController")->isEnabled();
}

bool StepperTest::moduleTabsAreDisabled() const
{
    return enabledModuleTabs() == 0 && !child<QWidget>("wTraceController")->isEnabled();
}
