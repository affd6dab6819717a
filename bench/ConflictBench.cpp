// A search for conflicts over 250 to 2,000 targets, beside trying all pairs of the same targets. A thousand may take
// two milliseconds. The sky grows with its targets, as dense as 1,000 over a sector of 300 by 300 miles.

#include "tracks/AlertMonitor.h"
#include "tracks/ConflictSearch.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <ctime>
#include <limits>
#include <random>
#include <vector>

namespace corvane::bench {
namespace {
std::vector<Mover> SkyOf(std::int64_t targets)
{
    constexpr double HalfSideNm = 150; // of a sky of 1,000
    constexpr std::array<double, 8> LevelsFt = {3000, 5000, 9000, 12000, 17000, 24000, 33000, 37000};
    const double half = HalfSideNm * std::sqrt(static_cast<double>(targets) / 1000) / 60;
    std::mt19937 random(2002);
    const auto between = [&](double low, double high) {
        return std::uniform_real_distribution<double>(low, high)(random);
    };
    std::vector<Mover> movers;
    for (std::int64_t i = 0; i < targets; ++i) {
        const double climb = random() % 3 == 0 ? between(-2000, 2000) : 0;
        movers.push_back(MakeMover({47 + between(-half, half), -122 + between(-half, half) / std::cos(0.82)},
                                   between(0, 360), between(90, 500), LevelsFt[random() % LevelsFt.size()], climb));
    }
    return movers;
}

void SearchForConflicts(benchmark::State& state)
{
    const std::vector<Mover> movers = SkyOf(state.range(0));
    const AlertOptions options;
    ConflictSearch search;
    std::size_t found = 0;
    for (auto iteration : state)
        benchmark::DoNotOptimize(found = search.Find(movers, options).size());
    state.counters["conflicts"] = static_cast<double>(found);
}
BENCHMARK(SearchForConflicts)->Arg(250)->Arg(500)->Arg(1000)->Arg(2000)->Unit(benchmark::kMicrosecond);

/// Twice the targets beside the half in the same moments, each by its shortest search: what shows whether the search
/// is linear, whatever else the machine does meanwhile.
void SearchGrowth(benchmark::State& state)
{
    const AlertOptions options;
    const auto shortestMs = [&](ConflictSearch& search, const std::vector<Mover>& movers, double soFar) {
        const std::clock_t begin = std::clock();
        benchmark::DoNotOptimize(search.Find(movers, options).size());
        return std::min(soFar, static_cast<double>(std::clock() - begin) * 1000 / CLOCKS_PER_SEC);
    };
    const std::vector<Mover> half = SkyOf(1000);
    const std::vector<Mover> whole = SkyOf(2000);
    ConflictSearch ofHalf;
    ConflictSearch ofWhole;
    double halfMs = std::numeric_limits<double>::max();
    double wholeMs = halfMs;
    for (auto iteration : state) {
        halfMs = shortestMs(ofHalf, half, halfMs);
        wholeMs = shortestMs(ofWhole, whole, wholeMs);
    }
    state.counters["of_1000_ms"] = halfMs;
    state.counters["of_2000_ms"] = wholeMs;
}
BENCHMARK(SearchGrowth)->Iterations(200)->Unit(benchmark::kMicrosecond);

void TryAllPairs(benchmark::State& state)
{
    const std::vector<Mover> movers = SkyOf(state.range(0));
    const AlertOptions options;
    std::size_t found = 0;
    for (auto iteration : state) {
        found = 0;
        for (std::size_t i = 0; i < movers.size(); ++i)
            for (std::size_t j = i + 1; j < movers.size(); ++j)
                found += FindConflict(movers[i], movers[j], options) ? 1U : 0U;
        benchmark::DoNotOptimize(found);
    }
    state.counters["conflicts"] = static_cast<double>(found);
}
BENCHMARK(TryAllPairs)->Arg(250)->Arg(500)->Arg(1000)->Arg(2000)->Unit(benchmark::kMicrosecond);

/// The search with all that makes alerts of what it finds.
void RefreshAlerts(benchmark::State& state)
{
    std::vector<AlertTarget> targets;
    for (const Mover& mover : SkyOf(state.range(0))) {
        AlertTarget& target = targets.emplace_back();
        target.PlayerId = static_cast<std::int32_t>(targets.size());
        target.Track.Id = targets.size();
        target.Track.Last.Position = mover.Position;
        target.Track.Last.AltitudeFt = static_cast<std::int32_t>(mover.AltitudeFt);
        target.Track.Last.GroundSpeedKt = static_cast<std::int16_t>(std::hypot(mover.EastKt, mover.NorthKt));
        target.Track.Course = std::atan2(mover.EastKt, mover.NorthKt) * DegreesPerRadian;
        target.Track.ClimbFtPerMin = mover.ClimbFtPerMin;
    }
    AlertOptions options;
    options.ConflictAlert = true;
    options.LowAltitudeAlert = true;
    AlertMonitor monitor;
    const AirportIndex airports;
    double now = 0;
    for (auto iteration : state)
        benchmark::DoNotOptimize(monitor.Refresh(targets, airports, options, now++));
    state.counters["alerts"] = static_cast<double>(monitor.Standing().size());
}
BENCHMARK(RefreshAlerts)->Arg(250)->Arg(500)->Arg(1000)->Arg(2000)->Unit(benchmark::kMicrosecond);

void TwoMilliseconds(benchmark::State& state)
{
    for (auto iteration : state)
        state.SetIterationTime(0.002);
}
BENCHMARK(TwoMilliseconds)->UseManualTime()->Iterations(1)->Unit(benchmark::kMicrosecond);
} // namespace
} // namespace corvane::bench
