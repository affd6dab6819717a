#pragma once

#include "cli/CommandLine.h"
#include "core/Result.h"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

namespace corvane {
/// What a parsed command line asks for; set by the chosen command, run after parsing.
using CommandWork = std::function<Result<void>()>;

/// The folders that most commands share, as given on the command line.
struct FolderOptions {
    std::string AppFolder = "."; ///< settings, database files, world.map, world_terrain.db
    std::string FsFolder;        ///< the simulator's main folder; empty where not given

    [[nodiscard]] std::filesystem::path AppFile(std::string_view name) const;
};

CLI::Option* AddAppFolderOption(CLI::App& command, FolderOptions& folders);
CLI::Option* AddFsFolderOption(CLI::App& command, FolderOptions& folders);

/// The simulator's folder as 8-bit text: --fs-folder, or else FsPath of the settings file.
Result<std::string> SimulatorFolder(const FolderOptions& folders);

/// Each adds one command. console outlives the parsing and the work.
void AddAlertsCommand(CLI::App& app, const Console& console, CommandWork& work);
void AddAreaCommand(CLI::App& app, const Console& console, CommandWork& work);
void AddBuildCommand(CLI::App& app, const Console& console, CommandWork& work);
void AddCalcCommand(CLI::App& app, const Console& console, CommandWork& work);
void AddDemoWorldCommand(CLI::App& app, const Console& console, CommandWork& work);
void AddDumpCommand(CLI::App& app, const Console& console, CommandWork& work);
void AddHostCommand(CLI::App& app, const Console& console, CommandWork& work);
void AddImportCommand(CLI::App& app, const Console& console, CommandWork& work);
void AddJoinCommand(CLI::App& app, const Console& console, CommandWork& work);
void AddMessageCommand(CLI::App& app, const Console& console, CommandWork& work);
void AddScopeCommand(CLI::App& app, const Console& console, CommandWork& work);
void AddSessionsCommand(CLI::App& app, const Console& console, CommandWork& work);
} // namespace corvane
