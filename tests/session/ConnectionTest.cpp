#include "tests/session/ConnectionFixture.h"

#include <algorithm>

namespace corvane {
namespace {
using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(ConnectionTest, GoesFromIdleToConnected)
{
    Subject.Load();
    EXPECT_EQ(View.Connections.front().Name, "Practice session (simulated pilots)");
    Subject.ConnectionTypeChosen(0);
    EXPECT_EQ(Subject.State(), ConnectionState::Idle);
    Subject.LocateSession();
    EXPECT_EQ(Subject.State(), ConnectionState::Listed);
    EXPECT_THAT(View.Sessions, ElementsAre("Traffic (1/8)"));
    Join();
    EXPECT_EQ(Subject.State(), ConnectionState::Waiting);
    EXPECT_TRUE(View.Timers);
    EXPECT_EQ(*HostMember.Peer->GetPlayerFriendlyName(Session.OwnPlayerId), "**ATC Controller");
    EXPECT_THAT(HostMember.Received(), ElementsAre("JoinRequest"));
    Subject.HandshakeTick();
    EXPECT_EQ(Subject.State(), ConnectionState::Waiting);
    HostMember.Send(Session.OwnPlayerId, AnnounceMessage{MessageType::PilotAnnounce, Session.OwnPlayerId});
    Subject.HandshakeTick();
    EXPECT_EQ(Subject.State(), ConnectionState::Connected);
    EXPECT_THAT(Boxes.Shown, ElementsAre("i: Connected to FS session!"));
    EXPECT_THAT(View.Statuses, ElementsAre("Disconnected", "Disconnected", "Looking for FS Server...", "Done",
                                           "Connecting...", "Connected", "Loading ATC's radar window, please wait..."));
    EXPECT_FALSE(View.Timers);
    EXPECT_EQ(View.RadarsOpened, 1);
    EXPECT_TRUE(Session.SessionJoined && Session.RadarOpen);
    EXPECT_EQ(Session.SessionMaxPlayers, 8);
    EXPECT_EQ(Session.SessionGuid, HostMember.Guid);
    ASSERT_EQ(Players.PlayerCount(), 1U);
    EXPECT_TRUE(IsPlayer(Players.Players()[0], Session.OwnPlayerId, "**ATC Controller"));
    EXPECT_EQ(Players.Players()[0].Role, "player");
    Subject.Exit(); // the radar window closes the connection window
    EXPECT_EQ(View.Ends, 0);
}

TEST_F(ConnectionTest, AnAbsurdDescriptionIsListedAndHidesNoOther)
{
    Member other{Network};
    other.Host("Od\r\nd", -2147483647 - 1);
    Locate();
    EXPECT_THAT(View.Sessions, testing::UnorderedElementsAre("Traffic (1/8)", "Od\xb7\xb7"
                                                                              "d (1/-2147483648)"));
    EXPECT_EQ(Subject.State(), ConnectionState::Listed);
    EXPECT_THAT(Boxes.Shown, IsEmpty());
}

struct HandshakeCase {
    const char* Name;
    std::vector<Message> Messages; ///< an announced id of 0 stands for the controller's own
    ConnectionState State;
};
class Handshakes : public ConnectionTest, public testing::WithParamInterface<HandshakeCase> {};
TEST_P(Handshakes, AreDecidedByTheFirstAnswer)
{
    Locate();
    Join();
    for (Message message : GetParam().Messages) {
        if (auto* announce = std::get_if<AnnounceMessage>(&message); announce != nullptr && announce->PlayerId == 0)
            announce->PlayerId = Session.OwnPlayerId;
        HostMember.Send(Session.OwnPlayerId, message);
    }
    Subject.HandshakeTick();
    EXPECT_EQ(Subject.State(), GetParam().State);
}
INSTANTIATE_TEST_SUITE_P(
    Connection, Handshakes,
    testing::Values(
        HandshakeCase{"Silence", {}, ConnectionState::Waiting},
        HandshakeCase{
            "AnotherPilotIsAnnounced", {AnnounceMessage{MessageType::PilotAnnounce, 77}}, ConnectionState::Waiting},
        HandshakeCase{
            "AnObserverIsAnnounced", {AnnounceMessage{MessageType::ObserverAnnounce, 0}}, ConnectionState::Waiting},
        HandshakeCase{"AcceptedBehindOthers",
                      {ChatTextMessage{"Hello"}, AnnounceMessage{MessageType::PilotAnnounce, 77}, UnknownMessage{9, 1},
                       AnnounceMessage{MessageType::PilotAnnounce, 0}},
                      ConnectionState::Connected},
        HandshakeCase{"AcceptedBeforeRefused",
                      {AnnounceMessage{MessageType::PilotAnnounce, 0}, PlainMessage{MessageType::JoinRefused}},
                      ConnectionState::Connected},
        HandshakeCase{"RefusedBeforeAccepted",
                      {PlainMessage{MessageType::JoinRefused}, AnnounceMessage{MessageType::PilotAnnounce, 0}},
                      ConnectionState::Idle},
        HandshakeCase{"ObserverRefusal", {PlainMessage{MessageType::ObserverJoinRefused}}, ConnectionState::Waiting},
        HandshakeCase{"HostLeft", {PlainMessage{MessageType::HostLeft}}, ConnectionState::Waiting}),
    [](const auto& row) { return std::string(row.param.Name); });

TEST_F(ConnectionTest, RefusalLeadsBackToIdle)
{
    Locate();
    Join();
    HostMember.Send(Session.OwnPlayerId, PlainMessage{MessageType::JoinRefused});
    Subject.HandshakeTick();
    EXPECT_THAT(Boxes.Shown, ElementsAre("w: Connection refused."));
    ExpectIdle();
    Subject.LocateSession(); // with fresh objects
    EXPECT_EQ(Subject.State(), ConnectionState::Listed);
}

TEST_F(ConnectionTest, JoinsEveryGroupOfTheExactName)
{
    const auto one = *HostMember.Peer->CreateGroup("FS61_REFUSE_PARAMS");
    const auto other = *HostMember.Peer->CreateGroup("FS61_REFUSE_PARAMS2");
    const auto two = *HostMember.Peer->CreateGroup("FS61_REFUSE_PARAMS");
    Locate();
    Join();
    HostMember.Send(Session.OwnPlayerId, AnnounceMessage{MessageType::PilotAnnounce, Session.OwnPlayerId});
    Subject.HandshakeTick();
    const auto reached = [&](std::int32_t group) {
        const auto before = *Session.SessionPeer->GetMessageCount(Session.OwnPlayerId);
        HostMember.SendBytes(group, {1});
        return *Session.SessionPeer->GetMessageCount(Session.OwnPlayerId) - before;
    };
    EXPECT_EQ(reached(one), 1);
    EXPECT_EQ(reached(two), 1);
    EXPECT_EQ(reached(other), 0);
}

TEST_F(ConnectionTest, TheLanCardIsNamedForTheFirstTypeOnly)
{
    FailingOperation = "InitializeConnection";
    Subject.Load();
    Session.ConnectionList.push_back({"Another", "elsewhere"});
    Subject.ConnectionTypeChosen(1);
    Subject.LocateSession(); // the second type does not exist any more
    EXPECT_THAT(Boxes.Shown, ElementsAre("i: Error, canceled connection. Try to locate session again."));
}

TEST_F(ConnectionTest, LocatingNeedsAConnectionType)
{
    Subject.Load();
    Subject.LocateSession();
    EXPECT_THAT(Boxes.Shown, ElementsAre("i: Please select one type of connection."));
    ExpectIdle();
}

TEST_F(ConnectionTest, NoSessionLeadsBackToIdle)
{
    EXPECT_TRUE(HostMember.Peer->Close());
    Locate();
    EXPECT_THAT(Boxes.Shown, IsEmpty());
    EXPECT_EQ(View.Statuses.back(), "Disconnected");
    EXPECT_EQ(Subject.State(), ConnectionState::Idle);
    EXPECT_TRUE(View.ListsEnabled);
}

TEST_F(ConnectionTest, JoiningNeedsASessionAndANickname)
{
    Locate();
    Subject.JoinSession(std::nullopt, "");
    EXPECT_THAT(Boxes.Shown, ElementsAre("w: Please select a FS multiplayer session.", "w: Please write a nickname."));
    EXPECT_EQ(View.Statuses.back(), "Disconnected");
    EXPECT_THAT(View.Sessions, IsEmpty());
    Boxes.Shown.clear();
    Subject.LocateSession();
    Subject.JoinSession(0, "");
    EXPECT_THAT(Boxes.Shown, ElementsAre("w: Please write a nickname."));
    Boxes.Shown.clear();
    Subject.JoinSession(0, "Name"); // the list was cleared
    EXPECT_THAT(Boxes.Shown, ElementsAre("w: Please select a FS multiplayer session."));
}

struct PasswordCase {
    const char* Name;
    std::uint32_t Flags;
    std::optional<std::string> Answer;
    bool Asked;
    ConnectionState State;
};
class Passwords : public ConnectionTest, public testing::WithParamInterface<PasswordCase> {};
TEST_P(Passwords, AreAskedForByTheExactFlags)
{
    HostMember.Peer = *InMemoryProvider(Network).DirectPlayCreate();
    EXPECT_TRUE(HostMember.Peer->InitializeConnection(InMemoryProvider::ConnectionAddress));
    HostMember.Host("Secret", 8, GetParam().Flags, "cat");
    Boxes.Answer = GetParam().Answer;
    Locate();
    Join();
    EXPECT_EQ(
        std::count(Boxes.Shown.begin(), Boxes.Shown.end(), "i: This session requires a password. Enter the password."),
        GetParam().Asked ? 1 : 0);
    EXPECT_EQ(Subject.State(), GetParam().State);
    EXPECT_TRUE(View.ListsEnabled);
}
INSTANTIATE_TEST_SUITE_P(Connection, Passwords,
                         testing::Values(PasswordCase{"Fixed", 1088, "cat", true, ConnectionState::Waiting},
                                         PasswordCase{"Migrating", 1092, "cat", true, ConnectionState::Waiting},
                                         PasswordCase{"Wrong", 1092, "dog", true, ConnectionState::Idle},
                                         PasswordCase{"Cancelled", 1092, std::nullopt, true, ConnectionState::Listed},
                                         PasswordCase{"OtherFlagBeside", 1092 + 8, "cat", false, ConnectionState::Idle},
                                         PasswordCase{"WithoutKeepAlive", 1024, "cat", false, ConnectionState::Idle},
                                         PasswordCase{"None", 68, std::nullopt, false, ConnectionState::Waiting}),
                         [](const auto& row) { return std::string(row.param.Name); });

TEST_F(ConnectionTest, RetrySendsBothRequestsAgain)
{
    Locate();
    Join();
    static_cast<void>(HostMember.Received());
    Subject.RetryTick();
    EXPECT_THAT(HostMember.Received(), ElementsAre("JoinRetry", "JoinRequest"));
}

TEST_F(ConnectionTest, TimersFindNothingToDoBehindAnOpenBox)
{
    Locate();
    Join();
    static_cast<void>(HostMember.Received());
    HostMember.Send(Session.OwnPlayerId, PlainMessage{MessageType::JoinRefused});
    HostMember.Send(Session.OwnPlayerId, AnnounceMessage{MessageType::PilotAnnounce, Session.OwnPlayerId});
    Boxes.WhileOpen = [&] {
        Subject.HandshakeTick();
        Subject.RetryTick();
        Subject.LocateSession();
        Subject.Exit();
    };
    Subject.HandshakeTick();
    EXPECT_THAT(Boxes.Shown, ElementsAre("w: Connection refused."));
    EXPECT_THAT(HostMember.Received(), IsEmpty());
    EXPECT_EQ(View.Ends, 0);
    ExpectIdle();
}

TEST_F(ConnectionTest, AnOperationUnderWayIsLeft)
{
    struct {
        bool Exits;
        std::vector<std::string> Shown;
        int Ends;
    } const cases[] = {
        {false, {"i: Error, canceled connection. Try to locate session again."}, 0},
        {true, {}, 1}, // who wants to go is not told that it failed
    };
    for (const auto& left : cases) {
        Boxes.Shown.clear();
        View.Ends = 0;
        OnOperation = [&](std::string_view operation) {
            if (operation != "GetDPEnumSessions")
                return false;
            left.Exits ? Subject.Exit() : Subject.LeaveOperation();
            return Session.LeaveOperation; // as a transport that waits does
        };
        Locate();
        EXPECT_EQ(Boxes.Shown, left.Shown);
        EXPECT_EQ(View.Ends, left.Ends);
        EXPECT_EQ(Subject.State(), ConnectionState::Idle);
    }
}

TEST_F(ConnectionTest, LeavingWhileWaiting)
{
    Locate();
    Join();
    Subject.ConnectionTypeChosen(0);
    EXPECT_EQ(Subject.State(), ConnectionState::Idle);
    EXPECT_FALSE(View.Timers);
    EXPECT_EQ(HostMember.Peer->GetDPEnumPlayers()->size(), 1U) << "the peer has left";
    Subject.LocateSession();
    Join();
    Subject.Exit();
    EXPECT_EQ(View.Ends, 1);
    EXPECT_EQ(View.Statuses.back(), "Please Wait...");
    EXPECT_EQ(HostMember.Peer->GetDPEnumPlayers()->size(), 1U);
}
} // namespace
} // namespace corvane
