#include "net/DirectPlayPeer.h"

#include "net/sockets/HostResolver.h"
#include "net/wire/WireText.h"

#include <algorithm>
#include <utility>

namespace corvane {
using directplay::Millis;
using directplay::PeerMachine;
using directplay::WideFromWindows1252;
using directplay::WireId;

static constexpr const char* NotInitialized = "no connection is initialized";

Error DirectPlayPeer::Because(const char* operation, const Error& error)
{
    return Fail(operation, error.Text());
}

Result<void> DirectPlayPeer::CheckText(const char* operation, std::string_view text)
{
    if (text.size() > directplay::MaxTextUnits)
        return Fail(operation, "a name of " + std::to_string(text.size()) + " characters is too long for a session");
    return {};
}

DirectPlayPeer::DirectPlayPeer(DirectPlayOptions options) : m_options(std::move(options)) {}

DirectPlayPeer::~DirectPlayPeer()
{
    if (m_network)
        m_network->Leave();
}

Result<std::vector<ConnectionEntry>> DirectPlayPeer::GetDPEnumConnections()
{
    return std::vector<ConnectionEntry>{
        {std::string(DirectPlayConnectionName), std::string(DirectPlayConnectionAddress)}};
}

static Result<void> CheckOptions(const DirectPlayOptions& options)
{
    if (!options.BindAddress.empty() && !directplay::ParseIp(options.BindAddress))
        return Fail(options.BindAddress, "is no IPv4 address to bind to");
    if (!directplay::ParseIp(options.BroadcastAddress))
        return Fail(options.BroadcastAddress, "is no IPv4 address to broadcast to");
    if (options.FirstPort == 0 || options.LastPort < options.FirstPort)
        return Fail(std::to_string(options.FirstPort) + "-" + std::to_string(options.LastPort), "is no range of ports");
    return {};
}

Result<void> DirectPlayPeer::InitializeConnection(std::string_view address)
{
    constexpr const char* Operation = "InitializeConnection";
    if (!address.starts_with(DirectPlayConnectionAddress))
        return Fail(Operation, "\"" + std::string(address) + "\" is not this connection type's address");
    if (auto valid = CheckOptions(m_options); !valid)
        return Because(Operation, valid.error());
    std::string host(address.substr(DirectPlayConnectionAddress.size()));
    if (host.empty())
        host = m_options.HostAddress;
    m_hostIp.reset();
    m_hostAsked = !host.empty() || !m_options.AskHostAddress;
    if (auto found = FindHost(host, Operation); !found)
        return found;
    if (m_network)
        return {};
    auto network = directplay::PeerNetwork::Start(m_options);
    if (!network)
        return Because(Operation, network.error());
    m_network = std::move(*network);
    return {};
}

/// Where to look for sessions; an empty host means everywhere.
Result<void> DirectPlayPeer::FindHost(const std::string& host, const char* operation)
{
    if (host.empty())
        return {};
    const auto& waiting = m_options.WhileWaiting;
    const auto ip = directplay::ResolveHost(host, m_options.Timers.Request, [&] { return !waiting || waiting(); });
    if (!ip)
        return Because(operation, ip.error());
    m_hostIp = *ip;
    return {};
}

Result<void> DirectPlayPeer::RequireNetwork(const char* operation) const
{
    if (!m_network)
        return Fail(operation, NotInitialized);
    return {};
}

Result<void> DirectPlayPeer::RequireSession(const char* operation) const
{
    if (!m_network)
        return Fail(operation, NotInitialized);
    if (m_network->Members().InSession())
        return {};
    const std::string reason = m_network->Members().LossReason();
    return Fail(operation, reason.empty() ? "no session is open" : reason);
}

Result<WireId> DirectPlayPeer::Request(const char* operation, const directplay::PeerNetwork::Work& start)
{
    auto result = m_network->Request(start, m_options.WhileWaiting);
    if (!result)
        return Because(operation, result.error());
    return result;
}

static SessionEntry ToEntry(const directplay::FoundSession& found)
{
    SessionEntry entry;
    entry.Name = directplay::Windows1252FromWide(found.Name);
    entry.CurrentPlayers = static_cast<std::int32_t>(found.Description.CurrentPlayers);
    entry.MaxPlayers = static_cast<std::int32_t>(found.Description.MaxPlayers);
    entry.InstanceGuid = directplay::GuidText(found.Description.Instance);
    entry.Flags = found.Description.Flags;
    return entry;
}

Result<std::vector<SessionEntry>> DirectPlayPeer::GetDPEnumSessions(std::int32_t timeoutMs, std::uint32_t flags)
{
    constexpr const char* Operation = "GetDPEnumSessions";
    if (auto ready = RequireNetwork(Operation); !ready)
        return ready.error();
    if (!std::exchange(m_hostAsked, true)) {
        const auto host = m_options.AskHostAddress();
        if (!host)
            return Fail(Operation, "was left");
        if (auto known = FindHost(*host, Operation); !known)
            return known.error();
    }
    directplay::EnumerateRequest request;
    request.Flags = flags;
    if (m_hostIp)
        request.Host = {*m_hostIp, m_options.EnumerationPort};
    request.Broadcast = {directplay::ParseIp(m_options.BroadcastAddress).value_or(0xFFFFFFFF),
                         m_options.EnumerationPort};
    request.Time = Millis{std::max(timeoutMs, 0)};
    const auto done = Request(Operation, [&](PeerMachine& machine, Millis now) { machine.Enumerate(request, now); });
    if (!done)
        return done.error();
    std::vector<SessionEntry> entries;
    m_network->Run([&](PeerMachine& machine, Millis /*now*/) {
        std::ranges::transform(machine.Found(), std::back_inserter(entries), ToEntry);
    });
    return entries;
}

static directplay::HostRequest ToHostRequest(const SessionEntry& session)
{
    directplay::HostRequest request;
    request.Name = WideFromWindows1252(session.Name);
    request.Password = WideFromWindows1252(session.Password);
    request.Flags = session.Flags;
    request.MaxPlayers = static_cast<std::uint32_t>(std::max(session.MaxPlayers, 0));
    return request;
}

Result<void> DirectPlayPeer::Open(const SessionEntry& session, std::uint32_t flags)
{
    constexpr const char* Operation = "Open";
    if (auto ready = RequireNetwork(Operation); !ready)
        return ready.error();
    for (const std::string* text : {&session.Name, &session.Password}) {
        if (auto fits = CheckText(Operation, *text); !fits)
            return fits.error();
    }
    m_network->Queue().Clear();
    if ((flags & OpenCreate) != 0) {
        directplay::HostRequest request = ToHostRequest(session);
        request.Application = directplay::ParseGuid(m_options.ApplicationGuid).value_or(directplay::Guid{});
        const auto done = Request(Operation, [&](PeerMachine& machine, Millis now) { machine.Host(request, now); });
        if (!done)
            return done.error();
        const auto address = EnumerationAddress();
        if (address || !m_options.MustBeFound)
            return {};
        m_network->Leave();
        return Because(Operation, address.error());
    }
    const auto instance = directplay::ParseGuid(session.InstanceGuid);
    if (!instance)
        return Fail(Operation, "\"" + session.InstanceGuid + "\" is no session's id");
    const std::u16string password = WideFromWindows1252(session.Password);
    const auto done =
        Request(Operation, [&](PeerMachine& machine, Millis now) { machine.Join(*instance, password, now); });
    return done ? Result<void>() : done.error();
}

Result<void> DirectPlayPeer::Close()
{
    if (auto ready = RequireNetwork("Close"); !ready)
        return ready;
    m_network->Leave();
    m_network->Queue().Clear();
    return {};
}

bool DirectPlayPeer::IsHost() const
{
    return m_network && m_network->Members().Hosting();
}

bool DirectPlayPeer::Congested() const
{
    return m_network && m_network->Congested();
}

Result<directplay::SocketAddress> DirectPlayPeer::EnumerationAddress() const
{
    if (!m_network)
        return Fail("enumeration", NotInitialized);
    return m_network->EnumerationAddress();
}

std::string DirectPlayPeer::LossReason() const
{
    return m_network ? m_network->Members().LossReason() : std::string();
}

directplay::PacketCounters DirectPlayPeer::Counters() const
{
    return m_network ? m_network->Counters() : directplay::PacketCounters{};
}

Result<std::unique_ptr<SessionPeer>> DirectPlayProvider::DirectPlayCreate()
{
    return std::unique_ptr<SessionPeer>(std::make_unique<DirectPlayPeer>(Options));
}
} // namespace corvane
