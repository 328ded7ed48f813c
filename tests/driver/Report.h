#pragma once

#include "driver/Script.h"

namespace driver {

/// What goes to standard output, line by line and at once, and the end of a failed run.
namespace report {

/// Exit code of a program whose script has failed.
inline constexpr int failureCode = 3;

/// "ok", the line number and the step.
void ok(const Step &step);
/// "FAIL", the line number, the step and why.
void failed(const ScriptError &error);
/// All steps were carried out.
void done(qsizetype steps);

/// Ends the program with failureCode: by leaving its event loops, or without ceremony if one of
/// them doesn't let go.
void endProgram();

/// Ends the program with failureCode at this very moment, where its event loop has ended already.
[[noreturn]] void endProgramNow();

} // namespace report

} // namespace driver
