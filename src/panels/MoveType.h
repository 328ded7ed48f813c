#pragma once

/// What the type of a MVP command says of its value.
namespace MoveType {

constexpr char Absolute = 0; ///< a position
constexpr char Relative = 1; ///< a distance from the module's actual position

} // namespace MoveType
