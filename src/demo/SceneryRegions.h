#pragma once

#include <span>
#include <string_view>

namespace corvane {
/// A region of the demonstration world: one scenery area with a folder of its own. Letter case and separators differ
/// from region to region on purpose, as they do in real installations.
struct SceneryRegion {
    std::string_view Title;
    std::string_view Folder; ///< on the disk, below the simulator folder
    std::string_view Local;  ///< in scenery.cfg; empty: the absolute path of Folder
};

std::span<const SceneryRegion> SceneryRegions() noexcept;
/// The place in SceneryRegions of the region where an airport lies, by its identifier and, in North America, longitude.
std::size_t RegionOf(std::string_view icao, double lon) noexcept;
} // namespace corvane
