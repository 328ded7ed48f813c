#include "SerialDeviceEnumeratorPrivate.h"

#include "PortPath.h"
#include "SetupPort.h"
#include "serial/SerialDeviceEnumerator.h"

#include <type_traits>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// Every driver that starts or stops for a device that is plugged in or pulled out writes below
/// this key, which is why it is watched and not a key of one device.
constexpr auto WatchedKey = "SYSTEM\\CurrentControlSet\\services"_L1;

/// The classes of devices that are scanned, in this order.
constexpr GUID DeviceClasses[] = {
    // ports
    {0x4D36E978, 0xE325, 0x11CE, {0xBF, 0xC1, 0x08, 0x00, 0x2B, 0xE1, 0x03, 0x18}},
    // a further class of ports
    {0xDF799E12, 0x3C56, 0x421B, {0xB2, 0x98, 0xB6, 0xD3, 0x64, 0x2B, 0xC8, 0x78}},
    // modems
    {0x4D36E96D, 0xE325, 0x11CE, {0xBF, 0xC1, 0x08, 0x00, 0x2B, 0xE1, 0x03, 0x18}},
};

struct DestroyDeviceList
{
    void operator()(HDEVINFO list) const { SetupDiDestroyDeviceInfoList(list); }
};

using DeviceList = std::unique_ptr<std::remove_pointer_t<HDEVINFO>, DestroyDeviceList>;

/// Adds the ports among the devices of @p deviceClass that are there now. False if the class can't
/// be listed.
bool scanClass(const GUID &deviceClass, SerialInfoMap &ports)
{
    const HDEVINFO listed = SetupDiGetClassDevsW(&deviceClass, nullptr, nullptr, DIGCF_PRESENT);
    if (listed == INVALID_HANDLE_VALUE) {
        return false;
    }
    const DeviceList devices(listed);
    SP_DEVINFO_DATA device{};
    device.cbSize = sizeof device;
    for (DWORD index = 0; SetupDiEnumDeviceInfo(devices.get(), index, &device); ++index) {
        if (const auto port = readSetupPort(devices.get(), device)) {
            ports.insert(port->portName, *port); // a second device of that name replaces the first
        }
    }
    return true;
}

} // namespace

SerialDeviceEnumeratorPrivate::SerialDeviceEnumeratorPrivate(SerialDeviceEnumerator *owner)
    : q(owner)
{
    if (!eventHandle.create()) {
        return;
    }
    auto watched = std::make_unique<RegistryKey>(WatchedKey, KEY_NOTIFY);
    if (watched->isOpen()) {
        keyHandle = std::move(watched);
    }
}

SerialDeviceEnumeratorPrivate::~SerialDeviceEnumeratorPrivate() = default;

void SerialDeviceEnumeratorPrivate::makeNotifier()
{
    if (notifier || !eventHandle.isValid()) {
        return;
    }
    notifier = std::make_unique<QWinEventNotifier>(eventHandle.get(), q);
    QObject::connect(notifier.get(), &QWinEventNotifier::activated, q,
                     &SerialDeviceEnumerator::_q_processWatcher);
}

bool SerialDeviceEnumeratorPrivate::canWatch() const
{
    return notifier && keyHandle;
}

void SerialDeviceEnumeratorPrivate::armWatch()
{
    keyHandle->notifyOfChange(eventHandle.get());
}

SerialInfoMap SerialDeviceEnumeratorPrivate::scan() const
{
    SerialInfoMap ports;
    for (const GUID &deviceClass : DeviceClasses) {
        if (!scanClass(deviceClass, ports)) {
            break;
        }
    }
    return ports;
}

bool SerialDeviceEnumeratorPrivate::isPortBusy() const
{
    constexpr DWORD NoSharing = 0;
    constexpr DWORD NotOverlapped = 0;
    const HANDLE port = CreateFileW(portPath(currentName).c_str(), GENERIC_READ | GENERIC_WRITE,
                                    NoSharing, nullptr, OPEN_EXISTING, NotOverlapped, nullptr);
    if (port == INVALID_HANDLE_VALUE) {
        return true; // for any reason at all, also for a missing port
    }
    CancelIo(port);
    CloseHandle(port);
    return false;
}
