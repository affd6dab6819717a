// Reads arbitrary bytes as a history of positions and plays it through the alerts. The work must stay within what its
// lines hold: a refresh visits a member at most for as long as it can matter after its last report.

#include "cli/HistoryFile.h"

#include <cstdlib>
#include <memory>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace corvane;
    constexpr std::size_t VisitsPerReport = 20; // stale after 10 seconds, and what confirmation takes
    const auto grid = std::make_unique<MagVarGrid>();
    TrafficMonitor monitor(*grid);
    AlertOptions alerts;
    alerts.ConflictAlert = true;
    alerts.LowAltitudeAlert = true;
    monitor.SetOptions({.HistoryDots = 5, .HistorySeconds = 5, .StaleSeconds = 10}, alerts);
    std::size_t reports = 0;
    std::size_t visits = 0;
    std::size_t standing = 0;
    HistoryPlay play(
        monitor,
        [&](const AlertEvent& event) {
            standing += event.Begins ? 1U : 0U;
            if (!event.Begins && standing-- == 0)
                std::abort(); // an end without a begin
        },
        [&](PlayerRecord& /*member*/, std::size_t /*slot*/) { ++visits; });
    const auto read = ReadHistory({reinterpret_cast<const char*>(data), size}, "history", [&](HistoryLine line) {
        reports += line.Players.size();
        play.Play(std::move(line));
    });
    play.Finish();
    if (visits > VisitsPerReport * reports || monitor.Alerts().size() != standing)
        std::abort();
    static_cast<void>(read); // most inputs are refused
    return 0;
}
