#include "serial/ComPort.h"
#include "serial/DeviceKey.h"
#include "serial/SerialDeviceEnumerator.h"
#include "support/TestCase.h"

#include <QSignalSpy>
#include <QTest>
#include <QWinEventNotifier>

#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

/// The list of ports and its changes, on devices that the registry says are there.
class tst_SerialDeviceEnumerator : public TestCase
{
    Q_OBJECT

private slots:
    void cleanup();

    void isOneInTheProcess();
    void listsPortsOfAllThreeClasses();
    void leavesOut_data();
    void leavesOut();
    void readsTheRecord();
    void idsOfTheFirstHardwareId_data();
    void idsOfTheFirstHardwareId();
    void driverPathByType_data();
    void driverPathByType();
    void portNameOfAnotherType();
    void portNameInsideAnotherName();
    void secondDeviceOfANameReplacesTheFirst();

    void tellsPlugInAndPullOut();
    void tellsRealChangesOnly();
    void isArmedAgainWithoutAChange();
    void tellsChangedFriendlyName();
    void stopsAndResumesWatch();

    void answersEmptyForUnknownName();
    void keepsRecordUntilChosenAgain();
    void isBusy();

private:
    DeviceKey &plugIn(const QString &path, const Device &device);

    std::vector<std::unique_ptr<DeviceKey>> m_devices;
};

namespace {

const Device Module{
    .portName = u"COM40"_s,
    .friendlyName = u"Moravint ZDRM-7710 (COM40)"_s,
    .description = u"ZDRM-7710"_s,
    .manufacturer = u"Moravint"_s,
    .location = u"Port_#0002.Hub_#0001"_s,
    .service = u"usbser"_s,
    .hardwareIds = {u"USB\\VID_16D0&PID_0650&REV_0100"_s, u"USB\\VID_16D0&PID_0650"_s}};
const auto ModulePath = u"USB\\VID_16D0&PID_0650\\0001"_s;

const Device PlainPort{.portName = u"COM41"_s, .description = u"Communications Port"_s};
const auto PlainPath = u"ACPI\\PNP0501\\1"_s;

QStringList portsOf(const QSignalSpy &changes, qsizetype index)
{
    return changes.at(index).constFirst().toStringList();
}

/// All text accessors, in the order of the record.
QStringList textsOf(const SerialDeviceEnumerator &ports)
{
    return {ports.portName(),   ports.deviceObject(), ports.deviceClass(), ports.locationInfo(),
            ports.driverPath(), ports.friendlyName(), ports.description(), ports.vendorId(),
            ports.productId(),  ports.manufacturer(), ports.service(),     ports.busName(),
            ports.reserved()};
}

} // namespace

void tst_SerialDeviceEnumerator::cleanup()
{
    m_devices.clear();
}

DeviceKey &tst_SerialDeviceEnumerator::plugIn(const QString &path, const Device &device)
{
    m_devices.push_back(std::make_unique<DeviceKey>(path, device));
    return *m_devices.back();
}

void tst_SerialDeviceEnumerator::isOneInTheProcess()
{
    plugIn(ModulePath, Module);
    SerialDeviceEnumerator *const ports = SerialDeviceEnumerator::instance();
    QVERIFY(ports);
    QCOMPARE(SerialDeviceEnumerator::instance(), ports);
    QCOMPARE(ports->parent(), nullptr);
    QVERIFY(ports->isEnabled());
    QVERIFY(ports->devicesAvailable().contains(u"COM40"_s));
    QVERIFY(ports->findChild<QWinEventNotifier *>());
    ports->setEnabled(false);
}

void tst_SerialDeviceEnumerator::listsPortsOfAllThreeClasses()
{
    const QStringList before = SerialDeviceEnumerator().devicesAvailable();
    plugIn(ModulePath, Module);
    plugIn(PlainPath, PlainPort);
    Device further{.portName = u"COM42"_s};
    further.classId = u"{DF799E12-3C56-421B-B298-B6D3642BC878}"_s;
    further.className = u"Further"_s;
    plugIn(u"ROOT\\FURTHER\\0000"_s, further);
    Device modem{.portName = u"COM43"_s};
    modem.classId = u"{4D36E96D-E325-11CE-BFC1-08002BE10318}"_s;
    modem.className = u"Modem"_s;
    plugIn(u"USB\\VID_1234&PID_5678\\0001"_s, modem);
    Device mouse{.portName = u"COM44"_s};
    mouse.classId = u"{4D36E96F-E325-11CE-BFC1-08002BE10318}"_s;
    mouse.className = u"Mouse"_s;
    plugIn(u"ROOT\\MOUSE\\0000"_s, mouse);

    QStringList expected = before + QStringList{u"COM40"_s, u"COM41"_s, u"COM42"_s, u"COM43"_s};
    expected.sort();
    QCOMPARE(SerialDeviceEnumerator().devicesAvailable(), expected);
}

void tst_SerialDeviceEnumerator::leavesOut_data()
{
    QTest::addColumn<QString>("portName");
    QTest::addColumn<bool>("listed");
    QTest::newRow("printer port") << u"LPT1"_s << false;
    QTest::newRow("printer port somewhere in the name") << u"xLPT"_s << false;
    QTest::newRow("no name") << QString() << false;
    QTest::newRow("small letters are no printer") << u"lpt1"_s << true;
}

void tst_SerialDeviceEnumerator::leavesOut()
{
    QFETCH(QString, portName);
    QFETCH(bool, listed);
    const QStringList before = SerialDeviceEnumerator().devicesAvailable();
    Device device = PlainPort;
    device.portName = portName;
    plugIn(PlainPath, device);
    const QStringList after = SerialDeviceEnumerator().devicesAvailable();
    QCOMPARE(after.size(), before.size() + (listed ? 1 : 0));
    QCOMPARE(after.contains(portName), listed);
}

void tst_SerialDeviceEnumerator::readsTheRecord()
{
    const ServiceKey service(u"usbser"_s, u"%SystemRoot%\\system32\\drivers\\usbser.sys"_s);
    plugIn(ModulePath, Module);
    SerialDeviceEnumerator ports;
    ports.setDeviceName(u"COM40"_s);
    QVERIFY(ports.isExists());
    QCOMPARE(ports.portName(), u"COM40"_s);
    QCOMPARE(ports.deviceClass(), u"Ports"_s);
    QCOMPARE(ports.locationInfo(), u"Port_#0002.Hub_#0001"_s);
    QCOMPARE(ports.driverPath(), u"%SystemRoot%\\system32\\drivers\\usbser.sys"_s);
    QCOMPARE(ports.friendlyName(), u"Moravint ZDRM-7710 (COM40)"_s);
    QCOMPARE(ports.description(), u"ZDRM-7710"_s);
    QCOMPARE(ports.hardwareIds(), Module.hardwareIds);
    QCOMPARE(ports.vendorId(), u"16D0"_s);
    QCOMPARE(ports.productId(), u"0650"_s);
    QCOMPARE(ports.manufacturer(), u"Moravint"_s);
    QCOMPARE(ports.service(), u"usbser"_s);
    QCOMPARE(ports.reserved(), QString());
}

void tst_SerialDeviceEnumerator::idsOfTheFirstHardwareId_data()
{
    QTest::addColumn<QStringList>("hardwareIds");
    QTest::addColumn<QString>("vendorId");
    QTest::addColumn<QString>("productId");
    QTest::newRow("case is kept") << QStringList(u"USB\\VID_16d0&PID_065a"_s) << u"16d0"_s
                                  << u"065a"_s;
    QTest::newRow("only the first is looked at")
        << QStringList{u"ACPI\\PNP0501"_s, u"USB\\VID_16D0&PID_0650"_s} << QString() << QString();
    QTest::newRow("the older form")
        << QStringList(u"USB\\Vid_16d0&Pid_0650"_s) << QString() << QString();
    QTest::newRow("none") << QStringList() << QString() << QString();
}

void tst_SerialDeviceEnumerator::idsOfTheFirstHardwareId()
{
    QFETCH(QStringList, hardwareIds);
    Device device = Module;
    device.hardwareIds = hardwareIds;
    plugIn(ModulePath, device);
    SerialDeviceEnumerator ports;
    ports.setDeviceName(u"COM40"_s);
    QCOMPARE(ports.hardwareIds(), hardwareIds);
    QTEST(ports.vendorId(), "vendorId");
    QTEST(ports.productId(), "productId");
}

void tst_SerialDeviceEnumerator::driverPathByType_data()
{
    QTest::addColumn<DWORD>("type");
    QTest::addColumn<QString>("path");
    QTest::newRow("string") << DWORD(REG_SZ) << u"driver.sys"_s;
    QTest::newRow("string with variables") << DWORD(REG_EXPAND_SZ) << u"driver.sys"_s;
    QTest::newRow("binary") << DWORD(REG_BINARY) << QString();
}

void tst_SerialDeviceEnumerator::driverPathByType()
{
    QFETCH(DWORD, type);
    const ServiceKey service(u"usbser"_s, u"driver.sys"_s, type);
    plugIn(ModulePath, Module);
    SerialDeviceEnumerator ports;
    ports.setDeviceName(u"COM40"_s);
    QTEST(ports.driverPath(), "path");
}

void tst_SerialDeviceEnumerator::portNameOfAnotherType()
{
    Device device = PlainPort;
    device.portName.clear();
    plugIn(PlainPath, device).setParameter(u"PortName"_s, REG_EXPAND_SZ, "C\0O\0M\0007\0\0\0"_ba);
    QVERIFY(!SerialDeviceEnumerator().devicesAvailable().contains(u"COM7"_s));
}

// By design any value counts whose name contains "PortName", with regard to case.
void tst_SerialDeviceEnumerator::portNameInsideAnotherName()
{
    Device device = PlainPort;
    device.portName.clear();
    DeviceKey &key = plugIn(PlainPath, device);
    const QByteArray com46("C\0O\0M\0004\0006\0\0", 12);
    key.setParameter(u"portname"_s, REG_SZ, com46);
    QVERIFY(!SerialDeviceEnumerator().devicesAvailable().contains(u"COM46"_s));
    key.setParameter(u"OldPortName2"_s, REG_SZ, com46);
    QVERIFY(SerialDeviceEnumerator().devicesAvailable().contains(u"COM46"_s));
}

void tst_SerialDeviceEnumerator::secondDeviceOfANameReplacesTheFirst()
{
    plugIn(ModulePath, Module);
    Device modem = Module;
    modem.description = u"of the later class"_s;
    modem.classId = u"{4D36E96D-E325-11CE-BFC1-08002BE10318}"_s;
    plugIn(u"USB\\VID_1234&PID_5678\\0001"_s, modem);
    SerialDeviceEnumerator ports;
    QCOMPARE(ports.devicesAvailable().count(u"COM40"_s), 1);
    ports.setDeviceName(u"COM40"_s);
    QCOMPARE(ports.description(), u"of the later class"_s);
}

void tst_SerialDeviceEnumerator::tellsPlugInAndPullOut()
{
    SerialDeviceEnumerator ports;
    const QStringList before = ports.devicesAvailable();
    QSignalSpy changes(&ports, &SerialDeviceEnumerator::hasChanged);

    plugIn(ModulePath, Module);
    touchServices();
    QTRY_COMPARE(changes.size(), 1);
    QStringList expected = before + QStringList{u"COM40"_s};
    expected.sort();
    QCOMPARE(portsOf(changes, 0), expected);
    QCOMPARE(ports.devicesAvailable(), expected);

    plugIn(PlainPath, PlainPort);
    touchServices();
    QTRY_COMPARE(changes.size(), 2);
    QVERIFY(portsOf(changes, 1).contains(u"COM41"_s));

    m_devices.clear();
    touchServices();
    QTRY_COMPARE(changes.size(), 3);
    QCOMPARE(portsOf(changes, 2), before);
}

void tst_SerialDeviceEnumerator::tellsRealChangesOnly()
{
    plugIn(ModulePath, Module);
    SerialDeviceEnumerator ports;
    QSignalSpy changes(&ports, &SerialDeviceEnumerator::hasChanged);
    int events = 0;
    connect(ports.findChild<QWinEventNotifier *>(), &QWinEventNotifier::activated, &ports,
            [&events] { ++events; });
    touchServices();
    QTRY_COMPARE(events, 1);
    touchServices();
    QTRY_COMPARE(events, 2);
    QCOMPARE(changes.size(), 0);
}

void tst_SerialDeviceEnumerator::isArmedAgainWithoutAChange()
{
    SerialDeviceEnumerator ports;
    QSignalSpy changes(&ports, &SerialDeviceEnumerator::hasChanged);
    int events = 0;
    connect(ports.findChild<QWinEventNotifier *>(), &QWinEventNotifier::activated, &ports,
            [&events] { ++events; });
    for (int i = 1; i <= 3; ++i) {
        touchServices();
        QTRY_COMPARE(events, i);
    }
    plugIn(ModulePath, Module);
    touchServices();
    QTRY_COMPARE(changes.size(), 1);
}

void tst_SerialDeviceEnumerator::tellsChangedFriendlyName()
{
    DeviceKey &key = plugIn(ModulePath, Module);
    SerialDeviceEnumerator ports;
    const QStringList names = ports.devicesAvailable();
    QSignalSpy changes(&ports, &SerialDeviceEnumerator::hasChanged);
    key.set(u"FriendlyName"_s, u"Moravint ZDRM-7711 (COM40)"_s);
    touchServices();
    QTRY_COMPARE(changes.size(), 1);
    QCOMPARE(portsOf(changes, 0), names);
    ports.setDeviceName(u"COM40"_s);
    QCOMPARE(ports.friendlyName(), u"Moravint ZDRM-7711 (COM40)"_s);
}

void tst_SerialDeviceEnumerator::stopsAndResumesWatch()
{
    SerialDeviceEnumerator ports;
    SerialDeviceEnumerator witness;
    QSignalSpy changes(&ports, &SerialDeviceEnumerator::hasChanged);
    QSignalSpy witnessed(&witness, &SerialDeviceEnumerator::hasChanged);

    ports.setEnabled(false);
    QVERIFY(!ports.isEnabled());
    plugIn(ModulePath, Module);
    touchServices();
    QTRY_COMPARE(witnessed.size(), 1);
    QCOMPARE(changes.size(), 0);

    ports.setEnabled(true);
    QVERIFY(ports.isEnabled());
    QCOMPARE(changes.size(), 1); // at once, without the event loop
    QVERIFY(portsOf(changes, 0).contains(u"COM40"_s));

    m_devices.clear();
    touchServices();
    QTRY_COMPARE(changes.size(), 2);
}

void tst_SerialDeviceEnumerator::answersEmptyForUnknownName()
{
    plugIn(ModulePath, Module);
    SerialDeviceEnumerator ports;
    ports.setDeviceName(u"COM40"_s);
    ports.setDeviceName(u"COM99"_s);
    QCOMPARE(ports.name(), u"COM99"_s);
    QVERIFY(!ports.isExists());
    QCOMPARE(textsOf(ports).join(QString()), QString());
    QCOMPARE(ports.hardwareIds(), QStringList());
}

void tst_SerialDeviceEnumerator::keepsRecordUntilChosenAgain()
{
    plugIn(ModulePath, Module);
    SerialDeviceEnumerator ports;
    ports.setDeviceName(u"COM40"_s);
    const QStringList texts = textsOf(ports);
    QSignalSpy changes(&ports, &SerialDeviceEnumerator::hasChanged);
    m_devices.clear();
    touchServices();
    QTRY_COMPARE(changes.size(), 1);
    QCOMPARE(textsOf(ports), texts);
    QCOMPARE(ports.hardwareIds(), Module.hardwareIds);
    QVERIFY(!ports.isExists());
    ports.setDeviceName(u"COM40"_s);
    QCOMPARE(ports.portName(), QString());
}

void tst_SerialDeviceEnumerator::isBusy()
{
    SerialDeviceEnumerator ports;
    QVERIFY(!ports.isBusy()); // no name
    ports.setDeviceName(u"COM255"_s);
    QVERIFY(ports.isBusy()); // whatever can't be opened
    const ComPort port;
    ports.setDeviceName(port.portName());
    QVERIFY(!ports.isBusy());
    QVERIFY(!ports.isBusy());
    // Wine lets everybody open a port that is in use.
}

QTEST_GUILESS_MAIN(tst_SerialDeviceEnumerator)
#include "tst_SerialDeviceEnumerator.moc"
