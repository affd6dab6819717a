#include "tests/net/DirectPlayFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane {
namespace {
using directplay::Millis;
using test::LoopbackAddress;
using testing::HasSubstr;
using testing::IsSupersetOf;
using testing::SizeIs;
using Names = std::set<std::string>;

TEST_F(DirectPlayPeers, AreFoundByAddressAndByBroadcast)
{
    const auto host = Host();
    Player(*host, "Host");
    const auto at = host->EnumerationAddress();
    ASSERT_TRUE(at) << at.error().Text();
    EXPECT_EQ(directplay::AddressText(*at), LoopbackAddress(2) + ":47624");
    auto options = OptionsOf(3);
    const auto directed = Ready(options);
    ASSERT_THAT(Find(*directed), SizeIs(1));
    options.HostAddress.clear();
    options.BindAddress = LoopbackAddress(4);
    options.BroadcastAddress = LoopbackAddress(2); // a broadcast would reach the other tests' hosts as well
    const auto found = Find(*Ready(options));
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found[0].Name, "Practice");
    EXPECT_EQ(found[0].CurrentPlayers, 1);
    EXPECT_EQ(found[0].MaxPlayers, 8);
    EXPECT_EQ(found[0].Flags, 68U);
}

TEST_F(DirectPlayPeers, JoinAsSecondAndThirdAndTalk)
{
    const auto host = Host();
    const PlayerId hostId = Player(*host, "Host");
    ASSERT_TRUE(host->CreateGroup("FS61_REFUSE_PARAMS"));
    const auto second = Joined(3);
    const PlayerId two = Player(*second, "**Two");
    const auto third = Joined(4);
    const PlayerId three = Player(*third, "Three");
    for (const auto& peer : {host.get(), second.get(), third.get()})
        EXPECT_TRUE(Eventually([&] { return NamesOf(*peer) == Names{"Host", "**Two", "Three"}; }));
    EXPECT_GT(hostId, 0);
    EXPECT_GT(three, 0);
    const auto groups = third->GetDPEnumGroups();
    ASSERT_TRUE(groups);
    ASSERT_THAT(*groups, SizeIs(1));
    EXPECT_EQ((*groups)[0].ShortName, "FS61_REFUSE_PARAMS");
    EXPECT_TRUE(third->AddPlayerToGroup((*groups)[0].Id, three));
    ASSERT_TRUE(second->Send(two, AllPlayers, SendGuaranteed, Bytes{1, 2, 3}));
    for (const auto& [peer, own] : {std::pair{host.get(), hostId}, std::pair{third.get(), three}}) {
        const auto message = Next(*peer, own);
        ASSERT_TRUE(message);
        EXPECT_EQ(message->From, two);
        EXPECT_EQ(message->To, own);
        EXPECT_EQ(message->Content, (Bytes{1, 2, 3}));
        const auto name = peer->GetPlayerFriendlyName(two);
        ASSERT_TRUE(name);
        EXPECT_EQ(*name, "**Two");
    }
    ASSERT_TRUE(third->Send(three, two, 0, Bytes{9})); // not guaranteed, but on loopback it arrives
    const auto datagram = Next(*second, two);
    ASSERT_TRUE(datagram);
    EXPECT_EQ(datagram->Content, Bytes{9});
}

TEST_F(DirectPlayPeers, RefuseAWrongPasswordAndAFullSession)
{
    const auto host = Host(1092, 1, "cat");
    const auto second = Ready(OptionsOf(3));
    const auto wrong = Join(*second, "dog");
    ASSERT_FALSE(wrong);
    EXPECT_THAT(wrong.error().Text(), HasSubstr("invalid password"));
    EXPECT_TRUE(Join(*second, "cat")); // the same peer may try again
    Player(*second, "Two");
    const auto third = Ready(OptionsOf(4));
    const auto full = Join(*third, "cat");
    ASSERT_FALSE(full);
    EXPECT_THAT(full.error().Text(), HasSubstr("no new players"));
}

TEST_F(DirectPlayPeers, LeaveAndAreForgotten)
{
    const auto host = Host();
    Player(*host, "Host");
    auto second = Joined(3);
    const PlayerId two = Player(*second, "Two");
    EXPECT_TRUE(Eventually([&] { return NamesOf(*host) == Names{"Host", "Two"}; }));
    ASSERT_TRUE(second->Close());
    EXPECT_TRUE(Eventually([&] { return NamesOf(*host) == Names{"Host"}; }));
    EXPECT_TRUE(host->GetPlayerFriendlyName(two)); // its messages may still wait
    EXPECT_FALSE(second->GetMessageCount(two));
    EXPECT_TRUE(Join(*second)); // and back
}

TEST_F(DirectPlayPeers, MigrateWhenTheHostLeavesAndEndWithoutMigration)
{
    auto host = Host();
    const auto second = Joined(3);
    const auto third = Joined(4);
    Player(*second, "Two");
    Player(*third, "Three");
    host.reset();
    EXPECT_TRUE(Eventually([&] { return second->IsHost() || third->IsHost(); }));
    auto& heir = second->IsHost() ? *second : *third;
    auto& other = second->IsHost() ? *third : *second;
    EXPECT_TRUE(heir.EnumerationAddress());
    Player(other, "More"); // whose id the new host gave out
    EXPECT_TRUE(Eventually([&] { return NamesOf(heir) == Names{"Two", "Three", "More"}; }));

    auto options = OptionsOf(6); // another session, on an address of its own
    options.HostAddress = LoopbackAddress(6);
    auto lone = Ready(options);
    ASSERT_TRUE(lone->Open({"Short", 0, 8, "", 64, ""}, OpenCreate));
    options.BindAddress = LoopbackAddress(7);
    const auto member = Ready(options);
    ASSERT_TRUE(Join(*member));
    lone.reset();
    EXPECT_TRUE(Eventually([&] { return !member->GetDPEnumPlayers(); }));
    EXPECT_THAT(member->LossReason(), HasSubstr("host has left"));
}

TEST_F(DirectPlayPeers, FindOtherPortsWhenTheirsAreTakenAndSayWhenThereAreNone)
{
    auto options = OptionsOf(2);
    options.FirstPort = 2300;
    options.LastPort = 2301;
    const auto first = Ready(options);
    const auto second = Ready(options); // on the same address: the other port
    DirectPlayPeer third(options);
    const auto none = third.InitializeConnection(DirectPlayConnectionAddress);
    ASSERT_FALSE(none);
    EXPECT_THAT(none.error().Text(), HasSubstr("2300 to 2301"));
    ASSERT_TRUE(first->Open({"One", 0, 8, "", 68, ""}, OpenCreate));
    ASSERT_TRUE(second->Open({"Two", 0, 8, "", 68, ""}, OpenCreate));
    EXPECT_TRUE(first->EnumerationAddress());
    EXPECT_FALSE(second->EnumerationAddress()); // the port is the first one's
}

TEST_F(DirectPlayPeers, CanBeLeftWhileTheyWait)
{
    auto options = OptionsOf(3);
    int asked = 0;
    options.WhileWaiting = [&] { return ++asked < 2; };
    const auto peer = Ready(options);
    const auto left = peer->GetDPEnumSessions(600000, EnumSessionsAvailable);
    ASSERT_FALSE(left);
    EXPECT_THAT(left.error().Text(), HasSubstr("cancelled"));
}

TEST_F(DirectPlayPeers, NameTheOperationThatFails)
{
    DirectPlayPeer peer(OptionsOf(3));
    EXPECT_EQ(peer.GetDPEnumSessions(1, 1).error().What, "GetDPEnumSessions");
    EXPECT_EQ(peer.Send(1, 0, 1, {}).error().What, "Send");
    EXPECT_FALSE(peer.InitializeConnection("modem:"));
    EXPECT_TRUE(peer.InitializeConnection("tcpip:127.0.0.1"));
    EXPECT_EQ(peer.CreatePlayer("x", "y").error().What, "CreatePlayer");
    EXPECT_EQ(peer.Open({"x", 0, 0, "no id", 0, ""}, OpenJoin).error().What, "Open");
    const auto list = peer.GetDPEnumConnections();
    ASSERT_TRUE(list);
    EXPECT_EQ(list->front().Name, "Internet TCP/IP Connection For DirectPlay");
}
} // namespace
} // namespace corvane
