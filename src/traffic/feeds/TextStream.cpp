#include "traffic/feeds/TextStream.h"

#include <asio/connect.hpp>
#include <asio/io_context.hpp>
#include <asio/ip/tcp.hpp>

#include <algorithm>
#include <array>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace corvane {
using asio::ip::tcp;

struct TextStream::Sockets {
    asio::io_context Io;
    tcp::socket Socket{Io};
    std::vector<tcp::endpoint> Endpoints;
    std::optional<asio::error_code> Connected; ///< how the attempt ended
};

/// Lets the system ask a machine that says nothing for minutes whether it is still there.
static void KeepAlive(tcp::socket& socket)
{
    asio::error_code ignored;
    socket.set_option(asio::socket_base::keep_alive(true), ignored);
#ifdef TCP_KEEPIDLE
    constexpr int IdleS = 60; // the system's own two hours are too long for a scope
    socket.set_option(asio::detail::socket_option::integer<IPPROTO_TCP, TCP_KEEPIDLE>(IdleS), ignored);
#endif
}

/// The answer of the name service.
struct TextStream::Names {
    std::mutex Mutex;
    bool Done = false;
    std::vector<tcp::endpoint> Endpoints;
};

TextStream::TextStream(std::string host, std::uint16_t port, std::string localAddress)
    : m_host(std::move(host)),
      m_port(port),
      m_localAddress(std::move(localAddress)),
      m_sockets(std::make_unique<Sockets>())
{
}

TextStream::~TextStream() = default;

bool TextStream::IsOpen() const noexcept
{
    return m_step == Step::Open;
}

std::optional<std::int64_t> TextStream::NextTryMs() const noexcept
{
    return m_step == Step::Waiting ? std::optional(m_backOff.NextTryMs()) : std::nullopt;
}

void TextStream::Poll(std::int64_t nowMs, const Handlers& handlers)
{
    if (m_step == Step::Waiting && m_backOff.MayTry(nowMs))
        Resolve(nowMs);
    if (m_step == Step::Resolving) {
        const std::scoped_lock lock(m_names->Mutex);
        if (m_names->Done) {
            m_sockets->Endpoints = m_names->Endpoints;
            Connect();
        }
    }
    if (m_step == Step::Connecting) {
        m_sockets->Io.restart();
        m_sockets->Io.poll();
        if (m_sockets->Endpoints.empty())
            Fail("the host's name has no address", nowMs, handlers);
        else if (m_sockets->Connected && *m_sockets->Connected)
            Fail(m_sockets->Connected->message(), nowMs, handlers);
        else if (m_sockets->Connected) {
            m_step = Step::Open;
            m_backOff.Opened(nowMs);
            KeepAlive(m_sockets->Socket);
            handlers.OnOpened();
        }
    }
    if (m_step == Step::Open)
        Read(handlers, nowMs);
    else if (m_step != Step::Waiting && nowMs >= m_attemptEndsMs)
        Fail(m_step == Step::Resolving ? "the name service does not answer" : "the host does not answer", nowMs,
             handlers);
}

void TextStream::Resolve(std::int64_t nowMs)
{
    constexpr std::int64_t AttemptMs = 10000;
    m_attemptEndsMs = nowMs + AttemptMs;
    m_step = Step::Resolving;
    m_names = std::make_shared<Names>();
    asio::error_code error;
    if (const auto address = asio::ip::make_address(m_host, error); !error) {
        m_names->Endpoints = {tcp::endpoint(address, m_port)};
        m_names->Done = true;
        return;
    }
    // The name service may take longer than anyone wants to wait, and its call cannot be broken off: it gets a thread
    // that nobody waits for.
    std::thread([names = m_names, host = m_host, port = m_port] {
        asio::io_context io;
        asio::error_code failed;
        const auto found = tcp::resolver(io).resolve(host, std::to_string(port), failed);
        const std::scoped_lock lock(names->Mutex);
        for (const auto& entry : found)
            names->Endpoints.push_back(entry.endpoint());
        names->Done = true;
    }).detach();
}

void TextStream::Connect()
{
    m_step = Step::Connecting;
    m_sockets->Connected.reset();
    if (!m_localAddress.empty() && !m_sockets->Endpoints.empty())
        return ConnectFromLocalAddress();
    asio::async_connect(m_sockets->Socket, m_sockets->Endpoints,
                        [sockets = m_sockets.get()](asio::error_code error, const tcp::endpoint& /*where*/) {
                            if (error != asio::error::operation_aborted)
                                sockets->Connected = error;
                        });
}

/// To the first of the host's addresses that is of the same kind.
void TextStream::ConnectFromLocalAddress()
{
    asio::error_code error;
    const tcp::endpoint local(asio::ip::make_address(m_localAddress, error), 0);
    const auto& places = m_sockets->Endpoints;
    const auto to = std::find_if(places.begin(), places.end(),
                                 [&](const tcp::endpoint& place) { return place.protocol() == local.protocol(); });
    if (!error && to == places.end())
        error = asio::error::address_family_not_supported;
    if (!error)
        m_sockets->Socket.open(local.protocol(), error);
    if (!error)
        m_sockets->Socket.bind(local, error);
    if (error) {
        m_sockets->Connected = error;
        return;
    }
    m_sockets->Socket.async_connect(*to, [sockets = m_sockets.get()](asio::error_code failed) {
        if (failed != asio::error::operation_aborted)
            sockets->Connected = failed;
    });
}

void TextStream::Read(const Handlers& handlers, std::int64_t nowMs)
{
    std::array<std::uint8_t, 65536> buffer{};
    asio::error_code error;
    m_sockets->Socket.non_blocking(true, error);
    for (std::size_t read = 0; !error && read < MostAtOnce;) {
        const std::size_t count = m_sockets->Socket.read_some(asio::buffer(buffer), error);
        if (count > 0)
            handlers.OnBytes(ByteSpan(buffer).first(count));
        read += count;
    }
    if (!error || error == asio::error::would_block || error == asio::error::interrupted)
        return;
    Fail(error == asio::error::eof ? "the host has closed the connection" : error.message(), nowMs, handlers);
}

void TextStream::Fail(const std::string& why, std::int64_t nowMs, const Handlers& handlers)
{
    m_sockets = std::make_unique<Sockets>(); // with it goes what was still under way
    m_step = Step::Waiting;
    m_backOff.Failed(nowMs);
    handlers.OnFailed(why);
}
} // namespace corvane
