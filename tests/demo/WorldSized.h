#pragma once

#include "core/Result.h"
#include "demo/WorldProgress.h"

#include <cstdint>
#include <filesystem>

namespace corvane {
/// A world of invented airports for measuring: how large it is. 20,000 airports come to 3,000 scenery files, more than
/// 1,000,000 taxi points and more than 150 MB; other counts in proportion.
struct WorldSizedOptions {
    std::filesystem::path OutDir;
    int AirportCount = 20000;       ///< 1 .. 400000
    std::int64_t MapPoints = 0;     ///< vertices of world.map; 0: the file is not written
    std::int64_t TerrainPoints = 0; ///< records of world_terrain.db; 0: the file is not written
};

struct WorldSizedCounts {
    std::int64_t Airports = 0;
    std::int64_t TaxiPoints = 0;
    std::int64_t Vors = 0;
    std::int64_t Ndbs = 0;
    std::int64_t Airspaces = 0;
    std::int64_t BglFiles = 0;
    std::int64_t SceneryBytes = 0;
};

/// Writes OutDir/fs2002 and the map files asked for. Equal options give equal bytes; needs no data files. Errors and
/// folders that already exist are treated as WriteDemoWorld does.
Result<WorldSizedCounts> WriteWorldSizedFolder(const WorldSizedOptions& options,
                                               const WorldProgressCallback& progress = {});
} // namespace corvane
