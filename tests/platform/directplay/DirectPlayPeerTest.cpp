#include "platform/directplay/DirectPlayPeer.h"

#include "platform/directplay/WireEncode.h"
#include "tests/platform/LoopbackAddress.h"

#include <asio/io_context.hpp>
#include <asio/ip/tcp.hpp>
#include <asio/write.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

/// Real sockets on loopback addresses: every machine has an address of its own.
namespace corvane {
namespace {
using directplay::Millis;
using test::LoopbackAddress;
using testing::HasSubstr;
using testing::IsSupersetOf;
using testing::SizeIs;

constexpr std::chrono::seconds Patience{20};

/// Waits for a condition with a deadline, looking often.
template <class Condition> bool Eventually(Condition condition)
{
    const auto deadline = std::chrono::steady_clock::now() + Patience;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        std::this_thread::yield();
    }
    return true;
}

/// Peers of one test.
class DirectPlayPeers : public testing::Test {
protected:
    static DirectPlayOptions OptionsOf(int machine)
    {
        DirectPlayOptions options;
        options.BindAddress = LoopbackAddress(machine);
        options.HostAddress = LoopbackAddress(2);
        options.Reconnect = Millis{200};
        options.Linger = Millis{300};
        options.Timers.FirstRepeat = Millis{50};
        options.Timers.SecondRepeat = Millis{150};
        return options;
    }

    static std::unique_ptr<DirectPlayPeer> Ready(const DirectPlayOptions& options)
    {
        auto peer = std::make_unique<DirectPlayPeer>(options);
        const auto initialized = peer->InitializeConnection(DirectPlayConnectionAddress);
        EXPECT_TRUE(initialized) << initialized.error().Text();
        return peer;
    }

    static std::unique_ptr<DirectPlayPeer> Host(std::uint32_t flags = 68, std::int32_t maxPlayers = 8,
                                                const std::string& password = "")
    {
        auto host = Ready(OptionsOf(2));
        const auto open = host->Open({"Practice", 0, maxPlayers, "", flags, password}, OpenCreate);
        EXPECT_TRUE(open) << open.error().Text();
        return host;
    }

    static std::vector<SessionEntry> Find(DirectPlayPeer& peer)
    {
        const auto found = peer.GetDPEnumSessions({}, 300, EnumSessionsPasswordRequired);
        EXPECT_TRUE(found);
        return found ? *found : std::vector<SessionEntry>{};
    }

    static Result<void> Join(DirectPlayPeer& peer, const std::string& password = "")
    {
        auto found = Find(peer);
        if (found.empty())
            return Fail("test", "no session found");
        found.front().Password = password;
        return peer.Open(found.front(), OpenJoin);
    }

    static PlayerId Player(DirectPlayPeer& peer, std::string_view name)
    {
        const auto id = peer.CreatePlayer(name, "Player", 0, 0);
        EXPECT_TRUE(id) << id.error().Text();
        return id ? *id : 0;
    }

    static std::unique_ptr<DirectPlayPeer> Joined(int machine)
    {
        auto peer = Ready(OptionsOf(machine));
        const auto joined = Join(*peer);
        EXPECT_TRUE(joined) << joined.error().Text();
        return peer;
    }

    static std::set<std::string> NamesOf(DirectPlayPeer& peer)
    {
        std::set<std::string> names;
        if (const auto players = peer.GetDPEnumPlayers("", 0)) {
            for (const SessionMember& player : *players)
                names.insert(player.ShortName);
        }
        return names;
    }

    /// The next message of a player, waited for.
    static std::optional<ReceivedMessage> Next(DirectPlayPeer& peer, PlayerId player)
    {
        const bool arrived = Eventually([&] {
            const auto count = peer.GetMessageCount(player);
            return !count || *count > 0;
        });
        auto message = peer.Receive(ReceiveAll);
        if (!arrived || !message)
            return std::nullopt;
        return *message;
    }
};

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
    const auto groups = third->GetDPEnumGroups("", 0);
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
    EXPECT_TRUE(Eventually([&] { return !member->GetDPEnumPlayers("", 0); }));
    EXPECT_THAT(member->LossReason(), HasSubstr("host has left"));
}

/// A peer in a process of its own, which can be killed without a goodbye. Must be made before the test's own peers:
/// threads do not survive the making of a process.
class Doomed {
public:
    template <class Life> explicit Doomed(Life live) : m_process(fork())
    {
        if (m_process == 0) {
            live();
            pause();
            _exit(0);
        }
    }
    Doomed(const Doomed&) = delete;
    Doomed& operator=(const Doomed&) = delete;
    ~Doomed() { Kill(); }

    void Kill()
    {
        if (m_process <= 0)
            return;
        kill(m_process, SIGKILL);
        waitpid(m_process, nullptr, 0);
        m_process = 0;
    }

private:
    pid_t m_process;
};

/// Looks until a session shows, for hosts that have just been started.
template <class Find> bool Appears(Find find)
{
    return Eventually([&] { return !find().empty(); });
}

TEST_F(DirectPlayPeers, TakeOverFromAHostThatIsKilled)
{
    const std::string home = LoopbackAddress(2);
    Doomed host([&] {
        auto options = OptionsOf(5); // its own process id would give it another network
        options.BindAddress = home;
        auto peer = Ready(options);
        (void)peer->Open({"Practice", 0, 8, "", 68, ""}, OpenCreate);
        (void)peer->CreatePlayer("Host", "Player", 0, 0);
        (void)peer.release();
    });
    const auto second = Ready(OptionsOf(3));
    ASSERT_TRUE(Appears([&] { return Find(*second); }));
    ASSERT_TRUE(Join(*second));
    Player(*second, "Two");
    const auto third = Joined(4);
    Player(*third, "Three");
    EXPECT_TRUE(Eventually([&] { return NamesOf(*second) == Names{"Host", "Two", "Three"}; }));
    host.Kill();
    EXPECT_TRUE(Eventually([&] { return second->IsHost() || third->IsHost(); }));
    for (const auto& peer : {second.get(), third.get()})
        EXPECT_TRUE(Eventually([&] { return NamesOf(*peer) == Names{"Two", "Three"}; }));
}

TEST_F(DirectPlayPeers, RemoveAMemberThatIsKilled)
{
    const std::string home = LoopbackAddress(3);
    const std::string hostHome = LoopbackAddress(2);
    Doomed member([&] {
        auto options = OptionsOf(3);
        options.BindAddress = home;
        options.HostAddress = hostHome;
        auto peer = Ready(options);
        (void)Appears([&] { return Find(*peer); });
        (void)Join(*peer);
        (void)peer->CreatePlayer("Doomed", "Player", 0, 0);
        (void)peer.release();
    });
    const auto host = Host();
    const auto third = Joined(4);
    EXPECT_TRUE(Eventually([&] { return NamesOf(*third) == Names{"Doomed"} && NamesOf(*host) == Names{"Doomed"}; }));
    member.Kill();
    EXPECT_TRUE(Eventually([&] { return NamesOf(*host).empty() && NamesOf(*third).empty(); }));
    EXPECT_TRUE(third->GetDPEnumPlayers("", 0)); // the session goes on
}

TEST_F(DirectPlayPeers, KeepTheOrderOfEverySenderUnderLoad)
{
    const auto host = Host();
    const PlayerId hostId = Player(*host, "Host");
    const auto second = Joined(3);
    const auto third = Joined(4);
    const PlayerId two = Player(*second, "Two");
    const PlayerId three = Player(*third, "Three");
    constexpr std::uint32_t Count = 5000;
    const auto sendAll = [&](DirectPlayPeer& peer, PlayerId from) {
        for (std::uint32_t i = 0; i < Count; ++i) {
            Bytes content;
            ByteWriter(content).WriteU32(i);
            ASSERT_TRUE(peer.Send(from, hostId, SendGuaranteed, content));
        }
    };
    std::thread sender([&] { sendAll(*second, two); });
    sendAll(*third, three);
    sender.join();
    std::map<PlayerId, std::uint32_t> next;
    for (std::uint32_t i = 0; i < 2 * Count; ++i) {
        const auto message = Next(*host, hostId);
        ASSERT_TRUE(message) << i;
        ASSERT_EQ(ByteReader(message->Content).ReadU32(), next[message->From]++);
    }
    EXPECT_EQ(next[two], Count);
    EXPECT_EQ(next[three], Count);
}

TEST_F(DirectPlayPeers, StopReadingAFlooderAndLoseNothing)
{
    auto options = OptionsOf(2);
    options.QueueShare = 200000;
    const auto host = Ready(options);
    ASSERT_TRUE(host->Open({"Practice", 0, 8, "", 68, ""}, OpenCreate));
    const PlayerId hostId = Player(*host, "Host");
    const auto second = Joined(3);
    const PlayerId two = Player(*second, "Two");
    constexpr std::uint32_t Count = 1000;
    for (std::uint32_t i = 0; i < Count; ++i)
        ASSERT_TRUE(second->Send(two, hostId, SendGuaranteed, Bytes(10000, static_cast<std::uint8_t>(i))));
    ASSERT_TRUE(Eventually([&] { return *host->GetMessageCount(hostId) >= 19; }));
    EXPECT_LT(*host->GetMessageCount(hostId), 50); // the share, and what was read at the same time
    const auto third = Joined(4);                  // nobody else is held up
    const PlayerId three = Player(*third, "Three");
    EXPECT_TRUE(Eventually([&] { return NamesOf(*host).contains("Three"); }));
    std::uint32_t received = 0;
    ASSERT_TRUE(third->Send(three, hostId, SendGuaranteed, Bytes{7}));
    for (std::uint32_t i = 0; i < Count + 1; ++i) {
        const auto message = Next(*host, hostId);
        ASSERT_TRUE(message) << i;
        if (message->From == two) {
            ASSERT_EQ(message->Content.at(0), static_cast<std::uint8_t>(received++));
        }
    }
    EXPECT_EQ(received, Count);
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
    const auto left = peer->GetDPEnumSessions({}, 600000, EnumSessionsAvailable);
    ASSERT_FALSE(left);
    EXPECT_THAT(left.error().Text(), HasSubstr("cancelled"));
    options.WhileWaiting = nullptr;
    options.BindAddress = LoopbackAddress(4);
    const auto other = Ready(options);
    std::thread canceller([&] { other->Cancel(); });
    EXPECT_FALSE(other->GetDPEnumSessions({}, 600000, EnumSessionsAvailable));
    canceller.join();
}

TEST_F(DirectPlayPeers, NameTheOperationThatFails)
{
    DirectPlayPeer peer(OptionsOf(3));
    EXPECT_EQ(peer.GetDPEnumSessions({}, 1, 1).error().What, "GetDPEnumSessions");
    EXPECT_EQ(peer.Send(1, 0, 1, {}).error().What, "Send");
    EXPECT_FALSE(peer.InitializeConnection("modem:"));
    EXPECT_TRUE(peer.InitializeConnection("tcpip:127.0.0.1"));
    EXPECT_EQ(peer.CreatePlayer("x", "y", 0, 0).error().What, "CreatePlayer");
    EXPECT_EQ(peer.Open({"x", 0, 0, "no id", 0, ""}, OpenJoin).error().What, "Open");
    const auto list = peer.GetDPEnumConnections("", ConnectionDirectPlay);
    ASSERT_TRUE(list);
    EXPECT_EQ(list->front().Name, "Internet TCP/IP Connection For DirectPlay");
}

/// A machine made of bare sockets, for what our own peers never do.
class BareMachine {
public:
    explicit BareMachine(const std::string& ip) : m_ip(asio::ip::make_address_v4(ip)), m_socket(m_io)
    {
        m_socket.open(asio::ip::tcp::v4());
        m_socket.bind({m_ip, 0});
    }
    bool Connect(const std::string& ip, std::uint16_t port)
    {
        asio::error_code error;
        m_socket.connect({asio::ip::make_address_v4(ip), port}, error);
        return !error;
    }
    void Send(const Bytes& bytes)
    {
        asio::error_code error;
        asio::write(m_socket, asio::buffer(bytes), error);
    }
    /// Waits until the other side has closed the connection.
    bool AwaitEnd()
    {
        std::array<std::uint8_t, 1024> buffer{};
        asio::error_code error;
        while (!error)
            m_socket.read_some(asio::buffer(buffer), error);
        return true;
    }

private:
    asio::io_context m_io;
    asio::ip::address_v4 m_ip;
    asio::ip::tcp::socket m_socket;
};

TEST_F(DirectPlayPeers, CloseStreamsThatMakeNoSenseAndServeTheOthers)
{
    const auto host = Host();
    BareMachine garbage(LoopbackAddress(9));
    ASSERT_TRUE(garbage.Connect(LoopbackAddress(2), 2300));
    garbage.Send(Bytes{0x24, 0, 0xB0, 0xFB, 1, 2, 3, 4});
    EXPECT_TRUE(garbage.AwaitEnd());
    EXPECT_EQ(host->Counters().Of(directplay::DropReason::BadMagic), 1U);
    std::vector<std::unique_ptr<BareMachine>> halfOpen; // each begins a message and never ends it
    for (int i = 0; i < 100; ++i) {
        auto machine = std::make_unique<BareMachine>(LoopbackAddress(10 + i % 50));
        if (machine->Connect(LoopbackAddress(2), 2300))
            machine->Send(Bytes{0x24, 0, 0xB0, 0xFA, 2});
        halfOpen.push_back(std::move(machine));
    }
    const auto second = Joined(3);
    Player(*second, "Two");
    EXPECT_TRUE(Eventually([&] { return NamesOf(*host) == Names{"Two"}; }));
}

TEST_F(DirectPlayPeers, AStrangerEndsNothingOverRealSockets)
{
    const auto host = Host();
    const auto second = Joined(3);
    const PlayerId two = Player(*second, "Two");
    BareMachine stranger(LoopbackAddress(9));
    ASSERT_TRUE(stranger.Connect(LoopbackAddress(3), 2300));
    stranger.Send(directplay::EncodeMessage(directplay::YouAreDead{}, 2300));
    stranger.Send(
        directplay::EncodeMessage(directplay::DeletePlayerMessage{static_cast<directplay::WireId>(two), 0}, 2300));
    stranger.Send(directplay::EncodePlayerMessage(static_cast<directplay::WireId>(two),
                                                  static_cast<directplay::WireId>(two), Bytes{1}, 2300));
    EXPECT_TRUE(Eventually([&] { return second->Counters().Of(directplay::DropReason::Stranger) >= 3; }));
    EXPECT_EQ(NamesOf(*second), Names{"Two"});
    EXPECT_EQ(*second->GetMessageCount(two), 0);
}
} // namespace
} // namespace corvane
