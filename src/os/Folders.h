#pragma once

#include <filesystem>
#include <string_view>

namespace corvane {
/// The running program's file, links followed; empty where the system does not tell.
std::filesystem::path ProgramFile();

/// The folder share/NAME that belongs to the program: the first one found in the folders above the program's file.
/// For /usr/bin/corvane it is /usr/share/NAME, wherever the tree has been moved to; a build tree has a share of its
/// own. Where there is none, the place beside the program's folder where it ought to be.
std::filesystem::path SharedFolder(std::string_view name);

/// Where the data of the person at the keyboard goes, for a program of that name; it may not exist yet. Empty where the
/// system names no such place.
std::filesystem::path UserDataFolder(std::string_view name);
} // namespace corvane
