#include "net/machine/Joining.h"

#include <algorithm>

namespace corvane::directplay {
static std::string Unsupported(std::uint32_t flags)
{
    return "its flags " + std::to_string(flags) + " are unsupported";
}

std::string Joining::RefusalText(std::uint32_t result)
{
    switch (result) {
    case ResultNoNewPlayers: return "no new players are admitted";
    case ResultInvalidPassword: return "invalid password";
    default: return "the host refuses with code " + std::to_string(result);
    }
}

bool Joining::UnderWay() const noexcept
{
    return m_common.Table.Phase == SessionPhase::WaitingForId || m_common.Table.Phase == SessionPhase::WaitingForTable;
}

void Joining::Begin(const Guid& instance, const FoundSession* session, std::u16string_view password, Millis now)
{
    m_common.Request = {.Kind = RequestKind::Join, .Deadline = now + m_common.Config.Timers.Request};
    SessionTable& table = m_common.Table;
    if (table.Phase != SessionPhase::Idle)
        return m_common.Finish(Fail("session", "one is open already"));
    if (session == nullptr)
        return m_common.Finish(Fail("session", GuidText(instance) + " is not among those that were found"));
    if ((session->Description.Flags & UnsupportedSessionFlags) != 0)
        return m_common.Finish(Fail("session", Unsupported(session->Description.Flags)));
    table.LossReason.clear();
    table.Description = session->Description;
    table.Name = session->Name;
    table.Password = password;
    table.HostAddresses = {session->Host};
    table.Phase = SessionPhase::WaitingForId;
    m_common.Send(session->Host, RequestPlayerId{PlayerIsSystem | PlayerIsLocal});
}

JoinStep Joining::OnId(const Origin& origin, const RequestPlayerReply& message, Millis now)
{
    SessionTable& table = m_common.Table;
    if (table.Phase != SessionPhase::WaitingForId || !table.FromAskedHost(origin))
        return {.Heeded = false};
    const bool valid = message.Id != EveryPlayer && message.Id != ServerPlayer && message.Id != UnknownPlayer;
    if (message.Result != ResultOk || !valid)
        return {.Failure = RefusalText(message.Result)};
    if (message.NeedsLogin)
        return {.Failure = "it needs a login, which is unsupported"};
    table.OwnId = message.Id;
    PackedPlayer record;
    record.Flags = PlayerIsSystem | PlayerInGroup | PlayerIsLocal;
    record.Id = table.OwnId;
    record.SystemId = table.OwnId;
    record.Service = ServiceData{{0, m_common.Config.StreamPort}, {0, m_common.Config.DatagramPort}};
    table.Phase = SessionPhase::WaitingForTable;
    m_common.Request.Deadline = now + m_common.Config.Timers.JoinTable;
    m_common.Send(table.HostAddresses.front(),
                  AddForwardRequest{table.OwnId, record, table.Password, static_cast<std::uint32_t>(now.count())});
    return {};
}

JoinStep Joining::OnRefusal(const Origin& origin, const AddForwardReply& message) const
{
    if (m_common.Table.Phase != SessionPhase::WaitingForTable || !m_common.Table.FromAskedHost(origin))
        return {.Heeded = false};
    return {.Failure = RefusalText(message.Error)};
}

JoinStep Joining::OnLoginFailed(const Origin& origin) const
{
    if (!UnderWay() || !m_common.Table.FromAskedHost(origin))
        return {.Heeded = false};
    return {.Failure = "the host refuses the login"};
}

JoinStep Joining::OnTable(const Origin& origin, const SuperEnumPlayersReply& message, Millis now)
{
    SessionTable& table = m_common.Table;
    if (table.Phase != SessionPhase::WaitingForTable || !table.FromAskedHost(origin))
        return {.Heeded = false};
    if ((message.Description.Flags & UnsupportedSessionFlags) != 0)
        return {.Failure = Unsupported(message.Description.Flags)};
    table.Description = message.Description;
    table.Name = message.Name;
    table.Password = message.Password;
    table.EnterOwnMachine(m_common.Config);
    // Machines first: the other entries name them as owners.
    for (const auto& entry : message.Players) {
        if ((entry.Flags & PlayerIsSystem) != 0)
            MergeMachine(origin, entry, now);
    }
    const MachineEntry* host = table.Names.FindMachine(table.HostId);
    if (host == nullptr)
        return {.Failure = "its table of members names no host"};
    table.HostAddresses.push_back(host->Stream);
    for (const auto& entry : message.Players) {
        if ((entry.Flags & PlayerIsSystem) == 0)
            MergePlayer(entry);
    }
    for (const auto& entry : message.Groups)
        MergeGroup(entry);
    table.Phase = SessionPhase::Member;
    table.Changes.Session = true;
    table.Changes.Everybody = true;
    return {.Complete = true};
}

void Joining::MergeMachine(const Origin& origin, const SuperPackedPlayer& entry, Millis now)
{
    NameTable& names = m_common.Table.Names;
    MachineEntry* machine = names.Contains(entry.Id) ? nullptr : names.AddMachine(entry.Id);
    if (machine == nullptr)
        return;
    StoreAddresses(*machine, entry.Service, origin.Machine.Ip);
    machine->Version = entry.VersionOrSystemId;
    machine->Watch(now, m_common.Config.Timers.PingPeriod);
    if ((entry.Flags & PlayerIsNameServer) != 0)
        m_common.Table.HostId = entry.Id;
}

/// Whose a player or group is; the host's where the table names nobody.
WireId Joining::OwnerIn(const SuperPackedPlayer& entry) const
{
    const WireId named = entry.VersionOrSystemId;
    return m_common.Table.Names.FindMachine(named) != nullptr ? named : m_common.Table.HostId;
}

void Joining::MergePlayer(const SuperPackedPlayer& entry)
{
    NameTable& names = m_common.Table.Names;
    PlayerEntry* player = names.Contains(entry.Id) ? nullptr : names.AddPlayer(entry.Id, OwnerIn(entry));
    if (player == nullptr)
        return;
    player->ShortName = entry.ShortName;
    player->LongName = entry.LongName;
    player->InGroup = (entry.Flags & PlayerInGroup) != 0;
    names.StoreData(player->Data, entry.Data);
}

void Joining::MergeGroup(const SuperPackedPlayer& entry)
{
    NameTable& names = m_common.Table.Names;
    GroupEntry* group = names.AddGroup(entry.Id);
    if (group == nullptr)
        return;
    group->Machine = OwnerIn(entry);
    group->ShortName = entry.ShortName;
    group->LongName = entry.LongName;
    names.StoreData(group->Data, entry.Data);
    for (const WireId member : entry.Members)
        names.AddToGroup(member, entry.Id);
}

static SuperPackedPlayer ToSuper(const PackedPlayer& player)
{
    const bool system = (player.Flags & PlayerIsSystem) != 0;
    return {player.Flags,     player.Id,       system ? player.Version : player.SystemId,
            player.ShortName, player.LongName, player.Data,
            player.Service,   player.Members,  player.Parent};
}

SuperEnumPlayersReply ToSuper(const EnumPlayersReply& message)
{
    SuperEnumPlayersReply table{message.Description, message.Name, message.Password, {}, {}};
    const auto convert = [](const PackedPlayer& player) { return ToSuper(player); };
    std::ranges::transform(message.Players, std::back_inserter(table.Players), convert);
    std::ranges::transform(message.Groups, std::back_inserter(table.Groups), convert);
    return table;
}
} // namespace corvane::directplay
