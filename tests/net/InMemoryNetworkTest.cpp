#include "net/memory/InMemoryNetwork.h"

#include "tests/session/SessionFixture.h"

#include <gmock/gmock.h>

namespace corvane {
namespace {
using testing::ElementsAre;
using testing::IsEmpty;

class InMemoryNetworkTest : public testing::Test {
protected:
    std::unique_ptr<Member> Joined(const std::string& guid, std::string_view name)
    {
        auto member = std::make_unique<Member>(Network);
        member->Join(guid, name);
        return member;
    }

    static std::vector<std::string> Names(const Member& member)
    {
        std::vector<std::string> names;
        const auto players = *member.Peer->GetDPEnumPlayers();
        for (const SessionMember& player : players)
            names.push_back(player.ShortName);
        return names;
    }

    InMemoryNetwork Network;
};

TEST_F(InMemoryNetworkTest, ListsWhatCanBeJoined)
{
    Member open(Network);
    Member full(Network);
    Member secret(Network);
    open.Host("Open", 2);
    full.Host("Full", 1);
    secret.Host("Secret", 8, 1092, "cat");
    const auto names = [&](std::uint32_t flags) {
        std::vector<std::string> listed;
        const auto entries = *open.Peer->GetDPEnumSessions(0, flags);
        for (const SessionEntry& entry : entries) {
            EXPECT_EQ(entry.Password, "");
            listed.push_back(entry.Name);
        }
        return listed;
    };
    EXPECT_THAT(names(EnumSessionsAvailable), ElementsAre("Open"));
    EXPECT_THAT(names(EnumSessionsPasswordRequired), ElementsAre("Open", "Full", "Secret"));
    Member visitor(Network);
    SessionEntry entry;
    entry.InstanceGuid = secret.Guid;
    entry.Password = "Cat";
    EXPECT_FALSE(visitor.Peer->Open(entry, OpenJoin));
    entry.Password = "cat";
    EXPECT_TRUE(visitor.Peer->Open(entry, OpenJoin));
    EXPECT_FALSE(visitor.Peer->Open(entry, OpenJoin)) << "one session at a time";
    EXPECT_TRUE(secret.Peer->Close());
    EXPECT_TRUE(open.Peer->Close());
    EXPECT_THAT(names(EnumSessionsPasswordRequired), ElementsAre("Full", "Secret")) << "it has a member that hosts on";
}

TEST_F(InMemoryNetworkTest, DeliversInOrderToEveryoneButTheSender)
{
    Member host(Network);
    host.Host("Traffic");
    const auto ann = Joined(host.Guid, "Ann");
    const auto bob = Joined(host.Guid, "Bob");
    const PlayerId second = *host.Peer->CreatePlayer("Second player", "Player");
    ann->SendBytes(AllPlayers, {1});
    ann->SendBytes(second, {2});
    ann->SendBytes(ann->Id, {3});
    EXPECT_EQ(*host.Peer->GetMessageCount(host.Id), 1);
    EXPECT_EQ(*host.Peer->GetMessageCount(second), 2);
    EXPECT_EQ(*ann->Peer->GetMessageCount(ann->Id), 0) << "never to itself";
    std::vector<PlayerId> receivers;
    while (const auto message = host.Peer->Receive()) {
        EXPECT_EQ(message->From, ann->Id);
        receivers.push_back(message->To);
    }
    EXPECT_THAT(receivers, ElementsAre(host.Id, second, second));
    EXPECT_FALSE(ann->Peer->GetMessageCount(bob->Id)) << "not its own";
    EXPECT_FALSE(ann->Peer->Send(bob->Id, AllPlayers, SendGuaranteed, Bytes{1}));
    EXPECT_FALSE(ann->Peer->Send(ann->Id, 4711, SendGuaranteed, Bytes{1}));
    EXPECT_FALSE(ann->Peer->Send(ann->Id, bob->Id, SendGuaranteed, Bytes(InMemoryNetwork::MessageLimit + 1)));
}

TEST_F(InMemoryNetworkTest, AGroupIsADestination)
{
    Member host(Network);
    host.Host("Traffic");
    const auto ann = Joined(host.Guid, "Ann");
    const auto bob = Joined(host.Guid, "Bob");
    const auto group = *host.Peer->CreateGroup("Pattern");
    EXPECT_TRUE(ann->Peer->AddPlayerToGroup(group, ann->Id));
    EXPECT_TRUE(ann->Peer->AddPlayerToGroup(group, ann->Id)) << "again: nothing more";
    EXPECT_FALSE(ann->Peer->AddPlayerToGroup(bob->Id, ann->Id));
    host.SendBytes(group, {1});
    EXPECT_EQ(*ann->Peer->GetMessageCount(ann->Id), 1);
    EXPECT_EQ(*bob->Peer->GetMessageCount(bob->Id), 0);
}

TEST_F(InMemoryNetworkTest, RemembersThoseWhoHaveLeft)
{
    Member host(Network);
    host.Host("Traffic");
    auto ann = Joined(host.Guid, "Ann");
    EXPECT_TRUE(ann->Peer->SetPlayerName(ann->Id, "Eve"));
    EXPECT_FALSE(host.Peer->SetPlayerName(ann->Id, "Mallory")) << "another's player";
    EXPECT_THAT(Names(host), ElementsAre("Host", "Eve"));
    const PlayerId left = ann->Id;
    ann.reset();
    EXPECT_EQ(*host.Peer->GetPlayerFriendlyName(left), "Eve") << "still known for its last messages";
    EXPECT_TRUE(host.Peer->Send(host.Id, left, SendGuaranteed, Bytes{1})) << "lost in silence";
    EXPECT_FALSE(host.Peer->GetPlayerFriendlyName(4711));
}

TEST_F(InMemoryNetworkTest, TheOldestMemberHostsOn)
{
    Member host(Network);
    host.Host("Traffic", 8, SessionKeepAlive + SessionMigrateHost);
    const auto ann = Joined(host.Guid, "Ann");
    const auto bob = Joined(host.Guid, "Bob");
    EXPECT_TRUE(host.Peer->IsHost());
    EXPECT_TRUE(host.Peer->Close());
    EXPECT_TRUE(ann->Peer->IsHost());
    EXPECT_FALSE(bob->Peer->IsHost() || host.Peer->IsHost());
    ann->SendBytes(bob->Id, {1});
    EXPECT_EQ(*bob->Peer->GetMessageCount(bob->Id), 1);
    Joined(host.Guid, "Eve");
}

TEST_F(InMemoryNetworkTest, WithoutMigrationEveryoneIsLeftAlone)
{
    Member host(Network);
    host.Host("Traffic", 8, SessionKeepAlive);
    const auto ann = Joined(host.Guid, "Ann");
    const auto bob = Joined(host.Guid, "Bob");
    host.SendBytes(ann->Id, {1});
    EXPECT_TRUE(host.Peer->Close());
    EXPECT_EQ(*ann->Peer->GetMessageCount(ann->Id), 1) << "what was sent before is still there";
    EXPECT_THAT(Names(*ann), ElementsAre("Ann"));
    EXPECT_FALSE(ann->Peer->Send(ann->Id, AllPlayers, SendGuaranteed, Bytes{1}));
    EXPECT_THAT(bob->Sessions(), IsEmpty());
}

TEST_F(InMemoryNetworkTest, AnUnreadQueueLosesItsOldestMessages)
{
    Member host(Network);
    host.Host("Traffic");
    const auto ann = Joined(host.Guid, "Ann");
    ann->SendBytes(host.Id, {1});
    for (std::size_t i = 0; i < InMemoryMachine::QueueLimit; ++i)
        ann->SendBytes(host.Id, {2});
    EXPECT_EQ(*host.Peer->GetMessageCount(host.Id), static_cast<std::int32_t>(InMemoryMachine::QueueLimit));
    EXPECT_EQ(host.Peer->Receive()->Content, Bytes{2});
}
} // namespace
} // namespace corvane
