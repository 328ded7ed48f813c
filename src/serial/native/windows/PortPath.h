#pragma once

#include <QString>

#include <string>

/// The path by which Windows opens the port @p name: every port but the first nine needs the prefix
/// of the devices, and the others take it as well.
inline std::wstring portPath(const QString &name)
{
    return L"\\\\.\\" + name.toStdWString();
}
