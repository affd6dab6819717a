#include "traffic/out/LineServer.h"

#include <asio/buffer.hpp>
#include <asio/io_context.hpp>
#include <asio/ip/tcp.hpp>

#include <algorithm>
#include <array>
#include <list>
#include <utility>

namespace corvane {
using asio::ip::tcp;

struct FeedReader {
    explicit FeedReader(tcp::socket socket) : Socket(std::move(socket)) {}

    tcp::socket Socket;
    std::string Waiting;
    bool SaidGoodbye = false; ///< it will send nothing more, but may go on reading
    bool Gone = false;
};

struct LineServer::Sockets {
    asio::io_context Io;
    tcp::acceptor Acceptor{Io};
    std::list<FeedReader> Readers;
    std::uint64_t Dropped = 0;
};

LineServer::LineServer(std::unique_ptr<Sockets> sockets) : m_sockets(std::move(sockets)) {}

LineServer::~LineServer() = default;

Result<std::unique_ptr<LineServer>> LineServer::Open(const std::string& address, std::uint16_t port)
{
    auto sockets = std::make_unique<Sockets>();
    asio::error_code error;
    const tcp::endpoint place(asio::ip::make_address(address, error), port);
    if (!error)
        sockets->Acceptor.open(place.protocol(), error);
#ifndef _WIN32
    // Elsewhere this lets a second listener in; here it only ignores connections that are still dying.
    if (!error)
        sockets->Acceptor.set_option(asio::socket_base::reuse_address(true), error);
#endif
    if (!error)
        sockets->Acceptor.bind(place, error);
    if (!error)
        sockets->Acceptor.listen(asio::socket_base::max_listen_connections, error);
    if (!error)
        sockets->Acceptor.non_blocking(true, error);
    if (error)
        return Fail(address + ':' + std::to_string(port), "cannot be listened at: " + error.message());
    return std::unique_ptr<LineServer>(new LineServer(std::move(sockets)));
}

std::uint16_t LineServer::Port() const
{
    asio::error_code error;
    return m_sockets->Acceptor.local_endpoint(error).port();
}

std::size_t LineServer::ReaderCount() const noexcept
{
    return m_sockets->Readers.size();
}

std::uint64_t LineServer::Dropped() const noexcept
{
    return m_sockets->Dropped;
}

bool LineServer::Accept()
{
    auto& readers = m_sockets->Readers;
    bool anybody = false;
    for (std::size_t i = 0; i < MostReaders; ++i) {
        asio::error_code error;
        tcp::socket socket(m_sockets->Io);
        m_sockets->Acceptor.accept(socket, error);
        if (error)
            break;
        socket.non_blocking(true, error);
        if (readers.size() >= MostReaders)
            if (const auto left = std::ranges::find_if(readers, &FeedReader::SaidGoodbye); left != readers.end())
                readers.erase(left); // the likeliest to have gone altogether
        if (!error && readers.size() < MostReaders) {
            readers.emplace_back(std::move(socket));
            anybody = true;
        }
    }
    return anybody;
}

/// Throws away what a reader sends, and notices whether it has gone.
static void ListenTo(FeedReader& reader)
{
    std::array<char, 4096> thrownAway{};
    asio::error_code error;
    for (int i = 0; i < 16 && !error && !reader.SaidGoodbye; ++i)
        reader.Socket.read_some(asio::buffer(thrownAway), error);
    reader.SaidGoodbye = reader.SaidGoodbye || error == asio::error::eof;
    reader.Gone = error && error != asio::error::would_block && error != asio::error::eof;
}

static void WriteTo(FeedReader& reader)
{
    asio::error_code error;
    std::size_t written = 0;
    while (!error && written < reader.Waiting.size())
        written += reader.Socket.write_some(asio::buffer(reader.Waiting) + written, error);
    reader.Waiting.erase(0, written);
    reader.Gone = error && error != asio::error::would_block;
}

void LineServer::Send(std::string_view text)
{
    for (FeedReader& reader : m_sockets->Readers) {
        ListenTo(reader);
        if (reader.Gone)
            continue;
        if (reader.Waiting.size() + text.size() > MostWaiting) {
            ++m_sockets->Dropped;
            reader.Gone = true;
            continue;
        }
        reader.Waiting.append(text);
        WriteTo(reader);
    }
    std::erase_if(m_sockets->Readers, [](const FeedReader& reader) { return reader.Gone; });
}
} // namespace corvane
