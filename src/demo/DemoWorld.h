#pragma once

#include "core/Result.h"
#include "demo/WorldProgress.h"

#include <cstdint>
#include <filesystem>

namespace corvane {
struct DemoWorldOptions {
    std::filesystem::path OutDir;
    std::filesystem::path DataFolder; ///< holds airports.csv and the other tables
    int AirportLimit = 0;             ///< the most important so many airports and their navaids; 0 for all
};

/// What was written. The counts are those that a build of the world's database must come to.
struct DemoWorldCounts {
    std::int64_t Airports = 0;
    std::int64_t Runways = 0;
    std::int64_t Ils = 0;
    std::int64_t Vors = 0;
    std::int64_t Ndbs = 0;
    std::int64_t Airspaces = 0;        ///< control sectors and Class B areas
    std::int64_t DroppedAirspaces = 0; ///< Class C and D areas, which the database leaves out
    std::int64_t BglFiles = 0;         ///< in the folders of all scenery areas
    std::int64_t OutlinePoints = 0;    ///< vertices, separators not counted
    std::int64_t TerrainPoints = 0;
    std::int64_t TaxiPoints = 0;
    std::int64_t Parkings = 0;
    bool operator==(const DemoWorldCounts&) const = default;
};

/// Where the project's own tables lie: in the folder share/corvane that belongs to the program.
std::filesystem::path DefaultDataFolder();

/// Writes a demonstration world: OutDir/fs2002, a simulator folder with scenery.cfg, magdec.bgl and some hundred
/// scenery files, and OutDir/world.map and OutDir/world_terrain.db. Equal options give equal bytes.
///
/// A demonstration world that already stands there is replaced; any other fs2002 folder is an error. Errors name the
/// file or folder that could not be read or written, and what was written until then is removed.
Result<DemoWorldCounts> WriteDemoWorld(const DemoWorldOptions& options, const WorldProgressCallback& progress = {});
} // namespace corvane
