#include "net/wire/WireEncode.h"
#include "tests/net/SimulatedNetwork.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane::directplay {
namespace {
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using Names = std::set<std::u16string>;

TEST(Messages, ReachOneGroupOrAllInTheOrderOfTheirSender)
{
    SimulatedSession session;
    const WireId host = session.CreatePlayer(session.Host(), u"Host");
    auto& second = session.Join();
    const WireId two = session.CreatePlayer(second, u"Two");
    auto& third = session.Join();
    const WireId three = session.CreatePlayer(third, u"Three");
    const WireId group = session.CreateGroup(second, u"G");
    ASSERT_TRUE(second.Machine.AddPlayerToGroup(three, group));
    ASSERT_TRUE(second.Machine.AddPlayerToGroup(two, group));
    session.Network.Settle();
    ASSERT_TRUE(session.Host().Machine.Send(host, two, true, Bytes{1}));
    ASSERT_TRUE(session.Host().Machine.Send(host, EveryPlayer, true, Bytes{2}));
    ASSERT_TRUE(session.Host().Machine.Send(host, group, false, Bytes{3}));
    session.Network.Settle();
    const auto contents = [](const SimulatedNetwork::Node& node) {
        Bytes all;
        for (const auto& message : node.Received)
            all.push_back(message.Content.at(0));
        return all;
    };
    EXPECT_THAT(contents(second), ElementsAre(1, 2, 3));
    EXPECT_THAT(contents(third), ElementsAre(2, 3));
    EXPECT_THAT(session.Host().Received, IsEmpty()); // never its sender
    EXPECT_EQ(second.Received[0].From, host);
    EXPECT_EQ(second.Received[1].To, two);
}

TEST(Messages, BetweenPlayersOfOneMachineStayThere)
{
    SimulatedSession session;
    const WireId one = session.CreatePlayer(session.Host(), u"One");
    const WireId two = session.CreatePlayer(session.Host(), u"Two");
    const auto before = session.Network.Packets;
    ASSERT_TRUE(session.Host().Machine.Send(one, EveryPlayer, true, Bytes{7}));
    EXPECT_EQ(session.Network.Packets, before);
    ASSERT_THAT(session.Host().Received, SizeIs(1));
    EXPECT_EQ(session.Host().Received[0].To, two);
}

TEST(Messages, ThatAreLargeAndNotGuaranteedTravelInPieces)
{
    SimulatedSession session;
    const WireId host = session.CreatePlayer(session.Host(), u"Host");
    auto& second = session.Join();
    const WireId two = session.CreatePlayer(second, u"Two");
    Bytes large(20000);
    for (std::size_t i = 0; i < large.size(); ++i)
        large[i] = static_cast<std::uint8_t>(i);
    std::size_t datagrams = 0;
    session.Network.Filter = [&](bool stream, const auto&, const auto&, ByteSpan message) {
        datagrams += stream ? 0 : 1;
        EXPECT_LE(message.size(), MaxDatagramMessage);
        return datagrams != 20; // the fifth of the second message is lost
    };
    for (int i = 0; i < 3; ++i)
        ASSERT_TRUE(session.Host().Machine.Send(host, two, false, large));
    session.Network.Settle();
    EXPECT_EQ(datagrams, 48U); // 20008 bytes in pieces of 1332: 16 each
    ASSERT_THAT(second.Received, SizeIs(2));
    EXPECT_EQ(second.Received[0].Content, large);
    EXPECT_GT(second.Machine.HeldBytes(), 0U);
    session.Network.Pass(Millis{15250});
    EXPECT_EQ(second.Machine.HeldBytes(), 0U); // what has got no piece for 15 s is dropped
}

TEST(Messages, ToAndFromOnesThatHaveLeftFailNothing)
{
    SimulatedSession session;
    const WireId host = session.CreatePlayer(session.Host(), u"Host");
    auto& second = session.Join();
    const WireId two = session.CreatePlayer(second, u"Two");
    second.Machine.Leave();
    session.Network.Settle();
    EXPECT_TRUE(session.Host().Machine.Send(host, two, true, Bytes{1}));
    EXPECT_EQ(session.Host().Machine.NameOf(two), u"Two");
    EXPECT_FALSE(session.Host().Machine.Send(host, 12345, true, Bytes{1}));
    EXPECT_FALSE(session.Host().Machine.Send(two, host, true, Bytes{1})); // not ours
}

TEST(Messages, OfASenderNotYetKnownWaitForIt)
{
    SimulatedSession session;
    const WireId host = session.CreatePlayer(session.Host(), u"Host");
    auto& second = session.Join();
    std::vector<Bytes> late;
    session.Network.Filter = [&](bool /*stream*/, const auto& from, const auto& to, ByteSpan message) {
        const bool creation =
            from == second.Stream() && to == session.Host().Stream() && IsManagement(message) && message[24] == 0x08;
        if (creation)
            late.emplace_back(message.begin(), message.end());
        return !creation;
    };
    const WireId two = session.CreatePlayer(second, u"Two");
    for (const auto content : {std::uint8_t{1}, std::uint8_t{2}}) {
        ASSERT_TRUE(second.Machine.Send(two, host, true, Bytes{content}));
        session.Network.Settle();
    }
    EXPECT_THAT(session.Host().Received, IsEmpty());
    ASSERT_THAT(late, SizeIs(1));
    session.Network.Filter = nullptr;
    session.Network.Inject(true, second.Stream(), session.Host().Stream(), late[0]);
    ASSERT_THAT(session.Host().Received, SizeIs(2));
    EXPECT_THAT(session.Host().Received[0].Content, ElementsAre(1));
    EXPECT_EQ(session.Host().Machine.HeldBytes(), 0U);
}

TEST(Players, ChangeNamesJoinGroupsAndGo)
{
    SimulatedSession session;
    auto& second = session.Join();
    const WireId two = session.CreatePlayer(second, u"Two");
    const WireId group = session.CreateGroup(second, u"G");
    ASSERT_TRUE(second.Machine.AddPlayerToGroup(two, group));
    ASSERT_TRUE(second.Machine.SetPlayerName(two, u"Renamed"));
    session.Network.Settle();
    auto& third = session.Join(); // and whoever comes later is told the same
    for (const auto* node : {&session.Host(), &second, &third}) {
        EXPECT_EQ(node->Machine.NameOf(two), u"Renamed");
        EXPECT_THAT(node->Machine.Table().Groups().at(group).Members, ElementsAre(two));
    }
    const auto tell = [&](const WireMessage& message) { // what other programs may do
        for (const auto* node : {&session.Host(), &third})
            session.Network.Inject(true, second.Stream(), node->Stream(), EncodeMessage(message, 2300));
    };
    tell(DeletePlayerFromGroup{two, group});
    EXPECT_THAT(third.Machine.Table().Groups().at(group).Members, IsEmpty());
    ASSERT_TRUE(second.Machine.DestroyPlayer(two));
    session.Network.Settle();
    tell(DeleteGroupMessage{0, group});
    EXPECT_THAT(third.Machine.Table().Players(), IsEmpty());
    EXPECT_THAT(third.Machine.Table().Groups(), IsEmpty());
    EXPECT_FALSE(third.Machine.SetPlayerName(two, u"X"));
}

TEST(Sessions, ChangeTheirDescriptionButNotTheirIdentity)
{
    SimulatedSession session(0x444, 8, u"cat");
    auto& second = session.Join();
    const SessionDescription before = second.Machine.Description();
    SessionDescription changed;
    changed.Flags = 0x20; // joining disabled, and no more
    changed.MaxPlayers = 9;
    session.Network.Inject(true, session.Host().Stream(), second.Stream(),
                           EncodeMessage(SessionDescChanged{changed, u"Other", u"dog"}, 2300));
    EXPECT_EQ(second.Machine.SessionName(), u"Other");
    EXPECT_EQ(second.Machine.Description().MaxPlayers, 9U);
    EXPECT_EQ(second.Machine.Description().Flags, 0x64U); // the fixed ones stay, the password is not needed any more
    EXPECT_EQ(second.Machine.Description().Instance, before.Instance);
}

TEST(Leaving, TakesPlayersAlongAndLeavesGroups)
{
    SimulatedSession session;
    auto& second = session.Join();
    auto& third = session.Join();
    session.CreatePlayer(second, u"Two");
    const WireId group = session.CreateGroup(second, u"G");
    second.Machine.Leave();
    session.Network.Settle();
    for (const auto* node : {&session.Host(), &third}) {
        EXPECT_THAT(node->Machine.Table().Players(), IsEmpty());
        EXPECT_THAT(node->Machine.Table().Machines(), SizeIs(2));
        EXPECT_EQ(node->Machine.Table().Groups().at(group).Machine, session.Host().Machine.OwnSystemPlayer());
    }
    EXPECT_FALSE(second.Machine.InSession());
}

TEST(KeepAlive, KeepsASilentSessionTogether)
{
    SimulatedSession session;
    auto& second = session.Join();
    session.Join();
    session.Network.Pass(std::chrono::minutes{30});
    EXPECT_THAT(session.Host().Machine.Table().Machines(), SizeIs(3));
    EXPECT_TRUE(second.Machine.InSession());
}

TEST(KeepAlive, RemovesAMemberAfterEightUnansweredPings)
{
    SimulatedSession session;
    auto& second = session.Join();
    auto& third = session.Join();
    session.CreatePlayer(second, u"Two");
    session.Network.Settle();
    second.Alive = false;
    // It was heard 30 s before the first look at it, so the first ping goes out at the second look, 65 s from now, and
    // the eighth 245 s later.
    session.Network.Pass(Millis{344000});
    EXPECT_THAT(session.Host().Machine.Table().Machines(), SizeIs(3));
    session.Network.Pass(Millis{2000});
    EXPECT_THAT(session.Host().Machine.Table().Machines(), SizeIs(2));
    EXPECT_THAT(third.Machine.Table().Players(), IsEmpty()); // told by the host
    second.Alive = true;                                     // back from the dead: its pings are answered accordingly
    session.Network.Pass(Millis{36000});
    EXPECT_THAT(second.Machine.LossReason(), HasSubstr("removed"));
}

TEST(KeepAlive, EndsASessionWithoutMigration)
{
    SimulatedSession session(0x40);
    auto& second = session.Join();
    session.Host().Alive = false;
    session.Network.Pass(Millis{320000});
    EXPECT_FALSE(second.Machine.InSession());
    EXPECT_THAT(second.Machine.LossReason(), HasSubstr("host has left"));
}

SimulatedNetwork::Node& NewHostOf(SimulatedNetwork::Node& one, SimulatedNetwork::Node& two)
{
    return one.Machine.OwnSystemPlayer() < two.Machine.OwnSystemPlayer() ? one : two;
}

TEST(Migration, PassesTheSessionToTheLowestId)
{
    SimulatedSession session;
    session.CreatePlayer(session.Host(), u"Host");
    const WireId marker = session.CreateGroup(session.Host(), u"FS61_REFUSE_PARAMS");
    auto& second = session.Join();
    auto& third = session.Join();
    session.CreatePlayer(second, u"Two");
    session.CreatePlayer(third, u"Three");
    auto& heir = NewHostOf(second, third);
    auto& other = &heir == &second ? third : second;
    session.Host().Machine.Leave();
    session.Network.Settle();
    EXPECT_TRUE(heir.Machine.Hosting());
    EXPECT_TRUE(heir.EnumerationOpen);
    EXPECT_FALSE(other.Machine.Hosting());
    EXPECT_EQ(other.Machine.HostSystemPlayer(), heir.Machine.OwnSystemPlayer());
    EXPECT_EQ(NamesKnownTo(other), (Names{u"Two", u"Three"}));
    EXPECT_EQ(other.Machine.Table().Groups().at(marker).Machine, heir.Machine.OwnSystemPlayer());
    // The new host gives out ids and admits machines.
    EXPECT_NE(session.CreatePlayer(other, u"More"), 0U);
    auto& fourth = session.Network.Add();
    session.Find(fourth);
    ASSERT_THAT(fourth.Machine.Found(), SizeIs(1));
    fourth.Machine.Join(fourth.Machine.Found()[0].Description.Instance, u"", session.Network.Now);
    session.Network.Settle();
    EXPECT_EQ(NamesKnownTo(fourth), (Names{u"Two", u"Three", u"More"}));
    EXPECT_EQ(NamesKnownTo(other), NamesKnownTo(heir));
}

TEST(Migration, FollowsBrokenStreamsOfAHostThatCrashed)
{
    SimulatedSession session;
    auto& second = session.Join();
    auto& third = session.Join();
    session.Host().Alive = false;
    for (auto* node : {&second, &third})
        node->Machine.OnStreamFailed(session.Host().Stream(), session.Network.Now);
    session.Network.Settle();
    EXPECT_EQ(second.Machine.HostSystemPlayer(), third.Machine.HostSystemPlayer());
    EXPECT_TRUE(NewHostOf(second, third).Machine.Hosting());
}

TEST(Migration, SkipsAnHeirThatIsDeadToo)
{
    SimulatedSession session;
    auto& second = session.Join();
    auto& third = session.Join();
    auto& heir = NewHostOf(second, third);
    auto& other = &heir == &second ? third : second;
    session.Host().Alive = false;
    heir.Alive = false;
    other.Machine.OnStreamFailed(session.Host().Stream(), session.Network.Now);
    EXPECT_FALSE(other.Machine.Hosting());
    session.Network.Pass(Millis{320000});
    EXPECT_TRUE(other.Machine.Hosting());
    EXPECT_THAT(other.Machine.Table().Machines(), SizeIs(1));
}

TEST(Migration, FinishesARequestThatWasWaitingForTheOldHost)
{
    SimulatedSession session;
    auto& second = session.Join();
    session.Host().Alive = false;
    second.Done.reset();
    second.Machine.CreatePlayer(u"Two", u"Player", session.Network.Now);
    session.Network.Settle();
    EXPECT_FALSE(second.Done);
    second.Machine.OnStreamFailed(session.Host().Stream(), session.Network.Now);
    ASSERT_TRUE(second.Done && *second.Done);
    EXPECT_TRUE(second.Machine.IsOwnPlayer(**second.Done));
}
} // namespace
} // namespace corvane::directplay
