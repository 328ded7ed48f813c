#pragma once

#include <QByteArray>
#include <QString>
#include <qt_windows.h>

#include <optional>

/// An open key of the registry, closed at the end.
class RegistryKey
{
public:
    /// One value of a key.
    struct Value
    {
        QString name;
        DWORD type = REG_NONE;
        QByteArray data;
    };

    RegistryKey() = default;
    /// Opens @p path under HKEY_LOCAL_MACHINE with the rights @p access; see isOpen().
    RegistryKey(const QString &path, REGSAM access);
    /// Takes over @p key; null or INVALID_HANDLE_VALUE means none.
    explicit RegistryKey(HKEY key);
    ~RegistryKey();
    RegistryKey(const RegistryKey &) = delete;
    RegistryKey &operator=(const RegistryKey &) = delete;

    bool isOpen() const { return m_key != nullptr; }
    /// Null if the key could not be opened.
    HKEY handle() const { return m_key; }

    /// The value at @p index, counted from 0; nothing behind the last one, and for one whose data
    /// has more than 16384 bytes.
    std::optional<Value> valueAt(DWORD index) const;
    /// The value @p name; nothing if there is none.
    std::optional<Value> value(const QString &name) const;

    /// Has @p event signalled at the next change of a value below the key. Holds for one change,
    /// and for as long as the calling thread lives.
    void notifyOfChange(HANDLE event) const;

private:
    HKEY m_key = nullptr;
};
