#include "core/Geodesy.h"
#include "radar/MapLayers.h"
#include "radar/RecordingSurface.h"
#include "radar/RedrawCycle.h"
#include "radar/paint/QtRaster.h"

#include <QGuiApplication>
#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <memory>
#include <random>
#include <string>

// A full redraw of the map at 1920 x 1080 (clear, layers, snapshot) beside its baseline: the same picture painted from
// its recorded operations, with the same clearing and snapshot. At most 1.25 times as long.

namespace corvane {
namespace {
constexpr std::int32_t Width = 1920;
constexpr std::int32_t Height = 1080;
constexpr LatLon Center{47.45, 8.55};

class RandomPlaces {
public:
    /// A position within so many degrees of the centre, more or less.
    LatLon Near(double degrees)
    {
        std::uniform_real_distribution<double> offset(-degrees, degrees);
        return {Center.Lat + offset(m_random), Center.Lon + offset(m_random)};
    }
    int Whole(int lowest, int highest) { return std::uniform_int_distribution<int>(lowest, highest)(m_random); }

private:
    std::mt19937 m_random{2002};
};

AirportRecord RandomAirport(RandomPlaces& places, LatLon at, int number)
{
    AirportRecord airport;
    airport.Name = "Airfield number " + std::to_string(number);
    airport.Icao = "Z" + std::to_string(100 + number % 900);
    airport.Lat = at.Lat;
    airport.Lon = at.Lon;
    const int heading = places.Whole(1, 180);
    RunwayRecord runway;
    const LatLon end1 = DestinationFt(at, heading + 180, 4000);
    const LatLon end2 = DestinationFt(at, heading, 4000);
    runway.Designation = std::to_string(heading / 10);
    runway.ReciprocalDesignation = std::to_string(heading / 10 + 18);
    runway.CenterLat = at.Lat;
    runway.CenterLon = at.Lon;
    runway.End1Lat = end1.Lat;
    runway.End1Lon = end1.Lon;
    runway.End2Lat = end2.Lat;
    runway.End2Lon = end2.Lon;
    airport.Runways = {runway};
    airport.Ils = {{"I", end1.Lat, end1.Lon, static_cast<std::int16_t>(heading), "110.3"}};
    for (int i = 0; i < 30; ++i) {
        const LatLon gate = DestinationFt(at, places.Whole(0, 359), places.Whole(500, 3000));
        airport.Parkings.push_back({"GATE", gate.Lat, gate.Lon, 50});
        const LatLon point = DestinationFt(at, places.Whole(0, 359), places.Whole(500, 3000));
        airport.TaxiPoints.push_back({1, point.Lat, point.Lon});
        airport.TaxiPaths.push_back({i % 3 == 0 ? 2 : 0, i, places.Whole(0, i), "A"});
    }
    return airport;
}

AirspaceRecord RandomAirspace(RandomPlaces& places, LatLon at, int number)
{
    AirspaceRecord airspace;
    airspace.ComName = "Sector " + std::to_string(number);
    airspace.CenterLat = at.Lat;
    airspace.CenterLon = at.Lon;
    switch (number % 5) {
    case 0:
        airspace.Kind = HighSectorKind;
        airspace.Points.push_back({BoundaryKind::Start, at.Lat + 1, at.Lon, 0});
        for (int corner = 1; corner <= 40; ++corner) {
            const LatLon to = DestinationNm(at, corner * 9, places.Whole(40, 70));
            airspace.Points.push_back({BoundaryKind::Line, to.Lat, to.Lon, 0});
        }
        break;
    case 1: {
        airspace.Kind = ClassBKind;
        const LatLon north = DestinationNm(at, 360, 15);
        const LatLon east = DestinationNm(at, 90, 15);
        airspace.Points = {{BoundaryKind::ArcCenter, at.Lat, at.Lon, 0},
                           {BoundaryKind::Start, north.Lat, north.Lon, 0},
                           {BoundaryKind::ClockwiseArc, east.Lat, east.Lon, 0},
                           {BoundaryKind::ClockwiseArc, north.Lat, north.Lon, 0}};
        break;
    }
    default:
        airspace.Kind = TraconKind;
        airspace.Points = {{BoundaryKind::ArcCenter, at.Lat, at.Lon, 0}, {BoundaryKind::Circle, 0, 0, 20}};
    }
    return airspace;
}

/// Coastlines as world outlines come: polylines of some hundred points a fraction of a mile apart.
void AddOutlines(RandomPlaces& places, AreaModel& area, std::size_t count, double degrees)
{
    constexpr int PolylineLength = 400;
    while (area.OutlinePoints.size() < count) {
        LatLon at = places.Near(degrees);
        double course = places.Whole(0, 359);
        for (int i = 0; i < PolylineLength && area.OutlinePoints.size() < count; ++i) {
            area.OutlinePoints.push_back({at.Lat, at.Lon});
            course += places.Whole(-40, 40);
            at.Lat += 0.005 * std::cos(course * RadiansPerDegree);
            at.Lon += 0.007 * std::sin(course * RadiansPerDegree);
        }
        area.OutlinePoints.push_back({});
    }
}

struct AreaSize {
    int Airports;
    int Airspaces;
    std::size_t Outlines;
    int Navaids;
    double Degrees; ///< of the area, each way from the centre
};

AreaModel MakeArea(const AreaSize& size)
{
    RandomPlaces places;
    AreaModel area;
    area.AreaCenter = Center;
    area.AreaAirports.push_back(RandomAirport(places, Center, 0));
    for (int i = 1; i < size.Airports; ++i)
        area.AreaAirports.push_back(RandomAirport(places, places.Near(size.Degrees), i));
    for (int i = 0; i < size.Airspaces; ++i)
        area.AreaAirspaces.push_back(RandomAirspace(places, places.Near(size.Degrees), i));
    for (int i = 0; i < size.Navaids; ++i) {
        const LatLon vor = places.Near(size.Degrees);
        const LatLon ndb = places.Near(size.Degrees);
        area.AreaVors.push_back({"Vor", "VOR", vor.Lat, vor.Lon, "113.9", 100});
        area.AreaNdbs.push_back({"Ndb", "NDB", ndb.Lat, ndb.Lon, "350", 30});
    }
    AddOutlines(places, area, size.Outlines, size.Degrees);
    return area;
}

/// 90 nautical miles around an airport in a well-filled region.
constexpr AreaSize AirportArea{120, 15, 8'000, 60, 1.5};
/// A sector with everything in it.
constexpr AreaSize SectorArea{2'000, 500, 100'000, 300, 8};

struct Bench {
    AreaModel Area;
    MagVarGrid Grid;
    DisplayFlags Flags;
    ScopeView View;
    std::string Name = "radar_bench";
    std::array<char*, 2> Arguments{Name.data(), nullptr};
    int ArgumentCount = 1;
    std::unique_ptr<QGuiApplication> Application;
    ScopeFont Font;

    Bench(const AreaSize& size, std::int64_t level)
        : Area(MakeArea(size)), View(StartUpView(Width, Height, Center, static_cast<std::int16_t>(level)))
    {
        setenv("QT_QPA_PLATFORM", "offscreen", 0); // fonts without a display
        Application = std::make_unique<QGuiApplication>(ArgumentCount, Arguments.data());
        Font = MakeScopeFont(ScopeQFont());
    }
    [[nodiscard]] MapScene Scene() const { return {Area, Grid, View, Flags}; }
};

void Redraw(benchmark::State& state, const AreaSize& size)
{
    Bench bench(size, state.range(0));
    RedrawCycle painter(bench.Font);
    while (state.KeepRunning()) {
        painter.DrawMap(bench.Scene());
        benchmark::DoNotOptimize(painter.Picture().Row(0));
    }
}

void Baseline(benchmark::State& state, const AreaSize& size)
{
    Bench bench(size, state.range(0));
    RecordingSurface recorder;
    DrawMapLayers(recorder, bench.Scene());
    PixelImage picture(Width, Height);
    PixelImage snapshot;
    RasterSurface surface(picture, bench.Font);
    while (state.KeepRunning()) {
        picture.Fill(PixelImage::Black);
        recorder.Replay(surface);
        snapshot = picture;
        benchmark::DoNotOptimize(snapshot.Row(0));
    }
    state.counters["operations"] = static_cast<double>(recorder.Operations().size());
}

BENCHMARK_CAPTURE(Baseline, Airport, AirportArea)->Arg(14)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Redraw, Airport, AirportArea)->Arg(14)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Baseline, Sector, SectorArea)
    ->Arg(5)
    ->Arg(14)
    ->Arg(25)
    ->Arg(30)
    ->Arg(36)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Redraw, Sector, SectorArea)
    ->Arg(5)
    ->Arg(14)
    ->Arg(25)
    ->Arg(30)
    ->Arg(36)
    ->Unit(benchmark::kMicrosecond);
} // namespace
} // namespace corvane
