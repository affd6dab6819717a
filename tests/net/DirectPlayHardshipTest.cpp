#include "net/wire/WireEncode.h"
#include "tests/net/DirectPlayFixture.h"

#include <asio/io_context.hpp>
#include <asio/ip/tcp.hpp>
#include <asio/write.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <csignal>
#include <future>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

// Peers that are killed, flooded, or spoken to by machines that make no sense.

namespace corvane {
namespace {
using directplay::Millis;
using test::LoopbackAddress;
using Names = std::set<std::string>;

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
        (void)peer->CreatePlayer("Host", "Player");
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
        (void)peer->CreatePlayer("Doomed", "Player");
        (void)peer.release();
    });
    const auto host = Host();
    const auto third = Joined(4);
    EXPECT_TRUE(Eventually([&] { return NamesOf(*third) == Names{"Doomed"} && NamesOf(*host) == Names{"Doomed"}; }));
    member.Kill();
    EXPECT_TRUE(Eventually([&] { return NamesOf(*host).empty() && NamesOf(*third).empty(); }));
    EXPECT_TRUE(third->GetDPEnumPlayers()); // the session goes on
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

TEST_F(DirectPlayPeers, KeepAFastSenderThatWaitsWhenToldTo)
{
    constexpr int Players = 30; // to each of which a message goes by itself
    const auto host = Host(68, 0);
    std::vector<PlayerId> players;
    for (int i = 0; i < Players; ++i)
        players.push_back(Player(*host, "Pilot " + std::to_string(i)));
    const auto second = Joined(3);
    const PlayerId two = Player(*second, "Two");
    constexpr int Count = 3000;
    std::atomic<bool> sent = true;
    std::thread sending([&] {
        for (int i = 0; i < Count; ++i) {
            while (second->Congested())
                std::this_thread::sleep_for(Millis{1});
            sent = sent && second->Send(two, AllPlayers, SendGuaranteed, Bytes(1000));
        }
    });
    std::this_thread::sleep_for(Millis{1500}); // a program that is busy with something else
    int received = 0;
    EXPECT_TRUE(Eventually([&] {
        while (host->Receive())
            ++received;
        return received == Count * Players;
    }));
    sending.join();
    EXPECT_TRUE(sent);
    EXPECT_EQ(received, Count * Players);
    EXPECT_TRUE(second->GetMessageCount(two));
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

TEST_F(DirectPlayPeers, HaveRoomForTheSessionThatWasPromised)
{
    constexpr int Members = 80; // more than strangers may have connections
    const auto host = Host(68, 0);
    std::vector<std::unique_ptr<DirectPlayPeer>> members(Members);
    std::vector<std::thread> joining;
    for (int i = 0; i < Members; ++i)
        joining.emplace_back([&members, i] {
            auto& member = members[static_cast<std::size_t>(i)] = Ready(OptionsOf(10 + i));
            // So many at once must ask more than once: answers to strangers are limited.
            EXPECT_TRUE(Eventually([&] { return static_cast<bool>(Join(*member)); }));
            Player(*member, "Member " + std::to_string(i));
        });
    for (std::thread& thread : joining)
        thread.join();
    EXPECT_TRUE(Eventually([&] { return NamesOf(*host).size() == Members; }));
}

TEST_F(DirectPlayPeers, RefuseFarTooMuchInsteadOfMakingTheProgramWait)
{
    const auto network = directplay::PeerNetwork::Start(OptionsOf(2));
    ASSERT_TRUE(network);
    std::promise<void> busy;
    std::promise<void> goOn;
    std::thread blocking([&] {
        (*network)->Run([&](directplay::PeerMachine&, Millis) {
            busy.set_value();
            goOn.get_future().wait();
        });
    });
    busy.get_future().wait();
    int taken = 0;
    while (taken < 100 && (*network)->Send(1, 2, true, Bytes(1000000)))
        ++taken;
    EXPECT_EQ(taken, 16);
    EXPECT_TRUE((*network)->Congested());
    goOn.set_value();
    blocking.join();
    EXPECT_TRUE(Eventually([&] { return !(*network)->Congested(); }));
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
