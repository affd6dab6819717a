// A feed of the whole world's sky, 20,000 aircraft at one line a second each: a second of it on the way from bytes to
// the program's players, of which 5,000 are in reach, beside decoding its lines alone. Bytes to the feed's table may
// cost three times the decoding, the whole way a third of the second.

#include "bench/SessionScene.h"
#include "core/MagVarGrid.h"
#include "follow/SessionFollower.h"
#include "tests/traffic/NobodyListens.h"
#include "traffic/NearestTraffic.h"
#include "traffic/TrafficProvider.h"
#include "traffic/feeds/BaseStationSource.h"
#include "traffic/feeds/BaseStationText.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdlib>

namespace corvane::bench {
namespace {
constexpr unsigned AircraftCount = 20000;
constexpr std::size_t MemberCount = 5000;
constexpr double RadiusNm = 300;

/// A third of the aircraft fly within the radius, the others all over the earth; each moves with every second.
std::string SecondOfFeed(unsigned second)
{
    std::string text;
    for (unsigned i = 0; i < AircraftCount; ++i) {
        const double angle = i * 2.39996; // the golden angle spreads them evenly
        const double share = static_cast<double>(i % 1000) / 1000;
        const bool near = i % 3 == 0;
        const FeedReport report{.Address = 0x400000 + i,
                                .Callsign = "BEN" + std::to_string(i),
                                .Position = LatLon{(near ? 4.9 * share : 80 * share) * std::sin(angle) + second * 1e-3,
                                                   (near ? 4.9 * share : 170 * share) * std::cos(angle)},
                                .AltitudeFt = static_cast<std::int32_t>(5000 + i % 30000),
                                .GroundSpeedKt = 250,
                                .TrackDeg = i % 360,
                                .Squawk = 1200,
                                .OnGround = false};
        text += EncodeBaseStationLine(report, "2026/11/23,08:59:16.493");
    }
    return text;
}

/// Seconds of the feed that differ, made beforehand.
const std::string& FeedAt(std::vector<std::string>& made, std::size_t second)
{
    constexpr std::size_t Different = 8;
    while (made.size() < Different)
        made.push_back(SecondOfFeed(static_cast<unsigned>(made.size())));
    return made[second % Different];
}

ByteSpan BytesOf(const std::string& text)
{
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

void DecodeFeed(benchmark::State& state)
{
    std::vector<std::string> made;
    std::size_t second = 0;
    for (auto iteration : state) {
        const std::string& text = FeedAt(made, second++);
        state.SetIterationTime(ProcessorSecondsOf([&] {
            LineCutter cutter;
            cutter.Feed(text, [](std::string_view line) { benchmark::DoNotOptimize(DecodeBaseStationLine(line)); });
        }));
    }
}
BENCHMARK(DecodeFeed)->UseManualTime()->Unit(benchmark::kMillisecond);

void FeedToTable(benchmark::State& state)
{
    std::vector<std::string> made;
    BaseStationSource source;
    std::size_t second = 0;
    for (auto iteration : state) {
        const std::string& text = FeedAt(made, second++);
        const auto nowMs = static_cast<std::int64_t>(second * 1000);
        state.SetIterationTime(ProcessorSecondsOf([&] {
            source.Receive(BytesOf(text), nowMs);
            source.Advance(nowMs);
            benchmark::DoNotOptimize(source.TakeEvents());
        }));
    }
    if (source.Table().Count() != AircraftCount)
        std::abort();
}
BENCHMARK(FeedToTable)->UseManualTime()->Unit(benchmark::kMillisecond);

/// The feed, a tenth of a second of it at a time.
class PlayedFeed final : public TrafficFeed {
public:
    explicit PlayedFeed(std::vector<std::string>& made) : m_made(made) {}
    [[nodiscard]] std::string Name() const override { return "Played"; }
    TrafficEvents Take(std::int64_t nowMs) override
    {
        const std::string& text = FeedAt(m_made, static_cast<std::size_t>(nowMs / 1000));
        const std::size_t tenth = static_cast<std::size_t>(nowMs / 100 % 10);
        const std::size_t from = text.size() * tenth / 10;
        m_source.Receive(BytesOf(text).subspan(from, text.size() * (tenth + 1) / 10 - from), nowMs);
        m_source.Advance(nowMs);
        return m_source.TakeEvents();
    }
    void Tell(const TrafficWord& /*word*/) override {}
    [[nodiscard]] bool CanBeTalkedTo() const override { return false; }
    [[nodiscard]] std::string Health() const override { return {}; }

private:
    std::vector<std::string>& m_made;
    BaseStationSource m_source;
};

class Updates final : public test::NobodyListens {
public:
    void PlayerUpdated(const PlayerRecord& /*player*/) override { ++Count; }

    std::size_t Count = 0;
};

void FeedToPlayers(benchmark::State& state)
{
    std::vector<std::string> made;
    FeedAt(made, 0);
    std::int64_t nowMs = 0;
    TrafficDetailsTable details;
    TrafficConnection connection{.Name = "Played", .Address = "played:", .Open = {}};
    connection.Clock = [&nowMs] { return nowMs; };
    connection.Open = [&made]() -> Result<std::unique_ptr<TrafficFeed>> {
        return std::unique_ptr<TrafficFeed>(std::make_unique<NearestTraffic>(
            std::make_unique<PlayedFeed>(made), NearestTrafficOptions{{0, 0}, RadiusNm, MemberCount, {}}));
    };
    TrafficProvider provider(std::move(connection), details);
    const MagVarGrid grid;
    Updates events;
    SessionFollower follower(provider, grid, events, {});
    if (!follower.Join())
        std::abort();
    const auto tenth = [&] {
        nowMs += 100;
        if (!follower.Tick(nowMs))
            std::abort();
    };
    for (int i = 0; i < 100; ++i)
        tenth(); // everybody has come
    for (auto iteration : state)
        state.SetIterationTime(ProcessorSecondsOf([&] {
            for (int i = 0; i < 10; ++i)
                tenth();
        }));
    if (follower.Players().PlayerCount() <= MemberCount) // and this end; who has just gone may still stand there
        std::abort();
    state.counters["players"] = static_cast<double>(follower.Players().PlayerCount());
    state.counters["updates_per_second"] =
        static_cast<double>(events.Count) / static_cast<double>(state.iterations() + 10);
}
BENCHMARK(FeedToPlayers)->UseManualTime()->Unit(benchmark::kMillisecond);
} // namespace
} // namespace corvane::bench
