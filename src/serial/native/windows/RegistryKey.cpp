#include "RegistryKey.h"

#include <array>

namespace {

/// The room for the name of a value, and for its data, when values are read one after the other.
constexpr DWORD BufferSize = 16384; // bytes

} // namespace

RegistryKey::RegistryKey(const QString &path, REGSAM access)
{
    constexpr DWORD NoOptions = 0;
    const auto *name = reinterpret_cast<const wchar_t *>(path.utf16());
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, name, NoOptions, access, &m_key) != ERROR_SUCCESS) {
        m_key = nullptr;
    }
}

RegistryKey::RegistryKey(HKEY key)
    : m_key(key == INVALID_HANDLE_VALUE ? nullptr : key)
{
}

RegistryKey::~RegistryKey()
{
    if (m_key) {
        RegCloseKey(m_key);
    }
}

std::optional<RegistryKey::Value> RegistryKey::valueAt(DWORD index) const
{
    std::array<wchar_t, BufferSize / sizeof(wchar_t)> name;
    QByteArray data(BufferSize, Qt::Uninitialized);
    auto nameLength = static_cast<DWORD>(name.size());
    DWORD size = BufferSize;
    Value value;
    if (RegEnumValueW(m_key, index, name.data(), &nameLength, nullptr, &value.type,
                      reinterpret_cast<BYTE *>(data.data()), &size)
        != ERROR_SUCCESS) {
        return std::nullopt;
    }
    value.name = QString::fromWCharArray(name.data(), static_cast<qsizetype>(nameLength));
    value.data = data.first(static_cast<qsizetype>(size));
    return value;
}

std::optional<RegistryKey::Value> RegistryKey::value(const QString &name) const
{
    const auto *wideName = reinterpret_cast<const wchar_t *>(name.utf16());
    Value value{name, REG_NONE, {}};
    DWORD size = 0;
    if (RegQueryValueExW(m_key, wideName, nullptr, nullptr, nullptr, &size) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    value.data.resize(static_cast<qsizetype>(size));
    if (RegQueryValueExW(m_key, wideName, nullptr, &value.type,
                         reinterpret_cast<BYTE *>(value.data.data()), &size)
        != ERROR_SUCCESS) {
        return std::nullopt;
    }
    value.data.truncate(static_cast<qsizetype>(size));
    return value;
}

void RegistryKey::notifyOfChange(HANDLE event) const
{
    constexpr BOOL WithSubtree = TRUE;
    constexpr BOOL Asynchronous = TRUE;
    RegNotifyChangeKeyValue(m_key, WithSubtree, REG_NOTIFY_CHANGE_LAST_SET, event, Asynchronous);
}
