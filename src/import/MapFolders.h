#pragma once

#include "core/Result.h"

#include <filesystem>
#include <span>
#include <vector>

namespace corvane {
/// The files of maps that lie in folders as their publishers arrange them.

/// Puts the files of a known map into the place of each folder among paths; files stay as they are.
///
/// Known are the packages of GSHHG's lines (binned_GSHHS_l.nc and its like), its shapefiles (GSHHS_shp), and the
/// shapefiles of Natural Earth, each with its borders where they are there. Of several resolutions the one that suits a
/// whole world is taken. A folder that holds none of them is an error.
Result<std::vector<std::filesystem::path>> OutlineFilesIn(std::span<const std::filesystem::path> paths);

/// Puts the grids of elevations in a folder and the folders below it, in the order of their names, into the place of
/// each folder among paths. A folder without any is an error.
Result<std::vector<std::filesystem::path>> TerrainFilesIn(std::span<const std::filesystem::path> paths);
} // namespace corvane
