#include "cli/FolderOptions.h"

#include "core/Settings.h"
#include "core/SimulatorFolder.h"

namespace corvane {
std::filesystem::path FolderOptions::AppFile(std::string_view name) const
{
    return std::filesystem::path(AppFolder) / name;
}

CLI::Option* AddAppFolderOption(CLI::App& command, FolderOptions& folders)
{
    return command.add_option("--app-folder", folders.AppFolder, "Folder of the settings and database files")
        ->type_name("DIR")
        ->capture_default_str();
}

CLI::Option* AddFsFolderOption(CLI::App& command, FolderOptions& folders)
{
    return command.add_option("--fs-folder", folders.FsFolder, "The simulator's main folder")->type_name("DIR");
}

Result<std::filesystem::path> FindSimulator(const FolderOptions& folders)
{
    if (!folders.FsFolder.empty())
        return TypedPath(folders.FsFolder);
    const Result<SettingsRecord> settings = ReadSettings(folders.AppFile(SettingsFileName));
    if (!settings)
        return settings.error();
    return FolderOfSettings(settings->FsPath, folders.AppFolder).Path;
}
} // namespace corvane
