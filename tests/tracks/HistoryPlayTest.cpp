#include "tracks/HistoryPlay.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <vector>

namespace corvane {
namespace {
PlayerRecord PilotAt(std::int32_t id, double eastNm, double magHeading = 90)
{
    PlayerRecord pilot;
    pilot.PlayerId = id;
    pilot.Name = "N" + std::to_string(id);
    pilot.Role = PilotRole;
    pilot.Longitude = eastNm / 60;
    pilot.AltitudeFt = 5000;
    pilot.MagHeading = magHeading;
    pilot.GroundSpeedKt = 360;
    return pilot;
}

/// Plays histories and writes down what comes of it.
class PlayedHistory {
public:
    explicit PlayedHistory(std::int32_t staleSeconds = 10)
    {
        AlertOptions alerts;
        alerts.ConflictAlert = true;
        m_monitor.SetOptions({.HistoryDots = 0, .HistorySeconds = 5, .StaleSeconds = staleSeconds}, alerts);
    }
    void Line(double time, std::vector<PlayerRecord> players) { m_play.Play({time, std::move(players)}); }
    /// "2 begin", "9 end".
    std::vector<std::string> Events()
    {
        m_play.Finish();
        return m_events;
    }
    int Visits = 0; ///< of members by refreshes

private:
    std::unique_ptr<MagVarGrid> m_grid = std::make_unique<MagVarGrid>();
    TrafficMonitor m_monitor{*m_grid};
    std::vector<std::string> m_events;
    HistoryPlay m_play{m_monitor,
                       [this](const AlertEvent& event) {
                           char text[40];
                           std::snprintf(text, sizeof text, "%g %s", event.Time, event.Begins ? "begin" : "end");
                           m_events.emplace_back(text);
                       },
                       [this](PlayerRecord& /*member*/, std::size_t /*slot*/) { ++Visits; }};
};

TEST(HistoryPlay, RefreshesAtEachSecondFromTheFirstLineToTheLast)
{
    PlayedHistory history;
    history.Line(0.5, {PilotAt(2, 0), PilotAt(3, 1)});
    history.Line(1.2, {PilotAt(2, 0), PilotAt(3, 1)});
    history.Line(1.5, {PilotAt(2, 0), PilotAt(3, 1)}); // the refresh at 1.5 knows this line
    history.Line(3.9, {PilotAt(2, 0), PilotAt(3, 50)});
    history.Line(4.4, {});
    EXPECT_THAT(history.Events(), testing::ElementsAre("1.5 begin"));
    EXPECT_EQ(history.Visits, 8) << "two members at 0.5, 1.5, 2.5 and 3.5; 4.5 is past the end";
}

TEST(HistoryPlay, KeepsASilentMemberUntilItIsStaleAndThreeRefreshesMore)
{
    PlayedHistory history;
    history.Line(0, {PilotAt(2, 0), PilotAt(3, 1)});
    for (int second = 1; second <= 20; ++second)
        history.Line(second, {PilotAt(2, 0)});
    EXPECT_THAT(history.Events(), testing::ElementsAre("1 begin", "12 end")); // stale at 10
}

TEST(HistoryPlay, NeverStaleMeansAlwaysThere)
{
    PlayedHistory history(0);
    history.Line(0, {PilotAt(2, 0), PilotAt(3, 1)});
    history.Line(1e9, {PilotAt(2, 100)});
    history.Line(1e9 + 5, {});
    EXPECT_THAT(history.Events(), testing::ElementsAre("1 begin", "1e+09 end"));
}

TEST(HistoryPlay, WorksForItsLinesAndNotForTheTimeBetweenThem)
{
    PlayedHistory history;
    for (int line = 0; line < 2000; ++line) // 60,000 years, and nobody is met twice
        history.Line(line * 1e9 / 2, {PilotAt(line + 2, 0)});
    EXPECT_THAT(history.Events(), testing::IsEmpty());
    EXPECT_LE(history.Visits, 2000 * 16);
}

TEST(HistoryPlay, LeavesOutTheControllerAndWhoIsNoPilot)
{
    PlayedHistory history;
    PlayerRecord observer = PilotAt(4, 0);
    observer.Role = ObserverRole;
    PlayerRecord ownNamesake = PilotAt(5, 0);
    ownNamesake.Name = "N1";
    for (int second = 0; second < 3; ++second)
        history.Line(second, {PilotAt(HistoryOwnId, 0), observer, ownNamesake, PilotAt(6, 0)});
    EXPECT_THAT(history.Events(), testing::IsEmpty());
    EXPECT_EQ(history.Visits, 3);
}
} // namespace
} // namespace corvane
