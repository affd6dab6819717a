#include "traffic/flightgear/FlightGearFeed.h"

#include "core/Text.h"
#include "net/sockets/HostResolver.h"
#include "net/wire/SocketAddress.h"
#include "traffic/TrafficQueue.h"

#include <asio/io_context.hpp>
#include <asio/ip/udp.hpp>
#include <asio/post.hpp>
#include <asio/steady_timer.hpp>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <thread>
#include <utility>

namespace corvane {
using asio::ip::udp;

/// The socket and its thread. What the thread owns it alone touches; the queue and the counters are shared.
class FlightGearFeed::Impl {
public:
    explicit Impl(FlightGearLink link) : m_link(std::move(link)), m_source(m_link.Station) {}
    Impl(const Impl&) = delete;
    Impl& operator=(const Impl&) = delete;
    Impl(Impl&&) = delete;
    Impl& operator=(Impl&&) = delete;
    ~Impl()
    {
        m_ending = true;
        m_io.stop();
        for (std::thread* thread : {&m_thread, &m_lookup})
            if (thread->joinable())
                thread->join();
    }

    Result<void> Open();
    void Run();
    void Tell(const TrafficWord& word)
    {
        asio::post(m_io, [this, word] { m_source.Tell(word); });
    }
    TrafficEvents Take() { return m_queue.Take(); }
    [[nodiscard]] std::string Health() const;
    [[nodiscard]] const FlightGearLink& Link() const noexcept { return m_link; }
    [[nodiscard]] const udp::endpoint& Local() const noexcept { return m_local; }
    [[nodiscard]] std::uint64_t Received() const noexcept { return m_received; }

private:
    Result<void> Connect(std::uint32_t ip);
    void LookUp();
    void LookedUp(const Result<std::uint32_t>& ip);
    void WaitForDatagram();
    void ReadWaiting();
    void WaitForTick();
    void HandOver();
    [[nodiscard]] std::int64_t NowMs() const
    {
        return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - m_start)
            .count();
    }

    FlightGearLink m_link;
    asio::io_context m_io{1};
    udp::socket m_socket{m_io};
    asio::steady_timer m_timer{m_io};
    asio::steady_timer m_retry{m_io};
    udp::endpoint m_local;              ///< changes while the thread does not run
    std::chrono::seconds m_patience{5}; ///< until the partner's name is looked up again
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
    FlightGearSource m_source;
    TrafficQueue m_queue;
    std::array<std::uint8_t, flightgear::LargestPacket + 1> m_buffer{}; ///< one more tells that a datagram is larger
    std::atomic<std::uint64_t> m_received{0};
    std::atomic<std::size_t> m_pilots{0};
    std::atomic<std::int64_t> m_heardMs{-1};
    bool m_connected = false;
    bool m_failureTold = false;
    std::atomic<bool> m_ending{false};
    std::thread m_thread;
    std::thread m_lookup; ///< waits for the name service, and hands over to m_thread
};

Result<void> FlightGearFeed::Impl::Open()
{
    constexpr int WantedBuffer = 4 << 20; // bytes; the system gives what it allows
    asio::error_code error;
    auto own = asio::ip::address_v4::any();
    if (!m_link.BindAddress.empty())
        own = asio::ip::make_address_v4(m_link.BindAddress, error);
    if (error)
        return Fail(m_link.BindAddress, "is no IPv4 address to bind to");
    m_socket.open(udp::v4(), error);
    if (!error) {
        asio::error_code ignored; // the default is smaller, and serves
        m_socket.set_option(asio::socket_base::receive_buffer_size(WantedBuffer), ignored);
        m_socket.bind({own, m_link.ListenPort}, error);
    }
    if (!error)
        m_socket.non_blocking(true, error);
    if (error)
        return Fail(own.to_string() + ":" + std::to_string(m_link.ListenPort), "cannot be opened: " + error.message());
    if (const auto ip = directplay::ParseIp(m_link.PartnerHost))
        if (const Result<void> connected = Connect(*ip); !connected)
            return connected;
    m_local = m_socket.local_endpoint(error);
    return {};
}

/// The connected socket hears its partner alone, and of its refusals.
Result<void> FlightGearFeed::Impl::Connect(std::uint32_t ip)
{
    asio::error_code error;
    m_socket.connect({asio::ip::address_v4(ip), m_link.PartnerPort}, error);
    if (error)
        return Fail(m_link.Station.Partner, "cannot be reached: " + error.message());
    m_connected = true;
    return {};
}

void FlightGearFeed::Impl::LookUp()
{
    m_lookup = std::thread([this] {
        constexpr directplay::Millis Limit{10000};
        const auto ip = directplay::ResolveHost(m_link.PartnerHost, Limit, [this] { return !m_ending; });
        asio::post(m_io, [this, ip] { LookedUp(ip); });
    });
}

void FlightGearFeed::Impl::LookedUp(const Result<std::uint32_t>& ip)
{
    constexpr std::chrono::seconds LongestPatience(60);
    m_lookup.join();
    const Result<void> connected = ip ? Connect(*ip) : Result<void>(ip.error());
    if (connected)
        return WaitForDatagram();
    if (!std::exchange(m_failureTold, true))
        m_queue.Push({SourceNotice{Utf8ToWindows1252(connected.error().Text()) + ". It is tried again."}});
    m_retry.expires_after(m_patience);
    m_patience = std::min(2 * m_patience, LongestPatience);
    m_retry.async_wait([this](const asio::error_code& error) {
        if (!error)
            LookUp();
    });
}

void FlightGearFeed::Impl::Run()
{
    m_thread = std::thread([this] {
        if (m_connected)
            WaitForDatagram();
        else
            LookUp();
        WaitForTick();
        m_io.run();
    });
}

void FlightGearFeed::Impl::WaitForDatagram()
{
    m_socket.async_wait(udp::socket::wait_read, [this](const asio::error_code& error) {
        if (error)
            return;
        ReadWaiting();
        WaitForDatagram();
    });
}

/// What waits, but so much only that time goes on.
void FlightGearFeed::Impl::ReadWaiting()
{
    constexpr int MostAtOnce = 256;
    const std::int64_t nowMs = NowMs();
    for (int i = 0; i < MostAtOnce; ++i) {
        asio::error_code error;
        const std::size_t size = m_socket.receive(asio::buffer(m_buffer), 0, error);
        if (error == asio::error::would_block)
            break;
        if (error == asio::error::connection_refused)
            m_source.Refused(nowMs);
        if (error)
            continue;
        ++m_received;
        m_heardMs = nowMs;
        m_source.Receive(ByteSpan(m_buffer).first(size), nowMs);
    }
    HandOver();
}

void FlightGearFeed::Impl::WaitForTick()
{
    constexpr std::chrono::milliseconds Tick(100);
    m_timer.expires_after(Tick);
    m_timer.async_wait([this](const asio::error_code& error) {
        if (error)
            return;
        if (m_connected)
            m_source.Advance(NowMs());
        HandOver();
        WaitForTick();
    });
}

void FlightGearFeed::Impl::HandOver()
{
    if (TrafficEvents events = m_source.TakeEvents(); !events.empty())
        m_queue.Push(std::move(events));
    m_pilots = m_source.PilotCount();
    for (const Bytes& datagram : m_source.TakeOutput()) {
        asio::error_code error;
        m_socket.send(asio::buffer(datagram), 0, error);
        if (error == asio::error::connection_refused)
            m_source.Refused(NowMs());
    }
}

std::string FlightGearFeed::Impl::Health() const
{
    const std::int64_t heardMs = m_heardMs;
    const std::string heard =
        heardMs < 0 ? "nothing heard" : "heard " + std::to_string((NowMs() - heardMs) / 1000) + " s ago";
    return m_link.Station.Partner + ", " + std::to_string(m_pilots) + " pilots, " + heard;
}

FlightGearFeed::FlightGearFeed(std::unique_ptr<Impl> impl) : m_impl(std::move(impl)) {}

FlightGearFeed::~FlightGearFeed() = default;

Result<std::unique_ptr<FlightGearFeed>> FlightGearFeed::Start(FlightGearLink link)
{
    const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
    const auto sinceMidnight = sinceEpoch % std::chrono::days(1);
    link.Station.UtcS = std::chrono::duration<double>(sinceMidnight).count();
    if (link.Station.Partner.empty())
        link.Station.Partner = Utf8ToWindows1252(link.PartnerHost) + ":" + std::to_string(link.PartnerPort);
    auto impl = std::make_unique<Impl>(std::move(link));
    if (const Result<void> opened = impl->Open(); !opened)
        return opened.error();
    impl->Run();
    return std::unique_ptr<FlightGearFeed>(new FlightGearFeed(std::move(impl)));
}

std::string FlightGearFeed::Name() const
{
    return "FlightGear at " + m_impl->Link().Station.Partner;
}

TrafficEvents FlightGearFeed::Take(std::int64_t /*nowMs*/)
{
    return m_impl->Take();
}

void FlightGearFeed::Tell(const TrafficWord& word)
{
    m_impl->Tell(word);
}

std::string FlightGearFeed::Health() const
{
    return m_impl->Health();
}

std::string FlightGearFeed::LocalAddress() const
{
    return m_impl->Local().address().to_string();
}

std::uint16_t FlightGearFeed::LocalPort() const
{
    return m_impl->Local().port();
}

std::uint64_t FlightGearFeed::Received() const
{
    return m_impl->Received();
}
} // namespace corvane
