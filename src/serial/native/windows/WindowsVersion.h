#pragma once

/// The number by which the versions of Windows are counted where hardware ids are concerned (see
/// HardwareId::pattern()): 16 NT, 32 2000, 48 XP, 64 2003, 128 Vista, 144 Windows 7.
///
/// @p major and @p minor are those of the system, 6 and 1 for Windows 7. A later system counts as
/// Windows 7, since hardware ids have kept that form, and so do the numbers of no known system
/// above it; one before NT counts as 0.
int windowsVersionNumber(int major, int minor);
