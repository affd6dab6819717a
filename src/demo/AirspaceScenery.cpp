#include "demo/AirspaceScenery.h"

#include "core/NumberText.h"
#include "core/Rounding.h"
#include "core/Text.h"

#include <algorithm>
#include <string_view>

namespace corvane {
static SceneryBoundary MakeSector(const SectorSource& sector, const std::string& layer)
{
    SceneryBoundary boundary;
    boundary.Name = sector.Name + " " + layer + " " + NumberText(sector.Piece);
    boundary.Facility = sector.Name;
    boundary.FrequencyKhz = RoundTo<std::int32_t>(sector.FrequencyMhz * 1000);
    boundary.South = sector.South;
    boundary.West = sector.West;
    boundary.North = sector.North;
    boundary.East = sector.East;
    for (const LatLon& vertex : sector.Polygon) {
        const BoundaryKind kind = boundary.Points.empty() ? BoundaryKind::Start : BoundaryKind::Line;
        boundary.Points.push_back({kind, vertex.Lat, vertex.Lon, 0});
    }
    const LatLon& first = sector.Polygon.front();
    boundary.Points.push_back({BoundaryKind::Line, first.Lat, first.Lon, 0});
    return boundary;
}

SceneryBoundary MakeHighSector(const SectorSource& sector)
{
    SceneryBoundary boundary = MakeSector(sector, "HIGH");
    boundary.Floor = -1;
    boundary.Ceiling = -1;
    return boundary;
}

SceneryBoundary MakeLowSector(const SectorSource& sector)
{
    SceneryBoundary boundary = MakeSector(sector, "LOW");
    boundary.Ceiling = 24500;
    return boundary;
}

/// A boundary around an airport whose box reaches radiusNm to all sides, without points yet.
static SceneryBoundary AroundAirport(const AirportSource& airport, const std::string& name, int radiusNm, int floor,
                                     int ceiling)
{
    const LatLon at = airport.Position;
    SceneryBoundary boundary;
    boundary.Name = ToUpper(airport.City) + " " + name;
    boundary.North = std::min(at.Lat + radiusNm / 60.0, 90.0);
    boundary.South = std::max(at.Lat - radiusNm / 60.0, -90.0);
    boundary.West = DestinationNm(at, 270, radiusNm).Lon;
    boundary.East = DestinationNm(at, 90, radiusNm).Lon;
    boundary.Floor = floor;
    boundary.Ceiling = ceiling;
    boundary.Points.push_back({BoundaryKind::ArcCenter, at.Lat, at.Lon, 0});
    return boundary;
}

static BoundaryPoint PointOnCircle(BoundaryKind kind, LatLon center, int course, int radiusNm)
{
    const LatLon at = DestinationNm(center, course, radiusNm);
    return {kind, at.Lat, at.Lon, 0};
}

static SceneryBoundary CircleAround(const AirportSource& airport, const std::string& name, int radiusNm, int floor,
                                    int ceiling)
{
    SceneryBoundary boundary = AroundAirport(airport, name, radiusNm, floor, ceiling);
    boundary.Points.push_back({BoundaryKind::Circle, 0, 0, radiusNm});
    return boundary;
}

static SceneryBoundary OuterShelf(const AirportSource& airport)
{
    constexpr int InnerNm = 15;
    constexpr int OuterNm = 25;
    constexpr int FromCourse = 225;
    constexpr int ToCourse = 135;
    const LatLon center = airport.Position;
    SceneryBoundary shelf = AroundAirport(airport, "CLASS B AREA 3", OuterNm, 4000, 10000);
    shelf.Points.push_back(PointOnCircle(BoundaryKind::Start, center, FromCourse, OuterNm));
    shelf.Points.push_back(PointOnCircle(BoundaryKind::ClockwiseArc, center, ToCourse, OuterNm));
    shelf.Points.push_back(PointOnCircle(BoundaryKind::Line, center, ToCourse, InnerNm));
    shelf.Points.push_back(PointOnCircle(BoundaryKind::CounterClockwiseArc, center, FromCourse, InnerNm));
    shelf.Points.push_back(PointOnCircle(BoundaryKind::Line, center, FromCourse, OuterNm));
    return shelf;
}

bool HasClassB(const AirportSource& airport)
{
    constexpr std::string_view Airports[] = {
        "KADW", "KATL", "KBOS", "KBWI", "KCLE", "KCLT", "KCVG", "KDCA", "KDEN", "KDFW", "KDTW", "KEWR", "KHOU",
        "KIAD", "KIAH", "KJFK", "KLAS", "KLAX", "KLGA", "KMCI", "KMCO", "KMEM", "KMIA", "KMSP", "KMSY", "KNKX",
        "KORD", "KPHL", "KPHX", "KPIT", "KSAN", "KSEA", "KSFO", "KSLC", "KSTL", "KTPA", "PHNL"};
    static_assert(std::ranges::is_sorted(Airports));
    return std::ranges::binary_search(Airports, airport.Icao);
}

std::vector<SceneryBoundary> MakeClassB(const AirportSource& airport)
{
    return {CircleAround(airport, "CLASS B AREA 1", 7, 0, 10000),
            CircleAround(airport, "CLASS B AREA 2", 15, 2000, 10000), OuterShelf(airport)};
}

SceneryBoundary MakeClassC(const AirportSource& airport)
{
    return CircleAround(airport, "CLASS C", 5, 0, 4000);
}

SceneryBoundary MakeClassD(const AirportSource& airport)
{
    constexpr int RadiusNm = 4;
    SceneryBoundary area = AroundAirport(airport, "CLASS D", RadiusNm, 0, 2500);
    area.Points.push_back(PointOnCircle(BoundaryKind::Start, airport.Position, 215, RadiusNm));
    area.Points.push_back(PointOnCircle(BoundaryKind::ClockwiseArc, airport.Position, 145, RadiusNm));
    area.Points.push_back(PointOnCircle(BoundaryKind::Line, airport.Position, 215, RadiusNm));
    return area;
}
} // namespace corvane
