#pragma once

#include "core/Result.h"
#include "world/Credits.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace corvane {
/// The outlines and the terrain that belong to a world of open data.

/// Where they are made from; docs/maps.md tells what a folder may hold.
struct MapSources {
    std::filesystem::path Outlines; ///< of GSHHG or Natural Earth; empty for none
    std::filesystem::path Terrain;  ///< grids of elevations; empty for none
    std::filesystem::path Tables;   ///< the program's own, coarse: for what has no other source; empty for none
};

/// What is there: the folders "outlines" and "terrain" in the database's folder, GSHHG where distributions put it, the
/// outlines of Natural Earth among FlightGear's data.
///
/// flightGear  the folder of these data; empty for none
MapSources FindMapSources(const std::filesystem::path& appFolder, const std::filesystem::path& tables,
                          const std::filesystem::path& flightGear);

/// What was made; a map that was there already stays.
struct WorldMapCounts {
    std::optional<std::int64_t> OutlinePoints;
    std::optional<std::int64_t> TerrainPoints;
    std::vector<std::string> Made;     ///< what was made of what, a line each, UTF-8
    std::vector<std::string> Unusable; ///< sources that could not be used, "FILE: WHY", UTF-8
};

/// Makes maps in a folder that has none. Unless they are kept, those that were made go again.
class WorldMaps {
public:
    /// Tells the file at hand; false ends the work.
    using Teller = std::function<bool(const std::string&)>;

    WorldMaps(MapSources sources, std::filesystem::path folder, Teller tell);
    WorldMaps(const WorldMaps&) = delete;
    WorldMaps& operator=(const WorldMaps&) = delete;
    WorldMaps(WorldMaps&&) = delete;
    WorldMaps& operator=(WorldMaps&&) = delete;
    ~WorldMaps();

    /// A source that cannot be used is noted, and the next one serves. Errors: the program's own tables
    /// cannot be read, a map cannot be written, or the work was ended.
    Result<void> Make();
    void Keep() noexcept { m_made.clear(); }
    [[nodiscard]] const WorldMapCounts& Counts() const noexcept { return m_counts; }
    [[nodiscard]] const std::vector<SourceCredit>& Credits() const noexcept { return m_credits; }

private:
    Result<void> MakeOutlines(const std::filesystem::path& map);
    Result<void> MakeTerrain(const std::filesystem::path& map);
    Result<void> MakeOwnOutlines(const std::filesystem::path& map);
    Result<void> MakeOwnTerrain(const std::filesystem::path& map);
    void NoteMade(const std::filesystem::path& map, const std::string& source, std::string remark);
    bool NoteUnusable(const Error& error);

    MapSources m_sources;
    std::filesystem::path m_folder;
    Teller m_tell;
    bool m_ended = false;
    std::vector<std::filesystem::path> m_made;
    WorldMapCounts m_counts;
    std::vector<SourceCredit> m_credits;
};
} // namespace corvane
