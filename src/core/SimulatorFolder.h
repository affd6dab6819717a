#pragma once

#include "core/Result.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace corvane {
/// The simulator's main folder: as the settings name it, and where it is. What lies below it is found in any letter
/// case and with either separator.
struct SimulatorFolder {
    std::string Text; ///< 8-bit Windows-1252, as in SettingsRecord::FsPath
    /// As the disk spells it; where there is no such folder, as it is written. It may have letters that Text cannot.
    std::filesystem::path Path;
};

/// The folder that settings name. A relative one counts from the working directory, or, where it is not there, from
/// the settings' own folder.
SimulatorFolder FolderOfSettings(std::string_view fsPath, const std::filesystem::path& appFolder);

/// The folder that a person names, in UTF-8. An Error where the settings could not hold its name.
Result<SimulatorFolder> FolderAsTyped(std::string_view typed);

/// A folder of that name below the settings' own: as an absolute path where the settings can hold it, otherwise as a
/// relative one.
SimulatorFolder FolderBeside(const std::filesystem::path& appFolder, std::string_view name);

/// Where a folder that a person names is, in UTF-8: as SimulatorFolder::Path.
std::filesystem::path TypedPath(std::string_view typed);
} // namespace corvane
