#include "demo/DemoWorld.h"

#include "core/File.h"
#include "core/NumberText.h"
#include "core/PathLookup.h"
#include "core/Rounding.h"
#include "core/Text.h"
#include "demo/AirportScenery.h"
#include "demo/AirspaceScenery.h"
#include "demo/BglFileWriter.h"
#include "demo/FolderWriter.h"
#include "demo/RegionContent.h"
#include "demo/SceneryRegions.h"
#include "demo/WorldData.h"
#include "demo/WorldFiles.h"
#include "os/Folders.h"

#include <algorithm>
#include <array>
#include <set>
#include <string>

namespace corvane {
namespace fs = std::filesystem;

static constexpr std::size_t AirportsPerFile = 20;
static constexpr std::size_t StationsPerFile = 60;
static constexpr std::size_t SectorsPerFile = 20;

/// By rank: who has a Class C and a Class D area, after the busiest with their Class B.
static constexpr std::size_t ClassCUpToRank = 200;
static constexpr std::size_t ClassDUpToRank = 500;

static constexpr std::string_view WorldFolder = "Scenery/World/Scenery";
static constexpr std::string_view BaseFolder = "Scenery";

namespace {
class DemoWorldWriter {
public:
    DemoWorldWriter(const DemoWorldOptions& options, const WorldData& world, const WorldProgressCallback& progress);
    Result<DemoWorldCounts> Write();

private:
    Result<void> WriteFile(const fs::path& path, ByteSpan content);
    Result<void> WriteScenery(const fs::path& folder, const std::string& name, const Bytes& content);
    Result<void> WriteRegion(const SceneryRegion& region, const RegionContent& content);
    Result<void> WriteAirports(const fs::path& folder, std::span<const RankedAirport> airports);
    Result<void> WriteNavaids(const fs::path& folder, std::span<const NavaidSource* const> navaids);
    Result<void> WriteClassAreas(const fs::path& folder, std::span<const RankedAirport> airports);
    Result<void> WriteUninteresting(const fs::path& folder);
    Result<void> WriteSectors();
    Result<void> WriteBase();
    Result<void> WriteMaps();

    void AddAirport(BglFileWriter& file, const RankedAirport& airport);
    void AddClassAreas(BglFileWriter& file, const RankedAirport& airport);
    [[nodiscard]] std::string AbsoluteLocal(const SceneryRegion& region) const;
    [[nodiscard]] int FileTotal() const;

    const DemoWorldOptions& m_options;
    const WorldData& m_world;
    const WorldProgressCallback& m_progress;
    std::vector<AirportRadio> m_radio;
    std::vector<RegionContent> m_regions;
    FolderWriter m_folder;
    DemoWorldCounts m_counts;
    std::string m_step;
    int m_filesDone = 0;
};
} // namespace

DemoWorldWriter::DemoWorldWriter(const DemoWorldOptions& options, const WorldData& world,
                                 const WorldProgressCallback& progress)
    : m_options(options),
      m_world(world),
      m_progress(progress),
      m_radio(PlanRadio(world.Airports)),
      m_regions(ContentByRegion(world, m_radio)),
      m_folder(options.OutDir)
{
}

static std::size_t PartCount(std::size_t size, std::size_t perPart)
{
    return (size + perPart - 1) / perPart;
}

template <class T> static std::span<const T> PartOf(std::span<const T> all, std::size_t part, std::size_t perPart)
{
    const std::size_t first = part * perPart;
    return all.subspan(first, std::min(perPart, all.size() - first));
}

int DemoWorldWriter::FileTotal() const
{
    constexpr std::size_t PerRegion = 2; // class areas and a file of no interest
    constexpr std::size_t Others = 6;    // program, magdec, two small files, world.map, terrain
    std::size_t total = PartCount(m_world.Sectors.size(), SectorsPerFile) + Others + 1;
    for (const RegionContent& region : m_regions)
        total += PartCount(region.Airports.size(), AirportsPerFile) +
                 PartCount(region.Navaids.size(), StationsPerFile) + PerRegion;
    return static_cast<int>(total);
}

Result<void> DemoWorldWriter::WriteFile(const fs::path& path, ByteSpan content)
{
    Result<void> written = m_folder.Write(path, content);
    ++m_filesDone;
    if (written && m_progress)
        m_progress({m_step, m_filesDone, FileTotal()});
    return written;
}

Result<void> DemoWorldWriter::WriteScenery(const fs::path& folder, const std::string& name, const Bytes& content)
{
    ++m_counts.BglFiles;
    return WriteFile("fs2002" / folder / name, content);
}

/// A numbered file name whose letter case changes from file to file.
static std::string SceneryName(std::string_view kind, std::size_t number)
{
    struct Spelling {
        bool UpperKind;
        std::string_view Extension;
    };
    constexpr std::array<Spelling, 3> Spellings{{{true, ".bgl"}, {false, ".BGL"}, {true, ".Bgl"}}};
    const Spelling& spelling = Spellings[number % Spellings.size()];
    std::string name(kind);
    if (!spelling.UpperKind)
        std::transform(name.begin(), name.end(), name.begin(),
                       [](char c) { return static_cast<char>(c + ('a' - 'A')); });
    name += NumberText(static_cast<std::int64_t>(901000 + number * 10));
    name += spelling.Extension;
    return name;
}

void DemoWorldWriter::AddAirport(BglFileWriter& file, const RankedAirport& airport)
{
    const SceneryAirport made = MakeSceneryAirport(*airport.Source, airport.Rank, *airport.Radio);
    ++m_counts.Airports;
    m_counts.Runways += static_cast<std::int64_t>(made.Runways.size());
    for (const SceneryRunway& runway : made.Runways)
        m_counts.Ils += static_cast<std::int64_t>(runway.Ils.size());
    m_counts.TaxiPoints += static_cast<std::int64_t>(made.Ground.Points.size());
    m_counts.Parkings += static_cast<std::int64_t>(made.Ground.Parkings.size());
    file.AddAirport(made);
}

Result<void> DemoWorldWriter::WriteAirports(const fs::path& folder, std::span<const RankedAirport> airports)
{
    for (std::size_t part = 0; part < PartCount(airports.size(), AirportsPerFile); ++part) {
        BglFileWriter file;
        for (const RankedAirport& airport : PartOf(airports, part, AirportsPerFile))
            AddAirport(file, airport);
        if (auto written = WriteScenery(folder, SceneryName("AP", part), file.Finish()); !written)
            return written;
    }
    return {};
}

static SceneryStation MakeStation(const NavaidSource& navaid)
{
    constexpr int DmeFromRangeNm = 80;
    SceneryStation station;
    station.Ident = navaid.Ident;
    station.Name = navaid.Name;
    station.Lat = navaid.Position.Lat;
    station.Lon = navaid.Position.Lon;
    station.ElevationFt = navaid.ElevationFt;
    station.RangeNm = navaid.RangeNm;
    station.FrequencyTenthsKhz = RoundTo<std::int32_t>(navaid.Frequency * (navaid.IsVor ? 10000 : 10));
    station.WithDme = navaid.IsVor && navaid.RangeNm >= DmeFromRangeNm;
    return station;
}

Result<void> DemoWorldWriter::WriteNavaids(const fs::path& folder, std::span<const NavaidSource* const> navaids)
{
    for (std::size_t part = 0; part < PartCount(navaids.size(), StationsPerFile); ++part) {
        BglFileWriter file;
        for (const NavaidSource* const navaid : PartOf(navaids, part, StationsPerFile)) {
            ++(navaid->IsVor ? m_counts.Vors : m_counts.Ndbs);
            if (navaid->IsVor)
                file.AddVor(MakeStation(*navaid));
            else
                file.AddNdb(MakeStation(*navaid));
        }
        if (auto written = WriteScenery(folder, SceneryName("NV", part), file.Finish()); !written)
            return written;
    }
    return {};
}

void DemoWorldWriter::AddClassAreas(BglFileWriter& file, const RankedAirport& airport)
{
    if (HasClassB(*airport.Source)) {
        for (const SceneryBoundary& shelf : MakeClassB(*airport.Source)) {
            file.AddBoundary(shelf);
            ++m_counts.Airspaces;
        }
    } else if (airport.Rank < ClassDUpToRank) {
        file.AddBoundary(airport.Rank < ClassCUpToRank ? MakeClassC(*airport.Source) : MakeClassD(*airport.Source));
        ++m_counts.DroppedAirspaces;
    }
}

Result<void> DemoWorldWriter::WriteClassAreas(const fs::path& folder, std::span<const RankedAirport> airports)
{
    BglFileWriter file;
    for (const RankedAirport& airport : airports)
        AddClassAreas(file, airport);
    return WriteScenery(folder, SceneryName("BN", 0), file.Finish());
}

/// A file such as pictures and models come in: nothing in it for the database.
Result<void> DemoWorldWriter::WriteUninteresting(const fs::path& folder)
{
    constexpr std::size_t Size = 4000;
    BglFileWriter file;
    file.AddUnreadBytes(Size, 1);
    return WriteScenery(folder, SceneryName("VT", 0), file.Finish());
}

Result<void> DemoWorldWriter::WriteRegion(const SceneryRegion& region, const RegionContent& content)
{
    m_step = region.Title;
    const fs::path folder = region.Folder;
    auto written = WriteAirports(folder, content.Airports);
    if (written)
        written = WriteNavaids(folder, content.Navaids);
    if (written)
        written = WriteClassAreas(folder, content.Airports);
    if (written)
        written = WriteUninteresting(folder);
    return written;
}

/// Every sector high; of every third name low as well, in a list of its own.
Result<void> DemoWorldWriter::WriteSectors()
{
    m_step = "Control sectors";
    const std::span<const SectorSource> sectors = m_world.Sectors;
    for (std::size_t part = 0; part < PartCount(sectors.size(), SectorsPerFile); ++part) {
        BglFileWriter file;
        for (const SectorSource& sector : PartOf(sectors, part, SectorsPerFile)) {
            file.AddBoundary(MakeHighSector(sector));
            ++m_counts.Airspaces;
        }
        file.StartBoundaryList();
        for (const SectorSource& sector : PartOf(sectors, part, SectorsPerFile)) {
            if (TextHash(sector.Name) % 3 != 0)
                continue;
            file.AddBoundary(MakeLowSector(sector));
            ++m_counts.Airspaces;
        }
        if (auto written = WriteScenery(WorldFolder, SceneryName("AS", part), file.Finish()); !written)
            return written;
    }
    return {};
}

/// The folder's path as scenery.cfg can hold it; relative where the path has characters that the file has no codes for.
std::string DemoWorldWriter::AbsoluteLocal(const SceneryRegion& region) const
{
    const fs::path folder = FullName(m_options.OutDir / "fs2002" / region.Folder);
    const std::optional<std::string> local = Utf8ToWindows1252Exactly(folder.string());
    return local && PathFromText(folder.string()) == folder ? *local : std::string(region.Folder);
}

/// The files beside the regions. scenery.cfg comes last: with it the world is whole.
Result<void> DemoWorldWriter::WriteBase()
{
    m_step = "Simulator folder";
    std::vector<SceneryAreaEntry> areas{{"Base", "Scenery"}, {"Sectors of the world", "Scenery\\World/scenery"}};
    for (const SceneryRegion& region : SceneryRegions())
        areas.push_back(
            {std::string(region.Title), region.Local.empty() ? AbsoluteLocal(region) : std::string(region.Local)});
    areas.push_back({"An add-on that is not installed", "Addon Scenery\\Not Installed"});
    auto written = WriteScenery(BaseFolder, "Magdec.BGL", MagdecFile(m_world.MagVar));
    if (written)
        written = WriteScenery(BaseFolder, "empty.bgl", {});
    if (written)
        written = WriteScenery(BaseFolder, "Stub.BGL", Bytes(4));
    if (written)
        written = WriteFile("fs2002/Scenery.CFG", SceneryCfgFile(areas));
    return written;
}

Result<void> DemoWorldWriter::WriteMaps()
{
    m_step = "World map and terrain";
    Bytes map;
    for (const auto* lines : {&m_world.Outlines, &m_world.Borders}) {
        AppendWorldMap(map, *lines);
        for (const Polyline& line : *lines)
            m_counts.OutlinePoints += static_cast<std::int64_t>(line.size());
    }
    m_counts.TerrainPoints = static_cast<std::int64_t>(m_world.Terrain.size());
    auto written = WriteFile("world.map", map);
    return written ? WriteFile("world_terrain.db", TerrainFile(m_world.Terrain)) : written;
}

Result<DemoWorldCounts> DemoWorldWriter::Write()
{
    m_step = "Simulator folder";
    auto written = WriteFile("fs2002/fs2002.exe", PlaceholderProgram()); // first: marks what follows as a demonstration
    for (std::size_t i = 0; written && i < m_regions.size(); ++i)
        written = WriteRegion(SceneryRegions()[i], m_regions[i]);
    if (written)
        written = WriteSectors();
    if (written)
        written = WriteMaps();
    if (written)
        written = WriteBase();
    if (!written)
        return written.error();
    m_folder.Keep();
    return m_counts;
}

/// Leaves the most important airports and the navaids that stand by them.
static void LimitAirports(WorldData& world, std::size_t limit)
{
    if (limit == 0 || limit >= world.Airports.size())
        return;
    world.Airports.resize(limit);
    std::set<std::string> kept;
    for (const AirportSource& airport : world.Airports)
        kept.insert(airport.Icao);
    std::erase_if(world.Navaids, [&](const NavaidSource& navaid) { return !kept.contains(navaid.Icao); });
}

fs::path DefaultDataFolder()
{
    return SharedFolder("corvane");
}

Result<DemoWorldCounts> WriteDemoWorld(const DemoWorldOptions& options, const WorldProgressCallback& progress)
{
    Result<WorldData> world = LoadWorldData(options.DataFolder);
    if (!world)
        return world.error();
    LimitAirports(*world, static_cast<std::size_t>(std::max(options.AirportLimit, 0)));
    if (const Result<void> prepared = PrepareSimulatorFolder(options.OutDir / "fs2002"); !prepared)
        return prepared.error();
    return DemoWorldWriter(options, *world, progress).Write();
}
} // namespace corvane
