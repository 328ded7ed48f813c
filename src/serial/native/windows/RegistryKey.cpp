#include "RegistryKey.h"

#include <QStringList>
#include <QtEndian>

#include <algorithm>
#include <array>

namespace {

/// The room for the name of a value, and for its data, when values are read one after the other.
constexpr DWORD BufferSize = 16384; // bytes

QString wideCharacters(const QByteArray &data)
{
    static_assert(sizeof(wchar_t) == sizeof(char16_t));
    QString text(data.size() / qsizetype(sizeof(char16_t)), Qt::Uninitialized);
    std::copy_n(data.cbegin(), text.size() * qsizetype(sizeof(char16_t)),
                reinterpret_cast<char *>(text.data()));
    return text;
}

/// The text before the first zero, which the registry doesn't promise to be there.
QString upToEnd(const QString &text)
{
    return text.left(text.indexOf(QChar::Null));
}

QStringList upToFirstEmpty(const QString &text)
{
    const QStringList all = text.split(QChar::Null);
    const auto end = std::find(all.cbegin(), all.cend(), QString());
    return QStringList(all.cbegin(), end);
}

QVariant number(const QByteArray &data, bool bigEndian)
{
    if (data.size() < qsizetype(sizeof(quint32))) {
        return {};
    }
    return bigEndian ? qFromBigEndian<quint32>(data.constData())
                     : qFromLittleEndian<quint32>(data.constData());
}

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

QVariant registryVariant(DWORD type, const QByteArray &data)
{
    switch (type) {
    case REG_SZ:
    case REG_EXPAND_SZ:
        return upToEnd(wideCharacters(data));
    case REG_NONE:
    case REG_BINARY:
        return wideCharacters(data);
    case REG_DWORD:
        return number(data, false);
    case REG_DWORD_BIG_ENDIAN:
        return number(data, true);
    case REG_MULTI_SZ:
        return upToFirstEmpty(wideCharacters(data));
    default:
        return {};
    }
}
