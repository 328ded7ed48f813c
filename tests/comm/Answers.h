#pragma once

#include <QString>

/// Answers of a module on the serial line, as ScriptedPort takes them: from address 1 to address 2,
/// carried out (100), command 6, the value of the name, checksum.
inline constexpr auto Answer300 = "02 01 64 06 00 00 01 2c 9a";
inline constexpr auto Answer7 = "02 01 64 06 00 00 00 07 74";
inline constexpr auto Answer8 = "02 01 64 06 00 00 00 08 75";

/// How SignalLog tells of a module on @p port that is gone or silent.
inline QString detached(const QString &port)
{
    return QStringLiteral("handleDetachedDevice(%1)").arg(port);
}
