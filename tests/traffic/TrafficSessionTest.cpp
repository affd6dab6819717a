#include "traffic/TrafficSession.h"

#include "follow/HostWatch.h"
#include "follow/SessionFollower.h"
#include "net/memory/InMemoryNetwork.h"
#include "traffic/TrafficProvider.h"
#include "traffic/TrafficQueue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <utility>

namespace corvane {
namespace {
using testing::ElementsAre;
using testing::IsEmpty;

/// What a test plays, and what it is told.
struct Play {
    TrafficEvents Waiting;
    std::vector<std::string> Heard;
    bool Listens = true;
};

class PlayedFeed final : public TrafficFeed {
public:
    explicit PlayedFeed(Play& play) : m_play(play) {}

    [[nodiscard]] std::string Name() const override { return "Played traffic"; }
    TrafficEvents Take(std::int64_t /*nowMs*/) override { return std::exchange(m_play.Waiting, {}); }
    void Tell(const TrafficWord& word) override
    {
        if (const auto* line = std::get_if<LineSaid>(&word))
            m_play.Heard.push_back(line->Text);
        else if (const auto* moved = std::get_if<MemberMoved>(&word))
            m_play.Heard.push_back(moved->Name + " at " + std::to_string(std::lround(moved->Report.AltitudeFt)));
        else if (const auto* left = std::get_if<MemberLeft>(&word))
            m_play.Heard.push_back(left->Name + " left");
    }
    [[nodiscard]] bool CanBeTalkedTo() const override { return m_play.Listens; }
    [[nodiscard]] std::string Health() const override { return {}; }

private:
    Play& m_play;
};

/// The table that a reader of the events has, and what was said.
class Diary final : public SessionEvents {
public:
    void Joined(PlayerId /*ownPlayerId*/, std::string_view session) override { Session = session; }
    void PlayerAdded(const PlayerRecord& player) override { Players[player.PlayerId] = player; }
    void PlayerUpdated(const PlayerRecord& player) override { Players[player.PlayerId] = player; }
    void PlayerRemoved(const PlayerRecord& player) override { Players.erase(player.PlayerId); }
    void Chat(std::string_view from, std::string_view text) override
    {
        Lines.push_back(std::string(from) + ": " + std::string(text));
    }
    void Notice(MessageIcon /*icon*/, std::string_view /*text*/) override {}
    void Disconnected(std::string_view /*reason*/) override {}

    [[nodiscard]] std::vector<std::string> Names() const
    {
        std::vector<std::string> names;
        for (const auto& [id, player] : Players)
            names.push_back(player.Name + " " + player.Role);
        return names;
    }

    std::string Session;
    std::map<PlayerId, PlayerRecord> Players;
    std::vector<std::string> Lines;
};

AircraftAppeared Cessna(TrafficKey key, std::string name)
{
    return {.Key = key, .Name = std::move(name), .ShortType = "c172p", .Title = "c172p"};
}

AircraftMoved Moved(TrafficKey key, double altitudeFt)
{
    return {key,
            {.Position = {47.45, -122.31},
             .AltitudeFt = altitudeFt,
             .TrueHeading = 163,
             .GroundSpeedKt = 110,
             .Squawk = 4321,
             .FrequencyKhz = {}}};
}

/// This program in a session of played traffic.
class PlayedTraffic : public testing::Test {
protected:
    void Join()
    {
        TrafficConnection connection;
        connection.Name = "Played";
        connection.Address = "played:";
        connection.Open = [this]() -> Result<std::unique_ptr<TrafficFeed>> {
            return std::unique_ptr<TrafficFeed>(std::make_unique<PlayedFeed>(Played));
        };
        connection.Clock = [this] { return NowMs; };
        Provider = std::make_unique<TrafficProvider>(std::move(connection), Details);
        Member = std::make_unique<SessionFollower>(*Provider, *Grid, Events, FollowOptions{});
        ASSERT_TRUE(Member->Join());
        Live(2000);
        ASSERT_TRUE(Member->IsJoined());
    }
    void Live(std::int64_t ms)
    {
        for (const std::int64_t until = NowMs + ms; NowMs < until;) {
            NowMs += 100;
            ASSERT_TRUE(Member->Tick(NowMs));
        }
    }
    void Tell(TrafficEvent event) { Played.Waiting.push_back(std::move(event)); }

    std::int64_t NowMs = 0;
    Play Played;
    TrafficDetailsTable Details;
    Diary Events;
    std::unique_ptr<MagVarGrid> Grid = std::make_unique<MagVarGrid>();
    std::unique_ptr<TrafficProvider> Provider;
    std::unique_ptr<SessionFollower> Member;
};

TEST_F(PlayedTraffic, HasItsAircraftAsMembers)
{
    Tell(Cessna(7, "TEST01"));
    Join();
    Tell(AircraftAppeared{.Key = 8, .Name = "KSEA_TW", .ShortType = "ATC", .Title = "ATC", .IsPilot = false});
    Tell(Moved(7, 3000));
    Tell(AircraftSaid{7, "Hello"});
    Live(500);
    EXPECT_EQ(Events.Session, "Played traffic");
    EXPECT_THAT(Events.Names(),
                testing::UnorderedElementsAre("**ATC Controller player", "TEST01 player", "KSEA_TW observer"));
    EXPECT_THAT(Events.Lines, ElementsAre("TEST01: Hello"));
    const auto player = std::find_if(Events.Players.begin(), Events.Players.end(),
                                     [](const auto& entry) { return entry.second.Name == "TEST01"; });
    EXPECT_EQ(player->second.AltitudeFt, 2999); // 914 m, as a message carries it
    EXPECT_EQ(player->second.AircraftTitle, "c172p");
    ASSERT_NE(Details.Find(player->first), nullptr);
    EXPECT_EQ(Details.Find(player->first)->Report->Squawk, 4321);
    Tell(AircraftRenamed{7, "N1234C"});
    Live(35000);
    EXPECT_THAT(Events.Names(),
                testing::UnorderedElementsAre("**ATC Controller player", "N1234C player", "KSEA_TW observer"));
    Tell(AircraftVanished{7});
    Tell(Moved(7, 4000)); // a source that forgets itself
    Live(2000);
    EXPECT_EQ(Events.Players.size(), 2U);
}

/// A scope that looks elsewhere loses its whole sky between two looks at the messages.
TEST_F(PlayedTraffic, OutlivesThousandsThatComeAndGoAtOnce)
{
    constexpr TrafficKey Aircraft = 5000;
    for (TrafficKey key = 0; key < Aircraft; ++key) {
        Tell(Cessna(key, "GONE" + std::to_string(key)));
        Tell(Moved(key, 3000));
    }
    for (TrafficKey key = 0; key < Aircraft; ++key)
        Tell(AircraftVanished{key});
    Tell(Cessna(Aircraft, "STAYS"));
    Join();
    EXPECT_EQ(Events.Players.size(), 2U);
    Live(35000);
    EXPECT_THAT(Events.Names(), testing::UnorderedElementsAre("**ATC Controller player", "STAYS player"));
}

TEST_F(PlayedTraffic, HearsTheControllerOrSaysThatItCannot)
{
    Tell(Cessna(1, "TEST01"));
    Tell(Cessna(2, "TEST02"));
    Join();
    Member->Say("TEST01, radar contact");
    Live(200);
    EXPECT_THAT(Played.Heard, ElementsAre("TEST01, radar contact"));
    EXPECT_THAT(Events.Lines, ElementsAre("**ATC Controller: TEST01, radar contact"));
    Played.Listens = false;
    Member->Say("Anybody?");
    Tell(SourceNotice{"the link is down"});
    Live(200);
    EXPECT_EQ(Played.Heard.size(), 1U);
    EXPECT_EQ(Events.Lines.at(2), "Played: This traffic cannot be talked to: nobody has read \"Anybody?\".");
    EXPECT_EQ(Events.Lines.at(3), "Played: the link is down");
}

/// A hosted session whose host is watched, and a pilot of another program in it.
TEST(TrafficSession, TellsItsFeedOfTheOthersAndOfNobodyElse)
{
    InMemoryNetwork network;
    InMemoryProvider provider(network);
    Diary watched;
    const auto grid = std::make_unique<MagVarGrid>();
    HostWatch watch(provider, *grid, watched);
    Play play;
    PlayedFeed feed(play);
    TrafficDetailsTable details;
    TrafficSessionOptions options;
    options.SessionName = "Bridge";
    options.HostName = "KSEA_TW";
    options.MaxPlayers = 5;
    options.HostIsMember = true;
    options.ShowMembers = true;
    auto session = TrafficSession::Create(watch, feed, details, options);
    ASSERT_TRUE(session) << session.error().Text();
    watch.Begin({(*session)->Peer(), (*session)->HostId(), "KSEA_TW", false, (*session)->Entry()}, 0);

    auto pilot = provider.DirectPlayCreate();
    ASSERT_TRUE(pilot);
    SessionPeer& peer = **pilot;
    ASSERT_TRUE(peer.InitializeConnection(InMemoryProvider::ConnectionAddress));
    ASSERT_TRUE(peer.Open(peer.GetDPEnumSessions(0, EnumSessionsAvailable)->front(), OpenJoin));
    const PlayerId id = *peer.CreatePlayer("Joe", "Player");
    const auto say = [&](const Message& message) { ASSERT_TRUE(peer.Send(id, AllPlayers, 0, EncodeMessage(message))); };
    std::int64_t nowMs = 0;
    const auto live = [&](std::int64_t ms) {
        for (const std::int64_t until = nowMs + ms; nowMs < until; nowMs += 100) {
            ASSERT_TRUE((*session)->Advance(nowMs));
            ASSERT_TRUE(watch.Tick(nowMs));
        }
    };
    for (TrafficKey key = 1; key <= 3; ++key)
        play.Waiting.emplace_back(Cessna(key, "TEST0" + std::to_string(key)));
    say(PlainMessage{MessageType::JoinRequest});
    live(200);
    const auto answer = DecodeMessage(peer.Receive()->Content);
    EXPECT_EQ(std::get<AnnounceMessage>(*answer), (AnnounceMessage{MessageType::PilotAnnounce, id}));
    say(AnnounceMessage{MessageType::PilotAnnounce, id});
    say(ChatTextMessage{"Hi"});
    say(PositionMessage{.Type = MessageType::PositionFull, .Latitude = 47, .Longitude = -122, .AltitudeFt = 1000});
    for (TrafficKey key = 1; key <= 3; ++key)
        play.Waiting.emplace_back(AircraftSaid{key, "Hello"});
    live(6000);
    EXPECT_THAT(play.Heard, ElementsAre("Joe: Hi", "Joe at 1001"));
    // Five places: the host, Joe, one that stays free, and two aircraft. The third speaks through the host.
    EXPECT_THAT(watched.Names(),
                testing::UnorderedElementsAre("KSEA_TW observer", "Joe player", "TEST01 player", "TEST02 player"));
    EXPECT_THAT(watched.Lines,
                testing::UnorderedElementsAre("Joe: Hi", "TEST01: Hello", "TEST02: Hello", "KSEA_TW: TEST03: Hello"));
    (*session)->SetController(id);
    say(ChatTextMessage{"TEST01, radar contact"});
    live(200);
    EXPECT_EQ(play.Heard.back(), "TEST01, radar contact") << "whom its callsign stands for needs no name";
    play.Heard.clear();
    pilot->reset();
    live(6000);
    EXPECT_THAT(play.Heard, ElementsAre("Joe left"));
    play.Waiting.emplace_back(Moved(3, 3000));
    live(200);
    EXPECT_EQ((*session)->AircraftCount(), 3U);
}

TEST(TrafficQueue, HoldsNoMoreThanThereIsHoweverLongNobodyLooks)
{
    TrafficQueue queue;
    queue.Push({Cessna(1, "TEST01"), Moved(1, 1000)});
    EXPECT_EQ(queue.Take().size(), 2U);
    for (TrafficKey key = 2; key < 20000; ++key)
        queue.Push({Cessna(key, "CAME"), Moved(key, 0), AircraftVanished{key}, Moved(1, key), AircraftSaid{1, "Hi"}});
    queue.Push({Cessna(30000, "STAYS"), AircraftVanished{1}});
    const TrafficEvents events = queue.Take();
    ASSERT_EQ(events.size(), TrafficQueue::LineLimit + 2);
    EXPECT_EQ(std::get<AircraftAppeared>(events.front()).Name, "STAYS");
    EXPECT_EQ(std::get<AircraftVanished>(events.back()).Key, 1U);
    EXPECT_THAT(queue.Take(), IsEmpty());
}
} // namespace
} // namespace corvane
