#include "net/machine/PeerMachine.h"

#include <algorithm>
#include <utility>

/// Players, groups and the session's description: what others change.
namespace corvane::directplay {
ServiceData PeerMachine::ServiceOf(const MachineEntry& machine) const
{
    // Ip 0: whoever receives the record takes the address that it came from.
    const bool hidden = machine.Id == m_ownId || machine.SharesHostAddress;
    const std::uint32_t ip = hidden ? 0 : machine.Stream.Ip;
    return {{ip, machine.Stream.Port}, {ip, machine.Datagram.Port}};
}

PackedPlayer PeerMachine::RecordOf(const MachineEntry& machine) const
{
    PackedPlayer record;
    record.Flags = PlayerIsSystem | PlayerInGroup;
    record.Flags |= machine.Id == m_hostId ? PlayerIsNameServer : 0;
    record.Flags |= machine.Id == m_ownId ? PlayerIsLocal : 0;
    record.Id = machine.Id;
    record.Service = ServiceOf(machine);
    record.SystemId = machine.Id;
    record.Version = machine.Version;
    return record;
}

PackedPlayer PeerMachine::RecordOf(const PlayerEntry& player) const
{
    PackedPlayer record;
    record.Flags = player.Machine == m_ownId ? PlayerIsLocal : 0;
    record.Flags |= player.InGroup ? PlayerInGroup : 0;
    record.Id = player.Id;
    record.ShortName = player.ShortName;
    record.LongName = player.LongName;
    record.Data = player.Data;
    record.SystemId = player.Machine;
    const auto owner = m_table.Machines().find(player.Machine);
    if (owner != m_table.Machines().end())
        record.Service = ServiceOf(owner->second);
    return record;
}

void PeerMachine::StoreAddresses(MachineEntry& machine, const std::optional<ServiceData>& service,
                                 std::uint32_t sourceIp)
{
    if (!service)
        return;
    machine.Stream = service->Stream;
    machine.Datagram = service->Datagram;
    if (machine.Stream.Ip == 0)
        machine.Stream.Ip = sourceIp;
    if (machine.Datagram.Ip == 0)
        machine.Datagram.Ip = sourceIp;
}

/// True when the message comes from the owner's machine or from the host.
bool PeerMachine::MayChange(const Origin& origin, WireId owner)
{
    const MachineEntry* member = MemberAt(origin);
    return FromHost(origin) || (member != nullptr && (member->Id == owner || member->Id == m_hostId));
}

/// Enters a player that its creator describes; null when it may not.
PlayerEntry* PeerMachine::StorePlayer(const Origin& origin, const PackedPlayer& record, bool& isNew, Millis now)
{
    const MachineEntry* sender = MemberAt(origin);
    if (sender == nullptr || (record.Flags & PlayerIsSystem) != 0) {
        CountDrop(DropReason::Stranger);
        return nullptr;
    }
    const WireId owner = m_table.FindMachine(record.SystemId) != nullptr ? record.SystemId : sender->Id;
    const PlayerEntry* known = m_table.FindPlayer(record.Id);
    if (!MayChange(origin, known != nullptr ? known->Machine : owner) || owner == m_ownId) {
        CountDrop(DropReason::Stranger);
        return nullptr;
    }
    isNew = known == nullptr;
    if (isNew && Hosting() && !WasGiven(record.Id, RequestKind::Player, sender->Stream, now)) {
        CountDrop(DropReason::Stranger);
        return nullptr;
    }
    PlayerEntry* player = m_table.AddPlayer(record.Id, owner);
    if (player == nullptr) {
        CountDrop(DropReason::Flooding);
        return nullptr;
    }
    if (isNew || player->ShortName != record.ShortName)
        Changed(record.Id);
    player->ShortName = record.ShortName;
    player->LongName = record.LongName;
    if (isNew) {
        player->InGroup = (record.Flags & PlayerInGroup) != 0;
        m_table.StoreData(player->Data, record.Data);
    }
    ReleaseReservation(record.Id);
    return player;
}

bool PeerMachine::Handle(const Origin& origin, const CreatePlayerMessage& message, Millis now)
{
    bool isNew = false;
    const PlayerEntry* player = StorePlayer(origin, message.Player, isNew, now);
    if (player == nullptr)
        return false;
    const WireId id = player->Id;
    if (isNew && !Hosting() && origin.Version >= VerifyVersion)
        AnswerVerify(origin, now);
    ReplayHeld(id, now);
    return true;
}

/// Two machines that created players at the same moment, one of them still joining, learn of each other this way.
void PeerMachine::AnswerVerify(const Origin& origin, Millis now)
{
    const MachineEntry* creator = MemberAt(origin);
    if (creator == nullptr)
        return;
    for (const WireId own : m_table.PlayersOf(m_ownId)) {
        const PlayerEntry* player = std::as_const(m_table).FindPlayer(own);
        if (now - player->Created <= m_config.Timers.RecentlyCreated)
            SendTo(*creator, CreatePlayerVerify{RecordOf(*player)});
    }
}

bool PeerMachine::Handle(const Origin& origin, const CreatePlayerVerify& message, Millis now)
{
    bool isNew = false;
    const PlayerEntry* player = StorePlayer(origin, message.Player, isNew, now);
    if (player == nullptr)
        return false;
    ReplayHeld(player->Id, now);
    return true;
}

bool PeerMachine::Handle(const Origin& origin, const CreateGroupMessage& message, Millis now)
{
    const MachineEntry* sender = MemberAt(origin);
    if (sender == nullptr)
        return Drop(DropReason::Stranger);
    const PackedPlayer& record = message.Player;
    const GroupEntry* known = m_table.FindGroup(record.Id);
    if (known != nullptr && !MayChange(origin, known->Machine))
        return Drop(DropReason::Stranger);
    if (known == nullptr && Hosting() && !WasGiven(record.Id, RequestKind::Group, sender->Stream, now))
        return Drop(DropReason::Stranger);
    GroupEntry* group = m_table.AddGroup(record.Id);
    if (group == nullptr)
        return Drop(DropReason::Flooding);
    group->Machine = m_table.FindMachine(record.SystemId) != nullptr ? record.SystemId : sender->Id;
    group->ShortName = record.ShortName;
    group->LongName = record.LongName;
    Changed(record.Id);
    m_table.StoreData(group->Data, record.Data);
    for (const WireId member : record.Members)
        m_table.AddToGroup(member, record.Id);
    ReleaseReservation(record.Id);
    return true;
}

void PeerMachine::ForgetPlayer(WireId id)
{
    const PlayerEntry* player = std::as_const(m_table).FindPlayer(id);
    if (player == nullptr)
        return;
    for (const WireId forgotten : m_departed.Add(id, player->Machine, player->ShortName))
        Changed(forgotten);
    m_table.RemovePlayer(id);
    Changed(id);
}

bool PeerMachine::Handle(const Origin& origin, const DeletePlayerMessage& message, Millis now)
{
    if (m_phase != Phase::Member)
        return Drop(DropReason::Stranger);
    if (const PlayerEntry* player = std::as_const(m_table).FindPlayer(message.Player)) {
        if (!MayChange(origin, player->Machine))
            return Drop(DropReason::Stranger);
        ForgetPlayer(message.Player);
        return true;
    }
    if (m_table.FindMachine(message.Player) == nullptr)
        return MemberAt(origin) != nullptr;
    if (!MayChange(origin, message.Player))
        return Drop(DropReason::Stranger);
    if (message.Player == m_ownId)
        LoseSession("the host removed this machine");
    else if (message.Player == m_hostId)
        HostGone(now);
    else
        MachineGone(message.Player, now);
    return true;
}

bool PeerMachine::Handle(const Origin& origin, const DeleteGroupMessage& message, Millis /*now*/)
{
    const GroupEntry* group = m_table.FindGroup(message.Group);
    if (group == nullptr)
        return MemberAt(origin) != nullptr;
    if (!MayChange(origin, group->Machine))
        return Drop(DropReason::Stranger);
    m_table.RemoveGroup(message.Group);
    Changed(message.Group);
    return true;
}

bool PeerMachine::Handle(const Origin& origin, const AddPlayerToGroupMessage& message, Millis /*now*/)
{
    if (MemberAt(origin) == nullptr)
        return Drop(DropReason::Stranger);
    m_table.AddToGroup(message.Player, message.Group);
    return true;
}

bool PeerMachine::Handle(const Origin& origin, const DeletePlayerFromGroup& message, Millis /*now*/)
{
    if (MemberAt(origin) == nullptr)
        return Drop(DropReason::Stranger);
    m_table.RemoveFromGroup(message.Player, message.Group);
    return true;
}

bool PeerMachine::Handle(const Origin& origin, const PlayerDataChanged& message, Millis /*now*/)
{
    PlayerEntry* player = m_table.FindPlayer(message.Id);
    if (player == nullptr || !MayChange(origin, player->Machine))
        return Drop(DropReason::Stranger);
    m_table.StoreData(player->Data, message.Data);
    return true;
}

bool PeerMachine::Handle(const Origin& origin, const GroupDataChanged& message, Millis /*now*/)
{
    GroupEntry* group = m_table.FindGroup(message.Id);
    if (group == nullptr || !MayChange(origin, group->Machine))
        return Drop(DropReason::Stranger);
    m_table.StoreData(group->Data, message.Data);
    return true;
}

bool PeerMachine::Handle(const Origin& origin, const PlayerNameChanged& message, Millis /*now*/)
{
    PlayerEntry* player = m_table.FindPlayer(message.Id);
    if (player == nullptr || !MayChange(origin, player->Machine))
        return Drop(DropReason::Stranger);
    player->ShortName = message.ShortName;
    player->LongName = message.LongName;
    Changed(message.Id);
    return true;
}

bool PeerMachine::Handle(const Origin& origin, const GroupNameChanged& message, Millis /*now*/)
{
    GroupEntry* group = m_table.FindGroup(message.Id);
    if (group == nullptr || !MayChange(origin, group->Machine))
        return Drop(DropReason::Stranger);
    group->ShortName = message.ShortName;
    group->LongName = message.LongName;
    Changed(message.Id);
    return true;
}

bool PeerMachine::Handle(const Origin& origin, const SessionDescChanged& message, Millis /*now*/)
{
    if (m_phase != Phase::Member || !FromHost(origin))
        return Drop(DropReason::Stranger);
    SessionDescription changed = message.Description;
    changed.Instance = m_description.Instance;
    changed.IdKey = m_description.IdKey;
    changed.Flags = (m_description.Flags & ~ChangeableSessionFlags) | (changed.Flags & ChangeableSessionFlags);
    m_description = changed;
    m_sessionName = message.Name;
    m_password = message.Password;
    return true;
}
} // namespace corvane::directplay
