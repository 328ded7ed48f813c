#pragma once

#include <QByteArray>
#include <QVariant>

/// How the data of a value in the registry is meant, by the numbers that Windows has for it.
namespace RegistryType {

constexpr quint32 None = 0;
constexpr quint32 Text = 1;
constexpr quint32 TextWithVariables = 2;
constexpr quint32 Binary = 3;
constexpr quint32 Number = 4;
constexpr quint32 BigEndianNumber = 5;
constexpr quint32 TextList = 7;

} // namespace RegistryType

/// What the @p data of a value of @p type says: a string, a number, or a list of strings; nothing
/// for any other type. Data that ends before its time ends the string or the list.
QVariant registryVariant(quint32 type, const QByteArray &data);
