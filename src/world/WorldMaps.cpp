#include "world/WorldMaps.h"

#include "area/Terrain.h"
#include "area/WorldOutlines.h"
#include "core/AtomicFile.h"
#include "core/File.h"
#include "demo/WorldData.h"
#include "demo/WorldFiles.h"
#include "import/MapImport.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace corvane {
namespace fs = std::filesystem;

static bool IsFolder(const fs::path& path)
{
    std::error_code ignored;
    return fs::is_directory(path, ignored);
}

MapSources FindMapSources(const fs::path& appFolder, const fs::path& tables, const fs::path& flightGear)
{
    MapSources sources;
    sources.Tables = tables;
    if (IsFolder(appFolder / "terrain"))
        sources.Terrain = appFolder / "terrain";
    std::vector<fs::path> folders = {appFolder / "outlines", "/usr/share/gmt-gshhg", "/usr/share/gshhg-gmt-nc4",
                                     "/usr/share/gmt/coast"};
    if (!flightGear.empty())
        folders.push_back(flightGear / "Geodata");
    if (const auto found = std::ranges::find_if(folders, IsFolder); found != folders.end())
        sources.Outlines = *found;
    return sources;
}

WorldMaps::WorldMaps(MapSources sources, fs::path folder, Teller tell)
    : m_sources(std::move(sources)), m_folder(std::move(folder)), m_tell(std::move(tell))
{
}

WorldMaps::~WorldMaps()
{
    for (const fs::path& map : m_made)
        DeleteFile(map);
}

void WorldMaps::NoteMade(const fs::path& map, const std::string& source, std::string remark)
{
    m_made.push_back(map);
    m_counts.Made.push_back(map.filename().string() + " is made of " + source);
    m_credits.push_back({source, {std::move(remark)}});
}

/// False where the work was ended rather than the source faulty.
bool WorldMaps::NoteUnusable(const Error& error)
{
    if (!m_ended)
        m_counts.Unusable.push_back(error.What + ": " + error.Why);
    return !m_ended;
}

Result<void> WorldMaps::MakeOwnOutlines(const fs::path& map)
{
    const Result<WorldData> own = LoadMapData(m_sources.Tables);
    if (!own)
        return own.error();
    Bytes bytes;
    std::int64_t points = 0;
    for (const auto* lines : {&own->Outlines, &own->Borders}) {
        AppendWorldMap(bytes, *lines);
        for (const Polyline& line : *lines)
            points += static_cast<std::int64_t>(line.size());
    }
    if (Result<void> written = WriteFileAtomically(map, bytes); !written)
        return written;
    m_counts.OutlinePoints = points;
    NoteMade(map, "Corvane's own coastlines", "Natural Earth, 1:50 million; public domain");
    return {};
}

Result<void> WorldMaps::MakeOwnTerrain(const fs::path& map)
{
    const Result<WorldData> own = LoadMapData(m_sources.Tables);
    if (!own)
        return own.error();
    if (Result<void> written = WriteFileAtomically(map, TerrainFile(own->Terrain)); !written)
        return written;
    m_counts.TerrainPoints = static_cast<std::int64_t>(own->Terrain.size());
    NoteMade(map, "Corvane's own coarse terrain of some regions", "ETOPO5, NOAA; public domain");
    return {};
}

Result<void> WorldMaps::MakeOutlines(const fs::path& map)
{
    if (!m_sources.Outlines.empty()) {
        const auto counts =
            ImportOutlines({{m_sources.Outlines}, {}, map, true}, [this](const ImportProgress& progress) {
                m_ended = !m_tell(progress.File);
                return !m_ended;
            });
        if (counts) {
            m_counts.OutlinePoints = counts->Points;
            NoteMade(map, FullName(m_sources.Outlines), "coastlines and borders; their publisher's licence holds");
            return {};
        }
        if (!NoteUnusable(counts.error()))
            return counts.error();
    }
    return m_sources.Tables.empty() ? Result<void>() : MakeOwnOutlines(map);
}

Result<void> WorldMaps::MakeTerrain(const fs::path& map)
{
    if (!m_sources.Terrain.empty()) {
        const auto counts = ImportTerrain({{m_sources.Terrain}, map}, [this](const ImportProgress& progress) {
            m_ended = !m_tell(progress.File);
            return !m_ended;
        });
        if (counts) {
            m_counts.TerrainPoints = counts->Points;
            NoteMade(map, FullName(m_sources.Terrain), "elevations; their publisher's licence holds");
            return {};
        }
        if (!NoteUnusable(counts.error()))
            return counts.error();
    }
    return m_sources.Tables.empty() ? Result<void>() : MakeOwnTerrain(map);
}

Result<void> WorldMaps::Make()
{
    const fs::path outlines = m_folder / WorldMapFileName;
    const fs::path terrain = m_folder / TerrainFileName;
    std::error_code ignored;
    Result<void> done;
    if (!fs::exists(fs::symlink_status(outlines, ignored)))
        done = MakeOutlines(outlines);
    if (done && !fs::exists(fs::symlink_status(terrain, ignored)))
        done = MakeTerrain(terrain);
    return done;
}
} // namespace corvane
