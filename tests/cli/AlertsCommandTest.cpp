#include "tests/cli/CommandRun.h"
#include "tests/core/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

namespace corvane {
namespace {
/// Two head on along the equator at 360 kt, 0.2 nm nearer each second, the second one bound low under IFR.
std::string HeadOn(int seconds, double apartNm)
{
    std::string lines;
    for (int second = 0; second < seconds; ++second) {
        char line[600];
        std::snprintf(line, sizeof line,
                      R"({"Time":%d,"Players":[{"Name":"A","PlayerId":9,"Role":"player","Longitude":%.9f,)"
                      R"("AltitudeFt":5000,"MagHeading":90,"GroundSpeedKt":360},{"Name":"B","PlayerId":3,)"
                      R"("Role":"player","Longitude":%.9f,"AltitudeFt":5000,"MagHeading":270,"GroundSpeedKt":360,)"
                      R"("FlightRules":1,"MinimumAltitudeFt":5101}]})"
                      "\n",
                      second, second * 0.1 / 60, (apartNm - second * 0.1) / 60);
        lines += line;
    }
    return lines;
}

CommandRun AlertsOf(const std::string& history, std::vector<std::string> more = {})
{
    const TemporaryFolder folder;
    std::vector<std::string> arguments{"alerts", "--history", folder.Write("history.jsonl", history).string()};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return RunCli(arguments);
}

// 27.5 nm: within 3 nm in 122.5 s, so predicted from 3 s on (27.5 - 0.6 - 24 < 3) and confirmed at 4 s.
TEST(Alerts, TellsOfPredictionLossAndLowAltitude)
{
    const CommandRun run = AlertsOf(HeadOn(125, 27.5));
    EXPECT_EQ(run.Status, 0) << run.Notices;
    using testing::HasSubstr;
    std::vector<std::string> lines;
    std::istringstream in(run.Out);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    ASSERT_EQ(lines.size(), 4U) << run.Out;
    EXPECT_EQ(lines[0], R"({"time":1.0,"event":"begin","kind":"low-altitude","Player":3,"AltitudeFt":5000,)"
                        R"("MinimumAltitudeFt":5101})");
    EXPECT_THAT(lines[1], HasSubstr(R"({"time":4.0,"event":"begin","kind":"conflict","Players":[3,9],"violated":false,)"
                                    R"("SecondsToClosest":120.0,"ClosestNm":2.)"));
    EXPECT_THAT(lines[2],
                HasSubstr(R"({"time":123.0,"event":"end","kind":"conflict","Players":[3,9],"violated":false)"));
    EXPECT_THAT(lines[3],
                HasSubstr(R"({"time":123.0,"event":"begin","kind":"conflict","Players":[3,9],"violated":true)"));
}

TEST(Alerts, TakesTheModernDisplaysValuesAndThoseOfSet)
{
    EXPECT_EQ(AlertsOf(HeadOn(3, 20), {"--set", "ConflictAlert=0", "--set", "LowAltitudeAlert=0"}).Out, "");
    EXPECT_THAT(AlertsOf(HeadOn(3, 20), {"--set", "ConflictSeconds=60"}).Out, testing::Not(testing::HasSubstr("conf")));
    const CommandRun unknown = AlertsOf("", {"--set", "Alarm=1"});
    EXPECT_EQ(unknown.Status, 2);
    EXPECT_THAT(unknown.Notices, testing::HasSubstr("ConflictNm"));
    EXPECT_EQ(AlertsOf("", {"--set", "ConflictNm=0.4"}).Status, 2);
    EXPECT_EQ(RunCli({"alerts"}).Status, 2);
    EXPECT_EQ(AlertsOf("", {"--airport", "A", "--sector", "B"}).Status, 2);
}

struct HistoryCase {
    const char* Name;
    std::string Text;
    const char* Why; ///< nothing: the history is taken
};
class HostileHistory : public testing::TestWithParam<HistoryCase> {};
TEST_P(HostileHistory, IsRefusedWithItsLineOrTaken)
{
    const CommandRun run = AlertsOf(GetParam().Text);
    EXPECT_EQ(run.Out, "");
    EXPECT_EQ(run.Status, GetParam().Why == nullptr ? 0 : 1) << run.Notices;
    if (GetParam().Why == nullptr)
        return;
    EXPECT_THAT(run.Notices, testing::StartsWith("corvane-cli: "));
    EXPECT_THAT(run.Notices, testing::HasSubstr("history.jsonl: line "));
    EXPECT_THAT(run.Notices, testing::EndsWith(std::string(GetParam().Why) + "\n"));
}
constexpr const char* NoLine = "is not a JSON object with Time and Players";
std::string PlayerWith(const char* member)
{
    return std::string(R"({"Time":0,"Players":[{"Name":"A","Role":"player",)") + member + "}]}\n";
}
INSTANTIATE_TEST_SUITE_P(
    Alerts, HostileHistory,
    testing::Values(
        HistoryCase{"Empty", "", nullptr}, HistoryCase{"BlankLines", "\n \r\n\n", nullptr},
        HistoryCase{"NoPlayers", "{\"Time\":3}\n", nullptr}, HistoryCase{"NotJson", "x\n", NoLine},
        HistoryCase{"AnArray", "[]\n", NoLine}, HistoryCase{"CutLine", HeadOn(1, 90).substr(0, 200), NoLine},
        HistoryCase{"CutWithinALetter", "{\"Time\":0,\"Players\":[{\"Name\":\"\xC3", NoLine},
        HistoryCase{"DeepArrays", "{\"Players\":" + std::string(100000, '['), NoLine},
        HistoryCase{"NaN", "{\"Time\":NaN}\n", NoLine},
        HistoryCase{"TooLargeToBeANumber", "{\"Time\":1e999}\n", NoLine},
        HistoryCase{"TooLate", "{\"Time\":2e12}\n", "line 1: Time is out of range"},
        HistoryCase{"TimeAsText", "{\"Time\":\"0\"}\n", "line 1: Time is not a number"},
        HistoryCase{"GoingBack", "{\"Time\":5}\n\n{\"Time\":4.9}\n", "line 3: Time is before that of the line before"},
        HistoryCase{"EqualTimes", "{\"Time\":5}\n{\"Time\":5}\n", nullptr},
        HistoryCase{"TheWholeRangeOfTimes", "{\"Time\":-1e12}\n{\"Time\":1e12}\n", nullptr},
        HistoryCase{"PlayersAreNoList", "{\"Time\":0,\"Players\":{}}\n", "line 1: is not a JSON array of players"},
        HistoryCase{"PlayerIsNoObject", "{\"Time\":0,\"Players\":[7]}\n", "line 1: player 1: is not an object"},
        HistoryCase{"HugeAltitude", PlayerWith(R"("AltitudeFt":1e10)"),
                    "line 1: player 1: AltitudeFt does not fit its field"},
        HistoryCase{"OffTheEarth", PlayerWith(R"("Latitude":1e308)"), nullptr},
        HistoryCase{"HugeHeading", PlayerWith(R"("MagHeading":-1e308,"GroundSpeedKt":32767)"), nullptr}),
    [](const auto& row) { return std::string(row.param.Name); });
} // namespace
} // namespace corvane
