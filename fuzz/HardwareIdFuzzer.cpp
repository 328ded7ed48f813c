// Hardware ids as a device's driver wrote them. Each line of the input is one id, the first line's
// first byte chooses the version of the system whose form they are read in.

#include "fuzz/Require.h"
#include "serial/native/windows/HardwareId.h"

#include <QByteArray>

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace {

bool isWord(const QString &text)
{
    return std::all_of(text.cbegin(), text.cend(),
                       [](QChar c) { return c.isLetterOrNumber() || c.isMark() || c == u'_'; });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    if (size == 0) {
        return 0;
    }
    const QByteArrayView text(data + 1, static_cast<qsizetype>(size) - 1);
    const QStringList ids = QString::fromUtf8(text).split(u'\n');
    const QString pattern = HardwareId::pattern(data[0]);
    const HardwareId id = HardwareId::parse(ids, pattern);
    require(id.vendorId.isEmpty() == id.productId.isEmpty());
    require(isWord(id.vendorId) && isWord(id.productId));
    if (!id.vendorId.isEmpty()) {
        require(!pattern.isEmpty());
        require(ids.constFirst().contains(u'_' + id.vendorId + u'&'));
        require(ids.constFirst().contains(u'_' + id.productId));
    }
    return 0;
}
