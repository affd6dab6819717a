#include "app/StartupChecks.h"

#include "app/AppState.h"
#include "core/DatabaseFiles.h"
#include "core/File.h"
#include "core/PathLookup.h"

#include <algorithm>

namespace corvane {
std::filesystem::path AppFolderFromText(std::string_view workingDirectory)
{
    if (workingDirectory.size() > 1 && (workingDirectory.ends_with('\\') || workingDirectory.ends_with('/')))
        workingDirectory.remove_suffix(1);
    return PathFromText(workingDirectory);
}

static bool AllDataFilesExist(const std::filesystem::path& appFolder)
{
    const auto names = DataFileNames();
    return std::all_of(names.begin(), names.end(), [&](std::string_view name) { return FileExists(appFolder / name); });
}

static StartupDecision StartOver(AppState& state, StartupDecision decision)
{
    DeleteDataFiles(state.AppFolder);
    state.DatabaseMissing = true;
    return decision;
}

StartupDecision RunStartupChecks(AppState& state)
{
    if (!AllDataFilesExist(state.AppFolder))
        return StartOver(state, StartupDecision::SetUp);
    const std::filesystem::path settingsPath = state.AppFolder / SettingsFileName;
    if (!HasCurrentVersion(settingsPath))
        return StartOver(state, StartupDecision::SetUpAfterUpdateMessage);
    Result<SettingsRecord> settings = ReadSettings(settingsPath);
    if (!settings)
        return StartOver(state, StartupDecision::SetUpAfterUpdateMessage);
    state.Settings = *std::move(settings);
    state.DatabaseMissing = false;
    return StartupDecision::Chooser;
}
} // namespace corvane
