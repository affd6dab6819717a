#include "net/DirectPlayPeer.h"

#include <asio/io_context.hpp>
#include <asio/ip/tcp.hpp>
#include <asio/read.hpp>
#include <asio/write.hpp>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <thread>

/// Messages between two peers over loopback, and the same bytes through a bare TCP echo.
namespace corvane {
namespace {
using Clock = std::chrono::steady_clock;
constexpr std::size_t PositionSize = 58; // a full position report

struct Pair {
    std::unique_ptr<DirectPlayPeer> Host;
    std::unique_ptr<DirectPlayPeer> Member;
    PlayerId HostId = 0;
    PlayerId MemberId = 0;
};

std::unique_ptr<DirectPlayPeer> Ready(const char* address)
{
    DirectPlayOptions options;
    options.BindAddress = address;
    options.HostAddress = "127.0.77.2";
    auto peer = std::make_unique<DirectPlayPeer>(options);
    if (!peer->InitializeConnection(DirectPlayConnectionAddress))
        peer.reset();
    return peer;
}

std::optional<Pair> Connect()
{
    Pair pair{Ready("127.0.77.2"), Ready("127.0.77.3")};
    if (!pair.Host || !pair.Member || !pair.Host->Open({"Bench", 0, 8, "", 68, ""}, OpenCreate))
        return std::nullopt;
    const auto found = pair.Member->GetDPEnumSessions(300, EnumSessionsAvailable);
    if (!found || found->empty() || !pair.Member->Open(found->front(), OpenJoin))
        return std::nullopt;
    const auto host = pair.Host->CreatePlayer("Host", "Player");
    const auto member = pair.Member->CreatePlayer("Member", "Player");
    if (!host || !member)
        return std::nullopt;
    pair.HostId = *host;
    pair.MemberId = *member;
    return pair;
}

bool AwaitMessage(DirectPlayPeer& peer, PlayerId player)
{
    while (true) {
        const auto count = peer.GetMessageCount(player);
        if (!count)
            return false;
        if (*count > 0)
            return peer.Receive().has_value();
        std::this_thread::yield();
    }
}

void PeerThroughput(benchmark::State& state)
{
    auto pair = Connect();
    if (!pair)
        return state.SkipWithError("no session");
    constexpr int Batch = 20000;
    const Bytes message(PositionSize);
    for (auto _ : state) {
        std::thread sender([&] {
            for (int i = 0; i < Batch; ++i)
                (void)pair->Member->Send(pair->MemberId, AllPlayers, SendGuaranteed, message);
        });
        for (int i = 0; i < Batch; ++i) {
            if (!AwaitMessage(*pair->Host, pair->HostId))
                state.SkipWithError("the session was lost");
        }
        sender.join();
    }
    state.SetItemsProcessed(state.iterations() * Batch);
}
BENCHMARK(PeerThroughput)->Unit(benchmark::kMillisecond)->UseRealTime();

void ReportLatencies(benchmark::State& state, std::vector<double>& microseconds)
{
    if (microseconds.empty())
        return;
    std::ranges::sort(microseconds);
    state.counters["median_us"] = microseconds[microseconds.size() / 2];
    state.counters["p99_us"] = microseconds[microseconds.size() * 99 / 100];
}

/// From Send to the message's being in the other program's queue.
void PeerLatency(benchmark::State& state)
{
    auto pair = Connect();
    if (!pair)
        return state.SkipWithError("no session");
    const Bytes message(PositionSize);
    std::vector<double> microseconds;
    for (auto _ : state) {
        const auto start = Clock::now();
        (void)pair->Member->Send(pair->MemberId, pair->HostId, SendGuaranteed, message);
        if (!AwaitMessage(*pair->Host, pair->HostId))
            state.SkipWithError("the session was lost");
        microseconds.push_back(std::chrono::duration<double, std::micro>(Clock::now() - start).count());
    }
    ReportLatencies(state, microseconds);
}
BENCHMARK(PeerLatency)->Unit(benchmark::kMicrosecond)->UseRealTime();

/// The baseline: there and back through bare sockets with an echoing thread; half of it is one way.
void BareEchoHalfRoundTrip(benchmark::State& state)
{
    asio::io_context io;
    asio::ip::tcp::acceptor acceptor(io, {asio::ip::address_v4::loopback(), 0});
    std::thread echo([&] {
        asio::error_code error;
        asio::ip::tcp::socket socket(io);
        acceptor.accept(socket, error);
        socket.set_option(asio::ip::tcp::no_delay(true), error);
        std::array<std::uint8_t, PositionSize + 28> bytes{};
        while (!error) {
            asio::read(socket, asio::buffer(bytes), error);
            if (!error)
                asio::write(socket, asio::buffer(bytes), error);
        }
    });
    asio::ip::tcp::socket socket(io);
    socket.connect(acceptor.local_endpoint());
    socket.set_option(asio::ip::tcp::no_delay(true));
    std::array<std::uint8_t, PositionSize + 28> bytes{};
    std::vector<double> microseconds;
    for (auto _ : state) {
        const auto start = Clock::now();
        asio::write(socket, asio::buffer(bytes));
        asio::read(socket, asio::buffer(bytes));
        microseconds.push_back(std::chrono::duration<double, std::micro>(Clock::now() - start).count() / 2);
    }
    socket.close();
    echo.join();
    ReportLatencies(state, microseconds);
}
BENCHMARK(BareEchoHalfRoundTrip)->Unit(benchmark::kMicrosecond)->UseRealTime();
} // namespace
} // namespace corvane
