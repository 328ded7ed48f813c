#pragma once

#include "simulator/protocol/Module.h"

#include <string>
#include <string_view>

namespace simulator {

/// The lines that change the machine around a module, or the module from inside.
class MachineLines
{
public:
    /// Whether lines that start with @p word are of this kind.
    static bool understands(std::string_view word);

    /// Carries out one line of text for @p module:
    ///
    ///     switch SIDE POSITION       a left, right or home switch at this position
    ///     switch SIDE off            no such switch
    ///     encoder HOW [MS]           detections end with success or failure after MS
    ///                                milliseconds, or are endless
    ///     set AP VALUE               changes an axis parameter from inside the module
    ///     release AP                 lets a value that was set be measured again
    ///     range AP MINIMUM MAXIMUM   the module's own range of an axis parameter
    ///
    /// @return an empty text, or in one line what is wrong with @p line, which then changed
    /// nothing.
    static std::string execute(std::string_view line, Module &module);

    /// The lines that execute() understands, one a line, for a help text.
    static std::string help();
};

} // namespace simulator
