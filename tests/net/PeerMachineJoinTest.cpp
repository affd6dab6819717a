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

std::string ErrorOf(const SimulatedNetwork::Node& node)
{
    return node.Done && !*node.Done ? node.Done->error().Text() : "";
}

TEST(Enumeration, FindsASessionByBroadcastAndDirectly)
{
    SimulatedSession session;
    session.CreatePlayer(session.Host(), u"Instructor");
    auto& asker = session.Network.Add();
    session.Find(asker, EnumAvailable);
    ASSERT_THAT(asker.Machine.Found(), SizeIs(1));
    EXPECT_EQ(asker.Machine.Found()[0].Name, u"Practice");
    EXPECT_EQ(asker.Machine.Found()[0].Description.CurrentPlayers, 1U);
    EXPECT_EQ(asker.Machine.Found()[0].Description.Flags, 0x44U);
    EXPECT_EQ(asker.Machine.Found()[0].Host, session.Host().Stream());
    EnumerateRequest directed;
    directed.Host = {session.Host().Ip, SimulatedEnumerationPort};
    asker.Machine.Enumerate(directed, session.Network.Now);
    asker.Done.reset();
    session.Network.Pass(Millis{450});
    EXPECT_THAT(asker.Machine.Found(), SizeIs(1));
    EXPECT_FALSE(asker.Done); // another session on that machine may still answer
    session.Network.Pass(Millis{250});
    EXPECT_TRUE(asker.Done && *asker.Done);
}

TEST(Enumeration, TakesItsWholeTimeWhereMoreAnswersMayCome)
{
    SimulatedSession session;
    auto& asker = session.Network.Add();
    struct {
        std::optional<SocketAddress> Host;
        Millis Time;
        Millis Expected;
    } const cases[] = {
        {{}, Millis{0}, Millis{5000}}, // everybody on the network is asked
        {SocketAddress{session.Host().Ip, SimulatedEnumerationPort}, Millis{2000}, Millis{2000}},
        {SocketAddress{0x7F000063, SimulatedEnumerationPort}, Millis{0}, Millis{5000}}, // nobody is there
    };
    for (const auto& wanted : cases) {
        EnumerateRequest request;
        request.Host = wanted.Host;
        request.Broadcast = {0xFFFFFFFF, SimulatedEnumerationPort};
        request.Time = wanted.Time;
        asker.Done.reset();
        asker.Machine.Enumerate(request, session.Network.Now);
        session.Network.Pass(wanted.Expected - Millis{250});
        EXPECT_FALSE(asker.Done);
        session.Network.Pass(Millis{250});
        EXPECT_TRUE(asker.Done && *asker.Done);
    }
}

TEST(Enumeration, TakesRepliesOnTheConnectionThatAsked)
{
    SimulatedNetwork network;
    auto& asker = network.Add();
    const SocketAddress asked{0x7F000009, SimulatedEnumerationPort};
    EnumerateRequest request;
    request.Host = asked;
    asker.Machine.Enumerate(request, network.Now);
    asker.Machine.OnStream({1, asked, asker.Ip, asked, false}, EncodeMessage(EnumSessionsReply{{}, u"Far"}, 2317),
                           network.Now);
    ASSERT_THAT(asker.Machine.Found(), SizeIs(1));
    EXPECT_EQ(asker.Machine.Found()[0].Host, (SocketAddress{0x7F000009, 2317}));
}

EnumSessionsReply ReplyNamed(std::uint8_t instance)
{
    EnumSessionsReply reply{{}, u"Far"};
    reply.Description.Instance.Value[0] = instance;
    return reply;
}

TEST(Enumeration, OfOneMachineTakesNobodyElsesAnswer)
{
    SimulatedSession session;
    auto& asker = session.Network.Add();
    EnumerateRequest request;
    request.Host = {session.Host().Ip, SimulatedEnumerationPort};
    asker.Machine.Enumerate(request, session.Network.Now);
    EnumSessionsReply absurd = ReplyNamed(1);
    absurd.Description.CurrentPlayers = 0x80000000;
    session.Network.Inject(true, {0x7F0000C8, 2300}, asker.Stream(), EncodeMessage(absurd, 2300));
    session.Network.Inject(false, {0x7F0000C8, 2350}, {asker.Ip, 2350}, EncodeMessage(absurd, 2300));
    session.Network.Pass(Millis{1000});
    ASSERT_THAT(asker.Machine.Found(), SizeIs(1));
    EXPECT_EQ(asker.Machine.Found()[0].Name, u"Practice");
}

TEST(Enumeration, OfEverybodyLetsNoMachineFillTheListOrTakeASessionOver)
{
    SimulatedSession session;
    auto& asker = session.Network.Add();
    EnumerateRequest request;
    request.Broadcast = {0xFFFFFFFF, SimulatedEnumerationPort};
    asker.Machine.Enumerate(request, session.Network.Now);
    const SocketAddress greedy{0x7F0000C8, 2300};
    for (unsigned i = 1; i < 250; ++i)
        session.Network.Inject(true, greedy, asker.Stream(),
                               EncodeMessage(ReplyNamed(static_cast<std::uint8_t>(i)), 2300));
    session.Network.Pass(Millis{1000});
    EXPECT_THAT(asker.Machine.Found(), SizeIs(MaxSessionsPerSource + 1));
    EnumSessionsReply copied{session.Host().Machine.Description(), u"Practice"};
    session.Network.Inject(true, greedy, asker.Stream(), EncodeMessage(copied, 2300));
    EXPECT_THAT(asker.Machine.Found(), testing::Contains(testing::Field(&FoundSession::Host, session.Host().Stream())));
}

struct VisibleCase {
    const char* Name;
    std::uint32_t SessionFlags;
    std::uint32_t MaxPlayers;
    std::uint32_t AskedFlags;
    bool Visible;
};
class Visibility : public testing::TestWithParam<VisibleCase> {};
TEST_P(Visibility, DependsOnFlagsOfBoth)
{
    SimulatedSession session(GetParam().SessionFlags, GetParam().MaxPlayers, u"cat");
    session.CreatePlayer(session.Host(), u"Instructor");
    auto& asker = session.Network.Add();
    session.Find(asker, GetParam().AskedFlags);
    EXPECT_EQ(!asker.Machine.Found().empty(), GetParam().Visible);
}
INSTANTIATE_TEST_SUITE_P(Enumeration, Visibility,
                         testing::Values(VisibleCase{"Open", 0x44, 8, 1, true},
                                         VisibleCase{"FlagsOfZeroMeanAvailable", 0x44, 1, 0, false},
                                         VisibleCase{"FullWhenAskedForAvailable", 0x44, 1, 1, false},
                                         VisibleCase{"FullWhenAskedForAll", 0x44, 1, 2, true},
                                         VisibleCase{"FullWhenAskedForNeither", 0x44, 1, 64, true},
                                         VisibleCase{"PasswordNotAskedFor", 0x444, 8, 1, false},
                                         VisibleCase{"PasswordAskedFor", 0x444, 8, 64, true},
                                         VisibleCase{"PrivateAlways", 0x644, 8, 64, false},
                                         VisibleCase{"JoiningDisabled", 0x64, 8, 1, false},
                                         VisibleCase{"NewPlayersDisabledAskedForAll", 0x45, 8, 3, true}),
                         [](const auto& row) { return std::string(row.param.Name); });

TEST(Joining, AsSecondAndThirdEverybodyLearnsOfEverybody)
{
    SimulatedSession session;
    session.CreatePlayer(session.Host(), u"Host");
    const WireId marker = session.CreateGroup(session.Host(), u"FS61_REFUSE_PARAMS");
    auto& second = session.Join();
    ASSERT_TRUE(second.Done && *second.Done) << ErrorOf(second);
    session.CreatePlayer(second, u"Second");
    auto& third = session.Join();
    ASSERT_TRUE(third.Done && *third.Done) << ErrorOf(third);
    session.CreatePlayer(third, u"Third");
    for (const auto* node : {&session.Host(), &second, &third}) {
        EXPECT_EQ(NamesKnownTo(*node), (Names{u"Host", u"Second", u"Third"}));
        EXPECT_THAT(node->Machine.Table().Machines(), SizeIs(3));
        EXPECT_TRUE(node->Machine.Table().Groups().contains(marker));
        EXPECT_EQ(node->Machine.HostSystemPlayer(), session.Host().Machine.OwnSystemPlayer());
    }
    // The members talk to each other directly: both know the other's true address.
    EXPECT_EQ(second.Machine.Table().Machines().at(third.Machine.OwnSystemPlayer()).Stream, third.Stream());
    EXPECT_EQ(third.Machine.Table().Machines().at(second.Machine.OwnSystemPlayer()).Stream, second.Stream());
}

TEST(Joining, WithTwoAtOnceBothLearnOfEachOther)
{
    SimulatedSession session;
    auto& one = session.Network.Add();
    auto& two = session.Network.Add();
    for (auto* node : {&one, &two}) {
        session.Find(*node);
        node->Machine.Join(node->Machine.Found().front().Description.Instance, u"", session.Network.Now);
    }
    session.Network.Settle();
    session.CreatePlayer(one, u"One");
    session.CreatePlayer(two, u"Two");
    EXPECT_EQ(NamesKnownTo(one), (Names{u"One", u"Two"}));
    EXPECT_EQ(NamesKnownTo(two), (Names{u"One", u"Two"}));
}

TEST(Joining, NeedsTheRightPassword)
{
    SimulatedSession session(0x444, 8, u"cat");
    EXPECT_THAT(ErrorOf(session.TryJoin(u"dog")), HasSubstr("invalid password"));
    EXPECT_THAT(ErrorOf(session.TryJoin(u"Cat")), HasSubstr("invalid password"));
    EXPECT_THAT(ErrorOf(session.TryJoin(u"")), HasSubstr("invalid password"));
    EXPECT_THAT(session.Host().Machine.Table().Machines(), SizeIs(1)); // nobody got in
    const auto& right = session.TryJoin(u"cat");
    EXPECT_TRUE(right.Done && *right.Done) << ErrorOf(right);
}

TEST(Joining, IsRefusedWhenTheSessionIsFull)
{
    SimulatedSession session(0x44, 2);
    session.CreatePlayer(session.Host(), u"One");
    auto& second = session.Join();
    auto& third = session.Join(); // there is room for a player yet
    session.CreatePlayer(second, u"Two");
    EXPECT_THAT(ErrorOf(session.Join()), HasSubstr("no new players"));
    EXPECT_EQ(session.CreatePlayer(third, u"Three"), 0U);
    EXPECT_THAT(ErrorOf(third), HasSubstr("no new players"));
    EXPECT_TRUE(third.Machine.InSession()); // a refused player is not a lost session
}

TEST(Joining, FailsInTimeWhenTheHostIsSilent)
{
    SimulatedSession session;
    auto& joiner = session.Network.Add();
    session.Find(joiner);
    session.Host().Alive = false;
    joiner.Done.reset();
    joiner.Machine.Join(joiner.Machine.Found().front().Description.Instance, u"", session.Network.Now);
    session.Network.Pass(Millis{4750});
    EXPECT_FALSE(joiner.Done);
    session.Network.Pass(Millis{250});
    EXPECT_THAT(ErrorOf(joiner), HasSubstr("does not answer"));
}

TEST(Joining, IsRefusedForSessionsThatNeedWhatWeCannotDo)
{
    for (const std::uint32_t flag : {0x100U, 0x800U, 0x1000U, 0x2000U}) {
        SimulatedNetwork network;
        auto& joiner = network.Add();
        joiner.Machine.Enumerate({}, network.Now);
        SessionDescription description;
        description.Flags = 0x44 | flag;
        network.Inject(true, {0x7F000009, 2300}, joiner.Stream(),
                       EncodeMessage(EnumSessionsReply{description, u"Far"}, 2300));
        const auto before = network.Packets;
        joiner.Machine.Join({}, u"", network.Now);
        EXPECT_THAT(ErrorOf(joiner), HasSubstr("unsupported"));
        EXPECT_EQ(network.Packets, before); // without any traffic
    }
}

/// A joiner whose host's answers of one kind are lost: it waits for them.
struct WaitingCase {
    const char* Name;
    bool HasId;
};
class JoinWindow : public testing::TestWithParam<WaitingCase> {};
TEST_P(JoinWindow, BelievesTheMachineThatWasAskedAlone)
{
    SimulatedSession session;
    auto& joiner = session.Network.Add();
    session.Find(joiner);
    joiner.Done.reset();
    int answers = 0;
    session.Network.Filter = [&](bool, const SocketAddress& from, const SocketAddress& to, ByteSpan) {
        return from != session.Host().Stream() || to != joiner.Stream() || ++answers <= (GetParam().HasId ? 1 : 0);
    };
    joiner.Machine.Join(joiner.Machine.Found().front().Description.Instance, u"", session.Network.Now);
    session.Network.Settle();
    session.Network.Filter = {};
    SuperEnumPlayersReply table{joiner.Machine.Description(), u"Mine", u"", {}, {}};
    table.Players.push_back({PlayerIsSystem | PlayerIsNameServer, 0x77, 14, {}, {}, {}, std::nullopt, {}, 0});
    const std::vector<WireMessage> replies{RequestPlayerReply{0, ResultNoNewPlayers}, RequestPlayerReply{0x55, 0},
                                           AddForwardReply{ResultInvalidPassword}, table};
    for (const SocketAddress& stranger : {SocketAddress{0x7F0000C8, 2300}, SocketAddress{session.Host().Ip, 2301}})
        for (const WireMessage& reply : replies)
            session.Network.Inject(true, stranger, joiner.Stream(), EncodeMessage(reply, stranger.Port));
    EXPECT_FALSE(joiner.Done);
    EXPECT_FALSE(joiner.Machine.InSession());
    EXPECT_NE(joiner.Machine.OwnSystemPlayer(), 0x55U);
    const WireMessage refusal = GetParam().HasId ? replies[2] : replies[0];
    session.Network.Inject(true, session.Host().Stream(), joiner.Stream(), EncodeMessage(refusal, 2300));
    EXPECT_TRUE(joiner.Done && !*joiner.Done);
}
INSTANTIATE_TEST_SUITE_P(Joining, JoinWindow,
                         testing::Values(WaitingCase{"WaitingForItsId", false},
                                         WaitingCase{"WaitingForTheTable", true}),
                         [](const auto& row) { return std::string(row.param.Name); });

TEST(Joining, GoesOnWithoutAMemberThatDoesNotAcknowledge)
{
    SimulatedSession session;
    session.Join().Alive = false;
    auto& third = session.Join();
    third.Done.reset();
    session.Network.Pass(Millis{3750});
    EXPECT_FALSE(third.Done);
    session.Network.Pass(Millis{500});
    EXPECT_TRUE(third.Done && *third.Done);
}
} // namespace
} // namespace corvane::directplay
