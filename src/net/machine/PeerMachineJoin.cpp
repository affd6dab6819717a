#include "net/machine/PeerMachine.h"
#include "net/wire/WireEncode.h"

#include <algorithm>
#include <utility>

/// Looking for sessions, and the joiner's side of a join.
namespace corvane::directplay {
void PeerMachine::Enumerate(const EnumerateRequest& request, Millis now)
{
    constexpr std::uint32_t WireFlags = EnumAvailable | EnumAll | EnumPasswordRequired;
    m_found.clear();
    m_request = {RequestKind::Enumerate, now + (request.Time.count() > 0 ? request.Time : m_config.Timers.Enumeration)};
    const std::uint32_t flags = request.Flags == 0 ? EnumAvailable : request.Flags & WireFlags;
    const Bytes message =
        EncodeMessage(EnumSessions{request.Application, request.Password, flags}, m_config.StreamPort);
    const SocketAddress to = request.Host.value_or(request.Broadcast);
    m_endsWithAnswers = request.Host && request.Time.count() <= 0;
    m_askedIp = request.Host ? request.Host->Ip : 0;
    m_output.SendDatagram(to, message);
    // Datagrams get lost; a host that was asked twice is listed once.
    m_repeats = {{now + m_config.Timers.FirstRepeat, to, message}, {now + m_config.Timers.SecondRepeat, to, message}};
    if (request.Host) {
        m_enumerationStream = request.Host;
        m_output.SendStream(*request.Host, message);
    }
}

bool PeerMachine::Handle(const Origin& origin, const EnumSessionsReply& message, Millis now)
{
    if (m_request.Kind != RequestKind::Enumerate || origin.StatedPort == 0)
        return Drop(DropReason::Stranger);
    if (m_askedIp != 0 && origin.Remote.Ip != m_askedIp)
        return Drop(DropReason::Stranger); // nobody has asked this machine
    // It may come on the connection that we opened to the enumeration port: what it states counts.
    const SocketAddress host{origin.Remote.Ip, origin.StatedPort};
    const FoundSession found{message.Description, message.Name, host};
    const auto known = std::ranges::find_if(
        m_found, [&](const FoundSession& one) { return one.Description.Instance == message.Description.Instance; });
    const bool isNew = known == m_found.end();
    const auto ofSource =
        std::ranges::count_if(m_found, [&](const FoundSession& one) { return one.Host.Ip == host.Ip; });
    if (!isNew && known->Host.Ip != host.Ip)
        return Drop(DropReason::Stranger); // another machine's session, passed off as its own
    if (!isNew)
        *known = found;
    else if (m_found.size() < MaxSessionsListed && static_cast<std::size_t>(ofSource) < MaxSessionsPerSource)
        m_found.push_back(found);
    else
        return Drop(DropReason::Flooding);
    if (m_endsWithAnswers && isNew)
        m_request.Deadline = std::min(m_request.Deadline, now + m_config.Timers.Settle);
    return false;
}

void PeerMachine::TickRequest(Millis now)
{
    for (auto repeat = m_repeats.begin(); repeat != m_repeats.end();) {
        if (repeat->At > now) {
            ++repeat;
            continue;
        }
        m_output.SendDatagram(repeat->To, repeat->Message);
        repeat = m_repeats.erase(repeat);
    }
    if (m_request.Kind == RequestKind::None || now < m_request.Deadline)
        return;
    if (m_request.Kind == RequestKind::Enumerate)
        Finish(WireId{0});
    else if (m_request.Kind == RequestKind::Join)
        FailJoin("the host does not answer");
    else
        Finish(Fail("host", "does not answer"));
}

void PeerMachine::Join(const Guid& instance, std::u16string_view password, Millis now)
{
    m_request = {RequestKind::Join, now + m_config.Timers.Request};
    const auto found =
        std::ranges::find_if(m_found, [&](const FoundSession& one) { return one.Description.Instance == instance; });
    if (m_phase != Phase::Idle)
        return Finish(Fail("session", "one is open already"));
    if (found == m_found.end())
        return Finish(Fail("session", GuidText(instance) + " is not among those that were found"));
    if ((found->Description.Flags & UnsupportedSessionFlags) != 0)
        return Finish(Fail("session", "its flags " + std::to_string(found->Description.Flags) + " are unsupported"));
    m_lossReason.clear();
    m_description = found->Description;
    m_sessionName = found->Name;
    m_password = password;
    m_hostAddresses = {found->Host};
    m_phase = Phase::WaitingForId;
    m_output.SendStream(found->Host,
                        EncodeMessage(RequestPlayerId{PlayerIsSystem | PlayerIsLocal}, m_config.StreamPort));
}

void PeerMachine::FailJoin(std::string why)
{
    ResetSession();
    Finish(Fail("session", std::move(why)));
}

static std::string RefusalText(std::uint32_t result)
{
    switch (result) {
    case ResultNoNewPlayers: return "no new players are admitted";
    case ResultInvalidPassword: return "invalid password";
    default: return "the host refuses with code " + std::to_string(result);
    }
}

/// Asks the host for the id of a player or group, for the running request.
void PeerMachine::RequestId(Millis now)
{
    m_request.Deadline = now + m_config.Timers.Request;
    const MachineEntry* host = m_table.FindMachine(m_hostId);
    if (host == nullptr || m_migrating)
        return; // asked again once there is a host
    if (m_request.Kind == RequestKind::Group)
        SendTo(*host, RequestGroupId{});
    else
        SendTo(*host, RequestPlayerId{PlayerIsLocal});
}

bool PeerMachine::Handle(const Origin& origin, const RequestPlayerReply& message, Millis now)
{
    if (m_phase == Phase::WaitingForId) {
        if (!FromAskedHost(origin))
            return Drop(DropReason::Stranger);
        OnJoinId(message, now);
        return true;
    }
    const RequestKind kind = m_request.Kind;
    if (m_phase != Phase::Member || !FromHost(origin) || (kind != RequestKind::Player && kind != RequestKind::Group))
        return Drop(DropReason::Stranger);
    if (message.Result != ResultOk || message.Id == 0)
        Finish(Fail("host", RefusalText(message.Result)));
    else if (m_table.Contains(message.Id))
        return Drop(DropReason::Malformed);
    else if (kind == RequestKind::Player)
        AddOwnPlayer(message.Id, now);
    else
        AddOwnGroup(message.Id);
    return true;
}

void PeerMachine::OnJoinId(const RequestPlayerReply& message, Millis now)
{
    const bool valid = message.Id != EveryPlayer && message.Id != ServerPlayer && message.Id != UnknownPlayer;
    if (message.Result != ResultOk || !valid)
        return FailJoin(RefusalText(message.Result));
    if (message.NeedsLogin)
        return FailJoin("it needs a login, which is unsupported");
    m_ownId = message.Id;
    PackedPlayer record;
    record.Flags = PlayerIsSystem | PlayerInGroup | PlayerIsLocal;
    record.Id = m_ownId;
    record.SystemId = m_ownId;
    record.Service = ServiceData{{0, m_config.StreamPort}, {0, m_config.DatagramPort}};
    m_phase = Phase::WaitingForTable;
    m_request.Deadline = now + m_config.Timers.JoinTable;
    const AddForwardRequest request{m_ownId, record, m_password, static_cast<std::uint32_t>(now.count())};
    m_output.SendStream(m_hostAddresses.front(), EncodeMessage(request, m_config.StreamPort));
}

bool PeerMachine::Handle(const Origin& origin, const AddForwardReply& message, Millis /*now*/)
{
    if (m_phase != Phase::WaitingForTable || !FromAskedHost(origin))
        return Drop(DropReason::Stranger);
    FailJoin(RefusalText(message.Error));
    return true;
}

bool PeerMachine::Handle(const Origin& origin, const LoginFailed& /*message*/, Millis /*now*/)
{
    if ((m_phase != Phase::WaitingForTable && m_phase != Phase::WaitingForId) || !FromAskedHost(origin))
        return Drop(DropReason::Stranger);
    FailJoin("the host refuses the login");
    return true;
}

bool PeerMachine::Handle(const Origin& origin, const SuperEnumPlayersReply& message, Millis now)
{
    if (m_phase != Phase::WaitingForTable || !FromAskedHost(origin))
        return Drop(DropReason::Stranger);
    OnTable(origin, message, now);
    return true;
}

static SuperPackedPlayer ToSuper(const PackedPlayer& player)
{
    const bool system = (player.Flags & PlayerIsSystem) != 0;
    return {player.Flags,     player.Id,       system ? player.Version : player.SystemId,
            player.ShortName, player.LongName, player.Data,
            player.Service,   player.Members,  player.Parent};
}

bool PeerMachine::Handle(const Origin& origin, const EnumPlayersReply& message, Millis now)
{
    SuperEnumPlayersReply table{message.Description, message.Name, message.Password, {}, {}};
    std::ranges::transform(message.Players, std::back_inserter(table.Players), ToSuper);
    std::ranges::transform(message.Groups, std::back_inserter(table.Groups), ToSuper);
    return Handle(origin, table, now);
}

void PeerMachine::OnTable(const Origin& origin, const SuperEnumPlayersReply& message, Millis now)
{
    if ((message.Description.Flags & UnsupportedSessionFlags) != 0)
        return FailJoin("its flags " + std::to_string(message.Description.Flags) + " are unsupported");
    m_description = message.Description;
    m_sessionName = message.Name;
    m_password = message.Password;
    MachineEntry* own = m_table.AddMachine(m_ownId);
    own->Stream = {0, m_config.StreamPort};
    own->Datagram = {0, m_config.DatagramPort};
    // Machines first: the other entries name them as owners.
    for (const auto& entry : message.Players) {
        if ((entry.Flags & PlayerIsSystem) != 0)
            MergeEntry(origin, entry, now);
    }
    const MachineEntry* host = m_table.FindMachine(m_hostId);
    if (host == nullptr)
        return FailJoin("its table of members names no host");
    m_hostAddresses.push_back(host->Stream);
    for (const auto& entry : message.Players) {
        if ((entry.Flags & PlayerIsSystem) == 0)
            MergeEntry(origin, entry, now);
    }
    for (const auto& entry : message.Groups)
        MergeGroup(entry);
    m_phase = Phase::Member;
    m_changes.Session = true;
    m_changes.Everybody = true;
    ReplayHeld(0, now);
    Finish(WireId{0});
}

void PeerMachine::MergeEntry(const Origin& origin, const SuperPackedPlayer& entry, Millis now)
{
    if (entry.Id == m_ownId || m_table.Contains(entry.Id))
        return;
    if ((entry.Flags & PlayerIsSystem) != 0) {
        MachineEntry* machine = m_table.AddMachine(entry.Id);
        if (machine == nullptr)
            return;
        StoreAddresses(*machine, entry.Service, origin.Machine.Ip);
        machine->Version = entry.VersionOrSystemId;
        machine->LastHeard = now;
        machine->NextCheck = now + m_config.Timers.PingPeriod;
        if ((entry.Flags & PlayerIsNameServer) != 0)
            m_hostId = entry.Id;
        return;
    }
    const WireId owner = m_table.FindMachine(entry.VersionOrSystemId) != nullptr ? entry.VersionOrSystemId : m_hostId;
    PlayerEntry* player = m_table.AddPlayer(entry.Id, owner);
    if (player == nullptr)
        return;
    player->ShortName = entry.ShortName;
    player->LongName = entry.LongName;
    player->InGroup = (entry.Flags & PlayerInGroup) != 0;
    m_table.StoreData(player->Data, entry.Data);
}

void PeerMachine::MergeGroup(const SuperPackedPlayer& entry)
{
    GroupEntry* group = m_table.AddGroup(entry.Id);
    if (group == nullptr)
        return;
    group->Machine = m_table.FindMachine(entry.VersionOrSystemId) != nullptr ? entry.VersionOrSystemId : m_hostId;
    group->ShortName = entry.ShortName;
    group->LongName = entry.LongName;
    m_table.StoreData(group->Data, entry.Data);
    for (const WireId member : entry.Members)
        m_table.AddToGroup(member, entry.Id);
}

bool PeerMachine::Handle(const Origin& origin, const AddForward& message, Millis now)
{
    if (!FromHost(origin) || m_phase != Phase::Member)
        return Drop(DropReason::Stranger);
    MachineEntry* host = m_table.FindMachine(m_hostId);
    MachineEntry* machine = message.Id == m_ownId ? nullptr : m_table.AddMachine(message.Id);
    if (host == nullptr || machine == nullptr || message.Id == m_hostId)
        return Drop(DropReason::Malformed);
    StoreAddresses(*machine, message.Player.Service, origin.Machine.Ip);
    machine->Version = message.Player.Version;
    machine->LastHeard = now;
    machine->NextCheck = now + m_config.Timers.PingPeriod;
    SendTo(*host, AddForwardAck{message.Id});
    return true;
}
} // namespace corvane::directplay
