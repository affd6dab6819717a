#include "tests/cli/CommandRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane {
namespace {
struct StatusCase {
    const char* Name;
    std::vector<std::string> Arguments;
    int Status;
};
class ExitStatus : public testing::TestWithParam<StatusCase> {};
TEST_P(ExitStatus, TellsWrongArgumentsFromFailedWork)
{
    const CommandRun run = RunCli(GetParam().Arguments);
    EXPECT_EQ(run.Status, GetParam().Status) << run.Notices;
    if (GetParam().Status != 0) {
        EXPECT_EQ(run.Out, "");
        EXPECT_NE(run.Notices, "");
    }
}
INSTANTIATE_TEST_SUITE_P(
    CommandLine, ExitStatus,
    testing::Values(StatusCase{"Help", {"--help"}, 0}, StatusCase{"Version", {"--version"}, 0},
                    StatusCase{"CommandHelp", {"scope", "--help"}, 0}, StatusCase{"Nothing", {}, 2},
                    StatusCase{"UnknownCommand", {"paint"}, 2}, StatusCase{"UnknownOption", {"calc", "--fast"}, 2},
                    StatusCase{"DumpOfNothing", {"dump"}, 2}, StatusCase{"BuildWithoutFolder", {"build"}, 2},
                    StatusCase{"AreaOfNothing", {"area"}, 2},
                    StatusCase{"AreaOfTwoThings", {"area", "--airport", "A", "--sector", "B"}, 2},
                    StatusCase{"ScopeWithoutOutput", {"scope", "--airport", "A"}, 2},
                    StatusCase{"ZoomTooHigh", {"scope", "--airport", "A", "--primitives", "--zoom", "56"}, 2},
                    StatusCase{"SizeWithoutHeight", {"scope", "--airport", "A", "--primitives", "--size", "800"}, 2},
                    StatusCase{"UnknownFlag", {"scope", "--airport", "A", "--primitives", "--hide", "Moon"}, 2},
                    StatusCase{"CenterOfThree", {"scope", "--airport", "A", "--primitives", "--center", "1,2,3"}, 2},
                    StatusCase{"MissingSettings", {"dump", "settings", "--app-folder", "/no/such/folder"}, 1},
                    StatusCase{"MissingFolder", {"build", "--fs-folder", "/no/such/folder"}, 1}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST(CommandLine, FailedWorkIsOneLineThatNamesWhatAndWhy)
{
    const CommandRun run = RunCli({"dump", "vors", "--app-folder", "/no/such/folder"});
    EXPECT_EQ(run.Notices, "corvane-cli: /no/such/folder/world_vors.dat: No such file or directory\n");
}

TEST(Calc, AnswersLineByLine)
{
    const CommandRun run = RunCli({"calc"}, "[\"DistanceNm\",47,-122,48,-122]\n"
                                            "[\"DestinationNm\",10,20,360,60]\n\n"
                                            "[\"BcdFrequency\",18354176]\n" // 0x01181000
                                            "[\"HeadingFromPbh\",-1]\n"
                                            "[\"NormalizeCourse\",725]\n"
                                            "[\"MagneticFromTrue\",5,47,-122]\n"
                                            "[\"ArcSin\",2]\n");
    EXPECT_EQ(run.Status, 0) << run.Notices;
    EXPECT_EQ(run.Out, "60\n[11.0,20.0]\n\"118.1\"\n0\n365\n5\n0.0\n");
}

struct CalcFailure {
    const char* Name;
    const char* Line;
    const char* Why;
};
TEST(Calc, SaysWhatIsWrongWithALine)
{
    for (const CalcFailure& c : {CalcFailure{"NotJson", "nonsense", "not an array"},
                                 {"Unknown", "[\"Sine\",1]", "Sine"},
                                 {"TooFew", "[\"DistanceNm\",1,2,3]", "takes 4 numbers, not 3"},
                                 {"Text", "[\"ArcSin\",\"x\"]", "argument 1 is not a number"},
                                 {"TooLarge", "[\"DestinationNm\",1,2,3,40000]", "out of the range"}}) {
        const CommandRun run = RunCli({"calc"}, std::string("[\"ArcSin\",0]\n") + c.Line + "\n");
        EXPECT_EQ(run.Status, 1) << c.Name;
        EXPECT_EQ(run.Out, "0.0\n") << c.Name;
        EXPECT_THAT(run.Notices,
                    testing::AllOf(testing::StartsWith("corvane-cli: line 2: "), testing::HasSubstr(c.Why)))
            << c.Name;
    }
}

TEST(Message, DecodesLinesOfHexadecimal)
{
    const CommandRun run =
        RunCli({"message", "decode"}, "23 10 00 00 05 00 00 00 48 69 21 00 00\n" // length 5, the last byte ends it
                                      "0310000004000000FFFFFFFF\n"
                                      "3412000007000000\n"
                                      "1910000032000000\n"
                                      "\n");
    EXPECT_EQ(run.Status, 0) << run.Notices;
    std::istringstream lines(run.Out);
    std::string line;
    std::getline(lines, line);
    EXPECT_EQ(line, R"({"type":"ChatText","Text":"Hi!"})");
    std::getline(lines, line);
    EXPECT_EQ(line, R"({"type":"PilotAnnounce","PlayerId":-1})");
    std::getline(lines, line);
    EXPECT_EQ(line, R"({"type":"0x00001234","length":7})");
    std::getline(lines, line);
    EXPECT_THAT(line, testing::StartsWith(R"({"error":"PositionFull)"));
    std::getline(lines, line);
    EXPECT_THAT(line, testing::StartsWith(R"({"error":)"));
}

TEST(Message, EncodesWhatItDecodes)
{
    const std::string objects =
        "{\"type\":\"JoinRequest\"}\n"
        "{\"type\":\"PilotAnnounce\",\"PlayerId\":258}\n"
        "{\"type\":\"AircraftInfo\",\"AircraftType\":\"Jet Plane\",\"AircraftTitle\":\"737\"}\n";
    const CommandRun encoded = RunCli({"message", "encode"}, objects);
    EXPECT_EQ(encoded.Out, "0110000000000000\n031000000400000002010000\n0e100000050000000100373337\n");
    EXPECT_EQ(RunCli({"message", "decode"}, encoded.Out).Out, objects);
    EXPECT_EQ(RunCli({"message", "encode"}, "{\"type\":\"ChatText\",\"Text\":\"Hi\"}\n").Out,
              "2310000004000000486900000000\n");
    EXPECT_EQ(RunCli({"message", "encode"}, "{\"type\":\"Gossip\"}\n").Status, 1);
    EXPECT_EQ(RunCli({"message", "decode"}, "23 1\n").Status, 1);
}
} // namespace
} // namespace corvane
