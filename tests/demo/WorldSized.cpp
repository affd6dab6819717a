#include "tests/demo/WorldSized.h"

#include "core/Geodesy.h"
#include "core/MagVarGrid.h"
#include "core/NumberText.h"
#include "demo/BglFileWriter.h"
#include "demo/FolderWriter.h"
#include "demo/GroundPlan.h"
#include "demo/WorldFiles.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

namespace corvane {
namespace fs = std::filesystem;

static constexpr int AreaCount = 10;
static constexpr int HeadingCount = 18;

/// Position number of a spread that fills the world between 70 degrees south and north evenly, without repeating.
static LatLon SpreadPosition(std::int64_t number)
{
    constexpr double GoldenPart = 0.6180339887498949;
    constexpr double PlasticPart = 0.7548776662466927;
    const auto n = static_cast<double>(number);
    return {-70 + 140 * (n * PlasticPart - std::floor(n * PlasticPart)),
            -180 + 360 * (n * GoldenPart - std::floor(n * GoldenPart))};
}

/// number as four letters, AAAA first.
static std::string LettersOf(int number)
{
    std::string letters(4, 'A');
    for (auto letter = letters.rbegin(); letter != letters.rend(); ++letter, number /= 26)
        *letter = static_cast<char>('A' + number % 26);
    return letters;
}

/// Two parallel runways with a full layout, for each of the headings that the airports take in turn.
static std::array<GroundLayout, HeadingCount> PlanLayouts()
{
    std::array<GroundLayout, HeadingCount> layouts;
    for (int i = 0; i < HeadingCount; ++i) {
        const double heading = 10.0 * (i + 1);
        const GroundVector apart{400 * std::cos(heading * RadiansPerDegree),
                                 -400 * std::sin(heading * RadiansPerDegree)};
        const std::array<PlannedRunway, 2> runways{{{{}, heading, 3000}, {apart, heading, 2400}}};
        layouts[static_cast<std::size_t>(i)] =
            PlanGround(runways, {.Lanes = 3, .StandsInRow = 10, .TwoRows = true, .Gates = true});
    }
    return layouts;
}

static SceneryRunway MakeRunway(LatLon center, int headingNumber, char side, int lengthFt)
{
    SceneryRunway runway;
    runway.Lat = center.Lat;
    runway.Lon = center.Lon;
    runway.TrueHeading = 10.0 * headingNumber;
    runway.LengthFt = lengthFt;
    runway.WidthFt = 150;
    runway.Number = headingNumber;
    runway.Side = side;
    const std::string ident = std::string(1, 'I').append(NumberText(headingNumber)).append(1, side);
    runway.Ils.push_back({ident, center.Lat, center.Lon, 0, false, 110300});
    return runway;
}

static SceneryAirport MakeAirport(int number, const std::array<GroundLayout, HeadingCount>& layouts)
{
    const int headingNumber = 1 + number % HeadingCount;
    SceneryAirport airport;
    airport.Icao = LettersOf(number);
    airport.Name = "Benchmark Airport " + airport.Icao;
    const LatLon at = SpreadPosition(number);
    airport.Lat = at.Lat;
    airport.Lon = at.Lon;
    airport.ElevationFt = number % 5000;
    airport.Coms = {{ComKind::Tower, 118100, airport.Icao + " TOWER"},
                    {ComKind::Approach, 124500, airport.Icao + " APPROACH"}};
    airport.Runways = {MakeRunway(at, headingNumber, 'L', 9842),
                       MakeRunway({at.Lat - 0.003, at.Lon}, headingNumber, 'R', 7874)};
    airport.Ground = layouts[static_cast<std::size_t>(headingNumber - 1)];
    return airport;
}

static SceneryStation MakeStation(int number, std::int32_t frequencyTenthsKhz)
{
    const LatLon at = SpreadPosition(number);
    return {LettersOf(number).substr(1), "STATION", at.Lat, at.Lon, 0, 80, frequencyTenthsKhz, true};
}

static SceneryBoundary MakeBoundary(int number)
{
    const LatLon at = SpreadPosition(number);
    SceneryBoundary boundary;
    boundary.Name = "AREA " + NumberText(number);
    boundary.South = at.Lat - 1;
    boundary.North = at.Lat + 1;
    boundary.West = std::max(at.Lon - 1, -180.0);
    boundary.East = std::min(at.Lon + 1, 179.9999);
    boundary.Ceiling = 10000;
    boundary.Points = {{BoundaryKind::ArcCenter, at.Lat, at.Lon, 0}, {BoundaryKind::Circle, 0, 0, 30}};
    return boundary;
}

/// Polylines of a thousand vertices that wander eastward.
static std::vector<Polyline> MakeOutlines(std::int64_t points)
{
    constexpr std::int64_t PerLine = 1000;
    std::vector<Polyline> lines;
    for (std::int64_t i = 0; i < points; ++i) {
        if (i % PerLine == 0)
            lines.emplace_back();
        const LatLon start = SpreadPosition(i / PerLine + 1);
        const auto step = static_cast<double>(i % PerLine);
        lines.back().push_back({start.Lat + std::sin(step / 50), NormalizeLongitude(start.Lon + step / 200)});
    }
    return lines;
}

static std::vector<TerrainSource> MakeTerrain(std::int64_t points)
{
    std::vector<TerrainSource> terrain;
    for (std::int64_t i = 0; i < points; ++i)
        terrain.push_back({SpreadPosition(i + 1), static_cast<int>(i % 12000)});
    return terrain;
}

namespace {
class WorldSizedWriter {
public:
    WorldSizedWriter(const WorldSizedOptions& options, const WorldProgressCallback& progress)
        : m_options(options),
          m_progress(progress),
          m_folder(options.OutDir),
          m_layouts(PlanLayouts()),
          m_files(std::max(m_options.AirportCount * 3 / 20, 1))
    {
    }
    Result<WorldSizedCounts> Write();

private:
    Result<void> WriteScenery(int number);
    Result<void> WriteBase();
    Result<void> WriteMaps();

    const WorldSizedOptions& m_options;
    const WorldProgressCallback& m_progress;
    FolderWriter m_folder;
    std::array<GroundLayout, HeadingCount> m_layouts;
    int m_files;
    WorldSizedCounts m_counts;
};
} // namespace

static std::string AreaFolder(int area)
{
    return "Scenery/Area" + NumberText(area);
}

Result<void> WorldSizedWriter::WriteScenery(int number)
{
    constexpr std::size_t UnreadBytes = 8000;
    const auto firstOf = [&](int file) {
        return static_cast<int>(std::int64_t{file} * m_options.AirportCount / m_files);
    };
    BglFileWriter file;
    for (int i = firstOf(number); i < firstOf(number + 1); ++i) {
        const SceneryAirport airport = MakeAirport(i, m_layouts);
        m_counts.TaxiPoints += static_cast<std::int64_t>(airport.Ground.Points.size());
        file.AddAirport(airport);
        ++m_counts.Airports;
    }
    file.AddVor(MakeStation(number, 1080000 + number % 200 * 500));
    file.AddNdb(MakeStation(number, 2000 + number % 3000));
    file.AddBoundary(MakeBoundary(number));
    file.AddUnreadBytes(UnreadBytes, static_cast<std::uint32_t>(number));
    const Bytes content = file.Finish();
    m_counts.SceneryBytes += static_cast<std::int64_t>(content.size());
    const fs::path folder = fs::path("fs2002") / AreaFolder(number % AreaCount) / "scenery";
    return m_folder.Write(folder / ("AP" + NumberText(100000 + number) + ".bgl"), content);
}

Result<void> WorldSizedWriter::WriteBase()
{
    std::vector<SceneryAreaEntry> areas;
    areas.reserve(AreaCount);
    for (int area = 0; area < AreaCount; ++area)
        areas.push_back({"Area " + NumberText(area), AreaFolder(area)});
    const std::vector<std::int16_t> variation(MagVarGrid::CellCount, 1000);
    auto written = m_folder.Write("fs2002/Scenery/magdec.bgl", MagdecFile(variation));
    if (written)
        written = m_folder.Write("fs2002/scenery.cfg", SceneryCfgFile(areas));
    return written;
}

Result<void> WorldSizedWriter::WriteMaps()
{
    if (m_options.MapPoints > 0) {
        Bytes map;
        AppendWorldMap(map, MakeOutlines(m_options.MapPoints));
        if (auto written = m_folder.Write("world.map", map); !written)
            return written;
    }
    if (m_options.TerrainPoints > 0)
        return m_folder.Write("world_terrain.db", TerrainFile(MakeTerrain(m_options.TerrainPoints)));
    return {};
}

Result<WorldSizedCounts> WorldSizedWriter::Write()
{
    auto written = m_folder.Write("fs2002/fs2002.exe", PlaceholderProgram());
    for (int file = 0; written && file < m_files; ++file) {
        written = WriteScenery(file);
        if (m_progress)
            m_progress({"Scenery", file + 1, m_files});
    }
    if (written)
        written = WriteMaps();
    if (written)
        written = WriteBase();
    if (!written)
        return written.error();
    m_folder.Keep();
    m_counts.BglFiles = m_files;
    m_counts.Vors = m_counts.Ndbs = m_counts.Airspaces = m_files;
    return m_counts;
}

Result<WorldSizedCounts> WriteWorldSizedFolder(const WorldSizedOptions& options, const WorldProgressCallback& progress)
{
    constexpr int MostAirports = 400000; // as many as have an identifier of four letters
    if (options.AirportCount < 1 || options.AirportCount > MostAirports)
        return Fail("airport count " + NumberText(options.AirportCount), "is not from 1 to 400000");
    if (const Result<void> prepared = PrepareSimulatorFolder(options.OutDir / "fs2002"); !prepared)
        return prepared.error();
    return WorldSizedWriter(options, progress).Write();
}
} // namespace corvane
