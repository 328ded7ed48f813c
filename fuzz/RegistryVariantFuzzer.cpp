// Values of Windows' registry, in which devices are described. The input's first byte is the type,
// the rest the data.

#include "fuzz/Require.h"
#include "serial/native/windows/RegistryVariant.h"

#include <QByteArray>
#include <QStringList>
#include <QVariant>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size == 0) {
        return 0;
    }
    const quint32 type = data[0];
    // A copy on the heap, where a byte too many is seen.
    const QByteArray bytes(reinterpret_cast<const char *>(data + 1),
                           static_cast<qsizetype>(size) - 1);
    const qsizetype characters = bytes.size() / 2;
    const QVariant value = registryVariant(type, bytes);
    switch (type) {
    case RegistryType::Text:
    case RegistryType::TextWithVariables:
        require(value.typeId() == QMetaType::QString && value.toString().size() <= characters);
        require(!value.toString().contains(QChar::Null));
        break;
    case RegistryType::None:
    case RegistryType::Binary:
        require(value.typeId() == QMetaType::QString && value.toString().size() == characters);
        break;
    case RegistryType::Number:
    case RegistryType::BigEndianNumber:
        require(value.isValid() == (bytes.size() >= 4));
        require(!value.isValid() || value.typeId() == QMetaType::UInt);
        break;
    case RegistryType::TextList: {
        const QStringList texts = value.toStringList();
        require(value.typeId() == QMetaType::QStringList && !texts.contains(QString()));
        require(texts.join(QChar::Null).size() <= characters);
        break;
    }
    default:
        require(!value.isValid());
    }
    return 0;
}
