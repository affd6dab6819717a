#include "net/sockets/HostResolver.h"

#include "net/wire/SocketAddress.h"

#include <asio/io_context.hpp>
#include <asio/ip/tcp.hpp>

#include <algorithm>
#include <future>
#include <thread>

namespace corvane::directplay {
static std::uint32_t AskNameService(const std::string& host)
{
    asio::io_context io;
    asio::error_code error;
    const auto found = asio::ip::tcp::resolver(io).resolve(asio::ip::tcp::v4(), host, "", error);
    return error || found.empty() ? 0 : found.begin()->endpoint().address().to_v4().to_uint();
}

std::optional<std::string> HostFault(std::string_view host)
{
    if (std::ranges::count(host, ':') > 1)
        return "is an IPv6 address, and sessions are reached by IPv4 alone";
    if (host.find(':') != std::string_view::npos)
        return "has a port, which is not part of a host's name or address";
    const auto isPart = [](char c) { return static_cast<unsigned char>(c) > ' ' && c != '/' && c != '\x7F'; };
    if (host.empty() || !std::ranges::all_of(host, isPart))
        return "is no host's name or address";
    return std::nullopt;
}

Result<std::uint32_t> ResolveHost(const std::string& host, Millis limit, const std::function<bool()>& keepWaiting)
{
    if (const auto ip = ParseIp(host))
        return *ip;
    if (const auto fault = HostFault(host))
        return Fail(host, *fault);
    // The name service may take longer than anyone wants to wait, and its call cannot be broken off: it gets a thread
    // that nobody waits for.
    auto promise = std::make_shared<std::promise<std::uint32_t>>();
    auto answer = promise->get_future();
    std::thread([promise, host] { promise->set_value(AskNameService(host)); }).detach();
    constexpr Millis Step{50};
    for (Millis waited{0}; waited < limit; waited += Step) {
        if (answer.wait_for(Step) == std::future_status::ready) {
            if (const std::uint32_t ip = answer.get(); ip != 0)
                return ip;
            return Fail(host, "has no address");
        }
        if (!keepWaiting())
            return Fail(host, "cancelled");
    }
    return Fail(host, "the name service does not answer");
}
} // namespace corvane::directplay
