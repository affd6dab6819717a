#include "practice/PracticeSession.h"

#include "tests/practice/Controller.h"
#include "tests/practice/PracticeWorld.h"
#include "tests/session/FailingPeers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <set>

namespace corvane {
namespace {
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

class PracticeSessions : public testing::Test {
protected:
    void Create(const PracticeOptions& options)
    {
        auto created = PracticeSession::Create(Provider, test::MakeScene(), *Grid, options);
        ASSERT_TRUE(created) << created.error().Text();
        Practice = *std::move(created);
    }
    /// Lets seconds pass, with the controller's program following where there is one; its upkeep runs every 30.
    void Live(int seconds)
    {
        for (int i = 0; i < seconds; ++i) {
            Practice->Advance(++Now);
            if (Atc && Atc->Session.SessionJoined) {
                Atc->PumpTick();
                if (static_cast<int>(Now) % 30 == 0)
                    Atc->UpkeepTick();
            }
        }
    }
    bool Join(std::string password = {})
    {
        Atc = std::make_unique<test::Controller>(Network);
        Atc->Ask(std::move(password));
        Practice->Advance(Now);
        return Atc->HandshakeTick();
    }
    [[nodiscard]] std::vector<const PracticeMember*> PilotsInTheAir() const
    {
        std::vector<const PracticeMember*> pilots;
        for (const auto& member : Practice->Members())
            if (member->IsPilot() && member->Flying->Phase() == PilotPhase::Airborne)
                pilots.push_back(member.get());
        return pilots;
    }

    InMemoryNetwork Network;
    InMemoryProvider Provider{Network};
    std::unique_ptr<MagVarGrid> Grid = std::make_unique<MagVarGrid>();
    std::unique_ptr<PracticeSession> Practice;
    std::unique_ptr<test::Controller> Atc;
    double Now = 0;
};

TEST_F(PracticeSessions, LetOnlyTheirHostAdmitRefuseAndRemove)
{
    Create({.Pilots = 5, .ComeAndGo = false, .HostStaysS = -1});
    Live(3);
    ASSERT_TRUE(Join());
    const std::size_t members = Practice->Members().size();
    for (const MessageType type :
         {MessageType::RemovedByHost, MessageType::JoinRefused, MessageType::ObserverJoinRefused})
        ASSERT_TRUE(SendFromOwnPlayer(Atc->Session, AllPlayers, EncodeMessage(PlainMessage{type})));
    Live(5);
    EXPECT_EQ(Practice->Members().size(), members);
    const PracticeMember& host = *Practice->Host();
    ASSERT_TRUE(host.Peer().Send(host.Id(), Practice->Members().back()->Id(), SendGuaranteed,
                                 EncodeMessage(PlainMessage{MessageType::RemovedByHost})));
    Live(2);
    EXPECT_EQ(Practice->Members().size(), members - 1);
}

TEST_F(PracticeSessions, AdmitAControllerAndShowTheirPilots)
{
    Create({.Pilots = 6, .SessionName = PracticeSessionName("KBIG - Big"), .ShortPositionShare = 0.3});
    Live(5);
    ASSERT_TRUE(Join());
    EXPECT_THAT(Atc->Boxes, ElementsAre("Connected to FS session!"));
    EXPECT_EQ(Practice->Entry().Name, "Practice - KBIG - Big");
    Live(65);
    ASSERT_EQ(Atc->Players.PlayerCount(), Practice->Members().size() + 1);
    int shorts = 0;
    for (const auto& member : Practice->Members()) {
        const PlayerRecord* shown = Atc->Find(member->Name());
        ASSERT_NE(shown, nullptr) << member->Name();
        EXPECT_EQ(shown->Role, member->IsPilot() ? PilotRole : ObserverRole);
        if (!member->IsPilot())
            continue;
        EXPECT_EQ(shown->AircraftType, member->Flying->Aircraft().EngineType);
        EXPECT_THAT(member->Flying->Aircraft().Titles, Contains(shown->AircraftTitle));
        const ReportedPosition report = member->Flying->Report();
        EXPECT_NEAR(shown->Latitude, report.Position.Lat, 1e-5);
        EXPECT_NEAR(shown->Longitude, report.Position.Lon, 1e-6);
        EXPECT_NEAR(shown->AltitudeFt, report.AltitudeFt, 2.2);
        EXPECT_NEAR(shown->GroundSpeedKt, member->ShortPositions ? 0 : report.SpeedKt, 1);
        shorts += member->ShortPositions ? 1 : 0;
    }
    EXPECT_LT(shorts, 6);
    const auto groups = Atc->Session.SessionPeer->GetDPEnumGroups();
    ASSERT_TRUE(groups);
    ASSERT_EQ(groups->size(), 1U);
    EXPECT_EQ(groups->front().ShortName, "FS61_REFUSE_PARAMS");
}

TEST_F(PracticeSessions, AskForThePasswordOfTheirOwn)
{
    Create({.Pilots = 3, .Password = "tower"});
    EXPECT_EQ(Practice->Entry().Flags, 1092U);
    EXPECT_FALSE(Join("ground"));
    EXPECT_TRUE(Join("tower"));
}

TEST_F(PracticeSessions, AnswerEachRequestByTheRoomThatIsLeft)
{
    Create({.Pilots = 20, .MaxPlayers = 6});
    Live(3);
    EXPECT_EQ(Practice->Members().size(), 5U); // one place stays free
    EXPECT_TRUE(Join());
    // The transport keeps a seventh out; a host that finds too many refuses.
    auto another = Provider.DirectPlayCreate();
    ASSERT_TRUE(another && (*another)->InitializeConnection(InMemoryProvider::ConnectionAddress));
    EXPECT_FALSE((*another)->Open(Practice->Entry(), OpenJoin) && (*another)->CreatePlayer("N1", "Player"));
}

TEST_F(PracticeSessions, ObeyChatAndReadItBack)
{
    Create({.Pilots = 8, .ComeAndGo = false});
    Live(5);
    ASSERT_TRUE(Join());
    Live(40);
    ASSERT_FALSE(PilotsInTheAir().empty());
    const PracticeMember& pilot = *PilotsInTheAir().front();
    const std::string name = pilot.Name();

    Atc->Say(name + " say heading");
    Atc->Say(name + ", turn left heading 270, maintain 9000");
    Atc->Say(name + " fetch the moon");
    Atc->Say("nobody in particular");
    Live(6);
    ASSERT_EQ(Atc->Chat.size(), 3U);
    EXPECT_THAT(Atc->Chat[0], HasSubstr(name + ": heading "));
    EXPECT_THAT(Atc->Chat[1], testing::StartsWith(name + ": turning left heading 270, "));
    EXPECT_THAT(Atc->Chat[1], testing::EndsWith(" 9000, " + name));
    EXPECT_EQ(Atc->Chat[2], name + ": say again, " + name);

    Live(900);
    ASSERT_NE(Atc->Find(name), nullptr);
    EXPECT_EQ(Atc->Find(name)->MagHeading, 270);
    EXPECT_NEAR(Atc->Find(name)->AltitudeFt, 9000, 2);
}

TEST_F(PracticeSessions, LetOnePilotAskBackWhereSeveralAreMeant)
{
    Create({.Seed = 3, .Pilots = 30, .ComeAndGo = false});
    Live(5);
    ASSERT_TRUE(Join());
    Live(5);
    std::set<std::string> beginnings;
    std::string shared;
    for (const auto& member : Practice->Members())
        if (member->IsPilot() && !beginnings.insert(member->Name().substr(0, 3)).second)
            shared = member->Name().substr(0, 3);
    ASSERT_FALSE(shared.empty());
    Atc->Say(shared + ", hold");
    Live(3);
    ASSERT_EQ(Atc->Chat.size(), 1U);
    EXPECT_THAT(Atc->Chat[0], HasSubstr(": say again, " + shared));
}

TEST_F(PracticeSessions, GoOnWithAnotherHost)
{
    Create({.Pilots = 6, .HostStaysS = 600});
    const PlayerId first = Practice->Host()->Id();
    Live(5);
    ASSERT_TRUE(Join());
    for (int i = 0; i < 4 * 3600 && Practice->Host()->Id() == first; ++i)
        Live(1);
    ASSERT_NE(Practice->Host(), nullptr);
    ASSERT_NE(Practice->Host()->Id(), first);
    EXPECT_GT(Now, 600);
    Live(2);
    EXPECT_THAT(Atc->Boxes, Contains("The original host had left the session, Corvane is now hosting the session."));
    EXPECT_FALSE(Atc->Disconnected);
    const auto members = Atc->Members();
    EXPECT_TRUE(std::none_of(members.begin(), members.end(), [&](const auto& m) { return m.Id == first; }));

    // A second controller is admitted by the member that hosts now.
    const auto before = std::move(Atc);
    EXPECT_TRUE(Join());
}

TEST_F(PracticeSessions, KeepTheHostForTheFirstHourByDefault)
{
    for (std::uint64_t seed = 1; seed <= 5; ++seed) {
        Create({.Seed = seed, .Pilots = 4});
        const PlayerId host = Practice->Host()->Id();
        const double start = Now;
        while (Now < start + 3600)
            Live(60);
        EXPECT_EQ(Practice->Host()->Id(), host);
    }
}

TEST_F(PracticeSessions, LiveOnAsPlayersOfOnePeer)
{
    Create({.Pilots = 5, .HostName = "Instructor", .PeerForEach = false, .HostStaysS = -1});
    Live(5);
    ASSERT_TRUE(Join());
    Live(65);
    EXPECT_EQ(Atc->Players.PlayerCount(), Practice->Members().size() + 1);
    ASSERT_NE(Atc->Find("Instructor"), nullptr);
    EXPECT_EQ(Atc->Find("Instructor")->Role, ObserverRole);
    Practice->End();
    EXPECT_TRUE(Practice->IsOver());
    Atc->UpkeepTick();
    EXPECT_EQ(Atc->Members().size(), 1U);
}

TEST_F(PracticeSessions, AreTheSameForASeed)
{
    const auto run = [this](std::uint64_t seed) {
        Create({.Seed = seed, .Pilots = 8});
        std::string trace;
        for (int i = 0; i < 2000; ++i)
            Practice->Advance(i * 0.9);
        for (const auto& member : Practice->Members())
            if (member->IsPilot())
                trace += member->Name() + ' ' + std::to_string(member->Flying->State().Position.Lat) + '\n';
        Practice.reset();
        return trace;
    };
    const std::string first = run(5);
    EXPECT_EQ(run(5), first);
    EXPECT_NE(run(6), first);
}

TEST_F(PracticeSessions, SendOnePositionEachAfterAPause)
{
    Create({.Pilots = 4, .Observers = 0, .ComeAndGo = false});
    Live(5);
    ASSERT_TRUE(Join());
    Live(5);
    for (const double pause : {60.0, 86400.0}) {
        Practice->Advance(Now += pause);
        const auto waiting = Atc->Session.SessionPeer->GetMessageCount(Atc->Session.OwnPlayerId);
        ASSERT_TRUE(waiting);
        EXPECT_EQ(*waiting, 4);
        Atc->PumpTick();
    }
    Practice->Advance(Now - 1000); // a clock that goes back starts over from there
    Now -= 1000;
    Live(1);
    EXPECT_EQ(*Atc->Session.SessionPeer->GetMessageCount(Atc->Session.OwnPlayerId), 0);
}

TEST_F(PracticeSessions, IgnoreWhatMakesNoSense)
{
    Create({.Pilots = 3, .Observers = 1, .ComeAndGo = false});
    Live(5);
    ASSERT_TRUE(Join());
    const auto members = Practice->Members().size();
    std::mt19937_64 noise(1);
    for (int i = 0; i < 3000; ++i) {
        Bytes bytes;
        ByteWriter writer(bytes);
        writer.WriteI32(static_cast<std::int32_t>(0x1001 + noise() % 0x24));
        writer.WriteI32(static_cast<std::int32_t>(noise() >> (noise() % 33)));
        for (auto n = noise() % 40; n > 0; --n)
            writer.WriteU8(static_cast<std::uint8_t>(noise()));
        bytes.resize(noise() % (bytes.size() + 1));
        if (bytes.size() >= 4 && (bytes[0] == 0x05 || bytes[0] == 0x06 || bytes[0] == 0x16))
            continue; // those mean something
        ASSERT_TRUE(SendFromOwnPlayer(Atc->Session, AllPlayers, bytes));
        if (i % 50 == 0)
            Practice->Advance(++Now);
    }
    Live(3);
    EXPECT_EQ(Practice->Members().size(), members);
}

TEST_F(PracticeSessions, SurviveATransportThatFailsNowAndThen)
{
    int operations = 0;
    FailingFactory failing(Provider, [&operations](std::string_view, int) { return ++operations % 5000 == 4999; });
    PracticeOptions options{.Pilots = 6};
    auto created = PracticeSession::Create(failing, test::MakeScene(), *Grid, options);
    ASSERT_TRUE(created) << created.error().Text();
    for (int second = 0; second < 3600; ++second)
        (*created)->Advance(second);
    EXPECT_LE((*created)->Members().size(), 8U);

    for (int failAt = 1; failAt < 12; ++failAt) { // every step of the creation
        int call = 0;
        FailingFactory once(Provider, [&](std::string_view, int) { return ++call == failAt; });
        const auto result = PracticeSession::Create(once, test::MakeScene(), *Grid, {.Pilots = 1, .Observers = 0});
        if (!result) {
            EXPECT_FALSE(result.error().What.empty());
        }
    }
}

TEST_F(PracticeSessions, StayBoundedAndPrunedOverHours)
{
    Create({.Pilots = 30, .Observers = 2, .HostStaysS = 1800});
    Live(5);
    ASSERT_TRUE(Join());
    std::set<PlayerId> everSeen;
    std::set<std::string> names;
    bool renamed = false;
    bool observers = false;
    for (int i = 0; i < 2 * 360; ++i) { // two hours in steps of ten seconds
        Practice->Advance(Now += 10);
        Atc->PumpTick();
        if (i % 3 != 0)
            continue;
        Atc->UpkeepTick();
        // Whoever is in the table is in the session; whoever left is not in the table.
        const auto members = Atc->Members();
        ASSERT_LE(Atc->Players.PlayerCount(), members.size());
        ASSERT_LE(Practice->Members().size(), 33U);
        ASSERT_GE(Practice->Members().size(), 22U);
        for (const PlayerRecord& player : Atc->Players.Players()) {
            ASSERT_TRUE(std::any_of(members.begin(), members.end(), [&](const SessionMember& member) {
                return member.Id == player.PlayerId && member.ShortName == player.Name;
            })) << player.Name;
            renamed = renamed || (everSeen.contains(player.PlayerId) && !names.contains(player.Name));
            observers = observers || player.Role == ObserverRole;
            everSeen.insert(player.PlayerId);
            names.insert(player.Name);
        }
    }
    EXPECT_FALSE(Atc->Disconnected);
    EXPECT_GT(everSeen.size(), 36U); // some came and went
    EXPECT_TRUE(renamed);
    EXPECT_TRUE(observers);
}
} // namespace
} // namespace corvane
