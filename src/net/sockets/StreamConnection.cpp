#include "net/sockets/StreamConnection.h"

#include <asio/write.hpp>

#include <utility>

namespace corvane::directplay {
using Clock = std::chrono::steady_clock;

StreamConnection::StreamConnection(asio::ip::tcp::socket socket, const StreamSource& source, StreamOwner& owner)
    : m_socket(std::move(socket)),
      m_source(source),
      m_owner(owner),
      m_lastProgress(Clock::now()),
      m_lastRead(Clock::now()),
      m_messageStart(Clock::now())
{
}

void StreamConnection::Start()
{
    asio::error_code ignored;
    m_socket.set_option(asio::ip::tcp::no_delay(true), ignored);
    Read();
}

void StreamConnection::Read()
{
    if (m_reading || m_paused || m_closed)
        return;
    m_reading = true;
    m_socket.async_read_some(asio::buffer(m_buffer),
                             [self = shared_from_this()](asio::error_code error, std::size_t count) {
                                 self->m_reading = false;
                                 if (self->m_closed)
                                     return;
                                 if (error)
                                     self->End(std::nullopt);
                                 else
                                     self->OnRead(count);
                             });
}

void StreamConnection::OnRead(std::size_t count)
{
    m_lastRead = Clock::now();
    if (m_closing)
        return Read();
    const bool wasInside = m_framer.InsideMessage();
    const auto reason = m_framer.Feed(ByteSpan(m_buffer).first(count), [&](ByteSpan message) {
        m_messageStart = m_lastRead;
        if (!m_closed)
            m_owner.OnStreamMessage(*this, message);
    });
    if (!wasInside)
        m_messageStart = m_lastRead;
    if (m_closed)
        return;
    if (reason)
        return End(reason);
    m_owner.OnStreamRead(*this);
    Read();
}

std::optional<Clock::time_point> StreamConnection::UnfinishedSince() const
{
    if (!m_framer.InsideMessage() || m_paused)
        return std::nullopt;
    return m_messageStart;
}

void StreamConnection::ResumeReading()
{
    m_paused = false;
    m_messageStart = Clock::now();
    Read();
}

void StreamConnection::Send(Bytes message)
{
    if (m_closed)
        return;
    if (m_queue.empty())
        m_lastProgress = Clock::now();
    m_queuedBytes += message.size();
    m_queue.push_back(std::move(message));
    Write();
}

void StreamConnection::Write()
{
    constexpr std::size_t MostMessages = 256;
    constexpr std::size_t MostBytes = 262144;
    if (m_inFlight > 0 || m_closed)
        return;
    if (m_queue.empty()) {
        if (m_closing && !std::exchange(m_saidGoodbye, true)) {
            asio::error_code ignored;
            m_socket.shutdown(asio::ip::tcp::socket::shutdown_send, ignored);
        }
        return;
    }
    std::vector<asio::const_buffer> buffers;
    std::size_t bytes = 0;
    while (buffers.size() < m_queue.size() && buffers.size() < MostMessages && bytes < MostBytes) {
        const Bytes& message = m_queue[buffers.size()];
        buffers.emplace_back(asio::buffer(message));
        bytes += message.size();
    }
    m_inFlight = buffers.size();
    // Parts count as progress: a big message to a slow reader is no stalled connection.
    const auto onPart = [self = shared_from_this()](asio::error_code error, std::size_t done) -> std::size_t {
        if (done > 0)
            self->m_lastProgress = Clock::now();
        return error ? 0 : MostBytes;
    };
    asio::async_write(m_socket, buffers, onPart,
                      [self = shared_from_this()](asio::error_code error, std::size_t count) {
                          self->OnWritten(count, static_cast<bool>(error));
                      });
}

void StreamConnection::OnWritten(std::size_t count, bool failed)
{
    for (; m_inFlight > 0 && !m_queue.empty() && m_queue.front().size() <= count; --m_inFlight) {
        count -= m_queue.front().size();
        m_queuedBytes -= m_queue.front().size();
        m_queue.pop_front();
    }
    m_inFlight = 0;
    if (m_closed)
        return;
    if (failed)
        return End(std::nullopt);
    m_lastProgress = Clock::now();
    Write();
}

void StreamConnection::CloseWhenSent()
{
    // Reading goes on, and is thrown away: closing over unread bytes would cut off what has just been sent.
    m_closing = true;
    m_paused = false;
    m_lastProgress = Clock::now();
    Read();
    Write();
}

void StreamConnection::Close()
{
    if (std::exchange(m_closed, true))
        return;
    asio::error_code ignored;
    m_socket.shutdown(asio::ip::tcp::socket::shutdown_both, ignored);
    m_socket.close(ignored);
}

void StreamConnection::End(std::optional<DropReason> reason)
{
    if (m_closed)
        return;
    Close();
    if (!m_closing)
        m_owner.OnStreamEnd(*this, reason);
}

std::deque<Bytes> StreamConnection::TakeUnsent()
{
    m_queuedBytes = 0;
    m_inFlight = 0;
    return std::exchange(m_queue, {});
}
} // namespace corvane::directplay
