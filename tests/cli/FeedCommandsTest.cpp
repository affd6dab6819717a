#include "cli/RecordJson.h"
#include "tests/cli/CommandRun.h"
#include "tests/core/TemporaryFolder.h"
#include "tests/net/LoopbackAddress.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <future>
#include <unistd.h>

namespace corvane {
namespace {
using test::LoopbackAddress;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

/// One member of the events of a kind, of the player where there is one.
std::vector<std::string> Told(const std::string& out, const std::string& event, const char* member)
{
    std::vector<std::string> told;
    std::istringstream in(out);
    for (std::string line; std::getline(in, line);) {
        const Json json = Json::parse(line);
        const Json& from = json.contains("Player") ? json["Player"] : json;
        if (json["event"] == event)
            told.push_back(from[member].is_string() ? from[member].get<std::string>() : from[member].dump());
    }
    return told;
}

TEST(FeedCommands, FollowAFeedAndOfferItAgain)
{
    const TemporaryFolder folder;
    const auto file = folder.Write("aircraft.json", std::string(R"({"now":1,"aircraft":[
            {"hex":"4ceb3f","flight":"KLM1    ","lat":52.5,"lon":4.5,"altitude":26175,"track":210,"speed":409,"seen":0},
            {"hex":"00000a","lat":40,"lon":4.5,"seen":0}, {"hex":"00000b","lat":52,"lon":4,"altitude":"ground","seen":0}]})"));
    const std::string place = LoopbackAddress(81) + ":30003";
    auto first = std::async(std::launch::async, [&] {
        return RunCli({"join", "--feed", "json:" + file.string(), "--around", "52,4", "--feed-out", "sbs:" + place,
                       "--nickname", "Tower", "--for", "6"});
    });
    std::array<int, 2> pipe{};
    ASSERT_EQ(::pipe(pipe.data()), 0);
    ASSERT_EQ(write(pipe[1], "hello\n", 6), 6);
    close(pipe[1]);
    const CommandRun second =
        RunCli({"join", "--feed", "sbs:" + place, "--around", "52,4", "--for", "4.5"}, {}, pipe[0]);
    close(pipe[0]);
    const CommandRun joined = first.get();
    ASSERT_EQ(joined.Status, 0) << joined.Notices;
    EXPECT_THAT(Told(joined.Out, "player-added", "Name"), ElementsAre("**Tower", "KLM1", "00000B"));
    EXPECT_THAT(Told(joined.Out, "player-updated", "AltitudeFt"), Contains("26175"));
    EXPECT_THAT(Told(joined.Out, "joined", "Session"), Contains(HasSubstr("aircraft.json")));
    EXPECT_THAT(Told(joined.Out, "disconnected", "Reason").size(), 1U);

    EXPECT_EQ(second.Status, 0) << second.Notices;
    EXPECT_THAT(Told(second.Out, "player-added", "Name"), ElementsAre("**ATC Controller", "KLM1", "00000B"));
    // 409 kt are 210.4 m/s, of which session messages carry the whole metres.
    EXPECT_THAT(Told(second.Out, "player-updated", "GroundSpeedKt"), Contains("408"));
    EXPECT_THAT(Told(second.Out, "chat", "Text"), Contains("hello"));
    EXPECT_THAT(Told(second.Out, "notice", "Text"), Contains(HasSubstr("cannot be talked to")));
}

TEST(FeedCommands, RefuseWrongArguments)
{
    const std::vector<std::vector<std::string>> wrong{
        {"join", "--feed", "sbs:127.0.0.1:1"}, // around what?
        {"join", "--around", "52,4"},
        {"join", "--feed", "sbs:127.0.0.1:70000", "--around", "52,4"},
        {"join", "--feed", "https://x/", "--around", "52,4"},
        {"join", "--feed", "json:x", "--around", "52,4", "--session", "A"},
        {"join", "--feed", "json:x", "--around", "52,4", "--radius", "0"},
        {"join", "--feed-out", "30003"},
        {"host", "--name", "A", "--from", "sbs:", "--around", "52,4"},
        {"host", "--name", "A", "--feed-out", "sbs:0"},
    };
    for (const auto& arguments : wrong)
        EXPECT_EQ(RunCli(arguments).Status, 2) << arguments.back();
    const CommandRun taken = RunCli({"join", "--feed", "json:x", "--around", "52,4", "--feed-out", "sbs:192.0.2.1:9"});
    EXPECT_EQ(taken.Status, 1);
    EXPECT_THAT(taken.Notices, HasSubstr("192.0.2.1:9")); // not an address of this machine
}
} // namespace
} // namespace corvane
