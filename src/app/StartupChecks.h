#pragma once

#include "core/Result.h"

#include <cstdint>
#include <filesystem>
#include <string>
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

/// The folder without one trailing separator ("\" or "/"): a drive's root "C:\" becomes "C:". The root "/" alone stays,
/// because nothing would be left of it.
std::filesystem::path WithoutTrailingSeparator(const std::filesystem::path& workingDirectory);

/// Looks for the data files in state.AppFolder and reads the settings.
///
/// Where one is missing, or the settings were read and are another version's, all five are deleted. An Error, with
/// nothing deleted, names the file of which the disk would not tell whether it is there, or settings that cannot be
/// read or are cut short behind this version's text.
Result<StartupDecision> RunStartupChecks(AppState& state);
/// What the user is told of such an Error, after which the program ends.
std::string StartupFailureText(const Error& failure);
} // namespace corvane
