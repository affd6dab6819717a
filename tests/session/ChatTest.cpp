#include "session/ChatModel.h"
#include "tests/session/SessionFixture.h"

#include <gmock/gmock.h>

namespace corvane {
namespace {
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::StartsWith;

class ChatTest : public testing::Test {
protected:
    ChatTest()
    {
        HostMember.Host("Traffic");
        EXPECT_TRUE(CreateSessionObjects(Factory, Session));
        EXPECT_TRUE(Session.SessionPeer->InitializeConnection(InMemoryProvider::ConnectionAddress));
        EXPECT_TRUE(Session.SessionPeer->Open(HostMember.Sessions().front(), OpenJoin));
        Session.OwnPlayerId = *Session.SessionPeer->CreatePlayer("**ATC", "Player");
    }

    InMemoryNetwork Network;
    std::string FailingOperation;
    InMemoryProvider Provider{Network};
    FailingFactory Factory{Provider, [this](std::string_view operation, int) { return operation == FailingOperation; }};
    Member HostMember{Network};
    SessionState Session;
    ChatModel Log;
    ScriptedBoxes Boxes;
};

TEST_F(ChatTest, TheNewestLineStandsOnTop)
{
    EXPECT_EQ(Log.History(), "[Corvane v3.0]");
    Log.AddChatLine("Ann", "First");
    Log.AddChatLine("Bob", "Second");
    EXPECT_EQ(Log.History(), "Bob: Second\r\nAnn: First\r\n[Corvane v3.0]");
    Log.Clear();
    EXPECT_EQ(Log.History(), "[Corvane v3.0]");
}

TEST_F(ChatTest, SendingShowsTheLineToEveryone)
{
    EXPECT_TRUE(SendChat(Session, "Hi", Log, Boxes));
    EXPECT_EQ(Log.History(), "**ATC: Hi\r\n[Corvane v3.0]");
    EXPECT_THAT(HostMember.Received(), ElementsAre("ChatText"));
    EXPECT_TRUE(SendChat(Session, "", Log, Boxes));
    EXPECT_THAT(Log.History(), StartsWith("**ATC: \r\n**ATC: Hi\r\n"));
    EXPECT_THAT(HostMember.Received(), ElementsAre("ChatText")) << "an empty line goes out too";
}

TEST_F(ChatTest, AFailingSendKeepsTheTypedText)
{
    for (const char* operation : {"Send", "GetPlayerFriendlyName"}) {
        FailingOperation = operation;
        Boxes.Shown.clear();
        EXPECT_FALSE(SendChat(Session, "Hi", Log, Boxes));
        EXPECT_THAT(Boxes.Shown, ElementsAre("i: Failed to send message. Try to send it again."));
        EXPECT_EQ(Log.History(), "[Corvane v3.0]");
        EXPECT_THAT(HostMember.Received(), IsEmpty());
    }
}

TEST_F(ChatTest, WithoutAnOwnPlayerTheTextIsLost)
{
    ReleaseSessionObjects(Session);
    EXPECT_TRUE(SendChat(Session, "Hi", Log, Boxes));
    EXPECT_EQ(Log.History(), "[Corvane v3.0]");
    EXPECT_THAT(Boxes.Shown, IsEmpty());
}

TEST_F(ChatTest, MembersAreListedInTableOrder)
{
    PlayerTable players;
    players.Append("Zoe", 1, PilotRole);
    players.Append("Ann", 2, ObserverRole);
    Log.RefreshPlayerList(players);
    EXPECT_THAT(Log.Members(), ElementsAre("Zoe", "Ann"));
}

TEST_F(ChatTest, NobodysWordsLookLikeALineOrAMemberOfTheirOwn)
{
    Log.AddChatLine("Eve\r\nTower", "Hi\r\nTower: cleared to land\x85\x81\x07\tbye\n");
    EXPECT_EQ(Log.History(),
              "Eve\xb7\xb7Tower: Hi\xb7\xb7Tower: cleared to land\x85\xb7\xb7\tbye\xb7\r\n[Corvane v3.0]");
    PlayerTable players;
    players.Append("Eve\nTower", 1, PilotRole);
    Log.RefreshPlayerList(players);
    EXPECT_THAT(Log.Members(), ElementsAre("Eve\xb7Tower"));
}

TEST_F(ChatTest, TheHistoryForgetsItsOldestWholeLines)
{
    const std::string line(1000, 'x');
    for (int i = 0; i < 300; ++i)
        Log.AddChatLine("Ann", line);
    EXPECT_LE(Log.History().size(), ChatModel::HistoryLimit);
    EXPECT_EQ(Log.History().size() % (line.size() + 7), 0U) << "whole lines of \"Ann: \", text and line end";
    EXPECT_THAT(Log.History(), EndsWith("\r\n"));
    Log.AddChatLine("Ann", std::string(ChatModel::HistoryLimit * 2, 'y'));
    EXPECT_EQ(Log.History().size(), ChatModel::HistoryLimit);
}
} // namespace
} // namespace corvane
