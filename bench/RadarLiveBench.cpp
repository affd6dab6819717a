#include "core/Geodesy.h"
#include "core/NumberText.h"
#include "radar/InformationPanel.h"
#include "radar/PlayerTargets.h"
#include "radar/RecordingSurface.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

// What the scope does between full redraws: the targets' refresh once a second, the panel's tick twice a second. Each
// measurement stands beside its baseline: 300 VFR targets for 300 IFR ones, one projection a candidate for the panel.

namespace corvane {
namespace {
constexpr std::size_t TerrainCount = 1'000'000;
constexpr std::size_t TargetCount = 300;
constexpr std::size_t AirportCount = 2'000;
constexpr std::size_t GatesPerAirport = 30;
constexpr LatLon Center{47.45, 8.55};

LatLon RandomNear(std::mt19937& random, double miles)
{
    std::uniform_real_distribution<double> distance(0, miles * 1852);
    std::uniform_int_distribution<int> course(0, 359);
    return DestinationM(Center, course(random), distance(random));
}

std::string Numbered(std::string name, std::size_t number)
{
    AppendNumber(name, number);
    return name;
}

std::string Icao(std::size_t i)
{
    return {'L', static_cast<char>('A' + i / 676 % 26), static_cast<char>('A' + i / 26 % 26),
            static_cast<char>('A' + i % 26)};
}

/// An airport's surroundings: terrain as a grid file has it, west to east and north to south, hills and valleys.
AreaModel TerrainArea()
{
    constexpr std::size_t Side = 1000;
    std::mt19937 random(2002);
    std::uniform_int_distribution<std::int32_t> roughness(0, 800);
    AreaModel area;
    for (std::size_t i = 0; i < 300; ++i) {
        const LatLon at = RandomNear(random, 60);
        AirportRecord& airport = area.AreaAirports.emplace_back();
        airport.Icao = Icao(i);
        airport.Lat = at.Lat;
        airport.Lon = at.Lon;
        airport.ElevationFt = 1400;
    }
    for (std::size_t i = 0; i < TerrainCount; ++i) {
        const double lat = Center.Lat + 1.5 - 3.0 * static_cast<double>(i / Side) / Side;
        const double lon = Center.Lon - 2.2 + 4.4 * static_cast<double>(i % Side) / Side;
        const auto height = static_cast<std::int32_t>(3000 + 2500 * std::sin(lat * 9) * std::cos(lon * 7));
        area.TerrainPoints.push_back({lat, lon, height + roughness(random)});
    }
    return area;
}

std::vector<PlayerRecord> Pilots300(std::uint8_t flightRules)
{
    std::mt19937 random(1);
    std::vector<PlayerRecord> players(TargetCount);
    for (std::size_t i = 0; i < TargetCount; ++i) {
        const LatLon at = RandomNear(random, 30);
        players[i].Name = Numbered("N", 1000 + i);
        players[i].PlayerId = static_cast<std::int32_t>(i + 10);
        players[i].Role = PilotRole;
        players[i].Latitude = at.Lat;
        players[i].Longitude = at.Lon;
        players[i].MagHeading = static_cast<double>(i);
        players[i].AltitudeFt = 5000;
        players[i].FlightRules = flightRules;
        players[i].DestinationIcao = Icao(i);
    }
    return players;
}

/// One refresh; moving says that every target's position and altitude have been reported anew.
void RefreshTargets(benchmark::State& state, std::uint8_t flightRules, bool moving)
{
    const AreaModel area = TerrainArea();
    const MagVarGrid grid;
    const DisplayFlags flags;
    const ScopeView view = StartUpView(1920, 1080, Center, 17);
    std::vector<PlayerRecord> players = Pilots300(flightRules);
    TargetMemory memory;
    RecordingSurface surface;
    const auto refresh = [&] {
        surface.Clear();
        DrawTargets(surface, {area, grid, view, flags}, {players, 1, "**ATC"}, false, memory);
    };
    refresh(); // prepares what is prepared once
    double step = 1e-6;
    for (auto _ : state) {
        if (moving) {
            for (PlayerRecord& player : players) {
                player.Latitude += step;
                player.AltitudeFt ^= 1;
            }
            step = -step;
        }
        refresh();
    }
    state.counters["operations"] = static_cast<double>(surface.Operations().size());
}
BENCHMARK_CAPTURE(RefreshTargets, VfrResting, std::uint8_t{0}, false)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(RefreshTargets, IfrResting, std::uint8_t{1}, false)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(RefreshTargets, VfrMoving, std::uint8_t{0}, true)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(RefreshTargets, IfrMoving, std::uint8_t{1}, true)->Unit(benchmark::kMicrosecond);

/// The baseline of preparing: what the plain search costs for one target in one second.
void OneDistanceATerrainPoint(benchmark::State& state)
{
    const AreaModel area = TerrainArea();
    for (auto _ : state) {
        std::int32_t highest = 0;
        for (const TerrainPoint& point : area.TerrainPoints)
            if (DistanceNm(Center, {point.Lat, point.Lon}) <= MaxDestinationNm)
                highest = std::max(highest, point.ElevationFt);
        benchmark::DoNotOptimize(highest);
    }
}
BENCHMARK(OneDistanceATerrainPoint)->Unit(benchmark::kMillisecond);

void PrepareOneDestination(benchmark::State& state)
{
    const AreaModel area = TerrainArea();
    for (auto _ : state)
        benchmark::DoNotOptimize(FindHighestTerrain(area.TerrainPoints, Center));
}
BENCHMARK(PrepareOneDestination)->Unit(benchmark::kMillisecond);

/// A sector of the panel's size, every airport with gates, a runway and an ILS.
AreaModel SectorArea()
{
    std::mt19937 random(3);
    AreaModel area;
    for (std::size_t i = 0; i < AirportCount; ++i) {
        const LatLon at = RandomNear(random, 400);
        AirportRecord& airport = area.AreaAirports.emplace_back();
        for (std::size_t gate = 0; gate < GatesPerAirport; ++gate)
            airport.Parkings.push_back(
                {Numbered("GATE A ", gate), at.Lat + static_cast<double>(gate) * 1e-4, at.Lon, 60});
        RunwayRecord& runway = airport.Runways.emplace_back();
        runway.End1Lat = runway.End2Lat = at.Lat;
        runway.End1Lon = at.Lon - 0.01;
        runway.End2Lon = at.Lon + 0.01;
        airport.Ils.push_back({"ILS", at.Lat, at.Lon - 0.01, 90, "110.3"});
    }
    return area;
}

ScopeView GateView()
{
    return StartUpView(1920, 1080, Center, 36);
}

void ProjectCandidatesOnce(benchmark::State& state)
{
    const AreaModel area = SectorArea();
    const ScopeView view = GateView();
    for (auto _ : state) {
        for (const AirportRecord& airport : area.AreaAirports) {
            for (const ParkingRecord& parking : airport.Parkings)
                benchmark::DoNotOptimize(ProjectToScope(view, {parking.Lat, parking.Lon}));
            for (const RunwayRecord& runway : airport.Runways) {
                benchmark::DoNotOptimize(ProjectToScope(view, {runway.End1Lat, runway.End1Lon}));
                benchmark::DoNotOptimize(ProjectToScope(view, {runway.End2Lat, runway.End2Lon}));
            }
            for (const IlsRecord& ils : airport.Ils)
                benchmark::DoNotOptimize(ProjectToScope(view, {ils.Lat, ils.Lon}));
        }
    }
}
BENCHMARK(ProjectCandidatesOnce)->Unit(benchmark::kMicrosecond);

/// The dearest tick: nothing lies under the pointer, so that everything has to be looked at.
void TickOverNothing(benchmark::State& state)
{
    const AreaModel area = SectorArea();
    const MagVarGrid grid;
    const DisplayFlags flags;
    const ScopeView view = GateView();
    PointerState pointer;
    MovePointer(pointer, DegreesAtPixel(view, {5, 5}));
    for (auto _ : state) {
        const PanelAnswer answer = PanelTick({area, grid, view, flags}, {}, pointer);
        if (!answer.Text.empty())
            state.SkipWithError("something lies under the pointer");
    }
}
BENCHMARK(TickOverNothing)->Unit(benchmark::kMicrosecond);
} // namespace
} // namespace corvane
