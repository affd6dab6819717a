#pragma once

#include "core/Result.h"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <string>
#include <string_view>

namespace corvane {
/// The folders that most commands share, as given on the command line.
struct FolderOptions {
    std::string AppFolder = "."; ///< settings, database files, world.map, world_terrain.db
    std::string FsFolder;        ///< the simulator's main folder; empty where not given

    [[nodiscard]] std::filesystem::path AppFile(std::string_view name) const;
};

CLI::Option* AddAppFolderOption(CLI::App& command, FolderOptions& folders);
CLI::Option* AddFsFolderOption(CLI::App& command, FolderOptions& folders);

/// Where the simulator's folder is: --fs-folder, or else FsPath of the settings file.
Result<std::filesystem::path> FindSimulator(const FolderOptions& folders);
} // namespace corvane
