// The settings file as the import reads it. Any bytes have to give numbers without a crash, and the
// same numbers in whatever case names are written or asked for.

#include "app/SettingsFileContent.h"
#include "app/SettingsGroup.h"
#include "fuzz/Require.h"

#include <QByteArray>

#include <cstddef>
#include <cstdint>

namespace {

QByteArray withSwappedCase(QByteArrayView text)
{
    QByteArray swapped = text.toByteArray();
    for (char &byte : swapped) {
        if ((byte >= 'a' && byte <= 'z') || (byte >= 'A' && byte <= 'Z')) {
            byte = static_cast<char>(byte ^ 0x20);
        }
    }
    return swapped;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArrayView text(data, static_cast<qsizetype>(size));
    const SettingsFileContent content(text);
    const SettingsFileContent contentInOtherCase(withSwappedCase(text));
    for (const SettingsGroup &group : SettingsGroups::ImportOrder) {
        for (const AxisParameter &parameter : group.parameters) {
            const int number = content.number(group.section, parameter.settingsKey);
            require(number
                    == content.number(group.section.toString().toUpper(),
                                      parameter.settingsKey.toString().toLower()));
            require(number == contentInOtherCase.number(group.section, parameter.settingsKey));
        }
    }
    return 0;
}
