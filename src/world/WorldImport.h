#pragma once

#include "builder/EncodedRecords.h"
#include "core/Result.h"
#include "core/SimulatorFolder.h"
#include "world/AptFile.h"
#include "world/ImportLog.h"
#include "world/OpenAirFile.h"
#include "world/WorldMaps.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace corvane {
/// The database of a world made of open data: apt.dat, nav.dat and OpenAir files instead of a simulator's scenery.
/// docs/maps.md tells what becomes of what.

struct WorldImport {
    std::filesystem::path AptDat;                 ///< airports; empty for none
    std::filesystem::path NavDat;                 ///< VORs, NDBs and ILS; empty for none
    std::vector<std::filesystem::path> Airspaces; ///< a file that is named twice counts once
    std::filesystem::path AppFolder;              ///< is created where it is not there
    AptOptions Apt;
    MapSources Maps; ///< for outlines and terrain where AppFolder has none
};

/// Where an import is: the file being read, and how much of all of them is done, 0 .. 1.
struct WorldImportProgress {
    std::string File;
    double Done = 0;
};

struct WorldImportCallbacks {
    std::function<bool(const WorldImportProgress&)> Progress; ///< now and then; false ends the import
    ImportLog::Teller PassedOver;                             ///< each line that is passed over
};

struct WorldImportCounts {
    RecordCounts Records;
    AirportsLeftOut Airports;
    std::int64_t IlsWithoutAirport = 0;
    AirspacesLeftOut Airspaces;
    WorldMapCounts Maps;
    std::vector<PassedLines> PassedOver; ///< of each file that has any
};

/// What the settings name as the simulator's folder where the database is made of open data: the database's own folder,
/// or one in it where the settings cannot hold that one's name.
SimulatorFolder FolderOfWorldData(const std::filesystem::path& appFolder);

/// Writes the four database files, the settings, scenery/magdec.bgl (to which the settings point) and the credits;
/// where they are not there, world.map and world_terrain.db.
///
/// magVar  the magnetic variation of the world, 65160 values in the order of MagVarGrid. Where AppFolder is a
///         simulator's own folder, that one's grid stays and is used.
/// Errors name the file that could not be read or written; the database that was there is then as it was, unless the
/// new one could not take its place: then none is left.
Result<WorldImportCounts> ImportWorld(const WorldImport& import, std::span<const std::int16_t> magVar,
                                      const WorldImportCallbacks& callbacks = {});
} // namespace corvane
