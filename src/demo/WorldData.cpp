#include "demo/WorldData.h"

#include "core/File.h"
#include "core/MagVarGrid.h"
#include "core/NumberText.h"
#include "core/Rounding.h"
#include "demo/CsvReader.h"

#include <algorithm>
#include <map>
#include <tuple>

namespace corvane {
namespace fs = std::filesystem;

/// Reads one table: calls readLine(csv) for every line after the column names.
template <class ReadLine>
static Result<void> ReadTable(const fs::path& path, std::string_view columns, ReadLine readLine)
{
    const Result<FileBytes> file = ReadWholeFile(path);
    if (!file)
        return file.error();
    CsvReader csv(FullName(path), file->Span(), columns);
    while (csv.Next())
        readLine(csv);
    if (csv.Failure())
        return *csv.Failure();
    return {};
}

static LatLon ReadPosition(CsvReader& csv, std::size_t latColumn)
{
    const double lat = csv.Number(latColumn, -90, 90);
    return {lat, csv.Number(latColumn + 1, -180, 180)};
}

/// Hundredths of a foot are more than elevations and lengths need; fields such as 433.5 are rounded.
static int ReadFeet(CsvReader& csv, std::size_t column, double lowest, double highest)
{
    return RoundTo<std::int32_t>(csv.Number(column, lowest, highest));
}

static constexpr double LowestElevationFt = -2000;
static constexpr double HighestElevationFt = 30000;

static AirportSource ReadAirport(CsvReader& csv)
{
    constexpr double LowestMhz = 108;
    constexpr double HighestMhz = 400;
    AirportSource airport;
    airport.Icao = csv.Text(0);
    airport.Name = csv.Text(1);
    airport.City = csv.Text(2);
    airport.Position = ReadPosition(csv, 5);
    airport.ElevationFt = ReadFeet(csv, 7, LowestElevationFt, HighestElevationFt);
    airport.Large = csv.Text(8) == "L";
    airport.Scheduled = csv.Text(9) == "1";
    airport.TowerMhz = csv.OptionalNumber(10, LowestMhz, HighestMhz);
    airport.GroundMhz = csv.OptionalNumber(11, LowestMhz, HighestMhz);
    airport.ClearanceMhz = csv.OptionalNumber(12, LowestMhz, HighestMhz);
    airport.ApproachMhz = csv.OptionalNumber(13, LowestMhz, HighestMhz);
    airport.DepartureMhz = csv.OptionalNumber(14, LowestMhz, HighestMhz);
    if (airport.Icao.size() != 4 || airport.Name.empty())
        csv.Refuse("the airport has no four-letter identifier or no name");
    return airport;
}

static RunwayData ReadRunway(CsvReader& csv)
{
    RunwayData runway;
    runway.Ident = csv.Text(1);
    runway.Center = ReadPosition(csv, 3);
    runway.TrueHeading = csv.Number(5, 0, 360);
    runway.LengthFt = ReadFeet(csv, 6, 100, 30000);
    runway.WidthFt = ReadFeet(csv, 7, 1, 1000);
    runway.ElevationFt = ReadFeet(csv, 8, LowestElevationFt, HighestElevationFt);
    const std::optional<double> number = ParseNumber(std::string_view(runway.Ident).substr(0, 2));
    if (!number || *number < 1 || *number > 36)
        csv.Refuse("le_ident is \"" + runway.Ident + "\", not a number from 01 to 36 and a side letter");
    return runway;
}

static NavaidSource ReadNavaid(CsvReader& csv)
{
    NavaidSource navaid;
    navaid.IsVor = csv.Text(0) == "VOR";
    navaid.Ident = csv.Text(1);
    navaid.Name = csv.Text(2);
    navaid.Position = ReadPosition(csv, 3);
    navaid.Frequency = navaid.IsVor ? csv.Number(5, 108, 117.95) : csv.Number(5, 190, 1799);
    navaid.RangeNm = csv.Whole(6, 1, 255);
    navaid.ElevationFt = ReadFeet(csv, 7, LowestElevationFt, HighestElevationFt);
    navaid.Icao = csv.Text(8);
    if (!navaid.IsVor && csv.Text(0) != "NDB")
        csv.Refuse("type is \"" + std::string(csv.Text(0)) + "\", neither VOR nor NDB");
    return navaid;
}

static void ReadPolygon(CsvReader& csv, std::size_t column, std::int32_t vertices, std::vector<LatLon>& polygon)
{
    const std::vector<std::string_view> numbers = SplitText(csv.Text(column), ' ');
    for (std::size_t i = 0; i + 1 < numbers.size(); i += 2) {
        const std::optional<double> lat = ParseNumber(numbers[i]);
        const std::optional<double> lon = ParseNumber(numbers[i + 1]);
        if (!lat || !lon)
            return csv.Refuse("the polygon holds \"" + std::string(numbers[i]) + " " + std::string(numbers[i + 1]) +
                              "\", not a position");
        polygon.push_back({*lat, *lon});
    }
    if (numbers.size() != static_cast<std::size_t>(vertices) * 2)
        csv.Refuse("the polygon does not have " + NumberText(vertices) + " vertices");
}

static SectorSource ReadSector(CsvReader& csv)
{
    SectorSource sector;
    sector.Name = csv.Text(0);
    sector.Piece = csv.Whole(1, 1, 1000);
    sector.FrequencyMhz = csv.Number(3, 108, 400);
    sector.South = csv.Number(4, -90, 90);
    sector.West = csv.Number(5, -180, 180);
    sector.North = csv.Number(6, -90, 90);
    sector.East = csv.Number(7, -180, 180);
    ReadPolygon(csv, 9, csv.Whole(8, 3, 10000), sector.Polygon);
    return sector;
}

static Result<void> ReadAirports(const fs::path& folder, WorldData& world)
{
    auto read = ReadTable(folder / "airports.csv",
                          "icao,name,city,country,iata,lat,lon,elevation_ft,size,scheduled,tower,ground,clearance,"
                          "approach,departure",
                          [&](CsvReader& csv) { world.Airports.push_back(ReadAirport(csv)); });
    if (!read)
        return read;
    std::map<std::string, AirportSource*, std::less<>> byIcao;
    for (AirportSource& airport : world.Airports)
        byIcao[airport.Icao] = &airport;
    return ReadTable(folder / "runways.csv",
                     "icao,le_ident,he_ident,center_lat,center_lon,true_heading,length_ft,width_ft,elevation_ft,"
                     "le_lat,le_lon,he_lat,he_lon,source",
                     [&](CsvReader& csv) {
                         const auto airport = byIcao.find(csv.Text(0));
                         if (airport == byIcao.end())
                             return csv.Refuse("names no airport: \"" + std::string(csv.Text(0)) + "\"");
                         airport->second->Runways.push_back(ReadRunway(csv));
                     });
}

static void RankAirports(std::vector<AirportSource>& airports)
{
    const auto rank = [](const AirportSource& airport) {
        int runwaysFt = 0;
        for (const RunwayData& runway : airport.Runways)
            runwaysFt += runway.LengthFt;
        return std::tuple(!airport.Large, !airport.Scheduled, -runwaysFt, airport.Icao);
    };
    std::stable_sort(airports.begin(), airports.end(),
                     [&](const AirportSource& a, const AirportSource& b) { return rank(a) < rank(b); });
}

static Result<void> ReadPolylines(const fs::path& path, std::vector<Polyline>& lines)
{
    const Result<FileBytes> file = ReadWholeFile(path);
    if (!file)
        return file.error();
    CsvReader csv(FullName(path), file->Span(), "lat,lon");
    bool penUp = true;
    while (csv.Next()) {
        if (!csv.IsBlank() && penUp)
            lines.emplace_back();
        penUp = csv.IsBlank();
        if (!penUp)
            lines.back().push_back(ReadPosition(csv, 0));
    }
    if (csv.Failure())
        return *csv.Failure();
    return {};
}

Result<std::vector<std::int16_t>> LoadMagVar(const fs::path& dataFolder)
{
    const fs::path path = dataFolder / "magvar.csv";
    std::vector<std::int16_t> values;
    const Result<void> read = ReadTable(path, "", [&](CsvReader& csv) {
        if (csv.FieldCount() != MagVarGrid::Latitudes)
            return csv.Refuse("does not hold 181 values");
        for (std::size_t i = 0; i < csv.FieldCount(); ++i)
            values.push_back(static_cast<std::int16_t>(csv.Whole(i, -32768, 32767)));
    });
    if (!read)
        return read.error();
    if (values.size() != MagVarGrid::CellCount)
        return Fail(FullName(path),
                    "holds " + NumberText(static_cast<std::int64_t>(values.size())) + " values instead of 65160");
    return values;
}

static TerrainSource ReadTerrainPoint(CsvReader& csv)
{
    const LatLon position = ReadPosition(csv, 0);
    return {position, csv.Whole(2, -2000, 30000)};
}

static Result<void> ReadMaps(const fs::path& folder, WorldData& world)
{
    Result<void> done = ReadPolylines(folder / "outlines.csv", world.Outlines);
    if (done)
        done = ReadPolylines(folder / "borders.csv", world.Borders);
    if (done) {
        done = ReadTable(folder / "terrain.csv", "lat,lon,elevation_ft,source",
                         [&](CsvReader& csv) { world.Terrain.push_back(ReadTerrainPoint(csv)); });
    }
    return done;
}

static Result<void> ReadAll(const fs::path& folder, WorldData& world)
{
    auto done = ReadAirports(folder, world);
    if (done) {
        done = ReadTable(folder / "navaids.csv", "type,ident,name,lat,lon,frequency,range_nm,elevation_ft,icao,demo",
                         [&](CsvReader& csv) { world.Navaids.push_back(ReadNavaid(csv)); });
    }
    if (done) {
        done = ReadTable(folder / "sectors.csv", "name,piece,method,frequency,south,west,north,east,vertices,polygon",
                         [&](CsvReader& csv) { world.Sectors.push_back(ReadSector(csv)); });
    }
    if (done)
        done = ReadMaps(folder, world);
    if (!done)
        return done;
    Result<std::vector<std::int16_t>> magVar = LoadMagVar(folder);
    if (!magVar)
        return magVar.error();
    world.MagVar = *std::move(magVar);
    return {};
}

Result<WorldData> LoadMapData(const fs::path& dataFolder)
{
    WorldData world;
    if (const Result<void> read = ReadMaps(dataFolder, world); !read)
        return read.error();
    return world;
}

Result<WorldData> LoadWorldData(const fs::path& dataFolder)
{
    WorldData world;
    if (const Result<void> read = ReadAll(dataFolder, world); !read)
        return read.error();
    RankAirports(world.Airports);
    return world;
}
} // namespace corvane
