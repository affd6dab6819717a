#include "core/MagVarGrid.h"
#include "net/memory/InMemoryNetwork.h"
#include "practice/PracticeSession.h"
#include "tests/practice/Controller.h"
#include "tests/practice/PracticeWorld.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>

namespace corvane {
namespace {
constexpr double WeekS = 7 * 24 * 3600;
constexpr int Pilots = 29; // and one that only watches

/// The limit that a week of practice is held against: two minutes.
void SimulatedWeekLimit(benchmark::State& state)
{
    for (auto _ : state)
        state.SetIterationTime(120);
}

/// A week of a 30-member practice session with a controller who follows it, pumping every ten seconds of it and
/// keeping up every thirty. Counts what must stay bounded: the table, the waiting messages, and entries of members
/// that had left before the upkeep.
void SimulatedWeek(benchmark::State& state)
{
    for (auto _ : state) {
        InMemoryNetwork network;
        InMemoryProvider provider(network);
        const auto grid = std::make_unique<MagVarGrid>();
        auto practice = PracticeSession::Create(provider, test::MakeScene(), *grid, {.Pilots = Pilots});
        if (!practice) {
            state.SkipWithError(practice.error().Text().c_str());
            return;
        }
        test::Controller atc(network);
        atc.Ask();
        std::size_t largestTable = 0;
        std::int32_t longestQueue = 0;
        std::size_t notPruned = 0;
        int tick = 0;
        for (double now = 10; now <= WeekS; now += 10) {
            (*practice)->Advance(now);
            if (!atc.HandshakeTick())
                continue;
            longestQueue = std::max(longestQueue, *atc.Session.SessionPeer->GetMessageCount(atc.Session.OwnPlayerId));
            atc.PumpTick();
            if (++tick % 3 != 0)
                continue;
            atc.UpkeepTick();
            largestTable = std::max(largestTable, atc.Players.PlayerCount());
            const auto members = atc.Members();
            for (const PlayerRecord& player : atc.Players.Players())
                notPruned += std::none_of(members.begin(), members.end(), [&player](const SessionMember& member) {
                    return member.Id == player.PlayerId && member.ShortName == player.Name;
                });
        }
        state.counters["LargestTable"] = static_cast<double>(largestTable);
        state.counters["LongestQueue"] = longestQueue;
        state.counters["NotPruned"] = static_cast<double>(notPruned);
        state.counters["Over"] = atc.Disconnected || (*practice)->IsOver();
    }
}

BENCHMARK(SimulatedWeekLimit)->UseManualTime()->Iterations(1)->Unit(benchmark::kSecond);
BENCHMARK(SimulatedWeek)->Iterations(1)->Unit(benchmark::kSecond);
} // namespace
} // namespace corvane
