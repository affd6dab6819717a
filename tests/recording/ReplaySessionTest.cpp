#include "recording/ReplaySession.h"

#include "tests/practice/Controller.h"
#include "tests/recording/SampleRecording.h"
#include "tests/session/SessionFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane {
namespace {
using test::Joined;
using test::Left;
using test::Renamed;
using test::Said;
using testing::ElementsAre;
using testing::IsEmpty;

const PositionMessage Position{
    .Type = MessageType::PositionFull, .Latitude = 47.5, .Longitude = -122.3, .AltitudeFt = 5000, .TrueHeading = 90};

/// The recording that is replayed, and a controller who joins.
class ReplaySessions : public testing::Test {
protected:
    void Replay(const std::vector<test::SampleRecord>& records, const ReplayOptions& options = {})
    {
        auto created = ReplaySession::Create(Provider, test::RecordingOf(records), Clock, options);
        ASSERT_TRUE(created) << created.error().Text();
        Session = *std::move(created);
    }
    void Join(std::string password = {})
    {
        Atc.Ask(std::move(password));
        ASSERT_TRUE(Session->Advance());
        ASSERT_TRUE(Atc.HandshakeTick());
        Live(0); // the controller asks who is there, and is told
    }
    void Live(std::int64_t ms)
    {
        Now += ms;
        ASSERT_TRUE(Session->Advance());
        Atc.PumpTick();
    }
    [[nodiscard]] std::vector<std::string> Shown() const
    {
        std::vector<std::string> names;
        for (const PlayerRecord& player : Atc.Players.Players())
            names.push_back(player.Name);
        return names;
    }

    std::int64_t Now = 0;
    PlaybackClock Clock{[this] { return Now; }};
    InMemoryNetwork Network;
    InMemoryProvider Provider{Network};
    std::unique_ptr<ReplaySession> Session;
    test::Controller Atc{Network};
};

TEST_F(ReplaySessions, ShowThoseWhoJoinWhatTheRecorderSaw)
{
    Replay({Joined(0, 5, "**A"), Joined(0, 7, "N1"), Said(0, 7, AnnounceMessage{MessageType::PilotAnnounce, 7}),
            Said(0, 7, AircraftInfoMessage{"Jet Plane", "Learjet"}), Joined(0, 8, "Watcher"),
            Said(0, 8, AnnounceMessage{MessageType::ObserverAnnounce, 8}), Said(1000, 7, Position),
            Said(1500, 5, ChatTextMessage{"N1 say heading"}), Said(1600, 7, ChatTextMessage{"heading 090"}),
            Renamed(2000, 7, "N1 heavy"), Left(3000, 8), Left(3000, 5)});
    Join();
    EXPECT_THAT(Shown(), ElementsAre("**ATC Controller", "**A", "N1", "Watcher"));
    EXPECT_EQ(Atc.Find("N1")->Role, PilotRole);
    EXPECT_EQ(Atc.Find("Watcher")->Role, ObserverRole);
    Atc.UpkeepTick(); // asks for the aircraft
    Live(0);
    EXPECT_EQ(Atc.Find("N1")->AircraftTitle, "Learjet");
    Clock.SetSpeed(10);
    Live(99);
    EXPECT_EQ(Atc.Find("N1")->AltitudeFt, 0);
    Live(1);
    EXPECT_EQ(Atc.Find("N1")->AltitudeFt, 5000);
    Live(60);
    EXPECT_THAT(Atc.Chat, ElementsAre("**A: N1 say heading", "N1: heading 090"));
    Live(140);
    Atc.UpkeepTick();
    Live(0);
    EXPECT_THAT(Shown(), ElementsAre("**ATC Controller", "**A", "N1 heavy")) << "the host stays to the end";
    Session->End();
    Atc.PumpTick();
    EXPECT_FALSE(Clock.IsOpen());
}

TEST_F(ReplaySessions, BeginWhereTheyAreAsked)
{
    Replay({Joined(0, 7, "N1"), Said(0, 7, AnnounceMessage{MessageType::ObserverAnnounce, 7}), Joined(0, 8, "N2"),
            Renamed(100, 7, "Watcher"), Said(100, 7, ChatTextMessage{"past"}), Left(200, 8), Joined(300, 8, "N2"),
            Said(300, 8, AnnounceMessage{MessageType::PilotAnnounce, 8}), Said(301, 7, ChatTextMessage{"next"})},
           {.BeginMs = 250});
    Join();
    EXPECT_THAT(Shown(), ElementsAre("**ATC Controller", "**A", "Watcher"));
    EXPECT_EQ(Atc.Find("Watcher")->Role, ObserverRole);
    Live(51);
    Atc.UpkeepTick();
    Live(0);
    EXPECT_THAT(Shown(), ElementsAre("**ATC Controller", "**A", "Watcher", "N2"));
    EXPECT_THAT(Atc.Chat, ElementsAre("Watcher: next"));
}

TEST_F(ReplaySessions, TakeNothingFromOthers)
{
    Replay({Joined(0, 7, "N1"),
            Said(0, 7, AnnounceMessage{MessageType::PilotAnnounce, 7}),
            Said(10, 7, PlainMessage{MessageType::RemovedByHost}),
            Said(10, 7, PlainMessage{MessageType::HostLeft}),
            {10, RecordKind::MemberSpoke, 7, {1, 2}},
            Said(20, 7, ChatTextMessage{"here"})});
    Join();
    Member intruder(Network);
    intruder.Join(intruder.Sessions().front().InstanceGuid, "Intruder");
    intruder.SendBytes(AllPlayers, {1, 2, 3});
    intruder.Send(AllPlayers, PlainMessage{MessageType::RemovedByHost});
    intruder.Send(AllPlayers, AnnounceMessage{MessageType::PilotAnnounce, 1});
    ASSERT_TRUE(Session->Advance());
    Now += 20;
    ASSERT_TRUE(Session->Advance());
    EXPECT_THAT(intruder.Received(), ElementsAre("ChatText"));
}

TEST_F(ReplaySessions, AreMadeAsAsked)
{
    Replay({Joined(0, 7, "N1"), Joined(9, 8, "N2"), Left(10, 8), Joined(11, 9, "N3")});
    EXPECT_EQ(Session->Entry().Name, "Traffic");
    EXPECT_EQ(Session->Entry().MaxPlayers, 3 + 8);
    EXPECT_EQ(Session->Entry().Flags, SessionKeepAlive | SessionMigrateHost);
    Session->End();
    EXPECT_TRUE(Session->Advance()) << "nothing happens afterwards";

    Replay({Joined(0, 7, "N1"), Joined(0, 8, "N2"), Said(0, 8, ChatTextMessage{"no room for me"})},
           {.SessionName = "Again", .Password = "tower", .MaxPlayers = 2, .MigrateHost = false});
    EXPECT_EQ(Session->Entry().Name, "Again");
    EXPECT_EQ(Session->Entry().Flags, SessionKeepAlive | SessionPasswordRequired);
    EXPECT_TRUE(Network.Listing(EnumSessionsAvailable | EnumSessionsPasswordRequired).empty()) << "full";
}

TEST_F(ReplaySessions, SayWhenTheyAreLost)
{
    std::string_view failure = "CreateGroup";
    FailingFactory failing(Provider, [&](std::string_view operation, int /*call*/) { return operation == failure; });
    EXPECT_FALSE(ReplaySession::Create(failing, test::RecordingOf({}), Clock, {}));
    failure = "GetMessageCount";
    const auto lost = ReplaySession::Create(failing, test::RecordingOf({Joined(0, 7, "N1")}), Clock, {});
    ASSERT_TRUE(lost);
    EXPECT_FALSE((*lost)->Advance());
}
} // namespace
} // namespace corvane
