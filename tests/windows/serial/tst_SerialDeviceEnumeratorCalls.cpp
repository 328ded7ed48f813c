#include "serial/DeviceKey.h"
#include "serial/SerialDeviceEnumerator.h"
#include "support/ImportedFunction.h"
#include "support/TestCase.h"

#include <QSignalSpy>
#include <QTest>
#include <QWinEventNotifier>

#include <cstring>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include <setupapi.h>

using namespace Qt::StringLiterals;

/// What the list of ports asks of Windows, and what it makes of it when that fails. The devices are
/// those that the registry says are there.
class tst_SerialDeviceEnumeratorCalls : public TestCase
{
    Q_OBJECT

private slots:
    void withoutAnEventNothingIsWatched();
    void withoutTheKeyNothingIsWatchedForGood();
    void classThatCannotBeListedEndsTheScan_data();
    void classThatCannotBeListedEndsTheScan();
    void classThatCannotBeListedLooksLikePulledOut();
    void keyThatCannotBeOpenedSkipsTheDevice();
    void portNameAmongOtherValues_data();
    void portNameAmongOtherValues();
    void propertiesAreReadInOrder();
    void propertiesThatCannotBeReadAreEmpty();
    void busyIsATestOpening_data();
    void busyIsATestOpening();
};

namespace {

const Device Port{.portName = u"COM40"_s,
                  .friendlyName = u"Moravint ZDRM-7710 (COM40)"_s,
                  .service = u"usbser"_s,
                  .hardwareIds = {u"USB\\VID_16D0&PID_0650"_s}};
const auto PortPath = u"USB\\VID_16D0&PID_0650\\0001"_s;

/// A function in the place of an imported one, which may call that.
template <typename Function>
class Replaced
{
public:
    Replaced(const char *name, Function *replacement)
        : m_imported(nullptr, name, reinterpret_cast<void *>(replacement))
    {
    }
    Function *original() const { return reinterpret_cast<Function *>(m_imported.original()); }

private:
    const ImportedFunction m_imported;
};

template <typename Function>
Replaced(const char *, Function *) -> Replaced<Function>;

HANDLE WINAPI noEvent(SECURITY_ATTRIBUTES *, BOOL, BOOL, const wchar_t *)
{
    return nullptr;
}

QString openedKey;

LSTATUS WINAPI noKey(HKEY, const wchar_t *name, DWORD, REGSAM access, HKEY *)
{
    openedKey = QString::fromWCharArray(name) + (access == KEY_NOTIFY ? u" to watch"_s : QString());
    return ERROR_ACCESS_DENIED;
}

HKEY WINAPI noDeviceKey(HDEVINFO, SP_DEVINFO_DATA *, DWORD, DWORD, DWORD, REGSAM)
{
    return static_cast<HKEY>(INVALID_HANDLE_VALUE);
}

int destroyedLists = 0;

BOOL WINAPI destroyedList(HDEVINFO)
{
    ++destroyedLists;
    return TRUE;
}

std::function<HDEVINFO(const GUID *, DWORD)> listClass;

HDEVINFO WINAPI listedClass(const GUID *deviceClass, const wchar_t *, HWND, DWORD flags)
{
    return listClass(deviceClass, flags);
}

QList<DWORD> askedProperties;

/// Every property is a text that tells its number.
BOOL WINAPI numberedProperty(HDEVINFO, SP_DEVINFO_DATA *, DWORD property, DWORD *type, BYTE *data,
                             DWORD size, DWORD *needed)
{
    const QString text = u"property %1"_s.arg(property);
    const auto bytes = static_cast<DWORD>((text.size() + 1) * 2);
    *type = REG_SZ;
    if (needed) {
        *needed = bytes;
    }
    if (size < bytes) {
        SetLastError(ERROR_INSUFFICIENT_BUFFER);
        return FALSE;
    }
    askedProperties << property;
    std::memcpy(data, text.utf16(), bytes);
    return TRUE;
}

BOOL WINAPI noProperty(HDEVINFO, SP_DEVINFO_DATA *, DWORD, DWORD *, BYTE *, DWORD, DWORD *)
{
    return FALSE;
}

QStringList portCalls;
bool isPortFree = false;

HANDLE WINAPI openedPort(const wchar_t *name, DWORD access, DWORD sharing, SECURITY_ATTRIBUTES *,
                         DWORD creation, DWORD flags, HANDLE)
{
    portCalls << u"CreateFileW %1 %2 %3 %4 %5"_s.arg(QString::fromWCharArray(name))
                     .arg(access, 0, 16)
                     .arg(sharing)
                     .arg(creation)
                     .arg(flags);
    return isPortFree ? reinterpret_cast<HANDLE>(0x7710) : INVALID_HANDLE_VALUE;
}

BOOL WINAPI cancelledPort(HANDLE)
{
    portCalls << u"CancelIo"_s;
    return TRUE;
}

BOOL WINAPI closedPort(HANDLE)
{
    portCalls << u"CloseHandle"_s;
    return TRUE;
}

} // namespace

void tst_SerialDeviceEnumeratorCalls::withoutAnEventNothingIsWatched()
{
    const DeviceKey device(PortPath, Port);
    const Replaced events("CreateEventW", &noEvent);
    SerialDeviceEnumerator ports;
    ports.setEnabled(true);
    QVERIFY(!ports.isEnabled());
    QVERIFY(!ports.findChild<QWinEventNotifier *>());
    QCOMPARE(ports.devicesAvailable(), QStringList());
}

void tst_SerialDeviceEnumeratorCalls::withoutTheKeyNothingIsWatchedForGood()
{
    const DeviceKey device(PortPath, Port);
    std::optional<SerialDeviceEnumerator> ports;
    {
        const Replaced keys("RegOpenKeyExW", &noKey);
        ports.emplace();
    }
    QCOMPARE(openedKey, u"SYSTEM\\CurrentControlSet\\services to watch"_s);
    ports->setEnabled(true);
    QVERIFY(!ports->isEnabled());
    QCOMPARE(ports->devicesAvailable(), QStringList());
    ports->_q_processWatcher();
    QCOMPARE(ports->devicesAvailable(), QStringList());
}

void tst_SerialDeviceEnumeratorCalls::classThatCannotBeListedEndsTheScan_data()
{
    QTest::addColumn<int>("failing");
    QTest::addColumn<QStringList>("listed");
    QTest::newRow("ports") << 0 << QStringList();
    QTest::newRow("further ports") << 1 << QStringList{u"COM40"_s};
    QTest::newRow("modems") << 2 << QStringList{u"COM40"_s, u"COM41"_s};
    QTest::newRow("none") << 3 << QStringList{u"COM40"_s, u"COM41"_s, u"COM42"_s};
}

void tst_SerialDeviceEnumeratorCalls::classThatCannotBeListedEndsTheScan()
{
    QFETCH(int, failing);
    const QStringList classes{u"{4D36E978-E325-11CE-BFC1-08002BE10318}"_s,
                              u"{DF799E12-3C56-421B-B298-B6D3642BC878}"_s,
                              u"{4D36E96D-E325-11CE-BFC1-08002BE10318}"_s};
    std::vector<std::unique_ptr<DeviceKey>> devices;
    for (int i = 0; i < classes.size(); ++i) {
        const Device device{.portName = u"COM%1"_s.arg(40 + i), .classId = classes.at(i)};
        devices.push_back(std::make_unique<DeviceKey>(u"ROOT\\TEST%1\\0000"_s.arg(i), device));
    }
    const Replaced list("SetupDiGetClassDevsW", &listedClass);
    const Replaced destroy("SetupDiDestroyDeviceInfoList", &destroyedList);
    destroyedLists = 0;
    QList<DWORD> flagsOfCalls;
    listClass = [&](const GUID *deviceClass, DWORD flags) -> HDEVINFO {
        const bool fails = flagsOfCalls.size() == failing;
        flagsOfCalls << flags;
        return fails ? INVALID_HANDLE_VALUE : list.original()(deviceClass, nullptr, nullptr, flags);
    };
    QTEST(SerialDeviceEnumerator().devicesAvailable(), "listed");
    // What comes after the one that failed is left out.
    QCOMPARE(flagsOfCalls, QList<DWORD>(qMin(failing + 1, 3), DIGCF_PRESENT));
    QCOMPARE(destroyedLists, failing); // each that there was
}

// Nothing is reported of it; the next scan that succeeds brings the ports back.
void tst_SerialDeviceEnumeratorCalls::classThatCannotBeListedLooksLikePulledOut()
{
    const DeviceKey device(PortPath, Port);
    const Device modem{.portName = u"COM42"_s,
                       .classId = u"{4D36E96D-E325-11CE-BFC1-08002BE10318}"_s};
    const DeviceKey modemKey(u"ROOT\\TEST\\0000"_s, modem);
    SerialDeviceEnumerator ports;
    QSignalSpy changes(&ports, &SerialDeviceEnumerator::hasChanged);
    const QStringList all{u"COM40"_s, u"COM42"_s};
    QCOMPARE(ports.devicesAvailable(), all);
    {
        const Replaced list("SetupDiGetClassDevsW", &listedClass);
        int calls = 0;
        listClass = [&](const GUID *deviceClass, DWORD flags) -> HDEVINFO {
            return ++calls == 3 ? INVALID_HANDLE_VALUE
                                : list.original()(deviceClass, nullptr, nullptr, flags);
        };
        ports._q_processWatcher();
    }
    QCOMPARE(changes.size(), 1);
    QCOMPARE(changes.takeFirst(), QVariantList{QStringList(u"COM40"_s)});
    QCOMPARE(ports.devicesAvailable(), QStringList(u"COM40"_s));
    ports._q_processWatcher();
    QCOMPARE(changes.size(), 1);
    QCOMPARE(changes.takeFirst(), QVariantList{all});
}

void tst_SerialDeviceEnumeratorCalls::keyThatCannotBeOpenedSkipsTheDevice()
{
    const DeviceKey device(PortPath, Port);
    const Replaced keys("SetupDiOpenDevRegKey", &noDeviceKey);
    QVERIFY(!SerialDeviceEnumerator().devicesAvailable().contains(u"COM40"_s));
}

void tst_SerialDeviceEnumeratorCalls::portNameAmongOtherValues_data()
{
    using Value = std::pair<QString, DWORD>;
    QTest::addColumn<QList<Value>>("values"); // each names a port of its own, from COM50 on
    QTest::addColumn<QStringList>("listed");
    const Value real{u"PortName"_s, REG_SZ};
    // In the order of their names, too, by which some systems walk them.
    QTest::newRow("others before")
        << QList<Value>{{u"A"_s, REG_SZ}, real} << QStringList(u"COM51"_s);
    QTest::newRow("of other types before") << QList<Value>{{u"APortName"_s, REG_BINARY},
                                                           {u"BPortName"_s, REG_EXPAND_SZ},
                                                           {u"CPortName"_s, REG_MULTI_SZ},
                                                           {u"DPortName"_s, REG_DWORD},
                                                           real}
                                           << QStringList(u"COM54"_s);
    QTest::newRow("first of two") << QList<Value>{{u"APortName"_s, REG_SZ}, real}
                                  << QStringList(u"COM50"_s);
    QTest::newRow("others alone") << QList<Value>{{u"APortName"_s, REG_BINARY}, {u"B"_s, REG_SZ}}
                                  << QStringList();
}

void tst_SerialDeviceEnumeratorCalls::portNameAmongOtherValues()
{
    using Value = std::pair<QString, DWORD>;
    QFETCH(QList<Value>, values);
    Device device = Port;
    device.portName.clear();
    const DeviceKey key(PortPath, device);
    for (int i = 0; i < values.size(); ++i) {
        const QString name = u"COM%1"_s.arg(50 + i);
        key.setParameter(
            values.at(i).first, values.at(i).second,
            QByteArray(reinterpret_cast<const char *>(name.utf16()), (name.size() + 1) * 2));
    }
    QTEST(SerialDeviceEnumerator().devicesAvailable(), "listed");
}

void tst_SerialDeviceEnumeratorCalls::propertiesAreReadInOrder()
{
    const DeviceKey device(PortPath, Port);
    const Replaced properties("SetupDiGetDeviceRegistryPropertyW", &numberedProperty);
    askedProperties.clear();
    SerialDeviceEnumerator ports;
    QCOMPARE(ports.devicesAvailable(), QStringList(u"COM40"_s));
    QCOMPARE(askedProperties, (QList<DWORD>{22, 0, 12, 1, 13, 11, 7, 4, 14}));
    ports.setDeviceName(u"COM40"_s);
    QCOMPARE(ports.deviceObject(), u"property 14"_s);
    QCOMPARE(ports.deviceClass(), u"property 7"_s);
    QCOMPARE(ports.locationInfo(), u"property 13"_s);
    QCOMPARE(ports.friendlyName(), u"property 12"_s);
    QCOMPARE(ports.description(), u"property 0"_s);
    QCOMPARE(ports.manufacturer(), u"property 11"_s);
    QCOMPARE(ports.service(), u"property 4"_s);
    QCOMPARE(ports.busName(), u"property 22"_s);
    QCOMPARE(ports.driverPath(), QString()); // there is no such service
}

void tst_SerialDeviceEnumeratorCalls::propertiesThatCannotBeReadAreEmpty()
{
    const DeviceKey device(PortPath, Port);
    const Replaced properties("SetupDiGetDeviceRegistryPropertyW", &noProperty);
    SerialDeviceEnumerator ports;
    ports.setDeviceName(u"COM40"_s);
    QCOMPARE(ports.portName(), u"COM40"_s);
    QCOMPARE(ports.friendlyName(), QString());
    QCOMPARE(ports.hardwareIds(), QStringList());
    QCOMPARE(ports.vendorId(), QString());
}

void tst_SerialDeviceEnumeratorCalls::busyIsATestOpening_data()
{
    QTest::addColumn<bool>("isFree");
    QTest::addColumn<QStringList>("calls");
    const auto opening = u"CreateFileW \\\\.\\COM7 c0000000 0 3 0"_s;
    QTest::newRow("free") << true << QStringList{opening, u"CancelIo"_s, u"CloseHandle"_s};
    QTest::newRow("can't be opened") << false << QStringList{opening};
}

void tst_SerialDeviceEnumeratorCalls::busyIsATestOpening()
{
    QFETCH(bool, isFree);
    SerialDeviceEnumerator ports;
    const Replaced open("CreateFileW", &openedPort);
    const Replaced cancel("CancelIo", &cancelledPort);
    const Replaced close("CloseHandle", &closedPort);
    isPortFree = isFree;
    portCalls.clear();
    QVERIFY(!ports.isBusy()); // no name, no question
    QCOMPARE(portCalls, QStringList());
    ports.setDeviceName(u"COM7"_s);
    QCOMPARE(ports.isBusy(), !isFree);
    QTEST(portCalls, "calls");
}

QTEST_GUILESS_MAIN(tst_SerialDeviceEnumeratorCalls)
#include "tst_SerialDeviceEnumeratorCalls.moc"
