#include "area/AreaLoad.h"

#include "area/AirportWalk.h"
#include "area/AreaCircle.h"
#include "area/DatabaseLists.h"
#include "area/SectorBox.h"
#include "area/Terrain.h"
#include "area/Tracon.h"
#include "area/WorldOutlines.h"
#include "core/DatabaseFiles.h"
#include "core/Text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <future>
#include <span>
#include <utility>

namespace corvane {
namespace {
struct LoadStep {
    std::string_view Status;
    std::function<Result<void>()> Run;
};

/// An airport's record in the file and its position, noted by the first walk so that no load walks twice.
struct AirportSpot {
    RecordExtent Extent;
    LatLon Position;
};
} // namespace

static Result<void> RunSteps(std::span<const LoadStep> steps, LoadProgress& progress)
{
    for (const LoadStep& step : steps) {
        progress.StepBegins(step.Status);
        if (Result<void> done = progress.RunStep(step.Run); !done)
            return done;
        progress.StepEnded();
    }
    return {};
}

/// A new area that starts from the name, mode and centre of the old one.
static AreaModel EmptyCopy(const AreaModel& area)
{
    AreaModel fresh;
    fresh.AreaName = area.AreaName;
    fresh.AreaMode = area.AreaMode;
    fresh.AreaCenter = area.AreaCenter;
    return fresh;
}

static Result<void> NoteAirports(ByteSource& airports, std::vector<AirportSpot>& spots, EarlyEnds* earlyEnds)
{
    return WalkAirports(
        airports,
        [&](const AirportHead& head, const RecordExtent& extent) {
            spots.push_back({extent, {head.Lat, head.Lon}});
        },
        earlyEnds);
}

static bool IsListEntry(const AirportHead& head, std::string_view entry)
{
    constexpr std::string_view Dash = " - ";
    return entry.size() == head.Icao.size() + Dash.size() + head.Name.size() && entry.starts_with(head.Icao) &&
           entry.substr(head.Icao.size()).starts_with(Dash) && entry.ends_with(head.Name);
}

/// Notes every airport's spot, and makes the one with the chosen entry the area's centre.
static Result<void> SelectAirport(ByteSource& airports, std::string_view airportEntry, AreaModel& area,
                                  std::vector<AirportSpot>& spots, EarlyEnds* earlyEnds)
{
    Result<void> walked = WalkAirports(
        airports,
        [&](const AirportHead& head, const RecordExtent& extent) {
            spots.push_back({extent, {head.Lat, head.Lon}});
            if (!IsListEntry(head, airportEntry))
                return;
            area.AreaName = airportEntry;
            area.AreaMode = ControlMode::Airport;
            area.AreaCenter = {head.Lat, head.Lon};
        },
        earlyEnds);
    if (walked && !(std::isfinite(area.AreaCenter.Lat) && std::isfinite(area.AreaCenter.Lon)))
        return Fail(airports.Name(), "gives no position for " + area.AreaName);
    return walked;
}

template <class Region>
static Result<void> ReadAirports(ByteSource& airports, std::span<const AirportSpot> spots, const Region& region,
                                 std::vector<AirportRecord>& records)
{
    for (const AirportSpot& spot : spots) {
        if (!region.Contains(spot.Position))
            continue;
        Result<AirportRecord> airport = ReadAirportAt(airports, spot.Extent);
        if (!airport)
            return airport.error();
        records.push_back(*std::move(airport));
    }
    return {};
}

template <class Region>
static Result<void> ReadNavaidsIn(ByteSource& file, std::int32_t count, const Region& region,
                                  std::vector<NavaidRecord>& records, EarlyEnds* earlyEnds)
{
    Result<std::vector<NavaidRecord>> navaids = ReadNavaids(
        file, count, [&](LatLon at) { return region.Contains(at); }, earlyEnds);
    if (!navaids)
        return navaids.error();
    records = *std::move(navaids);
    return {};
}

template <class Region>
static Result<void> ReadTerrainIn(ByteSource& file, const Region& region, std::vector<TerrainPoint>& points)
{
    return ReadTerrain(
        file, [&](LatLon at) { return region.Contains(at); }, points);
}

namespace {
/// Terrain and outlines, whose files are filtered on threads of their own while the load goes on with the others; what
/// fails there is told by the step whose turn it is. Small files are left to the steps, as are all where the system has
/// no more threads. The end waits for what has begun, so it must come before that of the files, the region and the
/// area.
class Surroundings {
public:
    /// files, region, area  used until the end
    template <class Region>
    void Begin(AreaFiles& files, const Region& region, const OutlineWindow& window, AreaModel& area)
    {
        m_terrain = std::async(PolicyFor(*files.Terrain),
                               [&] { return ReadTerrainIn(*files.Terrain, region, area.TerrainPoints); });
        m_outlines = std::async(PolicyFor(*files.WorldMap), [&files, &area, window] {
            return CutOutlines(*files.WorldMap, window, area.OutlinePoints);
        });
    }
    Result<void> EndTerrain() { return m_terrain.get(); }
    Result<void> EndOutlines() { return m_outlines.get(); }

private:
    static std::launch PolicyFor(const ByteSource& file)
    {
        constexpr std::uint64_t WorthAThread = 2 << 20; // bytes; a thread's start costs the reading of some 500,000
        return file.Size() < WorthAThread ? std::launch::deferred : std::launch::async | std::launch::deferred;
    }

    std::future<Result<void>> m_terrain;
    std::future<Result<void>> m_outlines;
};
} // namespace

static Result<void> AddTracons(AreaModel& area)
{
    for (const AirportRecord& airport : area.AreaAirports) {
        if (std::optional<AirspaceRecord> tracon = MakeTracon(airport))
            area.AreaAirspaces.push_back(*std::move(tracon));
    }
    return {};
}

/// Boxes across the 180 degree meridian never qualify: no longitude is below their east and above their west bound.
static Result<void> AddAirspacesOverCenter(std::span<const AirspaceRecord> allAirspaces, AreaModel& area)
{
    for (const AirspaceRecord& airspace : allAirspaces) {
        if (airspace.North > area.AreaCenter.Lat && airspace.South < area.AreaCenter.Lat &&
            airspace.East > area.AreaCenter.Lon && airspace.West < area.AreaCenter.Lon)
            area.AreaAirspaces.push_back(airspace);
    }
    return {};
}

static Result<void> SelectSector(std::span<const AirspaceRecord> allAirspaces, std::string_view sectorName,
                                 AreaModel& area, SectorBox& box)
{
    for (const AirspaceRecord& airspace : allAirspaces) {
        if (airspace.Kind == HighSectorKind && airspace.ComName == sectorName) {
            area.AreaAirspaces.push_back(airspace);
            box.FoldIn(airspace);
        }
    }
    if (!box.IsFinite())
        return Fail("ARTCC/FIR sector " + std::string(sectorName), "its airspaces' bounds are no finite numbers");
    const LatLon center = box.Center();
    area.AreaName = sectorName;
    area.AreaMode = ControlMode::Sector;
    area.AreaCenter = center;
    return {};
}

static Result<void> AddNeighbours(std::span<const AirspaceRecord> allAirspaces, const SectorBox& box, AreaModel& area)
{
    const std::string ownName = ToUpper(area.AreaName);
    for (const AirspaceRecord& airspace : allAirspaces) {
        if (airspace.Kind != HighSectorKind || ToUpper(airspace.ComName) == ownName)
            continue;
        if (std::any_of(airspace.Points.begin(), airspace.Points.end(), [&](const BoundaryPoint& point) {
                return box.Touches({point.Lat, point.Lon});
            }))
            area.AreaAirspaces.push_back(airspace);
    }
    return {};
}

Result<AreaFiles> OpenAreaFiles(const std::filesystem::path& appFolder)
{
    auto airports = OpenFileSource(appFolder / AirportsFileName);
    auto vors = OpenFileSource(appFolder / VorsFileName);
    auto ndbs = OpenFileSource(appFolder / NdbsFileName);
    auto terrain = OpenFileSourceIfPresent(appFolder / TerrainFileName);
    auto worldMap = OpenFileSourceIfPresent(appFolder / WorldMapFileName);
    for (const auto* opened : {&airports, &vors, &ndbs, &terrain, &worldMap}) {
        if (!*opened)
            return opened->error();
    }
    return AreaFiles{*std::move(airports), *std::move(vors), *std::move(ndbs), *std::move(terrain),
                     *std::move(worldMap)};
}

Result<void> LoadAirportArea(AreaFiles& files, const SettingsRecord& counts, std::string_view airportEntry,
                             std::vector<AirspaceRecord>& allAirspaces, AreaModel& area, LoadProgress& progress,
                             EarlyEnds* earlyEnds)
{
    AreaModel fresh = EmptyCopy(area);
    EarlyEnds early;
    std::vector<AirportSpot> spots;
    AreaCircle circle({});
    Surroundings surroundings;
    const std::array<LoadStep, AreaLoadSteps> steps{{
        {"Getting selected airport's information...",
         [&] {
             Result<void> selected = SelectAirport(*files.Airports, airportEntry, fresh, spots, &early);
             if (!selected)
                 return selected;
             const LatLon center = fresh.AreaCenter;
             circle = AreaCircle(center);
             surroundings.Begin(files, circle, OutlineWindowAround(center.Lat, center.Lat, center.Lon, center.Lon),
                                fresh);
             return selected;
         }},
        {"Getting area's airports...",
         [&] { return ReadAirports(*files.Airports, spots, circle, fresh.AreaAirports); }},
        {"Getting area's VORs...",
         [&] { return ReadNavaidsIn(*files.Vors, counts.VorCount, circle, fresh.AreaVors, &early); }},
        {"Getting area's NDBs...",
         [&] { return ReadNavaidsIn(*files.Ndbs, counts.NdbCount, circle, fresh.AreaNdbs, &early); }},
        {"Getting area's airspaces...", [&] { return AddAirspacesOverCenter(allAirspaces, fresh); }},
        {"Getting surrounding TRACON airspaces...", [&] { return AddTracons(fresh); }},
        {"Getting terrain info...", [&] { return surroundings.EndTerrain(); }},
        {"Getting world's outlines...", [&] { return surroundings.EndOutlines(); }},
    }};
    if (Result<void> done = RunSteps(steps, progress); !done)
        return done;
    if (earlyEnds != nullptr)
        earlyEnds->Note(early);
    allAirspaces = {};
    area = std::move(fresh);
    return {};
}

Result<void> LoadSectorArea(AreaFiles& files, const SettingsRecord& counts, std::string_view sectorName,
                            std::vector<AirspaceRecord>& allAirspaces, AreaModel& area, LoadProgress& progress,
                            EarlyEnds* earlyEnds)
{
    AreaModel fresh = EmptyCopy(area);
    EarlyEnds early;
    std::vector<AirportSpot> spots;
    SectorBox box;
    Surroundings surroundings;
    const std::array<LoadStep, AreaLoadSteps> steps{{
        {"Getting ARTCC/FIR sector's information...",
         [&] {
             Result<void> selected = SelectSector(allAirspaces, sectorName, fresh, box);
             if (selected)
                 surroundings.Begin(files, box, OutlineWindowAround(box.North, box.South, box.West, box.East), fresh);
             return selected;
         }},
        {"Getting ARTCC/FIR sector's airports...",
         [&] {
             Result<void> walked = NoteAirports(*files.Airports, spots, &early);
             return walked ? ReadAirports(*files.Airports, spots, box, fresh.AreaAirports) : walked;
         }},
        {"Getting ARTCC/FIR sector's VORs...",
         [&] { return ReadNavaidsIn(*files.Vors, counts.VorCount, box, fresh.AreaVors, &early); }},
        {"Getting ARTCC/FIR sector's NDBs...",
         [&] { return ReadNavaidsIn(*files.Ndbs, counts.NdbCount, box, fresh.AreaNdbs, &early); }},
        {"Get all the surrounding ARTCC/FIR airspaces...", [&] { return AddNeighbours(allAirspaces, box, fresh); }},
        {"Getting TRACON airspaces...", [&] { return AddTracons(fresh); }},
        {"Getting terrain info...", [&] { return surroundings.EndTerrain(); }},
        {"Getting world's outlines...", [&] { return surroundings.EndOutlines(); }},
    }};
    if (Result<void> done = RunSteps(steps, progress); !done)
        return done;
    if (earlyEnds != nullptr)
        earlyEnds->Note(early);
    allAirspaces = {};
    area = std::move(fresh);
    return {};
}

Result<void> LoadAirportArea(const std::filesystem::path& appFolder, const SettingsRecord& counts,
                             std::string_view airportEntry, std::vector<AirspaceRecord>& allAirspaces, AreaModel& area,
                             LoadProgress& progress, EarlyEnds* earlyEnds)
{
    Result<AreaFiles> files = OpenAreaFiles(appFolder);
    if (!files)
        return files.error();
    return LoadAirportArea(*files, counts, airportEntry, allAirspaces, area, progress, earlyEnds);
}

Result<void> LoadSectorArea(const std::filesystem::path& appFolder, const SettingsRecord& counts,
                            std::string_view sectorName, std::vector<AirspaceRecord>& allAirspaces, AreaModel& area,
                            LoadProgress& progress, EarlyEnds* earlyEnds)
{
    Result<AreaFiles> files = OpenAreaFiles(appFolder);
    if (!files)
        return files.error();
    return LoadSectorArea(*files, counts, sectorName, allAirspaces, area, progress, earlyEnds);
}
} // namespace corvane
