#include "traffic/feeds/WebFetch.h"

#include <chrono>
#include <httplib.h>
#include <utility>

namespace corvane {
namespace {
using Clock = std::chrono::steady_clock;

/// What one answer may cost: the library itself reads lines and headers for as long as they come.
struct FetchLimits {
    std::size_t MostBytes;
    Clock::time_point Deadline;
    const std::atomic<bool>& Stop;

    [[nodiscard]] bool AreOver() const { return Stop || Clock::now() >= Deadline; }
};

/// Ends, as if the server had, when a limit is reached.
class LimitedStream final : public httplib::Stream {
public:
    LimitedStream(httplib::Stream& stream, const FetchLimits& limits) : m_stream(stream), m_limits(limits) {}

    [[nodiscard]] bool is_readable() const override { return m_stream.is_readable(); }
    [[nodiscard]] bool is_writable() const override { return m_stream.is_writable(); }
    ssize_t read(char* ptr, size_t size) override
    {
        if (m_limits.AreOver() || m_read > m_limits.MostBytes)
            return -1;
        const ssize_t count = m_stream.read(ptr, size);
        m_read += static_cast<std::size_t>(std::max<ssize_t>(count, 0));
        return count;
    }
    ssize_t write(const char* ptr, size_t size) override { return m_limits.AreOver() ? -1 : m_stream.write(ptr, size); }
    void get_remote_ip_and_port(std::string& ip, int& port) const override
    {
        m_stream.get_remote_ip_and_port(ip, port);
    }
    void get_local_ip_and_port(std::string& ip, int& port) const override { m_stream.get_local_ip_and_port(ip, port); }
    [[nodiscard]] socket_t socket() const override { return m_stream.socket(); }

private:
    httplib::Stream& m_stream;
    const FetchLimits& m_limits;
    std::size_t m_read = 0;
};

class LimitedClient final : public httplib::ClientImpl {
public:
    LimitedClient(const WebPage& page, const FetchLimits& limits) : ClientImpl(page.Host, page.Port), m_limits(limits)
    {
        constexpr std::chrono::seconds Connect(5);
        constexpr std::chrono::seconds Step(2);
        set_connection_timeout(Connect);
        set_read_timeout(Step);
        set_write_timeout(Step);
        set_keep_alive(false);
        set_url_encode(false);
        if (!page.LocalAddress.empty())
            set_interface(page.LocalAddress);
    }

private:
    bool process_socket(const Socket& socket, std::function<bool(httplib::Stream&)> callback) override
    {
        return httplib::detail::process_client_socket(socket.sock, read_timeout_sec_, read_timeout_usec_,
                                                      write_timeout_sec_, write_timeout_usec_,
                                                      [&](httplib::Stream& stream) {
                                                          LimitedStream limited(stream, m_limits);
                                                          return callback(limited);
                                                      });
    }

    const FetchLimits& m_limits;
};
} // namespace

/// The library's own names of errors are single words.
static std::string Words(httplib::Error error, const FetchLimits& limits)
{
    if (Clock::now() >= limits.Deadline)
        return "the server takes too long";
    switch (error) {
    case httplib::Error::Connection:
    case httplib::Error::ConnectionTimeout: return "the server cannot be reached";
    case httplib::Error::Canceled: return "the page is too large";
    case httplib::Error::Read: return "the server's answer cannot be read";
    default: return to_string(error);
    }
}

Result<std::string> FetchWebPage(const WebPage& page, std::size_t mostBytes, const std::atomic<bool>& stop)
{
    constexpr std::chrono::seconds Longest(10);
    constexpr std::size_t HeadBytes = 65536;
    constexpr int Okay = 200;
    const std::string name = "http://" + page.Host + ':' + std::to_string(page.Port) + page.Path;
    const FetchLimits limits{mostBytes + HeadBytes, Clock::now() + Longest, stop};
    LimitedClient client(page, limits);
    std::string content;
    const auto answer = client.Get(page.Path, [&](const char* data, std::size_t size) {
        if (size > mostBytes - content.size() || limits.AreOver())
            return false;
        content.append(data, size);
        return true;
    });
    if (!answer)
        return Fail(name, Words(answer.error(), limits));
    if (answer->status != Okay)
        return Fail(name, "the server answers with status " + std::to_string(answer->status));
    return content;
}
} // namespace corvane
