#include "app/StartupChecks.h"

#include "app/AppState.h"
#include "core/DatabaseFiles.h"
#include "core/File.h"
#include "core/MessageBoxes.h"
#include "core/PathLookup.h"

#include <system_error>

namespace corvane {
std::filesystem::path WithoutTrailingSeparator(const std::filesystem::path& workingDirectory)
{
    std::filesystem::path::string_type folder = workingDirectory.native();
    if (folder.size() > 1 && (folder.back() == '\\' || folder.back() == '/'))
        folder.pop_back();
    return folder;
}

static Result<bool> AllDataFilesExist(const std::filesystem::path& appFolder)
{
    bool all = true;
    for (const std::string_view name : DataFileNames()) {
        std::error_code unknown;
        all = std::filesystem::exists(appFolder / name, unknown) && all;
        if (IsObstacle(unknown))
            return Fail(FullName(appFolder / name), unknown.message());
    }
    return all;
}

static StartupDecision StartOver(AppState& state, StartupDecision decision)
{
    DeleteDataFiles(state.AppFolder);
    return decision;
}

std::string StartupFailureText(const Error& failure)
{
    return BoxText(failure) + ". Nothing was changed. Make the file readable, or delete it to set up Corvane again. "
                              "Now the program will end.";
}

Result<StartupDecision> RunStartupChecks(AppState& state)
{
    const Result<bool> complete = AllDataFilesExist(state.AppFolder);
    if (!complete)
        return complete.error();
    if (!*complete)
        return StartOver(state, StartupDecision::SetUp);
    const std::filesystem::path settingsPath = state.AppFolder / SettingsFileName;
    const Result<bool> current = HasCurrentVersion(settingsPath);
    if (!current)
        return current.error();
    if (!*current)
        return StartOver(state, StartupDecision::SetUpAfterUpdateMessage);
    Result<SettingsRecord> settings = ReadSettings(settingsPath);
    if (!settings)
        return settings.error();
    state.Settings = *std::move(settings);
    return StartupDecision::Chooser;
}
} // namespace corvane
