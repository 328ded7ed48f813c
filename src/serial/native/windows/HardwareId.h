#pragma once

#include <QString>
#include <QStringList>

/// USB vendor and product, taken from a hardware id such as "USB\VID_16D0&PID_0001".
struct HardwareId
{
    QString vendorId; ///< hexadecimal, in the case of the hardware id; empty if there is none
    QString productId; ///< hexadecimal, in the case of the hardware id; empty if there is none

    /// The regular expression that finds both ids on a Windows of that version: vendor in capture
    /// 1, product in capture 2. @p windowsVersion is the number that the system's versions are
    /// counted by: 16 NT, 32 2000, 48 XP, 64 2003, 128 Vista, 144 Windows 7.
    /// Empty on any other version, and then no id is found.
    static QString pattern(int windowsVersion);

    /// Searches the first of @p hardwareIds with @p pattern, with regard to case.
    /// Both ids stay empty if the list or the pattern is, or if nothing matches.
    static HardwareId parse(const QStringList &hardwareIds, const QString &pattern);
};
