#include "app/SetUpModel.h"

#include "app/AppState.h"
#include "core/File.h"
#include "core/PathLookup.h"
#include "core/Text.h"

#include <filesystem>
#include <system_error>
#include <vector>

namespace corvane {
static bool IsSeparator(char c) noexcept
{
    return c == '\\' || c == '/';
}

std::string SetUpModel::PathAfterChange(std::string_view text)
{
    constexpr std::size_t DriveRootLength = 3;
    std::string path(text);
    if (Utf8ToWindows1252(text).size() == DriveRootLength && // a byte a character
        !IsSeparator(path.front()))                          // "/tm" is an absolute path half typed
        std::erase_if(path, IsSeparator);
    return path;
}

static bool HoldsSimulator(std::string_view folder)
{
    const auto program = FindPath({}, std::string(folder) + "\\fs2002.exe");
    std::error_code ignored;
    return program && std::filesystem::is_regular_file(*program, ignored);
}

void SetUpModel::OptionClicked() noexcept
{
    m_state.Settings.FsVersion = Fs2002Version;
}

bool SetUpModel::NextStep(std::string_view path, bool fs2002Selected)
{
    while (path.size() > 1 && IsSeparator(path.back())) // the settings name a folder without one
        path.remove_suffix(1);
    if (!HoldsSimulator(path)) {
        m_boxes.Warn("The directory or path that you selected is not your currently FS2002 main folder, because this "
                     "program didn't found the FS2002.EXE file. Please try again.");
        return false;
    }
    const std::optional<std::string> stored = Utf8ToWindows1252Exactly(path);
    if (!stored) {
        m_boxes.Warn(
            "The settings file cannot hold the path of this folder, because it has letters that are not in the "
            "Windows-1252 code page. Please rename the folder, or select another one.");
        return false;
    }
    SettingsRecord settings = m_state.Settings;
    settings.VersionText = SettingsVersionText;
    settings.RecordMark = 1;
    if (fs2002Selected)
        settings.FsVersion = Fs2002Version;
    settings.FsPath = *stored;
    if (const Result<void> written = WriteSettings(m_state.AppFolder / SettingsFileName, settings); !written) {
        m_boxes.Inform(BoxText(written.error()) +
                       ". The settings were not saved. Make the folder writable, or start Corvane in another one.");
        return false;
    }
    m_state.Settings = std::move(settings);
    m_boxes.Inform("Settings file created successfully!");
    m_setupFinished = true;
    return true;
}

/// Deletes every "*.tcs", in any letter case.
static void DeleteSettingsFiles(const std::filesystem::path& folder)
{
    std::vector<std::filesystem::path> found; // deleting while listing may upset the listing
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        if (ToLower(entry->path().filename().string()).ends_with(".tcs"))
            found.push_back(entry->path());
    }
    for (const std::filesystem::path& path : found)
        DeleteFile(path);
}

bool SetUpModel::Close()
{
    if (m_setupFinished)
        return false;
    DeleteSettingsFiles(m_state.AppFolder);
    m_boxes.Inform("You didn't finish setup process, program will end");
    return true;
}
} // namespace corvane
