#include "HardwareId.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

QString HardwareId::pattern(int windowsVersion)
{
    switch (windowsVersion) {
    case 16: // NT
    case 32: // 2000
    case 48: // XP
    case 64: // 2003
        return u"Vid_(\\w+)&Pid_(\\w+)"_s;
    case 128: // Vista
    case 144: // Windows 7
        return u"VID_(\\w+)&PID_(\\w+)"_s;
    default:
        // By design a version outside the table has no pattern; its ports all lack their ids.
        return {};
    }
}

HardwareId HardwareId::parse(const QStringList &hardwareIds, const QString &pattern)
{
    if (hardwareIds.isEmpty()) {
        return {};
    }
    // An empty pattern matches everywhere, but has no groups: its captures are empty strings.
    const auto match = QRegularExpression(pattern).match(hardwareIds.constFirst());
    return {match.captured(1), match.captured(2)};
}
