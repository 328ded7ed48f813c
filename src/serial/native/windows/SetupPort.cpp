#include "SetupPort.h"

#include "HardwareId.h"
#include "RegistryKey.h"
#include "RegistryVariant.h"
#include "WindowsVersion.h"

#include <QOperatingSystemVersion>

using namespace Qt::StringLiterals;

namespace {

static_assert(RegistryType::None == REG_NONE && RegistryType::Text == REG_SZ
              && RegistryType::TextWithVariables == REG_EXPAND_SZ
              && RegistryType::Binary == REG_BINARY && RegistryType::Number == REG_DWORD
              && RegistryType::BigEndianNumber == REG_DWORD_BIG_ENDIAN
              && RegistryType::TextList == REG_MULTI_SZ);

/// The name under which the port is opened stands in the hardware key of its device.
QString portNameOf(HDEVINFO devices, SP_DEVINFO_DATA &device)
{
    constexpr DWORD CurrentProfile = 0;
    const RegistryKey key(SetupDiOpenDevRegKey(devices, &device, DICS_FLAG_GLOBAL, CurrentProfile,
                                               DIREG_DEV, KEY_READ));
    if (!key.isOpen()) {
        return {};
    }
    for (DWORD index = 0;; ++index) {
        const auto value = key.valueAt(index);
        if (!value) {
            return {};
        }
        if (value->type == REG_SZ && value->name.contains("PortName"_L1)) {
            return registryVariant(value->type, value->data).toString();
        }
    }
}

QVariant propertyOf(HDEVINFO devices, SP_DEVINFO_DATA &device, DWORD property)
{
    DWORD type = REG_NONE;
    DWORD size = 0;
    SetupDiGetDeviceRegistryPropertyW(devices, &device, property, &type, nullptr, 0, &size);
    QByteArray data(static_cast<qsizetype>(size), '\0');
    if (!SetupDiGetDeviceRegistryPropertyW(devices, &device, property, &type,
                                           reinterpret_cast<BYTE *>(data.data()), size, nullptr)) {
        return {};
    }
    return registryVariant(type, data);
}

/// Where the driver of @p service lies. Variables in the path stay as they are.
QString driverPathOf(const QString &service)
{
    const RegistryKey key(u"SYSTEM\\CurrentControlSet\\services\\"_s + service, KEY_QUERY_VALUE);
    if (!key.isOpen()) {
        return {};
    }
    const auto path = key.value(u"ImagePath"_s);
    const bool isText = path && (path->type == REG_SZ || path->type == REG_EXPAND_SZ);
    return isText ? registryVariant(path->type, path->data).toString() : QString();
}

/// The pattern of the ids on the system that runs, which doesn't change.
const QString &hardwareIdPattern()
{
    static const QString pattern = [] {
        const auto system = QOperatingSystemVersion::current();
        return HardwareId::pattern(
            windowsVersionNumber(system.majorVersion(), system.minorVersion()));
    }();
    return pattern;
}

} // namespace

std::optional<SerialInfo> readSetupPort(HDEVINFO devices, SP_DEVINFO_DATA &device)
{
    SerialInfo port;
    port.portName = portNameOf(devices, device);
    if (!isSerialPortName(port.portName)) {
        return std::nullopt;
    }
    const auto text = [&](DWORD property) {
        return propertyOf(devices, device, property).toString();
    };
    port.busName = text(SPDRP_ENUMERATOR_NAME);
    port.description = text(SPDRP_DEVICEDESC);
    port.friendlyName = text(SPDRP_FRIENDLYNAME);
    port.hardwareIds = propertyOf(devices, device, SPDRP_HARDWAREID).toStringList();
    port.locationInfo = text(SPDRP_LOCATION_INFORMATION);
    port.manufacturer = text(SPDRP_MFG);
    port.deviceClass = text(SPDRP_CLASS);
    port.service = text(SPDRP_SERVICE);
    port.driverPath = driverPathOf(port.service);
    port.deviceObject = text(SPDRP_PHYSICAL_DEVICE_OBJECT_NAME);

    const HardwareId id = HardwareId::parse(port.hardwareIds, hardwareIdPattern());
    port.vendorId = id.vendorId;
    port.productId = id.productId;
    return port;
}
