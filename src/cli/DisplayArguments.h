#pragma once

#include "area/AreaModel.h"
#include "core/Result.h"
#include "radar/DisplayOptions.h"

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace corvane {
/// Which display a command draws or watches by, as its options give it.
struct DisplayArguments {
    std::string Display; ///< the ready set's name; empty where not given
    std::vector<std::string> Set;
};

/// Adds --set, whose values are checked while the command line is parsed.
void AddSetOption(CLI::App& command, DisplayArguments& arguments);
/// Adds --display and --set.
void AddDisplayOptions(CLI::App& command, DisplayArguments& arguments);

/// The ready set (that of fallback where none is named) with the values that --set changes.
Result<DisplayOptions> DisplayOptionsOf(const DisplayArguments& arguments, ControlMode mode, std::string_view fallback);
} // namespace corvane
