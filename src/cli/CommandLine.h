#pragma once

#include "cli/Console.h"

namespace corvane {
/// Runs one corvane-cli command line. Returns the exit status: 0 done, 1 the work failed, 2 the arguments are wrong.
int RunCommandLine(int argc, const char* const* argv, const Console& console);
} // namespace corvane
