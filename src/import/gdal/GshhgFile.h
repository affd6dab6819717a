#pragma once

#include "core/Geodesy.h"
#include "core/Result.h"

#include <filesystem>
#include <vector>

namespace corvane {
/// Whether a file is of the kind that GSHHG's packages of binned lines consist of: netCDF.
bool IsNetCdf(const std::filesystem::path& path);

/// Reads the lines of GSHHG as Debian's packages gmt-gshhg-low, -high and -full hold them: cut at the edges of bins of
/// so many degrees, which are joined here. Of coasts (binned_GSHHS_*.nc) come land, lakes, islands in these, ponds and
/// the front of Antarctica's ice; of borders (binned_border_*.nc) those between countries; of rivers all.
///
/// In a file of 16-bit numbers, 65535 is a bin's width. Lines end at 180 degrees and go on at -180.
/// Needs a GdalSession. Errors name the file.
Result<std::vector<std::vector<LatLon>>> ReadGshhg(const std::filesystem::path& path);
} // namespace corvane
