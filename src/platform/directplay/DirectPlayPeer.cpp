#include "platform/directplay/DirectPlayPeer.h"

#include "platform/directplay/HostResolver.h"
#include "platform/directplay/WireText.h"

#include <algorithm>
#include <utility>

namespace corvane {
using directplay::Millis;
using directplay::PeerMachine;
using directplay::WideFromWindows1252;
using directplay::WireId;

static constexpr const char* NotInitialized = "no connection is initialized";

static Error Because(const char* operation, const Error& error)
{
    return Fail(operation, error.Text());
}

static Result<void> CheckText(const char* operation, std::string_view text)
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

Result<std::vector<ConnectionEntry>> DirectPlayPeer::GetDPEnumConnections(std::string_view /*guid*/,
                                                                          std::uint32_t /*flags*/)
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

Result<SessionData> DirectPlayPeer::CreateSessionData()
{
    return SessionData{};
}

Result<void> DirectPlayPeer::RequireNetwork(const char* operation) const
{
    if (!m_network)
        return Fail(operation, NotInitialized);
    return {};
}

Result<std::shared_ptr<const directplay::Roster>> DirectPlayPeer::RequireSession(const char* operation) const
{
    if (!m_network)
        return Fail(operation, NotInitialized);
    auto roster = m_network->CurrentRoster();
    if (!roster->InSession)
        return Fail(operation, roster->LossReason.empty() ? "no session is open" : roster->LossReason);
    return roster;
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

Result<std::vector<SessionEntry>> DirectPlayPeer::GetDPEnumSessions(const SessionData& data, std::int32_t timeoutMs,
                                                                    std::uint32_t flags)
{
    constexpr const char* Operation = "GetDPEnumSessions";
    if (auto ready = RequireNetwork(Operation); !ready)
        return ready.error();
    const auto application = directplay::ParseGuid(data.ApplicationGuid);
    if (!data.ApplicationGuid.empty() && !application)
        return Fail(Operation, "\"" + data.ApplicationGuid + "\" is no application id");
    if (!std::exchange(m_hostAsked, true)) {
        const auto host = m_options.AskHostAddress();
        if (!host)
            return Fail(Operation, "was left");
        if (auto known = FindHost(*host, Operation); !known)
            return known.error();
    }
    directplay::EnumerateRequest request;
    request.Application = application.value_or(directplay::Guid{});
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

Result<PlayerId> DirectPlayPeer::CreatePlayer(std::string_view friendlyName, std::string_view formalName,
                                              std::int32_t /*event*/, std::uint32_t /*flags*/)
{
    constexpr const char* Operation = "CreatePlayer";
    if (const auto session = RequireSession(Operation); !session)
        return session.error();
    for (const std::string_view name : {friendlyName, formalName}) {
        if (auto fits = CheckText(Operation, name); !fits)
            return fits.error();
    }
    const auto id = Request(Operation, [&](PeerMachine& machine, Millis now) {
        machine.CreatePlayer(WideFromWindows1252(friendlyName), WideFromWindows1252(formalName), now);
    });
    if (!id)
        return id.error();
    return static_cast<PlayerId>(*id);
}

Result<void> DirectPlayPeer::SetPlayerName(PlayerId player, std::string_view friendlyName)
{
    constexpr const char* Operation = "SetPlayerName";
    if (const auto session = RequireSession(Operation); !session)
        return session.error();
    if (auto fits = CheckText(Operation, friendlyName); !fits)
        return fits;
    Result<void> result;
    m_network->Run([&](PeerMachine& machine, Millis /*now*/) {
        result = machine.SetPlayerName(static_cast<WireId>(player), WideFromWindows1252(friendlyName));
    });
    return result ? result : Because(Operation, result.error());
}

Result<std::int32_t> DirectPlayPeer::CreateGroup(std::string_view shortName)
{
    constexpr const char* Operation = "CreateGroup";
    if (const auto session = RequireSession(Operation); !session)
        return session.error();
    if (auto fits = CheckText(Operation, shortName); !fits)
        return fits.error();
    const auto id = Request(
        Operation, [&](PeerMachine& machine, Millis now) { machine.CreateGroup(WideFromWindows1252(shortName), now); });
    if (!id)
        return id.error();
    return static_cast<std::int32_t>(*id);
}

Result<std::vector<SessionMember>> DirectPlayPeer::GetDPEnumGroups(std::string_view /*sessionGuid*/,
                                                                   std::uint32_t /*flags*/)
{
    const auto session = RequireSession("GetDPEnumGroups");
    if (!session)
        return session.error();
    return (*session)->Groups;
}

Result<void> DirectPlayPeer::AddPlayerToGroup(std::int32_t group, PlayerId player)
{
    constexpr const char* Operation = "AddPlayerToGroup";
    if (const auto session = RequireSession(Operation); !session)
        return session.error();
    Result<void> result;
    m_network->Run([&](PeerMachine& machine, Millis /*now*/) {
        result = machine.AddPlayerToGroup(static_cast<WireId>(player), static_cast<WireId>(group));
    });
    return result ? result : Because(Operation, result.error());
}

Result<std::vector<SessionMember>> DirectPlayPeer::GetDPEnumPlayers(std::string_view /*sessionGuid*/,
                                                                    std::uint32_t /*flags*/)
{
    const auto session = RequireSession("GetDPEnumPlayers");
    if (!session)
        return session.error();
    return (*session)->Players;
}

static bool IsOwn(const directplay::Roster& roster, PlayerId player)
{
    return std::ranges::find(roster.OwnPlayers, player) != roster.OwnPlayers.end();
}

Result<std::int32_t> DirectPlayPeer::GetMessageCount(PlayerId player)
{
    constexpr const char* Operation = "GetMessageCount";
    // The picture first: a message that arrives in between must not be taken for the end of the session.
    const auto session = RequireSession(Operation);
    const std::size_t count = m_network ? m_network->Queue().CountFor(player) : 0;
    if (count > 0)
        return static_cast<std::int32_t>(count);
    if (!session)
        return session.error();
    if (!IsOwn(**session, player))
        return Fail(Operation, "player " + std::to_string(player) + " is not one of this machine's");
    return 0;
}

Result<ReceivedMessage> DirectPlayPeer::Receive(std::uint32_t /*flags*/)
{
    constexpr const char* Operation = "Receive";
    const auto session = RequireSession(Operation);
    auto message = m_network ? m_network->Queue().Pop() : std::nullopt;
    if (!message && !session)
        return session.error();
    if (!message)
        return Fail(Operation, "no message waits");
    m_network->OnTaken();
    return std::move(*message);
}

Result<void> DirectPlayPeer::Send(PlayerId from, PlayerId to, std::uint32_t flags, ByteSpan message)
{
    constexpr const char* Operation = "Send";
    constexpr std::size_t Largest = directplay::MaxMessageSize - directplay::HeaderSize - directplay::SignaturePart;
    const auto session = RequireSession(Operation);
    if (!session)
        return session.error();
    if (!IsOwn(**session, from))
        return Fail(Operation, "player " + std::to_string(from) + " is not one of this machine's");
    if (message.size() > Largest)
        return Fail(Operation, "a message of " + std::to_string(message.size()) + " bytes is too large");
    m_network->Send(static_cast<WireId>(from), static_cast<WireId>(to), (flags & SendGuaranteed) != 0,
                    Bytes(message.begin(), message.end()));
    return {};
}

Result<std::string> DirectPlayPeer::GetPlayerFriendlyName(PlayerId player)
{
    constexpr const char* Operation = "GetPlayerFriendlyName";
    const auto session = RequireSession(Operation);
    if (!session)
        return session.error();
    const auto name = (*session)->Names.find(player);
    if (name == (*session)->Names.end())
        return Fail(Operation, "player " + std::to_string(player) + " is unknown in this session");
    return name->second;
}

Result<void> DirectPlayPeer::DestroyPlayer(PlayerId player)
{
    constexpr const char* Operation = "DestroyPlayer";
    if (const auto session = RequireSession(Operation); !session)
        return session.error();
    Result<void> result;
    m_network->Run(
        [&](PeerMachine& machine, Millis /*now*/) { result = machine.DestroyPlayer(static_cast<WireId>(player)); });
    if (!result)
        return Because(Operation, result.error());
    m_network->Queue().Drop(player);
    return {};
}

Result<void> DirectPlayPeer::Close()
{
    if (auto ready = RequireNetwork("Close"); !ready)
        return ready;
    m_network->Leave();
    m_network->Queue().Clear();
    return {};
}

Result<void> DirectPlayPeer::SetSessionDesc(const SessionEntry& session)
{
    constexpr const char* Operation = "SetSessionDesc";
    if (const auto open = RequireSession(Operation); !open)
        return open.error();
    for (const std::string* text : {&session.Name, &session.Password}) {
        if (auto fits = CheckText(Operation, *text); !fits)
            return fits;
    }
    Result<void> result;
    m_network->Run(
        [&](PeerMachine& machine, Millis /*now*/) { result = machine.ChangeSession(ToHostRequest(session)); });
    return result ? result : Because(Operation, result.error());
}

void DirectPlayPeer::Cancel()
{
    if (m_network)
        m_network->Cancel();
}

bool DirectPlayPeer::IsHost() const
{
    return m_network && m_network->CurrentRoster()->Hosting;
}

Result<directplay::SocketAddress> DirectPlayPeer::EnumerationAddress() const
{
    if (!m_network)
        return Fail("enumeration", NotInitialized);
    return m_network->EnumerationAddress();
}

std::string DirectPlayPeer::LossReason() const
{
    return m_network ? m_network->CurrentRoster()->LossReason : std::string();
}

directplay::PacketCounters DirectPlayPeer::Counters() const
{
    return m_network ? m_network->Counters() : directplay::PacketCounters{};
}

Result<std::unique_ptr<SessionPeer>> DirectPlayProvider::CreatePeer()
{
    return std::unique_ptr<SessionPeer>(std::make_unique<DirectPlayPeer>(Options));
}

Result<std::unique_ptr<SessionPeer>> DirectPlayProvider::DirectPlayCreate(std::string_view /*guid*/)
{
    return CreatePeer();
}
} // namespace corvane
