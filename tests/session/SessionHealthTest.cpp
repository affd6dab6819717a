#include "session/SessionHealth.h"

#include "session/FlightPlanMemory.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {
TEST(SessionHealths, TellSilenceAndSolitude)
{
    SessionHealth health(1000);
    EXPECT_EQ(health.Report(1, 500000).Level, HealthLevel::Well) << "nobody was ever here";
    health.Heard(500000);
    struct Row {
        std::size_t Members;
        std::int64_t NowMs;
        HealthLevel Level;
        const char* Text;
    };
    for (const Row& row : {Row{3, 500999, HealthLevel::Well, "3 members, heard 0 s ago"},
                           {3, 509999, HealthLevel::Well, "3 members, heard 9 s ago"},
                           {3, 510000, HealthLevel::Quiet, "3 members, nothing heard for 10 s"},
                           {3, 559999, HealthLevel::Quiet, "3 members, nothing heard for 59 s"},
                           {3, 560000, HealthLevel::Over, "Nobody has been heard for 60 s. The host may be gone."},
                           {1, 560000, HealthLevel::Over, "Everybody else has left the session."},
                           {3, 499000, HealthLevel::Well, "3 members, heard 0 s ago"}}) {
        const HealthReport report = health.Report(row.Members, row.NowMs);
        EXPECT_EQ(report.Level, row.Level) << row.NowMs;
        EXPECT_EQ(report.Text, row.Text);
    }
}

TEST(FlightPlanMemories, GiveARejoiningPilotItsPlan)
{
    PlayerTable table;
    table.Append("Ann", 1, PilotRole);
    table.Append("Bob", 2, PilotRole);
    table.Players()[0].DestinationIcao = "KSEA";
    table.Players()[0].CruiseAltitude = 9000;
    FlightPlanMemory memory;
    memory.Keep(table.Players());
    table.Empty();
    table.Append("Ann", 7, PilotRole);
    table.Append("Bob", 8, PilotRole);
    table.Append("Ann", 9, PilotRole);
    table.Players()[2].DestinationIcao = "KPDX";
    for (PlayerRecord& player : table.Players())
        memory.Restore(player);
    EXPECT_EQ(table.Players()[0].DestinationIcao, "KSEA");
    EXPECT_EQ(table.Players()[0].CruiseAltitude, 9000);
    EXPECT_EQ(table.Players()[0].PlayerId, 7);
    EXPECT_FALSE(HasFlightPlan(table.Players()[1]));
    EXPECT_EQ(table.Players()[2].DestinationIcao, "KPDX") << "what has been entered stays";
}
} // namespace
} // namespace corvane
