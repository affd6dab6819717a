#pragma once

#include "core/Settings.h"

#include <array>
#include <filesystem>
#include <string_view>

namespace corvane {
inline constexpr std::string_view AirportsFileName = "world_airports.dat";
inline constexpr std::string_view VorsFileName = "world_vors.dat";
inline constexpr std::string_view NdbsFileName = "world_ndbs.dat";
inline constexpr std::string_view AirspacesFileName = "world_airspaces.dat";

/// The four files that a build writes.
constexpr std::array<std::string_view, 4> DatabaseFileNames() noexcept
{
    return {AirportsFileName, VorsFileName, NdbsFileName, AirspacesFileName};
}

/// The five files without which the program starts over with the set-up: the settings and the database.
constexpr std::array<std::string_view, 5> DataFileNames() noexcept
{
    return {SettingsFileName, AirportsFileName, VorsFileName, NdbsFileName, AirspacesFileName};
}

/// Deletes the settings file and the database files of a folder; files that are not there or cannot be deleted are
/// passed over. The settings go first: without them what is left is no database.
void DeleteDataFiles(const std::filesystem::path& appFolder) noexcept;
} // namespace corvane
