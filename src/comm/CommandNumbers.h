#pragma once

/// Numbers of the commands that the program itself issues. All others reach the module from the
/// direct mode alone, and the handlers treat every number alike.
namespace CommandNumber {

constexpr char RotateRight = 1; ///< ROR; value is the velocity
constexpr char RotateLeft = 2; ///< ROL; value is the velocity
constexpr char MotorStop = 3; ///< MST
constexpr char MoveToPosition = 4; ///< MVP; type 0 absolute, 1 relative; value is the position
constexpr char SetAxisParameter = 5; ///< SAP
constexpr char GetAxisParameter = 6; ///< GAP
constexpr char GetGlobalParameter = 10; ///< GGP
constexpr char SetIO = 14; ///< SIO; type is the port
constexpr char GetIO = 15; ///< GIO; type is the port
constexpr char GetVersion = static_cast<char>(136); ///< type 0 text form, 1 number form

} // namespace CommandNumber
