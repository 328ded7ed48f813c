#include "serial/DeviceKey.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace {

const auto Devices = u"System\\CurrentControlSet\\Enum\\"_s;
const auto Services = u"System\\CurrentControlSet\\Services\\"_s;

const wchar_t *wide(const QString &text)
{
    return reinterpret_cast<const wchar_t *>(text.utf16());
}

/// With the zero at its end.
QByteArray wideBytes(const QString &text)
{
    return QByteArray(reinterpret_cast<const char *>(text.utf16()), (text.size() + 1) * 2);
}

void setValue(const QString &key, const QString &name, DWORD type, const QByteArray &data)
{
    if (RegSetKeyValueW(HKEY_LOCAL_MACHINE, wide(key), wide(name), type, data.constData(),
                        static_cast<DWORD>(data.size()))
        != ERROR_SUCCESS) {
        qFatal("no value in the registry");
    }
}

} // namespace

DeviceKey::DeviceKey(const QString &path, const Device &device)
    : m_path(Devices + path)
{
    if (!device.portName.isEmpty()) {
        setParameter(u"PortName"_s, REG_SZ, wideBytes(device.portName));
    }
    set(u"ClassGUID"_s, device.classId);
    setIfAny(u"Class"_s, device.className);
    setIfAny(u"FriendlyName"_s, device.friendlyName);
    setIfAny(u"DeviceDesc"_s, device.description);
    setIfAny(u"Mfg"_s, device.manufacturer);
    setIfAny(u"LocationInformation"_s, device.location);
    setIfAny(u"Service"_s, device.service);
    if (!device.hardwareIds.isEmpty()) {
        setValue(m_path, u"HardwareID"_s, REG_MULTI_SZ,
                 wideBytes(device.hardwareIds.join(QChar::Null) + QChar::Null));
    }
}

DeviceKey::~DeviceKey()
{
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, wide(m_path));
}

void DeviceKey::set(const QString &name, const QString &text) const
{
    setValue(m_path, name, REG_SZ, wideBytes(text));
}

void DeviceKey::setParameter(const QString &name, DWORD type, const QByteArray &data) const
{
    setValue(m_path + u"\\Device Parameters"_s, name, type, data);
}

void DeviceKey::setIfAny(const QString &name, const QString &text) const
{
    if (!text.isEmpty()) {
        set(name, text);
    }
}

void touchServices()
{
    static DWORD count = 0;
    ++count;
    setValue(Services + u"zdrm7710 test"_s, u"Count"_s, REG_DWORD,
             QByteArray(reinterpret_cast<const char *>(&count), sizeof count));
}

ServiceKey::ServiceKey(const QString &name, const QString &imagePath, DWORD type)
    : m_path(Services + name)
{
    setValue(m_path, u"ImagePath"_s, type, wideBytes(imagePath));
}

ServiceKey::~ServiceKey()
{
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, wide(m_path));
}
