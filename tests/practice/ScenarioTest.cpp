#include "practice/PracticeScenario.h"
#include "practice/PracticeSession.h"
#include "tests/practice/Controller.h"
#include "tests/practice/PracticeWorld.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>

namespace corvane {
namespace {
using testing::AllOf;
using testing::Contains;
using testing::HasSubstr;
using testing::StartsWith;

TEST(Scenarios, AreReadOrSayWhereTheyAreWrong)
{
    const std::pair<const char*, const char*> wrong[] = {
        {"", "is no JSON"},
        {"{", "is no JSON"},
        {"[]", "/: "},
        {R"({"Name":"a"})", "/: "},
        {R"({"Name":"a","Aircraft":[]})", "/Aircraft: "},
        {R"({"Name":"a","Aircraft":[{"Class":"airliner"},{"Class":"zeppelin"}]})", "/Aircraft/1/Class: "},
        {R"({"Name":"a","Aircraft":[{"Class":"airliner","Distance":"far"}]})", "/Aircraft/0/Distance: "},
        {R"({"Name":"a","Aircraft":[{"Class":"airliner","Distance":1e9}]})", "/Aircraft/0/Distance: "},
        {R"({"Name":"a","Wind":{"Direction":10},"Aircraft":[{"Class":"airliner"}]})", "/Wind: "},
        {R"({"Name":"a","Runways":{"Landing":[16]},"Aircraft":[{"Class":"airliner"}]})", "/Runways/Landing/0: "},
        {R"({"Name":"a","Aircraft":[{"Class":"airliner"}],"Hints":[{"At":-1,"Text":"b"}]})", "/Hints/0/At: "},
        {R"({"Name":"a","Aircraft":[{"Class":"airliner","Callsign":"N1AB"},{"Class":"piston","Callsign":"N1AB"}]})",
         "/Aircraft/1/Callsign: "},
    };
    for (const auto& [text, why] : wrong) {
        const auto scenario = ParseScenario(text, "some.json");
        ASSERT_FALSE(scenario) << text;
        EXPECT_EQ(scenario.error().What, "some.json") << text;
        EXPECT_THAT(scenario.error().Why, StartsWith(why)) << text;
    }
    const auto scenario = ParseScenario(
        R"({"Name":"a","PilotsAsk":false,"HostLeavesAt":9,"Wind":{"Direction":240,"Speed":15},
            "Runways":{"TakeOff":["16l"]},"Aircraft":[{"Class":"light jet","To":"kmid","At":5,"Over":"big","Fuel":9}]})",
        "f");
    ASSERT_TRUE(scenario) << scenario.error().Text();
    EXPECT_FALSE(scenario->PilotsAsk);
    EXPECT_EQ(scenario->HostLeavesAtS, 9);
    EXPECT_EQ(scenario->Aircraft.front().Kind, AircraftKind::LightJet);
    EXPECT_EQ(scenario->Aircraft.front().To, "KMID");
    EXPECT_EQ(scenario->Aircraft.front().AtS, 5);
    EXPECT_EQ(scenario->Aircraft.front().Over, "BIG");
    EXPECT_EQ(scenario->Aircraft.front().FuelMin, 9);
    EXPECT_EQ(scenario->Wind.FromDeg, 240);
    EXPECT_EQ(scenario->Wind.SpeedKt, 15);
    EXPECT_EQ(scenario->TakeOff, std::vector<std::string>{"16L"});
}

class ScenarioSessions : public testing::Test {
protected:
    void Create(PracticeScenario scenario, std::uint64_t seed = 1)
    {
        Atc.reset();
        Practice.reset();
        Network = std::make_unique<InMemoryNetwork>();
        Provider = std::make_unique<InMemoryProvider>(*Network);
        PracticeOptions options;
        options.Seed = seed;
        options.Scenario = std::move(scenario);
        auto created = PracticeSession::Create(*Provider, test::MakeScene(), *Grid, options);
        ASSERT_TRUE(created) << created.error().Text();
        Practice = *std::move(created);
        Atc = std::make_unique<test::Controller>(*Network);
        Atc->Ask();
        Live(1);
        Atc->HandshakeTick();
    }
    void Live(int seconds)
    {
        for (int i = 0; i < seconds; ++i) {
            Practice->Advance(++Now);
            if (Atc->Session.SessionJoined)
                Atc->PumpTick();
        }
    }

    std::unique_ptr<InMemoryNetwork> Network;
    std::unique_ptr<InMemoryProvider> Provider;
    std::unique_ptr<MagVarGrid> Grid = std::make_unique<MagVarGrid>();
    std::unique_ptr<PracticeSession> Practice;
    std::unique_ptr<test::Controller> Atc;
    double Now = 0;
};

TEST_F(ScenarioSessions, HappenAsTheyAreWritten)
{
    const auto scenario = ParseScenario(
        R"({"Name":"Test","HostLeavesAt":400,"Wind":{"Direction":330,"Speed":12},"Hints":[{"At":30,"Text":"Look north."}],"Aircraft":[
            {"Class":"airliner","Callsign":"Lantern1","Bearing":0,"Distance":30,"Altitude":9000,
             "SilentAt":100,"SilentFor":100,"EmergencyAt":250,"Emergency":"fire on board"},
            {"Class":"piston","Callsign":"N1AB","At":20,"OnGround":true,"LeavesAt":300},
            {"Class":"light jet","Callsign":"N2AB","Bearing":90,"Distance":40,"Altitude":12000,"ReadBackErrors":1}]})",
        "test.json");
    ASSERT_TRUE(scenario) << scenario.error().Text();
    Create(*scenario);
    Live(40);
    EXPECT_THAT(Atc->Chat, Contains("Instructor: Look north."));
    EXPECT_THAT(Atc->Chat, Contains("Instructor: Wind 330 at 12 knots, landing 34L, departing 34R"));
    EXPECT_THAT(Atc->Chat, Contains(AllOf(StartsWith("N1AB: hello, at the stand"), HasSubstr("request pushback"))));
    Atc->Chat.clear();
    Atc->Say("N2AB descend 8000");
    Atc->Say("Lantern1 heading 090");
    Live(80); // into the silence
    EXPECT_THAT(Atc->Chat, Contains("N2AB: descending 7000, N2AB"));
    EXPECT_THAT(Atc->Chat, Contains("Lantern1: heading 090, Lantern1"));
    Atc->Chat.clear();
    Atc->Say("Lantern1 heading 270");
    Live(100);
    EXPECT_THAT(Atc->Chat, testing::Not(Contains(StartsWith("Lantern1: "))));
    Live(60);
    EXPECT_THAT(Atc->Chat, Contains(HasSubstr("fire on board")));
    EXPECT_THAT(Atc->Chat, Contains(HasSubstr("N1AB: request taxi"))) << "it was forgotten";
    Live(200);
    EXPECT_EQ(Practice->Members().size(), 2U) << "the host and N1AB are gone";
    EXPECT_TRUE(Practice->Host() != nullptr && Practice->Host()->IsPilot());
}

TEST_F(ScenarioSessions, AreTheSameForAFileAndASeed)
{
    const auto run = [this](std::uint64_t seed) {
        const auto scenario = ParseScenario(
            R"({"Name":"T","Aircraft":[{"Class":"airliner"},{"Class":"piston","OnGround":true,"At":10}]})", "t");
        Now = 0;
        Create(*scenario, seed);
        Live(600);
        std::string trace;
        for (const auto& member : Practice->Members())
            if (member->IsPilot())
                trace += member->Name() + ' ' + std::to_string(member->Flying->State().Position.Lat) + '\n';
        return trace;
    };
    const std::string first = run(5);
    EXPECT_EQ(run(5), first);
    EXPECT_NE(run(6), first);
}

TEST_F(ScenarioSessions, ThatShipArePlayable)
{
    const char* const source = std::getenv("CORVANE_SOURCE"); // NOLINT(concurrency-mt-unsafe): one thread
    if (source == nullptr)
        GTEST_SKIP() << "CORVANE_SOURCE names no folder";
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(std::string(source) + "/data/scenarios")) {
        const auto scenario = ReadScenario(entry.path());
        ASSERT_TRUE(scenario) << scenario.error().Text();
        EXPECT_FALSE(scenario->About.empty()) << entry.path();
        Now = 0;
        Create(*scenario);
        Live(60);
        EXPECT_THAT(Atc->Chat, Contains(HasSubstr("hello"))) << entry.path();
        ++count;
    }
    EXPECT_EQ(count, 6);
}
} // namespace
} // namespace corvane
