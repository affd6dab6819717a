#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>

namespace corvane {
struct AppState;

inline constexpr int StartupDelayMs = 3000;
inline constexpr std::string_view UpdateDatabaseMessage =
    "Corvane needs to update your database files, as a result, it needs to create again the database files.";

/// What follows the splash window.
enum class StartupDecision : std::uint8_t {
    SetUp,                   ///< the set-up, without a word
    SetUpAfterUpdateMessage, ///< UpdateDatabaseMessage, then the set-up
    Chooser,                 ///< the area chooser
};

/// The folder that a path names, without one trailing separator ("\" or "/"): a drive's root "C:\" becomes "C:". The
/// root "/" alone stays, because nothing would be left of it. 8-bit text.
std::filesystem::path AppFolderFromText(std::string_view workingDirectory);

/// Looks for the data files in state.AppFolder and reads the settings.
///
/// Where one is missing, or the settings are another version's, all five are deleted. Settings of this version that are
/// cut short are treated the same way: without the counts the database cannot be read.
StartupDecision RunStartupChecks(AppState& state);
} // namespace corvane
