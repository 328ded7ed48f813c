#include "RegistryVariant.h"

#include <QString>
#include <QStringList>
#include <QtEndian>

#include <algorithm>

namespace {

/// The registry's characters are those of QString, in the order of the processor.
QString wideCharacters(const QByteArray &data)
{
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

QVariant registryVariant(quint32 type, const QByteArray &data)
{
    switch (type) {
    case RegistryType::Text:
    case RegistryType::TextWithVariables:
        return upToEnd(wideCharacters(data));
    case RegistryType::None:
    case RegistryType::Binary:
        return wideCharacters(data);
    case RegistryType::Number:
        return number(data, false);
    case RegistryType::BigEndianNumber:
        return number(data, true);
    case RegistryType::TextList:
        return upToFirstEmpty(wideCharacters(data));
    default:
        return {};
    }
}
