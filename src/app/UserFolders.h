#pragma once

#include "core/Result.h"

#include <filesystem>

namespace corvane {
/// Folders that an installed program makes for the person who starts it from a menu rather than in a folder of theirs.
/// Errors name the file or folder that could not be made.

/// A folder for settings and database, created where needed.
///
/// folder  empty where the system names no place for it: an Error
Result<std::filesystem::path> PrepareUserFolder(const std::filesystem::path& folder);

/// A folder with the demonstration world in fs2002 below it, and its database. What has settings already stays as it
/// is; otherwise this takes a second or so, and leaves no unfinished database behind.
Result<std::filesystem::path> PrepareDemonstration(const std::filesystem::path& folder);
} // namespace corvane
