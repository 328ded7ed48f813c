#pragma once

#include "serial/LineSettings.h"

#include <qt_windows.h>

/// Between the settings of a line and the record in which Windows keeps them. What a DCB says
/// beyond that is left as it was found.
namespace DcbSettings {

/// The settings that @p dcb holds.
LineSettings load(const DCB &dcb);

/// Puts @p settings into @p dcb. Parity and stop bits have the same numbers on both sides.
void store(const LineSettings &settings, DCB &dcb);

/// Lets bytes pass as they are: binary, without XON and XOFF, zero bytes kept, and an error on the
/// line ends no transfer.
void makeTransparent(DCB &dcb);

} // namespace DcbSettings
