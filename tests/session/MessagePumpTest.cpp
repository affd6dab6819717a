#include "session/MessagePump.h"

#include "tests/session/SessionFixture.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <map>

namespace corvane {
namespace {
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* RemovedBox = "i: The host had removed you from the session, Corvane closes multiplayer session.";
constexpr const char* HostingBox = "i: The original host had left the session, Corvane is now hosting the session.";
constexpr const char* LostBox = "i: The FS multiplayer connection was lost, Corvane closes multiplayer session.";

/// A controller in a session that somebody else hosts, already admitted.
class PumpTest : public testing::Test, public PumpEvents {
public:
    void RefreshPlayerList() override { ++Refreshes; }
    void AddChatLine(std::string_view from, std::string_view text) override
    {
        Chat.push_back(std::string(from) + "|" + std::string(text));
    }
    void Disconnect() override
    {
        ++Disconnects;
        EXPECT_TRUE(LeaveSession(Factory, Session, Players));
    }
    void PlayerAdded(const PlayerRecord& player) override { Changes.push_back("+" + player.Name); }
    void PlayerUpdated(const PlayerRecord& player) override { Changes.push_back("~" + player.Name); }
    void PlayerRemoved(const PlayerRecord& player) override { Changes.push_back("-" + player.Name); }

protected:
    PumpTest()
    {
        HostMember.Host("Traffic");
        EXPECT_TRUE(CreateSessionObjects(Factory, Session));
        EXPECT_TRUE(Session.SessionPeer->InitializeConnection(InMemoryProvider::ConnectionAddress));
        SessionEntry entry;
        entry.InstanceGuid = HostMember.Guid;
        EXPECT_TRUE(Session.SessionPeer->Open(entry, OpenJoin));
        Session.OwnPlayerId = *Session.SessionPeer->CreatePlayer("**ATC", "Player", 0, 0);
        Session.SessionGuid = HostMember.Guid;
        Session.SessionMaxPlayers = 8;
        Session.SessionJoined = true;
        Players.Append("**ATC", Session.OwnPlayerId, PilotRole);
    }

    std::unique_ptr<Member> Joined(std::string_view name)
    {
        auto member = std::make_unique<Member>(Network);
        member->Join(HostMember.Guid, name);
        return member;
    }
    /// Announces itself, or speaks of someone else in the same words.
    void Announce(const Member& member, MessageType type = MessageType::PilotAnnounce)
    {
        member.Send(Session.OwnPlayerId, AnnounceMessage{type, member.Id});
    }
    void Say(const Member& member, const Message& message) const { member.Send(Session.OwnPlayerId, message); }

    std::vector<std::string> Names() const
    {
        std::vector<std::string> names;
        for (const PlayerRecord& player : Players.Players())
            names.push_back(player.Name);
        return names;
    }

    InMemoryNetwork Network;
    std::string FailingOperation;
    InMemoryProvider Factory{Network,
                             [this](std::string_view operation, int) { return operation == FailingOperation; }};
    Member HostMember{Network};
    SessionState Session;
    PlayerTable Players;
    MagVarGrid MagVar;
    ScriptedBoxes Boxes;
    MessagePump Pump{Session, Players, MagVar, *this, Boxes};
    int Refreshes = 0;
    int Disconnects = 0;
    std::vector<std::string> Chat;
    std::vector<std::string> Changes;
};

const PositionMessage Position{MessageType::PositionFull, 45, -90, 3281, 180, 194};

TEST_F(PumpTest, MembersEnterByAnnouncingThemselves)
{
    const auto pilot = Joined("Ann");
    const auto observer = Joined("Bob");
    Announce(*pilot);
    Announce(*observer, MessageType::ObserverAnnounce);
    Announce(*pilot); // again: nothing more
    Announce(*pilot, MessageType::ObserverAnnounce);
    Pump.PumpTick();
    EXPECT_THAT(Names(), ElementsAre("**ATC", "Ann", "Bob"));
    EXPECT_EQ(Players.Players()[1].Role, "player");
    EXPECT_EQ(Players.Players()[2].Role, "observer");
    EXPECT_EQ(Refreshes, 2);
    EXPECT_THAT(Changes, ElementsAre("+Ann", "+Bob"));
    EXPECT_THAT(Boxes.Shown, IsEmpty());
}

TEST_F(PumpTest, PositionsReachTheTableMagnetic)
{
    MagVar.Values[270 * 181 + 45 + 90] = 3641; // 20.0006 degrees east at 45 N 90 W
    const auto pilot = Joined("Ann");
    Say(*pilot, Position); // not in the table yet
    Announce(*pilot);
    Say(*pilot, Position);
    Pump.PumpTick();
    ASSERT_EQ(Players.PlayerCount(), 2U);
    PlayerRecord expected;
    expected.Name = "Ann";
    expected.PlayerId = pilot->Id;
    expected.Role = "player";
    expected.Longitude = -90;
    expected.Latitude = 45;
    expected.AltitudeFt = 3281;
    expected.MagHeading = 160;
    expected.GroundSpeedKt = 194;
    EXPECT_EQ(Players.Players()[1], expected);
    EXPECT_THAT(Changes, ElementsAre("+Ann", "~Ann"));
    PositionMessage shortOne = Position;
    shortOne.Type = MessageType::PositionShort;
    Say(*pilot, shortOne);
    Say(*pilot, AircraftInfoMessage{"Jet Plane", "B737"});
    Pump.PumpTick();
    expected.GroundSpeedKt = 0;
    expected.AircraftType = "Jet Plane";
    expected.AircraftTitle = "B737";
    EXPECT_EQ(Players.Players()[1], expected);
}

TEST_F(PumpTest, EveryEntryOfTheSenderIsUpdated)
{
    const auto pilot = Joined("Ann");
    Players.Append("Ann", pilot->Id, PilotRole);
    Players.Append("Another name", pilot->Id, PilotRole);
    Players.Append("Ann", 999, PilotRole);
    Players.Append("Ann", pilot->Id, ObserverRole);
    Say(*pilot, Position);
    Pump.PumpTick();
    std::vector<int> altitudes;
    for (const PlayerRecord& player : Players.Players())
        altitudes.push_back(player.AltitudeFt);
    EXPECT_THAT(altitudes, ElementsAre(0, 3281, 0, 0, 3281));
}

TEST_F(PumpTest, ARenamedMemberComesBackUnderItsNewName)
{
    const auto pilot = Joined("Ann");
    Announce(*pilot);
    Pump.PumpTick();
    EXPECT_TRUE(pilot->Peer->SetPlayerName(pilot->Id, "Eve"));
    Say(*pilot, Position);
    Pump.PumpTick();
    EXPECT_EQ(Players.Players()[1].AltitudeFt, 0) << "it is not its entry any more";
    Pump.UpkeepTick();
    EXPECT_THAT(Names(), ElementsAre("**ATC"));
    EXPECT_THAT(pilot->Received(), ElementsAre("IdentifyRequest"));
    Announce(*pilot);
    Say(*pilot, Position);
    Pump.PumpTick();
    EXPECT_THAT(Names(), ElementsAre("**ATC", "Eve"));
    EXPECT_EQ(Players.Players()[1].AltitudeFt, 3281);
}

TEST_F(PumpTest, TheSameNameWithANewIdIsAnotherMember)
{
    auto first = Joined("Ann");
    Announce(*first);
    Pump.PumpTick();
    first.reset();
    const auto second = Joined("Ann");
    Announce(*second);
    Pump.PumpTick();
    EXPECT_THAT(Names(), ElementsAre("**ATC", "Ann", "Ann"));
    Pump.UpkeepTick();
    EXPECT_THAT(Names(), ElementsAre("**ATC", "Ann"));
    EXPECT_EQ(Players.Players()[1].PlayerId, second->Id);
}

TEST_F(PumpTest, TheLastWordsOfOneThatLeftAreStillHeard)
{
    auto pilot = Joined("Ann");
    Say(*pilot, ChatTextMessage{"Good bye"});
    Say(*pilot, PlainMessage{MessageType::IdentifyRequest}); // its answer is lost in silence
    pilot.reset();
    Pump.PumpTick();
    EXPECT_THAT(Chat, ElementsAre("Ann|Good bye"));
    EXPECT_EQ(Disconnects, 0);
}

TEST_F(PumpTest, UpkeepPrunesAndAsks)
{
    auto leaver = Joined("Leaver");
    const auto pilot = Joined("Pilot");
    const auto observer = Joined("Observer");
    Announce(*leaver);
    Announce(*pilot);
    Announce(*observer, MessageType::ObserverAnnounce);
    Pump.PumpTick();
    Players.Players()[2].DepartureIcao = "KSEA";
    leaver.reset();
    Pump.UpkeepTick();
    EXPECT_THAT(Names(), ElementsAre("**ATC", "Pilot", "Observer"));
    EXPECT_EQ(Players.Players()[1].DepartureIcao, "KSEA");
    EXPECT_THAT(HostMember.Received(), ElementsAre("IdentifyRequest"));
    EXPECT_THAT(pilot->Received(), ElementsAre("AircraftInfoRequest"));
    EXPECT_THAT(observer->Received(), IsEmpty());
}

TEST_F(PumpTest, UpkeepGoesOnBehindAFailure)
{
    const auto pilot = Joined("Pilot");
    Announce(*pilot);
    Pump.PumpTick();
    for (const char* operation : {"GetDPEnumPlayers", "GetPlayerFriendlyName"}) {
        FailingOperation = operation;
        Pump.UpkeepTick();
        EXPECT_THAT(pilot->Received(), ElementsAre("AircraftInfoRequest")) << operation;
    }
    FailingOperation = "Send";
    Pump.UpkeepTick();
    EXPECT_EQ(Players.PlayerCount(), 2U);
    EXPECT_THAT(Boxes.Shown, IsEmpty());
}

TEST_F(PumpTest, ChatIsHeardFromEveryone)
{
    const auto stranger = Joined("Zoe");
    Say(*stranger, ChatTextMessage{"One"});
    Say(*stranger, ChatTextMessage{"Two"});
    Say(*stranger, ChatTextMessage{""});
    stranger->SendBytes(Session.OwnPlayerId, {0x23, 0x10, 0, 0, 1, 0, 0, 0, 'x'});
    stranger->SendBytes(Session.OwnPlayerId, {0x23, 0x10, 0, 0, 3, 0, 0, 0, 0, 0});
    Session.SessionJoined = false;
    Pump.PumpTick();
    EXPECT_THAT(Chat, ElementsAre("Zoe|One", "Zoe|Two"));
}

TEST_F(PumpTest, IdentifiesItselfWhenAsked)
{
    Say(HostMember, PlainMessage{MessageType::IdentifyRequest});
    Pump.PumpTick();
    while (const auto message = HostMember.Peer->Receive(ReceiveAll)) {
        if (message->From != SystemSender) {
            EXPECT_EQ(*DecodeMessage(message->Content),
                      Message(AnnounceMessage{MessageType::PilotAnnounce, Session.OwnPlayerId}));
        }
    }
}

TEST_F(PumpTest, NothingButChatCountsBeforeTheHostsAdmission)
{
    Session.SessionJoined = false;
    Say(HostMember, PlainMessage{MessageType::IdentifyRequest});
    Say(HostMember, AnnounceMessage{MessageType::PilotAnnounce, HostMember.Id});
    HostMember.SendBytes(Session.OwnPlayerId, {3, 0x10, 0, 0, 4, 0, 0, 0}); // cut short, but never read
    Pump.PumpTick();
    EXPECT_THAT(HostMember.Received(), IsEmpty());
    EXPECT_EQ(Players.PlayerCount(), 1U);
    EXPECT_EQ(Disconnects, 0);
}

struct AdmissionCase {
    const char* Name;
    std::size_t Entries;
    bool Host;
    bool InTable;
    MessageType Request;
    std::vector<std::string> Reply;
};
class Admissions : public PumpTest, public testing::WithParamInterface<AdmissionCase> {};
TEST_P(Admissions, AreTheHostsToGive)
{
    const AdmissionCase& c = GetParam();
    const auto asker = Joined("Asker");
    if (c.Host) {
        Say(HostMember, PlainMessage{MessageType::HostLeft});
        Players.Append("Host", HostMember.Id, PilotRole); // so that more than one entry is left
        Pump.PumpTick();
        ASSERT_TRUE(Pump.IsSessionHost());
    }
    Players.Empty();
    if (c.InTable)
        Players.Append("Asker", asker->Id, PilotRole);
    while (Players.PlayerCount() < c.Entries)
        Players.Append("Somebody", 1000, PilotRole);
    Say(*asker, PlainMessage{c.Request});
    Pump.PumpTick();
    EXPECT_EQ(asker->Received(), c.Reply);
    EXPECT_EQ(Players.PlayerCount(), c.Entries) << "a member enters by its own announcement";
}
INSTANTIATE_TEST_SUITE_P(
    MessagePump, Admissions,
    testing::Values(
        AdmissionCase{"EightOfEight", 8, true, false, MessageType::JoinRequest, {"PilotAnnounce"}},
        AdmissionCase{"NineOfEight", 9, true, false, MessageType::JoinRequest, {"JoinRefused"}},
        AdmissionCase{"AlreadyThere", 2, true, true, MessageType::JoinRequest, {"JoinRefused"}},
        AdmissionCase{"Observer", 8, true, false, MessageType::ObserverJoinRequest, {"ObserverAnnounce"}},
        AdmissionCase{"OneObserverTooMany", 9, true, false, MessageType::ObserverJoinRequest, {"ObserverJoinRefused"}},
        AdmissionCase{"NotTheHost", 1, false, false, MessageType::JoinRequest, {}}),
    [](const auto& row) { return std::string(row.param.Name); });

struct HostLeftCase {
    const char* Name;
    bool OwnEntry;
    int Others;
    const char* Box; ///< empty for none
    bool Hosting;
    bool Over;
};
class HostChanges : public PumpTest, public testing::WithParamInterface<HostLeftCase> {};
TEST_P(HostChanges, DependOnTheEntriesLeft)
{
    const HostLeftCase& c = GetParam();
    Players.Empty();
    if (c.OwnEntry)
        Players.Append("**ATC", Session.OwnPlayerId, PilotRole);
    Players.Append("Host", HostMember.Id, PilotRole); // to be pruned
    std::vector<std::unique_ptr<Member>> others;
    for (int i = 0; i < c.Others; ++i) {
        others.push_back(Joined("Other"));
        Players.Append("Other", others.back()->Id, PilotRole);
    }
    Say(HostMember, PlainMessage{MessageType::HostLeft});
    Say(HostMember, ChatTextMessage{"Bye"});
    EXPECT_TRUE(HostMember.Peer->Close());
    Pump.PumpTick();
    EXPECT_EQ(Boxes.Shown, *c.Box == '\0' ? std::vector<std::string>() : std::vector<std::string>{c.Box});
    EXPECT_EQ(Pump.IsSessionHost(), c.Hosting);
    EXPECT_EQ(Disconnects, c.Over ? 1 : 0);
    EXPECT_EQ(Chat.size(), c.Over ? 0U : 1U) << "the messages behind it are handled unless the session is over";
}
INSTANTIATE_TEST_SUITE_P(MessagePump, HostChanges,
                         testing::Values(HostLeftCase{"OwnEntryAlone", true, 0, LostBox, false, true},
                                         HostLeftCase{"AnotherAlone", false, 1, "", false, false},
                                         HostLeftCase{"NoEntry", false, 0, HostingBox, true, false},
                                         HostLeftCase{"Two", true, 1, HostingBox, true, false},
                                         HostLeftCase{"Three", true, 2, HostingBox, true, false}),
                         [](const auto& row) { return std::string(row.param.Name); });

TEST_F(PumpTest, RemovalEndsTheSession)
{
    Say(HostMember, PlainMessage{MessageType::RemovedByHost});
    Say(HostMember, ChatTextMessage{"And stay out"});
    Pump.PumpTick();
    EXPECT_THAT(Boxes.Shown, ElementsAre(RemovedBox));
    EXPECT_EQ(Disconnects, 1);
    EXPECT_THAT(Chat, IsEmpty());
    EXPECT_EQ(Players.PlayerCount(), 0U);
    Pump.PumpTick(); // without an own player: nothing
    Pump.UpkeepTick();
    EXPECT_EQ(Disconnects, 1);
}

struct BrokenCase {
    const char* Name;
    const char* Operation;
    Bytes Message;
};
class BrokenSessions : public PumpTest, public testing::WithParamInterface<BrokenCase> {};
TEST_P(BrokenSessions, CountAsRemoval)
{
    Players.Append("Host", HostMember.Id, PilotRole);
    HostMember.SendBytes(Session.OwnPlayerId, GetParam().Message);
    FailingOperation = GetParam().Operation;
    Pump.PumpTick();
    EXPECT_THAT(Boxes.Shown, ElementsAre(RemovedBox));
    EXPECT_EQ(Disconnects, 1);
    EXPECT_TRUE(Pump.LastError());
}
const Bytes SomeChat = EncodeMessage(ChatTextMessage{"Hello"});
INSTANTIATE_TEST_SUITE_P(
    MessagePump, BrokenSessions,
    testing::Values(BrokenCase{"Count", "GetMessageCount", SomeChat}, BrokenCase{"Receive", "Receive", SomeChat},
                    BrokenCase{"Name", "GetPlayerFriendlyName", SomeChat},
                    BrokenCase{"Answer", "Send", EncodeMessage(PlainMessage{MessageType::IdentifyRequest})},
                    BrokenCase{"Members", "GetDPEnumPlayers", EncodeMessage(PlainMessage{MessageType::HostLeft})},
                    BrokenCase{"HeaderCutShort", "", {1, 2, 3, 4, 5, 6, 7}}, BrokenCase{"Empty", "", {}},
                    BrokenCase{"AnnounceCutShort", "", {3, 0x10, 0, 0, 4, 0, 0, 0, 1, 2, 3}},
                    BrokenCase{"PositionCutShort", "", {0x19, 0x10, 0, 0, 50, 0, 0, 0, 1}},
                    BrokenCase{"TitleCutShort", "", {0x0E, 0x10, 0, 0, 255, 255, 255, 127, 0, 0, 65}},
                    BrokenCase{"ChatCutShort", "", {0x23, 0x10, 0, 0, 5, 0, 0, 0, 65}}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST_F(PumpTest, WhatAStrangerSendsIsNotRead)
{
    const auto stranger = Joined("Zoe");
    stranger->SendBytes(Session.OwnPlayerId, {0x19, 0x10, 0, 0, 50, 0, 0, 0, 1});
    stranger->SendBytes(Session.OwnPlayerId, {0x0E, 0x10, 0, 0, 255, 255, 255, 127});
    stranger->SendBytes(Session.OwnPlayerId, {0x34, 0x12, 0, 0, 255, 255, 255, 127});
    Pump.PumpTick();
    EXPECT_EQ(Disconnects, 0);
}

TEST_F(PumpTest, TicksStayAwayFromAnOpenBox)
{
    const auto pilot = Joined("Ann");
    Announce(*pilot);
    Pump.PumpTick();
    static_cast<void>(pilot->Received());
    Say(HostMember, PlainMessage{MessageType::HostLeft});
    Say(*pilot, ChatTextMessage{"Before"});
    Boxes.WhileOpen = [&] {
        Say(*pilot, ChatTextMessage{"Meanwhile"});
        Pump.PumpTick();
        Pump.UpkeepTick();
    };
    Players.Append("Host", HostMember.Id, PilotRole);
    Pump.PumpTick();
    EXPECT_EQ(Boxes.Shown.size(), 1U);
    EXPECT_THAT(Chat, ElementsAre("Ann|Before")) << "what came meanwhile waits for the next tick";
    EXPECT_THAT(pilot->Received(), IsEmpty());
    Pump.PumpTick();
    EXPECT_THAT(Chat, ElementsAre("Ann|Before", "Ann|Meanwhile"));
}

TEST_F(PumpTest, ASessionLeftBehindAnOpenBoxIsLeftAlone)
{
    Say(HostMember, PlainMessage{MessageType::RemovedByHost});
    Boxes.WhileOpen = [&] { Disconnect(); };
    Pump.PumpTick();
    EXPECT_EQ(Disconnects, 1);
}

TEST_F(PumpTest, ARenameBehindAnOpenBoxIsNoticed)
{
    const auto pilot = Joined("Ann");
    Announce(*pilot);
    Players.Append("Host", HostMember.Id, PilotRole);
    Say(HostMember, PlainMessage{MessageType::HostLeft});
    Say(*pilot, ChatTextMessage{"Hi"});
    Boxes.WhileOpen = [&] { EXPECT_TRUE(pilot->Peer->SetPlayerName(pilot->Id, "Eve")); };
    Pump.PumpTick();
    EXPECT_THAT(Chat, ElementsAre("Eve|Hi"));
}

TEST_F(PumpTest, StartAsksEveryoneAndTakesNoForAnAnswer)
{
    Pump.Start();
    EXPECT_THAT(HostMember.Received(), ElementsAre("IdentifyRequest"));
    FailingOperation = "Send";
    Pump.Start();
    EXPECT_THAT(Boxes.Shown, IsEmpty());
    FailingOperation.clear();
    Pump.UpkeepTick();
    EXPECT_THAT(HostMember.Received(), ElementsAre("IdentifyRequest"));
}
} // namespace
} // namespace corvane
