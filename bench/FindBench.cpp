#include "bench/Desktop.h"
#include "radar/windows/FindWindow.h"

#include <QLineEdit>
#include <benchmark/benchmark.h>

#include <string>

// A keystroke in the window that finds places, over an area of 25,000 entries and a session of 500 pilots: at most 20
// milliseconds, with the list of results laid out and painted. Beside it the plain search of the same texts.

namespace corvane::bench {
namespace {
constexpr std::size_t EntryCount = 25000;
constexpr std::int32_t PilotCount = 500;

std::string Code(std::size_t i)
{
    return {static_cast<char>('A' + i / 17576 % 26), static_cast<char>('A' + i / 676 % 26),
            static_cast<char>('A' + i / 26 % 26), static_cast<char>('A' + i % 26)};
}

AreaModel LargeArea()
{
    AreaModel area;
    for (std::size_t i = 0; i < EntryCount; ++i) {
        AirportRecord& airport = area.AreaAirports.emplace_back();
        airport.Icao = Code(i);
        airport.Name = "Municipal field of " + Code(i * 7919) + " and " + Code(i * 104729);
    }
    return area;
}

PlayerTable Crowd()
{
    PlayerTable players;
    for (std::int32_t id = 1; id <= PilotCount; ++id) {
        players.Append("N" + Code(static_cast<std::size_t>(id)), id, PilotRole);
        players.Players().back().Latitude = 1;
    }
    return players;
}

/// text  the field's before and after, in turn
void Keystroke(benchmark::State& state, const char* before, const char* after)
{
    const Desktop desktop;
    const AreaModel area = LargeArea();
    const PlayerTable players = Crowd();
    FindWindow window(area, players);
    window.show();
    auto& part = *window.findChild<QLineEdit*>("Part");
    for (auto iteration : state) {
        state.PauseTiming();
        part.setText(before);
        QApplication::processEvents();
        state.ResumeTiming();
        part.setText(after);
        QApplication::processEvents();
    }
}
BENCHMARK_CAPTURE(Keystroke, MuchIsFound, "", "m")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Keystroke, LittleIsFound, "QQQ", "QQQZ")->Unit(benchmark::kMillisecond);

/// Every text of the area once, as they stand.
void PlainSearch(benchmark::State& state)
{
    const AreaModel area = LargeArea();
    for (auto iteration : state) {
        std::size_t found = 0;
        for (const AirportRecord& airport : area.AreaAirports)
            found += airport.Icao.find("QQQZ") != std::string::npos || airport.Name.find("QQQZ") != std::string::npos;
        benchmark::DoNotOptimize(found);
    }
}
BENCHMARK(PlainSearch)->Unit(benchmark::kMillisecond);

void TwentyMilliseconds(benchmark::State& state)
{
    for (auto iteration : state)
        state.SetIterationTime(0.020);
}
BENCHMARK(TwentyMilliseconds)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);
} // namespace
} // namespace corvane::bench
