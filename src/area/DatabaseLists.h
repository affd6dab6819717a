#pragma once

#include "area/EarlyEnds.h"
#include "core/ByteSource.h"
#include "core/LatLon.h"
#include "core/Records.h"
#include "core/Result.h"

#include <filesystem>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
/// Lists read from the database. Errors name the file by its full path; a file that ends before its last record does is
/// none: what it lacks reads as blank, and the file is noted in earlyEnds.

/// The entry by which the area chooser lists an airport and a load finds it again: "KSEA - Seattle Tacoma Intl".
std::string AirportListEntry(std::string_view icao, std::string_view name);

/// The entries of all airports, in file order.
Result<std::vector<std::string>> ReadAirportList(ByteSource& airports, EarlyEnds* earlyEnds = nullptr);
Result<std::vector<std::string>> ReadAirportList(const std::filesystem::path& appFolder,
                                                 EarlyEnds* earlyEnds = nullptr);

/// The first count records of the airspaces file, up to the one in which it ends: blank ones would lie nowhere. An
/// Error where count is negative.
Result<std::vector<AirspaceRecord>> ReadAllAirspaces(ByteSource& airspaces, std::int32_t count,
                                                     EarlyEnds* earlyEnds = nullptr);
Result<std::vector<AirspaceRecord>> ReadAllAirspaces(const std::filesystem::path& appFolder, std::int32_t count,
                                                     EarlyEnds* earlyEnds = nullptr);

/// The distinct names (case-sensitive) of the high sectors, in the order in which they first appear.
std::vector<std::string> SectorNames(std::span<const AirspaceRecord> airspaces);

/// Those of the first count records of a navaids file for whose position inside holds, in file order.
/// Records that the file lacks are blank ones at 0, 0, and no more of them than the file is large. An Error where count
/// is negative.
Result<std::vector<NavaidRecord>> ReadNavaids(ByteSource& navaids, std::int32_t count,
                                              const std::function<bool(LatLon)>& inside,
                                              EarlyEnds* earlyEnds = nullptr);
} // namespace corvane
