#pragma once

#include "cli/Console.h"
#include "cli/FolderOptions.h"
#include "core/Result.h"

#include <CLI/CLI.hpp>

#include <functional>

namespace corvane {
/// What a parsed command line asks for; set by the chosen command, run after parsing.
using CommandWork = std::function<Result<void>()>;

/// Each adds one command. console outlives the parsing and the work.
void AddAlertsCommand(CLI::App& app, const Console& console, CommandWork& work);
void AddAreaCommand(CLI::App& app, const Console& console, CommandWork& work);
void AddBuildCommand(CLI::App& app, const Console& console, CommandWork& work);
void AddCalcCommand(CLI::App& app, const Console& console, CommandWork& work);
void AddDemoWorldCommand(CLI::App& app, const Console& console, CommandWork& work);
void AddDumpCommand(CLI::App& app, const Console& console, CommandWork& work);
void AddHostCommand(CLI::App& app, const Console& console, CommandWork& work);
void AddImportCommand(CLI::App& app, const Console& console, CommandWork& work);
void AddImportWorld(CLI::App& import, const Console& console, CommandWork& work); ///< below the command before
void AddJoinCommand(CLI::App& app, const Console& console, CommandWork& work);
void AddMessageCommand(CLI::App& app, const Console& console, CommandWork& work);
void AddScopeCommand(CLI::App& app, const Console& console, CommandWork& work);
void AddSessionsCommand(CLI::App& app, const Console& console, CommandWork& work);
} // namespace corvane
