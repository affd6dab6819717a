// The displays of a crowded sky. How much of the targets' blocks is covered by others over 1,000 scenes of 30 targets,
// in the modern display beside the classic one; how often blocks change their place in steady traffic; what placing 200
// blocks takes; and a refresh of 300 targets with everything on, beside a classic one.

#include "bench/Desktop.h"
#include "core/GreatCircle.h"
#include "practice/Pilot.h"
#include "radar/PlayerTargets.h"
#include "radar/RadarDisplay.h"
#include "radar/RecordingSurface.h"
#include "radar/paint/QtRaster.h"
#include "tests/practice/PracticeWorld.h"

#include <benchmark/benchmark.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace corvane::bench {
namespace {
constexpr std::int32_t Width = 1024;
constexpr std::int32_t Height = 768;
constexpr LatLon Center{47.45, -122.31};
constexpr std::size_t Crowd = 30;

PlayerRecord Member(std::size_t number)
{
    PlayerRecord player;
    player.Name = "N" + std::to_string(100 + number) + "CV";
    player.PlayerId = static_cast<std::int32_t>(number + 10);
    player.Role = PilotRole;
    player.AircraftType = "B738";
    player.DestinationIcao = "KBIG";
    player.CruiseAltitude = 24000;
    return player;
}

/// Traffic that can be asked for its records second by second.
class Traffic {
public:
    virtual ~Traffic() = default;
    virtual void Step() = 0;
    std::vector<PlayerRecord> Players;
};

/// A practice session's pilots.
class PracticeTraffic final : public Traffic {
public:
    explicit PracticeTraffic(std::uint64_t seed) : m_random(seed)
    {
        constexpr int SettlingS = 240;
        for (std::size_t i = 0; i < Crowd; ++i) {
            m_pilots.emplace_back(m_scene, *m_grid, static_cast<AircraftKind>(i % 4), static_cast<Scenario>(i % 4),
                                  m_random);
            Players.push_back(Member(i));
        }
        for (int second = 0; second < SettlingS; ++second)
            Step();
    }
    void Step() override
    {
        for (std::size_t i = 0; i < m_pilots.size(); ++i) {
            m_pilots[i].Step(m_random);
            const ReportedPosition report = m_pilots[i].Report();
            Players[i].Latitude = report.Position.Lat;
            Players[i].Longitude = report.Position.Lon;
            Players[i].AltitudeFt = static_cast<std::int32_t>(report.AltitudeFt);
            Players[i].MagHeading = report.TrueHeading;
            Players[i].GroundSpeedKt = static_cast<std::int16_t>(report.SpeedKt);
        }
    }

private:
    PracticeScene m_scene = test::MakeScene();
    std::unique_ptr<MagVarGrid> m_grid = std::make_unique<MagVarGrid>();
    PracticeRandom m_random;
    std::vector<Pilot> m_pilots;
};

/// Aircraft anywhere within some miles, each on its course.
class RandomTraffic final : public Traffic {
public:
    RandomTraffic(std::uint64_t seed, std::size_t count, double miles) : m_random(seed)
    {
        for (std::size_t i = 0; i < count; ++i) {
            const LatLon at = Along(Center, Between(0, 360), Between(0, miles));
            PlayerRecord& player = Players.emplace_back(Member(i));
            player.Latitude = at.Lat;
            player.Longitude = at.Lon;
            player.AltitudeFt = static_cast<std::int32_t>(Between(2000, 37000));
            player.MagHeading = std::floor(Between(0, 360));
            player.GroundSpeedKt = static_cast<std::int16_t>(Between(90, 480));
        }
    }
    void Step() override
    {
        for (PlayerRecord& player : Players) {
            const LatLon there =
                Along({player.Latitude, player.Longitude}, player.MagHeading, player.GroundSpeedKt / 3600.0);
            player.Latitude = there.Lat;
            player.Longitude = there.Lon;
        }
    }

private:
    double Between(double low, double high) { return std::uniform_real_distribution<double>(low, high)(m_random); }
    std::mt19937_64 m_random;
};

/// A scope without a window.
class Scope {
public:
    explicit Scope(const DisplayOptions& options, std::int16_t level, std::int32_t width = Width,
                   std::int32_t height = Height)
        : m_options(options), m_view(StartUpView(width, height, Center, level))
    {
        if (options.TrueProportions)
            m_view = WithTrueProportions(m_view);
        m_area.AreaAirports = test::PracticeAirports();
        m_targets.SetArea(m_area);
    }
    void Refresh(Traffic& traffic, double now)
    {
        for (const PlayerRecord& player : traffic.Players)
            m_targets.Report(player, now);
        const MapScene scene{m_area, *m_grid, m_view, m_flags};
        const Pilots members{traffic.Players, 1, "**ATC"};
        m_targets.Refresh({scene, members, m_options, {}, m_surface, now});
    }
    [[nodiscard]] std::int64_t SharedPixels() const
    {
        std::int64_t shared = 0;
        const auto& marks = m_targets.Marks().Targets;
        for (std::size_t i = 0; i < marks.size(); ++i)
            for (std::size_t k = 0; k < i; ++k)
                shared += SharedArea(marks[i].Place.Box, marks[k].Place.Box);
        return shared;
    }
    [[nodiscard]] const TargetMarks& Marks() const { return m_targets.Marks(); }

private:
    DisplayOptions m_options;
    ScopeView m_view;
    AreaModel m_area;
    DisplayFlags m_flags;
    std::unique_ptr<MagVarGrid> m_grid = std::make_unique<MagVarGrid>();
    TargetDisplay m_targets{*m_grid};
    RecordingSurface m_surface;
};

/// The classic display's blocks, whose boxes the new code measures.
DisplayOptions ClassicBlocks()
{
    DisplayOptions options;
    options.HistoryDots = 1; // anything that is not classic, and that no block depends on
    return options;
}

void CoveredBlocks(benchmark::State& state)
{
    constexpr std::uint64_t Scenes = 1000;
    double classic = 0;
    double modern = 0;
    for (auto iteration : state) {
        for (std::uint64_t seed = 0; seed < Scenes; ++seed) {
            std::unique_ptr<Traffic> traffic;
            if (seed % 2 == 0)
                traffic = std::make_unique<PracticeTraffic>(seed);
            else
                traffic = std::make_unique<RandomTraffic>(seed, Crowd, 30 + static_cast<double>(seed % 40));
            const auto level = static_cast<std::int16_t>(14 + seed / 2 % 10);
            const auto sharedBy = [&](const DisplayOptions& options) {
                Scope scope(options, level);
                scope.Refresh(*traffic, 0);
                return static_cast<double>(scope.SharedPixels());
            };
            classic += sharedBy(ClassicBlocks());
            modern += sharedBy(ModernDisplay());
        }
    }
    state.counters["classic_px"] = classic;
    state.counters["modern_px"] = modern;
}
BENCHMARK(CoveredBlocks)->Iterations(1)->Unit(benchmark::kSecond);

/// Changes of place of all blocks while traffic flies on for ten minutes.
void ChangesInSteadyTraffic(benchmark::State& state)
{
    constexpr int Seconds = 600;
    double changes = 0;
    double blockMinutes = 0;
    const auto watch = [&](Traffic& traffic, std::int16_t level) {
        Scope scope(ModernDisplay(), level);
        std::map<std::int32_t, ScopePoint> stood; // the leader's end from the target
        for (int second = 0; second < Seconds; ++second, traffic.Step()) {
            scope.Refresh(traffic, second);
            for (const TargetMark& mark : scope.Marks().Targets) {
                const ScopePoint stands{mark.Place.LeaderEnd.X - mark.At.X, mark.Place.LeaderEnd.Y - mark.At.Y};
                const auto [before, first] = stood.try_emplace(mark.PlayerId, stands);
                changes += !first && before->second != stands ? 1 : 0;
                before->second = stands;
                blockMinutes += 1.0 / 60;
            }
        }
    };
    for (auto iteration : state)
        for (std::uint64_t seed = 1; seed <= 6; ++seed) {
            PracticeTraffic practice(seed);
            watch(practice, static_cast<std::int16_t>(14 + seed));
            RandomTraffic random(seed, Crowd, 50);
            watch(random, static_cast<std::int16_t>(14 + seed));
        }
    state.counters["changes_a_minute"] = changes / blockMinutes;
    state.counters["one"] = 1;
}
BENCHMARK(ChangesInSteadyTraffic)->Iterations(1)->Unit(benchmark::kSecond);

/// The limit that placing 200 blocks is held against.
void ThreeMilliseconds(benchmark::State& state)
{
    for (auto iteration : state)
        state.SetIterationTime(0.003);
}
BENCHMARK(ThreeMilliseconds)->UseManualTime()->Iterations(1)->Unit(benchmark::kMicrosecond);

/// The dearest placement: all blocks are new. resting: a later one, in which nothing has to move.
void Place200(benchmark::State& state, bool resting)
{
    std::mt19937 random(5);
    std::vector<BlockToPlace> blocks;
    for (std::uint64_t track = 1; track <= 200; ++track) {
        const auto x = static_cast<std::int32_t>(random() % Width);
        const auto y = static_cast<std::int32_t>(random() % Height);
        blocks.push_back({track, {x, y}, {58, 26}, std::nullopt});
    }
    BlockPlacer placer;
    double now = 0;
    for (auto iteration : state) {
        if (!resting)
            placer.Clear();
        benchmark::DoNotOptimize(
            placer.Place(blocks, {{0, 0, Width, Height}, {}, {}}, {true, 9, 30}, now, PlacementOccasion::Refresh));
        now += 1;
    }
}
BENCHMARK_CAPTURE(Place200, AllNew, false)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Place200, Resting, true)->Unit(benchmark::kMicrosecond);

/// A refresh of 300 moving targets all over a wide scope, from what they have reported to the picture.
void Refresh300(benchmark::State& state, const DisplayOptions& options)
{
    constexpr std::int32_t WideWidth = 1920;
    constexpr std::int32_t WideHeight = 1080;
    const Desktop desktop;
    const ScopeFont font = MakeScopeFont(ScopeQFont());
    AreaModel area;
    area.AreaAirports = test::PracticeAirports();
    area.AreaCenter = Center;
    const auto grid = std::make_unique<MagVarGrid>();
    const DisplayFlags flags;
    const SessionState session;
    RandomTraffic traffic(3, 300, 260);
    PlayerTable players;
    for (const PlayerRecord& player : traffic.Players)
        players.Append(player.Name, player.PlayerId, PilotRole);
    RadarDisplay display({area, *grid, flags, session, players}, font);
    display.Load(WideWidth, WideHeight);
    display.SetDisplay(options, 0);
    double now = 0;
    const auto report = [&] {
        traffic.Step();
        now += 1;
        for (std::size_t i = 0; i < traffic.Players.size(); ++i) {
            players.Players()[i] = traffic.Players[i];
            display.Report(players.Players()[i], now);
        }
    };
    const auto refresh = [&] {
        display.RefreshTargets(now);
        display.Draw();
    };
    for (int warmUp = 0; warmUp < 60; ++warmUp) {
        report();
        refresh();
    }
    for (auto iteration : state) {
        state.PauseTiming();
        report();
        state.ResumeTiming();
        refresh();
    }
}

DisplayOptions EverythingOn()
{
    DisplayOptions options = ModernDisplay();
    options.Blocks = BlockContent::Full;
    options.HistoryDots = 30;
    options.HistorySeconds = 2;
    options.PredictionMinutes = 5;
    options.CeilingFt = 60000;
    return options;
}
BENCHMARK_CAPTURE(Refresh300, Classic, ClassicDisplay())->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Refresh300, Modern, ModernDisplay())->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Refresh300, EverythingOn, EverythingOn())->Unit(benchmark::kMicrosecond);
} // namespace
} // namespace corvane::bench
