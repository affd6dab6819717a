#include "tests/session/ConnectionFixture.h"

namespace corvane {
namespace {
using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(ConnectionTest, AMessageCutShortEndsTheTickQuietly)
{
    Locate();
    Join();
    HostMember.SendBytes(Session.OwnPlayerId, {3, 0x10, 0, 0, 4, 0, 0, 0, 1});
    HostMember.Send(Session.OwnPlayerId, AnnounceMessage{MessageType::PilotAnnounce, Session.OwnPlayerId});
    Subject.HandshakeTick();
    EXPECT_EQ(Subject.State(), ConnectionState::Waiting);
    Subject.HandshakeTick();
    EXPECT_EQ(Subject.State(), ConnectionState::Connected);
}

constexpr const char* ClassA = "i: Error, canceled connection. Try to locate session again.";
constexpr const char* ClassB = "w: Error while the initialization of your LAN network card.";
constexpr const char* ClassC = "w: Error, in enumeration of multiplayer sessions. Try to locate session again.";
constexpr const char* ClassD = "w: Failed to join game. Try to locate session again.";
constexpr const char* ClassE = "w: Failed to create player. Try to locate session again.";

struct FailureCase {
    const char* Name;
    const char* Operation;
    int Call;
    const char* Box;
};
class FailuresOnTheWay : public ConnectionTest, public testing::WithParamInterface<FailureCase> {};
TEST_P(FailuresOnTheWay, ShowTheirMessageAndLeadBackToIdle)
{
    FailingOperation = GetParam().Operation;
    FailingCall = GetParam().Call;
    Locate();
    if (Subject.State() == ConnectionState::Listed)
        Join();
    if (Subject.State() == ConnectionState::Waiting)
        Subject.RetryTick();
    EXPECT_THAT(Boxes.Shown, ElementsAre(GetParam().Box));
    EXPECT_TRUE(Subject.LastError());
    ExpectIdle();
    FailingOperation.clear();
    Subject.LocateSession();
    EXPECT_EQ(Subject.State(), ConnectionState::Listed);
}
INSTANTIATE_TEST_SUITE_P(Connection, FailuresOnTheWay,
                         testing::Values(FailureCase{"Peer", "DirectPlayCreate", 3, ClassA}, // of Locate: the third
                                         FailureCase{"Connections", "GetDPEnumConnections", 3, ClassA},
                                         FailureCase{"Initialization", "InitializeConnection", 1, ClassB},
                                         FailureCase{"FirstEnumeration", "GetDPEnumSessions", 1, ClassA},
                                         FailureCase{"SecondEnumeration", "GetDPEnumSessions", 2, ClassA},
                                         FailureCase{"Item", "GetSessionItem", 2, ClassC}, // once in each enumeration
                                         FailureCase{"Open", "Open", 1, ClassD},
                                         FailureCase{"Player", "CreatePlayer", 1, ClassE},
                                         FailureCase{"JoinRequest", "Send", 1, ClassE},
                                         FailureCase{"JoinRetry", "Send", 2, ClassD},
                                         FailureCase{"RepeatedJoinRequest", "Send", 3, ClassD}),
                         [](const auto& row) { return std::string(row.param.Name); });

struct QuietCase {
    const char* Name;
    const char* Operation;
    int Call;
};
class FailuresWhileWaiting : public ConnectionTest, public testing::WithParamInterface<QuietCase> {};
TEST_P(FailuresWhileWaiting, EndTheTickAndTheNextAnswerCounts)
{
    Locate();
    Join();
    FailingOperation = GetParam().Operation;
    FailingCall = GetParam().Call;
    EXPECT_TRUE(HostMember.Peer->CreateGroup("FS61_REFUSE_PARAMS"));
    HostMember.Send(Session.OwnPlayerId, AnnounceMessage{MessageType::PilotAnnounce, Session.OwnPlayerId});
    Subject.HandshakeTick();
    EXPECT_EQ(Subject.State(), ConnectionState::Waiting);
    EXPECT_THAT(Boxes.Shown, IsEmpty());
    HostMember.Send(Session.OwnPlayerId, AnnounceMessage{MessageType::PilotAnnounce, Session.OwnPlayerId});
    Subject.HandshakeTick();
    EXPECT_EQ(Subject.State(), ConnectionState::Connected);
    EXPECT_EQ(Players.PlayerCount(), 1U) << "the own entry is there once";
}
INSTANTIATE_TEST_SUITE_P(Connection, FailuresWhileWaiting,
                         testing::Values(QuietCase{"Count", "GetMessageCount", 1}, QuietCase{"Receive", "Receive", 1},
                                         QuietCase{"OwnName", "GetPlayerFriendlyName", 1},
                                         QuietCase{"Groups", "GetDPEnumGroups", 1},
                                         QuietCase{"JoiningAGroup", "AddPlayerToGroup", 1}),
                         [](const auto& row) { return std::string(row.param.Name); });
} // namespace
} // namespace corvane
