// FlightGear's busiest evening: 2,000 aircraft at 10 packets a second each over loopback, from the socket to the
// program's players, beside a bare UDP receiver of the same packets. None may be lost, and half a core is the limit.

#include "core/MagVarGrid.h"
#include "follow/SessionFollower.h"
#include "tests/traffic/NobodyListens.h"
#include "traffic/TrafficProvider.h"
#include "traffic/flightgear/FlightGearFeed.h"
#include "traffic/flightgear/Packet.h"

#include <asio/io_context.hpp>
#include <asio/ip/udp.hpp>
#include <benchmark/benchmark.h>

#include <array>
#include <atomic>
#include <bit>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <thread>

namespace corvane::bench {
namespace {
using asio::ip::udp;
using Clock = std::chrono::steady_clock;

constexpr std::size_t AircraftCount = 2000;
constexpr std::size_t RoundsPerSecond = 10;
constexpr std::size_t MeasuredSeconds = 5;

double SecondsOf(clockid_t clock)
{
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

std::vector<Bytes> PacketsOfAll()
{
    std::vector<Bytes> packets;
    for (std::size_t i = 0; i < AircraftCount; ++i) {
        const std::string callsign = "P" + std::to_string(10000 + i);
        packets.push_back(flightgear::EncodePosition(
            {.Callsign = callsign,
             .Model = "Aircraft/c172p/Models/c172p.xml",
             .RangeNm = 100,
             .Position = {45 + static_cast<double>(i % 50) * 0.1, -124 + static_cast<double>(i / 50) * 0.1},
             .AltitudeFt = 5000,
             .TrueHeading = static_cast<double>(i % 360),
             .GroundSpeedKt = 120,
             .Chat = {},
             .Squawk = 1200}));
    }
    return packets;
}

/// The sender's clock in a packet.
void SetTime(Bytes& packet, double seconds)
{
    constexpr std::size_t TimeAt = 128;
    const auto bits = std::bit_cast<std::uint64_t>(seconds);
    for (std::size_t i = 0; i < sizeof bits; ++i)
        packet[TimeAt + i] = static_cast<std::uint8_t>(bits >> (56 - 8 * i));
}

/// Everybody's packets, round after round, evenly over the time.
class Sender {
public:
    Sender() : m_socket(m_io, udp::endpoint(asio::ip::address_v4::loopback(), 0)) {}
    [[nodiscard]] std::uint16_t Port() const { return m_socket.local_endpoint().port(); }

    /// Sends for so many seconds. Returns the processor time that it took.
    double Run(std::uint16_t to, std::size_t seconds)
    {
        constexpr std::size_t Portion = 50;
        const double begin = SecondsOf(CLOCK_THREAD_CPUTIME_ID);
        const udp::endpoint there(asio::ip::address_v4::loopback(), to);
        const std::size_t all = seconds * RoundsPerSecond * AircraftCount;
        const auto start = Clock::now();
        for (std::size_t sent = 0; sent < all; ++sent) {
            if (sent % Portion == 0)
                std::this_thread::sleep_until(
                    start + std::chrono::microseconds(sent * 1000000 / RoundsPerSecond / AircraftCount));
            Bytes& packet = m_packets[sent % AircraftCount];
            SetTime(packet, m_time + static_cast<double>(sent / AircraftCount) / RoundsPerSecond);
            asio::error_code ignored;
            m_socket.send_to(asio::buffer(packet), there, 0, ignored);
        }
        m_time += static_cast<double>(seconds);
        return SecondsOf(CLOCK_THREAD_CPUTIME_ID) - begin;
    }

    /// A packet more, for a receiver that waits for it.
    void Wake(std::uint16_t to)
    {
        asio::error_code ignored;
        m_socket.send_to(asio::buffer(m_packets.front()), {asio::ip::address_v4::loopback(), to}, 0, ignored);
    }

private:
    asio::io_context m_io;
    udp::socket m_socket;
    std::vector<Bytes> m_packets = PacketsOfAll();
    double m_time = 1000;
};

void BareReceiver(benchmark::State& state)
{
    Sender sender;
    asio::io_context io;
    udp::socket socket(io, udp::endpoint(asio::ip::address_v4::loopback(), 0));
    asio::error_code ignored;
    socket.set_option(asio::socket_base::receive_buffer_size(4 << 20), ignored);
    std::size_t received = 0;
    for (auto iteration : state) {
        double receiverS = 0;
        std::atomic<bool> done = false;
        std::thread receiver([&] {
            const double begin = SecondsOf(CLOCK_THREAD_CPUTIME_ID);
            std::array<std::uint8_t, flightgear::LargestPacket> buffer{};
            while (!done) {
                socket.receive(asio::buffer(buffer));
                ++received;
            }
            receiverS = SecondsOf(CLOCK_THREAD_CPUTIME_ID) - begin;
        });
        sender.Run(socket.local_endpoint().port(), MeasuredSeconds);
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        done = true;
        sender.Wake(socket.local_endpoint().port());
        receiver.join();
        --received; // the last was this end's own
        state.SetIterationTime(receiverS / static_cast<double>(MeasuredSeconds));
    }
    state.counters["sent"] =
        static_cast<double>(AircraftCount * RoundsPerSecond * MeasuredSeconds * state.iterations());
    state.counters["received"] = static_cast<double>(received);
}
BENCHMARK(BareReceiver)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);

/// The program's end: its feed's thread, and this one, which ticks as the program does.
void FlightGearToPlayers(benchmark::State& state)
{
    Sender sender;
    FlightGearLink link;
    link.PartnerHost = "127.0.0.1";
    link.PartnerPort = sender.Port();
    link.Station = {.Callsign = "BENCH", .Position = {47, -122}, .Partner = {}};
    auto started = FlightGearFeed::Start(std::move(link));
    if (!started)
        std::abort();
    FlightGearFeed& feed = **started;
    TrafficDetailsTable details;
    TrafficConnection connection{.Name = "FlightGear", .Address = "flightgear:", .Open = {}};
    connection.Open = [&]() -> Result<std::unique_ptr<TrafficFeed>> {
        return std::unique_ptr<TrafficFeed>(*std::move(started));
    };
    TrafficProvider provider(std::move(connection), details);
    const auto grid = std::make_unique<MagVarGrid>();
    test::NobodyListens events;
    SessionFollower follower(provider, *grid, events, {});
    if (!follower.Join())
        std::abort();
    const auto start = Clock::now();
    const auto tickWhileSending = [&](std::size_t seconds) {
        std::atomic<bool> done = false;
        double senderS = 0;
        std::thread sending([&] {
            senderS = sender.Run(feed.LocalPort(), seconds);
            done = true;
        });
        const double begin = SecondsOf(CLOCK_PROCESS_CPUTIME_ID);
        while (!done) {
            const auto elapsed = std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start);
            if (!follower.Tick(elapsed.count()))
                std::abort();
            std::this_thread::sleep_for(std::chrono::milliseconds(100));
        }
        sending.join();
        return SecondsOf(CLOCK_PROCESS_CPUTIME_ID) - begin - senderS;
    };
    constexpr std::size_t SettlingSeconds = 3;
    tickWhileSending(SettlingSeconds); // everybody has come
    const std::uint64_t before = feed.Received();
    for (auto iteration : state)
        state.SetIterationTime(tickWhileSending(MeasuredSeconds) / static_cast<double>(MeasuredSeconds));
    state.counters["sent"] =
        static_cast<double>(AircraftCount * RoundsPerSecond * MeasuredSeconds * state.iterations());
    state.counters["received"] = static_cast<double>(feed.Received() - before);
    state.counters["players"] = static_cast<double>(follower.Players().PlayerCount());
}
BENCHMARK(FlightGearToPlayers)->UseManualTime()->Iterations(1)->Unit(benchmark::kMillisecond);
} // namespace
} // namespace corvane::bench
