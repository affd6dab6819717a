#include "session/SessionState.h"

#include "session/PlayerTable.h"
#include "tests/session/SessionFixture.h"

namespace corvane {
namespace {
struct LeaveCase {
    const char* Name;
    const char* FailingOperation;
};
class Leaving : public testing::TestWithParam<LeaveCase> {};
TEST_P(Leaving, GoesThroughWhateverFails)
{
    InMemoryNetwork network;
    InMemoryProvider provider(network);
    FailingFactory factory(provider,
                           [](std::string_view operation, int) { return operation == GetParam().FailingOperation; });
    Member host(network);
    host.Host("Traffic");
    SessionState session;
    PlayerTable players;
    ASSERT_TRUE(CreateSessionObjects(factory, session));
    ASSERT_TRUE(session.SessionPeer->InitializeConnection(InMemoryProvider::ConnectionAddress));
    ASSERT_TRUE(session.SessionPeer->Open(host.Sessions().front(), OpenJoin));
    session.OwnPlayerId = *session.SessionPeer->CreatePlayer("**ATC", "Player");
    session.SessionJoined = session.RadarOpen = true;
    players.Append("**ATC", session.OwnPlayerId, PilotRole);
    EXPECT_TRUE(LeaveSession(factory, session, players));
    EXPECT_EQ(host.Peer->GetDPEnumPlayers()->size(), 1U);
    EXPECT_FALSE(session.SessionJoined || session.RadarOpen || session.HasOwnPlayer());
    EXPECT_EQ(players.PlayerCount(), 0U);
    EXPECT_TRUE(session.SessionPeer) << "fresh, for the next connection";
    EXPECT_EQ(session.ConnectionList.size(), 1U);
}
INSTANTIATE_TEST_SUITE_P(SessionState, Leaving,
                         testing::Values(LeaveCase{"Smoothly", ""}, LeaveCase{"WithoutDestroying", "DestroyPlayer"},
                                         LeaveCase{"WithoutClosing", "Close"}),
                         [](const auto& row) { return std::string(row.param.Name); });
} // namespace
} // namespace corvane
