#pragma once

#include "core/LatLon.h"
#include "core/Result.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace corvane {
/// Makes the map files of the radar from what map makers have: outlines and elevations in the formats that GDAL reads.
/// GDAL is loaded by these functions and by nothing else, with the module corvane-gdal. Without the module or without
/// GDAL they fail with an Error that says what to install.

/// Where an import is: the file at hand, and how many of the files are done, the part of the one at hand included.
struct ImportProgress {
    std::string File;
    double FilesDone = 0;
    std::size_t FileCount = 0;
};
/// Called now and then; false stops the import, which fails then.
using ImportProgressCallback = std::function<bool(const ImportProgress&)>;

/// The box around everything that was written, in degrees; it does not look for a short way across 180 degrees.
struct MapBounds {
    double South = 90;
    double West = 180;
    double North = -90;
    double East = -180;

    void Include(LatLon at) noexcept;
    bool operator==(const MapBounds&) const = default;
};

struct OutlineImport {
    std::vector<std::filesystem::path> Files; ///< and folders, see OutlineFilesIn
    std::vector<std::string> Layers;          ///< only the layers of these names; empty: all
    std::filesystem::path Out;
    bool Unbroken = false; ///< lines are written so that no zoom of the radar shows holes in them
};
struct OutlineCounts {
    std::int64_t Lines = 0;
    std::int64_t Points = 0; ///< vertices as written, separators not counted
    MapBounds Bounds;
};

/// Writes every line and every edge of an area in the files to a world.map, in the order of the files.
///
/// Positions are brought to WGS 84; a file without a coordinate system is taken for one in its degrees. Edges along 180
/// degrees and the poles are left out: there world maps are cut, not coasts. Points count for nothing.
/// Errors: a file that is missing, unreadable, holds no line or a position that is none. Out is then as it was.
Result<OutlineCounts> ImportOutlines(const OutlineImport& import, const ImportProgressCallback& progress = {});

inline constexpr double SmallestTerrainCellNm = 0.1;
inline constexpr double LargestTerrainCellNm = 60;

struct TerrainImport {
    std::vector<std::filesystem::path> Files; ///< and folders, see TerrainFilesIn
    std::filesystem::path Out;
    double EveryNm = 5; ///< SmallestTerrainCellNm .. LargestTerrainCellNm: side of a cell
};
struct TerrainCounts {
    std::int64_t Samples = 0; ///< elevations read
    std::int64_t Voids = 0;   ///< places without one
    std::int64_t Points = 0;  ///< records written, one a cell
    MapBounds Bounds;
};

/// Writes the highest sample of each cell of the world to a world_terrain.db, from south to north.
///
/// The first band of each file counts, in metres or in feet, as the file says; metres where it says nothing. Places
/// that the file marks as without data are void, and so is what no land on earth has: below -500 or above 9000 metres.
/// Errors: a file that is missing, unreadable, not elevations, or without any sample. Out is then as it was.
Result<TerrainCounts> ImportTerrain(const TerrainImport& import, const ImportProgressCallback& progress = {});
} // namespace corvane
